#include "map/MapLayers.h"

#include <cctype>

#include "core/Runtime.h"

namespace orv {

namespace {

bool SameName(std::string_view a, std::string_view b) { return SameTextNoCase(a, b); }

// A menu caption without its access-key mark.
std::string PlainCaption(std::string_view caption) {
  std::string out;
  for (char ch : caption)
    if (ch != '&') out += ch;
  return out;
}

// A caption also answers to its words before a bracket: "Jet (High Alt)" to
// "Jet".
std::string_view ShortCaption(std::string_view plain) {
  const std::size_t bracket = plain.find(" (");
  return bracket == std::string_view::npos ? std::string_view() : plain.substr(0, bracket);
}

struct LayerName {
  std::string_view Control;  // the menu entry
  std::string_view Button;   // its button, if any
  std::string_view Caption;  // the menu caption with "&"
  bool MapLayers::*Member;
};

constexpr LayerName kLayerNames[] = {
    {"menuAirport", "btnAP", "&Airports", &MapLayers::btnAP},
    {"MenuVOR", "btnVor", "&VOR", &MapLayers::btnVor},
    {"MenuNDB", "btnNdb", "&NDB", &MapLayers::btnNdb},
    {"MenuILS", "btnIls", "&ILS", &MapLayers::btnIls},
    {"MenuIntersection", "btnInter", "Int&ersection", &MapLayers::btnInter},
    {"MenuGPSFix", "btnFix", "&GPS Fix", &MapLayers::btnFix},
    {"MenuUserWP", "btnUser", "&User Waypoints", &MapLayers::btnUser},
    {"MenuJet", "btnJet", "&Jet (High Alt)", &MapLayers::btnJet},
    {"MenuVictor", "btnVictor", "&Victor (Low Alt)", &MapLayers::btnVictor},
    {"MenuADA", "", "&Advisory Area", &MapLayers::MenuADA},
    {"MenuADIZ", "", "Air &Defense Identification Zone", &MapLayers::MenuADIZ},
    {"menuARTCC", "", "Air &Route Traffic Control Center", &MapLayers::menuARTCC},
    {"MenuACC", "", "Area &Control Center", &MapLayers::MenuACC},
    {"MenuBZ", "", "&Buffer Zone", &MapLayers::MenuBZ},
    {"MenuCTA", "btnAir1", "C&ontrol Area", &MapLayers::btnAir1},
    {"MenuCtrz", "btnCtrz", "Control &Zones", &MapLayers::btnCtrz},
    {"menuFIR", "btnAir2", "&Flight Information Region", &MapLayers::btnAir2},
    {"MenuOCA", "", "Oc&ean Control Area", &MapLayers::MenuOCA},
    {"menuRA", "", "&Radar Area", &MapLayers::menuRA},
    {"menuTCA", "", "&Terminal Control Area", &MapLayers::menuTCA},
    {"menuUIR", "", "&Upper Flight Information Region", &MapLayers::menuUIR},
    {"MenuMSA", "btnMsa", "Minimum Sa&fe Altitude", &MapLayers::btnMsa},
    {"MenuCoastlines", "btnMap", "Coastline&s", &MapLayers::btnMap},
    {"MenuCompass", "", "&Compass", &MapLayers::MenuCompass},
    {"MenuLatLong", "", "La&tLong", &MapLayers::MenuLatLong},
    {"MenuTraceActive", "", "Show &Track", &MapLayers::MenuTraceActive},
    {"menuShowAlt", "", "Show &Altitude", &MapLayers::menuShowAlt},
    {"MenuViolation", "", "Control Zone &Violation", &MapLayers::MenuViolation},
    {"ShowFreq", "btnFreq", "", &MapLayers::ShowFreq},
    {"ShowIcao", "btnIcao", "", &MapLayers::ShowIcao},
    {"ShowName", "btnName", "", &MapLayers::ShowName},
};

// Blanks trimmed from both ends without a copy.
std::string_view Trimmed(std::string_view text) { return TrimView(text); }

}  // namespace

// ------------------------------------------------------------ layer names

bool* FindLayerSwitch(MapLayers& layers, std::string_view name) {
  for (const LayerName& n : kLayerNames) {
    const std::string plain = PlainCaption(n.Caption);
    const std::string_view shortCaption = ShortCaption(plain);
    if (SameName(name, n.Control) || (!n.Button.empty() && SameName(name, n.Button)) ||
        (!plain.empty() && SameName(name, plain)) || (!shortCaption.empty() && SameName(name, shortCaption)))
      return &(layers.*n.Member);
  }
  return nullptr;
}

std::vector<std::string> LayerSwitchNames() {
  std::vector<std::string> names;
  for (const LayerName& n : kLayerNames) {
    std::string line;
    if (!n.Caption.empty()) line = PlainCaption(n.Caption) + ", ";
    line += n.Control;
    if (!n.Button.empty()) line += ", " + std::string(n.Button);
    names.push_back(std::move(line));
  }
  return names;
}

AirspaceClass AirspaceClassOf(std::string_view classText) {
  const std::string_view c = Trimmed(classText);
  struct Alias {
    std::string_view Text;
    AirspaceClass Class;
  };
  static constexpr Alias kAliases[] = {
      {"ADA", AirspaceClass::ADA},   {"ADIZ", AirspaceClass::ADIZ}, {"ARTCC", AirspaceClass::ARTCC},
      {"ACC", AirspaceClass::ACC},   {"BZ", AirspaceClass::BZ},     {"CTA", AirspaceClass::CTA},
      {"A", AirspaceClass::CTA},     {"B", AirspaceClass::CTA},     {"C", AirspaceClass::CTA},
      {"D", AirspaceClass::CTA},     {"E", AirspaceClass::CTA},     {"CTRZ", AirspaceClass::Ctrz},
      {"CTR", AirspaceClass::Ctrz},  {"CTZ", AirspaceClass::Ctrz},  {"FIR", AirspaceClass::FIR},
      {"OCA", AirspaceClass::OCA},   {"RA", AirspaceClass::RA},     {"TCA", AirspaceClass::TCA},
      {"TMA", AirspaceClass::TCA},   {"UIR", AirspaceClass::UIR},
  };
  for (const Alias& a : kAliases)
    if (SameName(c, a.Text)) return a.Class;
  return AirspaceClass::Unknown;
}

bool AirspaceClassShown(const MapLayers& l, AirspaceClass cls, int32_t label) {
  if (cls == AirspaceClass::Ctrz ? label > 300 : label >= 1000) return false;
  switch (cls) {
    case AirspaceClass::Ctrz: return l.btnCtrz;
    case AirspaceClass::ADA: return l.MenuADA;
    case AirspaceClass::ADIZ: return l.MenuADIZ;
    case AirspaceClass::BZ: return l.MenuBZ;
    case AirspaceClass::RA: return l.menuRA;
    case AirspaceClass::TCA: return l.menuTCA;
    case AirspaceClass::CTA:
    case AirspaceClass::Unknown: return l.btnAir1;
    case AirspaceClass::ARTCC: return l.menuARTCC;
    case AirspaceClass::ACC: return l.MenuACC;
    case AirspaceClass::FIR: return l.btnAir2;
    case AirspaceClass::OCA: return l.MenuOCA;
    case AirspaceClass::UIR: return l.menuUIR;
  }
  return false;
}

}  // namespace orv
