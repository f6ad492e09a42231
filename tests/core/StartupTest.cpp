#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "core/FileIo.h"
#include "core/Startup.h"
#include "support/AppFolderBuilder.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;
using test::AppFolderBuilder;

// Records every file handed over, and refuses the ones it is told to.
class RecordingLoader : public StartupLoader {
public:
  std::vector<StartupFile> files;
  std::map<StartupFile, std::string> contents;
  std::map<StartupFile, std::string> refuse;
  int ilsLinks = 0;

  std::optional<std::string> LoadFile(StartupFile file, const fs::path&, std::span<const uint8_t> bytes) override {
    files.push_back(file);
    contents[file] = std::string(bytes.begin(), bytes.end());
    if (auto it = refuse.find(file); it != refuse.end()) return it->second;
    return std::nullopt;
  }
  void LinkIls() override { ++ilsLinks; }
};

// Notes, at each message box, whether the log already stands.
class LogWatchingUi : public test::ScriptedUi {
public:
  fs::path log;
  std::vector<bool> logAtMessage;
  void MsgBox(std::string_view text, MsgStyle style, std::string_view title) override {
    logAtMessage.push_back(fs::exists(log));
    ScriptedUi::MsgBox(text, style, title);
  }
};

constexpr std::string_view kFatalText =
    "       You have to run the Database Manager first!!        \n"
    "File missing or zero bytes! Check ORV_Info.log for details!";
constexpr std::string_view kHeading =
    "ORV  \xB7 Version 8.0 \xB7 Build:010107 - 21.11.2026 - 14:30:05 - AIRAC Cycle 0701 - valid 18JAN-14FEB";
constexpr std::size_t kGridBytes = 8 + 360 * 181 * 2;

struct StartRun {
  test::TempDir dir;
  AppFolderBuilder build{dir.Path()};
  test::FakeClock clock;
  LogWatchingUi ui;
  RecordingLoader loader;
  AppState state;
  StartupResult result;

  fs::path Path(std::string_view relative) const { return dir.Path() / fs::path(std::string(relative)); }
  std::string LogLine(std::string_view bytes, std::string_view relative) const {
    return std::string(bytes) + " > " + Path(relative).string();
  }
  // The log line of a file as it stands in the folder.
  std::string LogLine(std::string_view relative) const {
    return LogLine(std::to_string(fs::file_size(Path(relative))), relative);
  }
  StartupResult& Go() {
    build.Build();
    state = AppState(AppFolder(dir.Path()));
    ui.log = dir.Path() / "ORV_Info.LOG";
    result = RunStartup(state, ui, clock, loader);
    return result;
  }
  std::vector<std::string> Log() const {
    std::optional<std::string> text = ReadWholeText(dir.Path() / "ORV_Info.LOG");
    return text ? SplitLines(*text) : std::vector<std::string>{};
  }
};

