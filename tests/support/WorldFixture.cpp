// The world fixture's plan of counts, its shared helpers and the public entry
// points: the files built in memory, the folder on disk, and the database as
// the start-up loads it.
#include "support/WorldFixture.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Startup.h"
#include "database/AirspaceFiles.h"
#include "database/DatabaseLoader.h"
#include "database/GroundFiles.h"
#include "database/UserObjects.h"
#include "database/WorldShapes.h"
#include "support/WorldFixtureDetail.h"

namespace orv::test {

namespace world {

namespace {

constexpr CountrySpec kUsCountries[] = {{"United States", "K1"}};
constexpr CountrySpec kCanadaCountries[] = {{"Canada", "CY"}};
constexpr CountrySpec kMexicoCountries[] = {{"Mexico", "MM"}};
constexpr CountrySpec kEuropeCountries[] = {
    {"Germany", "ED"},     {"United Kingdom", "EG"}, {"France", "LF"},  {"Spain", "LE"},  {"Italy", "LI"},
    {"Netherlands", "EH"}, {"Switzerland", "LS"},    {"Austria", "LO"}, {"Poland", "EP"}, {"Sweden", "ES"}};
constexpr CountrySpec kSouthAmericaCountries[] = {
    {"Brazil", "SB"}, {"Argentina", "SA"}, {"Chile", "SC"}, {"Colombia", "SK"}, {"Peru", "SP"}};
constexpr CountrySpec kAfricaCountries[] = {
    {"South Africa", "FA"}, {"Egypt", "HE"}, {"Morocco", "GM"}, {"Nigeria", "DN"}, {"Kenya", "HK"}};
constexpr CountrySpec kAsiaCountries[] = {
    {"China", "ZB"}, {"Japan", "RJ"}, {"India", "VI"}, {"Thailand", "VT"}, {"Saudi Arabia", "OE"}};
constexpr CountrySpec kOceaniaCountries[] = {{"Australia", "YM"}};

// Airports dense over the United States and Europe, sparse elsewhere: about
// a third of the airports in each of those two boxes.
const AreaSpec kAreas[kAreaCount] = {
    {"North America", 24.5f, 49.0f, -124.5f, -67.0f, 0.32, 0.27, true, kUsCountries, 1},
    {"North America", 43.0f, 60.0f, -130.0f, -55.0f, 0.05, 0.06, true, kCanadaCountries, 1},
    {"North America", 15.0f, 30.0f, -115.0f, -87.0f, 0.03, 0.03, false, kMexicoCountries, 1},
    {"Europe", 36.0f, 60.0f, -10.0f, 30.0f, 0.30, 0.32, false, kEuropeCountries, 10},
    {"South America", -40.0f, 10.0f, -78.0f, -35.0f, 0.07, 0.07, false, kSouthAmericaCountries, 5},
    {"Africa", -34.0f, 35.0f, -17.0f, 50.0f, 0.06, 0.07, false, kAfricaCountries, 5},
    {"Asia", 5.0f, 50.0f, 60.0f, 140.0f, 0.12, 0.13, false, kAsiaCountries, 5},
    {"Oceania", -40.0f, -12.0f, 115.0f, 153.0f, 0.05, 0.05, false, kOceaniaCountries, 1},
};

const IslandSpec kIslands[kIslandCount] = {
    {"Hawaii", 18.9f, 22.3f, -160.3f, -154.8f, "PH"},
    {"Azores", 36.9f, 39.8f, -31.3f, -25.0f, "LP"},
    {"New Zealand", -46.7f, -34.4f, 166.5f, 178.5f, "NZ"},
};

int64_t Scaled(double base, double scale, int64_t minimum) {
  return std::max<int64_t>(minimum, std::llround(base * scale));
}

}  // namespace

const AreaSpec& Area(int i) { return kAreas[i]; }
const IslandSpec& Island(int i) { return kIslands[i]; }

std::vector<int64_t> Distribute(int64_t total, const std::vector<double>& weights, int64_t minimum) {
  const std::size_t n = weights.size();
  std::vector<int64_t> out(n, 0);
  if (n == 0 || total <= 0) return out;
  if (total < minimum * static_cast<int64_t>(n)) minimum = 0;
  const int64_t rest = total - minimum * static_cast<int64_t>(n);
  double sum = 0;
  for (double w : weights) sum += std::max(0.0, w);
  double cumulative = 0;
  int64_t given = 0;
  for (std::size_t i = 0; i < n; ++i) {
    cumulative += sum > 0 ? std::max(0.0, weights[i]) : 1.0;
    const double share = sum > 0 ? cumulative / sum : cumulative / static_cast<double>(n);
    int64_t upTo = i + 1 == n ? rest : std::min<int64_t>(rest, std::llround(static_cast<double>(rest) * share));
    upTo = std::max(upTo, given);
    out[i] = minimum + (upTo - given);
    given = upTo;
  }
  return out;
}

Plan MakePlan(const WorldFixtureOptions& options) {
  const double s = std::isfinite(options.Scale) && options.Scale > 0 ? options.Scale : 0.0;
  Plan p;
  WorldCountsRec& t = p.Totals;
  std::vector<double> airportShares, navShares;
  for (const AreaSpec& a : kAreas) {
    airportShares.push_back(a.AirportShare);
    navShares.push_back(a.NavShare);
  }
  auto toArray = [](const std::vector<int64_t>& v) {
    std::array<int64_t, kAreaCount> a{};
    std::copy(v.begin(), v.end(), a.begin());
    return a;
  };

  // Airports: EDDF and the others, each of which has at least one runway,
  // frequency and parking position.
  t.Airports = Scaled(40000, s, kAreaCount + 1);
  const int64_t others = t.Airports - 1;
  t.Runways = std::max(Scaled(60000, s, 0), kEddfRunways + others);
  t.Frequencies = std::max(Scaled(100000, s, 0), kEddfFrequencies + others);
  t.Parking = std::max(Scaled(150000, s, 0), kEddfParking + others);
  t.Ils = std::max<int64_t>(Scaled(10000, s, 0), kEddfIls);
  t.Markers = 2 * t.Ils;
  p.LargeAirports = std::max<int64_t>(1, std::llround(0.02 * static_cast<double>(t.Airports)));
  p.MediumAirports = std::min<int64_t>(t.Airports - p.LargeAirports, std::llround(0.18 * static_cast<double>(t.Airports)));
  p.AirportsInArea = toArray(Distribute(others, airportShares, 1));

  // The hierarchy: every country has a state and every state a city.
  std::vector<std::string> regions;
  for (const AreaSpec& a : kAreas) {
    if (std::find(regions.begin(), regions.end(), a.Region) == regions.end()) regions.emplace_back(a.Region);
    t.Countries += a.CountryCount;
  }
  t.Regions = static_cast<int64_t>(regions.size());
  t.States = std::max(t.Countries, Scaled(600, s, 0));
  t.Cities = std::max(t.States, Scaled(4000, s, 0));

  // Navaids; FFM is one of the VORs.
  t.Vors = Scaled(12000, s, kAreaCount + 1);
  p.VorsInArea = toArray(Distribute(t.Vors - 1, navShares, 1));
  t.Ndbs = Scaled(10000, s, kAreaCount);
  p.NdbsInArea = toArray(Distribute(t.Ndbs, navShares, 1));
  t.Fixes = Scaled(60000, s, kAreaCount);
  p.FixesInArea = toArray(Distribute(t.Fixes, navShares, 1));

  // The airway net. Index 0 stays empty (a route search's "no predecessor"),
  // so the intersections take 1 to 40000 at most. Each area's victor and jet
  // nodes are joined two-way in a chain, the areas by one gateway leg each
  // (a tree, kAreaCount - 1 legs), each island group by its own chains; the
  // rest of the segments are one-way. The number of jet nodes is chosen so
  // that the links come out at the planned total:
  //   links = victor segments + jet segments + victor two-way + jet two-way.
  t.Intersections = std::min<int64_t>(kMaxIntersectionIndex, Scaled(40000, s, 40));
  p.IslandNodes = std::max<int64_t>(3, std::llround(12 * s));
  p.IslandNodes = std::min(p.IslandNodes, (t.Intersections - 2 * kAreaCount) / kIslandCount);
  const int64_t main = t.Intersections - kIslandCount * p.IslandNodes;
  p.Nodes = toArray(Distribute(main, navShares, 2));
  const int64_t islandLegs = kIslandCount * (p.IslandNodes - 1);
  const int64_t victorSegments = Scaled(60000, s, 1);
  const int64_t jetSegments = Scaled(40000, s, 1);
  const int64_t links = Scaled(150000, s, 1);
  const int64_t twoWay = links - victorSegments - jetSegments;
  // twoWay = (main - jetOnly - 1 + islandLegs) + (jetNodes - 1 + islandLegs)
  const int64_t wanted = twoWay - main + 2 - 2 * islandLegs;  // jetNodes - jetOnly
  const int64_t firstGuess = std::clamp<int64_t>(std::llround(static_cast<double>(wanted) / 0.9), kAreaCount, main);
  std::vector<double> nodeWeights(p.Nodes.begin(), p.Nodes.end());
  p.JetNodes = toArray(Distribute(firstGuess, nodeWeights, 1));
  int64_t jetNodes = 0, jetOnly = 0;
  int biggest = 0;
  for (int a = 0; a < kAreaCount; ++a) {
    p.JetNodes[a] = std::min(p.JetNodes[a], p.Nodes[a]);
    p.JetOnly[a] = std::min(p.JetNodes[a] / 10, p.Nodes[a] - 1);
    jetNodes += p.JetNodes[a];
    jetOnly += p.JetOnly[a];
    if (p.Nodes[a] > p.Nodes[biggest]) biggest = a;
  }
  const int64_t adjusted = std::clamp(p.JetNodes[biggest] + wanted - (jetNodes - jetOnly),
                                      std::max<int64_t>(1, p.JetOnly[biggest]), p.Nodes[biggest]);
  jetNodes += adjusted - p.JetNodes[biggest];
  p.JetNodes[biggest] = adjusted;
  p.VictorTwoWay = main - jetOnly - 1 + islandLegs;
  p.JetTwoWay = jetNodes - 1 + islandLegs;
  p.VictorOneWay = std::max<int64_t>(0, victorSegments - p.VictorTwoWay);
  p.JetOneWay = std::max<int64_t>(0, jetSegments - p.JetTwoWay);
  t.VictorAirways = p.VictorTwoWay + p.VictorOneWay;
  t.JetAirways = p.JetTwoWay + p.JetOneWay;
  t.AirwayLinks = 2 * (p.VictorTwoWay + p.JetTwoWay) + p.VictorOneWay + p.JetOneWay;

  // Shapes. An airspace outline has at least 5 points, a world polygon 4, a
  // world line 2.
  t.Airspaces = std::min<int64_t>(kLastAirspaceIndex + 1, Scaled(15000, s, 4));
  t.AirspacePoints = std::max(Scaled(2000000, s, 0), 5 * t.Airspaces);
  t.WorldPolygons = std::min<int64_t>(kLastWorldPolygonIndex + 1, Scaled(4000, s, 8));
  t.WorldPolygonPoints = std::max(Scaled(1000000, s, 0), 4 * t.WorldPolygons);
  t.WorldLines = Scaled(2000, s, 2);
  t.WorldLinePoints = std::max(Scaled(200000, s, 0), 2 * t.WorldLines);
  t.MsaCells = Scaled(5000, s, 1);
  t.TaxiSegments = static_cast<int64_t>(EddfTaxiways().size());
  t.GroundPolygons = static_cast<int64_t>(EddfGroundPolygons().size());
  t.UserWaypoints = 5;
  t.UserObjects = 2;
  return p;
}

// ------------------------------------------------------------------ helpers

double FixtureVariation(int lat, int lon) {
  // East of the agonic line through the middle of North America the
  // variation is west, over Europe a few degrees east: one wave round the
  // world, weaker towards the equator.
  constexpr double kRad = 3.14159265358979323846 / 180.0;
  const double east = lon > 180 ? lon - 360 : lon;
  return -15.0 * std::sin(1.86 * (east + 97.0) * kRad) * (0.7 + 0.3 * std::cos(lat * kRad));
}

float VariationAt(const World& w, float lat, float lon) { return CSng(MagVarAt(w.Grid, lat, lon)); }

ShapePoint Offset(float lat, float lon, double courseDeg, double distanceNm) {
  constexpr double kRad = 3.14159265358979323846 / 180.0;
  double la = lat + distanceNm * std::cos(courseDeg * kRad) / 60.0;
  double cosLat = std::max(0.05, std::cos(lat * kRad));
  double lo = lon + distanceNm * std::sin(courseDeg * kRad) / (60.0 * cosLat);
  la = std::clamp(la, -89.9, 89.9);
  if (lo > 180) lo -= 360;
  if (lo < -180) lo += 360;
  return {static_cast<float>(la), static_cast<float>(lo)};
}

std::string PlaceName(Rng& rng) {
  static constexpr const char* kFirst[] = {"Ber", "Ka",  "Lin", "Mar", "Hol", "Ven", "Ros", "Dor", "Tal", "San",
                                           "Bel", "Cor", "Fal", "Gra", "Hal", "Lor", "Mon", "Nor", "Pel", "Ril",
                                           "Sel", "Tor", "Val", "Wes", "Al",  "Bra", "Cas", "Del", "Em",  "Fen"};
  static constexpr const char* kMiddle[] = {"a", "e", "i", "o", "en", "an", "ar", "el", "in", "or", "u", "is"};
  static constexpr const char* kLast[] = {"burg", "ton",  "holt", "ville", "stad", "ford", "ley",  "ing",
                                          "dal",  "mont", "wick", "field", "haven", "port", "berg", "mouth",
                                          "sund", "rio",  "ara",  "polis", "bridge", "moor", "dorf", "crest"};
  std::string name = kFirst[rng.Below(std::size(kFirst))];
  if (rng.Chance(0.6)) name += kMiddle[rng.Below(std::size(kMiddle))];
  name += kLast[rng.Below(std::size(kLast))];
  return name;
}

std::string NewIdent5(Rng& rng, std::unordered_set<std::string>& used) {
  static constexpr std::string_view kConsonants = "BCDFGHJKLMNPRSTVWXYZ";
  static constexpr std::string_view kVowels = "AEIOU";
  for (int attempt = 0;; ++attempt) {
    std::string id(5, ' ');
    if (attempt < 16) {
      for (int i = 0; i < 5; ++i)
        id[i] = i % 2 == 0 ? kConsonants[rng.Below(kConsonants.size())] : kVowels[rng.Below(kVowels.size())];
    } else {
      for (char& c : id) c = static_cast<char>('A' + rng.Below(26));
    }
    if (used.insert(id).second) return id;
  }
}

std::string CodeFromNumber(int64_t number) {
  // L a letter, D a digit; each pattern's codes are visited in a scrambled
  // order (a multiplier prime to the pattern's size), so that neighbouring
  // numbers do not give neighbouring codes.
  static constexpr std::string_view kPatterns[] = {"LLL", "LLD", "LDL", "DLL", "LDD", "DLD", "DDL", "DDD", "LLLL"};
  for (std::string_view pattern : kPatterns) {
    int64_t size = 1;
    for (char k : pattern) size *= k == 'L' ? 26 : 10;
    if (number >= size) {
      number -= size;
      continue;
    }
    int64_t value = (number * 7919 + 1013) % size;
    std::string code(pattern.size(), ' ');
    for (std::size_t i = pattern.size(); i-- > 0;) {
      const int64_t base = pattern[i] == 'L' ? 26 : 10;
      code[i] = static_cast<char>((pattern[i] == 'L' ? 'A' : '0') + value % base);
      value /= base;
    }
    return code;
  }
  return "ZZZZ";
}

std::string UpperText(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return out;
}

}  // namespace world

// ------------------------------------------------------------------ public

namespace {

using world::World;

World BuildWorld(const WorldFixtureOptions& options) {
  World w;
  w.Options = options;
  w.Counts = world::MakePlan(options);
  w.Grid.Assign(BuildMagVarFile(world::FixtureVariation));
  world::BuildHierarchyAndAirports(w);
  world::BuildNavaids(w);
  world::BuildAirwayNet(w);
  world::BuildProcedures(w);
  world::BuildShapes(w);
  return w;
}

std::string Text(const std::vector<uint8_t>& bytes) { return std::string(bytes.begin(), bytes.end()); }

// A constant ("\database\vor.orv") as a path under root.
std::filesystem::path PathOf(const std::filesystem::path& root, std::string_view constant) {
  std::filesystem::path path = root;
  std::size_t pos = 0;
  while (pos < constant.size()) {
    std::size_t next = constant.find('\\', pos);
    if (next == std::string_view::npos) next = constant.size();
    if (next > pos) path /= std::string(constant.substr(pos, next - pos));
    pos = next + 1;
  }
  return path;
}

}  // namespace

WorldCountsRec WorldCounts(const WorldFixtureOptions& options) { return world::MakePlan(options).Totals; }

std::vector<WorldFile> BuildWorldFiles(const WorldFixtureOptions& options) {
  World w = BuildWorld(options);
  const std::string sim = "\\database\\FS09\\";
  AirspaceTables ground;  // the simulator folder's layout files
  ground.TaxiSegments = w.Shapes.TaxiSegments;
  ground.GroundPolygons = w.Shapes.GroundPolygons;
  ground.Markers = w.Shapes.Markers;

  std::vector<WorldFile> files;
  files.push_back({"\\user\\aircraft.orv", FormatAircraftFile(w.Aircraft)});
  files.push_back({"\\magvar09.swf", Text(w.Grid.Bytes())});
  files.push_back({"\\magvar10.swf", Text(w.Grid.Bytes())});
  files.push_back({sim + "region.orv", Text(BuildRegionFile(w.Regions))});
  files.push_back({sim + "country.orv", Text(BuildCountryFile(w.Countries))});
  files.push_back({sim + "state.orv", Text(BuildStateFile(w.States))});
  files.push_back({sim + "city.orv", Text(BuildCityFile(w.Cities))});
  files.push_back({sim + "airport.orv", Text(BuildAirportFile(w.Airports))});
  files.push_back({sim + "taxi.orv", Text(BuildTaxiFile(ground))});
  files.push_back({sim + "poly.orv", Text(BuildGroundPolyFile(ground))});
  files.push_back({sim + "marker.orv", Text(BuildMarkerFile(ground))});
  files.push_back({"\\database\\dijinter.orv", Text(BuildDijinterFile(w.Navaids))});
  files.push_back({"\\database\\vicways.orv", Text(BuildAirwayFile(w.Navaids.VictorAirways))});
  files.push_back({"\\database\\jetways.orv", Text(BuildAirwayFile(w.Navaids.JetAirways))});
  files.push_back({"\\database\\fixes.orv", Text(BuildFixesFile(w.Navaids.Fixes))});
  files.push_back({"\\database\\vor.orv", Text(BuildVorFile(w.Navaids.Vors))});
  files.push_back({"\\database\\ndb.orv", Text(BuildNdbFile(w.Navaids.Ndbs))});
  files.push_back({"\\database\\airspace.orv", Text(BuildAirspaceFile(w.Shapes))});
  files.push_back({"\\database\\msa.orv", Text(BuildMsaFile(w.Shapes))});
  files.push_back({"\\database\\userwp.udb", Text(BuildUserWaypointFile(w.UserWaypoints))});
  files.push_back({"\\database\\sid.orv", Text(BuildProcedureFile(w.Sids))});
  files.push_back({"\\database\\star.orv", Text(BuildProcedureFile(w.Stars))});
  files.push_back({"\\map\\worldpolygon.bin", Text(BuildWorldPolygonFile(w.Shapes))});
  files.push_back({"\\map\\worldline.bin", Text(BuildWorldLineFile(w.Shapes))});
  files.push_back({"\\database\\WxStation.txt", BuildWxStationFile(w.Stations)});
  files.push_back({"\\database\\userObj.txt", BuildUserObjectFile(w.Shapes)});
  files.push_back({"\\database\\AIRAC.INI", "World fixture, seed " + std::to_string(options.Seed) + "\r\n"});
  return files;
}

void BuildWorldDatabase(NavDatabase& db, const WorldFixtureOptions& options) {
  const std::vector<WorldFile> files = BuildWorldFiles(options);
  std::map<std::string, const std::string*> byConstant;
  for (const WorldFile& f : files) byConstant[f.Constant] = &f.Bytes;

  // The start-up's order and rules, without the disk: each file goes to the
  // database's reader as RunStartup would hand it over.
  db = NavDatabase();
  DatabaseLoader loader(db);
  for (const StartupFileInfo& info : StartupFiles()) {
    std::string constant = info.InSimFolder ? "\\database\\FS09\\" + std::string(info.Name) : std::string(info.Name);
    auto it = byConstant.find(constant);
    if (it == byConstant.end()) continue;
    Bytes bytes(it->second->begin(), it->second->end());
    if (bytes.empty() && info.Empty != EmptyRule::Pass) continue;
    if (std::optional<std::string> refusal = loader.LoadFile(info.File, constant, bytes))
      throw std::runtime_error("world fixture: " + *refusal);
  }
  loader.LinkIls();
}

bool WriteWorldFolder(const std::filesystem::path& root, const WorldFixtureOptions& options) {
  std::error_code ec;
  for (const WorldFile& f : BuildWorldFiles(options)) {
    std::filesystem::path path = PathOf(root, f.Constant);
    std::filesystem::create_directories(path.parent_path(), ec);
    if (ec || !WriteFileAtomic(path, std::string_view(f.Bytes))) return false;
  }
  return true;
}

}  // namespace orv::test
