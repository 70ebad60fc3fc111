#pragma once

// Byte-budgeted least-recently-used caches of derived data.
//
// An entry (cache_t<T>) is shared by whoever derived it and by one cache's
// list. The deriving side keeps only a weak pointer, so the list alone keeps
// an entry alive: when the list drops it, the weak pointer fails to lock and
// the data is derived again. Whoever holds a locked entry may keep using it
// after eviction; the payload never changes once the entry is made.
//
// The cache charges each entry a cost fixed when the entry is made. A cap
// of 0 lets only the newest entry stay: it is appended after the eviction.

#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <utility>

namespace common {

// The list's view of an entry: where it stands, and what it costs.
class cache_entry_base_t {
 public:
  explicit cache_entry_base_t(std::uint64_t cost_bytes) : cost(cost_bytes) {}
  cache_entry_base_t(const cache_entry_base_t&) = delete;
  cache_entry_base_t& operator=(const cache_entry_base_t&) = delete;

  const std::uint64_t cost;

 private:
  friend class lru_cache_t;
  // Both guarded by the lock of the cache that lists the entry.
  bool _listed = false;
  std::list<std::shared_ptr<cache_entry_base_t>>::iterator _position;

 protected:
  ~cache_entry_base_t() = default;
};

template <class T>
class cache_t final : public cache_entry_base_t {
 public:
  cache_t(T value, std::uint64_t cost_bytes) : cache_entry_base_t(cost_bytes), payload(std::move(value)) {}

  const T payload;
};

// One process-wide cache: the list of entries, oldest first, with the sum of
// their costs. The lock is held only for list work, never while a payload is
// derived.
class lru_cache_t {
 public:
  explicit lru_cache_t(std::uint64_t cap_bytes) : _cap(cap_bytes) {}
  lru_cache_t(const lru_cache_t&) = delete;
  lru_cache_t& operator=(const lru_cache_t&) = delete;

  // Makes entry the newest. An entry not yet listed first evicts the oldest
  // entries while the total is over the cap. Evicted entries are let go
  // after the lock is released, since a payload's destructor may wait for
  // other locks (a drawing's for the GL context).
  void touch(const std::shared_ptr<cache_entry_base_t>& entry) {
    std::list<std::shared_ptr<cache_entry_base_t>> evicted;
    const std::lock_guard lock(_mutex);
    if (!entry->_listed) {
      while (_used > _cap && !_list.empty()) {
        _unlist(*_list.front());
        evicted.splice(evicted.end(), _list, _list.begin());
      }
    } else {
      _used -= entry->cost;
      _list.erase(entry->_position);
    }
    _used += entry->cost;
    entry->_position = _list.insert(_list.end(), entry);
    entry->_listed = true;
  }

  // Drops every entry from the list. The byte total is left as it was, so
  // the next inserts evict against it until it has been worked off: clearing
  // is meant to free memory at once, not to grant a fresh budget.
  void clear() {
    std::list<std::shared_ptr<cache_entry_base_t>> dropped;
    const std::lock_guard lock(_mutex);
    for (const auto& entry : _list) entry->_listed = false;
    dropped.swap(_list);
  }

  // Takes effect at the next insert.
  void set_cap(std::uint64_t cap_bytes) {
    const std::lock_guard lock(_mutex);
    _cap = cap_bytes;
  }

  std::uint64_t cap() const {
    const std::lock_guard lock(_mutex);
    return _cap;
  }
  std::uint64_t used_bytes() const {
    const std::lock_guard lock(_mutex);
    return _used;
  }
  std::size_t size() const {
    const std::lock_guard lock(_mutex);
    return _list.size();
  }

 private:
  void _unlist(cache_entry_base_t& entry) {
    _used -= entry.cost;
    entry._listed = false;
  }

  mutable std::mutex _mutex;
  std::uint64_t _used = 0;
  std::uint64_t _cap;
  std::list<std::shared_ptr<cache_entry_base_t>> _list;
};

}  // namespace common