TEST(Startup, CompleteRunLoadsEveryFileInOrder) {
  StartRun run;
  run.dir.Write("orv_info.log", "an old log of another case");
  // The optional ground and MSA files are empty in the default folder; give
  // them bytes so that they are handed over too.
  for (std::string_view name : {"taxi.orv", "poly.orv", "marker.orv"})
    run.build.Put(run.build.Db(name), std::string(AppFolderBuilder::kPlaceholder));
  run.build.Put("\\database\\msa.orv", std::string(AppFolderBuilder::kPlaceholder));
  StartupResult& r = run.Go();

  EXPECT_EQ(r.Outcome, StartupOutcome::OpenAirportSelection);
  EXPECT_EQ(r.FirstWindow, "OVRLL");
  EXPECT_FALSE(r.ProgramEnds());
  EXPECT_TRUE(run.state.ChoosingStartAirport);
  EXPECT_TRUE(run.ui.Messages().empty());

  EXPECT_EQ(run.ui.Progress(), (std::vector<std::string>{
                                   "...loading airports for FS2004", "...loading taxiways for FS2004",
                                   "...loading polygons for FS2004", "...loading markers for FS2004",
                                   "...loading intersections", "...loading victor airways", "...loading jet airways",
                                   "...loading GPS fixes", "...loading VORs", "...loading NDBs",
                                   "...loading control zones", "...loading minimal safety altitude",
                                   "...loading world polygons", "...loading world lines",
                                   "...linking ILS to runways"}));
  // The hourglass covers the whole load.
  ASSERT_GE(run.ui.events.size(), 2u);
  EXPECT_EQ(run.ui.events.front().kind, "wait");
  EXPECT_EQ(run.ui.events.front().text, "on");
  EXPECT_EQ(run.ui.events.back().kind, "wait");
  EXPECT_EQ(run.ui.events.back().text, "off");

  using F = StartupFile;
  EXPECT_EQ(run.loader.files,
            (std::vector<F>{F::Aircraft, F::MagVar, F::Region, F::Country, F::State, F::City, F::Airport, F::Taxi,
                            F::Poly, F::Marker, F::Intersections, F::VictorAirways, F::JetAirways, F::Fixes, F::Vors,
                            F::Ndbs, F::Airspaces, F::Msa, F::UserWaypoints, F::Sid, F::Star, F::WorldPolygons,
                            F::WorldLines, F::WxStations}));
  EXPECT_EQ(run.loader.contents[F::MagVar].size(), kGridBytes);
  EXPECT_EQ(run.loader.contents[F::UserWaypoints], "ORVUSERDB");
  EXPECT_EQ(run.loader.ilsLinks, 1);

  // The log: heading, one line for each file in its slot, 31 lines in all.
  std::vector<std::string> expected = {
      std::string(kHeading),
      run.LogLine(std::to_string(kGridBytes), "magvar09.swf"),
      run.LogLine("database/FS09/region.orv"),
      run.LogLine("database/FS09/country.orv"),
      run.LogLine("database/FS09/state.orv"),
      run.LogLine("database/FS09/city.orv"),
      run.LogLine("database/FS09/airport.orv"),
      run.LogLine("24", "database/FS09/taxi.orv"),
      run.LogLine("24", "database/FS09/poly.orv"),
      run.LogLine("24", "database/FS09/marker.orv"),
      run.LogLine("database/dijinter.orv"),
      run.LogLine("database/vicways.orv"),
      run.LogLine("database/jetways.orv"),
      run.LogLine("database/fixes.orv"),
      run.LogLine("56", "database/vor.orv"),
      run.LogLine("53", "database/ndb.orv"),
      run.LogLine("database/airspace.orv"),
      run.LogLine("0", "database/orv_ivao.txt"),
      run.LogLine("0", "database/orv_vatsim.txt"),
      run.LogLine("0", "database/orv_ivao.dat"),
      run.LogLine("0", "database/orv_vatsim.dat"),
      run.LogLine("24", "database/msa.orv"),
      run.LogLine("9", "database/userwp.udb"),
      run.LogLine("database/sid.orv"),
      run.LogLine("database/star.orv"),
      run.LogLine("map/worldpolygon.bin"),
      run.LogLine("map/worldline.bin"),
      run.LogLine("database/WxStation.txt"),
      "", "", ""};
  EXPECT_EQ(run.Log(), expected);
  std::string raw = *ReadWholeText(run.dir.Path() / "ORV_Info.LOG");
  EXPECT_EQ(raw.substr(raw.size() - 6), "\r\n\r\n\r\n");  // every line ends CR LF, the empty ones too
  EXPECT_FALSE(fs::exists(run.dir.Path() / "orv_info.log"));
  EXPECT_EQ(run.state.LogPath, (run.dir.Path() / "ORV_Info.LOG").string());
  // Missing online files stay missing; the user waypoint file was made.
  EXPECT_FALSE(fs::exists(run.Path("database/orv_ivao.txt")));
  EXPECT_EQ(*ReadWholeText(run.Path("database/userwp.udb")), "ORVUSERDB");

  // State the rest of the program reads.
  EXPECT_FALSE(run.state.IsFsx);
  EXPECT_EQ(run.state.DatabaseFolder, "\\database\\FS09\\");
  EXPECT_EQ(run.state.SimSuffix, " for FS2004");
  EXPECT_EQ(run.state.Config.Fsx, std::optional<bool>(false));
  EXPECT_EQ(run.state.Config.SquawkBoxPath, run.Path("FSplan/SquawkBox").string());
  EXPECT_EQ(run.state.IvaoUrls, DefaultIvaoUrls());
  EXPECT_TRUE(fs::exists(run.Path("URLIVAO.INI")));
  for (uint32_t slot : run.state.SelectionSlots) EXPECT_EQ(slot, 0xFFFFFFFFu);
  EXPECT_EQ(run.state.Splash.LblVersion, "\xA9 2001-2007 Orvanta \xB7 Version 8.0 \xB7 Build:010107");
  EXPECT_EQ(run.state.Splash.AiracText, "AIRAC Cycle 0701 - valid 18JAN-14FEB");
  EXPECT_TRUE(run.state.Splash.AiracVisible);
  EXPECT_EQ(run.state.Splash.AiracColor, 32768);
  EXPECT_FALSE(run.state.Splash.Visible);
  EXPECT_EQ(run.state.StartLog[0], kHeading);
}

