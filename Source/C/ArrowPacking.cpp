#include "C/ArrowPacking.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <utility>

#include "Core/ExactCast.h"
#include "DateTime/DateTimeImpl.h"

namespace Data::c {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

/// The format in which the cells are read first.
ColumnFormat ReadFormat(ArrowKind kind) {
  switch (kind) {
    case ArrowKind::Bool:
      return ColumnFormat::Bool;
    case ArrowKind::Real:
      return ColumnFormat::Double;
    case ArrowKind::Text:
      return ColumnFormat::Text;
    case ArrowKind::Bytes:
      return ColumnFormat::Binary;
    default:
      return ColumnFormat::Int64;
  }
}

bool IsTime(ArrowKind kind) { return kind == ArrowKind::Date || kind == ArrowKind::Timestamp; }

/// The values that `ColumnBuffers` does not have: unsigned 64-bit integers, and dates in ticks
/// since 1970.
std::optional<std::int64_t> WordOf(const _VARIANT& cell, ArrowKind kind) {
  if (IsTime(kind)) {
    if (Core::TypeOf(cell) != ValueType::DateTime) return std::nullopt;
    return static_cast<std::int64_t>(TicksOf(cell) - impl::kTicksAtPosixEpoch);
  }
  if (const auto integer = Integer::Of(cell)) {
    const bool fits = !integer->isNegative && integer->high == 0;
    return fits ? std::optional(static_cast<std::int64_t>(integer->low)) : std::nullopt;
  }
  const auto whole = ExactInt64(cell);
  return whole && *whole >= 0 ? whole : std::nullopt;
}

[[noreturn]] void ThrowLoss(const ArrowType& type, std::int64_t row, const std::string& what) {
  throw std::runtime_error("Column " + type.name + ", row " + std::to_string(row) + ": " + what +
                           " cannot be stored in the Arrow format \"" + type.format +
                           "\" without loss!");
}

/// Fills the buffers of a column from the values that have been read.
class Packer {
 public:
  Packer(ArrowColumn& column, const ArrowType& type, bool isLossy, std::int64_t firstRow)
      : column_(column),
        values_(column.values),
        packed_(column.packed),
        type_(type),
        isLossy_(isLossy),
        firstRow_(firstRow) {}

  void Pack();

 private:
  void PackIntegers();
  void PackFloats();
  void PackTimes();
  void PackOffsets();
  std::optional<std::int64_t> TimeOf(std::int64_t ticks) const;

  /// Converts values to a type in which they take less room.
  /// @param convert  gives nothing for a value that the type cannot hold
  template <class T, class From, class Convert>
  void PackAs(const std::vector<From>& values, Convert&& convert) {
    packed_.resize(values.size() * sizeof(T));
    for (std::size_t i = 0; i < values.size(); ++i) {
      const std::optional<T> value = convert(values[i]);
      if (!value)
        ThrowLoss(type_, firstRow_ + static_cast<std::int64_t>(i), std::to_string(values[i]));
      std::memcpy(packed_.data() + i * sizeof(T), &*value, sizeof(T));
    }
    Give(packed_.data());
  }
  template <class T>
  void NarrowIntegers() {
    PackAs<T>(values_.integers, [](std::int64_t value) {
      return std::in_range<T>(value) ? std::optional(static_cast<T>(value)) : std::nullopt;
    });
  }
  void Give(const void* buffer) { column_.AddBuffer(buffer); }

