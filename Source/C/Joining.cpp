#include <algorithm>
#include <stdexcept>
#include <string>

#include "C/Call.h"
#include "C/RowCopy.h"
#include "C/RowKeys.h"

using namespace Data;
using namespace Data::c;
using Interfaces::ITable;

namespace {

/// One of the tables of a join.
struct Side {
  Side(const RowSource& table, const ColumnNames& keyNames)
      : source(table), keyColumns(table.ColumnsOf(keyNames)), keys(table, keyColumns) {}

  const RowSource& source;
  std::vector<std::size_t> keyColumns;
  RowKeys keys;
};

class Join {
 public:
  Join(const Side& left, const Side& right)
      : left_(left),
        right_(right),
        leftColumns_(AllColumns(left.source)),
        copy_(std::string(left.source.Table().Header().GetName()) + "_" +
                  right.source.Table().Header().GetName() + "_joined",
              std::max(left.source.RowCount(), right.source.RowCount())) {
    copy_.AddColumns(left.source, leftColumns_);
    for (const std::size_t column : AllColumns(right.source)) {
      if (std::ranges::find(right.keyColumns, column) != right.keyColumns.end()) continue;
      std::string name = right.source.Table().Header().Columns()[column]->Name();
      while (copy_.HasColumn(name)) name += "_right";
      copy_.AddColumn(right.source, column, name);
      rightColumns_.push_back(column);
    }
  }

  RowCopy& Run(bool keepsLeft, bool keepsRight) {
    RowLookup lookup(right_.keys);
    // Backwards, because the last row entered is found first.
    for (std::size_t row = right_.source.RowCount(); row-- > 0;)
      if (!right_.keys.HasNull(row)) lookup.Add(row, right_.keys.Hash(row));
    std::vector<bool> hasPartner(keepsRight ? right_.source.RowCount() : 0);
    for (std::size_t row = 0; row < left_.source.RowCount(); ++row) {
      bool isMatched = false;
      const auto add = [&](std::size_t partner) {
        AddBoth(row, partner);
        isMatched = true;
        if (keepsRight) hasPartner[partner] = true;
        return true;
      };
      if (!left_.keys.HasNull(row)) lookup.ForEachEqual(left_.keys, row, left_.keys.Hash(row), add);
      if (!isMatched && keepsLeft) AddLeft(row);
    }
    for (std::size_t row = 0; row < hasPartner.size(); ++row)
      if (!hasPartner[row]) AddRight(row);
    return copy_;
  }

 private:
  void AddBoth(std::size_t row, std::size_t partner) {
    Structures::_VARIANT* const cells = copy_.AddRow();
    RowCopy::CopyCells(left_.source, row, leftColumns_, cells);
    RowCopy::CopyCells(right_.source, partner, rightColumns_, cells + leftColumns_.size());
  }
  void AddLeft(std::size_t row) {
    RowCopy::CopyCells(left_.source, row, leftColumns_, copy_.AddRow());
    for (std::size_t i = 0; i < rightColumns_.size(); ++i) NoteNull(leftColumns_.size() + i);
  }
  void AddRight(std::size_t row) {
    Structures::_VARIANT* const cells = copy_.AddRow();
    for (std::size_t i = 0; i < leftColumns_.size(); ++i) NoteNull(i);
    for (std::size_t i = 0; i < left_.keyColumns.size(); ++i)
      Core::CopyVariant(&right_.source.Cell(row, right_.keyColumns[i]),
                        cells + left_.keyColumns[i]);
    RowCopy::CopyCells(right_.source, row, rightColumns_, cells + leftColumns_.size());
  }
  void NoteNull(std::size_t column) {
    const auto isKey = std::ranges::find(left_.keyColumns, column) != left_.keyColumns.end();
    if (!isKey) copy_.Table().Header().Columns()[column]->NoteValue(Core::ValueType::Null);
  }

  const Side &left_, &right_;
  std::vector<std::size_t> leftColumns_, rightColumns_;
  RowCopy copy_;
};

}  // namespace

bool ld_table_join(ld_table* left, ld_table* right, const char* const* left_keys,
                   const char* const* right_keys, uint64_t key_count, ld_join_kind kind,
                   ld_table** out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    auto &leftTable = Self<ITable>(left), &rightTable = Self<ITable>(right);
    Enumerator<ld_join_kind>(kind, LD_JOIN_KIND_FULL, "ld_join_kind");
    if (key_count == 0) throw std::runtime_error("A join needs at least one key!");
    const ColumnNames leftNames = NamesOf(left_keys, key_count);
    const ColumnNames rightNames = right_keys ? NamesOf(right_keys, key_count) : leftNames;
    // The caller's code, run by one table, may change the other.
    const RowSource leftSource(leftTable), rightSource(rightTable);
    const Side leftSide(leftSource, leftNames), rightSide(rightSource, rightNames);
    const bool keepsLeft = kind == LD_JOIN_KIND_LEFT || kind == LD_JOIN_KIND_FULL;
    const bool keepsRight = kind == LD_JOIN_KIND_RIGHT || kind == LD_JOIN_KIND_FULL;
    Join(leftSide, rightSide).Run(keepsLeft, keepsRight).Give(out);
    return true;
  });
}
