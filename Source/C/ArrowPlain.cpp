#include "C/ArrowPlain.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "C/ExactValues.h"
#include "C/Utf8.h"
#include "Core/ExactCast.h"
#include "DateTime/DateTimeImpl.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::c {

using Core::MakeTag;
using Core::StorageForm;
using Core::ValueType;
using Structures::_VARIANT;
using Rows = std::span<const Core::Ptr<impl::RowImpl>>;

namespace {

constexpr _VARIANT kNull = Core::MakeNull();

const _VARIANT& CellOf(const impl::RowImpl& row, std::int32_t column) {
  const _VARIANT* const cell = row.CellOrNull(column);
  return cell ? *cell : kNull;
}

/// The types, their formats and the bytes of a value. Times and texts come later.
constexpr struct {
  ValueType type;
  const char* format;
  std::size_t width;
} kTypes[] = {
    {ValueType::Bool, "b", 0},    {ValueType::SByte, "c", 1},  {ValueType::Byte, "C", 1},
    {ValueType::Int16, "s", 2},   {ValueType::UInt16, "S", 2}, {ValueType::Int32, "i", 4},
    {ValueType::UInt32, "I", 4},  {ValueType::Int64, "l", 8},  {ValueType::UInt64, "L", 8},
    {ValueType::Float, "f", 4},   {ValueType::Double, "g", 8}, {ValueType::String, "u", 8},
    {ValueType::DateTime, "", 8},
};

const auto* Find(ValueType type) {
  const auto* const found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                         [&](auto& row) { return row.type == type; });
  return found == std::end(kTypes) ? nullptr : found;
}

/// The length of an inline text: up to its first zero byte.
std::size_t InlineLength(const _VARIANT& cell) {
  constexpr std::uint64_t kOnes = 0x0101010101010101, kHighBits = kOnes * 0x80;
  // The lowest bit that is set is that of the first zero byte.
  const auto length = [](std::uint64_t word) {
    return static_cast<std::size_t>(std::countr_zero((word - kOnes) & ~word & kHighBits)) / 8;
  };
  const std::size_t first = length(cell.value[0]);
  return first < sizeof cell.value[0] ? first : first + length(cell.value[1]);
}

bool IsAscii(std::uint64_t word) { return (word & 0x8080808080808080) == 0; }

/// Whether a text is well-formed UTF-8, as most texts are that are ASCII.
bool IsWellFormed(std::string_view text) {
  std::uint64_t word = 0, all = 0;
  if (text.size() < sizeof word) return IsUtf8(text);
  const auto load = [&](std::size_t at) {
    std::memcpy(&word, text.data() + at, sizeof word);
    all |= word;
  };
  for (std::size_t at = 0; at + sizeof word < text.size(); at += sizeof word) load(at);
  load(text.size() - sizeof word);
  return IsAscii(all) || IsUtf8(text);
}

/// Appends the text of a cell of the library's own.
/// @return false for any other cell, and for a text that is not UTF-8
bool AppendText(const _VARIANT& cell, impl::TextBuffer& texts) {
  if (cell.type == MakeTag(ValueType::String, StorageForm::Value)) {
    const std::size_t length = InlineLength(cell);
    char* const end = texts.Tail(Core::kInlineTextCapacity);
    std::memcpy(end, cell.value, Core::kInlineTextCapacity);
    texts.EndAt(end + length);
    return IsAscii(cell.value[0] | cell.value[1]) || IsUtf8({end, length});
  }
  auto* const own = Core::ExactCast<impl::MultiByteStringImpl>(Core::ReferencedObject(cell));
  if (!own) return false;
  const std::string_view text = Core::Utf8View(*own);
  if (!IsWellFormed(text)) return false;
  texts.Append(text);
  return true;
}

/// The lowest bytes of each word.
template <class T>
void Narrow(const std::vector<std::int64_t>& words, std::vector<char>& out) {
  out.resize(words.size() * sizeof(T));
  for (std::size_t i = 0; i < words.size(); ++i) {
    const auto value = static_cast<T>(words[i]);
    std::memcpy(out.data() + i * sizeof(T), &value, sizeof(T));
  }
}

void PackBools(const std::vector<std::int64_t>& words, std::vector<char>& out) {
  out.assign((words.size() + 7) / 8, 0);
  for (std::size_t i = 0; i < words.size(); ++i)
    out[i / 8] = static_cast<char>(out[i / 8] | ((words[i] & 0xFF) != 0) << i % 8);
}

}  // namespace

