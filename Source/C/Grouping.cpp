#include <cmath>
#include <span>
#include <stdexcept>
#include <string>

#include "C/Call.h"
#include "C/ExactValues.h"
#include "C/Options.h"
#include "C/RowCopy.h"
#include "C/RowKeys.h"

using namespace Data;
using namespace Data::c;
using Interfaces::ITable;
using Structures::_VARIANT;

namespace {

/// The groups of the rows of a table, numbered in the order of their first rows.
struct Groups {
  Groups(const RowSource& source, const std::vector<std::size_t>& keyColumns);

  std::size_t count;
  std::vector<std::size_t> groupOf;    ///< by row
  std::vector<std::size_t> firstRows;  ///< by group; none for the group without keys
};

Groups::Groups(const RowSource& source, const std::vector<std::size_t>& keyColumns)
    : count(keyColumns.empty() ? 1 : 0), groupOf(source.RowCount()) {
  if (keyColumns.empty()) return;
  const RowKeys keys(source, keyColumns);
  RowLookup lookup(keys);
  for (std::size_t row = 0; row < source.RowCount(); ++row) {
    const std::uint64_t hash = keys.Hash(row);
    std::size_t group = count;
    lookup.ForEachEqual(keys, row, hash, [&](std::size_t first) {
      group = groupOf[first];
      return false;
    });
    groupOf[row] = group;
    if (group != count) continue;
    lookup.Add(row, hash);
    firstRows.push_back(row);
    ++count;
  }
}

/// The sum of numbers.
class Sum {
 public:
  void Add(const Integer& integer) {
    ++count_;
    if (integer.high != 0) return AddReal(integer.NearestDouble());
    const std::uint64_t before = low_;
    if (integer.isNegative) {
      low_ -= integer.low;
      high_ -= before < integer.low;
    } else {
      low_ += integer.low;
      high_ += low_ < before;
    }
  }
  void Add(double real) {
    ++count_;
    AddReal(real);
  }

  _VARIANT Total() const {
    if (count_ == 0) return Core::MakeNull();
    if (!hasReals_)
      if (const auto exact = Whole().ExactInt64())
        return Core::MakeInteger(Core::ValueType::Int64, *exact);
    return Core::MakeDouble(Real());
  }
  _VARIANT Mean() const {
    if (count_ == 0) return Core::MakeNull();
    return Core::MakeDouble(Real() / static_cast<double>(count_));
  }

 private:
  /// Neumaier's summation: what each addition rounds off is kept.
  void AddReal(double real) {
    hasReals_ = true;
    const double sum = real_ + real;
    rest_ += std::abs(real_) >= std::abs(real) ? real_ - sum + real : real - sum + real_;
    real_ = sum;
  }
  Integer Whole() const {
    if (high_ >= 0) return {static_cast<std::uint64_t>(high_), low_, false};
    return {~static_cast<std::uint64_t>(high_) + (low_ == 0 ? 1 : 0), 0 - low_, true};
  }
  double Real() const {
    Sum all = *this;
    if (low_ != 0 || high_ != 0) all.AddReal(Whole().NearestDouble());
    return std::isfinite(all.real_) ? all.real_ + all.rest_ : all.real_;
  }

  std::int64_t high_ = 0;  // the integers: 128 bits in two's complement
  std::uint64_t low_ = 0;
  double real_ = 0, rest_ = 0;
  std::uint64_t count_ = 0;
  bool hasReals_ = false;
};

/// Computes one aggregate for all groups.
class Aggregation {
 public:
  Aggregation(const RowSource& source, const Groups& groups, std::size_t column)
      : source_(source), groups_(groups), column_(column) {}

  std::vector<Core::Variant> CountRows() const {
    std::vector<std::int64_t> counts(groups_.count);
    for (const std::size_t group : groups_.groupOf) ++counts[group];
    return {counts.begin(), counts.end()};
  }

  std::vector<Core::Variant> CountValues() const {
    std::vector<std::int64_t> counts(groups_.count);
    ForEachValue([&](std::size_t group, std::size_t, const _VARIANT&) { ++counts[group]; });
    return {counts.begin(), counts.end()};
  }

  std::vector<Core::Variant> Add(_VARIANT (Sum::*result)() const) const {
    std::vector<Sum> sums(groups_.count);
    ForEachValue([&](std::size_t group, std::size_t row, const _VARIANT& cell) {
      if (const auto integer = Integer::Of(cell)) {
        sums[group].Add(*integer);
      } else if (const auto real = RealOf(cell)) {
        sums[group].Add(*real);
      } else {
        throw std::runtime_error("Column " + source_.Table().Header().Columns()[column_]->Name() +
                                 ", row " + std::to_string(row) + ": " +
                                 std::string(Core::GetValueTypeName(Core::TypeOf(cell))) +
                                 " cannot be added!");
      }
    });
    std::vector<Core::Variant> values;
    values.reserve(sums.size());
    for (const Sum& sum : sums) values.push_back(Core::Variant::Adopt((sum.*result)()));
    return values;
  }

