#include "app/LogbookWindow.h"

#include <cmath>

#include "app/PlanCommands.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Startup.h"
#include "core/TextFormats.h"

namespace orv {

namespace {

constexpr std::string_view kFuelNames[] = {"gal", "lbs", "kg", "lit"};

std::string FuelText(double gallons, int fuelSetting) {
  const int unit = fuelSetting >= 0 && fuelSetting < 4 ? fuelSetting : 0;
  return Format(std::trunc(FuelToUnit(gallons, unit)), "0") + " " + std::string(kFuelNames[unit]);
}

// "Frankfurt Main, Frankfurt, Germany"; the code alone for an airport the
// database does not have.
std::string AirportText(const NavDatabase& db, const std::string& icao) {
  const int32_t i = icao.empty() ? -1 : FindAirportIndex(db, icao);
  if (i < 0) return icao;
  const AirportRec& a = db.Airports.Airports[static_cast<std::size_t>(i)];
  std::string text(a.Name.Trimmed());
  for (const std::string* part : {&a.City, &a.Country})
    if (!part->empty()) text += (text.empty() ? "" : ", ") + *part;
  return text.empty() ? icao : text;
}

}  // namespace

LogbookDetail LogbookDetailOf(const LogbookEntry& e, const NavDatabase& db, int fuelSetting) {
  LogbookDetail d;
  const std::int32_t minutes = FlightMinutes(e);
  const double used = static_cast<double>(e.FuelTakeoff) - e.FuelLanding;
  d.lblFlightNo = "Flight No:   " + e.FlightNumber;
  d.lblTailNo = "Tail No:     " + e.TailNumber;
  d.lblAirline = "Airline:       " + e.Airline;
  d.lblAircraft = "Aircraft:      " + e.AircraftType;
  d.lblFOBTakeoff = "FOB at Takeoff:   " + FuelText(e.FuelTakeoff, fuelSetting);
  d.lblFOBLanding = "FOB at Landing:   " + FuelText(e.FuelLanding, fuelSetting);
  d.lblFuelUsed = "Fuel Used:            " + FuelText(used, fuelSetting);
  // A flight of no minutes has no average.
  d.lblAverageFuel =
      "Average Fuel:       " + (minutes > 0 ? FuelText(used * 60 / minutes, fuelSetting) + "/h" : std::string("-"));
  d.lblDistance = "Distance:         " + std::to_string(e.Distance) + " nm";
  d.lblATE = "Time Enroute:   " + MinutesToHours(minutes);
  d.lblMaxAlt = "Max Altitude:     " + std::to_string(e.MaxAltitudeFt) + " ft";
  d.lblAverageGS = "Average GS      " +
                   (minutes > 0 ? Format(static_cast<double>(e.Distance) * 60 / minutes, "0") + "kn" : std::string("-"));
  d.lblDeparture = "Departure:   " + AirportText(db, e.Departure);
  d.lblDestination = "Destination: " + AirportText(db, e.Destination);
  return d;
}

LogbookPaper LogbookPaperOf(const std::vector<LogbookEntry>& book) {
  LogbookPaper p;
  // The version text without its leading separator: "Version 8.0 · Build:010107".
  p.VersionLine = Trim(Mid(kVersionText, 4));
  p.Flights.reserve(book.size());
  const auto rows = LogbookGridRows(book);
  for (std::size_t i = 0; i < book.size(); ++i)
    p.Flights.push_back({rows[i][0], rows[i][1], rows[i][2], rows[i][3], rows[i][4],
                         MinutesToHours(FlightMinutes(book[i]))});
  p.TotalLine = LogbookTotalLine(book);
  return p;
}

LogbookWindow::LogbookWindow(ProgramState& s, Ui& ui) : s_(s), ui_(ui) {}

void LogbookWindow::Load() { Load(s_.Core.Folder.Resolve(kLogbookFile)); }

void LogbookWindow::Load(const std::filesystem::path& book) {
  path_ = book;
  LogbookRead r = LoadLogbook(book);
  book_ = std::move(r.entries);
  Complete = r.ok;
  Problem = r.error;
  Headings = LogbookHeadings();
  Rows = LogbookGridRows(book_);
  lblTotal = LogbookTotalLine(book_);
  RowClick(-1);
  if (!Complete)
    ui_.MsgBox(Problem + " The flights before the fault are shown; the logbook is not changed.");
}

void LogbookWindow::RowClick(std::int32_t row) {
  SelectedRow = row >= 0 && row < static_cast<std::int32_t>(book_.size()) ? row : -1;
  Detail = {};
  lstLogWP.clear();
  if (SelectedRow < 0) return;
  const LogbookEntry& e = book_[static_cast<std::size_t>(SelectedRow)];
  Detail = LogbookDetailOf(e, s_.Db, s_.Core.Config.Fuel);
  lstLogWP = LogbookWaypointLines(e);
}

bool LogbookWindow::cmdDelete() {
  if (SelectedRow < 0) {
    ui_.Beep();
    return false;
  }
  if (!Complete) {
    ui_.MsgBox(Problem + " Nothing is deleted.");
    return false;
  }
  const std::int32_t row = SelectedRow;
  if (!ui_.AskYesNo(DeleteQuestion(book_[static_cast<std::size_t>(row)]))) return false;
  const LogbookWrite w = DeleteLogbookEntry(path_, static_cast<std::size_t>(row));
  if (!w.ok) {
    ui_.MsgBox(w.message);
    return false;
  }
  Load(path_);
  RowClick(std::min<std::int32_t>(row, static_cast<std::int32_t>(book_.size()) - 1));
  return true;
}

bool LogbookWindow::cmdExport() {
  FileQuestion q;
  q.Title = "Export Logbook";
  q.Filter = "CSV files (*.csv)|*.csv|All files (*.*)|*.*";
  q.Folder = s_.Core.Folder.Resolve("\\user").string();
  q.Name = "Logbook.csv";
  std::string path;
  if (!ui_.AskSaveFile(q, path)) return false;
  return ExportCsv(path);
}

bool LogbookWindow::ExportCsv(const std::filesystem::path& file) {
  if (!WriteFileAtomic(file, LogbookToCsv(book_))) {
    ui_.MsgBox("The file " + file.string() + " could not be written.");
    return false;
  }
  return true;
}

int LogbookWindow::Print(DrawTarget& printer) const { return PrintLogbook(printer, LogbookPaperOf(book_)); }

}  // namespace orv
