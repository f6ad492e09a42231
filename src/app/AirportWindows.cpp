#include "app/AirportWindows.h"

#include <cmath>

#include "app/PlanCommands.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "database/OvrLL.h"
#include "simlink/SimData.h"

namespace orv {

namespace {

constexpr double kFeetPerNm = 6076.12;

bool UsedIndex(const ProgramState& s, int32_t i) {
  const auto& airports = s.Db.Airports.Airports;
  return i >= 0 && static_cast<std::size_t>(i) < airports.size() && IsAirportSlotUsed(airports[static_cast<std::size_t>(i)]);
}

}  // namespace

int32_t SideWindowAirport(const ProgramState& s) {
  if (UsedIndex(s, s.Plan.DestinationAirport)) return s.Plan.DestinationAirport;
  if (UsedIndex(s, s.Plan.DepartureAirport)) return s.Plan.DepartureAirport;
  const auto& airports = s.Db.Airports.Airports;
  int32_t best = -1;
  double bestDist = 0;
  for (std::size_t i = 0; i < airports.size(); ++i) {
    if (!IsAirportSlotUsed(airports[i])) continue;
    const double d = RhumbDistance(s.View.CntrLat, s.View.CntrLon, airports[i].Lat, airports[i].Lon);
    if (best < 0 || d < bestDist) best = static_cast<int32_t>(i), bestDist = d;
  }
  return best;
}

bool AirportPreview::Open(const ProgramState& s) {
  const int32_t i = SideWindowAirport(s);
  if (i < 0) return false;
  Show(s, i);
  return true;
}

bool AirportPreview::Find(const ProgramState& s, std::string_view icao, Ui& ui) {
  const int32_t i = FindAirportIndex(s.Db, Trim(icao));
  if (!UsedIndex(s, i)) {
    ui.MsgBox(kNoIcaoMatchText);
    return false;
  }
  Show(s, i);
  return true;
}

void AirportPreview::Show(const ProgramState& s, int32_t index) {
  if (!UsedIndex(s, index)) return;
  Airport = index;
  const AirportRec& ap = s.Db.Airports.Airports[static_cast<std::size_t>(index)];
  Lists = AirportInfo(ap, s.Core);
  Caption = "Airport Preview - " + std::string(ap.Icao.Trimmed()) + " " + std::string(ap.Name.Trimmed());
}

bool ParkingSelection::Load(const ProgramState& s, Ui& ui) {
  rows_.clear();
  airport_ = SideWindowAirport(s);
  if (airport_ < 0) {
    ui.MsgBox("No airport to choose a parking position at.");
    return false;
  }
  const AirportRec& ap = s.Db.Airports.Airports[static_cast<std::size_t>(airport_)];
  caption_ = "Select Parking - " + std::string(ap.Icao.Trimmed()) + " " + std::string(ap.Name.Trimmed());
  for (const ParkingRec& p : ap.Parking) {
    std::string text = ParkingLabel(p, s.Core);
    if (p.Kind >= 1 && p.Kind < static_cast<int32_t>(s.Core.ParkingKinds.size()))
      text += " (" + s.Core.ParkingKinds[static_cast<std::size_t>(p.Kind)] + ")";
    rows_.push_back({std::move(text), p.Lat, p.Lon, static_cast<float>(Wrap360(p.Value))});
  }
  for (const RunwayRec& r : ap.Runways) {
    // The record holds the runway's middle; each end's threshold lies half
    // the length behind it, facing along the runway.
    const float half = static_cast<float>(r.LengthFeet / kFeetPerNm / 2);
    const float lowHeading = r.TrueHeading, highHeading = static_cast<float>(Wrap360(r.TrueHeading + 180.0));
    const LatLon low = OffsetLatLon(r.Lat, r.Lon, highHeading, half);
    const LatLon high = OffsetLatLon(r.Lat, r.Lon, lowHeading, half);
    for (int end = 0; end < 2; ++end) {
      const std::string designator = RunwayDesignator((end == 0 ? r.LowEnd : r.HighEnd).View());
      if (designator.empty()) continue;
      const LatLon& at = end == 0 ? low : high;
      rows_.push_back({"Rwy " + designator, at.Lat, at.Lon, end == 0 ? lowHeading : highHeading});
    }
  }
  return true;
}

bool ParkingSelection::Place(ProgramState& s, Ui& ui, int row) const {
  if (row < 0 || static_cast<std::size_t>(row) >= rows_.size()) {
    ui.Beep();
    return false;
  }
  if (!s.Sim.Connected()) {
    ui.MsgBox(kNotConnectedText);
    return false;
  }
  const ParkingChoice& c = rows_[static_cast<std::size_t>(row)];
  if (!WriteAircraftPosition(*s.Sim.Channel, c.Lat, c.Lon)) {
    ui.MsgBox("The position could not be written to Flight Simulator.");
    return false;
  }
  return true;
}

}  // namespace orv
