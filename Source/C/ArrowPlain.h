#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "C/ArrowStructures.h"
#include "Core/Ptr.h"
#include "Core/ValueTypes.h"
#include "Tables/RowImpl.h"

namespace Data::c {

/// Begins to bring the objects of the cells into the processor's cache. In the order of the rows,
/// because they mostly lie in memory like this.
void FetchObjects(std::span<const Core::Ptr<impl::RowImpl>> rows);

/// Reads a column whose values are all of one type, or all Int64 or Double, as they nearly always
/// are, straight into Arrow buffers. Which type is found while reading, so that the rows are only
/// passed through once.
class PlainColumn {
 public:
  /// The rows that `Add` takes: a word of validity bits.
  static constexpr std::size_t kMostRows = 64;

  /// Reads the cells of the next rows of a batch. All but the last rows of a batch are `kMostRows`.
  /// @return false if the column cannot be read in this way
  bool Add(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column);
  /// Ends a batch.
  ArrowColumn Take();

  /// Whether any value has been read.
  bool HasType() const { return type_ != Core::ValueType::Null; }
  /// The Arrow format, when all rows have been read.
  const char* Format() const;
  /// Completes a column, when all rows have been read.
  /// @return false if the format cannot hold it
  bool Finish(ArrowColumn& column) const;

 private:
  bool Begin(Core::ValueType type);
  template <class Store>
  bool ForEachCell(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column,
                   Store&& store);
  bool AddWords(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column);
  bool AddReals(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column);
  bool TurnToReals(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column);
  static bool ConvertToReals(std::vector<std::int64_t>& words);
  bool AddTimes(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column);
  bool AddTexts(std::span<const Core::Ptr<impl::RowImpl>> rows, std::int32_t column);
  void Pack(ArrowColumn& column) const;
  bool FinishTimes(ArrowColumn& column) const;

  Core::ValueType type_ = Core::ValueType::Null;
  ArrowColumn column_;
  std::size_t lastTextBytes_ = 0;
  bool areDatesAtNoon_ = true, fitsMicroseconds_ = true;
};

}  // namespace Data::c
