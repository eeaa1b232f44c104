#include "CallersText.h"
#include "DocumentSupport.h"
#include "SmallStack.h"

namespace Data::tests {

namespace {

Ptr<IXmlDocument> Xml(std::string_view text) { return DocumentOf(Data_CreateXmlDocument, text); }
Ptr<IHtmlDocument> Html(std::string_view text) { return DocumentOf(Data_CreateHtmlDocument, text); }
Ptr<IRtfDocument> Rtf(std::string_view text) { return DocumentOf(Data_CreateRtfDocument, text); }

bool AreEqual(std::string_view left, std::string_view right) {
  return Xml(left)->Equals(Xml(right).Get());
}

/// The caller's own document.
struct CallersDocument final : CallersOwn<IHtmlDocument> {
  Ptr<CallersText> content = Core::MakePtr<CallersText>("<!DOCTYPE HTML>");

  void SetContent(const char*, std::uint64_t) override {}
  IString* GetContent() override { return content.Get(); }
  bool Equals(IHtmlDocument*) override { return false; }
  bool IsValid() override { return true; }
};

template <class Interface>
void CheckNewDocument(bool (*factory)(Interface**), const char* valid) {
  const auto document = New(factory), other = DocumentOf(factory, valid);
  EXPECT_TRUE(other->IsValid());
  EXPECT_FALSE(document->IsValid());
  EXPECT_EQ(document->GetContent(), nullptr);
  EXPECT_FALSE(document->Equals(other.Get()));
  EXPECT_FALSE(other->Equals(document.Get()));
  EXPECT_FALSE(other->Equals(nullptr));
}

}  // namespace

TEST(MarkupDocument, IsEmptyAndInvalidAtFirst) {
  CheckNewDocument(Data_CreateJsonDocument, "[]");
  CheckNewDocument(Data_CreateXmlDocument, "<a/>");
  CheckNewDocument(Data_CreateHtmlDocument, "<!DOCTYPE html>");
  CheckNewDocument(Data_CreateRtfDocument, "{\\rtf1}");
}

TEST(XmlDocument, ChecksTheText) {
  for (const Case& c : Cases("Xml.txt", "valid")) {
    const auto document = Xml(c[0]);
    const bool isValid = c[1] == "yes";
    EXPECT_EQ(document->IsValid(), isValid) << c.where;
    EXPECT_EQ(document->Equals(document.Get()), isValid) << c.where;
    EXPECT_EQ(Core::Utf8View(*document->GetContent()), c[0]) << c.where;
  }
}

TEST(XmlDocument, EqualsInNormalForm) {
  for (const Case& c : Cases("Xml.txt", "equal")) {
    EXPECT_EQ(AreEqual(c[0], c[1]), c[2] == "yes") << c.where;
    EXPECT_EQ(AreEqual(c[1], c[0]), c[2] == "yes") << c.where;
  }
}

TEST(XmlDocument, RefusesNestingThatWouldExhaustTheStack) {
  OnSmallStack([] {
    for (const Case& c : Cases("Xml.txt", "nesting"))
      for (const bool isValid : {true, false}) {
        if (c[isValid ? 5 : 6].empty()) continue;
        const std::size_t depth = std::stoul(c.fields[isValid ? 5 : 6]);
        const std::string text = c.fields[0] + Nested(c[1], c[2], c[3], depth) + c.fields[4];
        EXPECT_EQ(Xml(text)->IsValid(), isValid) << c.where;
      }
    const auto nested = [](std::size_t depth, std::string_view inner) {
      return Nested("<a>", inner, "</a>", depth);
    };
    EXPECT_TRUE(AreEqual(nested(1000, ""), nested(999, " <a/> ")));
    EXPECT_FALSE(AreEqual(nested(1000, "x"), nested(1000, "y")));
  });
}

TEST(XmlDocument, ReadsTheContentAsItIsStored) {
  const auto document = Xml("<a/>");
  document->GetContent()->SetUtf8("<a>", 3);  // behind its back
  EXPECT_TRUE(document->IsValid());
  EXPECT_FALSE(document->Equals(document.Get()));
  document->GetContent()->SetUtf8("<a/>", 4);
  document->GetContent()->GetWide();
  EXPECT_TRUE(document->Equals(Xml("<a></a>").Get())) << "in any form";
}

TEST(MarkupDocument, IsValidByItsFirstBytes) {
  for (const Case& c : Cases("Xml.txt", "html"))
    EXPECT_EQ(Html(c[0])->IsValid(), c[1] == "yes") << c.where;
  for (const Case& c : Cases("Xml.txt", "rtf"))
    EXPECT_EQ(Rtf(c[0])->IsValid(), c[1] == "yes") << c.where;
}

TEST(HtmlDocument, EqualsTellsTextsOfOneSizeThatDiffer) {
  for (const Case& c : Cases("Xml.txt", "html equals"))
    EXPECT_EQ(Html(c[0])->Equals(Html(c[1]).Get()), c[2] == "yes") << c.where;
  const auto document = Html("<!DOCTYPE html>");
  EXPECT_TRUE(Rtf("{\\rtf1a}")->Equals(Rtf("{\\rtf1b}").Get()));
  document->GetContent()->Clear();
  EXPECT_FALSE(document->Equals(document.Get()));
}

TEST(HtmlDocument, ComparesWithATextThatChangesItsOwn) {
  const auto document = Html("<!DOCTYPE html>");
  const auto other = Core::MakePtr<CallersDocument>();
  EXPECT_TRUE(document->Equals(other.Get()));
  const std::string longer(1000, 'x');
  other->content->onRead = [&] { document->GetContent()->SetUtf8(longer.data(), longer.size()); };
  EXPECT_FALSE(document->Equals(other.Get())) << "they differ in size by then";
}

}  // namespace Data::tests
