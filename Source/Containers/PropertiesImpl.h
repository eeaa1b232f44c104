#pragma once

#include "Containers/NameMap.h"
#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IProperties.h"

namespace Data::impl {

struct PropertiesImpl final : ContainerBase<Interfaces::IProperties> {
  void ReleaseItems(Teardown& teardown);

  bool Register(const char* name, Structures::ValueType type, bool isRequired,
                const Structures::_VARIANT* defaultValue, Core::IErrorCode** error) override;
  bool Set(const char* name, const Structures::_VARIANT* value, Core::IErrorCode** error) override;
  bool Get(const char* name, Structures::_VARIANT* destination, Core::IErrorCode** error) override;
  bool Contains(const char* name, Core::IErrorCode** error) override;
  bool HasValue(const char* name, Core::IErrorCode** error) override;
  bool Reset(const char* name, Core::IErrorCode** error) override;
  Structures::ValueType GetType(const char* name, Core::IErrorCode** error) override;
  bool IsRequired(const char* name, Core::IErrorCode** error) override;
  bool GetDefault(const char* name, Structures::_VARIANT* destination,
                  Core::IErrorCode** error) override;
  std::uint64_t GetCount() override { return properties_.Count(); }
  const char* GetNameAt(std::uint64_t index) override;
  bool GetMissing(Interfaces::IObjectList** out, Core::IErrorCode** error) override;

 private:
  struct Property {
    Structures::ValueType type;
    bool isRequired;
    Core::Variant defaultValue = Core::Null;
    Core::Variant value = Core::Null;

    /// What `Get` returns. Null means that neither a value nor a default is set; neither can be set
    /// to Null.
    const Core::Variant& Effective() const { return value.IsNull() ? defaultValue : value; }
  };

  Property& Find(const char* name);
  void CheckIsNew(const char* name);

  NameMap<Property> properties_;
};

}  // namespace Data::impl
