#include <gtest/gtest.h>

#include <cmath>

#include "map/MapFakes.h"
#include "map/RecordingTarget.h"
#include "map/Viewport.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

using test::FakeGeodesy;
using test::FakeViewHost;
using test::ScriptedUi;
using Log = std::vector<std::string>;

// A 10000 x 7000 surface centred at (lat, lon) with the given scale.
ViewState View(float lat, float lon, int32_t scaling) {
  ViewState v;
  v.CntrLat = lat;
  v.CntrLon = lon;
  v.Scaling = scaling;
  return v;
}

TEST(ZoomTable, StepsAndLabels) {
  ASSERT_EQ(ZoomTable.size(), 22u);
  for (std::size_t i = 0; i < ZoomTable.size(); ++i) {
    if (i == 18 || i == 21) continue;
    EXPECT_EQ(ZoomTable[i].Scale * ZoomTable[i].Nm, 420000) << i;
  }
  // The two rows that were never tidied up.
  EXPECT_EQ(ZoomTable[18].Scale, 465);
  EXPECT_EQ(ZoomTable[18].Nm, 900);
  EXPECT_EQ(ZoomTable[21].Scale, 80);
  EXPECT_EQ(ZoomTable[21].Nm, 6000);
  EXPECT_EQ(ZoomTable[6].Nm, 30);
  EXPECT_EQ(ZoomTable[8].Scale, 5600);
  EXPECT_EQ(ZoomTable[8].Nm, 75);
  EXPECT_EQ(RangeText(100), "100NM");
  EXPECT_EQ(RangeText(1), "1NM");
  EXPECT_EQ(RangeText(2000), "2000NM");
}

TEST(Projection, FloorsAndCentre) {
  ViewState v = View(0, 0, 14000);
  EXPECT_EQ(MapXFromLon(v, 0, 0), 5000);
  EXPECT_EQ(MapYFromLat(v, 0), 3500);
  EXPECT_EQ(MapYFromLat(v, 0.25f), 0);
  // Floor, not truncation: (0 - 0.3f) * 14000 + 3500 = -700.0002
  EXPECT_EQ(MapYFromLat(v, 0.3f), -701);
  EXPECT_EQ(MapXFromLon(v, -0.25f, 0), 1500);
  // Latitude is ignored without Round World.
  EXPECT_EQ(MapXFromLon(v, -0.25f, 60), 1500);
}

TEST(Projection, AntimeridianFoldsOnce) {
  // 358 degrees apart on paper, 2 degrees east in fact.
  ViewState v = View(0, 179, 14000);
  EXPECT_EQ(MapXFromLon(v, -179, 0), 33000);
  EXPECT_FLOAT_EQ(MapLonFromX(v, 33000, 0), -179.0f);
  // Exactly opposite the centre, from either side: always the east side.
  ViewState w = View(0, 0, 14000);
  EXPECT_EQ(MapXFromLon(w, 180, 0), 2525000);
  EXPECT_EQ(MapXFromLon(w, -180, 0), 2525000);
  EXPECT_FLOAT_EQ(LonDelta(0, 180), -180.0f);
  EXPECT_FLOAT_EQ(LonDelta(0, -180), -180.0f);
  EXPECT_FLOAT_EQ(LonDelta(179, -179), -2.0f);
}

TEST(Projection, RoundWorldNarrowsByEachPointsLatitude) {
  ViewState v = View(50, 10, 1000);
  EXPECT_EQ(MapXFromLon(v, 12, 60), 6285);  // cos 50 for every point
  v.RoundWorld = true;
  EXPECT_EQ(MapXFromLon(v, 12, 60), 6000);  // cos 60 for this one
  EXPECT_EQ(MapXFromLon(v, 12, 50), 6285);
  // And back: the latitude has to be known first.
  EXPECT_FLOAT_EQ(MapLatFromY(v, 0), 53.5f);
  EXPECT_FLOAT_EQ(MapLonFromX(v, 6000, 60), 12.0f);
  v.RoundWorld = false;
  EXPECT_FLOAT_EQ(MapLonFromX(v, 6285, 60), 11.999105f);
}

TEST(Projection, PoleInRoundWorldIsNotGuarded) {
  ViewState v = View(0, 0, 14000);
  v.RoundWorld = true;
  // cos(90) with the program's pi is about 1.8e-9: far beyond one fold.
  EXPECT_FLOAT_EQ(MapLonFromX(v, 0, 90), -198976480.0f);
}

