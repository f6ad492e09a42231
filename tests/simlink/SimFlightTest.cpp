#include <gtest/gtest.h>

#include <regex>

#include "FlightWorld.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "simlink/BuiltinSim.h"
#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"
#include "simlink/OffsetImage.h"
#include "simlink/SimFlight.h"
#include "simlink/ZoneMonitor.h"
#include "database/AirspaceFiles.h"
#include "map/ZoneWatch.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

struct Flown {
  FlightPlan plan;
  PlanPanel panel;
  FlyResult result;
};

std::unique_ptr<Flown> Fly(std::string_view from, std::string_view to, bool autopilot) {
  auto f = std::make_unique<Flown>();
  NavDatabase db;
  test::BuildFlightWorld(db);
  const AircraftRec jet = test::FlightJet();
  if (!test::BuildFlightPlan(db, from, to, jet, f->plan, f->panel)) return f;
  test::FakeClock clock;
  FlyOptions options;
  options.Autopilot = autopilot;
  options.StartUtcSeconds = 9 * 3600 + 58 * 60;
  f->result = FlyPlan(f->plan, f->panel, db.Airports.Airports, jet, db.MagVar, options, clock);
  return f;
}

// The ATA cell of a tick's "hh:mm:ss": the minutes rounded.
std::string ClockOf(const std::string& time) {
  return MinutesToHours(Val(Mid(time, 1, 2)) * 60 + Val(Mid(time, 4, 2)) + Val(Mid(time, 7, 2)) / 60);
}

// Every row from 1 to the one before the destination passed once, in order,
// with the four cells the table shows, between takeoff and landing.
void ExpectWholeFlight(const Flown& f, const std::vector<std::string>& idents) {
  const auto& events = f.result.Events;
  ASSERT_TRUE(f.result.AtDestination) << f.result.Error;
  ASSERT_EQ(events.size(), idents.size() + 2);
  EXPECT_EQ(events.front().What, FlightEvent::Takeoff);
  EXPECT_EQ(events.back().What, FlightEvent::Landing);
  EXPECT_LT(events.front().Time, events.back().Time);
  const std::regex ata("\\d\\d:\\d\\d"), gs("\\d\\d\\d kn"), alt("\\d{5} ft"), fuel("\\d{5}/\\d+%");
  for (size_t i = 0; i < idents.size(); ++i) {
    const FlightEvent& e = events[i + 1];
    EXPECT_EQ(e.What, FlightEvent::Pass);
    EXPECT_EQ(e.Row, static_cast<int>(i) + 1);
    EXPECT_EQ(e.Ident, idents[i]);
    EXPECT_TRUE(std::regex_match(e.Cells[0], ata)) << e.Cells[0];
    EXPECT_TRUE(std::regex_match(e.Cells[1], gs)) << e.Cells[1];
    EXPECT_TRUE(std::regex_match(e.Cells[2], alt)) << e.Cells[2];
    EXPECT_TRUE(std::regex_match(e.Cells[3], fuel)) << e.Cells[3];
    EXPECT_EQ(e.Cells[0], ClockOf(e.Time));
  }
  // The destination's line gets the final ATA at the landing.
  const WPTable& table = f.panel.Table;
  EXPECT_EQ(table.Text(f.plan.LastRow + 1, WPTable::kAta), ClockOf(events.back().Time));
  EXPECT_EQ(table.Cell(f.plan.LastRow + 1, WPTable::kAta).ForeColor, 255);
}

TEST(SimFlight, FrankfurtToMunichWithTheAutopilotCoupled) {
  auto f = Fly("EDDF", "EDDM", true);
  ExpectWholeFlight(*f, {"ASKIK", "ROLIS", "BURAM"});
  EXPECT_GT(f->result.AutopilotTicks, 1000);
  // Takeoff in the first minutes of the run, landing some 35 minutes on, at
  // the cruise level's fuel burn.
  EXPECT_EQ(Left(f->result.Events.front().Time, 4), "09:5");
  EXPECT_EQ(Left(f->result.Events.back().Time, 3), "10:");
  EXPECT_EQ(f->result.Events[3].Cells[3].substr(5), "/7%");
}

