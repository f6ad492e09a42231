// The stored departure and arrival procedures ("\database\sid.orv" and
// "\database\star.orv") and the window LoadSID that offers those of the
// plan's departure or destination airport and puts the chosen one into the
// plan: SID rows right behind the departure (Origin 3), STAR rows right ahead
// of the destination (Origin 2), counted in SidRows and StarRows.
//
// Both files are a sequence of blocks without a file header: a 56-byte head
// (Airport 10, Runway 5, Name 40, PointCount 1 byte), then PointCount points
// of 61 bytes (Kind 5, Code 10, Name 20, Lat and Lon as 32-bit floats, 18
// further bytes kept as read). The blocks of one airport stand together.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"
#include "planning/WPTable.h"

namespace orv {

class Ui;
class NavLookup;
class PlanEditor;
class MagVarGrid;
struct FlightPlan;

inline constexpr std::string_view kSidFile = "\\database\\sid.orv";
inline constexpr std::string_view kStarFile = "\\database\\star.orv";
inline constexpr std::size_t kProcHeadSize = 56;
inline constexpr std::size_t kProcPointSize = 61;
// Procedures of one airport: indices 0 to 500.
inline constexpr std::size_t kMaxProcedures = 501;

struct ProcPointRec {
  FixedStr<5> Kind;   // as a plan row's Kind
  FixedStr<10> Code;
  FixedStr<20> Name;
  float Lat = 0;
  float Lon = 0;
  std::array<uint8_t, 18> Extra{};  // the point's further values, kept as read
};

struct ProcedureRec {
  FixedStr<10> Airport;
  FixedStr<5> Runway;   // "00": any runway
  FixedStr<40> Name;
  uint8_t PointCount = 0;
  // Points 0 .. PointCount + 1: the file's points are 1 .. PointCount; point
  // 0 holds the departure airport and point PointCount + 1 the destination
  // (code and reference position), so that a preview can draw the way from
  // and to the plan's airports.
  std::vector<ProcPointRec> Points;
};

// Where the added end points come from.
struct ProcedureEnds {
  std::string DepCode, DestCode;
  float DepLat = 0, DepLon = 0, DestLat = 0, DestLon = 0;
};

struct ProcedureFileRead {
  std::vector<ProcedureRec> Procedures;
  bool Found = false;
  // Empty when the blocks of the airport were read whole; otherwise what was
  // wrong. Procedures read completely before the fault are kept.
  std::string Error;
};

// The procedures of airport (compared trimmed and upper case) in a file held
// in memory. fileName names the file in the error text.
ProcedureFileRead ReadProcedures(std::span<const uint8_t> file, std::string_view airport,
                                 const ProcedureEnds& ends, std::string_view fileName);
// True when the file holds at least one procedure for the airport: the plan
// file reader enables the SID/STAR menu entries with it.
bool HasProcedures(std::span<const uint8_t> file, std::string_view airport);

// "TOBAK1F#Rwy 25C", "UNOKO1A#Any Rwy".
std::string ProcedureListText(const ProcedureRec& p);
// "Rwy 25C" or "Any Rwy".
std::string ProcedureRunwayText(const ProcedureRec& p);

// Puts a procedure into the plan: a SID right behind the departure, a STAR
// right ahead of the destination, replacing the one there. The rows carry
// Origin 3 (SID) or 2 (STAR) and the variation at their place when a grid is
// given. False when the plan has no airports or no room.
bool InsertProcedure(PlanEditor& editor, const ProcedureRec& p, bool sid, const MagVarGrid* grid);
// "Delete SID" and "Delete STAR": the procedure's rows go, the counts are 0.
void menuDeleteSid(PlanEditor& editor);
void menuDeleteStar(PlanEditor& editor);

// The window without its widgets.
class LoadSID {
public:
  struct TreeNode {
    std::string Text;
    int Parent = -1;     // -1 for a runway node
    int Procedure = -1;  // index into Procedures(), -1 for a runway node
  };

  // sid: MenuOpenSid (true) or MenuOpenStar.
  LoadSID(Ui& ui, bool sid) : ui_(ui), sid_(sid) {}

  // Reads the procedures of the plan's departure (SID) or destination (STAR)
  // airport from the file's bytes and fills the list and the tree. False,
  // with "no SID available for this airport!" (or STAR), when none is stored
  // or the plan has no airports; a damaged file is reported and what was
  // read of it is offered.
  bool Load(std::span<const uint8_t> file, const FlightPlan& plan, const NavLookup& nav);

  bool Sid() const { return sid_; }
  const std::vector<ProcedureRec>& Procedures() const { return procedures_; }

  std::vector<ListLine> lstSidStar;
  int ListIndex = -1;
  std::vector<TreeNode> tvwSidStar;
  int TreeIndex = -1;
  std::string Caption;         // "Open SID" or "Open STAR"
  std::string lblAirportRwy;   // the airport's code, then the chosen runway
  std::string lblSidStarName;  // the chosen procedure
  bool Visible = false;

  // A click in the list or on a tree node selects the procedure (a runway
  // node selects nothing). {UP} and {DOWN} walk the procedures of the tree.
  void SelectList(int index);
  void SelectTree(int node);
  void KeyUp();
  void KeyDown();
  // The chosen procedure, or -1.
  int Selected() const { return selected_; }

  // Zoom of the preview picture pctSid, in NM across; halved and doubled.
  double PreviewRange = 40;
  void cmdZoom();
  void cmdUnzoom();

  // Puts the chosen procedure into the plan and closes; false without one.
  bool OKButton(PlanEditor& editor, const MagVarGrid* grid);
  void CancelButton() { Visible = false; }

private:
  void Select(int procedure);

  Ui& ui_;
  bool sid_;
  std::vector<ProcedureRec> procedures_;
  int selected_ = -1;
  std::string airportCode_;
};

}  // namespace orv
