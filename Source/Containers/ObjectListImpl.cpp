#include "Containers/ObjectListImpl.h"

#include <utility>

#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

ObjectListImpl::ObjectListImpl(std::vector<Core::Ptr<Core::IObject>> objects)
    : objects_(std::move(objects)) {}

Core::IObject* ObjectListImpl::GetAt(std::uint64_t index) {
  if (index >= objects_.size()) return nullptr;
  if (!objects_[index]) Core::ThrowNullInterface<Core::IObject>();
  return objects_[index].Get();
}

void ObjectListImpl::Clear() {
  // The list is empty before the objects go: the last release runs foreign code.
  const auto released = std::exchange(objects_, {});
}

Core::Ptr<ObjectListImpl> MakeStringList(const std::vector<std::string>& texts) {
  std::vector<Core::Ptr<Core::IObject>> strings;
  strings.reserve(texts.size());
  for (const std::string& text : texts) strings.emplace_back(MultiByteStringImpl::FromUtf8(text));
  return Core::MakePtr<ObjectListImpl>(std::move(strings));
}

}  // namespace Data::impl
