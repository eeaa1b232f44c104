#include "Containers/VariantDictionaryImpl.h"

#include <utility>

#include "Containers/VariantListImpl.h"
#include "Core/Guard.h"

namespace Data::impl {

using Structures::_VARIANT;

namespace {

void CheckRecord(const _VARIANT* record) {
  Core::CheckArgument(record);
  Core::CheckDefined(*record);
}

}  // namespace

bool VariantDictionaryImpl::Get(const _VARIANT* key, _VARIANT* destination,
                                Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    CheckRecord(key);
    Core::CheckArgument(destination);
    const Core::Variant* value = map_.Find(*key);
    if (!value) Core::ThrowMissingKey();
    Core::CopyVariant(value, destination);
  });
}

bool VariantDictionaryImpl::Contains(const _VARIANT* key, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    CheckRecord(key);
    return map_.Find(*key) != nullptr;
  });
}

bool VariantDictionaryImpl::Set(const _VARIANT* key, const _VARIANT* value,
                                Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    CheckRecord(key);
    CheckRecord(value);
    map_.Set(*key, Core::Variant(*value));
  });
}

bool VariantDictionaryImpl::Clear() {
  const auto released = std::exchange(map_, {});
  return true;
}

bool VariantDictionaryImpl::GetKeys(Interfaces::IVariantList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    std::vector<Core::Variant> keys;
    keys.reserve(map_.Entries().size());
    for (const auto& entry : map_.Entries()) keys.push_back(entry.key);
    *out = Core::MakePtr<VariantListImpl>(std::move(keys)).Detach();
  });
}

}  // namespace Data::impl
