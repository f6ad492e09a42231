#include "core/Runtime.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

namespace orv {

// ---------------------------------------------------------------- numbers

double Val(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n' || text[i] == '\r')) ++i;
  std::string number;
  number.reserve(32);
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) number += text[i++];
  bool digits = false;
  while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) {
    number += text[i++];
    digits = true;
  }
  if (i < text.size() && text[i] == '.') {
    number += text[i++];
    while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) {
      number += text[i++];
      digits = true;
    }
  }
  if (!digits) return 0.0;
  // An exponent counts only when digits follow it.
  if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
    size_t j = i + 1;
    std::string exponent = "e";
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) exponent += text[j++];
    size_t firstDigit = j;
    while (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) exponent += text[j++];
    if (j > firstDigit) number += exponent;
  }
  double value = std::strtod(number.c_str(), nullptr);
  if (!std::isfinite(value)) return 0.0;
  return value;
}

namespace {
template <typename Int>
Int RoundEvenSaturating(double value) {
  if (std::isnan(value)) return 0;
  double r = std::nearbyint(value);  // default rounding mode: half to even
  if (r <= static_cast<double>(std::numeric_limits<Int>::min())) return std::numeric_limits<Int>::min();
  if (r >= static_cast<double>(std::numeric_limits<Int>::max())) return std::numeric_limits<Int>::max();
  return static_cast<Int>(r);
}
}  // namespace

int16_t CInt(double value) { return RoundEvenSaturating<int16_t>(value); }
int32_t CLng(double value) { return RoundEvenSaturating<int32_t>(value); }
uint8_t CByte(double value) { return RoundEvenSaturating<uint8_t>(value); }

