#include "planning/PlanFormats.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/FileIo.h"
#include "planning/PlanExports.h"
#include "planning/PlanFilesFixture.h"
#include "planning/RouteSegments.h"
#include "planning/XmlLite.h"
#include "support/TempDir.h"

namespace orv {
namespace {

using test::PlanFilesTest;

TEST(XmlLiteTest, ReadsFlatDocumentsAndRefusesTheRest) {
  XmlDocument doc = ParseXml(
      "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!-- head -->\n<a x='1 &amp; 2' y=\"&quot;\">"
      "<b>&lt;&#65;&#x42;&gt;</b><!-- c --><c/><![CDATA[<raw>]]></a>\n");
  ASSERT_TRUE(doc.Ok()) << doc.Error;
  EXPECT_EQ(doc.Root().Name, "a");
  EXPECT_EQ(doc.Attribute(0, "x"), "1 & 2");
  EXPECT_EQ(doc.Attribute(0, "y"), "\"");
  EXPECT_EQ(doc.ChildText(0, "b"), "<AB>");
  EXPECT_EQ(doc.Root().Text, "<raw>");
  EXPECT_EQ(doc.ChildrenNamed(0, "c").size(), 1u);

  std::string deep;
  for (int k = 0; k < 40; ++k) deep += "<d>";
  for (const char* bad : {"<!DOCTYPE a [<!ENTITY e \"x\">]><a>&e;</a>", "<a><b></a></b>", "<a>", "<a>&nbsp;</a>",
                          "<a x=1/>", "<a/><b/>", "", "<a>&#0;</a>", "<a x='1' x='2'/>"})
    EXPECT_FALSE(ParseXml(bad).Ok()) << bad;
  EXPECT_NE(ParseXml(deep).Error.find("deeply"), std::string::npos);
}

PlanExportInfo Info() {
  PlanExportInfo info;
  info.SidName = "ANEK1A";
  info.StarName = "BIG1E";
  info.Cycle = "2401";
  return info;
}

TEST_F(PlanFilesTest, ModernFormatsWriteAndReadBack) {
  EXPECT_EQ(SimXmlPosition(50.5, -8.25, 364), "N50\xC2\xB0 30' 0.00\",W8\xC2\xB0 15' 0.00\",+000364.00");
  EXPECT_EQ(FormatFmsPlan(plan, nav, Info()),
            "I\n1100 Version\nCYCLE 2401\nADEP EDDF\nADES EGLL\nNUMENR 7\n"
            "1 EDDF ADEP 364.000000 50.500000 8.250000\n"
            "3 FFM DRCT 0.000000 50.250000 8.750000\n"
            "2 DW UL607 0.000000 51.250000 6.750000\n"
            "11 TOBAK UL607 0.000000 51.000000 3.000000\n"
            "28 Fix04 DRCT 0.000000 51.500000 1.000000\n"
            "3 BIG DRCT 0.000000 51.750000 0.500000\n"
            "1 EGLL ADES 83.000000 51.500000 -0.500000\n");
  std::string xml = FormatSimXmlPlan(plan, nav, Info());
  EXPECT_NE(xml.find("<SimBase.Document Type=\"AceXML\" version=\"1,0\">"), std::string::npos);
  EXPECT_NE(xml.find("        <ATCWaypoint id=\"DW\">\n"
                     "            <ATCWaypointType>NDB</ATCWaypointType>\n"
                     "            <WorldPosition>N51\xC2\xB0 15' 0.00\",E6\xC2\xB0 45' 0.00\",+000000.00</WorldPosition>\n"
                     "            <ATCAirway>UL607</ATCAirway>\n"
                     "            <ICAO>\n"
                     "                <ICAOIdent>DW</ICAOIdent>\n"),
            std::string::npos);
  std::string fpl = FormatGarminFpl(plan, nav, Info());
  EXPECT_NE(fpl.find("<flight-plan xmlns=\"http://www8.garmin.com/xmlschemas/FlightPlan/v1\">"), std::string::npos);
  EXPECT_NE(fpl.find("      <identifier>FIX04</identifier>\n      <type>USER WAYPOINT</type>"), std::string::npos);

  struct Case {
    std::string name, text;
    PlanFormat format;
    bool airways, procedures;
  };
  std::vector<Case> cases = {{"xml", xml, PlanFormat::SimXml, true, true},
                             {"fms", FormatFmsPlan(plan, nav, Info()), PlanFormat::Fms, true, false},
                             {"fpl", fpl, PlanFormat::GarminFpl, false, false},
                             {"gpx", FormatGpxRoute(plan, nav, Info()), PlanFormat::Gpx, false, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(DetectPlanFormat(c.text), c.format);
    Target t;
    PlanEditor editor(t.plan, t.panel, ac, nav);
    PlanFileState state;
    ASSERT_TRUE(OpenAnyPlanText(editor, ui, c.text, {}, state)) << testing::PrintToString(ui.Messages());
    ASSERT_EQ(t.plan.LastRow, 6);
    EXPECT_EQ(t.plan.Waypoints[0].Code.Str(), "EDDF");
    EXPECT_EQ(t.plan.Waypoints[6].Code.Str(), "EGLL");
    for (int r : {1, 2, 3, 5}) {
      const WaypointRec& a = plan.Waypoints[r];
      const WaypointRec& b = t.plan.Waypoints[r];
      EXPECT_EQ(a.Code, b.Code) << r;
      EXPECT_EQ(a.Kind, b.Kind) << r;
      EXPECT_EQ(a.DbIndex, b.DbIndex) << r;  // matched to the database object
      EXPECT_EQ(b.Airway.Str(), c.airways ? a.Airway.Str() : "") << r;
      EXPECT_EQ(b.Origin, c.procedures ? a.Origin : kOriginEnroute) << r;
    }
    // The map-click point has no database object: a user position stays,
    // and takes its row number again.
    EXPECT_EQ(t.plan.Waypoints[4].Kind.Str(), "Uwp");
    EXPECT_EQ(t.plan.Waypoints[4].Code.Str(), "Fix 04");
    EXPECT_FLOAT_EQ(t.plan.Waypoints[4].Lat, 51.5f);
    EXPECT_EQ(t.plan.SidRows, c.procedures ? 1 : 0);
    if (c.procedures) EXPECT_EQ(state.SidLabel, "ANEK1A");
  }
}

TEST_F(PlanFilesTest, ImportRefusalsAndUnmatchedPoints) {
  std::string fms = FormatFmsPlan(plan, nav, Info());
  auto open = [&](const std::string& text, std::string* message) {
    test::ScriptedUi u;
    PlanEditor editor = Editor();
    PlanFileState state;
    bool ok = OpenAnyPlanText(editor, u, text, {}, state);
    *message = u.Messages().empty() ? "" : u.Messages()[0];
    return ok;
  };
  std::string msg;
  std::string text = fms;
  text.replace(text.find("ADES EGLL"), 9, "ADES LFPG");
  text.replace(text.find("1 EGLL ADES"), 11, "1 LFPG ADES");
  EXPECT_FALSE(open(text, &msg));
  EXPECT_EQ(msg, "LFPG is not in currently loaded database!");
  EXPECT_EQ(plan.LastRow, 6);
  EXPECT_EQ(plan.Waypoints[6].Code.Str(), "EGLL");

  EXPECT_FALSE(open("I\n3 version\n1\n4\n", &msg));
  EXPECT_EQ(msg, "Only X-Plane flight plans of version 1100 can be read; this one is \"3 version\"!");
  text = fms;
  text.replace(text.find("51.000000 3.000000"), 9, "951.00000");
  EXPECT_FALSE(open(text, &msg));
  EXPECT_EQ(msg, "Line 10 of this X-Plane flight plan has no valid position!");
  EXPECT_FALSE(open("<flight-plan><route><route-point><waypoint-identifier>X</waypoint-identifier></route-point>"
                    "<route-point/></route></flight-plan>",
                    &msg));
  EXPECT_EQ(msg, "Route point X is not in the waypoint table of this Garmin flight plan!");
  EXPECT_FALSE(open("<SimBase.Document><FlightPlan.FlightPlan><x></FlightPlan.FlightPlan></SimBase.Document>", &msg));
  EXPECT_EQ(msg.rfind("This XML flight plan cannot be read: end tag does not match", 0), 0u) << msg;
  EXPECT_EQ(plan.LastRow, 6);

  // A point of a known ident far from the database's object is the file's own.
  text = fms;
  text.replace(text.find("51.000000 3.000000"), 9, "52.000000");
  ASSERT_TRUE(open(text, &msg)) << msg;
  EXPECT_EQ(plan.Waypoints[3].Kind.Str(), "Uwp");
  EXPECT_EQ(plan.Waypoints[3].Code.Str(), "TOBAK");
  EXPECT_EQ(plan.Waypoints[3].DbIndex, -1);
}

TEST_F(PlanFilesTest, ExportLiteralsAndMasks) {
  EXPECT_EQ(FormatSquawkBoxPlan(plan, 450),
            "[SBFlightPlan]\r\nDeparture: EDDF\r\nArrival: EGLL\r\nFlightHours: 1\r\nFlightMinutes: 35\r\n"
            "Airspeed: 450\r\nAltitude: 35000\r\nRoute: FFM UL607 TOBAK BIG\r\n");
  EXPECT_EQ(FormatSquawkBoxPoints(plan, nav),
            "EDDF:50.500000:8.250000:0:0:0:364\r\nFFM:50.250000:8.750000:0:0:0:35000\r\n"
            "DW:51.250000:6.750000:0:0:0:35000\r\nTOBAK:51.000000:3.000000:0:0:0:35000\r\n"
            "Fix04:51.500000:1.000000:0:0:0:35000\r\nBIG:51.750000:.500000:0:0:0:35000\r\n"
            "EGLL:51.500000:-.500000:0:0:0:83\r\n");
  EXPECT_EQ(FormatIvaoPlan(plan),
            "[FLIGHTPLAN]\r\nDEPICAO=EDDF\r\nROUTE=DCT FFM UL607 TOBAK DCT BIG\r\nDESTICAO=EGLL\r\nALTICAO=\r\n");
  EXPECT_EQ(FormatLevelDPlan(plan, nav, false),
            "H,EDDF,EGLL,35000,\r\nW,EDDF,50.500000,8.250000,364,0.000000,\r\nW,DW,51.250000,6.750000,0,0.000000,\r\n"
            "W,TOBAK,51.000000,3.000000,0,0.000000,\r\nW,Fix04,51.500000,1.000000,0,0.000000,\r\n"
            "W,EGLL,51.500000,-0.500000,83,0.000000,\r\n");
  std::string pmdg = FormatPmdgPlan(plan, nav, true);
  EXPECT_EQ(pmdg.rfind("Generated and exported by Orvanta \xB7 Version 8.0 \xB7 Build:010107\r\n\r\n7\r\n\r\nEDDF\r\n", 0),
            0u);
  EXPECT_NE(pmdg.find("DW\r\nFIX\r\nUL607\r\n1 N 51.2500 E 6.7500 0\r\n-----\r\n-1000000\r\n 0\r\n\r\n"),
            std::string::npos);
  EXPECT_NE(pmdg.find("EGLL\r\n1\r\nDIRECT\r\n1 N 51.5000 W 0.5000 83\r\n"), std::string::npos);
  EXPECT_EQ(FormatPmdgPlan2(plan, false),
            "//Generated and exported by Orvanta \xB7 Version 8.0 \xB7 Build:010107\r\nEDDF\r\nUL607 DW\r\n"
            "UL607 TOBAK\r\nDIRECT Fix04\r\nEGLL\r\n");

  // Tracks are named once, by their letter or number.
  rows = {test::PlanRow("Int", "DOGAL", "DOGAL", 54, -15, 0, 0, 0, kOriginEnroute, 1),
          test::PlanRow("Int", "5520N", "5520N", 55, -20, 0, 0, 0, kOriginEnroute, 2, "Track A"),
          test::PlanRow("Int", "5630N", "5630N", 56, -30, 0, 0, 0, kOriginEnroute, 3, "Track A"),
          test::PlanRow("Int", "ALCOA", "ALCOA", 40, 150, 0, 0, 0, kOriginEnroute, 4, "PTrack 12")};
  BuildPlan();
  plan.SidRows = plan.StarRows = 0;
  EXPECT_EQ(RouteText(plan, false), "DOGAL NATA 5630N PAC12 ALCOA");
  EXPECT_EQ(RouteText(plan, true), "DCT DOGAL NATA 5630N PAC12 ALCOA");
}

TEST_F(PlanFilesTest, ExportFoldersAndQuestions) {
  test::TempDir dir;
  ExportFolders folders;
  folders.AppPath = dir.Path().string();
  std::vector<std::string> files = ExportSquawkBox(ui, plan, nav, 450, folders, "EDDFEGLL");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0], (dir.Path() / "FSplan" / "SquawkBox" / "EDDFEGLL.sbp").string());
  EXPECT_EQ(*ReadWholeText(files[0]), FormatSquawkBoxPlan(plan, 450));
  // "\FSPlan\" is the same folder as "\FSplan", whatever the case on disk.
  ui.answers = {Answer::Yes};
  files = ExportPmdg(ui, plan, nav, folders, "EDDFEGLL");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0], (dir.Path() / "FSplan" / "EDDFEGLL.rte").string());
  EXPECT_EQ(files[1], (dir.Path() / "FSplan" / "EDDFEGLL.rt2").string());
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"Cannot find Flight Simulator path! PMDG file is written into: " +
                                                    (dir.Path() / "FSplan" / "").string()});
  EXPECT_EQ(ui.Texts("ask"), std::vector<std::string>{"Saving Flightplan include SID's and Star's?"});
  EXPECT_NE(ReadWholeText(files[0])->find("\r\nFFM\r\n"), std::string::npos);
}