TEST(Projection, SideSurfacesUseTheirOwnCentre) {
  EXPECT_EQ(SideYFromLat(50.25, 50, 2000, 4000), 1000);
  EXPECT_EQ(SideXFromLon(10.5, 60, 10, 3000, 4000), 4000);  // cos 60 of the point itself
  EXPECT_EQ(SideXFromLon(-179.5, 0, 179.5, 3000, 1000), 4000);
}

TEST(ClampCenter, SurfaceStopsAtThePoles) {
  ViewState v = View(89, 0, 1000);
  EXPECT_FLOAT_EQ(ClampCenterLat(v, v.CntrLat), 86.5f);
  v.CntrLat = -89;
  EXPECT_FLOAT_EQ(ClampCenterLat(v, v.CntrLat), -86.5f);
  v.CntrLat = 10;
  EXPECT_FLOAT_EQ(ClampCenterLat(v, v.CntrLat), 10.0f);
  // A view taller than the world: the southern rule is tested last and wins.
  ViewState tall = View(0, 0, 20);
  EXPECT_FLOAT_EQ(ClampCenterLat(tall, 0), 85.0f);
}

TEST(Bounds, AcrossTheAntimeridianWraps) {
  ViewState v = View(0, 179.5f, 1000);
  ComputeBounds(v);
  EXPECT_FLOAT_EQ(v.MapNorth, 4.0f);
  EXPECT_FLOAT_EQ(v.MapSouth, -4.0f);
  EXPECT_FLOAT_EQ(v.MapWest, 174.0f);
  EXPECT_FLOAT_EQ(v.MapEast, -175.0f);
  EXPECT_TRUE(v.MapWraps);
  EXPECT_FLOAT_EQ(v.LatSpan, 8.0f);
  EXPECT_FLOAT_EQ(v.LonSpan, 13.0f);
  // The OR form, all comparisons strict.
  EXPECT_TRUE(InView(v, 0, 179.9f));
  EXPECT_TRUE(InView(v, 0, -179.9f));
  EXPECT_TRUE(InView(v, 0, 174.01f));
  EXPECT_FALSE(InView(v, 0, 174.0f));
  EXPECT_FALSE(InView(v, 0, -175.0f));
  EXPECT_FALSE(InView(v, 0, 0));
  EXPECT_FALSE(InView(v, 4.0f, 179.9f));
  EXPECT_TRUE(InView(v, 3.99f, 179.9f));
}

TEST(Bounds, OrdinaryViewAndOtherCombinations) {
  ViewState v = View(0, 0, 1000);
  ComputeBounds(v);
  EXPECT_FLOAT_EQ(v.MapWest, -5.5f);
  EXPECT_FLOAT_EQ(v.MapEast, 5.5f);
  EXPECT_FALSE(v.MapWraps);
  EXPECT_TRUE(InView(v, 0, -5.49f));
  EXPECT_FALSE(InView(v, 0, -5.5f));
  EXPECT_FALSE(InView(v, -4.0f, 0));

  // West beyond east, but not west-positive/east-negative: no wrap.
  ViewState wide = View(0, 100, 16);
  ComputeBounds(wide);
  EXPECT_FLOAT_EQ(wide.MapNorth, 90.0f);
  EXPECT_FLOAT_EQ(wide.MapSouth, -90.0f);
  EXPECT_FLOAT_EQ(wide.MapWest, 147.0f);
  EXPECT_FLOAT_EQ(wide.MapEast, 53.0f);
  EXPECT_FALSE(wide.MapWraps);
  EXPECT_FALSE(InView(wide, 0, 100));

  // Round World takes west at the north edge and east at the south edge.
  ViewState round = View(60, 0, 1000);
  round.RoundWorld = true;
  ComputeBounds(round);
  EXPECT_FLOAT_EQ(round.MapNorth, 64.0f);
  EXPECT_FLOAT_EQ(round.MapSouth, 56.0f);
  EXPECT_NEAR(round.MapWest, -11.90586f, 1e-4);
  EXPECT_NEAR(round.MapEast, 9.44146f, 1e-4);
}

