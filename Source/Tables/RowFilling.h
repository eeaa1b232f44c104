#pragma once

#include <vector>

#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Tables/TableHeaderImpl.h"

/// Filling a new row by the names of the columns. The sources may be objects of the caller's own,
/// which may change the table: the caller of these functions holds the table and compares the
/// header's revision afterwards.
namespace Data::impl {

struct RowImpl;

/// Fills a row with the values that a dictionary holds under the names of the columns.
/// @return the columns that the dictionary has
std::vector<ColumnImpl*> FillFrom(Interfaces::IVariantDictionary& values,
                                  const TableHeaderImpl& header, RowImpl& row);

/// Fills a row with the cells that another row has in the columns of the same names.
/// @return the columns that were written in the other row's table
std::vector<ColumnImpl*> FillFrom(Interfaces::IRow& source, const TableHeaderImpl& header,
                                  RowImpl& row);

}  // namespace Data::impl
