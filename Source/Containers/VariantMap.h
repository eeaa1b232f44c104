#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Containers/VariantHash.h"
#include "Core/Variant.h"

namespace Data::impl {

/// A hash map of values: entries are added, given another value, or all removed at once.
///
/// `entries_` holds the keys and values in the order in which they were added. `slots_` finds
/// them: an open-addressed table with linear probing, a power of two in size and at most half
/// full. A key's hash gives the slot where its search begins; the search goes from slot to slot
/// until it meets an equal key or a free slot. Each slot keeps the hash of its entry, so that
/// most other keys are told apart without a look at them and the table grows without hashing
/// any key again.
///
/// Hashing and comparing keys, and counting references, may run code of the program, which may
/// change this very map. So a change is made at once, between two such calls, what it removes is
/// released after it, and a search looks at the table again after every comparison.
class VariantMap {
 public:
  struct Entry {
    Core::Variant key;
    Core::Variant value;
  };

  /// The value of an equal key.
  /// @throws std::out_of_range without one, and what hashing and comparing throw
  Core::Variant Get(const Structures::_VARIANT& key) const;
  /// @throws what hashing and comparing throw
  bool Contains(const Structures::_VARIANT& key) const;
  /// Gives the entry of an equal key another value, or adds an entry.
  /// @throws as `Contains`; the map is then as before
  void Set(const Structures::_VARIANT& key, Core::Variant value);
  void Clear();

  const std::vector<Entry>& Entries() const { return entries_; }
  std::vector<Entry>& Entries() { return entries_; }

 private:
  /// Refers to an entry by its number, counted from 1; 0 marks a free slot.
  struct Slot {
    std::uint64_t hash = 0;
    std::uint64_t entry = 0;
  };

  std::size_t FirstSlot(std::uint64_t hash) const;
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  std::uint64_t Find(const Structures::_VARIANT& key) const;
  std::uint64_t Find(const Structures::_VARIANT& key, std::uint64_t hash) const;
  void Add(Entry entry, std::uint64_t hash);
  void Occupy(Slot slot);
  void Grow();

  std::vector<Entry> entries_;
  std::vector<Slot> slots_;
  std::size_t occupied_ = 0;  ///< slots; keys that equal nothing have none
  std::uint64_t clears_ = 0;  ///< how often the map was cleared
};

}  // namespace Data::impl
