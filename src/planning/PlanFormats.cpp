#include "planning/PlanFormats.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <tuple>

#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/NavLookup.h"
#include "planning/PlanTokens.h"
#include "planning/XmlLite.h"

namespace orv {

namespace {

const WaypointRec& RowAt(const FlightPlan& plan, int r) { return plan.Waypoints[static_cast<std::size_t>(r)]; }
int LastOf(const FlightPlan& plan) { return std::clamp<int>(plan.LastRow, 0, kMaxPlanRow); }

bool IsMapPoint(const WaypointRec& w) { return UCase(Left(w.Code.View(), 4)) == "FIX " || w.Kind.Trimmed() == "Uwp"; }

// An identifier without blanks, as other programs expect one.
std::string IdentOf(const WaypointRec& w) { return Replace(w.Code.Str(), " ", ""); }

std::string Utf8(std::string_view latin1) { return XmlEscape(Latin1ToUtf8(latin1)); }

std::string AirwayOf(const WaypointRec& w) {
  if (static_cast<unsigned char>(w.Airway.chars[0]) < '0') return {};
  return w.Airway.Str();
}

std::string Dec6(double v) { return Format(v, "0.000000"); }

// Trimmed text from a file, in the program's 8-bit form.
std::string FromUtf8(std::string_view text) { return Utf8ToLatin1(Trim(text)); }

ImportedPlan Refused(std::string message) {
  ImportedPlan p;
  p.Error = std::move(message);
  return p;
}

constexpr std::string_view kNeedAirports = "The flight plan must begin and end at an airport!";
constexpr int kMaxImportPoints = kMaxPlanRow - 1;

}  // namespace

// ---------------------------------------------------------------- simulator XML plan

std::string SimXmlPosition(double lat, double lon, double altitudeFeet) {
  auto part = [](double v, char pos, char neg) {
    double a = std::fabs(v);
    // Hundredths of a second first, so that 59.999" never prints as 60.00".
    long long hs = std::llround(a * 360000.0);
    long long deg = hs / 360000;
    long long min = (hs / 6000) % 60;
    double sec = static_cast<double>(hs % 6000) / 100.0;
    return std::string(1, v < 0 ? neg : pos) + std::to_string(deg) + "\xC2\xB0 " + std::to_string(min) + "' " +
           Format(sec, "0.00") + "\"";
  };
  std::string alt = (altitudeFeet < 0 ? "-" : "+") + Format(std::fabs(altitudeFeet), "000000.00");
  return part(lat, 'N', 'S') + "," + part(lon, 'E', 'W') + "," + alt;
}

bool ParseSimXmlPosition(std::string_view text, double& lat, double& lon) {
  auto part = [](std::string_view t, char pos, char neg, double limit, double& out) {
    t = TrimView(t);
    if (t.empty()) return false;
    char h = static_cast<char>(std::toupper(static_cast<unsigned char>(t[0])));
    if (h != pos && h != neg) return false;
    // Degrees, minutes and seconds are the numbers in order; the signs
    // between them (UTF-8 or Latin-1 degree, quote marks) only separate.
    double v[3] = {0, 0, 0};
    int n = 0;
    std::size_t i = 1;
    while (i < t.size() && n < 3) {
      while (i < t.size() && !(std::isdigit(static_cast<unsigned char>(t[i])) || t[i] == '.')) ++i;
      std::size_t b = i;
      while (i < t.size() && (std::isdigit(static_cast<unsigned char>(t[i])) || t[i] == '.')) ++i;
      if (i > b) v[n++] = Val(t.substr(b, i - b));
    }
    if (n == 0 || v[1] >= 60 || v[2] >= 60) return false;
    out = v[0] + v[1] / 60 + v[2] / 3600;
    if (out > limit) return false;
    if (h == neg) out = -out;
    return true;
  };
  std::size_t c1 = text.find(',');
  if (c1 == std::string_view::npos) return false;
  std::size_t c2 = text.find(',', c1 + 1);
  std::string_view lonText = text.substr(c1 + 1, c2 == std::string_view::npos ? std::string_view::npos : c2 - c1 - 1);
  return part(text.substr(0, c1), 'N', 'S', 90, lat) && part(lonText, 'E', 'W', 180, lon);
}

namespace {

std::string_view SimXmlType(const WaypointRec& w) {
  std::string_view k = w.Kind.Trimmed();
  if (k == "VOR") return "VOR";
  if (k == "NDB") return "NDB";
  if (k == "Int" || (k == "Fix" && !IsMapPoint(w))) return "Intersection";
  return "User";
}

std::string_view SimXmlRouteType(const FlightPlan& plan) {
  if (plan.LastRow <= 1 || plan.RouteType == 0) return "Direct";
  if (plan.NetKind == 1) return "HighAlt";
  if (plan.NetKind == 2) return "LowAlt";
  if (plan.NetKind == 3) return "VOR";
  return "Direct";
}

}  // namespace

std::string FormatSimXmlPlan(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo& info) {
  int last = LastOf(plan);
  const WaypointRec& dep = RowAt(plan, 0);
  const WaypointRec& dest = RowAt(plan, last);
  double depElev = nav.AirportElevation(plan.DepartureAirport);
  double destElev = nav.AirportElevation(plan.DestinationAirport);
  std::string t;
  t.reserve(1024 + static_cast<std::size_t>(last) * 320);
  auto el = [&t](int indent, std::string_view name, std::string_view value) {
    t.append(static_cast<std::size_t>(indent) * 4, ' ');
    t += "<" + std::string(name) + ">" + std::string(value) + "</" + std::string(name) + ">\n";
  };
  t += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  t += "<SimBase.Document Type=\"AceXML\" version=\"1,0\">\n";
  el(1, "Descr", "AceXML Document");
  t += "    <FlightPlan.FlightPlan>\n";
  el(2, "Title", Utf8(dep.Code.Str() + " to " + dest.Code.Str()));
  el(2, "FPType", info.Ifr ? "IFR" : "VFR");
  el(2, "RouteType", SimXmlRouteType(plan));
  el(2, "CruisingAlt", std::to_string(static_cast<int64_t>(plan.CruiseFL) * 100));
  el(2, "DepartureID", Utf8(dep.Code.Str()));
  el(2, "DepartureLLA", SimXmlPosition(dep.Lat, dep.Lon, depElev));
  el(2, "DestinationID", Utf8(dest.Code.Str()));
  el(2, "DestinationLLA", SimXmlPosition(dest.Lat, dest.Lon, destElev));
  el(2, "Descr", Utf8(dep.Code.Str() + ", " + dest.Code.Str()));
  el(2, "DeparturePosition", Utf8(UCase(Trim(plan.DepartID))));
  el(2, "DepartureName", Utf8(Trim(nav.AirportName(plan.DepartureAirport))));
  el(2, "DestinationName", Utf8(Trim(nav.AirportName(plan.DestinationAirport))));
  t += "        <AppVersion>\n";
  el(3, "AppVersionMajor", "10");
  el(3, "AppVersionBuild", "61472");
  t += "        </AppVersion>\n";
  for (int r = 0; r <= last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    bool airport = r == 0 || r == last;
    std::string id = Utf8(IdentOf(w));
    t += "        <ATCWaypoint id=\"" + id + "\">\n";
    el(3, "ATCWaypointType", airport ? "Airport" : SimXmlType(w));
    el(3, "WorldPosition", SimXmlPosition(w.Lat, w.Lon, airport ? (r == 0 ? depElev : destElev) : 0));
    if (!airport) {
      std::string airway = AirwayOf(w);
      if (!airway.empty()) el(3, "ATCAirway", Utf8(airway));
      if (w.Origin == kOriginSid) el(3, "DepartureFP", Utf8(info.SidName.empty() ? "SID" : info.SidName));
      if (w.Origin == kOriginStar) el(3, "ArrivalFP", Utf8(info.StarName.empty() ? "STAR" : info.StarName));
    }
    if (airport || SimXmlType(w) != "User") {
      t += "            <ICAO>\n";
      el(4, "ICAOIdent", id);
      t += "            </ICAO>\n";
    }
    t += "        </ATCWaypoint>\n";
  }
  t += "    </FlightPlan.FlightPlan>\n";
  t += "</SimBase.Document>\n";
  return t;
}

ImportedPlan ParseSimXmlPlan(std::string_view text) {
  XmlDocument doc = ParseXml(text);
  if (!doc.Ok()) return Refused("This XML flight plan cannot be read: " + doc.Error + "!");
  if (XmlLocalName(doc.Root().Name) != "SimBase.Document") return Refused(std::string(kNotValidPlan));
  int32_t fp = doc.Child(0, "FlightPlan.FlightPlan");
  if (fp < 0) return Refused(std::string(kNotValidPlan));
  ImportedPlan p;
  p.Ifr = UCase(doc.ChildText(fp, "FPType")) != "VFR";
  p.CruiseAltitude = CLng(Val(doc.ChildText(fp, "CruisingAlt")));
  p.DepartureIcao = FromUtf8(doc.ChildText(fp, "DepartureID"));
  p.DestinationIcao = FromUtf8(doc.ChildText(fp, "DestinationID"));
  std::vector<int32_t> wps = doc.ChildrenNamed(fp, "ATCWaypoint");
  if (wps.size() < 2) return Refused(std::string(kNeedAirports));
  if (static_cast<int>(wps.size()) - 2 > kMaxImportPoints)
    return Refused("This flight plan holds more than " + std::to_string(kMaxImportPoints) + " waypoints!");
  for (std::size_t k = 0; k < wps.size(); ++k) {
    int32_t e = wps[k];
    std::string type = doc.ChildText(e, "ATCWaypointType");
    std::string ident = doc.ChildText(doc.Child(e, "ICAO"), "ICAOIdent");
    if (ident.empty()) ident = doc.Attribute(e, "id");
    bool end = k == 0 || k + 1 == wps.size();
    if (end) {
      if (type != "Airport") return Refused(std::string(kNeedAirports));
      // The header's codes win; the waypoint names the airport when they are missing.
      std::string& code = k == 0 ? p.DepartureIcao : p.DestinationIcao;
      if (code.empty()) code = FromUtf8(ident);
      continue;
    }
    ImportPoint pt;
    pt.Ident = FromUtf8(ident);
    if (!ParseSimXmlPosition(doc.ChildText(e, "WorldPosition"), pt.Lat, pt.Lon))
      return Refused("Waypoint " + std::to_string(k) + " (" + pt.Ident + ") of this flight plan has no valid position!");
    if (type == "VOR") pt.KindHint = "VOR";
    else if (type == "NDB") pt.KindHint = "NDB";
    else if (type == "Intersection") pt.KindHint = "Int";
    else if (type == "User") pt.KindHint = "Uwp";
    pt.Airway = FromUtf8(doc.ChildText(e, "ATCAirway"));
    std::string sid = FromUtf8(doc.ChildText(e, "DepartureFP"));
    std::string star = FromUtf8(doc.ChildText(e, "ArrivalFP"));
    if (!sid.empty()) {
      pt.Origin = kOriginSid;
      p.SidName = sid;
    } else if (!star.empty()) {
      pt.Origin = kOriginStar;
      p.StarName = star;
    }
    p.Points.push_back(std::move(pt));
  }
  return p;
}

// ---------------------------------------------------------------- X-Plane FMS

namespace {

int FmsType(const WaypointRec& w) {
  std::string_view k = w.Kind.Trimmed();
  if (k == "NDB") return 2;
  if (k == "VOR") return 3;
  if (k == "Int" || (k == "Fix" && !IsMapPoint(w))) return 11;
  return 28;
}

std::string FmsLine(int type, std::string_view ident, std::string_view via, double alt, double lat, double lon) {
  return std::to_string(type) + " " + std::string(ident) + " " + std::string(via) + " " + Dec6(alt) + " " + Dec6(lat) +
         " " + Dec6(lon) + "\n";
}

// An identifier X-Plane can hold: no blanks, Latin-1 as UTF-8.
std::string FmsIdent(const WaypointRec& w) { return Latin1ToUtf8(IdentOf(w)); }

}  // namespace

std::string FormatFmsPlan(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo& info) {
  int last = LastOf(plan);
  const WaypointRec& dep = RowAt(plan, 0);
  const WaypointRec& dest = RowAt(plan, last);
  std::string t = "I\n1100 Version\nCYCLE " + (info.Cycle.empty() ? std::string("0000") : info.Cycle) + "\n";
  t += "ADEP " + FmsIdent(dep) + "\n";
  t += "ADES " + FmsIdent(dest) + "\n";
  t += "NUMENR " + std::to_string(last + 1) + "\n";
  t += FmsLine(1, FmsIdent(dep), "ADEP", nav.AirportElevation(plan.DepartureAirport), dep.Lat, dep.Lon);
  for (int r = 1; r < last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    std::string airway = Latin1ToUtf8(Replace(AirwayOf(w), " ", ""));
    t += FmsLine(FmsType(w), FmsIdent(w), airway.empty() ? "DRCT" : airway, 0, w.Lat, w.Lon);
  }
  t += FmsLine(1, FmsIdent(dest), "ADES", nav.AirportElevation(plan.DestinationAirport), dest.Lat, dest.Lon);
  return t;
}

ImportedPlan ParseFmsPlan(std::string_view text) {
  std::vector<std::string_view> lines;
  {
    std::size_t p = 0;
    while (p <= text.size()) {
      std::size_t e = text.find('\n', p);
      if (e == std::string_view::npos) e = text.size();
      std::string_view l = text.substr(p, e - p);
      while (!l.empty() && (l.back() == '\r' || l.back() == ' ' || l.back() == '\t')) l.remove_suffix(1);
      while (!l.empty() && (l.front() == ' ' || l.front() == '\t')) l.remove_prefix(1);
      if (!l.empty()) lines.push_back(l);
      p = e + 1;
    }
  }
  if (lines.size() < 2 || (lines[0] != "I" && lines[0] != "A")) return Refused(std::string(kNotValidPlan));
  std::string version = UCase(lines[1]);
  if (version != "1100 VERSION")
    return Refused("Only X-Plane flight plans of version 1100 can be read; this one is \"" +
                   std::string(lines[1].substr(0, 20)) + "\"!");
  ImportedPlan p;
  struct Raw {
    int type;
    std::string ident, via;
    double lat, lon;
  };
  std::vector<Raw> raws;
  for (std::size_t k = 2; k < lines.size(); ++k) {
    // Fields are separated by blanks or tabs.
    std::vector<std::string_view> f;
    std::string_view l = lines[k];
    std::size_t i = 0;
    while (i < l.size() && f.size() < 8) {
      while (i < l.size() && (l[i] == ' ' || l[i] == '\t')) ++i;
      std::size_t b = i;
      while (i < l.size() && l[i] != ' ' && l[i] != '\t') ++i;
      if (i > b) f.push_back(l.substr(b, i - b));
    }
    if (f.empty()) continue;
    std::string key = UCase(f[0]);
    if (IsPlainNumber(f[0])) {
      if (f.size() < 6 || !IsPlainNumber(f[3]) || !IsPlainNumber(f[4]) || !IsPlainNumber(f[5]))
        return Refused("Line " + std::to_string(k + 1) + " of this X-Plane flight plan cannot be read!");
      double lat = Val(f[4]), lon = Val(f[5]);
      if (lat < -90 || lat > 90 || lon < -180 || lon > 180)
        return Refused("Line " + std::to_string(k + 1) + " of this X-Plane flight plan has no valid position!");
      if (static_cast<int>(raws.size()) >= kMaxImportPoints + 2)
        return Refused("This flight plan holds more than " + std::to_string(kMaxImportPoints) + " waypoints!");
      raws.push_back({CInt(Val(f[0])), FromUtf8(f[1]), UCase(f[2]), lat, lon});
    } else if (f.size() >= 2) {
      if (key == "ADEP") p.DepartureIcao = FromUtf8(f[1]);
      else if (key == "ADES") p.DestinationIcao = FromUtf8(f[1]);
      else if (key == "SID") p.SidName = FromUtf8(f[1]);
      else if (key == "STAR") p.StarName = FromUtf8(f[1]);
    }
  }
  if (p.DepartureIcao.empty() || p.DestinationIcao.empty() || raws.size() < 2 || raws.front().type != 1 ||
      raws.back().type != 1)
    return Refused(std::string(kNeedAirports));
  for (std::size_t k = 1; k + 1 < raws.size(); ++k) {
    const Raw& r = raws[k];
    ImportPoint pt;
    pt.Ident = r.ident;
    pt.Lat = r.lat;
    pt.Lon = r.lon;
    pt.KindHint = r.type == 2 ? "NDB" : r.type == 3 ? "VOR" : r.type == 11 ? "Int" : r.type == 28 ? "Uwp" : "";
    if (r.via != "DRCT" && r.via != "ADEP" && r.via != "ADES") pt.Airway = r.via;
    p.Points.push_back(std::move(pt));
  }
  return p;
}

// ---------------------------------------------------------------- Garmin flight plan

namespace {

std::string_view GarminType(const WaypointRec& w, bool airport) {
  if (airport) return "AIRPORT";
  std::string_view k = w.Kind.Trimmed();
  if (k == "VOR") return "VOR";
  if (k == "NDB") return "NDB";
  if (k == "Int" || (k == "Fix" && !IsMapPoint(w))) return "INT";
  return "USER WAYPOINT";
}

// The schema allows upper-case letters and digits in identifiers and a short
// comment of letters, digits, blanks and "/".
std::string GarminText(std::string_view text, std::size_t max, bool blanks) {
  std::string out;
  for (char c : UCase(text)) {
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || (blanks && (c == ' ' || c == '/'))) out += c;
    if (out.size() >= max) break;
  }
  return out;
}

}  // namespace

