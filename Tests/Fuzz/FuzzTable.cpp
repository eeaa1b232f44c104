// A sequence of table operations, each followed by a simple model: a vector of rows of small codes.

#include <algorithm>
#include <vector>

#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

/// 0 is Null, below 6 an integer, otherwise a text: an inline one or one with an object.
using Code = std::uint8_t;
constexpr Code kCodes = 12;

Variant ValueOf(Code code) {
  if (code == 0) return Core::Null;
  if (code < 6) return static_cast<std::int64_t>(code);
  return std::string(code < 9 ? 3 : 30, static_cast<char>('a' + code));
}

class Model {
 public:
  explicit Model(Input& input) : input_(input), table_(New(Data_CreateTable)) {}

  void Step();
  void Check();

 private:
  using Row = std::vector<Code>;

  Code AnyCode() { return static_cast<Code>(input_.Below(kCodes)); }
  std::size_t AnyRow() { return input_.Below(static_cast<std::uint32_t>(rows_.size())); }
  std::size_t AnyColumn() { return input_.Below(static_cast<std::uint32_t>(names_.size())); }

  void AddColumn();
  void RemoveColumn();
  void AddRow(std::size_t at, bool isCopy);
  void RemoveRows();
  void Write();
  void Fill();
  void BuildIndex();
  void Search();
  void Merge();
  bool IsUnique(std::size_t column, bool ignoreNulls) const;
  std::vector<std::size_t> Matches(std::size_t column, Code code) const;

  Input& input_;
  Ptr<ITable> table_;
  std::vector<std::string> names_;
  std::vector<Row> rows_;
  std::string indexed_;  ///< name of the index column, "" without an index
  bool ignoresNulls_ = false;
};

void Model::AddColumn() {
  const std::string name(1, static_cast<char>('a' + input_.Below(6)));
  table_->AddColumn(name.c_str());
  if (std::find(names_.begin(), names_.end(), name) != names_.end()) return;
  names_.push_back(name);
  for (Row& row : rows_) row.push_back(0);
}

void Model::RemoveColumn() {
  const std::size_t column = AnyColumn();
  if (names_[column] == indexed_) indexed_.clear();
  if (input_.Flag()) {
    table_->RemoveColumnAt(static_cast<std::int32_t>(column));
  } else {
    table_->RemoveColumn(names_[column].c_str());
  }
  names_.erase(names_.begin() + static_cast<std::ptrdiff_t>(column));
  for (Row& row : rows_) row.erase(row.begin() + static_cast<std::ptrdiff_t>(column));
}

void Model::AddRow(std::size_t at, bool isCopy) {
  const auto index = static_cast<std::int64_t>(at);
  Row row(names_.size());
  if (isCopy) {
    const std::size_t source = AnyRow();
    row = rows_[source];
    table_->InsertRowCopy(index, table_->GetRow(static_cast<std::int64_t>(source)));
  } else {
    std::vector<Variant> values;
    for (std::size_t i = 0; i < row.size() && !input_.IsEmpty(); ++i) {
      row[i] = AnyCode();
      values.push_back(ValueOf(row[i]));
    }
    table_->InsertRow(index, values.data(), values.size());
  }
  rows_.insert(rows_.begin() + index, row);
}

void Model::RemoveRows() {
  const std::size_t first = AnyRow(), count = input_.Below(4) % (rows_.size() - first + 1);
  table_->RemoveRows(static_cast<std::int64_t>(first), static_cast<std::int64_t>(count));
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(first);
  rows_.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
}

void Model::Write() {
  const std::size_t row = AnyRow(), column = AnyColumn();
  const Code code = AnyCode();
  const Variant value = ValueOf(code);
  table_->SetCell(static_cast<std::int64_t>(row), static_cast<std::int32_t>(column), &value);
  rows_[row][column] = code;
}

void Model::Fill() {
  const std::size_t column = AnyColumn();
  const Code code = AnyCode();
  const Variant value = ValueOf(code);
  table_->GetColumn(static_cast<std::int32_t>(column))->Fill(&value);
  for (Row& row : rows_) row[column] = code;
}

bool Model::IsUnique(std::size_t column, bool ignoreNulls) const {
  std::size_t counts[kCodes] = {};
  for (const Row& row : rows_) ++counts[row[column]];
  if (ignoreNulls) counts[0] = 0;
  return std::all_of(counts, counts + kCodes, [](std::size_t count) { return count < 2; });
}