  ArrowColumn& column_;
  ColumnBuffers& values_;
  std::vector<char>& packed_;
  const ArrowType& type_;
  bool isLossy_;
  std::int64_t firstRow_;
};

void Packer::Pack() {
  Give(values_.nullCount > 0 ? values_.validity.data() : nullptr);
  switch (type_.kind) {
    case ArrowKind::Bool: {
      const auto bits = PackBits(std::exchange(values_.bools, {}));
      packed_.assign(bits.begin(), bits.end());
      return Give(packed_.data());
    }
    case ArrowKind::Real:
      return type_.width == 8 ? Give(values_.doubles.data()) : PackFloats();
    case ArrowKind::Text:
    case ArrowKind::Bytes:
      PackOffsets();
      return Give(values_.bytes.data());
    case ArrowKind::Date:
    case ArrowKind::Timestamp:
      PackTimes();
      break;
    default:
      PackIntegers();
  }
  if (!packed_.empty()) values_.integers = {};
}

void Packer::PackIntegers() {
  const bool isSigned = type_.kind == ArrowKind::Signed;
  switch (type_.width) {
    case 1:
      return isSigned ? NarrowIntegers<std::int8_t>() : NarrowIntegers<std::uint8_t>();
    case 2:
      return isSigned ? NarrowIntegers<std::int16_t>() : NarrowIntegers<std::uint16_t>();
    case 4:
      return isSigned ? NarrowIntegers<std::int32_t>() : NarrowIntegers<std::uint32_t>();
    default:
      return Give(values_.integers.data());
  }
}

void Packer::PackFloats() {
  PackAs<float>(values_.doubles, [&](double value) {
    const auto narrow = static_cast<float>(value);
    const bool isSame = static_cast<double>(narrow) == value || std::isnan(value);
    return isSame || isLossy_ ? std::optional(narrow) : std::nullopt;
  });
  values_.doubles = {};
}

/// A time in the unit of the type.
std::optional<std::int64_t> Packer::TimeOf(std::int64_t ticks) const {
  constexpr std::int64_t kTicksPerSecond = impl::kTicksPerSecond;
  if (type_.parameter > kTicksPerSecond) {
    const std::int64_t factor = type_.parameter / kTicksPerSecond;
    const bool fits = ticks >= INT64_MIN / factor && ticks <= INT64_MAX / factor;
    return fits ? std::optional(ticks * factor) : std::nullopt;
  }
  const bool isDate = type_.kind == ArrowKind::Date;
  const std::int64_t unit = isDate ? impl::kTicksPerDay : kTicksPerSecond / type_.parameter;
  const std::int64_t rest = ticks % unit < 0 ? ticks % unit + unit : ticks % unit;
  const bool isExact = rest == 0 || (isDate && rest == unit / 2);
  return isExact || isLossy_ ? std::optional((ticks - rest) / unit) : std::nullopt;
}

void Packer::PackTimes() {
  const auto failAt = [&](std::size_t i) {
    ThrowLoss(type_, firstRow_ + static_cast<std::int64_t>(i), "DateTime");
  };
  std::vector<std::int64_t>& times = values_.integers;
  for (std::size_t i = 0; i < times.size(); ++i) {
    const bool isNull = (values_.validity[i / 8] >> (i % 8) & 1) == 0;
    const auto time = isNull ? 0 : TimeOf(times[i]);
    if (!time) failAt(i);
    times[i] = *time;
  }
  if (type_.width == 8) return Give(times.data());
  NarrowIntegers<std::int32_t>();
}

void Packer::PackOffsets() {
  if (type_.width == 8) return Give(values_.offsets.data());
  if (!std::in_range<std::int32_t>(values_.offsets.back()))
    throw std::runtime_error("Column " + type_.name +
                             ": a batch of more than 2 GB cannot be stored in the Arrow format \"" +
                             type_.format + "\"!");
  packed_.resize(values_.offsets.size() * sizeof(std::int32_t));
  for (std::size_t i = 0; i < values_.offsets.size(); ++i) {
    const auto offset = static_cast<std::int32_t>(values_.offsets[i]);
    std::memcpy(packed_.data() + i * sizeof offset, &offset, sizeof offset);
  }
  values_.offsets = {};
  Give(packed_.data());
}

}  // namespace

ArrowPacking::ArrowPacking(const ArrowType& type, bool isLossy)
    : type_(type), isLossy_(isLossy), values_(ReadFormat(type.kind)) {}

bool ArrowPacking::CanPack(const ArrowType& type) {
  switch (type.kind) {
    case ArrowKind::Real:
      return type.width >= 4;
    case ArrowKind::Date:
      return type.width == 4;
    case ArrowKind::Bool:
    case ArrowKind::Signed:
    case ArrowKind::Unsigned:
    case ArrowKind::Text:
    case ArrowKind::Bytes:
    case ArrowKind::Timestamp:
      return true;
    default:
      return false;
  }
}

void ArrowPacking::Reserve(std::size_t cellCount, std::size_t textBytes) {
  values_.validity.reserve((cellCount + 7) / 8);
  switch (values_.format) {
    case ColumnFormat::Double:
      return values_.doubles.reserve(cellCount);
    case ColumnFormat::Bool:
      return values_.bools.reserve(cellCount);
    case ColumnFormat::Text:
    case ColumnFormat::Binary:
      values_.offsets.reserve(cellCount + 1);
      return values_.bytes.reserve(textBytes);
    default:
      return values_.integers.reserve(cellCount);
  }
}

void ArrowPacking::Add(const ColumnCells& cells, std::size_t first, std::size_t count) {
  const bool isWord = IsTime(type_.kind) || (type_.kind == ArrowKind::Unsigned && type_.width == 8);
  if (!isWord) return values_.Append(cells, first, count, isLossy_);
  for (std::size_t i = first; i < first + count; ++i) {
    const auto at = static_cast<std::size_t>(values_.length++);
    if (at % 8 == 0) values_.validity.push_back(0);
    std::optional<std::int64_t> word = 0;
    if (HasValue(cells[i])) {
      values_.validity.back() |= static_cast<std::uint8_t>(1 << at % 8);
      word = WordOf(cells[i], type_.kind);
      if (!word)
        ThrowLoss(type_, cells.RowOf(i),
                  std::string(Core::GetValueTypeName(Core::TypeOf(cells[i]))));
    } else {
      ++values_.nullCount;
    }
    values_.integers.push_back(*word);
  }
}

ArrowColumn ArrowPacking::Finish(std::int64_t firstRow) {
  ArrowColumn column;
  column.values = std::move(values_);
  Packer(column, type_, isLossy_, firstRow).Pack();
  return column;
}

}  // namespace Data::c
