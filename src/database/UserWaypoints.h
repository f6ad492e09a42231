// User waypoints ("\database\UserWP.udb"): the only navigation records the
// program writes itself. The file is the 9-byte text "ORVUSERDB" followed by
// 62-byte records:
//   0  10  Ident  text
//  10  40  Name   text
//  50   4  Lat    32-bit float
//  54   4  Lon    32-bit float
//  58   4  Value  32-bit float
// A record whose first Ident byte is NUL is an empty slot and is skipped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"
#include "core/FileIo.h"
#include "core/FixedStr.h"

namespace orv {

struct UserWaypointRec {
  FixedStr<10> Ident;
  FixedStr<40> Name;
  float Lat = 0;
  float Lon = 0;
  float Value = 0;

  friend bool operator==(const UserWaypointRec&, const UserWaypointRec&) = default;
};

inline constexpr std::string_view kUserWaypointHeader = "ORVUSERDB";
inline constexpr std::size_t kUserWaypointRecordSize = 62;
inline constexpr std::string_view kUserWaypointFile = "\\database\\UserWP.udb";
inline constexpr std::string_view kUserWaypointTempFile = "\\database\\TMPUserWP.udb";

// What the byte parser found.
struct UserWaypointParse {
  bool headerOk = false;           // false: no "ORVUSERDB" at the start (an empty file included)
  std::size_t emptySlots = 0;      // records skipped for a NUL ident
  bool truncated = false;          // the file ends inside a record, which was left out
  std::size_t truncatedRecord = 0; // its 1-based number
  std::size_t truncatedBytes = 0;  // the bytes of it that were present
};

// Appends the records of a file held in memory to out, in file order.
UserWaypointParse ParseUserWaypoints(const uint8_t* data, std::size_t size, std::vector<UserWaypointRec>& out);
inline UserWaypointParse ParseUserWaypoints(const Bytes& bytes, std::vector<UserWaypointRec>& out) {
  return ParseUserWaypoints(bytes.data(), bytes.size(), out);
}

// The whole file: header and every record, fields written exactly as held.
Bytes BuildUserWaypointFile(const std::vector<UserWaypointRec>& waypoints);

struct UserWaypointResult {
  bool ok = true;          // false: the file could not be read or written
  bool rewritten = false;  // the file lacked its header (or was missing) and is now header-only
  bool truncated = false;  // a partial last record was ignored
  std::string message;     // for the user; empty when there is nothing to say
};

// Loads the user waypoints into out (cleared first). A missing file, an empty
// one or one with a wrong header is replaced, without a message, by a valid
// header-only file and the list stays empty.
UserWaypointResult LoadUserWaypoints(const AppFolder& app, std::vector<UserWaypointRec>& out);

// Writes all records behind the header to "\database\TMPUserWP.udb" and moves
// that over "\database\UserWP.udb", so the file is never written in place.
UserWaypointResult SaveUserWaypoints(const AppFolder& app, const std::vector<UserWaypointRec>& waypoints);

}  // namespace orv
