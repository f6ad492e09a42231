#include "map/Declutter.h"

#include <cmath>

#include "core/Runtime.h"
#include "map/DrawTarget.h"

namespace orv {

namespace {

// Height of one row of cells, and of one line of a label, in surface units.
constexpr double kRowUnits = 170.0;

// A grid beyond this many cells means a surface no window has; labels are
// then printed where asked.
constexpr int64_t kMaxCells = int64_t{1} << 22;

// The neighbour candidates in the order they are tried: the first ring (one
// row below, one above, one column left, one right), then the second and the
// third. Numbers 0-3 are rows below, 4-7 rows above, 8-10 columns left, 11-13
// columns right; 1 and 5 repeat the cells of 0 and 4 (one row off) and so can
// never win where those failed, which is why they are not tried.
constexpr int kTryOrder[] = {0, 4, 8, 11, 2, 6, 9, 12, 3, 7, 10, 13};

// Blanks trimmed from both ends, as the runtime's Trim, without a copy.
std::string_view TrimmedView(std::string_view text) {
  std::size_t b = text.find_first_not_of(' ');
  if (b == std::string_view::npos) return {};
  return text.substr(b, text.find_last_not_of(' ') - b + 1);
}

int RowOffset(int candidate) {  // for 0-7
  int k = candidate < 4 ? candidate : candidate - 4;
  return k == 0 ? 1 : k;
}

}  // namespace

void Declutter::DeclutterReset(const DrawTarget& map) {
  map_ = &map;
  CellWidth = CellHeight = GridColumns = GridRows = GridCells = 0;
  LabelMoved = false;
  LastCandidate = kNoCandidate;
  LabelLines = 0;
  GridUsed.clear();

  const double h = map.ScaleHeight();
  const double w = map.ScaleWidth();
  const double n = h / kRowUnits;
  if (!std::isfinite(n) || !(n > 0) || !std::isfinite(w) || !(w > 0)) return;
  const int32_t cellWidth = CLng(w / n);
  const int32_t cellHeight = CLng(h / n);
  if (cellWidth <= 0 || cellHeight <= 0) return;
  const int32_t columns = CLng(w / cellWidth);
  const int32_t rows = CLng(h / cellHeight);
  if (columns <= 0 || rows <= 0 || int64_t{columns} * rows > kMaxCells) return;

  CellWidth = cellWidth;
  CellHeight = cellHeight;
  GridColumns = columns;
  GridRows = rows;
  GridCells = columns * rows;
  GridUsed.assign(static_cast<std::size_t>(GridCells), 0);
}

int32_t Declutter::CellIndex(double x, double y) const {
  if (CellWidth <= 0 || CellHeight <= 0) return 0;
  int32_t row = CLng(y / CellHeight);
  const int32_t column = CLng(x / CellWidth);
  if (row == GridRows) row -= 1;
  return CLng(static_cast<double>(row) + static_cast<double>(column) * GridRows);
}

bool Declutter::CellsFree(int64_t a, int64_t b) const {
  for (int64_t line = 0; line <= LabelLines; ++line) {
    for (int64_t cell : {a + int64_t{GridRows} * line, b + int64_t{GridRows} * line}) {
      if (cell < 0 || cell >= GridCells) continue;
      if (GridUsed[static_cast<std::size_t>(cell)]) return false;
    }
  }
  return true;
}

void Declutter::MarkCells(int64_t a, int64_t b) {
  for (int64_t line = 0; line <= LabelLines; ++line) {
    for (int64_t cell : {a + int64_t{GridRows} * line, b + int64_t{GridRows} * line}) {
      if (cell < 0 || cell >= GridCells) continue;
      GridUsed[static_cast<std::size_t>(cell)] = 1;
    }
  }
}

LabelPlace Declutter::PlaceLabel(float x, float y, std::string_view text, int kind) {
  LabelMoved = false;
  LabelPlace place{x, y};
  if (map_ == nullptr || GridCells <= 0) return place;

  const double w = map_->ScaleWidth();
  const double h = map_->ScaleHeight();
  if (!(x <= w && x >= 0 && y <= h && y >= 0)) return place;

  const int64_t a = CellIndex(x, y);
  const double right = x + map_->TextWidth(text);
  const int64_t b = right <= w ? CellIndex(right, y) : a;
  if (b > GridCells - 1 || a > GridCells - 1 || a < 0) return place;

  LabelLines = CLng(map_->TextHeight(TrimmedView(text)) / kRowUnits);
  if (LabelLines < 0) LabelLines = 0;

  if (CellsFree(a, b)) {
    MarkCells(a, b);
    return place;
  }

  const int64_t row = a % GridRows;
  const bool mayGoUp = kind < 2 || kind == 5;
  const bool mayGoDown = kind != 3;
  LastCandidate = kNoCandidate;
  int64_t winner = -1;
  for (int candidate : kTryOrder) {
    int64_t cell;
    if (candidate < 4) {
      if (!mayGoDown || row + RowOffset(candidate) >= GridRows) continue;
      cell = a + RowOffset(candidate);
    } else if (candidate < 8) {
      if (!mayGoUp || row - RowOffset(candidate) < 0) continue;
      cell = a - RowOffset(candidate);
    } else if (candidate < 11) {
      cell = a - int64_t{GridRows} * (candidate - 7);
    } else {
      cell = a + int64_t{GridRows} * (candidate - 10);
    }
    if (cell < 0 || cell > GridCells - 1) continue;
    const int64_t shift = cell - a;
    if (!CellsFree(cell, b + shift)) continue;
    MarkCells(cell, b + shift);
    LastCandidate = candidate;
    winner = cell;
    break;
  }
  // Nothing free around: the asked place, overlapping, and nothing marked.
  if (winner < 0) return place;

  const double cellRow = static_cast<double>(winner % GridRows);
  const double cellColumn = static_cast<double>(winner / GridRows);
  switch (LastCandidate) {
    case 0:
      place.Y = CSng(cellRow * CellHeight + CellHeight / 2.0);
      break;
    case 1: case 2: case 3: case 5: case 6: case 7:
      place.Y = CSng(cellRow * CellHeight);
      break;
    case 4:
      place.Y = CSng(cellRow * CellHeight - CellHeight / 2.0);
      break;
    case 8: case 9: case 10:
      place.X = CSng(cellColumn * CellWidth + CellWidth / 2.0);
      break;
    case 11: case 12: case 13:
      place.X = CSng(cellColumn * CellWidth);
      break;
    default:
      place.X = CSng(cellColumn * CellWidth + CellWidth / 2.0);
      place.Y = CSng(cellRow * CellHeight + CellHeight / 2.0);
      break;
  }
  // A label moved so that it runs past the right edge stays where it went:
  // no better place is defined for it.
  LabelMoved = true;
  return place;
}

}  // namespace orv
