#include "Tables/Csv/CsvLayout.h"

#include <algorithm>
#include <stdexcept>

#include "Tables/Csv/CsvLines.h"
#include "Tables/Csv/CsvText.h"
#include "Tables/ValueTypeDetection.h"

namespace Data::impl {

namespace {

constexpr int kSampledLines = 100;

std::size_t LargestValueCount(CsvLines lines) {
  std::size_t largest = 0;
  for (int i = 0; i < kSampledLines && lines.Next(); ++i)
    largest = std::max(largest, lines.Line().ValueCount());
  if (largest == 0) throw std::runtime_error("No lines detected in the csv content");
  return largest;
}

bool IsHeader(const CsvLine& line) {
  bool hasText = false, hasOther = false;
  line.ForEachValue(line.ValueCount(), [&](std::string_view value) {
    if (hasOther) return;
    const Core::ValueType type = DetectValueType(value);
    hasText |= type == Core::ValueType::String;
    hasOther = type != Core::ValueType::String && type != Core::ValueType::Unknown;
  });
  return hasText && !hasOther;
}

}  // namespace

std::string_view DetectSeparator(std::string_view text) {
  std::string_view separator = ",";
  for (const std::string_view candidate : {",", ";", "\t", "|"}) {
    const std::size_t position = text.find(candidate[0]);
    if (position == std::string_view::npos) continue;
    separator = candidate;
    text = text.substr(0, position);
  }
  return separator;
}

CsvLayout DetectLayout(std::string_view text, std::string_view separator, CsvHeader header) {
  const std::size_t valueCount = LargestValueCount(CsvLines(text, separator));
  if (header != CsvHeader::Detect) return {valueCount, 0, header == CsvHeader::Yes};
  CsvLines lines(text, separator);
  std::size_t firstFullLine = 0;
  while (lines.Next() && lines.Line().ValueCount() < valueCount) ++firstFullLine;
  return {valueCount, firstFullLine, IsHeader(lines.Line())};
}

}  // namespace Data::impl