TEST(SimFlight, AcrossTheDateLineCoupledOrFlyingTheLegsItself) {
  auto coupled = Fly("NFNL", "NFNK", true);
  ExpectWholeFlight(*coupled, {"DLATA", "DLBRA"});
  // Without the autopilot the simulator follows the plan's legs by itself;
  // the sequencing passes the same rows.
  auto alone = Fly("NFNL", "NFNK", false);
  ExpectWholeFlight(*alone, {"DLATA", "DLBRA"});
  EXPECT_EQ(alone->result.AutopilotTicks, 0);
}

TEST(BuiltinSim, HoldsTheBugInTheWindAndFillsTheTrafficTables) {
  OffsetImage image;
  ImagePartner partner(image);
  BuiltinSim sim(image);
  SimRoute route;
  route.Departure = {50, 8, 90, 300};
  route.Destination = {50, 12, 90, 300};
  route.Points = {{50, 10}, {50, 12}};
  route.CruiseAltitude = 9000;
  SimWeather calm;
  calm.WindSpeed = 0;
  sim.SetWeather(calm);
  sim.Park(route.Departure);
  sim.Fly(route);
  for (int i = 0; i < 240 && sim.OnGround(); ++i) sim.Step(0.5);
  ASSERT_FALSE(sim.OnGround());
  EXPECT_EQ(sim.Phase(), SimPhase::Climb);

  // Heading hold on, bug 180 magnetic (no variation here): a standard-rate
  // right turn of 3 degrees a second.
  image.Put<uint32_t>(0x07BC, 1);
  image.Put<uint32_t>(0x07C8, 1);
  image.Put<int16_t>(0x07CC, HeadingBugWord(180));
  const double before = sim.Heading();
  sim.Step(10);
  EXPECT_NEAR(sim.Heading(), before + 30, 0.01);
  sim.Step(60);
  EXPECT_NEAR(sim.Heading(), 180, 0.01);
  // A 40 kn wind from the west sets the track east of the heading.
  SimWeather west;
  west.WindDir = 270;
  west.WindSpeed = 40;
  sim.SetWeather(west);
  sim.Step(1);
  FsuipcChannel ch(partner);
  int32_t code = 0;
  ASSERT_TRUE(ch.IpcOpen(0, code));
  SimSnapshot snap;
  ReadSnapshot(ch, snap);
  EXPECT_NEAR(snap.TrueHeading, 180, 0.01);
  EXPECT_NEAR(snap.GroundSpeed, std::round(std::hypot(sim.Tas(), 40.0)), 1);
  EXPECT_EQ(snap.WindSpeed, 40);
  EXPECT_EQ(snap.WindDir, 270);

  // Three aircraft in the air, two beside the runway; a fourth closes in at
  // the user's level on request.
  TrafficTable air, ground;
  ASSERT_TRUE(ReadAirTraffic(ch, air));
  ASSERT_TRUE(ReadGroundTraffic(ch, ground));
  EXPECT_EQ(air.Entries.size(), 3u);
  EXPECT_EQ(ground.Entries.size(), 2u);
  EXPECT_EQ(TrafficAtcId(ground.Entries[0]), "DLH4AB");
  sim.SetConvergingTraffic(true);
  sim.Step(1);
  ASSERT_TRUE(ReadAirTraffic(ch, air));
  ASSERT_EQ(air.Entries.size(), 4u);
  const TrafficEntry& conv = air.Entries[3];
  const double d0 = RhumbDistance(conv.Latitude, conv.Longitude, static_cast<float>(sim.Lat()), static_cast<float>(sim.Lon()));
  EXPECT_NEAR(conv.Altitude, sim.Altitude(), 1);
  sim.Step(30);
  ASSERT_TRUE(ReadAirTraffic(ch, air));
  const double d1 = RhumbDistance(air.Entries[3].Latitude, air.Entries[3].Longitude, static_cast<float>(sim.Lat()),
                               static_cast<float>(sim.Lon()));
  EXPECT_LT(d1, d0 - 3);
  EXPECT_NEAR(air.Entries[3].Altitude, sim.Altitude(), 1);
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

void AddZone(NavDatabase& db, const char* cls, const char* ident, float north, float south, float west, float east) {
  AirspaceRec a;
  a.Class.Assign(cls);
  a.Ident.Assign(ident);
  const ShapePoint box[4] = {{north, west}, {north, east}, {south, east}, {south, west}};
  AddAirspace(db.Shapes, a, box);
}

TEST(ZoneMonitor, SegmentsCrossTouchingCounts) {
  EXPECT_TRUE(SegmentsCross(0, 0, 2, 2, 0, 2, 2, 0));
  EXPECT_TRUE(SegmentsCross(0, 0, 1, 1, 1, 1, 2, 0));   // they only share an end
  EXPECT_TRUE(SegmentsCross(0, 0, 2, 0, 1, 0, 3, 0));   // along each other
  EXPECT_FALSE(SegmentsCross(0, 0, 2, 0, 3, 0, 4, 0));  // on one line, apart
  EXPECT_FALSE(SegmentsCross(0, 0, 2, 0, 0, 1, 2, 1));  // parallel
}

TEST(SimFlight, TheZoneMarksAndTheConvergingTrafficFromAdvisoryToAlert) {
  NavDatabase db;
  test::BuildFlightWorld(db);
  // Across the leg from ASKIK to ROLIS; the same as a FIR; around ROLIS and
  // BURAM, so that the leg between them lies inside it.
  AddZone(db, "CTR", "ZONA", 49.60f, 49.45f, 9.75f, 10.0f);
  AddZone(db, "FIR", "ZONF", 49.60f, 49.45f, 9.75f, 10.0f);
  AddZone(db, "CTR", "ZONB", 49.4f, 48.6f, 10.2f, 11.2f);
  FlightPlan plan;
  PlanPanel panel;
  const AircraftRec jet = test::FlightJet();
  ASSERT_TRUE(test::BuildFlightPlan(db, "EDDF", "EDDM", jet, plan, panel));
  ASSERT_EQ(plan.LastRow, 4);
  const ZoneCheck check = CheckPlanZones(plan, db.Shapes, panel.Table);
  EXPECT_EQ(check.ViolationCount, 3);
  EXPECT_EQ(check.Rows, (std::vector<int>{2, 2, 4}));
  const WPTable& t = panel.Table;
  EXPECT_EQ(t.Text(3, WPTable::kName), "Rolis [CTRZ!!]");
  EXPECT_EQ(t.Cell(3, WPTable::kName).ForeColor, 255);
  EXPECT_EQ(t.Text(4, WPTable::kName), "BURAM (UN850)");
  EXPECT_EQ(t.Text(5, WPTable::kName), "Muenchen [CTRZ!!]");
  ClearRowViolations(panel.Table, plan, check);
  EXPECT_EQ(t.Text(3, WPTable::kName), "ROLIS (UN850)");
  EXPECT_EQ(t.Cell(3, WPTable::kName).ForeColor, 0);

  // Four aircraft, one converging: it turns orange, then red with the
  // alert, and nothing else is ever flagged.
  test::FakeClock clock;
  FlyOptions options;
  options.Autopilot = true;
  options.TrafficCount = 4;
  const FlyResult r = FlyPlan(plan, panel, db.Airports.Airports, jet, db.MagVar, options, clock);
  ASSERT_TRUE(r.AtDestination) << r.Error;
  std::vector<std::string> seen;
  for (const FlightEvent& e : r.Events) {
    if (e.What == FlightEvent::Takeoff) seen.push_back("takeoff");
    if (e.What == FlightEvent::Tcas)
      seen.push_back((e.Level == Advisory::Resolution ? "RA " : "TA ") + e.Ident + " " + e.Caption);
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"takeoff", "TA CONV1 ", "RA CONV1 TRAFFIC TRAFFIC"}));
}

}  // namespace
}  // namespace orv
