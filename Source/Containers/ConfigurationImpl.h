#pragma once

#include <cstdint>

#include "Containers/NameMap.h"
#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IConfiguration.h"

namespace Data::impl {

/// A configuration's own fields. Their memory precedes that of its lock and its reference count.
struct ConfigurationFields : Interfaces::IConfiguration {
 protected:
  ~ConfigurationFields() = default;

  NameMap<Core::Variant> entries_;
  /// How many names are enumerated: all that existed when a name with a value was last added.
  std::uint64_t listedNames_ = 0;
  bool mayHoldObjects_ = false;
};

struct ConfigurationImpl final : ContainerBase<ConfigurationFields> {
  void ReleaseItems(Teardown& teardown);

  bool Contains(const char* name) override;
  const char* GetNameAt(std::uint64_t index) override;
  std::uint64_t GetNameCount() override { return listedNames_; }
  bool Get(const char* name, Structures::_VARIANT* destination) override;
  void Set(const char* name, const Structures::_VARIANT* value) override;

 private:
  Core::Variant* Find(const char* name);
};

}  // namespace Data::impl
