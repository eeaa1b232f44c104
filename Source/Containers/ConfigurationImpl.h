#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include "Containers/NameMap.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IConfiguration.h"

namespace Data::impl {

/// Its own fields come before the lock and the count, hence no `ObjectBase`.
struct ConfigurationImpl final : Interfaces::IConfiguration {
  virtual ~ConfigurationImpl() = default;

  void AddReference() override { references_.fetch_add(1); }
  std::uint32_t Release() override;
  void Lock() override { mutex_.lock(); }
  bool TryLock() override { return mutex_.try_lock(); }
  void Unlock() override { mutex_.unlock(); }
  void Destroy() override { delete this; }

  bool Contains(const char* name) override;
  const char* GetNameAt(std::uint64_t index) override;
  std::uint64_t GetNameCount() override { return listedNames_; }
  bool Get(const char* name, Structures::_VARIANT* destination) override;
  void Set(const char* name, const Structures::_VARIANT* value) override;

 private:
  NameMap<Core::Variant> entries_;
  /// How many of the names are enumerated: all that were there after the latest
  /// addition of a name with a value.
  std::uint64_t listedNames_ = 0;
  std::mutex mutex_;
  std::atomic<std::uint32_t> references_{1};
};

}  // namespace Data::impl
