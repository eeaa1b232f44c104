// Every code page in both directions: text that was decoded from a page is the same after it is
// encoded and decoded again.

#include "Data/Interfaces/IString.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

constexpr std::uint32_t kPages[] = {0,     1,     437,   850,   852,   866,   874,   932,   936,
                                    949,   950,   1250,  1251,  1252,  1253,  1254,  1255,  1256,
                                    1257,  1258,  20866, 28591, 28592, 28593, 28594, 28595, 28596,
                                    28597, 28598, 28599, 28603, 28605, 65001};

std::u16string Decoded(std::string_view bytes, std::uint32_t page) {
  const auto text = New(Data_CreateString);
  text->SetMultiByte(bytes.data(), bytes.size(), page);
  return text->GetWide();
}

std::string Encoded(std::u16string_view units, std::uint32_t page) {
  const auto text = New(Data_CreateString);
  text->SetWide(units.data(), units.size());
  return text->GetMultiByte(page);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, size);
  const std::uint32_t page = kPages[input.Below(std::size(kPages))];
  // The first round replaces what the page cannot represent; after that nothing changes.
  const std::u16string once = Decoded(Encoded(Decoded(input.Rest(), page), page), page);
  Require(Decoded(Encoded(once, page), page) == once);
  std::u16string units;
  while (!input.IsEmpty()) units += static_cast<char16_t>(input.Byte() | input.Byte() << 8);
  const std::u16string mapped = Decoded(Encoded(units, page), page);
  Require(Decoded(Encoded(mapped, page), page) == mapped);
  return 0;
}
