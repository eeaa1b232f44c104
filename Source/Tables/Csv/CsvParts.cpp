#include "Tables/Csv/CsvParts.h"

#include <algorithm>

#include "Tables/Csv/CsvStructure.h"
#include "Tables/Csv/CsvText.h"

namespace Data::impl {

namespace {

/// The least memory that the objects of a table typically take per byte of text.
constexpr std::size_t kBytesPerCharacter = 4;

/// The first line end outside quotes; npos if there is none.
/// @param isQuoted  whether the text begins inside quotes
std::size_t FindLineEnd(std::string_view text, bool isQuoted) {
  const auto found = std::make_unique_for_overwrite<std::size_t[]>(CsvStructure::kRoom);
  CsvStructure lineEnds(text, kLineEnd, isQuoted);
  while (!lineEnds.IsAtEnd())
    if (lineEnds.ScanNext(found.get()) != found.get()) return found[0];
  return std::string_view::npos;
}

}  // namespace

std::vector<std::string_view> CutAtLineEnds(std::string_view text, Core::Parts& parts) {
  const std::size_t count = parts.CountFor(text.size());
  if (count <= 1) return {text};
  // The quotes of each slice are counted first: whether a byte is inside quotes depends on all
  // quotes before it.
  const std::size_t sliceSize = (text.size() + count - 1) / count;
  const auto slice = [&](std::size_t i) {
    return text.substr(std::min(i * sliceSize, text.size()), sliceSize);
  };
  std::vector<unsigned char> isOdd(count);
  parts.Run(count, [&](std::size_t i) { isOdd[i] = HasOddQuotes(slice(i)); });

  std::vector<std::string_view> cut;
  const char* begin = text.data();
  bool isQuoted = false;
  for (std::size_t i = 1; i < count; ++i) {
    isQuoted ^= isOdd[i - 1] != 0;
    const std::size_t lineEnd = FindLineEnd(slice(i), isQuoted);
    if (lineEnd == std::string_view::npos) continue;
    const char* const end = slice(i).data() + lineEnd + 1;
    cut.emplace_back(begin, end);
    begin = end;
  }
  cut.emplace_back(begin, text.data() + text.size());
  return cut;
}

std::unique_ptr<Core::ObjectPool> PartPools::Take(std::size_t textSize) {
  const std::scoped_lock lock(mutex_);
  if (idle_.empty()) return std::make_unique<Core::ObjectPool>(kBytesPerCharacter * textSize);
  auto pool = std::move(idle_.back());
  idle_.pop_back();
  return pool;
}

void PartPools::PutBack(std::unique_ptr<Core::ObjectPool> pool) {
  const std::scoped_lock lock(mutex_);
  idle_.push_back(std::move(pool));
}

}  // namespace Data::impl
