#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "Containers/CallingBack.h"
#include "Containers/VariantHash.h"
#include "Core/Variant.h"

namespace Data::impl {

/// A hash map of values. Entries can be added, given another value, or all removed at once.
///
/// `entries_` holds the keys and values in the order in which they were added. `slots_` finds them:
/// an open-addressed table with linear probing, a power of two in size and at most half full. The
/// lower bits of a key's spread hash give the slot where its search begins; the search goes from
/// slot to slot until it meets an equal key or a free slot. A slot keeps the next bits of the hash,
/// so most other keys are rejected without looking at them, and is as small as that allows: waiting
/// for it takes most of the time of a search. An entry keeps the whole hash, so the table grows
/// without hashing any key again.
///
/// Hashing and comparing keys, and counting references, may run the caller's code, which may change
/// this very map. So every change is made between two such calls, what it removes is released
/// afterwards, and a search reads the table again after every comparison.
class VariantMap {
 public:
  struct Entry {
    template <class Key, class Value>
    Entry(Key&& newKey, Value&& newValue, std::uint64_t keyHash)
        : key(std::forward<Key>(newKey)), value(std::forward<Value>(newValue)), hash(keyHash) {}

    Core::Variant key;
    Core::Variant value;
    std::uint64_t hash;
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
  /// The number of an entry, counted from 1, and above it bits of its hash; 0 if free. The number
  /// takes the bits of the mask, since there are more slots than entries.
  using Slot = std::uint32_t;

  template <class Key, class Value>
  void Put(Key&& key, Value&& value);
  static std::uint64_t SpreadHashOf(const Structures::_VARIANT& key);
  std::uint64_t Mask() const { return slots_.size() - 1; }
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & Mask(); }
  std::uint64_t Find(const Structures::_VARIANT& key) const;
  std::uint64_t Find(const Structures::_VARIANT& key, std::uint64_t hash) const {
    return FindAmong(entries_.size(), key, hash);
  }
  std::uint64_t FindAmong(std::size_t entryCount, const Structures::_VARIANT& key,
                          std::uint64_t hash) const;
  void Occupy(std::uint64_t entry, std::uint64_t hash);
  void Grow();

  std::vector<Entry> entries_;
  std::vector<Slot> slots_;
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
  const std::uint64_t hash = SpreadHashOf(key);
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
    if (2 * (entries_.size() + 1) > slots_.size()) Grow();
  }
  entries_.emplace_back(std::forward<Key>(key), std::forward<Value>(value), hash);
  if (hasSlot) Occupy(entries_.size(), hash);
}

inline std::vector<VariantMap::Entry> VariantMap::TakeEntries() {
  slots_ = std::vector<Slot>();
  ++clears_;
  return std::exchange(entries_, {});
}

/// The hash of a key, spread over all bits, because similar keys share lower bits of their hashes.
/// Different hashes stay different.
inline std::uint64_t VariantMap::SpreadHashOf(const Structures::_VARIANT& key) {
  const std::uint64_t product = HashOf(key) * 0x9E3779B97F4A7C15;
  return product ^ product >> 32;
}

inline std::uint64_t VariantMap::Find(const Structures::_VARIANT& key) const {
  const std::uint64_t hash = SpreadHashOf(key);
  return EqualsNothing(key) ? 0 : Find(key, hash);
}

/// The number of the entry with an equal key, or 0. Only the first entries are searched: those that
/// a comparison adds are skipped, so that the search ends.
inline std::uint64_t VariantMap::FindAmong(std::size_t entryCount, const Structures::_VARIANT& key,
                                           std::uint64_t hash) const {
  if (slots_.empty()) return 0;
  const std::uint64_t clears = clears_;
  const std::uint64_t mask = Mask();
  for (std::size_t i = hash & mask; slots_[i] != 0; i = NextSlot(i)) {
    const std::uint64_t number = slots_[i] & mask;
    const bool isOtherHash = (slots_[i] ^ static_cast<Slot>(hash)) > mask;
    if (isOtherHash || number > entryCount || entries_[number - 1].hash != hash) continue;
    const bool isEqual = AreEqualKeys(entries_[number - 1].key, key);
    if (clears_ != clears) return 0;
    if (isEqual) return number;
    // The table has grown: start again.
    if (Mask() != mask) return FindAmong(entryCount, key, hash);
  }
  return 0;
}

inline void VariantMap::Occupy(std::uint64_t entry, std::uint64_t hash) {
  std::size_t i = hash & Mask();
  while (slots_[i] != 0) i = NextSlot(i);
  slots_[i] = static_cast<Slot>((hash & ~Mask()) | entry);
}

/// @throws std::bad_alloc also for 2^31 entries, which take more than 100 GB
inline void VariantMap::Grow() {
  constexpr std::size_t kFewestSlots = 16;
  const std::size_t slotCount = std::max(kFewestSlots, std::bit_ceil(2 * (entries_.size() + 1)));
  if (slotCount - 1 > std::numeric_limits<Slot>::max()) throw std::bad_alloc();
  slots_ = std::vector<Slot>(slotCount);
  for (std::size_t i = 0; i < entries_.size(); ++i)
    if (!EqualsNothing(entries_[i].key)) Occupy(i + 1, entries_[i].hash);
}

}  // namespace Data::impl
