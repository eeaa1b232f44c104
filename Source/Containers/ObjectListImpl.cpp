#include "Containers/ObjectListImpl.h"

#include <utility>

#include "Containers/CallingBack.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

ObjectListImpl::ObjectListImpl(std::vector<Core::Ptr<Core::IObject>> objects)
    : objects_(std::move(objects)) {}

void ObjectListImpl::AddText(std::string_view text) {
  objects_.emplace_back(MultiByteStringImpl::FromUtf8(text));
}

void ObjectListImpl::ReleaseItems(Teardown& teardown) {
  auto objects = std::exchange(objects_, {});
  for (auto& object : objects) teardown.Release(object);
}

Core::IObject* ObjectListImpl::GetAt(std::uint64_t index) {
  if (index >= objects_.size()) return nullptr;
  if (!objects_[index]) Core::ThrowNullInterface<Core::IObject>();
  return objects_[index].Get();
}

void ObjectListImpl::Add(Core::IObject* object) {
  // Before the list grows: adding the reference may call code that changes or releases this list.
  const auto held = HeldIf(object && CallsBack(*object), this);
  Core::Ptr<Core::IObject> added(object);
  objects_.push_back(std::move(added));
}

void ObjectListImpl::Clear() {
  // The list is emptied before its objects are released: releasing one may run the caller's code.
  const auto released = std::exchange(objects_, {});
}

}  // namespace Data::impl
