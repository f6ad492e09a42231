// frmLogbook's model: grid and total, the labels of a flight worked out by
// hand, deletion through the atomic rewrite, a damaged book left alone, and
// the printed book's lines and page break.
#include <gtest/gtest.h>

#include "app/LogbookWindow.h"
#include "core/FileIo.h"
#include "map/RecordingTarget.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"

namespace orv {
namespace {

LogbookEntry Flight(const char* dep, const char* dest, int32_t takeoff, int32_t landing) {
  LogbookEntry e;
  e.Departure = dep;
  e.Destination = dest;
  e.FlightDate = DateToDays({2026, 11, 20, 0, 0, 0});
  e.TakeoffMinutes = takeoff;
  e.LandingMinutes = landing;
  e.Distance = 150;
  e.FlightNumber = "ORV12";
  e.TailNumber = "D-EORV";
  e.Airline = "Orvanta Air";
  e.AircraftType = "Twin Otter";
  e.FuelTakeoff = 100;
  e.FuelLanding = 60;
  e.MaxAltitudeFt = 8500;
  e.Waypoints = {{'V', "FFM", 610}, {'N', "FW", 650}};
  return e;
}

struct Fixture {
  test::TempDir dir;
  ProgramState s{dir.Path().string()};
  test::ScriptedUi ui;
  LogbookWindow w{s, ui};
  std::filesystem::path book = dir.Path() / "user" / "Logbook.orv";

  Fixture() {
    test::BuildSmallWorld(s.Db);
    s.Db.Airports.Airports[0].City = "Frankfurt";
    s.Db.Airports.Airports[0].Country = "Germany";
    s.Core.Config.Fuel = 2;  // kg
    std::filesystem::create_directories(book.parent_path());
    WriteFileAtomic(book, WriteLogbook({Flight("EDXX", "EDYY", 600, 690), Flight("EDYY", "EDXX", 1400, 25),
                                        Flight("EDXX", "LFPG", 700, 700)}));
  }
};

TEST(LogbookWindow, GridTotalsAndTheLabelsOfAFlight) {
  Fixture f;
  f.w.Load();
  ASSERT_TRUE(f.w.Complete);
  ASSERT_EQ(f.w.Rows.size(), 3u);
  EXPECT_EQ(f.w.Rows[1], (std::vector<std::string>{"2026-11-20", "EDYY", "EDXX", "23:20", "00:25"}));
  EXPECT_EQ(f.w.lblTotal, "Total Flight Time: 2 hours 35 min");  // 90 + 65 across midnight + 0

  f.w.RowClick(0);
  const LogbookDetail& d = f.w.Detail;
  EXPECT_EQ(d.lblFlightNo, "Flight No:   ORV12");
  EXPECT_EQ(d.lblFOBTakeoff, "FOB at Takeoff:   302 kg");        // 100 gal * 3.028
  EXPECT_EQ(d.lblFOBLanding, "FOB at Landing:   181 kg");
  EXPECT_EQ(d.lblFuelUsed, "Fuel Used:            121 kg");
  EXPECT_EQ(d.lblAverageFuel, "Average Fuel:       80 kg/h");    // 40 gal in 1.5 h
  EXPECT_EQ(d.lblAverageGS, "Average GS      100kn");            // 150 nm in 90 min
  EXPECT_EQ(d.lblATE, "Time Enroute:   01:30");
  EXPECT_EQ(d.lblMaxAlt, "Max Altitude:     8500 ft");
  EXPECT_EQ(d.lblDeparture, "Departure:   Main Field, Frankfurt, Germany");
  EXPECT_EQ(d.lblDestination, "Destination: Hill Strip");
  EXPECT_EQ(f.w.lstLogWP, (std::vector<std::string>{"FFM (10:10)", "FW (10:50)"}));
  f.w.RowClick(2);  // no time in the air: no averages
  EXPECT_EQ(f.w.Detail.lblAverageGS, "Average GS      -");
  EXPECT_EQ(f.w.Detail.lblDestination, "Destination: LFPG");
}

TEST(LogbookWindow, DeletesThroughTheRewriteButNeverFromADamagedBook) {
  Fixture f;
  f.w.Load();
  f.w.RowClick(1);
  f.ui.answers = {Answer::Yes};
  ASSERT_TRUE(f.w.cmdDelete());
  EXPECT_EQ(f.ui.Texts("ask").back(), "Are you sure you want to delete flight from EDYY to EDXX?");
  const LogbookRead after = LoadLogbook(f.book);
  ASSERT_EQ(after.entries.size(), 2u);
  EXPECT_EQ(after.entries[1].Destination, "LFPG");
  EXPECT_EQ(f.w.SelectedRow, 1);

  // Cut short inside the second flight: the first is shown, nothing is deleted.
  std::string bytes = *ReadWholeText(f.book);
  bytes.resize(bytes.size() - 20);
  WriteFileAtomic(f.book, bytes);
  f.w.Load();
  EXPECT_FALSE(f.w.Complete);
  EXPECT_EQ(f.w.Rows.size(), 1u);
  EXPECT_EQ(f.ui.Messages().size(), 1u);
  f.w.RowClick(0);
  f.ui.answers = {Answer::Yes};
  EXPECT_FALSE(f.w.cmdDelete());
  EXPECT_EQ(*ReadWholeText(f.book), bytes);
}

TEST(LogbookWindow, PrintedBookHasItsLinesAndBreaksItsPages) {
  std::vector<LogbookEntry> book(120, Flight("EDXX", "EDYY", 600, 690));
  const LogbookPaper paper = LogbookPaperOf(book);
  RecordingTarget page(11906, 16838, "Printer");
  EXPECT_EQ(PrintLogbook(page, paper), 2);
  std::vector<std::string> texts;
  for (const DrawOp& op : page.Ops())
    if (op.Kind == DrawOpKind::Text) texts.push_back(op.Text);
  EXPECT_EQ(texts[0], "Orvanta Logbook");
  EXPECT_EQ(texts[1], "Version 8.0 \xB7 Build:010107");
  EXPECT_EQ(texts[2], std::string(63, '-'));
  EXPECT_EQ(texts[3], "No.   Date        Departure    Destination  ATD    ATA    Total");
  EXPECT_EQ(texts[5], "0001  2026-11-20  EDXX         EDYY         10:00  11:30  01:30");
  EXPECT_EQ(texts.back(), "Total Flight Time: 180 hours 0 min");
  for (const DrawOp& op : page.Ops()) {
    if (op.Kind == DrawOpKind::Text) {
      EXPECT_EQ(op.FontName, "Courier New");
    }
  }
}

}  // namespace
}  // namespace orv
