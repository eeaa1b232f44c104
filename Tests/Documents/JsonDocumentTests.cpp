#include <chrono>

#include "DocumentSupport.h"
#include "SmallStack.h"

namespace Data::tests {

namespace {

std::string Compact(const Ptr<IJsonDocument>& document) {
  Ptr<IString> text;
  Ptr<IErrorCode> error;
  EXPECT_TRUE(document->ToCompactString(text.Receive(), error.Receive())) << MessageOf(error);
  return std::string(Core::Utf8View(*text));
}

bool AreEqual(std::string_view left, std::string_view right) {
  return Json(left)->Equals(Json(right).Get());
}

double SecondsOf(const std::function<void()>& operation) {
  const auto start = std::chrono::steady_clock::now();
  operation();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

TEST(JsonDocument, IsEmptyAndInvalidAtFirst) {
  EXPECT_FALSE(Data_CreateJsonDocument(nullptr));
  Ptr<IJsonDocument> document;
  ASSERT_TRUE(Data_CreateJsonDocument(document.Receive()));
  EXPECT_FALSE(document->IsValid());
  EXPECT_EQ(document->GetContent(), nullptr);
  EXPECT_FALSE(document->Equals(document.Get()));
  Ptr<IString> text;
  Ptr<IErrorCode> error;
  EXPECT_FALSE(document->ToCompactString(text.Receive(), error.Receive()));
  EXPECT_EQ(
      MessageOf(error),
      "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IString");
}

TEST(JsonDocument, KeepsItsContentByteForByte) {
  const auto document = Json(" [1,\0 2"sv);
  IString* const content = document->GetContent();
  EXPECT_EQ((std::string_view(static_cast<const char*>(content->GetData()), content->GetSize())),
            " [1,\0 2\0"sv);
  EXPECT_FALSE(document->IsValid());
  document->SetContent(content->GetUtf8(), 3);  // from its own content, which it replaces
  EXPECT_STREQ(document->GetContent()->GetUtf8(), " [1");
  document->SetContent(nullptr, 0);
  EXPECT_EQ(document->GetContent()->GetLength(), 0u);
  EXPECT_FALSE(document->IsValid());
  EXPECT_EQ(ThrownBy([&] { document->SetContent(nullptr, 1); }),
            "Pointer of char must not be null!");
}

TEST(JsonDocument, CompactsWhatIsValid) {
  const struct {
    const char* what;
    std::string_view text, compact;
  } cases[] = {
      {"white space", "[ 1 , 2.50, { } ]\r\n\t", "[1,2.5,{}]"},
      {"white space in strings stays", "{ \"a b\" : \" \" }", R"({"a b":" "})"},
      {"a single value", " true ", "true"},
      {"the whole byte-order mark", "\xEF\xBB\xBF{}", "{}"},
      {"its first byte alone", "\xEF{}", "{}"},
      {"its last two bytes", "\xBB\xBF[]", "[]"},
      {"its middle byte left out", "\xEF\xBFnull", "null"},
      {"text ends at its first zero byte", "[1]\0 garbage"sv, "[1]"},
      {"repeated names stay", R"({"a":1,"a":2})", R"({"a":1,"a":2})"},
      {"escapes that need none", R"("\u0041\/\u00e9\ud83d\ude00")", "\"A/\u00e9\U0001F600\""},
      {"escapes in the shortest form",
       R"("\u0022\u005C\u0008\u000c\u000a\u000d\u0009\u001f\u007f")",
       "\"\\\"\\\\\\b\\f\\n\\r\\t\\u001F\x7F\""},
      {"text between escapes", R"("abcdefghijklmnop\nqrstuvwxyz\t0123456789\\")",
       R"("abcdefghijklmnop\nqrstuvwxyz\t0123456789\\")"},
      {"an escaped zero character", R"(["\u0000","a\u0000"])", R"(["\u0000","a\u0000"])"},
      {"bytes that are no UTF-8", "[\"\xFF\xC3\"]", "[\"\xFF\xC3\"]"},
      {"integers to the ends of their ranges",
       "[-9223372036854775808,9223372036854775807,18446744073709551615,-0]",
       "[-9223372036854775808,9223372036854775807,18446744073709551615,0]"},
      {"integers beyond", "[-9223372036854775809,18446744073709551616]",
       "[-9223372036854776000.0,18446744073709552000.0]"},
      {"the form of doubles", "[1.0,1e5,1E+2,-0.0,1e21,1e22,1e-5,1e-7,123456789.125e-3]",
       "[1.0,100000.0,100.0,-0.0,1e21,1e22,0.00001,1e-7,123456.789125]"},
      {"doubles to the last digit", "[0.1,0.30000000000000004,1.7976931348623157e308,5e-324]",
       "[0.1,0.30000000000000004,1.7976931348623157e308,5e-324]"},
      {"doubles in their shortest form", "[67.74268,-77.35595,-58.68384,1e23,0.3]",
       "[67.74268,-77.35595,-58.68384,1e23,0.3]"},
      {"zero with an exponent", "[0e100,0.0e-50,-0e308]", "[0.0,0.0,-0.0]"},
      {"numbers too small", "[1e-400,-1e-400,1e-99999999999999999999,0.0000000000e-2147483639]",
       "[0.0,-0.0,0.0,0.0]"},
      {"a large exponent of a small number", "[0.00001e312]", "[1e307]"},
  };
  for (const auto& c : cases) {
    const auto document = Json(c.text);
    EXPECT_TRUE(document->IsValid()) << c.what;
    EXPECT_EQ(Compact(document), c.compact) << c.what;
    EXPECT_EQ(Compact(Json(Compact(document))), c.compact) << c.what;
  }
}

TEST(JsonDocument, RejectsWhatIsNotOneStrictValue) {
  const struct {
    const char* what;
    std::string_view text;
  } cases[] = {
      {"nothing", ""},
      {"white space alone", " \n"},
      {"a byte-order mark alone", "\xEF\xBB\xBF"},
      {"a mark behind white space", " \xEF\xBB\xBF{}"},
      {"its bytes in the wrong order", "\xBF\xBB{}"},
      {"nothing before a zero byte", "\0{}"sv},
      {"cut by a zero byte", "[1\0]"sv},
      {"two values", "[1] x"},
      {"a comment", "[1] // note"},
      {"a trailing comma in an array", "[1,]"},
      {"a trailing comma in an object", "{\"a\":1,}"},
      {"a missing comma", "[1 2]"},
      {"a missing value", "[,1]"},
      {"a name without quotes", "{a:1}"},
      {"a name without a value", "{\"a\"}"},
      {"the wrong bracket", "[1}"},
      {"open brackets", "[[1]"},
      {"a half literal", "[tru]"},
      {"capitals", "[NULL]"},
      {"NaN", "[NaN]"},
      {"infinity", "[-Infinity]"},
      {"a number too large", "[1e309]"},
      {"one that only its digits make too large", "[1.8e308]"},
      {"one with a long integer part", "[123456789012345678901234567890e300]"},
      {"an endless integer",
       "[111111111111111111111111111111111111111111111111111111111111111111"
       "11111111111111111111111111111111111111111111111111111111111111111111"
       "11111111111111111111111111111111111111111111111111111111111111111111"
       "11111111111111111111111111111111111111111111111111111111111111111111"
       "1111111111111111111111111111111111111111111111111111111]"},
      {"a leading zero", "[01]"},
      {"a plus sign", "[+1]"},
      {"no digits after the point", "[1.]"},
      {"no digits in the exponent", "[1e]"},
      {"a line end in a string", "[\"a\n\"]"},
      {"the last control character in a string", "[\"0123456789abcde\x1F\"]"},
      {"an open string", "[\"abc"},
      {"an unknown escape", R"(["\x"])"},
      {"a short escape", R"(["\u12"])"},
      {"half a surrogate pair", R"(["\ud83d"])"},
      {"a pair of the wrong halves", R"(["\ud83d\u0041"])"},
  };
  for (const auto& c : cases) {
    const auto document = Json(c.text);
    EXPECT_FALSE(document->IsValid()) << c.what;
    EXPECT_EQ(Compact(document), "null") << c.what;
    EXPECT_FALSE(document->Equals(document.Get())) << c.what;
  }
}

TEST(JsonDocument, CompactingChecksTheOutPointer) {
  const auto document = Json("{}");
  Ptr<IErrorCode> error;
  EXPECT_FALSE(document->ToCompactString(nullptr, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::IString must not be null! Address of "
            "return must be specified!");
  const auto held = Core::MakeString("held");
  IString* out = held.Get();
  EXPECT_FALSE(document->ToCompactString(&out, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::IString must be null in order to avoid memory "
            "leaks!");
  EXPECT_EQ(error->GetCode(), 2u);
  EXPECT_EQ(out, held.Get());
}

TEST(JsonDocument, EqualsByValue) {
  const struct {
    const char* what;
    std::string_view left, right;
    bool equal, equalSwapped;
  } cases[] = {
      {"white space", "[1, 2]", " [1,2]", true, true},
      {"order of members", R"({"a":1,"b":[2]})", R"({"b":[2],"a":1})", true, true},
      {"order of elements", "[1,2]", "[2,1]", false, false},
      {"another name", R"({"a":1})", R"({"b":1})", false, false},
      {"names of one length", R"({"ab":1,"cd":2})", R"({"ab":1,"ce":2})", false, false},
      {"a prefix", "[1]", "[1,2]", false, false},
      {"types", "[]", "{}", false, false},
      {"true and false", "true", "false", false, false},
      {"escapes", R"("\u0041")", R"("A")", true, true},
      {"a string and its number", "\"1\"", "1", false, false},
      {"a double and an integer", "[1.0,-2.0]", "[1,-2]", true, true},
      {"a double and the integer it rounds to", "9007199254740992.0", "9007199254740993", true,
       true},
      {"zeros of either sign", "0.0", "-0.0", true, true},
      {"integers by their 64 bits", "-1", "18446744073709551615", true, true},
      {"deep down", R"([[{"a":[{}]}]])", R"([[{"a":[[]]}]])", false, false},
      {"a repeated name meets the first on the right", R"({"a":1,"a":1})", R"({"a":1,"a":2})", true,
       false},
      {"so it may differ from itself", R"({"a":1,"a":2})", R"({"a":1,"a":2})", false, false},
      {"the count is that of the members", R"({"a":1,"a":1})", R"({"a":1})", false, false},
      {"names that only the right has", R"({"a":1,"a":1})", R"({"a":1,"b":1})", true, false},
      {"an invalid document", "[", "[", false, false},
      {"a byte-order mark", "\xEF\xBB\xBF[1]", "[1]", true, true},
      {"text behind a zero byte", "[1]\0[2]"sv, "[1]\0x"sv, true, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(AreEqual(c.left, c.right), c.equal) << c.what;
    EXPECT_EQ(AreEqual(c.right, c.left), c.equalSwapped) << c.what;
  }
  EXPECT_FALSE(Json("1")->Equals(nullptr));
}

TEST(JsonDocument, EqualsWideObjectsByTheSameRules) {
  // Wide objects are searched another way than narrow ones.
  const auto object = [](std::string_view first, std::string_view last) {
    std::string text = "{";
    for (int i = 0; i < 40; ++i) {
      const int name = first.empty() ? 39 - i : i;
      text += "\"n" + std::to_string(name) + "\":" + std::to_string(name) + ",";
    }
    return text.append(first) + "\"z\":0" + std::string(last) + "}";
  };
  EXPECT_TRUE(AreEqual(object("\"a\":1,", ""), object("\"a\":1,", "")));
  EXPECT_TRUE(AreEqual(object("", ""), object("\"n0\":0,", "").replace(1, 7, "")));
  EXPECT_FALSE(AreEqual(object("\"a\":1,", ""), object("\"a\":2,", "")));
  EXPECT_TRUE(AreEqual(object("\"a\":1,", ",\"a\":1"), object("\"a\":1,", ",\"a\":2")));
  EXPECT_FALSE(AreEqual(object("\"a\":1,", ",\"a\":2"), object("\"a\":1,", ",\"a\":1")));
}

TEST(JsonDocument, ReadsTheContentAsItIsStored) {
  const auto document = Json("[1]");
  document->GetContent()->SetUtf8("[2] x", 5);  // behind its back
  EXPECT_TRUE(document->IsValid());
  EXPECT_EQ(Compact(document), "null");
  document->GetContent()->Clear();
  EXPECT_EQ(Compact(document), "null");
  EXPECT_FALSE(document->Equals(Json("[1]").Get()));
}

TEST(JsonDocument, TakesNestingOfAnyDepth) {
  OnSmallStack([] {
    constexpr std::size_t kDepth = 1'000'000;
    const std::string arrays = Nested("[ ", "1", "]", kDepth);
    const std::string objects = Nested("{\"a\":", "{}", "}", kDepth);
    const auto deepArray = Json(arrays), deepObject = Json(objects);
    EXPECT_TRUE(deepArray->IsValid() && deepObject->IsValid());
    EXPECT_TRUE(Compact(deepArray) == Nested("[", "1", "]", kDepth));
    EXPECT_TRUE(Compact(deepObject) == objects);
    EXPECT_TRUE(deepArray->Equals(Json(Compact(deepArray)).Get()));
    EXPECT_TRUE(deepObject->Equals(deepObject.Get()));
    EXPECT_FALSE(deepArray->Equals(Json(Nested("[", "2", "]", kDepth)).Get()));
    EXPECT_FALSE(Json(Repeated("[", kDepth))->IsValid());
    EXPECT_FALSE(Json(Repeated("{\"a\":[", kDepth))->IsValid());
  });
}

TEST(JsonDocument, TakesWideObjectsInLinearTime) {
  constexpr int kMembers = 100'000;
  std::string forward = "{", backward = "{", repeated = "{";
  for (int i = 0; i < kMembers; ++i) {
    forward += "\"a name of one length " + std::to_string(1'000'000 + i) + "\":1,";
    backward += "\"a name of one length " + std::to_string(1'000'000 + kMembers - i - 1) + "\":1,";
    repeated += "\"a\":0,";
  }
  const std::string end = "\"z\":0}";
  const auto left = Json(forward + end), right = Json(backward + end), same = Json(repeated + end);
  bool areEqual = false;
  const double seconds =
      SecondsOf([&] { areEqual = left->Equals(right.Get()) && same->Equals(same.Get()); });
  EXPECT_TRUE(areEqual);
  EXPECT_LT(seconds, 10) << "a quadratic comparison takes minutes";
}

}  // namespace Data::tests
