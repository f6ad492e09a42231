#include "online/Metar.h"

#include <gtest/gtest.h>

#include "core/FileIo.h"
#include "support/OnlineSamples.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

MetarRec Decode(std::string_view line) {
  MetarRec r;
  ParseMetarGroups(line, r);
  return r;
}

TEST(Metar, Groups) {
  MetarRec a = Decode("EDDF 241020Z 27015G25KT 9999 FEW030 SCT045 12/07 Q1013 NOSIG");
  EXPECT_EQ(a.Day, 24);
  EXPECT_EQ(a.Hour, 10);
  EXPECT_EQ(a.Minute, 20);
  EXPECT_EQ(a.WindDir, 270);
  EXPECT_EQ(a.WindSpeed, 15);
  EXPECT_EQ(a.Gust, 25);
  EXPECT_EQ(a.Visibility, kVisTenKm);
  EXPECT_EQ(a.CloudText, "few at 3000ft sct at 4500ft ");
  EXPECT_EQ(a.Temperature, 12);
  EXPECT_EQ(a.DewPoint, 7);
  EXPECT_EQ(a.Qnh, 1013);

  MetarRec b = Decode("UUEE 241030Z AUTO 12005MPS CAVOK M05/M07 Q1030");
  EXPECT_EQ(b.WindDir, 120);
  EXPECT_EQ(b.WindSpeed, 10);   // 5 * 3.6 / 1.8
  EXPECT_EQ(b.Visibility, kVisCavok);
  EXPECT_EQ(b.Temperature, -5);
  EXPECT_EQ(b.DewPoint, -7);

  MetarRec c = Decode("KBOS 241054Z VRB03KT 0800 10SM -RA BR BKN025 OVC060 08/06 A2992 RMK AO2 TSB32 FG");
  EXPECT_EQ(c.WindDir, kWindVariable);
  EXPECT_EQ(c.WindSpeed, 3);
  EXPECT_EQ(c.Visibility, 10010);   // 0800 is no visibility; 10 statute miles
  EXPECT_EQ(c.Qnh, -2992);
  EXPECT_EQ(c.Rain, -1);
  EXPECT_EQ(c.Mist, -1);
  EXPECT_EQ(c.CloudText, "brkn at 2500ft ovcst at 6000ft ");
  EXPECT_EQ(c.Thunderstorm, 0);   // behind RMK
  EXPECT_EQ(c.Fog, 0);

  MetarRec d = Decode("LFPG 241100Z NIL");
  EXPECT_EQ(d.Hour, 11);
  EXPECT_EQ(d.WindDir, kWindNone);
  MetarRec e = Decode("EGLL 241100Z 4500 +TSRA SCT020CB 18/16 Q1002");
  EXPECT_EQ(e.WindDir, kWindNone);   // no wind group
  EXPECT_EQ(e.Visibility, 4);        // 4500 / 1000 rounded half to even
  EXPECT_EQ(e.Thunderstorm, -1);
  EXPECT_EQ(e.Rain, -1);
  EXPECT_EQ(e.Cumulonimbus, -1);
  EXPECT_EQ(Decode("LOWW 241100Z 09010KMH 3500 01/M01 Q1020").WindSpeed, 6);   // 10 / 1.8
  Decode(std::string(100000, 'X'));   // a 100 KB line is just a bad report
  Decode("EDDF");

  EXPECT_EQ(MetarHoverLines(&a, "EDDF"),
            (std::vector<std::string>{"Wx: EDDF - Wind: 270\xB0/ 15/gusts: 25", "Visibility: >10km",
                                      "few at 3000ft sct at 4500ft", "Temp: 12  Dewpoint: 7", "QNH: 1013 hPa"}));
  EXPECT_EQ(MetarHoverLines(&c, "KBOS")[0], "Wx: KBOS - Wind: variable/ 3/gusts: 0");
  EXPECT_EQ(MetarHoverLines(&c, "KBOS")[1], "Visibility: 10nm");
  EXPECT_EQ(MetarHoverLines(&c, "KBOS").back(), "QNH: 29.92 inHg");
  EXPECT_EQ(MetarHoverLines(nullptr, "EDDS")[1], "No weatherdata available");
}

TEST(Metar, OrderedSearchAndFiles) {
  WxStations st;
  st.Load("EDDF,50.03,8.57\r\nEDDM,48.35,11.78\r\nEG,1,\r\nEGLL,51.47,-0.45\r\nXXXX,95,0\r\nKJFK,40.64,-73.78\r\n");
  EXPECT_EQ(st.Stations().size(), 4u);   // short line and the latitude above 90 are skipped
  // Reports in the list's order are found; one out of order is skipped.
  std::vector<MetarRec> r = ParseMetarFile(
      "EDDF 241020Z 27015KT 9999 12/07 Q1013\r\nEGLL 241020Z 27015KT 9999 12/07 Q1013\r\n"
      "EDDM 241020Z 27015KT 9999 12/07 Q1013\r\nKJFK 241051Z 31012KT 10SM 08/06 A2992\r\nZZZZ 241020Z\r\n",
      st);
  ASSERT_EQ(r.size(), 3u);
  EXPECT_EQ(r[0].Icao, "EDDF");
  EXPECT_EQ(r[1].Icao, "EGLL");
  EXPECT_EQ(r[2].Icao, "KJFK");
  EXPECT_FLOAT_EQ(r[2].Longitude, -73.78f);

  // The bulk CSV becomes plain reports in station order.
  std::string csv = test::MetarCsv({"KJFK 241051Z 31012KT 10SM A2992", "METAR EDDF 241020Z 27015KT 9999 Q1013",
                                    "EDDM 241020Z 27015KT CAVOK Q1013"});
  EXPECT_EQ(MetarCsvToReports(csv),
            "EDDF 241020Z 27015KT 9999 Q1013\r\nEDDM 241020Z 27015KT CAVOK Q1013\r\nKJFK 241051Z 31012KT 10SM A2992\r\n");
  EXPECT_EQ(MetarCsvToReports("EDDF 241020Z 27015KT"), "EDDF 241020Z 27015KT");
  EXPECT_EQ(StationListToWxStations("CD STATION         ICAO  IATA  SYNOP   LAT     LONG\r\n"
                                    "DE FRANKFURT/MAIN  EDDF  FRA   10637  50 02N  008 34E\r\n"
                                    "US NEW YORK/JFK    KJFK  JFK   74486  40-38N  073-46W\r\n"),
            "EDDF,50.0333,8.5667\r\nKJFK,40.6333,-73.7667\r\n");

  test::TempDir dir;
  AppFolder app(dir.Path());
  test::ScriptedUi ui;
  std::vector<MetarRec> out(1);
  EXPECT_FALSE(LoadMetar(app, ui, out));
  dir.Write("database/WxStation.txt", test::WxStationFile(3));
  EXPECT_FALSE(LoadMetar(app, ui, out));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"No Weather Station File available!",
                                                     "No Weather File available! Download a new Weather File!"}));
  EXPECT_EQ(out.size(), 1u);
  dir.Write("database/orv_metar.old", test::MetarReports(3, 2));
  ASSERT_TRUE(LoadMetar(app, ui, out));
  EXPECT_EQ(out.size(), 6u);
  EXPECT_TRUE(std::filesystem::exists(dir.Path() / "database/orv_metar.txt"));
  EXPECT_EQ(ui.Progress().back(), "Reading Weather Station...");
}

}  // namespace
}  // namespace orv
