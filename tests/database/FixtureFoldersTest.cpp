// The test folders other suites and the benchmarks build on: the minimal
// folder of AppFolderBuilder and the world-sized fixture, loaded through the
// real start-up and readers.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "support/AppFolderBuilder.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

namespace fs = std::filesystem;
using test::WorldCountsRec;
using test::WorldFixtureOptions;

StartupResult LoadFolder(const fs::path& root, NavDatabase& db, test::ScriptedUi& ui) {
  AppState state{AppFolder(root)};
  test::FakeClock clock;
  DatabaseLoader loader(db);
  return RunStartup(state, ui, clock, loader);
}

int64_t Count(const NavDatabase& db, std::string_view name) {
  for (const ArrayCount& c : CountArrays(db))
    if (c.Name == name) return c.Count;
  return -1;
}

// ------------------------------------------------------------------ minimal folder

TEST(AppFolderBuilder, DefaultFolderLoadsWithTheRealReaders) {
  test::TempDir dir;
  test::AppFolderBuilder(dir.Path()).Build();
  NavDatabase db;
  test::ScriptedUi ui;
  EXPECT_EQ(LoadFolder(dir.Path(), db, ui).Outcome, StartupOutcome::OpenAirportSelection);
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_GT(db.Revision, 0u);  // the loaded files count as changes

  ASSERT_EQ(Count(db, "Airports"), 2);
  const AirportRec& eddf = db.Airports.Airports[0];
  EXPECT_EQ(eddf.Icao.Trimmed(), "EDDF");
  EXPECT_EQ(eddf.City, "Frankfurt");
  ASSERT_EQ(eddf.RunwayCount(), 2);
  const IlsRec* ils = IlsForRunwayEnd(eddf, 0, RunwayEnd::High);  // 25C
  ASSERT_NE(ils, nullptr);
  EXPECT_EQ(ils->Ident.Trimmed(), "IFC");
  EXPECT_EQ(db.Airports.Airports[1].Icao.Trimmed(), "KJFK");
  EXPECT_EQ(db.Airports.Cities[0].State, "Hessen");

  // The two intersections lead to each other on V1 and J1.
  ASSERT_EQ(db.Navaids.LowAirways(1).size(), 1u);
  EXPECT_EQ(db.Navaids.LowAirways(1)[0].Target, 2);
  EXPECT_EQ(db.Navaids.LowAirways(1)[0].AirwayName.Trimmed(), "V1");
  EXPECT_EQ(db.Navaids.HighAirways(2)[0].Target, 1);
  EXPECT_EQ(db.Navaids.HighAirways(2)[0].AirwayName.Trimmed(), "J1");
  EXPECT_EQ(db.Navaids.VictorAirways[0].Mea1.Trimmed(), "5000");
  EXPECT_EQ(db.Navaids.VictorAirways[0].Mea2.Trimmed(), "n/a");
  EXPECT_EQ(db.Navaids.Vors[0].TypeName.Trimmed(), "VOR-DME");
  EXPECT_EQ(db.Shapes.Airspaces[0].UpperAltitude.Trimmed(), "2500");
  EXPECT_EQ(db.Shapes.PointsOf(db.Shapes.Airspaces[0]).size(), 5u);
  EXPECT_EQ(db.Shapes.LinePointsOf(db.Shapes.WorldLines[0]).size(), 4u);
}

// ------------------------------------------------------------------ world fixture

