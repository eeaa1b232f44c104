#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "Core/ObjectPool.h"
#include "Core/Parts.h"
#include "Core/Ptr.h"
#include "Tables/CellLimit.h"
#include "Tables/Csv/CsvLines.h"
#include "Tables/TableImpl.h"
#include "Tables/TextChanges.h"

namespace Data::impl {

/// What to do with a line that has more values than the table has columns.
enum class ExtraValues { Fail, DropValues, DropLine };

struct LongLine {
  std::size_t line;  ///< index among the lines that are not empty
  std::size_t valueCount;
};

/// How lines become rows.
struct CsvRowRules {
  ExtraValues extraValues = ExtraValues::Fail;
  std::size_t maxRows = SIZE_MAX;
  /// By column: whether its cells are text as written. Empty if none are.
  std::vector<bool> isText;
  bool findsChanges = false;
};

/// What `CsvRows::Read` throws for a long line that is a failure; it is the last of `LongLines`.
struct LongLineFailure {};

/// The rows of a part of a text, whose lines are counted from 0.
class CsvRows {
 public:
  /// @param table  with all its columns; the rows belong to it but are not in its list yet
  /// @param limit  of all parts
  CsvRows(TableImpl& table, const CsvRowRules& rules, CellLimit& limit);

  /// @param pool  where the rows are allocated
  void Read(std::string_view text, std::string_view separator, Core::ObjectPool& pool,
            Core::Parts& parts);

  std::vector<Core::Ptr<RowImpl>>& Rows() { return rows_; }
  /// Lines read that are not empty.
  std::size_t LineCount() const { return lineCount_; }
  const std::vector<LongLine>& LongLines() const { return longLines_; }
  /// By column; empty unless the rules ask for them.
  std::vector<ColumnChanges>& Changes() { return changes_; }
  /// Passes the types of the cells to the columns of the table.
  void NoteTypes() const;

 private:
  void Add(const CsvLine& line);
  template <class ReadValue>
  void AddRow(const CsvLine& line, ReadValue&& readValue);
  void ReadByRules(std::string_view value, std::size_t column, Structures::_VARIANT& cell);
  void NoteChange(std::string_view value, std::size_t column, const Structures::_VARIANT& cell);

  TableImpl& table_;
  const CsvRowRules& rules_;
  CellLimit& limit_;
  bool isPlain_;  ///< whether cells are read by `ReadCell` alone
  Core::ObjectPool* pool_ = nullptr;
  std::vector<Core::Ptr<RowImpl>> rows_;
  std::vector<ColumnNote> notes_;
  std::vector<LongLine> longLines_;
  std::vector<ColumnChanges> changes_;
  std::size_t lineCount_ = 0;
};

}  // namespace Data::impl
