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

template <class Interface>
void CheckNewDocument(bool (*factory)(Interface**), const char* valid) {
  EXPECT_FALSE(factory(nullptr));
  Ptr<Interface> document;
  ASSERT_TRUE(factory(document.Receive()));
  const auto other = DocumentOf(factory, valid);
  EXPECT_TRUE(other->IsValid());
  EXPECT_FALSE(document->IsValid());
  EXPECT_EQ(document->GetContent(), nullptr);
  EXPECT_FALSE(document->Equals(other.Get()));
  EXPECT_FALSE(other->Equals(document.Get()));
  EXPECT_FALSE(other->Equals(nullptr));
}

}  // namespace

TEST(MarkupDocument, IsEmptyAndInvalidAtFirst) {
  CheckNewDocument(Data_CreateXmlDocument, "<a/>");
  CheckNewDocument(Data_CreateHtmlDocument, "<!DOCTYPE html>");
  CheckNewDocument(Data_CreateRtfDocument, "{\\rtf1}");
}

TEST(XmlDocument, ChecksTheText) {
  const struct {
    const char* what;
    std::string_view text;
    bool valid;
  } cases[] = {
      {"nothing", "", true},
      {"white space alone", " \r\n\t", true},
      {"an element", "<a/>", true},
      {"two of them", "<a></a> <b/>", true},
      {"a byte-order mark", "\xEF\xBB\xBF<a/>", true},
      {"a part of one", "\xEF\xBB<a/>", false},
      {"text alone", "hello", false},
      {"text behind the element", "<a/>x", false},
      {"text behind a zero byte", "<a/>\0x"sv, true},
      {"an element cut by a zero byte", "<a>\0</a>"sv, false},
      {"no end tag", "<a>", false},
      {"another name in the end tag", "<a></b>", true},
      {"an end tag alone", "</a>", false},
      {"one too many", "<a></a></a>", false},
      {"an open tag", "<a", false},
      {"an open end tag", "<a></a", false},
      {"a bracket alone", "<", false},
      {"no name", "< a/>", false},
      {"attributes", "<a b='1' c=\"'2'\" d = '\"'/>", true},
      {"an attribute without a value", "<a b/>", false},
      {"one without quotes", "<a b=1/>", false},
      {"one with an open quote", "<a b='1/>", false},
      {"one with the other quote", "<a b='1\"/>", false},
      {"a name with marks", "<a<\"'b></a<\"'b>", true},
      {"a half empty tag", "<a/ >", false},
      {"a declaration", "<?xml version='1.0' encoding=\"UTF-8\"?><a/>", true},
      {"an open declaration", "<?xml version='1.0'>", false},
      {"a processing instruction", "<?x < > ?><a/>", true},
      {"an empty one",
       "<?"
       "?>",
       true},
      {"an open one", "<?>", false},
      {"a comment", "<!-- <a> -- > --><a/>", true},
      {"an open comment", "<!-- ->", false},
      {"a comment of one dash", "<!->", true},
      {"a section of text", "<a><![CDATA[</a>]]></a>", true},
      {"an open one", "<a><![CDATA[</a>]]</a>", false},
      {"a document type", "<!DOCTYPE a [ <!ELEMENT a (b)> [ ] ]><a/>", true},
      {"an open one", "<!DOCTYPE a [ ><a/>", false},
      {"a document type without space", "<!DOCTYPE[><a/>", true},
      {"an unknown declaration", "<!X <a><b/>", true},
      {"a declaration cut short", "<!", false},
      {"character references", "<a>&#65;&#x20AC;&#x10FFFF;&lt;&unknown;&</a>", true},
      {"one without an end", "<a>&#65</a>", false},
      {"one beyond all characters", "<a>&#x110000;</a>", false},
      {"a zero character", "<a>&#0;x</a>", true},
      {"bytes that are no UTF-8", "<\xFF>\xC3</\xFF>", true},
  };
  for (const auto& c : cases) {
    const auto document = Xml(c.text);
    EXPECT_EQ(document->IsValid(), c.valid) << c.what;
    EXPECT_EQ(document->Equals(document.Get()), c.valid) << c.what;
    EXPECT_EQ(Core::Utf8View(*document->GetContent()), c.text) << c.what;
  }
}

