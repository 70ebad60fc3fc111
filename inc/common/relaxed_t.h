#pragma once

// A plain value that one thread writes while others read it, with no
// ordering promised: a reader may see an old value or a mix of fields of one
// object, never a torn single value. Loads and stores compile to plain moves
// on x86-64; the atomic access only keeps such reads defined behaviour (and
// ThreadSanitizer quiet) where a stale value is accepted by design.

#include <atomic>

namespace common {

template <class T>
class relaxed_t {
  static_assert(std::atomic_ref<T>::is_always_lock_free);

 public:
  relaxed_t() = default;
  relaxed_t(T v) : _value(v) {}  // NOLINT: converts like the value it holds
  relaxed_t(const relaxed_t& other) : _value(other.load()) {}
  relaxed_t& operator=(const relaxed_t& other) {
    store(other.load());
    return *this;
  }
  relaxed_t& operator=(T v) {
    store(v);
    return *this;
  }

  operator T() const { return load(); }  // NOLINT: reads like the value it holds
  T load() const { return std::atomic_ref<T>(const_cast<T&>(_value)).load(std::memory_order_relaxed); }
  void store(T v) { std::atomic_ref<T>(_value).store(v, std::memory_order_relaxed); }

 private:
  alignas(std::atomic_ref<T>::required_alignment) T _value{};
};

}  // namespace common
