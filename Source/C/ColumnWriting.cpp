#include <span>
#include <string>
#include <utility>
#include <vector>

#include "C/Call.h"
#include "C/ColumnReading.h"
#include "C/Options.h"
#include "C/Utf8.h"
#include "Containers/ArrayImpl.h"
#include "Core/ExactCast.h"
#include "Core/ObjectPool.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/TableFailures.h"
#include "Text/MultiByteStringImpl.h"

using namespace Data;
using namespace Data::c;
using Core::ObjectPool;
using Core::Ptr;
using Core::Variant;
using impl::ColumnImpl;
using impl::RowImpl;
using impl::TableImpl;
using Interfaces::ITable;
using Structures::_VARIANT;
using Structures::ValueType;

namespace {

/// Whether a column has received values, and Nulls.
struct Received {
  bool values = false, nulls = false;
};

/// The arrays that a caller gives for the cells of a column.
class GivenColumn {
 public:
  /// Checks all but the single cells.
  GivenColumn(const char* name, const ld_column_data* data);

  const std::string& Name() const { return name_; }
  std::size_t Count() const { return static_cast<std::size_t>(data_.length); }
  void CheckCount(std::size_t wanted) const {
    if (Count() != wanted)
      Fail(" has " + std::to_string(Count()) + " cells instead of " + std::to_string(wanted) + "!");
  }
  ValueType Type() const;

  /// Makes the records of cells.
  /// @param store  receives the index of each cell and its record with its reference
  template <class Store>
  Received ForEach(std::size_t first, std::size_t count, ObjectPool& pool, Store&& store) const;

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw std::runtime_error("Column " + name_ + what);
  }
  [[noreturn]] void FailAt(std::size_t index, const char* what) const {
    Fail(", row " + std::to_string(index) + ": " + what);
  }

  bool IsValid(std::size_t index) const {
    return !data_.validity || (data_.validity[index / 8] >> index % 8 & 1) != 0;
  }
  template <class T>
  T Value(std::size_t index) const {  // the caller's arrays need not be aligned
    T value;
    std::memcpy(&value, static_cast<const char*>(data_.values) + index * sizeof value,
                sizeof value);
    return value;
  }
  std::int64_t Offset(std::size_t index) const {
    std::int64_t offset;
    std::memcpy(&offset, data_.offsets + index, sizeof offset);
    return offset;
  }
  std::string_view Bytes(std::size_t index) const;
  _VARIANT MakeDateTime(std::size_t index, ObjectPool& pool) const;
  _VARIANT MakeText(std::size_t index, ObjectPool& pool) const;
  _VARIANT MakeArray(std::size_t index) const;

  std::string name_;
  ld_column_data data_;
  ColumnFormat format_;
};

GivenColumn::GivenColumn(const char* name, const ld_column_data* data) {
  Core::CheckArgument(name);
  Core::CheckArgument(data);
  name_ = name;
  data_ = ReadOptions(data);
  if (data_.format == LD_COLUMN_FORMAT_AUTOMATIC) data_.format = UINT32_MAX;
  format_ = Enumerator<ColumnFormat>(data_.format, LD_COLUMN_FORMAT_BINARY, "ld_column_format");
  const bool hasBytes = format_ == ColumnFormat::Text || format_ == ColumnFormat::Binary;
  constexpr std::int64_t kMostCells = std::int64_t{1} << 40;
  if (data_.length < 0 || data_.length > kMostCells) Fail(": the length is wrong!");
  const bool isMissing =
      hasBytes ? !data_.offsets || (!data_.bytes && data_.byte_count != 0) : !data_.values;
  if (data_.length != 0 && isMissing) Fail(": the values are missing!");
}

ValueType GivenColumn::Type() const {
  constexpr ValueType kTypes[] = {ValueType::Null, ValueType::Int64,    ValueType::Double,
                                  ValueType::Bool, ValueType::DateTime, ValueType::String,
                                  ValueType::Array};
  return kTypes[static_cast<std::size_t>(format_)];
}

