#include "planning/Aircraft.h"

#include <algorithm>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/FlightPlan.h"
#include "planning/WPTable.h"

namespace orv {

// ---------------------------------------------------------------- the file

namespace {

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

// One value as the runtime's sequential input reads it: a quoted text runs to
// its closing quote (or the line's end), anything else to the next comma or
// line end with its blanks trimmed. Empty lines between values are skipped.
bool NextValue(std::string_view text, std::size_t& pos, std::string_view& value) {
  std::size_t n = text.size();
  while (pos < n && (text[pos] == ' ' || text[pos] == '\t' || IsLineEnd(text[pos]))) ++pos;
  if (pos >= n) return false;
  if (text[pos] == '"') {
    std::size_t start = ++pos;
    while (pos < n && text[pos] != '"' && !IsLineEnd(text[pos])) ++pos;
    value = text.substr(start, pos - start);
    // Whatever stands between the closing quote and the delimiter is dropped.
    while (pos < n && text[pos] != ',' && !IsLineEnd(text[pos])) ++pos;
  } else {
    std::size_t start = pos;
    while (pos < n && text[pos] != ',' && !IsLineEnd(text[pos])) ++pos;
    std::size_t end = pos;
    while (end > start && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
    value = text.substr(start, end - start);
  }
  if (pos < n && text[pos] == ',') ++pos;
  return true;
}

void SetField(AircraftRec& a, int field, std::string_view value) {
  if (field == 1) {
    // A quote inside an unquoted name could not be written back.
    a.AircraftName = CleanAircraftName(value);
    return;
  }
  if (field == 0) {
    a.Id = CInt(Val(value));
    return;
  }
  int32_t v = CLng(Val(value));
  switch (field) {
    case 2: a.MaxFuel = v; break;
    case 3: a.Ceiling = v; break;
    case 4: a.MaxWeight = v; break;
    case 5: a.EmptyWeight = v; break;
    case 6: a.LoadWeight = v; break;
    case 7: a.ClimbRate = v; break;
    case 8: a.ClimbSpeed = v; break;
    case 9: a.DescentRate = v; break;
    case 10: a.DescentSpeed = v; break;
    case 11: a.CruiseSpeed = v; break;
    case 12: a.CruiseLevel = v; break;
    case 13: a.ApproachSpeed = v; break;
    case 14: a.MinRunway = v; break;
    default: a.MaxRange = v; break;
  }
}

}  // namespace

AircraftFile ParseAircraftFile(std::string_view text, std::string_view fileName) {
  AircraftFile out;
  // A record takes at least 16 characters (15 commas and a line end); the
  // list is sized once for what the file can hold.
  out.Aircraft.reserve(std::min(kMaxAircraft, text.size() / kAircraftFields + 1));
  std::size_t pos = 0;
  std::string_view value;
  AircraftRec rec;
  int field = 0;
  while (NextValue(text, pos, value)) {
    if (field == 0 && out.Aircraft.size() >= kMaxAircraft) {
      out.Error = std::string(fileName) + ": more than " + std::to_string(kMaxAircraft) +
                  " aircraft; record " + std::to_string(kMaxAircraft + 1) + " and those after it are ignored.";
      return out;
    }
    SetField(rec, field, value);
    if (++field == kAircraftFields) {
      out.Aircraft.push_back(std::move(rec));
      rec = AircraftRec();
      field = 0;
    }
  }
  if (field != 0)
    out.Error = std::string(fileName) + ": aircraft record " + std::to_string(out.Aircraft.size() + 1) +
                " is incomplete (" + std::to_string(field) + " of " + std::to_string(kAircraftFields) + " values).";
  return out;
}

std::string CleanAircraftName(std::string_view name) {
  std::string s(name);
  for (char& c : s) {
    if (c == '"') c = '\'';
    else if (IsLineEnd(c)) c = ' ';
  }
  return s;
}

std::string FormatAircraftFile(const std::vector<AircraftRec>& list) {
  std::string out;
  out.reserve(list.size() * 96);
  for (const AircraftRec& a : list) {
    out += std::to_string(a.Id);
    out += ",\"" + CleanAircraftName(a.AircraftName) + "\"";
    for (int32_t v : {a.MaxFuel, a.Ceiling, a.MaxWeight, a.EmptyWeight, a.LoadWeight, a.ClimbRate, a.ClimbSpeed,
                      a.DescentRate, a.DescentSpeed, a.CruiseSpeed, a.CruiseLevel, a.ApproachSpeed, a.MinRunway,
                      a.MaxRange}) {
      out += ',';
      out += std::to_string(v);
    }
    out += "\r\n";
  }
  return out;
}

AircraftFile ReadAircraftFile(const std::filesystem::path& path) {
  std::optional<std::string> text = ReadWholeText(path);
  if (!text) {
    AircraftFile out;
    out.Error = "Cannot open the aircraft file " + path.string() + ".";
    return out;
  }
  return ParseAircraftFile(*text, path.string());
}

bool WriteAircraftFile(const std::filesystem::path& path, const std::vector<AircraftRec>& list) {
  return WriteFileAtomic(path, FormatAircraftFile(list));
}

int32_t MinRunwayForApproachSpeed(int32_t approachSpeed) {
  if (approachSpeed < 101) return 3500;
  if (approachSpeed < 121) return 5000;
  if (approachSpeed < 141) return 7000;
  if (approachSpeed > 160) return 10000;
  return 8500;
}

int FindStartAircraft(const std::vector<AircraftRec>& list, int16_t& savedNumber) {
  if (list.empty()) return -1;
  for (std::size_t i = 0; i < list.size(); ++i)
    if (list[i].Id == savedNumber) return static_cast<int>(i);
  savedNumber = 0;
  for (std::size_t i = 0; i < list.size(); ++i)
    if (list[i].Id == 0) return static_cast<int>(i);
  return static_cast<int>(list.size()) - 1;
}

void LoadAircraft(const std::filesystem::path& path, int16_t& savedNumber, AircraftDb& db, Ui& ui) {
  AircraftFile file = ReadAircraftFile(path);
  if (!file.Error.empty()) ui.MsgBox(file.Error);
  db.List = std::move(file.Aircraft);
  int index = FindStartAircraft(db.List, savedNumber);
  if (index >= 0) db.Current = db.List[static_cast<std::size_t>(index)];
}

std::vector<std::string> AircraftPrintLines(const AircraftRec& a) {
  auto n = [](int32_t v) { return std::to_string(v); };
  return {
      a.AircraftName,
      "Maximum Fuel: " + n(a.MaxFuel) + " kg",
      "Ceiling: " + n(a.Ceiling),
      "Max Weight: " + n(a.MaxWeight) + " kg",
      "Empty Weight: " + n(a.EmptyWeight) + " kg",
      "Load Weight: " + n(a.LoadWeight) + " kg",
      "Climb Rate: " + n(a.ClimbRate) + " ft/min",
      "Climb Speed: " + n(a.ClimbSpeed) + " kts",
      "Descent Rate: " + n(a.DescentRate) + " ft/min",
      "Descent Speed: " + n(a.DescentSpeed) + " kts",
      "Cruise Speed: " + n(a.CruiseSpeed) + " kts",
      "Cruise Flight Level: " + n(a.CruiseLevel),
      "Approach Speed: " + n(a.ApproachSpeed) + " kts",
      "Min Runway: " + n(a.MinRunway) + " ft",
      "Max Range: " + n(a.MaxRange) + " NM",
  };
}

// ---------------------------------------------------------------- the window

namespace {

// A numeric box: the field it edits and the whole numbers it accepts. Speeds,
// rates, range, level, fuel and weight divide later figures, so they must be
// above 0.
struct NumericBox {
  AircraftBox box;
  std::string_view label;
  int32_t AircraftRec::*field;
  int32_t low;
  int32_t high;
};

constexpr NumericBox kNumericBoxes[] = {
    {AircraftBox::CruiseFLBox, "Cruise Flight Level", &AircraftRec::CruiseLevel, 1, 999},
    {AircraftBox::LoadBox, "Load Weight", &AircraftRec::LoadWeight, 0, 9999999},
    {AircraftBox::MaxWeightBox, "Max Weight", &AircraftRec::MaxWeight, 1, 9999999},
    {AircraftBox::ClimbSpeedBox, "Climb Speed", &AircraftRec::ClimbSpeed, 1, 9999},
    {AircraftBox::ClimbRateBox, "Climb Rate", &AircraftRec::ClimbRate, 1, 99999},
    {AircraftBox::MaxFuelBox, "Maximum Fuel", &AircraftRec::MaxFuel, 1, 9999999},
    {AircraftBox::DescentRateBox, "Descent Rate", &AircraftRec::DescentRate, 1, 99999},
    {AircraftBox::CruiseSpeedBox, "Cruise Speed", &AircraftRec::CruiseSpeed, 1, 9999},
    {AircraftBox::MaxRangeBox, "Max Range", &AircraftRec::MaxRange, 1, 99999},
    {AircraftBox::ApproachSpeedBox, "Approach Speed", &AircraftRec::ApproachSpeed, 1, 9999},
    {AircraftBox::DescentSpeedBox, "Descent Speed", &AircraftRec::DescentSpeed, 1, 9999},
    {AircraftBox::EmptyBox, "Empty Weight", &AircraftRec::EmptyWeight, 0, 9999999},
};

// A whole number of at most 7 digits without sign, or false.
bool WholeNumber(std::string_view text, int32_t& value) {
  std::string t = Trim(text);
  if (t.empty() || t.size() > 7) return false;
  for (char c : t)
    if (c < '0' || c > '9') return false;
  value = CLng(Val(t));
  return true;
}

}  // namespace

AircraftWindow::AircraftWindow(AircraftDb& db, Ui& ui, std::filesystem::path file)
    : db_(db), ui_(ui), file_(std::move(file)) {}

void AircraftWindow::RefreshNames() {
  names_.clear();
  names_.reserve(db_.List.size());
  for (const AircraftRec& a : db_.List) names_.push_back(a.AircraftName);
}

void AircraftWindow::Load() {
  RefreshNames();
  int index = db_.List.empty() ? -1 : 0;
  for (std::size_t i = 0; i < db_.List.size(); ++i)
    if (db_.List[i].Id == db_.Current.Id) {
      index = static_cast<int>(i);
      break;
    }
  ShowRow(index);
}

void AircraftWindow::ShowRow(int index) {
  listIndex_ = index;
  if (index < 0 || index >= static_cast<int>(db_.List.size())) {
    listIndex_ = -1;
    for (std::string& b : boxes_) b.clear();
    return;
  }
  const AircraftRec& a = db_.List[static_cast<std::size_t>(index)];
  SetBox(AircraftBox::ACNameBox, a.AircraftName);
  for (const NumericBox& nb : kNumericBoxes) SetBox(nb.box, std::to_string(a.*nb.field));
}

bool AircraftWindow::StoreBoxes() {
  if (listIndex_ < 0 || listIndex_ >= static_cast<int>(db_.List.size())) return true;
  // Check every box before changing anything, so that a refusal leaves the record as it was.
  std::array<int32_t, std::size(kNumericBoxes)> values{};
  for (std::size_t i = 0; i < std::size(kNumericBoxes); ++i) {
    const NumericBox& nb = kNumericBoxes[i];
    int32_t v = 0;
    if (!WholeNumber(Box(nb.box), v) || v < nb.low || v > nb.high) {
      ui_.MsgBox(std::string(nb.label) + " must be a whole number from " + std::to_string(nb.low) + " to " +
                 std::to_string(nb.high) + "!");
      return false;
    }
    values[i] = v;
  }
  AircraftRec& a = db_.List[static_cast<std::size_t>(listIndex_)];
  a.AircraftName = CleanAircraftName(Box(AircraftBox::ACNameBox));
  for (std::size_t i = 0; i < std::size(kNumericBoxes); ++i) a.*kNumericBoxes[i].field = values[i];
  names_[static_cast<std::size_t>(listIndex_)] = a.AircraftName;
  return true;
}

bool AircraftWindow::SelectRow(int index) {
  if (index < 0 || index >= static_cast<int>(db_.List.size())) return false;
  if (!StoreBoxes()) return false;
  ShowRow(index);
  return true;
}

bool AircraftWindow::ButtonSelectAC(FlightPlan& plan, PlanPanel& panel, const NavLookup& nav) {
  if (listIndex_ < 0 || listIndex_ >= static_cast<int>(db_.List.size())) return false;
  if (!StoreBoxes()) return false;
  db_.Current = db_.List[static_cast<std::size_t>(listIndex_)];
  db_.Current.MinRunway = MinRunwayForApproachSpeed(db_.Current.ApproachSpeed);
  if (plan.LastRow > 0) PlanEditor(plan, panel, db_.Current, nav).RecomputeLegTimes();
  panel.CrSpeedBox = std::to_string(db_.Current.CruiseSpeed);
  return true;
}

void AircraftWindow::MenuNew() {
  if (!StoreBoxes()) return;
  if (db_.List.size() >= kMaxAircraft) {
    ui_.MsgBox("The aircraft list is full (" + std::to_string(kMaxAircraft) + " aircraft)!");
    return;
  }
  // The next free key above the highest one, or the lowest unused one.
  int next = 0;
  for (const AircraftRec& a : db_.List) next = std::max(next, a.Id + 1);
  if (next > INT16_MAX) {
    next = 0;
    while (std::any_of(db_.List.begin(), db_.List.end(), [next](const AircraftRec& a) { return a.Id == next; })) ++next;
  }
  AircraftRec rec;
  rec.Id = static_cast<int16_t>(next);
  rec.AircraftName = "Unknown";
  db_.List.push_back(rec);
  RefreshNames();
  ShowRow(static_cast<int>(db_.List.size()) - 1);
}

bool AircraftWindow::MenuDelete() {
  if (listIndex_ < 0 || listIndex_ >= static_cast<int>(db_.List.size())) return false;
  const AircraftRec& a = db_.List[static_cast<std::size_t>(listIndex_)];
  if (a.Id == db_.Current.Id) {
    ui_.MsgBox("You cannot delete the Aircraft currently selected!! ");
    return false;
  }
  if (!ui_.AskYesNo("Are you sure you want to delete " + a.AircraftName)) return false;
  db_.List.erase(db_.List.begin() + listIndex_);
  RefreshNames();
  ShowRow(std::min(listIndex_, static_cast<int>(db_.List.size()) - 1));
  return true;
}

bool AircraftWindow::CmdOk() {
  if (!StoreBoxes()) return false;
  if (!WriteAircraftFile(file_, db_.List)) {
    ui_.MsgBox("Could not write the aircraft file " + file_.string() + "!");
    return false;
  }
  return true;
}

std::vector<std::string> AircraftWindow::MenuCurrent() const { return AircraftPrintLines(db_.Current); }

std::vector<std::string> AircraftWindow::MenuSelected() {
  if (listIndex_ < 0 || !StoreBoxes()) return {};
  return AircraftPrintLines(db_.List[static_cast<std::size_t>(listIndex_)]);
}

std::vector<std::string> AircraftWindow::MenuAll() {
  if (!StoreBoxes()) return {};
  std::vector<std::string> out;
  for (const AircraftRec& a : db_.List) {
    if (!out.empty()) out.emplace_back();
    for (std::string& line : AircraftPrintLines(a)) out.push_back(std::move(line));
  }
  return out;
}

}  // namespace orv