void FetchObjects(Rows rows) {
  constexpr std::size_t kLine = 64, kLines = 3;  // of most objects with their texts
  for (const auto& row : rows)
    for (std::size_t i = 0; i < row->CellCount(); ++i)
      if (const auto* object =
              reinterpret_cast<const char*>(Core::ReferencedObject(row->Cells()[i])))
        for (std::size_t line = 0; line < kLines; ++line) __builtin_prefetch(object + line * kLine);
}

const char* PlainColumn::Format() const {
  if (type_ != ValueType::DateTime) return Find(type_)->format;
  if (areDatesAtNoon_) return "tdD";
  return fitsMicroseconds_ ? "tsu:UTC" : "tsn:UTC";
}

bool PlainColumn::Begin(ValueType type) {
  if (!Find(type)) return false;
  type_ = type;
  return true;
}

bool PlainColumn::Add(Rows rows, std::int32_t column) {
  if (!HasType())
    for (const auto& row : rows)
      if (const _VARIANT& cell = CellOf(*row, column); HasValue(cell)) {
        if (!Begin(Core::TypeOf(cell))) return false;
        break;
      }
  switch (type_) {
    case ValueType::String:
      return AddTexts(rows, column);
    case ValueType::DateTime:
      return AddTimes(rows, column);
    case ValueType::Double:
      return AddReals(rows, column);
    default:
      return AddWords(rows, column) || TurnToReals(rows, column);
  }
}

/// Reads rows of a column of Int64 in which there are doubles.
bool PlainColumn::TurnToReals(Rows rows, std::int32_t column) {
  std::vector<std::int64_t>& words = column_.values.integers;
  words.resize(static_cast<std::size_t>(column_.values.length));
  if (type_ != ValueType::Int64 || !ConvertToReals(words)) return false;
  type_ = ValueType::Double;
  return AddReals(rows, column);
}

/// Calls `store` with each cell that has a value, and its index.
/// @param store  false if the cell cannot be stored
template <class Store>
bool PlainColumn::ForEachCell(Rows rows, std::int32_t column, Store&& store) {
  ColumnBuffers& values = column_.values;
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const _VARIANT& cell = CellOf(*rows[i], column);
    if (HasValue(cell)) {
      bits |= std::uint64_t{1} << i;
      if (!store(cell, i)) return false;
    } else {
      store(kNull, i);
    }
  }
  values.length += static_cast<std::int64_t>(rows.size());
  values.nullCount += static_cast<std::int64_t>(rows.size()) - std::popcount(bits);
  const std::size_t at = values.validity.size();
  values.validity.resize(at + (rows.size() + 7) / 8);
  std::memcpy(values.validity.data() + at, &bits, values.validity.size() - at);
  return true;
}

/// Integers become the bits of doubles.
/// @return false if a double does not hold one exactly
bool PlainColumn::ConvertToReals(std::vector<std::int64_t>& words) {
  for (std::int64_t& word : words) {
    if (!IsExactDouble(word)) return false;
    word = std::bit_cast<std::int64_t>(static_cast<double>(word));
  }
  return true;
}

bool PlainColumn::AddReals(Rows rows, std::int32_t column) {
  std::vector<std::int64_t>& words = column_.values.integers;
  const std::size_t at = words.size();
  words.resize(at + rows.size());
  return ForEachCell(rows, column,
                     [&, out = words.data() + at](const _VARIANT& cell, std::size_t i) {
                       out[i] = static_cast<std::int64_t>(cell.value[0]);
                       if (cell.type == MakeTag(ValueType::Double, StorageForm::Value)) return true;
                       if (cell.type != MakeTag(ValueType::Int64, StorageForm::Value))
                         return &cell == &kNull;
                       out[i] = std::bit_cast<std::int64_t>(static_cast<double>(out[i]));
                       return IsExactDouble(static_cast<std::int64_t>(cell.value[0]));
                     });
}

bool PlainColumn::AddWords(Rows rows, std::int32_t column) {
  std::vector<std::int64_t>& words = column_.values.integers;
  const std::size_t at = words.size();
  words.resize(at + rows.size());
  const std::uint32_t tag = MakeTag(type_, StorageForm::Value);
  return ForEachCell(rows, column,
                     [&, out = words.data() + at](const _VARIANT& cell, std::size_t i) {
                       if (cell.type != tag) return false;
                       out[i] = static_cast<std::int64_t>(cell.value[0]);
                       return true;
                     });
}

