// The layers that other modules draw inside the render pass: the simulator
// link (the active leg's additions, AI traffic, the aircraft and its wind
// arrow), the online networks (FIR outlines, pilots and controllers), the
// weather symbols and the oceanic tracks. Each has a named place in the
// pass's fixed order (MapLayerPlace); a MapLayerRegistry keeps the layers
// registered at each place and the pass calls them there, with a
// LayerContext that gives the view, its projection, the declutter grid, the
// colours and the label font of the pass.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "map/Declutter.h"
#include "map/DrawTarget.h"
#include "map/MapScene.h"
#include "map/Viewport.h"

namespace orv {

// The places in the order the pass reaches them. Traffic and Aircraft come
// after the clean copy of the chart is kept in the back buffer: the live tick
// draws them over the finished chart and restores the background from the
// copy (MapRenderer::DrawLiveLayers).
enum class MapLayerPlace : uint8_t {
  OnlineFirs,   // after the airspaces: the networks' FIR outlines
  Tracks,       // after the route: the North Atlantic and Pacific tracks
  Weather,      // after the tracks: the weather symbols
  ActiveLeg,    // after the plan's active leg, before the airways
  Online,       // after the user waypoints: the networks' controllers and pilots
  Holdings,     // after the map point: recorded holding patterns
  ZoneMonitor,  // after the recorded track: the control zone monitor
  Traffic,      // over the finished chart: AI traffic
  Aircraft,     // over everything: the aircraft and the wind arrow
  Count
};
inline constexpr std::size_t kMapLayerPlaces = static_cast<std::size_t>(MapLayerPlace::Count);

// The plain cylinder of the view with the centre's cosine worked out once:
// the same figures as MapXFromLon and MapYFromLat, without a cosine per point
// unless Round World asks for one.
struct Projector {
  explicit Projector(const ViewState& v)
      : halfW(v.ScaleWidth / 2),
        halfH(v.ScaleHeight / 2),
        scaling(static_cast<double>(v.Scaling)),
        cntrLat(v.CntrLat),
        cntrLon(v.CntrLon),
        cosC(CosLat(v.CntrLat)),
        round(v.RoundWorld) {}

  double X(double lon, double lat) const { return XOfDelta(LonDelta(cntrLon, lon), lat); }
  // X of a point delta degrees of longitude west of the centre.
  double XOfDelta(float delta, double lat) const {
    const double c = round ? CosLat(lat) : cosC;
    return std::floor(halfW - delta * scaling * c);
  }
  double Y(double lat) const { return std::floor((cntrLat - lat) * scaling + halfH); }

  double halfW, halfH, scaling, cntrLat;
  float cntrLon;
  double cosC;
  bool round;
};

// The font of the pass's labels, its size set by the settings' FontSize.
inline constexpr std::string_view kMapLabelFontName = "Arial";
inline float LabelFontSize(const Settings& colours) { return colours.FontSize ? 9.0f : 7.0f; }

// What a layer may read while it draws. The view's bounds are those of the
// running pass (clamped, MapNorth to MapEast set).
struct LayerContext {
  const ViewState& View;
  const Projector& Proj;
  Declutter& Grid;  // labels go through Grid.PlaceLabel like the pass's own
  const Settings& Colours;
  const MapLayers& Layers;
  const NavDatabase& Db;
  const FlightPlan& Plan;
  const MapOverlays& Overlays;
  int32_t Label = 0;               // CurrentLabel of the view
  std::string_view FontName;       // the pass's label font
  float FontSize = 7;

  bool Visible(float lat, float lon) const { return InView(View, lat, lon); }
  double X(double lon, double lat) const { return Proj.X(lon, lat); }
  double Y(double lat) const { return Proj.Y(lat); }
};

class MapLayer {
public:
  virtual ~MapLayer() = default;
  virtual void Draw(const LayerContext& context, DrawTarget& target) = 0;
};

// The layers at each place, drawn in the order they were added. A fixed
// table of pointers: registering allocates nothing and a pass walks it
// without allocating. The registry does not own the layers.
class MapLayerRegistry {
public:
  static constexpr std::size_t kPerPlace = 4;

  // False when the place already holds kPerPlace layers or place is Count.
  bool Add(MapLayerPlace place, MapLayer& layer);
  void Remove(const MapLayer& layer);
  void DrawAt(MapLayerPlace place, const LayerContext& context, DrawTarget& target) const;
  bool Empty(MapLayerPlace place) const;

private:
  std::array<std::array<MapLayer*, kPerPlace>, kMapLayerPlaces> at_{};
};

}  // namespace orv