TEST(WorldFixture, PromisedCountsAndTheirScale) {
  const WorldCountsRec w = test::WorldCounts();
  EXPECT_EQ(w.Airports, 40000);
  EXPECT_EQ(w.Runways, 60000);
  EXPECT_EQ(w.Frequencies, 100000);
  EXPECT_EQ(w.Parking, 150000);
  EXPECT_EQ(w.Ils, 10000);
  EXPECT_EQ(w.Markers, 20000);
  EXPECT_EQ(w.Vors, 12000);
  EXPECT_EQ(w.Ndbs, 10000);
  EXPECT_EQ(w.Fixes, 60000);
  EXPECT_EQ(w.Intersections, 40000);
  EXPECT_EQ(w.AirwayLinks, 150000);
  EXPECT_EQ(w.VictorAirways, 60000);
  EXPECT_EQ(w.JetAirways, 40000);
  EXPECT_EQ(w.Airspaces, 15000);
  EXPECT_EQ(w.AirspacePoints, 2000000);
  EXPECT_EQ(w.WorldPolygons, 4000);
  EXPECT_EQ(w.WorldPolygonPoints, 1000000);
  EXPECT_EQ(w.WorldLinePoints, 200000);
  EXPECT_EQ(w.MsaCells, 5000);

  const WorldCountsRec small = test::WorldCounts({1, 0.01});
  EXPECT_EQ(small.Airports, 400);
  EXPECT_EQ(small.Runways, 600);
  EXPECT_EQ(small.Parking, 1500);
  EXPECT_EQ(small.Intersections, 400);
  EXPECT_EQ(small.AirwayLinks, 1500);
  EXPECT_EQ(small.VictorAirways + small.JetAirways, 1000);
  EXPECT_EQ(small.AirspacePoints, 20000);

  // The fixed-range arrays stop at their bounds.
  const WorldCountsRec big = test::WorldCounts({1, 4.0});
  EXPECT_EQ(big.Airports, 160000);
  EXPECT_EQ(big.Intersections, 40000);
  EXPECT_EQ(big.Airspaces, 15001);
  EXPECT_EQ(big.WorldPolygons, 15201);
}

TEST(WorldFixture, SameOptionsGiveTheSameBytes) {
  const WorldFixtureOptions options{7, 0.005};
  const std::vector<test::WorldFile> a = test::BuildWorldFiles(options);
  const std::vector<test::WorldFile> b = test::BuildWorldFiles(options);
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].Constant, b[i].Constant);
    EXPECT_TRUE(a[i].Bytes == b[i].Bytes) << a[i].Constant;
  }
  const std::vector<test::WorldFile> other = test::BuildWorldFiles({8, 0.005});
  auto file = [](const std::vector<test::WorldFile>& files, std::string_view constant) {
    for (const test::WorldFile& f : files)
      if (f.Constant == constant) return f.Bytes;
    return std::string();
  };
  EXPECT_NE(file(a, "\\database\\FS09\\airport.orv"), file(other, "\\database\\FS09\\airport.orv"));
  EXPECT_EQ(file(a, "\\database\\FS09\\taxi.orv"), file(other, "\\database\\FS09\\taxi.orv"));  // Frankfurt's own
}

