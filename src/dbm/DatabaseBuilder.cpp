#include "dbm/DatabaseBuilder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <set>
#include <unordered_map>

#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "dbm/IcaoPrefixes.h"

namespace orv::dbm {

namespace {

constexpr double kEarthRadiusNm = 3440.065;
constexpr std::size_t kKeptNotes = 5;
// The radius of a VOR's compass rose in NM, stored as VorRec::Value (see
// docs/dbm-mapping.md): 2 NM draws the rose (51 units or more) at every
// label below 200 even in the smallest map window, and keeps its 16-bit
// radius below 32767 at label 1 in pictures up to 1090 pixels tall.
constexpr float kVorRoseNm = 2.0f;

double Radians(double deg) { return deg * std::numbers::pi / 180.0; }

int16_t Clamp16(double v) {
  if (!(v > -32768)) return v != v ? 0 : -32768;
  if (v > 32767) return 32767;
  return static_cast<int16_t>(std::lround(v));
}

bool Contains(std::string_view text, std::string_view word) { return text.find(word) != std::string_view::npos; }

// The navaid's own name without the kind words the source puts behind it
// ("FRANKFURT VOR-DME" -> "FRANKFURT").
std::string PlainName(std::string_view name) {
  static constexpr std::string_view kKindWords[] = {"VOR-DME", "VORTAC", "VOR/DME", "VOR", "TACAN", "DME",
                                                    "NDB-DME", "NDB",    "LOM",     "LMM", "NDB/DME"};
  std::string s = Trim(name);
  for (bool changed = true; changed;) {
    changed = false;
    for (std::string_view w : kKindWords) {
      if (s.size() > w.size() && s.compare(s.size() - w.size(), w.size(), w) == 0 &&
          s[s.size() - w.size() - 1] == ' ') {
        s = Trim(std::string_view(s).substr(0, s.size() - w.size()));
        changed = true;
      }
    }
  }
  return s;
}

// Newer X-Plane files are UTF-8, older ones 8-bit: the database holds the
// 8-bit code page, so text that is valid UTF-8 with non-ASCII characters is
// converted and anything else is kept as it is.
bool IsUtf8WithHighChars(std::string_view s) {
  bool high = false;
  for (std::size_t i = 0; i < s.size();) {
    auto c = static_cast<unsigned char>(s[i]);
    std::size_t n = c < 0x80 ? 1 : (c & 0xE0) == 0xC0 ? 2 : (c & 0xF0) == 0xE0 ? 3 : (c & 0xF8) == 0xF0 ? 4 : 0;
    if (n == 0 || i + n > s.size()) return false;
    for (std::size_t k = 1; k < n; ++k)
      if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
    high = high || n > 1;
    i += n;
  }
  return high;
}

std::string CodePage(std::string_view s) { return IsUtf8WithHighChars(s) ? Utf8ToLatin1(s) : std::string(s); }

std::string MeaText(int hundreds) {
  if (hundreds <= 0) return std::string();
  long feet = static_cast<long>(hundreds) * 100;
  if (feet > 99999) feet = 99999;
  return std::to_string(feet);
}

std::string NodeKey(std::string_view ident, double lat, double lon) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "|%ld|%ld", std::lround(lat * 1e4), std::lround(lon * 1e4));
  return std::string(ident) + buf;
}

void Note(BuiltDatabase& out, std::map<std::string, int>& seen, const std::string& kind, const std::string& text) {
  ++out.LeftOut;
  if (seen[kind]++ < static_cast<int>(kKeptNotes)) out.Notes.push_back(text);
}

}  // namespace

double DistanceNm(double lat1, double lon1, double lat2, double lon2) {
  double p1 = Radians(lat1), p2 = Radians(lat2), dl = Radians(lon2 - lon1);
  double a = std::sin((p2 - p1) / 2) * std::sin((p2 - p1) / 2) +
             std::cos(p1) * std::cos(p2) * std::sin(dl / 2) * std::sin(dl / 2);
  return 2 * kEarthRadiusNm * std::asin(std::sqrt(std::min(1.0, a)));
}

std::vector<ShapePoint> CirclePoints(double lat, double lon, double radiusNm) {
  std::vector<ShapePoint> points;
  points.reserve(36);
  double dLat = radiusNm / 60.0;
  double cosLat = std::max(0.01, std::cos(Radians(lat)));
  for (int i = 0; i < 36; ++i) {
    double a = Radians(i * 10.0);
    points.push_back({static_cast<float>(lat + dLat * std::cos(a)),
                      static_cast<float>(lon + dLat * std::sin(a) / cosLat)});
  }
  return points;
}

uint8_t SurfaceCode(int s) {
  if (s == 1 || (s >= 20 && s <= 38)) return 4;   // asphalt
  if (s == 2 || (s >= 50 && s <= 57)) return 0;   // concrete
  switch (s) {
    case 3: return 1;     // turf or grass
    case 4: return 12;    // dirt
    case 5: return 14;    // gravel
    case 12: return 7;    // dry lakebed
    case 13: return 2;    // water
    case 14: return 8;    // snow or ice
    default: return 254;  // transparent or unknown
  }
}