TEST(Startup, NameTables) {
  AppState state;
  FillNameTables(state);
  EXPECT_EQ(state.ParkingNames[0], "None");
  EXPECT_EQ(state.ParkingNames[1], "Parking");
  EXPECT_EQ(state.ParkingNames[3], "NE Parking");
  EXPECT_EQ(state.ParkingNames[9], "NW Parking");
  EXPECT_EQ(state.ParkingNames[10], "Gate");
  EXPECT_EQ(state.ParkingNames[11], "Dock");
  EXPECT_EQ(state.ParkingNames[12], "Gate A");
  EXPECT_EQ(state.ParkingNames[37], "Gate Z");
  EXPECT_EQ(state.ParkingKinds[0], "");
  EXPECT_EQ(state.ParkingKinds[1], "Ramp GA");
  EXPECT_EQ(state.ParkingKinds[7], "Ramp Mil Combat");
  EXPECT_EQ(state.ParkingKinds[13], "Service");
  EXPECT_EQ(state.FrequencyKinds[1], "ATIS");
  EXPECT_EQ(state.FrequencyKinds[2], "MultiCom");
  EXPECT_EQ(state.FrequencyKinds[12], "ASOS");
  EXPECT_EQ(state.SurfaceKinds[0], "Concrete");
  EXPECT_EQ(state.SurfaceKinds[3], "Unclear3");
  EXPECT_EQ(state.SurfaceKinds[11], "Unclear11");
  EXPECT_EQ(state.SurfaceKinds[12], "Dirt");
  EXPECT_EQ(state.SurfaceKinds[16], "Steel Mats");
  EXPECT_EQ(state.SurfaceKinds[23], "Tarmac");
  EXPECT_EQ(state.SurfaceKinds[24], "Dirt");  // the second "Dirt"
  EXPECT_EQ(state.SurfaceKinds[254], "Unknown");
  for (int i : {25, 100, 253, 255, 256}) EXPECT_EQ(state.SurfaceKinds[i], "") << i;
  EXPECT_EQ(state.FuelUnits, (std::array<std::string, 4>{"gal", "lbs", "kg", "lit"}));
}

TEST(Startup, EmptyAirportFileEndsAfterTheLogIsWritten) {
  StartRun run;
  run.build.Empty(run.build.Db("airport.orv"));
  StartupResult& r = run.Go();
  EXPECT_TRUE(r.ProgramEnds());
  EXPECT_EQ(r.Outcome, StartupOutcome::Ended);
  EXPECT_EQ(FatalMessage(), kFatalText);
  ASSERT_EQ(run.ui.Messages(), std::vector<std::string>{std::string(kFatalText)});
  EXPECT_EQ(run.ui.events.back().title, "Orvanta");
  EXPECT_EQ(run.ui.events.back().style, MsgStyle::Exclamation);
  EXPECT_EQ(run.ui.logAtMessage, std::vector<bool>{true});
  EXPECT_FALSE(run.ui.waitCursor);
  EXPECT_EQ(run.ui.Progress(), std::vector<std::string>{"...loading airports for FS2004"});

  std::vector<std::string> log = run.Log();
  ASSERT_EQ(log.size(), 31u);
  EXPECT_EQ(log[0], kHeading);
  EXPECT_EQ(log[5], run.LogLine("244", "database/FS09/city.orv"));  // Count and two 120-byte records
  EXPECT_EQ(log[6], run.LogLine("0", "database/FS09/airport.orv"));
  for (int i = 7; i < 31; ++i) EXPECT_EQ(log[i], "") << i;
  EXPECT_EQ(run.loader.files.back(), StartupFile::City);
}

