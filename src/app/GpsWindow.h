// frmGPSMM without its widgets: the page buttons, the waypoint steps, the
// radio buttons that tune the simulator, Auto Heading and Go To, and the two
// pages the live tick does not write (surface weather and the destination's
// ILS). The live tick writes the position, waypoint and arrival pages itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/ProgramState.h"
#include "simlink/SimData.h"

namespace orv {

class MainWindowView;

enum class GpsPage : int16_t { General = 0, Waypoint = 1, Arrival = 2, Weather = 3, Ils = 4 };

// Where a waypoint's frequency goes: above 136.97 the ADF (a kHz value),
// above 117.975 COM1, else NAV1; nothing for 0 or less.
enum class RadioTarget { None, Adf, Com1, Nav1 };
RadioTarget FrequencyTarget(float frequency);

// The surface weather as a METAR-like group line, from the simulator's
// values: wind, visibility (or CAVOK), precipitation, clouds, temperature and
// dew point, QNH.
std::string SurfaceWeatherText(const WeatherValues& w);
// The cloud cover word of a coded coverage value.
std::string_view CloudCoverText(int32_t coverage);

struct GpsButtonInfo {
  std::string_view Name;
  std::string_view Caption;
  std::string_view ToolTip;
};
// The window's buttons, in their order on the panel.
const std::vector<GpsButtonInfo>& GpsButtons();

class GpsWindowLogic {
public:
  GpsWindowLogic(ProgramState& s, MainWindowView& view) : s_(s), view_(view) {}

  // A click on a button by its control name ("cmdGen", "cmdincr", ...).
  // False for a name the window does not have.
  bool Click(std::string_view button);
  // After each live tick: the weather and ILS pages, which the tick leaves.
  void Update();
  // The fore colours of cmdAutoHdg and cmdDirTo: 255 off, 65280 on.
  Colour AutoHdgColour() const;
  Colour DirToColour() const;

private:
  void SendFrequency(float frequency);
  void WeatherPage();
  void IlsPage();

  ProgramState& s_;
  MainWindowView& view_;
  bool secondIlsGroup_ = false;
};

}  // namespace orv
