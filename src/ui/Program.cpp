#include "ui/Program.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QTimer>
#include <cstdlib>

#include "core/Settings.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "ui/AirportSelectWindow.h"
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

std::string AppDirFromArgs(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::string a = argv[i];
    if (a == "--appdir" && i + 1 < argc) return argv[i + 1];
    if (a.rfind("--appdir=", 0) == 0) return a.substr(9);
  }
  return QFileInfo(QCoreApplication::applicationFilePath()).absolutePath().toStdString();
}

Program::Program(std::string appDir) : state_(AppFolder(std::move(appDir))) {}

Program::~Program() = default;

bool Program::Start() {
  splash_ = std::make_unique<SplashWindow>();
  QString picture = QString::fromStdString(state_.Folder.Resolve("\\ORV_Intro.bmp").string());
  if (QFileInfo::exists(picture)) splash_->SetPicture(picture);
  splash_->show();
  ui_.SetParent(splash_.get());
  ui_.SetProgressLabel(splash_->ProgressLabel());
  ui_.RegisterWindow("OVRIntro", splash_.get());
  QCoreApplication::processEvents();

  SplashUi splashUi(ui_, state_, *splash_);
  DatabaseLoader loader(db_);
  StartupResult result = RunStartup(state_, splashUi, clock_, loader);
  splash_->ClearPicture();
  splash_->hide();
  ui_.SetParent(nullptr);
  if (result.ProgramEnds()) return false;
  firstWindow_ = result.FirstWindow;
  return true;
}

void Program::ShowFirstWindow() {
  main_ = std::make_unique<MainWindow>();
  main_->onMenu = [this](const std::string& name) { OnMenu(name); };
  // The map surface takes the saved position and zoom step before the
  // window first shows.
  mapWindow_ = new MapWindow(*main_, state_, db_, plan_, view_, ui_);
  LoadView(view_, view_.CntrLat, view_.CntrLon, state_.Config.Scale, *mapWindow_);
  main_->onClose = [this] {
    mapWindow_->Unload();
    // The user waypoints are saved by their window's unload; the airport
    // selection is a window of its own and would keep the program alive.
    if (userWindow_ && userWindow_->isVisible()) userWindow_->close();
    if (ovrllWindow_) ovrllWindow_->hide();
    SaveSettings();
  };
  ui_.SetParent(main_.get());
  ui_.RegisterWindow("OVRMap", main_.get());
  // ORV_SCREENSHOT=file.png: the window's picture is saved after its first
  // paint and the program ends (for documentation pictures).
  if (const char* shot = std::getenv("ORV_SCREENSHOT"); shot && *shot) {
    const QString path = QString::fromLocal8Bit(shot);
    // Centred on the airport ORV_SCREENSHOT_AT names, else on the first
    // one, so that the picture shows a chart.
    const char* at = std::getenv("ORV_SCREENSHOT_AT");
    const AirportRec* centre = nullptr;
    for (const AirportRec& a : db_.Airports.Airports) {
      if (!IsAirportSlotUsed(a)) continue;
      if (!centre) centre = &a;
      if (at && a.Icao.Trimmed() == at) {
        centre = &a;
        break;
      }
    }
    if (centre) LoadView(view_, centre->Lat, centre->Lon, state_.Config.Scale, *mapWindow_);
    mapWindow_->Map()->onFirstPaint = [this, path] {
      QTimer::singleShot(300, main_.get(), [this, path] {
        main_->grab().save(path);
        QCoreApplication::quit();
      });
    };
  }
  if (state_.Config.MapWin == 2)
    main_->showMaximized();
  else
    main_->show();
  // The map opens behind the airport selection, which stays on top of it.
  if (firstWindow_ == "OVRLL") OpenAirportSelection();
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
    ovrll_ = std::make_unique<OvrLL>(db_.Airports, state_, ui_, plan_.DepartureAirport, plan_.DestinationAirport);
    // A window of its own rather than a child of the map, so that it can
    // stand in front of the map while the start airport is chosen.
    ovrllWindow_ = std::make_unique<AirportSelectWindow>(*ovrll_);
    ovrllWindow_->onSelected = [this](const AirportSelection& s) { CentreMap(s.Lat, s.Lon); };
    ovrllWindow_->onEndProgram = [this] {
      SaveSettings();
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
  view_.CntrLat = ClampCenterLat(view_, lat);
  view_.CntrLon = lon;
  view_.CurrentLat = lat;
  view_.CurrentLon = lon;
  if (mapWindow_) mapWindow_->DrawMap();
}

void Program::SaveSettings() {
  if (!SaveIni(state_.Folder, state_.Config))
    ui_.MsgBox("The settings could not be written to orv.ini.", MsgStyle::Exclamation, kAppTitle);
}

void Program::OnMenu(const std::string& name) {
  if (mapWindow_ && mapWindow_->HandleMenu(name)) return;
  if (name == "MenuExit") main_->close();
  else if (name == "MenuFindObject") OpenFind();
  else if (name == "MenuSelectAP") OpenAirportSelection();
  else if (name == "MenuEditUser") OpenUserWaypoints();
}

}  // namespace orv::ui
