// Arbitrary bytes as every source the database manager reads: the readers
// never leave the buffer and never crash, and the mapping of whatever they
// keep gives records inside the database's ranges.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "database/NavaidFiles.h"
#include "dbm/DatabaseBuilder.h"
#include "dbm/OpenAir.h"
#include "dbm/Shapefile.h"
#include "dbm/SourceFiles.h"
#include "dbm/XPlaneSources.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace orv;
  using namespace orv::dbm;
  std::string_view text(reinterpret_cast<const char*>(data), size);
  XPlaneSources src;
  SourceReport r;
  ReadAptDat(text, src.Airports, r);
  ReadNavDat(text, src.Navaids, r);
  ReadFixDat(text, src.Fixes, r);
  ReadAwyDat(text, src.Airways, r);
  std::vector<SrcAirspace> spaces;
  ReadOpenAir(text, spaces, r);
  std::vector<std::vector<ShapePoint>> parts;
  std::string error;
  ReadShapefileParts(data, size, "fuzz.shp", parts, error);
  std::string inflated;
  Gunzip(text, inflated);

  MagVarGrid grid;
  BuiltDatabase out;
  BuildDatabase(src, grid, {}, out);
  AddOpenAirspaces(spaces, out.Db.Shapes);
  if (out.Db.Shapes.Airspaces.size() > 15001) std::abort();
  for (const AirportRec& a : out.Db.Airports.Airports) {
    for (const FrequencyRec& f : a.Frequencies)
      if (f.Kind < 1 || f.Kind > 12) std::abort();
    for (const ParkingRec& p : a.Parking)
      if (p.Kind < 1 || p.Kind > 13 || p.NameCode < 0 || p.NameCode > 37) std::abort();
  }
  for (const AirwayRec& w : out.Db.Navaids.VictorAirways)
    if (w.FromIndex < 0 || w.FromIndex > kMaxIntersectionIndex || w.ToIndex < 0 || w.ToIndex > kMaxIntersectionIndex)
      std::abort();
  return 0;
}
