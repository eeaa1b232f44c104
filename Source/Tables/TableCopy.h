#pragma once

#include <string_view>

#include "Core/Ptr.h"
#include "Data/Interfaces/ITable.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

/// Whether reading a table may run the caller's code: the table is the caller's own object, or one
/// of its cells calls back.
bool CallsBack(Interfaces::ITable& table);

/// A new table with the columns and cells of another.
Core::Ptr<TableImpl> CopyOf(Interfaces::ITable& table);

/// Adds a column with the type and the attributes of another.
ColumnImpl& AddColumnLike(Interfaces::IColumn& source, std::string_view name, TableImpl& table);

}  // namespace Data::impl
