#include "online/OnlineDraw.h"

#include <cmath>

#include "core/Runtime.h"
#include "core/Settings.h"
#include "map/Viewport.h"

namespace orv {

namespace {

// Callsigns of the pilots are written below this label: at 300 NM and more
// a busy evening's callsigns would cover the chart.
constexpr int32_t kPilotLabelLimit = 300;

bool Near(double ax, double ay, double bx, double by, double rx, double ry) {
  return std::fabs(ax - bx) < rx && std::fabs(ay - by) < ry;
}

void Label(DrawTarget& t, double x, double y, const std::string& text) {
  t.SetCurrentX(x);
  t.SetCurrentY(y);
  t.Print(text);
}

Colour FacilityColour(const OnlineDrawStyle& s, int fac) {
  switch (fac) {
    case kFacTwr: return s.Twr;
    case kFacGnd: case kFacDel: return s.Gnd;
    case kFacApp: return s.App;
    case kFacCtr: return s.Fir;
    default: return s.Fss;
  }
}

std::string FrequencyText(float f) { return Format(f, "000.000"); }

}  // namespace

OnlineDrawStyle OnlineStyleFromSettings(const Settings& s) {
  OnlineDrawStyle st;
  st.Fir = s.IvaoFir;
  st.Fss = s.IvaoFss;
  st.Twr = s.IvaoTwr;
  st.Gnd = s.IvaoGnd;
  st.App = s.IvaoApp;
  st.Pilot = s.StaticAcColor;
  st.ShowAltSpeed = s.OnlShowAltSpeed;
  st.ShowDepDest = s.OnlShowDepDest;
  st.OwnCallsign = s.OnlUsrCallsign;
  return st;
}

void DrawOnlineSectors(DrawTarget& t, const ViewState& v, const std::vector<OnlineSector>& sectors,
                       const OnlineDrawStyle& style) {
  std::vector<DrawPoint> pts;
  int drawn = 0;
  for (const OnlineSector& s : sectors) {
    if (drawn >= kMaxSectors) break;
    if (!s.Active || s.Points.size() < 2) continue;
    if (s.South > v.MapNorth || s.North < v.MapSouth) continue;
    pts.clear();
    for (auto [lat, lon] : s.Points)
      pts.push_back({static_cast<float>(MapXFromLon(v, lon, lat)), static_cast<float>(MapYFromLat(v, lat))});
    pts.push_back(pts.front());
    t.SetForeColor(style.Fir);
    t.Polyline(pts);
    ++drawn;
  }
}

void DrawOnlineStations(DrawTarget& t, const ViewState& v, const OnlineData& data, const OnlineDrawStyle& style,
                        int32_t label) {
  for (int fac = 0; fac < kFacilityCount; ++fac) {
    Colour c = FacilityColour(style, fac);
    // Rings of a growing size, so that an airport's tower, ground and
    // approach stay apart.
    double radius = fac == kFacGnd || fac == kFacDel ? 40 : fac == kFacTwr ? 60 : fac == kFacApp ? 90 : 120;
    for (const OnlineStationRec& s : data.Stations[fac]) {
      if (s.Latitude == kNoPosition || !InView(v, s.Latitude, s.Longitude)) continue;
      double x = MapXFromLon(v, s.Longitude, s.Latitude), y = MapYFromLat(v, s.Latitude);
      t.SetFillStyle(kFillTransparent);
      t.SetDrawWidth(fac == kFacCtr ? 1 : 2);
      t.Circle(x, y, radius, c);
      if (label < 300) {
        t.SetForeColor(c);
        std::string text = s.Station + (s.Qualifier.empty() ? "" : " " + s.Qualifier) + " " + FrequencyText(s.Frequency);
        Label(t, x + radius, y + (fac * 90) - 270, text);
      }
    }
  }
  t.SetDrawWidth(1);
}

void DrawOnlinePilots(DrawTarget& t, const ViewState& v, const OnlineData& data, const OnlineDrawStyle& style,
                      int32_t label) {
  t.SetDrawWidth(1);
  t.SetFillStyle(kFillSolid);
  std::vector<DrawSegment> segs;
  segs.reserve(data.Pilots.size() * 3);
  for (const OnlineClientRec& p : data.Pilots) {
    if (!InView(v, p.Latitude, p.Longitude)) continue;
    double x = MapXFromLon(v, p.Longitude, p.Latitude), y = MapYFromLat(v, p.Latitude);
    // A small aircraft: fuselage along the heading, wings across it.
    double a = p.Heading * kDegToRad, sx = std::sin(a), cy = -std::cos(a);
    segs.push_back({x - sx * 60, y - cy * 60, x + sx * 60, y + cy * 60});
    segs.push_back({x + cy * 50, y - sx * 50, x - cy * 50, y + sx * 50});
    segs.push_back({x - sx * 60 + cy * 20, y - cy * 60 - sx * 20, x - sx * 60 - cy * 20, y - cy * 60 + sx * 20});
    if (label < kPilotLabelLimit) {
      bool own = !style.OwnCallsign.empty() && p.Callsign == style.OwnCallsign;
      t.SetForeColor(own ? style.Hilite : style.Pilot);
      std::string text = p.Callsign;
      if (style.ShowAltSpeed && label < 200) text += "\r\n" + std::to_string(p.Altitude) + "ft " + std::to_string(p.GroundSpeed) + "kt";
      if (style.ShowDepDest && label < 200 && !(p.Departure.empty() && p.Destination.empty()))
        text += "\r\n" + p.Departure + "-" + p.Destination;
      Label(t, x + 70, y - 40, text);
    }
  }
  t.Lines(segs, style.Pilot);
}

WxSymbol WeatherSymbolOf(const MetarRec& r) {
  if (r.Thunderstorm || r.Cumulonimbus) return WxSymbol::Thunder;
  if (r.Snow || r.IcePellets || r.Hail) return WxSymbol::Snow;
  if (r.Rain || r.Drizzle) return WxSymbol::Rain;
  if (r.Fog) return WxSymbol::Fog;
  if (r.Mist || r.Haze || r.Smoke) return WxSymbol::Mist;
  if (r.CloudText.find("brkn") != std::string::npos || r.CloudText.find("ovcst") != std::string::npos)
    return WxSymbol::Cloud;
  return WxSymbol::Sun;
}

void DrawWeatherSymbols(DrawTarget& t, const ViewState& v, const std::vector<MetarRec>& reports, int32_t label) {
  if (label > kMaxWeatherLabel) return;
  constexpr Colour kSun = RgbColour(255, 200, 0), kCloud = RgbColour(128, 128, 128), kRain = RgbColour(0, 0, 255),
                   kSnow = RgbColour(0, 160, 255), kBolt = RgbColour(255, 0, 0), kFog = RgbColour(150, 150, 150);
  std::vector<DrawSegment> rain, snow, bolt, fog;
  t.SetDrawWidth(1);
  t.SetFillStyle(kFillSolid);
  for (const MetarRec& r : reports) {
    if (!InView(v, r.Latitude, r.Longitude)) continue;
    double x = MapXFromLon(v, r.Longitude, r.Latitude), y = MapYFromLat(v, r.Latitude);
    WxSymbol s = WeatherSymbolOf(r);
    switch (s) {
      case WxSymbol::Sun:
        t.SetFillColor(kSun);
        t.Circle(x, y, 35, kSun);
        break;
      case WxSymbol::Cloud:
        t.SetFillColor(kCloud);
        t.Circle(x, y, 40, kCloud);
        break;
      case WxSymbol::Rain:
        for (int i = -1; i <= 1; ++i) rain.push_back({x + i * 25.0, y - 30, x + i * 25.0 - 10, y + 30});
        break;
      case WxSymbol::Snow:
        snow.push_back({x - 35, y, x + 35, y});
        snow.push_back({x - 25, y - 25, x + 25, y + 25});
        snow.push_back({x - 25, y + 25, x + 25, y - 25});
        break;
      case WxSymbol::Thunder:
        bolt.push_back({x + 10, y - 40, x - 15, y});
        bolt.push_back({x - 15, y, x + 15, y});
        bolt.push_back({x + 15, y, x - 10, y + 40});
        break;
      case WxSymbol::Fog:
      case WxSymbol::Mist:
        for (int i = -1; i <= 1; ++i) fog.push_back({x - 35, y + i * 20.0, x + 35, y + i * 20.0});
        if (s == WxSymbol::Fog) fog.push_back({x - 35, y + 40, x + 35, y + 40});
        break;
    }
  }
  t.Lines(rain, kRain);
  t.Lines(snow, kSnow);
  t.Lines(bolt, kBolt);
  t.Lines(fog, kFog);
}

void DrawTracks(DrawTarget& t, const ViewState& v, const TrackTable& tracks, Colour colour, int32_t label,
                int32_t utcHhmm) {
  t.SetForeColor(colour);
  t.SetDrawWidth(2);
  for (const TrackRec& tr : tracks.Tracks) {
    if (tr.Points.empty()) continue;
    // The two values are the message's times in hhmm, times 100.
    const int32_t from = tr.ValidFrom / 100, to = tr.ValidTo / 100;
    bool valid = from == to || (from < to ? utcHhmm >= from && utcHhmm <= to : utcHhmm >= from || utcHhmm <= to);
    t.SetDrawStyle(valid ? kDrawStyleSolid : kDrawStyleDot);
    t.SetDrawWidth(valid ? 2 : 1);
    for (size_t i = 1; i < tr.Points.size(); ++i) {
      const WaypointRec& a = tr.Points[i - 1];
      const WaypointRec& b = tr.Points[i];
      t.Line(MapXFromLon(v, a.Lon, a.Lat), MapYFromLat(v, a.Lat), MapXFromLon(v, b.Lon, b.Lat), MapYFromLat(v, b.Lat));
    }
    if (label < 2000) {
      double x = MapXFromLon(v, tr.FirstLon, tr.FirstLat), y = MapYFromLat(v, tr.FirstLat);
      Label(t, x + 50, y - 200, TrackHoverLine(tr));
    }
  }
  t.SetDrawStyle(kDrawStyleSolid);
  t.SetDrawWidth(1);
}

// ------------------------------------------------------------ hover

std::vector<std::string> StationHoverLines(const OnlineData& data, const ViewState& v, double x, double y,
                                           int32_t& hitSector, const std::vector<OnlineSector>* sectors) {
  static constexpr const char* kIvao[] = {"IVAO Twr: ", "IVAO Grnd: ", "IVAO App: ", "IVAO Del: ", "IVAO CTR: ", "IVAO FSS: "};
  static constexpr const char* kVatsim[] = {"VATSIM Twr: ", "VATSIM Grnd: ", "VATSIM App: ", "VATSIM Del: ", "VATSIM CTR: ", "VATSIM FSS: "};
  // The box's order: delivery, ground, tower, approach, then centre and FSS
  // (IVAO) or FSS and centre (VATSIM).
  const bool ivao = data.Network == OnlineNetwork::Ivao;
  const int order[6] = {kFacDel, kFacGnd, kFacTwr, kFacApp, ivao ? kFacCtr : kFacFss, ivao ? kFacFss : kFacCtr};
  std::vector<std::string> lines;
  hitSector = -1;
  for (int fac : order) {
    for (const OnlineStationRec& s : data.Stations[fac]) {
      float lat = s.Latitude, lon = s.Longitude;
      const bool fir = fac == kFacCtr || fac == kFacFss;
      if (fir && sectors && s.Sector >= 0 && static_cast<size_t>(s.Sector) < sectors->size()) {
        lat = (*sectors)[static_cast<size_t>(s.Sector)].CenterLat;
        lon = (*sectors)[static_cast<size_t>(s.Sector)].CenterLon;
      }
      if (lat == kNoPosition) continue;
      double sx = MapXFromLon(v, lon, lat), sy = MapYFromLat(v, lat);
      if (!Near(sx, sy, x, y, 100, 100)) continue;
      lines.push_back(std::string(ivao ? kIvao[fac] : kVatsim[fac]) + s.Callsign + "  " + FrequencyText(s.Frequency) +
                      "  " + s.RealName);
      if (!s.AtisSummary.empty() && s.AtisSummary != "No Information ") lines.push_back("  " + s.AtisSummary);
      if (!s.LandingRunways.empty()) lines.push_back("  " + s.LandingRunways);
      if (!s.TakeoffRunways.empty()) lines.push_back("  " + s.TakeoffRunways);
      if (fir && s.Sector >= 0 && hitSector < 0) hitSector = s.Sector;
    }
  }
  return lines;
}

std::vector<std::string> PilotHoverLines(const OnlineData& data, const ViewState& v, double x, double y,
                                         const OnlineDrawStyle& style) {
  std::vector<std::string> lines;
  for (const OnlineClientRec& p : data.Pilots) {
    if (!InView(v, p.Latitude, p.Longitude)) continue;
    double px = MapXFromLon(v, p.Longitude, p.Latitude), py = MapYFromLat(v, p.Latitude);
    if (!Near(px, py, x, y, 150, 250)) continue;
    lines.push_back(p.Callsign + (p.RealName.empty() ? "" : "  " + p.RealName) +
                    (p.AircraftType.empty() ? "" : "  " + p.AircraftType));
    if (style.ShowAltSpeed) lines.push_back("Alt: " + std::to_string(p.Altitude) + " ft  Speed: " + std::to_string(p.GroundSpeed) + " kt");
    if (style.ShowDepDest) lines.push_back("Route: " + p.Departure + " - " + p.Destination);
  }
  return lines;
}

std::vector<std::string> TrackHoverLines(const TrackTable& tracks, const ViewState& v, double x, double y) {
  std::vector<std::string> lines;
  for (const TrackRec& tr : tracks.Tracks) {
    for (const WaypointRec& wp : tr.Points) {
      if (Near(MapXFromLon(v, wp.Lon, wp.Lat), MapYFromLat(v, wp.Lat), x, y, 100, 100)) {
        lines.push_back(TrackHoverLine(tr));
        break;
      }
    }
  }
  return lines;
}

std::vector<std::string> WeatherHoverLines(const std::vector<MetarRec>& reports, const ViewState& v, double x,
                                           double y) {
  std::vector<std::string> lines;
  for (const MetarRec& r : reports) {
    if (!InView(v, r.Latitude, r.Longitude)) continue;
    if (!Near(MapXFromLon(v, r.Longitude, r.Latitude), MapYFromLat(v, r.Latitude), x, y, 100, 100)) continue;
    for (std::string& l : MetarHoverLines(&r, r.Icao)) lines.push_back(std::move(l));
  }
  return lines;
}

}  // namespace orv