std::string FormatGarminFpl(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo&) {
  int last = LastOf(plan);
  struct Entry {
    std::string ident;
    std::string_view type;
    const WaypointRec* w;
  };
  std::vector<Entry> route;
  std::vector<Entry> table;
  for (int r = 0; r <= last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    Entry e{GarminText(w.Code.View(), 12, false), GarminType(w, r == 0 || r == last), &w};
    if (e.ident.empty()) e.ident = "WPT" + std::to_string(r);
    route.push_back(e);
    bool seen = std::any_of(table.begin(), table.end(),
                            [&](const Entry& x) { return x.ident == e.ident && x.type == e.type; });
    if (!seen) table.push_back(e);
  }
  (void)nav;
  std::string t = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  t += "<flight-plan xmlns=\"http://www8.garmin.com/xmlschemas/FlightPlan/v1\">\n";
  t += "  <waypoint-table>\n";
  for (const Entry& e : table) {
    t += "    <waypoint>\n";
    t += "      <identifier>" + e.ident + "</identifier>\n";
    t += "      <type>" + std::string(e.type) + "</type>\n";
    t += "      <country-code></country-code>\n";
    t += "      <lat>" + Dec6(e.w->Lat) + "</lat>\n";
    t += "      <lon>" + Dec6(e.w->Lon) + "</lon>\n";
    t += "      <comment>" + GarminText(e.w->Name.Trimmed(), 25, true) + "</comment>\n";
    t += "    </waypoint>\n";
  }
  t += "  </waypoint-table>\n";
  t += "  <route>\n";
  t += "    <route-name>" + GarminText(RowAt(plan, 0).Code.Str() + " TO " + RowAt(plan, last).Code.Str(), 25, true) +
       "</route-name>\n";
  t += "    <flight-plan-index>1</flight-plan-index>\n";
  for (const Entry& e : route) {
    t += "    <route-point>\n";
    t += "      <waypoint-identifier>" + e.ident + "</waypoint-identifier>\n";
    t += "      <waypoint-type>" + std::string(e.type) + "</waypoint-type>\n";
    t += "      <waypoint-country-code></waypoint-country-code>\n";
    t += "    </route-point>\n";
  }
  t += "  </route>\n";
  t += "</flight-plan>\n";
  return t;
}

