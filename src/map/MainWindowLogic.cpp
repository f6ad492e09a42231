#include "map/MainWindowLogic.h"

#include <algorithm>

#include "map/MainMenu.h"

namespace orv {

namespace {

// Every toolbar button and the switch it sets. The three label buttons and
// btnAI have no menu twin in MapLayers' sense but work the same way.
struct ButtonName {
  std::string_view Button;
  bool MapLayers::*Layer;      // nullptr: a window toggle
  bool WindowToggles::*Window;
};

constexpr ButtonName kButtons[] = {
    {"btnAP", &MapLayers::btnAP, nullptr},
    {"btnVor", &MapLayers::btnVor, nullptr},
    {"btnNdb", &MapLayers::btnNdb, nullptr},
    {"btnIls", &MapLayers::btnIls, nullptr},
    {"btnInter", &MapLayers::btnInter, nullptr},
    {"btnFix", &MapLayers::btnFix, nullptr},
    {"btnUser", &MapLayers::btnUser, nullptr},
    {"btnJet", &MapLayers::btnJet, nullptr},
    {"btnVictor", &MapLayers::btnVictor, nullptr},
    {"btnCtrz", &MapLayers::btnCtrz, nullptr},
    {"btnAir1", &MapLayers::btnAir1, nullptr},
    {"btnAir2", &MapLayers::btnAir2, nullptr},
    {"btnMsa", &MapLayers::btnMsa, nullptr},
    {"btnMap", &MapLayers::btnMap, nullptr},
    {"btnFreq", &MapLayers::ShowFreq, nullptr},
    {"btnIcao", &MapLayers::ShowIcao, nullptr},
    {"btnName", &MapLayers::ShowName, nullptr},
    {"btnAI", nullptr, &WindowToggles::btnAI},
};

// The airspace class entries without a button: their check mark is the
// class's visible flag itself.
struct ClassEntry {
  std::string_view Menu;
  bool MapLayers::*Layer;
};

constexpr ClassEntry kClassEntries[] = {
    {"MenuADA", &MapLayers::MenuADA}, {"MenuADIZ", &MapLayers::MenuADIZ}, {"menuARTCC", &MapLayers::menuARTCC},
    {"MenuACC", &MapLayers::MenuACC}, {"MenuBZ", &MapLayers::MenuBZ},     {"MenuOCA", &MapLayers::MenuOCA},
    {"menuRA", &MapLayers::menuRA},   {"menuTCA", &MapLayers::menuTCA},   {"menuUIR", &MapLayers::menuUIR},
};

// Plain toggles: the check flips, then (where marked) FocusMap, then the
// redraw when the map is ready.
enum class Owner { Layers, View, Window };
struct PlainToggle {
  std::string_view Menu;
  Owner Where;
  bool MapLayers::*Layer;
  bool ViewState::*View;
  bool WindowToggles::*Window;
  bool Focus;
  bool Redraw;
};

constexpr PlainToggle kPlain[] = {
    {"MenuCompass", Owner::Layers, &MapLayers::MenuCompass, nullptr, nullptr, true, true},
    {"MenuLatLong", Owner::Layers, &MapLayers::MenuLatLong, nullptr, nullptr, true, true},
    {"MenuTraceActive", Owner::Layers, &MapLayers::MenuTraceActive, nullptr, nullptr, false, true},
    {"menuShowAlt", Owner::Layers, &MapLayers::menuShowAlt, nullptr, nullptr, false, true},
    {"MenuViolation", Owner::Layers, &MapLayers::MenuViolation, nullptr, nullptr, false, true},
    {"MenuShowRoute", Owner::Layers, &MapLayers::MenuShowRoute, nullptr, nullptr, true, true},
    {"MenuAoM", Owner::View, nullptr, &ViewState::AircraftOnMap, nullptr, true, false},
    {"menuAutozoom", Owner::View, nullptr, &ViewState::Autozoom, nullptr, true, false},
    {"menuRoundWorld", Owner::View, nullptr, &ViewState::RoundWorld, nullptr, true, true},
    {"MenuDisplayProc", Owner::Window, nullptr, nullptr, &WindowToggles::MenuDisplayProc, true, true},
    {"MenuOnTop", Owner::Window, nullptr, nullptr, &WindowToggles::MenuOnTop, false, false},
    {"MenuShowPlan", Owner::Window, nullptr, nullptr, &WindowToggles::MenuShowPlan, false, false},
    {"menuExtTable", Owner::Window, nullptr, nullptr, &WindowToggles::menuExtTable, false, false},
    {"menuShowCoords", Owner::Window, nullptr, nullptr, &WindowToggles::menuShowCoords, false, false},
    {"menuAIATCID", Owner::Window, nullptr, nullptr, &WindowToggles::menuAIATCID, false, true},
    {"menuAISpeedAlt", Owner::Window, nullptr, nullptr, &WindowToggles::menuAISpeedAlt, false, true},
    {"menuAIAirports", Owner::Window, nullptr, nullptr, &WindowToggles::menuAIAirports, false, true},
    {"menuATCIDGround", Owner::Window, nullptr, nullptr, &WindowToggles::menuATCIDGround, false, true},
    {"menuAIDestination", Owner::Window, nullptr, nullptr, &WindowToggles::menuAIDestination, false, true},
    {"menuTCASSound", Owner::Window, nullptr, nullptr, &WindowToggles::menuTCASSound, false, false},
    // The program runs the plan's check between the flip and the redraw.
    {"menuCheckControlzone", Owner::Window, nullptr, nullptr, &WindowToggles::menuCheckControlzone, true, true},
};

const PlainToggle* FindPlain(std::string_view name) {
  for (const PlainToggle& t : kPlain)
    if (t.Menu == name) return &t;
  return nullptr;
}

bool* PlainSwitch(MainWindowState& s, const PlainToggle& t) {
  switch (t.Where) {
    case Owner::Layers: return &(s.Layers.*t.Layer);
    case Owner::View: return &(s.View.*t.View);
    case Owner::Window: return &(s.Window.*t.Window);
  }
  return nullptr;
}

std::string_view PairedButton(std::string_view menuName) {
  const MenuEntry* e = FindMenuEntry(menuName);
  return e && e->kind == MenuKind::Toggle ? e->button : std::string_view();
}

const ClassEntry* FindClassEntry(std::string_view name) {
  for (const ClassEntry& c : kClassEntries)
    if (c.Menu == name) return &c;
  return nullptr;
}

void RedrawIfReady(const ViewState& v, MainWindowHost& host) {
  if (v.MapReady) host.DrawMap();
}

}  // namespace

bool* ButtonSwitch(MainWindowState& s, std::string_view button) {
  for (const ButtonName& b : kButtons)
    if (b.Button == button) return b.Layer ? &(s.Layers.*b.Layer) : &(s.Window.*b.Window);
  return nullptr;
}

bool IsWindowToggle(std::string_view menuName) {
  return !PairedButton(menuName).empty() || FindClassEntry(menuName) || FindPlain(menuName);
}

bool MenuChecked(const MainWindowState& s, std::string_view menuName) {
  // The switches are only read here; the casts let the finders be shared.
  auto& m = const_cast<MainWindowState&>(s);
  if (std::string_view b = PairedButton(menuName); !b.empty()) {
    const bool* value = ButtonSwitch(m, b);
    return value && *value;
  }
  if (const ClassEntry* c = FindClassEntry(menuName)) return s.Layers.*c->Layer;
  if (const PlainToggle* t = FindPlain(menuName)) return *PlainSwitch(m, *t);
  return false;
}

bool ButtonClicked(MainWindowState& s, std::string_view button, bool value, MainWindowHost& host) {
  bool* target = ButtonSwitch(s, button);
  if (!target) return false;
  host.FocusMap();
  *target = value;
  RedrawIfReady(s.View, host);
  return true;
}

bool MenuToggleClicked(MainWindowState& s, std::string_view menuName, MainWindowHost& host) {
  if (std::string_view b = PairedButton(menuName); !b.empty()) {
    bool* value = ButtonSwitch(s, b);
    if (!value) return false;
    // The menu flips the button; the button's own click does the rest.
    return ButtonClicked(s, b, !*value, host);
  }
  if (const ClassEntry* c = FindClassEntry(menuName)) {
    // The class switch is what every record of the class is drawn by, so
    // setting it hides or shows them all before the redraw.
    s.Layers.*c->Layer = !(s.Layers.*c->Layer);
    RedrawIfReady(s.View, host);
    return true;
  }
  const PlainToggle* t = FindPlain(menuName);
  if (!t) return false;
  if (menuName == "menuRoundWorld") {
    ToggleRoundWorld(s.View, host);
    return true;
  }
  bool* value = PlainSwitch(s, *t);
  *value = !*value;
  if (menuName == "MenuOnTop") host.SetOnTop(*value);
  if (menuName == "MenuShowPlan") host.ShowPlan(*value);
  if (menuName == "menuExtTable") SetExtendedTable(s, *value);
  if (menuName == "menuShowCoords" && s.Table) s.Table->ShowCoordinates = *value;
  if (t->Focus) host.FocusMap();
  if (t->Redraw) RedrawIfReady(s.View, host);
  return true;
}

void SetExtendedTable(MainWindowState& s, bool on) {
  s.Window.menuExtTable = on;
  if (s.Table) s.Table->SetExtended(on);
}

bool ZoomMenuClicked(ViewState& v, std::string_view menuName, MainWindowHost& host, Ui& ui) {
  const int index = ZoomIndexOfMenu(menuName);
  if (index < 0) return false;
  SetZoom(v, index, true, host, ui);
  return true;
}

bool MapKeyDown(ViewState& v, int keyCode, MainWindowHost& host, Ui& ui) {
  switch (keyCode) {
    case 27:  // Esc
      host.ClearSelection();
      host.DrawMap();
      return true;
    case 32:  // Space
      CenterOnCurrent(v, host);
      return true;
    case 38:  // cursor up and down: no replay yet, so only the focus
    case 40:
      host.FocusMap();
      return false;
    default:
      return ZoomKey(v, keyCode, host, ui);
  }
}

void MapWheel(ViewState& v, bool mouseZoom, int delta, MainWindowHost& host, Ui& ui) {
  // Without the mouse zoom option the wheel is never hooked at all.
  if (!mouseZoom) return;
  WheelZoom(v, delta, host, ui);
}

ResizeOutcome ResizeWindow(const WindowGeometry& g, bool reduced, bool planShowing, int barHeight,
                           int statusHeight, Ui& ui) {
  ResizeOutcome r;
  if (g.Show == WindowShow::Minimised) {
    r.Ignore = true;
    return r;
  }
  if (g.Show == WindowShow::Maximised && reduced) {
    r.Restore = true;
    ui.MsgBox(kReducedMaximiseMessage, MsgStyle::Exclamation, kAppTitle);
  }
  r.Width = g.Width;
  r.Height = g.Height;
  if (reduced) {
    r.Height = std::max(r.Height, kReducedMinHeight);
    r.Width = std::max(r.Width, kReducedMinWidth);
    r.MapHeight = r.Height;
  } else {
    r.Height = std::max(r.Height, kNormalMinHeight);
    if (r.Width < kNormalMinWidth) {
      r.HidePlan = planShowing;
      r.Width = kNormalMinWidth;
    }
    r.MapHeight = r.Height - barHeight - statusHeight - kLayoutMargin;
  }
  r.PlanLeftMax = r.MapHeight < 6500 ? 878 : 460;
  return r;
}

int PlanPanelLeft(double mapScaleWidth, int mapHeight, int panelWidth) {
  const int centred = static_cast<int>(mapScaleWidth / 2 - panelWidth / 2.0);
  return std::min(centred, mapHeight < 6500 ? 878 : 460);
}

void LoadWindowToggles(const Settings& cfg, MainWindowState& s) {
  s.Window.ToggleBar = cfg.Button != 0;
  const bool airspaces = cfg.Airspace != 0;
  for (bool MapLayers::*c : {&MapLayers::MenuADA, &MapLayers::MenuADIZ, &MapLayers::menuARTCC, &MapLayers::MenuACC,
                             &MapLayers::MenuBZ, &MapLayers::btnAir1, &MapLayers::btnCtrz, &MapLayers::btnAir2,
                             &MapLayers::MenuOCA, &MapLayers::menuRA, &MapLayers::menuTCA, &MapLayers::menuUIR})
    s.Layers.*c = airspaces;
  s.Layers.MenuCompass = cfg.CompMenu != 0;
  s.Layers.MenuLatLong = cfg.LatLonMenu != 0;
  s.Window.btnAI = cfg.AiMenu != 0;
}

void SaveWindowToggles(const MainWindowState& s, Settings& cfg) {
  cfg.Button = s.Window.ToggleBar ? 1 : 0;
  const MapLayers& l = s.Layers;
  const bool anyAirspace = l.MenuADA || l.MenuADIZ || l.menuARTCC || l.MenuACC || l.MenuBZ || l.btnAir1 ||
                           l.btnCtrz || l.btnAir2 || l.MenuOCA || l.menuRA || l.menuTCA || l.menuUIR;
  cfg.Airspace = anyAirspace ? 1 : 0;
  cfg.CompMenu = l.MenuCompass ? 1 : 0;
  cfg.LatLonMenu = l.MenuLatLong ? 1 : 0;
  cfg.AiMenu = s.Window.btnAI ? 1 : 0;
  cfg.Scale = s.View.ZoomIndex;
}

}  // namespace orv
