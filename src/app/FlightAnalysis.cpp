#include "app/FlightAnalysis.h"

#include <algorithm>

#include "app/MainWindowController.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "simlink/LiveDraw.h"

namespace orv {

namespace {

bool IsRecordingName(const std::filesystem::path& p) { return SameTextNoCase(p.extension().string(), ".rcd"); }

}  // namespace

std::vector<std::string> RecordingFiles(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ec)) {
    if (entry.is_regular_file(ec) && IsRecordingName(entry.path())) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const std::string la = LCase(a), lb = LCase(b);
    return la != lb ? la < lb : a < b;
  });
  return names;
}

std::string RecordingStatusText(const TraceSession& t) {
  const std::int32_t count = t.TraceLast() + 1;
  if (t.ReplayActive) {
    if (count == 0) return "Flight Analysis";
    return "Sample " + std::to_string(t.ReplayIndex + 1) + " of " + std::to_string(count);
  }
  if (count == 0) return {};
  return "Trace: " + std::to_string(count) + (count == 1 ? " sample" : " samples");
}

FlightAnalysis::FlightAnalysis(ProgramState& s, MainWindowView& view, Ui& ui, Timers& timers)
    : s_(s), view_(view), ui_(ui), timers_(timers) {}

std::filesystem::path FlightAnalysis::UserFolder() const { return s_.Core.Folder.Resolve(kRecordingFolder); }

void FlightAnalysis::SyncMapTrace() {
  const Recording& rec = s_.Trace.Trace();
  auto& map = s_.Trace.MapTrace;
  if (map.size() > rec.Samples.size()) map.clear();
  map.reserve(rec.Samples.capacity());
  for (std::size_t i = map.size(); i < rec.Samples.size(); ++i) {
    const TraceSample& t = rec.Samples[i];
    map.push_back({t.Latitude, t.Longitude, static_cast<float>(t.Altitude)});
  }
  s_.Overlays.Trace = map;
  s_.Overlays.ReplayMode = s_.Trace.ReplayActive;
}

void FlightAnalysis::EraseTrace() {
  s_.Trace.Recorder = TraceRecorder{};
  s_.Trace.MapTrace.clear();
  s_.Trace.ReplayIndex = 0;
  SyncMapTrace();
}

void FlightAnalysis::LiveSample() {
  SimSession& sim = s_.Sim;
  if (!sim.Connected() || s_.Trace.ReplayActive || !sim.Live->State().TrackingActive) return;
  LiveTracking& live = *sim.Live;
  // The rate follows the ground speed: a fast aircraft is sampled more
  // often, so that its ribbon keeps the same detail on the map. The menu
  // and pause flags cost two round trips to the simulator: they are read
  // only on the tick that may take a sample.
  const std::int32_t rate = live.Snap.GroundSpeed;
  const bool due = s_.Trace.Recorder.Counter + 1 > TraceInterval(rate);
  const bool inMenu = due && ReadInMenu(live.Channel());
  const bool paused = due && !inMenu && ReadPaused(live.Channel());
  const bool taken = RecordTick(s_.Trace.Recorder, live.Snap, rate, inMenu, paused);
  if (!taken) return;
  SyncMapTrace();
  if (s_.Layers.MenuTraceActive && s_.View.MapReady) view_.DrawMap();
}

// ------------------------------------------------------------ Flight Analysis

void FlightAnalysis::MenuReplayClick() {
  if (s_.Trace.MenuReplay)
    Leave();
  else
    Enter(true, {});
}

bool FlightAnalysis::OpenRecording(const std::filesystem::path& file) {
  if (s_.Trace.MenuReplay) Leave();
  Enter(false, file);
  return !s_.Trace.Trace().Samples.empty();
}

void FlightAnalysis::Enter(bool ask, const std::filesystem::path& file) {
  TraceSession& t = s_.Trace;
  EraseTrace();
  t.MenuReplay = true;
  view_.SetMenuChecked("MenuReplay", true);
  SimSession& sim = s_.Sim;
  if (sim.Connected()) {
    // Closed as at a disconnection; MenuLocal loses its check mark.
    sim.Live->MenuLocalClick();
    s_.Overlays.Sim = LiveMapState(*sim.Live);
    view_.SetMenuChecked("MenuLocal", false);
  }
  timers_.SetEnabled(TimerId::Gps, false);
  if (ask) {
    RefreshLoadRec();
    view_.OpenWindow("frmLoadRec");  // modal: cmdOK has loaded the file when it returns
  } else {
    LoadFile(file);
  }
  s_.Layers.MenuTraceActive = true;
  view_.SetMenuEnabled("cmdTracing", false);
  view_.SetMenuEnabled("menuShowAlt", false);
  t.ReplayActive = true;
  SyncMapTrace();
  view_.SyncChecks();
  t.ProfileVisible = !t.Trace().Samples.empty();
  view_.ShowReplay(t.ProfileVisible);
  view_.DrawMap();
  ShowRow();
}

