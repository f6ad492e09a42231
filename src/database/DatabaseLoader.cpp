#include "database/DatabaseLoader.h"

#include <algorithm>

#include "core/FileIo.h"

namespace orv {

std::optional<std::string> DatabaseLoader::LoadFile(StartupFile file, const std::filesystem::path& path,
                                                    std::span<const uint8_t> bytes) {
  const uint8_t* data = bytes.data();
  const std::size_t size = bytes.size();
  // A refused file may have filled part of its arrays: every file counts.
  db_.Changed();
  switch (file) {
    case StartupFile::MagVar:
      // The grid is kept whole: every later lookup reads from it.
      db_.MagVar.Assign(Bytes(bytes.begin(), bytes.end()));
      return std::nullopt;
    case StartupFile::Region: return ParseRegionFile(data, size, db_.Airports);
    case StartupFile::Country: return ParseCountryFile(data, size, db_.Airports);
    case StartupFile::State: return ParseStateFile(data, size, db_.Airports);
    case StartupFile::City: return ParseCityFile(data, size, db_.Airports);
    case StartupFile::Airport: return ParseAirportFile(data, size, db_.MagVar, db_.Airports);
    case StartupFile::Taxi: return ParseTaxiFile(data, size, db_.Shapes);
    case StartupFile::Poly: return ParseGroundPolyFile(data, size, db_.Shapes);
    case StartupFile::Marker: return ParseMarkerFile(data, size, db_.Shapes);
    case StartupFile::Intersections: return ParseDijinterFile(data, size, db_.MagVar, db_.Navaids);
    case StartupFile::VictorAirways: return ParseVicwaysFile(data, size, db_.Navaids);
    case StartupFile::JetAirways: return ParseJetwaysFile(data, size, db_.Navaids);
    case StartupFile::Fixes: return ParseFixesFile(data, size, db_.MagVar, db_.Navaids);
    case StartupFile::Vors: return ParseVorFile(data, size, db_.MagVar, db_.Navaids);
    case StartupFile::Ndbs: return ParseNdbFile(data, size, db_.MagVar, db_.Navaids);
    case StartupFile::Airspaces: return ParseAirspaceFile(data, size, db_.Shapes);
    case StartupFile::Msa: return ParseMsaFile(data, size, db_.Shapes);
    case StartupFile::UserWaypoints: {
      // The start-up has already rewritten a file without its header; a
      // partial last record is left out, as the reader reports.
      ParseUserWaypoints(data, size, db_.UserWaypoints);
      return std::nullopt;
    }
    case StartupFile::WorldPolygons: return ParseWorldPolygonFile(data, size, db_.Shapes);
    case StartupFile::WorldLines: return ParseWorldLineFile(data, size, db_.Shapes);
    case StartupFile::UserObjects:
      ParseUserObjectFile(std::string_view(reinterpret_cast<const char*>(data), size), db_.Shapes);
      return std::nullopt;
    default:
      // Files of the other layers (aircraft, online data, procedures, weather
      // stations) are read by their own loaders.
      return std::nullopt;
  }
}

void DatabaseLoader::LinkIls() {
  LinkIlsToRunways(db_.Airports);
  db_.Changed();
}

std::vector<ArrayCount> DatabaseLoader::Counts() const { return CountArrays(db_); }

std::vector<ArrayCount> CountArrays(const NavDatabase& db) {
  auto countIf = [](const auto& v, auto used) {
    return static_cast<int64_t>(std::count_if(v.begin(), v.end(), used));
  };
  const AirportTables& a = db.Airports;
  const NavaidTables& n = db.Navaids;
  const AirspaceTables& s = db.Shapes;
  std::vector<ArrayCount> out;
  for (std::string_view name : StartupArrayNames()) {
    int64_t count = 0;
    if (name == "Regions") count = countIf(a.Regions, [](const std::string& r) { return !r.empty(); });
    else if (name == "Countries") count = countIf(a.Countries, [](const CountryEntry& e) { return !e.Name.empty(); });
    else if (name == "States") count = countIf(a.States, [](const StateEntry& e) { return !e.Name.empty(); });
    else if (name == "Cities") count = countIf(a.Cities, [](const CityEntry& e) { return !e.Name.empty(); });
    else if (name == "Airports") count = countIf(a.Airports, [](const AirportRec& r) { return IsAirportSlotUsed(r); });
    else if (name == "Vors") count = static_cast<int64_t>(n.Vors.size());
    else if (name == "Ndbs") count = static_cast<int64_t>(n.Ndbs.size());
    else if (name == "Intersections")
      count = countIf(n.Intersections, [](const IntersectionRec& r) { return !r.Ident.IsEmptySlot(); });
    else if (name == "Fixes") count = static_cast<int64_t>(n.Fixes.size());
    else if (name == "VictorAirways") count = static_cast<int64_t>(n.VictorAirways.size());
    else if (name == "JetAirways") count = static_cast<int64_t>(n.JetAirways.size());
    else if (name == "Airspaces") count = static_cast<int64_t>(s.Airspaces.size());
    else if (name == "MsaCells") count = static_cast<int64_t>(s.MsaCells.size());
    else if (name == "TaxiSegments") count = static_cast<int64_t>(s.TaxiSegments.size());
    else if (name == "GroundPolygons") count = static_cast<int64_t>(s.GroundPolygons.size());
    else if (name == "Markers") count = static_cast<int64_t>(s.Markers.size());
    else if (name == "WorldPolygons") count = static_cast<int64_t>(s.WorldPolygons.size());
    else if (name == "WorldLines") count = static_cast<int64_t>(s.WorldLines.size());
    else if (name == "UserWaypoints") count = static_cast<int64_t>(db.UserWaypoints.size());
    else if (name == "UserObjects") count = static_cast<int64_t>(s.UserObjects.size());
    out.push_back({name, count});
  }
  return out;
}

}  // namespace orv
