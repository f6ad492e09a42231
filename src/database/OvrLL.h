// The airport selection window OVRLL without its widgets. The region,
// country, state and city lists form a cascade: each choice fills the next
// list, and the airports of the chosen city fill lstAirport. The shell shows
// the fields, forwards the clicks and, after cmdSelect, centres the map on the
// airport handed back.
//
// The lists:
// - cmbRegion: every region, in file order.
// - cmbCountry: the countries whose region is the chosen region, in file order.
// - cmbState: the states of the chosen country, in file order.
// - cmbCity: the cities of the chosen country, in file order; once a state is
//   chosen, only the cities of that state. A country without states thus
//   lists its cities straight away.
// - lstAirport: the airports whose city, state and country are those of the
//   chosen city, ordered by name. With chckAPOnly every airport of the
//   database is listed, whatever the cascade says. A line is the name, " (",
//   the ICAO code and ")"; with chckICAO the code leads instead,
//   "EDDF (Frankfurt Main)", and the list is ordered by code.
// Every filled list says its size in its label: "There is 1 region",
// "There are 12 countries", "There are 0 states", ...
//
// The list positions (ListIndex, -1 for none) of the four lists are the
// settings REGION, COUNTRY, STATE and CITY: each choice writes its own and
// clears those below it, and the load chooses them again where they still
// lie inside their lists.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/AppState.h"
#include "core/Ui.h"
#include "database/AirportFile.h"

namespace orv {

// The airport cmdSelect chose, for the map to centre on.
struct AirportSelection {
  int32_t Airport = -1;  // index in Airports
  float Lat = 0;
  float Lon = 0;
};

enum class OvrLLClose : uint8_t {
  Hidden,      // "Close": the window only hides
  EndProgram,  // "Exit" while the start airport is chosen: the program ends
};

inline constexpr std::string_view kNoIcaoMatchText = "No airport for this ICAO code found!!";

class OvrLL {
public:
  // departureAirport and destinationAirport are where cmdSelect stores its
  // choice (the plan's DepartureAirport and DestinationAirport).
  OvrLL(const AirportTables& tables, AppState& state, Ui& ui, int32_t& departureAirport, int32_t& destinationAirport);

  // Controls. Each list has its lines, the table index behind each line and
  // the selected line.
  std::vector<std::string> cmbRegion, cmbCountry, cmbState, cmbCity, lstAirport;
  std::vector<int32_t> cmbRegionData, cmbCountryData, cmbStateData, cmbCityData, lstAirportData;
  int cmbRegionIndex = -1, cmbCountryIndex = -1, cmbStateIndex = -1, cmbCityIndex = -1, lstAirportIndex = -1;
  std::string lblRegion, lblCountry, lblState, lblCity;
  bool chckAPOnly = false;
  bool chckICAO = false;
  std::string txtICAO;
  bool optDepart = true;  // the two options are exclusive
  bool optDestination = false;
  std::string cmdCloseCaption = "Close";
  bool cmdSelectEnabled = false;
  bool TopMost = false;
  bool Visible = false;

  // Load: topmost, "Exit" on cmdClose while the start airport is chosen,
  // cmdSelect disabled, the cascade filled from the settings.
  void FormLoad();

  // Choosing a line of a list (an index outside the list chooses none).
  void CmbRegionClick(int index);
  void CmbCountryClick(int index);
  void CmbStateClick(int index);
  void CmbCityClick(int index);
  void LstAirportClick(int index);

  void ChckAPOnlyClick(bool checked);
  void ChckICAOClick(bool checked);
  void OptDepartClick();
  void OptDestinationClick();

  // Finds the airport whose code is txtICAO (trimmed, upper-cased) and shows
  // it: the cascade moves to its place where the hierarchy knows it, and its
  // line is selected; when the chosen lists cannot hold it, lstAirport holds
  // it alone. A miss says kNoIcaoMatchText and changes nothing. True on a hit.
  bool CmdSearchClick();

  // Stores the selected airport as the departure or the destination and
  // hands it back; nothing when no line is selected.
  std::optional<AirportSelection> CmdSelectClick();

  OvrLLClose CmdCloseClick();

  // The label of a list of count entries of a kind ("region"/"regions").
  static std::string CountLabel(std::size_t count, std::string_view one, std::string_view many);

private:
  void FillRegions(int choose);
  void FillCountries(int choose);
  void FillStates(int choose);
  void FillCities(int choose);
  void FillAirports(int32_t selectAirport);
  void SelectAirportLine(int index);
  std::string AirportLine(const AirportRec& airport) const;

  const AirportTables& tables_;
  AppState& state_;
  Ui& ui_;
  int32_t& departure_;
  int32_t& destination_;
};

}  // namespace orv
