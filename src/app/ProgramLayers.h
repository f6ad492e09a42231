// The program's layers in the render pass: the online networks' sectors,
// controllers and pilots, the oceanic tracks, the weather symbols, and the
// aircraft of the simulator link with its wind arrow. Each reads the program
// state when the pass reaches its place; a switched-off layer draws nothing.
#pragma once

#include "app/ProgramState.h"
#include "core/Clock.h"
#include "map/MapLayer.h"

namespace orv {

// The own aircraft's colour: ACINCTRZ= while Control Zone Violation watches
// (with the control zones shown) and the aircraft is inside a control zone,
// else MOVAC=.
Colour LiveAircraftColour(const ProgramState& s);

class ProgramLayers {
public:
  // Registers the layers in s.Registry; they leave it again when this goes.
  ProgramLayers(ProgramState& s, const Clock& clock);
  ~ProgramLayers();
  ProgramLayers(const ProgramLayers&) = delete;
  ProgramLayers& operator=(const ProgramLayers&) = delete;

private:
  struct Layer : MapLayer {
    Layer(ProgramLayers& owner, MapLayerPlace place) : Owner(owner), Place(place) {}
    void Draw(const LayerContext& context, DrawTarget& target) override;
    ProgramLayers& Owner;
    MapLayerPlace Place;
  };
  void DrawAt(MapLayerPlace place, const LayerContext& context, DrawTarget& target);

  ProgramState& s_;
  const Clock& clock_;
  Layer firs_{*this, MapLayerPlace::OnlineFirs};
  Layer tracks_{*this, MapLayerPlace::Tracks};
  Layer weather_{*this, MapLayerPlace::Weather};
  Layer online_{*this, MapLayerPlace::Online};
  Layer traffic_{*this, MapLayerPlace::Traffic};
  Layer aircraft_{*this, MapLayerPlace::Aircraft};
  Layer procedure_{*this, MapLayerPlace::Holdings};
};

}  // namespace orv
