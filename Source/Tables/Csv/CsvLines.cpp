#include "Tables/Csv/CsvLines.h"

#include <algorithm>

#include "Tables/Csv/CsvText.h"

namespace Data::impl {

namespace {

bool IsSimple(std::string_view separator) {
  return separator.size() == 1 && separator[0] != kQuote;
}

}  // namespace

CsvLines::CsvLines(std::string_view text, std::string_view separator)
    : text_(text),
      separator_(separator),
      isSimple_(IsSimple(separator)),
      structure_(text, isSimple_ ? separator[0] : kLineEnd),
      positions_(std::make_unique_for_overwrite<std::size_t[]>(2 * CsvStructure::kRoom)),
      capacity_(2 * CsvStructure::kRoom) {}

bool CsvLines::Next() {
  while (!isAtEnd_) {
    const bool isLast = !FindLineEnd();
    const std::size_t end = isLast ? text_.size() : positions_[seen_];
    const std::string_view line = TrimLine(text_.substr(lineStart_, end - lineStart_));
    std::size_t* const first = positions_.get() + first_;
    std::size_t* const last = positions_.get() + seen_;
    if (!isLast) ++seen_;
    first_ = seen_;
    lineStart_ = end + 1;
    isAtEnd_ = isLast;
    if (line.empty()) continue;
    line_ = MakeLine(line, first, last);
    return true;
  }
  return false;
}

/// Finds the next line end from `seen_` on.
bool CsvLines::FindLineEnd() {
  for (;;) {
    while (seen_ != end_ && text_[positions_[seen_]] != kLineEnd) ++seen_;
    if (seen_ != end_) return true;
    if (!ScanMore()) return false;
  }
}

/// Moves the positions of the unfinished line to the front and appends those of the next chunk. The
/// room doubles when it is full, so a long line's positions are rarely copied.
bool CsvLines::ScanMore() {
  if (structure_.IsAtEnd()) return false;
  if (first_ != 0) {
    std::copy(positions_.get() + first_, positions_.get() + end_, positions_.get());
    seen_ -= first_;
    end_ -= first_;
    first_ = 0;
  }
  if (capacity_ - end_ < CsvStructure::kRoom) {
    auto larger = std::make_unique_for_overwrite<std::size_t[]>(2 * capacity_);
    std::copy(positions_.get(), positions_.get() + end_, larger.get());
    positions_ = std::move(larger);
    capacity_ *= 2;
  }
  end_ = static_cast<std::size_t>(structure_.ScanNext(positions_.get() + end_) - positions_.get());
  return true;
}

CsvLine CsvLines::MakeLine(std::string_view text, std::size_t* first, std::size_t* last) {
  if (!isSimple_) {
    lineSeparators_.clear();
    AppendSeparators(text, separator_, lineSeparators_);
    return {text, text.data(), lineSeparators_, separator_.size()};
  }
  // A separator that is white space may have been trimmed off the ends of the line.
  const auto begin = static_cast<std::size_t>(text.data() - text_.data());
  while (first != last && *first < begin) ++first;
  while (first != last && last[-1] >= begin + text.size()) --last;
  return {text, text_.data(), std::span(first, last), 1};
}

}  // namespace Data::impl
