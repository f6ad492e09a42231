// The picture of the departure and arrival window (SIDMap) on any DrawTarget:
// the navaids around the airport, the runway with its heading, and the
// worded route with its turn. The window, its print page and the printed
// papers all draw it here.
#pragma once

#include "map/DrawTarget.h"

namespace orv {

struct NavDatabase;
struct Settings;
class FrmSID;
class LoadSID;
struct RouteSketch;

// A part of the surface, in its user units.
struct ViewBox {
  double X = 0, Y = 0, Width = 0, Height = 0;
};

// Draws the view of frm (its airport, MapUnits and the route it keeps) into
// the box: the background in the map colour, VORs, NDBs, intersections and
// fixes within a degree of the airport, then the route and the runway.
// Objects whose symbol would reach outside the box are left out, so that a
// page can hold the picture beside its text. Colours are the settings'; the
// background is the map colour in the window and white on paper.
void DrawSidView(DrawTarget& target, const ViewBox& box, const FrmSID& frm, const NavDatabase& db,
                 const Settings& colours, bool paper = false);

// cmdPrint: one page titled "Orvanta Departure and Arrival Routes" with
// "Departure for Rwy " (or "Arrival for Rwy ") and the runway, the picture
// and the sentence. The target's scale is set to a page in twips.
void PrintSidPage(DrawTarget& page, const FrmSID& frm, const NavDatabase& db, const Settings& colours);

// pctSid of the SID/STAR window: the chosen procedure's way from the
// departure (point 0) over its points to the destination (its last point),
// centred on the procedure's airport, PreviewRange NM across the box; each
// point a triangle with its code, the procedure's legs in the route colour.
void DrawProcedurePreview(DrawTarget& target, const ViewBox& box, const LoadSID& window, const Settings& colours);

// Prints text from (x, y) broken at blanks into lines no wider than width;
// returns the Y below the last line.
double PrintWrapped(DrawTarget& target, double x, double y, double width, std::string_view text);

}  // namespace orv
