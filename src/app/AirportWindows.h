// The airport side windows without their widgets: the airport information
// window APPrev (with the Runway Window OVRLay drawing the same airport) and
// the parking selection frmSelParking, which sets the linked simulator's
// aircraft on a gate or a runway end of the arrival airport.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/ProgramState.h"
#include "core/Ui.h"
#include "map/AirportLayout.h"

namespace orv {

// The airport a side window opens on: the plan's destination, else its
// departure, else the used airport nearest the map's centre; -1 when the
// database has none.
int32_t SideWindowAirport(const ProgramState& s);

// APPrev: the chosen airport's lists; OVRLay draws the same airport.
struct AirportPreview {
  int32_t Airport = -1;
  std::string Caption;  // "Airport Preview - EDXX Main Field"
  AirportInfoLists Lists;

  // Shows the airport of SideWindowAirport; false when there is none.
  bool Open(const ProgramState& s);
  // The ICAO box: another airport. An unknown code is refused with the
  // program's message and the window keeps its airport.
  bool Find(const ProgramState& s, std::string_view icao, Ui& ui);
  void Show(const ProgramState& s, int32_t index);
};

// One line of the parking list: a parking position or a runway threshold,
// with the heading the aircraft faces there (true degrees).
struct ParkingChoice {
  std::string Text;
  float Lat = 0;
  float Lon = 0;
  float Heading = 0;
};

inline constexpr std::string_view kNotConnectedText =
    "Not connected to Flight Simulator! Connect to FS first to place the aircraft.";

class ParkingSelection {
public:
  // Fills the list for the arrival airport: its parking positions in file
  // order, then both thresholds of each runway ("Rwy 07", "Rwy 25"). False,
  // with a message, when no airport is known.
  bool Load(const ProgramState& s, Ui& ui);
  const std::vector<ParkingChoice>& Rows() const { return rows_; }
  const std::string& Caption() const { return caption_; }
  int32_t Airport() const { return airport_; }

  // The Select button: with the simulator linked the aircraft is written to
  // the row's position through the position writer; without a link the
  // window says so. False when nothing was written.
  bool Place(ProgramState& s, Ui& ui, int row) const;

private:
  std::vector<ParkingChoice> rows_;
  std::string caption_;
  int32_t airport_ = -1;
};

}  // namespace orv
