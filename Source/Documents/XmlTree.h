#pragma once

#include <rapidxml/rapidxml.hpp>
#include <string>
#include <string_view>

namespace Data::impl {

/// A parsed XML text. The object contains the first 64 KB of its nodes: allocate it on the heap.
class XmlTree {
 public:
  /// This many levels use only a small part of even a small thread's stack.
  static constexpr std::size_t kMaxDepth = 1000;

  /// @throws rapidxml::parse_error, std::runtime_error for deeper nesting, std::bad_alloc
  explicit XmlTree(std::string_view xml);
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  /// The tree as rapidxml prints it without indentation.
  std::string Print() const;

 private:
  std::string text_;  // the parser changes it, and the nodes point into it
  rapidxml::xml_document<> document_;
};

}  // namespace Data::impl
