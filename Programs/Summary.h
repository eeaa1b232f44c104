#pragma once

#include <LayerData/Table.h>

#include <cstdint>
#include <string>
#include <vector>

namespace program {

/// How many values there are of a kind.
struct Bar {
  std::string label;
  std::uint64_t count = 0;
};

/// What a column holds, as texts to be shown.
struct ColumnSummary {
  std::string name, type;
  std::int64_t count = 0;  ///< values that are not Null
  std::int64_t nulls = 0;
  std::int64_t distinct = 0;                   ///< different values
  std::string min, q1, median, q3, max, mean;  ///< empty where there is none
  /// Of numbers and dates, ranges of equal width in ascending order. Of texts, the most frequent
  /// ones, or nothing if none repeats.
  std::vector<Bar> bars;
  bool holdsDays = false;        ///< whether the values are dates without a time
  bool hasRanges = false;        ///< whether the bars are ranges
  std::uint64_t otherCount = 0;  ///< the values without a bar
};

std::vector<ColumnSummary> Summarize(const layerdata::Table& table);

}  // namespace program
