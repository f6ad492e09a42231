// Inside the world fixture: its random numbers, the areas it places things
// in, the plan of exact counts, and the tables it fills in the form the
// database tool writes them. Only the fixture's own sources include this.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "database/AirportFile.h"
#include "database/AirspaceTables.h"
#include "database/MagVar.h"
#include "database/NavaidFiles.h"
#include "database/UserWaypoints.h"
#include "planning/Aircraft.h"
#include "support/SideFiles.h"
#include "support/WorldFixture.h"

namespace orv::test::world {

// SplitMix64: small, fast and the same on every platform and library, unlike
// the standard distributions. Each part of the world draws from its own
// stream, so that changing one part leaves the others as they were.
class Rng {
public:
  Rng(uint32_t seed, uint64_t stream) : state_(seed * 0x9E3779B97F4A7C15ull ^ (stream * 0xD1B54A32D192ED03ull)) {}
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // [0, 1)
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }
  double Range(double lo, double hi) { return lo + (hi - lo) * Unit(); }
  // 0 .. n-1 (n > 0)
  uint32_t Below(uint64_t n) { return static_cast<uint32_t>(((Next() >> 32) * n) >> 32); }
  bool Chance(double p) { return Unit() < p; }

private:
  uint64_t state_;
};

// Streams of the generator.
enum Stream : uint64_t {
  kStreamHierarchy = 1,
  kStreamAirports,
  kStreamNavaids,
  kStreamIntersections,
  kStreamAirways,
  kStreamFixes,
  kStreamAirspaces,
  kStreamCoast,
  kStreamMsa,
  kStreamExtras,
};

struct CountrySpec {
  const char* Name;
  const char* Prefix;  // two letters: the ICAO region; the first starts every airport code
};

// A box of the world that gets a share of the airports and of the navaids.
struct AreaSpec {
  const char* Region;
  float South, North, West, East;
  double AirportShare;
  double NavShare;
  bool UsAirwayNames;  // "V" and "J" airways; elsewhere "A", "B", "G", "R" and "UL", "UN", ...
  const CountrySpec* Countries;
  int CountryCount;
};

inline constexpr int kAreaCount = 8;
const AreaSpec& Area(int i);
inline constexpr int kEuropeArea = 3;

// The three island groups whose airways form components of their own.
struct IslandSpec {
  const char* Name;
  float South, North, West, East;
  const char* Prefix;
};
inline constexpr int kIslandCount = 3;
const IslandSpec& Island(int i);

// Splits total into counts proportional to the weights, each at least
// minimum (when total allows), summing to total exactly.
std::vector<int64_t> Distribute(int64_t total, const std::vector<double>& weights, int64_t minimum);

// Every count of the world, worked out from the options alone.
struct Plan {
  WorldCountsRec Totals;
  std::array<int64_t, kAreaCount> AirportsInArea{};  // EDDF not included
  std::array<int64_t, kAreaCount> VorsInArea{}, NdbsInArea{}, FixesInArea{};
  // Intersections of the continents by area: all of them, those on jet
  // airways (JetNodes, jet-only ones included) and those only on jet airways.
  std::array<int64_t, kAreaCount> Nodes{}, JetNodes{}, JetOnly{};
  int64_t IslandNodes = 0;  // in each island group
  int64_t VictorTwoWay = 0, JetTwoWay = 0, VictorOneWay = 0, JetOneWay = 0;
  int64_t LargeAirports = 0, MediumAirports = 0;  // EDDF counted among the large ones
};
Plan MakePlan(const WorldFixtureOptions& options);

// The fixed EDDF lists, which the totals include.
inline constexpr int kEddfRunways = 4;
inline constexpr int kEddfFrequencies = 8;
inline constexpr int kEddfParking = 60;
inline constexpr int kEddfIls = 6;

// Airport sizes, which decide the length of its lists.
enum class Size : uint8_t { Small, Medium, Large };

// The world as the database tool writes it, before any file is built.
struct World {
  WorldFixtureOptions Options;
  Plan Counts;
  MagVarGrid Grid;  // the variation file, also used for the MagVar the tool writes

  std::vector<std::string> Regions;
  std::vector<CountryEntry> Countries;
  std::vector<StateEntry> States;
  std::vector<CityEntry> Cities;

  std::vector<AirportRec> Airports;  // sorted by ICAO; slot = position
  std::vector<Size> AirportSizes;    // by slot
  std::vector<int> AirportAreas;     // by slot
  int32_t EddfSlot = -1;

  NavaidTables Navaids;               // intersections placed by index, airways, fixes, VORs, NDBs
  std::vector<int> VorAreas;          // by VOR
  std::unordered_set<std::string> UsedIdents;  // the five-letter idents of fixes and intersections
  AirspaceTables Shapes;              // airspaces, MSA, ground layout, world shapes, user objects
  std::vector<UserWaypointRec> UserWaypoints;
  std::vector<ProcedureBlock> Sids, Stars;
  std::vector<WxStation> Stations;
  std::vector<AircraftRec> Aircraft;
};

// EDDF's ground layout, the same for every option.
std::vector<TaxiRec> EddfTaxiways();
std::vector<GroundPolyRec> EddfGroundPolygons();

// The parts, in the order they are built (later parts read earlier ones).
void BuildHierarchyAndAirports(World& w);
void BuildNavaids(World& w);        // VORs, NDBs, fixes
void BuildAirwayNet(World& w);      // intersections and airways
void BuildProcedures(World& w);     // SIDs, STARs, weather stations
void BuildShapes(World& w);         // airspaces, MSA, coastlines, user objects

// ------------------------------------------------------------------ helpers

// The variation the fixture's grid holds, in degrees east.
double FixtureVariation(int lat, int lon);
float VariationAt(const World& w, float lat, float lon);

// A position moved distance NM along a true course, on a flat local chart.
ShapePoint Offset(float lat, float lon, double courseDeg, double distanceNm);

// Names that look like places: "Varenholt", "Kessing".
std::string PlaceName(Rng& rng);
// A five-letter pronounceable ident not yet in used (falling back to any five
// letters when those run short); it is added to used.
std::string NewIdent5(Rng& rng, std::unordered_set<std::string>& used);
// A code of letters from a running number: a permutation of the 26^3 three
// letter codes, then codes of three letters and digits, then of four.
std::string CodeFromNumber(int64_t number);

std::string UpperText(std::string_view text);

}  // namespace orv::test::world
