#include "Containers/VariantListImpl.h"

#include <utility>

namespace Data::impl {

VariantListImpl::VariantListImpl(std::vector<Core::Variant> items) : items_(std::move(items)) {}

bool VariantListImpl::GetAt(std::uint64_t index, Structures::_VARIANT* destination) {
  if (index >= items_.size()) return false;
  Core::CopyVariant(&items_[index], destination);
  return true;
}

void VariantListImpl::Add(const Structures::_VARIANT* value) {
  items_.push_back(value ? Core::Variant(*value) : Core::Variant());
}

void VariantListImpl::Clear() { const auto released = std::exchange(items_, {}); }

}  // namespace Data::impl
