#include "Containers/EnumImpl.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"
#include "Core/StringFormat.h"

namespace Data::impl {

EnumImpl::EnumImpl(std::vector<std::string> options) : options_(std::move(options)) {
  if (options_.empty()) throw std::runtime_error("Cannot create enum with 0 options.");
}

bool EnumImpl::SetIndex(std::uint32_t index, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    const auto position = static_cast<std::int32_t>(index);
    const auto count = static_cast<std::int32_t>(options_.size());
    if (position < 0 || position >= count)
      throw std::runtime_error(Core::StringFormat(
          "Index out of bounds. Expected in range [0, %d]. Got %d.", count - 1, position));
    index_ = position;
  });
}

bool EnumImpl::SelectOption(const char* text, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(text);
    const auto found = std::find(options_.begin(), options_.end(), text);
    if (found == options_.end())
      throw std::runtime_error("Given string is not an available option.");
    index_ = static_cast<std::int32_t>(found - options_.begin());
  });
}

bool EnumImpl::GetOptions(Interfaces::IObjectList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    auto list = Core::MakePtr<ObjectListImpl>();
    for (const std::string& option : options_) list->AddText(option);
    *out = list.Detach();
  });
}

}  // namespace Data::impl
