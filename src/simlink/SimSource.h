// Where the simulator's values come from. The program, the CLI and the
// end-to-end tests open a source by name and get the platform the channel
// talks through; every source other than a real FSUIPC is an in-process
// partner over an offset image.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "simlink/IpcPlatform.h"
#include "simlink/OffsetImage.h"

namespace orv {

class Clock;

// Opens a source by name; null with the reason in error for an unknown or
// unavailable source. Known today: "builtin", an aircraft parked on the
// apron at Frankfurt. The channel's pauses go to the clock when one is given.
std::unique_ptr<IpcPlatform> OpenSimSource(std::string_view source, std::string& error, Clock* clock = nullptr);

// The image of an aircraft standing still with engines off: position,
// altitude and heading as given, on the ground, a fixed noon clock, some fuel,
// COM1 on 122.80, calm standard weather.
void ParkImage(OffsetImage& image, double lat, double lon, double altFeet, double heading);

}  // namespace orv
