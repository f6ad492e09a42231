#include "documents/Papers.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/AppState.h"
#include "core/Startup.h"
#include "documents/SidView.h"
#include "map/RecordingTarget.h"
#include "planning/Aircraft.h"
#include "planning/DepartureArrival.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/StoredProcedures.h"
#include "support/ScriptedUi.h"
#include "support/SideFiles.h"
#include "support/SmallWorld.h"

namespace orv {
namespace {

// The small world's plan EDXX - FFM - EDYY as the plan editor leaves it,
// with a Boeing-like aircraft and two frequencies at the departure.
class PapersTest : public ::testing::Test {
protected:
  PapersTest() {
    test::BuildSmallWorld(db);
    AirportRec& dep = db.Airports.Airports[0];
    dep.Elevation = 364;
    FrequencyRec f;
    f.Kind = 6, f.Frequency = 119.9f;
    dep.Frequencies.push_back(f);
    f.Kind = 1, f.Frequency = 118.025f;
    dep.Frequencies.push_back(f);
    RunwayRec rwy;
    rwy.LowEnd.Assign("07");
    rwy.HighEnd.Assign("25");
    rwy.Lat = 50.3f, rwy.Lon = 8.4f, rwy.TrueHeading = 70, rwy.LengthFeet = 6000;
    db.Airports.Airports[1].Runways.push_back(rwy);
    FillNameTables(state);
    ac.AircraftName = "Test Jet";
    ac.ClimbRate = 2000, ac.ClimbSpeed = 250, ac.CruiseSpeed = 300, ac.CruiseLevel = 100;
    ac.DescentRate = 1500, ac.DescentSpeed = 250, ac.ApproachSpeed = 140, ac.MaxFuel = 5000;

    NavLookupDb nav(db, state.ParkingNames);
    PlanPanel panel;
    PlanEditor e(plan, panel, ac, nav);
    test::BuildSmallPlan(plan);
    plan.Waypoints[0].Name.Assign("Main Field");
    plan.Waypoints[1].Name.Assign("FRANKFURT");
    plan.Waypoints[1].Origin = kOriginEnroute;
    plan.Waypoints[1].Frequency = 114.2f;
    plan.Waypoints[2].Name.Assign("Hill Strip");
    plan.DepartureAirport = 0;
    plan.DestinationAirport = 1;
    plan.DestLat = 50.3f, plan.DestLon = 8.4f;
    e.ComputeLegs(1);
    e.RefreshTotals();
    plan.NetKind = 1;
    sources = {&plan, &db, &ac, &state, -1, -1};
  }

  // The printed lines in order.
  static std::vector<std::string> Texts(const RecordingTarget& t) {
    std::vector<std::string> out;
    for (const DrawOp& op : t.Ops())
      if (op.Kind == DrawOpKind::Text) out.push_back(op.Text);
    return out;
  }
  static long IndexOf(const std::vector<std::string>& texts, const std::string& text, long from = 0) {
    auto it = std::find(texts.begin() + from, texts.end(), text);
    return it == texts.end() ? -1 : it - texts.begin();
  }

