#include "common/progress_monitor_t.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using common::progress_monitor_t;

std::string render(const progress_monitor_t& m) {
  char buf[256];
  progress_monitor__to_string(&m, buf, sizeof buf);
  return buf;
}

// A count shows as a right-aligned numerator and a truncated percentage;
// children follow on one line with depth marks.
TEST(ProgressMonitorRendering, CountsAndChildrenOnOneLine) {
  progress_monitor_t m;
  progress_monitor__set_msg(&m, "cells", 300);
  progress_monitor__set_numerator(&m, 299);
  EXPECT_EQ(render(m), "cells[299/300](99%)");
  progress_monitor_t root, child, grandchild, second;
  root.set_msg("build", 4);
  root.set_numerator(1);
  child.set_msg("tris", 10);
  child.set_numerator(5);
  grandchild.set_msg("chunk", 0);
  second.set_msg("nodes", 0);
  root.attach_child(&child);
  child.attach_child(&grandchild);
  root.attach_child(&second);
  EXPECT_EQ(render(root), "build[1/4](25%) +tris[ 5/10](50%) ++chunk +nodes");
}

TEST(ProgressMonitorBuffers, ShortBufferGetsTruncatedTextWithoutTerminator) {
  progress_monitor_t m;
  m.set_msg("abcdef", 0);
  char buf[8] = {'x', 'x', 'x', 'x', 'x', 'x', 'x', 'x'};
  progress_monitor__get_msg(&m, buf, 6);
  EXPECT_EQ(std::string(buf, 8), "abcdefxx");
  progress_monitor__get_msg(&m, buf, 3);
  EXPECT_EQ(std::string(buf, 8), "abcdefxx");
  progress_monitor__get_msg(&m, buf, 8);
  EXPECT_STREQ(buf, "abcdef");
}

TEST(ProgressMonitorBuffers, NullPointersWriteNothing) {
  progress_monitor_t m;
  m.set_msg("x", 2);
  char buf[4] = {'q', 'q', 'q', 'q'};
  progress_monitor__get_msg(nullptr, buf, 4);
  progress_monitor__to_string(nullptr, buf, 4);
  progress_monitor__get_msg(&m, nullptr, 4);
  EXPECT_EQ(std::string(buf, 4), "qqqq");
  EXPECT_EQ(progress_monitor__get_numerator(nullptr), 0);
  EXPECT_EQ(progress_monitor__get_denominator(nullptr), 0);
}

// A callback reaches its context through the object that embeds the monitor.
struct watched_monitor_t {
  progress_monitor_t monitor;
  std::vector<std::pair<std::int64_t, std::int64_t>> seen;  // numerator, denominator
};

void record_change(progress_monitor_t* m) {
  auto* owner = reinterpret_cast<watched_monitor_t*>(reinterpret_cast<char*>(m) - offsetof(watched_monitor_t, monitor));
  owner->seen.emplace_back(progress_monitor__get_numerator(m), progress_monitor__get_denominator(m));
}

TEST(ProgressMonitorCallback, EveryChangeIsReportedAndNewStepResetsNumeratorFirst) {
  watched_monitor_t w;
  w.monitor.on_change = record_change;
  progress_monitor__set_msg(&w.monitor, "a", 10);
  progress_monitor__set_numerator(&w.monitor, 7);
  progress_monitor__set_msg(&w.monitor, "b", 3);
  using seen_t = std::vector<std::pair<std::int64_t, std::int64_t>>;
  EXPECT_EQ(w.seen, (seen_t{{0, 10}, {7, 10}, {0, 3}}));
  EXPECT_EQ(w.monitor.get_msg(), "b");
}

}  // namespace
