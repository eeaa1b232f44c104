#include "Containers/ConfigurationImpl.h"

namespace Data::impl {

using Structures::_VARIANT;

std::uint32_t ConfigurationImpl::Release() {
  const std::uint32_t before = references_.fetch_sub(1);
  if (before <= 1) Destroy();
  return before - 1;
}

bool ConfigurationImpl::Contains(const char* name) {
  if (entries_.Count() == 0) return false;
  Core::CheckArgument(name);
  return entries_.Find(name) != nullptr;
}

const char* ConfigurationImpl::GetNameAt(std::uint64_t index) {
  return index < listedNames_ ? entries_.NameAt(index) : nullptr;
}

bool ConfigurationImpl::Get(const char* name, _VARIANT* destination) {
  if (!Contains(name)) return false;
  Core::CopyVariant(entries_.Find(name), destination);
  return true;
}

void ConfigurationImpl::Set(const char* name, const _VARIANT* value) {
  Core::CheckArgument(name);
  Core::Variant* existing = entries_.Find(name);
  // A rejected value leaves a new name behind, present but not enumerated.
  Core::Variant& entry = existing ? *existing : entries_.Add(name, {});
  Core::CheckInitialized(value);
  entry = Core::Variant(*value);
  if (!existing) listedNames_ = entries_.Count();
}

}  // namespace Data::impl