TEST(WorldFixture, SmallWorldLoadsThroughTheStartUpWithItsCounts) {
  const WorldFixtureOptions options{1, 0.01};
  test::TempDir dir;
  ASSERT_TRUE(test::WriteWorldFolder(dir.Path(), options));
  NavDatabase db;
  test::ScriptedUi ui;
  EXPECT_EQ(LoadFolder(dir.Path(), db, ui).Outcome, StartupOutcome::OpenAirportSelection);
  EXPECT_TRUE(ui.Messages().empty());

  const WorldCountsRec w = test::WorldCounts(options);
  const std::pair<std::string_view, int64_t> expected[] = {
      {"Regions", w.Regions},         {"Countries", w.Countries},        {"States", w.States},
      {"Cities", w.Cities},           {"Airports", w.Airports},          {"Vors", w.Vors},
      {"Ndbs", w.Ndbs},               {"Intersections", w.Intersections}, {"Fixes", w.Fixes},
      {"VictorAirways", w.VictorAirways}, {"JetAirways", w.JetAirways},  {"Airspaces", w.Airspaces},
      {"MsaCells", w.MsaCells},       {"TaxiSegments", w.TaxiSegments},  {"GroundPolygons", w.GroundPolygons},
      {"Markers", w.Markers},         {"WorldPolygons", w.WorldPolygons}, {"WorldLines", w.WorldLines},
      {"UserWaypoints", w.UserWaypoints}, {"UserObjects", w.UserObjects}};
  for (const auto& [name, count] : expected) EXPECT_EQ(Count(db, name), count) << name;
  int64_t runways = 0, frequencies = 0, parking = 0, ils = 0;
  for (const AirportRec& a : db.Airports.Airports) {
    runways += a.RunwayCount();
    frequencies += a.FrequencyCount();
    parking += a.ParkingCount();
    ils += a.IlsCount();
  }
  EXPECT_EQ(runways, w.Runways);
  EXPECT_EQ(frequencies, w.Frequencies);
  EXPECT_EQ(parking, w.Parking);
  EXPECT_EQ(ils, w.Ils);
  EXPECT_EQ(static_cast<int64_t>(db.Navaids.AirwayLinks.size()), w.AirwayLinks);
  EXPECT_EQ(static_cast<int64_t>(db.Shapes.AirspacePoints.size()), w.AirspacePoints);
  EXPECT_EQ(static_cast<int64_t>(db.Shapes.WorldPolygonPoints.size()), w.WorldPolygonPoints);
  EXPECT_EQ(static_cast<int64_t>(db.Shapes.WorldLinePoints.size()), w.WorldLinePoints);

  // The in-memory build is what the start-up loads.
  NavDatabase built;
  test::BuildWorldDatabase(built, options);
  EXPECT_TRUE(built.Navaids.Intersections == db.Navaids.Intersections);
  EXPECT_TRUE(built.Navaids.AirwayLinks == db.Navaids.AirwayLinks);
  EXPECT_TRUE(built.Navaids.JetAirways == db.Navaids.JetAirways);
  EXPECT_TRUE(built.Shapes.AirspacePoints == db.Shapes.AirspacePoints);
  EXPECT_TRUE(built.UserWaypoints == db.UserWaypoints);
  ASSERT_EQ(built.Airports.Airports.size(), db.Airports.Airports.size());
  for (std::size_t i = 0; i < db.Airports.Airports.size(); ++i) {
    EXPECT_TRUE(built.Airports.Airports[i].Icao == db.Airports.Airports[i].Icao);
    EXPECT_EQ(built.Airports.Airports[i].MagVar, db.Airports.Airports[i].MagVar);
  }
}

class WorldAt2Percent : public ::testing::Test {
protected:
  static void SetUpTestSuite() {
    db_ = new NavDatabase();
    test::BuildWorldDatabase(*db_, options_);
  }
  static void TearDownTestSuite() {
    delete db_;
    db_ = nullptr;
  }
  static constexpr WorldFixtureOptions options_{3, 0.02};
  static NavDatabase* db_;
};
NavDatabase* WorldAt2Percent::db_ = nullptr;

// Union-find over intersection indexes.
struct Components {
  std::vector<int32_t> parent;
  explicit Components(std::size_t n) : parent(n) { std::iota(parent.begin(), parent.end(), 0); }
  int32_t Find(int32_t x) {
    while (parent[static_cast<std::size_t>(x)] != x)
      x = parent[static_cast<std::size_t>(x)] = parent[static_cast<std::size_t>(parent[static_cast<std::size_t>(x)])];
    return x;
  }
  void Join(int32_t a, int32_t b) { parent[static_cast<std::size_t>(Find(a))] = Find(b); }
};

bool OnAnIsland(const IntersectionRec& n) {
  return (n.Lon < -150 && n.Lat > 15 && n.Lat < 25) || (n.Lon > -32 && n.Lon < -24 && n.Lat > 36 && n.Lat < 40.5) ||
         (n.Lon > 165 && n.Lat < -33);
}

TEST_F(WorldAt2Percent, IntersectionsAreStoredSouthToNorthWithTheirNets) {
  const NavaidTables& nav = db_->Navaids;
  const int64_t count = test::WorldCounts(options_).Intersections;
  ASSERT_EQ(nav.MaxIntersectionIndex, count);
  EXPECT_TRUE(nav.Intersections[0].Ident.IsEmptySlot());  // a route search's "no predecessor"
  for (int32_t i = 1; i <= count; ++i) {
    const IntersectionRec& n = nav.Intersections[static_cast<std::size_t>(i)];
    ASSERT_FALSE(n.Ident.IsEmptySlot()) << i;
    if (i > 1) {
      EXPECT_LE(nav.Intersections[static_cast<std::size_t>(i - 1)].Lat, n.Lat) << i;
    }
    const std::string_view net = n.Flag1.View();
    EXPECT_TRUE(net == "V" || net == "J" || net == "X") << i;
    if (net == "J") {
      EXPECT_EQ(n.LowCount, 0) << i;
    }
    if (net == "V") {
      EXPECT_EQ(n.HighCount, 0) << i;
    }
    for (const AirwayLinkRec& link : nav.LowAirways(i)) {
      ASSERT_GE(link.Target, 1);
      ASSERT_LE(link.Target, count);
      EXPECT_GT(link.Distance, 0.0f);
    }
  }
}