std::string_view GivenColumn::Bytes(std::size_t index) const {
  const std::int64_t begin = Offset(index), end = Offset(index + 1);
  if (begin < 0 || begin > end || static_cast<std::uint64_t>(end) > data_.byte_count)
    FailAt(index, "the offsets are wrong!");
  return {data_.bytes + begin, static_cast<std::size_t>(end - begin)};
}

_VARIANT GivenColumn::MakeDateTime(std::size_t index, ObjectPool& pool) const {
  const auto ticks = TicksOfMicroseconds(Value<std::int64_t>(index));
  if (!ticks) FailAt(index, "the date is out of range!");
  return Core::MakeReference(ValueType::DateTime, new (&pool) impl::DateTimeImpl(*ticks));
}

_VARIANT GivenColumn::MakeText(std::size_t index, ObjectPool& pool) const {
  const std::string_view text = Bytes(index);
  if (!IsUtf8(text)) FailAt(index, "the text is not UTF-8!");
  if (Core::FitsInline(text)) return Core::MakeInlineText(text);
  return Core::MakeReference(ValueType::String,
                             impl::MultiByteStringImpl::FromUtf8(text, &pool).Detach());
}

_VARIANT GivenColumn::MakeArray(std::size_t index) const {
  const std::string_view bytes = Bytes(index);
  auto array = Core::MakePtr<impl::ArrayImpl>();
  array->SetData(bytes.data(), 1, bytes.size());
  return Core::MakeReference(ValueType::Array, array.Detach());
}

template <class Store>
Received GivenColumn::ForEach(std::size_t first, std::size_t count, ObjectPool& pool,
                              Store&& store) const {
  Received received;
  const auto forEach = [&](auto&& make) {
    for (std::size_t i = first; i < first + count; ++i) {
      const bool isValid = IsValid(i);
      (isValid ? received.values : received.nulls) = true;
      store(i, isValid ? make(i) : Core::MakeNull());
    }
  };
  const auto integer = [&](ValueType type, std::int64_t value) {
    return Core::MakeInteger(type, value);
  };
  switch (format_) {
    case ColumnFormat::Int64:
      forEach([&](std::size_t i) { return integer(ValueType::Int64, Value<std::int64_t>(i)); });
      break;
    case ColumnFormat::Double:
      forEach([&](std::size_t i) { return Core::MakeDouble(Value<double>(i)); });
      break;
    case ColumnFormat::Bool:
      forEach([&](std::size_t i) { return integer(ValueType::Bool, Value<std::uint8_t>(i) != 0); });
      break;
    case ColumnFormat::DateTime:
      forEach([&](std::size_t i) { return MakeDateTime(i, pool); });
      break;
    case ColumnFormat::Text:
      forEach([&](std::size_t i) { return MakeText(i, pool); });
      break;
    case ColumnFormat::Binary:
      forEach([&](std::size_t i) { return MakeArray(i); });
      break;
  }
  return received;
}

void Note(ColumnImpl& column, const GivenColumn& given, const Received& received) {
  column.NoteValues({received.values ? given.Type() : ValueType::Null, received.nulls});
}

// -- A new table --

/// Rows are filled in blocks that stay in the processor's cache while their columns follow one
/// another.
constexpr std::size_t kBlock = 256;

void CheckIsNew(const TableImpl& table, const std::string& name) {
  if (table.Header().Find(name))
    throw std::runtime_error("Column with name [" + name + "] already exists!");
}

Ptr<TableImpl> MakeTable(std::span<const GivenColumn> columns) {
  auto table = Core::MakePtr<TableImpl>();
  for (const GivenColumn& given : columns) {
    given.CheckCount(columns[0].Count());
    CheckIsNew(*table, given.Name());
    table->AddNamedColumn(given.Name());
  }
  if (columns.empty()) return table;
  const std::size_t rowCount = columns[0].Count();
  ObjectPool pool(rowCount * (sizeof(RowImpl) + 2 * columns.size() * sizeof(_VARIANT)));
  for (std::size_t first = 0; first < rowCount; first += kBlock) {
    const std::size_t size = std::min(kBlock, rowCount - first);
    for (std::size_t i = 0; i < size; ++i) table->AppendBlankRow(&pool);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const auto store = [&](std::size_t row, const _VARIANT& record) {
        table->Rows()[row]->Cells()[i] = record;
      };
      Note(*table->Header().Columns()[i], columns[i], columns[i].ForEach(first, size, pool, store));
    }
  }
  return table;
}

