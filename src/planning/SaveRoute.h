// The plan file commands of the main window: MenuOpenFP, MenuSaveFP and the
// SaveRoute window behind MenuSaveFPAs, as a headless controller whose members
// are the window's controls.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "planning/FlightPlan.h"
#include "planning/PlanExports.h"
#include "planning/PlanFile.h"

namespace orv {

class Ui;

// The check boxes of chckFormat: what is written beside the ".pln" file.
enum SaveFormat : int {
  kSaveSquawkBox = 0,  // ".sbp" and ".sfp" in the SquawkBox folder
  kSavePlainForm = 1,  // not a file: the ".pln" navaid lines without frequencies
  kSaveIvao = 2,       // ".fpl" in the IVAO folder
  kSaveLevelD = 3,     // ".rte" below the simulator
  kSavePmdg = 4,       // ".rte" and ".rt2" below the simulator
  kSaveSimXml = 5,     // "<name>-xml.pln" beside the plan: FS X, Prepar3D, MSFS
  kSaveFms = 6,        // "<name>.fms" beside the plan: X-Plane 11/12
  kSaveGarmin = 7,     // "<name>.fpl" beside the plan: Garmin
  kSaveGpx = 8,        // "<name>.gpx" beside the plan
  kSaveFormatCount = 9,
};

// The suffixes of the files written beside the ".pln" file.
inline constexpr std::string_view kSimXmlSuffix = "-xml.pln";
inline constexpr std::string_view kInvalidFsPath = "Choose different path!!";

class SaveRoute {
public:
  // Controls.
  std::string txtFplan;                // file name, ".pln" added when missing
  std::string drvFplan;                // the drive (root) of dirFplan
  std::string dirFplan;                // the folder the plan goes to
  std::vector<std::string> flFplan;    // the ".pln" files in dirFplan
  bool optIFR = true;
  bool optVFR = false;
  std::array<bool, kSaveFormatCount> chckFormat{};
  std::string drvFS;                   // the simulator's folder and its drive
  std::string dirFS;
  std::string lblInvalidPath;          // "Choose different path!!" when dirFS fails
  bool lblInvalidPathVisible = false;

  // Fills the controls: the file name from the two airports, the folder
  // (folder, or the program's "\FSplan" folder when empty), the simulator's
  // folder from fsPath.
  void Load(const FlightPlan& plan, std::string_view folder, std::string_view fsPath, std::string_view appPath);
  // dirFplan changed: the file list follows.
  void SetFolder(std::string_view folder);
  // A file of flFplan clicked: its name goes into txtFplan.
  void FileClick(int index);
  void SetIfr(bool ifr) { optIFR = ifr, optVFR = !ifr; }
  // cmdDirChange: the simulator's folder must hold "scenery.cfg"; otherwise
  // lblInvalidPath shows "Choose different path!!" and false comes back.
  bool cmdDirChange(std::string_view folder);
  // The full path of the ".pln" file.
  std::string TargetPath() const;

  // The save button: writes the ".pln" file (asking before replacing one)
  // and each export checked. Returns the paths written; empty when nothing
  // was (the reason was shown). The plan's path goes into state.
  std::vector<std::string> Save(Ui& ui, PlanEditor& editor, PlanFileState& state, const ExportFolders& folders);
};

// MenuSaveFP: the plan again into the file it came from or went to last, in
// the form SaveRoute last chose. False, with nothing written, when there is no
// such file: the window then opens SaveRoute as MenuSaveFPAs does.
bool MenuSaveFP(Ui& ui, PlanEditor& editor, PlanFileState& state);

// MenuOpenFP: asks for a file (plans of every supported format), reads it and
// puts the plan into memory. Only a plan in the program's own format becomes
// the file MenuSaveFP writes to. False when cancelled or refused.
bool MenuOpenFP(Ui& ui, PlanEditor& editor, const ProcedureProbe& probe, PlanFileState& state,
                std::string_view folder);

// Reads a plan file of any supported format from disk (refusing files too
// large to be a plan) and opens it as MenuOpenFP does after the question.
bool OpenPlanPath(Ui& ui, PlanEditor& editor, const ProcedureProbe& probe, PlanFileState& state,
                  const std::string& path);

// The largest file taken for a plan.
inline constexpr std::size_t kMaxPlanFileBytes = 16u << 20;

}  // namespace orv
