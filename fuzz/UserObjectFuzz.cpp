// Arbitrary text as userObj.txt: every object's points lie inside the one
// point array, and the written text reads back to the same points.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "database/UserObjects.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  orv::ParseUserObjectFile(std::string_view(reinterpret_cast<const char*>(data), size), t);
  size_t total = 0;
  for (const orv::UserObjectRec& o : t.UserObjects) {
    if (o.PointCount < 0 || o.First != total) __builtin_trap();
    total += static_cast<size_t>(o.PointCount);
    for (const orv::ShapePoint& p : t.PointsOf(o))
      if (!(p.Lat >= -90) || !(p.Lon >= -180)) __builtin_trap();
  }
  if (total != t.UserObjectPoints.size()) __builtin_trap();
  orv::AirspaceTables back;
  orv::ParseUserObjectFile(orv::BuildUserObjectFile(t), back);
  if (back.UserObjectPoints != t.UserObjectPoints || back.UserObjects.size() != t.UserObjects.size()) __builtin_trap();
  return 0;
}
