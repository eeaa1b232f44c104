#include "Text/Base64Impl.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

#include "Containers/ArrayImpl.h"
#include "Core/Guard.h"
#include "Core/Ptr.h"
#include "Text/ArrayBytes.h"
#include "Text/Base64Blocks.h"

namespace Data::impl {

using Interfaces::IArray;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// One to three bytes as two to four characters; missing bytes count as zero.
void EncodeGroup(const Base64Alphabet& alphabet, std::span<const std::uint8_t> group,
                 std::uint8_t* out) {
  unsigned bits = 0;
  for (std::size_t i = 0; i < 3; ++i) bits = bits << 8 | (i < group.size() ? group[i] : 0u);
  for (std::size_t i = 0; i <= group.size(); ++i)
    out[i] = static_cast<std::uint8_t>(alphabet.characters[bits >> (18 - 6 * i) & 0x3F]);
}

Bytes EncodeBase64(const Base64Alphabet& alphabet, std::span<const std::uint8_t> bytes) {
  const std::size_t rest = bytes.size() % 3, groups = bytes.size() / 3;
  const std::size_t lastGroup = rest == 0 ? 0 : alphabet.isPadded ? 4 : rest + 1;
  Bytes text(4 * groups + lastGroup, static_cast<std::uint8_t>('='));
  std::size_t done = EncodeBase64Blocks(alphabet, bytes, reinterpret_cast<char*>(text.data()));
  for (std::uint8_t* out = text.data() + done / 3 * 4; done < bytes.size(); done += 3, out += 4)
    EncodeGroup(alphabet, bytes.subspan(done, std::min<std::size_t>(3, bytes.size() - done)), out);
  return text;
}

/// The whole bytes in up to four characters, up to the first foreign one.
/// @return bytes written
std::size_t DecodeGroup(const Base64Alphabet& alphabet, std::string_view group, std::uint8_t* out) {
  unsigned bits = 0;
  std::size_t known = 0;
  for (; known < group.size(); ++known) {
    const std::uint8_t value = alphabet.values[static_cast<unsigned char>(group[known])];
    if (value == Base64Alphabet::kForeign) break;
    bits |= static_cast<unsigned>(value) << (18 - 6 * known);
  }
  const std::size_t whole = known == 0 ? 0 : known - 1;
  for (std::size_t i = 0; i < whole; ++i) out[i] = static_cast<std::uint8_t>(bits >> (16 - 8 * i));
  return whole;
}

Bytes DecodeBase64(const Base64Alphabet& alphabet, std::string_view text) {
  const std::size_t rest = text.size() % 4;
  Bytes bytes(text.size() / 4 * 3 + (rest == 0 ? 0 : rest - 1));
  std::size_t done = DecodeBase64Blocks(alphabet, text, bytes.data());
  std::size_t length = done / 4 * 3;
  for (; done < text.size(); done += 4) {
    const std::size_t written = DecodeGroup(alphabet, text.substr(done, 4), bytes.data() + length);
    length += written;
    if (written < 3) break;
  }
  bytes.resize(length);
  // Text that broke off early leaves room for all that did not come.
  if (bytes.capacity() / 2 > length) bytes.shrink_to_fit();
  return bytes;
}

}  // namespace

bool Base64Impl::Encode(IArray* input, IArray** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(input);
    Core::CheckOutPointer(out);
    *out = Core::MakePtr<ArrayImpl>(EncodeBase64(alphabet_, BytesOf(*input))).Detach();
  });
}

bool Base64Impl::Decode(IArray* input, IArray** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(input);
    Core::CheckOutPointer(out);
    const auto bytes = BytesOf(*input);
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    *out = Core::MakePtr<ArrayImpl>(DecodeBase64(alphabet_, text)).Detach();
  });
}

}  // namespace Data::impl
