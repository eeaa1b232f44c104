#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Containers/CallingBack.h"
#include "Containers/VariantHash.h"
#include "Core/Variant.h"

namespace Data::impl {

/// A hash map of values. Entries can be added, given another value, or all removed at once.
///
/// `entries_` holds the keys and values in the order in which they were added. `slots_` finds them:
/// an open-addressed table with linear probing, a power of two in size and at most half full. A
/// key's hash gives the slot where its search begins; the search goes from slot to slot until it
/// meets an equal key or a free slot. Each slot keeps the hash of its entry, so most other keys are
/// rejected without comparing them, and the table grows without hashing any key again.
///
/// Hashing and comparing keys, and counting references, may run the caller's code, which may change
/// this very map. So every change is made between two such calls, what it removes is released
/// afterwards, and a search reads the table again after every comparison.
class VariantMap {
 public:
  struct Entry {
    template <class Key, class Value>
    Entry(Key&& newKey, Value&& newValue)
        : key(std::forward<Key>(newKey)), value(std::forward<Value>(newValue)) {}

    Core::Variant key;
    Core::Variant value;
  };

  /// The value of an equal key.
  /// @throws std::out_of_range if there is none, and what hashing and comparing throw
  Core::Variant Get(const Structures::_VARIANT& key) const;
  /// @throws what hashing and comparing throw
  bool Contains(const Structures::_VARIANT& key) const;
  /// Replaces the value of an equal key, or adds an entry.
  /// @throws as `Contains`; the map is then as before
  void Set(const Structures::_VARIANT& key, const Structures::_VARIANT& value);
  void Clear() { TakeEntries(); }
  /// Empties the map.
  std::vector<Entry> TakeEntries();

  std::vector<Entry>& Entries() { return entries_; }
  bool MayHoldObjects() const { return mayHoldObjects_; }
  /// Whether using the keys and values may run the caller's code.
  bool MayCallBack() const { return mayCallBack_; }

 private:
  /// Refers to an entry by its number, counted from 1; 0 marks a free slot.
  struct Slot {
    std::uint64_t hash = 0;
    std::uint64_t entry = 0;
  };

  template <class Key, class Value>
  void Put(Key&& key, Value&& value);
  std::size_t FirstSlot(std::uint64_t hash) const;
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  std::uint64_t Find(const Structures::_VARIANT& key) const;
  std::uint64_t Find(const Structures::_VARIANT& key, std::uint64_t hash) const {
    return FindAmong(entries_.size(), key, hash);
  }
  std::uint64_t FindAmong(std::size_t entryCount, const Structures::_VARIANT& key,
                          std::uint64_t hash) const;
  void Occupy(Slot slot);
  void Grow();

  std::vector<Entry> entries_;
  std::vector<Slot> slots_;
  std::size_t occupied_ = 0;  ///< slots in use; keys that equal nothing have none
  std::uint64_t clears_ = 0;  ///< how often the map was cleared
  bool mayHoldObjects_ = false;
  bool mayCallBack_ = false;
};

inline Core::Variant VariantMap::Get(const Structures::_VARIANT& key) const {
  const std::uint64_t found = Find(key);
  if (found == 0) Core::ThrowMissingKey();
  return entries_[found - 1].value;
}

inline bool VariantMap::Contains(const Structures::_VARIANT& key) const { return Find(key) != 0; }

inline void VariantMap::Set(const Structures::_VARIANT& key, const Structures::_VARIANT& value) {
  if (!Core::ReferencedObject(key) && !Core::ReferencedObject(value)) return Put(key, value);
  // References are added before the search, because adding one may change the map.
  mayHoldObjects_ = true;
  mayCallBack_ = mayCallBack_ || CallsBack(key) || CallsBack(value);
  Put(Core::Variant(key), Core::Variant(value));
}

template <class Key, class Value>
void VariantMap::Put(Key&& key, Value&& value) {
  const std::uint64_t hash = HashOf(key);
  const bool hasSlot = !EqualsNothing(key);
  if (hasSlot) {
    const std::size_t entryCount = entries_.size();
    const std::uint64_t clears = clears_;
    std::uint64_t found = Find(key, hash);
    // A comparison may have added this very key.
    const bool isChanged = entries_.size() != entryCount || clears_ != clears;
    if (found == 0 && isChanged) found = Find(key, hash);
    if (found != 0) {
      Core::Variant replaced(std::forward<Value>(value));  // released last
      return std::swap(entries_[found - 1].value, replaced);
    }
    if (2 * (occupied_ + 1) > slots_.size()) Grow();
  }
  entries_.emplace_back(std::forward<Key>(key), std::forward<Value>(value));
  if (hasSlot) Occupy({hash, entries_.size()});
}

inline std::vector<VariantMap::Entry> VariantMap::TakeEntries() {
  slots_ = std::vector<Slot>();
  occupied_ = 0;
  ++clears_;
  return std::exchange(entries_, {});
}

/// The slot of a hash: the upper bits of a product, because similar keys share lower bits.
inline std::size_t VariantMap::FirstSlot(std::uint64_t hash) const {
  return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15) >>
                                  (64 - std::countr_zero(slots_.size())));
}

inline std::uint64_t VariantMap::Find(const Structures::_VARIANT& key) const {
  const std::uint64_t hash = HashOf(key);
  return EqualsNothing(key) ? 0 : Find(key, hash);
}

/// The number of the entry with an equal key, or 0. Only the first entries are searched: those that
/// a comparison adds are skipped, so that the search ends.
inline std::uint64_t VariantMap::FindAmong(std::size_t entryCount, const Structures::_VARIANT& key,
                                           std::uint64_t hash) const {
  if (slots_.empty()) return 0;
  const std::uint64_t clears = clears_;
  const std::size_t slotCount = slots_.size();
  for (std::size_t i = FirstSlot(hash); slots_[i].entry != 0; i = NextSlot(i)) {
    const Slot slot = slots_[i];
    if (slot.hash != hash || slot.entry > entryCount) continue;
    const bool isEqual = AreEqualKeys(entries_[slot.entry - 1].key, key);
    if (clears_ != clears) return 0;
    if (isEqual) return slot.entry;
    // The table has grown: start again.
    if (slots_.size() != slotCount) return FindAmong(entryCount, key, hash);
  }
  return 0;
}

inline void VariantMap::Occupy(Slot slot) {
  std::size_t i = FirstSlot(slot.hash);
  while (slots_[i].entry != 0) i = NextSlot(i);
  slots_[i] = slot;
  ++occupied_;
}

inline void VariantMap::Grow() {
  const auto old =
      std::exchange(slots_, std::vector<Slot>(slots_.empty() ? 16 : 2 * slots_.size()));
  occupied_ = 0;
  for (const Slot& slot : old)
    if (slot.entry != 0) Occupy(slot);
}

}  // namespace Data::impl
