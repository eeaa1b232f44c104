#include "C/RowKeys.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

#include "C/ExactValues.h"
#include "Core/ExactCast.h"
#include "Core/VariantConversions.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::c {

using Core::KindOf;
using Core::TypeOf;
using Core::ValueKind;
using Core::ValueType;
using Structures::_VARIANT;

namespace {

/// The kinds of values, in their order. All other kinds follow, by the number of their type.
enum Rank : std::uint8_t { kNone = 0, kBool, kNumber, kText, kDateTime, kUuid, kOther };

std::uint8_t RankOf(const _VARIANT& cell) {
  if (!HasValue(cell)) return kNone;
  const ValueType type = TypeOf(cell);
  if (type == ValueType::Uuid) return kUuid;
  switch (KindOf(type)) {
    case ValueKind::Bool:
      return kBool;
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::WideInteger:
    case ValueKind::Real:
      return kNumber;
    case ValueKind::Text:
      return kText;
    case ValueKind::DateTime:
      return kDateTime;
    default:
      return static_cast<std::uint8_t>(kOther + static_cast<std::uint32_t>(type));
  }
}

/// Whether values that are neither numbers nor dates are compared by bytes, not by address.
bool HasText(const _VARIANT& cell) {
  const ValueKind kind = KindOf(TypeOf(cell));
  return kind == ValueKind::Text || kind == ValueKind::Document || kind == ValueKind::Array ||
         TypeOf(cell) == ValueType::Uuid;
}

constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

/// A word for each number, in the order of numbers; 0 and -0.0 have the same.
std::uint64_t OrderWord(std::int64_t value) { return static_cast<std::uint64_t>(value) ^ kSign; }
std::uint64_t OrderWord(double value) {
  if (std::isnan(value)) return UINT64_MAX;
  const auto bits = std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

/// An integer as the greatest double that is not above it, and the rest.
struct FlooredInteger {
  double floor = 0;
  std::uint64_t restHigh = 0, restLow = 0;

  explicit FlooredInteger(const Integer& integer) {
    if (const auto exact = integer.ExactDouble()) {
      floor = *exact;
      return;
    }
    const int width = integer.high != 0 ? 64 + static_cast<int>(std::bit_width(integer.high))
                                        : static_cast<int>(std::bit_width(integer.low));
    // The unit of the last place that a double has for it: it cuts off so many bits.
    const int cut = width - 53;
    const std::uint64_t unitHigh = cut < 64 ? 0 : std::uint64_t{1} << (cut - 64);
    const std::uint64_t unitLow = cut < 64 ? std::uint64_t{1} << cut : 0;
    const std::uint64_t maskHigh = cut < 64 ? 0 : unitHigh - 1;
    const std::uint64_t maskLow = cut < 64 ? unitLow - 1 : UINT64_MAX;
    restHigh = integer.high & maskHigh;
    restLow = integer.low & maskLow;
    floor = Integer{integer.high & ~maskHigh, integer.low & ~maskLow, false}.NearestDouble();
    if (!integer.isNegative) return;
    floor = std::nextafter(-floor, -std::numeric_limits<double>::infinity());
    restHigh = unitHigh - restHigh - (unitLow < restLow ? 1 : 0);
    restLow = unitLow - restLow;
  }
};

constexpr std::size_t kBytesOfWord = 7;

/// 7 bytes of a text from a position on, and how many are left there, or 8 for more than 7.
std::uint64_t OrderWord(std::string_view text) {
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < kBytesOfWord; ++i)
    word = word << 8 | (i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U);
  return word << 8 | std::min(text.size(), kBytesOfWord + 1);
}

}  // namespace

std::string_view KeyTexts::Of(const _VARIANT& cell) {
  if (TypeOf(cell) == ValueType::String) {
    if (HasForm(cell, Core::StorageForm::Value)) return Core::InlineText(cell);
    auto* const own = Core::ExactCast<impl::MultiByteStringImpl>(Core::ReferencedObject(cell));
    if (own) return Core::Utf8View(*own);
  } else if (TypeOf(cell) == ValueType::Array) {
    const auto array = Core::GetObject<Interfaces::IArray>(cell);
    if (const auto bytes = BytesOf(*array)) return Keep(std::string(*bytes));
  }
  return Keep(Core::ToText(cell));
}

// -- Order --

OrderKeys::OrderKeys(const RowSource& source, std::size_t column, bool isDescending,
                     bool areNullsFirst)
    : source_(source), column_(column), isDescending_(isDescending), areNullsFirst_(areNullsFirst) {
  bool hasReals = false, hasIntegers = false, hasLarge = false;
  for (std::size_t row = 0; row < source.RowCount(); ++row) {
    const _VARIANT& cell = source.Cell(row, column);
    const std::uint8_t rank = RankOf(cell);
    if (rank == kNumber) {
      const bool isReal = KindOf(TypeOf(cell)) == ValueKind::Real;
      (isReal ? hasReals : hasIntegers) = true;
      hasLarge = hasLarge || (!isReal && !ExactInt64(cell));
    } else if (rank >= kText && HasText(cell)) {
      if (texts_.empty()) texts_.resize(source.RowCount());
      texts_[row] = reader_.Of(cell);
    }
  }
  areNumbersMixed_ = hasIntegers && (hasReals || hasLarge);
}

