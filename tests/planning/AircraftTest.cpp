#include "planning/Aircraft.h"

#include <gtest/gtest.h>

#include "core/FileIo.h"
#include "planning/FakeNav.h"
#include "planning/FlightPlan.h"
#include "planning/WPTable.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

// Two aircraft as the program writes them, one line each.
constexpr std::string_view kTwoAircraft =
    "1,\"Cessna 172\",150,140,1100,700,300,700,75,500,90,110,65,65,2000,600\r\n"
    "2,\"Boeing 737-800, winglets\",20000,410,79000,41000,20000,2500,280,2000,290,450,350,140,6000,2500\r\n";

TEST(AircraftFileTest, ReadsValuesInFieldOrder) {
  AircraftFile f = ParseAircraftFile(kTwoAircraft, "aircraft.orv");
  EXPECT_EQ(f.Error, "");
  ASSERT_EQ(f.Aircraft.size(), 2u);
  const AircraftRec cessna{.Id = 1, .AircraftName = "Cessna 172", .MaxFuel = 150, .Ceiling = 140, .MaxWeight = 1100,
                           .EmptyWeight = 700, .LoadWeight = 300, .ClimbRate = 700, .ClimbSpeed = 75,
                           .DescentRate = 500, .DescentSpeed = 90, .CruiseSpeed = 110, .CruiseLevel = 65,
                           .ApproachSpeed = 65, .MinRunway = 2000, .MaxRange = 600};
  EXPECT_TRUE(f.Aircraft[0] == cessna);
  // A comma inside quotes belongs to the name.
  EXPECT_EQ(f.Aircraft[1].AircraftName, "Boeing 737-800, winglets");
  EXPECT_EQ(f.Aircraft[1].MaxRange, 2500);
}

TEST(AircraftFileTest, ValuesAreReadOneByOneWhateverTheLines) {
  // Hand-edited: a record over three lines, blanks around values, an
  // unquoted name, numbers with fractions and text where a number belongs.
  std::string_view text =
      "  7 , Piper Cub ,\n"
      "50.5,51.5,abc,\r\n\r\n"
      "12E2,-3,1,2,3,4,5,6,7,8,9\n";
  AircraftFile f = ParseAircraftFile(text, "aircraft.orv");
  EXPECT_EQ(f.Error, "");
  ASSERT_EQ(f.Aircraft.size(), 1u);
  const AircraftRec& a = f.Aircraft[0];
  EXPECT_EQ(a.Id, 7);
  EXPECT_EQ(a.AircraftName, "Piper Cub");
  EXPECT_EQ(a.MaxFuel, 50);   // half to even
  EXPECT_EQ(a.Ceiling, 52);
  EXPECT_EQ(a.MaxWeight, 0);  // no number
  EXPECT_EQ(a.EmptyWeight, 1200);
  EXPECT_EQ(a.LoadWeight, -3);
  EXPECT_EQ(a.MinRunway, 8);
  EXPECT_EQ(a.MaxRange, 9);
}

TEST(AircraftFileTest, IncompleteAndOversizedFilesAreReported) {
  std::string text(kTwoAircraft);
  text += "3,\"Half\",1,2,3\r\n";
  AircraftFile f = ParseAircraftFile(text, "/home/u/user/aircraft.orv");
  EXPECT_EQ(f.Aircraft.size(), 2u);  // what was complete stays
  EXPECT_EQ(f.Error, "/home/u/user/aircraft.orv: aircraft record 3 is incomplete (5 of 16 values).");

  // An unterminated quote ends at the line's end, not at the file's.
  f = ParseAircraftFile("1,\"Open,2,3\r\n4", "a.orv");
  EXPECT_EQ(f.Error, "a.orv: aircraft record 1 is incomplete (3 of 16 values).");
  EXPECT_TRUE(ParseAircraftFile("", "a.orv").Error.empty());
  EXPECT_TRUE(ParseAircraftFile("\r\n \r\n", "a.orv").Aircraft.empty());

  std::string many;
  for (std::size_t i = 0; i <= kMaxAircraft; ++i) many += "1,x,1,2,3,4,5,6,7,8,9,10,11,12,13,14\n";
  f = ParseAircraftFile(many, "a.orv");
  EXPECT_EQ(f.Aircraft.size(), kMaxAircraft);
  EXPECT_EQ(f.Error, "a.orv: more than 500 aircraft; record 501 and those after it are ignored.");
}

