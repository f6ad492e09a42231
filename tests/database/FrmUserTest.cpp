#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "database/FrmUser.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

using Texts = std::vector<std::string>;

UserWaypointRec Wp(std::string_view ident, std::string_view name, float lat, float lon) {
  UserWaypointRec rec;
  rec.Ident = ident;
  rec.Name = name;
  rec.Lat = lat;
  rec.Lon = lon;
  return rec;
}

struct FormFixture : ::testing::Test {
  test::TempDir dir;
  AppFolder app{dir.Path()};
  test::ScriptedUi ui;
  NavDatabase db;
  std::vector<UserWaypointRec>& waypoints = db.UserWaypoints;
  FrmUser form{db, ui, app};

  void FillValid() {
    form.txtICAO = "HOME1";
    form.txtName = "My field";
    form.txtLatNS = "N";
    form.txtLatDeg = "47";
    form.txtLatMin = "27.01";
    form.txtLatSec = "";
    form.txtLonEW = "w";
    form.txtLonDeg = "8";
    form.txtLonMin = "30";
    form.txtLonSec = "36";
  }
};

TEST_F(FormFixture, ValidationRunsInItsOrder) {
  form.FormLoad();
  // Each step mends the field the last message named, and the next check speaks.
  std::vector<std::pair<std::function<void()>, std::string>> steps = {
      {[] {}, "You need to specify an ICAO code!"},
      {[&] { form.txtICAO = "  HOME1 "; }, "You need to specify a name!"},
      {[&] { form.txtName = "My field"; }, "Missing latitude values!"},
      {[&] { form.txtLatNS = "N"; form.txtLatDeg = "47"; }, "Missing latitude values!"},  // minutes still empty
      {[&] { form.txtLatMin = "10"; form.txtLatNS = "X"; }, "Missing latitude values!"},  // no hemisphere letter
      {[&] { form.txtLatNS = "s"; form.txtLatDeg = "91"; }, "Illegal latitude degree!"},
      {[&] { form.txtLatDeg = "-1"; }, "Illegal latitude degree!"},
      {[&] { form.txtLatDeg = "47"; form.txtLatMin = "60"; }, "Illegal latitude minutes!"},
      {[&] { form.txtLatDeg = "90"; form.txtLatMin = "0.5"; }, "Illegal latitude minutes!"},  // beyond the pole
      {[&] { form.txtLatMin = "0"; form.txtLatSec = "75"; }, "Illegal latitude minutes!"},
      {[&] { form.txtLatSec = ""; }, "Missing longitude values!"},
      {[&] { form.txtLonEW = "E"; form.txtLonDeg = "181"; form.txtLonMin = "0"; }, "Illegal longitude degree!"},
      {[&] { form.txtLonDeg = "8"; form.txtLonMin = "-1"; }, "Illegal longitude minutes!"},
      {[&] { form.txtLonDeg = "180"; form.txtLonMin = "0.01"; }, "Illegal longitude minutes!"},
  };
  Texts expected;
  for (auto& [change, message] : steps) {
    change();
    EXPECT_FALSE(form.CmdAddClick()) << message;
    expected.push_back(message);
  }
  EXPECT_EQ(ui.Messages(), expected);
  for (const test::UiEvent& e : ui.events) {
    EXPECT_EQ(e.title, "Orvanta");
    EXPECT_EQ(e.style, MsgStyle::Exclamation);
  }
  EXPECT_TRUE(waypoints.empty());

  // The limits themselves are legal: the south pole at the date line.
  form.txtLatDeg = "90";
  form.txtLatMin = "0";
  form.txtLonEW = "W";
  form.txtLonMin = "0";
  EXPECT_TRUE(form.CmdAddClick());
  ASSERT_EQ(waypoints.size(), 1u);
  EXPECT_EQ(waypoints[0].Lat, -90.0f);
  EXPECT_EQ(waypoints[0].Lon, -180.0f);
}

TEST_F(FormFixture, AddEditDelete) {
  waypoints = {Wp("ZULU", "Last", 1, 1)};
  form.FormLoad();
  FillValid();
  ASSERT_TRUE(form.CmdAddClick());
  ASSERT_EQ(waypoints.size(), 2u);
  EXPECT_EQ(db.Revision, 1u);  // each change counts in the database's revision
  const UserWaypointRec& added = waypoints[1];
  EXPECT_EQ(added.Ident.Str(), "HOME1");
  EXPECT_EQ(added.Name.Str(), "My field");
  EXPECT_EQ(added.Lat, static_cast<float>(47 + 27.01 / 60));
  EXPECT_EQ(added.Lon, static_cast<float>(-(8 + 30.0 / 60 + 36.0 / 3600)));
  EXPECT_EQ(added.Value, 0.0f);
  EXPECT_EQ(form.lstWP, (Texts{"HOME1      My field", "ZULU       Last"}));
  EXPECT_EQ(form.lstWPIndex, 0);  // the new waypoint is the selected line
  EXPECT_EQ(ui.events.back().text, "HOME1 has been added");
  EXPECT_EQ(ui.events.back().style, MsgStyle::Information);

  form.LstWPClick(1);
  EXPECT_EQ(form.txtICAO, "ZULU");
  form.txtICAO = "ALPHA";
  form.txtName = "First now";
  ASSERT_TRUE(form.CmdEditClick());
  EXPECT_EQ(waypoints[0].Ident.Str(), "ALPHA");
  EXPECT_EQ(waypoints[0].Name.Str(), "First now");
  EXPECT_EQ(waypoints[0].Lat, 1.0f);
  EXPECT_EQ(form.lstWP, (Texts{"ALPHA      First now", "HOME1      My field"}));
  EXPECT_EQ(form.lstWPIndex, 0);  // the selection follows the record
  EXPECT_EQ(ui.Messages().back(), "ALPHA has been changed");
  EXPECT_EQ(db.Revision, 2u);

  // Delete asks first; No keeps the record.
  ui.answers = {Answer::No};
  EXPECT_FALSE(form.CmdDeleteClick());
  EXPECT_EQ(ui.Texts("ask"), Texts{"Are you sure you want to delete ALPHA"});
  EXPECT_EQ(waypoints.size(), 2u);
  EXPECT_EQ(db.Revision, 2u);

  ui.answers = {Answer::Yes};
  ASSERT_TRUE(form.CmdDeleteClick());
  ASSERT_EQ(waypoints.size(), 1u);
  EXPECT_EQ(db.Revision, 3u);
  EXPECT_EQ(waypoints[0].Ident.Str(), "HOME1");
  EXPECT_EQ(form.lstWP, Texts{"HOME1      My field"});
  EXPECT_EQ(form.lstWPIndex, -1);
  EXPECT_EQ(form.txtICAO, "");
  EXPECT_EQ(ui.Messages().back(), "ALPHA has been deleted");
}