uint8_t FrequencyKind(int row, std::string_view name) {
  std::string upper = UCase(name);
  switch (row) {
    case 50: return Contains(upper, "ASOS") || Contains(upper, "AWOS") ? 12 : 1;
    case 51:
      if (Contains(upper, "CTAF")) return 4;
      if (Contains(upper, "MULTICOM")) return 2;
      return 3;
    case 52: return 7;
    case 53: return 5;
    case 54: return 6;
    case 55: return Contains(upper, "CENTER") || Contains(upper, "CTR") ? 10 : 8;
    case 56: return 9;
    default: return 3;
  }
}

ParkingCodes ParkingFor(const SrcParking& p) {
  ParkingCodes c;
  std::string name = UCase(Trim(p.Name));
  if (p.Gate) {
    bool heavy = Contains(p.Aircraft, "heavy"), jets = Contains(p.Aircraft, "jets");
    if (p.Operation == "cargo") c.Kind = 5;
    else if (p.Operation == "military") c.Kind = Contains(p.Aircraft, "fighters") ? 7 : 6;
    else if (p.Type == "gate") c.Kind = heavy ? 10 : jets ? 9 : 8;
    else if (p.Type == "tie_down") c.Kind = heavy || jets ? 4 : Contains(p.Aircraft, "turboprops") ? 3 : 2;
    else if (p.Type == "misc") c.Kind = 13;
    else c.Kind = 1;  // hangar
  } else {
    c.Kind = Contains(name, "GATE") ? 9 : Contains(name, "CARGO") ? 5 : 1;
  }
  // The number: the last run of digits in the name.
  std::size_t end = name.find_last_of("0123456789");
  std::size_t begin = end;
  if (end != std::string::npos) {
    while (begin > 0 && std::isdigit(static_cast<unsigned char>(name[begin - 1]))) --begin;
    c.Number = static_cast<int32_t>(std::min<long>(std::strtol(name.substr(begin, end - begin + 1).c_str(), nullptr, 10), 999999));
  }
  // A letter standing right before the number names the gate row ("A12",
  // "Gate B 7"); a dock is a dock; other gates and stands are plain gates.
  bool gateKind = c.Kind >= 8 && c.Kind <= 10;
  char letter = 0;
  if (end != std::string::npos) {
    std::size_t i = begin;
    while (i > 0 && name[i - 1] == ' ') --i;
    if (i > 0 && name[i - 1] >= 'A' && name[i - 1] <= 'Z' && (i == 1 || !std::isalpha(static_cast<unsigned char>(name[i - 2]))))
      letter = name[i - 1];
  }
  if (Contains(name, "DOCK")) c.NameCode = 11;
  else if (letter && (gateKind || Contains(name, "GATE") || name.size() <= 4)) c.NameCode = 12 + (letter - 'A');
  else if (gateKind || Contains(name, "GATE") || Contains(name, "STAND")) c.NameCode = 10;
  else c.NameCode = 1;
  std::string ident = Trim(p.Name);
  if (ident.size() > 5) ident = c.Number ? std::to_string(c.Number) : ident.substr(0, 5);
  if (ident.size() > 5) ident = ident.substr(ident.size() - 5);
  c.Ident = ident;
  return c;
}

int16_t VorTypeCode(int row, std::string_view name, bool withDme) {
  std::string upper = UCase(name);
  if (Contains(upper, "VORTAC")) return 2;
  if (Contains(upper, "TACAN")) return 3;
  if (row == kVor) return Contains(upper, "DME") || withDme ? 4 : 1;
  return 9;  // a DME standing alone
}

std::string StoredDesignator(std::string_view designator, bool helipad) {
  std::string d = UCase(Trim(designator));
  if (helipad) {
    if (!d.empty() && d[0] == 'H') d.erase(0, 1);
    return ("00H" + d).substr(0, 5);
  }
  static constexpr std::pair<std::string_view, std::string_view> kCompass[] = {
      {"N", "37"}, {"NE", "38"}, {"E", "39"}, {"SE", "40"}, {"S", "41"}, {"SW", "42"}, {"W", "43"}, {"NW", "44"}};
  for (auto [from, to] : kCompass)
    if (d == from) return std::string(to);
  return d.substr(0, 5);
}

// ------------------------------------------------------------------ build

