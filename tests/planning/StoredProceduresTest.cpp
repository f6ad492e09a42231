#include "planning/StoredProcedures.h"

#include <gtest/gtest.h>


#include "database/ByteReader.h"
#include "planning/Aircraft.h"
#include "planning/FakeNav.h"
#include "planning/FlightPlan.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

using test::Row;

// The file's layout written out by hand, field by field.
void Head(ByteWriter& w, std::string_view ap, std::string_view rwy, std::string_view name, uint8_t n) {
  w.Text(ap, 10);
  w.Text(rwy, 5);
  w.Text(name, 40);
  w.U8(n);
}
void Point(ByteWriter& w, std::string_view kind, std::string_view code, float lat, float lon) {
  w.Text(kind, 5);
  w.Text(code, 10);
  w.Text(code, 20);
  w.F32(lat);
  w.F32(lon);
  for (uint8_t i = 0; i < 18; ++i) w.U8(i);
}

std::vector<uint8_t> ThreeAirports() {
  ByteWriter b;
  Head(b, "EDDM", "26L", "OTHER1A", 1);
  Point(b, "VOR", "MUN", 48.3f, 11.8f);
  Head(b, "eddf  ", "25C", "TOBAK1F", 2);
  Point(b, "Int", "TOBAK", 49.9f, 8.2f);
  Point(b, "VOR", "FFM", 50.05f, 8.64f);
  Head(b, "EDDF", "00", "ANEKI1L", 1);
  Point(b, "Fix", "ANEKI", 50.1f, 8.2f);
  // A later EDDF block after another airport's is not the airport's any more.
  Head(b, "EDDS", "07", "STG1A", 0);
  Head(b, "EDDF", "07C", "LATE1A", 0);
  return std::move(b.bytes);
}

TEST(StoredProcedures, ReadsTheBlocksOfOneAirport) {
  const std::vector<uint8_t> file = ThreeAirports();
  ASSERT_EQ(file.size(), 5 * 56u + 4 * 61u);
  ProcedureEnds ends{"EDDF", "EDDM", 50.03f, 8.57f, 48.35f, 11.78f};
  ProcedureFileRead r = ReadProcedures(file, " EDDF", ends, "sid.orv");
  EXPECT_TRUE(r.Found);
  EXPECT_EQ(r.Error, "");
  ASSERT_EQ(r.Procedures.size(), 2u);
  const ProcedureRec& p = r.Procedures[0];
  EXPECT_EQ(p.Name.Str(), "TOBAK1F");
  EXPECT_EQ(p.PointCount, 2);
  ASSERT_EQ(p.Points.size(), 4u);
  EXPECT_EQ(p.Points[0].Code.Str(), "EDDF");
  EXPECT_FLOAT_EQ(p.Points[0].Lat, 50.03f);
  EXPECT_EQ(p.Points[1].Kind.Str(), "Int");
  EXPECT_EQ(p.Points[2].Code.Str(), "FFM");
  EXPECT_FLOAT_EQ(p.Points[2].Lon, 8.64f);
  EXPECT_EQ(p.Points[2].Extra[17], 17);
  EXPECT_EQ(p.Points[3].Code.Str(), "EDDM");
  EXPECT_EQ(ProcedureListText(r.Procedures[0]), "TOBAK1F#Rwy 25C");
  EXPECT_EQ(ProcedureListText(r.Procedures[1]), "ANEKI1L#Any Rwy");

  EXPECT_TRUE(HasProcedures(file, "eddm"));
  EXPECT_TRUE(HasProcedures(file, "EDDS"));
  EXPECT_FALSE(HasProcedures(file, "KJFK"));
  EXPECT_FALSE(ReadProcedures(file, "KJFK", ends, "sid.orv").Found);

  // Cut inside the second EDDF block: the first is kept, the fault is told.
  std::vector<uint8_t> cut(file.begin(), file.begin() + 56 + 61 + 56 + 2 * 61 + 56 + 30);
  r = ReadProcedures(cut, "EDDF", ends, "sid.orv");
  ASSERT_EQ(r.Procedures.size(), 1u);
  EXPECT_EQ(r.Error, "The file sid.orv ends inside the procedure ANEKI1L (byte 295).");
  // A point count past the end of the file, before the airport: nothing read.
  ByteWriter hostile;
  Head(hostile, "XXXX", "01", "BAD", 255);
  EXPECT_FALSE(ReadProcedures(hostile.bytes, "EDDF", ends, "sid.orv").Found);
  EXPECT_FALSE(HasProcedures(hostile.bytes, "EDDF"));
  // The file of no procedures, as the database manager writes it: one blank head.
  ByteWriter empty;
  Head(empty, "", "", "", 0);
  EXPECT_FALSE(ReadProcedures(empty.bytes, "  ", ends, "sid.orv").Found);
  EXPECT_FALSE(ReadProcedures(empty.bytes, "EDDF", ends, "sid.orv").Found);
}

