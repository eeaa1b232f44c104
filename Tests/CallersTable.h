#pragma once

#include "Callers.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/ITable.h"

namespace Data::tests {

/// The caller's own table, which passes all calls that read to another.
class CallersTable final : public CallersOwn<Interfaces::ITable> {
 public:
  using _VARIANT = Structures::_VARIANT;
  using IColumn = Interfaces::IColumn;
  using IRow = Interfaces::IRow;

  explicit CallersTable(Core::Ptr<Interfaces::ITable> table) : table_(std::move(table)) {}

  IColumn* GetColumn(std::int32_t index) override { return table_->GetColumn(index); }
  IColumn* GetColumnByName(const char* name) override { return table_->GetColumnByName(name); }
  std::int64_t GetColumnCount() override { return table_->GetColumnCount(); }
  _VARIANT* GetCellAt(std::int64_t row, std::int32_t column) override {
    return table_->GetCellAt(row, column);
  }
  bool HasColumn(const char* name) override { return table_->HasColumn(name); }
  IRow* GetRow(std::int64_t index) override { return table_->GetRow(index); }
  std::int64_t GetRowCount() override { return table_->GetRowCount(); }
  bool GetCell(std::int64_t row, std::int32_t column, _VARIANT* out) override {
    return table_->GetCell(row, column, out);
  }
  Interfaces::ITableHeader* GetHeader() override { return table_->GetHeader(); }

  IColumn* AddColumn(const char*) override { return nullptr; }
  IColumn* InsertColumn(const char*, std::int32_t) override { return nullptr; }
  void RemoveColumn(const char*) override {}
  IRow* AddRowFromDictionary(Interfaces::IVariantDictionary*) override { return nullptr; }
  IRow* AddRow(const _VARIANT*, std::uint64_t) override { return nullptr; }
  IRow* InsertRow(std::int64_t, const _VARIANT*, std::uint64_t) override { return nullptr; }
  IRow* AddRowCopy(IRow*) override { return nullptr; }
  IRow* InsertRowCopy(std::int64_t, IRow*) override { return nullptr; }
  void RemoveRow(std::int64_t) override {}
  void RemoveColumnAt(std::int32_t) override {}
  void SetCellByName(std::int64_t, const char*, const _VARIANT*) override {}
  bool GetCellByName(std::int64_t, const char*, _VARIANT*) override { return false; }
  void SetCell(std::int64_t, std::int32_t, const _VARIANT*) override {}
  void RemoveRows(std::int64_t, std::int64_t) override {}
  bool GetRows(Interfaces::IObjectList**, Core::IErrorCode**) override { return false; }
  void ClearRows() override {}
  void ClearIndexes() override {}
  bool BuildIndex(std::uint8_t, IColumn*, Core::IErrorCode**) override { return false; }
  IColumn* GetIndexColumn() override { return nullptr; }
  IRow* FindRow(const _VARIANT*) override { return nullptr; }
  bool FindRows(const char*, const _VARIANT*, Interfaces::IObjectList**,
                Core::IErrorCode**) override {
    return false;
  }
  bool Merge(Interfaces::ITable*, const char*, Structures::MergeMode, Interfaces::ITable**,
             Core::IErrorCode**) override {
    return false;
  }
  bool MergeOn(Interfaces::ITable*, const char*, const char*, Structures::MergeMode,
               Interfaces::ITable**, Core::IErrorCode**) override {
    return false;
  }
  bool MergeOnColumns(Interfaces::ITable*, Structures::MergeMode, Interfaces::ITable**,
                      Core::IErrorCode**, std::uint32_t, ...) override {
    return false;
  }
  void OnColumnAdded(IColumn*) override {}

 private:
  Core::Ptr<Interfaces::ITable> table_;
};

}  // namespace Data::tests
