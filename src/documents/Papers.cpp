#include "documents/Papers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <span>

#include "core/AppState.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "core/Ui.h"
#include "database/NavDatabase.h"
#include "documents/SidView.h"
#include "map/ZoneWatch.h"
#include "planning/Aircraft.h"
#include "planning/DepartureArrival.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/Profile.h"
#include "planning/WPTable.h"

namespace orv {

namespace {

constexpr double kMargin = 1134;  // 2 cm
constexpr double kTop = 900;
constexpr double kBottom = kPaperHeight - 1000;
constexpr double kBodyWidth = kPaperWidth - 2 * kMargin;
constexpr float kBodySize = 10;
// The value column of the label and value blocks.
constexpr double kValueColumn = 2600;

constexpr std::array<const char*, 12> kFrequencyLabels = {"ATIS:",     "Multicom:", "Unicom:",   "CTAF:",
                                                          "Ground:",   "Tower:",    "Delivery:", "Approach:",
                                                          "Departure:", "Center:",  "FSS:",      "ASOS:"};

// Lays out lines from the top of a page down, starting a new page with its
// header line when the next block would not fit.
class PageWriter {
public:
  PageWriter(DrawTarget& t, std::string header) : t_(t), header_(std::move(header)) {}

  int Pages() const { return pages_; }
  double Y() const { return y_; }
  void SetY(double y) { y_ = y; }

  // Room for height more units, else a new page. A page is begun on the
  // first output.
  void Ensure(double height) {
    if (pages_ == 0 || y_ + height > kBottom) NewPage();
  }
  // The next section starts on a page of its own.
  void FreshPage() {
    if (pages_ == 0 || y_ > bodyTop_) NewPage();
  }
  void NewPage() {
    if (pages_ > 0) t_.NewPage();
    ++pages_;
    Font(kBodySize, false);
    t_.SetForeColor(0);
    At(kMargin, kTop, header_, 9, true);
    t_.SetDrawWidth(1);
    const double under = kTop + LineHeight(9) + 60;
    t_.Line(kMargin, under, kPaperWidth - kMargin, under, LineShape::Line, 0);
    const std::string page = "Page " + std::to_string(pages_);
    Font(8, false);
    At(kPaperWidth - kMargin - t_.TextWidth(page), kPaperHeight - 700, page, 8, false);
    y_ = bodyTop_ = under + 240;
    if (onNewPage_) onNewPage_();
  }
  // A call made at the top of every new page (a section's running title).
  void OnNewPage(std::function<void()> fn) { onNewPage_ = std::move(fn); }

  void Font(float size, bool bold) {
    t_.SetFontName("arial");
    t_.SetFontSize(size);
    t_.SetFontBold(bold);
  }
  double LineHeight(float size) {
    Font(size, false);
    return t_.TextHeight("X");
  }
  void At(double x, double y, const std::string& text, float size, bool bold) {
    Font(size, bold);
    t_.SetCurrentX(x);
    t_.SetCurrentY(y);
    t_.Print(text);
  }