int32_t RoundHalfUp(float value) {
  double r = std::floor(static_cast<double>(value) + 0.5);
  if (std::isnan(r)) return 0;
  if (r <= std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  if (r >= std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(r);
}

// ---------------------------------------------------------------- format masks

namespace {

// The decimal digits of |value| rounded half away from zero to `decimals`
// places, taken from its 15-significant-digit form as the runtime does, so
// that 1.005 formats as 1.01 and 2.675 as 2.68.
void DecimalDigits(double value, int decimals, std::string& intPart, std::string& fracPart) {
  char buf[64];
  // The same text as printf's "%.14e", without its cost.
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf - 1, std::fabs(value), std::chars_format::scientific, 14);
  *end = '\0';
  // buf: d.dddddddddddddde[+-]xx
  std::string mantissa;
  mantissa += buf[0];
  mantissa.append(buf + 2, 14);
  int exponent = std::atoi(std::strchr(buf, 'e') + 1);
  // Position of the decimal point within mantissa digits.
  int point = exponent + 1;
  std::string digits = mantissa;
  if (point <= 0) {
    digits.insert(0, static_cast<size_t>(-point) + 1, '0');
    point = 1;
  }
  if (static_cast<int>(digits.size()) < point + decimals + 1) digits.append(point + decimals + 1 - digits.size(), '0');
  // Round at point + decimals.
  int cut = point + decimals;
  bool up = digits[cut] >= '5';
  digits.resize(cut);
  if (up) {
    int k = cut - 1;
    while (k >= 0 && digits[k] == '9') digits[k--] = '0';
    if (k >= 0) {
      ++digits[k];
    } else {
      digits.insert(digits.begin(), '1');
      ++point;
    }
  }
  intPart = digits.substr(0, point);
  fracPart = digits.substr(point);
  size_t nz = intPart.find_first_not_of('0');
  intPart = nz == std::string::npos ? std::string() : intPart.substr(nz);
}

struct MaskToken {
  enum Kind { Zero, Hash, Point, Comma, Literal } kind;
  std::string text;
};

std::vector<MaskToken> Tokenize(std::string_view mask) {
  std::vector<MaskToken> out;
  for (size_t i = 0; i < mask.size(); ++i) {
    char c = mask[i];
    switch (c) {
      case '0': out.push_back({MaskToken::Zero, ""}); break;
      case '#': out.push_back({MaskToken::Hash, ""}); break;
      case '.': out.push_back({MaskToken::Point, ""}); break;
      case ',': out.push_back({MaskToken::Comma, ""}); break;
      case '\\':
        if (i + 1 < mask.size()) out.push_back({MaskToken::Literal, std::string(1, mask[++i])});
        break;
      case '"': {
        size_t end = mask.find('"', i + 1);
        if (end == std::string_view::npos) end = mask.size();
        out.push_back({MaskToken::Literal, std::string(mask.substr(i + 1, end - i - 1))});
        i = end;
        break;
      }
      default: out.push_back({MaskToken::Literal, std::string(1, c)}); break;
    }
  }
  return out;
}

std::string FormatSection(double value, std::string_view mask) {
  std::vector<MaskToken> tokens = Tokenize(mask);
  size_t pointAt = tokens.size();
  for (size_t i = 0; i < tokens.size(); ++i)
    if (tokens[i].kind == MaskToken::Point) {
      pointAt = i;
      break;
    }
  bool grouping = false;
  int decimals = 0;
  bool anyDigit = false;
  for (size_t i = 0; i < tokens.size(); ++i) {
    bool digit = tokens[i].kind == MaskToken::Zero || tokens[i].kind == MaskToken::Hash;
    anyDigit |= digit;
    if (i > pointAt && digit) ++decimals;
    if (i < pointAt && tokens[i].kind == MaskToken::Comma) grouping = true;
  }
  if (!anyDigit) {
    std::string out;
    for (const MaskToken& t : tokens) out += t.kind == MaskToken::Literal ? t.text : std::string(t.kind == MaskToken::Point ? "." : "");
    return out;
  }

  std::string intDigits, fracDigits;
  DecimalDigits(value, decimals, intDigits, fracDigits);

  // Integer part, right to left; the leftmost placeholder takes every digit left over.
  size_t firstDigit = pointAt;
  for (size_t i = 0; i < pointAt; ++i)
    if (tokens[i].kind == MaskToken::Zero || tokens[i].kind == MaskToken::Hash) {
      firstDigit = i;
      break;
    }
  std::string intOut;  // built reversed
  int remaining = static_cast<int>(intDigits.size());
  int produced = 0;
  auto emitDigit = [&](char d) {
    if (grouping && produced > 0 && produced % 3 == 0) intOut += ',';
    intOut += d;
    ++produced;
  };
  for (size_t i = pointAt; i-- > 0;) {
    const MaskToken& t = tokens[i];
    if (t.kind == MaskToken::Zero || t.kind == MaskToken::Hash) {
      if (remaining > 0) {
        emitDigit(intDigits[--remaining]);
      } else if (t.kind == MaskToken::Zero) {
        emitDigit('0');
      }
      if (i == firstDigit)
        while (remaining > 0) emitDigit(intDigits[--remaining]);
    } else if (t.kind == MaskToken::Literal) {
      std::string lit(t.text.rbegin(), t.text.rend());
      intOut += lit;
    }
  }
  std::string out(intOut.rbegin(), intOut.rend());

  if (pointAt < tokens.size()) {
    // Fraction: '#' places drop trailing zeros, '0' places keep them.
    std::vector<char> fracChars;
    std::vector<bool> fracIsHash;
    size_t k = 0;
    for (size_t i = pointAt + 1; i < tokens.size(); ++i) {
      if (tokens[i].kind == MaskToken::Zero || tokens[i].kind == MaskToken::Hash) {
        fracChars.push_back(k < fracDigits.size() ? fracDigits[k] : '0');
        fracIsHash.push_back(tokens[i].kind == MaskToken::Hash);
        ++k;
      }
    }
    size_t keep = fracChars.size();
    while (keep > 0 && fracIsHash[keep - 1] && fracChars[keep - 1] == '0') --keep;
    out += '.';
    k = 0;
    for (size_t i = pointAt + 1; i < tokens.size(); ++i) {
      const MaskToken& t = tokens[i];
      if (t.kind == MaskToken::Zero || t.kind == MaskToken::Hash) {
        if (k < keep) out += fracChars[k];
        ++k;
      } else if (t.kind == MaskToken::Literal) {
        out += t.text;
      } else if (t.kind == MaskToken::Point) {
        out += '.';
      }
    }
  }

  bool allZero = intDigits.empty() && fracDigits.find_first_not_of('0') == std::string::npos;
  if (value < 0 && !allZero) out.insert(out.begin(), '-');
  return out;
}

}  // namespace

std::string Format(double value, std::string_view mask) {
  if (std::isnan(value)) value = 0;
  if (mask.empty()) return NumText(value);
  // Sections: positive;negative;zero. A negative section prints no sign of its own.
  std::vector<std::string_view> sections;
  size_t start = 0;
  for (size_t i = 0; i <= mask.size(); ++i) {
    if (i == mask.size() || mask[i] == ';') {
      sections.push_back(mask.substr(start, i - start));
      start = i + 1;
    }
  }
  if (sections.size() >= 3 && value == 0) return FormatSection(0, sections[2]);
  if (sections.size() >= 2 && value < 0 && !sections[1].empty()) return FormatSection(-value, sections[1]);
  return FormatSection(value, sections[0]);
}

namespace {
std::string TrimNumber(const char* buf) {
  std::string s(buf);
  // %G keeps an exponent of at least two digits, as the runtime prints (1E+20).
  return s;
}
}  // namespace

std::string NumText(double value) {
  if (std::isnan(value)) return "0";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.15G", value);
  return TrimNumber(buf);
}

std::string NumText(float value) {
  if (std::isnan(value)) return "0";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.7G", static_cast<double>(value));
  return TrimNumber(buf);
}

// ---------------------------------------------------------------- texts

int InStr(std::string_view text, std::string_view find, int start) {
  if (start < 1) start = 1;
  if (static_cast<size_t>(start) > text.size() + 1) return 0;
  if (find.empty()) return start;
  size_t pos = text.find(find, static_cast<size_t>(start - 1));
  return pos == std::string_view::npos ? 0 : static_cast<int>(pos) + 1;
}

int InStrRev(std::string_view text, std::string_view find) {
  if (find.empty()) return static_cast<int>(text.size());
  size_t pos = text.rfind(find);
  return pos == std::string_view::npos ? 0 : static_cast<int>(pos) + 1;
}

std::string Left(std::string_view text, int count) {
  if (count <= 0) return {};
  return std::string(text.substr(0, static_cast<size_t>(count)));
}

std::string Right(std::string_view text, int count) {
  if (count <= 0) return {};
  size_t n = std::min(text.size(), static_cast<size_t>(count));
  return std::string(text.substr(text.size() - n));
}

std::string Mid(std::string_view text, int start, int count) {
  if (start < 1) start = 1;
  if (static_cast<size_t>(start) > text.size()) return {};
  std::string_view rest = text.substr(static_cast<size_t>(start - 1));
  if (count < 0) return std::string(rest);
  return std::string(rest.substr(0, static_cast<size_t>(count)));
}

std::string LTrim(std::string_view text) {
  size_t b = text.find_first_not_of(' ');
  return b == std::string_view::npos ? std::string() : std::string(text.substr(b));
}

std::string RTrim(std::string_view text) {
  size_t e = text.find_last_not_of(' ');
  return e == std::string_view::npos ? std::string() : std::string(text.substr(0, e + 1));
}

std::string_view TrimView(std::string_view text) {
  size_t b = text.find_first_not_of(' ');
  if (b == std::string_view::npos) return {};
  return text.substr(b, text.find_last_not_of(' ') - b + 1);
}

std::string Trim(std::string_view text) { return std::string(TrimView(text)); }

bool SameTextNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 'a' + 'A');
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 'a' + 'A');
    if (x != y) return false;
  }
  return true;
}

