// A small, strict XML reader for the flat documents flight plans come in
// (simulator XML plans, Garmin flight plans, GPX). It knows elements,
// attributes, text, comments, the XML declaration, CDATA and the five named
// entities plus character references; a document type declaration is refused,
// so no entity can expand. Depth and the number of elements are bounded, so a
// hostile file costs at most a few passes over its bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv {

struct XmlElement {
  std::string Name;  // with any namespace prefix, as written
  std::vector<std::pair<std::string, std::string>> Attributes;
  std::string Text;  // the element's own text, entities resolved, UTF-8
  int32_t Parent = -1;
  // Children as a chain, so that an element costs no list of its own.
  int32_t FirstChild = -1;
  int32_t LastChild = -1;
  int32_t NextSibling = -1;
};

struct XmlDocument {
  std::vector<XmlElement> Elements;  // element 0 is the root
  std::string Error;                 // empty when the whole text was read

  bool Ok() const { return Error.empty() && !Elements.empty(); }
  const XmlElement& Root() const { return Elements.front(); }
  // The first child of element `parent` named name (the local name, without
  // prefix), -1 when none.
  int32_t Child(int32_t parent, std::string_view name) const;
  // Every child of parent with that local name, in document order.
  std::vector<int32_t> ChildrenNamed(int32_t parent, std::string_view name) const;
  // The text of the first child named name, trimmed; empty when none.
  std::string ChildText(int32_t parent, std::string_view name) const;
  // An attribute's value, empty when absent.
  std::string Attribute(int32_t element, std::string_view name) const;
};

inline constexpr int kXmlMaxDepth = 32;
inline constexpr int kXmlMaxElements = 200000;

XmlDocument ParseXml(std::string_view text);

// The element's name without its namespace prefix.
std::string_view XmlLocalName(std::string_view name);

// Text escaped for element content and attribute values.
std::string XmlEscape(std::string_view text);

}  // namespace orv
