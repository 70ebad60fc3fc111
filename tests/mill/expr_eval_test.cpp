#include "interp/expr_eval.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "interp/expr_parser.h"

namespace mill {
namespace {

// Values are read from normalised text, as the line parser hands them on:
// lower case and without blanks.
double eval(const std::string& text, const param_store_t& params = {}) {
  line_cursor_t cursor{text};
  const expr_t e = parse_real_value(cursor);
  if (!cursor.at_end()) throw std::invalid_argument("trailing text");
  return evaluate(e, params);
}

TEST(ExprEval, OperatorsBindByRankAndGroupFromTheLeft) {
  EXPECT_DOUBLE_EQ(eval("[1+2*3]"), 7);
  EXPECT_DOUBLE_EQ(eval("[2*3**2]"), 18);
  EXPECT_DOUBLE_EQ(eval("[2**3**2]"), 64);
  EXPECT_DOUBLE_EQ(eval("[10-4-3]"), 3);
  EXPECT_DOUBLE_EQ(eval("[12/4/3]"), 1);
  EXPECT_DOUBLE_EQ(eval("[[1+2]*3]"), 9);
  EXPECT_DOUBLE_EQ(eval("-[2+3]"), -5);
  EXPECT_DOUBLE_EQ(eval("[-2++3]"), 1);
  EXPECT_DOUBLE_EQ(eval(".5"), 0.5);
  EXPECT_DOUBLE_EQ(eval("3."), 3);
}

TEST(ExprEval, ModuloStaysInTheDivisorsRange) {
  EXPECT_DOUBLE_EQ(eval("[7mod3]"), 1);
  EXPECT_DOUBLE_EQ(eval("[-7mod3]"), 2);
  EXPECT_DOUBLE_EQ(eval("[7.5mod2]"), 1.5);
}

TEST(ExprEval, ComparisonsAndLogicGiveOneOrZero) {
  EXPECT_DOUBLE_EQ(eval("[1+2gt2]"), 1);
  EXPECT_DOUBLE_EQ(eval("[2ge3]"), 0);
  EXPECT_DOUBLE_EQ(eval("[2le2]"), 1);
  EXPECT_DOUBLE_EQ(eval("[2lt2]"), 0);
  EXPECT_DOUBLE_EQ(eval("[1eq1and0]"), 0);
  EXPECT_DOUBLE_EQ(eval("[0or2]"), 1);
  EXPECT_DOUBLE_EQ(eval("[1xor1]"), 0);
  EXPECT_DOUBLE_EQ(eval("[1xor0]"), 1);
  // Decimal steps do not add up exactly in binary; equality allows for it.
  EXPECT_DOUBLE_EQ(eval("[[0.1+0.1+0.1]eq0.3]"), 1);
  EXPECT_DOUBLE_EQ(eval("[[0.1+0.1+0.1]ne0.3]"), 0);
}

TEST(ExprEval, FunctionsWorkInDegrees) {
  EXPECT_NEAR(eval("sin[30]"), 0.5, 1e-12);
  EXPECT_NEAR(eval("cos[60]"), 0.5, 1e-12);
  EXPECT_NEAR(eval("tan[45]"), 1, 1e-12);
  EXPECT_NEAR(eval("asin[1]"), 90, 1e-12);
  EXPECT_NEAR(eval("acos[0]"), 90, 1e-12);
  EXPECT_NEAR(eval("atan[1]/[-1]"), 135, 1e-12);
  EXPECT_DOUBLE_EQ(eval("sqrt[16]"), 4);
  EXPECT_DOUBLE_EQ(eval("abs[-3]"), 3);
  EXPECT_DOUBLE_EQ(eval("fix[-2.5]"), -3);
  EXPECT_DOUBLE_EQ(eval("fup[2.1]"), 3);
  EXPECT_DOUBLE_EQ(eval("round[2.5]"), 3);
  EXPECT_DOUBLE_EQ(eval("exp[0]"), 1);
  EXPECT_DOUBLE_EQ(eval("ln[1]"), 0);
  EXPECT_DOUBLE_EQ(eval("[2*sqrt[[3*3]+[4*4]]]"), 10);
}

TEST(ExprEval, ParametersByNumberIndirectionAndName) {
  param_store_t params;
  params.set(1, 5);
  params.set(2, 1);
  params.set("_g", 2);
  params.set("loc", 3);
  EXPECT_DOUBLE_EQ(eval("#1", params), 5);
  EXPECT_DOUBLE_EQ(eval("##2", params), 5);
  EXPECT_DOUBLE_EQ(eval("#[#2+1]", params), 1);
  EXPECT_DOUBLE_EQ(eval("#<loc>", params), 3);
  EXPECT_DOUBLE_EQ(eval("[#1*#<_g>]", params), 10);
  EXPECT_DOUBLE_EQ(eval("#77", params), 0);  // unset numbered parameters read as zero
}

TEST(ExprEval, DomainAndSyntaxErrorsThrow) {
  const std::string too_long(400, '9');
  for (const char* bad : {"[1/0]", "[1mod0]",   "sqrt[-1]", "ln[0]",     "acos[2]",   "#<nope>",       "#[1.5]",
                          "#0",    "#6000",     "[1+]",     "[1foo2]",   "blah[1]",   "[1+2",          "atan[1]",
                          "sin3",  "[-8**0.5]", "",         "exp[1000]", "[10**400]", too_long.c_str()})
    EXPECT_THROW(eval(bad), std::invalid_argument) << bad;
}

}  // namespace
}  // namespace mill