// Victor airways join every intersection of the continents into one
// component, both ways along its backbone; each island group is apart.
TEST_F(WorldAt2Percent, EachNetIsOneComponentPlusTheIslands) {
  const NavaidTables& nav = db_->Navaids;
  const int32_t count = nav.MaxIntersectionIndex;
  for (bool high : {false, true}) {
    SCOPED_TRACE(high ? "jet" : "victor");
    Components parts(static_cast<std::size_t>(count) + 1);
    for (int32_t i = 1; i <= count; ++i)
      for (const AirwayLinkRec& link : high ? nav.HighAirways(i) : nav.LowAirways(i)) parts.Join(i, link.Target);
    std::map<int32_t, int> sizes;
    int32_t mainRoot = -1;
    for (int32_t i = 1; i <= count; ++i) {
      const IntersectionRec& n = nav.Intersections[static_cast<std::size_t>(i)];
      const bool inNet = n.Flag1.View() == "X" || n.Flag1.View() == (high ? "J" : "V");
      if (!inNet) continue;
      ++sizes[parts.Find(i)];
      if (OnAnIsland(n)) continue;
      if (mainRoot < 0) mainRoot = parts.Find(i);
      EXPECT_EQ(parts.Find(i), mainRoot) << i;
    }
    EXPECT_EQ(sizes.size(), 4u);  // the continents and three island groups

    // Directed: the two-way backbone reaches every member from any of them.
    int32_t start = -1;
    for (int32_t i = 1; i <= count && start < 0; ++i)
      if (parts.Find(i) == mainRoot) start = i;
    std::vector<char> seen(static_cast<std::size_t>(count) + 1, 0);
    std::vector<int32_t> stack{start};
    seen[static_cast<std::size_t>(start)] = 1;
    int reached = 0;
    while (!stack.empty()) {
      const int32_t at = stack.back();
      stack.pop_back();
      ++reached;
      for (const AirwayLinkRec& link : high ? nav.HighAirways(at) : nav.LowAirways(at))
        if (!seen[static_cast<std::size_t>(link.Target)]) {
          seen[static_cast<std::size_t>(link.Target)] = 1;
          stack.push_back(link.Target);
        }
    }
    EXPECT_EQ(reached, sizes[mainRoot]);
  }
}

// Every drawn segment is a leg the route search can take, under its name.
TEST_F(WorldAt2Percent, SegmentsMatchTheLinks) {
  const NavaidTables& nav = db_->Navaids;
  for (bool high : {false, true}) {
    const std::vector<AirwayRec>& segments = high ? nav.JetAirways : nav.VictorAirways;
    EXPECT_TRUE(std::is_sorted(segments.begin(), segments.end(),
                               [](const AirwayRec& a, const AirwayRec& b) { return a.Name.View() < b.Name.View(); }));
    for (const AirwayRec& s : segments) {
      auto links = high ? nav.HighAirways(s.FromIndex) : nav.LowAirways(s.FromIndex);
      const bool found = std::any_of(links.begin(), links.end(), [&](const AirwayLinkRec& l) {
        return l.Target == s.ToIndex && l.AirwayName.Trimmed() == s.Name.Trimmed();
      });
      ASSERT_TRUE(found) << s.Name.Str() << " " << s.FromIndex << " " << s.ToIndex;
      EXPECT_NE(s.Mea1.Trimmed().substr(0, 1), "0");  // leading zeros stripped on load
    }
  }
}

