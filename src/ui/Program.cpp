#include "ui/Program.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <QFileInfo>
#include <QTimer>
#include <cstdlib>

#include "app/PlanCommands.h"
#include "app/ProgramLoad.h"
#include "ui/AirportWindows.h"
#include "ui/OptionsWindow.h"
#include "ui/ProcedureEditorWindow.h"
#include "ui/AircraftDialog.h"
#include "ui/DemoScript.h"
#include "ui/AirportSelectWindow.h"
#include "ui/FuelWindow.h"
#include "ui/GpsWindow.h"
#include "ui/HelpWindows.h"
#include "ui/LogbookDialog.h"
#include "ui/RecordingWindows.h"
#include "ui/PlanFileDialogs.h"
#include "ui/ProcedureWindows.h"
#include "ui/FindWindow.h"
#include "ui/MainWindow.h"
#include "ui/MapWidget.h"
#include "ui/MapWindow.h"
#include "ui/SplashWindow.h"
#include "ui/UserWaypointWindow.h"

namespace orv::ui {

namespace {

// The splash's labels follow the start-up: each progress text also refreshes
// the version and AIRAC labels from the state the start-up keeps.
class SplashUi : public QtUi {
public:
  SplashUi(QtUi& inner, const AppState& state, SplashWindow& splash)
      : inner_(inner), state_(state), splash_(splash) {}

  void MsgBox(std::string_view text, MsgStyle style, std::string_view title) override {
    inner_.MsgBox(text, style, title);
  }
  bool AskYesNo(std::string_view text, std::string_view title) override { return inner_.AskYesNo(text, title); }
  Answer AskYesNoCancel(std::string_view text, std::string_view title) override {
    return inner_.AskYesNoCancel(text, title);
  }
  bool AskText(std::string_view prompt, std::string_view title, std::string& inOut) override {
    return inner_.AskText(prompt, title, inOut);
  }
  void Beep() override { inner_.Beep(); }
  void SetWaitCursor(bool on) override { inner_.SetWaitCursor(on); }
  void SetCaption(std::string_view window, std::string_view text) override { inner_.SetCaption(window, text); }
  void ShowProgress(std::string_view text) override {
    const SplashState& s = state_.Splash;
    splash_.SetVersion(ToQt(s.LblVersion));
    unsigned bgr = static_cast<unsigned>(s.AiracColor);
    unsigned rgb = ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
    splash_.SetAirac(ToQt(s.AiracText), s.AiracVisible, rgb);
    inner_.ShowProgress(text);
  }

private:
  QtUi& inner_;
  const AppState& state_;
  SplashWindow& splash_;
};

}  // namespace

AppDirChoice AppDirFromArgs(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::string a = argv[i];
    if (a == "--appdir" && i + 1 < argc) return {argv[i + 1], ""};
    if (a.rfind("--appdir=", 0) == 0) return {a.substr(9), ""};
  }
  auto hasDatabase = [](const QString& dir) { return QFileInfo(QDir(dir).filePath("database")).isDir(); };
  const QString beside = QCoreApplication::applicationDirPath();
  if (hasDatabase(beside)) return {beside.toStdString(), ""};
  const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  if (hasDatabase(user)) return {user.toStdString(), ""};
  const std::string where = QDir::toNativeSeparators(user).toStdString();
  return {where, "Orvanta has no navigation database yet.\n\nBuild one into " + where +
                     " with the database manager, for example:\n\n    orvanta-dbm --xplane DATA_DIR --out " + where +
                     "\n\nwhere DATA_DIR holds X-Plane or FlightGear navigation data (apt.dat, nav.dat, fix.dat, "
                     "awy.dat). Or start Orvanta on another data folder with --appdir DIR."};
}

Program::Program(std::string appDir) : state_(std::move(appDir)) {}

Program::~Program() = default;

bool Program::Start() {
  splash_ = std::make_unique<SplashWindow>();
  QString picture = QString::fromStdString(state_.Core.Folder.Resolve("\\ORV_Intro.bmp").string());
  if (QFileInfo::exists(picture)) splash_->SetPicture(picture);
  splash_->show();
  ui_.SetParent(splash_.get());
  ui_.SetProgressLabel(splash_->ProgressLabel());
  ui_.RegisterWindow("OVRIntro", splash_.get());
  QCoreApplication::processEvents();

  SplashUi splashUi(ui_, state_.Core, *splash_);
  StartupResult result = LoadProgram(state_, splashUi, clock_);
  splash_->ClearPicture();
  splash_->hide();
  ui_.SetParent(nullptr);
  if (result.ProgramEnds()) return false;
  firstWindow_ = result.FirstWindow;
  return true;
}

