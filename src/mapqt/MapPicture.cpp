#include "mapqt/MapPicture.h"

#include "core/Runtime.h"

namespace orv {

void PrepareMapPicture(DrawTarget& surface, ViewState& view, int16_t zoomIndex) {
  surface.SetScaleWidth(surface.PixelWidth() * kTwipsPerPixel);
  surface.SetScaleHeight(surface.PixelHeight() * kTwipsPerPixel);
  SyncSurface(view, surface);
  view.ZoomFactor = static_cast<float>(surface.ScaleHeight() / kDesignMapHeight);
  view.ZoomIndex = zoomIndex;
  view.Scaling = CLng(static_cast<double>(view.ZoomFactor) * ZoomTable[static_cast<std::size_t>(zoomIndex)].Scale);
}

int ZoomIndexOfLabel(int32_t nm) {
  for (std::size_t i = 0; i < ZoomTable.size(); ++i)
    if (ZoomTable[i].Nm == nm && static_cast<int>(i) <= kLastSelectableZoom) return static_cast<int>(i);
  return -1;
}

}  // namespace orv
