#pragma once

// Evaluation of parsed NGC values against the current parameters. Results of
// comparisons and logic are 1 or 0; any non-zero operand counts as true.
// Both throw std::invalid_argument on a domain error (division by zero,
// sqrt of a negative, an unset named parameter, a fractional parameter
// number).

#include "interp/expr_t.h"
#include "interp/param_store_t.h"

namespace mill {

double evaluate(const expr_t& e, const param_store_t& params);

// The parameter number an index expression names, checked to be whole.
int evaluate_param_index(const expr_t& index, const param_store_t& params);

}  // namespace mill
