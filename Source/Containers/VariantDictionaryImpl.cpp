#include "Containers/VariantDictionaryImpl.h"

#include <utility>

#include "Containers/VariantListImpl.h"
#include "Core/Guard.h"

namespace Data::impl {

using Structures::_VARIANT;

void VariantDictionaryImpl::ReleaseItems(Teardown& teardown) {
  if (!map_.MayHoldObjects()) return;
  auto entries = map_.TakeEntries();
  for (auto& entry : entries) {
    teardown.Release(entry.key);
    teardown.Release(entry.value);
  }
}

bool VariantDictionaryImpl::Get(const _VARIANT* key, _VARIANT* destination,
                                Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckRecord(key);
    Core::CheckArgument(destination);
    const auto held = HeldIf(map_.MayCallBack() || CallsBack(*key), this);
    Core::Variant value = map_.Get(*key);
    std::swap<_VARIANT>(value, *destination);  // its previous value is released last
  });
}

bool VariantDictionaryImpl::Contains(const _VARIANT* key, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckRecord(key);
    const auto held = HeldIf(map_.MayCallBack() || CallsBack(*key), this);
    return map_.Contains(*key);
  });
}

bool VariantDictionaryImpl::Set(const _VARIANT* key, const _VARIANT* value,
                                Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckRecord(key);
    Core::CheckRecord(value);
    const auto held = HeldIf(map_.MayCallBack() || CallsBack(*key) || CallsBack(*value), this);
    map_.Set(*key, *value);
  });
}

bool VariantDictionaryImpl::Clear() {
  map_.Clear();
  return true;
}

bool VariantDictionaryImpl::GetKeys(Interfaces::IVariantList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    const auto held = HeldIf(map_.MayCallBack(), this);
    const std::size_t count = map_.Entries().size();
    std::vector<Core::Variant> keys;
    keys.reserve(count);
    // By index, because adding a reference may call code that changes this dictionary.
    for (std::size_t i = 0; i < count && i < map_.Entries().size(); ++i)
      keys.push_back(map_.Entries()[i].key);
    *out = Core::MakePtr<VariantListImpl>(std::move(keys)).Detach();
  });
}

}  // namespace Data::impl
