#include "planning/RouteSegments.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/PlanFile.h"
#include "planning/PlanTokens.h"
#include "planning/WPTable.h"

namespace fs = std::filesystem;

namespace orv {

namespace {

constexpr std::string_view kEol = "\r\n";

int ClampType(int type) { return std::clamp(type, 0, 3); }

bool HasExtension(std::string_view name, std::string_view ext) {
  return name.size() >= ext.size() && LCase(name.substr(name.size() - ext.size())) == LCase(ext);
}

// A description as a file name: characters no file system takes become "_".
std::string FileNameOf(std::string_view description) {
  std::string out = Trim(description);
  for (char& c : out)
    if (c == '\\' || c == '/' || c == ':' || c == '*' || c == '?' || c == '"' || c == '<' || c == '>' || c == '|' ||
        static_cast<unsigned char>(c) < 32)
      c = '_';
  if (out == "." || out == "..") out = "_";
  return out;
}

}  // namespace

std::string_view SegmentFolder(int type) {
  switch (ClampType(type)) {
    case kSegmentDeparture: return "\\Segments\\Departures\\";
    case kSegmentArrival: return "\\Segments\\Arrivals\\";
    case kSegmentEnroute: return "\\Segments\\Enroute\\";
    default: return "\\Segments\\";
  }
}

std::string_view SegmentExtension(int type) {
  switch (ClampType(type)) {
    case kSegmentDeparture: return ".dep";
    case kSegmentArrival: return ".arr";
    case kSegmentEnroute: return ".enr";
    default: return ".sgm";
  }
}

std::string FormatSegmentFile(const std::vector<WaypointRec>& rows, std::string_view runway) {
  std::string t;
  t.reserve(64 + rows.size() * 100);
  t += kSegmentHeader;
  t += kEol;
  t += "Rwy: " + std::string(runway.empty() ? kAnyRunway : runway);
  t += kEol;
  t += "[BEGIN]";
  t += kEol;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    AppendWpLine(t, static_cast<int>(k) + 1, rows[k]);
    t += kEol;
  }
  return t;
}

SegmentFile ParseSegmentFile(std::string_view text) {
  SegmentFile s;
  std::size_t p = text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
  std::size_t eol = text.find_first_of("\r\n", p);
  std::string_view first = text.substr(p, eol == std::string_view::npos ? std::string_view::npos : eol - p);
  if (TrimView(first) != kSegmentHeader) {
    s.Error = "This is no valid segment file";
    return s;
  }
  std::vector<std::string_view> tokens = SplitPlanTokens(text.substr(eol == std::string_view::npos ? text.size() : eol));
  s.Runway = std::string(kAnyRunway);
  std::size_t i = 0;
  while (i < tokens.size()) {
    std::string_view t = tokens[i];
    if (t.substr(0, 3) == "WP=") {
      if (static_cast<int>(s.Rows.size()) >= kMaxSegmentRows) {
        s.Error = "This segment holds more than " + std::to_string(kMaxSegmentRows) + " waypoints!";
        return s;
      }
      WaypointRec w;
      std::string err = ReadWpFields(tokens, i, w);
      if (!err.empty()) {
        s.Error = err;
        return s;
      }
      s.Rows.push_back(w);
      continue;
    }
    if (t.substr(0, 4) == "Rwy:") s.Runway = Trim(t.substr(4));
    ++i;
  }
  if (s.Runway.empty()) s.Runway = std::string(kAnyRunway);
  return s;
}

std::string DepartureRunway(const FlightPlan& plan) {
  if (Trim(plan.DepartType) == "Gate") return std::string(kAnyRunway);
  std::string id = Trim(plan.DepartID);
  int cut = InStr(id, "  (");
  if (cut > 0) id = Left(id, cut - 1);
  if (UCase(Left(id, 4)) == "RWY ") id = Mid(id, 5);
  id = Trim(id);
  return id.empty() ? std::string(kAnyRunway) : UCase(id);
}

void frmSaveSegment::Load(const FlightPlan& plan) {
  lstFpWaypoints.clear();
  int last = std::clamp<int>(plan.LastRow, 0, kMaxPlanRow);
  if (plan.LastRow >= 1) {
    for (int r = 0; r <= last; ++r) {
      const WaypointRec& w = plan.Waypoints[static_cast<std::size_t>(r)];
      lstFpWaypoints.push_back(Format(r, "00") + "  " + w.Code.Str() + "  " + w.Name.Str());
    }
  }
  lstFpSelected.assign(lstFpWaypoints.size(), false);
  SetSegmentType(optSegmentType);
}

