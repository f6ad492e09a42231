#include "app/ProcedureEditor.h"

#include <algorithm>
#include <cmath>

#include "core/FileIo.h"
#include "core/Runtime.h"

namespace orv {

namespace {

// A number as typed: the whole box must be one decimal number.
std::optional<double> Number(std::string_view typed) {
  const std::string t = Trim(typed);
  if (t.empty() || t.size() > 12) return std::nullopt;
  char* end = nullptr;
  const double v = std::strtod(t.c_str(), &end);
  if (end != t.c_str() + t.size() || !std::isfinite(v)) return std::nullopt;
  return v;
}

struct FixAt {
  float Lat = 0;
  float Lon = 0;
};

// The fix: a plan row of that ident first (the hold usually belongs to the
// plan), then a VOR, NDB, intersection, GPS fix, user waypoint or airport.
std::optional<FixAt> FindFix(const ProgramState& s, std::string_view ident) {
  const std::string id = UCase(Trim(ident));
  for (int32_t i = 0; i <= s.Plan.LastRow; ++i) {
    const WaypointRec& w = s.Plan.Waypoints[static_cast<std::size_t>(i)];
    if (UCase(w.Code.Trimmed()) == id) return FixAt{w.Lat, w.Lon};
  }
  auto match = [&](const auto& list) -> std::optional<FixAt> {
    for (const auto& r : list)
      if (UCase(r.Ident.Trimmed()) == id) return FixAt{r.Lat, r.Lon};
    return std::nullopt;
  };
  const NavaidTables& n = s.Db.Navaids;
  if (auto f = match(n.Vors)) return f;
  if (auto f = match(n.Ndbs)) return f;
  if (auto f = match(n.Intersections)) return f;
  if (auto f = match(n.Fixes)) return f;
  if (auto f = match(s.Db.UserWaypoints)) return f;
  for (const AirportRec& a : s.Db.Airports.Airports)
    if (IsAirportSlotUsed(a) && UCase(a.Icao.Trimmed()) == id) return FixAt{a.Lat, a.Lon};
  return std::nullopt;
}

bool WriteLibrary(const AppFolder& app, const std::vector<ProcShape>& shapes, Ui& ui) {
  const std::filesystem::path path = app.Resolve(kProcFile);
  std::error_code ec;
  std::filesystem::create_directories(path.parent_path(), ec);
  if (WriteFileAtomic(path, BuildProcFile(shapes))) return true;
  ui.MsgBox("proc.orv could not be written.");
  return false;
}

}  // namespace

void ProcedureEditor::Load(const ProgramState& s) {
  if (s.Procedure.Set) {
    FromShape(s.Procedure.Shape);
    return;
  }
  if (s.Plan.LastRow >= 1) Fix = s.Plan.Waypoints[static_cast<std::size_t>(s.Plan.LastRow)].Code.Trimmed();
}

void ProcedureEditor::FromShape(const ProcShape& p) {
  Name = p.Name;
  Fix = p.Fix;
  Course = Format(p.InboundCourse, "0");
  Leg = Format(p.LegValue, "0.#");
  Speed = std::to_string(p.Speed);
  Kind = p.Kind;
  RightTurns = p.RightTurns;
  LegInMinutes = p.LegInMinutes;
}

std::optional<ProcShape> ProcedureEditor::Shape(const ProgramState& s, Ui& ui) const {
  ProcShape p;
  p.Name = Trim(Name);
  p.Fix = UCase(Trim(Fix));
  p.Kind = Kind;
  p.RightTurns = RightTurns;
  p.LegInMinutes = LegInMinutes;
  const std::optional<double> course = Number(Course), leg = Number(Leg), speed = Number(Speed);
  std::optional<std::string> why;
  if (!course) why = "Inbound course: must be from 0 to 360.";
  else if (!leg) why = LegInMinutes ? "Leg: must be from 0.5 to 5 minutes." : "Leg: must be from 1 to 20 NM.";
  else if (!speed || *speed != std::floor(*speed) || *speed < 60 || *speed > 400) why = "Speed: must be from 60 to 400 kt.";
  if (!why) {
    p.InboundCourse = static_cast<float>(*course);
    p.LegValue = static_cast<float>(*leg);
    p.Speed = static_cast<int16_t>(*speed);
    const std::optional<FixAt> at = p.Fix.empty() ? std::nullopt : FindFix(s, p.Fix);
    if (!p.Fix.empty() && !at) {
      why = "Fix " + p.Fix + " not found!";
    } else if (at) {
      p.Lat = at->Lat;
      p.Lon = at->Lon;
      p.MagVar = static_cast<float>(MagVarAt(s.Db.MagVar, at->Lat, at->Lon));
    }
  }
  if (!why) why = CheckProcShape(p);
  if (why) {
    ui.MsgBox(*why);
    return std::nullopt;
  }
  return p;
}

bool ProcedureEditor::Draw(ProgramState& s, Ui& ui) const {
  const std::optional<ProcShape> p = Shape(s, ui);
  if (!p) return false;
  s.Procedure.Set = true;
  s.Procedure.Shape = *p;
  s.Procedure.Points = ProcShapePoints(*p);
  s.Window.MenuDisplayProc = true;
  return true;
}

int32_t ProcedureRowOf(const FlightPlan& plan, const DisplayProcedure& proc) {
  if (!proc.Set) return -1;
  for (int32_t i = 0; i <= plan.LastRow; ++i)
    if (UCase(plan.Waypoints[static_cast<std::size_t>(i)].Code.Trimmed()) == UCase(proc.Shape.Fix)) return i;
  return -1;
}

ProcLibrary ReadProcLibrary(const AppFolder& app) {
  ProcLibrary lib;
  const std::filesystem::path path = app.Resolve(kProcFile);
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) return lib;
  const std::optional<std::string> bytes = ReadWholeText(path);
  if (!bytes) {
    lib.Damaged = "proc.orv could not be read.";
    return lib;
  }
  auto read = ParseProcFile(reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size());
  if (auto* why = std::get_if<std::string>(&read)) lib.Damaged = *why;
  else lib.Shapes = std::move(std::get<std::vector<ProcShape>>(read));
  return lib;
}