OrderKeys::Word OrderKeys::WordAt(std::size_t row, std::size_t depth) const {
  Word word = ValueAt(row, depth);
  if (word.rank == kNone) {
    word.rank = areNullsFirst_ ? kNullsFirst : kNullsLast;
  } else if (isDescending_) {
    word.rank = static_cast<std::uint8_t>(kNullsLast - word.rank);
    word.value = ~word.value;
  }
  return word;
}

OrderKeys::Word OrderKeys::ValueAt(std::size_t row, std::size_t depth) const {
  const _VARIANT& cell = source_.Cell(row, column_);
  const std::uint8_t rank = RankOf(cell);
  switch (rank) {
    case kNone:
      return {0, rank, true};
    case kBool:
      return {Core::ToBool(cell) ? 1U : 0U, rank, true};
    case kNumber:
      return NumberAt(cell, depth);
    case kDateTime:
      return {OrderWord(static_cast<std::int64_t>(TicksOf(cell))), rank, true};
    default:
      break;
  }
  if (!HasText(cell)) return {cell.value[0], rank, true};
  const std::string_view rest = texts_[row].substr(depth * kBytesOfWord);
  return {OrderWord(rest), rank, rest.size() <= kBytesOfWord};
}

OrderKeys::Word OrderKeys::NumberAt(const _VARIANT& cell, std::size_t depth) const {
  const auto integer = Integer::Of(cell);
  if (!areNumbersMixed_)
    return {integer ? OrderWord(*integer->ExactInt64()) : OrderWord(Core::ToDouble(cell)), kNumber,
            true};
  if (!integer) return {depth == 0 ? OrderWord(Core::ToDouble(cell)) : 0, kNumber, depth == 2};
  const FlooredInteger floored(*integer);
  const std::uint64_t words[] = {OrderWord(floored.floor), floored.restHigh, floored.restLow};
  return {words[depth], kNumber, depth == 2};
}

int OrderKeys::Compare(std::size_t left, std::size_t right, std::size_t depth) const {
  for (;; ++depth) {
    const Word word = WordAt(left, depth);
    const int order = word.Compare(WordAt(right, depth));
    if (order != 0 || word.isLast) return order;
  }
}

// -- Equality --

EqualKeys::EqualKeys(const RowSource& source, std::size_t column) : rowCount_(source.RowCount()) {
  keys_.reserve(rowCount_);
  for (std::size_t row = 0; row < rowCount_; ++row)
    keys_.push_back(KeyOf(source.Cell(row, column), row));
}

EqualKeys::Key EqualKeys::KeyOf(const _VARIANT& cell, std::size_t row) {
  constexpr std::uint8_t kReal = 254, kLarge = 255;  // numbers that are no Int64
  const std::uint8_t rank = RankOf(cell);
  const auto withText = [&](std::uint8_t kind, std::string_view text) {
    if (texts_.empty()) texts_.resize(rowCount_);
    texts_[row] = text;
    return Key{std::hash<std::string_view>()(text), kind};
  };
  switch (rank) {
    case kNone:
      return {0, rank};
    case kBool:
      return {Core::ToBool(cell) ? 1U : 0U, rank};
    case kNumber:
      if (const auto integer = ExactInt64(cell))
        return {static_cast<std::uint64_t>(*integer), rank};
      if (const auto real = ExactDouble(cell)) {
        if (*real == 0) return {0, rank};  // -0.0
        return {OrderWord(*real), kReal};
      }
      return withText(kLarge, reader_.Keep(Integer::Of(cell)->Text()));
    case kDateTime:
      return {TicksOf(cell), rank};
    default:
      return HasText(cell) ? withText(rank, reader_.Of(cell)) : Key{cell.value[0], rank};
  }
}

RowKeys::RowKeys(const RowSource& source, const std::vector<std::size_t>& columns)
    : rowCount_(source.RowCount()) {
  for (const std::size_t column : columns) columns_.emplace_back(source, column);
}

bool RowKeys::HasNull(std::size_t row) const {
  return std::ranges::any_of(columns_, [&](const EqualKeys& keys) { return keys.IsNull(row); });
}

std::uint64_t RowKeys::Hash(std::size_t row) const {
  std::uint64_t hash = 0;
  for (const EqualKeys& keys : columns_) {
    hash = (std::rotl(hash, 5) ^ keys.Hash(row)) * kOdd;
    hash ^= hash >> 32;
  }
  return hash * kOdd;
}

bool RowKeys::AreEqual(std::size_t row, const RowKeys& other, std::size_t otherRow) const {
  for (std::size_t i = 0; i < columns_.size(); ++i)
    if (!columns_[i].AreEqual(row, other.columns_[i], otherRow)) return false;
  return true;
}

RowLookup::RowLookup(const RowKeys& keys)
    : keys_(keys),
      heads_(std::bit_ceil(keys.RowCount() + 2), kEnd),
      shift_(64 - std::countr_zero(heads_.size())),
      entries_(keys.RowCount()) {}

}  // namespace Data::c
