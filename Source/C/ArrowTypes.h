#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LayerData/layerdata.h"

namespace Data::c {

/// How the values of an Arrow array are stored.
enum class ArrowKind : std::uint8_t {
  Null,
  Bool,
  Signed,
  Unsigned,
  Real,
  Text,       ///< offsets into UTF-8
  TextView,   ///< short texts inline, others as addresses in one of several buffers
  Bytes,      ///< as Text
  BytesView,  ///< as TextView
  FixedBytes,
  Decimal,
  Date,
  Time,
  Timestamp,
  Duration,
  Interval,
  List,
  ListView,
  FixedList,
  Struct
};

/// The type of an Arrow array: what its schema says, checked and copied.
struct ArrowType {
  ArrowKind kind = ArrowKind::Null;
  /// Bytes of a value, or of an offset.
  std::uint32_t width = 0;
  /// Units per second; digits after the point of a Decimal; items of a FixedList.
  std::int64_t parameter = 0;
  std::string format;
  std::string name;
  std::vector<ArrowType> children;
  /// The type of the values if this one is that of indexes into a dictionary.
  std::unique_ptr<ArrowType> dictionary;
};

/// @throws std::runtime_error for a schema that is incomplete, and for a format that the library
///         does not read
ArrowType ReadArrowType(const ArrowSchema& schema);

/// The kind, width and parameter of a format.
/// @return false for a format that the library does not know
bool ReadArrowFormat(std::string_view format, ArrowType& type);

/// Fails with a message that names the column.
[[noreturn]] void ThrowInColumn(const ArrowType& type, const std::string& message);

/// Takes a structure over from its producer, who finds it released, and releases it at the end.
template <class Structure>
class ArrowOwned {
 public:
  ArrowOwned() = default;
  explicit ArrowOwned(Structure* source) {
    if (source) structure_ = std::exchange(*source, Structure{});
  }
  ArrowOwned(const ArrowOwned&) = delete;
  ArrowOwned& operator=(const ArrowOwned&) = delete;
  ~ArrowOwned() {
    if (structure_.release) structure_.release(&structure_);
  }

  /// Null for a structure that was released before.
  Structure* Get() { return structure_.release ? &structure_ : nullptr; }
  /// Passes the structure to the caller.
  Structure Detach() { return std::exchange(structure_, Structure{}); }
  /// Where a producer stores one.
  Structure* Receive() { return &structure_; }

 private:
  Structure structure_{};
};

}  // namespace Data::c
