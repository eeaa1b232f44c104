#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "C/ExactValues.h"
#include "Core/Variant.h"
#include "Data/Interfaces/ITable.h"
#include "Tables/TableImpl.h"

/// Reading the cells of a column many at a time: what they have in common, and their values in
/// arrays as Arrow and other programs take them. Both can be done in blocks of rows, so that
/// several columns are read while the rows are in the processor's cache.
namespace Data::c {

/// The cells of one column in a range of rows.
///
/// The records of the library's own tables are read in place. If an object in one of the cells may
/// run the caller's code, or if the table is of the caller's own class, the cells are copied first:
/// whatever that code does to the table, the copies stay.
class ColumnCells {
 public:
  /// @throws std::runtime_error "Column index out of range [%d/%d]!", "Row index out of range
  ///         [%d/%d]!"; "The table has changed while it was read!" if the caller's code does that
  /// @param count  `kToTheEnd` for all rows from the first on
  ColumnCells(Interfaces::ITable& table, std::int32_t column, std::int64_t first,
              std::int64_t count);
  static constexpr std::int64_t kToTheEnd = -1;

  std::size_t Count() const { return count_; }
  /// The index in the table of the row of a cell.
  std::int64_t RowOf(std::size_t index) const { return first_ + static_cast<std::int64_t>(index); }
  const std::string& Name() const { return name_; }
  /// The declared type of the column.
  Core::ValueType DeclaredType() const { return type_; }

  const Structures::_VARIANT& operator[](std::size_t index) const {
    if (!rows_) return copies_[index];
    const Structures::_VARIANT* cell = rows_[index]->CellOrNull(column_);
    return cell ? *cell : kNull;
  }

 private:
  static constexpr Structures::_VARIANT kNull = Core::MakeNull();

  template <class CellAt>
  void Copy(CellAt&& cellAt);

  Core::Ptr<Interfaces::ITable> table_;
  std::int32_t column_;
  std::int64_t first_;
  std::size_t count_;
  std::string name_;
  Core::ValueType type_;
  const Core::Ptr<impl::RowImpl>* rows_ = nullptr;  ///< null: read the copies
  std::vector<Core::Variant> copies_;
};

/// What the values of an array are.
enum class ColumnFormat : std::uint8_t {
  Int64 = 1,
  Double = 2,
  Bool = 3,
  DateTime = 4,  ///< microseconds since 1970-01-01T00:00:00Z
  Text = 5,      ///< well-formed UTF-8
  Binary = 6,    ///< any bytes
};

/// What the cells of a column have in common.
struct ColumnAnalysis {
  std::uint64_t types = 0;  ///< those that occur: a bit for each code. Null does not count.
  std::int64_t count = 0, nullCount = 0;
  bool fitsInt64 = true;         ///< whether 64 bits hold every integer
  bool fitsDouble = true;        ///< whether a double holds every integer exactly
  bool fitsMicroseconds = true;  ///< whether no date has a fraction of a microsecond
  bool areDatesAtNoon = true;    ///< as dates that were read without a time
  std::uint64_t textBytes = 0;   ///< of all Strings as UTF-8

  void Add(const ColumnCells& cells, std::size_t first, std::size_t count);

  bool HasOnly(Core::ValueType type) const {
    return types == std::uint64_t{1} << static_cast<unsigned>(type);
  }
  /// The format that holds all values without loss:
  ///   - integers of any type that 64 bits hold: Int64
  ///   - real numbers, also mixed with integers that a double holds exactly: Double
  ///   - nothing but Bool, DateTime without fractions of microseconds, or Array: their own format
  ///   - anything else: Text (see `ExactText`)
  /// @param declared  the type of the column, which decides if there are no values
  ColumnFormat Format(Core::ValueType declared) const;
};

/// The cells of a column as arrays. A cell without a value (see `HasValue`) is Null; it has the
/// value 0, false or nothing in the arrays, and a clear bit in `validity`.
struct ColumnBuffers {
  explicit ColumnBuffers(ColumnFormat columnFormat) : format(columnFormat) {
    if (HasOffsets()) offsets.push_back(0);
  }

  /// Appends cells of a range.
  /// @param isLossy  whether to round, instead of failing, what the format does not hold exactly:
  ///                 integers as doubles to the nearest, dates down to microseconds; and to replace
  ///                 what is not UTF-8 by U+FFFD
  /// @throws std::runtime_error "Column %s, row %d: %s cannot be stored as %s without loss!", what
  ///         `Core::ToText` throws. The buffers are then no longer of use.
  void Append(const ColumnCells& cells, std::size_t first, std::size_t count, bool isLossy = false);

  bool HasOffsets() const { return format == ColumnFormat::Text || format == ColumnFormat::Binary; }
  /// The address of the values; null for formats with offsets.
  const void* Values() const;

  ColumnFormat format;
  std::int64_t length = 0, nullCount = 0;
  std::vector<std::uint8_t> validity;  ///< a bit for each cell, least significant first; 1: a value
  std::vector<std::int64_t> integers;  ///< Int64, DateTime
  std::vector<double> doubles;
  std::vector<std::uint8_t> bools;    ///< a byte for each cell; see `PackBits`
  std::vector<std::int64_t> offsets;  ///< Text, Binary: length + 1, from 0, into `bytes`
  std::vector<char> bytes;
};

/// A bit for each byte that is not 0, least significant first.
std::vector<std::uint8_t> PackBits(const std::vector<std::uint8_t>& bytes);

/// All cells of a range in the format that the analysis finds.
ColumnBuffers ReadColumn(const ColumnCells& cells, bool isLossy);
/// All cells of a range in the wanted format.
ColumnBuffers ReadColumn(const ColumnCells& cells, ColumnFormat format, bool isLossy);

}  // namespace Data::c
