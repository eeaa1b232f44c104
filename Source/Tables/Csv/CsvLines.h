#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Tables/Csv/CsvStructure.h"

namespace Data::impl {

/// A non-empty line: its trimmed text and the positions of its separators. Refers to the text and
/// to the positions of `CsvLines`.
class CsvLine {
 public:
  CsvLine() = default;
  /// @param separators  positions counted from `origin`, inside the text
  CsvLine(std::string_view text, const char* origin, std::span<const std::size_t> separators,
          std::size_t separatorSize)
      : text_(text), origin_(origin), separators_(separators), separatorSize_(separatorSize) {}

  std::string_view Text() const { return text_; }
  std::size_t ValueCount() const { return separators_.size() + 1; }
  /// Calls `visit` with each of the first `count` values, untrimmed.
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

/// Splits a text into lines, leaving out empty ones. A line feed inside quotes does not end a line;
/// after a quote that is never closed the rest of the text is one line. The caller owns the text.
class CsvLines {
 public:
  CsvLines(std::string_view text, std::string_view separator);

  /// Moves to the next line.
  /// @return false if there is none
  bool Next();
  /// Valid until the next call of `Next`.
  const CsvLine& Line() const { return line_; }

 private:
  bool FindLineEnd();
  bool ScanMore();
  CsvLine MakeLine(std::string_view text, std::size_t* first, std::size_t* last);

  std::string_view text_;
  std::string separator_;
  /// Whether separators are found in the same scan as line ends, since the parity of the quotes
  /// decides for both. Other separators are searched for line by line.
  bool isSimple_;
  CsvStructure structure_;
  std::unique_ptr<std::size_t[]> positions_;
  std::size_t capacity_;
  /// Indexes into `positions_`: the first of the next line, the first not yet examined, the end.
  std::size_t first_ = 0, seen_ = 0, end_ = 0;
  std::size_t lineStart_ = 0;
  bool isAtEnd_ = false;
  std::vector<std::size_t> lineSeparators_;
  CsvLine line_;
};

}  // namespace Data::impl
