// Smoke tests of the object search, airport selection and user waypoint
// windows: each shows its controller's state and forwards the clicks.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include "core/FileIo.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"
#include "ui/AirportSelectWindow.h"
#include "ui/FindWindow.h"
#include "ui/UserWaypointWindow.h"

namespace orv::ui {
namespace {

QStringList Items(const QListWidget* list) {
  QStringList out;
  for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
  return out;
}

QStringList Items(const QComboBox* combo) {
  QStringList out;
  for (int i = 0; i < combo->count(); ++i) out << combo->itemText(i);
  return out;
}

AirportRec Airport(std::string_view icao, std::string_view name, std::string city, float lat, float lon) {
  AirportRec a;
  a.Icao.Assign(icao);
  a.Name.Assign(name);
  a.City = std::move(city);
  a.Country = "Germany";
  a.Lat = lat;
  a.Lon = lon;
  return a;
}

NavDatabase Database() {
  NavDatabase db;
  AirportTables& t = db.Airports;
  t.Regions = {"Europe", ""};
  t.RegionCount = 1;
  t.Countries = {{"Germany", "Europe"}};
  t.CountryCount = 1;
  t.Cities = {{"Frankfurt", "", "Germany"}, {"M\xFCnchen", "", "Germany"}};
  t.CityCount = 2;
  t.Airports = {Airport("EDDF", "Frankfurt Main", "Frankfurt", 50.03f, 8.57f),
                Airport("EDDM", "M\xFCnchen", "M\xFCnchen", 48.35f, 11.78f)};
  VorRec vor;
  vor.Ident.Assign("FFM");
  vor.Name.Assign("FRANKFURT");
  vor.Lat = 50.05f;
  vor.Lon = 8.64f;
  db.Navaids.Vors = {vor};
  return db;
}

TEST(FindWindow, SearchesTheChosenKindAndHandsBackTheClickedObject) {
  NavDatabase db = Database();
  FrmFind form(db);
  FindWindow w(form);
  w.Open();
  EXPECT_TRUE(form.Visible);
  EXPECT_EQ(w.objectName(), "frmFind");
  EXPECT_TRUE(w.Option(FindKind::Airport)->isChecked());

  w.Option(FindKind::Vor)->click();
  EXPECT_EQ(form.Option, FindKind::Vor);
  w.TxtFind()->setText("frank");
  w.CmdFind()->click();
  EXPECT_EQ(Items(w.LstFind()), QStringList{"FFM  FRANKFURT"});

  std::optional<FoundObject> found;
  w.onFound = [&](const FoundObject& o) { found = o; };
  emit w.LstFind()->itemClicked(w.LstFind()->item(0));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Kind, kHiliteVor);
  EXPECT_EQ(found->Lat, 50.05f);

  w.Option(FindKind::Airport)->click();
  w.TxtFind()->setText(QString::fromUtf8("m\xC3\xBCnchen"));  // 8-bit text in the core, UTF-8 on screen
  w.CmdFind()->click();
  EXPECT_EQ(Items(w.LstFind()), QStringList{QString::fromUtf8("EDDM  M\xC3\xBCnchen")});
  w.TxtFind()->setText("nothing");
  w.CmdFind()->click();
  EXPECT_EQ(Items(w.LstFind()), QStringList{"No Airport found"});
  found.reset();
  emit w.LstFind()->itemClicked(w.LstFind()->item(0));
  EXPECT_FALSE(found);

  w.CmdCancel()->click();
  EXPECT_FALSE(form.Visible);
  EXPECT_TRUE(w.isHidden());
}

TEST(AirportSelectWindow, ShowsTheCascadeAndSelectsAnAirport) {
  NavDatabase db = Database();
  AppState state;
  state.ChoosingStartAirport = true;
  state.Config.Region = 0;
  state.Config.Country = 0;
  state.Config.City = 1;
  test::ScriptedUi ui;
  int32_t departure = -1, destination = -1;
  OvrLL form(db.Airports, state, ui, departure, destination);
  AirportSelectWindow w(form);
  w.Open();
  EXPECT_TRUE(w.windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_EQ(Items(w.CmbRegion()), QStringList{"Europe"});
  EXPECT_EQ(w.LblRegion()->text(), "There is 1 region");
  EXPECT_EQ(w.LblCity()->text(), "There are 2 cities");
  EXPECT_EQ(w.CmbCity()->currentIndex(), 1);
  EXPECT_EQ(Items(w.LstAirport()), QStringList{QString::fromUtf8("M\xC3\xBCnchen (EDDM)")});
  EXPECT_EQ(w.CmdClose()->text(), "Exit");
  EXPECT_FALSE(w.CmdSelect()->isEnabled());

  emit w.CmbCity()->activated(0);
  EXPECT_EQ(state.Config.City, 0);
  EXPECT_EQ(Items(w.LstAirport()), QStringList{"Frankfurt Main (EDDF)"});
  w.LstAirport()->setCurrentRow(0);
  EXPECT_TRUE(w.CmdSelect()->isEnabled());

  w.ChckICAO()->click();
  EXPECT_EQ(Items(w.LstAirport()), QStringList{"EDDF (Frankfurt Main)"});

  w.TxtICAO()->setText("XXXX");
  w.CmdSearch()->click();
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"No airport for this ICAO code found!!"});

