#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Core/Ptr.h"
#include "Data/Interfaces/ITableHeader.h"
#include "Tables/ColumnImpl.h"

namespace Data::impl {

struct TableHeaderImpl final : Core::ObjectBase<Interfaces::ITableHeader> {
  TableHeaderImpl() = default;
  ~TableHeaderImpl() override;

  Interfaces::IColumn* GetColumn(std::int32_t index, Core::IErrorCode** error) override;
  Interfaces::IColumn* GetColumnByName(const char* name) override { return &Column(name); }
  std::int64_t GetColumnCount() override { return static_cast<std::int64_t>(columns_.size()); }
  bool Contains(Interfaces::IColumn* column) override;
  bool HasColumn(const char* name) override;
  bool GetColumns(Interfaces::IObjectList** out, Core::IErrorCode** error) override;
  const char* GetIndexName() override { return indexColumn_ ? indexColumn_->GetName() : ""; }
  void SetName(const char* name) override;
  const char* GetName() override { return name_.c_str(); }

  // -- For the rest of the library --

  const std::vector<Core::Ptr<ColumnImpl>>& Columns() const { return columns_; }
  std::size_t ColumnCount() const { return columns_.size(); }
  /// The column at an index. Throws "Column index out of range ...".
  ColumnImpl& ColumnAt(std::int64_t index) const;
  /// The column of that name, or null.
  ColumnImpl* Find(std::string_view name) const;
  /// Like `Find`, but throws for a missing and for a null name.
  ColumnImpl& Column(const char* name) const;

  /// Counts the columns added and removed: while it is unchanged, every column is still at its
  /// index.
  std::uint64_t Revision() const { return revision_; }

  /// Inserts a column of a new name at a position of the list.
  ColumnImpl& Insert(Core::Ptr<ColumnImpl> column, std::size_t position);
  /// Removes a column and renumbers those after it.
  void Remove(ColumnImpl& column);
  void Rename(ColumnImpl& column, std::string name);

  ColumnImpl* IndexColumn() const { return indexColumn_; }
  void SetIndexColumn(ColumnImpl* column) { indexColumn_ = column; }

 private:
  std::vector<Core::Ptr<ColumnImpl>> columns_;
  /// The keys are the columns' own names.
  std::unordered_map<std::string_view, ColumnImpl*> byName_;
  ColumnImpl* indexColumn_ = nullptr;
  std::string name_;
  std::uint64_t revision_ = 0;
};

}  // namespace Data::impl
