#include "interp/param_store_t.h"

#include <algorithm>
#include <stdexcept>

namespace mill {

namespace {

void check_index(int index) {
  if (index < 1 || index > param_store_t::max_index)
    throw std::invalid_argument("parameter number " + std::to_string(index) + " out of range");
}

bool is_global(const std::string& name) { return !name.empty() && name[0] == '_'; }

}  // namespace

param_store_t::param_store_t() : numbered_(max_index + 1, 0.0) {}

double param_store_t::get(int index) const {
  check_index(index);
  return numbered_[static_cast<std::size_t>(index)];
}

void param_store_t::set(int index, double value) {
  check_index(index);
  numbered_[static_cast<std::size_t>(index)] = value;
}

double param_store_t::get(const std::string& name) const {
  const auto& scope = is_global(name) ? globals_ : locals_;
  const auto it = scope.find(name);
  if (it == scope.end()) throw std::invalid_argument("parameter #<" + name + "> was never set");
  return it->second;
}

void param_store_t::set(const std::string& name, double value) { (is_global(name) ? globals_ : locals_)[name] = value; }

void param_store_t::enter_call(const std::vector<double>& args) {
  if (args.size() > call_args)
    throw std::invalid_argument("a call takes at most " + std::to_string(call_args) + " arguments");
  frame_t saved;
  std::copy_n(numbered_.begin() + 1, call_args, saved.args.begin());
  saved.names.swap(locals_);
  saved_.push_back(std::move(saved));
  std::fill_n(numbered_.begin() + 1, call_args, 0.0);
  std::copy(args.begin(), args.end(), numbered_.begin() + 1);
}

void param_store_t::leave_call() {
  frame_t& saved = saved_.back();
  std::copy(saved.args.begin(), saved.args.end(), numbered_.begin() + 1);
  locals_.swap(saved.names);
  saved_.pop_back();
}

}  // namespace mill
