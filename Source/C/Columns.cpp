#include "C/Call.h"
#include "C/ColumnReading.h"
#include "C/Options.h"
#include "Core/ObjectBase.h"

using namespace Data;
using namespace Data::c;

namespace {

static_assert(LD_COLUMN_FORMAT_INT64 == static_cast<int>(ColumnFormat::Int64) &&
              LD_COLUMN_FORMAT_BINARY == static_cast<int>(ColumnFormat::Binary));

/// Owns the arrays that the caller reads.
struct ColumnDataImpl final : Core::ObjectBase<Core::IObject> {
  explicit ColumnDataImpl(ColumnBuffers read) : buffers(std::move(read)) {
    data.size = sizeof data;
    data.format = static_cast<ld_column_format>(buffers.format);
    data.length = buffers.length;
    data.null_count = buffers.nullCount;
    if (buffers.nullCount != 0) data.validity = buffers.validity.data();
    data.values = buffers.Values();
    if (buffers.HasOffsets()) data.offsets = buffers.offsets.data();
    data.bytes = buffers.bytes.data();
    data.byte_count = buffers.bytes.size();
  }

  ColumnBuffers buffers;
  ld_column_data data{};
};

}  // namespace

bool ld_table_get_column_data(ld_table* self, int32_t column, int64_t first_row, int64_t row_count,
                              const ld_column_options* options, const ld_column_data** data,
                              ld_object** owner, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(data);
    CheckResult(owner);
    auto& table = Self<Interfaces::ITable>(self);
    const ld_column_options wanted = ReadOptions(options);
    const auto format =
        Enumerator<ColumnFormat>(wanted.format, LD_COLUMN_FORMAT_BINARY, "ld_column_format");
    const ColumnCells cells(table, column, first_row, row_count);
    auto read = Core::MakePtr<ColumnDataImpl>(wanted.format == LD_COLUMN_FORMAT_AUTOMATIC
                                                  ? ReadColumn(cells, wanted.lossy)
                                                  : ReadColumn(cells, format, wanted.lossy));
    *data = &read->data;
    *owner = reinterpret_cast<ld_object*>(static_cast<Core::IObject*>(read.Detach()));
    return true;
  });
}
