#include "CallersText.h"
#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr std::uint32_t kUtf8 = 65001;

Ptr<IString> WideString(std::u16string_view text) {
  const auto string = New(Data_CreateString);
  string->SetWide(text.data(), text.size());
  return string;
}

Ptr<IString> MultiByteString(std::string_view text, std::uint32_t codePage) {
  const auto string = New(Data_CreateString);
  string->SetMultiByte(text.data(), text.size(), codePage);
  return string;
}

/// The bytes that the string holds, terminator included.
std::string Stored(IString& string) {
  return {static_cast<const char*>(string.GetData()), string.GetSize()};
}

std::u16string WideText(IString& string) {
  const char16_t* text = string.GetWide();
  return {text, string.GetLength()};
}

std::string RepeatedText(std::string_view part, std::size_t times) {
  std::string text;
  for (std::size_t i = 0; i < times; ++i) text += part;
  return text;
}

/// The same text in each form that a string can hold.
std::vector<Ptr<IString>> InEveryForm(const std::string& utf8) {
  const auto wide = MakeString(utf8), in1252 = MakeString(utf8);
  wide->GetWide();
  in1252->GetMultiByte(1252);
  return {MakeString(utf8), wide, in1252};
}

int Sign(std::int32_t order) { return (order > 0) - (order < 0); }

}  // namespace

TEST(String, IsEmptyWhenNewAndWhenCleared) {
  const auto string = New(Data_CreateString);
  for (const char* what : {"new", "cleared"}) {
    EXPECT_EQ(string->GetLength(), 0u) << what;
    EXPECT_EQ(string->GetSize(), 0u) << what;
    EXPECT_STREQ(string->GetUtf8(), "") << what;
    EXPECT_STREQ(string->GetMultiByte(1252), "") << what;
    EXPECT_EQ(*string->GetWide(), u'\0') << what;
    EXPECT_EQ(string->GetSize(), 0u) << what << ": reading an empty string converts nothing";
    string->SetUtf8("some text", 9);
    EXPECT_EQ(string->Clear(), string->GetData());
  }
}

TEST(String, StoresWhatIsSetWithATerminator) {
  const auto string = New(Data_CreateString);
  string->SetWide(u"abc", 3);
  EXPECT_EQ(string->GetLength(), 3u);
  EXPECT_EQ(Stored(*string), "a\0b\0c\0\0\0"s);
  string->SetMultiByte("a\x80", 2, 1252);
  EXPECT_EQ(string->GetLength(), 2u);
  EXPECT_EQ(Stored(*string), "a\x80\0"s);
  string->SetUtf8("a\0b", 3);
  EXPECT_EQ(string->GetLength(), 3u) << "an embedded zero counts";
  EXPECT_EQ(Stored(*string), "a\0b\0"s);
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
  for (const std::size_t repeats : {1u, 50u}) {
    const std::string text = RepeatedText("0123456789", repeats);
    const auto string = MakeString(text);
    const char* own = string->GetUtf8();
    string->SetUtf8(own + 3, text.size() - 3);
    EXPECT_EQ(string->GetUtf8(), text.substr(3));
    own = string->GetUtf8();
    string->SetMultiByte(own, text.size() - 3, 1252);
    EXPECT_EQ(string->GetMultiByte(0), text.substr(3));
  }
  // A byte text read as UTF-16 units needs a larger buffer than it lies in.
  const auto string = MakeString(std::string(96, 'x'));
  string->SetWide(reinterpret_cast<const char16_t*>(string->GetUtf8()), 48);
  EXPECT_EQ(WideText(*string), std::u16string(48, u'\x7878'));
}

TEST(String, ConvertsInPlaceToWhatIsRead) {
  const auto string = WideString(u"abc");
  EXPECT_STREQ(string->GetUtf8(), "abc");
  EXPECT_EQ(Stored(*string), "abc\0"s);
  EXPECT_STREQ(string->GetMultiByte(1252), "abc");
  EXPECT_EQ(string->GetSize(), 4u);
  EXPECT_EQ(WideText(*string), u"abc");
  EXPECT_EQ(string->GetSize(), 8u);
}

