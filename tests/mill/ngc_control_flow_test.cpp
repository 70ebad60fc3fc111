// O-word subroutines and control structures, run through the interpreter.

#include <gtest/gtest.h>

#include "interp/ngc_interpreter.h"
#include "mill_test_support.h"

namespace mill {
namespace {

// The X of every move's end, in order.
std::vector<double> xs(const program_t& p) {
  std::vector<double> out;
  for (const move_t& m : p.moves) out.push_back(m.end[0]);
  return out;
}

TEST(NgcControlFlow, SubroutinesTakeArgumentsAndMayBeDefinedAfterUse) {
  const program_t p = test::ngc(
      "G0 X1\n"
      "o100 call [3] [4]\n"
      "o100 call [5] [6]\n"
      "M2\n"
      "o100 sub\n"
      "  G1 X#1 Y#2 F100\n"
      "o100 endsub\n");
  ASSERT_EQ(p.moves.size(), 3u);
  test::expect_point(p.moves[1].end, {3, 4, 0});
  test::expect_point(p.moves[2].end, {5, 6, 0});
  EXPECT_EQ(p.moves[2].line, 6u);
}

TEST(NgcControlFlow, ReturnValueAndParameterScopes) {
  const program_t p = test::ngc(
      "o<square> sub\n"
      "  #<local> = #1\n"
      "  #<_calls> = [#<_calls> + 1]\n"
      "  o<square> return [#<local> * #1]\n"
      "  G0 X999\n"
      "o<square> endsub\n"
      "#1 = 7 #<_calls> = 0\n"
      "o<square> call [3]\n"
      "G0 X#<_value> Y#1\n"
      "o<square> call [4]\n"
      "G0 X#<_value> Y#<_calls>\n");
  ASSERT_EQ(p.moves.size(), 2u);
  test::expect_point(p.moves[0].end, {9, 7, 0});  // #1 is the caller's again
  test::expect_point(p.moves[1].end, {16, 2, 0});
  EXPECT_EQ(test::ngc_error("o1 sub\n#<t>=1\no1 endsub\no1 call\nG0 X#<t>\n"),
            "prog.ngc:5: parameter #<t> was never set 'X#<T>'");
}

TEST(NgcControlFlow, RecursionUnwindsThroughEveryCall) {
  const program_t p = test::ngc(
      "o<down> sub\n"
      "  o1 if [#1 gt 0]\n"
      "    G0 X#1\n"
      "    o<down> call [#1 - 1]\n"
      "    G0 Y#1\n"
      "  o1 endif\n"
      "o<down> endsub\n"
      "o<down> call [3]\n");
  ASSERT_EQ(p.moves.size(), 6u);
  EXPECT_EQ(xs(p), (std::vector<double>{3, 2, 1, 1, 1, 1}));
  EXPECT_EQ(p.moves[5].end[1], 3);
}

TEST(NgcControlFlow, IfElseifElseTakesTheFirstTrueBranch) {
  const char* program =
      "o1 if [#1 eq 1]\n"
      "  G0 X10\n"
      "o1 elseif [#1 eq 2]\n"
      "  G0 X20\n"
      "o1 elseif [#1 eq 3]\n"
      "  G0 X30\n"
      "o1 else\n"
      "  G0 X40\n"
      "o1 endif\n"
      "G0 Z1\n";
  for (const int n : {1, 2, 3, 4}) {
    const program_t p = test::ngc("#1=" + std::to_string(n) + "\n" + program);
    ASSERT_EQ(p.moves.size(), 2u) << n;
    EXPECT_EQ(p.moves[0].end[0], 10 * n);
  }
  EXPECT_EQ(test::ngc("o1 if [0]\nG0 X1\no1 endif\nG0 X2\n").moves.size(), 1u);
}

TEST(NgcControlFlow, WhileDoAndRepeatLoops) {
  EXPECT_EQ(xs(test::ngc("#1=0\no1 while [#1 lt 3]\n#1=[#1+1]\nG0 X#1\no1 endwhile\n")),
            (std::vector<double>{1, 2, 3}));
  // A do loop runs its body once before the first test.
  EXPECT_EQ(xs(test::ngc("#1=5\no1 do\nG0 X#1\n#1=[#1+1]\no1 while [#1 lt 3]\n")), (std::vector<double>{5}));
  EXPECT_EQ(xs(test::ngc("G91 G0\no1 repeat [4]\nX1\no1 endrepeat\n")), (std::vector<double>{1, 2, 3, 4}));
  EXPECT_TRUE(test::ngc("G91 G0\no1 repeat [0]\nX1\no1 endrepeat\n").moves.empty());
  const program_t nested =
      test::ngc("G91 G0\no1 repeat [3]\n  o2 repeat [2]\n    X1\n  o2 endrepeat\n  Y1\no1 endrepeat\n");
  EXPECT_EQ(nested.moves.size(), 9u);
  test::expect_point(nested.moves.back().end, {6, 3, 0});
}

TEST(NgcControlFlow, BreakAndContinueLeaveOrRestartTheirLoop) {
  EXPECT_EQ(xs(test::ngc("#1=0\n"
                         "o1 while [1]\n"
                         "  #1=[#1+1]\n"
                         "  o2 if [#1 eq 2]\n"
                         "    o1 continue\n"
                         "  o2 endif\n"
                         "  o3 if [#1 gt 4]\n"
                         "    o1 break\n"
                         "  o3 endif\n"
                         "  G0 X#1\n"
                         "o1 endwhile\n")),
            (std::vector<double>{1, 3, 4}));
  // Breaking out of o1 from inside o2 drops both counts, so o0 counts on
  // its own: two passes of X1 then Y1.
  EXPECT_EQ(xs(test::ngc("G91 G0\n"
                         "o0 repeat [2]\n"
                         "  o1 repeat [5]\n"
                         "    o2 repeat [5]\n"
                         "      X1\n"
                         "      o1 break\n"
                         "    o2 endrepeat\n"
                         "  o1 endrepeat\n"
                         "  Y1\n"
                         "o0 endrepeat\n")),
            (std::vector<double>{1, 1, 2, 2}));
}

TEST(NgcControlFlow, ProgramEndsAtM2InsideASubAndAtTheSecondPercent) {
  EXPECT_EQ(test::ngc("o1 sub\nG0 X1\nM2\no1 endsub\no1 call\nG0 X2\n").moves.size(), 1u);
  EXPECT_EQ(xs(test::ngc("%\nG0 X1\n%\nG0 X2\n")), (std::vector<double>{1}));
}

TEST(NgcControlFlow, MisplacedControlWordsAreNamed) {
  EXPECT_EQ(test::ngc_error("G0 X1\no1 endif\n"), "prog.ngc:2: nothing open here to continue or close 'O1 ENDIF'");
  EXPECT_EQ(test::ngc_error("o1 if [1]\no2 endif\n"), "prog.ngc:2: does not match the open O1 IF 'O2 ENDIF'");
  EXPECT_EQ(test::ngc_error("o1 while [1]\nG0 X1\n"), "prog.ngc:1: never closed 'O1 WHILE'");
  EXPECT_EQ(test::ngc_error("o5 call\n"), "prog.ngc:1: no such subroutine in this file 'O5 CALL'");
  EXPECT_EQ(test::ngc_error("o1 if [1]\no1 else\no1 else\no1 endif\n"),
            "prog.ngc:3: follows the else of its if 'O1 ELSE'");
  EXPECT_EQ(test::ngc_error("o1 repeat [2]\no2 break\no1 endrepeat\n"),
            "prog.ngc:2: not inside a structure with this label 'O2 BREAK'");
  EXPECT_EQ(test::ngc_error("o1 sub\no1 endsub\no1 sub\no1 endsub\n"), "prog.ngc:3: subroutine defined twice 'O1 SUB'");
  EXPECT_EQ(test::ngc_error("o1 if [#<nope>]\no1 endif\n"), "prog.ngc:1: parameter #<nope> was never set 'O1 IF'");
  EXPECT_EQ(test::ngc_error("o1 repeat [1.5]\no1 endrepeat\n"),
            "prog.ngc:1: repeat count must be a whole number 'O1 REPEAT'");
}

TEST(NgcControlFlow, EndlessLoopsAndRecursionAreCutShort) {
  interp_options_t options;
  options.max_steps = 1000;
  EXPECT_EQ(test::ngc_error("o1 while [1]\no1 endwhile\n", options),
            "prog.ngc:1: too many steps; the program may loop forever");
  EXPECT_EQ(test::ngc_error("o1 sub\no1 call\no1 endsub\no1 call\n"),
            "prog.ngc:2: subroutine calls nested too deep 'O1 CALL'");
}

}  // namespace
}  // namespace mill