namespace {

struct Place {
  double Lat = 0, Lon = 0;
};

bool AirportPosition(const SrcAirport& a, Place& at) {
  if (a.HasDatum) {
    at = {a.DatumLat, a.DatumLon};
    return true;
  }
  if (!a.Runways.empty()) {
    double lat = 0, lon = 0;
    for (const SrcRunway& r : a.Runways) lat += r.Lat, lon += r.Lon;
    at = {lat / a.Runways.size(), lon / a.Runways.size()};
    return true;
  }
  if (a.HasTower) {
    at = {a.TowerLat, a.TowerLon};
    return true;
  }
  if (!a.Parking.empty()) {
    at = {a.Parking[0].Lat, a.Parking[0].Lon};
    return true;
  }
  return false;
}

struct Hierarchy {
  std::set<std::string> regions;
  std::map<std::string, std::string> countries;           // name -> region
  std::map<std::pair<std::string, std::string>, bool> states;  // (state, country)
  std::map<std::tuple<std::string, std::string, std::string>, bool> cities;
};

// The airports worth a record, sorted by ICAO code: the program's loaders
// never sort. An ident that does not fit, or one seen before, is left out.
std::vector<const SrcAirport*> AirportOrder(const XPlaneSources& src, BuiltDatabase& out,
                                            std::map<std::string, int>& seen) {
  std::vector<std::pair<std::string, const SrcAirport*>> keyed;
  keyed.reserve(src.Airports.size());
  std::unordered_map<std::string, const SrcAirport*> byIcao;
  for (const SrcAirport& a : src.Airports) {
    if (a.Icao.empty() || a.Icao.size() > 5) {
      Note(out, seen, "airport ident", "airport at line " + std::to_string(a.Line) + ": ident \"" + a.Icao +
                                           "\" does not fit the 5 characters of the database");
      continue;
    }
    auto [it, fresh] = byIcao.emplace(UCase(a.Icao), &a);
    if (!fresh) {
      Note(out, seen, "airport twice", "airport " + a.Icao + " at line " + std::to_string(a.Line) +
                                           ": the ident was used before; the first one is kept");
      continue;
    }
    keyed.emplace_back(it->first, &a);
  }
  std::sort(keyed.begin(), keyed.end(), [](const auto& x, const auto& y) { return x.first < y.first; });
  std::vector<const SrcAirport*> order;
  order.reserve(keyed.size());
  for (const auto& k : keyed) order.push_back(k.second);
  return order;
}

// The ILS family of nav.dat, grouped by airport.
struct IlsFamily {
  std::unordered_map<std::string, std::vector<const SrcNavaid*>> Ils, GlideSlopes;
};

IlsFamily GroupIls(const XPlaneSources& src) {
  IlsFamily f;
  for (const SrcNavaid& n : src.Navaids) {
    if (n.Row == kIls || n.Row == kLoc) f.Ils[UCase(n.Airport)].push_back(&n);
    else if (n.Row == kGlideSlope) f.GlideSlopes[UCase(n.Airport)].push_back(&n);
  }
  return f;
}

// The airport's own fields and its place in the region, country, state and
// city lists.
void PlaceAirport(const SrcAirport& s, Place at, const MagVarGrid& grid, Hierarchy& h, AirportRec& a) {
  a.Icao.Assign(UCase(s.Icao));
  a.Name.Assign(CodePage(s.Name).substr(0, 40));
  a.Lat = static_cast<float>(at.Lat);
  a.Lon = static_cast<float>(at.Lon);
  a.Elevation = s.ElevationFeet;
  a.MagVar = static_cast<float>(MagVarAt(grid, at.Lat, at.Lon));
  PlaceOfPrefix place = PlaceOfIdent(a.Icao.Str(), at.Lat, at.Lon);
  std::string country = s.Country.empty() ? std::string(place.Country) : CodePage(s.Country);
  std::string region = std::string(place.Region);
  if (region.empty() && !s.RegionCode.empty()) region = std::string(PlaceOfIdent(s.RegionCode + "AA", at.Lat, at.Lon).Region);
  if (country.empty()) country = "Unknown";
  if (region.empty()) region = "Unknown";
  a.Country = country.substr(0, 40);
  a.State = CodePage(s.State).substr(0, 40);
  a.City = CodePage(s.City).substr(0, 40);
  h.regions.insert(region.substr(0, 30));
  h.countries.emplace(a.Country, region.substr(0, 30));
  if (!a.State.empty()) h.states[{a.State, a.Country}] = true;
  if (!a.City.empty()) h.cities[{a.City, a.State, a.Country}] = true;
}

void AddRunwaysFrequenciesParking(const SrcAirport& s, AirportRec& a) {
  for (const SrcRunway& r : s.Runways) {
    RunwayRec w;
    bool heli = r.Kind == RunwayKind::Helipad;
    w.LowEnd.Assign(StoredDesignator(r.End1, heli));
    std::string high = heli ? w.LowEnd.Str()
                            : (r.End2.empty() ? RunwayOpposite(w.LowEnd.Str()) : StoredDesignator(r.End2, false));
    w.HighEnd.Assign(high);
    w.Lat = static_cast<float>(r.Lat);
    w.Lon = static_cast<float>(r.Lon);
    w.TrueHeading = static_cast<float>(r.TrueHeading);
    w.LengthFeet = Clamp16(r.LengthFeet);
    w.WidthFeet = Clamp16(r.WidthFeet);
    w.Surface = SurfaceCode(r.Surface);
    a.Runways.push_back(w);
  }
  for (const SrcFrequency& f : s.Frequencies) {
    FrequencyRec w;
    w.Ident.Assign(a.Icao.Str());
    w.Name.Assign(CodePage(f.Name).substr(0, 30));
    w.Frequency = static_cast<float>(f.KHz / 1000.0);
    w.Kind = FrequencyKind(f.Row, f.Name);
    a.Frequencies.push_back(w);
  }
  for (const SrcParking& p : s.Parking) {
    ParkingCodes c = ParkingFor(p);
    ParkingRec w;
    w.Ident.Assign(c.Ident);
    w.Lat = static_cast<float>(p.Lat);
    w.Lon = static_cast<float>(p.Lon);
    w.Number = c.Number;
    w.Kind = c.Kind;
    w.NameCode = c.NameCode;
    w.Value = static_cast<int32_t>(std::lround(std::fmod(std::fmod(p.Heading, 360.0) + 360.0, 360.0))) % 360;
    a.Parking.push_back(w);
  }
}

// ILS and localizers of the airport, tied to their runway ends.
void AddIls(const IlsFamily& family, int32_t airportIndex, AirportRec& a) {
  auto ils = family.Ils.find(std::string(a.Icao.Trimmed()));
  if (ils == family.Ils.end()) return;
  auto gs = family.GlideSlopes.find(std::string(a.Icao.Trimmed()));
  for (const SrcNavaid* n : ils->second) {
    IlsRec w;
    w.Airport = airportIndex;
    w.Ident.Assign(n->Ident.substr(0, 5));
    w.Name.Assign(n->Name.substr(0, 40));
    w.Runway.Assign(StoredDesignator(n->Runway, false));
    // The order the map and the hover text read: frequency, true course,
    // glide slope angle (0: localizer only), then position, elevation, range.
    w.Values[0] = static_cast<float>(n->Frequency / 100.0);
    w.Values[1] = static_cast<float>(std::fmod(n->Extra, 360.0));
    if (gs != family.GlideSlopes.end())
      for (const SrcNavaid* g : gs->second)
        if (g->Ident == n->Ident) w.Values[2] = static_cast<float>(std::floor(g->Extra / 1000.0) / 100.0);
    w.Values[3] = static_cast<float>(n->Lat);
    w.Values[4] = static_cast<float>(n->Lon);
    w.Values[5] = static_cast<float>(n->ElevationFeet);
    w.Values[6] = static_cast<float>(n->RangeNm);
    w.Ident2 = w.Ident;
    for (RunwayRec& r : a.Runways) {
      if (r.LowEnd.Trimmed() == w.Runway.Trimmed()) r.LowIls = w.Ident;
      else if (r.HighEnd.Trimmed() == w.Runway.Trimmed()) r.HighIls = w.Ident;
    }
    a.Ils.push_back(w);
  }
}

// Ground layout: taxiway segments and pavement outlines.
void AddGroundLayout(const SrcAirport& s, AirspaceTables& shapes) {
  for (const SrcTaxiSegment& x : s.Taxiways) {
    TaxiRec w;
    w.Lat1 = static_cast<float>(x.Lat1);
    w.Lon1 = static_cast<float>(x.Lon1);
    w.Lat2 = static_cast<float>(x.Lat2);
    w.Lon2 = static_cast<float>(x.Lon2);
    w.Name.Assign(x.Name.substr(0, 8));
    w.Width = Clamp16(x.WidthFeet);
    shapes.TaxiSegments.push_back(w);
  }
  for (const auto& ring : s.Pavements) {
    if (ring.size() < 3) continue;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      GroundPolyRec g;
      g.Kind.Assign(i == 0 ? "F" : "L");
      g.Lat = static_cast<float>(ring[i].Lat);
      g.Lon = static_cast<float>(ring[i].Lon);
      shapes.GroundPolygons.push_back(g);
    }
  }
}

