#include "interp/ngc_line_parser.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <stdexcept>

#include "interp/expr_parser.h"
#include "interp/source_error_t.h"
#include "interp/text_util.h"

namespace mill {

namespace {

struct keyword_form_t {
  std::string_view name;
  o_keyword keyword;
  std::size_t min_args;
  std::size_t max_args;
};

constexpr std::array<keyword_form_t, 15> keyword_forms{{
    {"sub", o_keyword::sub, 0, 0},
    {"endsub", o_keyword::endsub, 0, 1},
    {"call", o_keyword::call, 0, 30},
    {"return", o_keyword::return_, 0, 1},
    {"if", o_keyword::if_, 1, 1},
    {"elseif", o_keyword::elseif, 1, 1},
    {"else", o_keyword::else_, 0, 0},
    {"endif", o_keyword::endif, 0, 0},
    {"while", o_keyword::while_, 1, 1},
    {"endwhile", o_keyword::endwhile, 0, 0},
    {"do", o_keyword::do_, 0, 0},
    {"repeat", o_keyword::repeat, 1, 1},
    {"endrepeat", o_keyword::endrepeat, 0, 0},
    {"break", o_keyword::break_, 0, 0},
    {"continue", o_keyword::continue_, 0, 0},
}};

// Throws std::invalid_argument on a comment left open.
std::string normalise(std::string_view raw) {
  std::string out;
  bool in_comment = false;
  for (const char ch : raw) {
    if (in_comment) {
      in_comment = ch != ')';
    } else if (ch == '(') {
      in_comment = true;
    } else if (ch == ';') {
      break;
    } else if (!std::isspace(static_cast<unsigned char>(ch))) {
      out += static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    }
  }
  if (in_comment) throw std::invalid_argument("comment is not closed");
  return out;
}

std::string read_label(line_cursor_t& c) {
  if (c.accept('<')) {
    const std::size_t start = c.pos;
    while (!c.at_end() && c.peek() != '>') ++c.pos;
    c.expect('>');
    // The label keeps its brackets, as written.
    return std::string(c.text.substr(start - 1, c.pos - (start - 1)));
  }
  const std::size_t start = c.pos;
  while (std::isdigit(static_cast<unsigned char>(c.peek()))) ++c.pos;
  long number = 0;
  if (std::from_chars(c.text.data() + start, c.text.data() + c.pos, number).ec != std::errc())
    throw std::invalid_argument("expected an O-word number or <name>");
  return std::to_string(number);
}

void parse_control(line_cursor_t& c, ngc_line_t& line) {
  c.expect('o');
  line.label = read_label(c);
  // Blanks are gone, so "o1 endif g1" reads "o1endifg1": the keyword is the
  // longest one the letters start with.
  const std::size_t start = c.pos;
  const std::string_view letters = c.take_letters();
  const keyword_form_t* form = nullptr;
  for (const keyword_form_t& f : keyword_forms)
    if (letters.starts_with(f.name) && (!form || f.name.size() > form->name.size())) form = &f;
  if (!form) throw std::invalid_argument("unknown O-word keyword");
  c.pos = start + form->name.size();
  line.keyword = form->keyword;
  // Built in a fresh string: GCC 12 at -O3 warns (-Wrestrict, a false
  // positive) that copying text into an existing string may overlap it.
  std::string o_text("O");
  o_text += upper(line.label);
  o_text += ' ';
  o_text += upper(form->name);
  line.o_text = std::move(o_text);
  while (c.peek() == '[') line.args.push_back(parse_bracketed(c));
  if (!c.at_end()) throw std::invalid_argument("unexpected text after the O-word");
  if (line.args.size() < form->min_args || line.args.size() > form->max_args)
    throw std::invalid_argument("wrong number of bracketed values for this O-word");
}

void parse_item(line_cursor_t& c, ngc_line_t& line, std::size_t start) {
  if (c.peek() == '#') {
    ngc_setting_t setting;
    setting.target = parse_param_ref(c);
    c.expect('=');
    setting.value = parse_real_value(c);
    setting.text = upper(c.text.substr(start, c.pos - start));
    line.settings.push_back(std::move(setting));
    return;
  }
  const char letter = c.peek();
  if (letter < 'a' || letter > 'z') throw std::invalid_argument("unexpected character");
  ++c.pos;
  ngc_word_t word;
  word.letter = letter;
  word.value = parse_real_value(c);
  word.text = upper(c.text.substr(start, c.pos - start));
  line.words.push_back(std::move(word));
}

void skip_line_number(line_cursor_t& c) {
  c.accept('/');
  if (c.peek() != 'n' || !std::isdigit(static_cast<unsigned char>(c.peek(1)))) return;
  ++c.pos;
  while (std::isdigit(static_cast<unsigned char>(c.peek())) || c.peek() == '.') ++c.pos;
}

}  // namespace

ngc_line_t parse_ngc_line(std::string_view raw, const std::string& file, int number) {
  ngc_line_t line;
  line.number = number;
  std::string text;
  try {
    text = normalise(raw);
  } catch (const std::invalid_argument& e) {
    throw source_error_t(file, number, "(", e.what());
  }
  if (text == "%") {
    line.percent = true;
    return line;
  }
  line_cursor_t c{text};
  skip_line_number(c);
  std::size_t start = c.pos;
  try {
    if (c.peek() == 'o') {
      parse_control(c, line);
      return line;
    }
    for (; !c.at_end(); start = c.pos) parse_item(c, line, start);
  } catch (const std::invalid_argument& e) {
    const std::size_t end = std::min(std::max(c.pos + 1, start + 1), text.size());
    throw source_error_t(file, number, upper(std::string_view(text).substr(start, end - start)), e.what());
  }
  return line;
}

}  // namespace mill
