// A sequence of table operations, each compared with a simple model: a vector of rows of small
// codes.

#include <algorithm>
#include <vector>

#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "Fuzz.h"

using namespace Data::fuzz;
namespace Structures = Data::Structures;

namespace {

/// 0 is Null, 1 to 5 are integers, the others texts: inline ones and ones in string objects.
using Code = std::uint8_t;
constexpr Code kCodes = 12;

Variant ValueOf(Code code) {
  if (code == 0) return Core::Null;
  if (code < 6) return static_cast<std::int64_t>(code);
  return std::string(code < 9 ? 3 : 30, static_cast<char>('a' + code));
}

auto& At(auto& list, std::int64_t index) { return list[static_cast<std::size_t>(index)]; }

class Model {
 public:
  explicit Model(Input& input) : input_(input), table_(New(Data_CreateTable)) {}

  void Step() {
    using Operation = void (Model::*)();
    constexpr Operation kOnColumns[] = {&Model::AddColumn, &Model::AddRow, &Model::AddRow,
                                        &Model::BuildIndex, &Model::RemoveColumn};
    constexpr Operation kOnRows[] = {&Model::Write,      &Model::Write,    &Model::CopyRow,
                                     &Model::Fill,       &Model::Search,   &Model::Merge,
                                     &Model::RemoveRows, &Model::ClearRows};
    const std::uint32_t step = input_.Below(16);
    if (names_.empty()) return AddColumn();
    if (rows_.empty() || step < 8) return (this->*kOnColumns[step % std::size(kOnColumns)])();
    (this->*kOnRows[step % std::size(kOnRows)])();
  }

  void Check() {
    const auto indexed = std::find(names_.begin(), names_.end(), indexed_);
    if (indexed != names_.end() && !IsUnique(indexed - names_.begin(), ignoresNulls_))
      indexed_.clear();
    IColumn* index = table_->GetIndexColumn();
    Require(index ? index->GetName() == indexed_ : indexed_.empty());
    Require(table_->GetColumnCount() == std::ssize(names_));
    Require(table_->GetRowCount() == std::ssize(rows_));
    for (std::int32_t i = 0; i < std::ssize(rows_); ++i) {
      IRow* row = table_->GetRow(i);
      Require(row->GetIndex() == i);
      for (std::int32_t j = 0; j < std::ssize(names_); ++j)
        Require(Core::ToText(*row->GetCellAt(j)) == Core::ToText(ValueOf(At(At(rows_, i), j))));
    }
  }

 private:
  using Row = std::vector<Code>;

  Code AnyCode() { return static_cast<Code>(input_.Below(kCodes)); }
  std::int32_t Any(const auto& list) {
    return static_cast<std::int32_t>(input_.Below(static_cast<std::uint32_t>(list.size())));
  }

  bool IsUnique(std::ptrdiff_t column, bool ignoreNulls) const {
    std::size_t counts[kCodes] = {};
    for (const Row& row : rows_) ++counts[At(row, column)];
    if (ignoreNulls) counts[0] = 0;
    return std::ranges::all_of(counts, [](std::size_t count) { return count < 2; });
  }
  std::vector<std::int64_t> Matches(std::int32_t column, Code code) const {
    std::vector<std::int64_t> matches;
    for (std::int64_t i = 0; i < std::ssize(rows_); ++i)
      if (At(At(rows_, i), column) == code) matches.push_back(i);
    return matches;
  }

