#include "database/FrmUser.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/Runtime.h"

namespace orv {

namespace {

// One coordinate as its four fields give it.
struct CoordFields {
  const std::string& side;
  const std::string& deg;
  const std::string& min;
  const std::string& sec;
};

double FieldsValue(const CoordFields& f, char negativeSide) {
  double value = Val(f.deg) + Val(f.min) / 60 + Val(f.sec) / 3600;
  return UCase(Trim(f.side)) == std::string(1, negativeSide) ? -value : value;
}

enum class CoordCheck { Ok, Missing, Degrees, Minutes };

// The checks of one coordinate, in the order the messages come. The side must
// be one of the two letters; a blank seconds field counts as 0. Minutes and
// seconds run from 0 to below 60, and the whole value may not pass maxDegrees.
CoordCheck CheckCoord(const CoordFields& f, char positiveSide, char negativeSide, double maxDegrees) {
  std::string side = UCase(Trim(f.side));
  bool sideOk = side == std::string(1, positiveSide) || side == std::string(1, negativeSide);
  if (!sideOk || Trim(f.deg).empty() || Trim(f.min).empty()) return CoordCheck::Missing;
  double deg = Val(f.deg);
  if (deg < 0 || deg > maxDegrees) return CoordCheck::Degrees;
  double min = Val(f.min);
  double sec = Val(f.sec);
  if (min < 0 || min >= 60 || sec < 0 || sec >= 60) return CoordCheck::Minutes;
  if (deg + min / 60 + sec / 3600 > maxDegrees) return CoordCheck::Minutes;
  return CoordCheck::Ok;
}

// Whole degrees and minutes to two decimals of |value|, rounded once on the
// hundredths of a minute so that 59.999' becomes the next degree, not 60.00'.
void SplitForFields(double value, std::string& deg, std::string& min, std::string& sec) {
  int32_t hundredths = CLng(std::fabs(value) * 6000);
  deg = Format(hundredths / 6000, "0");
  min = Format((hundredths % 6000) / 100.0, "0.00");
  sec = "0";
}

}  // namespace

FrmUser::FrmUser(std::vector<UserWaypointRec>& waypoints, Ui& ui, const AppFolder& app)
    : waypoints_(waypoints), ui_(ui), app_(app) {}

FrmUser::FrmUser(NavDatabase& db, Ui& ui, const AppFolder& app)
    : waypoints_(db.UserWaypoints), db_(&db), ui_(ui), app_(app) {}

std::string FrmUser::ListLine(const UserWaypointRec& rec) {
  return FixedText(rec.Ident.Trimmed(), 10) + " " + rec.Name.Str();
}

void FrmUser::FormLoad() {
  Visible = true;
  ClearFields();
  FillList(-1);
}

UserWaypointResult FrmUser::FormUnload() {
  UserWaypointResult result = SaveUserWaypoints(app_, waypoints_);
  if (!result.ok) ui_.MsgBox(result.message);
  Visible = false;
  return result;
}

void FrmUser::OptSortClick(int index) {
  optSort = index;
  FillList(SelectedRecord());
}

void FrmUser::LstWPClick(int index) {
  if (index < 0 || index >= static_cast<int>(lstWP.size())) {
    lstWPIndex = -1;
    return;
  }
  lstWPIndex = index;
  const UserWaypointRec& rec = waypoints_[static_cast<std::size_t>(lstWPData[static_cast<std::size_t>(index)])];
  txtICAO = rec.Ident.Str();
  txtName = rec.Name.Str();
  ShowPosition(rec.Lat, rec.Lon);
}

void FrmUser::ShowPosition(double lat, double lon) {
  txtLatNS = lat < 0 ? "S" : "N";
  SplitForFields(lat, txtLatDeg, txtLatMin, txtLatSec);
  txtLonEW = lon < 0 ? "W" : "E";
  SplitForFields(lon, txtLonDeg, txtLonMin, txtLonSec);
}

double FrmUser::FormLat() const { return FieldsValue({txtLatNS, txtLatDeg, txtLatMin, txtLatSec}, 'S'); }

double FrmUser::FormLon() const { return FieldsValue({txtLonEW, txtLonDeg, txtLonMin, txtLonSec}, 'W'); }

bool FrmUser::Validate() {
  if (Trim(txtICAO).empty()) {
    ui_.MsgBox("You need to specify an ICAO code!");
    return false;
  }
  if (Trim(txtName).empty()) {
    ui_.MsgBox("You need to specify a name!");
    return false;
  }
  switch (CheckCoord({txtLatNS, txtLatDeg, txtLatMin, txtLatSec}, 'N', 'S', 90)) {
    case CoordCheck::Missing: ui_.MsgBox("Missing latitude values!"); return false;
    case CoordCheck::Degrees: ui_.MsgBox("Illegal latitude degree!"); return false;
    case CoordCheck::Minutes: ui_.MsgBox("Illegal latitude minutes!"); return false;
    case CoordCheck::Ok: break;
  }
  switch (CheckCoord({txtLonEW, txtLonDeg, txtLonMin, txtLonSec}, 'E', 'W', 180)) {
    case CoordCheck::Missing: ui_.MsgBox("Missing longitude values!"); return false;
    case CoordCheck::Degrees: ui_.MsgBox("Illegal longitude degree!"); return false;
    case CoordCheck::Minutes: ui_.MsgBox("Illegal longitude minutes!"); return false;
    case CoordCheck::Ok: break;
  }
  return true;
}

bool FrmUser::CmdAddClick() {
  if (!Validate()) return false;
  UserWaypointRec& rec = waypoints_.emplace_back();
  rec.Ident.Assign(Trim(txtICAO));
  rec.Name.Assign(Trim(txtName));
  rec.Lat = CSng(FormLat());
  rec.Lon = CSng(FormLon());
  if (db_) db_->Changed();
  FillList(static_cast<int>(waypoints_.size()) - 1);
  ui_.MsgBox(rec.Ident.Str() + " has been added", MsgStyle::Information);
  return true;
}

bool FrmUser::CmdEditClick() {
  int record = SelectedRecord();
  if (record < 0) {
    ui_.MsgBox("Please select item fromlist!");
    return false;
  }
  if (!Validate()) return false;
  UserWaypointRec& rec = waypoints_[static_cast<std::size_t>(record)];
  rec.Ident.Assign(Trim(txtICAO));
  rec.Name.Assign(Trim(txtName));
  rec.Lat = CSng(FormLat());
  rec.Lon = CSng(FormLon());
  if (db_) db_->Changed();
  FillList(record);
  ui_.MsgBox(rec.Ident.Str() + " has been changed", MsgStyle::Information);
  return true;
}

bool FrmUser::CmdDeleteClick() {
  int record = SelectedRecord();
  if (record < 0) {
    ui_.MsgBox("Please select item fromlist!");
    return false;
  }
  std::string ident = waypoints_[static_cast<std::size_t>(record)].Ident.Str();
  if (!ui_.AskYesNo("Are you sure you want to delete " + ident)) return false;
  waypoints_.erase(waypoints_.begin() + record);
  if (db_) db_->Changed();
  ClearFields();
  FillList(-1);
  ui_.MsgBox(ident + " has been deleted", MsgStyle::Information);
  return true;
}

int FrmUser::SelectedRecord() const {
  if (lstWPIndex < 0 || lstWPIndex >= static_cast<int>(lstWPData.size())) return -1;
  int record = lstWPData[static_cast<std::size_t>(lstWPIndex)];
  return record < static_cast<int>(waypoints_.size()) ? record : -1;
}

void FrmUser::FillList(int selectRecord) {
  std::vector<int> order(waypoints_.size());
  std::iota(order.begin(), order.end(), 0);
  // Case-blind keys, made once, ordered stably so that equal keys keep file order.
  std::vector<std::string> keys;
  keys.reserve(waypoints_.size());
  for (const UserWaypointRec& rec : waypoints_)
    keys.push_back(UCase(optSort == 1 ? rec.Name.Trimmed() : rec.Ident.Trimmed()));
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
  });

  lstWP.clear();
  lstWPData.clear();
  lstWP.reserve(order.size());
  lstWPData.reserve(order.size());
  lstWPIndex = -1;
  for (int record : order) {
    if (record == selectRecord) lstWPIndex = static_cast<int>(lstWP.size());
    lstWP.push_back(ListLine(waypoints_[static_cast<std::size_t>(record)]));
    lstWPData.push_back(record);
  }
}

void FrmUser::ClearFields() {
  for (std::string* field : {&txtICAO, &txtName, &txtLatNS, &txtLatDeg, &txtLatMin, &txtLatSec, &txtLonEW,
                             &txtLonDeg, &txtLonMin, &txtLonSec})
    field->clear();
}

}  // namespace orv
