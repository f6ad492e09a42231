#include "simlink/Logbook.h"

#include <cmath>
#include <cstring>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "core/Ui.h"
#include "simlink/LiveTracking.h"

namespace orv {

namespace {

// Fixed part of an entry: 4+4+8+4+4+4+10+10+20+20+4+4+4+4.
constexpr std::size_t kEntryFixedBytes = 104;
constexpr std::size_t kWaypointBytes = 13;

void PutI32(std::string& out, std::int32_t v) {
  auto u = static_cast<std::uint32_t>(v);
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<char>((u >> (8 * i)) & 0xFF));
}
std::int32_t GetI32(const char* p) {
  auto b = reinterpret_cast<const unsigned char*>(p);
  return static_cast<std::int32_t>(b[0] | (b[1] << 8) | (b[2] << 16) | (static_cast<std::uint32_t>(b[3]) << 24));
}

long long DaysFromCivil(int y, int m, int d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}

constexpr long long kDays1899To1970 = 25569;

std::string CsvField(std::string_view text) {
  std::string t = Latin1ToUtf8(text);
  if (t.find_first_of(",\"\r\n") == std::string::npos) return t;
  return "\"" + Replace(t, "\"", "\"\"") + "\"";
}

}  // namespace

double DateToDays(const DateTime& date) {
  return static_cast<double>(DaysFromCivil(date.year, date.month, date.day) + kDays1899To1970);
}

std::string DateText(double days) {
  if (!std::isfinite(days) || std::fabs(days) > 3e6) return "----------";
  long long z = static_cast<long long>(std::floor(days)) - kDays1899To1970 + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  long long y = static_cast<long long>(yoe) + era * 400 + (m <= 2);
  return Format(static_cast<double>(y), "0000") + "-" + Format(m, "00") + "-" + Format(d, "00");
}

LogbookEntry AutologEntry(std::string_view departure, std::string_view destination, const AtcStrings& atc,
                          double today, const LinkState& link, const SimSnapshot& snap) {
  LogbookEntry e;
  e.Departure = Trim(Left(Trim(departure), 4));
  e.Destination = Trim(Left(Trim(destination), 4));
  e.AircraftType = Trim(Left(ProperCase(Trim(atc.AircraftType)), 20));
  e.Airline = Trim(Left(Trim(atc.Airline), 20));
  e.FlightNumber = Trim(Left(Trim(atc.FlightNumber), 10));
  e.TailNumber = Trim(Left(Trim(atc.TailNumber), 10));
  e.FlightDate = today;
  e.Distance = RoundHalfUp(link.DistanceFlown);
  e.TakeoffMinutes = static_cast<std::int32_t>(link.TakeoffTime + 0.5f);
  e.LandingMinutes = static_cast<std::int32_t>(snap.UtcMinutes + 0.5f);
  e.FuelTakeoff = link.FuelAtTakeoff;
  e.FuelLanding = snap.TotalFuel;
  e.MaxAltitudeFt = link.MaxAltitude;
  for (const auto& w : link.LogEntries) e.Waypoints.push_back({w.Kind, Trim(Left(w.Ident, 8)), w.Time});
  return e;
}

std::string WriteLogbook(const std::vector<LogbookEntry>& book) {
  std::string out;
  PutI32(out, static_cast<std::int32_t>(book.size()));
  for (const auto& e : book) {
    out += FixedText(e.Departure, 4);
    out += FixedText(e.Destination, 4);
    char date[8];
    std::memcpy(date, &e.FlightDate, 8);
    out.append(date, 8);
    PutI32(out, e.TakeoffMinutes);
    PutI32(out, e.LandingMinutes);
    PutI32(out, e.Distance);
    out += FixedText(e.FlightNumber, 10);
    out += FixedText(e.TailNumber, 10);
    out += FixedText(e.Airline, 20);
    out += FixedText(e.AircraftType, 20);
    PutI32(out, e.FuelTakeoff);
    PutI32(out, e.FuelLanding);
    PutI32(out, e.MaxAltitudeFt);
    PutI32(out, static_cast<std::int32_t>(e.Waypoints.size()));
    for (const auto& w : e.Waypoints) {
      out.push_back(w.Kind);
      out += FixedText(w.Ident, 8);
      PutI32(out, w.Time);
    }
  }
  return out;
}

