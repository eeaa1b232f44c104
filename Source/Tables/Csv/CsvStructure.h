#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Data::impl {

/// Finds the line ends and separators of a text that are outside quotes.
///
/// A byte is inside quotes if an odd number of quotes precedes it. A doubled quote inside a quoted
/// field closes and reopens it, so parity is the only rule needed. The scan turns 64 bytes at a
/// time into bit masks; the prefix XOR of the mask of quotes marks the quoted bytes.
class CsvStructure {
 public:
  /// @param separator  not a quote; a line end to find line ends only
  /// @param isQuoted   whether the text begins inside quotes
  CsvStructure(std::string_view text, char separator, bool isQuoted = false)
      : text_(text), separator_(separator), quoted_(isQuoted ? ~std::uint64_t{0} : 0) {}

  /// Entries that `ScanNext` needs: one for each byte of a chunk, and 8 more because it may write
  /// past the last one.
  static constexpr std::size_t kRoom = 4096 + 8;

  bool IsAtEnd() const { return next_ == text_.size(); }
  /// Stores the positions found in the next chunk of the text, perhaps none.
  /// @param out  room for `kRoom` entries
  /// @return the end of the stored positions
  std::size_t* ScanNext(std::size_t* out);

 private:
  std::uint64_t ScanBlock(const char* block);
  std::uint64_t ScanLastBlock(std::size_t size);

  std::string_view text_;
  char separator_;
  std::size_t next_ = 0;
  /// All ones if the next byte is inside quotes, else zero.
  std::uint64_t quoted_;
};

/// Whether a text has an odd number of quotes: it then ends inside quotes if it begins outside.
bool HasOddQuotes(std::string_view text);

/// Appends the positions of a separator of any length in one line. An occurrence after an odd
/// number of quotes is inside quotes: the search continues at the next quote, or after that quote
/// and the next if it is doubled; without another quote the rest of the line has no separator.
void AppendSeparators(std::string_view line, std::string_view separator,
                      std::vector<std::size_t>& positions);

}  // namespace Data::impl
