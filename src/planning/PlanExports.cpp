#include "planning/PlanExports.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "core/AppFolder.h"
#include "core/Runtime.h"
#include "core/Settings.h"
#include "core/TextFormats.h"
#include "core/Ui.h"
#include "planning/NavLookup.h"
#include "planning/PlanFile.h"

namespace orv {

namespace {

constexpr std::string_view kEol = "\r\n";
// The version line the route files of the add-on aircraft start with.
constexpr std::string_view kExportedBy = "Generated and exported by Orvanta";
constexpr std::string_view kVersionText = " \xB7 Version 8.0 \xB7 Build:010107";
// No airway remembered yet: a text no airway or track can have.
constexpr std::string_view kNoAirway = "blablabla";

const WaypointRec& RowAt(const FlightPlan& plan, int r) { return plan.Waypoints[static_cast<std::size_t>(r)]; }
int LastOf(const FlightPlan& plan) { return std::clamp<int>(plan.LastRow, 0, kMaxPlanRow); }

// An airway as the online networks name it: tracks become "NAT" plus their
// letter or "PAC" plus their number; a procedure text ("ANEK1A.") is none.
std::string NetworkAirway(const WaypointRec& w) {
  if (static_cast<unsigned char>(w.Airway.chars[0]) < '0') return {};
  std::string a = w.Airway.Str();
  if (Left(a, 6) == "Track ") return "NAT" + Right(a, 1);
  if (Left(a, 7) == "PTrack ") return "PAC" + Trim(Right(a, 2));
  if (InStr(a, ".") > 0) return {};
  return a;
}

// A row that only marks a position: a map-click point ("Fix 07" on row 7) or
// a user waypoint. The networks cannot file it by name.
bool IsUnnamed(const WaypointRec& w, int row) {
  return w.Code.Str() == "Fix " + Format(row, "00") || w.Kind.Trimmed() == "Uwp";
}

bool IsProcedureRow(const WaypointRec& w) { return w.Origin == kOriginSid || w.Origin == kOriginStar; }

bool Keep(const WaypointRec& w, bool withProcedures) { return withProcedures || !IsProcedureRow(w); }

std::string FolderOr(std::string_view path, const AppFolder& app, std::string_view constant) {
  return path.empty() ? app.Resolve(constant).string() : std::string(path);
}

std::vector<std::string> WriteInto(Ui& ui, const std::string& folder, std::string_view baseName,
                                   const std::vector<std::pair<std::string_view, std::string>>& files) {
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  std::vector<std::string> written;
  for (const auto& [ext, text] : files) {
    std::string path = (std::filesystem::path(folder) / (std::string(baseName) + std::string(ext))).string();
    if (!SaveUserFile(ui, path, text)) break;
    written.push_back(path);
  }
  return written;
}

}  // namespace

std::string RouteText(const FlightPlan& plan, bool ivao) {
  int last = LastOf(plan);
  std::string remembered(kNoAirway);
  std::vector<std::string> items;
  int firstStar = last - plan.StarRows;
  for (int r = 1; r < last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    // A SID is filed by its last point, a STAR by its first.
    if (w.Origin == kOriginSid && r < plan.SidRows) continue;
    if (w.Origin == kOriginStar && r > firstStar) continue;
    if (IsUnnamed(w, r)) {
      if (ivao && (items.empty() || items.back() != "DCT")) items.emplace_back("DCT");
      remembered = kNoAirway;
      continue;
    }
    std::string code = w.Code.Str();
    std::string airway = IsProcedureRow(w) ? std::string() : NetworkAirway(w);
    if (!airway.empty()) {
      // Along the same airway or track only the exit point is named.
      if (airway == remembered && !items.empty()) {
        items.back() = code;
      } else {
        items.push_back(airway);
        items.push_back(code);
        remembered = airway;
      }
    } else {
      // A direct point after an unnamed stretch shares its "DCT".
      if (ivao && !items.empty() && items.back() == "DCT") items.back() = "DCT " + code;
      else items.push_back(ivao ? "DCT " + code : code);
      remembered = kNoAirway;
    }
  }
  std::string out;
  for (const std::string& item : items) {
    if (!out.empty()) out += ' ';
    out += item;
  }
  return out;
}

std::string FormatSquawkBoxPlan(const FlightPlan& plan, int32_t cruiseSpeed) {
  int last = LastOf(plan);
  std::string time = MinutesToHours(plan.TotalTime);
  std::string hours = Left(time, InStr(time, ":") - 1);
  if (hours.size() > 1 && hours[0] == '0') hours.erase(0, 1);
  std::string t;
  auto line = [&t](std::string_view a, std::string_view b = {}) {
    t.append(a);
    t.append(b);
    t.append(kEol);
  };
  line("[SBFlightPlan]");
  line("Departure: ", RowAt(plan, 0).Code.Trimmed());
  line("Arrival: ", RowAt(plan, last).Code.Trimmed());
  line("FlightHours: ", hours);
  line("FlightMinutes: ", Right(time, 2));
  line("Airspeed: ", std::to_string(cruiseSpeed));
  line("Altitude: ", std::to_string(static_cast<int64_t>(plan.CruiseFL) * 100));
  line("Route: ", RouteText(plan, false));
  return t;
}

std::string FormatSquawkBoxPoints(const FlightPlan& plan, const NavLookup& nav) {
  int last = LastOf(plan);
  std::string t;
  for (int r = 0; r <= last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    double altitude = r == 0        ? nav.AirportElevation(plan.DepartureAirport)
                      : r == last ? nav.AirportElevation(plan.DestinationAirport)
                                  : static_cast<double>(plan.CruiseFL) * 100;
    t += Replace(w.Code.Str(), " ", "") + ":" + Format(w.Lat, "##.000000") + ":" + Format(w.Lon, "###.000000") +
         ":0:0:0:" + Format(altitude, "#####");
    t += kEol;
  }
  return t;
}

std::string FormatIvaoPlan(const FlightPlan& plan) {
  int last = LastOf(plan);
  std::string t;
  t += "[FLIGHTPLAN]";
  t += kEol;
  t += "DEPICAO=" + RowAt(plan, 0).Code.Str();
  t += kEol;
  t += "ROUTE=" + RouteText(plan, true);
  t += kEol;
  t += "DESTICAO=" + RowAt(plan, last).Code.Str();
  t += kEol;
  t += "ALTICAO=";
  t += kEol;
  return t;
}

std::string FormatLevelDPlan(const FlightPlan& plan, const NavLookup& nav, bool withProcedures) {
  int last = LastOf(plan);
  std::string t = "H," + RowAt(plan, 0).Code.Str() + "," + RowAt(plan, last).Code.Str() + "," +
                  std::to_string(static_cast<int64_t>(plan.CruiseFL) * 100) + ",";
  t += kEol;
  for (int r = 0; r <= last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    if (r > 0 && r < last && !Keep(w, withProcedures)) continue;
    double altitude = r == 0 ? nav.AirportElevation(plan.DepartureAirport)
                             : r == last ? nav.AirportElevation(plan.DestinationAirport) : 0;
    // Point, position, altitude and speed constraints: none but the airports'.
    t += "W," + Replace(w.Code.Str(), " ", "") + "," + Format(w.Lat, "0.000000") + "," + Format(w.Lon, "0.000000") +
         "," + (altitude != 0 ? Format(altitude, "0") + "," : std::string("0,")) + "0.000000,";
    t += kEol;
  }
  return t;
}

std::string FormatPmdgPlan(const FlightPlan& plan, const NavLookup& nav, bool withProcedures) {
  int last = LastOf(plan);
  std::vector<int> rows;
  for (int r = 0; r <= last; ++r)
    if (r == 0 || r == last || Keep(RowAt(plan, r), withProcedures)) rows.push_back(r);
  std::string t;
  auto line = [&t](std::string_view s) {
    t.append(s);
    t.append(kEol);
  };
  line(std::string(kExportedBy) + std::string(kVersionText));
  line("");
  line(std::to_string(rows.size()));
  line("");
  for (int r : rows) {
    const WaypointRec& w = RowAt(plan, r);
    bool airport = r == 0 || r == last;
    std::string airway;
    if (!airport) airway = IsProcedureRow(w) ? std::string() : NetworkAirway(w);
    double elevation = r == 0 ? nav.AirportElevation(plan.DepartureAirport)
                              : r == last ? nav.AirportElevation(plan.DestinationAirport) : 0;
    line(Replace(w.Code.Str(), " ", ""));
    line(airport ? "1" : "FIX");
    line(airway.empty() ? "DIRECT" : airway);
    line(std::string("1 ") + (w.Lat < 0 ? "S " : "N ") + Format(std::fabs(w.Lat), "#0.0000") + " " +
         (w.Lon < 0 ? "W " : "E ") + Format(std::fabs(w.Lon), "##0.0000") + " " + Format(elevation, "0"));
    line("-----");
    // No altitude restriction at the point.
    line("-1000000");
    line(" 0");
    line("");
  }
  return t;
}

std::string FormatPmdgPlan2(const FlightPlan& plan, bool withProcedures) {
  int last = LastOf(plan);
  std::string t = "//" + std::string(kExportedBy) + std::string(kVersionText);
  t += kEol;
  t += RowAt(plan, 0).Code.Str();
  t += kEol;
  for (int r = 1; r < last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    if (!Keep(w, withProcedures)) continue;
    std::string airway = IsProcedureRow(w) ? std::string() : NetworkAirway(w);
    t += (airway.empty() ? std::string("DIRECT") : airway) + " " + Replace(w.Code.Str(), " ", "");
    t += kEol;
  }
  t += RowAt(plan, last).Code.Str();
  t += kEol;
  return t;
}

// ---------------------------------------------------------------- into folders

namespace {

// A folder as the messages show it: with its closing separator.
std::string AsFolder(const std::filesystem::path& p) { return (p / "").string(); }

}  // namespace

std::string LevelDFolder(const ExportFolders& folders) {
  if (folders.FsPath.empty()) return AsFolder(AppFolder(folders.AppPath).Resolve("\\FSPlan"));
  return AsFolder(AppFolder(folders.FsPath).Resolve("\\Level-D Simulations\\navdata\\Flightplans"));
}

std::string PmdgFolder(const ExportFolders& folders) {
  if (folders.FsPath.empty()) return AsFolder(AppFolder(folders.AppPath).Resolve("\\FSPlan"));
  return AsFolder(AppFolder(folders.FsPath).Resolve("\\PMDG\\FLIGHTPLANS"));
}

std::vector<std::string> ExportSquawkBox(Ui& ui, const FlightPlan& plan, const NavLookup& nav, int32_t cruiseSpeed,
                                         const ExportFolders& folders, std::string_view baseName) {
  std::string folder = FolderOr(folders.SquawkBoxPath, AppFolder(folders.AppPath), kSquawkBoxFolder);
  return WriteInto(ui, folder, baseName,
                   {{kSquawkBoxExt, FormatSquawkBoxPlan(plan, cruiseSpeed)},
                    {kSquawkBoxPointsExt, FormatSquawkBoxPoints(plan, nav)}});
}

std::vector<std::string> ExportIvao(Ui& ui, const FlightPlan& plan, const ExportFolders& folders,
                                    std::string_view baseName) {
  std::string folder = FolderOr(folders.IvaoPath, AppFolder(folders.AppPath), kIvaoFolder);
  return WriteInto(ui, folder, baseName, {{kIvaoExt, FormatIvaoPlan(plan)}});
}

std::vector<std::string> ExportLevelD(Ui& ui, const FlightPlan& plan, const NavLookup& nav,
                                      const ExportFolders& folders, std::string_view baseName) {
  bool withProcedures = ui.AskYesNo(kIncludeProcedures);
  std::string folder = LevelDFolder(folders);
  if (folders.FsPath.empty())
    ui.MsgBox("Cannot find Flight Simulator path! LevelD file is written into: " + folder, MsgStyle::Information);
  return WriteInto(ui, folder, baseName, {{kLevelDExt, FormatLevelDPlan(plan, nav, withProcedures)}});
}

std::vector<std::string> ExportPmdg(Ui& ui, const FlightPlan& plan, const NavLookup& nav, const ExportFolders& folders,
                                    std::string_view baseName) {
  bool withProcedures = ui.AskYesNo(kIncludeProcedures);
  std::string folder = PmdgFolder(folders);
  if (folders.FsPath.empty())
    ui.MsgBox("Cannot find Flight Simulator path! PMDG file is written into: " + folder, MsgStyle::Information);
  return WriteInto(ui, folder, baseName,
                   {{kPmdgExt, FormatPmdgPlan(plan, nav, withProcedures)},
                    {kPmdg2Ext, FormatPmdgPlan2(plan, withProcedures)}});
}

}  // namespace orv
