#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr std::uint32_t kUtf8 = 65001;

Ptr<IString> NewString() {
  Ptr<IString> string;
  EXPECT_TRUE(Data_CreateString(string.Receive()));
  return string;
}

Ptr<IString> WideString(std::u16string_view text) {
  const auto string = NewString();
  string->SetWide(text.data(), text.size());
  return string;
}

Ptr<IString> MultiByteString(std::string_view text, std::uint32_t codePage) {
  const auto string = NewString();
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

}  // namespace

TEST(String, FactoryRejectsOnlyANullOutPointer) { EXPECT_FALSE(Data_CreateString(nullptr)); }

TEST(String, IsEmptyWhenNewAndWhenCleared) {
  const auto string = NewString();
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
  const auto string = NewString();
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
  const std::string utf8 = "B\xC3\xA4r, 1 \xE2\x82\xAC", bytes1252 = "B\xE4r, 1 \x80",
                    bytes28605 = "B\xE4r, 1 \xA4";
  const auto fromWide = [&] { return WideString(wide); };
  const auto fromUtf8 = [&] { return MakeString(utf8); };
  const auto from1252 = [&] { return MultiByteString(bytes1252, 1252); };
  const auto from65001 = [&] { return MultiByteString(utf8, kUtf8); };

  EXPECT_EQ(fromWide()->GetUtf8(), utf8);
  EXPECT_EQ(fromWide()->GetMultiByte(1252), bytes1252);
  EXPECT_EQ(fromWide()->GetMultiByte(kUtf8), utf8);
  EXPECT_EQ(WideText(*fromUtf8()), wide);
  EXPECT_EQ(fromUtf8()->GetMultiByte(28605), bytes28605);
  EXPECT_EQ(fromUtf8()->GetMultiByte(kUtf8), utf8);
  EXPECT_EQ(WideText(*from1252()), wide);
  EXPECT_EQ(from1252()->GetUtf8(), utf8);
  EXPECT_EQ(WideText(*from65001()), wide);
  EXPECT_EQ(from65001()->GetUtf8(), utf8);
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

TEST(String, ConversionMendsBrokenText) {
  const struct {
    const char* what;
    std::string text;
    std::u16string wide;
  } cases[] = {
      {"an alien byte", "a\xFFz", u"a\uFFFDz"},
      {"a character broken off", "a\xE2\x82z", u"a\uFFFDz"},
      {"broken off by the end", "a\xF0\x9F\x98", u"a\uFFFD"},
      {"beyond the basic plane", "\xF0\x9F\x98\x80", u"\U0001F600"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MakeString(c.text)->GetUtf8(), c.text) << c.what << ": not read, not checked";
    EXPECT_EQ(WideText(*MakeString(c.text)), c.wide) << c.what;
    const auto string = MakeString(c.text);
    EXPECT_STREQ(string->GetMultiByte(kUtf8), WideString(c.wide)->GetUtf8())
        << c.what << ": UTF-8 asked for as a code page goes through UTF-16";
  }
  const char16_t loneSurrogate[] = {0xD800, u'z'};
  EXPECT_STREQ(WideString({loneSurrogate, 2})->GetUtf8(), "\xEF\xBF\xBDz");
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
  const struct {
    const char* what;
    std::u16string left, right;
    int exact, folded;
  } cases[] = {
      {"equal", u"abc", u"abc", 0, 0},
      {"case", u"abc", u"ABC", 1, 0},
      {"a beginning", u"ab", u"ABC", 1, -1},
      {"longer", u"abc", u"ab", 1, 1},
      {"no letters: [ follows Z", u"[", u"{", -1, -1},
      {"no letters: @ comes before A", u"@", u"`", -1, -1},
      {"letters beyond Z keep their case", u"Ä", u"ä", -1, -1},
      {"folded before it is ordered", u"Z", u"_", -1, 1},
      {"a long common beginning", u"0123456789abcdefghijKLMNopqr", u"0123456789ABCDEFGHIJklmnopqs",
       1, -1},
      {"a zero inside", {u"a\0b", 3}, {u"a\0c", 3}, -1, -1},
  };
  const auto sign = [](std::int32_t order) { return (order > 0) - (order < 0); };
  for (const auto& c : cases) {
    const auto check = [&](IString& left, IString& right, const char* encoding) {
      EXPECT_EQ(sign(left.Compare(&right, true)), c.exact) << c.what << ", " << encoding;
      EXPECT_EQ(sign(left.Compare(&right, false)), c.folded) << c.what << ", " << encoding;
      EXPECT_EQ(sign(right.Compare(&left, false)), -c.folded) << c.what << ", " << encoding;
    };
    const bool hasZero = c.left.find(u'\0') != c.left.npos;
    check(*WideString(c.left), *WideString(c.right), "UTF-16");
    if (hasZero) continue;  // conversions end there
    const std::string left = WideString(c.left)->GetUtf8(), right = WideString(c.right)->GetUtf8();
    check(*MakeString(left), *MakeString(right), "UTF-8");
    check(*MakeString(left), *WideString(c.right), "mixed");
    check(*WideString(c.left), *MakeString(right), "mixed");
    const auto in1252 = WideString(c.left);
    in1252->GetMultiByte(1252);
    check(*in1252, *WideString(c.right), "a code page");
  }
}

TEST(String, CompareConvertsTheOtherText) {
  const auto left = MultiByteString("\x80", 1252), right = WideString(u"€");
  EXPECT_EQ(left->Compare(right.Get(), true), 0);
  EXPECT_EQ(Stored(*right), "\x80\0"s);
  EXPECT_EQ(left->Compare(left.Get(), true), 0) << "against itself";
}

TEST(String, CompareOrdersUnitsAsUnsignedNumbers) {
  EXPECT_GT(MakeString("\xC3\xA4")->Compare(MakeString("z").Get(), true), 0);
  EXPECT_GT(MakeString("\xC3\xA4")->Compare(MakeString("z").Get(), false), 0);
  EXPECT_GT(WideString(u"\xFFFD")->Compare(WideString(u"z").Get(), true), 0);
  // By units a surrogate pair comes before U+FFFD, by UTF-8 bytes after it.
  EXPECT_LT(WideString(u"\U0001F600")->Compare(WideString(u"\uFFFD").Get(), true), 0);
  EXPECT_GT(MakeString("\xF0\x9F\x98\x80")->Compare(MakeString("\xEF\xBF\xBD").Get(), true), 0);
}

TEST(String, ComparesWithNothing) {
  const auto string = MakeString("abc");
  EXPECT_EQ(string->Compare(nullptr, true), -1);
  EXPECT_EQ(NewString()->Compare(nullptr, true), -1);
  EXPECT_EQ(NewString()->Compare(MakeString("12345").Get(), true), -5);
  EXPECT_EQ(NewString()->Compare(WideString(u"12345").Get(), false), -5);
  EXPECT_EQ(NewString()->Compare(NewString().Get(), true), 0);
  EXPECT_EQ(string->Compare(NewString().Get(), true), 1);
  EXPECT_EQ(MakeString("")->Compare(NewString().Get(), true), 0);
}

}  // namespace Data::tests
