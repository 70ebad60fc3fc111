#include "host/stock_session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <stdexcept>

#include "host/mesh_volume.h"
#include "host/stl_writer.h"
#include "host/tool_mesh.h"
#include "interp/tool_desc_parse.h"
#include "thrown_message.h"

namespace mill {
namespace {

constexpr double pi = std::numbers::pi;

stock_spec_t box_spec(const std::array<double, 6>& box) {
  stock_spec_t s;
  s.kind = stock_kind::box;
  s.box = box;
  return s;
}

std::string error_of(const std::function<void()>& f) { return test::message_of<std::runtime_error>(f); }

// A 4 mm flat end mill, 10 mm long, faceted within 0.01 mm.
struct end_mill_t {
  tool_model_t model{tool_surface(flat_tool(4), 10, 0.01)};
  cut_outcome_t stand(stock_session_t& stock, double x, double y, double z) const {
    const pose_t at = tool_pose({x, y, z}, {0, 0, 1});
    return stock.cut(*model.sweep(at, at));
  }
};

TEST(StockSession, ABoxStockEnclosesItsBoxOnPowerOfTwoCells) {
  const stock_session_t stock(box_spec({0, 0, 0, 10, 8, 6}), 0.3);
  EXPECT_EQ(stock.grid_width(), 0.25);
  EXPECT_NEAR(enclosed_volume(stock.surface()), 480, 1e-9);
}

TEST(StockSession, AStockFromAnStlFileIsItsSolid) {
  write_binary_stl("stock_box.stl", box_surface({-2, -1, 0, 2, 1, 3}), "test box");
  stock_spec_t spec;
  spec.kind = stock_kind::stl;
  spec.stl_path = "stock_box.stl";
  EXPECT_NEAR(enclosed_volume(stock_session_t(spec, 0.25).surface()), 24, 1e-9);
  spec.stl_path = "no_such_stock.stl";
  EXPECT_NE(error_of([&] { stock_session_t(spec, 0.25); }).find("no_such_stock.stl"), std::string::npos);
}

TEST(StockSession, AToolClearOfTheStockLeavesItUntouched) {
  stock_session_t stock(box_spec({0, 0, 0, 10, 8, 6}), 0.25);
  const end_mill_t mill;
  const cut_outcome_t above = mill.stand(stock, 5, 4, 6.5);
  const cut_outcome_t aside = mill.stand(stock, 20, 4, 3);
  EXPECT_FALSE(above.touched);
  EXPECT_FALSE(aside.touched);
  EXPECT_EQ(above.contact_area + aside.contact_area, 0);
  EXPECT_NEAR(enclosed_volume(stock.surface()), 480, 1e-9);
}

// The tool stands 3 mm deep: it takes its own cylinder out (the polygon's
// area, a little under the disc's), with a contact on the floor and walls.
TEST(StockSession, AToolInTheStockRemovesItsVolumeOnce) {
  stock_session_t stock(box_spec({0, 0, 0, 10, 8, 6}), 0.25);
  const end_mill_t mill;
  const cut_outcome_t hole = mill.stand(stock, 5, 4, 3);
  EXPECT_TRUE(hole.touched);
  EXPECT_GT(hole.contact_area, pi * 4);
  const double removed = 480 - enclosed_volume(stock.surface());
  const double disc = pi * 4 * 3, faces = pi * 4 + 2 * pi * 2 * 3;
  EXPECT_LE(removed, disc + faces * stock.grid_width());
  EXPECT_GE(removed, disc - faces * (0.01 + stock.grid_width()));

  mill.stand(stock, 5, 4, 3);
  EXPECT_NEAR(480 - enclosed_volume(stock.surface()), removed, 1e-9) << "nothing is left to take";
}

TEST(StockSession, TheStockFileReadsBackAndABadPathIsNamed) {
  stock_session_t stock(box_spec({0, 0, 0, 4, 4, 4}), 0.5);
  end_mill_t().stand(stock, 2, 2, 2);
  stock.write("cut_stock.cbt");
  cube_tree_t* back = cube_tree__new_by_file("cut_stock.cbt");
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(cube_tree__get_grid_width(back), stock.grid_width());
  double box[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  cube_tree__ExpandToBox3d(back, box);
  EXPECT_EQ(box[0], 0);
  EXPECT_EQ(box[5], 4);
  cube_tree__delete(back);
  EXPECT_NE(error_of([&] { stock.write("no_such_dir/stock.cbt"); }).find("no_such_dir/stock.cbt"), std::string::npos);
}

}  // namespace
}  // namespace mill
