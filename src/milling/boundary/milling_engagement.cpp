#include "milling/milling_engagement.h"

#include <cstring>
#include <limits>
#include <new>

#include "milling/engagement_build.h"
#include "milling/engagement_bytes.h"

namespace {

geom::mat4d pose_of(const double* m) {
  geom::mat4d pose{};
  std::memcpy(pose.m.data(), m, sizeof pose.m);
  return pose;
}

}  // namespace

extern "C" {

milling_engagement_t* milling_engagement__new_by_contours(const milling_contours_t* contours, uint32_t tag,
                                                          const double* levels, const double* level_steps,
                                                          int level_count, const double* pose_prev,
                                                          const double* pose_cur, double bottom_radius,
                                                          double ring_step, int clip_to_motion) noexcept {
  if (!contours || !pose_prev || !pose_cur || level_count < 0) return nullptr;
  if (level_count > 0 && (!levels || !level_steps)) return nullptr;
  const auto n = static_cast<std::size_t>(level_count);
  mech::engagement_request_t req;
  req.tag = static_cast<std::int32_t>(tag);
  req.levels = {levels, n};
  req.level_steps = {level_steps, n};
  req.pose_prev = pose_of(pose_prev);
  req.pose_cur = pose_of(pose_cur);
  req.bottom_radius = bottom_radius;
  req.ring_step = ring_step;
  req.clip_to_motion = clip_to_motion != 0;
  try {
    return new mech::engagement_t(mech::build_engagement(*contours, req));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

milling_engagement_t* milling_engagement__new_by_bytes(const void* bytes, int size) noexcept {
  if (!bytes || size < 0) return nullptr;
  try {
    auto e = mech::read_engagement_bytes(static_cast<const unsigned char*>(bytes), static_cast<std::size_t>(size));
    return e ? new mech::engagement_t(std::move(*e)) : nullptr;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

int milling_engagement__get_bytes_size(const milling_engagement_t* e) noexcept {
  if (!e) return 0;
  const std::size_t size = mech::engagement_bytes_size(*e);
  return size > static_cast<std::size_t>(std::numeric_limits<int>::max()) ? 0 : static_cast<int>(size);
}

void milling_engagement__get_bytes(const milling_engagement_t* e, void* buffer, int capacity) noexcept {
  if (!e || !buffer) return;
  const int size = milling_engagement__get_bytes_size(e);
  if (size == 0 || capacity < size) return;
  mech::write_engagement_bytes(*e, static_cast<unsigned char*>(buffer));
}

void milling_engagement__delete(milling_engagement_t* e) noexcept { delete e; }
}
