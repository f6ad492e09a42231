#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "core/FileIo.h"
#include "simlink/LiveTracking.h"
#include "simlink/Logbook.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

LogbookEntry Flight(std::string dep, std::string dest, int32_t takeoff, int32_t landing, int waypoints) {
  LogbookEntry e;
  e.Departure = dep;
  e.Destination = dest;
  e.FlightDate = 46350;  // 2026-11-24
  e.TakeoffMinutes = takeoff;
  e.LandingMinutes = landing;
  e.Distance = 124;
  e.FlightNumber = "ORV12";
  e.TailNumber = "D-EORV";
  e.Airline = "Orvanta, \"Air\"";
  e.AircraftType = "Cessna Skyhawk";
  e.FuelTakeoff = 60;
  e.FuelLanding = 41;
  e.MaxAltitudeFt = 5500;
  for (int i = 0; i < waypoints; ++i) e.Waypoints.push_back({'V', "FFM", takeoff + 10 * (i + 1)});
  return e;
}

std::string Read(const std::filesystem::path& p) { return ReadWholeText(p).value_or("<missing>"); }

TEST(LogbookFile, LayoutOfAnEntryAndAFollowingOneWithoutWaypoints) {
  const std::string bytes = WriteLogbook({Flight("EDDF", "EDFE", 600, 660, 1), Flight("EDFE", "EDDF", 700, 730, 0)});
  ASSERT_EQ(bytes.size(), 4u + 104 + 13 + 104);
  EXPECT_EQ(bytes.substr(0, 4), std::string("\x02\0\0\0", 4));
  EXPECT_EQ(bytes.substr(4, 8), "EDDFEDFE");
  double date;
  std::memcpy(&date, bytes.data() + 12, 8);
  EXPECT_EQ(date, 46350.0);
  EXPECT_EQ(bytes.substr(20, 12), std::string("\x58\x02\0\0\x94\x02\0\0\x7c\0\0\0", 12));
  EXPECT_EQ(bytes.substr(32, 60), "ORV12     D-EORV    Orvanta, \"Air\"      Cessna Skyhawk      ");
  EXPECT_EQ(bytes.substr(92, 16), std::string("\x3c\0\0\0\x29\0\0\0\x7c\x15\0\0\x01\0\0\0", 16));
  EXPECT_EQ(bytes.substr(108, 13), std::string("VFFM     \x62\x02\0\0", 13));
  EXPECT_EQ(bytes.substr(121, 8), "EDFEEDDF");  // next entry follows directly
  EXPECT_EQ(bytes.substr(bytes.size() - 4), std::string(4, '\0'));

  const LogbookRead r = ReadLogbook(bytes);
  ASSERT_TRUE(r.ok) << r.error;
  ASSERT_EQ(r.entries.size(), 2u);
  EXPECT_EQ(r.entries[0].Airline, "Orvanta, \"Air\"");
  EXPECT_EQ(r.entries[0].Waypoints[0].Ident, "FFM");
  EXPECT_EQ(r.entries[0].Waypoints[0].Time, 610);
  EXPECT_EQ(WriteLogbook(r.entries), bytes);
}

TEST(LogbookFile, Refusals) {
  const std::string good = WriteLogbook({Flight("EDDF", "EDFE", 600, 660, 2)});
  EXPECT_EQ(ReadLogbook(std::string("\x01\0", 2)).error,"The logbook is truncated: 2 bytes, too short for its flight count.");
  EXPECT_EQ(ReadLogbook(std::string("\xFF\xFF\xFF\xFF", 4)).error, "The logbook's flight count is negative (-1).");
  std::string big = good;
  big[0] = 2;
  EXPECT_EQ(ReadLogbook(big).error, "The logbook announces 2 flights but its 134 bytes cannot hold them.");
  EXPECT_EQ(ReadLogbook(good.substr(0, good.size() - 1)).error,
            "Flight 1 of the logbook announces 2 waypoints, more than the file holds.");
  std::string negative = good;
  negative[104] = '\xFE';
  negative[105] = negative[106] = negative[107] = '\xFF';
  EXPECT_EQ(ReadLogbook(negative).error, "Flight 1 of the logbook has a negative waypoint count (-2).");
  EXPECT_EQ(ReadLogbook(good + "x").error, "The logbook has 1 bytes after its last flight.");
}

TEST(LogbookAutolog, FiguresOfTheEntryFromTheFlight) {
  LinkState link;
  link.TakeoffTime = 600.4f;
  link.DistanceFlown = 123.5f;
  link.FuelAtTakeoff = 60;
  link.MaxAltitude = 5512;
  link.LogEntries = {{'A', "EDDF    ", 601}, {'V', "FFM     ", 615}};
  SimSnapshot snap;
  snap.UtcMinutes = 659.6f;
  snap.TotalFuel = 41;
  AtcStrings atc;
  atc.AircraftType = "CESSNA SKYHAWK 172SP     ";
  atc.Airline = "A VERY LONG AIRLINE NAME";
  atc.FlightNumber = "ORV1234567890";
  atc.TailNumber = "D-EORV      ";
  const LogbookEntry e = AutologEntry(" EDDF ", "EDFEX", atc, DateToDays({2026, 11, 24}), link, snap);
  EXPECT_EQ(e.Departure, "EDDF");
  EXPECT_EQ(e.Destination, "EDFE");
  EXPECT_EQ(e.FlightDate, 46350.0);
  EXPECT_EQ(e.TakeoffMinutes, 600);
  EXPECT_EQ(e.LandingMinutes, 660);
  EXPECT_EQ(e.Distance, 124);
  EXPECT_EQ(e.AircraftType, "Cessna Skyhawk 172sp");
  EXPECT_EQ(e.Airline, "A VERY LONG AIRLINE");  // cut to 20, kept trimmed
  EXPECT_EQ(e.FlightNumber, "ORV1234567");
  EXPECT_EQ(e.TailNumber, "D-EORV");
  EXPECT_EQ(e.FuelTakeoff, 60);
  EXPECT_EQ(e.FuelLanding, 41);
  EXPECT_EQ(e.MaxAltitudeFt, 5512);
  ASSERT_EQ(e.Waypoints.size(), 2u);
  EXPECT_EQ(e.Waypoints[1].Ident, "FFM");
  EXPECT_EQ(LogbookWaypointLines(e), (std::vector<std::string>{"EDDF (10:01)", "FFM (10:15)"}));
}