TEST(String, ReadsEveryEncodingFromEveryOther) {
  const std::u16string wide = u"Bär, 1 €";
  const std::string utf8 = "B\xC3\xA4r, 1 \xE2\x82\xAC", in1252 = "B\xE4r, 1 \x80",
                    in28605 = "B\xE4r, 1 \xA4";
  EXPECT_EQ(WideString(wide)->GetUtf8(), utf8);
  EXPECT_EQ(WideString(wide)->GetMultiByte(1252), in1252);
  EXPECT_EQ(WideString(wide)->GetMultiByte(kUtf8), utf8);
  EXPECT_EQ(WideText(*MakeString(utf8)), wide);
  EXPECT_EQ(MakeString(utf8)->GetMultiByte(28605), in28605);
  EXPECT_EQ(WideText(*MultiByteString(in1252, 1252)), wide);
  EXPECT_EQ(MultiByteString(in1252, 1252)->GetUtf8(), utf8);
  EXPECT_EQ(WideText(*MultiByteString(utf8, kUtf8)), wide);
  EXPECT_EQ(MultiByteString(utf8, kUtf8)->GetUtf8(), utf8);

  const auto invalid = MakeString("a\xFFz");
  EXPECT_STREQ(invalid->GetUtf8(), "a\xFFz") << "not converted, not checked";
  EXPECT_STREQ(invalid->GetMultiByte(kUtf8), "a\xEF\xBF\xBDz") << "converted through UTF-16";
}

TEST(String, MultiByteTextIsGivenAsItIsForAnyCodePage) {
  const auto string = MultiByteString("B\xE4r", 1252);
  EXPECT_STREQ(string->GetMultiByte(kUtf8), "B\xE4r");
  EXPECT_STREQ(string->GetMultiByte(932), "B\xE4r");
  EXPECT_EQ(WideText(*string), u"Bär") << "still in its own code page";
  EXPECT_STREQ(string->GetMultiByte(850), "B\x84r");
  EXPECT_EQ(WideText(*string), u"Bär") << "the new code page is the one it was converted to";
}

TEST(String, ConversionEndsAtTheFirstZero) {
  for (const std::size_t before : {0u, 2u, 15u, 16u, 17u, 300u}) {
    const std::string text = std::string(before, 'a') + "\0tail"s + std::string(40, 'b');
    const auto string = MakeString(text);
    EXPECT_EQ(string->GetLength(), text.size());
    EXPECT_EQ(WideText(*string), std::u16string(before, u'a'));
    const auto wide = WideString(std::u16string(text.begin(), text.end()));
    EXPECT_EQ(wide->GetUtf8(), std::string(before, 'a'));
    EXPECT_EQ(wide->GetLength(), before);
  }
}

TEST(String, UnknownCodePageGivesAnEmptyText) {
  const auto string = WideString(u"abc");
  EXPECT_STREQ(string->GetMultiByte(54321), "");
  EXPECT_EQ(string->GetSize(), 1u);
  const auto unreadable = MultiByteString("abc", 54321);
  EXPECT_STREQ(unreadable->GetMultiByte(1252), "abc");
  EXPECT_STREQ(unreadable->GetUtf8(), "");
}

TEST(String, ConvertsTextsOfAnyLength) {
  // Around the sizes where the way of storing changes, with the most and the
  // least bytes that a character can need.
  for (const std::size_t length : {1u, 15u, 16u, 31u, 32u, 33u, 255u, 256u, 257u, 5000u}) {
    const struct {
      std::string utf8;
      std::u16string wide;
    } cases[] = {
        {std::string(length, 'q'), std::u16string(length, u'q')},
        {RepeatedText("\xE2\x82\xAC", length), std::u16string(length, u'€')},
        {std::string(length, 'q') + "\xC3\xA4", std::u16string(length, u'q') + u'ä'},
    };
    for (const auto& c : cases) {
      const auto string = MakeString(c.utf8);
      EXPECT_EQ(WideText(*string), c.wide) << length;
      EXPECT_EQ(string->GetUtf8(), c.utf8) << length;
      EXPECT_EQ(string->GetSize(), c.utf8.size() + 1) << length;
      string->SetUtf8(c.utf8.data(), 1);
      EXPECT_EQ(string->GetSize(), 2u) << length;
    }
  }
}

