#include "dbm/XPlaneSources.h"

#include <charconv>
#include <cmath>
#include <numbers>
#include <unordered_map>

namespace orv::dbm {

namespace {

constexpr double kFeetPerMetre = 3.2808399;

// Walks the lines of a whole file (LF or CR LF), numbering them from 1.
class LineWalker {
public:
  explicit LineWalker(std::string_view text) : text_(text) {}
  bool Next(std::string_view& line) {
    if (pos_ >= text_.size()) return false;
    std::size_t end = text_.find('\n', pos_);
    if (end == std::string_view::npos) end = text_.size();
    line = text_.substr(pos_, end - pos_);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    pos_ = end + 1;
    ++number_;
    return true;
  }
  int64_t Number() const { return number_; }

private:
  std::string_view text_;
  std::size_t pos_ = 0;
  int64_t number_ = 0;
};

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && (IsBlank(s.front()) || s.front() == '\r')) s.remove_prefix(1);
  while (!s.empty() && (IsBlank(s.back()) || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

// The header of every X-Plane data file: an "I" or "A" line, then a line that
// starts with the version number and carries "data cycle NNNN" somewhere.
// Returns false (and leaves the walker) when the text has no such header.
bool ReadHeader(LineWalker& lines, SourceReport& report) {
  std::string_view line;
  // Blank lines before the header are tolerated, and so is a missing "I"
  // line (some distributions drop it).
  do {
    if (!lines.Next(line)) return false;
    line = TrimBlanks(line);
  } while (line.empty());
  if (line == "I" || line == "A") {
    do {
      if (!lines.Next(line)) return false;
    } while (TrimBlanks(line).empty());
  }
  auto tokens = SplitTokens(line, 3);
  int version = 0;
  if (tokens.size() < 2 || !ReadInt(tokens[0], version) || tokens[1] != "Version") {
    report.Problem(lines.Number(), "no \"<number> Version\" header line of an X-Plane data file");
    return false;
  }
  report.Version = version;
  std::size_t cycle = line.find("data cycle ");
  if (cycle != std::string_view::npos) {
    std::string_view rest = line.substr(cycle + 11);
    std::size_t end = rest.find_first_of(", ");
    report.Cycle = std::string(rest.substr(0, end));
  }
  return true;
}

bool InRange(double lat, double lon) {
  return std::isfinite(lat) && std::isfinite(lon) && lat >= -90 && lat <= 90 && lon >= -180 && lon <= 180;
}

double Radians(double deg) { return deg * std::numbers::pi / 180.0; }
double Degrees(double rad) { return rad * 180.0 / std::numbers::pi; }

// Initial true course and distance in feet between two points (spherical
// earth): good enough for a runway or taxiway a few miles long.
void CourseAndLength(double lat1, double lon1, double lat2, double lon2, double& course, double& feet) {
  double p1 = Radians(lat1), p2 = Radians(lat2), dl = Radians(lon2 - lon1);
  double y = std::sin(dl) * std::cos(p2);
  double x = std::cos(p1) * std::sin(p2) - std::sin(p1) * std::cos(p2) * std::cos(dl);
  course = std::fmod(Degrees(std::atan2(y, x)) + 360.0, 360.0);
  double a = std::sin((p2 - p1) / 2) * std::sin((p2 - p1) / 2) +
             std::cos(p1) * std::cos(p2) * std::sin(dl / 2) * std::sin(dl / 2);
  double metres = 2 * 6371008.8 * std::asin(std::sqrt(std::min(1.0, a)));
  feet = metres * kFeetPerMetre;
}

// A point `feet` away from (lat, lon) along `course`, flat-earth, for the
// short distances of an airport.
SrcPoint Offset(double lat, double lon, double course, double feet) {
  double metres = feet / kFeetPerMetre;
  double dLat = metres * std::cos(Radians(course)) / 111120.0;
  double cosLat = std::cos(Radians(lat));
  double dLon = cosLat > 1e-6 ? metres * std::sin(Radians(course)) / (111120.0 * cosLat) : 0.0;
  return {lat + dLat, lon + dLon};
}

// Taxiway width classes of the 1202 rows ("taxiway_A" .. "taxiway_F") in feet.
double TaxiWidthFeet(std::string_view type) {
  if (type.size() == 9 && type.substr(0, 8) == "taxiway_") {
    switch (type[8]) {
      case 'A': return 25;
      case 'B': return 35;
      case 'C': return 50;
      case 'D': return 75;
      case 'E': return 75;
      case 'F': return 100;
      default: break;
    }
  }
  return 50;
}

}  // namespace

void SourceReport::Problem(int64_t line, std::string_view what) {
  ++Malformed;
  if (FirstProblems.size() < kKeptProblems)
    FirstProblems.push_back(File + ": line " + std::to_string(line) + ": " + std::string(what));
}

Tokens SplitTokens(std::string_view line, std::size_t max) {
  if (max > Tokens::kMax) max = Tokens::kMax;
  Tokens out;
  std::size_t i = 0;
  while (i < line.size() && out.size() < max) {
    while (i < line.size() && IsBlank(line[i])) ++i;
    if (i >= line.size()) break;
    if (out.size() + 1 == max) {
      out.push_back(TrimBlanks(line.substr(i)));
      break;
    }
    std::size_t start = i;
    while (i < line.size() && !IsBlank(line[i])) ++i;
    out.push_back(line.substr(start, i - start));
  }
  return out;
}

bool ReadDouble(std::string_view text, double& value) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc() && ptr == text.data() + text.size() && std::isfinite(value);
}

bool ReadInt(std::string_view text, int& value) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc() && ptr == text.data() + text.size();
}

