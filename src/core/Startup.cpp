#include "core/Startup.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "core/Runtime.h"
#include "core/Settings.h"

namespace orv {

namespace fs = std::filesystem;

namespace {

using R = EmptyRule;
using F = StartupFile;

// The load order. Log slot 0 is the heading; the files take 1 to 28 in the
// order they are opened, and 29 and 30 stay empty.
constexpr std::array<StartupFileInfo, 29> kFiles = {{
    {F::Aircraft, 0, 0, "\\user\\aircraft.orv", false, R::Optional, "", false},
    {F::MagVar, 1, 1, "\\magvar09.swf", false, R::Pass, "", false},
    {F::Region, 2, 2, "region.orv", true, R::Fatal, "...loading airports", true},
    {F::Country, 2, 3, "country.orv", true, R::Fatal, "", false},
    {F::State, 2, 4, "state.orv", true, R::Fatal, "", false},
    {F::City, 2, 5, "city.orv", true, R::Fatal, "", false},
    {F::Airport, 2, 6, "airport.orv", true, R::Fatal, "", false},
    {F::Taxi, 3, 7, "taxi.orv", true, R::Skip, "...loading taxiways", true},
    {F::Poly, 4, 8, "poly.orv", true, R::Skip, "...loading polygons", true},
    {F::Marker, 5, 9, "marker.orv", true, R::Skip, "...loading markers", true},
    {F::Intersections, 6, 10, "\\database\\dijinter.orv", false, R::Fatal, "...loading intersections", false},
    {F::VictorAirways, 7, 11, "\\database\\vicways.orv", false, R::Fatal, "...loading victor airways", false},
    {F::JetAirways, 8, 12, "\\database\\jetways.orv", false, R::Fatal, "...loading jet airways", false},
    {F::Fixes, 9, 13, "\\database\\fixes.orv", false, R::Fatal, "...loading GPS fixes", false},
    {F::Vors, 10, 14, "\\database\\vor.orv", false, R::Fatal, "...loading VORs", false},
    {F::Ndbs, 11, 15, "\\database\\ndb.orv", false, R::Fatal, "...loading NDBs", false},
    {F::Airspaces, 12, 16, "\\database\\airspace.orv", false, R::Fatal, "...loading control zones", false},
    {F::IvaoText, 13, 17, "\\database\\orv_ivao.txt", false, R::Delete, "", false},
    {F::VatsimText, 14, 18, "\\database\\orv_vatsim.txt", false, R::Delete, "", false},
    {F::IvaoSectors, 15, 19, "\\database\\orv_ivao.dat", false, R::Delete, "", false},
    {F::VatsimSectors, 16, 20, "\\database\\orv_vatsim.dat", false, R::Delete, "", false},
    {F::Msa, 17, 21, "\\database\\msa.orv", false, R::Skip, "...loading minimal safety altitude", false},
    {F::UserWaypoints, 18, 22, "\\database\\userwp.udb", false, R::UserWpRewrite, "", false},
    {F::Sid, 19, 23, "\\database\\sid.orv", false, R::Fatal, "", false},
    {F::Star, 20, 24, "\\database\\star.orv", false, R::Fatal, "", false},
    {F::WorldPolygons, 21, 25, "\\map\\worldpolygon.bin", false, R::Fatal, "...loading world polygons", false},
    {F::WorldLines, 22, 26, "\\map\\worldline.bin", false, R::Fatal, "...loading world lines", false},
    {F::WxStations, 23, 27, "\\database\\WxStation.txt", false, R::Fatal, "", false},
    {F::UserObjects, 24, 28, "\\database\\userObj.txt", false, R::Optional, "", false},
}};

constexpr std::array<std::string_view, 20> kArrayNames = {
    "Regions",  "Countries",     "States",         "Cities",     "Airports",    "Vors",       "Ndbs",
    "Intersections", "Fixes",    "VictorAirways",  "JetAirways", "Airspaces",   "MsaCells",   "TaxiSegments",
    "GroundPolygons", "Markers", "WorldPolygons",  "WorldLines", "UserWaypoints", "UserObjects",
};

constexpr std::array<std::string_view, 16> kShutdownOrder = {
    "Aircraft", "APPrev",   "EdProc",     "OVRLay", "OVRLL",    "OVRMap",   "OVRPrefnew", "frmGPSMM",
    "frmLoadRec", "frmSaveRec", "frmSID", "Fuel",   "PrintFP",  "ProcLoad", "ProcSave",   "SaveRoute",
};

// The splash's year line, shown in front of the version text.
constexpr std::string_view kYearLine = "\xA9 2001-2007 Orvanta";
// Shown after the user objects are read, while the ILS are linked.
constexpr std::string_view kLinkProgress = "...linking ILS to runways";
// The AIRAC label's colour: red 0, green 128, blue 0.
constexpr int32_t kAiracGreen = 128 * 256;

// A path as the 8-bit texts of messages and the log hold it.
std::string PathText(const fs::path& path) { return Utf8ToLatin1(path.string()); }

void ShowProgress(AppState& state, Ui& ui, std::string text) {
  state.Splash.Progress = std::move(text);
  ui.ShowProgress(state.Splash.Progress);
}

// The common end of every path that stops the program: the log with all its
// lines, the normal pointer back, then the messages in order.
StartupResult EndProgram(AppState& state, Ui& ui, const Clock& clock, std::vector<std::string> messages) {
  WriteStartLog(state, clock, kStartLogLines - 1);
  ui.SetWaitCursor(false);
  for (const std::string& m : messages) ui.MsgBox(m);
  state.Splash.Visible = false;
  StartupResult result;
  result.Outcome = StartupOutcome::Ended;
  result.Messages = std::move(messages);
  return result;
}

StartupResult EndFatal(AppState& state, Ui& ui, const Clock& clock, std::optional<std::string> reason) {
  std::vector<std::string> messages;
  if (reason) messages.push_back(std::move(*reason));
  messages.push_back(FatalMessage());
  return EndProgram(state, ui, clock, std::move(messages));
}

bool StartsWithHeader(std::span<const uint8_t> bytes) {
  return bytes.size() >= kUserWpHeader.size() &&
         std::equal(kUserWpHeader.begin(), kUserWpHeader.end(), bytes.begin(),
                    [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; });
}

bool FolderReadable(const fs::path& root) {
  std::error_code ec;
  if (!fs::is_directory(root, ec)) return false;
  fs::directory_iterator it(root, ec);
  return !ec;
}

}  // namespace

std::span<const StartupFileInfo> StartupFiles() { return kFiles; }

std::span<const std::string_view> StartupArrayNames() { return kArrayNames; }

std::vector<ArrayCount> StartupLoader::Counts() const {
  std::vector<ArrayCount> counts;
  counts.reserve(kArrayNames.size());
  for (std::string_view name : kArrayNames) counts.push_back({name, 0});
  return counts;
}

std::span<const std::string_view> ShutdownOrder() { return kShutdownOrder; }

std::string FatalMessage() {
  std::string text(kRunDbManagerText);
  text += '\n';
  text += kZeroBytesText;
  return text;
}

std::string AiracLabelText(std::string_view text) {
  // Items as the runtime's Input reads them: separated by commas and line
  // ends, leading blanks skipped, a quoted item taken without its quotes.
  std::vector<std::string> items;
  size_t i = 0;
  const size_t n = text.size();
  while (i < n) {
    while (i < n && (text[i] == ' ' || text[i] == '\t')) ++i;
    if (i < n && (text[i] == '\r' || text[i] == '\n')) {  // a blank line gives no item
      ++i;
      continue;
    }
    std::string item;
    if (i < n && text[i] == '"') {
      size_t close = text.find('"', i + 1);
      if (close == std::string_view::npos) close = n;
      item = std::string(text.substr(i + 1, close - i - 1));
      i = close < n ? close + 1 : n;
      while (i < n && text[i] != ',' && text[i] != '\r' && text[i] != '\n') ++i;  // rest up to the separator
    } else {
      size_t end = i;
      while (end < n && text[end] != ',' && text[end] != '\r' && text[end] != '\n') ++end;
      item = std::string(text.substr(i, end - i));
      i = end;
    }
    if (i < n && text[i] == ',') {
      ++i;
    } else if (i < n && text[i] == '\r') {
      ++i;
      if (i < n && text[i] == '\n') ++i;
    } else if (i < n && text[i] == '\n') {
      ++i;
    }
    items.push_back(Trim(item));
  }
  std::string label;
  for (size_t k = 0; k < items.size(); ++k) {
    if (k > 0) label += " - ";
    label += items[k];
  }
  return label;
}

void FillNameTables(AppState& state) {
  auto& parking = state.ParkingNames;
  parking = {};
  const char* firstNames[] = {"None",      "Parking",   "N Parking",  "NE Parking", "E Parking", "SE Parking",
                              "S Parking", "SW Parking", "W Parking", "NW Parking", "Gate",      "Dock"};
  for (int i = 0; i < 12; ++i) parking[i] = firstNames[i];
  for (int i = 0; i < 26; ++i) parking[12 + i] = std::string("Gate ") + static_cast<char>('A' + i);

  state.ParkingKinds = {"",           "Ramp GA",        "Ramp GA Small",   "Ramp GA Medium", "Ramp GA Large",
                        "Ramp Cargo", "Ramp Mil Cargo", "Ramp Mil Combat", "Gate Small",     "Gate Medium",
                        "Gate Heavy", "Dock GA",        "Fuel Box",        "Service"};
  state.FrequencyKinds = {"",         "ATIS",      "MultiCom",  "Unicom", "CTAF", "Ground", "Tower",
                          "Clearance", "Approach", "Departure", "Center", "FSS",  "ASOS"};

  auto& surface = state.SurfaceKinds;
  surface = {};
  const char* surfaces[] = {"Concrete",  "Grass",     "Water",   "Unclear3", "Asphalt", "Unclear5", "Unclear6",
                            "Clay",      "Snow",      "Unclear9", "Unclear10", "Unclear11", "Dirt", "Coral",
                            "Gravel",    "Oil",       "Steel Mats", "Bitumen", "Brick", "Macadam", "Planks",
                            "Sand",      "Shale",     "Tarmac",  "Dirt"};  // 24 repeats 12 on purpose
  for (int i = 0; i < 25; ++i) surface[i] = surfaces[i];
  surface[254] = "Unknown";

  state.FuelUnits = {"gal", "lbs", "kg", "lit"};
}

std::string StartLogHeading(const Clock& clock, std::string_view airacText) {
  DateTime now = clock.Now();
  std::string date = Format(now.day, "00") + "." + Format(now.month, "00") + "." + Format(now.year, "0000");
  std::string time = Format(now.hour, "00") + ":" + Format(now.minute, "00") + ":" + Format(now.second, "00");
  std::string line = "ORV ";
  line += kVersionText;
  line += " - " + date + " - " + time + " - ";
  line += airacText;
  return line;
}

bool WriteStartLog(AppState& state, const Clock& clock, int lastIndex) {
  if (state.LogPath.empty()) return false;
  if (lastIndex >= kStartLogLines) lastIndex = kStartLogLines - 1;
  state.StartLog[0] = StartLogHeading(clock, state.Splash.AiracText);
  std::string text;
  for (int i = 0; i <= lastIndex; ++i) {
    text += state.StartLog[i];
    text += "\r\n";
  }
  return WriteFileAtomic(fs::path(state.LogPath), std::string_view(text));
}

namespace {

// The start refused before anything is shown: the folder cannot be read.
std::optional<StartupResult> RefuseUnreadableFolder(const AppFolder& app, Ui& ui) {
  if (FolderReadable(app.Root())) return std::nullopt;
  std::string message = "The application folder " + PathText(app.Root()) + " cannot be read!";
  ui.MsgBox(message);
  StartupResult result;
  result.Messages.push_back(std::move(message));
  return result;
}

// Steps 1 and 2: the splash, its version line and the hourglass.
void ShowSplash(AppState& state, Ui& ui) {
  state.Splash.Visible = true;
  state.Splash.LblVersion = std::string(kYearLine) + std::string(kVersionText);
  ui.SetWaitCursor(true);
}

// Step 4: the settings decide the simulator and with it the database folder.
void ReadSettings(AppState& state) {
  const AppFolder& app = state.Folder;
  ReadIniFile(app, state.Config);
  SimulatorChoice sim = ChooseSimulator(state.Config, app);
  state.IsFsx = sim.IsFsx;
  state.DatabaseFolder = sim.DatabaseFolder;
  state.SimSuffix = sim.Suffix;
  state.Config.Fsx = sim.IsFsx;  // the next save keeps the simulator chosen now
  if (std::optional<std::string> dbm = ReadWholeText(app.Resolve("\\orvdbmanager.ini")))
    state.FsPath = ReadDbManagerIni(*dbm, state.IsFsx);
  FillDefaultPaths(state.Config, app);
}

// Step 5: the AIRAC label. A missing file shows nothing, as an empty one.
void ShowAiracLabel(AppState& state) {
  std::optional<std::string> airac = ReadWholeText(state.Folder.Resolve("\\database\\AIRAC.INI"));
  if (!airac || airac->empty()) return;
  state.Splash.AiracText = AiracLabelText(*airac);
  state.Splash.AiracVisible = true;
  state.Splash.AiracColor = kAiracGreen;
}

// Step 6: the aircraft list. Its reader's refusal is shown, but an aircraft
// file is the user's own and no reason to stop.
void LoadAircraftList(const AppState& state, Ui& ui, StartupLoader& loader) {
  fs::path path = state.Folder.Resolve(kFiles.front().Name);
  if (std::optional<Bytes> bytes = ReadWholeFile(path); bytes && !bytes->empty()) {
    if (std::optional<std::string> refusal = loader.LoadFile(StartupFile::Aircraft, path, *bytes))
      ui.MsgBox(*refusal);
  }
}

// Step 8's head: the counters and the old log are cleared.
void ClearCountersAndLog(AppState& state) {
  state.SelectionSlots.fill(0xFFFFFFFFu);
  state.StartLog = {};
  std::error_code ec;
  fs::remove(state.Folder.Resolve("\\ORV_Info.LOG"), ec);
  state.LogPath = state.Folder.Resolve("\\ORV_Info.LOG").string();
}

// One database file of step 8, with its progress text, its empty-file rule
// and its reader. A result when the start ends here.
std::optional<StartupResult> LoadDatabaseFile(const StartupFileInfo& info, AppState& state, Ui& ui,
                                              const Clock& clock, StartupLoader& loader) {
  if (!info.Progress.empty())
    ShowProgress(state, ui, std::string(info.Progress) + (info.WithSuffix ? state.SimSuffix : std::string()));

  std::string constant = info.InSimFolder ? state.DatabaseFolder + std::string(info.Name) : std::string(info.Name);
  if (info.File == StartupFile::MagVar && state.IsFsx) constant = "\\magvar10.swf";
  fs::path path = state.Folder.Resolve(constant);

  std::error_code ec;
  FileView file;
  if (fs::exists(path, ec)) {
    std::optional<FileView> read = FileView::Open(path);
    if (!read) return EndProgram(state, ui, clock, {"File cannot be read: " + PathText(path)});
    file = std::move(*read);
  } else if (info.Empty != EmptyRule::Delete && info.Empty != EmptyRule::UserWpRewrite) {
    return EndProgram(state, ui, clock, {"File not found: " + PathText(path)});
  }
  std::span<const uint8_t> bytes = file.Span();
  state.StartLog[info.LogSlot] = std::to_string(bytes.size()) + " > " + PathText(path);

  if (bytes.empty()) {
    switch (info.Empty) {
      case EmptyRule::Fatal: return EndFatal(state, ui, clock, std::nullopt);
      case EmptyRule::Skip:
      case EmptyRule::Optional: return std::nullopt;
      case EmptyRule::Delete: fs::remove(path, ec); return std::nullopt;
      case EmptyRule::Pass:
      case EmptyRule::UserWpRewrite: break;
    }
  }
  if (info.Empty == EmptyRule::UserWpRewrite && !StartsWithHeader(bytes)) {
    // No valid header: the file becomes an empty valid one, without a word.
    static const Bytes kHeaderOnly(kUserWpHeader.begin(), kUserWpHeader.end());
    bytes = kHeaderOnly;
    WriteFileAtomic(path, kHeaderOnly);
  }
  if (std::optional<std::string> refusal = loader.LoadFile(info.File, path, bytes))
    return EndFatal(state, ui, clock, std::move(refusal));
  return std::nullopt;
}

// After step 23: the user's own objects, if the file is there.
std::optional<StartupResult> LoadUserObjects(AppState& state, Ui& ui, const Clock& clock, StartupLoader& loader) {
  const StartupFileInfo& info = kFiles.back();
  fs::path path = state.Folder.Resolve(info.Name);
  std::error_code ec;
  if (!fs::exists(path, ec)) return std::nullopt;
  std::optional<Bytes> bytes = ReadWholeFile(path);
  if (!bytes) return EndProgram(state, ui, clock, {"File cannot be read: " + PathText(path)});
  state.StartLog[info.LogSlot] = std::to_string(bytes->size()) + " > " + PathText(path);
  if (!bytes->empty())
    if (std::optional<std::string> refusal = loader.LoadFile(info.File, path, *bytes))
      return EndFatal(state, ui, clock, std::move(refusal));
  return std::nullopt;
}

// Steps 9 and 10: the splash goes, the first window comes.
StartupResult OpenFirstWindow(AppState& state, Ui& ui) {
  ui.SetWaitCursor(false);
  state.Splash.Visible = false;
  StartupResult result;
  if (state.Config.DirCon == 1) {
    result.Outcome = StartupOutcome::OpenMap;
    result.FirstWindow = "OVRMap";
  } else {
    state.ChoosingStartAirport = true;
    result.Outcome = StartupOutcome::OpenAirportSelection;
    result.FirstWindow = "OVRLL";
  }
  return result;
}

}  // namespace

StartupResult RunStartup(AppState& state, Ui& ui, const Clock& clock, StartupLoader& loader) {
  if (std::optional<StartupResult> refused = RefuseUnreadableFolder(state.Folder, ui)) return *refused;
  ShowSplash(state, ui);
  ReadSettings(state);
  ShowAiracLabel(state);
  LoadAircraftList(state, ui, loader);
  state.IvaoUrls = LoadIvaoUrls(state.Folder);  // step 7: the IVAO data servers

  ClearCountersAndLog(state);
  for (const StartupFileInfo& info : kFiles) {
    if (info.Step < 1 || info.Step > 23) continue;
    if (std::optional<StartupResult> ended = LoadDatabaseFile(info, state, ui, clock, loader)) return *ended;
  }
  if (std::optional<StartupResult> ended = LoadUserObjects(state, ui, clock, loader)) return *ended;
  ShowProgress(state, ui, std::string(kLinkProgress));
  loader.LinkIls();
  FillNameTables(state);
  WriteStartLog(state, clock, kStartLogLines - 1);
  return OpenFirstWindow(state, ui);
}

}  // namespace orv