void Model::BuildIndex() {
  const std::size_t column = AnyColumn();
  const bool ignoreNulls = input_.Flag();
  const bool isBuilt = table_->BuildIndex(
      ignoreNulls, table_->GetColumn(static_cast<std::int32_t>(column)), nullptr);
  Require(isBuilt == IsUnique(column, ignoreNulls));
  if (!isBuilt) return;
  indexed_ = names_[column];
  ignoresNulls_ = ignoreNulls;
}

std::vector<std::size_t> Model::Matches(std::size_t column, Code code) const {
  std::vector<std::size_t> matches;
  for (std::size_t i = 0; i < rows_.size(); ++i)
    if (rows_[i][column] == code) matches.push_back(i);
  return matches;
}

void Model::Search() {
  const std::size_t column = AnyColumn();
  const Code code = AnyCode();
  const Variant key = ValueOf(code);
  const auto expected = Matches(column, code);
  Ptr<IObjectList> found;
  Require(table_->FindRows(names_[column].c_str(), &key, found.Receive(), nullptr));
  Require(found->GetCount() == expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    Require(found->GetAt(i) == table_->GetRow(static_cast<std::int64_t>(expected[i])));
  IRow* first = table_->GetColumn(static_cast<std::int32_t>(column))->FindRow(&key);
  Require(first ? !expected.empty() && first == found->GetAt(0) : expected.empty());
  if (names_[column] != indexed_ || (code == 0 && ignoresNulls_)) return;
  Require(table_->FindRow(&key) == first);
}

void Model::Merge() {
  const std::size_t column = AnyColumn();
  const auto mode = static_cast<Data::Structures::MergeMode>(input_.Below(3));
  Ptr<ITable> merged;
  Require(table_->Merge(table_.Get(), names_[column].c_str(), mode, merged.Receive(), nullptr));
  std::size_t expected = 0;
  for (const Row& row : rows_) {
    if (row[column] != 0) {
      expected += Matches(column, row[column]).size();
    } else if (mode != Data::Structures::MergeMode::Matching) {
      expected += mode == Data::Structures::MergeMode::All ? 2 : 1;
    }
  }
  Require(merged->GetRowCount() == static_cast<std::int64_t>(expected));
  Require(merged->GetColumnCount() == static_cast<std::int64_t>(2 * names_.size() - 1));
}

void Model::Step() {
  const std::uint32_t step = input_.Below(16);
  if (step < 3) return AddColumn();
  if (names_.empty()) return;
  if (step < 7) return AddRow(input_.Below(static_cast<std::uint32_t>(rows_.size()) + 1), false);
  if (step == 7) return BuildIndex();
  if (step == 8) return RemoveColumn();
  if (rows_.empty()) return;
  if (step == 9) return AddRow(AnyRow(), true);
  if (step == 10) return RemoveRows();
  if (step == 11) return Fill();
  if (step == 12) return Search();
  if (step == 13) return Merge();
  if (step == 14) {
    table_->ClearRows();
    rows_.clear();
    indexed_.clear();
    return;
  }
  Write();
}

void Model::Check() {
  if (!indexed_.empty()) {
    const auto found = std::find(names_.begin(), names_.end(), indexed_);
    if (!IsUnique(static_cast<std::size_t>(found - names_.begin()), ignoresNulls_))
      indexed_.clear();
  }
  IColumn* index = table_->GetIndexColumn();
  Require(index ? index->GetName() == indexed_ : indexed_.empty());
  Require(table_->GetColumnCount() == static_cast<std::int64_t>(names_.size()));
  Require(table_->GetRowCount() == static_cast<std::int64_t>(rows_.size()));
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    IRow* row = table_->GetRow(static_cast<std::int64_t>(i));
    Require(row->GetIndex() == static_cast<std::int32_t>(i));
    for (std::size_t j = 0; j < names_.size(); ++j) {
      const Variant expected = ValueOf(rows_[i][j]);
      const _VARIANT& cell = *row->GetCellAt(static_cast<std::int32_t>(j));
      Require(Core::TypeOf(cell) == expected.Type() &&
              Core::ToText(cell) == Core::ToText(expected));
    }
  }
}

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