void FlightAnalysis::Leave() {
  EndReplay();
  view_.SetMapStatus(kStatusRecording, RecordingStatusText(s_.Trace));
  view_.DrawMap();
}

void FlightAnalysis::EndReplay() {
  // The link's own redraw follows. The loaded recording is not the flight
  // about to be flown: the live trace starts empty.
  TraceSession& t = s_.Trace;
  EraseTrace();
  t.MenuReplay = false;
  t.ReplayActive = false;
  view_.SetMenuChecked("MenuReplay", false);
  s_.Layers.MenuTraceActive = false;
  view_.SetMenuEnabled("cmdTracing", true);
  view_.SetMenuEnabled("menuShowAlt", true);
  t.ProfileVisible = false;
  view_.ShowReplay(false);
  SyncMapTrace();
  view_.SyncChecks();
}

void FlightAnalysis::Step(bool up) {
  TraceSession& t = s_.Trace;
  if (t.Trace().Samples.empty()) return;
  t.ReplayIndex = StepReplayIndex(t.ReplayIndex, up, t.TraceLast());
  ShowRow();
}

void FlightAnalysis::ShowRow() {
  TraceSession& t = s_.Trace;
  if (!t.ReplayActive || t.Trace().Samples.empty()) return;
  t.ReplayIndex = std::clamp(t.ReplayIndex, 0, t.TraceLast());
  const TraceSample& sample = t.Trace().Samples[static_cast<std::size_t>(t.ReplayIndex)];
  ApplySample(sample, t.ReplaySnap);
  ViewState& v = s_.View;
  v.CurrentLat = sample.Latitude;
  v.CurrentLon = sample.Longitude;
  const double x = MapXFromLon(v, sample.Longitude, sample.Latitude), y = MapYFromLat(v, sample.Latitude);
  // The picture left free by pctVert, which lies over the map's lower edge.
  const double bottom = view_.MapHeight() - (t.ProfileVisible ? kProfileHeightTwips + kProfileGapTwips : 0);
  if (x < 0 || y < 0 || x >= view_.MapWidth() || y >= bottom) {
    v.CntrLat = ClampCenterLat(v, sample.Latitude);
    v.CntrLon = sample.Longitude;
    view_.DrawMap();
  } else {
    view_.RestoreMapPicture();
  }
  view_.DrawAircraft(sample.Latitude, sample.Longitude, sample.TrueHeading);
  view_.ShowReplayRow(Labels());
  view_.SetMapStatus(kStatusRecording, RecordingStatusText(t));
}

ReplayLabels FlightAnalysis::Labels() const {
  const TraceSession& t = s_.Trace;
  if (t.Trace().Samples.empty()) return {};
  const auto i = static_cast<std::size_t>(std::clamp(t.ReplayIndex, 0, t.TraceLast()));
  return ReplayLabelsOf(t.Trace().Samples[i], i < t.Trace().TraceTimes.size() ? t.Trace().TraceTimes[i] : "",
                        s_.View.DecimalSeconds);
}

std::int32_t FlightAnalysis::MaxVert() const {
  return std::clamp(s_.Core.Config.TraceAlt, kMinProfileAltitude, kMaxProfileAltitude);
}

void FlightAnalysis::SetMaxVert(std::int32_t feet) {
  s_.Core.Config.TraceAlt = std::clamp(feet, kMinProfileAltitude, kMaxProfileAltitude);
  if (s_.Trace.ReplayActive) view_.ShowReplayRow(Labels());
}

void FlightAnalysis::DrawProfile(DrawTarget& target) const {
  ProfileStyle style;
  style.MaxAltitude = MaxVert();
  style.AboveGround = s_.Core.Config.TraceAltType != 0;
  DrawReplayProfile(target, s_.Trace.Trace(), s_.Trace.ReplayIndex, style);
}

// ------------------------------------------------------------ Reset / Save

void FlightAnalysis::MenuTraceResetClick() {
  TraceSession& t = s_.Trace;
  if (t.ReplayActive) {
    ui_.MsgBox("The trace cannot be reset during Flight Analysis.");
    return;
  }
  if (t.Trace().Samples.empty()) {
    ui_.MsgBox("There is no recorded flight to save.");
    return;
  }
  const Answer a = ui_.AskYesNoCancel("Do you want to save the recorded flight before it is reset?");
  if (a == Answer::Cancel) return;
  if (a == Answer::Yes) {
    OpenSaveRec();
    view_.OpenWindow("frmSaveRec");  // modal
    if (!saved_) return;             // cancelled: the trace stays
  }
  EraseTrace();
  view_.SetMapStatus(kStatusRecording, RecordingStatusText(t));
  if (s_.View.MapReady) view_.DrawMap();
}

