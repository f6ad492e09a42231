#include <gtest/gtest.h>

#include <cmath>

#include "FlightWorld.h"
#include "simlink/Autopilot.h"
#include "simlink/OffsetImage.h"
#include "simlink/SimData.h"
#include "simlink/SimFlight.h"

namespace orv {
namespace {

TEST(Autopilot, CouplingWritesTheBugOutsideAMileOnlyWhenItChanges) {
  NavDatabase db;
  test::BuildFlightWorld(db);
  const AircraftRec jet = test::FlightJet();
  FlightPlan plan;
  PlanPanel panel;
  ASSERT_TRUE(test::BuildFlightPlan(db, "EDDF", "EDDM", jet, plan, panel));
  SilentUi ui;
  SimFlight flight(plan, panel, db.MagVar, ui);
  std::string error;
  ASSERT_TRUE(flight.Connect(error));
  OffsetImage& image = flight.Image();
  AutopilotCoupling& ap = flight.Autopilot();
  LiveTracking& live = flight.Live();
  SimSnapshot& snap = live.Snap;
  snap.MagHeading = 70.4f;

  // Coupled: master, heading hold and the present heading go out at once.
  ap.CmdAutoHdgClick();
  EXPECT_EQ(ap.AutoHdgColour, 65280);
  EXPECT_TRUE(flight.WindowTimers().Enabled(TimerId::AutoPilot));
  EXPECT_EQ(image.Get<uint32_t>(0x07BC), 1u);
  EXPECT_EQ(image.Get<uint32_t>(0x07C8), 1u);
  EXPECT_EQ(image.Get<int16_t>(0x07CC), HeadingBugWord(70));
  EXPECT_EQ(live.State().GpsPage, kGpsPagePlan);

  // Ten miles west of row 1 with a wind correction of -5: the bearing east
  // (rhumb, no variation) plus the correction.
  const WaypointRec& row = plan.Waypoints[1];
  snap.Latitude = row.Lat;
  snap.Longitude = row.Lon - 10.0f / 60.0f / std::cos(row.Lat * 3.14159265f / 180);
  snap.SimMagVar = 0;
  snap.Wca = -5;
  live.State().ActiveRow = 1;
  ap.TmAutoPilotTick();
  EXPECT_NEAR(ap.LastBug, 85, 0.2);
  EXPECT_EQ(image.Get<int16_t>(0x07CC), HeadingBugWord(85));
  // The same heading again writes nothing.
  image.Put<int16_t>(0x07CC, 0);
  ap.TmAutoPilotTick();
  EXPECT_EQ(image.Get<int16_t>(0x07CC), 0);
  // A skipped tick does nothing but clear the mark.
  snap.Wca = 5;
  ap.SkipNextTick();
  ap.TmAutoPilotTick();
  EXPECT_FALSE(ap.CouplingSkip);
  EXPECT_EQ(image.Get<int16_t>(0x07CC), 0);
  // Inside a mile the bug stays.
  snap.Longitude = row.Lon - 0.9f / 60.0f / std::cos(row.Lat * 3.14159265f / 180);
  ap.TmAutoPilotTick();
  EXPECT_EQ(image.Get<int16_t>(0x07CC), 0);
  EXPECT_NEAR(ap.LastBug, 85, 0.2);

  // In a hold the shape is flown; after its last point the first comes again.
  live.State().ProcedureOffRunning = true;
  snap.Longitude = row.Lon - 10.0f / 60.0f;
  ap.ProcedureIndex = 14;
  ap.ProcedurePoints[14] = {snap.Latitude, snap.Longitude + 0.001f};
  ap.ProcedurePoints[1] = {snap.Latitude - 1.0f, snap.Longitude};
  ap.TmAutoPilotTick();
  EXPECT_EQ(ap.ProcedureIndex, 1);

  // Uncoupled: the timer stops.
  ap.CmdAutoHdgClick();
  EXPECT_EQ(ap.AutoHdgColour, 255);
  EXPECT_FALSE(flight.WindowTimers().Enabled(TimerId::AutoPilot));
}

}  // namespace
}  // namespace orv
