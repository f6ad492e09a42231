// The user waypoint window frmUser without its widgets: the controls' values
// as plain fields and the events as methods. The shell copies what the user
// types into the fields, calls the event, and shows the fields and lstWP again.
//
// Position fields: txtLatNS holds "N" or "S" and txtLonEW "E" or "W" (either
// case); degrees, minutes and seconds are numbers read by Val, seconds may be
// left empty. Shown positions use whole degrees and minutes to two decimals
// with seconds "0".
//
// lstWP line: the ident cut or padded to 10 characters, a blank, the name,
// e.g. "HOME1      My home field". optSort 0 orders the list by ident, 1 by name.
#pragma once

#include <string>
#include <vector>

#include "core/AppFolder.h"
#include "core/Ui.h"
#include "database/NavDatabase.h"
#include "database/UserWaypoints.h"

namespace orv {

class FrmUser {
public:
  FrmUser(std::vector<UserWaypointRec>& waypoints, Ui& ui, const AppFolder& app);
  // On the database's user waypoints; each change counts in its Revision.
  FrmUser(NavDatabase& db, Ui& ui, const AppFolder& app);

  // Controls.
  std::string txtICAO, txtName;
  std::string txtLatNS, txtLatDeg, txtLatMin, txtLatSec;
  std::string txtLonEW, txtLonDeg, txtLonMin, txtLonSec;
  std::vector<std::string> lstWP;  // the lines shown
  std::vector<int> lstWPData;      // per line, the index of its record in the waypoint array
  int lstWPIndex = -1;             // the selected line, -1 for none
  int optSort = 0;                 // 0 by ident, 1 by name
  bool Visible = false;

  // Load: fills the list, clears the fields and the selection.
  void FormLoad();
  // Unload (cmdCancel and the window's close box): saves the waypoints. A
  // failure to save is shown and handed back.
  UserWaypointResult FormUnload();
  void CmdCancelClick() { FormUnload(); }

  void OptSortClick(int index);
  // Selecting a line shows its record in the fields.
  void LstWPClick(int index);

  // Each returns true when the waypoint array changed.
  bool CmdAddClick();
  bool CmdEditClick();
  bool CmdDeleteClick();

  // cmdFSPos: the simulator's position (or a map click) into the position fields.
  void CmdFSPosClick(double lat, double lon) { ShowPosition(lat, lon); }
  void ShowPosition(double lat, double lon);

  // The position the fields give, south and west negative.
  double FormLat() const;
  double FormLon() const;

  static std::string ListLine(const UserWaypointRec& rec);

private:
  bool Validate();
  // Rebuilds lstWP in the chosen order and selects the line of record
  // selectRecord (-1: none).
  void FillList(int selectRecord);
  int SelectedRecord() const;
  void ClearFields();

  std::vector<UserWaypointRec>& waypoints_;
  NavDatabase* db_ = nullptr;
  Ui& ui_;
  AppFolder app_;
};

}  // namespace orv
