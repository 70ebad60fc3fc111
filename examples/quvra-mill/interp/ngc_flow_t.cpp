#include "interp/ngc_flow_t.h"

#include <algorithm>

#include "interp/source_error_t.h"

namespace mill {

namespace {

class flow_builder_t {
 public:
  flow_builder_t(const std::vector<ngc_line_t>& lines, const std::string& file) : lines_(lines), file_(file) {
    flow_.links.resize(lines.size());
  }

  ngc_flow_t build() {
    for (int i = 0; i < static_cast<int>(lines_.size()); ++i)
      if (lines_[static_cast<std::size_t>(i)].is_control()) place(i);
    if (!open_.empty()) fail(open_.back(), "never closed");
    for (int i = 0; i < static_cast<int>(lines_.size()); ++i)
      if (line(i).keyword == o_keyword::call && !flow_.subs.contains(line(i).label))
        fail(i, "no such subroutine in this file");
    return std::move(flow_);
  }

 private:
  const ngc_line_t& line(int i) const { return lines_[static_cast<std::size_t>(i)]; }
  ngc_link_t& link(int i) { return flow_.links[static_cast<std::size_t>(i)]; }

  [[noreturn]] void fail(int i, const std::string& reason) const {
    throw source_error_t(file_, line(i).number, line(i).o_text, reason);
  }

  // The innermost open structure, which must be of one of the kinds and
  // carry the label of line i.
  int innermost(int i, std::initializer_list<o_keyword> kinds) const {
    if (open_.empty()) fail(i, "nothing open here to continue or close");
    const int top = open_.back();
    const bool kind_fits = std::find(kinds.begin(), kinds.end(), line(top).keyword) != kinds.end();
    if (!kind_fits || line(top).label != line(i).label) fail(i, "does not match the open " + line(top).o_text);
    return top;
  }

  // The nearest enclosing structure of one of the kinds with line i's label.
  int enclosing(int i, std::initializer_list<o_keyword> kinds) const {
    // Reverse iterators rather than std::views::reverse, which clang 14 (the
    // fuzzing compiler) cannot use with GCC 12's library.
    for (auto it = open_.rbegin(); it != open_.rend(); ++it)
      if (std::find(kinds.begin(), kinds.end(), line(*it).keyword) != kinds.end() && line(*it).label == line(i).label)
        return *it;
    fail(i, "not inside a structure with this label");
  }

  void close(int opener, int closer) {
    link(opener).end = closer;
    link(closer).head = opener;
    open_.pop_back();
  }

  void place(int i);
  void place_branch(int i);

  const std::vector<ngc_line_t>& lines_;
  const std::string& file_;
  ngc_flow_t flow_;
  std::vector<int> open_;         // openers not yet closed, innermost last
  std::vector<int> last_branch_;  // per open if: its latest branch line
};

void flow_builder_t::place(int i) {
  const ngc_line_t& l = line(i);
  switch (l.keyword) {
    case o_keyword::sub:
      if (!open_.empty()) fail(i, "a subroutine cannot be defined inside another structure");
      if (!flow_.subs.emplace(l.label, i).second) fail(i, "subroutine defined twice");
      open_.push_back(i);
      break;
    case o_keyword::while_:
      if (!open_.empty() && line(open_.back()).keyword == o_keyword::do_ && line(open_.back()).label == l.label) {
        link(i).closes_do = true;
        close(open_.back(), i);
        break;
      }
      [[fallthrough]];
    case o_keyword::do_:
    case o_keyword::repeat:
      open_.push_back(i);
      break;
    case o_keyword::if_:
    case o_keyword::elseif:
    case o_keyword::else_:
    case o_keyword::endif:
      place_branch(i);
      break;
    case o_keyword::endsub:
      close(innermost(i, {o_keyword::sub}), i);
      break;
    case o_keyword::endwhile:
      close(innermost(i, {o_keyword::while_}), i);
      break;
    case o_keyword::endrepeat:
      close(innermost(i, {o_keyword::repeat}), i);
      break;
    case o_keyword::break_:
    case o_keyword::continue_:
      link(i).head = enclosing(i, {o_keyword::while_, o_keyword::do_, o_keyword::repeat});
      break;
    case o_keyword::return_:
      link(i).head = enclosing(i, {o_keyword::sub});
      break;
    case o_keyword::call:
    case o_keyword::none:
      break;
  }
}

void flow_builder_t::place_branch(int i) {
  if (line(i).keyword == o_keyword::if_) {
    open_.push_back(i);
    last_branch_.push_back(i);
    return;
  }
  const int opener = innermost(i, {o_keyword::if_});
  const int previous = last_branch_.back();
  if (line(previous).keyword == o_keyword::else_ && line(i).keyword != o_keyword::endif)
    fail(i, "follows the else of its if");
  link(previous).next = i;
  if (line(i).keyword != o_keyword::endif) {
    last_branch_.back() = i;
    return;
  }
  for (int b = opener; b != i; b = link(b).next) link(b).end = i;
  open_.pop_back();
  last_branch_.pop_back();
}

}  // namespace

ngc_flow_t build_flow(const std::vector<ngc_line_t>& lines, const std::string& file) {
  return flow_builder_t(lines, file).build();
}

}  // namespace mill