  void AddColumn() {
    const std::string name(1, static_cast<char>('a' + input_.Below(6)));
    table_->AddColumn(name.c_str());
    if (std::ranges::find(names_, name) != names_.end()) return;
    names_.push_back(name);
    for (Row& row : rows_) row.push_back(0);
  }
  void RemoveColumn() {
    const std::int32_t column = Any(names_);
    if (At(names_, column) == indexed_) indexed_.clear();
    if (input_.Flag()) {
      table_->RemoveColumnAt(column);
    } else {
      table_->RemoveColumn(At(names_, column).c_str());
    }
    names_.erase(names_.begin() + column);
    for (Row& row : rows_) row.erase(row.begin() + column);
  }
  void AddRow() {
    const std::int64_t index = input_.Below(static_cast<std::uint32_t>(rows_.size()) + 1);
    Row row(names_.size());
    std::vector<Variant> values;
    for (std::size_t i = 0; i < row.size() && !input_.IsEmpty(); ++i) {
      row[i] = AnyCode();
      values.push_back(ValueOf(row[i]));
    }
    table_->InsertRow(index, values.data(), values.size());
    rows_.insert(rows_.begin() + index, row);
  }
  void CopyRow() {
    const std::int32_t index = Any(rows_), source = Any(rows_);
    table_->InsertRowCopy(index, table_->GetRow(source));
    rows_.insert(rows_.begin() + index, Row(At(rows_, source)));
  }
  void RemoveRows() {
    const std::int32_t first = Any(rows_);
    const std::int64_t count = std::min<std::int64_t>(input_.Below(4), std::ssize(rows_) - first);
    table_->RemoveRows(first, count);
    rows_.erase(rows_.begin() + first, rows_.begin() + first + count);
  }
  void ClearRows() {
    table_->ClearRows();
    rows_.clear();
    indexed_.clear();
  }
  void Write() {
    const std::int32_t row = Any(rows_), column = Any(names_);
    const Variant value = ValueOf(At(At(rows_, row), column) = AnyCode());
    table_->SetCell(row, column, &value);
  }
  void Fill() {
    const std::int32_t column = Any(names_);
    const Code code = AnyCode();
    const Variant value = ValueOf(code);
    table_->GetColumn(column)->Fill(&value);
    for (Row& row : rows_) At(row, column) = code;
  }
  void BuildIndex() {
    const std::int32_t column = Any(names_);
    const bool ignoreNulls = input_.Flag();
    const bool isBuilt = table_->BuildIndex(ignoreNulls, table_->GetColumn(column), nullptr);
    Require(isBuilt == IsUnique(column, ignoreNulls));
    if (!isBuilt) return;
    indexed_ = At(names_, column);
    ignoresNulls_ = ignoreNulls;
  }
  void Search() {
    const std::int32_t column = Any(names_);
    const Code code = AnyCode();
    const Variant key = ValueOf(code);
    const auto expected = Matches(column, code);
    Ptr<IObjectList> found;
    Require(table_->FindRows(At(names_, column).c_str(), &key, found.Receive(), nullptr));
    Require(found->GetCount() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
      Require(found->GetAt(i) == table_->GetRow(expected[i]));
    IRow* first = expected.empty() ? nullptr : table_->GetRow(expected[0]);
    Require(table_->GetColumn(column)->FindRow(&key) == first);
    if (At(names_, column) != indexed_ || (code == 0 && ignoresNulls_)) return;
    Require(table_->FindRow(&key) == first);
  }
  void Merge() {
    using Structures::MergeMode;
    const std::int32_t column = Any(names_);
    const auto mode = static_cast<MergeMode>(input_.Below(3));
    Ptr<ITable> merged;
    Require(
        table_->Merge(table_.Get(), At(names_, column).c_str(), mode, merged.Receive(), nullptr));
    std::size_t expected = 0;
    for (const Row& row : rows_) {
      if (At(row, column) != 0) expected += Matches(column, At(row, column)).size();
      if (At(row, column) == 0) expected += static_cast<std::size_t>(mode);
    }
    Require(merged->GetRowCount() == static_cast<std::int64_t>(expected));
    Require(merged->GetColumnCount() == 2 * std::ssize(names_) - 1);
  }

  Input& input_;
  Ptr<ITable> table_;
  std::vector<std::string> names_;
  std::vector<Row> rows_;
  std::string indexed_;  ///< name of the index column, "" without an index
  bool ignoresNulls_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, std::min<std::size_t>(size, 160));
  Model model(input);
  while (!input.IsEmpty()) {
    model.Step();
    model.Check();
  }
  return 0;
}
