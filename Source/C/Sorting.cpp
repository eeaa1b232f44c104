#include <algorithm>
#include <deque>

#include "C/Call.h"
#include "C/RowCopy.h"
#include "C/RowKeys.h"

using namespace Data;
using namespace Data::c;
using Interfaces::ITable;

namespace {

/// A row with the word of its key that is being compared, so that comparing looks at nothing else.
struct SortedRow {
  std::uint64_t word = 0;
  std::uint64_t rankAndRow;  ///< the rank in the highest 8 bits

  explicit SortedRow(std::size_t row) : rankAndRow(row) {}
  std::size_t Row() const { return static_cast<std::size_t>(rankAndRow << 8 >> 8); }
  std::uint64_t Rank() const { return rankAndRow >> 56; }
  void Set(const OrderKeys::Word& next) {
    word = next.value;
    rankAndRow = std::uint64_t{next.rank} << 56 | Row();
  }

  bool HasWordOf(const SortedRow& other) const {
    return word == other.word && Rank() == other.Rank();
  }
  /// Rows with equal words keep their order, because then their indexes decide.
  bool operator<(const SortedRow& other) const {
    if (Rank() != other.Rank()) return Rank() < other.Rank();
    return word != other.word ? word < other.word : rankAndRow < other.rankAndRow;
  }
};

/// Sorts by the first words of all rows, then each run of equal words by the next, and so on: a row
/// is read once for each word, not for each comparison.
class Sorter {
 public:
  Sorter(const std::deque<OrderKeys>& keys, std::size_t rowCount) : keys_(keys) {
    rows_.reserve(rowCount);
    for (std::size_t row = 0; row < rowCount; ++row) rows_.emplace_back(row);
    if (!keys.empty()) runs_.push_back({0, rowCount, 0, 0});
  }

  const std::vector<SortedRow>& Run() {
    while (!runs_.empty()) {
      const Span run = runs_.back();
      runs_.pop_back();
      Sort(run);
    }
    return rows_;
  }

 private:
  /// Rows that are equal up to a word of a key.
  struct Span {
    std::size_t begin, end, key, depth;
  };

  void Sort(const Span& run) {
    const OrderKeys& key = keys_[run.key];
    const auto first = rows_.begin() + static_cast<std::ptrdiff_t>(run.begin);
    const auto last = rows_.begin() + static_cast<std::ptrdiff_t>(run.end);
    bool isOneRun = true;
    for (auto row = first; row != last; ++row) {
      row->Set(key.WordAt(row->Row(), run.depth));
      isOneRun = isOneRun && row->HasWordOf(*first);
    }
    if (!isOneRun) std::sort(first, last);
    for (auto begin = first; begin != last;) {
      const auto isOther = [&](const SortedRow& row) { return !row.HasWordOf(*begin); };
      const auto end = std::find_if(begin, last, isOther);
      if (end - begin > 1) AddRun(run, begin - rows_.begin(), end - rows_.begin());
      begin = end;
    }
  }

  /// The next word of rows that are equal so far, if there is one.
  void AddRun(const Span& run, std::ptrdiff_t begin, std::ptrdiff_t end) {
    const std::size_t row = rows_[static_cast<std::size_t>(begin)].Row();
    const bool isLast = keys_[run.key].WordAt(row, run.depth).isLast;
    Span next{static_cast<std::size_t>(begin), static_cast<std::size_t>(end), run.key,
              run.depth + 1};
    if (isLast) next = {next.begin, next.end, run.key + 1, 0};
    if (next.key < keys_.size()) runs_.push_back(next);
  }

  const std::deque<OrderKeys>& keys_;
  std::vector<SortedRow> rows_;
  std::vector<Span> runs_;
};

}  // namespace

bool ld_table_sort(ld_table* self, const ld_sort_key* keys, uint64_t key_count, ld_table** out,
                   ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    auto& table = Self<ITable>(self);
    if (key_count > 0) Core::CheckArgument(keys);
    CheckLength(key_count);
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
    copy.AddRows(source, columns, Sorter(orders, rowCount).Run(),
                 [](const SortedRow& row) { return row.Row(); });
    copy.Give(out);
    return true;
  });
}
