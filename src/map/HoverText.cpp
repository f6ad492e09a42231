#include "map/HoverText.h"

#include <algorithm>

#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

namespace {

// The name a point shows: its own name, or its ident when it has none.
template <typename Rec>
std::string_view ShownName(const Rec& rec) {
  std::string_view name = rec.Name.Trimmed();
  return name.empty() ? rec.Ident.Trimmed() : name;
}

// "LowAlt: V1 V3": every airway name of the links once, in link order.
std::string AirwayNamesLine(std::string_view head, std::span<const AirwayLinkRec> links) {
  std::string line(head);
  std::vector<std::string_view> seen;
  seen.reserve(links.size());
  for (const AirwayLinkRec& link : links) {
    std::string_view name = link.AirwayName.Trimmed();
    if (name.empty() || std::find(seen.begin(), seen.end(), name) != seen.end()) continue;
    if (!seen.empty()) line += ' ';
    line += name;
    seen.push_back(name);
  }
  return line;
}

std::string RunwayLine(const RunwayRec& rwy, const AppState& state) {
  std::string line = RunwayListName(rwy.LowEnd.View());
  // A helipad has a single end: its list name stands alone.
  if (line.rfind("Heli  ", 0) != 0) {
    line = "Rwy: " + RunwayDesignator(rwy.LowEnd.View()) + " - " + RunwayDesignator(rwy.HighEnd.View());
  }
  line += " / ";
  line += Format(rwy.LengthFeet, "0");
  line += " ft  ";
  line += state.SurfaceKinds[rwy.Surface];
  return line;
}

std::string IlsLine(const IlsRec& ils) {
  std::string line = "ILS ";
  line += ils.Ident.Trimmed();
  line += "  ";
  line += Format(IlsFrequency(ils), "000.000");
  line += "  ";
  line += Format(IlsCourse(ils), "000");
  line += kDegreeSign;
  return line;
}

std::string FrequencyLine(const FrequencyRec& f, const AppState& state) {
  std::string line;
  if (f.Kind >= 1 && f.Kind < state.FrequencyKinds.size() && !state.FrequencyKinds[f.Kind].empty())
    line = state.FrequencyKinds[f.Kind];
  else
    line = f.Name.Trimmed();
  line += ": ";
  line += Format(f.Frequency, "##0.000");
  return line;
}

}  // namespace

std::string LatLonText(double lat, double lon, bool decSec) {
  return LatToText(lat, decSec) + "  " + LonToText(lon, decSec);
}

void AppendAirportLines(const AirportRec& airport, const AppState& state, std::vector<std::string>& lines) {
  const bool decSec = state.Config.DecSec != 0;
  lines.reserve(lines.size() + 5 + airport.Runways.size() + airport.Ils.size() + airport.Frequencies.size());
  lines.push_back(airport.Name.Str() + " (" + airport.Icao.Str() + ")");
  lines.push_back(airport.City + " " + airport.Country + " " + airport.State);
  lines.push_back(Format(airport.Elevation, "0") + " ft");
  lines.push_back(LatLonText(airport.Lat, airport.Lon, decSec));
  lines.emplace_back();
  for (const RunwayRec& rwy : airport.Runways) lines.push_back(RunwayLine(rwy, state));
  for (const IlsRec& ils : airport.Ils) lines.push_back(IlsLine(ils));
  for (const FrequencyRec& f : airport.Frequencies) lines.push_back(FrequencyLine(f, state));
}

std::vector<std::string> AirportInfoLines(const AirportRec& airport, const AppState& state) {
  std::vector<std::string> lines;
  AppendAirportLines(airport, state, lines);
  return lines;
}

void AppendIntersectionLines(const NavaidTables& navaids, int32_t index, bool decSec, std::vector<std::string>& lines) {
  if (index < 0 || static_cast<std::size_t>(index) >= navaids.Intersections.size()) return;
  const IntersectionRec& r = navaids.Intersections[static_cast<std::size_t>(index)];
  lines.push_back("Int " + std::string(ShownName(r)));
  lines.push_back(LatLonText(r.Lat, r.Lon, decSec));
  lines.push_back(AirwayNamesLine("LowAlt: ", navaids.LowAirways(index)));
  lines.push_back(AirwayNamesLine("HighAlt: ", navaids.HighAirways(index)));
}

void AppendFixLines(const FixRec& fix, bool decSec, std::vector<std::string>& lines) {
  lines.push_back("Fix " + std::string(ShownName(fix)));
  lines.push_back(LatLonText(fix.Lat, fix.Lon, decSec));
}

void AppendUserWaypointLines(const UserWaypointRec& waypoint, bool decSec, std::vector<std::string>& lines) {
  lines.push_back("User WP " + std::string(ShownName(waypoint)));
  lines.push_back(LatLonText(waypoint.Lat, waypoint.Lon, decSec));
}

void AppendVorLines(const VorRec& vor, bool decSec, std::vector<std::string>& lines) {
  lines.push_back(std::string(vor.Name.Trimmed()) + "  " + std::string(vor.Ident.Trimmed()));
  lines.push_back(std::to_string(vor.Value2) + " ft");
  lines.push_back(Format(vor.Frequency, "###.00"));
  lines.push_back(LatLonText(vor.Lat, vor.Lon, decSec));
  lines.emplace_back();
  lines.push_back("VOR " + std::string(vor.TypeName.Trimmed()));
}

void AppendNdbLines(const NdbRec& ndb, bool decSec, std::vector<std::string>& lines) {
  lines.push_back(std::string(ndb.Name.Trimmed()) + "  " + std::string(ndb.Ident.Trimmed()));
  lines.push_back(Format(ndb.Frequency, "###.00"));
  lines.push_back(LatLonText(ndb.Lat, ndb.Lon, decSec));
  lines.emplace_back();
  lines.push_back("NDB " + std::string(ndb.TypeName.Trimmed()));
}

void AppendAirspaceLines(const AirspaceRec& a, std::vector<std::string>& lines) {
  const std::pair<const char*, std::string_view> fields[] = {
      {"Name: ", a.Name.Trimmed()},   {"Icao: ", a.Ident.Trimmed()},          {"Ctr: ", a.Name2.Trimmed()},
      {"Frq1: ", a.Text1.Trimmed()},  {"Frq2: ", a.Text2.Trimmed()},          {"Class: ", a.Class.Trimmed()},
      {"UpAlt: ", a.UpperAltitude.Trimmed()}, {"LoAlt: ", a.LowerAltitude.Trimmed()},
  };
  for (const auto& [head, value] : fields) lines.push_back(head + std::string(value));
}

std::string ParkingHoverLine(const ParkingRec& parking, std::span<const std::string> parkingNames) {
  std::string line;
  if (parking.NameCode >= 0 && static_cast<std::size_t>(parking.NameCode) < parkingNames.size())
    line = parkingNames[static_cast<std::size_t>(parking.NameCode)];
  line += ' ';
  line += std::to_string(parking.Number);
  return line;
}

std::string PlanRowHoverLine(const WaypointRec& row, int32_t cruiseFl) {
  const int32_t fl = row.MinAltitude > 0 ? row.MinAltitude / 100 : cruiseFl;
  return std::string(row.Code.Trimmed()) + " (FL" + Format(fl, "000") + ")";
}

}  // namespace orv
