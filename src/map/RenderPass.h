// DrawMap: the render pass that paints the whole chart from the loaded arrays
// onto the map surface in one fixed order (later layers cover earlier ones),
// then keeps a clean copy in the back buffer for the live routines, which
// draw the aircraft and traffic over it and restore the background from it.
//
// The pass is a function of its inputs (MapScene): the view, the colours of
// the settings, the layer switches, the database, the plan, and the inputs of
// the live and online layers, which are empty until their modules fill them.
// A MapRenderer holds the scratch buffers that the pass reuses from one run
// to the next, so that a pass allocates nothing per drawn object.
//
// Field meanings the database manager and the pass agree on (the files keep
// them as plain stored values):
//   IlsRec::Values     read through IlsFrequency, IlsCourseOr, IlsGlideSlope
//                      (AirportFile.h)
//   VorRec::Value      radius of the compass rose in NM
//   MsaRec             FloatValue(0..3) the cell's North, West, South, East,
//                      FloatValue(4) the minimum safe altitude in feet
//   ParkingRec::Value  heading of the parking position in whole degrees
//   WorldShapeRec::Kind in worldpolygon.bin: 2 a lake (drawn in RIVER= after
//                      the land); in worldline.bin: 2 a river
//   AirspaceRec::Class the class text, see AirspaceClassOf
#pragma once

#include <string>

#include "map/Declutter.h"
#include "map/DrawTarget.h"
#include "map/MapLayer.h"
#include "map/MapLayers.h"
#include "map/MapScene.h"
#include "map/RenderCaches.h"

namespace orv {

class MapRenderer {
public:
  MapRenderer() = default;

  // The whole pass onto map, then the copy into backBuffer when given.
  void DrawMap(const MapScene& scene, DrawTarget& map, DrawTarget* backBuffer = nullptr);

  // Only the layers drawn over the finished chart (MapLayerPlace::Traffic
  // and Aircraft), for the live tick after it has put the clean chart back
  // from the back buffer. The view is that of the last DrawMap.
  void DrawLiveLayers(const MapScene& scene, DrawTarget& map);

  // The status texts the pass leaves for MapStatus(2) and MapStatus(3).
  const std::string& MagVarStatus() const { return magVarStatus_; }
  const std::string& PositionStatus() const { return positionStatus_; }

  // The declutter grid of the last pass (hover logic reads nothing else).
  const Declutter& Grid() const { return declutter_; }

private:
  struct Pass;
  friend struct Pass;

  Declutter declutter_;
  RenderCaches caches_;
  std::vector<DrawPoint> points_;       // projected shape points
  std::vector<DrawSegment> segments_;   // airway lines waiting to be drawn in one call
  std::string text_;                    // label scratch
  std::string text2_;
  std::string magVarStatus_;
  std::string positionStatus_;
};

}  // namespace orv