TEST(String, ComparesTextsInTheEncodingOfTheFirst) {
  for (const Case& c : Cases("Text.txt", "comparisons")) {
    const int exact = std::stoi(c.fields[2]), folded = std::stoi(c.fields[3]);
    for (const std::size_t i : {0, 1, 2})
      for (const std::size_t j : {0, 1, 2}) {
        const auto left = InEveryForm(c.fields[0])[i], right = InEveryForm(c.fields[1])[j];
        EXPECT_EQ(Sign(left->Compare(right.Get(), true)), exact) << c.where;
        EXPECT_EQ(Sign(left->Compare(right.Get(), false)), folded) << c.where;
        EXPECT_EQ(Sign(right->Compare(left.Get(), false)), -folded) << c.where;
      }
  }
}

// Equal beginnings are skipped in blocks.
TEST(String, ComparesUnitsAtEveryPosition) {
  const std::string text(70, 'm');
  for (std::size_t at = 0; at < text.size(); ++at) {
    for (const char c : {'a', 'M', 'n'}) {
      std::string changed = text;
      changed[at] = c;
      const int exact = c < 'm' ? -1 : 1, folded = c == 'M' ? 0 : exact;
      const auto lefts = InEveryForm(changed), rights = InEveryForm(text);
      for (const std::size_t i : {0, 1, 2}) {
        EXPECT_EQ(lefts[i]->Compare(rights[i].Get(), true), exact) << c << " at " << at;
        EXPECT_EQ(lefts[i]->Compare(rights[i].Get(), false), folded) << c << " at " << at;
      }
    }
    const auto beginning = MakeString(text.substr(0, at));
    EXPECT_EQ(beginning->Compare(MakeString(text).Get(), true), -1) << at;
  }
}

TEST(String, CompareConvertsTheOtherText) {
  const auto left = MultiByteString("\x80", 1252), right = WideString(u"€");
  EXPECT_EQ(left->Compare(right.Get(), true), 0);
  EXPECT_EQ(Stored(*right), "\x80\0"s);
  EXPECT_EQ(left->Compare(left.Get(), true), 0) << "against itself";
}

TEST(String, CompareOrdersPairsByTheEncoding) {
  const char *const pair = "\xF0\x9F\x98\x80", *const last = "\xEF\xBF\xBD";
  EXPECT_LT(InEveryForm(pair)[1]->Compare(MakeString(last).Get(), true), 0) << "by surrogates";
  EXPECT_GT(MakeString(pair)->Compare(InEveryForm(last)[1].Get(), true), 0) << "by UTF-8";
}

TEST(String, ComparesWithZerosAndWithNothing) {
  EXPECT_EQ(MakeString("a\0b"sv)->Compare(MakeString("a\0c"sv).Get(), true), -1);
  const auto string = MakeString("abc"), none = New(Data_CreateString);
  EXPECT_EQ(string->Compare(nullptr, true), -1);
  EXPECT_EQ(none->Compare(nullptr, true), -1);
  EXPECT_EQ(none->Compare(MakeString("12345").Get(), true), -5);
  EXPECT_EQ(none->Compare(WideString(u"12345").Get(), false), -5);
  EXPECT_EQ(none->Compare(none.Get(), true), 0);
  EXPECT_EQ(string->Compare(none.Get(), true), 1);
  EXPECT_EQ(MakeString("")->Compare(none.Get(), true), 0);
}

TEST(String, ComparesWithATextOfACallersOwn) {
  for (const std::size_t form : {0, 1, 2}) {
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
    EXPECT_EQ(with(same.c_str(), [](auto&) {}), 0);
    EXPECT_EQ(with(nullptr, [](auto&) {}), 1) << "null counts as empty";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string.Reset(); }), 0) << "released";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string->Clear(); }), -1) << "cleared";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string->SetWide(u"z", 1); }), 1) << "replaced";
    EXPECT_EQ(with(same.c_str(), [](auto& string) { string->GetUtf8(); }), 0) << "converted";
  }
}

}  // namespace Data::tests