TEST_F(FormFixture, EditAndDeleteNeedASelection) {
  waypoints = {Wp("ONE", "One", 1, 1)};
  form.FormLoad();
  FillValid();
  EXPECT_FALSE(form.CmdEditClick());
  EXPECT_FALSE(form.CmdDeleteClick());
  form.LstWPClick(5);  // no such line: still nothing selected
  EXPECT_FALSE(form.CmdDeleteClick());
  EXPECT_EQ(ui.Messages(), (Texts{"Please select item fromlist!", "Please select item fromlist!",
                                  "Please select item fromlist!"}));
  EXPECT_TRUE(ui.Texts("ask").empty());
  EXPECT_EQ(waypoints[0].Ident.Str(), "ONE");
}

TEST_F(FormFixture, PositionFieldsRoundThroughDegreesAndMinutes) {
  form.CmdFSPosClick(-33.946111, 151.177222);
  EXPECT_EQ(form.txtLatNS, "S");
  EXPECT_EQ(form.txtLatDeg, "33");
  EXPECT_EQ(form.txtLatMin, "56.77");
  EXPECT_EQ(form.txtLatSec, "0");
  EXPECT_EQ(form.txtLonEW, "E");
  EXPECT_EQ(form.txtLonDeg, "151");
  EXPECT_EQ(form.txtLonMin, "10.63");
  EXPECT_NEAR(form.FormLat(), -(33 + 56.77 / 60), 1e-12);
  EXPECT_NEAR(form.FormLon(), 151 + 10.63 / 60, 1e-12);

  // Just below a whole degree the minutes carry over instead of showing 60.00.
  form.ShowPosition(50.99999, -0.0001);
  EXPECT_EQ(form.txtLatDeg, "51");
  EXPECT_EQ(form.txtLatMin, "0.00");
  EXPECT_EQ(form.txtLonEW, "W");
  EXPECT_EQ(form.txtLonDeg, "0");
  EXPECT_EQ(form.txtLonMin, "0.01");

  // A selected record shows in the fields the same way.
  waypoints = {Wp("HOME1", "My field", 47.4502f, 8.5f)};
  form.FormLoad();
  form.LstWPClick(0);
  EXPECT_EQ(form.txtICAO, "HOME1");
  EXPECT_EQ(form.txtName, "My field");
  EXPECT_EQ(form.txtLatNS, "N");
  EXPECT_EQ(form.txtLatDeg, "47");
  EXPECT_EQ(form.txtLatMin, "27.01");
  EXPECT_EQ(form.txtLonDeg, "8");
  EXPECT_EQ(form.txtLonMin, "30.00");
}

TEST_F(FormFixture, SortByIdentOrName) {
  waypoints = {Wp("BRAVO", "alpha field", 0, 0), Wp("alpha", "Zulu field", 0, 0), Wp("CHARLIE", "Mike", 0, 0)};
  form.FormLoad();
  EXPECT_EQ(form.lstWP, (Texts{"alpha      Zulu field", "BRAVO      alpha field", "CHARLIE    Mike"}));
  EXPECT_EQ(form.lstWPData, (std::vector<int>{1, 0, 2}));
  form.LstWPClick(2);
  form.OptSortClick(1);
  EXPECT_EQ(form.lstWP, (Texts{"BRAVO      alpha field", "CHARLIE    Mike", "alpha      Zulu field"}));
  EXPECT_EQ(form.lstWPIndex, 1);  // still CHARLIE
}

TEST_F(FormFixture, UnloadSavesTheWaypoints) {
  form.FormLoad();
  FillValid();
  ASSERT_TRUE(form.CmdAddClick());
  form.CmdCancelClick();
  EXPECT_FALSE(form.Visible);
  std::vector<UserWaypointRec> reloaded;
  EXPECT_TRUE(LoadUserWaypoints(app, reloaded).ok);
  EXPECT_EQ(reloaded, waypoints);
  EXPECT_EQ(ui.Messages(), Texts{"HOME1 has been added"});
}

}  // namespace
}  // namespace orv
