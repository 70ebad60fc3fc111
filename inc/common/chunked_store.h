#pragma once

// Append-only storage whose elements never move. A deque would do as much,
// but its half-kilobyte blocks lie scattered among whatever else the heap
// handed out meanwhile, and when the store goes they leave holes that the
// system never gets back. Here chunks double in size up to a megabyte, so a
// small store stays small and a large one frees whole pages.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace common {

template <class T>
class chunked_store {
 public:
  chunked_store() = default;
  chunked_store(const chunked_store&) = delete;
  chunked_store& operator=(const chunked_store&) = delete;
  ~chunked_store() {
    for (chunk_t& c : _chunks)
      for (std::size_t i = 0; i < c.used; ++i) c.at(i)->~T();
  }

  template <class... Args>
  T& emplace_back(Args&&... args) {
    if (_chunks.empty() || _chunks.back().used == _chunks.back().capacity) _add_chunk();
    chunk_t& c = _chunks.back();
    T* item = ::new (c.at(c.used)) T(std::forward<Args>(args)...);
    ++c.used;
    ++_size;
    return *item;
  }

  std::size_t size() const { return _size; }

 private:
  static constexpr std::size_t first_items = 64;
  static constexpr std::size_t most_items = std::max<std::size_t>(first_items, (std::size_t{1} << 20) / sizeof(T));

  struct storage_t {
    alignas(T) unsigned char bytes[sizeof(T)];
  };
  struct chunk_t {
    std::unique_ptr<storage_t[]> items;
    std::size_t capacity;
    std::size_t used = 0;
    T* at(std::size_t i) { return reinterpret_cast<T*>(&items[i]); }
  };

  void _add_chunk() {
    const std::size_t capacity = _chunks.empty() ? first_items : std::min(2 * _chunks.back().capacity, most_items);
    _chunks.push_back(chunk_t{std::make_unique_for_overwrite<storage_t[]>(capacity), capacity});
  }

  std::vector<chunk_t> _chunks;
  std::size_t _size = 0;
};

}  // namespace common
