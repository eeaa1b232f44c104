#pragma once

#include <string>
#include <vector>

#include "Core/ObjectBase.h"
#include "Data/Interfaces/IEnum.h"

namespace Data::impl {

struct EnumImpl final : Core::ObjectBase<Interfaces::IEnum> {
  /// @throws std::runtime_error "Cannot create enum with 0 options."
  explicit EnumImpl(std::vector<std::string> options);

  std::uint32_t GetIndex() override { return static_cast<std::uint32_t>(index_); }
  bool SetIndex(std::uint32_t index, Core::IErrorCode** error) override;
  const char* GetSelected() override { return options_[GetIndex()].c_str(); }
  bool SelectOption(const char* text, Core::IErrorCode** error) override;
  std::uint64_t GetCount() override { return options_.size(); }
  bool GetOptions(Interfaces::IObjectList** out, Core::IErrorCode** error) override;

 private:
  std::int32_t index_ = 0;
  std::vector<std::string> options_;  // never empty
};

}  // namespace Data::impl
