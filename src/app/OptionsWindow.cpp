#include "app/OptionsWindow.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "core/Runtime.h"
#include "simlink/SimulatorChoice.h"

namespace orv {

namespace {

constexpr std::array<std::string_view, 2> kFontSizes = {"Small", "Large"};
constexpr std::array<std::string_view, 2> kLandArea = {"Unfilled", "Filled"};
constexpr std::array<std::string_view, 4> kFuelUnits = {"Gallons", "Pounds", "Kilograms", "Litres"};
constexpr std::array<std::string_view, 2> kAltitudeTypes = {"Above ground level", "Above sea level"};

using K = OptionKind;
constexpr std::string_view kMap = "Map", kColours = "Colours", kFlight = "Flight", kLink = "Link";

const OptionDef kOptions[] = {
    // The map.
    {"AIRCRAFT", "Aircraft Symbol Size:", K::Number, 4, 60, {}, kMap},
    {"FONTSIZE", "Font Size", K::Choice, 0, 1, kFontSizes, kMap},
    {"FILL", "Land Area", K::Choice, 0, 1, kLandArea, kMap},
    {"LL", "Latitude/Longitude Lines:", K::Number, 0, 3, {}, kMap},
    {"MZOOM", "Zoom with Mouse Wheel", K::Flag, 0, 1, {}, kMap},
    {"DECSEC", "Decimal seconds in coordinates", K::Flag, 0, 1, {}, kMap},
    // Planning and flying.
    {"GC", "Great Circle Navigation", K::Flag, 0, 1, {}, kFlight},
    {"FUEL", "Fuel Unit", K::Choice, 0, 3, kFuelUnits, kFlight},
    {"SECLEN", "Sector Length:", K::Number, 5, 200, {}, kFlight},
    {"SECWIDTH", "Sector Width:", K::Number, 5, 90, {}, kFlight},
    {"FAFDIST", "Distance to Final Fix:", K::Number, 3, 30, {}, kFlight},
    {"DEFDIST", "Distance to Rwy Fix:", K::Number, 1, 20, {}, kFlight},
    {"ARC", "Distance arc for autopilot", K::Flag, 0, 1, {}, kFlight},
    {"TRACEALT", "Maximum display value:", K::Number, 1000, 50000, {}, kFlight},
    {"TRACEALTTYPE", "Altitude display", K::Choice, 0, 1, kAltitudeTypes, kFlight},
    // The simulator and the network.
    {"SIMSOURCE", "Simulator:", K::Text, 0, 0, {}, kLink},
    {"DIRCON", "Direct connection with FS", K::Flag, 0, 1, {}, kLink},
    {"AUTODOWNLOAD", "Download online data automatically", K::Flag, 0, 1, {}, kLink},
    {"DLINTERVAL", "Download interval (minutes):", K::Number, 1, 60, {}, kLink},
    {"ONLUSRCALLSIGN", "Own call sign:", K::Text, 0, 0, {}, kLink},
    {"ONLSHOWALTSPEED", "Show altitude and speed", K::Flag, 0, 1, {}, kLink},
    {"ONLSHOWDEPDEST", "Show departure and destination", K::Flag, 0, 1, {}, kLink},
    {"WXURL", "Weather address:", K::Text, 1, 0, {}, kLink},
    {"NATRACKURL", "North Atlantic tracks address:", K::Text, 1, 0, {}, kLink},
    {"PACOTURL", "Pacific tracks address:", K::Text, 1, 0, {}, kLink},
    {"VATSIMURLSTATUS", "VATSIM status address:", K::Text, 1, 0, {}, kLink},
    {"IVAOURLSTATUS", "IVAO status address:", K::Text, 1, 0, {}, kLink},
    {"SQUAWKBOXPATH", "SquawkBox plan folder:", K::Text, 0, 0, {}, kLink},
    {"IVAOPATH", "IVAO plan folder:", K::Text, 0, 0, {}, kLink},
    // The colours, in the order of the file.
    {"MAP", "Map", K::Colour, 0, 0, {}, kColours},
    {"COAST", "Coast", K::Colour, 0, 0, {}, kColours},
    {"LAND", "Land", K::Colour, 0, 0, {}, kColours},
    {"RIVER", "Rivers", K::Colour, 0, 0, {}, kColours},
    {"LATLONG", "Lat/Long Lines", K::Colour, 0, 0, {}, kColours},
    {"COMP", "Compass", K::Colour, 0, 0, {}, kColours},
    {"WIND", "Wind", K::Colour, 0, 0, {}, kColours},
    {"HILITE", "Highlight", K::Colour, 0, 0, {}, kColours},
    {"MEASURE", "Measure", K::Colour, 0, 0, {}, kColours},
    {"ZOOM", "Zoom Frame", K::Colour, 0, 0, {}, kColours},
    {"MSA", "MSA", K::Colour, 0, 0, {}, kColours},
    {"VICTOR", "Victor Airways", K::Colour, 0, 0, {}, kColours},
    {"JET", "Jet Airways", K::Colour, 0, 0, {}, kColours},
    {"CTRZ", "Control Zones", K::Colour, 0, 0, {}, kColours},
    {"AIR1", "Airsp. 1", K::Colour, 0, 0, {}, kColours},
    {"AIR2", "Airsp. 2", K::Colour, 0, 0, {}, kColours},
    {"VOR", "VOR", K::Colour, 0, 0, {}, kColours},
    {"NDB", "NDB", K::Colour, 0, 0, {}, kColours},
    {"ILS", "ILS", K::Colour, 0, 0, {}, kColours},
    {"INT", "Intersections", K::Colour, 0, 0, {}, kColours},
    {"FIX", "GPS Fixes", K::Colour, 0, 0, {}, kColours},
    {"USER", "User Waypoints", K::Colour, 0, 0, {}, kColours},
    {"ROUTE", "Route", K::Colour, 0, 0, {}, kColours},
    {"MOVAC", "Own Aircraft", K::Colour, 0, 0, {}, kColours},
    {"ACINCTRZ", "AC in Ctrz", K::Colour, 0, 0, {}, kColours},
    {"ACATCTRZ", "AC at Ctrz", K::Colour, 0, 0, {}, kColours},
    {"AI", "AI Traffic", K::Colour, 0, 0, {}, kColours},
    {"AIFREQ", "AI on Frequency", K::Colour, 0, 0, {}, kColours},
    {"TCAS1", "TCAS Warning", K::Colour, 0, 0, {}, kColours},
    {"TCAS2", "TCAS Alert", K::Colour, 0, 0, {}, kColours},
    {"AP", "Airports", K::Colour, 0, 0, {}, kColours},
    {"RWY", "Runways", K::Colour, 0, 0, {}, kColours},
    {"TAXI", "Taxiways", K::Colour, 0, 0, {}, kColours},
    {"PARKING", "Parking", K::Colour, 0, 0, {}, kColours},
    {"IVAOFIR", "Online FIR", K::Colour, 0, 0, {}, kColours},
    {"IVAOFSS", "Online Delivery", K::Colour, 0, 0, {}, kColours},
    {"IVAOTWR", "Online Tower", K::Colour, 0, 0, {}, kColours},
    {"IVAOGND", "Online Ground", K::Colour, 0, 0, {}, kColours},
    {"IVAOAPP", "Online Approach", K::Colour, 0, 0, {}, kColours},
    {"STATICACCOLOR", "Static Aircraft", K::Colour, 0, 0, {}, kColours},
};

// A whole number as typed: blanks around it, an optional sign, digits only.
std::optional<int32_t> WholeNumber(std::string_view typed) {
  const std::string t = Trim(typed);
  std::size_t i = (!t.empty() && (t[0] == '-' || t[0] == '+')) ? 1 : 0;
  if (i == t.size() || t.size() > 10) return std::nullopt;
  int64_t v = 0;
  for (std::size_t j = i; j < t.size(); ++j) {
    if (t[j] < '0' || t[j] > '9') return std::nullopt;
    v = v * 10 + (t[j] - '0');
  }
  return static_cast<int32_t>(t[0] == '-' ? -v : v);
}

bool KnownSource(std::string_view source) {
  const std::string_view name = source.substr(0, source.find(':'));
  for (const SimulatorKind& k : SimulatorKinds())
    if (k.Name == name) return true;
  return false;
}

}  // namespace

std::span<const OptionDef> OptionDefs() { return kOptions; }

const OptionDef* FindOption(std::string_view key) {
  for (const OptionDef& d : kOptions)
    if (d.Key == key) return &d;
  return nullptr;
}

std::string IniValue(const Settings& s, std::string_view key) {
  const std::string text = WriteIni(s);
  const std::string head = "\r\n" + std::string(key) + "=";
  std::size_t at = ("\r\n" + text).find(head);
  if (at == std::string::npos) return {};
  at += head.size() - 2;
  return text.substr(at, text.find("\r\n", at) - at);
}

void SetIniValue(Settings& s, std::string_view key, std::string_view value) {
  ReadIni(std::string(key) + "=" + std::string(value), s);
}

void OptionsForm::Load(const Settings& live, std::optional<std::string> colorText) {
  work_ = live;
  typed_.clear();
  for (const OptionDef& d : kOptions)
    if (d.Kind == OptionKind::Number || d.Kind == OptionKind::Text)
      typed_.emplace_back(std::string(d.Key), IniValue(live, d.Key));
  colorText_ = std::move(colorText);
  themes_ = colorText_ ? ColorThemeNames(*colorText_) : std::vector<std::string>{};
}

std::string OptionsForm::Value(std::string_view key) const {
  for (const auto& [k, v] : typed_)
    if (k == key) return v;
  return IniValue(work_, key);
}

void OptionsForm::SetValue(std::string_view key, std::string_view typed) {
  const OptionDef* d = FindOption(key);
  if (!d) return;
  for (auto& [k, v] : typed_)
    if (k == key) {
      v.assign(typed);
      return;
    }
  // Flags and choices cannot hold a wrong value: the boxes offer only good ones.
  const std::optional<int32_t> n = WholeNumber(typed);
  if (n && *n >= d->Min && *n <= d->Max) SetIniValue(work_, key, std::to_string(*n));
}

Colour OptionsForm::ColourOf(std::string_view key) const {
  return static_cast<Colour>(std::strtol(IniValue(work_, key).c_str(), nullptr, 10));
}

void OptionsForm::SetColour(std::string_view key, Colour c) {
  const OptionDef* d = FindOption(key);
  if (d && d->Kind == OptionKind::Colour) SetIniValue(work_, key, std::to_string(c & 0xFFFFFF));
}

bool OptionsForm::ApplyTheme(std::string_view name) {
  return colorText_ && ApplyColorTheme(*colorText_, name, work_);
}

std::optional<std::string> OptionsForm::Check() const {
  for (const auto& [key, typed] : typed_) {
    const OptionDef& d = *FindOption(key);
    const std::string caption = std::string(d.Caption.substr(0, d.Caption.find_last_not_of(':') + 1));
    if (d.Kind == OptionKind::Number) {
      const std::optional<int32_t> n = WholeNumber(typed);
      if (!n || *n < d.Min || *n > d.Max)
        return caption + ": must be a whole number from " + std::to_string(d.Min) + " to " + std::to_string(d.Max) + ".";
    } else if (typed.find_first_of("\r\n") != std::string::npos) {
      return caption + ": must be one line.";
    } else if (d.Min == 1) {
      const std::string t = Trim(typed);
      if (!t.starts_with("http://") && !t.starts_with("https://"))
        return caption + ": must be a web address beginning with http:// or https://.";
    } else if (key == "SIMSOURCE" && !KnownSource(Trim(typed))) {
      std::string names;
      for (const SimulatorKind& k : SimulatorKinds()) names += (names.empty() ? "" : ", ") + k.Name;
      return caption + ": must be one of " + names + ".";
    }
  }
  return std::nullopt;
}

bool OptionsForm::Ok(Settings& live, const AppFolder& app, Ui& ui) const {
  if (const std::optional<std::string> why = Check()) {
    ui.MsgBox(*why, MsgStyle::Exclamation, kAppTitle);
    return false;
  }
  Settings next = work_;
  for (const auto& [key, typed] : typed_) SetIniValue(next, key, Trim(typed));
  live = next;
  if (!SaveIni(app, live)) {
    ui.MsgBox("The settings could not be written to orv.ini.", MsgStyle::Exclamation, kAppTitle);
    return false;
  }
  return true;
}

}  // namespace orv
