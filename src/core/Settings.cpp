#include "core/Settings.h"

#include <array>
#include <cmath>
#include <limits>
#include <system_error>
#include <type_traits>
#include <variant>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Ui.h"

namespace orv {

namespace fs = std::filesystem;

namespace {

enum class KeyType : uint8_t {
  Byte,     // 0..255, saturating
  Int16,    // half to even, saturating
  Int32,    // half to even, saturating
  Colour,   // a 32-bit value; the keys a colour theme may set
  Flag,     // nonzero is true; written 1 or 0
  Text,     // the rest of the line as it stands
  FsxFlag,  // a flag that may be absent; not written while absent
};

using Field = std::variant<uint8_t Settings::*, int16_t Settings::*, int32_t Settings::*, bool Settings::*,
                           std::string Settings::*, std::optional<bool> Settings::*>;

struct KeyDef {
  std::string_view name;
  KeyType type;
  Field field;
  int32_t number;         // default of a number or flag
  std::string_view text;  // default of a text
};

// Every key of orv.ini, in the order the file is written.
const std::array<KeyDef, 86> kKeys = {{
    {"MAPWIN", KeyType::Byte, &Settings::MapWin, 0, {}},
    {"SCALE", KeyType::Int16, &Settings::Scale, 6, {}},
    {"AIRCRAFT", KeyType::Int16, &Settings::Aircraft, 12, {}},
    {"MAP", KeyType::Colour, &Settings::Map, 0x400000, {}},
    {"COAST", KeyType::Colour, &Settings::Coast, 0x000062, {}},
    {"LATLONG", KeyType::Colour, &Settings::LatLong, 0x5F5F5F, {}},
    {"COMP", KeyType::Colour, &Settings::Comp, 0x800000, {}},
    {"WIND", KeyType::Colour, &Settings::Wind, 0x0000FF, {}},
    {"HILITE", KeyType::Colour, &Settings::Hilite, 0x0000FF, {}},
    {"MEASURE", KeyType::Colour, &Settings::Measure, 0xFFFF00, {}},
    {"ZOOM", KeyType::Colour, &Settings::Zoom, 0x0000FF, {}},
    {"MSA", KeyType::Colour, &Settings::Msa, 0x808080, {}},
    {"VICTOR", KeyType::Colour, &Settings::Victor, 0xFF8000, {}},
    {"CTRZ", KeyType::Colour, &Settings::Ctrz, 0x3F3F3F, {}},
    {"JET", KeyType::Colour, &Settings::Jet, 0xFFFF00, {}},
    {"AIR1", KeyType::Colour, &Settings::Air1, 0x005500, {}},
    {"AIR2", KeyType::Colour, &Settings::Air2, 0x5B005B, {}},
    {"VOR", KeyType::Colour, &Settings::Vor, 0x0080FF, {}},
    {"NDB", KeyType::Colour, &Settings::Ndb, 0x00BF00, {}},
    {"ILS", KeyType::Colour, &Settings::Ils, 0x008080, {}},
    {"INT", KeyType::Colour, &Settings::Int, 0xC08000, {}},
    {"FIX", KeyType::Colour, &Settings::Fix, 0x004DEC, {}},
    {"USER", KeyType::Colour, &Settings::User, 0x808080, {}},
    {"MOVAC", KeyType::Colour, &Settings::MovAc, 0xFFFF00, {}},
    {"ACINCTRZ", KeyType::Colour, &Settings::AcInCtrz, 0x0000FF, {}},
    {"ROUTE", KeyType::Colour, &Settings::Route, 0x0000FF, {}},
    {"ACATCTRZ", KeyType::Colour, &Settings::AcAtCtrz, 0xFFFF00, {}},
    {"AI", KeyType::Colour, &Settings::Ai, 0x00FFFF, {}},
    {"AIFREQ", KeyType::Colour, &Settings::AiFreq, 0x00FF00, {}},
    {"TCAS1", KeyType::Colour, &Settings::Tcas1, 0x0080FF, {}},
    {"TCAS2", KeyType::Colour, &Settings::Tcas2, 0x0000FF, {}},
    {"AP", KeyType::Colour, &Settings::Ap, 0xAFAFAF, {}},
    {"RWY", KeyType::Colour, &Settings::Rwy, 0x3F3F3F, {}},
    {"TAXI", KeyType::Colour, &Settings::Taxi, 0xDFDFDF, {}},
    {"PARKING", KeyType::Colour, &Settings::Parking, 0x00FF00, {}},
    {"LAND", KeyType::Colour, &Settings::Land, 0x002F2F, {}},
    {"RIVER", KeyType::Colour, &Settings::River, 0xC08000, {}},
    {"IVAOFIR", KeyType::Colour, &Settings::IvaoFir, 0x640064, {}},
    {"IVAOFSS", KeyType::Colour, &Settings::IvaoFss, 0x00FF00, {}},
    {"IVAOTWR", KeyType::Colour, &Settings::IvaoTwr, 0x0000FF, {}},
    {"IVAOGND", KeyType::Colour, &Settings::IvaoGnd, 0x00FFFF, {}},
    {"IVAOAPP", KeyType::Colour, &Settings::IvaoApp, 0xFF8080, {}},
    {"FILL", KeyType::Byte, &Settings::Fill, 0, {}},
    {"FONTSIZE", KeyType::Byte, &Settings::FontSize, 0, {}},
    {"LL", KeyType::Int16, &Settings::LL, 3, {}},
    {"SECLEN", KeyType::Int16, &Settings::SecLen, 50, {}},
    {"SECWIDTH", KeyType::Int16, &Settings::SecWidth, 30, {}},
    {"FAFDIST", KeyType::Int16, &Settings::FafDist, 11, {}},
    {"DEFDIST", KeyType::Int16, &Settings::DefDist, 4, {}},
    {"FUEL", KeyType::Byte, &Settings::Fuel, 2, {}},
    // The map window's toggles: the toggle panel, compass and grid menus and
    // the airspace layer start shown, the AI and GPS windows hidden.
    {"BUTTON", KeyType::Int16, &Settings::Button, 1, {}},
    {"AIMENU", KeyType::Int16, &Settings::AiMenu, 0, {}},
    {"AIRSPACE", KeyType::Int16, &Settings::Airspace, 1, {}},
    {"AITRAFFIC", KeyType::Int16, &Settings::AiTraffic, 0, {}},
    {"GPSVISIBLE", KeyType::Int16, &Settings::GpsVisible, 0, {}},
    {"COMPMENU", KeyType::Int16, &Settings::CompMenu, 1, {}},
    {"LATLONMENU", KeyType::Int16, &Settings::LatLonMenu, 1, {}},
    {"GC", KeyType::Flag, &Settings::Gc, 1, {}},
    {"REGION", KeyType::Int32, &Settings::Region, 0, {}},
    {"COUNTRY", KeyType::Int32, &Settings::Country, 75, {}},
    {"STATE", KeyType::Int32, &Settings::State, -1, {}},
    {"CITY", KeyType::Int32, &Settings::City, 85, {}},
    {"DECSEC", KeyType::Int16, &Settings::DecSec, 1, {}},
    {"ARC", KeyType::Byte, &Settings::Arc, 1, {}},
    {"DIRCON", KeyType::Byte, &Settings::DirCon, 0, {}},
    {"TRACEALT", KeyType::Int32, &Settings::TraceAlt, 15000, {}},
    {"TRACEALTTYPE", KeyType::Int16, &Settings::TraceAltType, 0, {}},
    {"FPPATH09", KeyType::Text, &Settings::FpPath09, 0, {}},
    {"FPPATH10", KeyType::Text, &Settings::FpPath10, 0, {}},
    {"NATRACKURL", KeyType::Text, &Settings::NaTrackUrl, 0, kDefaultTrackUrl},
    {"PACOTURL", KeyType::Text, &Settings::PacotUrl, 0, kDefaultTrackUrl},
    {"WXURL", KeyType::Text, &Settings::WxUrl, 0, kDefaultWxUrl},
    {"AUTODOWNLOAD", KeyType::Flag, &Settings::AutoDownload, 1, {}},
    {"DLINTERVAL", KeyType::Int16, &Settings::DlInterval, 3, {}},
    {"SQUAWKBOXPATH", KeyType::Text, &Settings::SquawkBoxPath, 0, {}},
    {"IVAOPATH", KeyType::Text, &Settings::IvaoPath, 0, {}},
    {"STATICACCOLOR", KeyType::Colour, &Settings::StaticAcColor, 0x6AFF6A, {}},
    {"ONLUSRCALLSIGN", KeyType::Text, &Settings::OnlUsrCallsign, 0, {}},
    {"ONLSHOWALTSPEED", KeyType::Flag, &Settings::OnlShowAltSpeed, 1, {}},
    {"ONLSHOWDEPDEST", KeyType::Flag, &Settings::OnlShowDepDest, 1, {}},
    {"MZOOM", KeyType::Byte, &Settings::MZoom, 0, {}},
    {"SIMSOURCE", KeyType::Text, &Settings::SimSource, 0, "builtin"},
    {"LASTPLAN", KeyType::Text, &Settings::LastPlan, 0, {}},
    {"VATSIMURLSTATUS", KeyType::Text, &Settings::VatsimUrlStatus, 0, kDefaultVatsimStatusUrl},
    {"IVAOURLSTATUS", KeyType::Text, &Settings::IvaoUrlStatus, 0, kDefaultIvaoStatusUrl},
    {"FSX", KeyType::FsxFlag, &Settings::Fsx, 0, {}},
}};

void SetDefault(const KeyDef& k, Settings& s) {
  std::visit(
      [&](auto member) {
        using T = std::remove_cvref_t<decltype(s.*member)>;
        if constexpr (std::is_same_v<T, std::string>) {
          s.*member = std::string(k.text);
        } else if constexpr (std::is_same_v<T, std::optional<bool>>) {
          (s.*member).reset();
        } else if constexpr (std::is_same_v<T, bool>) {
          s.*member = k.number != 0;
        } else {
          s.*member = static_cast<T>(k.number);
        }
      },
      k.field);
}

// Converts the text right of "=" into the key's field.
void SetFromText(const KeyDef& k, std::string_view value, Settings& s) {
  std::visit(
      [&](auto member) {
        using T = std::remove_cvref_t<decltype(s.*member)>;
        if constexpr (std::is_same_v<T, std::string>) {
          s.*member = std::string(value);
        } else if constexpr (std::is_same_v<T, std::optional<bool>>) {
          s.*member = CInt(Val(value)) != 0;
        } else if constexpr (std::is_same_v<T, bool>) {
          s.*member = CInt(Val(value)) != 0;
        } else {
          // A number that does not fit the key's type is a conversion error,
          // which the reading ignores: the key keeps what it held (its default),
          // and a later save writes that rather than a clamped value.
          double rounded = std::nearbyint(Val(value));
          if (rounded < static_cast<double>(std::numeric_limits<T>::min()) ||
              rounded > static_cast<double>(std::numeric_limits<T>::max()))
            return;
          if constexpr (std::is_same_v<T, uint8_t>) s.*member = CByte(rounded);
          else if constexpr (std::is_same_v<T, int16_t>) s.*member = CInt(rounded);
          else s.*member = CLng(rounded);
        }
      },
      k.field);
}

// The value as written, or nothing for an absent FSX.
std::optional<std::string> ValueText(const KeyDef& k, const Settings& s) {
  return std::visit(
      [&](auto member) -> std::optional<std::string> {
        using T = std::remove_cvref_t<decltype(s.*member)>;
        if constexpr (std::is_same_v<T, std::string>) {
          // A line break inside a value would split it into two lines of the
          // file and could forge a key; blanks stand in for it.
          std::string text = s.*member;
          for (char& c : text)
            if (c == '\r' || c == '\n') c = ' ';
          return text;
        } else if constexpr (std::is_same_v<T, std::optional<bool>>) {
          if (!(s.*member).has_value()) return std::nullopt;
          return std::string(*(s.*member) ? "1" : "0");
        } else if constexpr (std::is_same_v<T, bool>) {
          return std::string(s.*member ? "1" : "0");
        } else {
          return NumText(static_cast<double>(s.*member));
        }
      },
      k.field);
}

bool StartsWithKey(std::string_view line, std::string_view name) {
  return line.size() > name.size() && line.compare(0, name.size(), name) == 0 && line[name.size()] == '=';
}

// The matching rule shared by every KEY=value file: all keys are tried on the
// line, with no early stop, so the last line of a key wins.
template <typename Pred>
void ReadKeys(std::string_view line, Settings& s, Pred accept) {
  for (const KeyDef& k : kKeys) {
    if (!accept(k)) continue;
    if (!StartsWithKey(line, k.name)) continue;
    std::string_view value = line.substr(k.name.size() + 1);
    SetFromText(k, value, s);
    if (k.name == "TRACEALTTYPE") s.TraceAltTypeZero = s.TraceAltType == 0;
  }
}

}  // namespace

Settings::Settings() : TraceAltTypeZero(false) {
  for (const KeyDef& k : kKeys) SetDefault(k, *this);
}

void ReadIni(std::string_view text, Settings& s) {
  for (const std::string& line : SplitLines(text)) {
    ReadKeys(line, s, [](const KeyDef&) { return true; });
  }
  // The old track page moved; a file written before the move still names it.
  s.NaTrackUrl = Replace(s.NaTrackUrl, "/common/nat.html", "/trackmain.html");
  if (s.TraceAlt < 1000) s.TraceAlt = 1000;
  if (s.TraceAlt > 50000) s.TraceAlt = 50000;
  if (s.DefDist == 0) s.DefDist = 4;
}

std::string WriteIni(const Settings& s) {
  std::string out;
  out.reserve(2048);
  for (const KeyDef& k : kKeys) {
    std::optional<std::string> value = ValueText(k, s);
    if (!value) continue;
    out.append(k.name);
    out += '=';
    out += *value;
    out += "\r\n";
  }
  return out;
}

void ReadIniFile(const AppFolder& app, Settings& s) {
  if (std::optional<std::string> text = ReadWholeText(app.Resolve("\\orv.ini"))) ReadIni(*text, s);
}

bool SaveIni(const AppFolder& app, const Settings& s) {
  return WriteFileAtomic(app.Resolve("\\orv.ini"), std::string_view(WriteIni(s)));
}

SimulatorChoice ChooseSimulator(const Settings& s, const AppFolder& app) {
  if (s.Fsx.has_value()) {
    if (!*s.Fsx) return {false, "\\database\\FS09\\", " for Flight Simulator 2004"};
    return {true, "\\database\\FS10\\", " for Flight Simulator X"};
  }
  auto hasAirports = [&](std::string_view folder) {
    std::error_code ec;
    fs::path dir = app.Resolve(folder);
    fs::create_directories(dir, ec);  // a read-only folder is no reason to stop
    return fs::exists(app.Resolve(std::string(folder) + "airport.orv"), ec);
  };
  if (hasAirports("\\database\\FS09\\")) return {false, "\\database\\FS09\\", " for FS2004"};
  if (hasAirports("\\database\\FS10\\")) return {true, "\\database\\FS10\\", " for FS X"};
  return {false, "\\database\\FS09\\", " for FS2004"};
}

std::string ReadDbManagerIni(std::string_view text, bool isFsx) {
  std::string_view key = isFsx ? "FSPATH10" : "FSPATH09";
  std::string path;
  for (const std::string& line : SplitLines(text))
    if (StartsWithKey(line, key)) path = line.substr(key.size() + 1);
  return path;
}

void FillDefaultPaths(Settings& s, const AppFolder& app) {
  if (s.SquawkBoxPath.empty()) s.SquawkBoxPath = app.Resolve(kSquawkBoxFolder).string();
  if (s.IvaoPath.empty()) s.IvaoPath = app.Resolve(kIvaoFolder).string();
}

// ---------------------------------------------------------------- colour themes

namespace {
std::string ThemeName(std::string_view line) {
  std::string_view name = line.substr(1);
  size_t close = name.find(']');
  if (close != std::string_view::npos) name = name.substr(0, close);
  return std::string(name);
}
}  // namespace

std::vector<std::string> ColorThemeNames(std::string_view text) {
  std::vector<std::string> names;
  for (const std::string& line : SplitLines(text))
    if (!line.empty() && line[0] == '[') names.push_back(ThemeName(line));
  return names;
}

bool ApplyColorTheme(std::string_view text, std::string_view name, Settings& s) {
  bool inTheme = false;
  bool found = false;
  for (const std::string& line : SplitLines(text)) {
    if (!line.empty() && line[0] == '[') {
      if (found) break;  // the theme ends where the next begins
      inTheme = ThemeName(line) == name;
      found = inTheme;
      continue;
    }
    if (inTheme) ReadKeys(line, s, [](const KeyDef& k) { return k.type == KeyType::Colour; });
  }
  return found;
}

std::optional<std::string> ReadColorFile(const AppFolder& app, Ui& ui) {
  std::optional<std::string> text = ReadWholeText(app.Resolve("\\orvcolor.ini"));
  if (!text) ui.MsgBox("ORVColor.ini missing!");
  return text;
}

// ---------------------------------------------------------------- IVAO servers

const std::vector<std::string>& DefaultIvaoUrls() {
  static const std::vector<std::string> urls = {
      "https://data.ivao.aero/whazzup.txt",
      "https://backup.ivao.aero/whazzup.txt",
      "https://www.ivao.aero/whazzup/whazzup.txt",
  };
  return urls;
}

std::vector<std::string> ReadUrlList(std::string_view text) {
  std::vector<std::string> urls;
  for (const std::string& line : SplitLines(text)) {
    std::string url = Trim(line);
    if (!url.empty()) urls.push_back(std::move(url));
  }
  if (urls.empty()) urls.push_back(DefaultIvaoUrls().front());
  return urls;
}

std::vector<std::string> LoadIvaoUrls(const AppFolder& app) {
  fs::path path = app.Resolve("\\URLIVAO.INI");
  std::error_code ec;
  if (!fs::exists(path, ec)) {
    std::string text;
    for (const std::string& url : DefaultIvaoUrls()) text += url + "\r\n";
    WriteFileAtomic(path, std::string_view(text));  // unwritable: the list below still has the defaults
    return DefaultIvaoUrls();
  }
  std::optional<std::string> text = ReadWholeText(path);
  return ReadUrlList(text ? std::string_view(*text) : std::string_view());
}

}  // namespace orv
