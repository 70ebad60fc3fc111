#pragma once

// The parameters an NGC program reads and sets.
//   #1 .. #5999   numbered, unset ones read as 0. #1-#30 are the arguments
//                 of a subroutine and belong to the call; the rest are
//                 global and include the work offsets (see work_offset.h).
//   #<name>       named, local to the subroutine call that set them, unless
//                 the name starts with '_', which makes it global. Reading
//                 a name never set is an error: it is almost always a typo.
// Every getter and setter throws std::invalid_argument on a bad reference.

#include <array>
#include <map>
#include <string>
#include <vector>

namespace mill {

class param_store_t {
 public:
  static constexpr int max_index = 5999;
  static constexpr int call_args = 30;

  param_store_t();

  double get(int index) const;
  void set(int index, double value);
  double get(const std::string& name) const;
  void set(const std::string& name, double value);

  // A subroutine call sets aside the caller's arguments and local names and
  // gives the callee args as #1, #2, ...; leaving restores them.
  void enter_call(const std::vector<double>& args);
  void leave_call();

 private:
  struct frame_t {
    std::array<double, call_args> args{};
    std::map<std::string, double> names;
  };

  std::vector<double> numbered_;
  std::map<std::string, double> globals_;
  std::vector<frame_t> saved_;
  std::map<std::string, double> locals_;
};

}  // namespace mill