class ProcedurePlanTest : public ::testing::Test {
protected:
  ProcedurePlanTest() {
    ac.CruiseSpeed = 240;
    ac.ApproachSpeed = 120;
    nav.Airports.resize(2);
    nav.Airports[0].Icao = "EDDF";
    nav.Airports[1].Icao = "EDDM";
    plan.Waypoints[0] = Row("", "EDDF", 50.03f, 8.57f, kOriginAirport);
    plan.Waypoints[1] = Row("VOR", "XYZ", 49.5f, 10.0f);
    plan.Waypoints[2] = Row("", "EDDM", 48.35f, 11.78f, kOriginAirport);
    plan.DepartureAirport = 0;
    plan.DestinationAirport = 1;
    PlanEditor e = Editor();
    e.SetDirectPlan(2);
  }
  PlanEditor Editor() { return PlanEditor(plan, panel, ac, nav); }
  std::string Codes() const {
    std::string s;
    for (int r = 0; r <= plan.LastRow; ++r)
      s += plan.Waypoints[r].Code.Str() + ":" + std::to_string(plan.Waypoints[r].Origin) + " ";
    return s;
  }

  FlightPlan plan;
  PlanPanel panel;
  AircraftRec ac;
  test::FakeNav nav;
  test::ScriptedUi ui;
};

TEST_F(ProcedurePlanTest, WindowInsertsReplacesAndDeletes) {
  const std::vector<uint8_t> file = ThreeAirports();
  LoadSID sid(ui, true);
  ASSERT_TRUE(sid.Load(file, plan, nav));
  EXPECT_EQ(sid.Caption, "Open SID");
  ASSERT_EQ(sid.lstSidStar.size(), 2u);
  EXPECT_EQ(sid.lstSidStar[1].Text, "ANEKI1L#Any Rwy");
  ASSERT_EQ(sid.tvwSidStar.size(), 4u);
  EXPECT_EQ(sid.tvwSidStar[0].Text, "EDDF - Rwy 25C");
  EXPECT_EQ(sid.tvwSidStar[1].Text, "TOBAK1F - TOBAK - FFM");
  EXPECT_EQ(sid.tvwSidStar[2].Text, "EDDF - Any Rwy");
  PlanEditor e = Editor();
  EXPECT_FALSE(sid.OKButton(e, nullptr));  // nothing chosen yet
  sid.SelectTree(0);  // a runway node chooses nothing
  EXPECT_EQ(sid.Selected(), -1);
  sid.KeyDown();
  EXPECT_EQ(sid.Selected(), 0);
  EXPECT_EQ(sid.lblAirportRwy, "EDDF - Rwy 25C");
  sid.KeyDown();
  EXPECT_EQ(sid.Selected(), 1);
  EXPECT_EQ(sid.TreeIndex, 3);
  sid.KeyUp();
  EXPECT_EQ(sid.lblSidStarName, "TOBAK1F");

  ASSERT_TRUE(sid.OKButton(e, nullptr));
  EXPECT_FALSE(sid.Visible);
  EXPECT_EQ(Codes(), "EDDF:0 TOBAK:3 FFM:3 XYZ:1 EDDM:0 ");
  EXPECT_EQ(plan.SidRows, 2);
  EXPECT_EQ(panel.Table.Rows(), 6);
  // Another SID replaces the first.
  sid.SelectList(1);
  ASSERT_TRUE(sid.OKButton(e, nullptr));
  EXPECT_EQ(Codes(), "EDDF:0 ANEKI:3 XYZ:1 EDDM:0 ");
  EXPECT_EQ(plan.SidRows, 1);

  // A STAR goes ahead of the destination; EDDM's only procedure.
  LoadSID star(ui, false);
  ASSERT_TRUE(star.Load(file, plan, nav));
  star.SelectList(0);
  ASSERT_TRUE(star.OKButton(e, nullptr));
  EXPECT_EQ(Codes(), "EDDF:0 ANEKI:3 XYZ:1 MUN:2 EDDM:0 ");
  EXPECT_EQ(plan.StarRows, 1);

  menuDeleteSid(e);
  EXPECT_EQ(Codes(), "EDDF:0 XYZ:1 MUN:2 EDDM:0 ");
  EXPECT_EQ(plan.SidRows, 0);
  menuDeleteStar(e);
  EXPECT_EQ(Codes(), "EDDF:0 XYZ:1 EDDM:0 ");
  EXPECT_EQ(plan.StarRows, 0);
  menuDeleteStar(e);  // nothing left to delete: the enroute row stays
  EXPECT_EQ(plan.LastRow, 2);

  // An airport without procedures.
  nav.Airports[1].Icao = "KJFK";
  LoadSID none(ui, false);
  EXPECT_FALSE(none.Load(file, plan, nav));
  EXPECT_EQ(ui.Messages().back(), "no STAR available for this airport!");
}

}  // namespace
}  // namespace orv
