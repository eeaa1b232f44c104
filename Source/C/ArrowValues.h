#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

#include "C/ArrowTypes.h"

namespace Data::c {

/// The values of an Arrow array, which must outlive this. Everything is checked that can be told
/// without knowing the sizes of the buffers, most of it when the array is opened.
///
/// A value has an index in its array, and a position in the buffers, which begin before the values
/// of a sliced array.
class ArrowValues {
 public:
  /// @param leastLength  the values that the parent needs
  /// @throws std::runtime_error for an array that does not fit its type
  ArrowValues(const ArrowType& type, const ArrowArray& array, std::int64_t leastLength = 0);

  /// The type of the values that `Locate` finds: that of the dictionary if there is one.
  const ArrowType& Type() const { return dictionary_.empty() ? *type_ : dictionary_[0].Type(); }
  std::int64_t Length() const { return length_; }
  /// The fields of a Struct, whose values stand at its positions, or the items of a list.
  const std::vector<ArrowValues>& Children() const { return children_; }

  /// Turns indexes into positions. Those of null values become -1, as those that are -1 stay.
  /// @return where the positions are: this, or its dictionary
  const ArrowValues& Locate(std::span<std::int64_t> indexes) const;

  /// The fixed-size value at a position.
  template <class T>
  T ValueAt(std::int64_t position) const {
    return Load<T>(1, position);
  }
  bool BoolAt(std::int64_t position) const { return BitAt(buffers_[1], position); }
  std::string_view FixedBytesAt(std::int64_t position) const {
    return {buffers_[1] + position * type_->width, type_->width};
  }
  /// The text or bytes at a position.
  template <class Offset>
  std::string_view BytesAt(std::int64_t position) const;
  std::string_view ViewAt(std::int64_t position) const;

  struct Range {
    std::int64_t begin, end;
  };
  /// The indexes of a list's items.
  Range ItemsAt(std::int64_t position) const;

 private:
  static bool BitAt(const char* bits, std::int64_t position) {
    return bits[position / 8] >> (position % 8) & 1;
  }
  template <class T>
  T Load(std::size_t buffer, std::int64_t position) const {
    T value;
    std::memcpy(&value, buffers_[buffer] + position * static_cast<std::int64_t>(sizeof value),
                sizeof value);
    return value;
  }

  void OpenBuffers(const ArrowArray& array);
  void OpenChildren(const ArrowArray& array);
  Range RangeOf(std::int64_t begin, std::int64_t end) const;
  template <class Visit>
  auto ForWidth(Visit&& visit) const;

  const ArrowType* type_;
  std::int64_t length_, offset_;
  /// The validity, then what the kind stores. A View's are all there.
  std::vector<const char*> buffers_;
  std::vector<ArrowValues> children_;
  std::vector<ArrowValues> dictionary_;  ///< at most one
};

template <class Offset>
std::string_view ArrowValues::BytesAt(std::int64_t position) const {
  const auto begin = Load<Offset>(1, position);
  const auto end = Load<Offset>(1, position + 1);
  if (begin < 0 || end < begin) ThrowInColumn(*type_, "the offsets do not ascend");
  if (begin == end) return {};
  if (!buffers_[2]) ThrowInColumn(*type_, "a buffer is missing");
  return {buffers_[2] + begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace Data::c