TEST(AircraftFileTest, WriterAndFileRoundTrip) {
  AircraftFile f = ParseAircraftFile(kTwoAircraft, "aircraft.orv");
  EXPECT_EQ(FormatAircraftFile(f.Aircraft), kTwoAircraft);

  // A name typed with quotes and a line break is written so it reads back.
  f.Aircraft[0].AircraftName = "The \"Bird\"\r\nII";
  test::TempDir dir;
  std::filesystem::path path = dir.Path() / "user" / "aircraft.orv";
  std::filesystem::create_directories(path.parent_path());
  ASSERT_TRUE(WriteAircraftFile(path, f.Aircraft));
  EXPECT_EQ(ReadWholeText(path)->substr(0, 22), "1,\"The 'Bird'  II\",150");
  AircraftFile back = ReadAircraftFile(path);
  EXPECT_EQ(back.Error, "");
  ASSERT_EQ(back.Aircraft.size(), 2u);
  EXPECT_EQ(back.Aircraft[0].AircraftName, "The 'Bird'  II");
  EXPECT_EQ(back.Aircraft[1], f.Aircraft[1]);
  EXPECT_FALSE(std::filesystem::exists(path.string() + ".tmp"));

  AircraftFile missing = ReadAircraftFile(dir.Path() / "none.orv");
  EXPECT_TRUE(missing.Aircraft.empty());
  EXPECT_NE(missing.Error.find("none.orv"), std::string::npos);
}

TEST(AircraftSelectionTest, StartUpChoice) {
  std::vector<AircraftRec> list(3);
  list[0].Id = 4;
  list[1].Id = 0;
  list[2].Id = 9;
  int16_t saved = 9;
  EXPECT_EQ(FindStartAircraft(list, saved), 2);
  EXPECT_EQ(saved, 9);
  saved = 5;
  EXPECT_EQ(FindStartAircraft(list, saved), 1);  // none is 5: record 0
  EXPECT_EQ(saved, 0);
  list[1].Id = 3;
  saved = 5;
  EXPECT_EQ(FindStartAircraft(list, saved), 2);  // no record 0 either: the last one read
  EXPECT_EQ(saved, 0);
  list.clear();
  EXPECT_EQ(FindStartAircraft(list, saved), -1);
}

TEST(AircraftSelectionTest, MinRunwayFromApproachSpeed) {
  const std::pair<int32_t, int32_t> cases[] = {{60, 3500},   {100, 3500}, {101, 5000}, {120, 5000}, {121, 7000},
                                               {140, 7000},  {141, 8500}, {160, 8500}, {161, 10000}};
  for (auto [speed, feet] : cases) EXPECT_EQ(MinRunwayForApproachSpeed(speed), feet) << speed;
}

TEST(AircraftSelectionTest, LoadAtStartUpShowsProblems) {
  test::TempDir dir;
  std::filesystem::path path = dir.Write("user/aircraft.orv", std::string(kTwoAircraft) + "9,\"Cut\"");
  AircraftDb db;
  test::ScriptedUi ui;
  int16_t saved = 2;
  LoadAircraft(path, saved, db, ui);
  EXPECT_EQ(db.List.size(), 2u);
  EXPECT_EQ(db.Current.AircraftName, "Boeing 737-800, winglets");
  ASSERT_EQ(ui.Messages().size(), 1u);
  EXPECT_NE(ui.Messages()[0].find("aircraft record 3 is incomplete (2 of 16 values)"), std::string::npos);
}

class AircraftWindowTest : public ::testing::Test {
protected:
  AircraftWindowTest() : window(db, ui, dir.Path() / "aircraft.orv") {
    db.List = ParseAircraftFile(kTwoAircraft, "aircraft.orv").Aircraft;
    db.Current = db.List[1];
    window.Load();
  }
  test::TempDir dir;
  AircraftDb db;
  test::ScriptedUi ui;
  AircraftWindow window;
};

