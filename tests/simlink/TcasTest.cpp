// The traffic display's figures: the rings at 450 kt, the height bands, the
// 2001 ft floor, the second tick that a flag needs, the beep once in eleven
// alerts, the label texts and where they stand.
#include <gtest/gtest.h>

#include "map/RecordingTarget.h"
#include "simlink/Tcas.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

struct Scene {
  AiTraffic traffic;
  SimSnapshot own;
  test::ScriptedUi ui;

  Scene() {
    own.GroundSpeed = 450;  // rings of 6.003 (TA, doubled) and 4.37535 NM (RA)
    own.Altitude = 10000;
    own.Agl = 5000;
    own.Com1 = 121.5f;
    Place(20, 10000);
    TrafficExtEntry x;
    std::copy_n("EDDF", 4, x.Departure.begin());
    std::copy_n("EDDM", 4, x.Destination.begin());
    traffic.AirTrafficExt = {x};
  }
  // One aircraft dist NM north of the own one, along the meridian.
  void Place(float dist, float altitude) {
    TrafficEntry e;
    e.Id = 7;
    e.Latitude = dist / 60.0f;
    e.Altitude = altitude;
    e.Heading = HeadingBugWord(200);
    e.GroundSpeed = 300;
    e.Com1 = RadioBcdWord(124.2f);
    std::copy_n("CONV1", 5, e.AtcId.begin());
    traffic.AirTraffic = {e};
  }
  Advisory At(float dist, float altitude = 10000) {
    Place(dist, altitude);
    traffic.Evaluate(own, ui);
    return traffic.Symbols().empty() ? Advisory::None : traffic.Symbols()[0].Level;
  }
};

TEST(Tcas, RingsBandsAndTheSecondTick) {
  EXPECT_FLOAT_EQ(TaRange(450), 6.003f);
  EXPECT_FLOAT_EQ(RaRange(450), 4.37535f);
  EXPECT_EQ(TaRange(0), 0.0f);

  Scene s;
  // Outside twice the TA ring, then its first tick inside: still normal.
  EXPECT_EQ(s.At(12.02f), Advisory::None);
  EXPECT_EQ(s.At(11.99f), Advisory::None);
  EXPECT_EQ(s.At(11.5f), Advisory::Traffic);
  EXPECT_EQ(s.traffic.Symbols()[0].Fore, 33023);
  EXPECT_EQ(s.At(11.6f), Advisory::None);  // receding
  EXPECT_EQ(s.At(4.38f), Advisory::Traffic);
  EXPECT_FALSE(s.traffic.LblTcasVisible);
  // Inside the RA ring the TA test no longer holds; the RA's own first tick
  // only sets its history.
  EXPECT_EQ(s.At(4.37f), Advisory::None);
  EXPECT_EQ(s.At(4.2f), Advisory::Resolution);
  EXPECT_EQ(s.traffic.Symbols()[0].Fore, 255);
  EXPECT_TRUE(s.traffic.LblTcasVisible);
  EXPECT_EQ(s.traffic.LblTcasCaption, "TRAFFIC TRAFFIC");
  EXPECT_EQ(s.At(4.0f, 11000), Advisory::Resolution);  // 1000 ft apart
  EXPECT_EQ(s.At(3.9f, 11001), Advisory::None);        // 1001: no test at all holds
  EXPECT_FALSE(s.traffic.LblTcasVisible);
  EXPECT_EQ(s.At(8.0f, 12500), Advisory::None);   // 2500 ft: farther than its last TA distance
  EXPECT_EQ(s.At(7.9f, 12500), Advisory::Traffic);
  EXPECT_EQ(s.At(7.8f, 12501), Advisory::None);
  EXPECT_EQ(s.traffic.Symbols()[0].Fore, 65535);

  // At 2000 ft above the ground nothing is tested; at 2001 it is.
  Scene low;
  low.own.Agl = 2000;
  for (float d : {11.9f, 11.8f, 4.3f, 4.2f}) EXPECT_EQ(low.At(d), Advisory::None);
  low.own.Agl = 2001;
  EXPECT_EQ(low.At(4.1f), Advisory::None);
  EXPECT_EQ(low.At(4.0f), Advisory::Resolution);

  // The same frequency as the own COM1 shows in AIFREQ=.
  Scene tuned;
  tuned.own.Com1 = DecodeCom1Word(RadioBcdWord(124.2f));
  tuned.At(30);
  EXPECT_EQ(tuned.traffic.Symbols()[0].Fore, 65280);
}

