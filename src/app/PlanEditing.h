// Editing the plan from the main window: rows inserted by a right click on
// the map (InsertAtClick and its pick list lstWP), by a typed identifier or a
// named map position in txtManWP, airports chosen by a right click while the
// plan waits for them, and the bottom button bar. The window only shows the
// lists and fields kept here and hands back what the user picked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "planning/FlightPlan.h"

namespace orv {

struct ProgramState;
class Ui;

// Which end of a new plan a right click on an airport chooses.
enum class AirportPick : uint8_t { None, Departure, Destination };

// The plan panel's editing state beyond the plan and its lists.
struct PlanEditState {
  bool TableInsertion = true;   // a right click on the map inserts a row
  AirportPick Pick = AirportPick::None;
  // A right click that hit nothing: txtManWP waits for a name for the
  // position clicked.
  bool ManualMode = false;
  float ManualLat = 0, ManualLon = 0;
  std::string ManualCaption;    // txtManWP's caption
  bool PickListShown = false;   // lstWP shows candidates
  int RangeStart = -1;          // first row of a range marked in WPTable; -1 none
  int PickIndex = 0;            // the line of lstWP the user is on
};

inline constexpr std::string_view kNoInsertionPoint =
    "You have to specify an insertion point!\r\nClick on the table row AFTER which the waypoint is to be inserted!";
inline constexpr std::string_view kManualCaption = "... select ...";
inline constexpr std::string_view kManualPrompt = "Waypoint ident:";
// MapStatus(0), the link's field, also shows the hints of the plan.
inline constexpr int kStatusHint = 0;
// The hint in MapStatus(0) while a new plan waits for its airports.
inline constexpr std::string_view kPickDepartureHint = "Right click on the departure airport";
inline constexpr std::string_view kPickDestinationHint = "Right click on the destination airport";

// The objects under a right click, within 100 units in X and Y, in the order
// VOR, NDB, intersections, fixes, user waypoints, each kind only while its
// layer is shown.
std::vector<WaypointRec> ClickCandidates(const ProgramState& s, double x, double y);

// The line of a click candidate in lstWP: kind, code and the course from the
// selected row, "VOR FFM (073°)".
std::string CandidateLine(const WaypointRec& candidate, const WaypointRec& from);

enum class ClickInsert { Inserted, PickList, Manual };
// A right click with a table row selected: one candidate goes in behind the
// row at once, several fill lstWP, none offers txtManWP for a named position.
ClickInsert InsertAtClick(ProgramState& s, double x, double y);

// Enter in txtManWP: the name of the clicked position in manual mode (a
// position row goes in behind the selection), otherwise the identifier to
// look up (lstWP lists the matches). False when nothing was inserted or
// listed; the reason has been shown.
bool ManualWaypointEnter(ProgramState& s, Ui& ui, std::string_view typed);
// A line of lstWP chosen (Enter or a click): inserted behind the selection.
bool PickListChoose(ProgramState& s, int index);
// Esc: the pick list and the manual field reset, no row selected.
void ResetPlanSelection(ProgramState& s);

// A right click while a new plan waits for an airport: the first airport in
// array order within 200 units in X and Y becomes the departure or the
// destination. True when one was taken.
bool PickAirportAt(ProgramState& s, double x, double y);

}  // namespace orv