LogbookRead ReadLogbook(std::string_view data) {
  LogbookRead r;
  if (data.size() < 4) {
    r.error = "The logbook is truncated: " + std::to_string(data.size()) + " bytes, too short for its flight count.";
    return r;
  }
  const std::int32_t count = GetI32(data.data());
  if (count < 0) {
    r.error = "The logbook's flight count is negative (" + std::to_string(count) + ").";
    return r;
  }
  std::size_t pos = 4;
  if (static_cast<std::size_t>(count) > (data.size() - pos) / kEntryFixedBytes) {
    r.error = "The logbook announces " + std::to_string(count) + " flights but its " +
              std::to_string(data.size()) + " bytes cannot hold them.";
    return r;
  }
  r.entries.reserve(static_cast<std::size_t>(count));
  auto text = [&](std::size_t width) {
    std::string t = Trim(data.substr(pos, width));
    pos += width;
    return t;
  };
  auto i32 = [&] {
    std::int32_t v = GetI32(data.data() + pos);
    pos += 4;
    return v;
  };
  for (std::int32_t n = 0; n < count; ++n) {
    if (data.size() - pos < kEntryFixedBytes) {
      r.error = "The logbook is truncated in flight " + std::to_string(n + 1) + " of " + std::to_string(count) + ".";
      return r;
    }
    LogbookEntry e;
    e.Departure = text(4);
    e.Destination = text(4);
    std::memcpy(&e.FlightDate, data.data() + pos, 8);
    pos += 8;
    e.TakeoffMinutes = i32();
    e.LandingMinutes = i32();
    e.Distance = i32();
    e.FlightNumber = text(10);
    e.TailNumber = text(10);
    e.Airline = text(20);
    e.AircraftType = text(20);
    e.FuelTakeoff = i32();
    e.FuelLanding = i32();
    e.MaxAltitudeFt = i32();
    const std::int32_t wpCount = i32();
    if (wpCount < 0 || static_cast<std::size_t>(wpCount) > (data.size() - pos) / kWaypointBytes) {
      r.error = "Flight " + std::to_string(n + 1) + " of the logbook announces " + std::to_string(wpCount) +
                " waypoints, more than the file holds.";
      if (wpCount < 0)
        r.error = "Flight " + std::to_string(n + 1) + " of the logbook has a negative waypoint count (" +
                  std::to_string(wpCount) + ").";
      return r;
    }
    e.Waypoints.resize(static_cast<std::size_t>(wpCount));
    for (auto& w : e.Waypoints) {
      w.Kind = data[pos++];
      w.Ident = text(8);
      w.Time = i32();
    }
    r.entries.push_back(std::move(e));
  }
  if (pos != data.size()) {
    r.error = "The logbook has " + std::to_string(data.size() - pos) + " bytes after its last flight.";
    return r;
  }
  r.ok = true;
  return r;
}

LogbookRead LoadLogbook(const std::filesystem::path& path) {
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    LogbookRead r;
    r.ok = true;
    return r;
  }
  auto bytes = ReadWholeText(path);
  if (!bytes) {
    LogbookRead r;
    r.error = "The logbook " + path.string() + " cannot be opened.";
    return r;
  }
  return ReadLogbook(*bytes);
}

LogbookWrite AddLogbookEntry(const std::filesystem::path& path, const LogbookEntry& entry, Ui* ui) {
  LogbookWrite w;
  LogbookRead book = LoadLogbook(path);
  std::error_code folderError;
  if (!path.parent_path().empty()) std::filesystem::create_directories(path.parent_path(), folderError);
  if (book.ok) {
    book.entries.push_back(entry);
    w.writtenTo = path;
    w.ok = WriteFileAtomic(path, WriteLogbook(book.entries));
    if (!w.ok) w.message = "The logbook " + path.string() + " could not be written; it is left as it was.";
  } else {
    std::error_code ec;
    std::filesystem::path beside;
    for (int n = 1;; ++n) {
      beside = path.parent_path() / (path.stem().string() + "-" + std::to_string(n) + path.extension().string());
      if (!std::filesystem::exists(beside, ec)) break;
    }
    w.writtenTo = beside;
    w.ok = WriteFileAtomic(beside, WriteLogbook({entry}));
    w.message = book.error + " The logbook is left as it is; this flight " +
                (w.ok ? "is written to " + beside.string() + "." : "could not be written.");
  }
  if (ui && !w.message.empty()) ui->MsgBox(w.message);
  return w;
}

