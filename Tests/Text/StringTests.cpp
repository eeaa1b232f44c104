#include <sstream>

#include "CallersText.h"
#include "Prelude.h"

namespace Data::tests {

namespace {

/// The text as a string that holds it in a form: "utf8", "wide" or the number of a code page; for
/// "new" a string that was never set.
Ptr<IString> StringOf(std::string_view text, const std::string& form = "utf8") {
  const auto string = New(Data_CreateString);
  if (form == "new") return string;
  if (form == "utf8") {
    string->SetUtf8(text.data(), text.size());
  } else if (form == "wide") {
    const auto source = MakeString(text);
    const char16_t* units = source->GetWide();
    string->SetWide(units, source->GetLength());
  } else {
    string->SetMultiByte(text.data(), text.size(), static_cast<std::uint32_t>(std::stoul(form)));
  }
  return string;
}

/// Reads the string in a form and returns the address of the text.
const void* Read(IString& string, const std::string& form) {
  if (form == "utf8") return string.GetUtf8();
  if (form == "wide") return string.GetWide();
  return string.GetMultiByte(static_cast<std::uint32_t>(std::stoul(form)));
}

/// The bytes that the string holds, terminator included.
std::string Stored(IString& string) {
  return {static_cast<const char*>(string.GetData()), string.GetSize()};
}

std::u16string WideText(IString& string) {
  const char16_t* text = string.GetWide();
  return {text, string.GetLength()};
}

/// The same text in each form that a string can hold.
std::vector<Ptr<IString>> InEveryForm(const std::string& utf8) {
  std::vector<Ptr<IString>> strings;
  for (const char* const form : {"utf8", "wide", "1252"}) {
    strings.push_back(MakeString(utf8));
    Read(*strings.back(), form);
  }
  return strings;
}

/// Compares two texts, each in every form.
void ExpectOrder(const std::string& left, const std::string& right, int exact, int folded) {
  for (const std::size_t i : {0u, 1u, 2u})
    for (const std::size_t j : {0u, 1u, 2u}) {
      const auto first = InEveryForm(left)[i], second = InEveryForm(right)[j];
      EXPECT_EQ(first->Compare(second.Get(), true), exact) << left << " and " << right;
      EXPECT_EQ(first->Compare(second.Get(), false), folded) << left << " and " << right;
      EXPECT_EQ(second->Compare(first.Get(), false), -folded) << left << " and " << right;
    }
}

}  // namespace

TEST(String, IsEmptyWhenNewAndWhenCleared) {
  const auto string = New(Data_CreateString);
  for (const char* what : {"new", "cleared"}) {
    EXPECT_EQ(string->GetLength() + string->GetSize(), 0u) << what;
    EXPECT_STREQ(string->GetUtf8(), "") << what;
    EXPECT_STREQ(string->GetMultiByte(1252), "") << what;
    EXPECT_EQ(*string->GetWide(), u'\0') << what;
    EXPECT_EQ(string->GetSize(), 0u) << what << ": reading an empty string converts nothing";
    string->SetUtf8("some text", 9);
    EXPECT_EQ(string->Clear(), string->GetData());
  }
}

TEST(String, StoresWhatIsSetAndConvertsItInPlace) {
  for (const Case& c : Cases("Text.txt", "strings")) {
    const auto string = StringOf(c[1], c.fields[0]);
    std::string form = c.fields[0];
    for (std::istringstream forms(c.fields[2]); forms >> form;)
      EXPECT_EQ(Read(*string, form), string->GetData()) << c.where;
    EXPECT_EQ(Stored(*string), c[3]) << c.where;
    EXPECT_EQ(std::to_string(string->GetLength()), c[4]) << c.where;
  }
  const auto string = MakeString("text");
  string->SetUtf8(nullptr, 0);
  EXPECT_EQ(Stored(*string), "\0"s) << "an empty text is not an empty string";
  string->SetWide(nullptr, 0);
  EXPECT_EQ(Stored(*string), "\0\0"s);
}

TEST(String, RejectsWhatItCannotStore) {
  const auto string = MakeString("kept");
  EXPECT_EQ(ThrownBy([&] { string->SetUtf8(nullptr, 1); }), "Pointer of char must not be null!");
  EXPECT_EQ(ThrownBy([&] { string->SetWide(nullptr, 1); }),
            "Pointer of char16_t must not be null!");
  EXPECT_EQ(ThrownBy([&] { string->SetUtf8("", UINT64_MAX); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { string->SetMultiByte("", UINT64_MAX / 2, 932); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { string->SetWide(u"", (UINT64_MAX >> 1) + 1); }), "vector too long")
      << "twice this length is no size at all";
  EXPECT_STREQ(string->GetUtf8(), "kept");
}

TEST(String, SetsRangesOfItsOwnText) {
  for (const std::size_t length : {0u, 500u}) {
    const std::string text = std::string(length, 'a') + "0123456789";
    const auto string = MakeString(text);
    string->SetUtf8(string->GetUtf8() + 3, text.size() - 3);
    EXPECT_EQ(string->GetUtf8(), text.substr(3));
    string->SetMultiByte(string->GetUtf8(), text.size() - 3, 1252);
    EXPECT_EQ(string->GetMultiByte(0), text.substr(3));
  }
  // Bytes that are read as UTF-16 units need a larger buffer than they are in.
  const auto string = MakeString(std::string(96, 'x'));
  string->SetWide(reinterpret_cast<const char16_t*>(string->GetUtf8()), 48);
  EXPECT_EQ(WideText(*string), std::u16string(48, u'\x7878'));
}

// Around the lengths where the way of storing changes, with characters of few and of many bytes.
TEST(String, ConvertsTextsOfAnyLengthUpToTheirFirstZero) {
  for (const std::size_t length : {0u, 1u, 15u, 16u, 31u, 32u, 33u, 255u, 256u, 257u, 5000u}) {
    for (const std::u16string& wide : {std::u16string(length, u'q'), std::u16string(length, u'€'),
                                       std::u16string(length, u'q') + u'€'}) {
      const auto most = static_cast<std::size_t>(std::ranges::count(wide, u'€'));
      const auto string = New(Data_CreateString);
      for (const bool hasTail : {false, true}) {
        const std::u16string set = hasTail ? wide + u"\0the rest"s : wide;
        string->SetWide(set.data(), set.size());
        const std::string utf8 = string->GetUtf8();
        EXPECT_EQ(string->GetSize(), wide.size() + 2 * most + 1);
        if (hasTail) string->SetUtf8((utf8 + "\0the rest"s).data(), utf8.size() + 9);
        EXPECT_EQ(WideText(*string), wide) << length;
        EXPECT_EQ(string->GetMultiByte(1252),
                  std::string(wide.size() - most, 'q') + std::string(most, '\x80'));
        EXPECT_EQ(string->GetUtf8(), utf8) << length;
      }
    }
  }
}

TEST(String, ComparesTextsInTheEncodingOfTheFirst) {
  for (const Case& c : Cases("Text.txt", "comparisons"))
    ExpectOrder(c.fields[0], c.fields[1], std::stoi(c.fields[2]), std::stoi(c.fields[3]));
}

// Equal beginnings are skipped in blocks.
TEST(String, ComparesUnitsAtEveryPosition) {
  const std::string text(70, 'm');
  for (std::size_t at = 0; at < text.size(); ++at) {
    for (const char c : {'a', 'M', 'n'}) {
      std::string changed = text;
      changed[at] = c;
      const int exact = c < 'm' ? -1 : 1;
      ExpectOrder(changed, text, exact, c == 'M' ? 0 : exact);
    }
    ExpectOrder(text.substr(0, at), text, -1, -1);
  }
}

TEST(String, CompareConvertsTheOtherText) {
  for (const Case& c : Cases("Text.txt", "comparisons of forms")) {
    const auto left = StringOf(c[1], c.fields[0]), right = StringOf(c[3], c.fields[2]);
    EXPECT_EQ(std::to_string(left->Compare(right.Get(), true)), c[4]) << c.where;
    EXPECT_EQ(Stored(*right), c[5]) << c.where;
    EXPECT_EQ(left->Compare(left.Get(), true), 0) << c.where;
    EXPECT_EQ(left->Compare(nullptr, true), -1) << c.where;
  }
}

TEST(String, ComparesWithTextObjectsOfTheCaller) {
  for (const std::size_t form : {0u, 1u, 2u}) {
    const auto with = [&](const char* text, std::function<void(Ptr<IString>&)> onRead) {
      auto string = InEveryForm(std::string(100, 'm'))[form];
      auto other = Core::MakePtr<CallersText>(text);
      other->onRead = [&] {
        onRead(string);
        other.Reset();
      };
      return string->Compare(other.Get(), true);
    };
    const std::string same(100, 'm');
    EXPECT_EQ(with(nullptr, [](auto&) {}), 1) << "null counts as empty";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string.Reset(); }), 0) << "released";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string->Clear(); }), -1) << "cleared";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string->SetWide(u"z", 1); }), 1) << "replaced";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string->GetUtf8(); }), 0) << "converted";
  }
}

}  // namespace Data::tests