TEST_F(WorldAt2Percent, FrankfurtIsHandMade) {
  const auto& airports = db_->Airports.Airports;
  auto it = std::find_if(airports.begin(), airports.end(), [](const AirportRec& a) { return a.Icao.Trimmed() == "EDDF"; });
  ASSERT_NE(it, airports.end());
  const AirportRec& eddf = *it;
  EXPECT_EQ(eddf.City, "Frankfurt");
  EXPECT_EQ(eddf.State, "Hessen");
  EXPECT_EQ(eddf.Country, "Germany");
  EXPECT_NEAR(eddf.Lat, 50.0333, 1e-4);
  EXPECT_NEAR(eddf.Lon, 8.5706, 1e-4);
  ASSERT_EQ(eddf.RunwayCount(), 4);
  EXPECT_EQ(eddf.Runways[1].LowEnd.Trimmed(), "07C");
  EXPECT_EQ(eddf.FrequencyCount(), 8);
  EXPECT_EQ(eddf.ParkingCount(), 60);
  ASSERT_EQ(eddf.IlsCount(), 6);
  for (const IlsRec& ils : eddf.Ils) EXPECT_GE(ils.RunwayIndex, 0) << ils.Ident.Str();
  const IlsRec* ils25c = IlsForRunwayEnd(eddf, 1, RunwayEnd::High);
  ASSERT_NE(ils25c, nullptr);
  EXPECT_EQ(ils25c->Ident.Trimmed(), "IFWC");
  EXPECT_EQ(ils25c->Runway.Trimmed(), "25C");
  EXPECT_EQ(IlsForRunwayEnd(eddf, 3, RunwayEnd::Low), nullptr);  // runway 18 has none
  // Every ILS has an outer and a middle marker.
  EXPECT_EQ(static_cast<int64_t>(db_->Shapes.Markers.size()), 2 * test::WorldCounts(options_).Ils);

  // Its ground layout is the only one of the world, and near it.
  ASSERT_FALSE(db_->Shapes.TaxiSegments.empty());
  for (const TaxiRec& t : db_->Shapes.TaxiSegments) {
    EXPECT_NEAR(t.Lat1, 50.04, 0.05);
    EXPECT_NEAR(t.Lon2, 8.56, 0.08);
  }
  const auto& ground = db_->Shapes.GroundPolygons;
  ASSERT_GE(ground.size(), 5u);
  EXPECT_EQ(ground.front().Kind.View(), "A");
  EXPECT_EQ(ground.back().Kind.View(), "E");
  for (const GroundPolyRec& g : ground) EXPECT_NEAR(g.Lat, 50.04, 0.05);

  const auto& airspaces = db_->Shapes.Airspaces;
  EXPECT_TRUE(std::any_of(airspaces.begin(), airspaces.end(), [](const AirspaceRec& a) {
    return a.Ident.Trimmed() == "EDDF" && a.Class.Trimmed() == "CTRZ";
  }));
  const auto& vors = db_->Navaids.Vors;
  EXPECT_TRUE(std::any_of(vors.begin(), vors.end(), [](const VorRec& v) { return v.Ident.Trimmed() == "FFM"; }));
}

TEST_F(WorldAt2Percent, AirportsAreDenseOverEuropeAndTheUnitedStates) {
  int europe = 0, us = 0, africa = 0;
  const auto& airports = db_->Airports.Airports;
  for (const AirportRec& a : airports) {
    if (!IsAirportSlotUsed(a)) continue;
    if (a.Lat >= 36 && a.Lat <= 60 && a.Lon >= -10 && a.Lon <= 30) ++europe;
    if (a.Lat >= 24.5 && a.Lat <= 49 && a.Lon >= -124.5 && a.Lon <= -67) ++us;
    if (a.Lat >= -34 && a.Lat <= 35 && a.Lon >= -17 && a.Lon <= 50) ++africa;
  }
  const double total = static_cast<double>(test::WorldCounts(options_).Airports);
  EXPECT_GT((europe + us) / total, 0.6);
  // Per square degree, Europe holds many times what Africa does.
  EXPECT_GT(europe / (24.0 * 40.0), 5 * africa / (69.0 * 67.0));
  EXPECT_TRUE(std::is_sorted(airports.begin(), airports.begin() + static_cast<std::ptrdiff_t>(total),
                             [](const AirportRec& a, const AirportRec& b) { return a.Icao.View() < b.Icao.View(); }));
}

}  // namespace
}  // namespace orv