void StoreHierarchy(const Hierarchy& h, AirportTables& t) {
  for (const std::string& r : h.regions) t.Regions.push_back(r);
  for (const auto& [name, region] : h.countries) t.Countries.push_back({name, region});
  for (const auto& [k, _] : h.states) t.States.push_back({k.first, k.second});
  for (const auto& [k, _] : h.cities) t.Cities.push_back({std::get<0>(k), std::get<1>(k), std::get<2>(k)});
  t.RegionCount = static_cast<int32_t>(t.Regions.size());
  t.CountryCount = static_cast<int32_t>(t.Countries.size());
  t.StateCount = static_cast<int32_t>(t.States.size());
  t.CityCount = static_cast<int32_t>(t.Cities.size());
  t.AirportFileCount = static_cast<int32_t>(t.Airports.size());
}

// Weather stations: the airports with a four-letter code, in alphabetical order.
std::string WxStationsText(const AirportTables& t) {
  std::string wx;
  wx.reserve(t.Airports.size() * 24);
  for (const AirportRec& a : t.Airports) {
    std::string_view icao = a.Icao.Trimmed();
    if (icao.size() != 4 || !std::all_of(icao.begin(), icao.end(), [](char c) { return c >= 'A' && c <= 'Z'; }))
      continue;
    char buf[64];
    std::snprintf(buf, sizeof buf, ",%.4f,%.4f\r\n", a.Lat, a.Lon);
    wx.append(icao).append(buf);
  }
  return wx;
}