TEST(Bounds, RenderPassHeadSyncsClampsAndBounds) {
  RecordingTarget map(1000, 500);
  map.SetScaleWidth(10000);
  map.SetScaleHeight(5000);
  ViewState v = View(89, 0, 1000);
  BeginRenderPass(v, map);
  EXPECT_EQ(v.ScaleHeight, 5000);
  EXPECT_FLOAT_EQ(v.CntrLat, 87.5f);
  EXPECT_FLOAT_EQ(v.MapNorth, 90.0f);
  EXPECT_FLOAT_EQ(v.MapSouth, 84.5f);
}

class ZoomTest : public ::testing::Test {
protected:
  ZoomTest() {
    v = View(50, 8, 14000);
    v.MapNorth = 55;
  }
  ViewState v;
  FakeViewHost host;
  ScriptedUi ui;
};

TEST_F(ZoomTest, AcceptedStepScalesByWindowAndRedrawsWhenReady) {
  RecordingTarget map;
  v.ZoomIndex = 8;
  v.Autozoom = true;
  v.MapReady = true;
  ResizeView(v, 6000, map, host, ui);  // factor 6000 / 8535 as a 32-bit float
  EXPECT_FLOAT_EQ(v.ZoomFactor, 0.7029876708984375f);
  EXPECT_EQ(v.Scaling, 3937);  // 0.70298767 * 5600 = 3936.73
  EXPECT_FALSE(v.Autozoom);
  host.log.clear();
  ui.events.clear();

  SetZoom(v, 9, false, host, ui);
  EXPECT_EQ(v.ZoomIndex, 9);
  EXPECT_EQ(v.Scaling, 2953);  // 2952.548
  EXPECT_EQ(host.log, (Log{"focus", "status1 100NM", "measure", "draw"}));
  ASSERT_EQ(ui.events.size(), 1u);
  EXPECT_EQ(ui.events[0].kind, "caption");
  EXPECT_EQ(ui.events[0].title, "OVRMap");
  EXPECT_EQ(ui.events[0].text, "Orvanta");
  EXPECT_TRUE(ui.Messages().empty());

  // Not yet loaded: no redraw.
  v.MapReady = false;
  host.log.clear();
  SetZoom(v, 4, true, host, ui);
  EXPECT_EQ(host.log, (Log{"focus", "status1 10NM", "measure"}));
}

TEST_F(ZoomTest, Refusals) {
  v.ZoomIndex = 0;
  ZoomKey(v, 34, host, ui);  // Page Down from the closest step
  EXPECT_EQ(ui.Messages(), (Log{"Maximum zoom!"}));
  EXPECT_EQ(ui.events[0].title, "Orvanta");
  EXPECT_EQ(ui.events[0].style, MsgStyle::Exclamation);
  EXPECT_EQ(v.ZoomIndex, 0);
  EXPECT_EQ(v.Scaling, 14000);
  EXPECT_EQ(host.log, (Log{"focus"}));

  ui.events.clear();
  host.log.clear();
  v.ZoomIndex = 20;
  v.Scaling = 105;
  ZoomKey(v, 33, host, ui);  // Page Up from step 20, northern mid-latitudes
  EXPECT_EQ(ui.Messages(), (Log{"Minimum zoom!"}));
  EXPECT_EQ(v.ZoomIndex, 20);
  EXPECT_EQ(host.log, (Log{"focus"}));

  // Step 19 to 20 is allowed there.
  ui.events.clear();
  host.log.clear();
  v.ZoomIndex = 19;
  ZoomKey(v, 189, host, ui);
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(v.ZoomIndex, 20);
  EXPECT_EQ(v.Scaling, 105);
}

TEST_F(ZoomTest, WidestStepsFallBackToNineteenNearThePoleAndSouth) {
  v.MapReady = false;
  v.ZoomIndex = 20;
  v.Scaling = 105;
  v.MapNorth = 85;
  SetZoom(v, 20, true, host, ui);
  EXPECT_EQ(ui.Messages(), (Log{"Minimum zoom!"}));
  EXPECT_EQ(v.ZoomIndex, 19);
  EXPECT_EQ(v.Scaling, 105);  // the scale is not recomputed
  EXPECT_EQ(host.log, (Log{"focus", "draw"}));  // redraws even before MapReady

  // South of the equator the widest two are never available.
  ui.events.clear();
  host.log.clear();
  v.MapNorth = -0.5f;
  v.ZoomIndex = 19;
  SetZoom(v, 20, true, host, ui);
  EXPECT_EQ(ui.Messages(), (Log{"Minimum zoom!"}));
  EXPECT_EQ(v.ZoomIndex, 19);
}