  std::optional<AirportSelection> chosen;
  w.onSelected = [&](const AirportSelection& s) { chosen = s; };
  w.OptDestination()->click();
  w.CmdSelect()->click();
  ASSERT_TRUE(chosen);
  EXPECT_EQ(chosen->Airport, 0);
  EXPECT_EQ(destination, 0);
  EXPECT_EQ(departure, -1);
  EXPECT_EQ(w.CmdClose()->text(), "Close");
  w.CmdClose()->click();
  EXPECT_TRUE(w.isHidden());
}

TEST(AirportSelectWindow, ExitWhileChoosingTheStartAirportEndsTheProgram) {
  NavDatabase db = Database();
  AppState state;
  state.ChoosingStartAirport = true;
  test::ScriptedUi ui;
  int32_t departure = -1, destination = -1;
  OvrLL form(db.Airports, state, ui, departure, destination);
  AirportSelectWindow w(form);
  w.Open();
  int ended = 0;
  w.onEndProgram = [&] { ++ended; };
  w.CmdClose()->click();
  EXPECT_EQ(ended, 1);
  w.close();  // the close box does the same
  EXPECT_EQ(ended, 2);
  EXPECT_TRUE(w.isVisible());
}

TEST(UserWaypointWindow, AddsAWaypointAndSavesItWhenClosed) {
  test::TempDir dir;
  AppFolder app(dir.Path());
  std::vector<UserWaypointRec> waypoints;
  test::ScriptedUi ui;
  FrmUser form(waypoints, ui, app);
  UserWaypointWindow w(form);
  w.Open();
  int changed = 0;
  w.onChanged = [&] { ++changed; };

  w.Field("txtICAO")->setText("HOME1");
  w.Field("txtName")->setText("My field");
  w.ShowPosition(50.5, -8.25);  // a position from outside keeps what was typed
  EXPECT_EQ(w.Field("txtICAO")->text(), "HOME1");
  EXPECT_EQ(w.Field("txtLatNS")->text(), "N");
  EXPECT_EQ(w.Field("txtLonEW")->text(), "W");
  EXPECT_EQ(w.Field("txtLonMin")->text(), "15.00");
  w.CmdAdd()->click();
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"HOME1 has been added"});
  EXPECT_EQ(changed, 1);
  EXPECT_EQ(Items(w.LstWP()), QStringList{"HOME1      My field"});
  ASSERT_EQ(waypoints.size(), 1u);
  EXPECT_EQ(waypoints[0].Lon, -8.25f);

  w.CmdEdit()->click();  // the new line is selected: a change without changes
  EXPECT_EQ(ui.Messages().back(), "HOME1 has been changed");

  std::optional<std::pair<double, double>> sim;
  w.simPosition = [&] { return sim; };
  w.CmdFSPos()->click();  // no simulator position: the fields stay
  EXPECT_EQ(w.Field("txtLatDeg")->text(), "50");
  sim = std::make_pair(-1.5, 2.0);
  w.CmdFSPos()->click();
  EXPECT_EQ(w.Field("txtLatNS")->text(), "S");
  EXPECT_EQ(w.Field("txtLatDeg")->text(), "1");

  w.CmdCancel()->click();
  EXPECT_FALSE(form.Visible);
  std::optional<Bytes> file = ReadWholeFile(app.Resolve(kUserWaypointFile));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->size(), 9 + kUserWaypointRecordSize);
}

}  // namespace
}  // namespace orv::ui