// Control zones derived from the tower frequencies.
void DeriveControlZones(BuiltDatabase& out, std::map<std::string, int>& seen) {
  const AirportTables& t = out.Db.Airports;
  for (std::size_t i = 0; i < t.Airports.size(); ++i) {
    const AirportRec& a = t.Airports[i];
    bool tower = std::any_of(a.Frequencies.begin(), a.Frequencies.end(), [](const FrequencyRec& f) { return f.Kind == 6; });
    if (!tower) continue;
    if (out.Db.Shapes.Airspaces.size() > static_cast<std::size_t>(kLastAirspaceIndex)) {
      Note(out, seen, "zones", "control zone of " + a.Icao.Str() + ": the airspace table is full (15001 zones)");
      continue;
    }
    AirspaceRec z;
    z.Index = static_cast<int16_t>(out.Db.Shapes.Airspaces.size());
    z.Class.Assign("CTR");
    z.Ident.Assign(std::string(a.Icao.Trimmed().substr(0, 4)));
    z.Name.Assign(a.Name.Str().substr(0, 38));
    z.Name2.Assign("Derived 5 NM zone");
    z.LowerAltitude.Assign("GND");
    z.UpperAltitude.Assign(std::to_string((a.Elevation + 2500 + 99) / 100 * 100));
    auto pts = CirclePoints(a.Lat, a.Lon, 5.0);
    AddAirspace(out.Db.Shapes, z, pts);
    ++out.ControlZones;
  }
}

void BuildAirports(const XPlaneSources& src, const MagVarGrid& grid, const BuildOptions& options, BuiltDatabase& out,
                   std::map<std::string, int>& seen) {
  AirportTables& t = out.Db.Airports;
  const std::vector<const SrcAirport*> order = AirportOrder(src, out, seen);
  const IlsFamily ils = GroupIls(src);
  Hierarchy h;
  t.Airports.clear();
  t.Airports.reserve(order.size());
  for (const SrcAirport* sp : order) {
    const SrcAirport& s = *sp;
    Place at;
    if (!AirportPosition(s, at)) {
      Note(out, seen, "airport position", "airport " + s.Icao + " at line " + std::to_string(s.Line) +
                                              ": no runway, datum, tower or parking gives its position");
      continue;
    }
    AirportRec a;
    PlaceAirport(s, at, grid, h, a);
    AddRunwaysFrequenciesParking(s, a);
    AddIls(ils, static_cast<int32_t>(t.Airports.size()), a);
    AddGroundLayout(s, out.Db.Shapes);
    t.Airports.push_back(std::move(a));
  }
  // The map closes a ground polygon at the next record that is not "L": one
  // end record closes the last one.
  if (!out.Db.Shapes.GroundPolygons.empty()) {
    GroundPolyRec end = out.Db.Shapes.GroundPolygons.back();
    end.Kind.Assign("E");
    out.Db.Shapes.GroundPolygons.push_back(end);
  }
  StoreHierarchy(h, t);
  out.WxStations = WxStationsText(t);
  if (options.DeriveControlZones) DeriveControlZones(out, seen);
}

float MagVarOf(const MagVarGrid& grid, double lat, double lon) { return static_cast<float>(MagVarAt(grid, lat, lon)); }

VorRec MakeVor(const SrcNavaid& n, int16_t typeCode, const MagVarGrid& grid) {
  VorRec v;
  v.Ident.Assign(n.Ident.substr(0, 10));
  v.Name.Assign(PlainName(CodePage(n.Name)).substr(0, 20));
  v.Lat = static_cast<float>(n.Lat);
  v.Lon = static_cast<float>(n.Lon);
  v.Frequency = static_cast<float>(n.Frequency / 100.0);
  v.MagVar = MagVarOf(grid, n.Lat, n.Lon);
  v.Value = kVorRoseNm;
  v.TypeCode = typeCode;
  v.TypeName = VorTypeName(v.TypeCode);
  return v;
}

