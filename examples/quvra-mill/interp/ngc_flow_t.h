#pragma once

// How the O-word control lines of a program fit together, worked out once
// before the program runs so that running it is only jumps. Openers and
// closers pair up by nesting, and each pair must share its label:
//   o1 sub .. o1 endsub            o1 if .. o1 elseif .. o1 else .. o1 endif
//   o1 while .. o1 endwhile        o1 do .. o1 while
//   o1 repeat .. o1 endrepeat      break, continue, return name their loop
//                                  or subroutine by its label

#include <map>
#include <string>
#include <vector>

#include "interp/ngc_line_t.h"

namespace mill {

// Line indices (into the program's line vector); -1 where a field does not
// apply.
struct ngc_link_t {
  int head = -1;           // endsub, endwhile, endrepeat, closing while: the opener;
                           // break, continue: the loop's opener; return: the sub
  int next = -1;           // if, elseif: the next branch (elseif, else or endif)
  int end = -1;            // sub, if, elseif, else, while, do, repeat: the closer
  bool closes_do = false;  // a while that ends a do loop
};

struct ngc_flow_t {
  std::vector<ngc_link_t> links;    // one per line
  std::map<std::string, int> subs;  // label to the line of its sub
};

// Throws source_error_t naming the control word that does not fit, and for
// a call of a subroutine the file does not define.
ngc_flow_t build_flow(const std::vector<ngc_line_t>& lines, const std::string& file);

}  // namespace mill
