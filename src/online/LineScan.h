// The end of the line starting at pos: the first CR or LF at or after it, or
// npos. A network file is split into a few hundred thousand lines, so the
// search runs on memchr rather than a character-set search.
#pragma once

#include <cstring>
#include <string_view>

namespace orv {

inline size_t LineEnd(std::string_view text, size_t pos) {
  // Chunk by chunk, so that a file with only one kind of line end is never
  // searched to its end for the other kind.
  constexpr size_t kChunk = 512;
  while (pos < text.size()) {
    const char* begin = text.data() + pos;
    size_t span = text.size() - pos < kChunk ? text.size() - pos : kChunk;
    const void* lf = std::memchr(begin, '\n', span);
    size_t until = lf ? static_cast<size_t>(static_cast<const char*>(lf) - begin) : span;
    const void* cr = std::memchr(begin, '\r', until);
    if (cr) return pos + static_cast<size_t>(static_cast<const char*>(cr) - begin);
    if (lf) return pos + until;
    pos += span;
  }
  return std::string_view::npos;
}

}  // namespace orv
