#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Tables/Csv/CsvStructure.h"

namespace Data::impl {

/// One line that is not empty: its text without the space around it, and where
/// its values are separated.
class CsvLine {
 public:
  CsvLine() = default;
  /// @param separators  positions counted from `origin`, inside the text
  CsvLine(std::string_view text, const char* origin, std::span<const std::size_t> separators,
          std::size_t separatorSize)
      : text_(text), origin_(origin), separators_(separators), separatorSize_(separatorSize) {}

  std::string_view Text() const { return text_; }
  std::size_t ValueCount() const { return separators_.size() + 1; }
  /// Hands the first `count` values to `visit`, untrimmed.
  template <class Visit>
  void ForEachValue(std::size_t count, Visit&& visit) const {
    const char* begin = text_.data();
    const std::size_t separated = count < ValueCount() ? count : separators_.size();
    for (const std::size_t position : separators_.first(separated)) {
      visit(std::string_view(begin, origin_ + position));
      begin = origin_ + position + separatorSize_;
    }
    if (separated != count) visit(std::string_view(begin, text_.data() + text_.size()));
  }

 private:
  std::string_view text_;
  const char* origin_ = nullptr;
  std::span<const std::size_t> separators_;
  std::size_t separatorSize_ = 0;
};

/// The lines of a text one after the other, empty ones left out. A line end
/// inside quotes ends no line; after a quote that is never closed the rest is
/// one line.
class CsvLines {
 public:
  CsvLines(std::string_view text, std::string_view separator);

  /// Moves to the next line.
  /// @return false when there is none
  bool Next();
  /// Valid until the next call of `Next`.
  const CsvLine& Line() const { return line_; }

 private:
  bool FindLineEnd();
  bool ScanMore();
  CsvLine MakeLine(std::string_view text, std::size_t* first, std::size_t* last);

  std::string_view text_;
  std::string separator_;
  /// Whether the separators are found together with the line ends: parity of the
  /// quotes is their only rule then. Others are searched line by line.
  bool isSimple_;
  CsvStructure structure_;
  std::unique_ptr<std::size_t[]> positions_;
  std::size_t capacity_;
  /// Inside `positions_`: the first one of the line to come, the first one not
  /// looked at yet, and the end.
  std::size_t first_ = 0, seen_ = 0, end_ = 0;
  std::size_t lineStart_ = 0;
  bool isThrough_ = false;
  std::vector<std::size_t> lineSeparators_;
  CsvLine line_;
};

}  // namespace Data::impl
