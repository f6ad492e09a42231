#include <gtest/gtest.h>

#include <cmath>

#include "FlightWorld.h"
#include "core/Geodesy.h"
#include "map/MapGeodesy.h"
#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"
#include "simlink/SimFlight.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

TEST(LiveTracking, PassingDistanceWindCorrectionAndFuelPane) {
  // 55 kn on a turn whose A is 60 degrees: far inside half a mile.
  EXPECT_FLOAT_EQ(PassingDistance(55, 60), 0.5f);
  // Straight on (A 90) and a reversal of 172 degrees (A 4): no anticipation.
  EXPECT_FLOAT_EQ(PassingDistance(300, 0), 0.5f);
  EXPECT_FLOAT_EQ(PassingDistance(300, 172), 0.5f);
  // 300 kn through a right angle: a radius of 7475 m at 18 degrees of bank,
  // passed that far out (tan 45 is 1).
  EXPECT_NEAR(PassingDistance(300, 90), 7475.2 / 1852, 0.001);
  EXPECT_GT(PassingDistance(300, 171), 40.0f);

  EXPECT_EQ(WindCorrectionAngle(50, 30, 0, 270), 0.0f);
  EXPECT_EQ(WindCorrectionAngle(300, 0, 0, 270), 0.0f);
  // Heading north in a west wind of a tenth of the TAS: into the wind.
  EXPECT_NEAR(WindCorrectionAngle(100, 10, 0, 270), -5.739, 0.001);
  EXPECT_NEAR(WindCorrectionAngle(100, 10, 180, 270), 5.739, 0.001);

  EXPECT_EQ(FuelStatusText(0, 1000), "gal 1000");
  EXPECT_EQ(FuelStatusText(1, 1000), "lbs 6660");
  EXPECT_EQ(FuelStatusText(2, 1000), "kg 3028");
  EXPECT_EQ(FuelStatusText(3, 999), "lit 3781");
}

// A partner that is not there: no window of either class.
class AbsentPartner : public ImagePartner {
public:
  using ImagePartner::ImagePartner;
  Handle FindWindowOfClass(std::string_view) override { return 0; }
};

TEST(LiveTracking, ConnectDisconnectAndTheLostLink) {
  OffsetImage image;
  AbsentPartner absent(image);
  FsuipcChannel channel(absent);
  ManualTimers timers;
  test::ScriptedUi ui;
  HeadlessLiveHost host;
  FlightPlan plan;
  PlanPanel panel;
  ViewState view;
  MagVarGrid grid;
  MapGeodesy geo(grid);
  LiveTracking refused(channel, timers, ui, host, plan, panel, view, geo);
  refused.MenuLocalClick();
  EXPECT_FALSE(refused.Connected());
  EXPECT_FALSE(refused.Menus.MenuLocal);
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"Unable to connect to Flight Simulator Msg #2"});

  NavDatabase db;
  test::BuildFlightWorld(db);
  const AircraftRec jet = test::FlightJet();
  ASSERT_TRUE(test::BuildFlightPlan(db, "EDDF", "EDDM", jet, plan, panel));
  test::ScriptedUi ui2;
  SimFlight flight(plan, panel, db.MagVar, ui2);
  flight.Sim().SetPerformance(PerformanceOf(jet));
  flight.Sim().Park(RouteFromPlan(plan, db.Airports.Airports).Departure);
  flight.Sim().SetUtcSeconds(14 * 3600 + 5 * 60 + 7);
  std::string error;
  ASSERT_TRUE(flight.Connect(error)) << error;
  LiveTracking& live = flight.Live();
  EXPECT_EQ(ui2.Texts("caption"), std::vector<std::string>{"Connected to Flight Simulator"});
  EXPECT_TRUE(flight.WindowTimers().Enabled(TimerId::Gps));
  EXPECT_TRUE(flight.Host().GpsShown);
  EXPECT_EQ(live.Snap.UtcTimeText, "14:05:07");
  EXPECT_EQ(live.Snap.Altitude, 364);
  EXPECT_EQ(flight.Host().Status[kStatusFuel], "kg 19999");
  EXPECT_EQ(flight.Host().Gps[1], "  Alt:      00364     AGL: 00000");
  EXPECT_EQ(flight.Host().Gps[4], "  TAS:   000         GS:   000");

  // The partner goes away under the tick: the liveness read fails.
  const float lat = live.Snap.Latitude, lon = live.Snap.Longitude;
  flight.Sim().Step(60);
  live.Channel().IpcClose();
  flight.Advance(500);
  EXPECT_FALSE(live.Connected());
  EXPECT_FALSE(live.State().TrackingActive);
  EXPECT_FALSE(live.Menus.MenuLocal);
  EXPECT_FALSE(flight.WindowTimers().Enabled(TimerId::Gps));
  EXPECT_FALSE(flight.Host().GpsShown);
  EXPECT_EQ(ui2.Messages(), std::vector<std::string>{"Connection to Flight Simulator terminated!"});
  EXPECT_EQ(ui2.Texts("caption").back(), "Disconnected from Flight Simulator");
  EXPECT_EQ(live.Snap.Latitude, lat);
  EXPECT_EQ(live.Snap.Longitude, lon);
}

