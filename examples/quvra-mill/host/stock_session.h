#pragma once

// The stock as the library keeps it, and the one place where the host cuts
// it. Everything the run does to the stock goes through this class.

#include <memory>
#include <string>
#include <vector>

#include "cbtr/cube_tree.h"
#include "cbtr/substraction.h"
#include "host/mill_loop.h"
#include "host/mill_options_t.h"
#include "host/tool_model.h"

namespace mill {

class stock_session_t {
 public:
  // The stock of spec (a box or an STL file's surface) with cells no wider
  // than cell. Throws std::runtime_error when the STL file cannot be read,
  // reaches beyond machine_limit_mm, is not closed and spec does not allow
  // that, or the library builds no stock.
  stock_session_t(const stock_spec_t& spec, double cell);

  // Edges of the stock's surface without a twin; 0 when it is closed.
  std::size_t open_edges() const { return open_edges_; }

  // Width of the finest cells, a power of two no wider than the cell asked
  // for.
  double grid_width() const;

  // Removes volume from the stock at the stock's own cell width, and says
  // whether the stock changed and how large the contact between tool and
  // stock was. A tool lying exactly on the stock's surface removes nothing
  // and does not count as touching. Throws std::runtime_error when memory
  // runs out.
  cut_outcome_t cut(const cached_tris_t& volume);

  // The stock's surface at its finest cells as triangle records (twelve
  // doubles each, normals computed here); triangles without area are left
  // out. Not reentrant across threads that share one session.
  std::vector<double> surface() const;

  // The library's stock file. Throws std::runtime_error naming path.
  void write(const std::string& path) const;

 private:
  struct tree_deleter_t {
    void operator()(cube_tree_t* t) const { cube_tree__delete(t); }
  };
  std::unique_ptr<cube_tree_t, tree_deleter_t> tree_;
  std::size_t open_edges_ = 0;
};

// The twelve triangle records of an axis-aligned box (minimum x, y, z, then
// maximum), facing outward.
std::vector<double> box_surface(const std::array<double, 6>& box);

}  // namespace mill
