// The settings files beside the program: "\orv.ini" (KEY=value lines, no
// sections), "\orvdbmanager.ini" (the simulator folders the database tool
// knows), "\orvcolor.ini" (named colour themes) and "\URLIVAO.INI" (the IVAO
// data servers).
//
// Every key of orv.ini lives in one table (name, type, field, default) inside
// Settings.cpp. The constructor, the reader, the writer and the colour themes
// all walk that table, so the written key order is the table's order and a new
// key cannot be read without being written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"

namespace orv {

class Ui;

// Colours are blue * 65536 + green * 256 + red; flags are 0 or 1 in the file.
struct Settings {
  Settings();  // every key at its default (the two export folders stay empty)

  uint8_t MapWin;          // MAPWIN: map window state (0 normal, 2 maximised)
  int16_t Scale;           // SCALE: zoom index
  int16_t Aircraft;        // AIRCRAFT: aircraft symbol size
  int32_t Map;             // MAP: map background
  int32_t Coast;           // COAST
  int32_t LatLong;         // LATLONG: grid
  int32_t Comp;            // COMP: compass rose
  int32_t Wind;            // WIND
  int32_t Hilite;          // HILITE
  int32_t Measure;         // MEASURE
  int32_t Zoom;            // ZOOM: zoom frame
  int32_t Msa;             // MSA
  int32_t Victor;          // VICTOR: low airways
  int32_t Ctrz;            // CTRZ: control zones
  int32_t Jet;             // JET: high airways
  int32_t Air1;            // AIR1
  int32_t Air2;            // AIR2
  int32_t Vor;             // VOR
  int32_t Ndb;             // NDB
  int32_t Ils;             // ILS
  int32_t Int;             // INT: intersections
  int32_t Fix;             // FIX: GPS fixes
  int32_t User;            // USER: user waypoints
  int32_t MovAc;           // MOVAC: own aircraft
  int32_t AcInCtrz;        // ACINCTRZ
  int32_t Route;           // ROUTE
  int32_t AcAtCtrz;        // ACATCTRZ
  int32_t Ai;              // AI: AI traffic
  int32_t AiFreq;          // AIFREQ
  int32_t Tcas1;           // TCAS1
  int32_t Tcas2;           // TCAS2
  int32_t Ap;              // AP: airport ground
  int32_t Rwy;             // RWY
  int32_t Taxi;            // TAXI
  int32_t Parking;         // PARKING
  int32_t Land;            // LAND
  int32_t River;           // RIVER
  int32_t IvaoFir;         // IVAOFIR
  int32_t IvaoFss;         // IVAOFSS
  int32_t IvaoTwr;         // IVAOTWR
  int32_t IvaoGnd;         // IVAOGND
  int32_t IvaoApp;         // IVAOAPP
  uint8_t Fill;            // FILL: land area unfilled (0) or filled
  uint8_t FontSize;        // FONTSIZE: small (0) or large
  int16_t LL;              // LL: latitude/longitude lines
  int16_t SecLen;          // SECLEN
  int16_t SecWidth;        // SECWIDTH
  int16_t FafDist;         // FAFDIST
  int16_t DefDist;         // DEFDIST: 0 after reading becomes 4
  uint8_t Fuel;            // FUEL: index into FuelUnits
  // Read only by the map window when it loads.
  int16_t Button;          // BUTTON
  int16_t AiMenu;          // AIMENU
  int16_t Airspace;        // AIRSPACE
  int16_t AiTraffic;       // AITRAFFIC
  int16_t GpsVisible;      // GPSVISIBLE
  int16_t CompMenu;        // COMPMENU
  int16_t LatLonMenu;      // LATLONMENU
  bool Gc;                 // GC: great circle navigation
  int32_t Region;          // REGION: last selection in OVRLL
  int32_t Country;         // COUNTRY
  int32_t State;           // STATE
  int32_t City;            // CITY
  int16_t DecSec;          // DECSEC: decimal seconds in coordinates
  std::string FpPath09;    // FPPATH09: last flight plan folder, FS2004
  std::string FpPath10;    // FPPATH10: last flight plan folder, FS X
  uint8_t Arc;             // ARC: distance arc for the autopilot
  uint8_t DirCon;          // DIRCON: 1 opens the map directly at start
  int32_t TraceAlt;        // TRACEALT: clamped to 1000..50000
  int16_t TraceAltType;    // TRACEALTTYPE
  std::string NaTrackUrl;  // NATRACKURL
  std::string PacotUrl;    // PACOTURL
  std::string WxUrl;       // WXURL
  bool AutoDownload;       // AUTODOWNLOAD
  int16_t DlInterval;      // DLINTERVAL: minutes between downloads
  std::string SquawkBoxPath;  // SQUAWKBOXPATH: empty until FillDefaultPaths
  std::string IvaoPath;       // IVAOPATH: empty until FillDefaultPaths
  int32_t StaticAcColor;   // STATICACCOLOR
  std::string OnlUsrCallsign;  // ONLUSRCALLSIGN
  bool OnlShowAltSpeed;    // ONLSHOWALTSPEED
  bool OnlShowDepDest;     // ONLSHOWDEPDEST
  uint8_t MZoom;           // MZOOM: zoom with the mouse wheel
  std::string SimSource;   // SIMSOURCE: the simulator "Connect to FS" links to
                           // ("builtin", "bridge:HOST:PORT", "flightgear", "xplane:HOST")
  std::string LastPlan;    // LASTPLAN: the plan file in memory when the program ended, reopened at start
  std::string VatsimUrlStatus;  // VATSIMURLSTATUS
  std::string IvaoUrlStatus;    // IVAOURLSTATUS
  // FSX: absent until a file or the simulator choice sets it; 0 is FS2004,
  // anything else FS X. An absent key is not written.
  std::optional<bool> Fsx;

