#include "dbm/FolderWriter.h"

#include <algorithm>

#include "core/AppFolder.h"
#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/GroundFiles.h"
#include "database/NavaidFiles.h"
#include "database/UserWaypoints.h"
#include "database/WorldShapes.h"

namespace orv::dbm {

namespace fs = std::filesystem;

namespace {

// "\database\vor.orv" -> root/database/vor.orv
fs::path Native(const fs::path& root, std::string_view constant) {
  fs::path p = root;
  std::size_t i = 0;
  while (i < constant.size()) {
    std::size_t j = constant.find('\\', i);
    if (j == std::string_view::npos) j = constant.size();
    if (j > i) p /= std::string(constant.substr(i, j - i));
    i = j + 1;
  }
  return p;
}

class Writer {
public:
  Writer(const fs::path& root, std::vector<WrittenFile>& written, std::string& error)
      : root_(root), written_(written), error_(error) {}

  bool Put(std::string_view constant, const Bytes& bytes, int64_t records) {
    return Put(constant, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()), records);
  }
  bool Put(std::string_view constant, std::string_view bytes, int64_t records) {
    fs::path path = Native(root_, constant);
    std::error_code ec;
    fs::create_directories(path.parent_path(), ec);
    if (!WriteFileAtomic(path, bytes)) {
      error_ = path.string() + ": the file cannot be written";
      return false;
    }
    written_.push_back({std::string(constant), records, static_cast<int64_t>(bytes.size())});
    return true;
  }
  // Creates the file only when it does not exist yet: it belongs to the user.
  bool PutIfMissing(std::string_view constant, std::string_view bytes, int64_t records) {
    std::error_code ec;
    // The user's file may have any case ("ORVColor.ini"): the program finds
    // it whatever its case, and so does this test.
    if (fs::exists(AppFolder(root_).Resolve(constant), ec)) return true;
    return Put(constant, bytes, records);
  }

private:
  fs::path root_;
  std::vector<WrittenFile>& written_;
  std::string& error_;
};

int64_t UsedAirports(const std::vector<AirportRec>& airports) {
  int64_t n = 0;
  for (const AirportRec& a : airports) n += IsAirportSlotUsed(a) ? 1 : 0;
  return n;
}

// The start-up refuses an empty navaid or airway file, even when the sources
// had nothing for it: such a file gets one record of zero bytes, whose NUL
// first character every reader takes for an empty record.
Bytes NonEmpty(Bytes bytes, std::size_t recordSize) {
  if (bytes.empty()) bytes.assign(recordSize, 0);
  return bytes;
}

}  // namespace

Bytes EmptyProcedureFile() {
  // Airport, runway and name blank, point count 0.
  Bytes head(56, ' ');
  head[55] = 0;
  return head;
}

std::string AiracText(std::string_view cycle) {
  std::string c(cycle);
  // "2013.10": the year's last two digits and the cycle of the year.
  if (c.size() == 7 && c[4] == '.') c = c.substr(2, 2) + c.substr(5, 2);
  if (c.empty()) c = "unknown";
  return "AIRAC cycle " + c + "\r\nX-Plane data\r\n";
}

std::string DefaultAircraftText() {
  // Id, name, max fuel kg, ceiling (100 ft), max, empty and load weight kg,
  // climb rate, climb speed, descent rate, descent speed, cruise speed,
  // cruise level (100 ft), approach speed, minimum runway ft, range NM.
  return "1,\"Cessna 172\",145,140,1111,767,250,700,75,500,100,115,65,70,1600,600\r\n"
         "2,\"Beech King Air 350\",1630,350,6800,4110,1200,2000,160,1500,200,300,240,110,3300,1700\r\n"
         "3,\"Boeing 737-800\",20800,410,79000,41400,15000,2500,280,2000,280,450,350,145,6500,2900\r\n";
}

