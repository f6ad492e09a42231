// The map's layer switches, the names they answer to, and the airspace
// classes that the airspace switches select.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

// ------------------------------------------------------------ layer switches

// The map's toggles. Paired toggles carry the toolbar button's name (the
// button's value is the truth, the menu entry copies it); the others carry
// the menu entry's name. Round World lives in ViewState, as the projection
// reads it.
struct MapLayers {
  bool btnAP = true;       // menuAirport: airports and everything on them
  bool btnVor = true;      // MenuVOR
  bool btnNdb = true;      // MenuNDB
  bool btnIls = true;      // MenuILS
  bool btnInter = false;   // MenuIntersection
  bool btnFix = false;     // MenuGPSFix
  bool btnUser = true;     // MenuUserWP
  bool btnJet = false;     // MenuJet
  bool btnVictor = false;  // MenuVictor
  bool btnMsa = false;     // MenuMSA
  bool btnMap = true;      // MenuCoastlines

  // Airspace classes; three of them have buttons.
  bool MenuADA = true;
  bool MenuADIZ = true;
  bool menuARTCC = true;
  bool MenuACC = true;
  bool MenuBZ = true;
  bool btnAir1 = true;     // MenuCTA
  bool btnCtrz = true;     // MenuCtrz
  bool btnAir2 = true;     // menuFIR
  bool MenuOCA = true;
  bool menuRA = true;
  bool menuTCA = true;
  bool menuUIR = true;

  bool MenuCompass = true;
  bool MenuLatLong = true;

  // Parts of the labels (btnFreq, btnIcao, btnName).
  bool ShowFreq = false;
  bool ShowIcao = true;
  bool ShowName = false;

  bool MenuTraceActive = false;  // "Show Track"
  bool menuShowAlt = false;      // altitudes beside the track
  bool MenuViolation = false;    // control zone violation watch
  bool MenuShowRoute = true;     // "Show Route": the plan's legs on the map
};

// The switch a name stands for: a control name ("MenuVOR", "btnVor",
// "menuRoundWorld" is not here), a menu caption without its "&"
// ("VOR", "Airports", "Control Zones", "LatLong"), or a button name; all
// case-insensitive. nullptr for an unknown name.
bool* FindLayerSwitch(MapLayers& layers, std::string_view name);
// Every name FindLayerSwitch knows, for help texts.
std::vector<std::string> LayerSwitchNames();

// Airspace classes, numbered in the order of the airspace menu; 0 unknown.
enum class AirspaceClass : uint8_t {
  Unknown = 0, ADA, ADIZ, ARTCC, ACC, BZ, CTA, Ctrz, FIR, OCA, RA, TCA, UIR,
};
// The class of a record's Class text, trimmed and case-insensitive: the menu
// names ("CTA", "FIR", ...), "CTR" and "CTZ" for control zones, "TMA" for a
// terminal area, and the letters "A" to "E" (controlled airspace) as control
// areas. Anything else is Unknown and drawn with the control areas.
AirspaceClass AirspaceClassOf(std::string_view classText);
// Whether the map shows airspaces of a class at a range label: the class's
// switch is on, and the label is at most 300 for control zones, below 1000
// for the other areas. Unknown classes go with the control areas.
bool AirspaceClassShown(const MapLayers& layers, AirspaceClass cls, int32_t label);

}  // namespace orv
