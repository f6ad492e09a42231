// The core's application state: the application folder, the settings, what
// the start-up decided and the fixed name tables. The program creates one and
// passes it by reference; the database, plan, simulator and online layers keep
// their own state beside it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/AppFolder.h"
#include "core/Settings.h"

namespace orv {

// The splash window's labels as the start-up leaves them.
struct SplashState {
  std::string LblVersion;      // the year line and the version
  std::string Progress;        // lblProgress: the last progress text
  std::string AiracText;       // Airac: the AIRAC cycle text
  bool AiracVisible = false;
  int32_t AiracColor = 0;      // blue * 65536 + green * 256 + red
  bool Visible = false;
};

// The number of lines of StartLog (and of the log file): 0..30.
inline constexpr int kStartLogLines = 31;

struct AppState {
  AppFolder Folder;             // AppPath
  Settings Config;              // orv.ini

  // Start-up scalars.
  std::string CommandLine;      // stored as given; the program has no options
  std::string DatabaseFolder;   // "\database\FS09\" or "\database\FS10\"
  std::string SimSuffix;        // " for Flight Simulator 2004", " for FS X", ...
  bool IsFsx = false;
  std::string FsPath;           // the simulator's folder from orvdbmanager.ini
  std::string LogPath;          // native path of ORV_Info.LOG
  std::vector<std::string> IvaoUrls;  // the data servers of URLIVAO.INI

  // Set when OVRLL is opened to choose the start airport.
  bool ChoosingStartAirport = false;

  // Name tables; unused indexes stay empty.
  std::array<std::string, 38> ParkingNames;     // 0..37
  std::array<std::string, 14> ParkingKinds;     // 1..13
  std::array<std::string, 13> FrequencyKinds;   // 1..12
  std::array<std::string, 257> SurfaceKinds;    // 0..256
  std::array<std::string, 4> FuelUnits;         // 0..3, by FUEL
  // Line 0 is the log's heading, lines 1.. one for each file opened at start.
  std::array<std::string, kStartLogLines> StartLog;

  // The twelve 32-bit slots of the selection state; all ones at load.
  std::array<uint32_t, 12> SelectionSlots{};

  SplashState Splash;

  AppState() = default;
  explicit AppState(AppFolder folder) : Folder(std::move(folder)) {}
};

}  // namespace orv
