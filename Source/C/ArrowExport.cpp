#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "C/ArrowPacking.h"
#include "C/ArrowPlain.h"
#include "C/Call.h"
#include "C/Options.h"
#include "C/Threads.h"
#include "Core/ExactCast.h"
#include "Data/Interfaces/IColumn.h"
#include "Tables/NameOf.h"
#include "Tables/TableImpl.h"

using namespace Data;
using namespace Data::c;
using Core::ValueType;

namespace {

/// Rows whose columns are read while the rows are in the processor's cache.
constexpr std::int64_t kBlockRows = 128;
constexpr std::int64_t kBatchRows = 65'536;

/// More than the text of a value that is not of a String or document takes.
constexpr std::uint64_t kMostValueText = 64;

constexpr std::uint64_t Bit(ValueType type) {
  return std::uint64_t{1} << static_cast<unsigned>(type);
}
constexpr std::uint64_t kUnboundedTexts =
    Bit(ValueType::JsonDocument) | Bit(ValueType::XmlDocument) | Bit(ValueType::IObject) |
    Bit(ValueType::ErrorCode) | Bit(ValueType::ObjectList) | Bit(ValueType::StringList);

/// The format of a column of one type that `ColumnFormat` has no format of its own for.
const char* FormatOfOneType(std::uint64_t types) {
  constexpr std::pair<ValueType, const char*> kFormats[] = {
      {ValueType::SByte, "c"},  {ValueType::Byte, "C"},  {ValueType::Int16, "s"},
      {ValueType::UInt16, "S"}, {ValueType::Int32, "i"}, {ValueType::UInt32, "I"},
      {ValueType::UInt64, "L"}, {ValueType::Float, "f"}};
  for (const auto& [type, format] : kFormats)
    if (types == Bit(type)) return format;
  return nullptr;
}

/// The format that holds the values of a column, which `layerdata_arrow.h` states.
const char* FormatOf(const ColumnAnalysis& analysis, ValueType declared) {
  const bool isEmpty = analysis.types == 0 && Core::IsConcrete(declared);
  const std::uint64_t types = isEmpty ? Bit(declared) : analysis.types;
  if (const char* format = FormatOfOneType(types)) return format;
  if (types == Bit(ValueType::DateTime)) {
    if (analysis.areDatesAtNoon) return "tdD";
    return analysis.fitsMicroseconds ? "tsu:UTC" : "tsn:UTC";
  }
  switch (analysis.Format(declared)) {
    case ColumnFormat::Int64:
      return "l";
    case ColumnFormat::Double:
      return "g";
    case ColumnFormat::Bool:
      return "b";
    case ColumnFormat::Binary:
      return "z";
    default:
      break;
  }
  const auto count = static_cast<std::uint64_t>(analysis.count);
  const bool isLarge =
      (types & kUnboundedTexts) != 0 || analysis.textBytes + kMostValueText * count > INT32_MAX;
  return isLarge ? "U" : "u";
}

/// The formats that the caller asks for, by the names of the columns.
class RequestedTypes {
 public:
  explicit RequestedTypes(const ArrowSchema* schema) {
    if (!schema) return;
    ArrowType type = ReadArrowType(*schema);
    if (type.kind != ArrowKind::Struct || type.dictionary)
      throw std::runtime_error("The Arrow schema is not that of a table, a struct of columns!");
    for (const ArrowType& column : type.children)
      if (!ArrowPacking::CanPack(column) || column.dictionary)
        ThrowInColumn(column, "the format cannot be written");
    types_ = std::move(type.children);
  }

  /// The format of a column; null if none is asked for.
  const char* Find(const std::string& name) {
    const auto found = std::find_if(types_.begin(), types_.end(),
                                    [&](const ArrowType& type) { return type.name == name; });
    if (found == types_.end()) return nullptr;
    ++foundCount_;
    return found->format.c_str();
  }
  void CheckAllAreFound() const {
    if (foundCount_ < types_.size())
      throw std::runtime_error("The Arrow schema names a column that the table does not have!");
  }

 private:
  std::vector<ArrowType> types_;
  std::size_t foundCount_ = 0;
};

/// A table on its way into batches.
///
/// Columns whose cells are all of one type, none of them an object of the caller's, are read in one
/// pass over the rows. Each other column is looked through first, to find a format that holds all
/// its cells.
class TableExport {
 public:
  TableExport(Interfaces::ITable& table, const ld_arrow_options& options);

