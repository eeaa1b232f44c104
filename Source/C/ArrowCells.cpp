#include "C/ArrowCells.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "C/ArrowTexts.h"
#include "Containers/ArrayImpl.h"
#include "Core/Variant.h"
#include "DateTime/DateTimeImpl.h"
#include "Documents/JsonDocumentImpl.h"
#include "Documents/JsonWriter.h"
#include "Text/Base64Impl.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::c {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

constexpr std::int64_t kSecondsPerDay = 86'400, kMillisecondsPerDay = 86'400'000;
/// A text without a time reads as noon.
constexpr std::int64_t kNoon = kSecondsPerDay / 2;
constexpr std::int64_t kNanosecondsPerTick = 100;

/// The span of date-times: from year 1 to the last second of 63 bits of ticks.
constexpr std::int64_t kFirstSecond = -62'135'596'800;
constexpr std::int64_t kLastSecond =
    (INT64_MAX - static_cast<std::int64_t>(impl::kTicksAtPosixEpoch)) / impl::kTicksPerSecond - 1;

/// Stores member by member: a record that is built elsewhere and then copied would be read back
/// before the processor has stored it, which stalls.
void Fill(_VARIANT& cell, ValueType type, std::uint64_t word) {
  cell.type = Core::MakeTag(type, Core::StorageForm::Value);
  cell.value[0] = word;
  cell.value[1] = 0;
}

void FillWithObject(_VARIANT& cell, ValueType type, Core::IObject* object) {
  cell.type = Core::MakeTag(type, Core::StorageForm::Reference);
  cell.value[0] = reinterpret_cast<std::uintptr_t>(object);
  cell.value[1] = 0;
}

void FillWithText(_VARIANT& cell, std::string_view text, Core::ObjectPool* pool) {
  if (!Core::FitsInline(text))
    return FillWithObject(cell, ValueType::String,
                          impl::MultiByteStringImpl::FromUtf8(text, pool).Detach());
  const _VARIANT inlined = Core::MakeInlineText(text);
  cell.type = inlined.type;
  cell.value[0] = inlined.value[0];
  cell.value[1] = inlined.value[1];
}

void FillWithBytes(_VARIANT& cell, std::string_view bytes) {
  auto array = Core::MakePtr<impl::ArrayImpl>();
  array->SetData(bytes.data(), 1, bytes.size());
  FillWithObject(cell, ValueType::Array, array.Detach());
}

void FillWithTicks(_VARIANT& cell, std::uint64_t ticks, Core::ObjectPool* pool) {
  FillWithObject(cell, ValueType::DateTime, new (pool) impl::DateTimeImpl(ticks));
}

