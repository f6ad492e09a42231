#include "ui/DemoScript.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "app/MainWindowController.h"
#include "core/Runtime.h"

namespace orv::ui {

std::vector<ScriptStep> ParseScript(const std::string& text) {
  std::vector<ScriptStep> steps;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find(';', start);
    if (end == std::string::npos) end = text.size();
    const std::string item = Trim(std::string_view(text).substr(start, end - start));
    if (!item.empty()) {
      const std::size_t colon = item.find(':');
      steps.push_back({item.substr(0, colon), colon == std::string::npos ? "" : item.substr(colon + 1)});
    }
    start = end + 1;
  }
  return steps;
}

namespace {

void RunFrom(std::shared_ptr<std::vector<ScriptStep>> steps, std::size_t i, ProgramState& s,
             MainWindowController& c);

// "until:tcas": the next step once lblTCAS shows, looked at every 50 ms for
// at most `left` looks.
void PollTcas(std::shared_ptr<std::vector<ScriptStep>> steps, std::size_t i, ProgramState& s,
              MainWindowController& c, int left) {
  if ((s.Sim.Live && s.Sim.Live->Traffic.LblTcasVisible) || left <= 0) {
    RunFrom(steps, i + 1, s, c);
    return;
  }
  QTimer::singleShot(50, [steps, i, &s, &c, left] { PollTcas(steps, i, s, c, left - 1); });
}

void RunFrom(std::shared_ptr<std::vector<ScriptStep>> steps, std::size_t i, ProgramState& s,
             MainWindowController& c) {
  if (i >= steps->size()) return;
  const ScriptStep& step = (*steps)[i];
  int delay = 50;
  if (step.Verb == "plan") {
    const std::size_t dash = step.Arg.find('-');
    const int32_t dep = FindAirportIndex(s.Db, step.Arg.substr(0, dash));
    const int32_t dest = dash == std::string::npos ? -1 : FindAirportIndex(s.Db, step.Arg.substr(dash + 1));
    if (dep >= 0 && dest >= 0) {
      SetPlanEnds(s, dep, dest);
      const AirportRec& a = s.Db.Airports.Airports[static_cast<std::size_t>(dep)];
      c.CentreOn(a.Lat, a.Lon);
    } else {
      std::fprintf(stderr, "ORV_SCRIPT: no airports '%s'\n", step.Arg.c_str());
    }
  } else if (step.Verb == "menu") {
    if (!c.Menu(step.Arg)) std::fprintf(stderr, "ORV_SCRIPT: menu entry '%s' did nothing\n", step.Arg.c_str());
  } else if (step.Verb == "replay") {
    // A recording by its path, or by its name in the user folder.
    std::filesystem::path file = step.Arg;
    if (!std::filesystem::exists(file)) file = c.Analysis().UserFolder() / step.Arg;
    if (!c.Analysis().OpenRecording(file)) std::fprintf(stderr, "ORV_SCRIPT: no recording '%s'\n", step.Arg.c_str());
  } else if (step.Verb == "key") {
    // "38" or "38*40": a key code, pressed that many times.
    const std::size_t star = step.Arg.find('*');
    const int times = star == std::string::npos ? 1 : static_cast<int>(Val(step.Arg.substr(star + 1)));
    for (int k = 0; k < times; ++k) c.Key(static_cast<int>(Val(step.Arg.substr(0, star))));
  } else if (step.Verb == "scale") {
    s.Sim.TimeScale = Val(step.Arg);
  } else if (step.Verb == "wait") {
    delay = static_cast<int>(Val(step.Arg));
  } else if (step.Verb == "traffic") {
    s.Sim.TrafficCount = static_cast<int>(Val(step.Arg));
  } else if (step.Verb == "until" && step.Arg == "tcas") {
    PollTcas(steps, i, s, c, 6000);
    return;
  } else if (step.Verb == "shot") {
    if (QScreen* screen = QGuiApplication::primaryScreen())
      if (!screen->grabWindow(0).save(QString::fromStdString(step.Arg)))
        std::fprintf(stderr, "ORV_SCRIPT: cannot write %s\n", step.Arg.c_str());
  } else if (step.Verb == "quit") {
    QCoreApplication::quit();
    return;
  } else {
    std::fprintf(stderr, "ORV_SCRIPT: unknown step '%s'\n", step.Verb.c_str());
  }
  QTimer::singleShot(delay, [steps, i, &s, &c] { RunFrom(steps, i + 1, s, c); });
}

}  // namespace

void RunScript(std::vector<ScriptStep> steps, ProgramState& s, MainWindowController& controller) {
  auto shared = std::make_shared<std::vector<ScriptStep>>(std::move(steps));
  QTimer::singleShot(500, [shared, &s, &controller] { RunFrom(shared, 0, s, controller); });
}

}  // namespace orv::ui
