#pragma once

#include <string_view>
#include <vector>

#include "Containers/Teardown.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/IObjectList.h"

namespace Data::impl {

struct ObjectListImpl final : ContainerBase<Interfaces::IObjectList> {
  ObjectListImpl() = default;
  explicit ObjectListImpl(std::vector<Core::Ptr<Core::IObject>> objects);

  /// Appends a new string of UTF-8 text.
  void AddText(std::string_view text);
  void ReleaseItems(Teardown& teardown);

  Core::IObject* GetAt(std::uint64_t index) override;
  void Add(Core::IObject* object) override;
  bool IsEmpty() override { return objects_.empty(); }
  void Clear() override;
  std::uint64_t GetCount() override { return objects_.size(); }

 private:
  std::vector<Core::Ptr<Core::IObject>> objects_;
};

}  // namespace Data::impl