bool PlainColumn::AddTimes(Rows rows, std::int32_t column) {
  std::vector<std::int64_t>& words = column_.values.integers;
  const std::size_t at = words.size();
  words.resize(at + rows.size());
  return ForEachCell(
      rows, column, [&, out = words.data() + at](const _VARIANT& cell, std::size_t i) {
        if (Core::TypeOf(cell) != ValueType::DateTime) return false;
        auto* const own = Core::ExactCast<impl::DateTimeImpl>(Core::ReferencedObject(cell));
        if (!own) return false;
        const std::uint64_t ticks = own->GetFileTime();
        out[i] = static_cast<std::int64_t>(ticks - impl::kTicksAtPosixEpoch);
        areDatesAtNoon_ = areDatesAtNoon_ && IsNoon(ticks);
        fitsMicroseconds_ = fitsMicroseconds_ && out[i] % 10 == 0;
        return true;
      });
}

bool PlainColumn::AddTexts(Rows rows, std::int32_t column) {
  std::vector<std::int32_t>& offsets = column_.offsets;
  impl::TextBuffer& texts = column_.texts;
  if (offsets.empty()) {
    offsets.assign(static_cast<std::size_t>(column_.values.length) + 1, 0);
    texts.Reserve(lastTextBytes_ + lastTextBytes_ / 16);
  }
  const std::size_t at = offsets.size();
  offsets.resize(at + rows.size());
  const bool isStored = ForEachCell(
      rows, column, [&, out = offsets.data() + at](const _VARIANT& cell, std::size_t i) {
        if (&cell != &kNull) {
          if (Core::TypeOf(cell) != ValueType::String) return false;
          if (!AppendText(cell, texts)) return false;
        }
        out[i] = static_cast<std::int32_t>(texts.Size());
        return true;
      });
  return isStored && texts.Size() <= INT32_MAX;
}

/// Ends the words of a batch: they become as wide as values of the type are.
void PlainColumn::Pack(ArrowColumn& column) const {
  const std::vector<std::int64_t>& words = column.values.integers;
  switch (Find(type_)->width) {
    case 0:
      return PackBools(words, column.packed);
    case 1:
      return Narrow<std::uint8_t>(words, column.packed);
    case 2:
      return Narrow<std::uint16_t>(words, column.packed);
    case 4:
      return Narrow<std::uint32_t>(words, column.packed);
    default:
      return;
  }
}

ArrowColumn PlainColumn::Take() {
  lastTextBytes_ = column_.texts.Size();
  ArrowColumn column = std::exchange(column_, ArrowColumn());
  if (HasType()) Pack(column);
  column.areIntegers = type_ == ValueType::Int64;
  return column;
}

bool PlainColumn::Finish(ArrowColumn& column) const {
  const auto length = static_cast<std::size_t>(column.values.length);
  column.AddBuffer(column.values.nullCount > 0 ? column.values.validity.data() : nullptr);
  if (type_ == ValueType::String) {
    column.offsets.resize(length + 1);  // those of a batch without values are not there
    column.AddBuffer(column.offsets.data());
    column.AddBuffer(column.texts.View().data());
    return true;
  }
  if (column.values.integers.empty()) {
    column.values.integers.resize(length);
    Pack(column);
  }
  if (type_ == ValueType::DateTime && !FinishTimes(column)) return false;
  if (type_ == ValueType::Double && column.areIntegers && !ConvertToReals(column.values.integers))
    return false;
  if (!column.packed.empty()) column.values.integers = {};
  column.AddBuffer(column.packed.empty() ? static_cast<const void*>(column.values.integers.data())
                                         : column.packed.data());
  return true;
}

/// Ticks become days, microseconds or nanoseconds.
bool PlainColumn::FinishTimes(ArrowColumn& column) const {
  constexpr std::int64_t kTicksPerMicrosecond = 10, kNanosecondsPerTick = 100;
  std::vector<std::int64_t>& times = column.values.integers;
  if (areDatesAtNoon_) {
    for (std::int64_t& time : times)
      time = (time - (time < 0 ? impl::kTicksPerDay - 1 : 0)) / impl::kTicksPerDay;
    Narrow<std::uint32_t>(times, column.packed);
  } else if (fitsMicroseconds_) {
    for (std::int64_t& time : times) time /= kTicksPerMicrosecond;
  } else {
    constexpr std::int64_t kMost = INT64_MAX / kNanosecondsPerTick;
    for (std::int64_t& time : times) {
      if (time < -kMost || time > kMost) return false;
      time *= kNanosecondsPerTick;
    }
  }
  return true;
}

}  // namespace Data::c
