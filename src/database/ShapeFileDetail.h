// Small shared pieces of the airspace, ground and world shape readers: the
// wording of a corrupt-file message and the finite-number test.
#pragma once

#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

namespace orv::shapefile {

// "<file>: record <n> at byte <offset>: <what>", records counted from 1.
inline std::string RecordError(std::string_view file, std::size_t record, std::size_t offset,
                               std::string_view what) {
  std::string s;
  s.reserve(file.size() + what.size() + 48);
  s.append(file);
  s.append(": record ");
  s.append(std::to_string(record));
  s.append(" at byte ");
  s.append(std::to_string(offset));
  s.append(": ");
  s.append(what);
  return s;
}

inline bool Finite(float a, float b) { return std::isfinite(a) && std::isfinite(b); }

// For a file of fixed-size records: the message for a trailing piece shorter
// than a record, or an empty text when the length is a whole number of records.
inline std::string CutShortRecord(std::string_view file, std::size_t size, std::size_t recordSize) {
  std::size_t whole = size / recordSize;
  std::size_t rest = size % recordSize;
  if (rest == 0) return {};
  return RecordError(file, whole + 1, whole * recordSize,
                     "the record is cut short: " + std::to_string(rest) + " of " + std::to_string(recordSize) +
                         " bytes remain");
}

}  // namespace orv::shapefile