TEST(Startup, EveryFatalFileEndsWhenEmpty) {
  const char* fatal[] = {"\\database\\FS09\\region.orv", "\\database\\FS09\\country.orv", "\\database\\FS09\\state.orv",
                         "\\database\\FS09\\city.orv",   "\\database\\dijinter.orv",      "\\database\\vicways.orv",
                         "\\database\\jetways.orv",      "\\database\\fixes.orv",         "\\database\\vor.orv",
                         "\\database\\ndb.orv",          "\\database\\airspace.orv",      "\\database\\sid.orv",
                         "\\database\\star.orv",         "\\map\\worldpolygon.bin",       "\\map\\worldline.bin",
                         "\\database\\WxStation.txt"};
  for (const char* file : fatal) {
    SCOPED_TRACE(file);
    StartRun run;
    run.build.Empty(file);
    EXPECT_TRUE(run.Go().ProgramEnds());
    EXPECT_EQ(run.ui.Messages(), std::vector<std::string>{std::string(kFatalText)});
    EXPECT_EQ(run.Log().size(), 31u);
  }
}

TEST(Startup, OptionalFilesAreSkippedWhenEmpty) {
  StartRun run;
  run.build.Empty(run.build.Db("taxi.orv")).Empty(run.build.Db("poly.orv")).Empty(run.build.Db("marker.orv"));
  run.build.Empty("\\database\\msa.orv");
  run.build.Empty("\\magvar09.swf");  // an empty grid is handed over: its lookups give 0
  EXPECT_EQ(run.Go().Outcome, StartupOutcome::OpenAirportSelection);
  EXPECT_TRUE(run.ui.Messages().empty());
  for (StartupFile f : {StartupFile::Taxi, StartupFile::Poly, StartupFile::Marker, StartupFile::Msa})
    EXPECT_EQ(run.loader.contents.count(f), 0u);
  EXPECT_EQ(run.loader.contents.at(StartupFile::MagVar), "");
  std::vector<std::string> log = run.Log();
  EXPECT_EQ(log[1], run.LogLine("0", "magvar09.swf"));
  EXPECT_EQ(log[7], run.LogLine("0", "database/FS09/taxi.orv"));
  EXPECT_EQ(log[21], run.LogLine("0", "database/msa.orv"));
  EXPECT_TRUE(fs::exists(run.Path("database/msa.orv")));  // skipped, not deleted
  // The progress texts still show for the skipped files.
  EXPECT_EQ(run.ui.Progress()[1], "...loading taxiways for FS2004");
}

TEST(Startup, OnlineFilesAreDeletedWhenEmptyAndReadOtherwise) {
  StartRun run;
  run.build.Empty("\\database\\orv_ivao.txt").Empty("\\database\\orv_vatsim.dat");
  run.build.Put("\\database\\orv_vatsim.txt", "VATSIM DATA").Put("\\database\\orv_ivao.dat", "#EDGG\n50:8\n");
  EXPECT_FALSE(run.Go().ProgramEnds());
  EXPECT_FALSE(fs::exists(run.Path("database/orv_ivao.txt")));
  EXPECT_FALSE(fs::exists(run.Path("database/orv_vatsim.dat")));
  EXPECT_TRUE(fs::exists(run.Path("database/orv_vatsim.txt")));
  EXPECT_EQ(run.loader.contents.at(StartupFile::VatsimText), "VATSIM DATA");
  EXPECT_EQ(run.loader.contents.at(StartupFile::IvaoSectors), "#EDGG\n50:8\n");
  EXPECT_EQ(run.loader.contents.count(StartupFile::IvaoText), 0u);
  std::vector<std::string> log = run.Log();
  EXPECT_EQ(log[17], run.LogLine("0", "database/orv_ivao.txt"));
  EXPECT_EQ(log[18], run.LogLine("11", "database/orv_vatsim.txt"));
  EXPECT_EQ(log[19], run.LogLine("11", "database/orv_ivao.dat"));
}

