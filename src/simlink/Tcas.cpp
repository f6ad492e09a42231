#include "simlink/Tcas.h"

#include <algorithm>
#include <cmath>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/Ui.h"
#include "simlink/LiveDraw.h"

namespace orv {

namespace {

// A twentieth of a traffic symbol's length: a little smaller than the own
// aircraft, so that it stands out among them.
constexpr double kTrafficShapeUnit = 15;
// The label's first line stands this far above the symbol's point.
constexpr double kLabelRise = 400;

}  // namespace

std::string TrafficAltitudeText(float altitude) {
  if (altitude >= 10000) return "FL" + std::to_string(static_cast<int64_t>(std::trunc((altitude + 1.0f) / 100.0f)));
  return std::to_string(static_cast<int64_t>(std::trunc(altitude)));
}

float TaRange(int32_t groundSpeed) { return static_cast<float>(groundSpeed * kTaNmPerKnot); }

float RaRange(int32_t groundSpeed) { return static_cast<float>(groundSpeed * kRaNmPerKnot); }

int LabelOffset(int heading) {
  heading %= 360;
  if (heading < 0) heading += 360;
  if (heading <= 90) return 50;
  if (heading <= 180) return 150;
  return 300;
}

void AiTraffic::FitHistory() {
  // The history stays with its slot while the table keeps its size; a new
  // slot starts at 0, which no test counts as closing.
  LastDistTa.resize(AirTraffic.size(), 0.0f);
  LastDistRa.resize(AirTraffic.size(), 0.0f);
  lastLevel_.resize(AirTraffic.size(), Advisory::None);
  TrafficLabels.resize(AirTraffic.size());
  GroundTrafficLabels.resize(GroundTraffic.size());
}

std::vector<AdvisoryEvent> AiTraffic::Tick(FsuipcChannel& ch, const SimSnapshot& own, bool ground, Ui& ui) {
  TrafficTable table;
  ReadAirTraffic(ch, table);
  AirTraffic = std::move(table.Entries);
  AirTrafficExt = std::move(table.Ext);
  GroundShown = ground;
  if (ground) {
    TrafficTable g;
    ReadGroundTraffic(ch, g);
    GroundTraffic = std::move(g.Entries);
    GroundTrafficExt = std::move(g.Ext);
  } else {
    GroundTraffic.clear();
    GroundTrafficExt.clear();
  }
  FitHistory();
  return Evaluate(own, ui);
}

std::vector<AdvisoryEvent> AiTraffic::Evaluate(const SimSnapshot& own, Ui& ui) {
  FitHistory();
  std::vector<AdvisoryEvent> events;
  symbols_.clear();
  LblTcasVisible = false;
  AddSlots(AirTraffic, AirTrafficExt, false, own, ui, events);
  if (GroundShown) AddSlots(GroundTraffic, GroundTrafficExt, true, own, ui, events);
  return events;
}

void AiTraffic::Clear() {
  symbols_.clear();
  LblTcasVisible = false;
}

void AiTraffic::Alert(Ui& ui) {
  LblTcasCaption = std::string(kTcasAlertCaption);
  if (Menus.menuTCASSound && AlertCounter == kAlertBeepAt) ui.Beep();
  LblTcasVisible = true;
  AlertCounter = AlertCounter >= kAlertCounterTop ? 0 : static_cast<uint8_t>(AlertCounter + 1);
}

void AiTraffic::AddSlots(const std::vector<TrafficEntry>& table, const std::vector<TrafficExtEntry>& ext, bool ground,
                         const SimSnapshot& own, Ui& ui, std::vector<AdvisoryEvent>& events) {
  std::vector<std::string>& labels = ground ? GroundTrafficLabels : TrafficLabels;
  const std::size_t count = std::min({table.size(), ext.size(), labels.size()});
  const bool tested = !ground && own.Agl >= kTcasMinAgl;
  const float da = TaRange(own.GroundSpeed), dr = RaRange(own.GroundSpeed);
  for (std::size_t slot = 0; slot < count; ++slot) {
    const TrafficEntry& e = table[slot];
    const std::string route = TrafficRoute(ext[slot]);
    const std::string id = TrafficAtcId(e);
    // An empty identifier ends the table for this tick.
    if (id.empty()) break;
    labels[slot] = Trim(id);
    if (e.Id == 0) continue;  // a free slot

    TrafficSymbol sym;
    sym.Lat = e.Latitude;
    sym.Lon = e.Longitude;
    sym.Heading = TrafficHeadingDegrees(e);
    sym.Ground = ground;
    const bool sameFrequency = DecodeCom1Word(e.Com1) == own.Com1;
    sym.Fore = sameFrequency ? Colours.AiFreq : Colours.Ai;

    if (tested) {
      const float height = std::fabs(e.Altitude - static_cast<float>(own.Altitude));
      if (height <= kTaHeightBand) {
        const float d = static_cast<float>(RhumbDistance(own.Latitude, own.Longitude, e.Latitude, e.Longitude));
        float& lastTa = LastDistTa[slot];
        if (!(d > 2 * da) && !(d < dr)) {
          if (lastTa > 0 && d < lastTa) {
            sym.Fore = Colours.Tcas1;
            sym.Level = Advisory::Traffic;
          }
          lastTa = d;
        }
        float& lastRa = LastDistRa[slot];
        if (!(d > dr) && height <= kRaHeightBand) {
          if (lastRa > 0 && d < lastRa) {
            Alert(ui);
            sym.Fore = Colours.Tcas2;
            sym.Level = Advisory::Resolution;
          }
          lastRa = d;
        }
      }
    }
    if (!ground) {
      Advisory& last = lastLevel_[slot];
      if (sym.Level != Advisory::None && sym.Level != last)
        events.push_back({sym.Level, labels[slot],
                          sym.Level == Advisory::Resolution ? std::string(kTcasAlertCaption) : std::string()});
      last = sym.Level;
    }

    if (ground ? Menus.menuATCIDGround : Menus.menuAIATCID) sym.Lines[0] = labels[slot];
    // The speed, and below it the altitude.
    if (!ground && Menus.menuAISpeedAlt)
      sym.Lines[1] = std::to_string(e.GroundSpeed) + " \r" + TrafficAltitudeText(e.Altitude);
    if (ground ? Menus.menuAIDestination : Menus.menuAIAirports) sym.Lines[2] = route;
    symbols_.push_back(std::move(sym));
  }
}

void DrawTraffic(DrawTarget& map, const ViewState& view, const std::vector<TrafficSymbol>& symbols,
                 std::string_view fontName, float fontSize) {
  if (symbols.empty()) return;
  const Colour fore = map.ForeColor();
  const std::string oldFont = map.FontName();
  const float oldSize = map.FontSize();
  map.SetFontName(fontName);
  map.SetFontSize(fontSize);
  for (const TrafficSymbol& s : symbols) {
    if (!InView(view, s.Lat, s.Lon)) continue;
    DrawAircraftShape(map, view, s.Lat, s.Lon, s.Heading, s.Fore, kTrafficShapeUnit);
    const double x = MapXFromLon(view, s.Lon, s.Lat) + LabelOffset(s.Heading);
    map.SetForeColor(s.Fore);
    map.SetCurrentY(MapYFromLat(view, s.Lat) - kLabelRise);
    for (const std::string& line : s.Lines) {
      map.SetCurrentX(x);
      map.Print(line);
    }
  }
  map.SetForeColor(fore);
  map.SetFontName(oldFont);
  map.SetFontSize(oldSize);
}

}  // namespace orv