  // One line of text at an indent from the margin.
  void Line(const std::string& text, double indent = 0, float size = kBodySize, bool bold = false) {
    const double h = LineHeight(size);
    Ensure(h);
    At(kMargin + indent, y_, text, size, bold);
    y_ += h;
  }
  // Texts on one line at their columns (from the margin).
  void Cells(const std::vector<std::pair<double, std::string>>& cells, bool bold = false) {
    const double h = LineHeight(kBodySize);
    Ensure(h);
    for (const auto& [x, text] : cells) At(kMargin + x, y_, text, kBodySize, bold);
    y_ += h;
  }
  void Pair(const std::string& label, const std::string& value) { Cells({{0, label}, {kValueColumn, value}}); }
  void Gap(double h = 160) { y_ += h; }
  // A text broken into lines of the body's width.
  void Wrapped(const std::string& text, double indent) {
    const double h = LineHeight(kBodySize);
    Ensure(2 * h);
    Font(kBodySize, false);
    y_ = PrintWrapped(t_, kMargin + indent, y_, kBodyWidth - indent, text);
  }
  // The text cut to fit a width.
  std::string Fit(std::string text, double width) {
    Font(kBodySize, false);
    while (!text.empty() && t_.TextWidth(text) > width) text.pop_back();
    return text;
  }
  DrawTarget& Target() { return t_; }

private:
  DrawTarget& t_;
  std::string header_;
  int pages_ = 0;
  double y_ = 0;
  double bodyTop_ = 0;
  std::function<void()> onNewPage_;
};

const AirportRec* AirportAt(const NavDatabase& db, int index) {
  const auto& a = db.Airports.Airports;
  if (index < 0 || index >= static_cast<int>(a.size())) return nullptr;
  return &a[static_cast<std::size_t>(index)];
}

std::string NameAndCode(const AirportRec* ap) {
  if (!ap) return "";
  return ap->Name.Str() + " (" + ap->Icao.Str() + ")";
}

// The first frequency of a kind (1..12), 0 when the airport has none.
float FrequencyOf(const AirportRec& ap, int kind) {
  for (const FrequencyRec& f : ap.Frequencies)
    if (f.Kind == kind) return f.Frequency;
  return 0;
}

std::string RunwayOfLine(const AirportRec* ap, int line) {
  if (!ap || line < 0 || line / 2 >= ap->RunwayCount()) return "";
  const RunwayRec& r = ap->Runways[static_cast<std::size_t>(line / 2)];
  return line % 2 == 0 ? r.LowEnd.Str() : r.HighEnd.Str();
}

void AirportBlock(PageWriter& w, const char* label, const AirportRec* ap, const std::string& runway) {
  if (!ap) return;
  w.Ensure(3 * w.LineHeight(kBodySize));
  w.Line(label + NameAndCode(ap), 0, kBodySize, true);
  const float atis = FrequencyOf(*ap, 1);
  w.Cells({{0, "Rwy " + runway},
           {kValueColumn, "Elevation: " + std::to_string(ap->Elevation) + " ft"},
           {kValueColumn + 2400, "Var: " + VarToText(ap->MagVar)},
           {kValueColumn + 4200, "ATIS: " + (atis > 0 ? Format(atis, "000.000") : std::string("---"))}});
  w.Gap();
}

void FrequencyBlock(PageWriter& w, const char* heading, const AirportRec* ap) {
  if (!ap) return;
  w.Ensure(2 * w.LineHeight(kBodySize));
  w.Line(heading, 0, kBodySize, true);
  for (int kind = 1; kind <= 12; ++kind) {
    const float f = FrequencyOf(*ap, kind);
    if (f > 0) w.Cells({{300, kFrequencyLabels[static_cast<std::size_t>(kind) - 1]}, {kValueColumn, Format(f, "000.000")}});
  }
  w.Gap();
}

void GeneralInformation(PageWriter& w, const PaperSources& s, int depLine, int destLine) {
  const FlightPlan& plan = *s.Plan;
  const NavDatabase& db = *s.Db;
  const AircraftRec& a = *s.Aircraft;
  const AirportRec* dep = AirportAt(db, plan.DepartureAirport);
  const AirportRec* dest = AirportAt(db, plan.DestinationAirport);

  w.Ensure(0);
  w.Pair("Aircraft:", a.AircraftName);
  w.Pair("Distance:", Format(plan.TotalDistance, "####") + " nm");
  w.Pair("Flight time:", MinutesToHours(plan.TotalTime) + " h/m");
  w.Pair("Flight level:", "FL" + Format(plan.CruiseFL, "000"));
  w.Pair("Cruising speed:", std::to_string(a.CruiseSpeed) + " kts");
  w.Gap(240);

  AirportBlock(w, "Departure: ", dep, RunwayOfLine(dep, depLine));
  AirportBlock(w, "Destination: ", dest, RunwayOfLine(dest, destLine));

  w.Gap();
  w.Line("   General Flight Information ", 0, 11, true);
  w.Gap(80);

  // The profile, as the Fuel window and the level choice work it out.
  const double depElev = dep ? dep->Elevation : 0;
  const double destElev = dest ? dest->Elevation : 0;
  const double altitude = static_cast<double>(plan.CruiseFL) * 100;
  const int32_t climbMin = ClimbMinutes(a, depElev, altitude);
  const int32_t descentMin = DescentMinutes(a, destElev, altitude);
  const int32_t climbNm = CLng(ClimbDistance(a, depElev, altitude));
  const int32_t descentNm = CLng(DescentDistance(a, destElev, altitude));
  const int32_t cruiseNm = std::max(0, plan.TotalDistance - climbNm - descentNm);
  const int32_t cruiseMin = std::max(0, plan.TotalTime - climbMin - descentMin);
  w.Line("   Climb:", 0, kBodySize, true);
  w.Line("   " + std::to_string(a.ClimbRate) + " ft/min at " + std::to_string(a.ClimbSpeed) + "kts - " + "requires " +
         std::to_string(climbMin) + " min and " + std::to_string(climbNm) + " nm after takeoff");
  w.Line("   Cruise:", 0, kBodySize, true);
  w.Line("    " + std::to_string(a.CruiseSpeed) + " kts for " + MinutesToHours(cruiseMin) + " h/m  and " +
         std::to_string(cruiseNm) + " nm to final fix");
  w.Line("   Descent to Final Fix:", 0, kBodySize, true);
  w.Line("    " + std::to_string(a.DescentRate) + " ft/min at " + std::to_string(a.DescentSpeed) + "kts; " +
         "beginning at " + std::to_string(descentNm) + " nm from final fix and " +
         MinutesToHours(climbMin + cruiseMin) + " h/m after takeoff");
  w.Gap();

  // Fuel and the alternate, as the Fuel window shows them.
  const AppState& state = *s.State;
  const int fuelType = state.Config.Fuel < kFuelUnitFactors.size() ? state.Config.Fuel : 2;
  std::optional<NavLookupDb> own;
  const NavLookup& nav = s.Nav ? *s.Nav : own.emplace(db, state.ParkingNames);
  SilentUi quiet;
  FuelWindow fuel;
  const bool haveFuel = fuel.Load(quiet, plan, a, nav, fuelType);
  w.Line("   Fuel (in " + state.FuelUnits[static_cast<std::size_t>(fuelType)] + "):", 0, kBodySize, true);
  if (haveFuel) {
    w.Cells({{300, "Total: " + fuel.TotalVfrBox},
             {2300, "   Climb: " + fuel.ClimbFuelBox},
             {4300, "Cruise: " + fuel.CruiseFuelBox},
             {6100, "Descent: " + fuel.DescentFuelBox},
             {7900, "Approach: " + fuel.ApproachFuelBox}});
  } else {
    w.Line("   the aircraft lacks the values the fuel calculation needs", 300);
  }
  w.Gap();

  const AlternateResult alt = haveFuel ? fuel.Alternate : FindAlternate(nav, plan.DestLat, plan.DestLon, a.MinRunway);
  if (!alt.Found) {
    w.Line("   no alternate airport available within 150 nm");
  } else {
    const AirportRec* ap = AirportAt(db, alt.Airport);
    const float atis = ap ? FrequencyOf(*ap, 1) : 0;
    w.Ensure(3 * w.LineHeight(kBodySize));
    w.Line("   Alternate Airport:", 0, kBodySize, true);
    w.Line("   " + alt.Name + " (" + alt.Icao + ")");
    w.Line("   Distance: " + Format(alt.Distance, "###") + "NM" + "   -  Course: " + Format(alt.Course, "000") + "\xB0" +
           "   -  Elevation: " + std::to_string(ap ? ap->Elevation : 0) + "ft" + "   -  ATIS: " +
           (atis > 0 ? Format(atis, "000.000") : std::string("---")));
  }
  w.Gap();

  FrequencyBlock(w, "Departure Frequencies:", dep);
  FrequencyBlock(w, "Arrival Frequencies:", dest);
}

void RoutePages(PageWriter& w, const PaperSources& s, int depLine, int destLine) {
  FrmSID frm(*s.Db, *s.Plan, *s.Aircraft);
  if (!frm.Load()) return;
  w.FreshPage();
  w.Line("Departure and Arrival Routes", 0, 12, true);
  w.Gap();
  // Each view: its heading, its sentence and its picture.
  auto view = [&](const char* heading, int line) {
    if (frm.lstRwy.empty()) {
      // Nothing to word without a runway.
      const AirportRec* ap = frm.ViewAirport();
      w.Line(std::string(frm.ShowDeparture ? "   Departure for " : "   Arrival for ") + (ap ? ap->Name.Str() : ""), 0,
             kBodySize, true);
      w.Line("no runway of this airport is known", 300);
      w.Gap();
      return;
    }
    if (line >= 0) frm.lstRwyClick(line);
    const double pictureHeight = 5600;
    w.Ensure(3 * w.LineHeight(kBodySize) + pictureHeight);
    w.Line(heading + frm.RwyName, 0, kBodySize, true);
    w.Wrapped(frm.Message, 300);
    w.Gap(120);
    const ViewBox box{kMargin + 300, w.Y(), kBodyWidth - 300, pictureHeight};
    DrawSidView(w.Target(), box, frm, *s.Db, s.State->Config, true);
    w.SetY(box.Y + box.Height + 300);
  };
  view("   Departure for Rwy ", depLine);
  frm.cmdSIDSTAR();
  view("   Arrival for Rwy ", destLine);
}

void WaypointPages(PageWriter& w, const PaperSources& s) {
  const FlightPlan& plan = *s.Plan;
  std::string kind;
  if (plan.NetKind == 1) kind = "(High Altitude Airways)";
  else if (plan.NetKind == 2) kind = "(Low Altitude Airways)";
  else if (plan.NetKind == 3) kind = "(Navaid to Navaid)";
  const std::string title = "Waypoints " + plan.Waypoints[0].Code.Str() + " - " +
                            plan.Waypoints[static_cast<std::size_t>(plan.LastRow)].Code.Str() + ": " + kind;
  static const std::vector<double> x = {0, 1200, 5700, 6700, 8000, 9000};
  auto heading = [&] {
    w.Line(title, 0, 11, true);
    w.Gap(80);
    w.Cells({{x[0], "Code"}, {x[1], "Name"}, {x[2], "Freq"}, {x[3], "Course"}, {x[4], "Distance"}, {x[5], "Time"}}, true);
    w.Target().SetDrawWidth(1);
    w.Target().Line(kMargin, w.Y() + 20, kPaperWidth - kMargin, w.Y() + 20, LineShape::Line, 0);
    w.Gap(80);
  };
  w.FreshPage();
  w.OnNewPage(heading);
  heading();
  int32_t minutes = 0;
  for (int r = 0; r <= plan.LastRow; ++r) {
    const WaypointRec& row = plan.Waypoints[static_cast<std::size_t>(r)];
    const bool last = r == plan.LastRow && r >= 1;
    const bool withLeg = r >= 1 && (last || row.Origin == kOriginEnroute || row.Origin == kOriginStar ||
                                    row.Origin == kOriginSid);
    const float magVar = last ? plan.Waypoints[static_cast<std::size_t>(r) - 1].MagVar : row.MagVar;
    // The running time, rounded after every row as the plan table does.
    minutes = CLng(static_cast<double>(minutes) + row.LegTime);
    w.Cells({{x[0], row.Code.Str()},
             {x[1], w.Fit(NameCellText(row, false, true), x[2] - x[1] - 120)},
             {x[2], row.Frequency != 0 ? FreqCellText(row.Frequency) : std::string()},
             {x[3], withLeg ? CourseCellText(row.Course, magVar) : std::string()},
             {x[4], withLeg ? DistanceCellText(row.LegDistance) : std::string()},
             {x[5], MinutesToHours(minutes)}});
  }
  w.OnNewPage(nullptr);
}

void ControlZonePages(PageWriter& w, const PaperSources& s) {
  const FlightPlan& plan = *s.Plan;
  const NavDatabase& db = *s.Db;
  int page = 0;
  auto heading = [&] {
    ++page;
    w.Line("Control Zone Information - Page: " + std::to_string(page), 0, 11, true);
    w.Gap(80);
  };
  w.FreshPage();
  w.OnNewPage(heading);
  heading();
  for (int r = 1; r <= plan.LastRow; ++r) {
    const WaypointRec& from = plan.Waypoints[static_cast<std::size_t>(r) - 1];
    const WaypointRec& to = plan.Waypoints[static_cast<std::size_t>(r)];
    const std::vector<int> crossed = CrossedAirspaces(db, from.Lat, from.Lon, to.Lat, to.Lon);
    w.Ensure(2 * w.LineHeight(kBodySize));
    w.Line("Leg: " + from.Name.Str() + " to " + to.Name.Str() + " crossing:", 0, kBodySize, true);
    if (crossed.empty()) w.Line("none", 600);
    for (int i : crossed) {
      const AirspaceRec& a = db.Shapes.Airspaces[static_cast<std::size_t>(i)];
      const std::string name = a.Name.Str().empty() ? a.Class.Str() : a.Name.Str();
      w.Line(name + " (" + a.Ident.Str() + ")", 600);
    }
    w.Gap(80);
  }
  w.OnNewPage(nullptr);
}

bool InsideOutline(std::span<const ShapePoint> pts, double lat, double lon) {
  bool in = false;
  for (std::size_t i = 0, j = pts.size() - 1; i < pts.size(); j = i++) {
    const double yi = pts[i].Lat, yj = pts[j].Lat, xi = pts[i].Lon, xj = pts[j].Lon;
    if ((yi > lat) != (yj > lat) && lon < (xj - xi) * (lat - yi) / (yj - yi) + xi) in = !in;
  }
  return in;
}

}  // namespace

std::vector<int> CrossedAirspaces(const NavDatabase& db, float lat1, float lon1, float lat2, float lon2) {
  std::vector<int> out;
  const AirspaceTables& t = db.Shapes;
  const float north = std::max(lat1, lat2), south = std::min(lat1, lat2);
  const float east = std::max(lon1, lon2), west = std::min(lon1, lon2);
  for (std::size_t i = 0; i < t.Airspaces.size(); ++i) {
    const AirspaceRec& a = t.Airspaces[i];
    if (a.Ident.IsEmptySlot() || a.PointCount < 3) continue;
    if (a.South > north || a.North < south || a.West > east || a.East < west) continue;
    const std::string cls = UCase(a.Class.Trimmed());
    // The regions every leg lies in tell the pilot nothing here.
    if (cls == "FIR" || cls == "UIR" || cls == "ACC" || cls == "ARTCC" || cls == "OCA") continue;
    const std::size_t first = a.First, count = static_cast<std::size_t>(a.PointCount);
    if (first > t.AirspacePoints.size() || count > t.AirspacePoints.size() - first) continue;
    std::span<const ShapePoint> pts(t.AirspacePoints.data() + first, count);
    bool hit = InsideOutline(pts, lat1, lon1) || InsideOutline(pts, lat2, lon2);
    for (std::size_t k = 0; !hit && k + 1 < count; ++k)
      hit = SegmentsCross(lon1, lat1, lon2, lat2, pts[k].Lon, pts[k].Lat, pts[k + 1].Lon, pts[k + 1].Lat);
    if (hit) out.push_back(static_cast<int>(i));
  }
  return out;
}

std::string PaperHeaderLine(const PaperSources& s) {
  const AirportRec* dep = AirportAt(*s.Db, s.Plan->DepartureAirport);
  const AirportRec* dest = AirportAt(*s.Db, s.Plan->DestinationAirport);
  const std::string depName = dep ? dep->Name.Str() : s.Plan->Waypoints[0].Name.Str();
  const std::string depCode = dep ? dep->Icao.Str() : s.Plan->Waypoints[0].Code.Str();
  const WaypointRec& last = s.Plan->Waypoints[static_cast<std::size_t>(s.Plan->LastRow)];
  const std::string destName = dest ? dest->Name.Str() : last.Name.Str();
  const std::string destCode = dest ? dest->Icao.Str() : last.Code.Str();
  return "Orvanta Flight Plan" + std::string(5, ' ') + depName + " (" + depCode + ") to " + destName + " (" + destCode +
         ")";
}

int BestRunwayLine(const NavDatabase& db, int airport, double course) {
  const AirportRec* ap = AirportAt(db, airport);
  if (!ap || ap->Runways.empty()) return -1;
  int best = 0;
  double bestDiff = 1000;
  for (int r = 0; r < ap->RunwayCount(); ++r) {
    // Helipads ("H1", "00H") are no runways to depart from.
    const RunwayRec& rwy = ap->Runways[static_cast<std::size_t>(r)];
    if (rwy.LowEnd.Trimmed().find('H') != std::string_view::npos || rwy.LengthFeet < 1000) continue;
    const double low = rwy.TrueHeading;
    const double ends[2] = {low, Wrap360(low + 180)};
    for (int e = 0; e < 2; ++e) {
      const double d = AngleDiff(ends[e], course);
      if (d < bestDiff) bestDiff = d, best = 2 * r + e;
    }
  }
  return best;
}

int PrintFP::cmdOK(DrawTarget& printer, const PaperSources& s) const {
  if (!s.Plan || !s.Db || !s.Aircraft || !s.State || s.Plan->LastRow < 1) return 0;
  const FlightPlan& plan = *s.Plan;
  printer.SetScaleWidth(kPaperWidth);
  printer.SetScaleHeight(kPaperHeight);
  printer.SetFontName("arial");
  printer.SetForeColor(0);
  PageWriter w(printer, PaperHeaderLine(s));

  int depLine = s.DepRunwayLine;
  int destLine = s.DestRunwayLine;
  if (depLine < 0) depLine = BestRunwayLine(*s.Db, plan.DepartureAirport, plan.Waypoints[1].Course);
  if (destLine < 0)
    destLine = BestRunwayLine(*s.Db, plan.DestinationAirport, plan.Waypoints[static_cast<std::size_t>(plan.LastRow)].Course);

  if (chckGFI) {
    GeneralInformation(w, s, depLine, destLine);
    RoutePages(w, s, depLine, destLine);
  }
  if (chckWPList) WaypointPages(w, s);
  if (chckCtrz) ControlZonePages(w, s);
  return w.Pages();
}

}  // namespace orv
