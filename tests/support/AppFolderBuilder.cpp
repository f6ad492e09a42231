#include "support/AppFolderBuilder.h"

#include <fstream>
#include <stdexcept>
#include <vector>

#include "core/Geodesy.h"
#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/MagVar.h"
#include "database/NavaidFiles.h"
#include "database/WorldShapes.h"
#include "planning/Aircraft.h"
#include "support/SideFiles.h"

namespace orv::test {

namespace fs = std::filesystem;

namespace {

std::string Text(const std::vector<uint8_t>& bytes) { return std::string(bytes.begin(), bytes.end()); }

RunwayRec Runway(std::string_view low, std::string_view high, float lat, float lon, float heading, int16_t length,
                 int16_t width, uint8_t surface, std::string_view lowIls, std::string_view highIls) {
  RunwayRec rw;
  rw.LowEnd.Assign(low);
  rw.HighEnd.Assign(high);
  rw.Lat = lat;
  rw.Lon = lon;
  rw.TrueHeading = heading;
  rw.LengthFeet = length;
  rw.WidthFeet = width;
  rw.Surface = surface;
  rw.LowIls.Assign(lowIls);
  rw.HighIls.Assign(highIls);
  return rw;
}

FrequencyRec Frequency(std::string_view name, float mhz, uint8_t kind) {
  FrequencyRec f;
  f.Name.Assign(name);
  f.Frequency = mhz;
  f.Kind = kind;
  return f;
}

IlsRec Ils(int32_t airport, std::string_view ident, std::string_view name, std::string_view runway, float lat,
           float lon, float course, float mhz) {
  IlsRec ils;
  ils.Airport = airport;
  ils.Ident.Assign(ident);
  ils.Name.Assign(name);
  ils.Runway.Assign(runway);
  ils.Values[0] = lat;
  ils.Values[1] = lon;
  ils.Values[2] = course;
  ils.Values[3] = mhz;
  ils.Values[4] = 3.0f;  // glide slope angle
  ils.Ident2.Assign(ident);
  return ils;
}

ParkingRec Parking(float lat, float lon, int32_t number, int32_t kind, int32_t nameCode) {
  ParkingRec p;
  p.Lat = lat;
  p.Lon = lon;
  p.Number = number;
  p.Kind = kind;
  p.NameCode = nameCode;
  return p;
}

std::string AirportFile() {
  std::vector<AirportRec> airports(2);
  AirportRec& eddf = airports[0];
  eddf.Icao.Assign("EDDF");
  eddf.Name.Assign("Frankfurt Main");
  eddf.City = "Frankfurt";
  eddf.State = "Hessen";
  eddf.Country = "Germany";
  eddf.Lat = 50.0333f;
  eddf.Lon = 8.5706f;
  eddf.Elevation = 364;
  eddf.Runways = {Runway("07C", "25C", 50.0326f, 8.5869f, 69.9f, 13123, 148, 4, "", "IFC"),
                  Runway("18", "36", 50.0167f, 8.5280f, 179.8f, 13123, 148, 0, "", "")};
  eddf.Frequencies = {Frequency("FRANKFURT ATIS", 118.025f, 1), Frequency("FRANKFURT TOWER", 119.9f, 6),
                      Frequency("FRANKFURT GROUND", 121.8f, 5)};
  eddf.Parking = {Parking(50.0486f, 8.5712f, 1, 10, 12), Parking(50.0300f, 8.5300f, 5, 1, 1)};
  eddf.Ils = {Ils(0, "IFC", "ILS 25C", "25C", 50.0405f, 8.6114f, 249.9f, 111.15f)};

  AirportRec& kjfk = airports[1];
  kjfk.Icao.Assign("KJFK");
  kjfk.Name.Assign("John F Kennedy Intl");
  kjfk.City = "New York";
  kjfk.State = "New York";
  kjfk.Country = "United States";
  kjfk.Lat = 40.6398f;
  kjfk.Lon = -73.7789f;
  kjfk.Elevation = 13;
  kjfk.Runways = {Runway("04L", "22R", 40.6357f, -73.7856f, 31.1f, 12079, 200, 4, "IHIQ", "")};
  kjfk.Frequencies = {Frequency("KENNEDY TOWER", 119.1f, 6)};
  kjfk.Ils = {Ils(1, "IHIQ", "ILS 04L", "04L", 40.6218f, -73.7859f, 31.1f, 110.9f)};
  return Text(BuildAirportFile(airports));
}

// Two intersections joined both ways by a low and a high airway.
void AirwayFiles(std::string& dijinter, std::string& vicways, std::string& jetways) {
  struct Node {
    int32_t index;
    const char* ident;
    float lat, lon;
  };
  const Node nodes[2] = {{1, "TOBAK", 49.9000f, 8.2000f}, {2, "UNOKO", 50.3000f, 8.9000f}};
  const float distance = static_cast<float>(GcDistance(nodes[0].lat, nodes[0].lon, nodes[1].lat, nodes[1].lon));
  NavaidTables t;
  for (int i = 0; i < 2; ++i) {
    const Node& n = nodes[i];
    const Node& other = nodes[1 - i];
    IntersectionRec rec;
    rec.Index = n.index;
    rec.Country.Assign("ED");
    rec.Ident.Assign(n.ident);
    rec.Name.Assign(n.ident);
    rec.Lat = n.lat;
    rec.Lon = n.lon;
    rec.Flag1.Assign("X");
    const AirwayLinkRec low{other.index, FixedStr<8>("V1"), distance, FixedStr<5>("05000"), FixedStr<5>("")};
    const AirwayLinkRec high{other.index, FixedStr<8>("J1"), distance, FixedStr<5>("FL245"), FixedStr<5>("FL460")};
    PlaceIntersection(t, rec, std::span(&low, 1), std::span(&high, 1));
  }
  dijinter = Text(BuildDijinterFile(t));
  vicways = Text(BuildAirwayFile({AirwayRec{FixedStr<8>("V1"), 1, 2, distance, FixedStr<5>("05000"), FixedStr<5>("n/a")}}));
  jetways =
      Text(BuildAirwayFile({AirwayRec{FixedStr<8>("J1"), 1, 2, distance, FixedStr<5>("FL245"), FixedStr<5>("FL460")}}));
}

std::string FixesFile() {
  FixRec f;
  f.Country.Assign("ED");
  f.Ident.Assign("FF25C");
  f.Name.Assign("FF25C");
  f.Lat = 50.0700f;
  f.Lon = 8.7800f;
  return Text(BuildFixesFile({f}));
}

std::string VorFile() {
  VorRec v;
  v.Ident.Assign("FFM");
  v.Name.Assign("FRANKFURT");
  v.Lat = 50.0535f;
  v.Lon = 8.6371f;
  v.Frequency = 114.2f;
  v.Value = 130;  // range in NM
  v.TypeCode = 4;
  return Text(BuildVorFile({v}));
}

std::string NdbFile() {
  NdbRec n;
  n.Ident.Assign("CHA");
  n.Name.Assign("CHARLIE");
  n.Lat = 49.9200f;
  n.Lon = 8.4700f;
  n.Frequency = 338;
  n.Value = 25;  // range in NM
  n.TypeText.Assign("5");
  return Text(BuildNdbFile({n}));
}

std::string AirspaceFile() {
  AirspaceTables t;
  AirspaceRec a;
  a.Index = 0;
  a.Class.Assign("CTRZ");
  a.Ident.Assign("EDDF");
  a.Name.Assign("FRANKFURT CTR");
  a.Name2.Assign("LANGEN RADAR");
  a.Text1.Assign("119.90");
  a.UpperAltitude.Assign("02500");
  a.LowerAltitude.Assign("SFC");
  const ShapePoint outline[5] = {
      {50.15f, 8.40f}, {50.15f, 8.75f}, {49.90f, 8.75f}, {49.90f, 8.40f}, {50.15f, 8.40f}};
  AddAirspace(t, a, outline);
  return Text(BuildAirspaceFile(t));
}

void WorldFiles(std::string& polygons, std::string& lines) {
  AirspaceTables t;
  const ShapePoint land[5] = {{55.0f, 5.0f}, {55.0f, 15.0f}, {47.0f, 15.0f}, {47.0f, 5.0f}, {55.0f, 5.0f}};
  AddWorldShape(t.WorldPolygons, t.WorldPolygonPoints, 0, 2, land);
  const ShapePoint river[4] = {{47.6f, 7.6f}, {49.0f, 8.4f}, {50.0f, 8.3f}, {51.8f, 6.1f}};
  AddWorldShape(t.WorldLines, t.WorldLinePoints, 0, 1, river);
  polygons = Text(BuildWorldPolygonFile(t));
  lines = Text(BuildWorldLineFile(t));
}

std::string AircraftFile() {
  AircraftRec a;
  a.Id = 0;
  a.AircraftName = "Boeing 737-800";
  a.MaxFuel = 20800;
  a.Ceiling = 410;
  a.MaxWeight = 79000;
  a.EmptyWeight = 41400;
  a.LoadWeight = 15000;
  a.ClimbRate = 2500;
  a.ClimbSpeed = 280;
  a.DescentRate = 2000;
  a.DescentSpeed = 280;
  a.CruiseSpeed = 450;
  a.CruiseLevel = 350;
  a.ApproachSpeed = 145;
  a.MinRunway = MinRunwayForApproachSpeed(a.ApproachSpeed);
  a.MaxRange = 2900;
  return FormatAircraftFile({a});
}

}  // namespace

AppFolderBuilder::AppFolderBuilder(fs::path root) : root_(std::move(root)) {
  const std::string grid = Text(BuildMagVarFile([](int, int) { return 0.0; }));
  files_["\\magvar09.swf"] = grid;
  files_["\\magvar10.swf"] = grid;

  files_["@region.orv"] = Text(BuildRegionFile({"Europe", "North America"}));
  files_["@country.orv"] = Text(BuildCountryFile({{"Germany", "Europe"}, {"United States", "North America"}}));
  files_["@state.orv"] = Text(BuildStateFile({{"Hessen", "Germany"}, {"New York", "United States"}}));
  files_["@city.orv"] =
      Text(BuildCityFile({{"Frankfurt", "Hessen", "Germany"}, {"New York", "New York", "United States"}}));
  files_["@airport.orv"] = AirportFile();
  for (const char* optional : {"@taxi.orv", "@poly.orv", "@marker.orv"}) files_[optional] = std::string();

  std::string dijinter, vicways, jetways;
  AirwayFiles(dijinter, vicways, jetways);
  files_["\\database\\dijinter.orv"] = dijinter;
  files_["\\database\\vicways.orv"] = vicways;
  files_["\\database\\jetways.orv"] = jetways;
  files_["\\database\\fixes.orv"] = FixesFile();
  files_["\\database\\vor.orv"] = VorFile();
  files_["\\database\\ndb.orv"] = NdbFile();
  files_["\\database\\airspace.orv"] = AirspaceFile();
  files_["\\database\\msa.orv"] = std::string();
  files_["\\database\\userwp.udb"] = std::string("ORVUSERDB");

  const ProcedurePoint tobak{"Int", "TOBAK", "TOBAK", 49.9000f, 8.2000f};
  const ProcedurePoint unoko{"Int", "UNOKO", "UNOKO", 50.3000f, 8.9000f};
  files_["\\database\\sid.orv"] = Text(BuildProcedureFile({{"EDDF", "25C", "TOBAK1F", {tobak}}}));
  files_["\\database\\star.orv"] = Text(BuildProcedureFile({{"EDDF", "00", "UNOKO1A", {unoko}}}));

  std::string polygons, lines;
  WorldFiles(polygons, lines);
  files_["\\map\\worldpolygon.bin"] = polygons;
  files_["\\map\\worldline.bin"] = lines;
  files_["\\database\\WxStation.txt"] =
      BuildWxStationFile({{"EDDF", 50.0333f, 8.5706f}, {"KJFK", 40.6398f, -73.7789f}});
  files_["\\user\\aircraft.orv"] = AircraftFile();
  files_["\\database\\AIRAC.INI"] = std::string(kAiracText);
}

AppFolderBuilder& AppFolderBuilder::SimFolder(std::string folder) {
  sim_ = std::move(folder);
  return *this;
}

AppFolderBuilder& AppFolderBuilder::Ini(std::string text) { return Put("\\orv.ini", std::move(text)); }

std::string AppFolderBuilder::Db(std::string_view name) const { return "\\database\\" + sim_ + "\\" + std::string(name); }

std::string AppFolderBuilder::Key(std::string_view constant) const {
  std::string prefix = "\\database\\" + sim_ + "\\";
  if (constant.substr(0, prefix.size()) == prefix) {
    std::string key(constant.substr(prefix.size()));
    key.insert(0, 1, '@');  // (a literal + string trips a false -Wrestrict in GCC 12)
    return key;
  }
  return std::string(constant);
}

AppFolderBuilder& AppFolderBuilder::Put(std::string_view constant, std::string content) {
  files_[Key(constant)] = std::move(content);
  return *this;
}

AppFolderBuilder& AppFolderBuilder::Drop(std::string_view constant) {
  files_[Key(constant)] = std::nullopt;
  return *this;
}

const fs::path& AppFolderBuilder::Build() const {
  fs::create_directories(root_);
  for (const auto& [key, content] : files_) {
    if (!content) continue;
    std::string constant = key[0] == '@' ? Db(key.substr(1)) : key;
    fs::path path = root_;
    size_t pos = 0;
    while (pos < constant.size()) {
      size_t next = constant.find('\\', pos);
      if (next == std::string::npos) next = constant.size();
      if (next > pos) path /= constant.substr(pos, next - pos);
      pos = next + 1;
    }
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(content->data(), static_cast<std::streamsize>(content->size()));
    if (!out) throw std::runtime_error("cannot write test file " + path.string());
  }
  return root_;
}

}  // namespace orv::test
