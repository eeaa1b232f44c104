#include "Documents/XmlTree.h"

#include <iterator>
#include <rapidxml/rapidxml_print.hpp>
#include <stdexcept>

#include "Documents/XmlNesting.h"

namespace Data::impl {

namespace {

using Node = rapidxml::xml_node<>;

void PrintTagOf(const Node& element, std::string& text) {
  text.append("<").append(element.name(), element.name_size());
  rapidxml::internal::print_attributes(std::back_inserter(text), &element,
                                       rapidxml::print_no_indenting);
  text.append(">");
}

void PrintEndTagOf(const Node& element, std::string& text) {
  text.append("</").append(element.name(), element.name_size()).append(">");
}

}  // namespace

XmlTree::XmlTree(std::string_view xml) : text_(xml) {
  if (!IsNestedWithin(text_, kMaxDepth))
    throw std::runtime_error("XML elements are nested too deep");
  document_.parse<0>(text_.data());
}

// rapidxml's printer recurses into nested elements, so it prints only nodes without children.
std::string XmlTree::Print() const {
  std::string text;
  const Node* node = document_.first_node();
  while (node) {
    if (const Node* child = node->first_node()) {
      PrintTagOf(*node, text);
      node = child;
      continue;
    }
    rapidxml::print(std::back_inserter(text), *node, rapidxml::print_no_indenting);
    while (!node->next_sibling()) {
      node = node->parent();
      if (node == &document_) return text;
      PrintEndTagOf(*node, text);
    }
    node = node->next_sibling();
  }
  return text;
}

}  // namespace Data::impl
