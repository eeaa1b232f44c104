#pragma once

#include <vector>

#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IVariantPairList.h"

namespace Data::impl {

struct VariantPairListImpl final : ContainerBase<Interfaces::IVariantPairList> {
  void ReleaseItems(Teardown& teardown);

  bool GetAt(std::uint64_t index, Structures::_VARIANT* key, Structures::_VARIANT* value,
             Core::IErrorCode** error) override;
  bool Add(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
           Core::IErrorCode** error) override;
  bool IsEmpty() override { return pairs_.empty(); }
  bool Clear() override;
  std::uint64_t GetCount() override { return pairs_.size(); }

 private:
  struct Pair {
    Core::Variant key, value;
  };

  void CheckIndex(std::uint64_t index) const;

  std::vector<Pair> pairs_;
};

}  // namespace Data::impl
