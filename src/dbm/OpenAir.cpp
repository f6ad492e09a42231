#include "dbm/OpenAir.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "core/Runtime.h"
#include "database/AirspaceFiles.h"

namespace orv::dbm {

namespace {

constexpr double kStepDegrees = 5.0;

double Rad(double d) { return d * std::numbers::pi / 180.0; }
double Deg(double r) { return r * 180.0 / std::numbers::pi; }

// Reads "DD:MM:SS", "DD:MM.mmm" or "DD.ddd" followed by a hemisphere letter.
bool ReadPart(std::string_view& s, double& value, char& hemi) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  std::size_t i = 0;
  while (i < s.size() && (std::isdigit(static_cast<unsigned char>(s[i])) || s[i] == ':' || s[i] == '.')) ++i;
  if (i == 0) return false;
  std::string number(s.substr(0, i));
  s.remove_prefix(i);
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  if (s.empty()) return false;
  hemi = static_cast<char>(std::toupper(static_cast<unsigned char>(s.front())));
  s.remove_prefix(1);
  double parts[3] = {0, 0, 0};
  int n = 0;
  std::size_t start = 0;
  while (n < 3) {
    std::size_t colon = number.find(':', start);
    std::string piece = number.substr(start, colon == std::string::npos ? std::string::npos : colon - start);
    if (piece.empty()) return false;
    char* end = nullptr;
    parts[n++] = std::strtod(piece.c_str(), &end);
    if (*end != '\0') return false;
    if (colon == std::string::npos) break;
    start = colon + 1;
  }
  if (parts[1] >= 60 || parts[2] >= 60) return false;
  value = parts[0] + parts[1] / 60.0 + parts[2] / 3600.0;
  return true;
}

// The point `nm` from a centre along a true bearing (sphere).
ShapePoint Destination(double lat, double lon, double bearing, double nm) {
  double d = nm / 3440.065, p1 = Rad(lat), b = Rad(bearing);
  double p2 = std::asin(std::sin(p1) * std::cos(d) + std::cos(p1) * std::sin(d) * std::cos(b));
  double l2 = Rad(lon) + std::atan2(std::sin(b) * std::sin(d) * std::cos(p1), std::cos(d) - std::sin(p1) * std::sin(p2));
  double lonDeg = std::fmod(Deg(l2) + 540.0, 360.0) - 180.0;
  return {static_cast<float>(Deg(p2)), static_cast<float>(lonDeg)};
}

void BearingAndDistance(double lat1, double lon1, double lat2, double lon2, double& bearing, double& nm) {
  double p1 = Rad(lat1), p2 = Rad(lat2), dl = Rad(lon2 - lon1);
  bearing = std::fmod(Deg(std::atan2(std::sin(dl) * std::cos(p2),
                                     std::cos(p1) * std::sin(p2) - std::sin(p1) * std::cos(p2) * std::cos(dl))) + 360.0,
                      360.0);
  double a = std::pow(std::sin((p2 - p1) / 2), 2) + std::cos(p1) * std::cos(p2) * std::pow(std::sin(dl / 2), 2);
  nm = 2 * 3440.065 * std::asin(std::sqrt(std::min(1.0, a)));
}

// Points of an arc from bearing a1 to a2, clockwise when dir > 0.
void Arc(std::vector<ShapePoint>& pts, double lat, double lon, double nm, double a1, double a2, int dir) {
  double sweep = dir > 0 ? std::fmod(a2 - a1 + 720.0, 360.0) : -std::fmod(a1 - a2 + 720.0, 360.0);
  int steps = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / kStepDegrees)));
  for (int i = 0; i <= steps; ++i) pts.push_back(Destination(lat, lon, a1 + sweep * i / steps, nm));
}

}  // namespace

bool ReadOpenAirPosition(std::string_view text, double& lat, double& lon) {
  char h1 = 0, h2 = 0;
  if (!ReadPart(text, lat, h1) || !ReadPart(text, lon, h2)) return false;
  if ((h1 != 'N' && h1 != 'S') || (h2 != 'E' && h2 != 'W')) return false;
  if (h1 == 'S') lat = -lat;
  if (h2 == 'W') lon = -lon;
  return lat >= -90 && lat <= 90 && lon >= -180 && lon <= 180;
}

