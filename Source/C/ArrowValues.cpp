#include "C/ArrowValues.h"

#include <algorithm>

namespace Data::c {

namespace {

/// The number of buffers of an array; of a View, the least one.
constexpr std::size_t BufferCount(ArrowKind kind) {
  switch (kind) {
    case ArrowKind::Null:
      return 0;
    case ArrowKind::Struct:
    case ArrowKind::FixedList:
      return 1;
    case ArrowKind::Text:
    case ArrowKind::Bytes:
    case ArrowKind::TextView:
    case ArrowKind::BytesView:
    case ArrowKind::ListView:
      return 3;
    default:
      return 2;
  }
}

constexpr bool IsView(ArrowKind kind) {
  return kind == ArrowKind::TextView || kind == ArrowKind::BytesView;
}

}  // namespace

ArrowValues::ArrowValues(const ArrowType& type, const ArrowArray& array, std::int64_t leastLength)
    : type_(&type), length_(array.length), offset_(array.offset) {
  if (!array.release) ThrowInColumn(type, "the array has been released");
  if (length_ < 0 || offset_ < 0 || length_ > INT64_MAX - offset_)
    ThrowInColumn(type, "the array has a wrong length");
  if (length_ < leastLength) ThrowInColumn(type, "the array is too short");
  // The last bit or byte of a buffer must have an address.
  const std::int64_t most = INT64_MAX / std::max<std::int64_t>(std::int64_t{type.width} + 8, 1);
  if (length_ + offset_ > most) ThrowInColumn(type, "the array has a wrong length");
  OpenBuffers(array);
  OpenChildren(array);
}

void ArrowValues::OpenBuffers(const ArrowArray& array) {
  const std::size_t least = BufferCount(type_->kind);
  const bool mayHaveMore = IsView(type_->kind);
  if (array.n_buffers < static_cast<std::int64_t>(least) || array.n_buffers > INT32_MAX ||
      (!mayHaveMore && array.n_buffers != static_cast<std::int64_t>(least)))
    ThrowInColumn(*type_, "the array has a wrong number of buffers");
  if (array.n_buffers > 0 && !array.buffers) ThrowInColumn(*type_, "a buffer is missing");
  for (std::int64_t i = 0; i < array.n_buffers; ++i)
    buffers_.push_back(static_cast<const char*>(array.buffers[i]));
  if (array.null_count < -1 || array.null_count > length_)
    ThrowInColumn(*type_, "the array has a wrong number of nulls");
  if (least == 0 || length_ == 0) return;
  if (array.null_count > 0 && !buffers_[0]) ThrowInColumn(*type_, "a buffer is missing");
  // Texts may all be empty, and so may the last buffer be.
  const std::size_t needed =
      type_->kind == ArrowKind::ListView ? 3 : std::min<std::size_t>(least, 2);
  const bool hasNoBytes = type_->kind == ArrowKind::FixedBytes && type_->width == 0;
  for (std::size_t i = 1; i < needed; ++i)
    if (!buffers_[i] && !hasNoBytes) ThrowInColumn(*type_, "a buffer is missing");
}

void ArrowValues::OpenChildren(const ArrowArray& array) {
  const auto count = static_cast<std::int64_t>(type_->children.size());
  if (array.n_children != count || (count > 0 && !array.children))
    ThrowInColumn(*type_, "the array has a wrong number of children");
  std::int64_t leastLength = 0;
  if (type_->kind == ArrowKind::Struct) leastLength = offset_ + length_;
  if (type_->kind == ArrowKind::FixedList) {
    const std::int64_t size = std::max<std::int64_t>(type_->parameter, 1);
    if (offset_ + length_ > INT64_MAX / size) ThrowInColumn(*type_, "the array has a wrong length");
    leastLength = (offset_ + length_) * type_->parameter;
  }
  for (std::size_t i = 0; i < type_->children.size(); ++i) {
    if (!array.children[i]) ThrowInColumn(*type_, "the array has a wrong number of children");
    children_.emplace_back(type_->children[i], *array.children[i], leastLength);
  }
  if (!type_->dictionary) return;
  if (!array.dictionary) ThrowInColumn(*type_, "the dictionary is missing");
  dictionary_.emplace_back(*type_->dictionary, *array.dictionary);
}

template <class Visit>
auto ArrowValues::ForWidth(Visit&& visit) const {
  const bool isSigned = type_->kind != ArrowKind::Unsigned;
  switch (type_->width) {
    case 1:
      return isSigned ? visit(std::int8_t{}) : visit(std::uint8_t{});
    case 2:
      return isSigned ? visit(std::int16_t{}) : visit(std::uint16_t{});
    case 4:
      return isSigned ? visit(std::int32_t{}) : visit(std::uint32_t{});
    default:
      return isSigned ? visit(std::int64_t{}) : visit(std::uint64_t{});
  }
}

const ArrowValues& ArrowValues::Locate(std::span<std::int64_t> indexes) const {
  const char* const validity = buffers_.empty() ? nullptr : buffers_[0];
  if (type_->kind == ArrowKind::Null) {
    std::fill(indexes.begin(), indexes.end(), -1);
  } else if (validity || offset_ != 0) {
    for (std::int64_t& index : indexes) {
      if (index < 0) continue;
      index += offset_;
      if (validity && !BitAt(validity, index)) index = -1;
    }
  }
  if (dictionary_.empty()) return *this;
  const ArrowValues& values = dictionary_[0];
  ForWidth([&]<class Index>(Index) {
    for (std::int64_t& index : indexes) {
      if (index < 0) continue;
      // A negative index becomes a huge one.
      const auto at = static_cast<std::uint64_t>(Load<Index>(1, index));
      if (at >= static_cast<std::uint64_t>(values.length_))
        ThrowInColumn(*type_, "an index is beyond the dictionary");
      index = static_cast<std::int64_t>(at);
    }
  });
  return values.Locate(indexes);
}

/// A view is its length, and then either up to 12 bytes, or the first four, the index of a buffer
/// and the offset in it. The last buffer holds the sizes of the buffers between.
std::string_view ArrowValues::ViewAt(std::int64_t position) const {
  constexpr std::int32_t kMostInline = 12;
  const char* const view = buffers_[1] + position * std::int64_t{type_->width};
  std::int32_t length = 0, buffer = 0, offset = 0;
  std::memcpy(&length, view, sizeof length);
  if (length >= 0 && length <= kMostInline)
    return {view + sizeof length, static_cast<std::size_t>(length)};
  std::memcpy(&buffer, view + 8, sizeof buffer);
  std::memcpy(&offset, view + 12, sizeof offset);
  const std::size_t count = buffers_.size() - 3;
  const bool isThere = length > 0 && buffer >= 0 && static_cast<std::size_t>(buffer) < count;
  if (!isThere || offset < 0 || !buffers_.back() || !buffers_[2 + static_cast<std::size_t>(buffer)])
    ThrowInColumn(*type_, "a value is beyond its buffer");
  if (std::int64_t{offset} + length > Load<std::int64_t>(buffers_.size() - 1, buffer))
    ThrowInColumn(*type_, "a value is beyond its buffer");
  return {buffers_[2 + static_cast<std::size_t>(buffer)] + offset,
          static_cast<std::size_t>(length)};
}

ArrowValues::Range ArrowValues::RangeOf(std::int64_t begin, std::int64_t end) const {
  if (begin < 0 || end < begin) ThrowInColumn(*type_, "the offsets do not ascend");
  if (end > children_[0].length_) ThrowInColumn(*type_, "the array is too short");
  return {begin, end};
}

ArrowValues::Range ArrowValues::ItemsAt(std::int64_t position) const {
  if (type_->kind == ArrowKind::FixedList)
    return {position * type_->parameter, (position + 1) * type_->parameter};
  return ForWidth([&]<class Offset>(Offset) {
    const auto begin = static_cast<std::int64_t>(Load<Offset>(1, position));
    if (type_->kind == ArrowKind::List)
      return RangeOf(begin, static_cast<std::int64_t>(Load<Offset>(1, position + 1)));
    const auto size = static_cast<std::int64_t>(Load<Offset>(2, position));
    if (size < 0 || begin > INT64_MAX - size) ThrowInColumn(*type_, "the offsets do not ascend");
    return RangeOf(begin, begin + size);
  });
}

}  // namespace Data::c