TEST(XmlDocument, EqualsInNormalForm) {
  const struct {
    const char* what;
    std::string_view left, right;
    bool equal;
  } cases[] = {
      {"white space between elements", "<a> <b/> </a>", "<a><b/></a>", true},
      {"white space around text", "<a> x </a>", "<a>x</a>", false},
      {"white space in tags", "<a  x = '1' />", "<a x='1'/>", true},
      {"quotes", "<a x='1'/>", "<a x=\"1\"/>", true},
      {"quotes within quotes", "<a x='\"'/>", "<a x=\"&quot;\"/>", true},
      {"both quotes", "<a x='\"&apos;'/>", "<a x=\"&#34;'\"/>", true},
      {"character references", "<a>&#65;&amp;&gt;</a>", "<a>A&amp;></a>", true},
      {"an element without content", "<a></a>", "<a/>", true},
      {"empty within others", "<a><b></b><c/>x</a>", "<a><b/><c></c>x</a>", true},
      {"the name in the end tag", "<a>x</b>", "<a>x</a>", true},
      {"comments, declarations and types", "<?xml version='1.0'?><!DOCTYPE a><a>x<!-- c -->y</a>",
       "<a>xy</a>", true},
      {"a section and its text", "<a><![CDATA[<]]></a>", "<a>&lt;</a>", false},
      {"sections", "<a><![CDATA[<]]>x</a>", "<a><![CDATA[<]]>x</a>", true},
      {"order of attributes", "<a x='1' y='2'/>", "<a y='2' x='1'/>", false},
      {"order of elements", "<a/><b/>", "<b/><a/>", false},
      {"depth", "<a><b/></a><c/>", "<a><b/><c/></a>", false},
      {"names", "<a/>", "<A/>", false},
      {"texts of one length", "<a>x</a>", "<a>y</a>", false},
      {"nothing at all", "", " <!-- --> ", true},
      {"an invalid document", "<a>", "<a>", false},
      {"text behind a zero byte", "<a/>\0x"sv, "<a/>\0y"sv, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(AreEqual(c.left, c.right), c.equal) << c.what;
    EXPECT_EQ(AreEqual(c.right, c.left), c.equal) << c.what;
  }
}

TEST(XmlDocument, RefusesNestingThatWouldExhaustTheStack) {
  OnSmallStack([] {
    const auto nested = [](std::size_t depth, std::string_view inner) {
      return Nested("<a b='>'>", inner, "</a>", depth);
    };
    EXPECT_TRUE(Xml(nested(1000, "x"))->IsValid());
    EXPECT_TRUE(Xml(nested(999, "<b/><b></b>"))->IsValid());
    EXPECT_FALSE(Xml(nested(1000, "<b/>"))->IsValid());
    EXPECT_FALSE(Xml(nested(1001, ""))->IsValid());
    EXPECT_FALSE(Xml(nested(1'000'000, ""))->IsValid());
    EXPECT_FALSE(Xml(Repeated("<a>", 1'000'000))->IsValid());
    EXPECT_TRUE(AreEqual(nested(1000, ""), nested(999, " <a b=\">\"/> ")));
    EXPECT_FALSE(AreEqual(nested(1000, "x"), nested(1000, "y")));

    // What is not nested does not count.
    EXPECT_TRUE(Xml("<a>" + Repeated("<b><c></c></b>", 5000) + "</a>")->IsValid());
    EXPECT_TRUE(Xml("<!--" + Repeated("<b>", 5000) + "--><a/>")->IsValid());
    EXPECT_TRUE(Xml("<a x='" + Repeated("<b>", 5000) + "'/>")->IsValid());
    EXPECT_TRUE(Xml("<a>" + Repeated("<b></b<>", 5000) + "</a>")->IsValid());
    EXPECT_TRUE(Xml("<a><![CDATA[" + Repeated("<b>", 5000) + "]]></a>")->IsValid());
    EXPECT_TRUE(Xml("<!DOCTYPE a [" + Repeated("<b>", 5000) + "]><a/>")->IsValid());
  });
}

TEST(XmlDocument, ReadsTheContentAsItIsStored) {
  const auto document = Xml("<a/>");
  document->GetContent()->SetUtf8("<a>", 3);  // behind its back
  EXPECT_TRUE(document->IsValid());
  EXPECT_FALSE(document->Equals(document.Get()));
}

TEST(HtmlDocument, IsValidByItsFirstBytes) {
  const struct {
    std::string_view text;
    bool valid;
  } cases[] = {
      {"<!DOCTYPE html><html></html>", true},
      {"<!DOCTYPE html>", true},
      {"<!DOCTYPE html", false},
      {"<!doctype html>", false},
      {" <!DOCTYPE html>", false},
      {"\xEF\xBB\xBF<!DOCTYPE html>", false},
      {"", false},
      {"<!DOCTYPE html>\0\xFF"sv, true},
  };
  for (const auto& c : cases) EXPECT_EQ(Html(c.text)->IsValid(), c.valid) << c.text;
}

TEST(RtfDocument, IsValidByItsFirstBytes) {
  const struct {
    std::string_view text;
    bool valid;
  } cases[] = {
      {"{\\rtf1\\ansi hello}", true},
      {"{\\rtf1", true},
      {"{\\rtf", false},
      {"{\\RTF1}", false},
      {"{\\rtf}", false},
      {" {\\rtf1}", false},
  };
  for (const auto& c : cases) EXPECT_EQ(Rtf(c.text)->IsValid(), c.valid) << c.text;
}

TEST(HtmlDocument, EqualsTellsTextsOfOneSizeThatDiffer) {
  const std::string start = "<!DOCTYPE html>";
  const auto document = Html(start + "a");
  EXPECT_FALSE(document->Equals(document.Get()));
  EXPECT_FALSE(document->Equals(Html(start + "a").Get()));
  EXPECT_TRUE(document->Equals(Html(start + "b").Get()));
  EXPECT_FALSE(document->Equals(Html(start + "bc").Get()));
  EXPECT_FALSE(document->Equals(Html(" " + start).Get())) << "not valid";
  EXPECT_TRUE(Rtf("{\\rtf1a}")->Equals(Rtf("{\\rtf1b}").Get()));
  document->GetContent()->Clear();
  EXPECT_FALSE(document->Equals(document.Get()));
}

}  // namespace Data::tests
