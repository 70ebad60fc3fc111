#include "interp/ngc_line_parser.h"

#include <gtest/gtest.h>

#include "mill_test_support.h"

namespace mill {
namespace {

ngc_line_t parse(std::string_view text) { return parse_ngc_line(text, "prog.ngc", 7); }

std::vector<std::string> word_texts(const ngc_line_t& line) {
  std::vector<std::string> out;
  for (const ngc_word_t& w : line.words) out.push_back(w.text);
  return out;
}

TEST(NgcLineParser, DropsCommentsLineNumbersAndBlanks) {
  const ngc_line_t line = parse("/N10 g1 X1 0 . 5 (move in x) y-2 ; the rest (");
  EXPECT_EQ(line.number, 7);
  EXPECT_FALSE(line.is_control());
  EXPECT_EQ(word_texts(line), (std::vector<std::string>{"G1", "X10.5", "Y-2"}));
  EXPECT_EQ(line.words[1].letter, 'x');
  EXPECT_DOUBLE_EQ(line.words[1].value.value, 10.5);
}

TEST(NgcLineParser, KeepsExpressionsAndSettingsUnevaluated) {
  const ngc_line_t line = parse("#1 = [2 + 3] #<Depth>=-1 G1 X[#1 * 2] Z#<depth>");
  ASSERT_EQ(line.settings.size(), 2u);
  EXPECT_EQ(line.settings[0].target.op, expr_op::param);
  EXPECT_EQ(line.settings[1].target.op, expr_op::named_param);
  EXPECT_EQ(line.settings[1].target.name, "depth");  // names fold to lower case
  EXPECT_EQ(word_texts(line), (std::vector<std::string>{"G1", "X[#1*2]", "Z#<DEPTH>"}));
  EXPECT_EQ(line.words[1].value.op, expr_op::mul);
}

TEST(NgcLineParser, ReadsOWordControlLines) {
  const ngc_line_t sub = parse("O0100 sub (squares)");
  EXPECT_EQ(sub.keyword, o_keyword::sub);
  EXPECT_EQ(sub.label, "100");
  EXPECT_EQ(sub.o_text, "O100 SUB");

  const ngc_line_t call = parse("o<Pocket> call [1] [#2+1] [3]");
  EXPECT_EQ(call.keyword, o_keyword::call);
  EXPECT_EQ(call.label, "<pocket>");
  EXPECT_EQ(call.args.size(), 3u);

  EXPECT_EQ(parse("o1 if [#1 gt 2]").args.size(), 1u);
  EXPECT_EQ(parse("o1 endsub").keyword, o_keyword::endsub);
  EXPECT_EQ(parse("o1 return [5]").keyword, o_keyword::return_);
  EXPECT_TRUE(parse("%").percent);
  EXPECT_TRUE(parse("  ( only a comment )").words.empty());
}

TEST(NgcLineParser, ErrorsNameTheLineAndTheWord) {
  EXPECT_EQ(test::error_of([] { parse("G1 X10 (open comment"); }), "prog.ngc:7: comment is not closed '('");
  EXPECT_EQ(test::error_of([] { parse("G1 X*2"); }), "prog.ngc:7: expected a value 'X*'");
  EXPECT_EQ(test::error_of([] { parse("G1 X[1 foo 2]"); }), "prog.ngc:7: unknown operator 'foo' 'X[1FOO2'");
  EXPECT_EQ(test::error_of([] { parse("G1 @1"); }), "prog.ngc:7: unexpected character '@'");
  EXPECT_EQ(test::error_of([] { parse("o1 if"); }),
            "prog.ngc:7: wrong number of bracketed values for this O-word 'O1IF'");
  EXPECT_EQ(test::error_of([] { parse("o1 frobnicate"); }), "prog.ngc:7: unknown O-word keyword 'O1FROBNICATE'");
  EXPECT_EQ(test::error_of([] { parse("o1 endif G1"); }), "prog.ngc:7: unexpected text after the O-word 'O1ENDIFG'");
}

}  // namespace
}  // namespace mill
