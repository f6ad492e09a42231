// The program's own plan file, ".pln": a [Flightplan] section the simulator
// reads and an [ORV] section that holds the rows exactly. Also the common road
// every plan file takes into memory: a file is read whole into a new plan off
// to the side, and only a plan that was read completely replaces the one in
// memory.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "planning/FlightPlan.h"

namespace orv {

class NavLookup;
class Ui;

// What the writer takes from the window beside the plan.
struct PlanWriteOptions {
  bool Ifr = true;          // optIFR; false for optVFR
  bool PlainForm = false;   // chckFormat(1): navaid lines without frequencies
  std::string SidLabel;     // the SID and STAR labels of OVRMap
  std::string StarLabel;
};

// The whole ".pln" text, CR LF line ends. A plan with LastRow 1 is written as
// a direct route (routetype=0, no "WP=" lines).
std::string FormatPlanFile(const FlightPlan& plan, const NavLookup& nav, const PlanWriteOptions& options);

// The [ORV] part of a ".pln" file as read, before anything is looked up.
struct PlanFileData {
  std::string DepartAPCode;
  std::string DestAPCode;
  int16_t DepartNum = 0;
  std::string DepartID;
  std::string DepartType;
  uint8_t RouteType = 0;
  std::string Sid;
  std::string Star;
  std::vector<WaypointRec> Rows;  // rows 1..N of the plan
  std::string Error;              // the message when the file cannot be used
};

// The rows a ".pln" file can carry between its airports.
inline constexpr int kMaxPlanFileRows = 500;

inline constexpr std::string_view kNotValidPlan = " Sorry! This is not a valid ORV flight plan!";
inline constexpr std::string_view kNotInDatabase = " is not in currently loaded database!";

PlanFileData ParsePlanFile(std::string_view text);

// Menu state that opening a plan decides: which stored procedures exist for
// its airports. The window enables MenuOpenSid and MenuOpenStar from it.
struct SidStarMenuState {
  bool OpenSidEnabled = false;
  bool OpenStarEnabled = false;
};

// Asks the stored procedure files whether they hold a SID for a departure or a
// STAR for a destination (ICAO code, trimmed). Either may be empty: no entry.
struct ProcedureProbe {
  std::function<bool(std::string_view icao)> HasSid;
  std::function<bool(std::string_view icao)> HasStar;
};

// The plan-file side of the program state: the file the plan came from or went
// to last and how it was written (MenuSaveFP writes there the same way), the
// SID and STAR labels a file brought, and the procedure menu state.
struct PlanFileState {
  std::string CurrentPath;
  bool Ifr = true;          // optIFR and chckFormat(1) as SaveRoute last wrote
  bool PlainForm = false;
  std::string SidLabel;
  std::string StarLabel;
  SidStarMenuState Menu;
};

// Reads ".pln" text into the plan of editor. Refusals show their message and
// leave the plan, the table and state as they were. On success the plan is
// replaced, the departure list refilled, the labels and menu state set.
bool OpenPlanFileText(PlanEditor& editor, Ui& ui, std::string_view text, const ProcedureProbe& probe,
                      PlanFileState& state);

// A point of a plan read from another program's file, before it is matched to
// the database.
struct ImportPoint {
  std::string Ident;     // as the file names it
  std::string KindHint;  // "VOR", "NDB", "Int", "Fix", "Uwp" or empty when the file does not say
  double Lat = 0;
  double Lon = 0;
  std::string Airway;    // empty for a direct leg
  uint8_t Origin = kOriginEnroute;
  std::string Name;      // a description the file gives, if any
};

struct ImportedPlan {
  std::string DepartureIcao;
  std::string DestinationIcao;
  std::vector<ImportPoint> Points;  // between the airports
  std::string SidName;
  std::string StarName;
  bool Ifr = true;
  int32_t CruiseAltitude = 0;  // feet, 0 when not given
  std::string Error;           // the message when the file cannot be used
};

// How far a file's point may lie from a database object of the same ident for
// the two to be taken as one.
inline constexpr double kImportMatchNm = 3.0;

// Puts an imported plan into memory: both airports must be in the database,
// each point goes in through InsertWaypoint as the database object of its
// ident within kImportMatchNm, or as a user position when none is near.
bool InstallImportedPlan(PlanEditor& editor, Ui& ui, const ImportedPlan& imported, const ProcedureProbe& probe,
                         PlanFileState& state);

// The airport slot with this code (trimmed, any case); the last match counts,
// as the airport array is searched in order. -1 when none.
int FindAirportLast(const NavLookup& nav, std::string_view code);

// Writes a file the pilot owns: through a temporary file renamed over the old
// one. A failure shows "Could not write <path>!" and returns false.
bool SaveUserFile(Ui& ui, const std::string& path, std::string_view text);

}  // namespace orv