TEST_F(PlanFilesTest, RouteSegmentsSaveOpenAndDelete) {
  test::TempDir dir;
  frmSaveSegment seg{AppFolder(dir.Path())};
  seg.Load(plan);
  ASSERT_EQ(seg.lstFpWaypoints.size(), 7u);
  EXPECT_EQ(seg.lstFpWaypoints[2], "02  DW  DUESSELDORF");
  EXPECT_FALSE(seg.Save(ui, plan));
  seg.lstFpSelected[2] = seg.lstFpSelected[3] = true;
  EXPECT_FALSE(seg.Save(ui, plan));
  EXPECT_EQ(ui.Messages(),
            (std::vector<std::string>{"You have to select waypoints for the segment!", "You have to specify a description!"}));
  seg.txtDescription = "Rhein/Route";
  ASSERT_TRUE(seg.Save(ui, plan));
  std::filesystem::path file = dir.Path() / "Segments" / "Enroute" / "Rhein_Route.enr";
  EXPECT_EQ(*ReadWholeText(file),
            "[ORV Segment]\r\nRwy: ANY\r\n[BEGIN]\r\n"
            "WP=1,NDB,DW,DUESSELDORF,51.2500,6.7500,325.00,300.2500,-0.500,1,3,UL607,24500,46000\r\n"
            "WP=2,Int,TOBAK,TOBAK,51.0000,3.0000,0.00,260.0000,0.000,1,120,UL607\r\n");
  EXPECT_EQ(seg.lstSegments, std::vector<std::string>{"Rhein_Route"});
  seg.SetSegmentType(kSegmentDeparture);
  seg.lstFpSelected.assign(7, false);
  seg.lstFpSelected[1] = true;
  seg.txtDescription = "Out 25C";
  ASSERT_TRUE(seg.Save(ui, plan));
  EXPECT_NE(ReadWholeText(dir.Path() / "Segments" / "Departures" / "Out 25C.dep")->find("\r\nRwy: 25C\r\n"),
            std::string::npos);

  // Opening: never behind the destination; with no row chosen the enroute
  // segment goes ahead of the STAR.
  PlanEditor editor = Editor();
  seg.SetSegmentType(kSegmentEnroute);
  seg.lstSegmentsIndex = 0;
  seg.lstFpSelected.assign(7, false);
  seg.lstFpSelected[6] = true;
  ui.events.clear();
  EXPECT_FALSE(seg.Open(ui, editor));
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"you cannot select the final waypoint for insertion!"});
  seg.lstFpSelected[6] = false;
  ASSERT_TRUE(seg.Open(ui, editor));
  ASSERT_EQ(plan.LastRow, 8);
  EXPECT_EQ(plan.Waypoints[5].Code.Str(), "DW");
  EXPECT_EQ(plan.Waypoints[6].Code.Str(), "TOBAK");
  EXPECT_EQ(plan.Waypoints[7].Code.Str(), "BIG");

  // A file without its first line is refused and the plan stays.
  dir.Write("Segments/Enroute/Bad.enr", "WP=1,Int,X,X,1,1,0,0,0,1,0\r\n");
  seg.SetSegmentType(kSegmentEnroute);
  seg.lstSegmentsIndex = 0;  // "Bad" sorts first
  ui.events.clear();
  EXPECT_FALSE(seg.Open(ui, editor));
  EXPECT_EQ(ui.Messages(), std::vector<std::string>{"This is no valid segment file"});
  EXPECT_EQ(plan.LastRow, 8);

  ui.answers = {Answer::Yes};
  EXPECT_TRUE(seg.DeleteKey(ui));
  EXPECT_EQ(ui.Texts("ask"), std::vector<std::string>{"Are you sure you want to delete this File?"});
  EXPECT_EQ(seg.lstSegments, std::vector<std::string>{"Rhein_Route"});
}

}  // namespace
}  // namespace orv
