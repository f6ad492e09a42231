// The main window's plan editing: the Flight Plan menu's editing entries, the
// plan panel's lists and field, the map mouse rules that insert rows or
// choose the airports of a new plan, and the bottom button bar.
#include "app/MainWindowController.h"

#include <array>

#include "app/PlanEditing.h"
#include "map/MainMenu.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"

namespace orv {

namespace {

constexpr std::array<std::string_view, 3> kPlanEditMenus = {"MenuNewFP", "MenuDeleteEnrouteWPs", "MenuAddWPs"};

bool IsRouteButton(std::string_view name) { return name == "cmdCreateFP" || name == "cmdLoAlt" || name == "cmdHiAlt"; }

}  // namespace

bool MainWindowController::IsPlanEditMenu(std::string_view name) {
  for (std::string_view m : kPlanEditMenus)
    if (m == name) return true;
  return false;
}

void MainWindowController::AfterPlanEdit() {
  view_.ShowPlanEdit();
  view_.RefreshPlanTable();
  view_.DrawMap();
}

bool MainWindowController::PlanEditMenu(std::string_view name) {
  if (!IsPlanEditMenu(name)) return false;
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
  if (name == "MenuNewFP") {
    // A new plan starts empty and waits for its two airports, chosen by a
    // right click on the map (or in the airport selection).
    editor.ClearFlightPlan();
    ResetPlanSelection(s_);
    s_.Panel.DepList.clear();
    s_.Panel.RouteLabel.clear();
    s_.Edit.Pick = AirportPick::Departure;
    if (!s_.Window.MenuShowPlan) Menu("MenuShowPlan");
    view_.SetMapStatus(kStatusHint, kPickDepartureHint);
  } else if (name == "MenuDeleteEnrouteWPs") {
    if (s_.Plan.LastRow < 1) {
      ui_.Beep();  // no plan: nothing between the airports
      return true;
    }
    editor.MenuDeleteEnrouteWPs(ui_);
  } else if (name == "MenuAddWPs") {
    if (s_.Plan.LastRow < 1) {
      ui_.Beep();
      return true;
    }
    RouteSearch search;
    RouteBuilder builder(editor, s_.Aircraft.Current, s_.Db.Navaids, search, ui_);
    builder.AddAirwayWaypoints(s_.Layers.btnJet, s_.Layers.btnVictor);
  }
  AfterPlanEdit();
  return true;
}

bool MainWindowController::ManualWaypointEnter(std::string_view typed) {
  const bool done = orv::ManualWaypointEnter(s_, ui_, typed);
  AfterPlanEdit();
  view_.FocusMap();
  return done;
}

bool MainWindowController::PickWaypoint(int index) {
  const bool inserted = PickListChoose(s_, index);
  AfterPlanEdit();
  view_.FocusMap();
  return inserted;
}

bool MainWindowController::ChooseDeparture(int index) {
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  const bool chosen = PlanEditor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav).ChooseDeparture(index);
  view_.FocusMap();
  return chosen;
}

void MainWindowController::SelectRow(int row, int rangeStart) {
  s_.Plan.CurrentRow = row >= 0 && row <= s_.Plan.LastRow ? row : -1;
  s_.Edit.RangeStart = rangeStart;
}

bool MainWindowController::PlanMouseDown(int button, double x, double y) {
  if (button != 2 || !s_.Window.MenuShowPlan) return false;
  if (s_.Edit.Pick != AirportPick::None) {
    if (!PickAirportAt(s_, x, y)) return true;
    view_.SetMapStatus(kStatusHint, s_.Edit.Pick == AirportPick::Destination ? kPickDestinationHint : "");
    if (s_.Plan.DepartureAirport >= 0 && s_.Plan.DestinationAirport >= 0 && s_.Edit.Pick == AirportPick::None) {
      const AirportRec& a = s_.Db.Airports.Airports[static_cast<std::size_t>(s_.Plan.DepartureAirport)];
      CentreOn(a.Lat, a.Lon);
    }
    AfterPlanEdit();
    return true;
  }
  if (!s_.Edit.TableInsertion) return false;
  if (s_.Plan.CurrentRow < 0 || s_.Plan.CurrentRow > s_.Plan.LastRow || s_.Plan.LastRow < 1) {
    ui_.MsgBox(kNoInsertionPoint, MsgStyle::Exclamation, kAppTitle);
    return true;
  }
  InsertAtClick(s_, x, y);
  view_.FocusMap();
  AfterPlanEdit();
  return true;
}

bool MainWindowController::BarButtonEnabled(std::string_view name) const {
  for (const BarButtonEntry& b : BottomBarButtons()) {
    if (b.name != name) continue;
    if (b.menu.empty()) return true;  // cmdLayout: a window of its own
    if (IsRouteButton(name) && (s_.Plan.DepartureAirport < 0 || s_.Plan.DestinationAirport < 0)) return false;
    return MenuAvailable(b.menu);
  }
  return false;
}

}  // namespace orv
