#include "C/ColumnReading.h"

#include <algorithm>
#include <utility>

#include "C/Utf8.h"
#include "Core/ExactCast.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Tables/NameOf.h"
#include "Tables/TableFailures.h"

namespace Data::c {

using Core::ExactCast;
using Core::KindOf;
using Core::MakeTag;
using Core::Ptr;
using Core::StorageForm;
using Core::TypeOf;
using Core::ValueKind;
using Core::ValueType;
using Interfaces::ITable;
using Structures::_VARIANT;

// -- Cells --

namespace {

[[noreturn]] void ThrowChanged() {
  throw std::runtime_error("The table has changed while it was read!");
}

std::size_t CountOf(std::int64_t first, std::int64_t count, std::int64_t rowCount) {
  if (first < 0 || first > rowCount) impl::ThrowRowOutOfRange(first, rowCount);
  if (count == ColumnCells::kToTheEnd) count = rowCount - first;
  if (count < 0 || count > rowCount - first) impl::ThrowRowOutOfRange(rowCount, rowCount);
  return static_cast<std::size_t>(count);
}

}  // namespace

ColumnCells::ColumnCells(ITable& table, std::int32_t column, std::int64_t first, std::int64_t count)
    : table_(&table),
      column_(column),
      first_(first),
      count_(CountOf(first, count, table.GetRowCount())) {
  const std::int64_t columnCount = table.GetColumnCount();
  if (!impl::IsPosition(column, static_cast<std::size_t>(columnCount)))
    impl::ThrowColumnOutOfRange(column, columnCount);
  const Ptr<Interfaces::IColumn> object(table.GetColumn(column));
  name_ = impl::NameOf(*object);
  type_ = object->GetType();

  auto* const own = ExactCast<impl::TableImpl>(&table);
  if (!own) {
    Copy([&](std::int64_t row) { return table.GetCellAt(row, column); });
    return;
  }
  rows_ = own->Rows().data() + first;
  for (std::size_t i = 0; i < count_; ++i) {
    if (!impl::CallsBack((*this)[i])) continue;
    rows_ = nullptr;
    Copy([&](std::int64_t row) { return own->RowAt(row).CellOrNull(object->GetIndex()); });
    break;
  }
}

/// Copying a cell may change the table: each is looked up by its position.
template <class CellAt>
void ColumnCells::Copy(CellAt&& cellAt) {
  copies_.reserve(count_);
  const std::int64_t rowCount = table_->GetRowCount();
  for (std::size_t i = 0; i < count_; ++i) {
    if (table_->GetRowCount() != rowCount) ThrowChanged();
    const _VARIANT* cell = cellAt(RowOf(i));
    if (!cell) ThrowChanged();
    copies_.emplace_back(*cell);
  }
}

// -- Reading cells --

namespace {

constexpr std::uint32_t TagOf(ValueType type) { return MakeTag(type, StorageForm::Value); }

/// The text of a cell in value form, or of the library's own class of texts; nothing for all
/// others.
struct PlainText {
  explicit PlainText(const _VARIANT& cell) {
    if (cell.type == TagOf(ValueType::String)) {
      text = Core::InlineText(cell);
      isPlain = true;
    } else if (cell.type == MakeTag(ValueType::String, StorageForm::Reference)) {
      auto* const own = ExactCast<impl::MultiByteStringImpl>(Core::ReferencedObject(cell));
      if (!own) return;
      text = Core::Utf8View(*own);
      isPlain = true;
    }
  }
  std::string_view text;
  bool isPlain = false;
};

}  // namespace

// -- Analysis --

void ColumnAnalysis::Add(const ColumnCells& cells, std::size_t first, std::size_t blockSize) {
  for (std::size_t i = first; i < first + blockSize; ++i) {
    const _VARIANT& cell = cells[i];
    if (!HasValue(cell)) {
      ++nullCount;
      continue;
    }
    types |= std::uint64_t{1} << static_cast<unsigned>(TypeOf(cell));
    switch (KindOf(TypeOf(cell))) {
      case ValueKind::SignedInteger:
      case ValueKind::UnsignedInteger:
      case ValueKind::WideInteger:
        if (cell.type == TagOf(ValueType::Int64)) {
          fitsDouble = fitsDouble && IsExactDouble(static_cast<std::int64_t>(cell.value[0]));
        } else if (const auto integer = Integer::Of(cell)) {
          fitsInt64 = fitsInt64 && integer->ExactInt64();
          fitsDouble = fitsDouble && integer->ExactDouble();
        }
        break;
      case ValueKind::DateTime: {
        const std::uint64_t ticks = TicksOf(cell);
        fitsMicroseconds = fitsMicroseconds && MicrosecondsOf(ticks).isExact;
        areDatesAtNoon = areDatesAtNoon && IsNoon(ticks);
        break;
      }
      case ValueKind::Text:
        textBytes += Core::GetStringView(cell).size();
        break;
      default:
        break;
    }
  }
  count += static_cast<std::int64_t>(blockSize);
}

ColumnFormat ColumnAnalysis::Format(ValueType declared) const {
  if (types == 0 && Core::IsConcrete(declared)) {
    ColumnAnalysis one;
    one.types = std::uint64_t{1} << static_cast<unsigned>(declared);
    return one.Format(declared);
  }
  const auto isNumber = [](unsigned type, bool orReal) {
    const ValueKind kind = Core::kValueTypes[type].kind;
    return (kind == ValueKind::Real && orReal) || kind == ValueKind::SignedInteger ||
           kind == ValueKind::UnsignedInteger ||
           (kind == ValueKind::WideInteger && type != static_cast<unsigned>(ValueType::Uuid));
  };
  bool areIntegers = types != 0, areNumbers = types != 0;
  for (unsigned type = 0; type < Core::kValueTypes.size(); ++type) {
    if ((types >> type & 1) == 0) continue;
    areIntegers = areIntegers && isNumber(type, false);
    areNumbers = areNumbers && isNumber(type, true);
  }
  if (areIntegers) return fitsInt64 ? ColumnFormat::Int64 : ColumnFormat::Text;
  if (areNumbers) return fitsDouble ? ColumnFormat::Double : ColumnFormat::Text;
  if (HasOnly(ValueType::Bool)) return ColumnFormat::Bool;
  if (HasOnly(ValueType::DateTime) && fitsMicroseconds) return ColumnFormat::DateTime;
  if (HasOnly(ValueType::Array)) return ColumnFormat::Binary;
  return ColumnFormat::Text;
}

// -- Arrays --

namespace {

constexpr const char* kFormatNames[] = {"",         "Int64", "Double", "Bool",
                                        "DateTime", "Text",  "Binary"};

/// What is stored for one cell; nothing if the format cannot hold it.
struct Conversions {
  bool isLossy;

