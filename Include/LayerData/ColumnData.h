#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "LayerData/Column.h"
#include "LayerData/Handle.h"

namespace layerdata {

/// The cells of a column copied into arrays, which is how a program looks at a million of them. The
/// formats and their rules are those of `ld_table_get_column_data`.
class ColumnData {
 public:
  /// @param format   LD_COLUMN_FORMAT_AUTOMATIC for the one that holds all values
  /// @param isLossy  whether to round, and to replace what is not UTF-8, instead of failing
  /// @param rows     how many of the first rows; -1 for all
  /// @throws Error for a value that the format cannot hold
  explicit ColumnData(const Column& column, ld_column_format format = LD_COLUMN_FORMAT_AUTOMATIC,
                      bool isLossy = false, std::int64_t rows = -1) {
    ld_column_options options{};
    options.size = sizeof options;
    options.format = format;
    options.lossy = isLossy;
    ld_object* owner = nullptr;
    detail::Call(ld_table_get_column_data, column.GetTable(), column.Index(), std::int64_t{0}, rows,
                 &options, &data_, &owner);
    owner_ = detail::Handle(owner);
  }

  /// The format of the values.
  ld_column_format Format() const noexcept { return data_->format; }
  /// The format in a word: "integer", "number", "truth", "date", "text" or "binary".
  const char* TypeName() const noexcept {
    constexpr const char* kNames[] = {"", "integer", "number", "truth", "date", "text", "binary"};
    return kNames[data_->format];
  }
  /// The number of cells.
  std::size_t Size() const noexcept { return static_cast<std::size_t>(data_->length); }
  /// The number of cells without a value.
  std::size_t NullCount() const noexcept { return static_cast<std::size_t>(data_->null_count); }
  /// Whether a cell has no value; what the arrays hold there has no meaning.
  bool IsNull(std::size_t index) const noexcept {
    return data_->validity && (data_->validity[index / 8] >> index % 8 & 1) == 0;
  }

  /// Whether the values are date-times at noon, which is how dates without a time are read.
  bool HoldsDays() const noexcept {
    constexpr std::int64_t kHour = 3'600'000'000, kDay = 24 * kHour, kNoon = 12 * kHour;
    if (Format() != LD_COLUMN_FORMAT_DATE_TIME) return false;
    for (std::size_t i = 0; i < Size(); ++i)
      if (!IsNull(i) && ((Integers()[i] % kDay) + kDay) % kDay != kNoon) return false;
    return true;
  }

  /// The values of LD_COLUMN_FORMAT_INT64, and the microseconds of LD_COLUMN_FORMAT_DATE_TIME.
  std::span<const std::int64_t> Integers() const noexcept { return Values<std::int64_t>(); }
  /// The values of LD_COLUMN_FORMAT_DOUBLE.
  std::span<const double> Doubles() const noexcept { return Values<double>(); }
  /// The values of LD_COLUMN_FORMAT_BOOL, 0 or 1.
  std::span<const std::uint8_t> Bools() const noexcept { return Values<std::uint8_t>(); }
  /// A value of LD_COLUMN_FORMAT_TEXT or LD_COLUMN_FORMAT_BINARY.
  std::string_view Bytes(std::size_t index) const noexcept {
    const std::int64_t begin = data_->offsets[index], end = data_->offsets[index + 1];
    return {data_->bytes + begin, static_cast<std::size_t>(end - begin)};
  }

  /// The record of the C interface.
  const ld_column_data& Get() const noexcept { return *data_; }

 private:
  template <class T>
  std::span<const T> Values() const noexcept {
    return {static_cast<const T*>(data_->values), Size()};
  }

  const ld_column_data* data_ = nullptr;
  detail::Handle<ld_object> owner_;
};

}  // namespace layerdata