// ------------------------------------------------------------------ apt.dat

namespace {

struct AptState {
  SrcAirport* airport = nullptr;
  // The pavement ring being read (rows 111..116 after a 110), or nullptr
  // while nodes belong to something else (line features, boundaries, holes).
  std::vector<SrcPoint>* ring = nullptr;
  std::unordered_map<int, SrcPoint> taxiNodes;
};

void FinishAirport(AptState& st) {
  st.airport = nullptr;
  st.ring = nullptr;
  st.taxiNodes.clear();
}

// One row of an airport's block: its code, its tokens (up to 32; rows whose
// last field is a name split the line again with fewer), the line itself
// and where to report a malformed one.
struct AptRow {
  int Row;
  const Tokens& T;
  std::string_view Line;
  int64_t Number;
  SourceReport& Report;
  void Bad(std::string_view what) const { Report.Problem(Number, what); }
};

// 100, a land runway: width, surface, ..., then two ends of 9 fields.
void ReadLandRunway(const AptRow& r, SrcAirport& a) {
  const Tokens& t = r.T;
  double width = 0, lat1 = 0, lon1 = 0, lat2 = 0, lon2 = 0;
  int surface = 0;
  if (t.size() < 20 || !ReadDouble(t[1], width) || width < 0 || width > 10000 || !ReadInt(t[2], surface) || !ReadDouble(t[9], lat1) ||
      !ReadDouble(t[10], lon1) || !ReadDouble(t[18], lat2) || !ReadDouble(t[19], lon2) ||
      !InRange(lat1, lon1) || !InRange(lat2, lon2)) {
    r.Bad("land runway row 100 is incomplete");
    return;
  }
  SrcRunway w;
  w.Kind = RunwayKind::Land;
  w.End1 = std::string(t[8]);
  w.End2 = std::string(t[17]);
  w.Lat = (lat1 + lat2) / 2;
  w.Lon = (lon1 + lon2) / 2;
  CourseAndLength(lat1, lon1, lat2, lon2, w.TrueHeading, w.LengthFeet);
  w.WidthFeet = width * kFeetPerMetre;
  w.Surface = surface;
  a.Runways.push_back(std::move(w));
}

// 101, a water runway: width, buoys, two ends of 3 fields.
void ReadWaterRunway(const AptRow& r, SrcAirport& a) {
  const Tokens& t = r.T;
  double width = 0, lat1 = 0, lon1 = 0, lat2 = 0, lon2 = 0;
  if (t.size() < 9 || !ReadDouble(t[1], width) || width < 0 || width > 10000 || !ReadDouble(t[4], lat1) || !ReadDouble(t[5], lon1) ||
      !ReadDouble(t[7], lat2) || !ReadDouble(t[8], lon2) || !InRange(lat1, lon1) || !InRange(lat2, lon2)) {
    r.Bad("water runway row 101 is incomplete");
    return;
  }
  SrcRunway w;
  w.Kind = RunwayKind::Water;
  w.End1 = std::string(t[3]);
  w.End2 = std::string(t[6]);
  w.Lat = (lat1 + lat2) / 2;
  w.Lon = (lon1 + lon2) / 2;
  CourseAndLength(lat1, lon1, lat2, lon2, w.TrueHeading, w.LengthFeet);
  w.WidthFeet = width * kFeetPerMetre;
  w.Surface = 13;
  a.Runways.push_back(std::move(w));
}

// 102, a helipad: designator, position, heading, length, width, surface.
void ReadHelipad(const AptRow& r, SrcAirport& a) {
  const Tokens& t = r.T;
  double lat = 0, lon = 0, hdg = 0, len = 0, width = 0;
  int surface = 0;
  if (t.size() < 8 || !ReadDouble(t[2], lat) || !ReadDouble(t[3], lon) || !ReadDouble(t[4], hdg) ||
      !ReadDouble(t[5], len) || !ReadDouble(t[6], width) || !ReadInt(t[7], surface) || !InRange(lat, lon) ||
      len < 0 || len > 100000 || width < 0 || width > 100000) {
    r.Bad("helipad row 102 is incomplete");
    return;
  }
  SrcRunway w;
  w.Kind = RunwayKind::Helipad;
  w.End1 = w.End2 = std::string(t[1]);
  w.Lat = lat;
  w.Lon = lon;
  w.TrueHeading = hdg;
  w.LengthFeet = len * kFeetPerMetre;
  w.WidthFeet = width * kFeetPerMetre;
  w.Surface = surface;
  a.Runways.push_back(std::move(w));
}

// 10, the old runway/taxiway row: "xxx" is a taxiway piece.
void ReadOldRow10(const AptRow& r, SrcAirport& a) {
  const Tokens& t = r.T;
  double lat = 0, lon = 0, hdg = 0, len = 0, width = 0;
  int surface = 0;
  if (t.size() < 11 || !ReadDouble(t[1], lat) || !ReadDouble(t[2], lon) || !ReadDouble(t[4], hdg) ||
      !ReadDouble(t[5], len) || !ReadDouble(t[8], width) || !InRange(lat, lon) || len <= 0 || len > 100000 ||
      width < 0 || width > 10000) {
    r.Bad("row 10 is incomplete or its length or width is out of range");
    return;
  }
  std::string_view number = t[3];
  if (number == "xxx") {
    SrcPoint p1 = Offset(lat, lon, hdg + 180, len / 2);
    SrcPoint p2 = Offset(lat, lon, hdg, len / 2);
    a.Taxiways.push_back({p1.Lat, p1.Lon, p2.Lat, p2.Lon, width, std::string()});
    return;
  }
  ReadInt(t[10].substr(0, std::min<std::size_t>(t[10].size(), 2)), surface);
  SrcRunway w;
  w.Kind = RunwayKind::OldRow10;
  std::string n(number);
  while (!n.empty() && n.back() == 'x') n.pop_back();
  w.End1 = n;
  w.End2.clear();
  w.Lat = lat;
  w.Lon = lon;
  w.TrueHeading = hdg;
  w.LengthFeet = len;
  w.WidthFeet = width;
  w.Surface = surface;
  a.Runways.push_back(std::move(w));
}

// 14, the tower view point.
void ReadTower(const AptRow& r, SrcAirport& a) {
  double lat = 0, lon = 0;
  if (r.T.size() >= 3 && ReadDouble(r.T[1], lat) && ReadDouble(r.T[2], lon) && InRange(lat, lon)) {
    a.HasTower = true;
    a.TowerLat = lat;
    a.TowerLon = lon;
  } else {
    r.Bad("tower row 14 is incomplete");
  }
}

// 15, a start position, and 1300, a gate or ramp position.
void ReadParking(const AptRow& r, SrcAirport& a) {
  const bool gate = r.Row == 1300;
  auto s = SplitTokens(r.Line, gate ? 7 : 5);
  double lat = 0, lon = 0, hdg = 0;
  if (s.size() < (gate ? 6u : 4u) || !ReadDouble(s[1], lat) || !ReadDouble(s[2], lon) || !ReadDouble(s[3], hdg) ||
      !InRange(lat, lon)) {
    r.Bad(gate ? "ramp position row 1300 is incomplete" : "start position row 15 is incomplete");
    return;
  }
  SrcParking p;
  p.Gate = gate;
  p.Lat = lat;
  p.Lon = lon;
  p.Heading = hdg;
  if (gate) {
    p.Type = std::string(s[4]);
    p.Aircraft = std::string(s[5]);
  }
  const std::size_t nameAt = gate ? 6 : 4;
  p.Name = s.size() > nameAt ? std::string(s[nameAt]) : std::string();
  a.Parking.push_back(std::move(p));
}

// 50..56 (10 kHz) and 1050..1056 (kHz): a frequency and its name.
void ReadFrequency(const AptRow& r, SrcAirport& a) {
  auto s = SplitTokens(r.Line, 3);
  int value = 0;
  if (s.size() < 2 || !ReadInt(s[1], value) || value <= 0) {
    r.Bad("frequency row without a frequency");
    return;
  }
  SrcFrequency f;
  f.Row = r.Row >= 1050 ? r.Row - 1000 : r.Row;
  f.KHz = r.Row >= 1050 ? value : value * 10;
  f.Name = s.size() > 2 ? std::string(s[2]) : std::string();
  a.Frequencies.push_back(std::move(f));
}

// 111..116, a node of the pavement ring being read.
void ReadPavementNode(const AptRow& r, AptState& st) {
  if (!st.ring) return;  // nodes of a line feature, a boundary or a hole
  double lat = 0, lon = 0;
  if (r.T.size() < 3 || !ReadDouble(r.T[1], lat) || !ReadDouble(r.T[2], lon) || !InRange(lat, lon)) {
    r.Bad("pavement node is incomplete");
    return;
  }
  st.ring->push_back({lat, lon});
  if (r.Row >= 113) st.ring = nullptr;  // the outer ring is closed; holes follow
}

// 1201, a taxi network node.
void ReadTaxiNode(const AptRow& r, AptState& st) {
  double lat = 0, lon = 0;
  int id = 0;
  if (r.T.size() < 5 || !ReadDouble(r.T[1], lat) || !ReadDouble(r.T[2], lon) || !ReadInt(r.T[4], id) ||
      !InRange(lat, lon)) {
    r.Bad("taxi node row 1201 is incomplete");
    return;
  }
  st.taxiNodes[id] = {lat, lon};
}

// 1202, a taxi network edge between two nodes read before it.
void ReadTaxiEdge(const AptRow& r, AptState& st, SrcAirport& a) {
  auto s = SplitTokens(r.Line, 6);
  int n1 = 0, n2 = 0;
  if (s.size() < 3 || !ReadInt(s[1], n1) || !ReadInt(s[2], n2)) {
    r.Bad("taxi edge row 1202 is incomplete");
    return;
  }
  auto p1 = st.taxiNodes.find(n1), p2 = st.taxiNodes.find(n2);
  if (p1 == st.taxiNodes.end() || p2 == st.taxiNodes.end()) {
    r.Bad("taxi edge row 1202 names a node not defined before it");
    return;
  }
  std::string_view type = s.size() > 4 ? s[4] : std::string_view("taxiway");
  if (type == "runway") return;  // runways are drawn from their own rows
  a.Taxiways.push_back({p1->second.Lat, p1->second.Lon, p2->second.Lat, p2->second.Lon, TaxiWidthFeet(type),
                        s.size() > 5 ? std::string(s[5]) : std::string()});
}

// 1302, a metadata key and its value.
void ReadMetadata(const AptRow& r, SrcAirport& a) {
  auto s = SplitTokens(r.Line, 3);
  if (s.size() < 3) return;  // a key without value says nothing
  std::string_view key = s[1];
  double v = 0;
  if (key == "city") a.City = std::string(s[2]);
  else if (key == "state") a.State = std::string(s[2]);
  else if (key == "country") a.Country = std::string(s[2]);
  else if (key == "region_code") a.RegionCode = std::string(s[2]);
  else if (key == "datum_lat" && ReadDouble(s[2], v) && v >= -90 && v <= 90) a.DatumLat = v, a.HasDatum = true;
  else if (key == "datum_lon" && ReadDouble(s[2], v) && v >= -180 && v <= 180) a.DatumLon = v;
}

// A row inside an airport's block. Lights, signs, line features,
// boundaries and traffic flow are not used.
void ReadAirportRow(const AptRow& r, AptState& st) {
  SrcAirport& a = *st.airport;
  switch (r.Row) {
    case 100: ReadLandRunway(r, a); break;
    case 101: ReadWaterRunway(r, a); break;
    case 102: ReadHelipad(r, a); break;
    case 10: ReadOldRow10(r, a); break;
    case 14: ReadTower(r, a); break;
    case 15: case 1300: ReadParking(r, a); break;
    case 1301:  // details of the ramp position just read
      if (!a.Parking.empty() && a.Parking.back().Gate && r.T.size() >= 3) a.Parking.back().Operation = std::string(r.T[2]);
      break;
    case 50: case 51: case 52: case 53: case 54: case 55: case 56:
    case 1050: case 1051: case 1052: case 1053: case 1054: case 1055: case 1056: ReadFrequency(r, a); break;
    case 110:  // pavement: its outer ring follows in rows 111..116
      a.Pavements.emplace_back();
      st.ring = &a.Pavements.back();
      break;
    case 111: case 112: case 113: case 114: case 115: case 116: ReadPavementNode(r, st); break;
    case 1201: ReadTaxiNode(r, st); break;
    case 1202: ReadTaxiEdge(r, st, a); break;
    case 1302: ReadMetadata(r, a); break;
    default: break;
  }
}

// 1, 16 and 17: the head of an airport, seaport or heliport block.
void ReadAirportHead(std::string_view line, int row, int64_t number, std::vector<SrcAirport>& out, AptState& st,
                     SourceReport& report) {
  FinishAirport(st);
  auto h = SplitTokens(line, 6);
  int elev = 0;
  if (h.size() < 5 || !ReadInt(h[1], elev)) {
    report.Problem(number, "airport header without elevation and ident");
    return;
  }
  SrcAirport a;
  a.Row = row;
  a.ElevationFeet = elev;
  a.Icao = std::string(h[4]);
  a.Name = h.size() > 5 ? std::string(h[5]) : std::string();
  a.Line = number;
  out.push_back(std::move(a));
  st.airport = &out.back();
  ++report.Records;
}

}  // namespace