void frmSaveSegment::SetSegmentType(int type) {
  optSegmentType = ClampType(type);
  lstSegments.clear();
  lstSegmentsIndex = -1;
  std::error_code ec;
  fs::path folder = app_.Resolve(SegmentFolder(optSegmentType));
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    if (it->is_regular_file(ec) && HasExtension(name, SegmentExtension(optSegmentType)))
      lstSegments.push_back(name.substr(0, name.size() - SegmentExtension(optSegmentType).size()));
  }
  std::sort(lstSegments.begin(), lstSegments.end());
}

std::string frmSaveSegment::SegmentPath(int index) const {
  if (index < 0 || index >= static_cast<int>(lstSegments.size())) return {};
  return (app_.Resolve(SegmentFolder(optSegmentType)) /
          (lstSegments[static_cast<std::size_t>(index)] + std::string(SegmentExtension(optSegmentType))))
      .string();
}

bool frmSaveSegment::Save(Ui& ui, const FlightPlan& plan) {
  std::vector<WaypointRec> rows;
  int last = std::clamp<int>(plan.LastRow, 0, kMaxPlanRow);
  for (int r = 1; r < last && r < static_cast<int>(lstFpSelected.size()); ++r)
    if (lstFpSelected[static_cast<std::size_t>(r)]) rows.push_back(plan.Waypoints[static_cast<std::size_t>(r)]);
  if (rows.empty()) {
    ui.MsgBox("You have to select waypoints for the segment!");
    return false;
  }
  std::string name = FileNameOf(txtDescription);
  if (name.empty()) {
    ui.MsgBox("You have to specify a description!");
    return false;
  }
  fs::path folder = app_.Resolve(SegmentFolder(optSegmentType));
  std::error_code ec;
  fs::create_directories(folder, ec);
  fs::path path = folder / (name + std::string(SegmentExtension(optSegmentType)));
  if (fs::exists(path, ec) && !ui.AskYesNo(path.string() + " already exists.\r\nDo you want to replace it?"))
    return false;
  std::string runway = optSegmentType == kSegmentDeparture ? DepartureRunway(plan) : std::string(kAnyRunway);
  if (!SaveUserFile(ui, path.string(), FormatSegmentFile(rows, runway))) return false;
  SetSegmentType(optSegmentType);
  return true;
}

bool frmSaveSegment::Open(Ui& ui, PlanEditor& editor) {
  FlightPlan& plan = editor.Plan();
  if (plan.LastRow < 1) {
    ui.MsgBox("Select the departure and destination airports first by pressing the button <Select Airport>!");
    return false;
  }
  int selected = -1;
  for (std::size_t k = 0; k < lstFpSelected.size(); ++k)
    if (lstFpSelected[k]) {
      selected = static_cast<int>(k);
      break;
    }
  if (selected >= plan.LastRow) {
    ui.MsgBox("you cannot select the final waypoint for insertion!");
    return false;
  }
  std::string path = SegmentPath(lstSegmentsIndex);
  if (path.empty()) return false;
  std::optional<std::string> text = ReadWholeText(path);
  if (!text) {
    ui.MsgBox("Could not read " + path + "!");
    return false;
  }
  SegmentFile seg = ParseSegmentFile(*text);
  if (!seg.Error.empty()) {
    ui.MsgBox(seg.Error);
    return false;
  }
  if (seg.Rows.empty()) return false;
  if (plan.LastRow + static_cast<int>(seg.Rows.size()) > kMaxPlanRow) {
    ui.MsgBox("The flight plan cannot take " + std::to_string(seg.Rows.size()) + " more waypoints!");
    return false;
  }
  // A departure stored for one runway is asked about when the plan leaves
  // from another; "ANY" fits every runway.
  if (optSegmentType == kSegmentDeparture && UCase(seg.Runway) != kAnyRunway) {
    std::string runway = DepartureRunway(plan);
    if (runway != UCase(seg.Runway) &&
        !ui.AskYesNo("This departure was saved for runway " + seg.Runway + ".\r\nInsert it anyway?"))
      return false;
  }
  int at = selected;
  if (at < 0) {
    at = optSegmentType == kSegmentDeparture ? plan.SidRows : plan.LastRow - plan.StarRows - 1;
    at = std::clamp(at, 0, plan.LastRow - 1);
  }
  int from = at;
  for (WaypointRec w : seg.Rows) {
    w.Origin = kOriginEnroute;
    if (!editor.InsertWaypoint(at, w, false)) break;
    ++at;
  }
  editor.RefreshRows(from);
  editor.RefreshTotals();
  return true;
}

bool frmSaveSegment::DeleteKey(Ui& ui) {
  std::string path = SegmentPath(lstSegmentsIndex);
  if (path.empty()) return false;
  if (!ui.AskYesNo("Are you sure you want to delete this File?")) return false;
  std::error_code ec;
  fs::remove(path, ec);
  SetSegmentType(optSegmentType);
  return !ec;
}

}  // namespace orv
