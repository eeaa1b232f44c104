#include "Containers/VariantListImpl.h"

#include <utility>

#include "Containers/CallingBack.h"

namespace Data::impl {

VariantListImpl::VariantListImpl(std::vector<Core::Variant> items) : items_(std::move(items)) {}

void VariantListImpl::ReleaseItems(Teardown& teardown) {
  auto items = std::exchange(items_, {});
  for (Core::Variant& item : items) teardown.Release(item);
}

bool VariantListImpl::GetAt(std::uint64_t index, Structures::_VARIANT* destination) {
  if (index >= items_.size()) return false;
  Core::CopyVariant(&items_[index], destination);
  return true;
}

void VariantListImpl::Add(const Structures::_VARIANT* value) {
  // Before the list grows: adding the reference may call code that changes or releases this list.
  const auto held = HeldIf(value && CallsBack(*value), this);
  Core::Variant item = value ? Core::Variant(*value) : Core::Variant();
  items_.push_back(std::move(item));
}

void VariantListImpl::Clear() { const auto released = std::exchange(items_, {}); }

}  // namespace Data::impl
