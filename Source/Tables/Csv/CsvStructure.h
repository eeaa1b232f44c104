#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Data::impl {

/// Finds the line ends and separators of a text that stand outside quotes.
///
/// A byte stands inside quotes when an odd number of quotes comes before it: a
/// doubled quote inside a quoted stretch leaves and enters it again, so no rule
/// but parity is needed. 64 bytes at a time become bit masks; the prefix XOR of
/// the quotes' mask marks the quoted bytes.
class CsvStructure {
 public:
  /// @param separator  not a quote; a line end to find nothing but line ends
  CsvStructure(std::string_view text, char separator) : text_(text), separator_(separator) {}

  /// Room that `ScanNext` needs: as many positions as a chunk of text has
  /// bytes, and a few that are stored too much.
  static constexpr std::size_t kRoom = 4096 + 8;

  bool IsAtEnd() const { return next_ == text_.size(); }
  /// Stores the positions that the next chunk of the text holds, perhaps none.
  /// @param out  with `kRoom` entries to write
  /// @return the end of what was stored
  std::size_t* ScanNext(std::size_t* out);

 private:
  std::uint64_t ScanBlock(const char* block);
  std::uint64_t ScanLastBlock(std::size_t size);

  std::string_view text_;
  char separator_;
  std::size_t next_ = 0;
  /// All ones while the next byte stands inside quotes.
  std::uint64_t quoted_ = 0;
};

/// Appends the positions of a separator of any shape in one line, searched
/// literally: an occurrence that an odd number of quotes precedes is passed by
/// going on at the next quote, behind it if that quote is doubled; without a
/// next quote the rest of the line holds none.
void AppendSeparators(std::string_view line, std::string_view separator,
                      std::vector<std::size_t>& positions);

}  // namespace Data::impl
