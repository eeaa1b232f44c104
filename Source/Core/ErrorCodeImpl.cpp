#include "Core/ErrorCodeImpl.h"

namespace Core::impl {

void ErrorCodeImpl::AddReference() { references_.fetch_add(1); }

std::uint32_t ErrorCodeImpl::Release() {
  const std::uint32_t before = references_.fetch_sub(1);
  if (before <= 1) Destroy();
  return before - 1;
}

}  // namespace Core::impl
