// The Blackbox menu without its widgets: the trace the live tick samples,
// Reset / Save with the save window frmSaveRec, Flight Analysis (MenuReplay)
// with the load window frmLoadRec, the stepping through the samples with its
// labels and the aircraft on the map, and the vertical profile pctVert with
// its scale updnMaxVert. The Qt windows show these forms and hand their
// clicks back; tests drive the same calls.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "app/ProgramState.h"
#include "core/Timers.h"
#include "core/Ui.h"
#include "simlink/Recording.h"
#include "simlink/ReplayDraw.h"

namespace orv {

class MainWindowView;

inline constexpr std::string_view kRecordingFolder = "\\user";
inline constexpr std::string_view kUntitled = "untitled";
// pctVert's size in twips and its distance from the map's lower edge: the
// map above it is where the stepped aircraft is kept.
inline constexpr int kProfileWidthTwips = 7800;
inline constexpr int kProfileHeightTwips = 1950;
inline constexpr int kProfileGapTwips = 100;
// MapStatus(6): the recording state (while linked it follows the fuel).
inline constexpr int kStatusRecording = 6;

// frmSaveRec's two texts, both "untitled" when the window opens.
struct SaveRecForm {
  std::string txtFilename = std::string(kUntitled);
  std::string txtFileDescription = std::string(kUntitled);
};

// frmLoadRec: the recordings of the user folder, the chosen one and its
// description.
struct LoadRecForm {
  std::vector<std::string> flstFiles;
  std::int32_t ListIndex = -1;
  std::string lbldescription;
};

// The ".rcd" files of a folder (any case of the extension), sorted by name
// without regard to case.
std::vector<std::string> RecordingFiles(const std::filesystem::path& folder);

// MapStatus(6), the recording state: the sample shown during Flight
// Analysis, else the number of samples held ("Trace: 12 samples"), else empty.
std::string RecordingStatusText(const TraceSession& t);

class FlightAnalysis {
public:
  FlightAnalysis(ProgramState& s, MainWindowView& view, Ui& ui, Timers& timers);

  // After each live tick: a sample of the snapshot by the tick's rule while
  // the aircraft is tracked; the ribbon is redrawn when Show Track is on.
  void LiveSample();

  // MenuReplay (and cmdTracing): enters Flight Analysis through frmLoadRec,
  // or leaves it. Either way the trace held so far is erased.
  void MenuReplayClick();
  // Enters Flight Analysis with the given file instead of asking (the demo
  // script); false, with the reason shown, when it cannot be read.
  bool OpenRecording(const std::filesystem::path& file);
  // The link connected during Flight Analysis: the mode ends, pctVert
  // hides, and the loaded recording makes room for the live trace.
  void EndReplay();

  // MenuTraceReset "&Reset / Save": offers to save the trace through
  // frmSaveRec, then erases it.
  void MenuTraceResetClick();

  // One step: up is the next sample, down the previous one; then the row is
  // shown.
  void Step(bool up);
  // The display of the current recorded row: the sample into the replay's
  // snapshot, the map kept on the aircraft, the aircraft drawn, the labels
  // and the profile.
  void ShowRow();
  ReplayLabels Labels() const;

  // updnMaxVert: the top of the profile's scale (TRACEALT), kept between
  // 1000 and 50000 feet.
  std::int32_t MaxVert() const;
  void SetMaxVert(std::int32_t feet);
  void DrawProfile(DrawTarget& target) const;

  // frmSaveRec: the form is reset when it opens; cmdOK writes the trace to
  // the user folder. False, with the reason shown, when nothing was written.
  SaveRecForm SaveForm;
  void OpenSaveRec();
  bool SaveRecOk();

  // frmLoadRec: the list of the user folder, a click on a file (its
  // description), cmdOK (loads it and starts the replay) and cmdDelete.
  LoadRecForm LoadForm;
  void RefreshLoadRec();
  void SelectRecording(std::int32_t row);
  bool LoadRecOk();
  bool LoadRecDelete();

  std::filesystem::path UserFolder() const;

private:
  bool LoadFile(const std::filesystem::path& file);
  void Enter(bool ask, const std::filesystem::path& file);
  void Leave();
  void EraseTrace();
  void SyncMapTrace();

  ProgramState& s_;
  MainWindowView& view_;
  Ui& ui_;
  Timers& timers_;
  bool saved_ = false;  // the last frmSaveRec closed with a written file
};

}  // namespace orv
