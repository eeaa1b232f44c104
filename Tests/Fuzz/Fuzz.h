#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "Core/Ptr.h"
#include "Core/Variant.h"
#include "Data/Exports.h"

/// What the fuzz targets share. A target is one `LLVMFuzzerTestOneInput`; a property that does not
/// hold aborts the process.
namespace Data::fuzz {

using namespace Interfaces;
using Core::Ptr;
using Core::Variant;
using Structures::_VARIANT;
using Structures::ValueType;
using Error = Ptr<Core::IErrorCode>;

inline void Require(bool holds) {
  if (!holds) std::abort();
}

/// Reads choices from the front of an input; past its end every byte is 0.
class Input {
 public:
  Input(const char* data, std::size_t size) : rest_(data, size) {}

  bool IsEmpty() const { return rest_.empty(); }
  std::string_view Rest() const { return rest_; }

  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }
  bool Flag() { return Byte() % 2 != 0; }
  std::uint32_t Below(std::uint32_t count) { return Byte() % count; }
  std::uint64_t Word() {
    std::uint64_t word = 0;
    std::memcpy(&word, rest_.data(), std::min(rest_.size(), sizeof word));
    rest_.remove_prefix(std::min(rest_.size(), sizeof word));
    return word;
  }
  /// Reads a byte that determines the length, then the text.
  std::string Text(std::uint32_t below) {
    const std::size_t wanted = Below(below), size = std::min(wanted, rest_.size());
    const std::string text(rest_.substr(0, size));
    rest_.remove_prefix(size);
    return text;
  }

 private:
  std::string_view rest_;
};

template <class Interface>
Ptr<Interface> New(bool (*factory)(Interface**)) {
  Ptr<Interface> object;
  Require(factory(object.Receive()));
  return object;
}
template <class Interface>
Ptr<Interface> New(bool (*factory)(Interface**, Core::IErrorCode**)) {
  Ptr<Interface> object;
  Require(factory(object.Receive(), nullptr));
  return object;
}

/// A value of any type, stored in the record or in an object of the library.
Variant AnyValue(Input& input);
/// A table as CSV text; every table can be written.
std::string CsvOf(const Ptr<ITable>& table);

}  // namespace Data::fuzz
