#include "planning/WPTable.h"

#include "core/Runtime.h"
#include "core/Geodesy.h"
#include "core/TextFormats.h"

namespace orv {

namespace {

constexpr std::array<int, WPTable::kColumns> kNarrowWidths = {400, 700, 2200, 600, 900, 750, 500, 1, 1, 1, 1};
// Extended Table opens the four live columns.
constexpr std::array<int, WPTable::kColumns> kExtendedWidths = {400, 700, 2200, 600, 900, 750, 500, 500, 600, 700, 950};
constexpr std::array<std::string_view, WPTable::kColumns - 1> kHeadings = {
    "Sym", "Code", "Name", "Freq", "Course", "Distance", "ETA", "ATA", "GS", "Altitude"};

}  // namespace

WPTable::WPTable() {
  lines_.resize(1);
  for (int c = 0; c < kColumns - 1; ++c) lines_[0].cells[static_cast<size_t>(c)].Text = std::string(kHeadings[static_cast<size_t>(c)]);
  SetFuelUnit("kg");
}

void WPTable::SetFuelUnit(std::string_view unit) {
  lines_[0].cells[kFuel].Text = "Fuel (" + std::string(unit) + ")";
}

std::string_view WPTable::FuelUnitOf(const AppState& state) {
  const std::size_t index = state.Config.Fuel < state.FuelUnits.size() ? state.Config.Fuel : 2;
  return state.FuelUnits[index];
}

int WPTable::ColWidth(int col) const {
  if (col < 0 || col >= kColumns) return 0;
  return extended_ ? kExtendedWidths[static_cast<size_t>(col)] : kNarrowWidths[static_cast<size_t>(col)];
}

void WPTable::SetPlanRows(int planRows) {
  if (planRows < 0) planRows = 0;
  lines_.resize(static_cast<size_t>(planRows) + 1);
}

void WPTable::Clear() {
  lines_.resize(1);
  TopRow = 0;
}

void WPTable::WriteRow(int row, const WaypointRec& w, bool withLeg, float magVar) {
  if (row < 0) return;
  if (row + 2 > Rows()) SetPlanRows(row + 1);
  Line& line = lines_[static_cast<size_t>(row) + 1];
  line.picture = SymbolPicture(w);
  line.cells[kCode].Text = w.Code.Str();
  line.cells[kCode].ForeColor = CodeColour(w, Colours);
  line.cells[kName].Text = NameCellText(w, ShowCoordinates, DecimalSeconds);
  line.cells[kName].ForeColor = kGridTextColour;  // a control zone mark goes with the row's old text
  line.cells[kFreq].Text = FreqCellText(w.Frequency);
  if (withLeg) {
    line.cells[kCourse].Text = CourseCellText(w.Course, magVar);
    line.cells[kDistance].Text = DistanceCellText(w.LegDistance);
  } else {
    line.cells[kCourse].Text.clear();
    line.cells[kDistance].Text.clear();
  }
}

void WPTable::WriteEta(int row, int32_t minutes) {
  if (row < 0) return;
  if (row + 2 > Rows()) SetPlanRows(row + 1);
  lines_[static_cast<size_t>(row) + 1].cells[kEta].Text = MinutesToHours(minutes);
}

int SymbolPicture(const WaypointRec& w) {
  if (w.Origin == kOriginAirport) return 8;
  if (w.Origin == kOriginSpecial) return 9;
  std::string_view kind = w.Kind.Trimmed();
  int family = 3;  // GPS fix, user waypoint and any other point
  if (kind == "VOR") family = 0;
  else if (kind == "NDB") family = 1;
  else if (kind == "Int") family = 2;
  // Enroute rows use the first four pictures, procedure rows the next four.
  return w.Origin == kOriginEnroute ? family : family + 4;
}

int32_t CodeColour(const WaypointRec& w, const TableColours& colours) {
  std::string_view kind = w.Kind.Trimmed();
  if (kind.empty()) return colours.Airport;
  if (kind == "VOR") return colours.Vor;
  if (kind == "NDB") return colours.Ndb;
  if (kind == "Int") return colours.Intersection;
  if (kind == "Fix") return colours.Fix;
  if (kind == "Uwp") return colours.User;
  return kGridTextColour;
}

std::string NameCellText(const WaypointRec& w, bool showCoordinates, bool decimalSeconds) {
  if (showCoordinates) return LatToText(w.Lat, decimalSeconds) + " " + LonToText(w.Lon, decimalSeconds);
  std::string text = w.Name.Str();
  // A blank airway (first character below "0") adds nothing.
  if (static_cast<unsigned char>(w.Airway.chars[0]) < static_cast<unsigned char>('0')) return text;
  text += " (" + w.Airway.Str();
  if (w.MinAltitude > 0 && w.MaxAltitude > 0)
    text += " " + std::to_string(w.MinAltitude / 100) + "-" + std::to_string(w.MaxAltitude / 100);
  return text + ")";
}

std::string FreqCellText(float frequency) {
  if (frequency == 0) return std::string(6, ' ');
  return Format(frequency, "000.00");
}

std::string CourseCellText(float course, float magVar) {
  return Format(Wrap360(static_cast<double>(course) - magVar), "000") + "\xB0/" + Format(course, "000") + "\xB0";
}

std::string DistanceCellText(float legDistance) { return Format(CLng(legDistance), "000") + " NM"; }

}  // namespace orv