ImportedPlan ParseGarminFpl(std::string_view text) {
  XmlDocument doc = ParseXml(text);
  if (!doc.Ok()) return Refused("This Garmin flight plan cannot be read: " + doc.Error + "!");
  if (XmlLocalName(doc.Root().Name) != "flight-plan") return Refused(std::string(kNotValidPlan));
  struct Known {
    std::string ident, type, country, comment;
    double lat, lon;
  };
  std::vector<Known> table;
  for (int32_t e : doc.ChildrenNamed(doc.Child(0, "waypoint-table"), "waypoint")) {
    Known k{doc.ChildText(e, "identifier"), doc.ChildText(e, "type"), doc.ChildText(e, "country-code"),
            doc.ChildText(e, "comment"), 0, 0};
    std::string lat = doc.ChildText(e, "lat"), lon = doc.ChildText(e, "lon");
    if (!IsPlainNumber(lat) || !IsPlainNumber(lon) || std::fabs(Val(lat)) > 90 || std::fabs(Val(lon)) > 180)
      return Refused("Waypoint " + k.ident + " of this Garmin flight plan has no valid position!");
    k.lat = Val(lat);
    k.lon = Val(lon);
    table.push_back(std::move(k));
  }
  std::vector<int32_t> points = doc.ChildrenNamed(doc.Child(0, "route"), "route-point");
  if (points.size() < 2) return Refused(std::string(kNeedAirports));
  if (static_cast<int>(points.size()) - 2 > kMaxImportPoints)
    return Refused("This flight plan holds more than " + std::to_string(kMaxImportPoints) + " waypoints!");
  ImportedPlan p;
  for (std::size_t n = 0; n < points.size(); ++n) {
    int32_t e = points[n];
    std::string ident = doc.ChildText(e, "waypoint-identifier");
    std::string type = doc.ChildText(e, "waypoint-type");
    std::string country = doc.ChildText(e, "waypoint-country-code");
    auto it = std::find_if(table.begin(), table.end(), [&](const Known& k) {
      return k.ident == ident && k.type == type && k.country == country;
    });
    if (it == table.end())
      return Refused("Route point " + FromUtf8(ident) + " is not in the waypoint table of this Garmin flight plan!");
    bool end = n == 0 || n + 1 == points.size();
    if (end) {
      if (type != "AIRPORT") return Refused(std::string(kNeedAirports));
      (n == 0 ? p.DepartureIcao : p.DestinationIcao) = FromUtf8(ident);
      continue;
    }
    ImportPoint pt;
    pt.Ident = FromUtf8(ident);
    pt.Lat = it->lat;
    pt.Lon = it->lon;
    pt.KindHint = type == "VOR" ? "VOR" : type == "NDB" ? "NDB" : type == "INT" ? "Int" : type == "USER WAYPOINT" ? "Uwp" : "";
    pt.Name = FromUtf8(it->comment);
    p.Points.push_back(std::move(pt));
  }
  return p;
}