TEST(LiveTracking, SequencingPassingTouchAndGoAndTheLastRow) {
  NavDatabase db;
  test::BuildFlightWorld(db);
  const AircraftRec jet = test::FlightJet();
  FlightPlan plan;
  PlanPanel panel;
  ASSERT_TRUE(test::BuildFlightPlan(db, "EDDF", "EDDM", jet, plan, panel));
  ASSERT_EQ(plan.LastRow, 4);
  test::ScriptedUi ui;
  SimFlight flight(plan, panel, db.MagVar, ui);
  std::string error;
  ASSERT_TRUE(flight.Connect(error));
  LiveTracking& live = flight.Live();
  LinkState& s = live.State();
  const WPTable& table = panel.Table;
  SimSnapshot& snap = live.Snap;
  int32_t fuel = 6000;
  auto at = [&](float lat, float lon, float minutes, bool air) {
    snap.Latitude = lat;
    snap.Longitude = lon;
    snap.UtcMinutes = minutes;
    snap.Airborne = air ? -1 : 0;
    snap.Agl = air ? 3000 : 0;
    snap.Altitude = air ? 3364 : 364;
    snap.GroundSpeed = 300;
    snap.Tas = air ? 280 : 0;
    snap.TotalFuel = fuel;
    live.SequenceTick();
  };
  const WaypointRec& askik = plan.Waypoints[1];
  const WaypointRec& rolis = plan.Waypoints[2];

  // First tick in the air, just outside the passing distance of row 1 (the
  // turn there asks for more than half a mile): the takeoff work, the ETA
  // column from now, the flight armed, nothing passed.
  const float pass = PassingDistance(300, AngleDiff(askik.Course, rolis.Course));
  EXPECT_GT(pass, 0.6f);
  at(askik.Lat + (pass + 0.03f) / 60.0f, askik.Lon, 600, true);
  EXPECT_FLOAT_EQ(s.TakeoffTime, 600);
  EXPECT_EQ(s.LblTKTime, "Takeoff Time: 10:00");
  EXPECT_EQ(table.Text(1, WPTable::kEta), "10:00");
  EXPECT_TRUE(table.Extended());
  EXPECT_TRUE(s.FlightArmed);
  EXPECT_EQ(s.FuelAtTakeoff, 6000);
  EXPECT_EQ(s.ActiveRow, 1);
  EXPECT_NEAR(s.DistToActive, pass + 0.03f, 0.005);

  // Just inside it: passed.
  at(askik.Lat + (pass - 0.03f) / 60.0f, askik.Lon, 600.4f, true);
  EXPECT_EQ(s.ActiveRow, 2);
  EXPECT_FLOAT_EQ(s.LastPassDistance, pass);
  EXPECT_EQ(ui.Texts("beep").size(), 1u);
  EXPECT_EQ(table.Text(2, WPTable::kEta), "    ");
  EXPECT_EQ(table.Text(2, WPTable::kAta), "10:00");
  EXPECT_EQ(table.Text(2, WPTable::kGs), "300 kn");
  EXPECT_EQ(table.Text(2, WPTable::kAltitude), "03364 ft");
  EXPECT_EQ(table.Text(2, WPTable::kFuel), "18168/0%");
  EXPECT_EQ(table.Cell(2, WPTable::kAta).ForeColor, 255);
  ASSERT_EQ(s.LogEntries.size(), 1u);
  EXPECT_EQ(s.LogEntries[0].Ident, "ASKIK   ");
  EXPECT_EQ(s.LogEntries[0].Time, 600);

  // Row 2, with a tenth of the fuel burnt.
  fuel = 5400;
  at(rolis.Lat, rolis.Lon, 611, true);
  EXPECT_EQ(s.ActiveRow, 3);
  EXPECT_EQ(table.Text(3, WPTable::kFuel), "16351/10%");

  // The last row is never passed, even when flown over.
  s.ActiveRow = 4;
  const WaypointRec& dest = plan.Waypoints[4];
  at(dest.Lat, dest.Lon, 620, true);
  EXPECT_EQ(s.ActiveRow, 4);
  EXPECT_EQ(s.LogEntries.size(), 2u);

  // A touch-and-go within two minutes of the takeoff time ends nothing.
  s.TakeoffTime = 619;
  at(dest.Lat, dest.Lon, 620.5f, false);
  EXPECT_FLOAT_EQ(s.TakeoffTime, 619);
  EXPECT_TRUE(s.FlightArmed);
  EXPECT_FALSE(s.EtaColumnDone);
  EXPECT_EQ(table.Text(5, WPTable::kAta), "");
  // Tas 0 on the ground leaves the last ETE.
  const float ete = s.Ete;
  EXPECT_GT(ete, 0);
  // Down for good: the final ATA goes on the destination's line.
  at(dest.Lat, dest.Lon, 621.5f, false);
  EXPECT_FLOAT_EQ(s.TakeoffTime, 0);
  EXPECT_FALSE(s.FlightArmed);
  EXPECT_EQ(table.Text(5, WPTable::kAta), "10:22");
  EXPECT_FLOAT_EQ(s.Ete, ete);
}

}  // namespace
}  // namespace orv
