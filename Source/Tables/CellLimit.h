#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <stdexcept>

#include "Core/StringFormat.h"

namespace Data::impl {

/// Bounds the cells of a table that is read from a text. A row has a cell for each column however
/// few values its line or object has, so a small text of many columns and many short rows would
/// otherwise take all memory.
class CellLimit {
 public:
  explicit CellLimit(std::size_t textSize)
      : textSize_(textSize), most_(std::max(kFewest, textSize * kPerByte)) {}

  /// Counts the cells of a new row, on any thread.
  /// @throws std::runtime_error "A text of %llu bytes cannot become a table of more than %llu
  ///         cells!"
  void AddRow(std::size_t columnCount) {
    if (columnCount > kNarrow) Add(columnCount);
  }
  /// Counts the cells that rows have in a new column.
  /// @param columnCount  with the new one
  /// @throws as `AddRow`
  void AddColumn(std::size_t rowCount, std::size_t columnCount) {
    if (columnCount > kNarrow) Add(columnCount - 1 > kNarrow ? rowCount : rowCount * columnCount);
  }

 private:
  static constexpr std::size_t kFewest = std::size_t{1} << 24, kPerByte = 32;
  /// A row takes at least two bytes of text, so a table of so few columns is never too large, and
  /// is not counted.
  static constexpr std::size_t kNarrow = 2 * kPerByte;

  void Add(std::size_t count) {
    if ((cellCount_ += count) > most_)
      throw std::runtime_error(Core::StringFormat(
          "A text of %llu bytes cannot become a table of more than %llu cells!",
          static_cast<unsigned long long>(textSize_), static_cast<unsigned long long>(most_)));
  }

  std::size_t textSize_, most_;
  std::atomic<std::size_t> cellCount_ = 0;
};

}  // namespace Data::impl
