#include "planning/StoredProcedures.h"

#include <algorithm>
#include <map>

#include "core/Runtime.h"
#include "core/Ui.h"
#include "database/ByteReader.h"
#include "database/MagVar.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookup.h"

namespace orv {

namespace {

ProcPointRec EndPoint(const std::string& code, float lat, float lon) {
  ProcPointRec p;
  p.Code.Assign(code);
  p.Name.Assign(code);
  p.Lat = lat;
  p.Lon = lon;
  return p;
}

void ReadPoint(ByteReader& r, ProcPointRec& p) {
  r.Text(p.Kind, 5);
  r.Text(p.Code, 10);
  r.Text(p.Name, 20);
  p.Lat = r.F32();
  p.Lon = r.F32();
  std::string_view extra = r.Raw(p.Extra.size());
  if (extra.size() == p.Extra.size()) std::copy(extra.begin(), extra.end(), p.Extra.begin());
}

}  // namespace

ProcedureFileRead ReadProcedures(std::span<const uint8_t> file, std::string_view airport,
                                 const ProcedureEnds& ends, std::string_view fileName) {
  ProcedureFileRead out;
  const std::string wanted = UCase(Trim(airport));
  // The file of no procedures is one blank head: a blank code is no airport.
  if (wanted.empty()) return out;
  ByteReader r(file.data(), file.size());
  while (!r.AtEnd()) {
    const std::size_t blockStart = r.Pos();
    if (!r.Has(kProcHeadSize)) {
      // A few stray bytes after the last block would be no procedure at all;
      // inside the airport's blocks they mean the file was cut.
      if (out.Found) out.Error = "The file " + std::string(fileName) + " ends inside a procedure.";
      break;
    }
    ProcedureRec head;
    r.Text(head.Airport, 10);
    r.Text(head.Runway, 5);
    r.Text(head.Name, 40);
    head.PointCount = r.U8();
    const std::size_t pointBytes = static_cast<std::size_t>(head.PointCount) * kProcPointSize;
    if (UCase(head.Airport.Trimmed()) != wanted) {
      // The blocks of an airport stand together: after them nothing more is ours.
      if (out.Found) break;
      if (!r.Has(pointBytes)) break;
      r.Skip(pointBytes);
      continue;
    }
    out.Found = true;
    if (!r.Has(pointBytes)) {
      out.Error = "The file " + std::string(fileName) + " ends inside the procedure " + head.Name.Str() +
                  " (byte " + std::to_string(blockStart) + ").";
      break;
    }
    if (out.Procedures.size() >= kMaxProcedures) {
      out.Error = "The file " + std::string(fileName) + " holds more than " + std::to_string(kMaxProcedures) +
                  " procedures for " + wanted + "; the first " + std::to_string(kMaxProcedures) + " are offered.";
      break;
    }
    head.Points.resize(static_cast<std::size_t>(head.PointCount) + 2);
    head.Points.front() = EndPoint(ends.DepCode, ends.DepLat, ends.DepLon);
    for (std::size_t i = 1; i <= head.PointCount; ++i) ReadPoint(r, head.Points[i]);
    head.Points.back() = EndPoint(ends.DestCode, ends.DestLat, ends.DestLon);
    out.Procedures.push_back(std::move(head));
  }
  return out;
}

bool HasProcedures(std::span<const uint8_t> file, std::string_view airport) {
  const std::string wanted = UCase(Trim(airport));
  if (wanted.empty()) return false;
  ByteReader r(file.data(), file.size());
  while (r.Has(kProcHeadSize)) {
    std::string_view code = r.Raw(10);
    r.Skip(45);
    const std::size_t pointBytes = static_cast<std::size_t>(r.U8()) * kProcPointSize;
    if (UCase(Trim(code)) == wanted) return true;
    if (!r.Skip(pointBytes)) break;
  }
  return false;
}

std::string ProcedureRunwayText(const ProcedureRec& p) {
  if (p.Runway.Trimmed() == "00") return "Any Rwy";
  return "Rwy " + p.Runway.Str();
}

std::string ProcedureListText(const ProcedureRec& p) { return p.Name.Str() + "#" + ProcedureRunwayText(p); }

// ---------------------------------------------------------------- the plan

void menuDeleteSid(PlanEditor& editor) {
  FlightPlan& plan = editor.Plan();
  // Only rows that really are the SID's: a count out of step with the rows
  // never takes an enroute row with it.
  int removed = 0;
  while (removed < plan.SidRows && plan.LastRow > 1 && plan.Waypoints[1].Origin == kOriginSid) {
    editor.DeleteWaypoint(1, false);
    ++removed;
  }
  plan.SidRows = 0;
  if (plan.LastRow < 1) return;
  if (plan.CurrentRow > plan.LastRow) plan.CurrentRow = -1;
  if (removed > 0) {
    editor.RefreshRows(0);
    editor.RefreshTotals();
  }
}

void menuDeleteStar(PlanEditor& editor) {
  FlightPlan& plan = editor.Plan();
  int removed = 0;
  while (removed < plan.StarRows && plan.LastRow > 1 &&
         plan.Waypoints[static_cast<std::size_t>(plan.LastRow) - 1].Origin == kOriginStar) {
    editor.DeleteWaypoint(plan.LastRow - 1, false);
    ++removed;
  }
  plan.StarRows = 0;
  if (plan.LastRow < 1) return;
  if (plan.CurrentRow > plan.LastRow) plan.CurrentRow = -1;
  if (removed > 0) {
    editor.RefreshRows(0);
    editor.RefreshTotals();
  }
}

bool InsertProcedure(PlanEditor& editor, const ProcedureRec& p, bool sid, const MagVarGrid* grid) {
  FlightPlan& plan = editor.Plan();
  if (plan.LastRow < 1 || p.Points.size() < 2) return false;
  const int count = static_cast<int>(p.Points.size()) - 2;
  if (plan.LastRow + count > kMaxPlanRow) return false;
  if (sid) menuDeleteSid(editor);
  else menuDeleteStar(editor);
  int index = sid ? 0 : plan.LastRow - 1;
  for (int i = 1; i <= count; ++i) {
    const ProcPointRec& pt = p.Points[static_cast<std::size_t>(i)];
    WaypointRec w;
    w.Kind = pt.Kind;
    w.Code.Assign(UCase(pt.Code.Trimmed()));
    w.Name.Assign(pt.Name.Trimmed());
    w.Lat = pt.Lat;
    w.Lon = pt.Lon;
    w.DbIndex = -1;
    if (grid && grid->IsOpen()) w.MagVar = CSng(MagVarAt(*grid, pt.Lat, pt.Lon));
    w.Origin = sid ? kOriginSid : kOriginStar;
    if (!editor.InsertWaypoint(index, w, false)) break;
    ++index;
    if (sid) ++plan.SidRows;
    else ++plan.StarRows;
  }
  editor.RefreshRows(0);
  editor.RefreshTotals();
  return true;
}

// ---------------------------------------------------------------- the window

bool LoadSID::Load(std::span<const uint8_t> file, const FlightPlan& plan, const NavLookup& nav) {
  lstSidStar.clear();
  tvwSidStar.clear();
  procedures_.clear();
  ListIndex = TreeIndex = selected_ = -1;
  lblSidStarName.clear();
  Caption = sid_ ? "Open SID" : "Open STAR";
  const std::string kind = sid_ ? "SID" : "STAR";
  const int airport = sid_ ? plan.DepartureAirport : plan.DestinationAirport;
  if (plan.LastRow < 1 || airport < 0) {
    ui_.MsgBox("no " + kind + " available for this airport!");
    return false;
  }
  airportCode_ = UCase(Trim(nav.AirportIcao(airport)));
  lblAirportRwy = airportCode_;

  ProcedureEnds ends;
  ends.DepCode = plan.Waypoints[0].Code.Str();
  ends.DepLat = plan.Waypoints[0].Lat;
  ends.DepLon = plan.Waypoints[0].Lon;
  const WaypointRec& dest = plan.Waypoints[static_cast<std::size_t>(plan.LastRow)];
  ends.DestCode = dest.Code.Str();
  ends.DestLat = dest.Lat;
  ends.DestLon = dest.Lon;
  ProcedureFileRead read = ReadProcedures(file, airportCode_, ends, sid_ ? "sid.orv" : "star.orv");
  if (!read.Error.empty()) ui_.MsgBox(read.Error);
  procedures_ = std::move(read.Procedures);
  if (procedures_.empty()) {
    ui_.MsgBox("no " + kind + " available for this airport!");
    return false;
  }

  lstSidStar.reserve(procedures_.size());
  for (std::size_t i = 0; i < procedures_.size(); ++i)
    lstSidStar.push_back({ProcedureListText(procedures_[i]), static_cast<int32_t>(i)});

  // The tree: one node per runway in the order the file gives them, under
  // it the procedures for it with the way they lead.
  std::map<std::string, int> runwayNode;
  std::vector<std::vector<int>> children;
  std::vector<std::string> runwayOrder;
  for (std::size_t i = 0; i < procedures_.size(); ++i) {
    std::string rwy = ProcedureRunwayText(procedures_[i]);
    auto [it, added] = runwayNode.emplace(rwy, static_cast<int>(runwayOrder.size()));
    if (added) {
      runwayOrder.push_back(rwy);
      children.emplace_back();
    }
    children[static_cast<std::size_t>(it->second)].push_back(static_cast<int>(i));
  }
  for (std::size_t k = 0; k < runwayOrder.size(); ++k) {
    const int parent = static_cast<int>(tvwSidStar.size());
    tvwSidStar.push_back({airportCode_ + " - " + runwayOrder[k], -1, -1});
    for (int i : children[k]) {
      const ProcedureRec& p = procedures_[static_cast<std::size_t>(i)];
      std::string text = p.Name.Str();
      if (p.PointCount > 0)
        text += " - " + p.Points[1].Code.Str() + " - " + p.Points[p.PointCount].Code.Str();
      tvwSidStar.push_back({std::move(text), parent, i});
    }
  }
  Visible = true;
  return true;
}

void LoadSID::Select(int procedure) {
  if (procedure < 0 || procedure >= static_cast<int>(procedures_.size())) return;
  selected_ = procedure;
  ListIndex = procedure;
  for (std::size_t n = 0; n < tvwSidStar.size(); ++n)
    if (tvwSidStar[n].Procedure == procedure) TreeIndex = static_cast<int>(n);
  const ProcedureRec& p = procedures_[static_cast<std::size_t>(procedure)];
  lblSidStarName = p.Name.Str();
  lblAirportRwy = airportCode_ + " - " + ProcedureRunwayText(p);
}

void LoadSID::SelectList(int index) {
  if (index < 0 || index >= static_cast<int>(lstSidStar.size())) return;
  Select(lstSidStar[static_cast<std::size_t>(index)].ItemData);
}

void LoadSID::SelectTree(int node) {
  if (node < 0 || node >= static_cast<int>(tvwSidStar.size())) return;
  TreeIndex = node;
  if (tvwSidStar[static_cast<std::size_t>(node)].Procedure >= 0) Select(tvwSidStar[static_cast<std::size_t>(node)].Procedure);
}

void LoadSID::KeyUp() {
  for (int n = TreeIndex - 1; n >= 0; --n)
    if (tvwSidStar[static_cast<std::size_t>(n)].Procedure >= 0) return SelectTree(n);
}

void LoadSID::KeyDown() {
  for (int n = TreeIndex + 1; n < static_cast<int>(tvwSidStar.size()); ++n)
    if (tvwSidStar[static_cast<std::size_t>(n)].Procedure >= 0) return SelectTree(n);
}

void LoadSID::cmdZoom() { PreviewRange = std::max(2.5, PreviewRange / 2); }
void LoadSID::cmdUnzoom() { PreviewRange = std::min(320.0, PreviewRange * 2); }

bool LoadSID::OKButton(PlanEditor& editor, const MagVarGrid* grid) {
  if (selected_ < 0) return false;
  if (!InsertProcedure(editor, procedures_[static_cast<std::size_t>(selected_)], sid_, grid)) return false;
  Visible = false;
  return true;
}

}  // namespace orv
