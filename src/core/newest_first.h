// A sequence that is read newest first and grows at its newest end.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "core/room.h"

namespace sorvan::core {

/// Reads like a vector whose first element is the newest. It is stored the other way round, so that putting in a new
/// element, which belongs first or nearly first, moves only the few that are newer, however many there are.
template <class Value>
class NewestFirst {
 public:
  using value_type = Value;
  using const_iterator = typename std::vector<Value>::const_reverse_iterator;
  using iterator = typename std::vector<Value>::reverse_iterator;

  NewestFirst() = default;
  /// Takes the elements in the order oldest to newest.
  explicit NewestFirst(std::vector<Value> oldestFirst) : stored_(std::move(oldestFirst)) {}

  std::size_t size() const { return stored_.size(); }
  bool empty() const { return stored_.empty(); }
  const Value& operator[](std::size_t index) const { return stored_[stored_.size() - 1 - index]; }
  Value& operator[](std::size_t index) { return stored_[stored_.size() - 1 - index]; }
  const Value& front() const { return stored_.back(); }
  const Value& back() const { return stored_.front(); }
  const_iterator begin() const { return stored_.crbegin(); }
  const_iterator end() const { return stored_.crend(); }
  iterator begin() { return stored_.rbegin(); }
  iterator end() { return stored_.rend(); }

  /// Puts an element before the one that now stands at `index`, counted from the newest.
  void insert(std::size_t index, Value value) {
    stored_.insert(stored_.end() - static_cast<std::ptrdiff_t>(index), std::move(value));
  }
  void clear() { stored_.clear(); }
  bool operator==(const NewestFirst&) const = default;

 private:
  std::vector<Value> stored_;
};

}  // namespace sorvan::core
