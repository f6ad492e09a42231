// The start-up of the program (the splash window OVRIntro's Load) as headless
// logic: settings, AIRAC label, server list, then every database file in its
// fixed order with a progress text and a line of the start log, then the
// choice of the first window. The readers of the files plug in through
// StartupLoader; the windows are left to the shell.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/FileIo.h"
#include "core/Ui.h"

namespace orv {

// Every file the start-up opens, in the order it opens them.
enum class StartupFile : uint8_t {
  Aircraft,        // "\user\aircraft.orv" (before the database; only when it exists)
  MagVar,          // step 1: "\magvar10.swf" or "\magvar09.swf"
  Region,          // step 2: the database folder's region.orv ...
  Country,
  State,
  City,
  Airport,         // ... to airport.orv
  Taxi,            // steps 3-5, from the database folder
  Poly,
  Marker,
  Intersections,   // step 6: "\database\dijinter.orv"
  VictorAirways,   // step 7
  JetAirways,      // step 8
  Fixes,           // step 9
  Vors,            // step 10
  Ndbs,            // step 11
  Airspaces,       // step 12
  IvaoText,        // step 13: "\database\orv_ivao.txt"
  VatsimText,      // step 14: "\database\orv_vatsim.txt"
  IvaoSectors,     // step 15: "\database\orv_ivao.dat"
  VatsimSectors,   // step 16: "\database\orv_vatsim.dat"
  Msa,             // step 17
  UserWaypoints,   // step 18: "\database\userwp.udb"
  Sid,             // step 19
  Star,            // step 20
  WorldPolygons,   // step 21: "\map\worldpolygon.bin"
  WorldLines,      // step 22: "\map\worldline.bin"
  WxStations,      // step 23: "\database\WxStation.txt"
  UserObjects,     // after step 23: "\database\userObj.txt" (only when it exists)
};

// What a file of length 0 does to the start-up.
enum class EmptyRule : uint8_t {
  Pass,              // handed to the loader as it is (the variation grid)
  Fatal,             // ends the program through the fatal path
  Skip,              // not loaded; the start-up goes on
  Delete,            // the empty file is deleted; a missing one counts as empty
  UserWpRewrite,     // a file without its header (missing and empty included)
                     // is replaced by one holding only the header
  Optional,          // a missing or empty file is not loaded; an existing one
                     // is logged when it has a slot
};

struct StartupFileInfo {
  StartupFile File;
  int Step;                  // 1..23 of the load order; 0 before it, 24 after it
  int LogSlot;               // its line in StartLog; 0 when it has none
  std::string_view Name;     // a constant under AppPath, or a name in the database folder
  bool InSimFolder;          // Name is relative to the database folder of the simulator
  EmptyRule Empty;
  std::string_view Progress; // shown before the file, "" for none
  bool WithSuffix;           // the progress text carries the simulator suffix
};

// The start-up's table of files, in order. Aircraft and UserObjects come
// first and last; between them the 27 files of steps 1 to 23. The variation
// grid's entry names "\magvar09.swf"; with IsFsx "\magvar10.swf" is read.
std::span<const StartupFileInfo> StartupFiles();

// The header a valid user waypoint file starts with.
inline constexpr std::string_view kUserWpHeader = "ORVUSERDB";

// One loaded array and its record count.
struct ArrayCount {
  std::string_view Name;
  int64_t Count = 0;
};

// The arrays the start-up fills, in the order Counts() lists them.
std::span<const std::string_view> StartupArrayNames();

// The readers of the database files, plugged into the start-up by the layers
// above the core. A returned text is a reader's refusal of a corrupt file: it
// names the file and the record, and ends the start-up through the fatal path.
class StartupLoader {
public:
  virtual ~StartupLoader() = default;

  // The whole file's bytes, once for each file the start-up reads: every file
  // of the table with a length of at least 1 (the variation grid even when
  // empty), and the user waypoint file always, as rewritten when its header
  // was missing. Files skipped or deleted when empty are not handed over. The
  // bytes live only during the call: a loader that keeps them copies them.
  // path is the file's native path.
  virtual std::optional<std::string> LoadFile(StartupFile file, const std::filesystem::path& path,
                                              std::span<const uint8_t> bytes) {
    return std::nullopt;
  }
  // After step 23 and the user objects: link each ILS to its runway.
  virtual void LinkIls() {}
  // Every array of StartupArrayNames() with its record count.
  virtual std::vector<ArrayCount> Counts() const;
};

// The loader that reads nothing and reports 0 records for every array.
class NullStartupLoader : public StartupLoader {};

enum class StartupOutcome : uint8_t {
  OpenMap,               // DIRCON 1: OVRMap directly
  OpenAirportSelection,  // OVRLL, choosing the start airport
  Ended,                 // the program ends (fatal path, missing file, unreadable folder)
};

struct StartupResult {
  StartupOutcome Outcome = StartupOutcome::Ended;
  std::string FirstWindow;       // "OVRMap" or "OVRLL"; empty when ended
  std::vector<std::string> Messages;  // the texts shown when it ended, in order
  bool ProgramEnds() const { return Outcome == StartupOutcome::Ended; }
};

// The texts of the fatal path.
inline constexpr std::string_view kRunDbManagerText =
    "       You have to run the Database Manager first!!        ";
inline constexpr std::string_view kZeroBytesText = "File missing or zero bytes! Check ORV_Info.log for details!";
// The fatal message box: the two texts with a line break between.
std::string FatalMessage();

// The version text that follows the year line and the log's "ORV ".
inline constexpr std::string_view kVersionText = " \xB7 Version 8.0 \xB7 Build:010107";

// Runs the whole start-up on state (whose Folder is set). Progress texts go to
// ui.ShowProgress, the wait cursor is on while loading. On the fatal path the
// log is written with all its lines before the message box; a reader's
// refusal is shown first, then the fatal message. A missing file shows
// "File not found: " and its path after the log is written.
StartupResult RunStartup(AppState& state, Ui& ui, const Clock& clock, StartupLoader& loader);

// The AIRAC label from the text of AIRAC.INI: its items (split at commas and
// line ends, quotes taken off) trimmed and joined with " - ". Empty for an
// empty text.
std::string AiracLabelText(std::string_view text);

// Fills ParkingNames, ParkingKinds, FrequencyKinds, SurfaceKinds, FuelUnits.
void FillNameTables(AppState& state);

// The log's first line: "ORV " + kVersionText + " - " + date + " - " + time +
// " - " + AIRAC text. The date is dd.mm.yyyy and the time hh:mm:ss, both the
// local time of clock.
std::string StartLogHeading(const Clock& clock, std::string_view airacText);

// Writes StartLog[0..lastIndex] to state.LogPath, line 0 being the heading,
// CR LF after each line. False when the file cannot be written.
bool WriteStartLog(AppState& state, const Clock& clock, int lastIndex);

// The windows OVRIntro's Unload unloads, in order.
std::span<const std::string_view> ShutdownOrder();

}  // namespace orv
