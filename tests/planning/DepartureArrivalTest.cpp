#include "planning/DepartureArrival.h"

#include <gtest/gtest.h>

#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"

namespace orv {
namespace {

// Near the equator a degree is 60 NM both ways, which keeps the geometry easy
// to follow by hand: the departure at 0/0 with runway 09/27, the destination
// at 0/1 with runway 09/27 and an ILS on 27, a reference VOR north of the
// departure's climb-out point.
class GeneratorTest : public ::testing::Test {
protected:
  GeneratorTest() {
    ac.ApproachSpeed = 120;  // turn radius 120 * 3 / 60 / pi = 1.91 NM
    auto airport = [&](const char* icao, const char* name, float lon) {
      AirportRec a;
      a.Icao.Assign(icao);
      a.Name.Assign(name);
      a.Lat = 0, a.Lon = lon;
      RunwayRec r;
      r.LowEnd.Assign("09");
      r.HighEnd.Assign("27");
      r.Lat = 0, r.Lon = lon, r.TrueHeading = 90, r.LengthFeet = 9800, r.WidthFeet = 150;
      a.Runways.push_back(r);
      return a;
    };
    db.Airports.Airports.push_back(airport("AAAA", "Alpha Field", 0));
    db.Airports.Airports.push_back(airport("BBBB", "Bravo Field", 1));
    IlsRec ils;
    ils.Ident.Assign("IBB");
    ils.Runway.Assign("27");
    ils.Values[0] = 110.1f;
    db.Airports.Airports[1].Ils.push_back(ils);
    db.Airports.Airports[1].Runways[0].HighIls.Assign("IBB");
    LinkIlsToRunways(db.Airports.Airports[1]);
    VorRec far;
    far.Ident.Assign("FAR");
    far.Lat = 10, far.Lon = 10;
    db.Navaids.Vors.push_back(far);
    VorRec abc;
    abc.Ident.Assign("ABC");
    abc.Name.Assign("ALPHA BRAVO");
    abc.Lat = 0.1f, abc.Lon = 0.1f;
    db.Navaids.Vors.push_back(abc);

    plan.Waypoints[0].Code.Assign("AAAA");
    plan.Waypoints[2].Code.Assign("BBBB");
    plan.Waypoints[2].Lat = 0, plan.Waypoints[2].Lon = 1;
    plan.LastRow = 2;
    plan.DepartureAirport = 0;
    plan.DestinationAirport = 1;
  }
  void Row1(const char* kind, float lat, float lon) {
    WaypointRec& w = plan.Waypoints[1];
    w.Kind.Assign(kind);
    w.Code.Assign("TGT");
    w.Lat = lat, w.Lon = lon;
  }

