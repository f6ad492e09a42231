#include "online/OnlineData.h"

#include <gtest/gtest.h>

#include "core/FileIo.h"
#include "database/AirportFile.h"
#include "support/OnlineSamples.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

using test::SampleAtc;
using test::SamplePilot;

AirportTables Airports() {
  AirportTables t;
  t.Airports.resize(2);
  t.Airports[0].Icao.Assign("EDDF ");
  t.Airports[0].Lat = 50.0333f, t.Airports[0].Lon = 8.5706f;
  t.Airports[1].Icao.Assign("KJFK");
  t.Airports[1].Lat = 40.6398f, t.Airports[1].Lon = -73.7789f;
  return t;
}

const SamplePilot kPilot{"DLH400", "Hans Meier EDDF", 51.25, 9.5, 35012, 451, 270, "EDDF", "KJFK", "B744"};

TEST(OnlineText, IvaoStationsPilotsHeaderAndAtis) {
  AirportTables ap = Airports();
  AirportFinder finder(&ap);
  std::string atis = "EDDF_TWR^\xA7" "Frankfurt Tower^\xA7Landing EDDF 25L^\xA7Take-off 18^\xA7"
                     "Confirm information K on initial contact Q1013";
  std::vector<SampleAtc> atcs = {
      {"EDDF_TWR", "Anna Tower", 119.9, 1.0, 2.0, atis},
      {"EDDF_N_TWR", "North", 118.5, 0, 0, ""},
      {"EDDF_X_TWR", "Dropped", 118.5, 0, 0, ""},
      {"EDDF_T_TWR", "Trainee", 118.5, 0, 0, ""},
      {"LONGNAME1234_TWR", "Too long", 118.5, 0, 0, ""},
      {"EDGG_NW_CTR", "Langen", 127.5, 50.1, 8.2, ""},
      {"EDGG_L_CTR", "Lower", 127.5, 50.1, 8.2, ""},
      {"EDGG_O_CTR", "Obs", 127.5, 50.1, 8.2, ""},
      {"EDDF_D_APP", "Director", 120.8, 0, 0, ""},
      {"ZZZZ_APP", "Unknown", 121.0, 0, 0, ""},
      {"EDDF_OBS", "Observer", 0, 0, 0, ""},
  };
  SamplePilot odd = kPilot;
  odd.Callsign = "AFR1";
  odd.Name = "Pilot with text _TWR far behind";
  std::string text = test::IvaoWhazzupText({kPilot, odd}, atcs);
  OnlineData d;
  ASSERT_TRUE(ParseIvaoText(text, finder, d));
  EXPECT_EQ(d.Stamp, "24.11.2026-03:36 h");
  EXPECT_EQ(d.AtcLines, 11);   // every ":ATC:" line counts, drawn or not
  EXPECT_EQ(d.PilotLines, 2);
  EXPECT_EQ(d.OnlineHeader, "24.11.2026-03:36 h / ATC:11 - Pilots:2");
  EXPECT_EQ(OnlineMenuCaption(OnlineNetwork::Ivao, &d), "&IVAO     - 24.11.2026-03:36 h / ATC:11 - Pilots:2");

  ASSERT_EQ(d.Stations[kFacTwr].size(), 2u);
  const OnlineStationRec& twr = d.Stations[kFacTwr][0];
  EXPECT_EQ(twr.Station, "EDDF");
  EXPECT_EQ(twr.Qualifier, "");
  EXPECT_FLOAT_EQ(twr.Latitude, 50.0333f);   // the airport's, not the file's
  EXPECT_FLOAT_EQ(twr.Frequency, 119.9f);
  EXPECT_EQ(twr.LandingRunways, "Landing EDDF 25L");
  EXPECT_EQ(twr.TakeoffRunways, "Take-off 18");
  EXPECT_EQ(twr.AtisSummary, "Information K - QNH 1013");
  EXPECT_EQ(d.Stations[kFacTwr][1].Qualifier, "(North)");
  EXPECT_EQ(d.Stations[kFacTwr][1].AtisSummary, "No Information ");

  ASSERT_EQ(d.Stations[kFacCtr].size(), 2u);
  EXPECT_EQ(d.Stations[kFacCtr][0].Qualifier, "(Northwest)");
  EXPECT_EQ(d.Stations[kFacCtr][1].Qualifier, "(Lower)");
  ASSERT_EQ(d.Stations[kFacApp].size(), 2u);
  EXPECT_EQ(d.Stations[kFacApp][0].Qualifier, "(Director)");
  // Unknown ICAO and empty position fields: 0, 0.
  EXPECT_EQ(d.Stations[kFacApp][1].Station, "ZZZZ");
  EXPECT_EQ(d.Stations[kFacApp][1].Latitude, 0.0f);

  ASSERT_EQ(d.Pilots.size(), 2u);
  EXPECT_EQ(d.Pilots[0], (OnlineClientRec{"DLH400", "Hans Meier EDDF", 51.25f, 9.5f, 35012, 451, "EDDF", "KJFK", 0, ""}));
  EXPECT_EQ(d.OnlinePilotCount(), 1);

  // The qualifier table's other rows.
  EXPECT_EQ(IvaoQualifier("_E", kFacTwr), "(East)");
  EXPECT_EQ(IvaoQualifier("_SE", kFacCtr), "(Southeast)");
  EXPECT_EQ(IvaoQualifier("_U", kFacCtr), "(Upper)");
  EXPECT_EQ(IvaoQualifier("_D", kFacTwr), "(D)");
  EXPECT_EQ(IvaoQualifier("_1", kFacApp), "(1)");
}

