#include "Containers/VariantPairListImpl.h"

#include <stdexcept>
#include <utility>

#include "Containers/CallingBack.h"
#include "Core/Guard.h"

namespace Data::impl {

using Structures::_VARIANT;

void VariantPairListImpl::ReleaseItems(Teardown& teardown) {
  auto pairs = std::exchange(pairs_, {});
  for (Pair& pair : pairs) {
    teardown.Release(pair.key);
    teardown.Release(pair.value);
  }
}

void VariantPairListImpl::CheckIndex(std::uint64_t index) const {
  if (index >= pairs_.size()) throw std::runtime_error("Index out of bounds!");
}

bool VariantPairListImpl::GetAt(std::uint64_t index, _VARIANT* key, _VARIANT* value,
                                Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(key);
    Core::CheckArgument(value);
    CheckIndex(index);
    // Adding the key's reference may call code that changes or releases this list.
    const auto held = HeldIf(CallsBack(pairs_[index].key), this);
    Core::Variant foundKey = pairs_[index].key;
    CheckIndex(index);
    Core::Variant foundValue = pairs_[index].value;
    // The destinations' previous values are released last.
    std::swap<_VARIANT>(foundKey, *key);
    std::swap<_VARIANT>(foundValue, *value);
  });
}

bool VariantPairListImpl::Add(const _VARIANT* key, const _VARIANT* value,
                              Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    for (const _VARIANT* record : {key, value}) {
      Core::CheckRecord(record);
    }
    // Before the list grows: adding a reference may call code that changes or releases this list.
    const auto held = HeldIf(CallsBack(*key) || CallsBack(*value), this);
    Pair pair{Core::Variant(*key), Core::Variant(*value)};
    pairs_.push_back(std::move(pair));
  });
}

bool VariantPairListImpl::Clear() {
  const auto released = std::exchange(pairs_, {});
  return true;
}

}  // namespace Data::impl
