#include "interp/expr_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace mill {

namespace {

struct binary_op_t {
  std::string_view name;
  expr_op op;
  int rank;  // higher binds tighter
};

constexpr std::array<binary_op_t, 10> word_ops{{
    {"mod", expr_op::mod, 3},
    {"eq", expr_op::eq, 1},
    {"ne", expr_op::ne, 1},
    {"gt", expr_op::gt, 1},
    {"ge", expr_op::ge, 1},
    {"lt", expr_op::lt, 1},
    {"le", expr_op::le, 1},
    {"and", expr_op::logical_and, 0},
    {"or", expr_op::logical_or, 0},
    {"xor", expr_op::logical_xor, 0},
}};

constexpr std::array<std::pair<std::string_view, expr_op>, 13> functions{{
    {"abs", expr_op::abs},
    {"acos", expr_op::acos},
    {"asin", expr_op::asin},
    {"cos", expr_op::cos},
    {"exp", expr_op::exp},
    {"fix", expr_op::fix},
    {"fup", expr_op::fup},
    {"ln", expr_op::ln},
    {"round", expr_op::round},
    {"sin", expr_op::sin},
    {"sqrt", expr_op::sqrt},
    {"tan", expr_op::tan},
    {"atan", expr_op::atan2},
}};

[[noreturn]] void too_deep() { throw std::invalid_argument("value nested too deeply"); }

// The operands are moved in, never copied: a copy at every level made
// reading a long chain take time growing with the square of its length.
template <typename... Args>
expr_t make(expr_op op, Args... args) {
  expr_t e;
  e.op = op;
  e.args.reserve(sizeof...(Args));
  (e.args.push_back(std::move(args)), ...);
  for (const expr_t& a : e.args) e.height = std::max(e.height, a.height + 1);
  if (e.height > max_value_depth) too_deep();
  return e;
}

// Counts a value being read inside another for as long as it is read.
class depth_guard_t {
 public:
  explicit depth_guard_t(line_cursor_t& c) : c_(c) {
    if (c_.depth >= max_value_depth) too_deep();
    ++c_.depth;
  }
  ~depth_guard_t() { --c_.depth; }
  depth_guard_t(const depth_guard_t&) = delete;
  depth_guard_t& operator=(const depth_guard_t&) = delete;

 private:
  line_cursor_t& c_;
};

// Reads an operator if one follows; leaves the cursor where it was if not.
std::optional<binary_op_t> read_binary_op(line_cursor_t& c) {
  switch (c.peek()) {
    case '*':
      ++c.pos;
      if (c.accept('*')) return binary_op_t{"**", expr_op::power, 4};
      return binary_op_t{"*", expr_op::mul, 3};
    case '/':
      ++c.pos;
      return binary_op_t{"/", expr_op::div, 3};
    case '+':
      ++c.pos;
      return binary_op_t{"+", expr_op::add, 2};
    case '-':
      ++c.pos;
      return binary_op_t{"-", expr_op::sub, 2};
    default:
      break;
  }
  const std::size_t start = c.pos;
  const std::string_view letters = c.take_letters();
  if (letters.empty()) return std::nullopt;
  // Blanks are gone, so "1 eq abs[-1]" reads "1eqabs[-1]": the operator is
  // the one the letters start with (no operator's name starts another's),
  // and what follows it is read as a value.
  for (const binary_op_t& op : word_ops) {
    if (!letters.starts_with(op.name)) continue;
    c.pos = start + op.name.size();
    return op;
  }
  throw std::invalid_argument("unknown operator '" + std::string(letters) + "'");
}

expr_t parse_binary(line_cursor_t& c, int min_rank) {
  expr_t lhs = parse_real_value(c);
  while (true) {
    const std::size_t before = c.pos;
    const std::optional<binary_op_t> op = read_binary_op(c);
    if (!op) return lhs;
    if (op->rank < min_rank) {
      c.pos = before;
      return lhs;
    }
    expr_t rhs = parse_binary(c, op->rank + 1);
    lhs = make(op->op, std::move(lhs), std::move(rhs));
  }
}

expr_t parse_number(line_cursor_t& c) {
  const std::size_t start = c.pos;
  bool seen_point = false;
  bool seen_digit = false;
  while (true) {
    const char ch = c.peek();
    if (ch >= '0' && ch <= '9') {
      seen_digit = true;
    } else if (ch == '.' && !seen_point) {
      seen_point = true;
    } else {
      break;
    }
    ++c.pos;
  }
  if (!seen_digit) throw std::invalid_argument("expected a number");
  expr_t e;
  if (std::from_chars(c.text.data() + start, c.text.data() + c.pos, e.value).ec != std::errc())
    throw std::invalid_argument("number out of range");
  return e;
}

expr_t parse_function(line_cursor_t& c) {
  const std::string_view name = c.take_letters();
  for (const auto& [fname, op] : functions) {
    if (fname != name) continue;
    if (c.peek() != '[') throw std::invalid_argument("expected '[' after " + std::string(name));
    expr_t arg = parse_bracketed(c);
    if (op != expr_op::atan2) return make(op, std::move(arg));
    c.expect('/');
    if (c.peek() != '[') throw std::invalid_argument("atan takes the form atan[y]/[x]");
    return make(op, std::move(arg), parse_bracketed(c));
  }
  throw std::invalid_argument("unknown function '" + std::string(name) + "'");
}

}  // namespace

expr_t parse_param_ref(line_cursor_t& c) {
  c.expect('#');
  if (!c.accept('<')) return make(expr_op::param, parse_real_value(c));
  const std::size_t start = c.pos;
  while (!c.at_end() && c.peek() != '>') ++c.pos;
  if (c.pos == start) throw std::invalid_argument("empty parameter name");
  expr_t e;
  e.op = expr_op::named_param;
  e.name = std::string(c.text.substr(start, c.pos - start));
  c.expect('>');
  return e;
}

expr_t parse_bracketed(line_cursor_t& c) {
  c.expect('[');
  expr_t e = parse_binary(c, 0);
  c.expect(']');
  return e;
}

expr_t parse_real_value(line_cursor_t& c) {
  const depth_guard_t guard(c);
  const char ch = c.peek();
  if (ch == '[') return parse_bracketed(c);
  if (ch == '#') return parse_param_ref(c);
  if (ch == '-') {
    ++c.pos;
    return make(expr_op::neg, parse_real_value(c));
  }
  if (ch == '+') {
    ++c.pos;
    return parse_real_value(c);
  }
  if ((ch >= '0' && ch <= '9') || ch == '.') return parse_number(c);
  if (ch >= 'a' && ch <= 'z') return parse_function(c);
  throw std::invalid_argument("expected a value");
}

}  // namespace mill