TEST(OnlineText, VatsimGrammar) {
  AirportTables ap = Airports();
  AirportFinder finder(&ap);
  std::vector<SampleAtc> atcs = {{"KJFK_NW_CTR", "A", 134.0, 40, -73, ""}, {"KJFK_TWR", "B", 119.1, 0, 0, ""}};
  std::string text = test::VatsimWhazzupText({kPilot}, atcs);
  // Anything after "!PREFILE:" is not read, even without "!SERVERS:".
  size_t servers = text.find("!SERVERS:");
  text.erase(servers, text.find("!PREFILE:") - servers);
  text += "LATE1:1:Late:PILOT::1:1:1:1:::::\r\n";
  OnlineData d;
  ASSERT_TRUE(ParseVatsimText(text, finder, d));
  EXPECT_EQ(d.Pilots.size(), 1u);
  ASSERT_EQ(d.Stations[kFacCtr].size(), 1u);
  EXPECT_EQ(d.Stations[kFacCtr][0].Qualifier, "(North)");
  EXPECT_TRUE(d.Stations[kFacTwr][0].AtisSummary.empty());
  EXPECT_EQ(OnlineMenuCaption(OnlineNetwork::Vatsim, nullptr), "&VATSIM");
  // The IVAO section marks mean nothing here: no clients section, no pilot.
  EXPECT_FALSE(ParseVatsimText(test::IvaoWhazzupText({kPilot}, {}), finder, d));
}