void ReadOpenAir(std::string_view text, std::vector<SrcAirspace>& out, SourceReport& report) {
  report.Version = 1;  // the format has no header
  SrcAirspace* cur = nullptr;
  double cLat = 0, cLon = 0;
  bool haveCentre = false;
  int dir = 1;
  int64_t lineNo = 0;
  std::size_t pos = 0;
  while (pos < text.size()) {
    std::size_t end = text.find('\n', pos);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(pos, end - pos);
    pos = end + 1;
    ++lineNo;
    ++report.Lines;
    std::string l = Trim(line);
    while (!l.empty() && (l.back() == '\r' || l.back() == '\t')) l.pop_back();
    if (l.empty() || l[0] == '*') continue;
    std::size_t sp = l.find(' ');
    std::string key = UCase(l.substr(0, sp));
    std::string arg = sp == std::string::npos ? std::string() : Trim(l.substr(sp + 1));
    auto bad = [&](std::string_view what) { report.Problem(lineNo, what); };
    if (key == "AC") {
      out.push_back({});
      cur = &out.back();
      cur->Class = arg;
      cur->Line = lineNo;
      haveCentre = false;
      dir = 1;
      ++report.Records;
      continue;
    }
    if (!cur) {
      if (key == "AN" || key == "AH" || key == "AL" || key == "DP" || key == "DA" || key == "DB" || key == "DC")
        bad("record before the first AC line");
      continue;
    }
    if (key == "AN") cur->Name = arg;
    else if (key == "AH") cur->Upper = arg;
    else if (key == "AL") cur->Lower = arg;
    else if (key == "DP") {
      double lat = 0, lon = 0;
      if (!ReadOpenAirPosition(arg, lat, lon)) bad("DP without a position");
      else cur->Points.push_back({static_cast<float>(lat), static_cast<float>(lon)});
    } else if (key == "V") {
      std::string a = UCase(arg);
      if (a.rfind("X=", 0) == 0) {
        haveCentre = ReadOpenAirPosition(std::string_view(arg).substr(2), cLat, cLon);
        if (!haveCentre) bad("V X= without a position");
      } else if (a.rfind("D=", 0) == 0) {
        dir = a.find('-') != std::string::npos ? -1 : 1;
      }
    } else if (key == "DC") {
      double r = std::strtod(arg.c_str(), nullptr);
      if (!haveCentre || !(r > 0) || r > 500) {
        bad("DC needs a centre (V X=) and a radius in NM");
        continue;
      }
      for (int i = 0; i < static_cast<int>(360 / kStepDegrees); ++i)
        cur->Points.push_back(Destination(cLat, cLon, i * kStepDegrees, r));
    } else if (key == "DA") {
      double r = 0, a1 = 0, a2 = 0;
      if (!haveCentre || std::sscanf(arg.c_str(), "%lf , %lf , %lf", &r, &a1, &a2) != 3 || !(r > 0) || r > 500) {
        bad("DA needs a centre and radius, start and end angle");
        continue;
      }
      Arc(cur->Points, cLat, cLon, r, a1, a2, dir);
    } else if (key == "DB") {
      std::size_t comma = arg.find(',');
      double lat1 = 0, lon1 = 0, lat2 = 0, lon2 = 0;
      if (!haveCentre || comma == std::string::npos || !ReadOpenAirPosition(std::string_view(arg).substr(0, comma), lat1, lon1) ||
          !ReadOpenAirPosition(std::string_view(arg).substr(comma + 1), lat2, lon2)) {
        bad("DB needs a centre and two positions");
        continue;
      }
      double b1 = 0, r1 = 0, b2 = 0, r2 = 0;
      BearingAndDistance(cLat, cLon, lat1, lon1, b1, r1);
      BearingAndDistance(cLat, cLon, lat2, lon2, b2, r2);
      cur->Points.push_back({static_cast<float>(lat1), static_cast<float>(lon1)});
      Arc(cur->Points, cLat, cLon, (r1 + r2) / 2, b1, b2, dir);
      cur->Points.back() = {static_cast<float>(lat2), static_cast<float>(lon2)};
    }
    // SP, SB, AT, AY, V W= and other drawing hints are not needed
  }
}

std::size_t AddOpenAirspaces(const std::vector<SrcAirspace>& spaces, AirspaceTables& shapes) {
  std::size_t leftOut = 0;
  for (const SrcAirspace& s : spaces) {
    if (shapes.Airspaces.size() > static_cast<std::size_t>(kLastAirspaceIndex) || s.Points.size() < 3 ||
        s.Points.size() > 32767) {
      ++leftOut;
      continue;
    }
    AirspaceRec r;
    r.Index = static_cast<int16_t>(shapes.Airspaces.size());
    r.Class.Assign(UCase(s.Class));
    std::string name = Trim(s.Name);
    std::string ident = UCase(Left(Replace(name, " ", ""), 4));
    r.Ident.Assign(ident.empty() ? std::string("AS") : ident);
    r.Name.Assign(Left(name, 38));
    r.Name2.Assign(Mid(name, 39, 38));
    r.UpperAltitude.Assign(Left(s.Upper, 10));
    r.LowerAltitude.Assign(Left(s.Lower, 9));
    AddAirspace(shapes, r, s.Points);
  }
  return leftOut;
}

}  // namespace orv::dbm
