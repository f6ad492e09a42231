#include "map/MapLayer.h"

namespace orv {

bool MapLayerRegistry::Add(MapLayerPlace place, MapLayer& layer) {
  const auto p = static_cast<std::size_t>(place);
  if (p >= kMapLayerPlaces) return false;
  for (MapLayer*& slot : at_[p]) {
    if (slot == &layer) return true;
    if (!slot) {
      slot = &layer;
      return true;
    }
  }
  return false;
}

void MapLayerRegistry::Remove(const MapLayer& layer) {
  for (auto& place : at_) {
    std::size_t kept = 0;
    for (MapLayer* slot : place)
      if (slot && slot != &layer) place[kept++] = slot;
    for (; kept < place.size(); ++kept) place[kept] = nullptr;
  }
}

void MapLayerRegistry::DrawAt(MapLayerPlace place, const LayerContext& context, DrawTarget& target) const {
  const auto p = static_cast<std::size_t>(place);
  if (p >= kMapLayerPlaces) return;
  for (MapLayer* layer : at_[p]) {
    if (!layer) break;
    layer->Draw(context, target);
  }
}

bool MapLayerRegistry::Empty(MapLayerPlace place) const {
  const auto p = static_cast<std::size_t>(place);
  return p >= kMapLayerPlaces || !at_[p][0];
}

}  // namespace orv