void Program::ShowFirstWindow() {
  main_ = std::make_unique<MainWindow>();
  mapWindow_ = new MapWindow(*main_, state_, ui_, timers_, clock_);
  MainWindowController& controller = mapWindow_->Controller();
  main_->onMenu = [&controller](const std::string& name) { controller.Menu(name); };
  mapWindow_->onOpenWindow = [this](std::string_view name) { OpenWindow(name); };
  mapWindow_->userForm = [this]() -> FrmUser* {
    if (!userWindow_ || !userWindow_->isVisible()) return nullptr;
    userWindow_->Collect();  // what the user typed stays
    return &user_;
  };
  mapWindow_->onUserFormFilled = [this] {
    if (userWindow_) userWindow_->Refresh();
  };
  timers_.onTick = [&controller](TimerId id) { controller.OnTimer(id); };
  mapWindow_->onGpsWindow = [this, &controller](bool show) {
    if (show && !gpsWindow_) {
      gpsWindow_ = std::make_unique<GpsWindow>(controller.Gps(), main_.get());
      // Over the lower right corner of the map, clear of the menu and the plan.
      gpsWindow_->adjustSize();
      const QRect r = main_->geometry();
      gpsWindow_->move(r.right() - gpsWindow_->width() - 40, r.bottom() - gpsWindow_->height() - 60);
    }
    if (gpsWindow_) gpsWindow_->setVisible(show);
  };
  mapWindow_->onGpsLine = [this](int y, std::string_view text, Colour colour) {
    if (gpsWindow_) gpsWindow_->SetLine(y, text, colour);
  };
  // ORV_SCREENSHOT=file.png: the window's picture is saved after its first
  // paint and the program ends (for documentation pictures). It is centred
  // on the airport ORV_SCREENSHOT_AT names, else on the first one, so that
  // the picture shows a chart.
  const char* shot = std::getenv("ORV_SCREENSHOT");
  float lat = state_.View.CntrLat, lon = state_.View.CntrLon;
  if (shot && *shot) {
    const char* at = std::getenv("ORV_SCREENSHOT_AT");
    int32_t centre = at ? FindAirportIndex(state_.Db, at) : -1;
    for (std::size_t i = 0; centre < 0 && i < state_.Db.Airports.Airports.size(); ++i)
      if (IsAirportSlotUsed(state_.Db.Airports.Airports[i])) centre = static_cast<int32_t>(i);
    if (centre >= 0) {
      lat = state_.Db.Airports.Airports[static_cast<std::size_t>(centre)].Lat;
      lon = state_.Db.Airports.Airports[static_cast<std::size_t>(centre)].Lon;
    }
    const QString path = QString::fromLocal8Bit(shot);
    mapWindow_->Map()->onFirstPaint = [this, path] {
      QTimer::singleShot(300, main_.get(), [this, path] {
        main_->grab().save(path);
        QCoreApplication::quit();
      });
    };
  }
  // The map surface takes the saved position and zoom step before the
  // window first shows.
  controller.Load(lat, lon);
  main_->onClose = [this, &controller] {
    // The user waypoints are saved by their window's unload; the airport
    // selection is a window of its own and would keep the program alive.
    if (userWindow_ && userWindow_->isVisible()) userWindow_->close();
    if (ovrllWindow_) ovrllWindow_->hide();
    QSettings().setValue("MainWindow/geometry", main_->saveGeometry());
    controller.Unload();
  };
  ui_.SetParent(main_.get());
  ui_.RegisterWindow("OVRMap", main_.get());
  // The window comes back where the user left it; the settings file's
  // MAPWIN=2 still opens it maximised.
  main_->restoreGeometry(QSettings().value("MainWindow/geometry").toByteArray());
  if (state_.Core.Config.MapWin == 2)
    main_->showMaximized();
  else
    main_->show();
  // The map opens behind the airport selection, which stays on top of it.
  if (firstWindow_ == "OVRLL") OpenAirportSelection();
  if (const char* script = std::getenv("ORV_SCRIPT"); script && *script)
    RunScript(ParseScript(script), state_, controller);
}

