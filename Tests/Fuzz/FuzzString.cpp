// A sequence of string operations: UTF-8 text ends with a zero at its length, lengths are
// consistent, and a text equals itself.

#include "Data/Interfaces/IString.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

void Step(IString& text, IString& other, Input& input) {
  constexpr std::uint32_t kPages[] = {65001, 1252, 932, 0, 12345};
  const std::uint32_t page = kPages[input.Below(std::size(kPages))], step = input.Below(7);
  const std::string bytes = step < 3 ? input.Text(40) : "";
  switch (step) {
    case 0: {
      std::u16string units(bytes.size() / 2, 0);
      std::memcpy(units.data(), bytes.data(), units.size() * 2);
      return text.SetWide(units.data(), units.size());
    }
    case 1:
      return text.SetMultiByte(bytes.data(), bytes.size(), page);
    case 2:
      text.SetUtf8(bytes.data(), bytes.size());
      return Require(text.GetLength() == bytes.size() &&
                     std::memcmp(text.GetData(), bytes.data(), bytes.size()) == 0);
    case 3:
      text.Clear();
      return Require(text.GetLength() == 0);
    case 4:
      return Require(text.GetMultiByte(page) != nullptr);
    case 5:
      return Require(std::char_traits<char16_t>::length(text.GetWide()) <= text.GetLength());
    default:
      Require(text.GetUtf8()[text.GetLength()] == 0);
      Require(text.Compare(&text, true) == 0 && text.Compare(nullptr, true) == -1);
      if (text.Compare(&other, true) == 0) Require(text.Compare(&other, false) == 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, size);
  const auto text = New(Data_CreateString), other = New(Data_CreateString);
  while (!input.IsEmpty()) {
    const bool isOther = input.Flag();
    Step(isOther ? *other : *text, isOther ? *text : *other, input);
  }
  return 0;
}
