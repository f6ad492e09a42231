// EdProc, the procedure editor, without its widgets: the boxes of a holding
// or procedure-turn shape as typed, the fix looked up in the plan and the
// database, the shape made the display procedure that the map draws and the
// autopilot flies; and the named shapes of "\user\proc.orv" behind the
// ProcLoad and ProcSave windows.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/ProgramState.h"
#include "core/Ui.h"
#include "planning/ProcedureShapes.h"

namespace orv {

inline constexpr std::string_view kProcFile = "\\user\\proc.orv";

struct ProcedureEditor {
  // The boxes.
  std::string Name = "HOLD";
  std::string Fix;
  std::string Course;  // inbound, magnetic
  std::string Leg = "1";
  std::string Speed = "180";
  ProcKind Kind = ProcKind::Holding;
  bool RightTurns = true;
  bool LegInMinutes = true;

  // Fills the boxes from the display procedure when there is one, else
  // from the plan's destination, whose ident becomes the fix.
  void Load(const ProgramState& s);
  void FromShape(const ProcShape& shape);
  // The shape the boxes describe, with the fix's position and variation;
  // none, after a message naming the box, when a box is wrong or the fix
  // is not found.
  std::optional<ProcShape> Shape(const ProgramState& s, Ui& ui) const;
  // cmdDraw: the shape becomes the display procedure and the map shows it.
  bool Draw(ProgramState& s, Ui& ui) const;
};

// The plan row whose ident is the shape's fix, -1 when none is.
int32_t ProcedureRowOf(const FlightPlan& plan, const DisplayProcedure& proc);

// proc.orv as read: a missing file is an empty list; a damaged one keeps its
// reason and is never written over.
struct ProcLibrary {
  std::vector<ProcShape> Shapes;
  std::optional<std::string> Damaged;
};
ProcLibrary ReadProcLibrary(const AppFolder& app);
// ProcSave: adds the shape, or replaces the one of the same name when the
// user agrees; the file is written whole through a temporary file. A damaged
// file is shown and left as it is.
bool SaveProcShape(const AppFolder& app, const ProcShape& shape, Ui& ui);
// ProcLoad's Delete.
bool DeleteProcShape(const AppFolder& app, std::string_view name, Ui& ui);

}  // namespace orv