TEST(Startup, UserWaypointFileWithoutItsHeaderIsRewritten) {
  for (std::optional<std::string> content : {std::optional<std::string>(), std::optional<std::string>(""),
                                             std::optional<std::string>("ORVUSER"),
                                             std::optional<std::string>("XRVUSERDB0123456789")}) {
    SCOPED_TRACE(content ? *content : "missing");
    StartRun run;
    if (content) run.build.Put("\\database\\userwp.udb", *content);
    else run.build.Drop("\\database\\userwp.udb");
    EXPECT_FALSE(run.Go().ProgramEnds());
    EXPECT_TRUE(run.ui.Messages().empty());
    EXPECT_EQ(*ReadWholeText(run.Path("database/userwp.udb")), "ORVUSERDB");
    EXPECT_EQ(run.loader.contents.at(StartupFile::UserWaypoints), "ORVUSERDB");
    EXPECT_EQ(run.Log()[22], run.LogLine(std::to_string(content ? content->size() : 0), "database/userwp.udb"));
  }
  // A valid file is handed over as it is.
  StartRun run;
  std::string file = "ORVUSERDB" + std::string(62, 'A');
  run.build.Put("\\database\\userwp.udb", file);
  run.Go();
  EXPECT_EQ(run.loader.contents.at(StartupFile::UserWaypoints), file);
  EXPECT_EQ(*ReadWholeText(run.Path("database/userwp.udb")), file);
}

TEST(Startup, MissingFileEndsWithItsName) {
  StartRun run;
  run.build.Drop("\\database\\vor.orv");
  StartupResult& r = run.Go();
  EXPECT_TRUE(r.ProgramEnds());
  std::string message = "File not found: " + run.Path("database/vor.orv").string();
  EXPECT_EQ(run.ui.Messages(), std::vector<std::string>{message});
  EXPECT_EQ(r.Messages, std::vector<std::string>{message});
  EXPECT_EQ(run.ui.logAtMessage, std::vector<bool>{true});
  std::vector<std::string> log = run.Log();
  ASSERT_EQ(log.size(), 31u);
  EXPECT_EQ(log[13], run.LogLine("48", "database/fixes.orv"));
  EXPECT_EQ(log[14], "");
  // A file that may be skipped when empty still has to exist.
  StartRun taxi;
  taxi.build.Drop(taxi.build.Db("taxi.orv"));
  EXPECT_TRUE(taxi.Go().ProgramEnds());
  EXPECT_EQ(taxi.ui.Messages(),
            std::vector<std::string>{"File not found: " + taxi.Path("database/FS09/taxi.orv").string()});
}

TEST(Startup, ReaderRefusalIsShownBeforeTheFatalMessage) {
  StartRun run;
  run.loader.refuse[StartupFile::Vors] = "vor.orv: record 12 is cut short";
  EXPECT_TRUE(run.Go().ProgramEnds());
  EXPECT_EQ(run.ui.Messages(),
            (std::vector<std::string>{"vor.orv: record 12 is cut short", std::string(kFatalText)}));
  EXPECT_EQ(run.ui.logAtMessage, (std::vector<bool>{true, true}));
  EXPECT_EQ(run.loader.files.back(), StartupFile::Vors);
  EXPECT_EQ(run.Log()[14], run.LogLine("56", "database/vor.orv"));
  EXPECT_EQ(run.loader.ilsLinks, 0);

  // The aircraft list is the user's: its refusal is shown and loading goes on.
  StartRun aircraft;
  aircraft.loader.refuse[StartupFile::Aircraft] = "aircraft.orv: line 3 has 15 values";
  EXPECT_FALSE(aircraft.Go().ProgramEnds());
  EXPECT_EQ(aircraft.ui.Messages(), std::vector<std::string>{"aircraft.orv: line 3 has 15 values"});
}

TEST(Startup, DirectConnectionOpensTheMapDirectly) {
  StartRun run;
  run.build.Ini("DIRCON=1\r\n");
  StartupResult& r = run.Go();
  EXPECT_EQ(r.Outcome, StartupOutcome::OpenMap);
  EXPECT_EQ(r.FirstWindow, "OVRMap");
  EXPECT_FALSE(run.state.ChoosingStartAirport);
}

