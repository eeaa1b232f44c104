#pragma once

#include <utility>
#include <vector>

#include "Core/Ptr.h"
#include "Data/Structures/MergeMode.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

/// Names of a key column in the left and in the right table.
using KeyNames = std::pair<const char*, const char*>;

/// A new table of the rows of two tables joined on their key columns, as
/// `ITable::Merge` describes it.
Core::Ptr<TableImpl> MergeTables(Interfaces::ITable& left, Interfaces::ITable& right,
                                 const std::vector<KeyNames>& keys, Structures::MergeMode mode);

}  // namespace Data::impl