TEST_F(AircraftWindowTest, ListAndBoxes) {
  ASSERT_EQ(window.AircraftList().size(), 2u);
  EXPECT_EQ(window.AircraftList()[0], "Cessna 172");
  EXPECT_EQ(window.ListIndex(), 1);  // the selected aircraft
  EXPECT_EQ(window.Box(AircraftBox::ACNameBox), "Boeing 737-800, winglets");
  EXPECT_EQ(window.Box(AircraftBox::CruiseFLBox), "350");
  EXPECT_EQ(window.Box(AircraftBox::EmptyBox), "41000");
  ASSERT_TRUE(window.SelectRow(0));
  EXPECT_EQ(window.Box(AircraftBox::CruiseSpeedBox), "110");
  EXPECT_EQ(window.Box(AircraftBox::ApproachSpeedBox), "65");
}

TEST_F(AircraftWindowTest, BoxesAreCheckedBeforeTheyAreKept) {
  window.SetBox(AircraftBox::CruiseSpeedBox, "fast");
  EXPECT_FALSE(window.SelectRow(0));
  EXPECT_EQ(window.ListIndex(), 1);
  EXPECT_EQ(ui.Messages().back(), "Cruise Speed must be a whole number from 1 to 9999!");
  window.SetBox(AircraftBox::CruiseSpeedBox, "0");
  EXPECT_FALSE(window.CmdOk());
  window.SetBox(AircraftBox::CruiseSpeedBox, " 460 ");
  window.SetBox(AircraftBox::LoadBox, "-5");
  EXPECT_FALSE(window.SelectRow(0));
  EXPECT_EQ(ui.Messages().back(), "Load Weight must be a whole number from 0 to 9999999!");
  EXPECT_EQ(db.List[1].CruiseSpeed, 450);  // nothing kept while a box is wrong
  window.SetBox(AircraftBox::LoadBox, "0");
  window.SetBox(AircraftBox::ACNameBox, "737 \"NG\"");
  ASSERT_TRUE(window.SelectRow(0));
  EXPECT_EQ(db.List[1].CruiseSpeed, 460);
  EXPECT_EQ(db.List[1].LoadWeight, 0);
  EXPECT_EQ(db.List[1].AircraftName, "737 'NG'");
  EXPECT_EQ(window.AircraftList()[1], "737 'NG'");
}

TEST_F(AircraftWindowTest, NewAndDelete) {
  // The list shows the selected aircraft, which cannot go.
  EXPECT_FALSE(window.MenuDelete());
  EXPECT_EQ(ui.Messages().back(), "You cannot delete the Aircraft currently selected!! ");
  EXPECT_TRUE(ui.Texts("ask").empty());

  window.MenuNew();
  ASSERT_EQ(db.List.size(), 3u);
  EXPECT_EQ(db.List[2].AircraftName, "Unknown");
  EXPECT_EQ(db.List[2].Id, 3);
  EXPECT_EQ(window.ListIndex(), 2);
  EXPECT_EQ(window.AircraftList()[2], "Unknown");
  EXPECT_EQ(window.Box(AircraftBox::CruiseSpeedBox), "0");

  // The new record cannot be left without its values...
  EXPECT_FALSE(window.SelectRow(0));
  EXPECT_EQ(ui.Messages().back(), "Cruise Flight Level must be a whole number from 1 to 999!");
  // ...but it can be deleted.
  EXPECT_FALSE(window.MenuDelete());  // answered No
  EXPECT_EQ(ui.Texts("ask").back(), "Are you sure you want to delete Unknown");
  EXPECT_EQ(db.List.size(), 3u);
  ui.answers.push_back(Answer::Yes);
  EXPECT_TRUE(window.MenuDelete());
  EXPECT_EQ(db.List.size(), 2u);
  EXPECT_EQ(window.ListIndex(), 1);
  EXPECT_EQ(window.AircraftList().size(), 2u);
}