// The DMEs that stand with a VOR or NDB of the same ident (within 3 NM)
// mark it in hasDme; the others stand alone and become VOR records of
// their own.
std::vector<const SrcNavaid*> PairDmes(const XPlaneSources& src, std::vector<char>& hasDme) {
  std::unordered_map<std::string, std::vector<std::size_t>> vorsByIdent, ndbsByIdent;
  for (std::size_t i = 0; i < src.Navaids.size(); ++i) {
    const SrcNavaid& n = src.Navaids[i];
    if (n.Row == kVor) vorsByIdent[n.Ident].push_back(i);
    if (n.Row == kNdb) ndbsByIdent[n.Ident].push_back(i);
  }
  hasDme.assign(src.Navaids.size(), 0);
  std::vector<const SrcNavaid*> loneDmes;
  for (const SrcNavaid& n : src.Navaids) {
    if (n.Row != kDme && n.Row != kDmeStandalone) continue;
    if (Contains(UCase(n.Name), "ILS") || Contains(UCase(n.Name), "LOC") || !n.Runway.empty()) continue;
    bool paired = false;
    for (auto* list : {&vorsByIdent, &ndbsByIdent}) {
      auto it = list->find(n.Ident);
      if (it == list->end()) continue;
      for (std::size_t i : it->second)
        if (DistanceNm(n.Lat, n.Lon, src.Navaids[i].Lat, src.Navaids[i].Lon) < 3.0) hasDme[i] = 1, paired = true;
    }
    if (!paired) loneDmes.push_back(&n);
  }
  return loneDmes;
}

// VORs and NDBs, with the DMEs that stand with them folded in, and the
// marker beacons.
void BuildRadioNavaids(const XPlaneSources& src, const MagVarGrid& grid, BuiltDatabase& out) {
  NavaidTables& nav = out.Db.Navaids;
  std::vector<char> hasDme;
  const std::vector<const SrcNavaid*> loneDmes = PairDmes(src, hasDme);
  for (std::size_t i = 0; i < src.Navaids.size(); ++i) {
    const SrcNavaid& n = src.Navaids[i];
    if (n.Row == kVor) {
      nav.Vors.push_back(MakeVor(n, VorTypeCode(kVor, n.Name, hasDme[i] != 0), grid));
    } else if (n.Row == kNdb) {
      NdbRec d;
      d.Ident.Assign(n.Ident.substr(0, 10));
      d.Name.Assign(PlainName(CodePage(n.Name)).substr(0, 20));
      d.Lat = static_cast<float>(n.Lat);
      d.Lon = static_cast<float>(n.Lon);
      d.Frequency = static_cast<float>(n.Frequency);
      d.MagVar = MagVarOf(grid, n.Lat, n.Lon);
      d.Value = static_cast<float>(n.RangeNm);
      d.TypeText.Assign(hasDme[i] ? "7" : "5");
      d.TypeName = NdbTypeName(d.TypeText);
      nav.Ndbs.push_back(d);
    } else if (n.Row == kOuterMarker || n.Row == kMiddleMarker || n.Row == kInnerMarker) {
      MarkerRec m;
      m.Kind.Assign(n.Row == kOuterMarker ? "OM" : n.Row == kMiddleMarker ? "MM" : "IM");
      m.Lat = static_cast<float>(n.Lat);
      m.Lon = static_cast<float>(n.Lon);
      m.Heading = static_cast<float>(std::fmod(n.Extra, 360.0));
      out.Db.Shapes.Markers.push_back(m);
    }
  }
  for (const SrcNavaid* n : loneDmes) nav.Vors.push_back(MakeVor(*n, VorTypeCode(n->Row, n->Name, true), grid));
  std::stable_sort(nav.Vors.begin(), nav.Vors.end(), [](const VorRec& a, const VorRec& b) { return a.Ident.View() < b.Ident.View(); });
  std::stable_sort(nav.Ndbs.begin(), nav.Ndbs.end(), [](const NdbRec& a, const NdbRec& b) { return a.Ident.View() < b.Ident.View(); });
}

// GPS fixes: every fix of the source.
void BuildFixes(const XPlaneSources& src, const MagVarGrid& grid, BuiltDatabase& out, std::map<std::string, int>& seen) {
  NavaidTables& nav = out.Db.Navaids;
  nav.Fixes.reserve(src.Fixes.size());
  for (const SrcFix& f : src.Fixes) {
    if (f.Ident.empty() || f.Ident.size() > 5) {
      Note(out, seen, "fix ident", "fix \"" + f.Ident + "\": the ident does not fit the 5 characters of the database");
      continue;
    }
    FixRec w;
    w.Country.Assign(f.Region.substr(0, 2));
    w.Ident.Assign(f.Ident);
    w.Name.Assign(f.Ident);
    w.Lat = static_cast<float>(f.Lat);
    w.Lon = static_cast<float>(f.Lon);
    w.MagVar = MagVarOf(grid, f.Lat, f.Lon);
    nav.Fixes.push_back(w);
  }
  std::stable_sort(nav.Fixes.begin(), nav.Fixes.end(), [](const FixRec& a, const FixRec& b) { return a.Ident.View() < b.Ident.View(); });
}

// A point of the intersection table: an airway end or a fix off the airways.
struct Node {
  std::string Ident;
  std::string Region;
  std::string Name;
  double Lat = 0, Lon = 0;
  bool OnAirway = false;
  int32_t Slot = -1;
  std::vector<AirwayLinkRec> Low, High;
};

