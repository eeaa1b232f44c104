#pragma once

#include <span>
#include <utility>

#include "Core/Ptr.h"
#include "Data/Structures/MergeMode.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

/// Names of a key column in the left and in the right table.
using KeyNames = std::pair<const char*, const char*>;

/// A new table of the rows of two tables joined on their key columns: a hash join
/// that keeps the order of the left rows. See `ITable::Merge`.
Core::Ptr<TableImpl> MergeTables(Interfaces::ITable& left, Interfaces::ITable& right,
                                 std::span<const KeyNames> keys, Structures::MergeMode mode);

}  // namespace Data::impl
