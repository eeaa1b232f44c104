#include "Containers/VariantMap.h"

#include <bit>
#include <utility>

namespace Data::impl {

using Structures::_VARIANT;

Core::Variant VariantMap::Get(const _VARIANT& key) const {
  const std::uint64_t found = Find(key);
  if (found == 0) Core::ThrowMissingKey();
  return entries_[found - 1].value;
}

bool VariantMap::Contains(const _VARIANT& key) const { return Find(key) != 0; }

void VariantMap::Set(const _VARIANT& key, Core::Variant value) {
  // Copied before the search, because adding the reference may change the map.
  Entry entry{Core::Variant(key), std::move(value)};
  const std::uint64_t hash = HashOf(entry.key);
  if (EqualsNothing(entry.key)) {
    entries_.push_back(std::move(entry));
  } else if (const std::uint64_t found = Find(entry.key, hash)) {
    std::swap(entries_[found - 1].value, entry.value);
  } else {
    Add(std::move(entry), hash);
  }
}

void VariantMap::Clear() {
  const auto released = std::exchange(entries_, {});
  slots_ = std::vector<Slot>();
  occupied_ = 0;
  ++clears_;
}

/// The slot of a hash: the upper bits of a product, because similar keys share lower bits.
std::size_t VariantMap::FirstSlot(std::uint64_t hash) const {
  return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15) >>
                                  (64 - std::countr_zero(slots_.size())));
}

std::uint64_t VariantMap::Find(const _VARIANT& key) const {
  const std::uint64_t hash = HashOf(key);
  return EqualsNothing(key) ? 0 : Find(key, hash);
}

/// The number of the entry with an equal key, or 0. Entries that a comparison adds are not
/// looked at, so that the search ends.
std::uint64_t VariantMap::Find(const _VARIANT& key, std::uint64_t hash) const {
  if (slots_.empty()) return 0;
  const std::uint64_t clears = clears_, entryCount = entries_.size();
  std::size_t slotCount = slots_.size();
  std::size_t i = FirstSlot(hash);
  while (slots_[i].entry != 0) {
    const Slot slot = slots_[i];
    if (slot.hash == hash && slot.entry <= entryCount) {
      const bool isEqual = AreEqualKeys(entries_[slot.entry - 1].key, key);
      if (clears_ != clears) return 0;
      if (isEqual) return slot.entry;
    }
    const bool hasGrown = slots_.size() != slotCount;
    i = hasGrown ? FirstSlot(hash) : NextSlot(i);
    slotCount = slots_.size();
  }
  return 0;
}

void VariantMap::Add(Entry entry, std::uint64_t hash) {
  if (2 * (occupied_ + 1) > slots_.size()) Grow();
  entries_.push_back(std::move(entry));
  Occupy({hash, entries_.size()});
}

void VariantMap::Occupy(Slot slot) {
  std::size_t i = FirstSlot(slot.hash);
  while (slots_[i].entry != 0) i = NextSlot(i);
  slots_[i] = slot;
  ++occupied_;
}

void VariantMap::Grow() {
  const auto old =
      std::exchange(slots_, std::vector<Slot>(slots_.empty() ? 16 : 2 * slots_.size()));
  occupied_ = 0;
  for (const Slot& slot : old)
    if (slot.entry != 0) Occupy(slot);
}

}  // namespace Data::impl
