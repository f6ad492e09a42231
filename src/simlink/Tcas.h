// AI traffic on the moving map and its TCAS warning. While AI Traffic
// (btnAI) is pressed, each live tick reads the simulator's airborne table
// (and the ground table while the map's range is below 6 NM), turns every
// slot into a symbol with the labels the AI Info menus ask for, and tests
// the airborne slots the way a TCAS does: a closing aircraft inside the
// traffic advisory ring turns orange, one inside the resolution ring and
// within 1000 ft turns red and raises "TRAFFIC TRAFFIC" on lblTCAS.
//
// The tests compare each slot's distance with the one it had in the test
// the tick before (LastDistTa, LastDistRa); a slot keeps that history as
// long as the table keeps its size, so an aircraft is only flagged from
// its second tick inside a ring, and only while it is getting nearer.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "map/DrawTarget.h"
#include "map/Viewport.h"
#include "simlink/SimData.h"

namespace orv {

class FsuipcChannel;
class Ui;

// lblTCAS: its caption as the window is built, and the alert's.
inline constexpr std::string_view kTcasLabelCaption = "TRAFFIC ALERT!";
inline constexpr std::string_view kTcasAlertCaption = "TRAFFIC TRAFFIC";

// Below this height above the ground (feet) no aircraft is tested.
inline constexpr int32_t kTcasMinAgl = 2001;
// The advisory ring and the resolution ring grow with the own ground speed:
// NM per knot.
inline constexpr double kTaNmPerKnot = 0.01334;
inline constexpr double kRaNmPerKnot = 0.009723;
// Height bands of the two tests, feet.
inline constexpr float kTaHeightBand = 2500;
inline constexpr float kRaHeightBand = 1000;
// The alert counter runs 0 to 10; the beep sounds at 3.
inline constexpr uint8_t kAlertCounterTop = 10;
inline constexpr uint8_t kAlertBeepAt = 3;

// The colour settings AI=, AIFREQ=, TCAS1= and TCAS2=.
struct TrafficColours {
  Colour Ai = 65535;
  Colour AiFreq = 65280;
  Colour Tcas1 = 33023;
  Colour Tcas2 = 255;
};

// The AI menus' check marks.
struct TrafficMenus {
  bool menuAIATCID = true;       // airborne: the identifier
  bool menuAISpeedAlt = true;    // airborne: speed and altitude
  bool menuAIAirports = false;   // airborne: departure and destination
  bool menuATCIDGround = true;   // ground: the identifier
  bool menuAIDestination = false;  // ground: departure and destination
  bool menuTCASSound = true;     // the alert beeps
};

enum class Advisory : uint8_t { None, Traffic, Resolution };

// One aircraft as drawn: where, which way, in which colour, with which
// label lines (empty where the menu is unchecked).
struct TrafficSymbol {
  float Lat = 0, Lon = 0;
  int16_t Heading = 0;  // whole degrees, as the table's word gives it
  Colour Fore = 0;
  Advisory Level = Advisory::None;
  bool Ground = false;
  std::array<std::string, 3> Lines;
};

// An advisory that begins in a tick: a slot that was not at this level in
// the tick before.
struct AdvisoryEvent {
  Advisory Level = Advisory::None;
  std::string Callsign;
  std::string Caption;  // "TRAFFIC TRAFFIC" with a resolution advisory
};

// The altitude text of a label: "FL" and the hundreds of (A + 1) from 10000
// feet, the whole feet below.
std::string TrafficAltitudeText(float altitude);
// The two rings for a ground speed in knots, NM.
float TaRange(int32_t groundSpeed);
float RaRange(int32_t groundSpeed);
// The horizontal offset of a label from its symbol by the heading.
int LabelOffset(int heading);

class AiTraffic {
public:
  // One live tick: reads the airborne table, the ground table too when
  // ground is set (the map's range below 6 NM), builds the symbols, runs the
  // tests against the own aircraft and raises the alert; ui beeps. Returns
  // the advisories that began in this tick.
  std::vector<AdvisoryEvent> Tick(FsuipcChannel& ch, const SimSnapshot& own, bool ground, Ui& ui);
  // The same from tables already read (the tests and the fuzzers feed it).
  std::vector<AdvisoryEvent> Evaluate(const SimSnapshot& own, Ui& ui);
  // AI Traffic released or the link gone: nothing drawn, the label hidden.
  void Clear();

  TrafficColours Colours;
  TrafficMenus Menus;

  // The tables of the last read, slot by slot.
  std::vector<TrafficEntry> AirTraffic;
  std::vector<TrafficExtEntry> AirTrafficExt;
  std::vector<TrafficEntry> GroundTraffic;
  std::vector<TrafficExtEntry> GroundTrafficExt;
  std::vector<float> LastDistTa;
  std::vector<float> LastDistRa;
  // The trimmed identifiers per slot, for the hover box.
  std::vector<std::string> TrafficLabels;
  std::vector<std::string> GroundTrafficLabels;
  // The ground table is shown (range below 6 NM at the last read).
  bool GroundShown = false;

  // lblTCAS as the last tick left it.
  bool LblTcasVisible = false;
  std::string LblTcasCaption = std::string(kTcasLabelCaption);
  uint8_t AlertCounter = 0;

  const std::vector<TrafficSymbol>& Symbols() const { return symbols_; }

  // Sizes the history to the airborne table, keeping what each slot had.
  void FitHistory();

private:
  void Alert(Ui& ui);
  void AddSlots(const std::vector<TrafficEntry>& table, const std::vector<TrafficExtEntry>& ext, bool ground,
                const SimSnapshot& own, Ui& ui, std::vector<AdvisoryEvent>& events);

  std::vector<TrafficSymbol> symbols_;
  std::vector<Advisory> lastLevel_;  // per airborne slot, for the events
};

// The symbols over the map: each aircraft about 300 units long with its nose
// along the heading, the label lines from 400 above it at LabelOffset to
// the right, in the symbol's colour. Pens and font are restored.
void DrawTraffic(DrawTarget& map, const ViewState& view, const std::vector<TrafficSymbol>& symbols,
                 std::string_view fontName, float fontSize);

}  // namespace orv
