#include "planning/PlanFile.h"

#include <algorithm>
#include <cmath>

#include "core/FileIo.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "core/Ui.h"
#include "planning/NavLookup.h"
#include "planning/PlanTokens.h"
#include "planning/WPTable.h"

namespace orv {

namespace {

constexpr std::string_view kEol = "\r\n";

const WaypointRec& RowAt(const FlightPlan& plan, int r) { return plan.Waypoints[static_cast<std::size_t>(r)]; }

// The simulator's form of an airport: "EDDF, N50* 01.98', E008* 34.26', +000364.00".
std::string AirportIdText(const WaypointRec& w, double elevation) {
  return w.Code.Str() + ", " + LatToPlanText(w.Lat) + LonToPlanText(w.Lon) + "+" + Format(elevation, "000000.00");
}

std::string AirportWaypointLine(int n, const WaypointRec& w, double elevation) {
  std::string code = w.Code.Str();
  return "waypoint." + std::to_string(n) + "=, " + code + ", , " + code + ", A, " + LatToPlanText(w.Lat) +
         LonToPlanText(w.Lon) + "+" + Format(elevation, "000000.00") + ",";
}

// Appended in place: a thousand rows are written without a temporary text
// per field.
void AppendRowWaypointLine(std::string& t, int n, const WaypointRec& w, bool plainForm) {
  std::string_view code = w.Code.Trimmed();
  std::string_view kind = w.Kind.Trimmed();
  t += "waypoint.";
  t += std::to_string(n);
  t += "=KK, ";
  t += code;
  if (kind == "NDB") {
    t += ",  , ";
    t += code;
    if (!plainForm) t += " " + Format(w.Frequency, "###0.00");
    t += ", N, ";
  } else if (kind == "VOR") {
    t += ", , ";
    t += code;
    if (!plainForm) t += " " + Format(w.Frequency, "##0.00");
    t += ", V, ";
  } else {
    t += ", , ";
    t += code;
    t += ",  I, ";
  }
  t += LatToPlanText(w.Lat);
  t += LonToPlanText(w.Lon);
  t += "+000000.00,";
}

bool HasAirway(const WaypointRec& w) { return static_cast<unsigned char>(w.Airway.chars[0]) >= '0'; }

}  // namespace

void AppendWpLine(std::string& t, int n, const WaypointRec& w) {
  auto field = [&t](std::string_view v) {
    t += ',';
    t += v;
  };
  t += "WP=";
  t += std::to_string(n);
  field(w.Kind.Trimmed());
  field(w.Code.Trimmed());
  field(w.Name.Trimmed());
  field(Format(w.Lat, "##0.0000"));
  field(Format(w.Lon, "##0.0000"));
  field(Format(w.Frequency, "##0.00"));
  field(Format(w.Course, "##0.0000"));
  field(Format(w.MagVar, "##0.000"));
  field(std::to_string(w.Origin));
  field(std::to_string(w.DbIndex));
  if (HasAirway(w)) {
    field(w.Airway.Trimmed());
    if (w.MinAltitude >= 0 && w.MaxAltitude > 0) {
      field(Format(w.MinAltitude, "00000"));
      field(Format(w.MaxAltitude, "00000"));
    }
  }
}

std::string FormatWpLine(int n, const WaypointRec& w) {
  std::string line;
  AppendWpLine(line, n, w);
  return line;
}

std::string FormatPlanFile(const FlightPlan& plan, const NavLookup& nav, const PlanWriteOptions& options) {
  int last = std::clamp<int>(plan.LastRow, 0, kMaxPlanRow);
  const WaypointRec& dep = RowAt(plan, 0);
  const WaypointRec& dest = RowAt(plan, last);
  double depElev = nav.AirportElevation(plan.DepartureAirport);
  double destElev = nav.AirportElevation(plan.DestinationAirport);
  int routeType = last == 1 ? 0 : plan.RouteType;
  std::string departType = Trim(plan.DepartType).empty() ? "Rwy" : plan.DepartType;

  std::string t;
  t.reserve(256 + static_cast<std::size_t>(last) * 200);
  auto line = [&t](std::string_view a, std::string_view b = {}) {
    t.append(a);
    t.append(b);
    t.append(kEol);
  };
  line("[Flightplan]");
  line("AppVersion=9.1.40901");
  line("title=", dep.Code.Str() + " to " + std::string(dest.Code.View()));
  line("description=", std::string(dep.Code.View()) + ", " + std::string(dest.Code.View()));
  line("type=", options.Ifr ? "IFR" : "VFR");
  line("routetype=", std::to_string(routeType));
  line("cruising_altitude=", std::to_string(static_cast<int64_t>(plan.CruiseFL) * 100));
  line("departure_id=", AirportIdText(dep, depElev));
  line("departure_position=", UCase(plan.DepartID));
  line("destination_id=", AirportIdText(dest, destElev));
  line("departure_name=", Trim(nav.AirportName(plan.DepartureAirport)));
  line("destination_name=", Trim(nav.AirportName(plan.DestinationAirport)));
  line("alternate_name=");
  line(AirportWaypointLine(0, dep, depElev));
  for (int r = 1; r < last; ++r) {
    AppendRowWaypointLine(t, r, RowAt(plan, r), options.PlainForm);
    t += kEol;
  }
  if (last >= 1) line(AirportWaypointLine(last, dest, destElev));
  line("");
  line("[ORV]");
  line("DepartAPCode=", dep.Code.View());
  line("DepartNum=", std::to_string(plan.DepartNum));
  line("DepartID=", plan.DepartID);
  line("DepartType=", departType);
  line("DestAPCode=", dest.Code.View());
  line("RouteType=", std::to_string(routeType));
  line("SID=", options.SidLabel);
  line("STAR=", options.StarLabel);
  for (int r = 1; r < last; ++r) {
    AppendWpLine(t, r, RowAt(plan, r));
    t += kEol;
  }
  return t;
}

// ---------------------------------------------------------------- reading

namespace {

std::string_view After(std::string_view token, std::string_view key) { return token.substr(key.size()); }

}  // namespace

PlanFileData ParsePlanFile(std::string_view text) {
  PlanFileData d;
  std::vector<std::string_view> tokens = SplitPlanTokens(text);
  bool orv = false;
  bool haveDep = false, haveDest = false;
  std::size_t i = 0;
  auto starts = [](std::string_view t, std::string_view k) { return t.substr(0, k.size()) == k; };
  while (i < tokens.size()) {
    std::string_view t = tokens[i];
    if (starts(t, "WP=")) {
      if (static_cast<int>(d.Rows.size()) >= kMaxPlanFileRows) {
        d.Error = "This flight plan holds more than " + std::to_string(kMaxPlanFileRows) +
                  " waypoints and cannot be opened!";
        return d;
      }
      WaypointRec w;
      std::string err = ReadWpFields(tokens, i, w);
      if (!err.empty()) {
        d.Error = err;
        return d;
      }
      d.Rows.push_back(w);
      continue;
    }
    if (starts(t, "[ORV")) orv = true;
    else if (starts(t, "DepartAPCode=")) d.DepartAPCode = Trim(After(t, "DepartAPCode=")), haveDep = true;
    else if (starts(t, "DepartNum=")) d.DepartNum = CInt(Val(After(t, "DepartNum=")));
    else if (starts(t, "DepartID=")) d.DepartID = std::string(After(t, "DepartID="));
    else if (starts(t, "DepartType=")) d.DepartType = Trim(After(t, "DepartType="));
    else if (starts(t, "DestAPCode=")) d.DestAPCode = Trim(After(t, "DestAPCode=")), haveDest = true;
    // Older files carry the destination runway; it is read past and dropped.
    else if (starts(t, "DestRwy=") || starts(t, "DestRwyID=") || starts(t, "DestRwyHead=")) {}
    else if (starts(t, "RouteType=")) d.RouteType = CByte(Val(After(t, "RouteType=")));
    else if (starts(t, "SID=")) d.Sid = std::string(After(t, "SID="));
    else if (starts(t, "STAR=")) d.Star = std::string(After(t, "STAR="));
    ++i;
  }
  if (!orv || !haveDep || !haveDest) d.Error = std::string(kNotValidPlan);
  return d;
}

// ---------------------------------------------------------------- into memory

int FindAirportLast(const NavLookup& nav, std::string_view code) { return nav.FindAirportLast(code); }

namespace {

WaypointRec AirportRowFrom(const NavLookup& nav, int airport) {
  WaypointRec w;
  float lat = 0, lon = 0;
  nav.AirportPosition(airport, lat, lon);
  w.Code.Assign(Trim(nav.AirportIcao(airport)));
  w.Name.Assign(Trim(nav.AirportName(airport)));
  w.Lat = lat;
  w.Lon = lon;
  w.DbIndex = airport;
  w.Origin = kOriginAirport;
  return w;
}

// A fresh plan with both airports, the take-off point from the stored
// departure position.
FlightPlan NewPlanBetween(const NavLookup& nav, int dep, int dest, std::string_view departType, int16_t departNum,
                          std::string_view departId) {
  FlightPlan p;
  p.DepartureAirport = dep;
  p.DestinationAirport = dest;
  p.DepartNum = departNum;
  p.DepartID = std::string(departId);
  p.DepartType = std::string(departType);
  p.Waypoints[0] = AirportRowFrom(nav, dep);
  p.Waypoints[1] = AirportRowFrom(nav, dest);
  p.LastRow = 1;
  p.DepartLat = p.Waypoints[0].Lat;
  p.DepartLon = p.Waypoints[0].Lon;
  if (departType == "Rwy" && departNum >= 0 && departNum < nav.RunwayCount(dep)) {
    RunwayInfo rwy = nav.Runway(dep, departNum);
    p.DepartLat = rwy.Lat;
    p.DepartLon = rwy.Lon;
    p.DepartHeading = rwy.TrueHeading;
  } else if (departType == "Gate" && departNum >= 0 && departNum < nav.ParkingCount(dep)) {
    ParkingInfo park = nav.Parking(dep, departNum);
    p.DepartLat = park.Lat;
    p.DepartLon = park.Lon;
  }
  p.DestLat = p.Waypoints[1].Lat;
  p.DestLon = p.Waypoints[1].Lon;
  return p;
}

// SID rows sit right behind the departure, STAR rows right ahead of the
// destination; the counts follow from the rows' origins.
void CountProcedureRows(FlightPlan& p) {
  p.SidRows = 0;
  p.StarRows = 0;
  for (int r = 1; r < p.LastRow && RowAt(p, r).Origin == kOriginSid; ++r) ++p.SidRows;
  for (int r = p.LastRow - 1; r > p.SidRows && RowAt(p, r).Origin == kOriginStar; --r) ++p.StarRows;
}

// The new plan takes the place of the old one; table, departure list, totals
// and labels follow it.
void Install(PlanEditor& editor, FlightPlan&& fresh, uint8_t routeType, const ProcedureProbe& probe,
             std::string_view sid, std::string_view star, PlanFileState& state) {
  const NavLookup& nav = editor.Nav();
  FlightPlan& plan = editor.Plan();
  plan = std::move(fresh);
  plan.CurrentRow = -1;
  CountProcedureRows(plan);
  editor.FillDepartureList();
  PlanPanel& panel = editor.Panel();
  int index = -1;
  if (plan.DepartNum < 0) index = -1;
  else if (plan.DepartType == "Rwy") index = plan.DepartNum;
  else if (plan.DepartType == "Gate") index = 2 * nav.RunwayCount(plan.DepartureAirport) + plan.DepartNum;
  panel.DepListIndex = index >= 0 && index < static_cast<int>(panel.DepList.size()) ? index : -1;
  panel.RouteLabel.clear();
  editor.SetDirectPlan(plan.LastRow);
  plan.RouteType = routeType;
  state.SidLabel = std::string(sid);
  state.StarLabel = std::string(star);
  std::string depCode = RowAt(plan, 0).Code.Str();
  std::string destCode = RowAt(plan, plan.LastRow).Code.Str();
  state.Menu.OpenSidEnabled = probe.HasSid && probe.HasSid(depCode);
  state.Menu.OpenStarEnabled = probe.HasStar && probe.HasStar(destCode);
}

// Both airports by code, or the message for the first that is missing.
bool FindBothAirports(const NavLookup& nav, Ui& ui, std::string_view depCode, std::string_view destCode, int& dep,
                      int& dest) {
  dep = FindAirportLast(nav, depCode);
  dest = FindAirportLast(nav, destCode);
  if (dep < 0) {
    ui.MsgBox(Trim(depCode) + std::string(kNotInDatabase));
    return false;
  }
  if (dest < 0) {
    ui.MsgBox(Trim(destCode) + std::string(kNotInDatabase));
    return false;
  }
  return true;
}

}  // namespace

bool OpenPlanFileText(PlanEditor& editor, Ui& ui, std::string_view text, const ProcedureProbe& probe,
                      PlanFileState& state) {
  PlanFileData d = ParsePlanFile(text);
  if (!d.Error.empty()) {
    ui.MsgBox(d.Error);
    return false;
  }
  const NavLookup& nav = editor.Nav();
  int dep, dest;
  if (!FindBothAirports(nav, ui, d.DepartAPCode, d.DestAPCode, dep, dest)) return false;

  FlightPlan fresh = NewPlanBetween(nav, dep, dest, d.DepartType, d.DepartNum, d.DepartID);
  int n = static_cast<int>(d.Rows.size());
  for (int r = 0; r < n; ++r) fresh.Waypoints[static_cast<std::size_t>(r) + 1] = d.Rows[static_cast<std::size_t>(r)];
  fresh.Waypoints[static_cast<std::size_t>(n) + 1] = AirportRowFrom(nav, dest);
  fresh.LastRow = static_cast<int16_t>(n + 1);
  // The legs follow from the positions; a scratch editor computes them on the
  // new plan so that the old one is untouched until the swap.
  PlanPanel scratch;
  PlanEditor(fresh, scratch, editor.Aircraft(), nav).ComputeLegs(1);
  Install(editor, std::move(fresh), d.RouteType, probe, d.Sid, d.Star, state);
  return true;
}

namespace {

bool KindMatches(std::string_view hint, std::string_view kind) { return hint.empty() || hint == kind; }

// Distance for the match radius: flat over a few miles, and well defined for
// a point on top of another (where the great-circle formula loses itself in
// rounding).
double NearNm(double lat1, double lon1, double lat2, double lon2) {
  double dLon = std::remainder(lon2 - lon1, 360.0);
  double dx = dLon * 60 * std::cos((lat1 + lat2) / 2 * 3.14159265358979323846 / 180);
  double dy = (lat2 - lat1) * 60;
  return std::sqrt(dx * dx + dy * dy);
}

WaypointRec MatchPoint(const NavLookup& nav, const ImportPoint& p, std::vector<WaypointRec>& scratch) {
  scratch.clear();
  std::string ident = UCase(Trim(p.Ident));
  if (!ident.empty()) nav.FindByIdent(ident, scratch);
  const WaypointRec* best = nullptr;
  double bestNm = kImportMatchNm;
  // The kind the file names wins over a nearer object of another kind.
  for (int pass = 0; pass < 2 && !best; ++pass) {
    for (const WaypointRec& c : scratch) {
      if (pass == 0 && !KindMatches(p.KindHint, c.Kind.Trimmed())) continue;
      double nm = NearNm(p.Lat, p.Lon, c.Lat, c.Lon);
      if (nm <= bestNm) {
        bestNm = nm;
        best = &c;
      }
    }
  }
  WaypointRec w;
  if (best) {
    w = *best;
  } else {
    // Nothing of that name near: the point stays where the file put it.
    w.Kind.Assign("Uwp");
    w.Code.Assign(ident.empty() ? std::string("WPT") : ident);
    w.Name.Assign(p.Name.empty() ? w.Code.Str() : p.Name);
    w.Lat = CSng(p.Lat);
    w.Lon = CSng(p.Lon);
    w.DbIndex = -1;
  }
  w.Origin = p.Origin;
  w.Airway.Assign(p.Airway);
  return w;
}

}  // namespace

bool InstallImportedPlan(PlanEditor& editor, Ui& ui, const ImportedPlan& imported, const ProcedureProbe& probe,
                         PlanFileState& state) {
  if (!imported.Error.empty()) {
    ui.MsgBox(imported.Error);
    return false;
  }
  if (static_cast<int>(imported.Points.size()) > kMaxPlanRow - 1) {
    ui.MsgBox("This flight plan holds more than " + std::to_string(kMaxPlanRow - 1) +
              " waypoints and cannot be opened!");
    return false;
  }
  const NavLookup& nav = editor.Nav();
  int dep, dest;
  if (!FindBothAirports(nav, ui, imported.DepartureIcao, imported.DestinationIcao, dep, dest)) return false;
  FlightPlan fresh = NewPlanBetween(nav, dep, dest, "", 0, "");
  PlanPanel scratch;
  PlanEditor builder(fresh, scratch, editor.Aircraft(), nav);
  std::vector<WaypointRec> candidates;
  int row = 0;
  for (const ImportPoint& p : imported.Points) {
    if (!builder.InsertWaypoint(row, MatchPoint(nav, p, candidates), false)) break;
    ++row;
  }
  fresh.CruiseFL = imported.CruiseAltitude / 100;
  uint8_t routeType = fresh.LastRow > 1 ? 1 : 0;
  Install(editor, std::move(fresh), routeType, probe, imported.SidName, imported.StarName, state);
  return true;
}

bool SaveUserFile(Ui& ui, const std::string& path, std::string_view text) {
  if (WriteFileAtomic(path, text)) return true;
  ui.MsgBox("Could not write " + path + "!");
  return false;
}

}  // namespace orv
