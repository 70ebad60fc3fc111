#pragma once

// One NGC block with its values computed: G and M codes, and the other
// letter words by letter. Executing a block takes words as it uses them;
// a word nobody took is a construct this interpreter does not understand,
// and the run stops on it rather than ignore it.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "interp/ngc_line_t.h"
#include "interp/param_store_t.h"

namespace mill {

struct ngc_code_t {
  int code = 0;  // ten times the number: G90.1 is 901
  std::string text;
};

class ngc_block_t {
 public:
  std::vector<ngc_code_t> g;
  std::vector<ngc_code_t> m;

  // Throws std::invalid_argument when the letter already has a word.
  void add(char letter, double value, const std::string& text);
  // Whether the letter has a word not taken yet. A word is taken once: two
  // codes of a block cannot both use one P.
  bool has(char letter) const { return slot(letter).present && !slot(letter).used; }
  // The value of a word not taken yet, which now counts as used.
  std::optional<double> take(char letter);
  const std::string& text(char letter) const { return slot(letter).text; }
  // The text of a word nobody took, or null.
  const std::string* unused() const;

 private:
  struct slot_t {
    bool present = false;
    bool used = false;
    double value = 0;
    std::string text;
  };
  const slot_t& slot(char letter) const { return slots_[static_cast<std::size_t>(letter - 'a')]; }
  slot_t& slot(char letter) { return slots_[static_cast<std::size_t>(letter - 'a')]; }

  std::array<slot_t, 26> slots_;
};

// Computes every word of the line with the parameters as they stand, then
// applies the line's parameter settings: all reads on a line see the values
// from before it. Throws source_error_t naming the failing word.
ngc_block_t evaluate_block(const ngc_line_t& line, param_store_t& params, const std::string& file);

}  // namespace mill