  std::vector<Core::Variant> Extremes(bool isGreatest) const {
    constexpr std::size_t kNoRow = SIZE_MAX;
    struct Best {
      std::size_t row = kNoRow;
      OrderKeys::Word word{};
    };
    const OrderKeys keys(source_, column_);
    std::vector<Best> all(groups_.count);
    ForEachValue([&](std::size_t group, std::size_t row, const _VARIANT&) {
      Best& best = all[group];
      const OrderKeys::Word word = keys.WordAt(row, 0);
      int order = word.Compare(best.word);
      if (order == 0 && !word.isLast && best.row != kNoRow) order = keys.Compare(row, best.row, 1);
      if (best.row == kNoRow || (isGreatest ? order > 0 : order < 0)) best = {row, word};
    });
    std::vector<Core::Variant> values;
    values.reserve(all.size());
    for (const Best& best : all)
      values.push_back(best.row == kNoRow ? Core::Variant(Core::Null)
                                          : Core::Variant(source_.Cell(best.row, column_)));
    return values;
  }

 private:
  template <class Visit>
  void ForEachValue(Visit&& visit) const {
    for (std::size_t row = 0; row < source_.RowCount(); ++row) {
      const _VARIANT& cell = source_.Cell(row, column_);
      if (HasValue(cell)) visit(groups_.groupOf[row], row, cell);
    }
  }

  const RowSource& source_;
  const Groups& groups_;
  std::size_t column_;
};

std::vector<Core::Variant> Aggregate(const RowSource& source, const Groups& groups,
                                     const ld_aggregate& wanted) {
  const bool countsRows = wanted.function == LD_AGGREGATE_FUNCTION_COUNT;
  const Aggregation aggregation(source, groups, countsRows ? 0 : source.ColumnOf(wanted.column));
  switch (wanted.function) {
    case LD_AGGREGATE_FUNCTION_COUNT:
      return aggregation.CountRows();
    case LD_AGGREGATE_FUNCTION_COUNT_VALUES:
      return aggregation.CountValues();
    case LD_AGGREGATE_FUNCTION_SUM:
      return aggregation.Add(&Sum::Total);
    case LD_AGGREGATE_FUNCTION_MEAN:
      return aggregation.Add(&Sum::Mean);
    default:
      return aggregation.Extremes(wanted.function == LD_AGGREGATE_FUNCTION_MAX);
  }
}

void CheckAggregates(std::span<const ld_aggregate> aggregates) {
  for (const ld_aggregate& wanted : aggregates) {
    Enumerator<ld_aggregate_function>(wanted.function, LD_AGGREGATE_FUNCTION_MAX,
                                      "ld_aggregate_function");
    if (wanted.function != LD_AGGREGATE_FUNCTION_COUNT) Core::CheckArgument(wanted.column);
    Core::CheckArgument(wanted.name);
  }
}

void Group(const RowSource& source, const ColumnNames& keys,
           std::span<const ld_aggregate> aggregates, ld_table** out) {
  const auto keyColumns = source.ColumnsOf(keys);
  const Groups groups(source, keyColumns);
  RowCopy copy(source.Table().Header().GetName(), groups.count);
  copy.AddColumns(source, keyColumns);
  std::vector<std::vector<Core::Variant>> results;
  for (const ld_aggregate& wanted : aggregates) {
    impl::ColumnImpl& column = copy.AddColumn(wanted.name);
    results.push_back(Aggregate(source, groups, wanted));
    for (const auto& value : results.back()) column.NoteValue(value.Type());
  }
  for (std::size_t group = 0; group < groups.count; ++group) {
    _VARIANT* cell = copy.AddRow();
    if (!keyColumns.empty()) RowCopy::CopyCells(source, groups.firstRows[group], keyColumns, cell);
    cell += keyColumns.size();
    for (auto& values : results) *cell++ = values[group].Detach();
  }
  copy.Give(out);
}

}  // namespace

bool ld_table_group(ld_table* self, const char* const* keys, uint64_t key_count,
                    const ld_aggregate* aggregates, uint64_t aggregate_count, ld_table** out,
                    ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    auto& table = Self<ITable>(self);
    if (aggregate_count > 0) Core::CheckArgument(aggregates);
    CheckLength(aggregate_count);
    const std::span<const ld_aggregate> wanted(aggregates,
                                               static_cast<std::size_t>(aggregate_count));
    CheckAggregates(wanted);
    const ColumnNames keyNames = ListedNames(keys, key_count);
    ColumnNames read = keyNames;
    for (const ld_aggregate& each : wanted)
      if (each.function != LD_AGGREGATE_FUNCTION_COUNT) read.push_back(each.column);
    const RowSource source(table, read);
    Group(source, keyNames, wanted, out);
    return true;
  });
}
