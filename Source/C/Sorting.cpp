#include <algorithm>
#include <deque>

#include "C/Call.h"
#include "C/RowCopy.h"
#include "C/RowKeys.h"

using namespace Data;
using namespace Data::c;
using Interfaces::ITable;

namespace {

/// A row with its first key, so that most comparisons look at nothing else.
struct SortedRow {
  std::uint64_t word;
  std::uint64_t rankAndRow;  ///< the rank in the highest 8 bits

  SortedRow(const OrderKeys& first, std::size_t row)
      : word(first[row].word), rankAndRow(std::uint64_t{first[row].rank} << 56 | row) {}
  std::uint64_t Rank() const { return rankAndRow >> 56; }
  std::size_t Row() const { return static_cast<std::size_t>(rankAndRow << 8 >> 8); }
};

/// The rows in their order. Rows with equal keys keep theirs, because then their indexes decide.
std::vector<SortedRow> Sorted(const std::deque<OrderKeys>& keys, std::size_t rowCount) {
  std::vector<SortedRow> rows;
  rows.reserve(rowCount);
  for (std::size_t row = 0; row < rowCount; ++row) rows.emplace_back(keys[0], row);
  const auto isBefore = [&](const SortedRow& left, const SortedRow& right) {
    if (left.Rank() != right.Rank()) return left.Rank() < right.Rank();
    if (left.word != right.word) return keys[0].WordsAscend(left.word, right.word);
    const std::size_t a = left.Row(), b = right.Row();
    int order = keys[0].CompareTied(a, b);
    for (std::size_t i = 1; order == 0 && i < keys.size(); ++i) order = keys[i].Compare(a, b);
    return order != 0 ? order < 0 : a < b;
  };
  std::sort(rows.begin(), rows.end(), isBefore);
  return rows;
}

}  // namespace

bool ld_table_sort(ld_table* self, const ld_sort_key* keys, uint64_t key_count, ld_table** out,
                   ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    auto& table = Self<ITable>(self);
    if (key_count > 0) Core::CheckArgument(keys);
    for (std::uint64_t i = 0; i < key_count; ++i) {
      Core::CheckArgument(keys[i].column);
      Enumerator<ld_sort_order>(keys[i].order, LD_SORT_ORDER_DESCENDING_NULLS_FIRST,
                                "ld_sort_order");
    }
    const RowSource source(table);
    const std::size_t rowCount = source.RowCount();
    std::deque<OrderKeys> orders;
    for (std::uint64_t i = 0; i < key_count; ++i)
      orders.emplace_back(source, source.ColumnOf(keys[i].column),
                          (keys[i].order & LD_SORT_ORDER_DESCENDING) != 0,
                          (keys[i].order & LD_SORT_ORDER_ASCENDING_NULLS_FIRST) != 0);
    RowCopy copy(source.Table().Header().GetName(), rowCount);
    const auto columns = AllColumns(source);
    copy.AddColumns(source, columns);
    if (orders.empty()) {
      for (std::size_t row = 0; row < rowCount; ++row)
        RowCopy::CopyCells(source, row, columns, copy.AddRow());
    } else {
      for (const SortedRow& row : Sorted(orders, rowCount))
        RowCopy::CopyCells(source, row.Row(), columns, copy.AddRow());
    }
    copy.Give(out);
    return true;
  });
}
