// The logbook "\user\Logbook.orv": one entry a finished flight, the automatic
// entry of menuAutolog, the lines of frmLogbook, deletion and a CSV export.
// Every write goes through a temporary file renamed over the book; a book that
// cannot be read completely is never rewritten from what was read.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/Clock.h"
#include "simlink/SimData.h"

namespace orv {

struct LinkState;
class Ui;

inline constexpr std::string_view kLogbookFile = "\\user\\Logbook.orv";

// A waypoint passed, 13 bytes in the file.
struct LogEntry {
  char Kind = ' ';
  std::string Ident;   // 8 characters, trimmed
  std::int32_t Time = 0;  // minutes of the day
};

// One flight. Texts are kept trimmed; the file pads them to their widths.
struct LogbookEntry {
  std::string Departure, Destination;  // 4
  double FlightDate = 0;               // days from 1899-12-30
  std::int32_t TakeoffMinutes = 0, LandingMinutes = 0;
  std::int32_t Distance = 0;
  std::string FlightNumber, TailNumber;  // 10
  std::string Airline, AircraftType;     // 20
  std::int32_t FuelTakeoff = 0, FuelLanding = 0, MaxAltitudeFt = 0;
  std::vector<LogEntry> Waypoints;
};

// The platform's date type: days from 1899-12-30, and "yyyy-mm-dd" of it.
double DateToDays(const DateTime& date);
std::string DateText(double days);

// menuAutolog's entry from the flight's values: plan departure and
// destination idents, the ATC strings, today's date, the link's flight
// values and the snapshot at the landing.
LogbookEntry AutologEntry(std::string_view departure, std::string_view destination, const AtcStrings& atc,
                          double today, const LinkState& link, const SimSnapshot& snap);

std::string WriteLogbook(const std::vector<LogbookEntry>& book);

struct LogbookRead {
  bool ok = false;
  std::string error;  // what is wrong, when not ok
  std::vector<LogbookEntry> entries;  // all of them, or what was read before the fault
};
LogbookRead ReadLogbook(std::string_view data);

// The book on disk. A missing file is an empty book.
LogbookRead LoadLogbook(const std::filesystem::path& path);

struct LogbookWrite {
  bool ok = false;
  std::filesystem::path writtenTo;  // the book, or the separate file beside it
  std::string message;              // shown to the user when not empty
};
// Adds the entry at the end. When the book cannot be read completely it stays
// as it is; the entry goes to "Logbook-N.orv" beside it (the first N free) and
// the message tells both. Shows the message on ui when given.
LogbookWrite AddLogbookEntry(const std::filesystem::path& path, const LogbookEntry& entry, Ui* ui = nullptr);

// cmdDelete: "Are you sure you want to delete flight from DEP to DEST?"
std::string DeleteQuestion(const LogbookEntry& entry);
// Rewrites the book without entry index (0-based). Refused, with a message,
// when the book cannot be read completely or the index is out of range.
LogbookWrite DeleteLogbookEntry(const std::filesystem::path& path, std::size_t index);

// grdLogbook: headings and one row a flight (date, from, to, takeoff, landing).
std::vector<std::string> LogbookHeadings();
std::vector<std::vector<std::string>> LogbookGridRows(const std::vector<LogbookEntry>& book);
// Flight minutes of an entry; a landing before the takeoff is on the next day.
std::int32_t FlightMinutes(const LogbookEntry& e);
// "Total Flight Time: H hours M min".
std::string LogbookTotalLine(const std::vector<LogbookEntry>& book);
// lstLogWP: "IDENT (hh:mm)".
std::vector<std::string> LogbookWaypointLines(const LogbookEntry& e);

// CSV, RFC 4180 quoting, a heading line then one line a flight, CR LF ends.
std::string LogbookToCsv(const std::vector<LogbookEntry>& book);

}  // namespace orv
