#include "common/cache_t.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using entry_t = common::cache_t<std::string>;

std::shared_ptr<entry_t> entry(const char* name, std::uint64_t cost) { return std::make_shared<entry_t>(name, cost); }

TEST(LruCache, InsertsEvictOldestFirstOnlyWhileTheTotalIsOverTheCap) {
  common::lru_cache_t cache(100);
  auto a = entry("a", 60), b = entry("b", 60), c = entry("c", 10), d = entry("d", 10);
  std::weak_ptr<entry_t> wa = a, wb = b;
  cache.touch(a);
  cache.touch(b);  // 60 is not over 100: b joins, the total passes the cap
  EXPECT_EQ(cache.used_bytes(), 120u);
  EXPECT_EQ(cache.size(), 2u);
  a.reset();
  b.reset();
  cache.touch(c);  // 120 > 100: a goes, 60 remain, c joins
  EXPECT_TRUE(wa.expired());
  EXPECT_FALSE(wb.expired());
  EXPECT_EQ(cache.used_bytes(), 70u);
  cache.touch(d);  // 70 is within the cap: nothing goes
  EXPECT_EQ(cache.size(), 3u);
  EXPECT_EQ(cache.used_bytes(), 80u);
  auto e = entry("e", 20), f = entry("f", 1);
  cache.touch(e);
  cache.touch(f);  // 100 is exactly the cap, not over it: nothing goes
  EXPECT_EQ(cache.size(), 5u);
}

TEST(LruCache, TouchingAListedEntryMakesItNewestWithoutEvictingOrRecharging) {
  common::lru_cache_t cache(50);
  auto a = entry("a", 30), b = entry("b", 30), c = entry("c", 5);
  std::weak_ptr<entry_t> wa = a, wb = b;
  cache.touch(a);
  cache.touch(b);
  cache.touch(a);  // over the cap, but a is listed: no eviction, same total
  EXPECT_EQ(cache.used_bytes(), 60u);
  EXPECT_EQ(cache.size(), 2u);
  a.reset();
  b.reset();
  cache.touch(c);  // b is now the oldest
  EXPECT_TRUE(wb.expired());
  EXPECT_FALSE(wa.expired());
  EXPECT_EQ(cache.used_bytes(), 35u);
}

// An evicted entry lives on with its holders and is charged again when
// listed anew.
TEST(LruCache, CapZeroKeepsOnlyTheNewestEntry) {
  common::lru_cache_t cache(0);
  auto a = entry("a", 8), b = entry("b", 8);
  std::weak_ptr<entry_t> wa = a;
  cache.touch(a);
  cache.touch(b);
  EXPECT_EQ(cache.size(), 1u);
  EXPECT_EQ(a->payload, "a");
  cache.touch(a);
  EXPECT_EQ(cache.size(), 1u);
  EXPECT_EQ(cache.used_bytes(), 8u);
  a.reset();
  EXPECT_FALSE(wa.expired());  // the list keeps it alive
  cache.touch(b);
  EXPECT_TRUE(wa.expired());
}

TEST(LruCache, ClearUnlistsEverythingButKeepsTheByteTotal) {
  common::lru_cache_t cache(100);
  auto a = entry("a", 70), b = entry("b", 50), c = entry("c", 10), d = entry("d", 10);
  std::weak_ptr<entry_t> wc = c;
  cache.touch(a);
  cache.touch(b);
  std::weak_ptr<entry_t> wa = a;
  a.reset();
  cache.clear();
  EXPECT_TRUE(wa.expired());
  EXPECT_EQ(cache.size(), 0u);
  EXPECT_EQ(cache.used_bytes(), 120u);
  cache.touch(b);  // b is no longer listed: charged as new
  EXPECT_EQ(cache.used_bytes(), 170u);
  cache.touch(c);  // the stale total is over the cap: b goes at once
  c.reset();
  EXPECT_EQ(cache.size(), 1u);
  EXPECT_EQ(cache.used_bytes(), 130u);
  cache.touch(d);
  EXPECT_TRUE(wc.expired());
  EXPECT_EQ(cache.used_bytes(), 130u);
}

TEST(LruCache, NewCapAppliesAtTheNextInsert) {
  common::lru_cache_t cache(1000);
  auto a = entry("a", 40), b = entry("b", 40), c = entry("c", 40);
  cache.touch(a);
  cache.touch(b);
  cache.set_cap(10);
  EXPECT_EQ(cache.size(), 2u);
  cache.touch(c);
  EXPECT_EQ(cache.size(), 1u);
  EXPECT_EQ(cache.used_bytes(), 40u);
}

}  // namespace
