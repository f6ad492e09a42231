// A map drawn into a picture outside the window: the CLI's render command,
// the golden picture tests and the render benchmark all prepare the surface
// and the view the same way, then run the window's own render pass.
//
// The surface unit is the window's layout unit, the twip: 15 units a pixel
// at 96 dots per inch. The zoom factor is the surface height over the
// design height of 7000 units, so that a range label is always the ground
// height the picture shows, whatever its size (30 NM: half a degree).
#pragma once

#include <cstdint>

#include "map/DrawTarget.h"
#include "map/Viewport.h"

namespace orv {

inline constexpr double kTwipsPerPixel = 15.0;
inline constexpr double kDesignMapHeight = 7000.0;

// Sets the surface's user scale, and the view's zoom factor, zoom step and
// Scaling for the zoom step; the centre is the caller's.
void PrepareMapPicture(DrawTarget& surface, ViewState& view, int16_t zoomIndex);

// The zoom step whose range label is nm, or -1.
int ZoomIndexOfLabel(int32_t nm);

}  // namespace orv
