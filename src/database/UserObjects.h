// "\database\userObj.txt": lines and polygons the user writes by hand, drawn
// over the coastlines. The file is optional and is read leniently: it has no
// corrupt state, only lines that are not taken.
//
//   # a comment
//   FP,1,0,128,255        head: "L" line, "FP" filled polygon, "UP" unfilled
//   47.5,8.25             polygon; then style, red, green, blue
//   47.6,8.5              a point: latitude, longitude
//                         an empty line ends the object
#pragma once

#include <string>
#include <string_view>

#include "database/AirspaceTables.h"

namespace orv {

// Replaces out.UserObjects and out.UserObjectPoints with the file's objects,
// growing both as the lines are read.
void ParseUserObjectFile(std::string_view text, AirspaceTables& out);

// The text of a userObj.txt holding the objects, with CR LF line ends.
std::string BuildUserObjectFile(const AirspaceTables& tables);

}  // namespace orv
