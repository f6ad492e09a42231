// The Blackbox menu through the main window's controller: Reset / Save with
// frmSaveRec, Flight Analysis with frmLoadRec, the stepping keys with their
// labels and the map kept on the aircraft, and the link closed by the mode.
#include <gtest/gtest.h>

#include <functional>

#include "app/MainWindowController.h"
#include "core/FileIo.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"

namespace orv {
namespace {

struct View : MainWindowView {
  std::vector<std::string> calls;
  std::function<void(std::string_view)> onOpen;  // a modal window's work
  ReplayLabels shown;
  void FocusMap() override {}
  void DrawMap() override { calls.push_back("draw"); }
  void SetMapStatus(int field, std::string_view text) override {
    if (field == kStatusRecording) calls.push_back("status6 " + std::string(text));
  }
  void RepositionMeasure() override {}
  void ClearSelection() override {}
  void SetOnTop(bool) override {}
  void ShowPlan(bool) override {}
  void SyncChecks() override {}
  void OpenWindow(std::string_view name) override {
    calls.push_back("open " + std::string(name));
    if (onOpen) onOpen(name);
  }
  void CloseProgram() override {}
  void RefreshPlanTable() override {}
  void ShowReduced(bool) override {}
  void SetMenuEnabled(std::string_view name, bool on) override {
    calls.push_back(std::string(name) + (on ? " on" : " off"));
  }
  void ShowReplay(bool on) override { calls.push_back(on ? "replay shown" : "replay hidden"); }
  void ShowReplayRow(const ReplayLabels& labels) override { shown = labels; }
};

TraceSample At(float lat, float lon, int32_t alt) {
  TraceSample t;
  t.Latitude = lat;
  t.Longitude = lon;
  t.Altitude = alt;
  t.Agl = alt - 300;
  t.TrueHeading = 95;
  t.Tas = 110;
  return t;
}

struct Fixture {
  test::TempDir dir;
  ProgramState s{dir.Path().string()};
  View view;
  test::ScriptedUi ui;
  ManualTimers timers;
  test::FakeClock clock;
  MainWindowController c{s, view, ui, timers, clock};
  FlightAnalysis& a = c.Analysis();

  Fixture() {
    test::BuildSmallWorld(s.Db);
    c.Load(50.0f, 8.0f);
  }
};

TEST(FlightAnalysis, SavedTraceComesBackAndStepsThroughItsSamples) {
  Fixture f;
  Recording& trace = f.s.Trace.Recorder.Trace;
  // The third sample lies far off the picture.
  trace.Samples = {At(50.0f, 8.0f, 1000), At(50.01f, 8.05f, 1500), At(53.0f, 12.0f, 3000)};
  trace.TraceTimes = {"10:00:00", "10:00:07", "10:00:14"};
  f.view.onOpen = [&](std::string_view name) {
    if (name == "frmSaveRec") {
      EXPECT_EQ(f.a.SaveForm.txtFilename, "untitled");
      EXPECT_EQ(f.a.SaveForm.txtFileDescription, "untitled");
      f.a.SaveForm.txtFilename = "lunch";
      f.a.SaveForm.txtFileDescription = "Lunch to the hill strip";
      EXPECT_TRUE(f.a.SaveRecOk());
    } else if (name == "frmLoadRec") {
      ASSERT_EQ(f.a.LoadForm.flstFiles, std::vector<std::string>{"lunch.rcd"});
      f.a.SelectRecording(0);
      EXPECT_EQ(f.a.LoadForm.lbldescription, "Lunch to the hill strip");
      EXPECT_TRUE(f.a.LoadRecOk());
    }
  };
  f.ui.answers = {Answer::Yes};
  f.c.Menu("MenuTraceReset");
  EXPECT_EQ(f.ui.Texts("askcancel"), std::vector<std::string>{"Do you want to save the recorded flight before it is reset?"});
  EXPECT_TRUE(trace.Samples.empty());  // saved, then reset
  const auto file = ReadRecording(*ReadWholeText(f.dir.Path() / "user" / "lunch.rcd"));
  ASSERT_TRUE(file.ok);
  EXPECT_EQ(file.rec.Samples.size(), 3u);

  f.view.calls.clear();
  f.c.BarButton("cmdTracing");  // the same as MenuReplay
  ASSERT_TRUE(f.s.Trace.ReplayActive);
  EXPECT_TRUE(f.s.Layers.MenuTraceActive);
  EXPECT_EQ(f.s.Overlays.Trace.size(), 3u);
  for (const char* call : {"open frmLoadRec", "cmdTracing off", "menuShowAlt off", "replay shown", "status6 Sample 1 of 3"})
    EXPECT_NE(std::find(f.view.calls.begin(), f.view.calls.end(), call), f.view.calls.end()) << call;
  EXPECT_EQ(f.view.shown.lblRecAlt, "Alt: 1000");
  EXPECT_EQ(f.view.shown.lblRecTime, "UTC: 10:00:00");

  // Up is the next sample; the last one is never reached (TraceLast - 1).
  f.c.Key(38);
  EXPECT_EQ(f.view.shown.lblRecAlt, "Alt: 1500");
  EXPECT_EQ(f.view.shown.lblRecCourse, "Course: 095\xB0");
  f.c.Key(38);
  EXPECT_EQ(f.s.Trace.ReplayIndex, 1);
  f.c.Key(40);
  EXPECT_EQ(f.view.shown.lblRecAGL, "AGL: 700");
  EXPECT_EQ(f.view.calls.back(), "status6 Sample 1 of 3");

  // A sample off the picture moves the map's centre onto it.
  f.s.Trace.ReplayIndex = 2;
  f.view.calls.clear();
  f.a.ShowRow();
  EXPECT_EQ(f.s.View.CntrLat, 53.0f);
  EXPECT_EQ(f.view.calls.front(), "draw");

  f.c.Menu("MenuReplay");  // leaving: the trace goes, the button comes back
  EXPECT_FALSE(f.s.Trace.ReplayActive);
  EXPECT_FALSE(f.s.Layers.MenuTraceActive);
  EXPECT_TRUE(f.s.Overlays.Trace.empty());
  EXPECT_NE(std::find(f.view.calls.begin(), f.view.calls.end(), "cmdTracing on"), f.view.calls.end());

  f.a.RefreshLoadRec();
  f.a.SelectRecording(0);
  f.ui.answers = {Answer::Yes};
  EXPECT_TRUE(f.a.LoadRecDelete());
  EXPECT_EQ(f.ui.Texts("ask").back(), "do you really want to delete lunch.rcd?");
  EXPECT_TRUE(f.a.LoadForm.flstFiles.empty());
}

TEST(FlightAnalysis, ClosesTheLinkAndAConnectEndsIt) {
  Fixture f;
  f.c.Menu("MenuLocal");
  ASSERT_TRUE(f.s.Sim.Connected());
  f.c.Menu("MenuReplay");  // frmLoadRec cancelled: the mode is on with no samples
  EXPECT_FALSE(f.s.Sim.Connected());
  EXPECT_FALSE(f.timers.Enabled(TimerId::Gps));
  EXPECT_EQ(f.ui.Texts("caption").back(), "Disconnected from Flight Simulator");
  EXPECT_TRUE(f.s.Trace.ReplayActive);
  f.c.Key(38);  // nothing to step through
  f.c.Menu("MenuLocal");
  EXPECT_TRUE(f.s.Sim.Connected());
  EXPECT_FALSE(f.s.Trace.MenuReplay);
  EXPECT_FALSE(f.s.Trace.ReplayActive);
}

}  // namespace
}  // namespace orv
