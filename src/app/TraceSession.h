// The flight's trace inside the program: the samples the live tick takes (or
// the recording Flight Analysis loaded; the two share one pair of arrays, as
// a loaded file replaces the trace), the points the render pass draws the
// ribbon from, and the state of the stepping view.
#pragma once

#include <cstdint>
#include <vector>

#include "map/MapScene.h"
#include "simlink/Recording.h"
#include "simlink/SimData.h"

namespace orv {

struct TraceSession {
  TraceRecorder Recorder;                 // Recorder.Trace holds the samples and their times
  std::vector<TraceMapSample> MapTrace;   // the same samples as the render pass reads them
  bool MenuReplay = false;                // "&Flight Analysis" checked
  bool ReplayActive = false;
  std::int32_t ReplayIndex = 0;
  SimSnapshot ReplaySnap;                 // the sample the stepping view shows
  bool ProfileVisible = false;            // pctVert

  const Recording& Trace() const { return Recorder.Trace; }
  std::int32_t TraceLast() const { return static_cast<std::int32_t>(Recorder.Trace.Samples.size()) - 1; }
};

}  // namespace orv
