// Route segments: parts of a plan stored as small text files and inserted
// into later plans. frmSaveSegment is the window for both, as a headless
// controller whose members are its controls.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"
#include "planning/FlightPlan.h"

namespace orv {

class Ui;

enum SegmentType : int { kSegmentDeparture = 0, kSegmentArrival = 1, kSegmentEnroute = 2, kSegmentGeneral = 3 };

// The folder (under the program folder) and extension of each kind.
std::string_view SegmentFolder(int type);
std::string_view SegmentExtension(int type);

inline constexpr std::string_view kSegmentHeader = "[ORV Segment]";
inline constexpr std::string_view kAnyRunway = "ANY";

// A segment file: "[ORV Segment]", "Rwy: " with the runway or "ANY",
// "[BEGIN]", then one "WP=" line per row as the plan file writes them.
std::string FormatSegmentFile(const std::vector<WaypointRec>& rows, std::string_view runway);

struct SegmentFile {
  std::string Runway;
  std::vector<WaypointRec> Rows;
  std::string Error;
};

inline constexpr int kMaxSegmentRows = 500;

SegmentFile ParseSegmentFile(std::string_view text);

// The runway designator of the plan's take-off point ("25C" from
// "Rwy 25C  (13123ft)"); "ANY" when it starts from a gate or has none.
std::string DepartureRunway(const FlightPlan& plan);

class frmSaveSegment {
public:
  explicit frmSaveSegment(AppFolder app) : app_(std::move(app)) {}

  // Controls.
  int optSegmentType = kSegmentEnroute;
  std::vector<std::string> lstFpWaypoints;  // one line per plan row, 0..LastRow
  std::vector<bool> lstFpSelected;          // the multi-selection of lstFpWaypoints
  std::string txtDescription;               // becomes the file name
  std::vector<std::string> lstSegments;     // the stored segments of the chosen kind
  int lstSegmentsIndex = -1;

  // Fills the lists for the plan in memory.
  void Load(const FlightPlan& plan);
  // optSegmentType changed: the list of stored segments follows.
  void SetSegmentType(int type);
  // The file of a line of lstSegments.
  std::string SegmentPath(int index) const;

  // Save: the selected rows (the airports at both ends never go) into a new
  // file named after the description. False with the refusal shown.
  bool Save(Ui& ui, const FlightPlan& plan);
  // Open: the chosen stored segment goes into the plan behind the selected
  // row, or where its kind belongs when none is selected: a departure behind
  // the SID, an arrival and the others ahead of the STAR.
  bool Open(Ui& ui, PlanEditor& editor);
  // The Delete key in lstSegments: asks, then deletes the file.
  bool DeleteKey(Ui& ui);

private:
  AppFolder app_;
};

}  // namespace orv
