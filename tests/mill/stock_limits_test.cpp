// Stocks and tools a machine cannot mean are refused before the library
// sees them, with the file or option at fault; an open stock surface only
// when the user asks for it.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "case_files.h"
#include "thrown_message.h"
#include "host/mill_args.h"
#include "host/stock_session.h"
#include "host/surface_checks.h"

namespace mill::test {
namespace {

stock_spec_t stl_stock(const std::string& name) {
  stock_spec_t spec;
  spec.kind = stock_kind::stl;
  spec.stl_path = case_path(name);
  return spec;
}

std::string build_error(const stock_spec_t& spec) {
  return message_of<std::runtime_error>([&] { stock_session_t(spec, 1.0); });
}

std::string args_error(const std::vector<std::string>& args) {
  return message_of<std::invalid_argument>([&] { parse_mill_args(args); });
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(StockLimits, OpenEdgesAreCountedOnEachSide) {
  std::vector<double> box = box_surface({0, 0, 0, 1, 2, 3});
  EXPECT_EQ(open_edge_count(box.data(), box.size() / 12), 0u);
  box.resize(box.size() - 12);  // one triangle of a face gone: its three edges lose their twins
  EXPECT_EQ(open_edge_count(box.data(), box.size() / 12), 3u);
}

TEST(StockLimits, AnOpenStlStockIsRefusedUnlessAsked) {
  // It once built silently, with cells filled by guesswork, and exit 0.
  stock_spec_t spec = stl_stock("open_box.stl");
  const std::string error = build_error(spec);
  EXPECT_TRUE(has(error, "open_box.stl is not a closed surface (4 edges without a twin)")) << error;
  EXPECT_TRUE(has(error, "--open-stock")) << error;
  spec.allow_open = true;
  const stock_session_t stock(spec, 1.0);
  EXPECT_EQ(stock.open_edges(), 4u);
  EXPECT_TRUE(parse_mill_args({"--open-stock", "--stock", "a.stl"}).stock.allow_open);
  EXPECT_FALSE(parse_mill_args({"--stock", "a.stl"}).stock.allow_open);
}

TEST(StockLimits, StocksBeyondTheMachineAreRefused) {
  // A far vertex once hung the library while it built the stock.
  const std::string error = build_error(stl_stock("far_stock.stl"));
  EXPECT_TRUE(has(error, "far_stock.stl: facet 1 lies beyond the machine's limit of +-1000000 mm")) << error;
  EXPECT_TRUE(has(args_error({"--stock", "box:0,0,0,1e7,1,1"}), "1e7 lies beyond the machine's limit"));
}

TEST(StockLimits, AStockDirectoryCannotBeOpened) {
  // It once read as a malformed STL file.
  EXPECT_TRUE(has(build_error(stl_stock("")), "cannot open stock file")) << build_error(stl_stock(""));
}

TEST(StockLimits, ToolsBeyondTheMachineAreRefused) {
  EXPECT_TRUE(has(args_error({"--tool", "flat:1e9"}), "diameter beyond the machine's limit"));
  EXPECT_TRUE(has(args_error({"--tool", "ball:inf"}), "diameter beyond the machine's limit"));
  EXPECT_TRUE(has(args_error({"--tool-length", "1e9"}), "beyond the machine's limit"));
}

}  // namespace
}  // namespace mill::test
