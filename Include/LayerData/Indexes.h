#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ranges>
#include <string>
#include <utility>

#include "LayerData/Error.h"

/// Ranges whose elements are made when they are read: rows, columns and cells.
namespace layerdata::detail {

/// A random-access iterator over the elements `Source::At(0)`, `Source::At(1)` ... A source is a
/// small record of pointers that do not own: an iterator is valid as long as the table or row.
template <class Source>
class IndexIterator {
 public:
  using iterator_concept = std::random_access_iterator_tag;
  using iterator_category = std::input_iterator_tag;  // an element is no reference
  using value_type = decltype(std::declval<const Source&>().At(std::int64_t{}));
  using reference = value_type;
  using difference_type = std::int64_t;

  IndexIterator() noexcept = default;
  IndexIterator(Source source, std::int64_t index) noexcept : source_(source), index_(index) {}

  value_type operator*() const { return source_.At(index_); }
  value_type operator[](difference_type distance) const { return source_.At(index_ + distance); }

  IndexIterator& operator+=(difference_type distance) noexcept {
    index_ += distance;
    return *this;
  }
  IndexIterator& operator-=(difference_type distance) noexcept { return *this += -distance; }
  IndexIterator& operator++() noexcept { return *this += 1; }
  IndexIterator& operator--() noexcept { return *this -= 1; }
  IndexIterator operator++(int) noexcept { return std::exchange(*this, *this + 1); }
  IndexIterator operator--(int) noexcept { return std::exchange(*this, *this - 1); }

  friend IndexIterator operator+(IndexIterator from, difference_type distance) noexcept {
    return from += distance;
  }
  friend IndexIterator operator+(difference_type distance, IndexIterator from) noexcept {
    return from += distance;
  }
  friend IndexIterator operator-(IndexIterator from, difference_type distance) noexcept {
    return from -= distance;
  }
  friend difference_type operator-(const IndexIterator& left, const IndexIterator& right) noexcept {
    return left.index_ - right.index_;
  }
  friend bool operator==(const IndexIterator& left, const IndexIterator& right) noexcept {
    return left.index_ == right.index_;
  }
  friend auto operator<=>(const IndexIterator& left, const IndexIterator& right) noexcept {
    return left.index_ <=> right.index_;
  }

 private:
  Source source_{};
  std::int64_t index_ = 0;
};

/// The members of a range of `IndexIterator`s beside `begin` and `end`. A view, which
/// std::ranges::view_interface would make it too, but clang 14 cannot compile that.
template <class Self>
class IndexRange : public std::ranges::view_base {
 public:
  std::int64_t Size() const { return Derived().end() - Derived().begin(); }
  bool IsEmpty() const { return Size() == 0; }
  std::uint64_t size() const { return static_cast<std::uint64_t>(Size()); }
  bool empty() const { return IsEmpty(); }
  /// Not checked, as for other views.
  auto operator[](std::int64_t index) const { return Derived().begin()[index]; }
  auto front() const { return *Derived().begin(); }
  auto back() const { return Derived().begin()[Size() - 1]; }

 private:
  const Self& Derived() const { return static_cast<const Self&>(*this); }
};

/// An index as the C interface takes it; one that it cannot take becomes one that does not exist.
constexpr std::int32_t Index32(std::int64_t index) noexcept {
  return std::in_range<std::int32_t>(index) ? static_cast<std::int32_t>(index) : -1;
}

/// An index that the caller gives.
/// @throws Error "There is no row 7: there are 5."
template <std::integral Index>
std::int64_t CheckIndex(Index index, std::int64_t count, const char* what) {
  if (std::cmp_less(index, 0) || std::cmp_greater_equal(index, count))
    throw Error(std::string("There is no ") + what + " " + std::to_string(index) + ": there are " +
                std::to_string(count) + ".");
  return static_cast<std::int64_t>(index);
}

}  // namespace layerdata::detail