void ReadAptDat(std::string_view text, std::vector<SrcAirport>& out, SourceReport& report) {
  LineWalker lines(text);
  if (!ReadHeader(lines, report)) return;
  AptState st;
  std::string_view line;
  while (lines.Next(line)) {
    ++report.Lines;
    auto t = SplitTokens(line, 32);
    if (t.empty()) continue;
    int row = 0;
    if (!ReadInt(t[0], row)) {
      report.Problem(lines.Number(), "no row code");
      continue;
    }
    if (row == 99) break;
    if (row < 111 || row > 116) st.ring = nullptr;  // nodes only follow their own head row
    if (row == 1 || row == 16 || row == 17) {
      ReadAirportHead(line, row, lines.Number(), out, st, report);
      continue;
    }
    if (!st.airport) {
      // Rows that stand outside any airport in the newer files.
      if (row != 1000 && row != 1001 && row != 1002 && row != 1003 && row != 1004 && row != 1100 &&
          row != 1101 && row != 1200)
        report.Problem(lines.Number(), "row outside an airport");
      continue;
    }
    ReadAirportRow(AptRow{row, t, line, lines.Number(), report}, st);
  }
}

// ------------------------------------------------------------------ nav.dat

void ReadNavDat(std::string_view text, std::vector<SrcNavaid>& out, SourceReport& report) {
  LineWalker lines(text);
  if (!ReadHeader(lines, report)) return;
  const bool withRegion = report.Version >= 1100;
  std::string_view line;
  while (lines.Next(line)) {
    ++report.Lines;
    auto t = SplitTokens(line, 7);
    if (t.empty()) continue;
    int row = 0;
    if (!ReadInt(t[0], row)) {
      report.Problem(lines.Number(), "no row code");
      continue;
    }
    if (row == 99) break;
    if (row != kNdb && row != kVor && row != kIls && row != kLoc && row != kGlideSlope && row != kOuterMarker &&
        row != kMiddleMarker && row != kInnerMarker && row != kDme && row != kDmeStandalone)
      continue;  // FPAP, GLS, threshold rows: not navaids of this database
    SrcNavaid n;
    n.Row = row;
    auto f = SplitTokens(line, 32);
    double freq = 0, range = 0;
    if (f.size() < 9 || !ReadDouble(f[1], n.Lat) || !ReadDouble(f[2], n.Lon) || !ReadInt(f[3], n.ElevationFeet) ||
        !ReadDouble(f[4], freq) || !ReadDouble(f[5], range) || !ReadDouble(f[6], n.Extra) || !InRange(n.Lat, n.Lon) ||
        freq < 0 || freq > 2000000 || range < 0 || range > 10000 || std::fabs(n.Extra) > 1e9) {
      report.Problem(lines.Number(), "navaid row is incomplete or a value is out of range");
      continue;
    }
    n.Frequency = static_cast<int>(std::lround(freq));
    n.RangeNm = static_cast<int>(std::lround(range));
    n.Ident = std::string(f[7]);
    // The fields after the ident: 810 gives the airport and runway for the
    // ILS family and nothing for the others; 1100 up puts the terminal area
    // (airport or "ENRT") and the ICAO region in front of them.
    bool ilsFamily = row == kIls || row == kLoc || row == kGlideSlope || row == kOuterMarker ||
                     row == kMiddleMarker || row == kInnerMarker;
    std::size_t next = 8;
    if (withRegion) {
      if (f.size() < 11) {
        report.Problem(lines.Number(), "navaid row lacks its terminal area and region");
        continue;
      }
      n.Airport = f[8] == "ENRT" ? std::string() : std::string(f[8]);
      n.Region = std::string(f[9]);
      next = 10;
      if (ilsFamily) n.Runway = std::string(f[next++]);
    } else if (ilsFamily || (row == kDme && f.size() > 10 && f.back().find("ILS") != std::string_view::npos)) {
      if (f.size() < 11) {
        report.Problem(lines.Number(), "ILS row lacks its airport and runway");
        continue;
      }
      n.Airport = std::string(f[8]);
      n.Runway = std::string(f[9]);
      next = 10;
    }
    // The name is the rest of the line from token `next`.
    auto rest = SplitTokens(line, next + 1);
    n.Name = rest.size() > next ? std::string(rest[next]) : std::string();
    out.push_back(std::move(n));
    ++report.Records;
  }
}

