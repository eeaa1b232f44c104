#pragma once

#include <vector>

#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IVariantList.h"

namespace Data::impl {

struct VariantListImpl final : ContainerBase<Interfaces::IVariantList> {
  VariantListImpl() = default;
  explicit VariantListImpl(std::vector<Core::Variant> items);

  void ReleaseItems(Teardown& teardown);

  bool GetAt(std::uint64_t index, Structures::_VARIANT* destination) override;
  void Add(const Structures::_VARIANT* value) override;
  bool IsEmpty() override { return items_.empty(); }
  void Clear() override;
  std::uint64_t GetCount() override { return items_.size(); }

 private:
  std::vector<Core::Variant> items_;
};

}  // namespace Data::impl
