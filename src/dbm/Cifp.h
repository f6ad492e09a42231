// Departure and arrival procedures from X-Plane CIFP files (one file per
// airport, "EDDF.dat", with "SID:" and "STAR:" rows) into sid.orv and
// star.orv: one block per procedure and transition, its points the fixes the
// legs end at, placed from the fixes and navaids of the other sources.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/FileIo.h"
#include "dbm/XPlaneSources.h"

namespace orv::dbm {

struct ProcPoint {
  std::string Kind;   // "Fix", "VOR", "NDB" as in the plan table
  std::string Code;
  std::string Name;
  float Lat = 0, Lon = 0;
};

struct Procedure {
  std::string Airport;
  std::string Runway;  // "25C", or "00" for any runway
  std::string Name;
  std::vector<ProcPoint> Points;
};

// Positions of the fixes and navaids a procedure may name.
class FixFinder {
public:
  explicit FixFinder(const XPlaneSources& src);
  // The place of ident nearest to (lat, lon), within 300 NM; false if none.
  bool Find(std::string_view ident, double lat, double lon, ProcPoint& out) const;

private:
  std::unordered_multimap<std::string, ProcPoint> byIdent_;
};

// The rows of one airport's CIFP file. sid picks "SID:" rows, else "STAR:".
void ReadCifpFile(std::string_view text, std::string_view airport, double airportLat, double airportLon, bool sid,
                  const FixFinder& fixes, std::vector<Procedure>& out, SourceReport& report);

// The file layout of sid.orv / star.orv: a 56-byte head and 61-byte points.
Bytes BuildProcedureFile(const std::vector<Procedure>& procedures);

}  // namespace orv::dbm