TEST_F(ZoomTest, KeysMenusAndWheel) {
  v.ZoomIndex = 6;
  EXPECT_TRUE(ZoomKey(v, 107, host, ui));
  EXPECT_EQ(v.ZoomIndex, 5);
  EXPECT_TRUE(ZoomKey(v, 187, host, ui));
  EXPECT_EQ(v.ZoomIndex, 4);
  EXPECT_TRUE(ZoomKey(v, 109, host, ui));
  EXPECT_EQ(v.ZoomIndex, 5);
  EXPECT_FALSE(ZoomKey(v, 65, host, ui));
  EXPECT_EQ(v.ZoomIndex, 5);

  EXPECT_EQ(ZoomIndexOfMenu("Menu3NM"), 2);
  EXPECT_EQ(ZoomIndexOfMenu("Menu800NM"), 17);
  EXPECT_EQ(ZoomIndexOfMenu("Menu2000NM"), 19);
  EXPECT_EQ(ZoomIndexOfMenu("Menu900NM"), -1);
  // The wheel never reaches a refusal.
  v.ZoomIndex = 0;
  WheelZoom(v, 120, host, ui);
  WheelZoom(v, 0, host, ui);
  EXPECT_EQ(v.ZoomIndex, 0);
  v.ZoomIndex = 20;
  WheelZoom(v, -120, host, ui);
  EXPECT_EQ(v.ZoomIndex, 20);
  EXPECT_TRUE(ui.Messages().empty());
  WheelZoom(v, 0, host, ui);
  EXPECT_EQ(v.ZoomIndex, 19);
  WheelZoom(v, -120, host, ui);
  EXPECT_EQ(v.ZoomIndex, 20);
}

TEST_F(ZoomTest, Autozoom) {
  v.Autozoom = true;
  v.ZoomIndex = 7;  // 50 NM
  AutoZoomTick(v, false, host, ui);
  EXPECT_TRUE(host.log.empty());
  EXPECT_TRUE(ui.events.empty());

  AutoZoomTick(v, true, host, ui);
  EXPECT_EQ(v.ZoomIndex, 1);
  EXPECT_TRUE(v.Autozoom);  // autozoom's own steps keep it on
  host.log.clear();
  AutoZoomTick(v, true, host, ui);
  EXPECT_TRUE(host.log.empty());
  AutoZoomTick(v, false, host, ui);
  EXPECT_EQ(v.ZoomIndex, 7);

  v.Autozoom = false;
  AutoZoomTick(v, true, host, ui);
  EXPECT_EQ(v.ZoomIndex, 7);
}

TEST_F(ZoomTest, LoadTakesTheTableScaleWithoutFactor) {
  v.ZoomFactor = 0.5f;
  LoadView(v, 47.25f, -122.5f, 9, host);
  EXPECT_EQ(v.Scaling, 4200);
  EXPECT_EQ(v.ZoomIndex, 9);
  EXPECT_FLOAT_EQ(v.CntrLat, 47.25f);
  EXPECT_FLOAT_EQ(v.CurrentLon, -122.5f);
  EXPECT_FLOAT_EQ(v.MagVarLon, -122.5f);
  EXPECT_EQ(v.FirstMagVarLat, 47);
  EXPECT_EQ(v.FirstMagVarLon, -123);
  EXPECT_EQ(host.log, (Log{"status1 100NM"}));

  // A step outside the selectable ones counts as no setting.
  LoadView(v, 0, 0, 21, host);
  EXPECT_EQ(v.ZoomIndex, 6);
  EXPECT_EQ(v.Scaling, 14000);
  LoadView(v, 0, 0, -3, host);
  EXPECT_EQ(v.ZoomIndex, 6);

  // A minimised window leaves the scale alone.
  RecordingTarget map;
  host.log.clear();
  ResizeView(v, 0, map, host, ui);
  EXPECT_TRUE(host.log.empty());
  EXPECT_FLOAT_EQ(v.ZoomFactor, 0.5f);
}

TEST_F(ZoomTest, FirstResizeAtTheWidestStepIsAccepted) {
  // No pass has run yet: the bounds are still zero, neither polar nor south.
  ViewState fresh;
  RecordingTarget map;
  LoadView(fresh, 60, 10, 20, host);
  ResizeView(fresh, 8535, map, host, ui);
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(fresh.ZoomIndex, 20);
  EXPECT_EQ(fresh.Scaling, 105);
}

