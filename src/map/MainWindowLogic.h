// The main window's own rules, apart from the drawing: the layer toggles
// with their mirrored toolbar buttons and menu entries, the keyboard, the
// mouse wheel, the window size limits and reduced mode, and the toggle states
// the settings file keeps between runs.
//
// A paired toggle has one truth, the button's value in MapLayers; the menu's
// check mark is only ever a copy of it (MenuChecked). Whichever of the two the
// user clicks, the window asks MenuChecked afterwards, so the two can never
// disagree.
#pragma once

#include <string>
#include <string_view>

#include "core/Settings.h"
#include "core/Ui.h"
#include "map/RenderPass.h"
#include "map/Viewport.h"
#include "planning/WPTable.h"

namespace orv {

// The toggles of the main window that MapLayers and ViewState do not hold.
struct WindowToggles {
  bool MenuOnTop = false;
  bool MenuDisplayProc = false;
  bool MenuShowPlan = false;
  bool btnAI = false;  // MenuAi: AI traffic
  bool ReducedWindow = false;
  bool ToggleBar = true;  // pnlToggleButtons shown
  bool menuExtTable = false;  // Extended Table: the plan table's live columns open
  bool menuShowCoords = false;  // Show Coordinates: positions in the table's Name column
  // The AI Info menus: which label lines the traffic shows, and the TCAS beep.
  bool menuAIATCID = true;
  bool menuAISpeedAlt = true;
  bool menuAIAirports = false;
  bool menuATCIDGround = true;
  bool menuAIDestination = false;
  bool menuTCASSound = true;
  bool menuCheckControlzone = false;  // the plan's rows through control zones marked
};

// The window around the logic: the view's host plus what the keys and
// toggles reach beyond the map.
class MainWindowHost : public ViewHost {
public:
  // Esc: measuring off, the manual waypoint field and pick list reset and
  // hidden, the table highlight and the course label hidden.
  virtual void ClearSelection() = 0;
  // Always on Top changed; on means topmost.
  virtual void SetOnTop(bool on) = 0;
  // Show Plan changed.
  virtual void ShowPlan(bool on) = 0;
};

// Everything one toggle click may change.
struct MainWindowState {
  MapLayers& Layers;
  ViewState& View;
  WindowToggles& Window;
  // The plan table whose columns Extended Table opens; nullptr: none.
  WPTable* Table = nullptr;
};

// Extended Table on or off (the menu entry, or the takeoff of live
// tracking, which opens it): the check mark and the table's widths.
void SetExtendedTable(MainWindowState& s, bool on);

// The switch behind a toolbar button name ("btnAP", "btnFreq", ...), or nullptr.
bool* ButtonSwitch(MainWindowState& s, std::string_view button);

// The check mark a toggle menu entry shows, read from the switch it copies.
// False for an entry that is not a toggle the window knows.
bool MenuChecked(const MainWindowState& s, std::string_view menuName);
// True when the entry is a toggle this logic owns (MenuChecked answers it).
bool IsWindowToggle(std::string_view menuName);

// A click on a toolbar button whose value is now `value`: FocusMap, the value
// becomes the truth (the menu copies it), redraw if the map is ready.
// False for an unknown button.
bool ButtonClicked(MainWindowState& s, std::string_view button, bool value, MainWindowHost& host);

// A click on a toggle menu entry. A paired entry flips its button, which then
// acts as if clicked; an airspace class entry also sets its class's records
// visible or hidden before the redraw. False for an entry that is not a
// toggle of this logic (the caller handles it).
bool MenuToggleClicked(MainWindowState& s, std::string_view menuName, MainWindowHost& host);

// The zoom step entries of the zoom menu ("Menu3NM" ...): the zoom command
// with autozoom cleared. False for any other name.
bool ZoomMenuClicked(ViewState& v, std::string_view menuName, MainWindowHost& host, Ui& ui);

// The form's key handler. True when the key was handled.
bool MapKeyDown(ViewState& v, int keyCode, MainWindowHost& host, Ui& ui);

// A mouse wheel step; does nothing when the mouse zoom option (MZOOM) is off.
void MapWheel(ViewState& v, bool mouseZoom, int delta, MainWindowHost& host, Ui& ui);

// ------------------------------------------------------------ window size

// Window size limits in twips.
inline constexpr int kReducedMinHeight = 3825;
inline constexpr int kReducedMinWidth = 4065;
inline constexpr int kNormalMinHeight = 4980;
inline constexpr int kNormalMinWidth = 6945;
// The extra height the normal layout keeps below the surface, and the one
// reduced mode takes off the window along with the bars.
inline constexpr int kLayoutMargin = 800;
inline constexpr int kReducedShrink = 400;

inline constexpr std::string_view kReducedMaximiseMessage = "You cannot maximize the reduced window!";

enum class WindowShow { Normal, Minimised, Maximised };

struct WindowGeometry {
  WindowShow Show = WindowShow::Normal;
  int Width = 0;   // twips
  int Height = 0;
};

// What a resize asks of the window.
struct ResizeOutcome {
  bool Ignore = false;        // minimised: nothing else applies
  bool Restore = false;       // undo a maximise
  int Width = 0;              // the window's size after the limits
  int Height = 0;
  bool HidePlan = false;      // the plan goes (through MenuShowPlan) before the width snaps
  int MapHeight = 0;          // Map.Height
  int PlanLeftMax = 0;        // the plan panel's left edge is at most this
};

// The resize event: the reduced-mode maximise (with its message), the size
// limits and the surface's height. barHeight and statusHeight are the heights
// of pnlButton and the status line.
ResizeOutcome ResizeWindow(const WindowGeometry& g, bool reduced, bool planShowing, int barHeight,
                           int statusHeight, Ui& ui);

// The plan panel's left edge: centred on the surface but kept clear of the
// toggle panel.
int PlanPanelLeft(double mapScaleWidth, int mapHeight, int panelWidth);

// ------------------------------------------------------------ settings

// Load: the toggle states the settings keep (BUTTON the toggle panel,
// AIRSPACE the airspace classes, COMPMENU the compass rose, LATLONMENU the
// grid, AIMENU AI traffic, MZOOM is read where the wheel is handled).
void LoadWindowToggles(const Settings& cfg, MainWindowState& s);
// Unload: the same keys written back.
void SaveWindowToggles(const MainWindowState& s, Settings& cfg);

}  // namespace orv
