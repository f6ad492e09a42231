// The flight's trace: samples taken during a connected flight, the recording
// file (.rcd) in its current and its old layout, the labels of the stepping
// view of Flight Analysis, and a GPX export.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/Clock.h"
#include "simlink/SimData.h"

namespace orv {

// One sample, 28 bytes in the file.
struct TraceSample {
  float Latitude = 0;
  float Longitude = 0;
  std::int32_t Altitude = 0;  // feet
  std::int32_t Agl = 0;       // feet
  float TrueHeading = 0;
  std::int16_t Pitch = 0;
  std::int16_t Bank = 0;
  std::int32_t Tas = 0;       // knots
};

inline constexpr std::size_t kTraceSampleBytes = 28;
inline constexpr std::size_t kTraceTimeChars = 8;
inline constexpr std::size_t kRecDescriptionChars = 40;
inline constexpr std::string_view kRecMagic = "QLMTZ";
// TraceLast is a 16-bit index: a file holds at most this many samples.
inline constexpr std::size_t kMaxTraceSamples = 32768;

// A trace in memory: the samples and, parallel, their UtcTimeText (empty for
// an old file). TraceLast is Samples.size() - 1.
struct Recording {
  std::string RecDescription;  // trimmed
  std::vector<TraceSample> Samples;
  std::vector<std::string> TraceTimes;
  bool OldFormat = false;
};

// The sampling of the live tick. Capacity follows the arrays' growth: 5000
// before the first sample, 5000 more each time the index reaches capacity - 1.
struct TraceRecorder {
  std::int32_t Counter = 0;
  std::int32_t Capacity = 0;
  Recording Trace;
};

// Ticks between samples for the stored value R: 14 below 200, 9 below 300, else 5.
std::int32_t TraceInterval(std::int32_t r);

// One tick: raises the counter and, when it passes the interval, takes a
// sample of the snapshot unless the simulator is in a menu or paused, or the
// aircraft is on the ground slower than 60 kt (the counter then starts again
// either way). True when a sample was taken. Stops at kMaxTraceSamples.
bool RecordTick(TraceRecorder& rec, const SimSnapshot& snap, std::int32_t r, bool inMenu, bool paused);

// The snapshot values a sample holds.
TraceSample SampleOf(const SimSnapshot& snap);
// A sample copied back into the snapshot for the stepping view.
void ApplySample(const TraceSample& sample, SimSnapshot& snap);

// The file's bytes in the current layout. Empty with a message in error when
// there is no sample or more than kMaxTraceSamples.
std::string WriteRecording(const Recording& rec, std::string* error = nullptr);

struct RecordingRead {
  bool ok = false;
  std::string error;  // why the file was refused
  Recording rec;
};
// Either layout, told apart by the first 5 bytes. Never reads past data.
RecordingRead ReadRecording(std::string_view data);

// The stepping view's index: up (true) is the next sample, down the previous;
// held between 0 and TraceLast - 1 (0 for a single sample).
std::int32_t StepReplayIndex(std::int32_t index, bool up, std::int32_t traceLast);

// The labels of the stepping view for sample i.
struct ReplayLabels {
  std::string lblRecCourse, lblRecPitch, lblRecBank, lblRecAlt, lblRecAGL;
  std::string lblRecTime, lblRecSpeed, lblRecLat, lblRecLon;
};
ReplayLabels ReplayLabelsOf(const TraceSample& sample, std::string_view timeText, bool decSec);
// The labels on one line, separated by two blanks (the command line's form).
std::string ReplayLine(const ReplayLabels& labels);

// GPX 1.1: one track with one point a sample, elevation in metres and, when the
// sample has a time text, its time on the given UTC date (a time earlier than
// the one before moves to the next day).
std::string RecordingToGpx(const Recording& rec, const DateTime& utcDate);

}  // namespace orv
