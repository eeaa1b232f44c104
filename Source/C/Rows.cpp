#include <stdexcept>
#include <string>

#include "C/Call.h"
#include "C/Options.h"
#include "C/RowCopy.h"

using namespace Data;
using namespace Data::c;
using Interfaces::ITable;

namespace {

bool IsSet(const std::uint8_t* bitmap, std::size_t index) {
  return (bitmap[index / 8] >> index % 8 & 1) != 0;
}

std::size_t CountSet(const std::uint8_t* bitmap, std::size_t count) {
  std::size_t set = 0;
  for (std::size_t i = 0; i < count; ++i) set += IsSet(bitmap, i);
  return set;
}

void CopyRows(const RowSource& source, std::span<const std::size_t> columns, RowCopy& copy,
              auto&& isKept) {
  copy.AddColumns(source, columns);
  for (std::size_t row = 0; row < source.RowCount(); ++row)
    if (isKept(row)) RowCopy::CopyCells(source, row, columns, copy.AddRow());
}

}  // namespace

bool ld_table_filter(ld_table* self, const uint8_t* bitmap, uint64_t bit_count, ld_table** out,
                     ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    auto& table = Self<ITable>(self);
    if (bit_count > 0) Core::CheckArgument(bitmap);
    const RowSource source(table);
    if (bit_count != source.RowCount())
      throw std::runtime_error("The bitmap has " + std::to_string(bit_count) + " bits for " +
                               std::to_string(source.RowCount()) + " rows!");
    RowCopy copy(source.Table().Header().GetName(), CountSet(bitmap, source.RowCount()));
    CopyRows(source, AllColumns(source), copy, [&](std::size_t row) { return IsSet(bitmap, row); });
    copy.Give(out);
    return true;
  });
}

bool ld_table_select(ld_table* self, const char* const* names, uint64_t count, ld_table** out,
                     ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    auto& table = Self<ITable>(self);
    const ColumnNames wanted = ListedNames(names, count);
    const RowSource source(table, wanted);
    RowCopy copy(source.Table().Header().GetName(), source.RowCount());
    CopyRows(source, source.ColumnsOf(wanted), copy, [](std::size_t) { return true; });
    copy.Give(out);
    return true;
  });
}
