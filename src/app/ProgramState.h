// The program's one state: everything the start-up loads and the windows
// show, created once and passed by reference to whoever needs it. The Qt
// program and orvanta-cli both build it through LoadProgram, so that a menu
// entry and a command that do the same thing work on the same data.
#pragma once

#include <cstdint>
#include <string>

#include "app/OnlineSession.h"
#include "app/PlanEditing.h"
#include "app/SimSession.h"
#include "app/TraceSession.h"
#include "core/AppState.h"
#include "database/NavDatabase.h"
#include "map/MainWindowLogic.h"
#include "map/MapLayer.h"
#include "map/RenderPass.h"
#include "map/Viewport.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/ProcedureShapes.h"
#include "planning/SaveRoute.h"
#include "planning/WPTable.h"
#include "simlink/ZoneMonitor.h"

namespace orv {

struct ProgramState {
  explicit ProgramState(std::string appDir) : Core(AppFolder(std::move(appDir))) {}
  ProgramState(const ProgramState&) = delete;
  ProgramState& operator=(const ProgramState&) = delete;

  AppState Core;            // settings, start-up scalars, name tables
  NavDatabase Db;           // the loaded navigation database
  AircraftDb Aircraft;      // \user\aircraft.orv and the selected aircraft
  int16_t AircraftNumber = 0;

  FlightPlan Plan;          // the one plan in memory
  PlanPanel Panel;          // its table and totals on the main window
  PlanEditState Edit;       // the panel's pick list, manual field and airport choice
  PlanFileState Files;      // the file the plan came from or went to last
  SaveRoute SaveRouteForm;  // the Save As window's controls

  ViewState View;           // centre, zoom, projection
  MapLayers Layers;         // the map's toggles
  WindowToggles Window;     // the main window's other toggles
  MapHighlight Highlight;   // the object the hover or a search picked
  DisplayProcedure Procedure;  // the procedure editor's shape, drawn with MenuDisplayProc
  MapOverlays Overlays;     // inputs of the live layers
  MapLayerRegistry Registry;  // the program's own layers in the render pass

  SimSession Sim;
  TraceSession Trace;       // the recorded flight and Flight Analysis
  OnlineSession Online;
  ZoneCheck ZoneMarks;      // the last control zone check of the plan (menuCheckControlzone)

  // The view of the toggles that one click may change.
  MainWindowState Toggles() { return MainWindowState{Layers, View, Window, &Panel.Table}; }
};

}  // namespace orv
