#include "database/OvrLL.h"

#include <algorithm>
#include <numeric>

#include "core/Runtime.h"

namespace orv {

namespace {

// A list position as the settings keep it: the choice when it lies inside a
// list of `size` lines, else none.
int Choice(int index, std::size_t size) { return index >= 0 && static_cast<std::size_t>(index) < size ? index : -1; }

int32_t DataAt(const std::vector<int32_t>& data, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < data.size() ? data[static_cast<std::size_t>(index)] : -1;
}

int LineOf(const std::vector<int32_t>& data, int32_t value) {
  auto it = std::find(data.begin(), data.end(), value);
  return it == data.end() ? -1 : static_cast<int>(it - data.begin());
}

// The entries of a hierarchy array that were filled (the array carries
// slack slots behind them).
template <typename T>
std::size_t Filled(const std::vector<T>& v, int32_t count) {
  return count <= 0 ? 0 : std::min(v.size(), static_cast<std::size_t>(count));
}

}  // namespace

OvrLL::OvrLL(const AirportTables& tables, AppState& state, Ui& ui, int32_t& departureAirport,
             int32_t& destinationAirport)
    : tables_(tables), state_(state), ui_(ui), departure_(departureAirport), destination_(destinationAirport) {}

std::string OvrLL::CountLabel(std::size_t count, std::string_view one, std::string_view many) {
  if (count == 1) return "There is 1 " + std::string(one);
  return "There are " + std::to_string(count) + " " + std::string(many);
}

void OvrLL::FormLoad() {
  Visible = true;
  TopMost = true;
  cmdCloseCaption = state_.ChoosingStartAirport ? "Exit" : "Close";
  cmdSelectEnabled = false;
  const Settings& s = state_.Config;
  FillRegions(s.Region);
  FillCountries(s.Country);
  FillStates(s.State);
  FillCities(s.City);
  FillAirports(-1);
}

// ------------------------------------------------------------------ the cascade

void OvrLL::FillRegions(int choose) {
  cmbRegion.clear();
  cmbRegionData.clear();
  std::size_t n = Filled(tables_.Regions, tables_.RegionCount);
  for (std::size_t i = 0; i < n; ++i) {
    cmbRegion.push_back(tables_.Regions[i]);
    cmbRegionData.push_back(static_cast<int32_t>(i));
  }
  lblRegion = CountLabel(cmbRegion.size(), "region", "regions");
  cmbRegionIndex = Choice(choose, cmbRegion.size());
}

void OvrLL::FillCountries(int choose) {
  cmbCountry.clear();
  cmbCountryData.clear();
  int32_t region = DataAt(cmbRegionData, cmbRegionIndex);
  if (region >= 0) {
    const std::string& regionName = tables_.Regions[static_cast<std::size_t>(region)];
    std::size_t n = Filled(tables_.Countries, tables_.CountryCount);
    for (std::size_t i = 0; i < n; ++i) {
      const CountryEntry& c = tables_.Countries[i];
      if (c.Region != regionName) continue;
      cmbCountry.push_back(c.Name);
      cmbCountryData.push_back(static_cast<int32_t>(i));
    }
  }
  lblCountry = CountLabel(cmbCountry.size(), "country", "countries");
  cmbCountryIndex = Choice(choose, cmbCountry.size());
}

void OvrLL::FillStates(int choose) {
  cmbState.clear();
  cmbStateData.clear();
  int32_t country = DataAt(cmbCountryData, cmbCountryIndex);
  if (country >= 0) {
    const std::string& countryName = tables_.Countries[static_cast<std::size_t>(country)].Name;
    std::size_t n = Filled(tables_.States, tables_.StateCount);
    for (std::size_t i = 0; i < n; ++i) {
      const StateEntry& s = tables_.States[i];
      if (s.Country != countryName) continue;
      cmbState.push_back(s.Name);
      cmbStateData.push_back(static_cast<int32_t>(i));
    }
  }
  lblState = CountLabel(cmbState.size(), "state", "states");
  cmbStateIndex = Choice(choose, cmbState.size());
}

void OvrLL::FillCities(int choose) {
  cmbCity.clear();
  cmbCityData.clear();
  int32_t country = DataAt(cmbCountryData, cmbCountryIndex);
  if (country >= 0) {
    const std::string& countryName = tables_.Countries[static_cast<std::size_t>(country)].Name;
    int32_t state = DataAt(cmbStateData, cmbStateIndex);
    const std::string* stateName = state >= 0 ? &tables_.States[static_cast<std::size_t>(state)].Name : nullptr;
    std::size_t n = Filled(tables_.Cities, tables_.CityCount);
    for (std::size_t i = 0; i < n; ++i) {
      const CityEntry& c = tables_.Cities[i];
      if (c.Country != countryName || (stateName && c.State != *stateName)) continue;
      cmbCity.push_back(c.Name);
      cmbCityData.push_back(static_cast<int32_t>(i));
    }
  }
  lblCity = CountLabel(cmbCity.size(), "city", "cities");
  cmbCityIndex = Choice(choose, cmbCity.size());
}

std::string OvrLL::AirportLine(const AirportRec& airport) const {
  std::string_view name = airport.Name.Trimmed();
  std::string_view code = airport.Icao.Trimmed();
  std::string_view first = chckICAO ? code : name;
  std::string_view second = chckICAO ? name : code;
  std::string line;
  line.reserve(first.size() + second.size() + 3);
  line.append(first).append(" (").append(second).append(")");
  return line;
}

void OvrLL::FillAirports(int32_t selectAirport) {
  lstAirport.clear();
  lstAirportData.clear();
  const auto& airports = tables_.Airports;
  if (chckAPOnly) {
    for (std::size_t i = 0; i < airports.size(); ++i)
      if (IsAirportSlotUsed(airports[i])) lstAirportData.push_back(static_cast<int32_t>(i));
  } else if (int32_t city = DataAt(cmbCityData, cmbCityIndex); city >= 0) {
    const CityEntry& c = tables_.Cities[static_cast<std::size_t>(city)];
    for (std::size_t i = 0; i < airports.size(); ++i) {
      const AirportRec& a = airports[i];
      if (IsAirportSlotUsed(a) && a.City == c.Name && a.State == c.State && a.Country == c.Country)
        lstAirportData.push_back(static_cast<int32_t>(i));
    }
  }
  // By name, or by code once the codes lead; array order breaks ties so that
  // the list is the same on every fill.
  const bool byCode = chckICAO;
  std::stable_sort(lstAirportData.begin(), lstAirportData.end(), [&](int32_t x, int32_t y) {
    const AirportRec& a = airports[static_cast<std::size_t>(x)];
    const AirportRec& b = airports[static_cast<std::size_t>(y)];
    std::string_view ka = byCode ? a.Icao.Trimmed() : a.Name.Trimmed();
    std::string_view kb = byCode ? b.Icao.Trimmed() : b.Name.Trimmed();
    return ka < kb;
  });
  lstAirport.reserve(lstAirportData.size());
  for (int32_t i : lstAirportData) lstAirport.push_back(AirportLine(airports[static_cast<std::size_t>(i)]));
  SelectAirportLine(LineOf(lstAirportData, selectAirport));
}

void OvrLL::SelectAirportLine(int index) {
  lstAirportIndex = Choice(index, lstAirport.size());
  cmdSelectEnabled = lstAirportIndex >= 0;
}

// ------------------------------------------------------------------ events

void OvrLL::CmbRegionClick(int index) {
  int32_t keep = DataAt(lstAirportData, lstAirportIndex);
  cmbRegionIndex = Choice(index, cmbRegion.size());
  FillCountries(-1);
  FillStates(-1);
  FillCities(-1);
  FillAirports(keep);
  Settings& s = state_.Config;
  s.Region = cmbRegionIndex;
  s.Country = s.State = s.City = -1;
}

void OvrLL::CmbCountryClick(int index) {
  int32_t keep = DataAt(lstAirportData, lstAirportIndex);
  cmbCountryIndex = Choice(index, cmbCountry.size());
  FillStates(-1);
  FillCities(-1);
  FillAirports(keep);
  Settings& s = state_.Config;
  s.Country = cmbCountryIndex;
  s.State = s.City = -1;
}

void OvrLL::CmbStateClick(int index) {
  int32_t keep = DataAt(lstAirportData, lstAirportIndex);
  cmbStateIndex = Choice(index, cmbState.size());
  FillCities(-1);
  FillAirports(keep);
  state_.Config.State = cmbStateIndex;
  state_.Config.City = -1;
}

void OvrLL::CmbCityClick(int index) {
  int32_t keep = DataAt(lstAirportData, lstAirportIndex);
  cmbCityIndex = Choice(index, cmbCity.size());
  FillAirports(keep);
  state_.Config.City = cmbCityIndex;
}

void OvrLL::LstAirportClick(int index) { SelectAirportLine(index); }

void OvrLL::ChckAPOnlyClick(bool checked) {
  chckAPOnly = checked;
  FillAirports(DataAt(lstAirportData, lstAirportIndex));
}

void OvrLL::ChckICAOClick(bool checked) {
  chckICAO = checked;
  FillAirports(DataAt(lstAirportData, lstAirportIndex));
}

void OvrLL::OptDepartClick() {
  optDepart = true;
  optDestination = false;
}

void OvrLL::OptDestinationClick() {
  optDepart = false;
  optDestination = true;
}

bool OvrLL::CmdSearchClick() {
  const auto& airports = tables_.Airports;
  const int32_t found = FindAirportByIcao(tables_, txtICAO);
  if (found < 0) {
    ui_.MsgBox(kNoIcaoMatchText);
    return false;
  }
  const AirportRec& a = airports[static_cast<std::size_t>(found)];

  // Walk the cascade down to the airport's place as far as the hierarchy
  // names it; a level it does not name stays unchosen.
  auto lineWhere = [](const std::vector<int32_t>& data, auto matches) {
    for (std::size_t i = 0; i < data.size(); ++i)
      if (matches(data[i])) return static_cast<int>(i);
    return -1;
  };
  int country = -1;
  std::size_t nCountries = Filled(tables_.Countries, tables_.CountryCount);
  for (std::size_t i = 0; i < nCountries && country < 0; ++i)
    if (tables_.Countries[i].Name == a.Country) country = static_cast<int>(i);
  if (country >= 0) {
    const std::string& region = tables_.Countries[static_cast<std::size_t>(country)].Region;
    // Each list is filled first and its line looked up in the new list, so
    // that the list below is filled from the right choice.
    FillRegions(-1);
    cmbRegionIndex =
        lineWhere(cmbRegionData, [&](int32_t r) { return tables_.Regions[static_cast<std::size_t>(r)] == region; });
    FillCountries(-1);
    cmbCountryIndex = lineWhere(
        cmbCountryData, [&](int32_t c) { return tables_.Countries[static_cast<std::size_t>(c)].Name == a.Country; });
    FillStates(-1);
    cmbStateIndex =
        lineWhere(cmbStateData, [&](int32_t s) { return tables_.States[static_cast<std::size_t>(s)].Name == a.State; });
    FillCities(-1);
    cmbCityIndex = lineWhere(cmbCityData, [&](int32_t c) {
      const CityEntry& e = tables_.Cities[static_cast<std::size_t>(c)];
      return e.Name == a.City && e.State == a.State;
    });
    Settings& s = state_.Config;
    s.Region = cmbRegionIndex;
    s.Country = cmbCountryIndex;
    s.State = cmbStateIndex;
    s.City = cmbCityIndex;
  }
  FillAirports(found);
  if (lstAirportIndex < 0) {
    // The chosen lists cannot hold it: it is shown on its own.
    lstAirportData.assign(1, found);
    lstAirport.assign(1, AirportLine(a));
    SelectAirportLine(0);
  }
  return true;
}

std::optional<AirportSelection> OvrLL::CmdSelectClick() {
  int32_t airport = DataAt(lstAirportData, lstAirportIndex);
  if (airport < 0 || static_cast<std::size_t>(airport) >= tables_.Airports.size()) return std::nullopt;
  state_.ChoosingStartAirport = false;
  cmdCloseCaption = "Close";
  if (optDepart) departure_ = airport;
  if (optDestination) destination_ = airport;
  const AirportRec& a = tables_.Airports[static_cast<std::size_t>(airport)];
  return AirportSelection{airport, a.Lat, a.Lon};
}

OvrLLClose OvrLL::CmdCloseClick() {
  if (cmdCloseCaption == "Exit") return OvrLLClose::EndProgram;
  Visible = false;
  return OvrLLClose::Hidden;
}

}  // namespace orv
