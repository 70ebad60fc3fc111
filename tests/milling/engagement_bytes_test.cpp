// The engagement's byte form as a host stores and reloads it: exact layout,
// round trip, and rejection of bytes that are not a whole engagement. Every
// buffer handed to the reader is allocated at its exact size, so that a read
// past its end shows under AddressSanitizer.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "milling/engagement_t.h"
#include "milling/milling_engagement.h"

namespace {

using bytes_t = std::vector<unsigned char>;

bytes_t bytes_of(const milling_engagement_t* e) {
  bytes_t out(static_cast<std::size_t>(milling_engagement__get_bytes_size(e)));
  milling_engagement__get_bytes(e, out.data(), static_cast<int>(out.size()));
  return out;
}

// Reads the first n bytes of b from a buffer of exactly n bytes.
milling_engagement_t* read_exact(const bytes_t& b, std::size_t n) {
  auto buffer = std::make_unique<unsigned char[]>(n);
  std::memcpy(buffer.get(), b.data(), n);
  return milling_engagement__new_by_bytes(buffer.get(), static_cast<int>(n));
}

mech::engagement_t sample() {
  mech::engagement_t e;
  e.tag = -5;
  e.ring_step = 0.25;
  e.bottom.push_back({0.1251, 0.25, {{-1.0, 0.5}}});
  e.side.push_back({1.5, 0.5, {}});
  e.side.push_back({2.0, 0.5, {{-std::numbers::pi, -2.0}, {0.1, 0.2}, {3.0, std::numbers::pi}}});
  return e;
}

template <class T>
T at(const bytes_t& b, std::size_t offset) {
  T v;
  std::memcpy(&v, b.data() + offset, sizeof v);
  return v;
}

TEST(EngagementBytes, LayoutIsPackedLittleEndianAsDocumented) {
  const mech::engagement_t e = sample();
  const bytes_t b = bytes_of(&e);
  ASSERT_EQ(b.size(), 12u + (4 + 20 + 16) + (4 + 20 + 20 + 3 * 16));
  EXPECT_EQ(b[0], 0xfb);  // -5, low byte first
  EXPECT_EQ(at<std::int32_t>(b, 0), -5);
  EXPECT_EQ(at<double>(b, 4), 0.25);
  EXPECT_EQ(at<std::int32_t>(b, 12), 1);
  EXPECT_EQ(at<double>(b, 16), 0.1251);
  EXPECT_EQ(at<std::int32_t>(b, 32), 1);
  EXPECT_EQ(at<double>(b, 36), -1.0);
  EXPECT_EQ(at<std::int32_t>(b, 52), 2);
  EXPECT_EQ(at<std::int32_t>(b, 72), 0);  // the first side slice has no ranges
  EXPECT_EQ(at<double>(b, 96), -std::numbers::pi);
}

TEST(EngagementBytes, RoundTripGivesIdenticalBytes) {
  const mech::engagement_t empty;
  const mech::engagement_t full = sample();
  const bytes_t zero = bytes_of(&empty);
  EXPECT_EQ(zero.size(), 20u);
  for (const bytes_t& b : {zero, bytes_of(&full)}) {
    milling_engagement_t* e = read_exact(b, b.size());
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(bytes_of(e), b);
    milling_engagement__delete(e);
  }
}

TEST(EngagementBytes, TruncatedOversizedOrNegativeCountsGiveNull) {
  const mech::engagement_t e = sample();
  bytes_t b = bytes_of(&e);
  for (std::size_t n = 0; n < b.size(); ++n) EXPECT_EQ(read_exact(b, n), nullptr) << n << " bytes";
  b.push_back(0);
  EXPECT_EQ(read_exact(b, b.size()), nullptr);
  b.pop_back();
  for (std::size_t count_at : {12u, 32u, 52u, 72u}) {
    bytes_t forged = b;
    const std::int32_t minus_one = -1;
    std::memcpy(forged.data() + count_at, &minus_one, 4);
    EXPECT_EQ(read_exact(forged, forged.size()), nullptr) << "count at " << count_at;
  }
  EXPECT_EQ(milling_engagement__new_by_bytes(nullptr, 20), nullptr);
  EXPECT_EQ(milling_engagement__new_by_bytes(b.data(), -1), nullptr);
}

TEST(EngagementBytes, ForeignBytesGiveNull) {
  const std::string stl = "solid tool\n  facet normal 0 0 1\n    outer loop\n      vertex 0 0 0\n";
  EXPECT_EQ(read_exact(bytes_t(stl.begin(), stl.end()), stl.size()), nullptr);
  // A count that would need far more bytes than remain.
  bytes_t huge(20, 0);
  const std::int32_t big = 0x7fffffff;
  std::memcpy(huge.data() + 12, &big, 4);
  EXPECT_EQ(read_exact(huge, huge.size()), nullptr);
}

TEST(EngagementBytes, WritingNeedsRoomForAllOfIt) {
  const mech::engagement_t e = sample();
  const int size = milling_engagement__get_bytes_size(&e);
  bytes_t buffer(static_cast<std::size_t>(size), 0xcd);
  milling_engagement__get_bytes(&e, buffer.data(), size - 1);
  EXPECT_EQ(buffer, bytes_t(buffer.size(), 0xcd));
  EXPECT_EQ(milling_engagement__get_bytes_size(nullptr), 0);
  milling_engagement__get_bytes(nullptr, buffer.data(), size);
  milling_engagement__get_bytes(&e, nullptr, size);
}

}  // namespace
