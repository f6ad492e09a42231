#include "online/OnlineDraw.h"

#include <gtest/gtest.h>

#include "map/RecordingTarget.h"
#include "map/Viewport.h"

namespace orv {
namespace {

// 100 NM around 50N 8E on the default 10000 x 7000 surface.
ViewState View() {
  ViewState v;
  v.CntrLat = 50;
  v.CntrLon = 8;
  v.ZoomIndex = 9;
  v.Scaling = ZoomTable[9].Scale;
  ComputeBounds(v);
  return v;
}

TEST(OnlineDraw, LayersAndHover) {
  ViewState v = View();
  OnlineData d;
  d.Network = OnlineNetwork::Ivao;
  d.Pilots.push_back({"DLH1", "Hans", 50.0f, 8.0f, 35000, 450, "EDDF", "EGLL", 90, "A320"});
  d.Pilots.push_back({"FAR1", "Away", 10.0f, 8.0f, 1000, 100, "", "", 0, ""});
  OnlineStationRec twr;
  twr.Station = "EDDF";
  twr.Callsign = "EDDF_TWR";
  twr.RealName = "Anna";
  twr.Frequency = 119.9f;
  twr.Latitude = 50.0f, twr.Longitude = 8.0f;
  twr.AtisSummary = "Information K - QNH 1013";
  d.Stations[kFacTwr].push_back(twr);
  OnlineStationRec ctr = twr;
  ctr.Station = "EDGG";
  ctr.Callsign = "EDGG_CTR";
  ctr.AtisSummary = "No Information ";
  ctr.Sector = 0;
  d.Stations[kFacCtr].push_back(ctr);

  RecordingTarget t;
  OnlineDrawStyle style;
  DrawOnlineStations(t, v, d, style, 100);
  DrawOnlinePilots(t, v, d, style, 100);
  int circles = 0, pilotLines = 0;
  std::vector<std::string> texts;
  for (const DrawOp& op : t.Ops()) {
    if (op.Kind == DrawOpKind::Circle) ++circles;
    if (op.Kind == DrawOpKind::Line && op.Color == style.Pilot) ++pilotLines;
    if (op.Kind == DrawOpKind::Text) texts.push_back(op.Text);
  }
  EXPECT_EQ(circles, 2);
  EXPECT_EQ(pilotLines, 3);   // one aircraft in view: fuselage, wings, tail
  EXPECT_NE(std::find(texts.begin(), texts.end(), "EDDF 119.900"), texts.end());
  EXPECT_NE(std::find(texts.begin(), texts.end(), "DLH1"), texts.end());

  int32_t sector = -2;
  std::vector<std::string> lines = StationHoverLines(d, v, 5000, 3500, sector);
  EXPECT_EQ(lines, (std::vector<std::string>{"IVAO Twr: EDDF_TWR  119.900  Anna", "  Information K - QNH 1013",
                                             "IVAO CTR: EDGG_CTR  119.900  Anna"}));
  EXPECT_EQ(sector, 0);
  EXPECT_TRUE(StationHoverLines(d, v, 5100, 3500, sector).empty());   // 100 units off is outside
  EXPECT_EQ(PilotHoverLines(d, v, 5149, 3749, style),
            (std::vector<std::string>{"DLH1  Hans  A320", "Alt: 35000 ft  Speed: 450 kt", "Route: EDDF - EGLL"}));

  // Weather: one symbol per report in view, none beyond 400 NM.
  std::vector<MetarRec> wx(2);
  wx[0].Icao = "EDDF", wx[0].Latitude = 50.0f, wx[0].Longitude = 8.0f, wx[0].Rain = -1;
  wx[1].Icao = "EDDS", wx[1].Latitude = 49.0f, wx[1].Longitude = 9.0f;
  EXPECT_EQ(WeatherSymbolOf(wx[0]), WxSymbol::Rain);
  EXPECT_EQ(WeatherSymbolOf(wx[1]), WxSymbol::Sun);
  RecordingTarget w;
  DrawWeatherSymbols(w, v, wx, 100);
  EXPECT_EQ(w.Ops().size(), 4u);   // the sun, three rain strokes
  RecordingTarget none;
  DrawWeatherSymbols(none, v, wx, 500);
  EXPECT_TRUE(none.Ops().empty());
  EXPECT_EQ(WeatherHoverLines(wx, v, 5000, 3500)[0], "Wx: EDDF - Wind: N/A");
}

}  // namespace
}  // namespace orv