// ---------------------------------------------------------------- GPX

std::string FormatGpxRoute(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo&) {
  (void)nav;
  int last = LastOf(plan);
  std::string t = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  t += "<gpx version=\"1.1\" creator=\"Orvanta\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n";
  t += "  <rte>\n";
  t += "    <name>" + Utf8(RowAt(plan, 0).Code.Str() + " to " + RowAt(plan, last).Code.Str()) + "</name>\n";
  for (int r = 0; r <= last; ++r) {
    const WaypointRec& w = RowAt(plan, r);
    bool airport = r == 0 || r == last;
    t += "    <rtept lat=\"" + Dec6(w.Lat) + "\" lon=\"" + Dec6(w.Lon) + "\">\n";
    t += "      <name>" + Utf8(w.Code.Str()) + "</name>\n";
    t += "      <desc>" + Utf8(w.Name.Str()) + "</desc>\n";
    t += "      <type>" + std::string(airport ? "Airport" : w.Kind.Trimmed()) + "</type>\n";
    t += "    </rtept>\n";
  }
  t += "  </rte>\n";
  t += "</gpx>\n";
  return t;
}

ImportedPlan ParseGpxRoute(std::string_view text) {
  XmlDocument doc = ParseXml(text);
  if (!doc.Ok()) return Refused("This GPX file cannot be read: " + doc.Error + "!");
  if (XmlLocalName(doc.Root().Name) != "gpx") return Refused(std::string(kNotValidPlan));
  std::vector<int32_t> points = doc.ChildrenNamed(doc.Child(0, "rte"), "rtept");
  if (points.size() < 2) return Refused(std::string(kNeedAirports));
  if (static_cast<int>(points.size()) - 2 > kMaxImportPoints)
    return Refused("This flight plan holds more than " + std::to_string(kMaxImportPoints) + " waypoints!");
  ImportedPlan p;
  for (std::size_t n = 0; n < points.size(); ++n) {
    int32_t e = points[n];
    std::string lat = doc.Attribute(e, "lat"), lon = doc.Attribute(e, "lon");
    ImportPoint pt;
    pt.Ident = FromUtf8(doc.ChildText(e, "name"));
    if (!IsPlainNumber(lat) || !IsPlainNumber(lon) || std::fabs(Val(lat)) > 90 || std::fabs(Val(lon)) > 180)
      return Refused("Route point " + pt.Ident + " of this GPX file has no valid position!");
    pt.Lat = Val(lat);
    pt.Lon = Val(lon);
    pt.Name = FromUtf8(doc.ChildText(e, "desc"));
    std::string type = FromUtf8(doc.ChildText(e, "type"));
    if (n == 0 || n + 1 == points.size()) {
      (n == 0 ? p.DepartureIcao : p.DestinationIcao) = pt.Ident;
      continue;
    }
    if (type == "VOR" || type == "NDB" || type == "Int" || type == "Fix" || type == "Uwp") pt.KindHint = type;
    p.Points.push_back(std::move(pt));
  }
  return p;
}

