#include <gtest/gtest.h>

#include <string>

#include "simlink/Recording.h"

namespace orv {
namespace {

TraceSample Sample(float lat, float lon, int32_t alt) {
  TraceSample s;
  s.Latitude = lat;
  s.Longitude = lon;
  s.Altitude = alt;
  s.Agl = 250;
  s.TrueHeading = 5.4f;
  s.Pitch = -2;
  s.Bank = 15;
  s.Tas = 120;
  return s;
}

std::string Hex(std::string_view bytes) {
  static const char* digits = "0123456789abcdef";
  std::string out;
  for (unsigned char c : bytes) {
    if (!out.empty()) out += ' ';
    out += digits[c >> 4];
    out += digits[c & 15];
  }
  return out;
}

Recording TwoSamples() {
  Recording rec;
  rec.RecDescription = "Lunch to Egelsbach";
  rec.Samples = {Sample(50.0f, 8.5f, 1000), Sample(50.25f, -8.5f, 2000)};
  rec.TraceTimes = {"23:59:50", "00:00:05"};
  return rec;
}

TEST(RecordingFile, CurrentLayoutByteForByteAndBack) {
  const std::string bytes = WriteRecording(TwoSamples());
  ASSERT_EQ(bytes.size(), 47u + 2 * 36);
  EXPECT_EQ(bytes.substr(0, 5), "QLMTZ");
  EXPECT_EQ(bytes.substr(5, 40), "Lunch to Egelsbach" + std::string(22, ' '));
  EXPECT_EQ(Hex(bytes.substr(45, 2)), "01 00");
  EXPECT_EQ(Hex(bytes.substr(47, 28)),
            "00 00 48 42 00 00 08 41 e8 03 00 00 fa 00 00 00 cd cc ac 40 fe ff 0f 00 78 00 00 00");
  EXPECT_EQ(bytes.substr(75, 8), "23:59:50");
  EXPECT_EQ(bytes.substr(83 + 28, 8), "00:00:05");

  const RecordingRead r = ReadRecording(bytes);
  ASSERT_TRUE(r.ok) << r.error;
  EXPECT_FALSE(r.rec.OldFormat);
  EXPECT_EQ(r.rec.RecDescription, "Lunch to Egelsbach");
  ASSERT_EQ(r.rec.Samples.size(), 2u);
  EXPECT_EQ(r.rec.Samples[1].Longitude, -8.5f);
  EXPECT_EQ(r.rec.Samples[1].Altitude, 2000);
  EXPECT_EQ(r.rec.TraceTimes, (std::vector<std::string>{"23:59:50", "00:00:05"}));
}

TEST(RecordingFile, OldLayoutWithoutMagicOrTimes) {
  std::string bytes = WriteRecording(TwoSamples());
  std::string old = bytes.substr(5, 42) + bytes.substr(47, 28) + bytes.substr(83, 28);
  const RecordingRead r = ReadRecording(old);
  ASSERT_TRUE(r.ok) << r.error;
  EXPECT_TRUE(r.rec.OldFormat);
  EXPECT_EQ(r.rec.RecDescription, "Lunch to Egelsbach");
  ASSERT_EQ(r.rec.Samples.size(), 2u);
  EXPECT_EQ(r.rec.Samples[0].Agl, 250);
  EXPECT_EQ(r.rec.TraceTimes, (std::vector<std::string>{"", ""}));
}

TEST(RecordingFile, Refusals) {
  const std::string good = WriteRecording(TwoSamples());
  EXPECT_EQ(ReadRecording(good.substr(0, good.size() - 1)).error,
            "The recording is truncated: it announces 2 samples but holds 1.");
  EXPECT_EQ(ReadRecording("QLMTZshort").error,
            "The recording is truncated: 10 bytes, too short for its description and sample count.");
  std::string negative = good;
  negative[45] = '\xFF';
  negative[46] = '\xFF';
  EXPECT_EQ(ReadRecording(negative).error, "The recording's sample count is negative (TraceLast -1).");
  std::string huge = good.substr(0, 47);
  huge[45] = '\xFF';
  huge[46] = '\x7F';
  EXPECT_EQ(ReadRecording(huge).error, "The recording is truncated: it announces 32768 samples but holds 0.");
  std::string error;
  EXPECT_EQ(WriteRecording(Recording{}, &error), "");
  EXPECT_EQ(error, "The recording holds no sample.");
  // A single sample is TraceLast 0.
  Recording one = TwoSamples();
  one.Samples.resize(1);
  EXPECT_EQ(ReadRecording(WriteRecording(one)).rec.Samples.size(), 1u);
}

TEST(RecordingTick, IntervalConditionsAndCapacity) {
  EXPECT_EQ(TraceInterval(199), 14);
  EXPECT_EQ(TraceInterval(200), 9);
  EXPECT_EQ(TraceInterval(300), 5);

  SimSnapshot snap;
  snap.Airborne = -1;
  snap.UtcTimeText = "10:00:00";
  TraceRecorder rec;
  int firstAt = 0;
  for (int tick = 1; tick <= 15 && !firstAt; ++tick)
    if (RecordTick(rec, snap, 100, false, false)) firstAt = tick;
  EXPECT_EQ(firstAt, 15);
  EXPECT_EQ(rec.Capacity, 5000);
  EXPECT_EQ(rec.Trace.TraceTimes[0], "10:00:00");

  auto sampleAfterInterval = [&](bool inMenu, bool paused) {
    bool taken = false;
    for (int i = 0; i < 6; ++i) taken = RecordTick(rec, snap, 300, inMenu, paused) || taken;
    return taken;
  };
  EXPECT_FALSE(sampleAfterInterval(true, false));
  EXPECT_FALSE(sampleAfterInterval(false, true));
  snap.Airborne = 0;
  snap.GroundSpeed = 59;
  EXPECT_FALSE(sampleAfterInterval(false, false));
  snap.GroundSpeed = 60;
  EXPECT_TRUE(sampleAfterInterval(false, false));

  rec.Trace.Samples.resize(4999);
  rec.Trace.TraceTimes.resize(4999);
  EXPECT_TRUE(sampleAfterInterval(false, false));  // index 4999
  EXPECT_EQ(rec.Capacity, 10000);
}

TEST(RecordingReplay, SteppingStopsBeforeTraceLastAndLabels) {
  EXPECT_EQ(StepReplayIndex(0, true, 3), 1);
  EXPECT_EQ(StepReplayIndex(2, true, 3), 2);
  EXPECT_EQ(StepReplayIndex(0, false, 3), 0);
  EXPECT_EQ(StepReplayIndex(0, true, 0), 0);

  const ReplayLabels l = ReplayLabelsOf(Sample(50.5f, 8.25f, 3500), "12:34:56", true);
  EXPECT_EQ(ReplayLine(l),
            "UTC: 12:34:56  N50\xB0" "30.00'  E008\xB0" "15.00'  Alt: 3500  AGL: 250  Course: 005\xB0  TAS: 120  "
            "Pitch: -2  Bank: 15");
}

TEST(RecordingGpx, PointsWithElevationAndTimeAcrossMidnight) {
  const std::string gpx = RecordingToGpx(TwoSamples(), DateTime{2026, 11, 24});
  EXPECT_NE(gpx.find("<name>Lunch to Egelsbach</name>"), std::string::npos);
  EXPECT_NE(gpx.find("<trkpt lat=\"50.000000\" lon=\"8.500000\"><ele>304.8</ele>"
                     "<time>2026-11-24T23:59:50Z</time></trkpt>"),
            std::string::npos);
  EXPECT_NE(gpx.find("<trkpt lat=\"50.250000\" lon=\"-8.500000\"><ele>609.6</ele>"
                     "<time>2026-11-25T00:00:05Z</time></trkpt>"),
            std::string::npos);
}

}  // namespace
}  // namespace orv
