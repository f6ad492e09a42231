// pctVert, the vertical profile of Flight Analysis: the recorded altitude
// against time with the ground below it, the scale of updnMaxVert and a mark
// at the sample the stepping view shows. Drawn on any DrawTarget, in the
// target's own user units, so that the window, a picture file and a test's
// recording target get the same figure.
#pragma once

#include <cstdint>
#include <vector>

#include "map/DrawTarget.h"
#include "simlink/Recording.h"

namespace orv {

// The limits of updnMaxVert (TRACEALT) and its step.
inline constexpr std::int32_t kMinProfileAltitude = 1000;
inline constexpr std::int32_t kMaxProfileAltitude = 50000;
inline constexpr std::int32_t kProfileAltitudeStep = 1000;

// Seconds of each sample from the first, read from the time texts; a time
// earlier than the one before is on the next day. Empty when a sample has no
// time text of the form "hh:mm:ss" (an old file) or no time passes at all:
// the samples are then spaced evenly.
std::vector<double> SampleSeconds(const Recording& rec);

struct ProfileStyle {
  std::int32_t MaxAltitude = 15000;  // the top of the scale, feet (updnMaxVert)
  bool AboveGround = false;          // TRACEALTTYPE: the height above the ground instead of the altitude
};

// The picture: background, grid lines with their altitudes, the ground (the
// altitude less the height above it), the flown altitude, and at sample index
// a vertical line with a dot and the sample's time and altitude. Nothing but
// the background and grid when the recording is empty.
void DrawReplayProfile(DrawTarget& target, const Recording& rec, std::int32_t index, const ProfileStyle& style);

}  // namespace orv
