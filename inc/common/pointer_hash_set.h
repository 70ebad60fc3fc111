#pragma once

// An open-addressing hash set of pointers to objects that live elsewhere
// (in a deque or in their own allocation), looked up by any key the caller
// can hash and compare with an object. Welding meshes of millions of
// triangles does millions of lookups; this table allocates only when it
// grows, and keeps no per-entry node.
//
// Lookups take the key's hash and an equality predicate, so the set itself
// stores no hash function: the caller passes hash_of(object) to rehash.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace common {

template <class T>
class pointer_hash_set {
 public:
  explicit pointer_hash_set(std::size_t expected = 0) { reserve(expected); }

  std::size_t size() const { return _size; }

  // Room for n entries without growing.
  void reserve(std::size_t n) {
    std::size_t want = 16;
    while (want < 2 * n) want *= 2;
    if (want > _slots.size()) _rehash(want);
  }

  // The stored object equal to the key, or null.
  template <class Equal>
  T* find(std::size_t hash, Equal&& equal) const {
    if (_slots.empty()) return nullptr;
    for (std::size_t i = _home(hash);; i = (i + 1) & _mask()) {
      const slot& s = _slots[i];
      if (!s.item) return nullptr;
      if (s.hash == hash && equal(*s.item)) return s.item;
    }
  }

  // Adds item, which must not be present.
  void insert(T* item, std::size_t hash) {
    if (2 * (_size + 1) > _slots.size()) _rehash(_slots.empty() ? 16 : 2 * _slots.size());
    _place(item, hash);
    ++_size;
  }

  // Calls fn(T*) for every entry, in table order.
  template <class Fn>
  void for_each(Fn&& fn) const {
    for (const slot& s : _slots)
      if (s.item) fn(s.item);
  }

  // Removes the entry holding item; answers whether it was there.
  bool erase(const T* item, std::size_t hash) {
    if (_slots.empty()) return false;
    std::size_t i = _home(hash);
    while (_slots[i].item && _slots[i].item != item) i = (i + 1) & _mask();
    if (!_slots[i].item) return false;
    _slots[i] = {};
    --_size;
    // Re-place the rest of the probe run, so that no lookup stops early.
    for (std::size_t j = (i + 1) & _mask(); _slots[j].item; j = (j + 1) & _mask()) {
      const slot moved = _slots[j];
      _slots[j] = {};
      _place(moved.item, moved.hash);
    }
    return true;
  }

 private:
  struct slot {
    T* item = nullptr;
    std::size_t hash = 0;
  };

  std::size_t _mask() const { return _slots.size() - 1; }

  // Keys often hash aligned pointers, whose low bits are zero: mix all bits
  // into the low ones before masking.
  std::size_t _home(std::size_t hash) const {
    std::uint64_t h = hash;
    h ^= h >> 33;
    h *= 0xff51afd7ed558ccdULL;
    h ^= h >> 33;
    return static_cast<std::size_t>(h) & _mask();
  }

  void _place(T* item, std::size_t hash) {
    std::size_t i = _home(hash);
    while (_slots[i].item) i = (i + 1) & _mask();
    _slots[i] = {item, hash};
  }

  void _rehash(std::size_t slots) {
    std::vector<slot> old = std::move(_slots);
    _slots.assign(slots, slot{});
    for (const slot& s : old)
      if (s.item) _place(s.item, s.hash);
  }

  std::vector<slot> _slots;
  std::size_t _size = 0;
};

}  // namespace common