TEST(Tcas, TheAlertBeepsOnceInElevenAndOnlyWithTheSound) {
  Scene s;
  s.At(4.3f);
  float d = 4.2f;
  for (int i = 0; i < 22; ++i, d -= 0.1f) EXPECT_EQ(s.At(d), Advisory::Resolution);
  EXPECT_EQ(s.ui.Texts("beep").size(), 2u);  // the 4th and the 15th alert
  EXPECT_EQ(s.traffic.AlertCounter, 0);       // 22 alerts: twice round 0..10

  Scene quiet;
  quiet.traffic.Menus.menuTCASSound = false;
  quiet.At(4.3f);
  d = 4.2f;
  for (int i = 0; i < 11; ++i, d -= 0.1f) quiet.At(d);
  EXPECT_TRUE(quiet.ui.Texts("beep").empty());
}

TEST(Tcas, LabelsTheWalkAndWhereTheTextStands) {
  EXPECT_EQ(TrafficAltitudeText(9999.9f), "9999");
  EXPECT_EQ(TrafficAltitudeText(10000), "FL100");
  EXPECT_EQ(TrafficAltitudeText(10099), "FL101");
  EXPECT_EQ(LabelOffset(0), 50);
  EXPECT_EQ(LabelOffset(90), 50);
  EXPECT_EQ(LabelOffset(91), 150);
  EXPECT_EQ(LabelOffset(180), 150);
  EXPECT_EQ(LabelOffset(181), 300);
  EXPECT_EQ(LabelOffset(-90), 300);

  Scene s;
  s.traffic.Menus.menuAIAirports = true;
  // A free slot (id 0) keeps its label but is not drawn; an empty identifier
  // ends the walk, so the slot behind it is not read at all.
  TrafficEntry free = s.traffic.AirTraffic[0], blank = free, behind = free;
  free.Id = 0;
  std::copy_n("FREE1", 5, free.AtcId.begin());
  blank.AtcId = {};
  std::copy_n("LATE1", 5, behind.AtcId.begin());
  s.traffic.AirTraffic = {s.traffic.AirTraffic[0], free, blank, behind};
  s.traffic.AirTrafficExt.resize(4);
  s.traffic.Evaluate(s.own, s.ui);
  ASSERT_EQ(s.traffic.Symbols().size(), 1u);
  EXPECT_EQ(s.traffic.TrafficLabels, (std::vector<std::string>{"CONV1", "FREE1", "", ""}));
  const TrafficSymbol& sym = s.traffic.Symbols()[0];
  EXPECT_EQ(sym.Lines[0], "CONV1");
  EXPECT_EQ(sym.Lines[1], "300 \rFL100");
  EXPECT_EQ(sym.Lines[2], "EDDF-EDDM");

  // Heading 200: the label 300 to the right, from 400 above the symbol.
  RecordingTarget map(1000, 700);
  ViewState v;
  v.ScaleWidth = 1000;
  v.ScaleHeight = 700;
  v.Scaling = 600;
  v.CntrLat = sym.Lat;
  ComputeBounds(v);
  DrawTraffic(map, v, s.traffic.Symbols(), "Arial", 7);
  std::vector<DrawOp> texts;
  for (const DrawOp& op : map.Ops())
    if (op.Kind == DrawOpKind::Text) texts.push_back(op);
  ASSERT_EQ(texts.size(), 4u);  // the speed and the altitude are two lines
  EXPECT_EQ(texts[0].Text, "CONV1");
  EXPECT_EQ(texts[0].X1, MapXFromLon(v, sym.Lon, sym.Lat) + 300);
  EXPECT_EQ(texts[0].Y1, MapYFromLat(v, sym.Lat) - 400);
  EXPECT_EQ(texts[3].Text, "EDDF-EDDM");
  EXPECT_EQ(texts[3].X1, texts[0].X1);
  EXPECT_EQ(texts[0].Color, 65535);
}

}  // namespace
}  // namespace orv
