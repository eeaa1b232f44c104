#pragma once

#include <vector>

#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Tables/TableHeaderImpl.h"

/// Functions that fill a new row by column name. The source may be the caller's own object, which
/// may change the table: callers of these functions must hold the table and compare the header's
/// revision afterwards.
namespace Data::impl {

struct RowImpl;

/// Fills a row with a dictionary's values, whose keys are column names.
/// @return the columns for which the dictionary has a value
std::vector<ColumnImpl*> FillFrom(Interfaces::IVariantDictionary& values,
                                  const TableHeaderImpl& header, RowImpl& row);

/// Fills a row with another row's cells in the columns of the same names.
/// @return the columns that were written in the other row's table
std::vector<ColumnImpl*> FillFrom(Interfaces::IRow& source, const TableHeaderImpl& header,
                                  RowImpl& row);

}  // namespace Data::impl