  std::optional<std::int64_t> Int64(const _VARIANT& cell) const {
    if (cell.type == TagOf(ValueType::Int64)) return static_cast<std::int64_t>(cell.value[0]);
    return ExactInt64(cell);
  }
  std::optional<double> Double(const _VARIANT& cell) const {
    if (cell.type == TagOf(ValueType::Double)) return Core::detail::StoredDouble(cell);
    return isLossy ? NearestDouble(cell) : ExactDouble(cell);
  }
  std::optional<std::uint8_t> Bool(const _VARIANT& cell) const {
    if (cell.type != TagOf(ValueType::Bool)) return std::nullopt;
    return std::uint8_t{Core::ToBool(cell)};
  }
  std::optional<std::int64_t> DateTime(const _VARIANT& cell) const {
    if (TypeOf(cell) != ValueType::DateTime) return std::nullopt;
    const Microseconds time = MicrosecondsOf(TicksOf(cell));
    return time.isExact || isLossy ? std::optional(time.value) : std::nullopt;
  }
};

/// Appends the bytes of cells. Returns false for one that the format cannot hold.
class ByteWriter {
 public:
  ByteWriter(ColumnBuffers& buffers, bool isLossy) : bytes_(buffers.bytes), isLossy_(isLossy) {
    isText_ = buffers.format == ColumnFormat::Text;
  }

  bool Append(const _VARIANT& cell) {
    if (const PlainText plain(cell); plain.isPlain) return AppendText(plain.text);
    if (isText_) return AppendText(ExactText(cell));
    if (TypeOf(cell) == ValueType::String) return AppendBytes(Core::GetStringView(cell));
    if (TypeOf(cell) != ValueType::Array) return false;
    const auto array = Core::GetObject<Interfaces::IArray>(cell);
    const auto bytes = BytesOf(*array);
    return bytes && AppendBytes(*bytes);
  }