  NavDatabase db;
  FlightPlan plan;
  AircraftRec ac;
};

TEST_F(GeneratorTest, DepartureSentences) {
  FrmSID frm(db, plan, ac);
  // 4 NM beyond the point 5 NM out on the runway heading: straight on, the
  // code twice, the course true.
  Row1("VOR", 0.002f, 0.15f);
  frm.WordDeparture(0, 0, 90, true);
  EXPECT_EQ(frm.Message, "On track 89\xB0 TGT to TGT VOR");
  EXPECT_FALSE(frm.Sketch.HasArc);

  // Far to the north: a left turn onto the VOR's radial; ABC is the nearest
  // VOR, 6.1 NM north-north-east of the climb-out point.
  Row1("VOR", 0.5f, 0.1f);
  frm.WordDeparture(0, 0, 90, true);
  EXPECT_EQ(frm.Message,
            "Climb straight ahead until crossing ABC R-189 (ABC 6.1DME), turn left, intercept TGT R-178 inbound "
            "towards TGT VOR");
  EXPECT_EQ(frm.Ref.Index, 1);
  ASSERT_TRUE(frm.Sketch.HasArc);
  EXPECT_EQ(frm.Sketch.TurnRight, 0);
  EXPECT_FLOAT_EQ(frm.Sketch.Arc.StartAngle, 180);  // the centre lies north of the climb-out point
  EXPECT_NEAR(frm.Sketch.Arc.Radius, 1.9099, 1e-4);
  // A beacon keeps the bearing from it; a fix and an intersection take the reciprocal.
  Row1("NDB", 0.5f, 0.1f);
  frm.WordDeparture(0, 0, 90, false);
  EXPECT_EQ(frm.Message.substr(frm.Message.find("left")), "left, 178\xB0 track to TGT NDB");
  Row1("Fix", 0.5f, 0.1f);
  frm.WordDeparture(0, 0, 90, false);
  EXPECT_EQ(frm.Message.substr(frm.Message.find("left")), "left, 358\xB0 toward TGT Fix");
  Row1("Int", 0.5f, 0.1f);
  frm.WordDeparture(0, 0, 90, false);
  EXPECT_EQ(frm.Message.substr(frm.Message.find("left")), "left, 358\xB0 toward TGT Intersection");
  Row1("Uwp", -0.5f, 0.1f);
  frm.WordDeparture(0, 0, 90, false);
  EXPECT_EQ(frm.Message.substr(frm.Message.find("turn ")), "turn right");

  // Within 20 degrees of the heading there is no arc; beyond it there is.
  int16_t right = 5;
  TurnArc a = DepartureTurn(0, 0, 90, 0.342f * 0.5f, 0.94f * 0.5f, 120, right);  // 19.9 degrees off
  EXPECT_EQ(a.Radius, 0);
  EXPECT_EQ(a.ExitLat, 0);
  EXPECT_EQ(right, 0);
  a = DepartureTurn(0, 0, 90, 0.35f * 0.5f, 0.94f * 0.5f, 120, right);  // 20.4 degrees off
  EXPECT_GT(a.Radius, 0);
  EXPECT_EQ(TurnSide(0, 0, 1, 0, 90, true), "left");
  EXPECT_EQ(TurnSide(0, 0, 1, 0, 90, false), "right");
  EXPECT_EQ(TurnSide(0, 0, -1, 0.01f, 90, true), "right");
  EXPECT_EQ(TurnSide(0, 0, 0.01f, -1, 90, true), "left");  // x = 180: no longer below 180
}

TEST_F(GeneratorTest, ArrivalSentencesAndTheWindow) {
  FrmSID frm(db, plan, ac);
  Row1("VOR", 0.5f, 1.5f);
  // Runway 27 (line 1) has the ILS. From the row, 28 NM north and 20 NM
  // east of the centre of the turn north of the point 10 NM out, the
  // tangent to the 1.91 NM circle runs 34.4 NM on 212.3 degrees.
  frm.WordArrival(1, "27", 0, 1, 270, true);
  EXPECT_EQ(frm.Message, "leave VOR TGT heading 212\xB0; after 34nm  turn right until intercepting localizer");
  frm.WordArrival(0, "09", 0, 1, 90, false);
  EXPECT_EQ(frm.Message.substr(frm.Message.find("turn")), "turn left to final fix ");
  Row1("NDB", 0.01f, 1.3f);
  frm.WordArrival(1, "27", 0, 1, 270, false);
  EXPECT_EQ(frm.Message, "Fly straight in Rwy 27");

  // The window: departure first, the button naming the other view.
  Row1("VOR", 0.5f, 0.1f);
  ASSERT_TRUE(frm.Load());
  ASSERT_EQ(frm.lstRwy.size(), 2u);
  EXPECT_EQ(frm.lstRwy[0], "09  09800  (ft)");
  EXPECT_EQ(frm.SIDFrame, "Departure for Alpha Field Rwy 09");
  EXPECT_EQ(frm.cmdSIDSTARCaption, "Arrival");
  EXPECT_EQ(frm.lblMessage.substr(0, 36), "Climb straight ahead until crossing ");
  frm.lstRwyClick(1);
  EXPECT_EQ(frm.RwyHeading, 270);
  EXPECT_EQ(frm.RwyLat, 0);
  EXPECT_EQ(frm.SIDFrame, "Departure for Alpha Field Rwy 27");
  frm.cmdSIDSTAR();
  EXPECT_EQ(frm.cmdSIDSTARCaption, "Departure");
  EXPECT_EQ(frm.SIDFrame, "Arrival for Bravo Field Rwy 09");
  frm.cmdSIDSTAR();
  EXPECT_EQ(frm.SIDFrame, "Departure for Alpha Field Rwy 27");  // the line kept per view

  VorReference none = NearestVor(NavaidTables(), 0, 0);
  EXPECT_FALSE(none.Found);
}

}  // namespace
}  // namespace orv
