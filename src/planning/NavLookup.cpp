#include "planning/NavLookup.h"

#include "core/Runtime.h"

namespace orv {

int NavLookup::FindAirportLast(std::string_view icao) const {
  std::string want = UCase(Trim(icao));
  if (want.empty()) return -1;
  int found = -1;
  int n = AirportCount();
  for (int a = 0; a < n; ++a) {
    float lat, lon;
    if (AirportPosition(a, lat, lon) && UCase(Trim(AirportIcao(a))) == want) found = a;
  }
  return found;
}

}  // namespace orv
