#pragma once

// An RS274/NGC real value as parsed, kept as a tree so that a loop body is
// read once and evaluated on every pass with the parameters of that pass.

#include <string>
#include <vector>

namespace mill {

enum class expr_op {
  // Leaves and references.
  number,       // value
  param,        // #args[0]
  named_param,  // #<name>
  // One argument; angles in degrees as the language has them.
  neg,
  abs,
  acos,
  asin,
  cos,
  exp,
  fix,
  fup,
  ln,
  round,
  sin,
  sqrt,
  tan,
  // Two arguments.
  atan2,  // atan[args[0]]/[args[1]]
  power,
  mul,
  div,
  mod,
  add,
  sub,
  eq,
  ne,
  gt,
  ge,
  lt,
  le,
  logical_and,
  logical_or,
  logical_xor,
};

struct expr_t {
  expr_op op = expr_op::number;
  double value = 0;
  std::string name;
  std::vector<expr_t> args;
  // Nodes on the longest path from this one down to a leaf, itself
  // included. Evaluating and freeing recurse that deep.
  int height = 1;
};

}  // namespace mill
