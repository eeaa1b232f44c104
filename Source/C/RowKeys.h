#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "C/RowCopy.h"

/// The values of columns as keys, in the order that layerdata_rows.h states.
namespace Data::c {

/// The texts of cells. Those that cannot be read in place are copied.
class KeyTexts {
 public:
  KeyTexts() = default;
  KeyTexts(const KeyTexts&) = delete;
  KeyTexts& operator=(const KeyTexts&) = delete;

  /// @throws what reading the text throws
  std::string_view Of(const Structures::_VARIANT& cell);
  std::string_view Keep(std::string text) { return copies_.emplace_back(std::move(text)); }

 private:
  std::deque<std::string> copies_;
};

/// The cells of a column, to be sorted. A cell is a short sequence of words; most are told apart by
/// the first.
class OrderKeys {
 public:
  OrderKeys(const RowSource& source, std::size_t column, bool isDescending = false,
            bool areNullsFirst = false);

  struct Word {
    std::uint64_t value;
    std::uint8_t rank;  ///< by kind; compared before the value
    bool isLast;        ///< of the cell, and of all cells whose words have been equal so far

    /// Negative if this is less than the other, 0 if they are equal.
    int Compare(const Word& other) const {
      if (rank != other.rank) return rank < other.rank ? -1 : 1;
      return value < other.value ? -1 : value > other.value ? 1 : 0;
    }
  };
  /// @param depth  up to the first word that is the last
  Word WordAt(std::size_t row, std::size_t depth) const;

  /// Negative if the left row comes first, 0 if neither does.
  /// @param depth  of the first words that may differ
  int Compare(std::size_t left, std::size_t right, std::size_t depth) const;

 private:
  static constexpr std::uint8_t kNullsFirst = 0, kNullsLast = UINT8_MAX;

  Word ValueAt(std::size_t row, std::size_t depth) const;
  Word NumberAt(const Structures::_VARIANT& cell, std::size_t depth) const;

  const RowSource& source_;
  std::size_t column_;
  bool isDescending_, areNullsFirst_;
  /// Whether the numbers of the column are not all real, or all integers of 64 bits.
  bool areNumbersMixed_;
  std::vector<std::string_view> texts_;
  KeyTexts reader_;
};

/// Spreads the bits of a hash when multiplied with it.
inline constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;

/// The cells of a column, to be told equal or different.
class EqualKeys {
 public:
  EqualKeys(const RowSource& source, std::size_t column);

  bool IsNull(std::size_t row) const { return keys_[row].kind == 0; }
  std::uint64_t Hash(std::size_t row) const { return keys_[row].word * kOdd + keys_[row].kind; }
  bool AreEqual(std::size_t row, const EqualKeys& other, std::size_t otherRow) const {
    const Key &a = keys_[row], &b = other.keys_[otherRow];
    return a.word == b.word && a.kind == b.kind &&
           (texts_.empty() || other.texts_.empty() || texts_[row] == other.texts_[otherRow]);
  }

 private:
  struct Key {
    std::uint64_t word;
    std::uint8_t kind;  ///< 0 for Null
  };
  Key KeyOf(const Structures::_VARIANT& cell, std::size_t row);

  std::size_t rowCount_;
  std::vector<Key> keys_;
  std::vector<std::string_view> texts_;
  KeyTexts reader_;
};

/// The keys of rows in several columns.
class RowKeys {
 public:
  RowKeys(const RowSource& source, const std::vector<std::size_t>& columns);

  std::size_t RowCount() const { return rowCount_; }
  bool HasNull(std::size_t row) const;
  std::uint64_t Hash(std::size_t row) const;
  bool AreEqual(std::size_t row, const RowKeys& other, std::size_t otherRow) const;

 private:
  std::size_t rowCount_;
  std::deque<EqualKeys> columns_;
};

/// Rows by the hash of their keys.
class RowLookup {
 public:
  explicit RowLookup(const RowKeys& keys);

  /// Enters a row; of several with equal keys the last one entered is found first.
  void Add(std::size_t row, std::uint64_t hash) {
    std::size_t& head = Head(hash);
    entries_[row] = {hash, head};
    head = row;
  }
  /// Calls `visit` with the entered rows whose keys equal those of a row, until it returns false.
  template <class Visit>
  void ForEachEqual(const RowKeys& other, std::size_t otherRow, std::uint64_t hash,
                    Visit&& visit) const {
    for (std::size_t row = heads_[SlotOf(hash)]; row != kEnd; row = entries_[row].next)
      if (entries_[row].hash == hash && keys_.AreEqual(row, other, otherRow) && !visit(row)) return;
  }

 private:
  static constexpr std::size_t kEnd = SIZE_MAX;
  struct Entry {
    std::uint64_t hash;
    std::size_t next;
  };

  std::size_t SlotOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> shift_); }
  std::size_t& Head(std::uint64_t hash) { return heads_[SlotOf(hash)]; }

  const RowKeys& keys_;
  std::vector<std::size_t> heads_;
  int shift_;
  std::vector<Entry> entries_;
};

}  // namespace Data::c