namespace {

// The colours of the three themes as red, green, blue (0xRRGGBB), key by
// key in the order of orv.ini. Labels, coastlines and the compass keep a
// contrast of at least 4.5 : 1 (7 : 1 in High Contrast) against the map
// colour, the filled land and the airport ground.
struct ThemeRow {
  const char* Key;
  uint32_t Day, Night, HighContrast;
};
constexpr ThemeRow kThemeRows[] = {
    {"MAP", 0xE6F0F7, 0x0B1016, 0x000000},
    {"COAST", 0x1B4F86, 0x6FB3D9, 0xFFFFFF},
    {"LAND", 0xF5F1E3, 0x171C22, 0x141414},
    {"RIVER", 0x2F6FB5, 0x3E7FB0, 0x00BFFF},
    {"LATLONG", 0x8C98A4, 0x3C4650, 0x808080},
    {"COMP", 0x8B1A1A, 0xE0A84A, 0xFFFF00},
    {"WIND", 0xB00000, 0xFF6A5A, 0xFF4040},
    {"HILITE", 0xD4007A, 0xFF5FD2, 0xFF00FF},
    {"MEASURE", 0xB35900, 0xFFD24A, 0xFFFF00},
    {"ZOOM", 0xD4007A, 0xFF5FD2, 0xFF00FF},
    {"MSA", 0x5E5E5E, 0x9AA0A6, 0xFFFFFF},
    {"VICTOR", 0x1F5580, 0x5FA8E0, 0x00FFFF},
    {"CTRZ", 0xA3264F, 0xD06A8C, 0xFF8080},
    {"JET", 0x624200, 0xD8B25A, 0xFFD700},
    {"AIR1", 0x2E6B2E, 0x6FBF6F, 0x00FF00},
    {"AIR2", 0x6B2E6B, 0xC07FC0, 0xFF80FF},
    {"VOR", 0x0B4A86, 0x6FB0FF, 0x7CC4FF},
    {"NDB", 0x7A3A00, 0xE09A5A, 0xFFB52E},
    {"ILS", 0x005656, 0x4FC8C8, 0x00FFFF},
    {"INT", 0x2D5A1A, 0x9CCB6A, 0x80FF80},
    {"FIX", 0x4A4A8C, 0xA0A0FF, 0xC0C0FF},
    {"USER", 0x5E5E5E, 0xA0A0A0, 0xFFFFFF},
    {"MOVAC", 0xC00000, 0xFFE04A, 0xFFFF00},
    {"ACINCTRZ", 0xD00000, 0xFF5A5A, 0xFF0000},
    {"ROUTE", 0xC0007A, 0xFF7AD0, 0xFF00FF},
    {"ACATCTRZ", 0xE06000, 0xFFB04A, 0xFFA500},
    {"AI", 0x005FA0, 0x5AD0FF, 0x00FFFF},
    {"AIFREQ", 0x007A00, 0x6AE06A, 0x00FF00},
    {"TCAS1", 0xE07000, 0xFFB04A, 0xFFA500},
    {"TCAS2", 0xD00000, 0xFF5A5A, 0xFF0000},
    {"AP", 0x4B1766, 0xE8E2C8, 0xFFFFFF},
    {"RWY", 0x4A4A4A, 0x7A7A7A, 0xA0A0A0},
    {"TAXI", 0xDCDCDC, 0x30363D, 0x2A2A2A},
    {"PARKING", 0x00702F, 0x6AE06A, 0x00FF00},
    {"IVAOFIR", 0x6B2E6B, 0xC07FC0, 0xFF80FF},
    {"IVAOFSS", 0x007A00, 0x6AE06A, 0x00FF00},
    {"IVAOTWR", 0xC00000, 0xFF5A5A, 0xFF4040},
    {"IVAOGND", 0x006666, 0x4FC8C8, 0x00FFFF},
    {"IVAOAPP", 0x1B4F86, 0x6FB0FF, 0x7CC4FF},
    {"STATICACCOLOR", 0x2E7D32, 0x7ACC7A, 0x80FF80},
};

}  // namespace

