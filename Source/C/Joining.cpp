#include <algorithm>
#include <stdexcept>
#include <string>

#include "C/Call.h"
#include "C/Options.h"
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
              right.source.Table().Header().GetName() + "_joined") {
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
    const std::vector<Pair> pairs = FindPairs(keepsLeft, keepsRight);
    copy_.Expect(pairs.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      FetchAhead(pairs, i);
      Copy(pairs[i]);
    }
    return copy_;
  }

 private:
  static constexpr std::size_t kNone = SIZE_MAX;
  struct Pair {
    std::size_t left, right;  ///< or `kNone`
  };

  std::vector<Pair> FindPairs(bool keepsLeft, bool keepsRight) const {
    RowLookup lookup(right_.keys);
    // Backwards, because the last row entered is found first.
    for (std::size_t row = right_.source.RowCount(); row-- > 0;)
      if (!right_.keys.HasNull(row)) lookup.Add(row, right_.keys.Hash(row));
    std::vector<Pair> pairs;
    std::vector<bool> hasPartner(right_.source.RowCount());
    for (std::size_t row = 0; row < left_.source.RowCount(); ++row) {
      const std::size_t before = pairs.size();
      const auto add = [&](std::size_t partner) {
        pairs.push_back({row, partner});
        hasPartner[partner] = true;
        return true;
      };
      if (!left_.keys.HasNull(row)) lookup.ForEachEqual(left_.keys, row, left_.keys.Hash(row), add);
      if (pairs.size() == before && keepsLeft) pairs.push_back({row, kNone});
    }
    for (std::size_t row = 0; keepsRight && row < hasPartner.size(); ++row)
      if (!hasPartner[row]) pairs.push_back({kNone, row});
    return pairs;
  }

  void FetchAhead(const std::vector<Pair>& pairs, std::size_t i) const {
    const auto rightAt = [&](std::size_t at) {
      return at < pairs.size() ? pairs[at].right : kNone;
    };
    if (const std::size_t row = rightAt(i + RowCopy::kRowsAhead); row != kNone)
      right_.source.FetchRow(row);
    if (const std::size_t row = rightAt(i + RowCopy::kObjectsAhead); row != kNone)
      right_.source.FetchObjects(row);
  }

  void Copy(const Pair& pair) {
    Structures::_VARIANT* const cells = copy_.AddRow();
    if (pair.left != kNone) {
      RowCopy::CopyCells(left_.source, pair.left, leftColumns_, cells);
    } else {
      for (std::size_t i = 0; i < leftColumns_.size(); ++i) NoteNull(i);
      for (std::size_t i = 0; i < left_.keyColumns.size(); ++i)
        Core::CopyVariant(&right_.source.Cell(pair.right, right_.keyColumns[i]),
                          cells + left_.keyColumns[i]);
    }
    if (pair.right != kNone) {
      RowCopy::CopyCells(right_.source, pair.right, rightColumns_, cells + leftColumns_.size());
    } else {
      for (std::size_t i = 0; i < rightColumns_.size(); ++i) NoteNull(leftColumns_.size() + i);
    }
  }
  /// For the columns whose cells a row without a partner lacks.
  void NoteNull(std::size_t column) {
    const bool isKey = std::ranges::find(left_.keyColumns, column) != left_.keyColumns.end();
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
    const ColumnNames leftNames = ListedNames(left_keys, key_count);
    const ColumnNames rightNames = right_keys ? ListedNames(right_keys, key_count) : leftNames;
    // The caller's code, run by one table, may change the other.
    const RowSource leftSource(leftTable), rightSource(rightTable);
    const Side leftSide(leftSource, leftNames), rightSide(rightSource, rightNames);
    const bool keepsLeft = kind == LD_JOIN_KIND_LEFT || kind == LD_JOIN_KIND_FULL;
    const bool keepsRight = kind == LD_JOIN_KIND_RIGHT || kind == LD_JOIN_KIND_FULL;
    Join(leftSide, rightSide).Run(keepsLeft, keepsRight).Give(out);
    return true;
  });
}