// ---------------------------------------------------------------- by content

PlanFormat DetectPlanFormat(std::string_view text) {
  std::size_t p = 0;
  if (text.substr(0, 3) == "\xEF\xBB\xBF") p = 3;
  auto skipSpace = [&] {
    while (p < text.size() && (text[p] == ' ' || text[p] == '\t' || text[p] == '\r' || text[p] == '\n')) ++p;
  };
  skipSpace();
  if (p < text.size() && text[p] == '<') {
    // The root element's name, past the declaration and comments.
    while (p < text.size() && text[p] == '<' && p + 1 < text.size() && (text[p + 1] == '?' || text[p + 1] == '!')) {
      std::size_t e = text.find('>', p);
      if (e == std::string_view::npos) return PlanFormat::Unknown;
      p = e + 1;
      skipSpace();
    }
    if (p >= text.size() || text[p] != '<') return PlanFormat::Unknown;
    std::size_t b = p + 1, e = b;
    while (e < text.size() && text[e] != ' ' && text[e] != '>' && text[e] != '/' && text[e] != '\t' &&
           text[e] != '\r' && text[e] != '\n')
      ++e;
    std::string_view root = XmlLocalName(text.substr(b, e - b));
    if (root == "SimBase.Document") return PlanFormat::SimXml;
    if (root == "flight-plan") return PlanFormat::GarminFpl;
    if (root == "gpx") return PlanFormat::Gpx;
    return PlanFormat::Unknown;
  }
  // "I" or "A" alone on the first line, then "<n> Version".
  std::size_t e = text.find('\n', p);
  std::string_view first = TrimView(text.substr(p, e == std::string_view::npos ? std::string_view::npos : e - p));
  if (!first.empty() && first.back() == '\r') first.remove_suffix(1);
  if ((first == "I" || first == "A") && e != std::string_view::npos) {
    std::size_t e2 = text.find('\n', e + 1);
    std::string second = UCase(text.substr(e + 1, e2 == std::string_view::npos ? 40 : std::min<std::size_t>(e2 - e - 1, 40)));
    if (second.find("VERSION") != std::string::npos) return PlanFormat::Fms;
  }
  // The program's own file; a simulator plan without the [ORV] part still
  // goes to its reader, which names what is missing.
  std::string head = UCase(text.substr(0, std::min<std::size_t>(text.size(), 1 << 20)));
  if (head.find("[ORV") != std::string::npos || head.find("[FLIGHTPLAN]") != std::string::npos) return PlanFormat::Orv;
  return PlanFormat::Unknown;
}

bool OpenAnyPlanText(PlanEditor& editor, Ui& ui, std::string_view text, const ProcedureProbe& probe,
                     PlanFileState& state) {
  switch (DetectPlanFormat(text)) {
    case PlanFormat::Orv: return OpenPlanFileText(editor, ui, text, probe, state);
    case PlanFormat::SimXml: return InstallImportedPlan(editor, ui, ParseSimXmlPlan(text), probe, state);
    case PlanFormat::Fms: return InstallImportedPlan(editor, ui, ParseFmsPlan(text), probe, state);
    case PlanFormat::GarminFpl: return InstallImportedPlan(editor, ui, ParseGarminFpl(text), probe, state);
    case PlanFormat::Gpx: return InstallImportedPlan(editor, ui, ParseGpxRoute(text), probe, state);
    case PlanFormat::Unknown: break;
  }
  ui.MsgBox(kNotValidPlan);
  return false;
}

}  // namespace orv
