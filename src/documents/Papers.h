// The papers of a flight (the dialog PrintFP): general flight information
// with the departure and arrival routes, the waypoint list and the control
// zones along the legs, laid out page by page on a DrawTarget, so that the
// printer, a PDF file and a test's recording target get the same pages.
#pragma once

#include <string>
#include <vector>

#include "map/DrawTarget.h"

namespace orv {

struct NavDatabase;
struct FlightPlan;
struct AircraftRec;
struct AppState;
class NavLookup;

// What the papers are made from. Every pointer must be set.
struct PaperSources {
  const FlightPlan* Plan = nullptr;
  const NavDatabase* Db = nullptr;
  const AircraftRec* Aircraft = nullptr;
  const AppState* State = nullptr;  // settings (FUEL, colours) and FuelUnits
  // The lines of the generator's runway list worded for the departure and the
  // arrival; -1 takes the runway end best aligned with the first (last) leg.
  int DepRunwayLine = -1;
  int DestRunwayLine = -1;
  // The program's lookup over the same database (its identifier index is
  // costly to build); nullptr builds one for the print.
  const NavLookup* Nav = nullptr;
};

// The dialog without its widgets.
struct PrintFP {
  bool chckGFI = true;     // general flight information
  bool chckWPList = true;  // waypoint list
  bool chckCtrz = true;    // control zone information
  // cmdOK: prints on the target (the printer, a PDF); returns the number of
  // pages. Nothing is printed, and 0 returned, without a plan.
  int cmdOK(DrawTarget& printer, const PaperSources& sources) const;
};

// The page every paper is laid out on: A4 in twips.
inline constexpr double kPaperWidth = 11906;
inline constexpr double kPaperHeight = 16838;

// "Orvanta Flight Plan     Frankfurt Main (EDDF) to Munich (EDDM)".
std::string PaperHeaderLine(const PaperSources& sources);

// The line of the generator's runway list best aligned with a course: the end
// whose heading is nearest to it. -1 for an airport without runways.
int BestRunwayLine(const NavDatabase& db, int airport, double course);

// Airspaces a leg crosses (control zones and the controlled areas around
// them, not the wide regions every leg lies in): index into Shapes.Airspaces.
std::vector<int> CrossedAirspaces(const NavDatabase& db, float lat1, float lon1, float lat2, float lon2);

}  // namespace orv