 private:
  bool AppendText(std::string_view text) {
    if (!isText_ || IsUtf8(text)) return AppendBytes(text);
    return isLossy_ && AppendBytes(RepairUtf8(text));
  }
  bool AppendBytes(std::string_view text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return true;
  }

  std::vector<char>& bytes_;
  bool isLossy_, isText_;
};

[[noreturn]] void ThrowLoss(const ColumnCells& cells, std::size_t index, ColumnFormat format) {
  throw std::runtime_error(
      "Column " + cells.Name() + ", row " + std::to_string(cells.RowOf(index)) + ": " +
      std::string(Core::GetValueTypeName(TypeOf(cells[index]))) + " cannot be stored as " +
      kFormatNames[static_cast<int>(format)] + " without loss!");
}

/// Calls `store` with each cell that has a value, and enters the others as Null.
/// @param store  receives the position in the buffers and the cell; false if it cannot be stored
template <class Store>
void ForEachCell(ColumnBuffers& buffers, const ColumnCells& cells, std::size_t first,
                 std::size_t count, Store&& store) {
  auto at = static_cast<std::size_t>(buffers.length);
  buffers.validity.resize((at + count + 7) / 8);
  for (std::size_t i = first; i < first + count; ++i, ++at) {
    const _VARIANT& cell = cells[i];
    const bool isValid = HasValue(cell);
    buffers.validity[at / 8] |= static_cast<std::uint8_t>(isValid << at % 8);
    buffers.nullCount += !isValid;
    if (!store(at, isValid ? &cell : nullptr)) ThrowLoss(cells, i, buffers.format);
  }
  buffers.length = static_cast<std::int64_t>(at);
}

}  // namespace

void ColumnBuffers::Append(const ColumnCells& cells, std::size_t first, std::size_t count,
                           bool isLossy) {
  const Conversions conversions{isLossy};
  const auto append = [&](auto& values, auto&& convert) {
    values.resize(values.size() + count);
    ForEachCell(*this, cells, first, count, [&](std::size_t at, const _VARIANT* cell) {
      if (!cell) return true;
      const auto value = convert(*cell);
      if (value) values[at] = *value;
      return value.has_value();
    });
  };
  switch (format) {
    case ColumnFormat::Int64:
      return append(integers, [&](const _VARIANT& cell) { return conversions.Int64(cell); });
    case ColumnFormat::Double:
      return append(doubles, [&](const _VARIANT& cell) { return conversions.Double(cell); });
    case ColumnFormat::Bool:
      return append(bools, [&](const _VARIANT& cell) { return conversions.Bool(cell); });
    case ColumnFormat::DateTime:
      return append(integers, [&](const _VARIANT& cell) { return conversions.DateTime(cell); });
    case ColumnFormat::Text:
    case ColumnFormat::Binary:
      break;
  }
  ByteWriter writer(*this, isLossy);
  offsets.resize(offsets.size() + count);
  ForEachCell(*this, cells, first, count, [&](std::size_t at, const _VARIANT* cell) {
    const bool isStored = !cell || writer.Append(*cell);
    offsets[at + 1] = static_cast<std::int64_t>(bytes.size());
    return isStored;
  });
}

const void* ColumnBuffers::Values() const {
  switch (format) {
    case ColumnFormat::Int64:
    case ColumnFormat::DateTime:
      return integers.data();
    case ColumnFormat::Double:
      return doubles.data();
    case ColumnFormat::Bool:
      return bools.data();
    default:
      return nullptr;
  }
}

std::vector<std::uint8_t> PackBits(const std::vector<std::uint8_t>& bytes) {
  std::vector<std::uint8_t> bits((bytes.size() + 7) / 8);
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bits[i / 8] |= static_cast<std::uint8_t>((bytes[i] != 0) << i % 8);
  return bits;
}

ColumnBuffers ReadColumn(const ColumnCells& cells, bool isLossy) {
  ColumnAnalysis analysis;
  analysis.Add(cells, 0, cells.Count());
  ColumnBuffers buffers(analysis.Format(cells.DeclaredType()));
  if (buffers.HasOffsets()) buffers.bytes.reserve(static_cast<std::size_t>(analysis.textBytes));
  buffers.Append(cells, 0, cells.Count(), isLossy);
  return buffers;
}

ColumnBuffers ReadColumn(const ColumnCells& cells, ColumnFormat format, bool isLossy) {
  ColumnBuffers buffers(format);
  buffers.Append(cells, 0, cells.Count(), isLossy);
  return buffers;
}

}  // namespace Data::c
