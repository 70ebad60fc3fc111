#include "milling/engagement_bytes.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace mech {

static_assert(std::endian::native == std::endian::little, "the byte form is the machine's own layout");

namespace {

std::size_t list_size(const std::vector<engagement_slice_t>& slices) {
  std::size_t n = 4;
  for (const engagement_slice_t& s : slices) n += 20 + 16 * s.ranges.size();
  return n;
}

struct writer_t {
  unsigned char* out;
  template <class T>
  void put(T v) {
    std::memcpy(out, &v, sizeof v);
    out += sizeof v;
  }
  void put_list(const std::vector<engagement_slice_t>& slices) {
    put(static_cast<std::int32_t>(slices.size()));
    for (const engagement_slice_t& s : slices) {
      put(s.pos);
      put(s.step);
      put(static_cast<std::int32_t>(s.ranges.size()));
      for (const angle_range_t& r : s.ranges) {
        put(r.start);
        put(r.end);
      }
    }
  }
};

struct reader_t {
  const unsigned char* at;
  std::size_t left;
  template <class T>
  bool get(T& v) {
    if (left < sizeof v) return false;
    std::memcpy(&v, at, sizeof v);
    at += sizeof v;
    left -= sizeof v;
    return true;
  }
  // A count is believed only as far as the bytes left could hold it, so a
  // forged count cannot make the reader reserve more than the buffer.
  bool get_count(std::size_t& n, std::size_t least_bytes_each) {
    std::int32_t count = 0;
    if (!get(count) || count < 0) return false;
    n = static_cast<std::size_t>(count);
    return n <= left / least_bytes_each;
  }
  bool get_list(std::vector<engagement_slice_t>& slices) {
    std::size_t count = 0;
    if (!get_count(count, 20)) return false;
    slices.resize(count);
    for (engagement_slice_t& s : slices) {
      std::size_t ranges = 0;
      if (!get(s.pos) || !get(s.step) || !get_count(ranges, 16)) return false;
      s.ranges.resize(ranges);
      for (angle_range_t& r : s.ranges) {
        if (!get(r.start) || !get(r.end)) return false;
      }
    }
    return true;
  }
};

}  // namespace

std::size_t engagement_bytes_size(const engagement_t& e) { return 12 + list_size(e.bottom) + list_size(e.side); }

void write_engagement_bytes(const engagement_t& e, unsigned char* out) {
  writer_t w{out};
  w.put(e.tag);
  w.put(e.ring_step);
  w.put_list(e.bottom);
  w.put_list(e.side);
}

std::optional<engagement_t> read_engagement_bytes(const unsigned char* bytes, std::size_t size) {
  reader_t r{bytes, size};
  engagement_t e;
  if (!r.get(e.tag) || !r.get(e.ring_step) || !r.get_list(e.bottom) || !r.get_list(e.side) || r.left != 0) {
    return std::nullopt;
  }
  return e;
}

}  // namespace mech