struct AirwaySegment {
  int From, To;
  const SrcAirway* Src;
};

// The airway ends and the fixes off the airways as nodes (one per ident and
// position), and the airway segments between them.
struct AirwayGraph {
  std::vector<Node> Nodes;
  std::unordered_map<std::string, int> NodeOf;  // NodeKey -> index in Nodes
  std::vector<AirwaySegment> Segments;
};

// What an airway row names an end by (ident, region and kind) gives its
// position and, for a navaid, its name.
struct EndFinder {
  std::unordered_map<std::string, Place> Where;
  std::unordered_map<std::string, std::string> NavName;

  explicit EndFinder(const XPlaneSources& src) {
    for (const SrcFix& f : src.Fixes) Where.emplace(f.Ident + "|" + f.Region + "|11", Place{f.Lat, f.Lon});
    for (const SrcNavaid& n : src.Navaids)
      if (n.Row == kVor || n.Row == kNdb) Where.emplace(n.Ident + "|" + n.Region + "|" + std::to_string(n.Row), Place{n.Lat, n.Lon});
    for (const SrcNavaid& n : src.Navaids)
      if (n.Row == kVor || n.Row == kNdb) NavName.emplace(NodeKey(n.Ident, n.Lat, n.Lon), PlainName(CodePage(n.Name)));
  }
};

// The node of an airway end, made on first sight; false when the end is
// neither a fix nor a navaid of the sources.
bool NodeOfEnd(const SrcAirwayEnd& e, const EndFinder& finder, AirwayGraph& g, int& id) {
  Place p{e.Lat, e.Lon};
  if (!e.HasPosition) {
    auto it = finder.Where.find(e.Ident + "|" + e.Region + "|" + std::to_string(e.Kind));
    if (it == finder.Where.end()) return false;
    p = it->second;
  }
  std::string key = NodeKey(e.Ident, p.Lat, p.Lon);
  auto [it, fresh] = g.NodeOf.emplace(key, static_cast<int>(g.Nodes.size()));
  if (fresh) {
    Node n;
    n.Ident = e.Ident;
    n.Region = e.Region;
    n.Lat = p.Lat;
    n.Lon = p.Lon;
    n.OnAirway = true;
    auto name = finder.NavName.find(key);
    n.Name = name != finder.NavName.end() ? name->second : e.Ident;
    g.Nodes.push_back(std::move(n));
  }
  id = it->second;
  return true;
}

void BuildAirwayGraph(const XPlaneSources& src, AirwayGraph& g, BuiltDatabase& out, std::map<std::string, int>& seen) {
  const EndFinder finder(src);
  g.Segments.reserve(src.Airways.size());
  for (const SrcAirway& a : src.Airways) {
    if (a.From.Ident.size() > 5 || a.To.Ident.size() > 5 || a.Name.size() > 8) {
      Note(out, seen, "airway ident", "airway " + a.Name + " " + a.From.Ident + "-" + a.To.Ident +
                                          ": an ident is wider than the database holds");
      continue;
    }
    int f = 0, t = 0;
    if (!NodeOfEnd(a.From, finder, g, f) || !NodeOfEnd(a.To, finder, g, t)) {
      Note(out, seen, "airway end", "airway " + a.Name + " " + a.From.Ident + "-" + a.To.Ident +
                                        ": an end is neither a fix nor a navaid of the sources");
      continue;
    }
    if (f == t) continue;
    g.Segments.push_back({f, t, &a});
  }
  // Fixes off the airways fill the slots the airways leave.
  for (const SrcFix& f : src.Fixes) {
    if (f.Terminal || f.Ident.empty() || f.Ident.size() > 5) continue;
    std::string key = NodeKey(f.Ident, f.Lat, f.Lon);
    if (g.NodeOf.count(key)) continue;
    g.NodeOf.emplace(key, static_cast<int>(g.Nodes.size()));
    Node n;
    n.Ident = f.Ident;
    n.Region = f.Region;
    n.Name = f.Ident;
    n.Lat = f.Lat;
    n.Lon = f.Lon;
    g.Nodes.push_back(std::move(n));
  }
}