  /// @param batchRows  the most rows of a batch
  void Read(std::int64_t batchRows);

  std::int64_t RowCount() const { return rowCount_; }
  std::vector<ArrowField> Fields() const;
  std::vector<ArrowBatch>& Batches() { return batches_; }

 private:
  struct Column {
    ArrowType type;  ///< without a format until it is chosen
    ValueType declared = ValueType::Null;
    PlainColumn plain;
    bool isPlain = false;
    ColumnAnalysis analysis;

    void Choose(const char* format) {
      type.format = format;
      ReadArrowFormat(type.format, type);
    }
  };

  void ReadPlainColumns(const impl::TableImpl& table);
  void ReadPlainRows(const impl::TableImpl& table, std::int64_t first, std::int64_t count);
  bool FinishPlainColumn(std::size_t index);
  /// The caller's code can remove rows or add some whenever it runs.
  void CheckRowCount() const;
  void ReadOtherColumns();
  void ReadOtherRows(ArrowBatch& batch, std::int64_t first);
  template <class Visit>
  void ForEachOtherBlock(std::int64_t first, std::int64_t count, Visit&& visit);

  Core::Ptr<Interfaces::ITable> table_;
  std::int64_t rowCount_;
  bool isLossy_;
  Threads progress_;
  std::vector<Column> columns_;
  std::vector<ArrowBatch> batches_;
};

TableExport::TableExport(Interfaces::ITable& table, const ld_arrow_options& options)
    : table_(&table),
      rowCount_(table.GetRowCount()),
      isLossy_(options.lossy),
      progress_(1, {options.progress, options.progress_context}),
      columns_(static_cast<std::size_t>(table.GetColumnCount())) {
  RequestedTypes requested(options.schema);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const Core::Ptr<Interfaces::IColumn> column(table.GetColumn(static_cast<std::int32_t>(i)));
    columns_[i].type.name = impl::NameOf(*column);
    columns_[i].declared = column->GetType();
    if (const char* format = requested.Find(columns_[i].type.name)) columns_[i].Choose(format);
  }
  requested.CheckAllAreFound();
}

void TableExport::Read(std::int64_t batchRows) {
  // Rows with columns that are not plain are read again, twice.
  progress_.Start(3 * static_cast<std::uint64_t>(rowCount_));
  for (std::int64_t first = 0; first < rowCount_; first += batchRows)
    batches_.push_back({std::min(batchRows, rowCount_ - first), {}});
  if (batches_.empty()) batches_.push_back({0, {}});
  for (ArrowBatch& batch : batches_) batch.columns.resize(columns_.size());
  if (const auto* own = Core::ExactCast<impl::TableImpl>(table_.Get())) ReadPlainColumns(*own);
  ReadOtherColumns();
  CheckRowCount();
  progress_.Finish();
}

void TableExport::CheckRowCount() const {
  if (table_->GetRowCount() != rowCount_)
    throw std::runtime_error("The table has changed while it was read!");
}

std::vector<ArrowField> TableExport::Fields() const {
  std::vector<ArrowField> fields;
  for (const Column& column : columns_) fields.push_back({column.type.name, column.type.format});
  return fields;
}

// -- Plain columns --

void TableExport::ReadPlainColumns(const impl::TableImpl& table) {
  for (Column& column : columns_) column.isPlain = column.type.format.empty();
  std::int64_t first = 0;
  for (ArrowBatch& batch : batches_) {
    ReadPlainRows(table, first, batch.length);
    for (std::size_t i = 0; i < columns_.size(); ++i)
      if (columns_[i].isPlain) batch.columns[i] = columns_[i].plain.Take();
    first += batch.length;
  }
  for (std::size_t i = 0; i < columns_.size(); ++i)
    if (columns_[i].isPlain) columns_[i].isPlain = FinishPlainColumn(i);
}

void TableExport::ReadPlainRows(const impl::TableImpl& table, std::int64_t first,
                                std::int64_t count) {
  constexpr auto kMost = static_cast<std::int64_t>(PlainColumn::kMostRows);
  for (const std::int64_t end = first + count; first < end; first += kMost) {
    CheckRowCount();
    const std::span rows(table.Rows().data() + first,
                         static_cast<std::size_t>(std::min(kMost, end - first)));
    FetchObjects(rows);
    for (std::size_t i = 0; i < columns_.size(); ++i)
      if (columns_[i].isPlain)
        columns_[i].isPlain = columns_[i].plain.Add(rows, static_cast<std::int32_t>(i));
    progress_.Advance(rows.size());
  }
}

