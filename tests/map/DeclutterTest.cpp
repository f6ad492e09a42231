#include <gtest/gtest.h>

#include <numeric>

#include "map/Declutter.h"
#include "map/RecordingTarget.h"

namespace orv {
namespace {

// With the recording target's default font a character is 82.5 units wide
// and a line 165 high, so a one-line label takes LabelLines = 1.
class DeclutterTest : public ::testing::Test {
protected:
  DeclutterTest() { grid.DeclutterReset(map); }

  std::vector<int> UsedCells() const {
    std::vector<int> out;
    for (std::size_t i = 0; i < grid.GridUsed.size(); ++i)
      if (grid.GridUsed[i]) out.push_back(static_cast<int>(i));
    return out;
  }

  RecordingTarget map;  // 10000 x 7000
  Declutter grid;
};

TEST_F(DeclutterTest, GridOfASevenThousandHighSurface) {
  // n = 7000 / 170 = 41.18: cells 243 x 170, 41 columns and 41 rows.
  EXPECT_EQ(grid.CellWidth, 243);
  EXPECT_EQ(grid.CellHeight, 170);
  EXPECT_EQ(grid.GridColumns, 41);
  EXPECT_EQ(grid.GridRows, 41);
  EXPECT_EQ(grid.GridCells, 1681);
  EXPECT_EQ(grid.GridUsed.size(), 1681u);
  EXPECT_TRUE(UsedCells().empty());

  // Rows and columns round to the nearest; the row past the last folds back.
  EXPECT_EQ(grid.CellIndex(1000, 3050), 18 + 4 * 41);
  EXPECT_EQ(grid.CellIndex(100, 6990), 40);
  EXPECT_EQ(grid.CellIndex(121, 84), 0);
  EXPECT_EQ(grid.CellIndex(0, 85), 0);        // 0.5 rounds to even
  EXPECT_EQ(grid.CellIndex(122, 255), 2 + 41);  // 1.5 too

  // A wide window: as many columns as rows, only wider.
  RecordingTarget wide(20000, 7000);
  Declutter g;
  g.DeclutterReset(wide);
  EXPECT_EQ(g.CellWidth, 486);
  EXPECT_EQ(g.GridColumns, 41);
}

TEST_F(DeclutterTest, LabelsAtTheSamePointMoveAroundIt) {
  LabelPlace p = grid.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.X, 1000);
  EXPECT_FLOAT_EQ(p.Y, 3050);
  EXPECT_FALSE(grid.LabelMoved);
  // Start and end cells, each for lines 0 and 1, counted GridRows apart.
  EXPECT_EQ(UsedCells(), (std::vector<int>{182, 223, 264}));

  // The second goes one row down, to the middle of that cell, X unchanged.
  p = grid.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.X, 1000);
  EXPECT_FLOAT_EQ(p.Y, 19 * 170 + 85);
  EXPECT_TRUE(grid.LabelMoved);
  EXPECT_EQ(grid.LastCandidate, 0);

  // The third one row up, half a cell higher.
  p = grid.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.Y, 17 * 170 - 85);
  EXPECT_EQ(grid.LastCandidate, 4);

  // Left and right are blocked by the first label's own cells, so the
  // fourth goes two rows down.
  p = grid.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.X, 1000);
  EXPECT_FLOAT_EQ(p.Y, 20 * 170);
  EXPECT_EQ(grid.LastCandidate, 2);
}

TEST_F(DeclutterTest, KindsLimitTheDirections) {
  grid.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  // Sideways only: the first free cell is three columns left, and the label
  // starts in its middle.
  LabelPlace p = grid.PlaceLabel(1000, 3050, "ABC", kLabelSideOnly);
  EXPECT_FLOAT_EQ(p.X, 1 * 243 + 121.5f);
  EXPECT_FLOAT_EQ(p.Y, 3050);
  EXPECT_EQ(grid.LastCandidate, 10);

  Declutter g;
  g.DeclutterReset(map);
  g.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  g.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);  // one row down
  // Never above: after the row below is taken, two rows below.
  p = g.PlaceLabel(1000, 3050, "ABC", kLabelBelowOrSide);
  EXPECT_FLOAT_EQ(p.Y, 3400);
  EXPECT_EQ(g.LastCandidate, 2);
}

TEST_F(DeclutterTest, OutsideTheSurfaceNothingIsMarked) {
  for (auto [x, y] : {std::pair{-1.0f, 100.0f}, {10001.0f, 100.0f}, {100.0f, -0.5f}, {100.0f, 7000.5f}}) {
    LabelPlace p = grid.PlaceLabel(x, y, "ABC", kLabelNavaid);
    EXPECT_FLOAT_EQ(p.X, x);
    EXPECT_FLOAT_EQ(p.Y, y);
    EXPECT_FALSE(grid.LabelMoved);
  }
  // An end that rounds into the column past the last: nothing either.
  grid.PlaceLabel(9900, 100, "A", kLabelNavaid);
  EXPECT_TRUE(UsedCells().empty());
}

TEST_F(DeclutterTest, TextPastTheRightEdgeUsesItsStartCell) {
  grid.PlaceLabel(9800, 100, "ABCDEFG", kLabelNavaid);  // 577.5 wide, ends past 10000
  EXPECT_EQ(UsedCells(), (std::vector<int>{1 + 40 * 41}));
}

TEST_F(DeclutterTest, EveryLineOfALabelCountsOneGridRowsStep) {
  grid.PlaceLabel(1000, 1000, "A\r\nB\r\nC", kLabelNavaid);  // 495 high: 3, so lines 0..3
  EXPECT_EQ(grid.LabelLines, 3);
  EXPECT_EQ(UsedCells(), (std::vector<int>{170, 211, 252, 293}));
  // Blanks do not count toward the height.
  grid.PlaceLabel(1000, 5000, "  X  ", kLabelNavaid);
  EXPECT_EQ(grid.LabelLines, 1);
}

TEST_F(DeclutterTest, AFullGridKeepsTheAskedPlace) {
  std::fill(grid.GridUsed.begin(), grid.GridUsed.end(), 1);
  LabelPlace p = grid.PlaceLabel(5000, 3000, "VOR", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.X, 5000);
  EXPECT_FLOAT_EQ(p.Y, 3000);
  EXPECT_FALSE(grid.LabelMoved);
  EXPECT_EQ(grid.LastCandidate, kNoCandidate);
}

TEST_F(DeclutterTest, ResetClearsAndDegenerateSurfacesPlaceNothing) {
  grid.PlaceLabel(1000, 3050, "ABC", kLabelNavaid);
  grid.DeclutterReset(map);
  EXPECT_TRUE(UsedCells().empty());

  Declutter unset;  // never reset: labels print where asked
  LabelPlace p = unset.PlaceLabel(10, 20, "X", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.X, 10);
  EXPECT_FLOAT_EQ(p.Y, 20);

  RecordingTarget tiny(1, 1);  // a window squeezed to a pixel
  Declutter g;
  g.DeclutterReset(tiny);
  EXPECT_GE(g.GridCells, 0);
  p = g.PlaceLabel(0, 0, "X", kLabelNavaid);
  EXPECT_FLOAT_EQ(p.X, 0);
}

}  // namespace
}  // namespace orv
