#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Containers/VariantHash.h"

namespace Data::impl {

/// Values by name, and names by index in the order in which they were added. Nothing is ever
/// removed, and adding moves nothing: names and values stay at their addresses.
template <class Value>
class NameMap {
 public:
  /// The value of a name, or null.
  Value* Find(std::string_view name) {
    const auto found = entries_.find(name);
    return found != entries_.end() ? &found->second : nullptr;
  }

  /// @pre the name is new
  Value& Add(std::string_view name, Value value) {
    // First, so that after a failure to allocate every entry still has an index.
    order_.resize(entries_.size() + 1);
    const auto added = entries_.emplace(name, std::move(value)).first;
    order_.back() = &*added;
    return added->second;
  }

  std::uint64_t Count() const { return entries_.size(); }
  const char* NameAt(std::uint64_t index) const { return order_[index]->first.c_str(); }
  Value& ValueAt(std::uint64_t index) { return order_[index]->second; }
  const Value& ValueAt(std::uint64_t index) const { return order_[index]->second; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const {
      return static_cast<std::size_t>(HashText(name));
    }
  };
  using Entries = std::unordered_map<std::string, Value, Hash, std::equal_to<>>;

  Entries entries_;
  std::vector<typename Entries::value_type*> order_;
};

}  // namespace Data::impl