// ------------------------------------------------------------------ fix.dat

void ReadFixDat(std::string_view text, std::vector<SrcFix>& out, SourceReport& report) {
  LineWalker lines(text);
  if (!ReadHeader(lines, report)) return;
  std::string_view line;
  while (lines.Next(line)) {
    ++report.Lines;
    auto t = SplitTokens(line, 6);
    if (t.empty()) continue;
    if (t.size() == 1 && t[0] == "99") break;
    SrcFix f;
    if (t.size() < 3 || !ReadDouble(t[0], f.Lat) || !ReadDouble(t[1], f.Lon) || !InRange(f.Lat, f.Lon)) {
      report.Problem(lines.Number(), "fix row is incomplete");
      continue;
    }
    f.Ident = std::string(t[2]);
    if (t.size() >= 5) {
      f.Terminal = t[3] != "ENRT";
      f.Region = std::string(t[4]);
    }
    out.push_back(std::move(f));
    ++report.Records;
  }
}

// ------------------------------------------------------------------ awy.dat

void ReadAwyDat(std::string_view text, std::vector<SrcAirway>& out, SourceReport& report) {
  LineWalker lines(text);
  if (!ReadHeader(lines, report)) return;
  const bool v1100 = report.Version >= 1100;
  std::string_view line;
  while (lines.Next(line)) {
    ++report.Lines;
    auto t = SplitTokens(line, 12);
    if (t.empty()) continue;
    if (t.size() == 1 && t[0] == "99") break;
    SrcAirway a;
    int level = 0;
    std::string_view names;
    if (v1100) {
      // ident region kind ident region kind direction level base top names
      if (t.size() < 11 || !ReadInt(t[2], a.From.Kind) || !ReadInt(t[5], a.To.Kind) || t[6].size() != 1 ||
          !ReadInt(t[7], level) || !ReadInt(t[8], a.Base) || !ReadInt(t[9], a.Top)) {
        report.Problem(lines.Number(), "airway row is incomplete");
        continue;
      }
      a.From.Ident = std::string(t[0]);
      a.From.Region = std::string(t[1]);
      a.To.Ident = std::string(t[3]);
      a.To.Region = std::string(t[4]);
      a.Direction = t[6][0];
      names = t[10];
    } else {
      // ident lat lon ident lat lon level base top names
      if (t.size() < 10 || !ReadDouble(t[1], a.From.Lat) || !ReadDouble(t[2], a.From.Lon) ||
          !ReadDouble(t[4], a.To.Lat) || !ReadDouble(t[5], a.To.Lon) || !ReadInt(t[6], level) ||
          !ReadInt(t[7], a.Base) || !ReadInt(t[8], a.Top) || !InRange(a.From.Lat, a.From.Lon) ||
          !InRange(a.To.Lat, a.To.Lon)) {
        report.Problem(lines.Number(), "airway row is incomplete");
        continue;
      }
      a.From.Ident = std::string(t[0]);
      a.To.Ident = std::string(t[3]);
      a.From.HasPosition = a.To.HasPosition = true;
      names = t[9];
    }
    if (level != 1 && level != 2) {
      report.Problem(lines.Number(), "airway level is neither 1 (low) nor 2 (high)");
      continue;
    }
    if (a.Direction != 'N' && a.Direction != 'F' && a.Direction != 'B') {
      report.Problem(lines.Number(), "airway direction is not N, F or B");
      continue;
    }
    a.High = level == 2;
    // One row may carry several airways over the same leg: "J1-J2".
    std::size_t start = 0;
    while (start <= names.size()) {
      std::size_t dash = names.find('-', start);
      std::string_view name = names.substr(start, dash == std::string_view::npos ? std::string_view::npos : dash - start);
      name = TrimBlanks(name);
      if (!name.empty()) {
        SrcAirway one = a;
        one.Name = std::string(name);
        out.push_back(std::move(one));
        ++report.Records;
      }
      if (dash == std::string_view::npos) break;
      start = dash + 1;
    }
  }
}

}  // namespace orv::dbm