  // Not a key: set whenever a TRACEALTTYPE line is read, true when its value
  // is 0. Left false when the key is absent.
  bool TraceAltTypeZero;
};

// The default server addresses (a deployment choice).
inline constexpr std::string_view kDefaultTrackUrl = "https://www.notams.faa.gov/trackmain.html";
// The current feeds: the aviation weather services' bulk METAR file, the
// VATSIM status document naming its v3 data feed, and the IVAO whazzup v2
// feed, which is its own status (the download lists its address as the one
// data server).
inline constexpr std::string_view kDefaultWxUrl = "https://aviationweather.gov/data/cache/metars.cache.csv.gz";
inline constexpr std::string_view kDefaultVatsimStatusUrl = "https://status.vatsim.net/status.json";
inline constexpr std::string_view kDefaultIvaoStatusUrl = "https://api.ivao.aero/v2/tracker/whazzup";
// The two export folders, under the application folder.
inline constexpr std::string_view kSquawkBoxFolder = "\\FSplan\\SquawkBox";
inline constexpr std::string_view kIvaoFolder = "\\FSplan\\IVAO";

// Reads orv.ini text into s. Each line is compared, for every key, with
// "KEY=" at its start (case-sensitive); a match converts the rest of the line.
// The last occurrence of a key wins; unknown lines change nothing. Then
// TRACEALT is clamped to 1000..50000 and DEFDIST 0 becomes 4. Never fails:
// what cannot be read keeps the value s had.
void ReadIni(std::string_view text, Settings& s);

// The whole orv.ini text, one key a line in the fixed order, CR LF line ends.
std::string WriteIni(const Settings& s);

// Reads AppPath\orv.ini when it exists; a missing or unreadable file leaves s.
void ReadIniFile(const AppFolder& app, Settings& s);
// Rewrites AppPath\orv.ini whole through a temporary file; false on failure.
bool SaveIni(const AppFolder& app, const Settings& s);

// The simulator the database belongs to, decided after reading orv.ini.
struct SimulatorChoice {
  bool IsFsx = false;
  std::string DatabaseFolder;  // "\database\FS09\" or "\database\FS10\"
  std::string Suffix;          // appended to some progress texts
};

// With the FSX key: FS2004 for 0, FS X otherwise. Without it: the first of
// FS09 and FS10 whose folder holds an airport.orv, else FS2004. Probing makes
// the folders it looks into, ignoring failure.
SimulatorChoice ChooseSimulator(const Settings& s, const AppFolder& app);

// orvdbmanager.ini: the simulator folder of FSPATH10 when isFsx, else of
// FSPATH09 (same matching rule as orv.ini); empty when absent.
std::string ReadDbManagerIni(std::string_view text, bool isFsx);

// Fills an empty SQUAWKBOXPATH or IVAOPATH with its folder under AppPath, as
// a native path.
void FillDefaultPaths(Settings& s, const AppFolder& app);

// ---------------------------------------------------------------- colour themes

// orvcolor.ini: a line beginning with "[" starts a theme; its name is the text
// after "[" up to "]" (or the line's end). The theme's lines are KEY=value.
std::vector<std::string> ColorThemeNames(std::string_view text);
// Reads the colour keys of the first theme of that name into s; other keys of
// the theme are ignored. False when no theme has the name.
bool ApplyColorTheme(std::string_view text, std::string_view name, Settings& s);
// The text of AppPath\orvcolor.ini; when it does not exist, shows
// "ORVColor.ini missing!" and gives nothing.
std::optional<std::string> ReadColorFile(const AppFolder& app, Ui& ui);

// ---------------------------------------------------------------- IVAO servers

// The three data servers written into a missing URLIVAO.INI.
const std::vector<std::string>& DefaultIvaoUrls();
// One URL a line, each trimmed; blank lines are passed over. An empty list
// gives the first default URL as a list of one.
std::vector<std::string> ReadUrlList(std::string_view text);
// Creates AppPath\URLIVAO.INI with the defaults when missing, then reads it.
std::vector<std::string> LoadIvaoUrls(const AppFolder& app);

}  // namespace orv
