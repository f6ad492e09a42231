#include "planning/PlanFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/FileIo.h"
#include "database/NavDatabase.h"
#include "planning/NavLookupDb.h"
#include "planning/PlanFilesFixture.h"
#include "planning/PlanFormats.h"
#include "planning/PlanTokens.h"
#include "planning/SaveRoute.h"
#include "support/TempDir.h"

namespace orv {
namespace {

using test::PlanFilesTest;

const char* const kExpectedPln =
    "[Flightplan]\r\n"
    "AppVersion=9.1.40901\r\n"
    "title=EDDF to EGLL      \r\n"
    "description=EDDF      , EGLL      \r\n"
    "type=IFR\r\n"
    "routetype=2\r\n"
    "cruising_altitude=35000\r\n"
    "departure_id=EDDF, N50* 30.00', E008* 15.00', +000364.00\r\n"
    "departure_position=RWY 25C  (13123FT)\r\n"
    "destination_id=EGLL, N51* 30.00', W000* 30.00', +000083.00\r\n"
    "departure_name=FRANKFURT MAIN\r\n"
    "destination_name=LONDON HEATHROW\r\n"
    "alternate_name=\r\n"
    "waypoint.0=, EDDF, , EDDF, A, N50* 30.00', E008* 15.00', +000364.00,\r\n"
    "waypoint.1=KK, FFM, , FFM 114.20, V, N50* 15.00', E008* 45.00', +000000.00,\r\n"
    "waypoint.2=KK, DW,  , DW 325.00, N, N51* 15.00', E006* 45.00', +000000.00,\r\n"
    "waypoint.3=KK, TOBAK, , TOBAK,  I, N51* 00.00', E003* 00.00', +000000.00,\r\n"
    "waypoint.4=KK, Fix 04, , Fix 04,  I, N51* 30.00', E001* 00.00', +000000.00,\r\n"
    "waypoint.5=KK, BIG, , BIG 115.10, V, N51* 45.00', E000* 30.00', +000000.00,\r\n"
    "waypoint.6=, EGLL, , EGLL, A, N51* 30.00', W000* 30.00', +000083.00,\r\n"
    "\r\n"
    "[ORV]\r\n"
    "DepartAPCode=EDDF      \r\n"
    "DepartNum=1\r\n"
    "DepartID=Rwy 25C  (13123ft)\r\n"
    "DepartType=Rwy\r\n"
    "DestAPCode=EGLL      \r\n"
    "RouteType=2\r\n"
    "SID=ANEK1A\r\n"
    "STAR=BIG1E\r\n"
    "WP=1,VOR,FFM,FRANKFURT,50.2500,8.7500,114.20,45.5000,-1.250,3,7\r\n"
    "WP=2,NDB,DW,DUESSELDORF,51.2500,6.7500,325.00,300.2500,-0.500,1,3,UL607,24500,46000\r\n"
    "WP=3,Int,TOBAK,TOBAK,51.0000,3.0000,0.00,260.0000,0.000,1,120,UL607\r\n"
    "WP=4,Fix,Fix 04,Fix 04,51.5000,1.0000,0.00,290.0000,0.000,1,0\r\n"
    "WP=5,VOR,BIG,BIGGIN,51.7500,0.5000,115.10,280.0000,0.250,2,9\r\n";

PlanWriteOptions Labels() {
  PlanWriteOptions o;
  o.SidLabel = "ANEK1A";
  o.StarLabel = "BIG1E";
  return o;
}

TEST_F(PlanFilesTest, PlnFileLinesAndSpacings) {
  EXPECT_EQ(FormatPlanFile(plan, nav, Labels()), kExpectedPln);

  // The plain form drops the frequencies; VFR and a blank departure type.
  PlanWriteOptions plain = Labels();
  plain.PlainForm = true;
  plain.Ifr = false;
  plan.DepartType = "";
  std::string text = FormatPlanFile(plan, nav, plain);
  EXPECT_NE(text.find("type=VFR\r\n"), std::string::npos);
  EXPECT_NE(text.find("waypoint.1=KK, FFM, , FFM, V, N50"), std::string::npos);
  EXPECT_NE(text.find("waypoint.2=KK, DW,  , DW, N, N51"), std::string::npos);
  EXPECT_NE(text.find("DepartType=Rwy\r\n"), std::string::npos);

  // A direct plan: routetype 0 and no rows.
  plan.Waypoints[1] = plan.Waypoints[6];
  plan.LastRow = 1;
  text = FormatPlanFile(plan, nav, {});
  EXPECT_NE(text.find("routetype=0\r\n"), std::string::npos);
  EXPECT_NE(text.find("RouteType=0\r\n"), std::string::npos);
  EXPECT_EQ(text.find("WP="), std::string::npos);
  EXPECT_NE(text.find("waypoint.1=, EGLL, , EGLL, A,"), std::string::npos);
}

TEST_F(PlanFilesTest, PlnRoundTripReplacesThePlanWhole) {
  std::string text = FormatPlanFile(plan, nav, Labels());
  Target t;
  PlanEditor editor(t.plan, t.panel, ac, nav);
  ProcedureProbe probe;
  probe.HasSid = [](std::string_view icao) { return icao == "EDDF"; };
  probe.HasStar = [](std::string_view icao) { return icao == "EDDF"; };
  PlanFileState state;
  ASSERT_TRUE(OpenPlanFileText(editor, ui, text, probe, state)) << testing::PrintToString(ui.Messages());
  ASSERT_EQ(t.plan.LastRow, 6);
  for (int r = 1; r <= 5; ++r) {
    const WaypointRec& a = plan.Waypoints[r];
    const WaypointRec& b = t.plan.Waypoints[r];
    EXPECT_EQ(a.Kind, b.Kind) << r;
    EXPECT_EQ(a.Code, b.Code) << r;
    EXPECT_EQ(a.Name, b.Name) << r;
    EXPECT_EQ(a.Airway, b.Airway) << r;
    EXPECT_EQ(a.Origin, b.Origin) << r;
    EXPECT_EQ(a.DbIndex, b.DbIndex) << r;
    EXPECT_FLOAT_EQ(a.Lat, b.Lat) << r;
    EXPECT_FLOAT_EQ(a.Lon, b.Lon) << r;
    EXPECT_FLOAT_EQ(a.Frequency, b.Frequency) << r;
    EXPECT_FLOAT_EQ(a.MagVar, b.MagVar) << r;
  }
  EXPECT_EQ(t.plan.Waypoints[2].MinAltitude, 24500);
  EXPECT_EQ(t.plan.Waypoints[2].MaxAltitude, 46000);
  EXPECT_EQ(t.plan.Waypoints[6].Code.Str(), "EGLL");
  EXPECT_EQ(t.plan.RouteType, 2);
  EXPECT_EQ(t.plan.SidRows, 1);
  EXPECT_EQ(t.plan.StarRows, 1);
  // The take-off point of runway 1, and lstDep on line DepartNum.
  EXPECT_FLOAT_EQ(t.plan.DepartLat, 50.0f);
  EXPECT_EQ(t.plan.DepartID, "Rwy 25C  (13123ft)");
  EXPECT_EQ(t.panel.DepListIndex, 1);
  EXPECT_EQ(t.panel.Table.Rows(), 8);
  EXPECT_EQ(t.panel.Table.Text(3, WPTable::kCode), "DW");
  EXPECT_EQ(state.SidLabel, "ANEK1A");
  EXPECT_EQ(state.StarLabel, "BIG1E");
  EXPECT_TRUE(state.Menu.OpenSidEnabled);
  EXPECT_FALSE(state.Menu.OpenStarEnabled);
  // The leg values follow from the positions.
  EXPECT_GT(t.plan.Waypoints[3].LegDistance, 100);
  EXPECT_GT(t.plan.TotalDistance, 400);
}

TEST_F(PlanFilesTest, PlnReaderTokensAndOldKeys) {
  // A gate departure, the dropped destination runway keys of older files
  // and a plan of airports alone.
  std::string text =
      "[Flightplan]\r\ntitle=EDDF to EGLL\r\n\r\n[ORV]\r\nDepartAPCode=eddf\r\nDepartNum=0\r\n"
      "DepartID=Gate A 12\r\nDepartType=Gate\r\nDestAPCode=EGLL\r\nDestRwy=27L\r\nDestRwyID=Rwy 27L\r\n"
      "DestRwyHead=270.0\r\nRouteType=0\r\nSID=\r\nSTAR=\r\n";
  Target t;
  PlanEditor editor(t.plan, t.panel, ac, nav);
  PlanFileState state;
  ASSERT_TRUE(OpenPlanFileText(editor, ui, text, {}, state));
  EXPECT_EQ(t.plan.LastRow, 1);
  EXPECT_EQ(t.plan.DepartID, "Gate A 12");
  EXPECT_FLOAT_EQ(t.plan.DepartLat, 50.75f);
  EXPECT_EQ(t.panel.DepListIndex, 4);  // two lines per runway, then the gate
  EXPECT_FALSE(state.Menu.OpenSidEnabled);

  std::vector<std::string_view> tokens = SplitPlanTokens("a, b,,c,\r\n\r\n  d  \n\"e, f\" ,g");
  std::vector<std::string_view> want = {"a", "b", "", "c", "d", "e, f", "g"};
  EXPECT_EQ(tokens, want);
}

TEST_F(PlanFilesTest, PlnRefusalsLeaveThePlanAsItWas) {
  std::string good = FormatPlanFile(plan, nav, Labels());
  auto refused = [&](const std::string& text, const std::string& message) {
    test::ScriptedUi u;
    FlightPlan before = plan;
    PlanEditor editor(plan, panel, ac, nav);
    PlanFileState state;
    state.SidLabel = "KEEP";
    EXPECT_FALSE(OpenAnyPlanText(editor, u, text, {}, state));
    ASSERT_EQ(u.Messages().size(), 1u);
    EXPECT_EQ(u.Messages()[0], message);
    EXPECT_EQ(plan.LastRow, before.LastRow);
    for (int r = 0; r <= plan.LastRow; ++r) EXPECT_EQ(plan.Waypoints[r].Code, before.Waypoints[r].Code);
    EXPECT_EQ(state.SidLabel, "KEEP");
  };
  // A simulator plan without our section.
  refused(good.substr(0, good.find("[ORV]")), " Sorry! This is not a valid ORV flight plan!");
  refused("garbage \x01\x02 garbage", " Sorry! This is not a valid ORV flight plan!");
  // An airport the database does not hold.
  std::string text = good;
  text.replace(text.find("DestAPCode=EGLL"), 15, "DestAPCode=LFPG");
  refused(text, "LFPG is not in currently loaded database!");
  // A name with a comma pushes the numbers out of place.
  text = good;
  text.replace(text.find("DUESSELDORF"), 11, "DUESSEL, DORF");
  refused(text, "Waypoint 2 of this file cannot be read: a number is expected after its name (is there a comma in "
                "the name?)");
  // A row cut short at the end of the file.
  refused(good.substr(0, good.size() - 8), "Waypoint 5 of this file is incomplete!");
  // More rows than a plan file may hold.
  text = good.substr(0, good.find("WP=1,"));
  for (int k = 1; k <= 501; ++k) text += "WP=" + std::to_string(k) + ",Int,X,X,1.0000,1.0000,0.00,0.0000,0.000,1,0\r\n";
  refused(text, "This flight plan holds more than 500 waypoints and cannot be opened!");
  // A row number from the file is never trusted as an index.
  text = good;
  text.replace(text.find("WP=3,"), 5, "WP=-7,");
  refused(text, "A waypoint line of this file has no valid number (WP=-7)!");
}

TEST_F(PlanFilesTest, SaveRouteWindowWritesPlanAndExports) {
  test::TempDir dir;
  PlanEditor editor = Editor();
  PlanFileState state;
  state.SidLabel = "ANEK1A";
  state.StarLabel = "BIG1E";
  SaveRoute dlg;
  dlg.Load(plan, (dir.Path() / "plans").string(), "", dir.Path().string());
  EXPECT_EQ(dlg.txtFplan, "EDDFEGLL.pln");
  EXPECT_TRUE(dlg.flFplan.empty());

  // The simulator's folder must hold scenery.cfg.
  EXPECT_FALSE(dlg.cmdDirChange(dir.Path().string()));
  EXPECT_TRUE(dlg.lblInvalidPathVisible);
  EXPECT_EQ(dlg.lblInvalidPath, "Choose different path!!");
  dir.Write("fs/SCENERY.CFG", "[General]\r\n");
  EXPECT_TRUE(dlg.cmdDirChange((dir.Path() / "fs").string()));
  EXPECT_FALSE(dlg.lblInvalidPathVisible);

  std::filesystem::create_directories(dir.Path() / "plans");
  dlg.SetFolder((dir.Path() / "plans").string());
  dlg.chckFormat[kSaveIvao] = true;
  dlg.chckFormat[kSaveLevelD] = true;
  dlg.chckFormat[kSaveFms] = true;
  ui.answers = {Answer::No};  // no SID and STAR in the Level-D file
  ExportFolders folders;
  folders.AppPath = dir.Path().string();
  std::vector<std::string> written = dlg.Save(ui, editor, state, folders);
  ASSERT_EQ(written.size(), 4u) << testing::PrintToString(ui.Messages());
  EXPECT_EQ(*ReadWholeText(written[0]), kExpectedPln);
  EXPECT_EQ(written[1], (dir.Path() / "FSplan" / "IVAO" / "EDDFEGLL.fpl").string());
  EXPECT_EQ(written[2], (dir.Path() / "fs" / "Level-D Simulations" / "navdata" / "Flightplans" / "EDDFEGLL.rte").string());
  EXPECT_EQ(written[3], (dir.Path() / "plans" / "EDDFEGLL.fms").string());
  EXPECT_EQ(ui.Texts("ask"), std::vector<std::string>{"Saving Flightplan include SID's and Star's?"});
  EXPECT_EQ(dlg.flFplan, std::vector<std::string>{"EDDFEGLL.pln"});
  EXPECT_EQ(state.CurrentPath, written[0]);

  // Saving over the file asks first; No writes nothing.
  ui.answers = {Answer::No};
  dlg.chckFormat = {};
  EXPECT_TRUE(dlg.Save(ui, editor, state, folders).empty());

  // MenuSaveFP writes to the same file; opening it again gives the plan, and
  // a file of another format is never saved over.
  plan.Waypoints[3].Name.Assign("CHANGED");
  EXPECT_TRUE(MenuSaveFP(ui, editor, state));
  Target t;
  PlanEditor other(t.plan, t.panel, ac, nav);
  PlanFileState opened;
  ui.chosenFiles = {written[0]};
  ASSERT_TRUE(MenuOpenFP(ui, other, {}, opened, dir.Path().string()));
  EXPECT_EQ(t.plan.Waypoints[3].Name.Str(), "CHANGED");
  EXPECT_EQ(opened.CurrentPath, written[0]);
  ASSERT_TRUE(OpenPlanPath(ui, other, {}, opened, written[3]));
  EXPECT_EQ(opened.CurrentPath, "");
  EXPECT_FALSE(MenuSaveFP(ui, other, opened));
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

TEST(PlanFileAirports, LastMatchCountsWithAndWithoutTheIndex) {
  NavDatabase db;
  db.Airports.Airports.resize(4);
  for (int k : {0, 2}) {
    db.Airports.Airports[static_cast<std::size_t>(k)].Icao.Assign("EDDF");
    db.Airports.Airports[static_cast<std::size_t>(k)].Lat = static_cast<float>(k);
  }
  NavLookupDb nav(db);
  EXPECT_EQ(FindAirportLast(nav, " eddf "), 2);
  EXPECT_EQ(nav.NavLookup::FindAirportLast("EDDF"), 2);
  EXPECT_EQ(FindAirportLast(nav, "EDDM"), -1);
  EXPECT_EQ(FindAirportLast(nav, ""), -1);
}

}  // namespace
}  // namespace orv
