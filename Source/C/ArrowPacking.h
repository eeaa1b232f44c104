#pragma once

#include <cstdint>

#include "C/ArrowStructures.h"
#include "C/ArrowTypes.h"
#include "C/ColumnReading.h"

namespace Data::c {

/// Reads cells into the buffers of an Arrow type.
class ArrowPacking {
 public:
  /// @param type     of a kind that `CanPack`
  /// @param isLossy  as for `ColumnBuffers::Append`
  ArrowPacking(const ArrowType& type, bool isLossy);

  static bool CanPack(const ArrowType& type);

  /// To be called before the first cell is added.
  /// @param textBytes  of all texts
  void Reserve(std::size_t cellCount, std::size_t textBytes);
  void Add(const ColumnCells& cells, std::size_t first, std::size_t count);
  /// @param firstRow  of the cells
  /// @throws std::runtime_error for a value that the type cannot hold
  ArrowColumn Finish(std::int64_t firstRow);

 private:
  const ArrowType& type_;
  bool isLossy_;
  ColumnBuffers values_;
};

}  // namespace Data::c
