// What the airway search and the route builders share inside planning: the
// quick latitude test before a costly distance, and the altitude texts of
// the airway links in the parsed form the search leaves behind.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/FixedStr.h"

namespace orv {

// The latitude difference alone already puts a point this far away by any
// measure (a degree of arc is 60 NM); the margin covers single-precision
// rounding in the exact routines, which are only asked once this passes.
inline constexpr double kPrefilterMarginNm = 1.0;

inline bool Beyond(float lat1, float lat2, double radius) {
  return std::fabs(static_cast<double>(lat1) - lat2) * 60 > radius + kPrefilterMarginNm;
}

// The altitude of an edge text, which is then left in the edge in its parsed
// form. The form a search leaves behind (digits, blank padded) is read
// without the general parser, so repeated searches cost no text work.
int32_t ParseEdgeAltitude(FixedStr<5>& text);

}  // namespace orv
