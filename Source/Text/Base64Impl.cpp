#include "Text/Base64Impl.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "Core/Guard.h"
#include "Core/Ptr.h"
#include "Text/ArrayBytes.h"
#include "Text/Base64Blocks.h"

namespace Data::impl {

using Interfaces::IArray;

namespace {

/// Encodes one to three bytes as two to four characters; missing bytes count as zero.
void EncodeGroup(const Base64Alphabet& alphabet, std::span<const std::uint8_t> group,
                 std::uint8_t* out) {
  unsigned bits = 0;
  for (std::size_t i = 0; i < 3; ++i) bits = bits << 8 | (i < group.size() ? group[i] : 0u);
  for (std::size_t i = 0; i <= group.size(); ++i)
    out[i] = static_cast<std::uint8_t>(alphabet.characters[bits >> (18 - 6 * i) & 0x3F]);
}

Core::Ptr<IArray> EncodeBase64(const Base64Alphabet& alphabet,
                               std::span<const std::uint8_t> bytes) {
  const std::size_t rest = bytes.size() % 3, groups = bytes.size() / 3;
  const std::size_t lastGroup = rest == 0 ? 0 : alphabet.isPadded ? 4 : rest + 1;
  auto text = NewArray(4 * groups + lastGroup);
  auto* const begin = static_cast<std::uint8_t*>(text->GetData());
  std::size_t done = EncodeBase64Blocks(alphabet, bytes, reinterpret_cast<char*>(begin));
  for (std::uint8_t* out = begin + done / 3 * 4; done < bytes.size(); done += 3, out += 4)
    EncodeGroup(alphabet, bytes.subspan(done, std::min<std::size_t>(3, bytes.size() - done)), out);
  if (alphabet.isPadded && rest != 0) std::fill_n(begin + 4 * groups + rest + 1, 3 - rest, '=');
  return text;
}

/// Decodes the whole bytes in up to four characters, up to the first invalid one.
/// @return bytes written
std::size_t DecodeGroup(const Base64Alphabet& alphabet, std::string_view group, std::uint8_t* out) {
  unsigned bits = 0;
  std::size_t known = 0;
  for (; known < group.size(); ++known) {
    const std::uint8_t value = alphabet.values[static_cast<unsigned char>(group[known])];
    if (value == Base64Alphabet::kInvalid) break;
    bits |= static_cast<unsigned>(value) << (18 - 6 * known);
  }
  const std::size_t whole = known == 0 ? 0 : known - 1;
  for (std::size_t i = 0; i < whole; ++i) out[i] = static_cast<std::uint8_t>(bits >> (16 - 8 * i));
  return whole;
}

/// @param out  room for the decoded text if all of it is valid
/// @return bytes written
std::size_t DecodeInto(std::uint8_t* out, const Base64Alphabet& alphabet, std::string_view text) {
  std::size_t done = DecodeBase64Blocks(alphabet, text, out);
  std::size_t length = done / 4 * 3;
  for (; done < text.size(); done += 4) {
    const std::size_t written = DecodeGroup(alphabet, text.substr(done, 4), out + length);
    length += written;
    if (written < 3) break;
  }
  return length;
}

Core::Ptr<IArray> DecodeBase64(const Base64Alphabet& alphabet, std::string_view text) {
  const std::size_t rest = text.size() % 4;
  const std::size_t maxLength = text.size() / 4 * 3 + (rest == 0 ? 0 : rest - 1);
  auto bytes = NewArray(maxLength);
  const std::size_t length =
      DecodeInto(static_cast<std::uint8_t*>(bytes->GetData()), alphabet, text);
  // If a text is invalid early on, most of the memory would stay unused.
  if (length < maxLength / 2) {
    auto shorter = NewArray(0);
    shorter->SetData(bytes->GetData(), 1, length);
    return shorter;
  }
  bytes->Resize(1, length);
  return bytes;
}

}  // namespace

// Reading the caller's array may release this encoder, but not its alphabet.

bool Base64Impl::Encode(IArray* input, IArray** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&, &alphabet = alphabet_] {
    Core::CheckArgument(input);
    Core::CheckOutPointer(out);
    const ArrayBytes bytes(*input);
    *out = EncodeBase64(alphabet, bytes).Detach();
  });
}

bool Base64Impl::Decode(IArray* input, IArray** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&, &alphabet = alphabet_] {
    Core::CheckArgument(input);
    Core::CheckOutPointer(out);
    const ArrayBytes array(*input);
    const std::span<const std::uint8_t> bytes = array;
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    *out = DecodeBase64(alphabet, text).Detach();
  });
}

}  // namespace Data::impl