TEST(Startup, FsxDatabaseFromTheSettings) {
  StartRun run;
  run.build.SimFolder("FS10").Ini("FSX=1\r\n");
  run.build.Put("\\magvar10.swf", "GRID10");
  EXPECT_FALSE(run.Go().ProgramEnds());
  EXPECT_TRUE(run.state.IsFsx);
  EXPECT_EQ(run.ui.Progress()[0], "...loading airports for Flight Simulator X");
  EXPECT_EQ(run.ui.Progress()[3], "...loading markers for Flight Simulator X");
  EXPECT_EQ(run.ui.Progress()[4], "...loading intersections");
  EXPECT_EQ(run.loader.contents.at(StartupFile::MagVar), "GRID10");
  EXPECT_EQ(run.Log()[6], run.LogLine("database/FS10/airport.orv"));
}

TEST(Startup, AiracLabel) {
  EXPECT_EQ(AiracLabelText("AIRAC 0701,18JAN07\r\n14FEB07\r\n"), "AIRAC 0701 - 18JAN07 - 14FEB07");
  EXPECT_EQ(AiracLabelText("  \"Cycle 0701, Europe\" , valid  \n\n"), "Cycle 0701, Europe - valid");
  EXPECT_EQ(AiracLabelText("A,,B"), "A -  - B");
  EXPECT_EQ(AiracLabelText("\"open quote"), "open quote");
  EXPECT_EQ(AiracLabelText(""), "");

  // An empty file shows nothing; the log's heading ends with an empty label.
  StartRun run;
  run.build.Empty("\\database\\AIRAC.INI");
  run.Go();
  EXPECT_FALSE(run.state.Splash.AiracVisible);
  EXPECT_EQ(run.state.Splash.AiracText, "");
  EXPECT_EQ(run.Log()[0], "ORV  \xB7 Version 8.0 \xB7 Build:010107 - 21.11.2026 - 14:30:05 - ");
}

TEST(Startup, UserObjectsAreReadAfterTheLastStep) {
  StartRun run;
  run.build.Put("\\database\\userObj.txt", "L,0,255,0,0\n50,8\n");
  run.Go();
  EXPECT_EQ(run.loader.files.back(), StartupFile::UserObjects);
  EXPECT_EQ(run.Log()[28], run.LogLine("17", "database/userObj.txt"));

  StartRun empty;
  empty.build.Empty("\\database\\userObj.txt");
  EXPECT_FALSE(empty.Go().ProgramEnds());
  EXPECT_EQ(empty.loader.contents.count(StartupFile::UserObjects), 0u);
  EXPECT_EQ(empty.Log()[28], empty.LogLine("0", "database/userObj.txt"));
}

TEST(Startup, UnreadableApplicationFolder) {
  test::TempDir dir;
  AppState state(AppFolder(dir.Path() / "nowhere"));
  test::ScriptedUi ui;
  test::FakeClock clock;
  NullStartupLoader loader;
  StartupResult r = RunStartup(state, ui, clock, loader);
  EXPECT_TRUE(r.ProgramEnds());
  EXPECT_EQ(ui.Messages(),
            std::vector<std::string>{"The application folder " + (dir.Path() / "nowhere").string() + " cannot be read!"});
  EXPECT_FALSE(fs::exists(dir.Path() / "nowhere"));
}

TEST(Startup, DefaultLoaderCountsAndShutdownOrder) {
  NullStartupLoader loader;
  std::vector<std::string> names;
  for (const ArrayCount& c : loader.Counts()) {
    names.emplace_back(c.Name);
    EXPECT_EQ(c.Count, 0);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Regions", "Countries", "States", "Cities", "Airports", "Vors", "Ndbs",
                                             "Intersections", "Fixes", "VictorAirways", "JetAirways", "Airspaces",
                                             "MsaCells", "TaxiSegments", "GroundPolygons", "Markers", "WorldPolygons",
                                             "WorldLines", "UserWaypoints", "UserObjects"}));
  std::vector<std::string> order(ShutdownOrder().begin(), ShutdownOrder().end());
  EXPECT_EQ(order, (std::vector<std::string>{"Aircraft", "APPrev", "EdProc", "OVRLay", "OVRLL", "OVRMap",
                                             "OVRPrefnew", "frmGPSMM", "frmLoadRec", "frmSaveRec", "frmSID", "Fuel",
                                             "PrintFP", "ProcLoad", "ProcSave", "SaveRoute"}));
}

}  // namespace
}  // namespace orv