std::string DeleteQuestion(const LogbookEntry& e) {
  return "Are you sure you want to delete flight from " + e.Departure + " to " + e.Destination + "?";
}

LogbookWrite DeleteLogbookEntry(const std::filesystem::path& path, std::size_t index) {
  LogbookWrite w;
  w.writtenTo = path;
  LogbookRead book = LoadLogbook(path);
  if (!book.ok) {
    w.message = book.error + " Nothing is deleted.";
    return w;
  }
  if (index >= book.entries.size()) {
    w.message = "The logbook has no flight " + std::to_string(index + 1) + ".";
    return w;
  }
  book.entries.erase(book.entries.begin() + static_cast<std::ptrdiff_t>(index));
  w.ok = WriteFileAtomic(path, WriteLogbook(book.entries));
  if (!w.ok) w.message = "The logbook " + path.string() + " could not be written; it is left as it was.";
  return w;
}

std::vector<std::string> LogbookHeadings() { return {"Date", "From", "To", "Takeoff", "Landing"}; }

std::vector<std::vector<std::string>> LogbookGridRows(const std::vector<LogbookEntry>& book) {
  std::vector<std::vector<std::string>> rows;
  rows.reserve(book.size());
  // The texts of a minute of the day and of the date before are made once.
  std::vector<std::string> hours(1440);
  auto hoursText = [&](std::int32_t m) {
    if (m < 0 || m >= 1440) return MinutesToHours(m);
    if (hours[m].empty()) hours[m] = MinutesToHours(m);
    return hours[m];
  };
  double lastDate = 0;
  std::string lastDateText;
  for (const auto& e : book) {
    if (lastDateText.empty() || e.FlightDate != lastDate) {
      lastDate = e.FlightDate;
      lastDateText = DateText(e.FlightDate);
    }
    rows.push_back({lastDateText, e.Departure, e.Destination, hoursText(e.TakeoffMinutes),
                    hoursText(e.LandingMinutes)});
  }
  return rows;
}

std::int32_t FlightMinutes(const LogbookEntry& e) {
  std::int64_t m = static_cast<std::int64_t>(e.LandingMinutes) - e.TakeoffMinutes;
  if (m < 0) m += 1440;
  if (m < 0 || m > 1440) m = 0;  // times outside a day: not counted
  return static_cast<std::int32_t>(m);
}

std::string LogbookTotalLine(const std::vector<LogbookEntry>& book) {
  std::int64_t total = 0;
  for (const auto& e : book) total += FlightMinutes(e);
  return "Total Flight Time: " + std::to_string(total / 60) + " hours " + std::to_string(total % 60) + " min";
}

std::vector<std::string> LogbookWaypointLines(const LogbookEntry& e) {
  std::vector<std::string> lines;
  for (const auto& w : e.Waypoints) lines.push_back(w.Ident + " (" + MinutesToHours(w.Time) + ")");
  return lines;
}

std::string LogbookToCsv(const std::vector<LogbookEntry>& book) {
  std::string out =
      "Date,From,To,Takeoff,Landing,Minutes,Distance,FlightNumber,TailNumber,Airline,AircraftType,"
      "FuelTakeoff,FuelLanding,MaxAltitude,Waypoints\r\n";
  for (const auto& e : book) {
    std::string wps;
    for (const auto& l : LogbookWaypointLines(e)) wps += (wps.empty() ? "" : " ") + l;
    out += DateText(e.FlightDate) + "," + CsvField(e.Departure) + "," + CsvField(e.Destination) + "," +
           MinutesToHours(e.TakeoffMinutes) + "," + MinutesToHours(e.LandingMinutes) + "," +
           std::to_string(FlightMinutes(e)) + "," + std::to_string(e.Distance) + "," + CsvField(e.FlightNumber) +
           "," + CsvField(e.TailNumber) + "," + CsvField(e.Airline) + "," + CsvField(e.AircraftType) + "," +
           std::to_string(e.FuelTakeoff) + "," + std::to_string(e.FuelLanding) + "," +
           std::to_string(e.MaxAltitudeFt) + "," + CsvField(wps) + "\r\n";
  }
  return out;
}

}  // namespace orv