TEST(OnlineJson, FeedsFillTheSameRecords) {
  AirportTables ap = Airports();
  AirportFinder finder(&ap);
  std::vector<SampleAtc> atcs = {{"EDDF_TWR", "Tower", 119.9, 0, 0, ""},
                                 {"EDGG_CTR", "Langen", 127.5, 0, 0, ""},
                                 {"EDDF_X_GND", "Dropped", 121.8, 0, 0, ""}};
  OnlineData text, v3;
  std::string error;
  ASSERT_TRUE(ParseVatsimText(test::VatsimWhazzupText({kPilot}, atcs), finder, text));
  ASSERT_TRUE(ParseVatsimJson(test::VatsimV3Json({kPilot}, atcs), finder, v3, error)) << error;
  EXPECT_EQ(v3.OnlineHeader, "24.11.2026-03:36 h / ATC:3 - Pilots:1");
  ASSERT_EQ(v3.Pilots.size(), 1u);
  EXPECT_EQ(v3.Pilots[0].Callsign, text.Pilots[0].Callsign);
  EXPECT_EQ(v3.Pilots[0].Altitude, 35012);
  EXPECT_EQ(v3.Pilots[0].Heading, 270);
  EXPECT_EQ(v3.Pilots[0].Destination, "KJFK");
  ASSERT_EQ(v3.Stations[kFacTwr].size(), 1u);
  EXPECT_FLOAT_EQ(v3.Stations[kFacTwr][0].Latitude, 50.0333f);   // the airport of the callsign
  EXPECT_FLOAT_EQ(v3.Stations[kFacTwr][0].Frequency, 119.9f);
  EXPECT_TRUE(v3.Stations[kFacGnd].empty());
  ASSERT_EQ(v3.Stations[kFacCtr].size(), 1u);
  EXPECT_EQ(v3.Stations[kFacCtr][0].Latitude, kNoPosition);

  // A sector gives the centre without position its place.
  std::vector<OnlineSector> sectors = ParseSectorFile("; sectors\r\n#EDGG\r\n49:7\r\n51:7\r\n51:10\r\n49:10\r\n\r\n#LFFF\r\n48:2\r\n");
  MatchIvaoSectors(v3, sectors);
  EXPECT_EQ(sectors[0].Active, -1);
  EXPECT_EQ(sectors[1].Active, 0);
  EXPECT_FLOAT_EQ(v3.Stations[kFacCtr][0].Latitude, 50.0f);
  EXPECT_FLOAT_EQ(v3.Stations[kFacCtr][0].Longitude, 8.5f);

  OnlineData iv;
  ASSERT_TRUE(ParseIvaoJson(test::IvaoV2Json({kPilot}, {{"LFPG_APP", "", 120.15, 49.0, 2.5, ""}}), finder, iv, error));
  EXPECT_EQ(iv.Pilots[0].Destination, "KJFK");
  EXPECT_EQ(iv.Pilots[0].GroundSpeed, 451);
  ASSERT_EQ(iv.Stations[kFacApp].size(), 1u);
  EXPECT_FLOAT_EQ(iv.Stations[kFacApp][0].Latitude, 49.0f);   // unknown airport: the feed's lastTrack
  EXPECT_EQ(iv.Stations[kFacApp][0].AtisSummary, "Information C");
  EXPECT_EQ(VatsimJsonDataUrl(test::VatsimStatusJson("http://127.0.0.1:1/v3.json")).value_or(""), "http://127.0.0.1:1/v3.json");

  // Wrong types and missing members read as nothing; a feed without pilots
  // or a truncated one is refused.
  EXPECT_TRUE(ParseVatsimJson(R"({"pilots":[{"callsign":5,"latitude":"10","longitude":20,"altitude":{}},3],"controllers":{}})",
                              finder, v3, error));
  EXPECT_EQ(v3.Pilots[0].Callsign, "");
  EXPECT_FLOAT_EQ(v3.Pilots[0].Latitude, 10.0f);
  EXPECT_FALSE(ParseVatsimJson(R"({"pilots":[{"latitude":95,"longitude":0}]})", finder, v3, error));
  EXPECT_FALSE(ParseIvaoJson(R"({"clients":{"pilots":[{"lastTrack":null}]}})", finder, iv, error));
  std::string whole = test::VatsimV3Json({kPilot}, atcs);
  EXPECT_FALSE(ParseVatsimJson(whole.substr(0, whole.size() / 2), finder, v3, error));
  EXPECT_EQ(error, "not a JSON document");
}

TEST(OnlineFile, FailedParseKeepsTheDataAndPutsTheOldFileBack) {
  test::TempDir dir;
  AppFolder app(dir.Path());
  AirportTables ap = Airports();
  test::ScriptedUi ui;
  std::vector<OnlineSector> sectors;
  OnlineData data;
  std::string caption;
  std::string good = test::IvaoWhazzupText({kPilot}, {});
  dir.Write("database/orv_ivao.txt", good);
  ASSERT_TRUE(ParseOnlineFile(app, OnlineNetwork::Ivao, &ap, sectors, data, ui, caption));
  EXPECT_EQ(caption, "&IVAO     - 24.11.2026-03:36 h / ATC:0 - Pilots:1");

  dir.Write("database/orv_ivao.old", good);
  dir.Write("database/orv_ivao.txt", "\x01\x02garbage with no clients");
  EXPECT_FALSE(ParseOnlineFile(app, OnlineNetwork::Ivao, &ap, sectors, data, ui, caption));
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"Error reading in IVAO File! Download the file again!"});
  EXPECT_EQ(caption, "&IVAO    ");
  EXPECT_EQ(data.Pilots.size(), 1u);   // the previous data stay
  EXPECT_EQ(ReadWholeText(dir.Path() / "database/orv_ivao.txt").value_or(""), good);

  dir.Write("database/orv_vatsim.txt", test::VatsimV3Json({}, {}));
  EXPECT_FALSE(ParseOnlineFile(app, OnlineNetwork::Vatsim, &ap, sectors, data, ui, caption));
  EXPECT_EQ(ui.Messages().back(), "Error reading in VATSIM File! Download the file again!");
  EXPECT_EQ(caption, "&VATSIM");
}

}  // namespace
}  // namespace orv