void Program::OpenWindow(std::string_view name) {
  if (name == "frmFind") OpenFind();
  else if (name == "OVRLL") OpenAirportSelection();
  else if (name == "frmUser") OpenUserWaypoints();
  else if (name == "Fuel") {
    if (!fuelWindow_) fuelWindow_ = std::make_unique<FuelDialog>(state_, ui_, main_.get());
    fuelWindow_->Open();
  } else if (name == "Aircraft") {
    if (!aircraftWindow_) {
      aircraftWindow_ = std::make_unique<AircraftDialog>(state_, ui_, main_.get());
      aircraftWindow_->onSelected = [this] {
        if (mapWindow_) mapWindow_->RefreshPlanTable();
      };
    }
    aircraftWindow_->Open();
  } else if (name == "frmHelp") {
    if (!helpWindow_) helpWindow_ = std::make_unique<HelpWindow>(main_.get());
    helpWindow_->show();
    helpWindow_->raise();
  } else if (name == "frmAbout") {
    ShowAbout(main_.get());
  } else if (name == "SaveRoute") {
    if (!saveRoute_) saveRoute_ = std::make_unique<SaveRouteDialog>(state_, mapWindow_->Controller(), main_.get());
    saveRoute_->Refresh();
    saveRoute_->open();
  } else if (name == "MenuOpenSid" || name == "MenuOpenStar") {
    sidStar_ = std::make_unique<SidStarDialog>(state_, ui_, printFonts_, name == "MenuOpenSid", main_.get());
    sidStar_->onPlanChanged = [this] {
      mapWindow_->RefreshPlanTable();
      mapWindow_->DrawMap();
    };
    if (sidStar_->Load()) sidStar_->open();
  } else if (name == "menuOpenSegment" || name == "menuSaveSegment") {
    segments_ = std::make_unique<SegmentDialog>(state_, ui_, name == "menuSaveSegment", main_.get());
    segments_->onPlanChanged = [this] {
      mapWindow_->RefreshPlanTable();
      mapWindow_->DrawMap();
    };
    segments_->Load();
    segments_->open();
  } else if (name == "APPrev") {
    if (!apPrev_) {
      apPrev_ = std::make_unique<AirportPreviewWindow>(state_, ui_, main_.get());
      apPrev_->onLayout = [this](int32_t airport) { OpenLayout(airport); };
    }
    apPrev_->Open();
  } else if (name == "OVRLay") {
    OpenLayout(apPrev_ && apPrev_->isVisible() ? apPrev_->Form().Airport : SideWindowAirport(state_));
  } else if (name == "frmSelParking") {
    if (!parking_) parking_ = std::make_unique<ParkingWindow>(state_, ui_, main_.get());
    parking_->Open();
  } else if (name == "OVRPrefnew") {
    if (!options_) {
      options_ = std::make_unique<OptionsDialog>(state_, ui_, main_.get());
      options_->onApplied = [this] {
        if (mapWindow_) mapWindow_->DrawMap();
      };
    }
    options_->Open();
  } else if (name == "EdProc") {
    if (!procEditor_) {
      procEditor_ = std::make_unique<ProcedureEditorWindow>(state_, ui_, main_.get());
      procEditor_->onDrawn = [this] {
        mapWindow_->SyncChecks();
        mapWindow_->DrawMap();
      };
    }
    procEditor_->Open();
  } else if (name == "PrintFP") {
    PrintPlanPapers(state_, printFonts_, ui_, main_.get());
  } else if (name == "PrintMap") {
    PrintMapView(state_, printFonts_, main_.get());
  } else if (name == "frmLoadRec") {
    // Modal: Flight Analysis goes on when the window has closed.
    LoadRecDialog dialog(mapWindow_->Controller().Analysis(), main_.get());
    dialog.exec();
  } else if (name == "frmSaveRec") {
    SaveRecDialog dialog(mapWindow_->Controller().Analysis(), main_.get());
    dialog.exec();
  } else if (name == "frmLogbook") {
    if (!logbook_) logbook_ = std::make_unique<LogbookDialog>(state_, ui_, printFonts_, main_.get());
    logbook_->Open();
  }
}

void Program::OpenLayout(int32_t airport) {
  if (!layout_) layout_ = std::make_unique<LayoutWindow>(state_, main_.get());
  layout_->Open(airport);
}

void Program::OpenFind() {
  if (!findWindow_) {
    findWindow_ = std::make_unique<FindWindow>(find_, main_.get());
    findWindow_->onFound = [this](const FoundObject& o) { CentreMap(o.Lat, o.Lon); };
  }
  findWindow_->Open();
}

void Program::OpenAirportSelection() {
  if (!ovrllWindow_) {
    ovrll_ = std::make_unique<OvrLL>(state_.Db.Airports, state_.Core, ui_, state_.Plan.DepartureAirport,
                                     state_.Plan.DestinationAirport);
    // A window of its own rather than a child of the map, so that it can
    // stand in front of the map while the start airport is chosen.
    ovrllWindow_ = std::make_unique<AirportSelectWindow>(*ovrll_);
    ovrllWindow_->onSelected = [this](const AirportSelection& s) { CentreMap(s.Lat, s.Lon); };
    ovrllWindow_->onEndProgram = [this] {
      if (!SaveIni(state_.Core.Folder, state_.Core.Config))
        ui_.MsgBox("The settings could not be written to orv.ini.", MsgStyle::Exclamation, kAppTitle);
      QCoreApplication::quit();
    };
  }
  ovrllWindow_->Open();
}

void Program::OpenUserWaypoints() {
  if (!userWindow_) userWindow_ = std::make_unique<UserWaypointWindow>(user_, main_.get());
  userWindow_->Open();
}

void Program::CentreMap(float lat, float lon) {
  if (mapWindow_) mapWindow_->Controller().CentreOn(lat, lon);
}

}  // namespace orv::ui
