// pctVert: the time axis read from the samples' time texts, and the figure's
// geometry worked out by hand with the recording target's text metric.
#include <gtest/gtest.h>

#include "map/RecordingTarget.h"
#include "simlink/ReplayDraw.h"

namespace orv {
namespace {

Recording Climb(std::vector<std::string> times) {
  Recording rec;
  for (int32_t alt : {0, 5000, 10000}) {
    TraceSample s;
    s.Altitude = alt;
    s.Agl = alt > 0 ? alt - 400 : 0;
    rec.Samples.push_back(s);
  }
  rec.TraceTimes = std::move(times);
  return rec;
}

TEST(ReplayProfile, TimeAxisFromTheTimeTexts) {
  EXPECT_EQ(SampleSeconds(Climb({"23:59:50", "00:00:05", "00:00:20"})), (std::vector<double>{0, 15, 30}));
  EXPECT_TRUE(SampleSeconds(Climb({"", "", ""})).empty());          // an old file: evenly spaced
  EXPECT_TRUE(SampleSeconds(Climb({"10:00:00", "10:0x:00", "10:00:20"})).empty());
  EXPECT_TRUE(SampleSeconds(Climb({"10:00:00", "10:00:00", "10:00:00"})).empty());
}

TEST(ReplayProfile, MarksTheSampleShownAtItsTime) {
  RecordingTarget t(10000, 2000, "pctVert");
  ProfileStyle style;
  style.MaxAltitude = 10000;
  DrawReplayProfile(t, Climb({"10:00:00", "10:00:10", "10:00:40"}), 1, style);
  // Font 7: characters 70 wide, lines 140 high. The plot runs from x 490
  // ("50000 " and half a line) to 9930, from y 210 down to 1790.
  std::vector<std::string> texts;
  const DrawOp* mark = nullptr;
  const DrawOp* dot = nullptr;
  for (const DrawOp& op : t.Ops()) {
    if (op.Kind == DrawOpKind::Text) texts.push_back(op.Text);
    if (op.Kind == DrawOpKind::Line && op.Color == RgbColour(220, 0, 0)) mark = &op;
    if (op.Kind == DrawOpKind::Circle) dot = &op;
  }
  EXPECT_EQ(texts, (std::vector<std::string>{"0", "2000", "4000", "6000", "8000", "10000", "10:00:00", "10:00:40",
                                             "10:00:10  5000 ft"}));
  ASSERT_TRUE(mark && dot);
  EXPECT_DOUBLE_EQ(mark->X1, 490 + 9440 * 10.0 / 40);
  EXPECT_DOUBLE_EQ(mark->Y1, 210);
  EXPECT_DOUBLE_EQ(mark->Y2, 1790);
  EXPECT_DOUBLE_EQ(dot->Y1, 1790 - 1580 * 0.5);
}

}  // namespace
}  // namespace orv
