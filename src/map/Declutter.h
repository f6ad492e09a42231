// Keeps map labels from printing over each other. The surface is covered by a
// coarse grid of cells, each about 170 units high; a label asks for a place
// near its object and gets it, or a free cell nearby, or, when everything
// around is taken, its asked place anyway (an unplaced name is worse than an
// overlap). The grid lives for one render pass.
//
// Cells are numbered column-major: index = column * GridRows + row. There are
// as many columns as rows whatever the surface's aspect, so that cells are
// wider on a wide window.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace orv {

class DrawTarget;

// The Kind of a label tells which ways it may move: rows above are tried only
// for kinds below 2 and for 5, rows below for every kind but 3; left and right
// always.
inline constexpr int kLabelNavaid = 0;        // any direction
inline constexpr int kLabelBelowOrSide = 2;   // never above its object
inline constexpr int kLabelSideOnly = 3;      // left or right only
inline constexpr int kLabelAnyWay = 5;        // any direction

inline constexpr int32_t kNoCandidate = -555;

struct LabelPlace {
  float X = 0;
  float Y = 0;
};

class Declutter {
public:
  // DeclutterReset: a new, empty grid for the surface of this pass. The
  // surface is kept for the text metrics and size of later placements.
  void DeclutterReset(const DrawTarget& map);

  // Where to print text asked at (x, y); marks the cells it takes.
  LabelPlace PlaceLabel(float x, float y, std::string_view text, int kind);

  // Cell of a point; a point rounding to the row past the last is taken as
  // the last row.
  int32_t CellIndex(double x, double y) const;

  int32_t CellWidth = 0;
  int32_t CellHeight = 0;
  int32_t GridColumns = 0;
  int32_t GridRows = 0;
  int32_t GridCells = 0;
  std::vector<uint8_t> GridUsed;  // one flag per cell
  bool LabelMoved = false;
  int32_t LastCandidate = kNoCandidate;
  int32_t LabelLines = 0;

private:
  // True when every cell of the label's lines starting at cells a and b is
  // free; cells past the grid are ignored.
  bool CellsFree(int64_t a, int64_t b) const;
  void MarkCells(int64_t a, int64_t b);

  const DrawTarget* map_ = nullptr;
};

}  // namespace orv
