// The departure and arrival generator, the window frmSID: for a chosen
// runway it words how to fly from the runway to the plan's first row, or from
// the last enroute row to the runway, as one sentence, and keeps the route
// (runway, the point 5 or 10 NM out, the turn arc, the row) for a picture.
// Nothing here changes the plan. The picture itself is drawn by the
// documents layer (SidView.h) on any DrawTarget.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/Geodesy.h"
#include "planning/WPTable.h"

namespace orv {

struct NavDatabase;
struct NavaidTables;
struct AirportRec;
struct AircraftRec;
struct FlightPlan;
class Ui;

// The turn between the runway's extended centre line and the row.
struct TurnArc {
  float CentreLat = 0;
  float CentreLon = 0;
  float ExitLat = 0;
  float ExitLon = 0;
  float StartAngle = 0;  // bearing from the centre to the start of the arc
  float EndAngle = 0;    // bearing from the centre to the exit
  float Radius = 0;      // NM
};

// The turn from point (pLat, pLon) on heading to the target: no arc (both
// points at P, angles 0) when the target lies within 20 degrees of the
// heading. turnRight is set to -1 or 0 as the drawing reads it. For an
// arrival, target is the last enroute row, heading the course given, and
// turnRight comes out the other way round.
TurnArc DepartureTurn(float pLat, float pLon, float heading, float targetLat, float targetLon,
                      int32_t approachSpeed, int16_t& turnRight);
TurnArc ArrivalTurn(float pLat, float pLon, float heading, float rowLat, float rowLon, int32_t approachSpeed,
                    int16_t& turnRight);

// "left" or "right": the side of the turn from heading towards the course
// from the first point to the second (departure), or the reverse (arrival).
std::string TurnSide(float lat1, float lon1, float lat2, float lon2, float heading, bool departure);

// The VOR nearest to a point, for the climb-out reference.
struct VorReference {
  bool Found = false;
  int Index = -1;
  float RefLat = 0, RefLon = 0;
  std::string RefName;
  std::string RefCode;    // the first ten characters of the ident
  double RefDistance = 0; // rhumb-line NM from the point
  double RefRadial = 0;   // true rhumb-line course from the VOR to the point
};
VorReference NearestVor(const NavaidTables& navaids, float lat, float lon);

// What the route picture needs, kept by the sentence functions when asked to draw.
struct RouteSketch {
  bool Valid = false;
  bool Departure = true;
  bool HasArc = false;
  int16_t TurnRight = 0;
  float RwyLat = 0, RwyLon = 0, RwyHeading = 0;
  float OutLat = 0, OutLon = 0;        // P5 or P10
  float TargetLat = 0, TargetLon = 0;  // row 1, or row LastRow - 1
  std::string TargetCode;
  TurnArc Arc;
};

// The window without its widgets.
class FrmSID {
public:
  // The database, plan and aircraft must outlive the window.
  FrmSID(const NavDatabase& db, const FlightPlan& plan, const AircraftRec& aircraft)
      : db_(db), plan_(plan), aircraft_(aircraft) {}

  // Load: the reference values of both airports, the runway list and the
  // departure view. False when the plan has no departure and destination.
  bool Load();
  // The same from the main window's cmdSIDSTAR: a plan without both
  // airports is refused with "You have to file a flight plan first!!".
  bool Load(Ui& ui);
  // cmdExit: the window closes (the caller gives the focus back to the map).
  void cmdExit() { Visible = false; }

  // cmdSIDSTAR: switches views; its caption always names the other view.
  void cmdSIDSTAR();
  // lstRwy click: the runway end of that line, then the view again.
  void lstRwyClick(int index);

  // The sentences; draw set keeps the route in Sketch.
  void WordDeparture(float lat, float lon, float heading, bool draw);
  // runwayLine: the line of lstRwy (runway index * 2, + 1 for the high end),
  // whose ILS gives the suffix; name is the runway end's designator.
  void WordArrival(int runwayLine, std::string_view name, float lat, float lon, float heading, bool draw);

  // The airport of the view and its runway end for a line of lstRwy.
  const AirportRec* ViewAirport() const;
  bool RunwayOfLine(int line, float& lat, float& lon, float& heading, std::string& name) const;

  // State.
  int16_t ShowDeparture = -1;
  int16_t DepRwyIndex = 0;
  int16_t DestRwyIndex = 0;
  float RwyLat = 0, RwyLon = 0, RwyHeading = 0;
  std::string RwyName;
  int16_t MapUnits = 10000;
  std::string Message;
  VorReference Ref;
  float DepLat = 0, DepLon = 0, DepMagVar = 0;
  float DestLat = 0, DestLon = 0, DestMagVar = 0;

  // Controls.
  std::vector<std::string> lstRwy;
  int lstRwyIndex = -1;
  std::string cmdSIDSTARCaption = "Arrival";
  std::string SIDFrame;    // "Departure for Frankfurt Main Rwy 25C"
  std::string lblMessage;
  bool Visible = false;

  RouteSketch Sketch;

private:
  void FillRunwayList();
  void ShowView();

  const NavDatabase& db_;
  const FlightPlan& plan_;
  const AircraftRec& aircraft_;
};

}  // namespace orv