// Slots. When there are more points than the 40001 slots, the airway
// points are chosen first (each group by ident), so that no airway loses a
// node to a fix off the airways. The chosen points are then stored south to
// north: the navaid plan scans the intersections from near its last hit in
// the direction of the leg, and a table sorted by latitude makes the first
// hit of that scan the point nearest the route rather than the
// alphabetically first one.
void AssignSlots(AirwayGraph& g, BuiltDatabase& out, std::map<std::string, int>& seen) {
  std::vector<Node>& nodes = g.Nodes;
  std::vector<int> order(nodes.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i);
  if (order.size() > kIntersectionSlots) {
    std::sort(order.begin(), order.end(), [&](int x, int y) {
      const Node& a = nodes[x];
      const Node& b = nodes[y];
      if (a.OnAirway != b.OnAirway) return a.OnAirway;
      if (a.Ident != b.Ident) return a.Ident < b.Ident;
      if (a.Lat != b.Lat) return a.Lat < b.Lat;
      return a.Lon < b.Lon;
    });
    int64_t airwayNodesLeft = 0;
    for (std::size_t i = kIntersectionSlots; i < order.size(); ++i) airwayNodesLeft += nodes[order[i]].OnAirway;
    if (airwayNodesLeft)
      Note(out, seen, "slots", std::to_string(airwayNodesLeft) + " airway points found no intersection slot (40001 at most)");
    order.resize(kIntersectionSlots);
  }
  std::sort(order.begin(), order.end(), [&](int x, int y) {
    const Node& a = nodes[x];
    const Node& b = nodes[y];
    if (a.Lat != b.Lat) return a.Lat < b.Lat;
    if (a.Lon != b.Lon) return a.Lon < b.Lon;
    return a.Ident < b.Ident;
  });
  for (std::size_t i = 0; i < order.size(); ++i) nodes[order[i]].Slot = static_cast<int32_t>(i);
}

// The airway segments between slotted nodes, and the links each node keeps
// to its neighbours in the directions the airway may be flown.
void StoreAirways(AirwayGraph& g, NavaidTables& nav) {
  for (const AirwaySegment& s : g.Segments) {
    Node& a = g.Nodes[s.From];
    Node& b = g.Nodes[s.To];
    if (a.Slot < 0 || b.Slot < 0) continue;
    const SrcAirway& w = *s.Src;
    float dist = static_cast<float>(DistanceNm(a.Lat, a.Lon, b.Lat, b.Lon));
    std::string mea1 = MeaText(w.Base), mea2 = MeaText(w.Top);
    AirwayLinkRec fwd{b.Slot, FixedStr<8>(w.Name), dist, FixedStr<5>(mea1), FixedStr<5>(mea2)};
    AirwayLinkRec back{a.Slot, FixedStr<8>(w.Name), dist, FixedStr<5>(mea1), FixedStr<5>(mea2)};
    if (w.Direction != 'B') (w.High ? a.High : a.Low).push_back(fwd);
    if (w.Direction != 'F') (w.High ? b.High : b.Low).push_back(back);
    AirwayRec seg;
    seg.Name.Assign(w.Name);
    seg.FromIndex = a.Slot;
    seg.ToIndex = b.Slot;
    seg.Value = dist;
    seg.Mea1.Assign(MeaText(w.Base));
    seg.Mea2.Assign(MeaText(w.Top));
    (w.High ? nav.JetAirways : nav.VictorAirways).push_back(seg);
  }
}

void StoreIntersections(AirwayGraph& g, const MagVarGrid& grid, BuiltDatabase& out, std::map<std::string, int>& seen) {
  NavaidTables& nav = out.Db.Navaids;
  nav.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  nav.AirwayLinks.clear();
  std::vector<int> bySlot(kIntersectionSlots, -1);
  for (std::size_t i = 0; i < g.Nodes.size(); ++i)
    if (g.Nodes[i].Slot >= 0) bySlot[g.Nodes[i].Slot] = static_cast<int>(i);
  for (int id : bySlot) {
    if (id < 0) continue;
    Node& n = g.Nodes[id];
    IntersectionRec r;
    r.Index = n.Slot;
    r.Country.Assign(n.Region.substr(0, 2));
    r.Ident.Assign(n.Ident);
    r.Name.Assign(n.Name.substr(0, 25));
    r.Lat = static_cast<float>(n.Lat);
    r.Lon = static_cast<float>(n.Lon);
    r.MagVar = MagVarOf(grid, n.Lat, n.Lon);
    for (auto* list : {&n.Low, &n.High}) {
      if (list->size() > 255) {
        Note(out, seen, "links", "intersection " + n.Ident + ": more than 255 airway links of one kind, the rest left out");
        list->resize(255);
      }
    }
    PlaceIntersection(nav, r, n.Low, n.High);
  }
}

void BuildNavaids(const XPlaneSources& src, const MagVarGrid& grid, BuiltDatabase& out, std::map<std::string, int>& seen) {
  BuildRadioNavaids(src, grid, out);
  BuildFixes(src, grid, out, seen);
  AirwayGraph g;
  BuildAirwayGraph(src, g, out, seen);
  AssignSlots(g, out, seen);
  StoreAirways(g, out.Db.Navaids);
  StoreIntersections(g, grid, out, seen);
}

}  // namespace

void BuildDatabase(const XPlaneSources& src, const MagVarGrid& grid, const BuildOptions& options, BuiltDatabase& out) {
  std::map<std::string, int> seen;
  BuildAirports(src, grid, options, out, seen);
  BuildNavaids(src, grid, out, seen);
}

}  // namespace orv::dbm
