#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Data::benchmarks {

enum class TableKind {
  Mixed,    ///< an attribute table: numbers, coordinates, names, remarks, one date column
  Numeric,  ///< integers and decimal numbers of every length
  Dates,    ///< date-times in their usual forms
  Text      ///< words and sentences, some of them quoted
};

/// Comma-separated text with a header, the same for the same arguments on every
/// machine.
/// @param bytes  the text ends with the line that reaches this size
std::string MakeTableText(TableKind kind, std::size_t bytes, std::uint64_t seed);

}  // namespace Data::benchmarks