TEST(LogbookBook, FirstFlightCreatesTheFileThenAppendsAndDeletes) {
  test::TempDir dir;
  const auto path = dir.Path() / "user" / "Logbook.orv";  // the folder is made
  const LogbookWrite first = AddLogbookEntry(path, Flight("EDDF", "EDFE", 600, 660, 0));
  EXPECT_TRUE(first.ok);
  EXPECT_EQ(Read(path).substr(0, 4), std::string("\x01\0\0\0", 4));
  EXPECT_TRUE(AddLogbookEntry(path, Flight("EDFE", "EDDS", 1430, 20, 1)).ok);
  LogbookRead book = LoadLogbook(path);
  ASSERT_EQ(book.entries.size(), 2u);
  EXPECT_EQ(DeleteQuestion(book.entries[0]), "Are you sure you want to delete flight from EDDF to EDFE?");
  EXPECT_TRUE(DeleteLogbookEntry(path, 0).ok);
  EXPECT_EQ(Read(path), WriteLogbook({Flight("EDFE", "EDDS", 1430, 20, 1)}));
  EXPECT_EQ(DeleteLogbookEntry(path, 5).message, "The logbook has no flight 6.");
}

TEST(LogbookBook, DamagedBookStaysAndTheFlightGoesBesideIt) {
  test::TempDir dir;
  const std::string damaged = WriteLogbook({Flight("EDDF", "EDFE", 600, 660, 3)}).substr(0, 130);
  const auto path = dir.Write("Logbook.orv", damaged);
  test::ScriptedUi ui;
  const LogbookWrite w = AddLogbookEntry(path, Flight("EDFE", "EDDF", 700, 730, 0), &ui);
  EXPECT_TRUE(w.ok);
  EXPECT_EQ(w.writtenTo, dir.Path() / "Logbook-1.orv");
  EXPECT_EQ(Read(path), damaged);
  EXPECT_EQ(Read(w.writtenTo), WriteLogbook({Flight("EDFE", "EDDF", 700, 730, 0)}));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{
                               "Flight 1 of the logbook announces 3 waypoints, more than the file holds. The logbook "
                               "is left as it is; this flight is written to " +
                               w.writtenTo.string() + "."}));
  EXPECT_EQ(AddLogbookEntry(path, Flight("A", "B", 0, 1, 0)).writtenTo, dir.Path() / "Logbook-2.orv");
  EXPECT_FALSE(DeleteLogbookEntry(path, 0).ok);
  EXPECT_EQ(Read(path), damaged);
}

TEST(LogbookBook, AWriteCutShortLeavesTheOldBookWhole) {
  test::TempDir dir;
  const std::string old = WriteLogbook({Flight("EDDF", "EDFE", 600, 660, 1)});
  const auto path = dir.Write("Logbook.orv", old);
  // A killed earlier write left half a temporary file; another cannot be made.
  dir.Write("Logbook.orv.tmp/half", old.substr(0, 50));
  const LogbookWrite w = AddLogbookEntry(path, Flight("EDFE", "EDDF", 700, 730, 0));
  EXPECT_FALSE(w.ok);
  EXPECT_EQ(w.message, "The logbook " + path.string() + " could not be written; it is left as it was.");
  EXPECT_EQ(Read(path), old);
  EXPECT_FALSE(DeleteLogbookEntry(path, 0).ok);
  EXPECT_EQ(Read(path), old);
  std::filesystem::remove_all(dir.Path() / "Logbook.orv.tmp");
  EXPECT_TRUE(AddLogbookEntry(path, Flight("EDFE", "EDDF", 700, 730, 0)).ok);
  EXPECT_EQ(LoadLogbook(path).entries.size(), 2u);
}

TEST(LogbookGrid, RowsTotalAcrossMidnightAndCsv) {
  const std::vector<LogbookEntry> book = {Flight("EDDF", "EDFE", 600, 660, 0), Flight("EDFE", "EDDS", 1430, 20, 1)};
  EXPECT_EQ(LogbookHeadings(), (std::vector<std::string>{"Date", "From", "To", "Takeoff", "Landing"}));
  const auto rows = LogbookGridRows(book);
  EXPECT_EQ(rows[1], (std::vector<std::string>{"2026-11-24", "EDFE", "EDDS", "23:50", "00:20"}));
  EXPECT_EQ(LogbookTotalLine(book), "Total Flight Time: 1 hours 30 min");
  EXPECT_EQ(LogbookTotalLine({}), "Total Flight Time: 0 hours 0 min");
  EXPECT_EQ(LogbookToCsv({book[1]}),
            "Date,From,To,Takeoff,Landing,Minutes,Distance,FlightNumber,TailNumber,Airline,AircraftType,"
            "FuelTakeoff,FuelLanding,MaxAltitude,Waypoints\r\n"
            "2026-11-24,EDFE,EDDS,23:50,00:20,30,124,ORV12,D-EORV,\"Orvanta, \"\"Air\"\"\",Cessna Skyhawk,60,41,5500,"
            "FFM (24:00)\r\n");
}

}  // namespace
}  // namespace orv
