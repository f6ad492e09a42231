// The built-in table of ICAO location indicator prefixes: the country and the
// world region an airport belongs to when its source gives no metadata.
#pragma once

#include <string_view>

namespace orv::dbm {

struct PlaceOfPrefix {
  std::string_view Country;  // empty when the prefix is unknown
  std::string_view Region;
};

// Looks the ident up by its two-letter prefix, then by its first letter for
// the countries that own a whole letter (C, K, Y, Z, U, ...). Idents that are
// not ICAO indicators (FAA local idents with digits) fall back to the
// position: inside the United States' boxes they are American.
PlaceOfPrefix PlaceOfIdent(std::string_view ident, double lat, double lon);

}  // namespace orv::dbm
