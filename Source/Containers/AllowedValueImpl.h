#pragma once

#include <string>

#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IAllowedValue.h"

namespace Data {

struct AllowedValueTexts {
  std::string displayName, description, category, helpUri;
};

struct AllowedValueImpl final : impl::ContainerBase<Interfaces::IAllowedValue> {
  AllowedValueImpl(Core::Variant value, Structures::ComparisonOperator comparison,
                   AllowedValueTexts texts);

  void ReleaseItems(impl::Teardown& teardown) { teardown.Release(value_); }

  const char* GetDisplayName() override { return texts_.displayName.c_str(); }
  const char* GetDescription() override { return texts_.description.c_str(); }
  const char* GetCategory() override { return texts_.category.c_str(); }
  const char* GetHelpUri() override { return texts_.helpUri.c_str(); }
  void GetValue(Structures::_VARIANT* destination) override;
  Structures::ComparisonOperator GetComparison() override { return comparison_; }
  bool GetValueText(Interfaces::IString** out, Core::IErrorCode** error) override;

 private:
  Core::Variant value_;
  Structures::ComparisonOperator comparison_;
  AllowedValueTexts texts_;
};

}  // namespace Data