  NavDatabase db;
  AppState state;
  AircraftRec ac;
  FlightPlan plan;
  PaperSources sources;
};

TEST_F(PapersTest, BlocksComeInTheirOrder) {
  RecordingTarget page(2480, 3508, "Printer");
  PrintFP dialog;
  EXPECT_EQ(dialog.cmdOK(page, sources), 4);
  EXPECT_EQ(std::count_if(page.Ops().begin(), page.Ops().end(), [](const DrawOp& op) { return op.Kind == DrawOpKind::NewPage; }), 3);
  const std::vector<std::string> t = Texts(page);
  const std::string header = "Orvanta Flight Plan     Main Field (EDXX) to Hill Strip (EDYY)";
  ASSERT_FALSE(t.empty());
  EXPECT_EQ(t[0], header);
  EXPECT_EQ(std::count(t.begin(), t.end(), header), 4);  // every page starts with it
  EXPECT_EQ(t[2], "Aircraft:");
  EXPECT_EQ(t[3], "Test Jet");

  const std::vector<std::string> order = {
      "Aircraft:", "Distance:", "Flight time:", "Flight level:", "Cruising speed:", "300 kts",
      "Departure: Main Field (EDXX)", "Rwy 07", "Elevation: 364 ft", "ATIS: 118.025", "Destination: Hill Strip (EDYY)",
      "   General Flight Information ", "   Climb:", "   Cruise:", "   Descent to Final Fix:", "   Fuel (in kg):",
      "   Alternate Airport:", "   Main Field (EDXX)", "Departure Frequencies:", "ATIS:", "118.025", "Tower:",
      "119.900", "Arrival Frequencies:", "Departure and Arrival Routes", "   Departure for Rwy 07",
      "   Arrival for Rwy 07", "Waypoints EDXX - EDYY: (High Altitude Airways)", "Code", "Name", "Freq", "Course",
      "Distance", "Time", "FFM", "FRANKFURT", "114.20", "Control Zone Information - Page: 1",
      "Leg: Main Field to FRANKFURT crossing:", "CTR (EDXX)", "Leg: FRANKFURT to Hill Strip crossing:", "none"};
  long last = -1;
  for (const std::string& text : order) {
    const long at = IndexOf(t, text, last + 1);
    EXPECT_GT(at, last) << text;
    if (at >= 0) last = at;
  }
  // The profile line as worded from the aircraft's figures, and the
  // generator's sentence for the departure.
  const long climb = IndexOf(t, "   Climb:");
  ASSERT_GE(climb, 0);
  EXPECT_EQ(t[static_cast<std::size_t>(climb) + 1].substr(0, 36), "   2000 ft/min at 250kts - requires ");
  const long dep = IndexOf(t, "   Departure for Rwy 07");
  ASSERT_GE(dep, 0);
  EXPECT_EQ(t[static_cast<std::size_t>(dep) + 1].substr(0, 36), "Climb straight ahead until crossing ");
}

TEST_F(PapersTest, ChoicesAndTheGeneratorPage) {
  RecordingTarget page(2480, 3508, "Printer");
  PrintFP dialog;
  dialog.chckGFI = false;
  dialog.chckCtrz = false;
  EXPECT_EQ(dialog.cmdOK(page, sources), 1);
  std::vector<std::string> t = Texts(page);
  ASSERT_GE(t.size(), 3u);
  EXPECT_EQ(t[1], "Page 1");
  EXPECT_EQ(t[2], "Waypoints EDXX - EDYY: (High Altitude Airways)");
  EXPECT_EQ(IndexOf(t, "Aircraft:"), -1);

  // The generator's own page: title, runway, the picture with the turn.
  plan.Waypoints[1].Lat = 50.3f, plan.Waypoints[1].Lon = 7.9f;  // behind a turn
  FrmSID frm(db, plan, ac);
  ASSERT_TRUE(frm.Load());
  RecordingTarget sidPage(2480, 3508, "Printer");
  PrintSidPage(sidPage, frm, db, state.Config);
  t = Texts(sidPage);
  ASSERT_GE(t.size(), 3u);
  EXPECT_EQ(t[0], "Orvanta Departure and Arrival Routes");
  EXPECT_EQ(t[1], "Departure for Rwy 07");
  EXPECT_EQ(t[2], "Departure for Main Field Rwy 07");
  EXPECT_NE(IndexOf(t, "FFM 114.20"), -1);
  const auto arcs = std::count_if(sidPage.Ops().begin(), sidPage.Ops().end(), [&](const DrawOp& op) {
    return op.Kind == DrawOpKind::Arc && op.Color == state.Config.Route;
  });
  EXPECT_EQ(arcs, 1);
  const auto sentence = std::find_if(t.begin(), t.end(), [](const std::string& s) { return s.rfind("Climb ", 0) == 0; });
  ASSERT_NE(sentence, t.end());
  EXPECT_EQ(sentence->substr(0, 36), "Climb straight ahead until crossing ");

  PrintFP none;
  FlightPlan empty;
  PaperSources nothing{&empty, &db, &ac, &state, -1, -1};
  RecordingTarget unused;
  EXPECT_EQ(none.cmdOK(unused, nothing), 0);
  EXPECT_TRUE(unused.Ops().empty());
}

TEST_F(PapersTest, ProcedurePreviewAndRefusal) {
  const std::vector<uint8_t> file = test::BuildProcedureFile(
      {{"EDXX", "07", "ALPHA1A", {{"Int", "ALPHA", "ALPHA", 50.2f, 7.9f}, {"VOR", "FFM", "FRANKFURT", 50.05f, 8.3f}}}});
  NavLookupDb nav(db, state.ParkingNames);
  test::ScriptedUi ui;
  LoadSID window(ui, true);
  ASSERT_TRUE(window.Load(file, plan, nav));
  window.SelectList(0);
  RecordingTarget pct(3000, 3000, "pctSid");
  DrawProcedurePreview(pct, {0, 0, 3000, 3000}, window, state.Config);
  const auto routeLines = std::count_if(pct.Ops().begin(), pct.Ops().end(), [&](const DrawOp& op) {
    return op.Kind == DrawOpKind::Line && op.Color == state.Config.Route;
  });
  EXPECT_EQ(routeLines, 2);  // the airport to ALPHA to FFM
  const std::vector<std::string> t = Texts(pct);
  EXPECT_EQ(t, (std::vector<std::string>{"EDXX", "ALPHA", "FFM"}));

  FlightPlan none;
  FrmSID frm(db, none, ac);
  EXPECT_FALSE(frm.Load(ui));
  EXPECT_EQ(ui.Messages().back(), "You have to file a flight plan first!!");
}

}  // namespace
}  // namespace orv
