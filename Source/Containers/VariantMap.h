#pragma once

#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

#include "Containers/VariantHash.h"
#include "Core/Variant.h"

namespace Data::impl {

/// A map from `_VARIANT` keys that only grows or is emptied. Entries stand in
/// the order in which they were added; an open-addressed index of their
/// positions finds them, and keeps their hashes so that growth hashes no key
/// again.
template <class Value>
class VariantMap {
 public:
  struct Entry {
    Core::Variant key;
    Value value;
  };

  /// The value of an equal key, or null. Valid until the map grows.
  /// @throws what hashing and comparing throw
  Value* Find(const Structures::_VARIANT& key) {
    const std::uint64_t hash = HashOf(key);
    if (EqualsNothing(key)) return nullptr;
    return FindHashed(key, hash);
  }

  /// Gives an entry another value, or adds one.
  /// @throws as `Find`; the map is then as before
  void Set(const Structures::_VARIANT& key, Value value) {
    const std::uint64_t hash = HashOf(key);
    const bool isIndexed = !EqualsNothing(key);
    if (isIndexed) {
      if (Value* found = FindHashed(key, hash)) return std::swap(*found, value);
      if (2 * (indexed_ + 1) > slots_.size()) Grow();
    }
    entries_.push_back({Core::Variant(key), std::move(value)});
    if (isIndexed) Index(hash, entries_.size());
  }

  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  /// A power of two of them, at most half in use; place 0 marks a free one.
  struct Slot {
    std::uint64_t hash = 0;
    std::uint64_t place = 0;  ///< position in the entries, from 1
  };

  /// The first slot of a hash: its upper bits after a multiplication, since the
  /// lower ones of similar keys are alike.
  std::size_t FirstSlot(std::uint64_t hash) const {
    return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15) >>
                                    (64 - std::countr_zero(slots_.size())));
  }
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

  Value* FindHashed(const Structures::_VARIANT& key, std::uint64_t hash) {
    if (slots_.empty()) return nullptr;
    for (std::size_t i = FirstSlot(hash); slots_[i].place != 0; i = NextSlot(i)) {
      if (slots_[i].hash != hash) continue;
      Entry& entry = entries_[slots_[i].place - 1];
      if (AreEqualKeys(entry.key, key)) return &entry.value;
    }
    return nullptr;
  }

  void Index(std::uint64_t hash, std::uint64_t place) {
    std::size_t i = FirstSlot(hash);
    while (slots_[i].place != 0) i = NextSlot(i);
    slots_[i] = {hash, place};
    ++indexed_;
  }

  void Grow() {
    const auto old =
        std::exchange(slots_, std::vector<Slot>(slots_.empty() ? 16 : 2 * slots_.size()));
    indexed_ = 0;
    for (const Slot& slot : old)
      if (slot.place != 0) Index(slot.hash, slot.place);
  }

  std::vector<Entry> entries_;
  std::vector<Slot> slots_;
  std::size_t indexed_ = 0;
};

}  // namespace Data::impl