class BandTest : public ::testing::Test {
protected:
  FakeViewHost host;
  FakeGeodesy geo;
};

TEST_F(BandTest, ShortBandOnlyRecentres) {
  ViewState v = View(0, 0, 14000);
  v.ZoomIndex = 6;
  ReleaseBand(v, 1000, 1000, 3000, 1200, host, geo);  // exactly 200 high
  EXPECT_FLOAT_EQ(v.CntrLat, 0.17142858f);
  EXPECT_FLOAT_EQ(v.CntrLon, -0.21428667f);
  EXPECT_FLOAT_EQ(v.CurrentLat, v.CntrLat);
  EXPECT_FLOAT_EQ(v.CurrentLon, v.CntrLon);
  EXPECT_EQ(v.ZoomIndex, 6);
  EXPECT_EQ(v.Scaling, 14000);
  EXPECT_EQ(host.log, (Log{"focus", "draw", "status3 lat:0.17 - lon:-0.21"}));
}

TEST_F(BandTest, TallerBandRescalesToTheNearestLabel) {
  ViewState v = View(0, 0, 14000);
  v.ZoomFactor = 1;
  ReleaseBand(v, 1000, 1000, 3000, 1201, host, geo);  // 201 high: 0.86 NM
  EXPECT_EQ(v.ZoomIndex, 0);
  EXPECT_EQ(v.Scaling, 420000);
  EXPECT_EQ(host.log, (Log{"status1 1NM", "focus", "draw", "status3 lat:0.17 - lon:-0.21"}));

  // 25 NM lies as far from 20 as from 30: the smaller label wins.
  ViewState w = View(0, 0, 1200);
  w.ZoomFactor = 0.5f;
  host.log.clear();
  ReleaseBand(w, 5000, 3000, 5000, 3500, host, geo);
  EXPECT_EQ(w.ZoomIndex, 5);
  EXPECT_EQ(w.Scaling, 10500);
  EXPECT_EQ(host.log[0], "status1 20NM");
}

TEST_F(BandTest, VariationFollowsMovesOfAWholeDegree) {
  ViewState v = View(0, 0, 1000);
  v.DecimalCoordinates = true;
  geo.magVar = -2.25;
  ReleaseBand(v, 5000, 6000, 5000, 6000, host, geo);  // a click 2.5 degrees south
  EXPECT_FLOAT_EQ(v.CntrLat, -2.5f);
  EXPECT_EQ(geo.calls, (Log{"magvar -3 0"}));
  EXPECT_EQ(host.log, (Log{"focus", "draw", "status2 MagVar: var:-2.3", "status3 -02.5000 / 000.0000"}));
  EXPECT_FLOAT_EQ(v.MagVarLat, -2.5f);

  // Less than a degree from the last look-up: none.
  geo.calls.clear();
  host.log.clear();
  ReleaseBand(v, 5000, 3000, 5000, 3000, host, geo);
  EXPECT_FLOAT_EQ(v.CntrLat, -2.0f);
  EXPECT_TRUE(geo.calls.empty());
  EXPECT_EQ(host.log, (Log{"focus", "draw", "status3 -02.0000 / 000.0000"}));
}

TEST_F(BandTest, ReleaseBeyondThePoleStopsAfterMovingTheCentre) {
  ViewState v = View(80, 0, 100);
  ReleaseBand(v, 5000, 0, 5000, 0, host, geo);
  EXPECT_FLOAT_EQ(v.CntrLat, 115.0f);
  EXPECT_FLOAT_EQ(v.CurrentLat, 115.0f);
  EXPECT_TRUE(host.log.empty());
}

TEST_F(BandTest, SpaceRoundWorldAndFocus) {
  ViewState v = View(10, 10, 1000);
  v.CurrentLat = 20;
  v.CurrentLon = -30;
  CenterOnCurrent(v, host);
  EXPECT_FLOAT_EQ(v.CntrLat, 20.0f);
  EXPECT_FLOAT_EQ(v.CntrLon, -30.0f);
  ToggleRoundWorld(v, host);
  EXPECT_TRUE(v.RoundWorld);
  EXPECT_EQ(v.Scaling, 1000);
  EXPECT_EQ(host.log, (Log{"draw", "draw", "focus"}));

  EXPECT_EQ(FocusMapAction(true, true, false), FocusAction::FocusSurface);
  EXPECT_EQ(FocusMapAction(false, true, true), FocusAction::Nothing);
  EXPECT_EQ(FocusMapAction(false, true, false), FocusAction::ActivateSimulator);
  EXPECT_EQ(FocusMapAction(false, false, false), FocusAction::FocusSurface);
}

