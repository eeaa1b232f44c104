#pragma once

#include "Containers/Teardown.h"
#include "Containers/VariantMap.h"
#include "Data/Interfaces/IVariantDictionary.h"

namespace Data::impl {

struct VariantDictionaryImpl final : ContainerBase<Interfaces::IVariantDictionary> {
  void ReleaseItems(Teardown& teardown);

  bool Get(const Structures::_VARIANT* key, Structures::_VARIANT* destination,
           Core::IErrorCode** error) override;
  bool Contains(const Structures::_VARIANT* key, Core::IErrorCode** error) override;
  bool Set(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
           Core::IErrorCode** error) override;
  bool IsEmpty() override { return map_.Entries().empty(); }
  bool Clear() override;
  std::uint64_t GetCount() override { return map_.Entries().size(); }
  bool GetKeys(Interfaces::IVariantList** out, Core::IErrorCode** error) override;

 private:
  VariantMap map_;
};

}  // namespace Data::impl
