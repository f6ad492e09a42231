#include "app/GpsWindow.h"

#include <cmath>
#include <cstdlib>

#include "app/MainWindowController.h"
#include "core/Runtime.h"
#include "simlink/Autopilot.h"

namespace orv {

namespace {

constexpr Colour kGreen = 65280;
// The lines of the window, as the live tick places them.
constexpr int kLineY[] = {5, 20, 35, 50, 65, 80};

std::string TwoDigits(int32_t value) {
  return (value < 0 ? "M" : "") + Format(std::abs(value), "00");
}

}  // namespace

RadioTarget FrequencyTarget(float frequency) {
  if (frequency <= 0) return RadioTarget::None;
  if (frequency > 136.97f) return RadioTarget::Adf;
  if (frequency > 117.975f) return RadioTarget::Com1;
  return RadioTarget::Nav1;
}

std::string_view CloudCoverText(int32_t coverage) {
  if (coverage <= 16384) return "FEW";
  if (coverage <= 32768) return "SCT";
  if (coverage <= 57344) return "BKN";
  return "OVC";
}

std::string SurfaceWeatherText(const WeatherValues& w) {
  std::string out;
  if (w.SurfaceWindSpeed <= 0)
    out = "00000KT";
  else
    out = Format(w.SurfaceWindDir, "000") + Format(w.SurfaceWindSpeed, "00") + "KT";
  const double metres = w.Visibility * 1609.344;
  bool clouds = false;
  for (int32_t c : w.CloudCoverage) clouds = clouds || c > 0;
  if (metres >= 10000 && !clouds && w.PrecipitationType == 0) {
    out += " CAVOK";
  } else {
    out += " " + (metres >= 10000 ? std::string("9999") : Format(static_cast<int32_t>(metres), "0000"));
    if (w.PrecipitationType == 1 || w.PrecipitationType == 2) {
      out += " ";
      if (w.PrecipitationRate >= 4) out += "+";
      if (w.Storm) out += "SH";
      out += w.PrecipitationType == 1 ? "RA" : "SN";
    }
    if (!clouds) out += " SKC";
    for (std::size_t i = 0; i < w.CloudCoverage.size(); ++i) {
      if (w.CloudCoverage[i] <= 0) continue;
      out += " " + std::string(CloudCoverText(w.CloudCoverage[i])) + Format(w.CloudAltitude[i] / 100, "000");
    }
  }
  out += " " + TwoDigits(w.SurfaceTemperature) + "/" + TwoDigits(w.DewPoint);
  out += " Q" + Format(w.Qnh, "0000");
  return out;
}

const std::vector<GpsButtonInfo>& GpsButtons() {
  static const std::vector<GpsButtonInfo> kButtons = {
      {"cmdGen", "Gen", "General Page"},
      {"cmddecr", "<<", "Previous WP"},
      {"cmdincr", ">>", "Next WP"},
      {"cmdArr", "Arr", "Arrival Page"},
      {"cmdWP", "WP", "Waypoint Page"},
      {"cmdWx", "Wx", "Weather Page"},
      {"cmdAutoHdg", "AutoHdg", "Auto Heading"},
      {"cmdDirTo", "GoTo", "Go directly to"},
      {"cmdFreq", "Frq", "Send Waypoint Frequency to FS"},
      {"cmdILS", "Ils", "Send ILS Frequency to FS"},
      {"cmdIlsPage", "", "Switch ILS page"},
  };
  return kButtons;
}

Colour GpsWindowLogic::AutoHdgColour() const {
  return s_.Sim.Autopilot ? s_.Sim.Autopilot->AutoHdgColour : 255;
}

Colour GpsWindowLogic::DirToColour() const { return s_.Sim.Autopilot ? s_.Sim.Autopilot->DirToColour : 255; }

bool GpsWindowLogic::Click(std::string_view button) {
  LiveTracking* live = s_.Sim.Live.get();
  auto page = [&](GpsPage p) {
    if (live) live->State().GpsPage = static_cast<int16_t>(p);
    Update();
    view_.FocusMap();
    return true;
  };
  if (button == "cmdGen") return page(GpsPage::General);
  if (button == "cmdWP") return page(GpsPage::Waypoint);
  if (button == "cmdArr") return page(GpsPage::Arrival);
  if (button == "cmdWx") return page(GpsPage::Weather);
  if (button == "cmdIlsPage") {
    secondIlsGroup_ = !secondIlsGroup_;
    return page(GpsPage::Ils);
  }
  if (button == "cmddecr" || button == "cmdincr") {
    if (live) {
      int16_t& row = live->State().ActiveRow;
      if (button == "cmddecr" && row > 1) --row;
      if (button == "cmdincr" && row < s_.Plan.LastRow) ++row;
    }
    view_.FocusMap();
    view_.DrawMap();  // the active leg follows
    return true;
  }
  if (button == "cmdFreq") {
    if (live && s_.Plan.LastRow >= 1) {
      const int row = std::min<int>(live->State().ActiveRow, s_.Plan.LastRow);
      SendFrequency(s_.Plan.Waypoints[static_cast<std::size_t>(row)].Frequency);
    }
    return true;
  }
  if (button == "cmdILS") {
    const int32_t dest = s_.Plan.DestinationAirport;
    const auto& airports = s_.Db.Airports.Airports;
    if (dest >= 0 && static_cast<std::size_t>(dest) < airports.size() && !airports[static_cast<std::size_t>(dest)].Ils.empty() &&
        s_.Sim.Connected())
      WriteNav1(*s_.Sim.Channel, airports[static_cast<std::size_t>(dest)].Ils.front().Values[0]);
    return true;
  }
  if (button == "cmdAutoHdg") {
    if (s_.Sim.Autopilot) s_.Sim.Autopilot->CmdAutoHdgClick();
    return true;
  }
  if (button == "cmdDirTo") {
    if (s_.Sim.Autopilot) s_.Sim.Autopilot->CmdDirToClick(s_.Overlays.MapPointLat, s_.Overlays.MapPointLon, "");
    return true;
  }
  return false;
}

void GpsWindowLogic::SendFrequency(float frequency) {
  if (!s_.Sim.Connected()) return;
  FsuipcChannel& ch = *s_.Sim.Channel;
  switch (FrequencyTarget(frequency)) {
    case RadioTarget::Adf: WriteAdf(ch, frequency); break;
    case RadioTarget::Com1: WriteCom1(ch, frequency); break;
    case RadioTarget::Nav1: WriteNav1(ch, frequency); break;
    case RadioTarget::None: break;
  }
}

void GpsWindowLogic::Update() {
  const LiveTracking* live = s_.Sim.Live.get();
  if (!live) return;
  const auto page = static_cast<GpsPage>(live->State().GpsPage);
  if (page == GpsPage::Weather) WeatherPage();
  if (page == GpsPage::Ils) IlsPage();
}

void GpsWindowLogic::WeatherPage() {
  if (!s_.Sim.Connected()) return;
  const WeatherValues w = ReadWeather(*s_.Sim.Channel);
  const SimSnapshot& snap = s_.Sim.Live->Snap;
  view_.GpsLine(kLineY[0], "  Surface Weather:", kGreen);
  view_.GpsLine(kLineY[1], "  " + SurfaceWeatherText(w), kGreen);
  view_.GpsLine(kLineY[2], "", kGreen);
  view_.GpsLine(kLineY[3], "  Ambient Weather:", kGreen);
  view_.GpsLine(kLineY[4],
                "  " + Format(snap.WindDir, "000") + Format(snap.WindSpeed, "00") + "KT  " +
                    TwoDigits(w.AmbientTemperature) + "  " + Format(static_cast<double>(w.Qnh), "000.00"),
                kGreen);
  view_.GpsLine(kLineY[5], "", kGreen);
}

void GpsWindowLogic::IlsPage() {
  const int32_t dest = s_.Plan.DestinationAirport;
  const auto& airports = s_.Db.Airports.Airports;
  std::vector<std::string> lines;
  if (dest >= 0 && static_cast<std::size_t>(dest) < airports.size()) {
    for (const IlsRec& ils : airports[static_cast<std::size_t>(dest)].Ils)
      lines.push_back("  " + std::string(ils.Runway.Trimmed()) + "  " + Format(ils.Values[0], "000.00") + "  " +
                      Format(ils.Values[1], "000") + "\xB0");
  }
  if (lines.empty()) lines.push_back("        no ILS data available");
  const std::size_t first = secondIlsGroup_ && lines.size() > 6 ? 6 : 0;
  for (std::size_t i = 0; i < 6; ++i)
    view_.GpsLine(kLineY[i], first + i < lines.size() ? lines[first + i] : "", kGreen);
}

}  // namespace orv
