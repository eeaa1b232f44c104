#include "Tables/Csv/CsvStructure.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "Platform/ByteBlock.h"
#include "Tables/Csv/CsvText.h"

namespace Data::impl {

namespace {

constexpr std::size_t kBlock = 64;
/// Large enough that the cost of a call hardly matters, small enough that the text and its
/// positions stay in the first-level cache.
constexpr std::size_t kChunk = CsvStructure::kRoom - 8;
static_assert(kChunk % kBlock == 0);

/// One bit per byte of a block, set where the byte is `c`.
std::uint64_t BytesEqual(const char* block, char c) {
  using Platform::ByteBlock;
  std::uint64_t mask = 0;
  for (std::size_t at = kBlock; at != 0;) {
    at -= ByteBlock::kSize;
    mask = mask << ByteBlock::kSize | ByteBlock(block + at).Equal(c).Bits();
  }
  return mask;
}

/// Each bit becomes the XOR of itself and all lower ones.
std::uint64_t PrefixXor(std::uint64_t bits) {
  for (int shift = 1; shift < 64; shift *= 2) bits ^= bits << shift;
  return bits;
}

std::size_t* StorePositions(std::uint64_t mask, std::size_t base, std::size_t* out) {
  std::size_t* const end = out + std::popcount(mask);
  // Eight at a time, without a branch for each: `out` has room for the surplus.
  while (mask != 0) {
    for (int i = 0; i < 8; ++i) {
      *out++ = base + static_cast<std::size_t>(std::countr_zero(mask));
      mask &= mask - 1;
    }
  }
  return end;
}

}  // namespace

std::uint64_t CsvStructure::ScanBlock(const char* block) {
  const std::uint64_t quotes = BytesEqual(block, kQuote);
  const std::uint64_t found = BytesEqual(block, separator_) | BytesEqual(block, kLineEnd);
  const std::uint64_t quotedBytes = PrefixXor(quotes) ^ quoted_;
  quoted_ = static_cast<std::uint64_t>(static_cast<std::int64_t>(quotedBytes) >> 63);
  return found & ~quotedBytes;
}

std::uint64_t CsvStructure::ScanLastBlock(std::size_t size) {
  char block[kBlock] = {};
  std::memcpy(block, text_.data() + next_, size);
  return ScanBlock(block) & ((std::uint64_t{1} << size) - 1);
}

std::size_t* CsvStructure::ScanNext(std::size_t* out) {
  const std::size_t end = next_ + std::min(kChunk, text_.size() - next_);
  for (; end - next_ >= kBlock; next_ += kBlock)
    out = StorePositions(ScanBlock(text_.data() + next_), next_, out);
  if (next_ == end) return out;
  out = StorePositions(ScanLastBlock(end - next_), next_, out);
  next_ = end;
  return out;
}

bool HasOddQuotes(std::string_view text) {
  // Counts each of the 64 columns of a block apart, modulo 2.
  std::uint64_t odd = 0;
  for (; text.size() >= kBlock; text.remove_prefix(kBlock)) odd ^= BytesEqual(text.data(), kQuote);
  const auto rest = std::count(text.begin(), text.end(), kQuote);
  return (std::popcount(odd) + rest) % 2 != 0;
}

void AppendSeparators(std::string_view line, std::string_view separator,
                      std::vector<std::size_t>& positions) {
  std::size_t counted = 0;
  bool isQuoted = false;
  for (std::size_t search = 0;;) {
    const std::size_t found = line.find(separator, search);
    if (found == std::string_view::npos) return;
    isQuoted ^= std::count(line.begin() + counted, line.begin() + found, kQuote) % 2 != 0;
    counted = found;
    if (!isQuoted) {
      positions.push_back(found);
      search = found + separator.size();
      continue;
    }
    const std::size_t quote = line.find(kQuote, found + 1);
    if (quote == std::string_view::npos) return;
    search = line.substr(quote).starts_with("\"\"") ? quote + 2 : quote;
  }
}

}  // namespace Data::impl