void FlightAnalysis::OpenSaveRec() {
  SaveForm = SaveRecForm{};
  saved_ = false;
}

bool FlightAnalysis::SaveRecOk() {
  std::string name = Trim(SaveForm.txtFilename);
  if (name.empty() || name.find_first_of("/\\:") != std::string::npos) {
    ui_.MsgBox("Please enter a file name without a folder.");
    return false;
  }
  if (!IsRecordingName(name)) name += ".rcd";
  Recording rec = s_.Trace.Trace();
  rec.RecDescription = Trim(Left(Trim(SaveForm.txtFileDescription), static_cast<int>(kRecDescriptionChars)));
  std::string why;
  const std::string bytes = WriteRecording(rec, &why);
  if (bytes.empty()) {
    ui_.MsgBox(why);
    return false;
  }
  const std::filesystem::path folder = UserFolder();
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  const std::filesystem::path path = folder / name;
  if (std::filesystem::exists(path, ec) &&
      !ui_.AskYesNo("The recording " + name + " exists already. Do you want to replace it?"))
    return false;
  if (!WriteFileAtomic(path, bytes)) {
    ui_.MsgBox("The recording " + path.string() + " could not be written.");
    return false;
  }
  saved_ = true;
  return true;
}

// ------------------------------------------------------------ frmLoadRec

void FlightAnalysis::RefreshLoadRec() {
  LoadForm = LoadRecForm{};
  LoadForm.flstFiles = RecordingFiles(UserFolder());
}

void FlightAnalysis::SelectRecording(std::int32_t row) {
  LoadForm.ListIndex = row >= 0 && row < static_cast<std::int32_t>(LoadForm.flstFiles.size()) ? row : -1;
  LoadForm.lbldescription.clear();
  if (LoadForm.ListIndex < 0) return;
  const auto bytes = ReadWholeText(UserFolder() / LoadForm.flstFiles[static_cast<std::size_t>(row)]);
  if (!bytes) {
    LoadForm.lbldescription = "The file cannot be opened.";
    return;
  }
  const RecordingRead r = ReadRecording(*bytes);
  LoadForm.lbldescription = r.ok ? r.rec.RecDescription : r.error;
}

bool FlightAnalysis::LoadFile(const std::filesystem::path& file) {
  const auto bytes = ReadWholeText(file);
  if (!bytes) {
    ui_.MsgBox("The recording " + file.string() + " cannot be opened.");
    return false;
  }
  RecordingRead r = ReadRecording(*bytes);
  if (!r.ok) {
    ui_.MsgBox(r.error);
    return false;
  }
  TraceSession& t = s_.Trace;
  t.Recorder = TraceRecorder{};
  t.Recorder.Trace = std::move(r.rec);
  t.Recorder.Capacity = static_cast<std::int32_t>(t.Recorder.Trace.Samples.size());
  t.MapTrace.clear();
  SyncMapTrace();
  // The position and the map centre at the first sample.
  const TraceSample& first = t.Trace().Samples.front();
  ApplySample(first, t.ReplaySnap);
  s_.View.CurrentLat = first.Latitude;
  s_.View.CurrentLon = first.Longitude;
  s_.View.CntrLat = ClampCenterLat(s_.View, first.Latitude);
  s_.View.CntrLon = first.Longitude;
  t.ReplayActive = true;
  t.ReplayIndex = 0;
  return true;
}

bool FlightAnalysis::LoadRecOk() {
  if (LoadForm.ListIndex < 0) {
    ui_.Beep();
    return false;
  }
  return LoadFile(UserFolder() / LoadForm.flstFiles[static_cast<std::size_t>(LoadForm.ListIndex)]);
}

bool FlightAnalysis::LoadRecDelete() {
  if (LoadForm.ListIndex < 0) {
    ui_.Beep();
    return false;
  }
  const std::string name = LoadForm.flstFiles[static_cast<std::size_t>(LoadForm.ListIndex)];
  if (!ui_.AskYesNo("do you really want to delete " + name + "?")) return false;
  std::error_code ec;
  if (!std::filesystem::remove(UserFolder() / name, ec)) {
    ui_.MsgBox("The recording " + name + " could not be deleted.");
    return false;
  }
  RefreshLoadRec();
  return true;
}

}  // namespace orv