// -- An existing table --

/// Records for the cells of a column, before they take their place.
struct NewCells {
  explicit NewCells(const GivenColumn& given) {
    ObjectPool pool(given.Count() * sizeof(_VARIANT));
    records.reserve(given.Count());
    received = given.ForEach(0, given.Count(), pool, [&](std::size_t, const _VARIANT& record) {
      records.push_back(Variant::Adopt(record));
    });
  }

  /// Exchanges the records with the cells of the table.
  void Exchange(TableImpl& table, const ColumnImpl& column, std::size_t first) noexcept {
    const std::int32_t index = column.Index();
    for (std::size_t i = 0; i < records.size(); ++i)
      std::swap(static_cast<_VARIANT&>(records[i]), table.Rows()[first + i]->Cells()[index]);
  }

  std::vector<Variant> records;
  Received received;
};

/// Puts new records into the cells of a column. The replaced ones end with `cells`, which may run
/// the caller's code.
void Write(TableImpl& table, ColumnImpl& column, std::size_t first, const GivenColumn& given,
           NewCells& cells) {
  const bool isIndexed = table.IsIndexed(column);
  if (isIndexed && table.IndexCallsBack()) table.ClearIndexes();
  cells.Exchange(table, column, first);
  if (table.IsIndexed(column)) {
    try {
      table.RebuildIndex();
    } catch (...) {
      cells.Exchange(table, column, first);
      throw;
    }
  }
  Note(column, given, cells.received);
  for (std::size_t i = 0; i < given.Count(); ++i) table.Rows()[first + i]->SetModified(1);
}

TableImpl& OwnTable(ld_table* handle) {
  auto* const own = Core::ExactCast<TableImpl>(&Self<ITable>(handle));
  if (!own) throw std::runtime_error("The table is not one of the library!");
  return *own;
}

}  // namespace

bool ld_create_table_from_columns(const char* const* names, const ld_column_data* const* columns,
                                  uint64_t count, ld_table** out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    CheckLength(count);
    if (count > 0) Core::CheckArgument(names);
    if (count > 0) Core::CheckArgument(columns);
    std::vector<GivenColumn> given;
    for (std::uint64_t i = 0; i < count; ++i) given.emplace_back(names[i], columns[i]);
    *out = reinterpret_cast<ld_table*>(static_cast<ITable*>(MakeTable(given).Detach()));
    return true;
  });
}

bool ld_table_add_column_data(ld_table* self, const char* name, const ld_column_data* data,
                              ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    TableImpl& table = OwnTable(self);
    const GivenColumn given(name, data);
    CheckIsNew(table, given.Name());
    given.CheckCount(table.RowCount());
    NewCells cells(given);
    Write(table, table.AddNamedColumn(given.Name()), 0, given, cells);
    return true;
  });
}

bool ld_table_set_column_data(ld_table* self, int32_t column, int64_t first_row,
                              const ld_column_data* data, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    TableImpl& table = OwnTable(self);
    ColumnImpl& written = table.ColumnAt(column);
    const GivenColumn given(written.Name().c_str(), data);
    const auto rowCount = static_cast<std::int64_t>(table.RowCount());
    const auto count = static_cast<std::int64_t>(given.Count());
    if (first_row < 0 || first_row > rowCount) impl::ThrowRowOutOfRange(first_row, rowCount);
    if (count > rowCount - first_row) impl::ThrowRowOutOfRange(rowCount, rowCount);
    NewCells cells(given);
    Write(table, written, static_cast<std::size_t>(first_row), given, cells);
    return true;
  });
}
