#include "Documents/XmlNesting.h"

#include <rapidxml/rapidxml.hpp>

namespace Data::impl {

namespace {

/// rapidxml's own classes of characters.
using Characters = rapidxml::internal::lookup_tables<0>;
using CharacterClass = const unsigned char[256];

/// Scans a text from one piece of markup to the next.
class Markup {
 public:
  enum class Kind { StartTag, EmptyTag, EndTag, Other };

  explicit Markup(std::string_view xml) : rest_(xml) {}

  /// Moves past the next piece of markup.
  /// @return false at the end of the text, and where it is malformed
  bool Next();
  Kind GetKind() const { return kind_; }

 private:
  bool SkipStartTag();
  bool SkipAttribute();
  bool SkipEndTag();
  bool SkipDeclaration();
  bool SkipDocumentType();

  void Skip(CharacterClass& characters);
  bool SkipMark(std::string_view mark);
  bool SkipPast(std::string_view mark);

  std::string_view rest_;
  Kind kind_ = Kind::Other;
};

bool Markup::Next() {
  kind_ = Kind::Other;
  if (!SkipPast("<")) return false;
  if (SkipMark("/")) return SkipEndTag();
  if (SkipMark("?")) return SkipPast("?>");
  if (SkipMark("!")) return SkipDeclaration();
  return SkipStartTag();
}

bool Markup::SkipStartTag() {
  const std::size_t before = rest_.size();
  Skip(Characters::lookup_node_name);
  if (rest_.size() == before) return false;
  Skip(Characters::lookup_whitespace);
  while (!rest_.empty() && Characters::lookup_attribute_name[static_cast<unsigned char>(rest_[0])])
    if (!SkipAttribute()) return false;
  kind_ = SkipMark("/") ? Kind::EmptyTag : Kind::StartTag;
  return SkipMark(">");
}

bool Markup::SkipAttribute() {
  Skip(Characters::lookup_attribute_name);
  Skip(Characters::lookup_whitespace);
  if (!SkipMark("=")) return false;
  Skip(Characters::lookup_whitespace);
  const bool isQuoted = SkipMark("'") ? SkipPast("'") : SkipMark("\"") && SkipPast("\"");
  Skip(Characters::lookup_whitespace);
  return isQuoted;
}

bool Markup::SkipEndTag() {
  Skip(Characters::lookup_node_name);
  Skip(Characters::lookup_whitespace);
  kind_ = Kind::EndTag;
  return SkipMark(">");
}

bool Markup::SkipDeclaration() {
  if (SkipMark("--")) return SkipPast("-->");
  if (SkipMark("[CDATA[")) return SkipPast("]]>");
  for (const std::string_view mark : {"DOCTYPE ", "DOCTYPE\t", "DOCTYPE\n", "DOCTYPE\r"})
    if (SkipMark(mark)) return SkipDocumentType();
  return SkipPast(">");
}

bool Markup::SkipDocumentType() {
  std::size_t brackets = 0;
  for (std::size_t i = 0; i < rest_.size(); ++i) {
    if (rest_[i] == '[') ++brackets;
    if (rest_[i] == ']' && brackets != 0) --brackets;
    if (rest_[i] != '>' || brackets != 0) continue;
    rest_.remove_prefix(i + 1);
    return true;
  }
  return false;
}

void Markup::Skip(CharacterClass& characters) {
  std::size_t length = 0;
  while (length < rest_.size() && characters[static_cast<unsigned char>(rest_[length])]) ++length;
  rest_.remove_prefix(length);
}

bool Markup::SkipMark(std::string_view mark) {
  if (!rest_.starts_with(mark)) return false;
  rest_.remove_prefix(mark.size());
  return true;
}

bool Markup::SkipPast(std::string_view mark) {
  const std::size_t found = rest_.find(mark);
  if (found == std::string_view::npos) return false;
  rest_.remove_prefix(found + mark.size());
  return true;
}

}  // namespace

bool IsNestedWithin(std::string_view xml, std::size_t levels) {
  Markup markup(xml);
  std::size_t depth = 0;
  while (markup.Next()) {
    const auto kind = markup.GetKind();
    const bool isElement = kind == Markup::Kind::StartTag || kind == Markup::Kind::EmptyTag;
    if (isElement && depth == levels) return false;
    if (kind == Markup::Kind::StartTag) ++depth;
    if (kind == Markup::Kind::EndTag) --depth;  // wraps where the parser will fail
  }
  return true;
}

}  // namespace Data::impl