/// The ticks of a time since 1970.
std::uint64_t TicksOf(const ArrowType& type, std::int64_t value, std::int64_t unitsPerSecond) {
  const std::int64_t seconds = value / unitsPerSecond - (value % unitsPerSecond < 0);
  if (seconds < kFirstSecond || seconds > kLastSecond)
    ThrowInColumn(type, "the time " + std::to_string(value) + " is beyond what a date-time holds");
  const std::int64_t rest = value - seconds * unitsPerSecond;
  const std::int64_t nanoseconds = rest * (1'000'000'000 / unitsPerSecond);
  return impl::TicksOfPosixTime(seconds) +
         static_cast<std::uint64_t>(nanoseconds / kNanosecondsPerTick);
}

std::uint64_t TicksOfDate(const ArrowType& type, std::int64_t days) {
  constexpr std::int64_t kMostDays = INT64_MAX / kSecondsPerDay - 1;
  return TicksOf(type, std::clamp(days, -kMostDays, kMostDays) * kSecondsPerDay + kNoon, 1);
}

/// Milliseconds since 1970, which should be whole days.
std::uint64_t TicksOfLongDate(const ArrowType& type, std::int64_t milliseconds) {
  return milliseconds % kMillisecondsPerDay == 0
             ? TicksOfDate(type, milliseconds / kMillisecondsPerDay)
             : TicksOf(type, milliseconds, 1000);
}

float FloatOfHalf(std::uint16_t half) {
  const int exponent = half >> 10 & 0x1F;
  const auto fraction = static_cast<float>(half & 0x3FF);
  float size = 0;
  if (exponent == 0x1F) {
    size = fraction == 0 ? INFINITY : NAN;
  } else {
    size = exponent == 0 ? std::ldexp(fraction, -24) : std::ldexp(1024 + fraction, exponent - 25);
  }
  return half & 0x8000 ? -size : size;
}

/// Reads the values at the positions into the cells.
class CellReader {
 public:
  CellReader(const ArrowValues& values, std::span<const std::int64_t> positions,
             std::span<_VARIANT* const> cells, Core::ObjectPool* pool)
      : values_(values), type_(values.Type()), positions_(positions), cells_(cells), pool_(pool) {}

  void Read();

 private:
  template <class Make>
  void ForEach(Make&& make) {
    for (std::size_t i = 0; i < cells_.size(); ++i)
      if (positions_[i] >= 0) make(positions_[i], *cells_[i]);
  }
  template <class T>
  void ReadIntegers(ValueType type) {
    ForEach([&](std::int64_t at, _VARIANT& cell) {
      Fill(cell, type, static_cast<std::uint64_t>(values_.ValueAt<T>(at)));
    });
  }
  /// @param textOf  from a position
  template <class TextOf>
  void ReadTexts(TextOf&& textOf) {
    ForEach([&](std::int64_t at, _VARIANT& cell) { FillWithText(cell, textOf(at), pool_); });
  }
  template <class BytesOf>
  void ReadBytes(BytesOf&& bytesOf) {
    ForEach([&](std::int64_t at, _VARIANT& cell) { FillWithBytes(cell, bytesOf(at)); });
  }
  template <class T, class TicksOfValue>
  void ReadDateTimes(TicksOfValue&& ticks) {
    ForEach([&](std::int64_t at, _VARIANT& cell) {
      FillWithTicks(cell, ticks(values_.ValueAt<T>(at)), pool_);
    });
  }

  void ReadNumbers();
  void ReadReals();
  void ReadDates();
  void ReadTimes();
  void ReadIntervals();
  void ReadDocuments();

  std::int64_t IntegerAt(std::int64_t position) const {
    return type_.width == 4 ? values_.ValueAt<std::int32_t>(position)
                            : values_.ValueAt<std::int64_t>(position);
  }

  const ArrowValues& values_;
  const ArrowType& type_;
  std::span<const std::int64_t> positions_;
  std::span<_VARIANT* const> cells_;
  Core::ObjectPool* pool_;
};

void CellReader::Read() {
  const auto at = [this](auto function) {
    return [this, function](std::int64_t position) { return (values_.*function)(position); };
  };
  const bool isWide = type_.width == 8;
  switch (type_.kind) {
    case ArrowKind::Null:
      return;
    case ArrowKind::Bool:
      return ForEach([&](std::int64_t position, _VARIANT& cell) {
        Fill(cell, ValueType::Bool, values_.BoolAt(position));
      });
    case ArrowKind::Signed:
    case ArrowKind::Unsigned:
      return ReadNumbers();
    case ArrowKind::Real:
      return ReadReals();
    case ArrowKind::Text:
      return isWide ? ReadTexts(at(&ArrowValues::BytesAt<std::int64_t>))
                    : ReadTexts(at(&ArrowValues::BytesAt<std::int32_t>));
    case ArrowKind::TextView:
      return ReadTexts(at(&ArrowValues::ViewAt));
    case ArrowKind::Bytes:
      return isWide ? ReadBytes(at(&ArrowValues::BytesAt<std::int64_t>))
                    : ReadBytes(at(&ArrowValues::BytesAt<std::int32_t>));
    case ArrowKind::BytesView:
      return ReadBytes(at(&ArrowValues::ViewAt));
    case ArrowKind::FixedBytes:
      return ReadBytes(at(&ArrowValues::FixedBytesAt));
    case ArrowKind::Decimal:
      return ReadTexts([&](std::int64_t position) {
        return DecimalText(values_.FixedBytesAt(position), type_.parameter);
      });
    case ArrowKind::Date:
    case ArrowKind::Timestamp:
      return ReadDates();
    case ArrowKind::Time:
      return ReadTimes();
    case ArrowKind::Duration:
      return ReadTexts([&](std::int64_t position) {
        return DurationText(0, 0, values_.ValueAt<std::int64_t>(position), type_.parameter);
      });
    case ArrowKind::Interval:
      return ReadIntervals();
    default:
      return ReadDocuments();
  }
}

void CellReader::ReadNumbers() {
  const bool isSigned = type_.kind == ArrowKind::Signed;
  switch (type_.width) {
    case 1:
      return isSigned ? ReadIntegers<std::int8_t>(ValueType::SByte)
                      : ReadIntegers<std::uint8_t>(ValueType::Byte);
    case 2:
      return isSigned ? ReadIntegers<std::int16_t>(ValueType::Int16)
                      : ReadIntegers<std::uint16_t>(ValueType::UInt16);
    case 4:
      return isSigned ? ReadIntegers<std::int32_t>(ValueType::Int32)
                      : ReadIntegers<std::uint32_t>(ValueType::UInt32);
    default:
      return isSigned ? ReadIntegers<std::int64_t>(ValueType::Int64)
                      : ReadIntegers<std::uint64_t>(ValueType::UInt64);
  }
}

void CellReader::ReadReals() {
  if (type_.width == 8)  // the bits of a double are the word of its cell
    return ReadIntegers<std::uint64_t>(ValueType::Double);
  if (type_.width == 4) return ReadIntegers<std::uint32_t>(ValueType::Float);
  ForEach([&](std::int64_t at, _VARIANT& cell) {
    const float value = FloatOfHalf(values_.ValueAt<std::uint16_t>(at));
    Fill(cell, ValueType::Float, std::bit_cast<std::uint32_t>(value));
  });
}

void CellReader::ReadDates() {
  if (type_.kind == ArrowKind::Timestamp)
    return ReadDateTimes<std::int64_t>(
        [&](std::int64_t value) { return TicksOf(type_, value, type_.parameter); });
  if (type_.width == 4)
    return ReadDateTimes<std::int32_t>([&](std::int32_t days) { return TicksOfDate(type_, days); });
  ReadDateTimes<std::int64_t>([&](std::int64_t value) { return TicksOfLongDate(type_, value); });
}

void CellReader::ReadTimes() {
  ReadTexts([&](std::int64_t position) {
    const std::int64_t value = IntegerAt(position);
    if (value < 0 || value / kSecondsPerDay > type_.parameter)
      ThrowInColumn(type_, "the time " + std::to_string(value) + " is longer than a day");
    return TimeText(value, type_.parameter);
  });
}

void CellReader::ReadIntervals() {
  ReadTexts([&](std::int64_t position) {
    const auto part = [&](std::int64_t index) {
      const std::int64_t parts = type_.width / 4;
      return std::int64_t{values_.ValueAt<std::int32_t>(position * parts + index)};
    };
    if (type_.width == 4) return DurationText(part(0), 0, 0, 1);
    if (type_.width == 8) return DurationText(0, part(0), part(1), 1000);
    const auto nanoseconds = values_.ValueAt<std::int64_t>(2 * position + 1);
    return DurationText(part(0), part(1), nanoseconds, 1'000'000'000);
  });
}

// -- Nested values --

void AppendBase64(impl::TextBuffer& json, const _VARIANT& bytes) {
  Core::Ptr<Interfaces::IArray> text;
  const auto array = Core::GetObject<Interfaces::IArray>(bytes);
  Core::Ptr<Core::IErrorCode> error;
  if (!impl::Base64Impl(impl::kBase64).Encode(array.Get(), text.Receive(), error.Receive()))
    throw std::bad_alloc();
  impl::AppendJsonString(
      json, {static_cast<const char*>(text->GetData()), static_cast<std::size_t>(text->GetSize())});
}

void AppendReal(impl::TextBuffer& json, double value) {
  if (impl::AppendJsonDouble(json, value)) return;
  json.Append(std::isnan(value) ? "\"NaN\"" : value > 0 ? "\"Infinity\"" : "\"-Infinity\"");
}

void AppendCell(impl::TextBuffer& json, const _VARIANT& cell) {
  switch (Core::TypeOf(cell)) {
    case ValueType::String:
    case ValueType::DateTime:
      return impl::AppendJsonString(json, Core::ToText(cell));
    case ValueType::Array:
      return AppendBase64(json, cell);
    case ValueType::Double:
    case ValueType::Float:
      return AppendReal(json, Core::ToDouble(cell));
    default:
      return json.Append(Core::ToText(cell));
  }
}

void AppendItems(impl::TextBuffer& json, const ArrowValues& list, std::int64_t position) {
  const auto [begin, end] = list.ItemsAt(position);
  json.Put('[');
  for (std::int64_t i = begin; i < end; ++i) {
    if (i > begin) json.Put(',');
    AppendArrowJson(json, list.Children()[0], i);
  }
  json.Put(']');
}

void AppendFields(impl::TextBuffer& json, const ArrowValues& record, std::int64_t position) {
  json.Put('{');
  for (std::size_t i = 0; i < record.Children().size(); ++i) {
    if (i > 0) json.Put(',');
    impl::AppendJsonString(json, record.Type().children[i].name);
    json.Put(':');
    AppendArrowJson(json, record.Children()[i], position);
  }
  json.Put('}');
}

bool IsNested(ArrowKind kind) { return kind >= ArrowKind::List; }

void AppendNested(impl::TextBuffer& json, const ArrowValues& values, std::int64_t position) {
  if (values.Type().kind == ArrowKind::Struct) return AppendFields(json, values, position);
  AppendItems(json, values, position);
}

void CellReader::ReadDocuments() {
  impl::TextBuffer json;
  ForEach([&](std::int64_t at, _VARIANT& cell) {
    json.Clear();
    AppendNested(json, values_, at);
    FillWithObject(cell, ValueType::JsonDocument,
                   impl::JsonDocumentImpl::FromJson(json.View()).Detach());
  });
}

}  // namespace

void ReadArrowCells(const ArrowValues& values, std::span<std::int64_t> indexes,
                    std::span<_VARIANT* const> cells, Core::ObjectPool* pool) {
  const ArrowValues& located = values.Locate(indexes);
  CellReader(located, indexes, cells, pool).Read();
}

void AppendArrowJson(impl::TextBuffer& json, const ArrowValues& values, std::int64_t index) {
  const ArrowValues& located = values.Locate({&index, 1});
  if (index < 0) return json.Append("null");
  if (IsNested(located.Type().kind)) return AppendNested(json, located, index);
  Core::Variant value;
  _VARIANT* const cell = &value;
  CellReader(located, {&index, 1}, {&cell, 1}, nullptr).Read();
  AppendCell(json, value);
}

}  // namespace Data::c
