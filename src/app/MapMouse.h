// The mouse on the main window's map, without the window: the status text
// that follows the cursor, the layer toggles that pop up at the left edge,
// the rubber band drawn with exclusive or, the measuring tool, and the hover
// box of tmrMousePos.
//
// The hover box: a tick after a move only stores the new position (and takes
// the old box off); the next tick, if the pointer has rested there, walks the
// layers (HoverWalk) once and draws the box straight on the map surface,
// never into its back buffer, so that putting the back buffer over the
// surface removes it again. While the simulator is linked its tick restores
// the surface every half second and draws the box again while it is open.
#pragma once

#include <climits>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "app/HoverWalk.h"
#include "app/ProgramState.h"
#include "map/Viewport.h"

namespace orv {

class DrawTarget;
class MainWindowView;

// MapStatus(5): the cursor's text, and the status field a click switches.
inline constexpr int kStatusCursor = 5;
// The cursor text's colour in the Inbound and Outbound modes (blue).
inline constexpr Colour kStatusBlue = 0xFF0000;
// The box stands this far from the pointer, its lines this far inside it.
inline constexpr double kHoverBoxGap = 100;
inline constexpr double kHoverBoxPad = 50;
// The second line of a measure printed on the map stands this much lower.
inline constexpr double kMeasureLineStep = 160;

class MapMouse {
public:
  MapMouse(ProgramState& s, MainWindowView& view, const ViewGeodesy& geo) : s_(s), view_(view), geo_(geo) {}

  // Map.MouseMove in surface units.
  void Move(double x, double y);
  // The last rule of a press, when no earlier rule took it: with the left
  // button the rubber band starts, or with the measuring tool on the
  // measure; another button returns the surface to copy mode.
  void Press(int button, double x, double y);
  // A release of the left button. True when a band ended: it has been
  // erased, and its corners (press, release) are handed back for the
  // re-centring and zoom of the view.
  bool Release(int button, double x, double y, double& x1, double& y1, double& x2, double& y2);
  // tmrMousePos.
  void Tick();
  // A click on MapStatus(field): field 5 switches the cursor text's mode,
  // field 3 the decimal form of the positions.
  void StatusClick(int field);
  // rbnMeasure switched.
  void SetMeasure(bool on);
  // Esc: the band erased, the measuring tool off.
  void Escape();
  // Zoom or resize: the measuring line and its label from their positions.
  void RepositionMeasure();
  // The live tick's steps 2 and 3, after it restored the surface: the open
  // box again, and the measure printed at the click.
  void RedrawOverlays();

  // Where the walk finds the traffic tables at the moment it runs (the
  // simulator session's, which each live tick reads anew).
  void SetTrafficSource(std::function<HoverTraffic()> source) { traffic_ = std::move(source); }
  // The surface was drawn again (zoom, wheel, keys): the box and a printed
  // measure are gone from it, and the box stays away until the next rest.
  void SurfaceRedrawn() { HoverShown = measurePrinted_ = false; }

  // The state the window keeps for the mouse.
  int32_t MouseX = 0, MouseY = 0;
  int32_t LastX = INT_MIN, LastY = INT_MIN;
  const std::vector<std::string>& HoverLines() const { return find_.Lines; }
  int32_t HoverLineCount = 0;
  int32_t HoverWidth = 100;
  int32_t HoverLineHeight = 170;
  bool HoverShown = false;
  bool BandActive = false;
  float BandX1 = 0, BandY1 = 0, BandX2 = 0, BandY2 = 0;
  bool MeasureOn = false;  // rbnMeasure
  float MeasureLat = 0, MeasureLon = 0;
  std::string MeasureText;
  int16_t StatusMode = 0;  // 0 Coordinates, 1 Inbound, 2 Outbound

private:
  bool Connected() const;
  void CursorStatus(double x, double y);
  void DrawBand();
  void DrawBox(DrawTarget& t);
  void DrawMeasurePrint(DrawTarget& t);
  std::string DistanceCourseText(double distance, double trueCourse, float refLat, float refLon) const;

  ProgramState& s_;
  MainWindowView& view_;
  const ViewGeodesy& geo_;
  std::function<HoverTraffic()> traffic_;
  HoverFind find_;
  bool computed_ = false;      // the box was worked out for LastX, LastY
  bool measureDrag_ = false;   // the measuring line follows the cursor
  float measureEndLat_ = 0, measureEndLon_ = 0;
  bool measurePrinted_ = false;  // connected: the measure's text stands on the map
  std::string measureLine_;
  double measureX_ = 0, measureY_ = 0;
  std::vector<DrawPoint> outline_;
};

}  // namespace orv