bool TableExport::FinishPlainColumn(std::size_t index) {
  Column& column = columns_[index];
  if (!column.plain.HasType()) return false;
  const auto finishes = [&](ArrowBatch& batch) {
    return column.plain.Finish(batch.columns[index]);
  };
  if (!std::all_of(batches_.begin(), batches_.end(), finishes)) return false;
  column.Choose(column.plain.Format());
  return true;
}

// -- Other columns --

/// Calls `visit` with the cells of each column that is not plain, in blocks of rows.
template <class Visit>
void TableExport::ForEachOtherBlock(std::int64_t first, std::int64_t count, Visit&& visit) {
  for (const std::int64_t end = first + count; first < end; first += kBlockRows) {
    CheckRowCount();
    const std::int64_t size = std::min(kBlockRows, end - first);
    for (std::size_t i = 0; i < columns_.size(); ++i)
      if (!columns_[i].isPlain)
        visit(i, ColumnCells(*table_, static_cast<std::int32_t>(i), first, size));
    progress_.Advance(static_cast<std::size_t>(size));
  }
}

void TableExport::ReadOtherColumns() {
  const auto isPlain = [](const Column& column) { return column.isPlain; };
  if (std::all_of(columns_.begin(), columns_.end(), isPlain)) return;
  ForEachOtherBlock(0, rowCount_, [&](std::size_t index, const ColumnCells& cells) {
    Column& column = columns_[index];
    if (column.type.format.empty()) column.analysis.Add(cells, 0, cells.Count());
  });
  for (Column& column : columns_)
    if (column.type.format.empty()) column.Choose(FormatOf(column.analysis, column.declared));
  std::int64_t first = 0;
  for (ArrowBatch& batch : batches_) {
    ReadOtherRows(batch, first);
    first += batch.length;
  }
}

void TableExport::ReadOtherRows(ArrowBatch& batch, std::int64_t first) {
  std::vector<ArrowPacking> packings;
  // The texts of a batch usually take little more than their share of all.
  const double share = 1.1 * static_cast<double>(batch.length) /
                       static_cast<double>(std::max<std::int64_t>(rowCount_, 1));
  for (const Column& column : columns_) {
    const double textBytes = share * static_cast<double>(column.analysis.textBytes);
    packings.emplace_back(column.type, isLossy_);
    if (!column.isPlain)
      packings.back().Reserve(static_cast<std::size_t>(batch.length),
                              static_cast<std::size_t>(textBytes));
  }
  ForEachOtherBlock(first, batch.length, [&](std::size_t index, const ColumnCells& cells) {
    packings[index].Add(cells, 0, cells.Count());
  });
  for (std::size_t i = 0; i < columns_.size(); ++i)
    if (!columns_[i].isPlain) batch.columns[i] = packings[i].Finish(first);
}

}  // namespace

bool ld_table_to_arrow_stream(ld_table* table, const ld_arrow_options* options,
                              struct ArrowArrayStream* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(out);
    const ld_arrow_options known = ReadOptions(options);
    TableExport source(Self<Interfaces::ITable>(table), known);
    const auto asked = std::min<std::uint64_t>(known.batch_rows, INT32_MAX);
    source.Read(asked != 0 ? static_cast<std::int64_t>(asked) : kBatchRows);
    *out = MakeArrowStream(source.Fields(), std::move(source.Batches()));
    return true;
  });
}

bool ld_table_to_arrow_array(ld_table* table, const ld_arrow_options* options,
                             struct ArrowSchema* schema, struct ArrowArray* array,
                             ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(schema);
    CheckResult(array);
    TableExport source(Self<Interfaces::ITable>(table), ReadOptions(options));
    source.Read(std::max<std::int64_t>(source.RowCount(), 1));
    ArrowSchema made = MakeArrowSchema(source.Fields());
    ArrowOwned<ArrowSchema> owned(&made);
    *array = MakeArrowArray(source.Batches().at(0));
    *schema = owned.Detach();
    return true;
  });
}
