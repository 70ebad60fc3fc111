#include "interp/ngc_block_t.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include "interp/expr_eval.h"
#include "interp/source_error_t.h"

namespace mill {

namespace {

// Far above any code a machine knows; the bound keeps the number in an int.
constexpr double max_code_tenths = 1e6;

ngc_code_t make_code(double value, const std::string& text) {
  const double tenths = std::round(value * 10);
  if (std::abs(value * 10 - tenths) > 1e-6 || tenths < 0) throw std::invalid_argument("malformed code number");
  if (tenths > max_code_tenths) throw std::invalid_argument("unsupported word");
  return {static_cast<int>(tenths), text};
}

void add_word(ngc_block_t& block, const ngc_word_t& word, double value) {
  if (word.letter == 'g') {
    block.g.push_back(make_code(value, word.text));
  } else if (word.letter == 'm') {
    block.m.push_back(make_code(value, word.text));
  } else {
    block.add(word.letter, value, word.text);
  }
}

struct pending_setting_t {
  const ngc_setting_t* setting = nullptr;
  int index = 0;  // of a numbered target
  double value = 0;
};

}  // namespace

void ngc_block_t::add(char letter, double value, const std::string& text) {
  slot_t& s = slot(letter);
  if (s.present) throw std::invalid_argument("the letter appears twice in the block");
  s = {true, false, value, text};
}

std::optional<double> ngc_block_t::take(char letter) {
  if (!has(letter)) return std::nullopt;
  slot_t& s = slot(letter);
  s.used = true;
  return s.value;
}

const std::string* ngc_block_t::unused() const {
  for (const slot_t& s : slots_)
    if (s.present && !s.used) return &s.text;
  return nullptr;
}

ngc_block_t evaluate_block(const ngc_line_t& line, param_store_t& params, const std::string& file) {
  ngc_block_t block;
  std::vector<pending_setting_t> pending;
  const std::string* blamed = nullptr;
  try {
    for (const ngc_word_t& word : line.words) {
      blamed = &word.text;
      add_word(block, word, evaluate(word.value, params));
    }
    for (const ngc_setting_t& s : line.settings) {
      blamed = &s.text;
      const bool named = s.target.op == expr_op::named_param;
      pending.push_back({&s, named ? 0 : evaluate_param_index(s.target.args[0], params), evaluate(s.value, params)});
    }
    for (const pending_setting_t& p : pending) {
      blamed = &p.setting->text;
      if (p.setting->target.op == expr_op::named_param) {
        params.set(p.setting->target.name, p.value);
      } else {
        params.set(p.index, p.value);
      }
    }
  } catch (const std::invalid_argument& e) {
    throw source_error_t(file, line.number, blamed ? *blamed : std::string(), e.what());
  }
  return block;
}

}  // namespace mill
