#pragma once

#include <rapidxml/rapidxml.hpp>
#include <string>
#include <string_view>

namespace Data::impl {

/// A parsed XML text. Its first nodes lie in the object, which is too large for
/// the stack: make it on the heap.
class XmlTree {
 public:
  /// The parser takes a small part of the smallest stacks for so many levels.
  static constexpr std::size_t kMaxDepth = 1000;

  /// @throws rapidxml::parse_error, std::runtime_error for deeper nesting
  explicit XmlTree(std::string_view xml);
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  /// The tree as rapidxml prints it without indentation.
  std::string Print() const;

 private:
  std::string text_;  // which the parser changes and the nodes point into
  rapidxml::xml_document<> document_;
};

}  // namespace Data::impl