std::string UCase(std::string_view text) {
  std::string s(text);
  for (char& c : s)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return s;
}

std::string LCase(std::string_view text) {
  std::string s(text);
  for (char& c : s)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return s;
}

std::string ProperCase(std::string_view text) {
  std::string s(text);
  bool wordStart = true;
  for (char& c : s) {
    bool space = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\0';
    if (space) {
      wordStart = true;
      continue;
    }
    if (wordStart && c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (!wordStart && c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    wordStart = false;
  }
  return s;
}

std::string Fill(int count, char ch) { return count > 0 ? std::string(static_cast<size_t>(count), ch) : std::string(); }

std::string Replace(std::string_view text, std::string_view find, std::string_view with) {
  if (find.empty()) return std::string(text);
  std::string out;
  out.reserve(text.size());
  size_t pos = 0;
  for (size_t hit; (hit = text.find(find, pos)) != std::string_view::npos; pos = hit + find.size()) {
    out.append(text.substr(pos, hit - pos));
    out.append(with);
  }
  out.append(text.substr(pos));
  return out;
}

std::string FixedText(std::string_view text, std::size_t width) {
  std::string s(text.substr(0, std::min(width, text.size())));
  s.resize(width, ' ');
  return s;
}

std::string FieldText(const char* data, std::size_t width) {
  size_t n = 0;
  while (n < width && data[n] != '\0') ++n;
  while (n > 0 && data[n - 1] == ' ') --n;
  return std::string(data, n);
}

// ---------------------------------------------------------------- code page

namespace {
// Windows-1252 0x80..0x9F; 0 marks the five unused positions.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0,
    0, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}
}  // namespace

std::string Latin1ToUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  for (char ch : text) {
    auto c = static_cast<unsigned char>(ch);
    if (c >= 0x80 && c < 0xA0) {
      char16_t cp = kCp1252High[c - 0x80];
      AppendUtf8(out, cp ? cp : U'?');
    } else {
      AppendUtf8(out, c);
    }
  }
  return out;
}

std::string Utf8ToLatin1(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    auto c = static_cast<unsigned char>(text[i]);
    char32_t cp;
    size_t len;
    if (c < 0x80) {
      cp = c;
      len = 1;
    } else if ((c & 0xE0) == 0xC0 && i + 1 < text.size()) {
      cp = ((c & 0x1F) << 6) | (static_cast<unsigned char>(text[i + 1]) & 0x3F);
      len = 2;
    } else if ((c & 0xF0) == 0xE0 && i + 2 < text.size()) {
      cp = ((c & 0x0F) << 12) | ((static_cast<unsigned char>(text[i + 1]) & 0x3F) << 6) |
           (static_cast<unsigned char>(text[i + 2]) & 0x3F);
      len = 3;
    } else if ((c & 0xF8) == 0xF0 && i + 3 < text.size()) {
      cp = 0x110000;  // outside the code page
      len = 4;
    } else {
      cp = '?';
      len = 1;
    }
    i += len;
    if (cp < 0x80 || (cp >= 0xA0 && cp < 0x100)) {
      out += static_cast<char>(cp);
      continue;
    }
    char mapped = '?';
    for (int k = 0; k < 32; ++k)
      if (kCp1252High[k] == cp) mapped = static_cast<char>(0x80 + k);
    out += mapped;
  }
  return out;
}

}  // namespace orv
