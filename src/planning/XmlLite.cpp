#include "planning/XmlLite.h"

#include <algorithm>
#include <cstring>

#include "core/Runtime.h"

namespace orv {

namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsNameChar(char c) {
  unsigned char u = static_cast<unsigned char>(c);
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
         c == '.' || c == ':' || u >= 0x80;
}

void AppendUtf8(std::string& out, uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

class Parser {
public:
  explicit Parser(std::string_view text) : s_(text) {}

  XmlDocument Run() {
    // One element per start tag at most: a rough count saves the regrowth.
    std::size_t tags = 0;
    for (char c : s_) tags += c == '<';
    doc_.Elements.reserve(std::min<std::size_t>(tags / 2 + 1, kXmlMaxElements));
    // A byte order mark is allowed ahead of everything.
    if (s_.substr(0, 3) == "\xEF\xBB\xBF") p_ = 3;
    SkipMisc();
    if (!Failed() && AtEnd()) Fail("no root element");
    if (!Failed()) Element(-1, 0);
    if (!Failed()) SkipMisc();
    if (!Failed() && !AtEnd()) Fail("text after the root element");
    if (Failed()) doc_.Elements.clear();
    return std::move(doc_);
  }

private:
  bool AtEnd() const { return p_ >= s_.size(); }
  bool Failed() const { return !doc_.Error.empty(); }
  void Fail(std::string_view why) {
    if (doc_.Error.empty()) doc_.Error = std::string(why) + " at byte " + std::to_string(p_);
  }
  bool StartsWith(std::string_view t) const { return s_.substr(p_, t.size()) == t; }
  void SkipSpace() {
    while (!AtEnd() && IsSpace(s_[p_])) ++p_;
  }
  // Skips to behind `end`; false when it never comes.
  bool SkipPast(std::string_view end) {
    std::size_t e = s_.find(end, p_);
    if (e == std::string_view::npos) {
      p_ = s_.size();
      Fail("unterminated markup");
      return false;
    }
    p_ = e + end.size();
    return true;
  }

  // Blanks, comments and processing instructions outside the root element.
  void SkipMisc() {
    for (;;) {
      SkipSpace();
      if (StartsWith("<?")) {
        if (!SkipPast("?>")) return;
      } else if (StartsWith("<!--")) {
        if (!SkipPast("-->")) return;
      } else if (StartsWith("<!")) {
        Fail("document type declarations are not accepted");
        return;
      } else {
        return;
      }
    }
  }

  std::string_view Name() {
    std::size_t b = p_;
    while (!AtEnd() && IsNameChar(s_[p_])) ++p_;
    if (b == p_) Fail("name expected");
    return s_.substr(b, p_ - b);
  }

  // Resolves one reference starting at '&'; appends its text.
  void Reference(std::string& out) {
    std::size_t semi = s_.find(';', p_);
    if (semi == std::string_view::npos || semi - p_ > 12) {
      Fail("bad entity reference");
      return;
    }
    std::string_view ref = s_.substr(p_ + 1, semi - p_ - 1);
    p_ = semi + 1;
    if (ref == "amp") out += '&';
    else if (ref == "lt") out += '<';
    else if (ref == "gt") out += '>';
    else if (ref == "quot") out += '"';
    else if (ref == "apos") out += '\'';
    else if (ref.size() >= 2 && ref[0] == '#') {
      uint32_t cp = 0;
      bool hex = ref[1] == 'x';
      std::string_view digits = ref.substr(hex ? 2 : 1);
      if (digits.empty()) return Fail("bad character reference");
      for (char c : digits) {
        uint32_t d;
        if (c >= '0' && c <= '9') d = static_cast<uint32_t>(c - '0');
        else if (hex && c >= 'a' && c <= 'f') d = static_cast<uint32_t>(c - 'a' + 10);
        else if (hex && c >= 'A' && c <= 'F') d = static_cast<uint32_t>(c - 'A' + 10);
        else return Fail("bad character reference");
        cp = cp * (hex ? 16 : 10) + d;
        if (cp > 0x10FFFF) return Fail("bad character reference");
      }
      if (cp == 0 || (cp >= 0xD800 && cp <= 0xDFFF)) return Fail("bad character reference");
      AppendUtf8(out, cp);
    } else {
      Fail("unknown entity");
    }
  }

  void Element(int32_t parent, int depth) {
    if (depth >= kXmlMaxDepth) return Fail("elements nested too deeply");
    if (static_cast<int>(doc_.Elements.size()) >= kXmlMaxElements) return Fail("too many elements");
    if (!StartsWith("<")) return Fail("element expected");
    ++p_;
    int32_t me = static_cast<int32_t>(doc_.Elements.size());
    doc_.Elements.emplace_back();
    doc_.Elements[static_cast<std::size_t>(me)].Parent = parent;
    if (parent >= 0) {
      XmlElement& up = doc_.Elements[static_cast<std::size_t>(parent)];
      if (up.LastChild >= 0) doc_.Elements[static_cast<std::size_t>(up.LastChild)].NextSibling = me;
      else up.FirstChild = me;
      up.LastChild = me;
    }
    std::string_view name = Name();
    if (Failed()) return;
    doc_.Elements[static_cast<std::size_t>(me)].Name = std::string(name);

    // Attributes.
    for (;;) {
      SkipSpace();
      if (AtEnd()) return Fail("unterminated start tag");
      if (StartsWith("/>")) {
        p_ += 2;
        return;
      }
      if (s_[p_] == '>') {
        ++p_;
        break;
      }
      std::string_view attr = Name();
      if (Failed()) return;
      SkipSpace();
      if (AtEnd() || s_[p_] != '=') return Fail("'=' expected");
      ++p_;
      SkipSpace();
      if (AtEnd() || (s_[p_] != '"' && s_[p_] != '\'')) return Fail("quoted value expected");
      char q = s_[p_++];
      std::string value;
      while (!AtEnd() && s_[p_] != q) {
        if (s_[p_] == '<') return Fail("'<' in an attribute value");
        if (s_[p_] == '&') {
          Reference(value);
          if (Failed()) return;
        } else {
          value += s_[p_++];
        }
      }
      if (AtEnd()) return Fail("unterminated attribute value");
      ++p_;
      for (const auto& a : doc_.Elements[static_cast<std::size_t>(me)].Attributes)
        if (a.first == attr) return Fail("attribute given twice");
      doc_.Elements[static_cast<std::size_t>(me)].Attributes.emplace_back(std::string(attr), std::move(value));
    }

    // Content.
    std::string text;
    for (;;) {
      if (AtEnd()) return Fail("unterminated element");
      char c = s_[p_];
      if (c == '&') {
        Reference(text);
        if (Failed()) return;
      } else if (c != '<') {
        std::size_t e = s_.find_first_of("<&", p_);
        if (e == std::string_view::npos) e = s_.size();
        text.append(s_.substr(p_, e - p_));
        p_ = e;
      } else if (StartsWith("</")) {
        p_ += 2;
        std::string_view end = Name();
        if (Failed()) return;
        if (end != name) return Fail("end tag does not match");
        SkipSpace();
        if (AtEnd() || s_[p_] != '>') return Fail("'>' expected");
        ++p_;
        break;
      } else if (StartsWith("<!--")) {
        if (!SkipPast("-->")) return;
      } else if (StartsWith("<![CDATA[")) {
        p_ += 9;
        std::size_t e = s_.find("]]>", p_);
        if (e == std::string_view::npos) return Fail("unterminated CDATA");
        text.append(s_.substr(p_, e - p_));
        p_ = e + 3;
      } else if (StartsWith("<?")) {
        if (!SkipPast("?>")) return;
      } else if (StartsWith("<!")) {
        return Fail("declarations are not accepted inside elements");
      } else {
        Element(me, depth + 1);
        if (Failed()) return;
      }
    }
    doc_.Elements[static_cast<std::size_t>(me)].Text = std::move(text);
  }

  std::string_view s_;
  std::size_t p_ = 0;
  XmlDocument doc_;
};

}  // namespace

std::string_view XmlLocalName(std::string_view name) {
  std::size_t colon = name.rfind(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

XmlDocument ParseXml(std::string_view text) { return Parser(text).Run(); }

int32_t XmlDocument::Child(int32_t parent, std::string_view name) const {
  if (parent < 0 || parent >= static_cast<int32_t>(Elements.size())) return -1;
  for (int32_t c = Elements[static_cast<std::size_t>(parent)].FirstChild; c >= 0;
       c = Elements[static_cast<std::size_t>(c)].NextSibling)
    if (XmlLocalName(Elements[static_cast<std::size_t>(c)].Name) == name) return c;
  return -1;
}

std::vector<int32_t> XmlDocument::ChildrenNamed(int32_t parent, std::string_view name) const {
  std::vector<int32_t> out;
  if (parent < 0 || parent >= static_cast<int32_t>(Elements.size())) return out;
  for (int32_t c = Elements[static_cast<std::size_t>(parent)].FirstChild; c >= 0;
       c = Elements[static_cast<std::size_t>(c)].NextSibling)
    if (XmlLocalName(Elements[static_cast<std::size_t>(c)].Name) == name) out.push_back(c);
  return out;
}

std::string XmlDocument::ChildText(int32_t parent, std::string_view name) const {
  int32_t c = Child(parent, name);
  if (c < 0) return {};
  std::string_view t = Elements[static_cast<std::size_t>(c)].Text;
  std::size_t b = 0, e = t.size();
  while (b < e && IsSpace(t[b])) ++b;
  while (e > b && IsSpace(t[e - 1])) --e;
  return std::string(t.substr(b, e - b));
}

std::string XmlDocument::Attribute(int32_t element, std::string_view name) const {
  if (element < 0 || element >= static_cast<int32_t>(Elements.size())) return {};
  for (const auto& a : Elements[static_cast<std::size_t>(element)].Attributes)
    if (a.first == name) return a.second;
  return {};
}

std::string XmlEscape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      case '\'': out += "&apos;"; break;
      default: out += c;
    }
  }
  return out;
}

}  // namespace orv
