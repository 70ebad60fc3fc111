#include "interp/expr_eval.h"

#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

namespace mill {

namespace {

// Programs count in decimal steps (0.1 three times is not 0.3 in binary),
// so equality means closer than any machine could resolve.
constexpr double equal_tolerance = 1e-6;

constexpr double deg = std::numbers::pi / 180.0;

void require(bool ok, const char* reason) {
  if (!ok) throw std::invalid_argument(reason);
}

double unary(expr_op op, double a) {
  switch (op) {
    case expr_op::neg:
      return -a;
    case expr_op::abs:
      return std::abs(a);
    case expr_op::acos:
      require(std::abs(a) <= 1, "acos of a value outside [-1, 1]");
      return std::acos(a) / deg;
    case expr_op::asin:
      require(std::abs(a) <= 1, "asin of a value outside [-1, 1]");
      return std::asin(a) / deg;
    case expr_op::cos:
      return std::cos(a * deg);
    case expr_op::exp:
      return std::exp(a);
    case expr_op::fix:
      return std::floor(a);
    case expr_op::fup:
      return std::ceil(a);
    case expr_op::ln:
      require(a > 0, "ln of a value not above zero");
      return std::log(a);
    case expr_op::round:
      return std::round(a);
    case expr_op::sin:
      return std::sin(a * deg);
    case expr_op::sqrt:
      require(a >= 0, "sqrt of a negative value");
      return std::sqrt(a);
    case expr_op::tan:
      return std::tan(a * deg);
    default:
      break;
  }
  throw std::logic_error("not a unary operation");
}

double arithmetic(expr_op op, double a, double b) {
  switch (op) {
    case expr_op::atan2:
      return std::atan2(a, b) / deg;
    case expr_op::power:
      require(a >= 0 || b == std::floor(b), "negative value to a fractional power");
      return std::pow(a, b);
    case expr_op::mul:
      return a * b;
    case expr_op::div:
      require(b != 0, "division by zero");
      return a / b;
    case expr_op::mod: {
      require(b != 0, "mod by zero");
      // The result lies in [0, |b|), as counters in programs expect.
      const double r = std::fmod(a, b);
      return r < 0 ? r + std::abs(b) : r;
    }
    case expr_op::add:
      return a + b;
    case expr_op::sub:
      return a - b;
    default:
      break;
  }
  throw std::logic_error("not an arithmetic operation");
}

double binary(expr_op op, double a, double b) {
  switch (op) {
    case expr_op::eq:
      return std::abs(a - b) < equal_tolerance;
    case expr_op::ne:
      return std::abs(a - b) >= equal_tolerance;
    case expr_op::gt:
      return a > b;
    case expr_op::ge:
      return a >= b;
    case expr_op::lt:
      return a < b;
    case expr_op::le:
      return a <= b;
    case expr_op::logical_and:
      return a != 0 && b != 0;
    case expr_op::logical_or:
      return a != 0 || b != 0;
    case expr_op::logical_xor:
      return (a != 0) != (b != 0);
    default:
      return arithmetic(op, a, b);
  }
}

}  // namespace

int evaluate_param_index(const expr_t& index, const param_store_t& params) {
  const double v = evaluate(index, params);
  const double whole = std::round(v);
  require(std::abs(v - whole) < equal_tolerance, "parameter number is not a whole number");
  require(std::abs(whole) <= param_store_t::max_index, "parameter number out of range");
  return static_cast<int>(whole);
}

double evaluate(const expr_t& e, const param_store_t& params) {
  switch (e.op) {
    case expr_op::number:
      return e.value;
    case expr_op::param:
      return params.get(evaluate_param_index(e.args[0], params));
    case expr_op::named_param:
      return params.get(e.name);
    default:
      break;
  }
  const double result = e.args.size() == 1 ? unary(e.op, evaluate(e.args[0], params))
                                           : binary(e.op, evaluate(e.args[0], params), evaluate(e.args[1], params));
  require(std::isfinite(result), "result too large");
  return result;
}

}  // namespace mill
