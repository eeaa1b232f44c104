#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <string>

#include "C/ArrowCells.h"
#include "C/Call.h"
#include "C/Options.h"
#include "C/Threads.h"
#include "Tables/TableImpl.h"

using namespace Data;
using namespace Data::c;
using Structures::_VARIANT;

namespace {

/// Rows whose columns are filled while the rows are in the processor's cache.
constexpr std::int64_t kBlockRows = 256;

/// Builds a table from batches.
class ArrowTable {
 public:
  ArrowTable(const ArrowSchema* schema, Progress progress);

  void Add(const ArrowArray& batch);
  impl::TableImpl& Finish();

 private:
  void AddColumns();
  void AddBlock(const ArrowValues& batch, std::int64_t first, std::size_t count);

  ArrowType type_;
  Threads progress_;
  Core::Ptr<impl::TableImpl> table_ = Core::MakePtr<impl::TableImpl>();
  /// Texts usually take about as much memory as the rows.
  Core::ObjectPool pool_{std::size_t{1} << 20};
  std::vector<impl::ColumnNote> notes_;
};

ArrowTable::ArrowTable(const ArrowSchema* schema, Progress progress) : progress_(1, progress) {
  if (!schema) throw std::runtime_error("The Arrow schema has been released!");
  type_ = ReadArrowType(*schema);
  if (type_.kind != ArrowKind::Struct || type_.dictionary)
    throw std::runtime_error("The Arrow schema is not that of a table, a struct of columns!");
  AddColumns();
}

/// Names of tables do not repeat.
void ArrowTable::AddColumns() {
  for (const ArrowType& column : type_.children) {
    std::string name = column.name;
    for (int i = 1; table_->Header().Find(name); ++i) name = column.name + "_" + std::to_string(i);
    table_->AddNamedColumn(name);
  }
  notes_.resize(type_.children.size());
}

void ArrowTable::Add(const ArrowArray& array) {
  const ArrowValues batch(type_, array);
  // A row knows its index as 32 bits.
  if (batch.Length() > INT32_MAX - table_->GetRowCount())
    throw std::runtime_error("The Arrow data has more rows than a table can have!");
  const std::int64_t before = table_->GetRowCount();
  progress_.Start(static_cast<std::uint64_t>(before + batch.Length()));
  progress_.Advance(static_cast<std::size_t>(before));
  for (std::int64_t first = 0; first < batch.Length(); first += kBlockRows) {
    const std::int64_t count = std::min(kBlockRows, batch.Length() - first);
    AddBlock(batch, first, static_cast<std::size_t>(count));
  }
}

void ArrowTable::AddBlock(const ArrowValues& batch, std::int64_t first, std::size_t count) {
  std::int64_t rows[kBlockRows], indexes[kBlockRows];
  _VARIANT* cells[kBlockRows];
  std::iota(rows, rows + count, first);
  batch.Locate({rows, count});
  // The table owns the rows before their cells hold anything, so nothing leaks if this fails.
  for (std::size_t i = 0; i < count; ++i) cells[i] = table_->AppendBlankRow(&pool_).Cells();
  for (std::size_t column = 0; column < notes_.size(); ++column) {
    std::copy_n(rows, count, indexes);
    ReadArrowCells(batch.Children()[column], {indexes, count}, {cells, count}, &pool_);
    for (std::size_t i = 0; i < count; ++i) notes_[column].Add(Core::TypeOf(*cells[i]++));
  }
  progress_.Advance(count);
}

impl::TableImpl& ArrowTable::Finish() {
  for (std::size_t i = 0; i < notes_.size(); ++i)
    table_->Header().Columns()[i]->NoteValues(notes_[i]);
  progress_.Start(static_cast<std::uint64_t>(table_->GetRowCount()));
  progress_.Finish();
  return *table_;
}

/// Fails with what the stream says of its error.
void CheckStream(ArrowArrayStream& stream, int code) {
  if (code == 0) return;
  const char* const text = stream.get_last_error ? stream.get_last_error(&stream) : nullptr;
  throw std::runtime_error(text
                               ? "The Arrow stream failed: " + std::string(text)
                               : "The Arrow stream failed with code " + std::to_string(code) + "!");
}

}  // namespace

bool ld_table_from_arrow_stream(struct ArrowArrayStream* stream, const ld_arrow_options* options,
                                ld_table** out, ld_error** error) {
  ArrowOwned<ArrowArrayStream> owned(stream);
  return Call(error, [&](Core::IErrorCode**) {
    Core::CheckArgument(stream);
    CheckResult(out);
    ArrowArrayStream* const source = owned.Get();
    if (!source || !source->get_schema || !source->get_next)
      throw std::runtime_error("The Arrow stream has been released!");
    const ld_arrow_options known = ReadOptions(options);
    ArrowOwned<ArrowSchema> schema;
    CheckStream(*source, source->get_schema(source, schema.Receive()));
    ArrowTable table(schema.Get(), {known.progress, known.progress_context});
    while (true) {
      ArrowOwned<ArrowArray> batch;
      CheckStream(*source, source->get_next(source, batch.Receive()));
      if (!batch.Get()) break;
      table.Add(*batch.Get());
    }
    GiveObject(out, &table.Finish());
    return true;
  });
}

bool ld_table_from_arrow_array(struct ArrowSchema* schema, struct ArrowArray* array,
                               const ld_arrow_options* options, ld_table** out, ld_error** error) {
  ArrowOwned<ArrowSchema> ownedSchema(schema);
  ArrowOwned<ArrowArray> ownedArray(array);
  return Call(error, [&](Core::IErrorCode**) {
    Core::CheckArgument(schema);
    Core::CheckArgument(array);
    CheckResult(out);
    const ld_arrow_options known = ReadOptions(options);
    ArrowTable table(ownedSchema.Get(), {known.progress, known.progress_context});
    if (!ownedArray.Get()) throw std::runtime_error("The Arrow array has been released!");
    table.Add(*ownedArray.Get());
    GiveObject(out, &table.Finish());
    return true;
  });
}
