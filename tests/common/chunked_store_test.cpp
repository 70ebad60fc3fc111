#include "common/chunked_store.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Counts how many of its kind are alive, so that leaks and double
// destruction both show.
struct counted_t {
  static inline int alive = 0;
  explicit counted_t(int v) : value(v) { ++alive; }
  counted_t(const counted_t&) = delete;
  ~counted_t() { --alive; }
  int value;
};

TEST(ChunkedStore, ElementsStayPutAsTheStoreGrowsAcrossChunks) {
  common::chunked_store<std::string> store;
  std::vector<std::string*> seen;
  for (int i = 0; i < 100000; ++i) seen.push_back(&store.emplace_back(std::to_string(i)));
  ASSERT_EQ(store.size(), 100000u);
  for (int i = 0; i < 100000; ++i) ASSERT_EQ(*seen[i], std::to_string(i)) << i;
}

TEST(ChunkedStore, DestroysEveryElementOnceInPartlyFilledChunks) {
  for (int n : {0, 1, 64, 65, 5000}) {
    {
      common::chunked_store<counted_t> store;
      for (int i = 0; i < n; ++i) EXPECT_EQ(store.emplace_back(i).value, i);
      EXPECT_EQ(counted_t::alive, n);
    }
    EXPECT_EQ(counted_t::alive, 0) << n;
  }
}

}  // namespace