class FollowTest : public ::testing::Test {
protected:
  FollowTest() {
    v = View(0, 0, 14000);
    v.ZoomIndex = 6;  // 30 NM: the look-ahead is 3.75 NM
    v.AircraftOnMap = true;
    v.CurrentLat = -0.05f;
    v.CurrentLon = 0.25f;
    in.TrueTrack = 90;
    in.AircraftX = 8500;
    in.AircraftY = 3500;
    in.PanelTop = 1000;
    in.MapWidth = 10000;
    in.MapHeight = 7000;
  }
  ViewState v;
  FollowInput in;
  FakeViewHost host;
  FakeGeodesy geo;
};

TEST_F(FollowTest, StaysWhileTheLookAheadIsOnTheSurface) {
  geo.destinations = {{-0.05f, 0.3f}};  // X 9200
  v.DecimalCoordinates = true;
  FollowAircraft(v, in, host, geo);
  EXPECT_EQ(geo.calls, (Log{"dest -0.05 0.25 90 3.75", "magvar -1 0"}));
  EXPECT_EQ(host.log, (Log{"status2 MagVar: var:0.0", "status3 -00.0500 / 000.2500"}));
  EXPECT_FLOAT_EQ(v.CntrLon, 0.0f);
}

TEST_F(FollowTest, JumpsAheadWhenTheLookAheadLeaves) {
  geo.destinations = {{-0.05f, 0.4f}, {-0.05f, 0.5f}};  // look-ahead X 10600 > 10000
  geo.distance = 15.5;
  FollowAircraft(v, in, host, geo);
  EXPECT_EQ(geo.calls, (Log{"dest -0.05 0.25 90 3.75", "dist -0.05 0.25 0 0", "dest -0.05 0.25 90 15.5",
                            "magvar -1 0"}));
  EXPECT_FLOAT_EQ(v.CntrLat, -0.05f);
  EXPECT_FLOAT_EQ(v.CntrLon, 0.5f);
  EXPECT_EQ(host.log, (Log{"draw", "status2 MagVar: var:0.0", "status3 lat:-0.05 - lon:0.25"}));
}

TEST_F(FollowTest, CentresOnTheAircraftWhenItIsOffTheSurface) {
  for (auto [x, y] : {std::pair{0.0, 3500.0}, {10001.0, 3500.0}, {5000.0, 1000.0}, {5000.0, 7001.0}}) {
    ViewState w = v;
    host.log.clear();
    in.AircraftX = x;
    in.AircraftY = y;
    FollowAircraft(w, in, host, geo);
    EXPECT_FLOAT_EQ(w.CntrLat, -0.05f) << x << " " << y;
    EXPECT_FLOAT_EQ(w.CntrLon, 0.25f);
    EXPECT_EQ(host.log.front(), "draw");
  }
  // On the edges themselves it is still on the surface.
  in.AircraftX = 10000;
  in.AircraftY = 7000;
  host.log.clear();
  FollowAircraft(v, in, host, geo);
  EXPECT_EQ(host.log.size(), 2u);
}

TEST_F(FollowTest, NothingWhenMinimisedOrSwitchedOff) {
  in.Minimised = true;
  FollowAircraft(v, in, host, geo);
  in.Minimised = false;
  v.AircraftOnMap = false;
  FollowAircraft(v, in, host, geo);
  EXPECT_TRUE(host.log.empty());
  EXPECT_TRUE(geo.calls.empty());
}

TEST(PositionTexts, DecimalAndDegreeForms) {
  FakeGeodesy geo;
  ViewState v;
  v.DecimalCoordinates = true;
  EXPECT_EQ(PositionText(v, 51.4775f, -0.4614f, geo), "51.4775 / -000.4614");
  EXPECT_EQ(PositionText(v, 5.5f, 120.25f, geo), "05.5000 / 120.2500");
  v.DecimalCoordinates = false;
  v.DecimalSeconds = false;
  EXPECT_EQ(PositionText(v, 5.5f, 120.25f, geo), "latsec:5.50 - lonsec:120.25");
  EXPECT_EQ(MagVarText(3.04, geo), "MagVar: var:3.0");
}

}  // namespace
}  // namespace orv
