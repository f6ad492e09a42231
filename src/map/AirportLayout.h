// The airport layout drawing of the Runway Window (OVRLay) and the CLI's
// layout picture: one airport's ground polygons, taxiways, runways and
// parking positions from the database, north up, fitted into the target.
// The texts of the airport information window (APPrev) and the names of
// parking positions live here as well, so that the window, the parking
// selection and the drawing label a position the same way.
#pragma once

#include <string>
#include <vector>

#include "core/AppState.h"
#include "database/NavDatabase.h"
#include "map/DrawTarget.h"

namespace orv {

// A parking position's shown name: its gate name from ParkingNames when the
// code names one (1..37), else its own ident, then its number when above 0.
std::string ParkingLabel(const ParkingRec& p, const AppState& state);

// The flat picture frame of one airport: a local projection around the
// middle of its runways and parking, scaled so that all of them and a margin
// fit the target.
struct LayoutFrame {
  double CentreLat = 0;
  double CentreLon = 0;
  double CosLat = 1;
  double UnitsPerNm = 1;  // target user units per nautical mile
  double MidX = 0;        // the target's middle
  double MidY = 0;
  // The radius in NM around the centre whose taxiways and polygons belong
  // to this airport.
  double RadiusNm = 1;

  double X(double lat, double lon) const;
  double Y(double lat) const;
};

LayoutFrame FitAirportLayout(const AirportRec& ap, double width, double height);

// Draws the layout on the whole target: cleared to the map colour, ground
// polygons (the map's grouping: a kind "L" continues a polygon, another
// letter up to "M" starts one) in the airport colour, taxiways at their
// width in the taxi colour with their names, runways at their width in the
// runway colour with a dashed centre line and the end numbers, parking as
// circles in the parking colour with their names, a title line and a scale
// bar. Colours are the settings' (MAP, AP, TAXI, RWY, PARKING).
LayoutFrame DrawAirportLayout(DrawTarget& t, const NavDatabase& db, const AirportRec& ap, const AppState& state);

// The lists of the airport information window.
struct AirportInfoLists {
  std::vector<std::string> Header;       // name, place, elevation, position, variation
  std::vector<std::string> Runways;      // "07 / 25   10000 x 150 ft   Asphalt   Hdg 067° / 250°   ILS IXX"
  std::vector<std::string> Frequencies;  // "ATIS   121.850   NAME"
  std::vector<std::string> Ils;          // "IXX   110.100   Rwy 07   Crs 070°   GS 3.0°   NAME"
  std::vector<std::string> Parking;      // "GATE 1   Gate Heavy"
};
AirportInfoLists AirportInfo(const AirportRec& ap, const AppState& state);

}  // namespace orv