TEST_F(AircraftWindowTest, OkWritesTheFile) {
  window.SetBox(AircraftBox::MaxRangeBox, "2600");
  ASSERT_TRUE(window.CmdOk());
  AircraftFile back = ReadAircraftFile(dir.Path() / "aircraft.orv");
  ASSERT_EQ(back.Aircraft.size(), 2u);
  EXPECT_EQ(back.Aircraft[1].MaxRange, 2600);
  EXPECT_EQ(back.Aircraft[0], db.List[0]);

  AircraftWindow nowhere(db, ui, dir.Path() / "missing" / "folder" / "aircraft.orv");
  nowhere.Load();
  EXPECT_FALSE(nowhere.CmdOk());
  EXPECT_EQ(ui.Messages().back().rfind("Could not write the aircraft file ", 0), 0u);
}

TEST_F(AircraftWindowTest, SelectingAnAircraftRetimesThePlan) {
  FlightPlan plan;
  PlanPanel panel;
  test::FakeNav nav;
  nav.Airports.resize(2);
  plan.Waypoints[0] = test::Row("", "AAAA", 0, 0, kOriginAirport);
  plan.Waypoints[1] = test::Row("", "BBBB", 2, 0, kOriginAirport);
  plan.DestinationAirport = 1;
  plan.DepartureAirport = 0;
  {
    PlanEditor ed(plan, panel, db.Current, nav);  // the 737: 450 kts cruise, 140 approach
    ed.SetDirectPlan(1);
    ed.InsertWaypoint(0, test::Row("VOR", "MID", 1, 0), true);
  }
  EXPECT_NEAR(plan.Waypoints[1].LegTime, 8, 1e-3);

  window.SelectRow(0);
  ASSERT_TRUE(window.ButtonSelectAC(plan, panel, nav));
  EXPECT_EQ(db.Current.AircraftName, "Cessna 172");
  EXPECT_EQ(db.Current.MinRunway, 3500);  // from the approach speed, not the file's 2000
  EXPECT_EQ(db.List[0].MinRunway, 2000);
  EXPECT_EQ(panel.CrSpeedBox, "110");
  // 60 NM at 110 kts; the last 60 NM: 30 at 110 kts and 30 at 65 kts.
  EXPECT_NEAR(plan.Waypoints[1].LegTime, 32.727273, 1e-4);
  EXPECT_NEAR(plan.Waypoints[2].LegTime, 16.363636 + 27.692308, 1e-4);
  EXPECT_EQ(plan.TotalTime, 77);  // 32.73 -> 33, then 33 + 44.06 -> 77
  EXPECT_EQ(panel.Table.Text(2, WPTable::kEta), "00:33");
  EXPECT_EQ(panel.Table.Text(3, WPTable::kEta), "01:17");
  EXPECT_EQ(panel.TotalTimeText, "01:17");
}

TEST_F(AircraftWindowTest, PrintedValues) {
  std::vector<std::string> lines = window.MenuCurrent();
  const std::vector<std::string> expected = {
      "Boeing 737-800, winglets", "Maximum Fuel: 20000 kg", "Ceiling: 410",         "Max Weight: 79000 kg",
      "Empty Weight: 41000 kg",   "Load Weight: 20000 kg",  "Climb Rate: 2500 ft/min", "Climb Speed: 280 kts",
      "Descent Rate: 2000 ft/min", "Descent Speed: 290 kts", "Cruise Speed: 450 kts", "Cruise Flight Level: 350",
      "Approach Speed: 140 kts",  "Min Runway: 6000 ft",    "Max Range: 2500 NM"};
  EXPECT_EQ(lines, expected);
  window.SelectRow(0);
  EXPECT_EQ(window.MenuSelected().at(0), "Cessna 172");
  std::vector<std::string> all = window.MenuAll();
  ASSERT_EQ(all.size(), 31u);
  EXPECT_EQ(all[15], "");
  EXPECT_EQ(all[16], "Boeing 737-800, winglets");
}

}  // namespace
}  // namespace orv
