#include "Callers.h"
#include "CallersText.h"
#include "DocumentSupport.h"
#include "SmallStack.h"

namespace Data::tests {

namespace {

std::string Compact(const Ptr<IJsonDocument>& document) {
  return Made<IString>(&IJsonDocument::ToCompactString, document)->GetUtf8();
}

/// The caller's own document, which calls back when it is asked whether it is valid.
class CallersDocument final : public CallersOwn<IJsonDocument> {
 public:
  std::function<void()> onIsValid = [] {};
  Ptr<CallersText> content = Core::MakePtr<CallersText>("[\"a text of more than sixteen bytes\"]");

  void SetContent(const char*, std::uint64_t) override {}
  IString* GetContent() override { return content.Get(); }
  bool ToCompactString(IString**, IErrorCode**) override { return false; }
  bool Equals(IJsonDocument*) override { return false; }
  bool IsValid() override {
    const auto call = onIsValid;
    call();
    return true;
  }
};

}  // namespace

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
  EXPECT_EQ(ThrownBy([&] { document->SetContent(nullptr, 1); }), kNullText);
  const auto compact = [](auto error) {
    return New(Data_CreateJsonDocument)->ToCompactString(Ptr<IString>().Receive(), error);
  };
  EXPECT_EQ(
      Failure(compact),
      "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IString");
}

TEST(JsonDocument, MayDropItsContentWhileItIsAKey) {
  const auto dictionary = New(Data_CreateVariantDictionary);
  const auto document = Core::MakePtr<CallersDocument>();
  document->content->onRead = [&] { document->content.Reset(); };
  const Variant key(document);
  EXPECT_TRUE(dictionary->Set(&key, &key, nullptr));
  EXPECT_FALSE(document->content);
}

TEST(JsonDocument, CompactsWhatIsValid) {
  for (const Case& c : Cases("Json.txt", "compact")) {
    const auto document = Json(c[0]);
    EXPECT_TRUE(document->IsValid()) << c.where;
    EXPECT_EQ(Compact(document), c[1]) << c.where;
    EXPECT_EQ(Compact(Json(c[1])), c[1]) << c.where;
  }
}

TEST(JsonDocument, RejectsWhatIsNotOneStrictValue) {
  for (const Case& c : Cases("Json.txt", "invalid")) {
    const auto document = Json(c[0]);
    EXPECT_FALSE(document->IsValid()) << c.where;
    EXPECT_EQ(Compact(document), "null") << c.where;
    EXPECT_FALSE(document->Equals(document.Get())) << c.where;
  }
}

TEST(JsonDocument, EqualsByValue) {
  for (const Case& c : Cases("Json.txt", "equal")) {
    EXPECT_EQ(Json(c[0])->Equals(Json(c[1]).Get()), c[2].starts_with("yes")) << c.where;
    EXPECT_EQ(Json(c[1])->Equals(Json(c[0]).Get()), c[2].ends_with("yes")) << c.where;
  }
  EXPECT_FALSE(Json("1")->Equals(nullptr));
}

TEST(JsonDocument, ReadsTheContentAsItIsStored) {
  const auto document = Json("[1]");
  document->GetContent()->SetUtf8("[2] x", 5);  // behind its back
  EXPECT_TRUE(document->IsValid());
  EXPECT_EQ(Compact(document), "null");
  document->GetContent()->Clear();
  EXPECT_EQ(Compact(document), "null");
  EXPECT_FALSE(document->Equals(Json("[1]").Get()));
  const auto read = [&](auto error) {
    return Data_JsonToTable(document.Get(), Ptr<ITable>().Receive(), error);
  };
  EXPECT_EQ(Failure(read), "Json document is not valid!");
}

TEST(JsonDocument, ReadsAContentInAnyFormAndLeavesItSo) {
  const auto document = Json("{\"\u00e9\": 1}");
  IString* const content = document->GetContent();
  const void* const wide = content->GetWide();
  const std::uint64_t wideSize = content->GetSize();
  EXPECT_EQ(Compact(document), "{\"\u00e9\":1}");
  EXPECT_TRUE(document->Equals(Json("{\"\u00e9\":1}").Get()));
  Made<ITable>(Data_JsonToTable, document.Get());
  EXPECT_EQ(content->GetData(), wide);
  EXPECT_EQ(content->GetSize(), wideSize) << "a reader does not convert it";
  content->SetMultiByte("[\"\xE9\"]", 5, 1252);
  EXPECT_EQ(Compact(document), "[\"\u00e9\"]");
  EXPECT_TRUE(document->Equals(Json("[\"\u00e9\"]").Get()));
}

TEST(JsonDocument, ComparesWithADocumentOfAProgramsOwn) {
  auto other = Core::MakePtr<CallersDocument>();
  auto document = Json("[\"a text of more than sixteen bytes\"]");
  other->onIsValid = [] { throw std::runtime_error("any other failure"); };
  EXPECT_FALSE(document->Equals(other.Get()));
  other->onIsValid = [] { throw std::bad_alloc(); };
  EXPECT_THROW(document->Equals(other.Get()), std::bad_alloc) << "a lack of memory is no answer";
  IJsonDocument *const bareDocument = document.Get(), *const bareOther = other.Get();
  other->onIsValid = [&] {
    document.Reset();
    other.Reset();
  };
  EXPECT_TRUE(bareDocument->Equals(bareOther)) << "which releases both";
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
  const auto objectOf = [](auto nameOf) {
    std::string text = "{";
    for (int i = 0; i < kMembers; ++i) text += "\"a name " + std::to_string(nameOf(i)) + "\":1,";
    return Json(text + "\"z\":0}");
  };
  const auto left = objectOf([](int i) { return i; }), same = objectOf([](int) { return 0; });
  const auto right = objectOf([](int i) { return kMembers - i - 1; });
  // A quadratic comparison takes minutes.
  EXPECT_TRUE(left->Equals(right.Get()));
  EXPECT_TRUE(same->Equals(same.Get()));
}

}  // namespace Data::tests