bool SaveProcShape(const AppFolder& app, const ProcShape& shape, Ui& ui) {
  ProcLibrary lib = ReadProcLibrary(app);
  if (lib.Damaged) {
    ui.MsgBox(*lib.Damaged + " The file is left as it is.");
    return false;
  }
  auto same = std::find_if(lib.Shapes.begin(), lib.Shapes.end(),
                           [&](const ProcShape& p) { return UCase(p.Name) == UCase(Trim(shape.Name)); });
  if (same != lib.Shapes.end()) {
    if (!ui.AskYesNo("Replace the procedure \"" + same->Name + "\"?")) return false;
    *same = shape;
  } else if (static_cast<int32_t>(lib.Shapes.size()) >= kMaxProcShapes) {
    ui.MsgBox("proc.orv holds " + std::to_string(kMaxProcShapes) + " procedures already.");
    return false;
  } else {
    lib.Shapes.push_back(shape);
  }
  return WriteLibrary(app, lib.Shapes, ui);
}

bool DeleteProcShape(const AppFolder& app, std::string_view name, Ui& ui) {
  ProcLibrary lib = ReadProcLibrary(app);
  if (lib.Damaged) {
    ui.MsgBox(*lib.Damaged + " The file is left as it is.");
    return false;
  }
  const auto gone = std::remove_if(lib.Shapes.begin(), lib.Shapes.end(),
                                   [&](const ProcShape& p) { return UCase(p.Name) == UCase(Trim(name)); });
  if (gone == lib.Shapes.end()) return false;
  lib.Shapes.erase(gone, lib.Shapes.end());
  return WriteLibrary(app, lib.Shapes, ui);
}

}  // namespace orv
