#include "Containers/ConfigurationImpl.h"

#include <utility>

#include "Containers/CallingBack.h"

namespace Data::impl {

using Structures::_VARIANT;

void ConfigurationImpl::ReleaseItems(Teardown& teardown) {
  if (!mayHoldObjects_) return;
  for (std::uint64_t i = 0; i < entries_.Count(); ++i) teardown.Release(entries_.ValueAt(i));
}

Core::Variant* ConfigurationImpl::Find(const char* name) {
  if (entries_.Count() == 0) return nullptr;
  Core::CheckArgument(name);
  return entries_.Find(name);
}

bool ConfigurationImpl::Contains(const char* name) { return Find(name) != nullptr; }

const char* ConfigurationImpl::GetNameAt(std::uint64_t index) {
  return index < listedNames_ ? entries_.NameAt(index) : nullptr;
}

bool ConfigurationImpl::Get(const char* name, _VARIANT* destination) {
  const Core::Variant* value = Find(name);
  if (!value) return false;
  Core::CopyVariant(value, destination);
  return true;
}

void ConfigurationImpl::Set(const char* name, const _VARIANT* value) {
  Core::CheckArgument(name);
  // Before the configuration changes: adding the reference may call code that uses or releases it.
  const auto held = HeldIf(value && CallsBack(*value), this);
  Core::Variant copy = value ? Core::Variant(*value) : Core::Variant();
  Core::Variant* existing = Find(name);
  // A rejected value leaves a new name in the configuration, but not among the enumerated names.
  Core::Variant& entry = existing ? *existing : entries_.Add(name, {});
  Core::CheckInitialized(value);
  if (!existing) listedNames_ = entries_.Count();
  if (Core::ReferencedObject(copy)) mayHoldObjects_ = true;
  std::swap(entry, copy);  // the replaced value is released last
}

}  // namespace Data::impl
