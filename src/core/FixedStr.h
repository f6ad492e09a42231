// A fixed-width 8-bit text as the database records hold it: N characters,
// blank-padded, stored inline so that loading a record allocates nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace orv {

template <std::size_t N>
struct FixedStr {
  std::array<char, N> chars;

  FixedStr() { chars.fill(' '); }
  FixedStr(std::string_view text) { Assign(text); }  // NOLINT: a text converts as the runtime assigns it

  // Cut or blank-padded to N, as assigning to a fixed-length string does.
  void Assign(std::string_view text) {
    std::size_t n = text.size() < N ? text.size() : N;
    if (n != 0) std::memcpy(chars.data(), text.data(), n);  // an empty view may carry a null pointer
    std::memset(chars.data() + n, ' ', N - n);
  }
  // Raw bytes from a file field of width w (w may differ from N).
  void AssignRaw(const char* data, std::size_t w) { Assign(std::string_view(data, w)); }

  // All N characters, padding included.
  std::string_view View() const { return std::string_view(chars.data(), N); }
  // Blanks at both ends removed; cut at the first NUL.
  std::string_view Trimmed() const {
    std::string_view v = View();
    std::size_t nul = v.find('\0');
    if (nul != std::string_view::npos) v = v.substr(0, nul);
    std::size_t b = v.find_first_not_of(' ');
    if (b == std::string_view::npos) return {};
    std::size_t e = v.find_last_not_of(' ');
    return v.substr(b, e - b + 1);
  }
  std::string Str() const { return std::string(Trimmed()); }
  // A record whose first character is NUL is an empty slot.
  bool IsEmptySlot() const { return chars[0] == '\0'; }

  friend bool operator==(const FixedStr& a, const FixedStr& b) { return a.chars == b.chars; }
};

}  // namespace orv
