#pragma once

#include <string>
#include <vector>

#include "Core/ObjectBase.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/IObjectList.h"

namespace Data::impl {

struct ObjectListImpl final : Core::ObjectBase<Interfaces::IObjectList> {
  ObjectListImpl() = default;
  explicit ObjectListImpl(std::vector<Core::Ptr<Core::IObject>> objects);

  Core::IObject* GetAt(std::uint64_t index) override;
  void Add(Core::IObject* object) override { objects_.emplace_back(object); }
  bool IsEmpty() override { return objects_.empty(); }
  void Clear() override;
  std::uint64_t GetCount() override { return objects_.size(); }

 private:
  std::vector<Core::Ptr<Core::IObject>> objects_;
};

/// A list of new strings, one per UTF-8 text.
Core::Ptr<ObjectListImpl> MakeStringList(const std::vector<std::string>& texts);

}  // namespace Data::impl
