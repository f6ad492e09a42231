#include "planning/SaveRoute.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/AppFolder.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/Aircraft.h"
#include "planning/NavLookup.h"
#include "planning/PlanFormats.h"

namespace fs = std::filesystem;

namespace orv {

namespace {

bool HasExtension(std::string_view name, std::string_view ext) {
  return name.size() >= ext.size() && LCase(name.substr(name.size() - ext.size())) == ext;
}

PlanWriteOptions WriteOptions(const PlanFileState& state, bool ifr, bool plain) {
  PlanWriteOptions o;
  o.Ifr = ifr;
  o.PlainForm = plain;
  o.SidLabel = state.SidLabel;
  o.StarLabel = state.StarLabel;
  return o;
}

// A plan of two airports is a direct route, whatever built it.
void SettleRouteType(FlightPlan& plan) {
  if (plan.LastRow == 1) plan.RouteType = 0;
}

}  // namespace

void SaveRoute::Load(const FlightPlan& plan, std::string_view folder, std::string_view fsPath,
                     std::string_view appPath) {
  int last = std::clamp<int>(plan.LastRow, 0, kMaxPlanRow);
  txtFplan = plan.Waypoints[0].Code.Str() + plan.Waypoints[static_cast<std::size_t>(last)].Code.Str() + ".pln";
  std::string dir = folder.empty() ? AppFolder(std::string(appPath)).Resolve("\\FSplan").string() : std::string(folder);
  SetFolder(dir);
  drvFS = fs::path(std::string(fsPath)).root_path().string();
  dirFS = std::string(fsPath);
  lblInvalidPath.clear();
  lblInvalidPathVisible = false;
}

void SaveRoute::SetFolder(std::string_view folder) {
  dirFplan = std::string(folder);
  drvFplan = fs::path(dirFplan).root_path().string();
  flFplan.clear();
  std::error_code ec;
  for (fs::directory_iterator it(dirFplan, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    if (it->is_regular_file(ec) && HasExtension(name, ".pln")) flFplan.push_back(name);
  }
  std::sort(flFplan.begin(), flFplan.end());
}

void SaveRoute::FileClick(int index) {
  if (index >= 0 && index < static_cast<int>(flFplan.size())) txtFplan = flFplan[static_cast<std::size_t>(index)];
}

bool SaveRoute::cmdDirChange(std::string_view folder) {
  dirFS = std::string(folder);
  drvFS = fs::path(dirFS).root_path().string();
  std::error_code ec;
  bool valid = !dirFS.empty() && fs::is_regular_file(FindCaseInsensitive(dirFS, "scenery.cfg"), ec);
  lblInvalidPath = valid ? std::string() : std::string(kInvalidFsPath);
  lblInvalidPathVisible = !valid;
  return valid;
}

std::string SaveRoute::TargetPath() const {
  std::string name = Trim(txtFplan);
  if (!HasExtension(name, ".pln")) name += ".pln";
  return (fs::path(dirFplan) / name).string();
}

std::vector<std::string> SaveRoute::Save(Ui& ui, PlanEditor& editor, PlanFileState& state,
                                         const ExportFolders& folders) {
  std::vector<std::string> written;
  FlightPlan& plan = editor.Plan();
  if (plan.LastRow < 1) {
    ui.MsgBox("There is no flight plan to save!");
    return written;
  }
  std::string stem = fs::path(Trim(txtFplan)).stem().string();
  if (stem.empty()) {
    ui.MsgBox("Please enter a file name!");
    return written;
  }
  std::string path = TargetPath();
  std::error_code ec;
  if (fs::exists(path, ec) && !ui.AskYesNo(path + " already exists.\r\nDo you want to replace it?")) return written;
  SettleRouteType(plan);
  const NavLookup& nav = editor.Nav();
  if (!SaveUserFile(ui, path, FormatPlanFile(plan, nav, WriteOptions(state, optIFR, chckFormat[kSavePlainForm]))))
    return written;
  written.push_back(path);
  state.CurrentPath = path;
  state.Ifr = optIFR;
  state.PlainForm = chckFormat[kSavePlainForm];

  ExportFolders f = folders;
  // A simulator folder the dialog accepted is where the add-on files go.
  if (!dirFS.empty() && !lblInvalidPathVisible) f.FsPath = dirFS;
  auto add = [&written](std::vector<std::string> more) { written.insert(written.end(), more.begin(), more.end()); };
  if (chckFormat[kSaveSquawkBox]) add(ExportSquawkBox(ui, plan, nav, editor.Aircraft().CruiseSpeed, f, stem));
  if (chckFormat[kSaveIvao]) add(ExportIvao(ui, plan, f, stem));
  if (chckFormat[kSaveLevelD]) add(ExportLevelD(ui, plan, nav, f, stem));
  if (chckFormat[kSavePmdg]) add(ExportPmdg(ui, plan, nav, f, stem));

  PlanExportInfo info;
  info.Ifr = optIFR;
  info.SidName = state.SidLabel;
  info.StarName = state.StarLabel;
  auto beside = [&](bool on, std::string_view suffix, const std::string& text) {
    if (!on) return;
    std::string p = (fs::path(dirFplan) / (stem + std::string(suffix))).string();
    if (SaveUserFile(ui, p, text)) written.push_back(p);
  };
  beside(chckFormat[kSaveSimXml], kSimXmlSuffix, FormatSimXmlPlan(plan, nav, info));
  beside(chckFormat[kSaveFms], ".fms", FormatFmsPlan(plan, nav, info));
  beside(chckFormat[kSaveGarmin], ".fpl", FormatGarminFpl(plan, nav, info));
  beside(chckFormat[kSaveGpx], ".gpx", FormatGpxRoute(plan, nav, info));
  SetFolder(dirFplan);
  return written;
}

bool MenuSaveFP(Ui& ui, PlanEditor& editor, PlanFileState& state) {
  if (state.CurrentPath.empty() || editor.Plan().LastRow < 1) return false;
  SettleRouteType(editor.Plan());
  return SaveUserFile(ui, state.CurrentPath,
                      FormatPlanFile(editor.Plan(), editor.Nav(), WriteOptions(state, state.Ifr, state.PlainForm)));
}

bool OpenPlanPath(Ui& ui, PlanEditor& editor, const ProcedureProbe& probe, PlanFileState& state,
                  const std::string& path) {
  std::error_code ec;
  auto size = fs::file_size(path, ec);
  if (!ec && size > kMaxPlanFileBytes) {
    ui.MsgBox(path + " is too large to be a flight plan!");
    return false;
  }
  std::optional<std::string> text = ReadWholeText(path);
  if (!text) {
    ui.MsgBox("Could not read " + path + "!");
    return false;
  }
  PlanFormat format = DetectPlanFormat(*text);
  if (!OpenAnyPlanText(editor, ui, *text, probe, state)) return false;
  // Saving an imported plan must never turn the pilot's X-Plane or Garmin
  // file into one of ours: only our own files are saved over.
  state.CurrentPath = format == PlanFormat::Orv ? path : std::string();
  return true;
}

bool MenuOpenFP(Ui& ui, PlanEditor& editor, const ProcedureProbe& probe, PlanFileState& state,
                std::string_view folder) {
  FileQuestion q;
  q.Title = "Open Flight Plan";
  q.Filter =
      "Flight plans (*.pln;*.fms;*.fpl;*.gpx)|*.pln;*.fms;*.fpl;*.gpx|Orvanta and simulator plans (*.pln)|*.pln|"
      "X-Plane plans (*.fms)|*.fms|Garmin plans (*.fpl)|*.fpl|GPX routes (*.gpx)|*.gpx|All files (*.*)|*.*";
  q.Folder = std::string(folder);
  std::string path;
  if (!ui.AskOpenFile(q, path)) return false;
  return OpenPlanPath(ui, editor, probe, state, path);
}

}  // namespace orv
