#include "Containers/VariantPairListImpl.h"

#include <utility>

#include "Core/Guard.h"

namespace Data::impl {

using Structures::_VARIANT;

bool VariantPairListImpl::GetAt(std::uint64_t index, _VARIANT* key, _VARIANT* value,
                                Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(key);
    Core::CheckArgument(value);
    if (index >= pairs_.size()) throw std::runtime_error("Index out of bounds!");
    Core::CopyVariant(&pairs_[index].key, key);
    Core::CopyVariant(&pairs_[index].value, value);
  });
}

bool VariantPairListImpl::Add(const _VARIANT* key, const _VARIANT* value,
                              Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    for (const _VARIANT* record : {key, value}) {
      Core::CheckArgument(record);
      Core::CheckDefined(*record);
    }
    pairs_.push_back({Core::Variant(*key), Core::Variant(*value)});
  });
}

bool VariantPairListImpl::Clear() {
  const auto released = std::exchange(pairs_, {});
  return true;
}

}  // namespace Data::impl