std::string DefaultColorThemesText() {
  std::string text;
  auto theme = [&](const char* name, uint32_t ThemeRow::*rgb) {
    text += "[" + std::string(name) + "]\r\n";
    for (const ThemeRow& r : kThemeRows) {
      const uint32_t c = r.*rgb;
      // The files keep blue * 65536 + green * 256 + red.
      const uint32_t stored = (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
      text += std::string(r.Key) + "=" + std::to_string(stored) + "\r\n";
    }
  };
  theme("Day", &ThemeRow::Day);
  theme("Night", &ThemeRow::Night);
  theme("High Contrast", &ThemeRow::HighContrast);
  return text;
}

bool WriteAppFolder(const fs::path& root, const BuiltDatabase& built, const Bytes& magVarGrid,
                    const FolderOptions& options, std::vector<WrittenFile>& written, std::string& error) {
  Writer w(root, written, error);
  const NavDatabase& db = built.Db;
  const AirportTables& ap = db.Airports;
  const AirspaceTables& sh = db.Shapes;
  constexpr int64_t kGridCells = 360 * 181;

  if (!w.Put("\\magvar09.swf", magVarGrid, kGridCells) || !w.Put("\\magvar10.swf", magVarGrid, kGridCells)) return false;

  std::vector<std::string> simFolders;
  if (options.Fs9) simFolders.push_back("\\database\\FS09\\");
  if (options.Fsx) simFolders.push_back("\\database\\FS10\\");
  // The simulator folders hold the same airports: built once, written to each.
  Bytes region = BuildRegionFile(ap.Regions), country = BuildCountryFile(ap.Countries),
        state = BuildStateFile(ap.States), city = BuildCityFile(ap.Cities), airport = BuildAirportFile(ap.Airports),
        taxi = BuildTaxiFile(sh), poly = BuildGroundPolyFile(sh), marker = BuildMarkerFile(sh);
  for (const std::string& f : simFolders) {
    if (!w.Put(f + "region.orv", region, ap.RegionCount) || !w.Put(f + "country.orv", country, ap.CountryCount) ||
        !w.Put(f + "state.orv", state, ap.StateCount) || !w.Put(f + "city.orv", city, ap.CityCount) ||
        !w.Put(f + "airport.orv", airport, UsedAirports(ap.Airports)) ||
        !w.Put(f + "taxi.orv", taxi, static_cast<int64_t>(sh.TaxiSegments.size())) ||
        !w.Put(f + "poly.orv", poly, static_cast<int64_t>(sh.GroundPolygons.size())) ||
        !w.Put(f + "marker.orv", marker, static_cast<int64_t>(sh.Markers.size())))
      return false;
  }

  const NavaidTables& nav = db.Navaids;
  int64_t intersections = 0;
  for (const IntersectionRec& r : nav.Intersections) intersections += r.Ident.IsEmptySlot() ? 0 : 1;
  // airspace.orv and WxStation.txt may not be empty either: without zones the
  // airspace file holds one empty record (an Ident starting with NUL, which
  // the reader passes over), and a station list without stations one blank
  // line (lines under 6 characters are skipped).
  Bytes airspaces = BuildAirspaceFile(sh);
  if (sh.Airspaces.empty()) {
    AirspaceTables none;
    AirspaceRec empty;
    empty.Ident.chars.fill('\0');
    AddAirspace(none, empty, {});
    airspaces = BuildAirspaceFile(none);
  }
  std::string stations = built.WxStations.empty() ? std::string("\r\n") : built.WxStations;
  Bytes sid = options.Sid.empty() ? EmptyProcedureFile() : options.Sid;
  Bytes star = options.Star.empty() ? EmptyProcedureFile() : options.Star;
  if (!w.Put("\\database\\dijinter.orv", NonEmpty(BuildDijinterFile(nav), kIntersectionRecordSize), intersections) ||
      !w.Put("\\database\\vicways.orv", NonEmpty(BuildAirwayFile(nav.VictorAirways), kAirwaySegmentRecordSize), static_cast<int64_t>(nav.VictorAirways.size())) ||
      !w.Put("\\database\\jetways.orv", NonEmpty(BuildAirwayFile(nav.JetAirways), kAirwaySegmentRecordSize), static_cast<int64_t>(nav.JetAirways.size())) ||
      !w.Put("\\database\\fixes.orv", NonEmpty(BuildFixesFile(nav.Fixes), kFixRecordSize), static_cast<int64_t>(nav.Fixes.size())) ||
      !w.Put("\\database\\vor.orv", NonEmpty(BuildVorFile(nav.Vors), kVorRecordSize), static_cast<int64_t>(nav.Vors.size())) ||
      !w.Put("\\database\\ndb.orv", NonEmpty(BuildNdbFile(nav.Ndbs), kNdbRecordSize), static_cast<int64_t>(nav.Ndbs.size())) ||
      !w.Put("\\database\\airspace.orv", airspaces, static_cast<int64_t>(sh.Airspaces.size())) ||
      !w.Put("\\database\\msa.orv", BuildMsaFile(sh), static_cast<int64_t>(sh.MsaCells.size())) ||
      !w.Put("\\database\\sid.orv", sid, 0) || !w.Put("\\database\\star.orv", star, 0) ||
      !w.Put("\\database\\WxStation.txt", stations,
             static_cast<int64_t>(std::count(built.WxStations.begin(), built.WxStations.end(), '\n'))) ||
      !w.Put("\\database\\AIRAC.INI", options.AiracText, 1))
    return false;
  if (!options.Readme.empty() && !w.Put("\\README.txt", options.Readme, 0)) return false;
  Bytes userWp = BuildUserWaypointFile({});
  if (!w.PutIfMissing("\\database\\userwp.udb", std::string_view(reinterpret_cast<const char*>(userWp.data()), userWp.size()), 0) ||
      !w.PutIfMissing("\\user\\aircraft.orv", DefaultAircraftText(), 3) ||
      !w.PutIfMissing("\\orvcolor.ini", DefaultColorThemesText(), 3))
    return false;

  // The map files may never be empty: without coastline data they hold one
  // shape of a single point, which draws nothing.
  AirspaceTables shapes;
  const AirspaceTables* world = &sh;
  if (sh.WorldPolygons.empty() || sh.WorldLines.empty()) {
    shapes.WorldPolygons = sh.WorldPolygons;
    shapes.WorldPolygonPoints = sh.WorldPolygonPoints;
    shapes.WorldLines = sh.WorldLines;
    shapes.WorldLinePoints = sh.WorldLinePoints;
    ShapePoint origin{0, 0};
    if (shapes.WorldPolygons.empty()) AddWorldShape(shapes.WorldPolygons, shapes.WorldPolygonPoints, 0, 2, {&origin, 1});
    if (shapes.WorldLines.empty()) AddWorldShape(shapes.WorldLines, shapes.WorldLinePoints, 0, 1, {&origin, 1});
    world = &shapes;
  }
  if (!w.Put("\\map\\worldpolygon.bin", BuildWorldPolygonFile(*world), static_cast<int64_t>(world->WorldPolygons.size())) ||
      !w.Put("\\map\\worldline.bin", BuildWorldLineFile(*world), static_cast<int64_t>(world->WorldLines.size())))
    return false;
  return true;
}

}  // namespace orv::dbm
