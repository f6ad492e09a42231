// The flight plan grid as a table model: 11 columns, one heading line, then one
// line per plan row (plan row r on grid line r + 1). The core writes every text
// and colour; a grid widget only shows what is here. Also the flight plan
// panel around it: totals, level box, the pick lists.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppState.h"
#include "planning/FlightPlan.h"

namespace orv {

// Colours are blue * 65536 + green * 256 + red.
inline constexpr int32_t kGridTextColour = 0x000000;
inline constexpr int32_t kGridBackColour = 0xFFFFFF;

// The foreground of the Code column by object, as the map draws the objects.
// Defaults are the settings' defaults; the program copies the live settings.
struct TableColours {
  int32_t Vor = 0x0080FF;
  int32_t Ndb = 0x00BF00;
  int32_t Intersection = 0xC08000;
  int32_t Fix = 0x004DEC;
  int32_t User = 0x808080;
  int32_t Airport = kGridTextColour;
};

struct GridCell {
  std::string Text;
  int32_t ForeColor = kGridTextColour;
  int32_t BackColor = kGridBackColour;
};

class WPTable {
public:
  static constexpr int kColumns = 11;
  enum Column { kSym, kCode, kName, kFreq, kCourse, kDistance, kEta, kAta, kGs, kAltitude, kFuel };

  WPTable();

  // Grid lines, the heading line included.
  int Rows() const { return static_cast<int>(lines_.size()); }
  // Sets the number of plan rows shown; new lines are empty.
  void SetPlanRows(int planRows);
  const GridCell& Cell(int line, int col) const { return lines_[static_cast<size_t>(line)].cells[static_cast<size_t>(col)]; }
  GridCell& Cell(int line, int col) { return lines_[static_cast<size_t>(line)].cells[static_cast<size_t>(col)]; }
  const std::string& Text(int line, int col) const { return Cell(line, col).Text; }
  // The symbol picture in the Sym column of a line, -1 for none.
  int Picture(int line) const { return lines_[static_cast<size_t>(line)].picture; }

  int ColWidth(int col) const;
  bool Extended() const { return extended_; }
  // Extended Table (menuExtTable), or the takeoff of live tracking: opens
  // columns 7 to 10 (ATA, GS, Altitude, Fuel) with 500, 600, 700 and 950;
  // closed they are 1 wide. The window sizes its columns by ColWidth.
  void SetExtended(bool on) { extended_ = on; }
  // The unit in the heading of column 10 ("gal", "lbs", "kg", "lit").
  void SetFuelUnit(std::string_view unit);
  // The unit of the FUEL= setting, as the fuel window shows the trip in it.
  void SetFuelUnitOf(const AppState& state) { SetFuelUnit(FuelUnitOf(state)); }
  // FuelUnits by FUEL=; a setting beyond the list counts as kg, as in the
  // fuel window.
  static std::string_view FuelUnitOf(const AppState& state);

  // Back to the heading line alone.
  void Clear();

  // One grid line for plan row `row`. Course and distance are written when
  // withLeg is set; magVar is the variation the magnetic course uses.
  void WriteRow(int row, const WaypointRec& w, bool withLeg, float magVar);
  void WriteEta(int row, int32_t minutes);

  // The first line in view, set when an insertion scrolls to its row.
  int TopRow = 0;
  // menuShowCoords: the Name column shows the position instead.
  bool ShowCoordinates = false;
  // DECSEC: minutes with decimals instead of seconds in coordinates.
  bool DecimalSeconds = true;
  TableColours Colours;

private:
  struct Line {
    std::array<GridCell, kColumns> cells;
    int picture = -1;
  };
  std::vector<Line> lines_;
  bool extended_ = false;
};

// Cell texts, one function per column.
int SymbolPicture(const WaypointRec& w);
int32_t CodeColour(const WaypointRec& w, const TableColours& colours);
std::string NameCellText(const WaypointRec& w, bool showCoordinates, bool decimalSeconds);
std::string FreqCellText(float frequency);
std::string CourseCellText(float course, float magVar);
std::string DistanceCellText(float legDistance);

// A line of a list box with its item number.
struct ListLine {
  std::string Text;
  int32_t ItemData = 0;
};

// The flight plan panel of the main window.
struct PlanPanel {
  WPTable Table;
  std::string TotalTimeText = "00:00";
  std::string TotalDistanceText = "0000";
  std::string LevelBox = "000";       // the offered cruise level
  std::string CrSpeedBox;             // the aircraft's cruise speed
  std::string RouteLabel;             // lblRoute
  std::vector<ListLine> DepList;      // lstDep
  int DepListIndex = -1;
  std::vector<std::string> WpList;    // lstWP
  std::vector<WaypointRec> WpCandidates;  // the rows behind lstWP's lines
  // The map redraw that ends a totals refresh.
  std::function<void()> DrawMap;
  int DrawCount = 0;
};

}  // namespace orv
