#include <gtest/gtest.h>

#include "database/OvrLL.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

using Lines = std::vector<std::string>;

AirportRec Airport(std::string_view icao, std::string_view name, std::string city, std::string state,
                   std::string country, float lat = 0, float lon = 0) {
  AirportRec a;
  a.Icao.Assign(icao);
  a.Name.Assign(name);
  a.City = std::move(city);
  a.State = std::move(state);
  a.Country = std::move(country);
  a.Lat = lat;
  a.Lon = lon;
  return a;
}

// The hierarchy as the readers leave it: entries from index 0, then the
// slack slots with empty names.
AirportTables Tables() {
  AirportTables t;
  t.Regions = {"Europe", "North America", ""};
  t.RegionCount = 2;
  t.Countries = {{"Germany", "Europe"}, {"United States", "North America"}, {"France", "Europe"}, {}, {}, {}};
  t.CountryCount = 3;
  t.States = {{"Hessen", "Germany"}, {"New York", "United States"}, {"Bayern", "Germany"}, {}, {}, {}};
  t.StateCount = 3;
  t.Cities = {{"Frankfurt", "Hessen", "Germany"}, {"Munich", "Bayern", "Germany"},
              {"Paris", "", "France"},           {"Egelsbach", "Hessen", "Germany"},
              {"Lyon", "", "France"},            {"New York", "New York", "United States"},
              {},                                {},
              {}};
  t.CityCount = 6;
  t.Airports.resize(10);
  t.Airports[0] = Airport("EDDF", "Frankfurt Main", "Frankfurt", "Hessen", "Germany", 50.03f, 8.57f);
  t.Airports[1] = Airport("KJFK", "John F Kennedy Intl", "New York", "New York", "United States", 40.64f, -73.78f);
  t.Airports[2] = Airport("ZZZF", "Airbase Frankfurt", "Frankfurt", "Hessen", "Germany");
  t.Airports[3] = Airport("LFPG", "Charles de Gaulle", "Paris", "", "France");
  t.Airports[4] = Airport("EDDM", "Munich", "Munich", "Bayern", "Germany");
  t.Airports[6] = Airport("XXXX", "Nowhere Field", "Atlantis", "", "Atlantis", 1.5f, 2.5f);
  t.Airports[7] = Airport("LFPO", "Orly", "Paris", "", "France");
  return t;
}

struct Fixture {
  AirportTables tables = Tables();
  AppState state;
  test::ScriptedUi ui;
  int32_t departure = -1;
  int32_t destination = -1;
  OvrLL w{tables, state, ui, departure, destination};

  Fixture(int region, int country, int stateIndex, int city) {
    state.Config.Region = region;
    state.Config.Country = country;
    state.Config.State = stateIndex;
    state.Config.City = city;
  }
};

TEST(OvrLL, LoadFillsTheCascadeFromTheSettings) {
  Fixture f(0, 0, 0, 0);
  f.state.ChoosingStartAirport = true;
  f.w.FormLoad();
  EXPECT_TRUE(f.w.Visible);
  EXPECT_TRUE(f.w.TopMost);
  EXPECT_EQ(f.w.cmdCloseCaption, "Exit");
  EXPECT_FALSE(f.w.cmdSelectEnabled);

  EXPECT_EQ(f.w.cmbRegion, (Lines{"Europe", "North America"}));
  EXPECT_EQ(f.w.lblRegion, "There are 2 regions");
  EXPECT_EQ(f.w.cmbCountry, (Lines{"Germany", "France"}));
  EXPECT_EQ(f.w.lblCountry, "There are 2 countries");
  EXPECT_EQ(f.w.cmbState, (Lines{"Hessen", "Bayern"}));
  EXPECT_EQ(f.w.lblState, "There are 2 states");
  EXPECT_EQ(f.w.cmbCity, (Lines{"Frankfurt", "Egelsbach"}));
  EXPECT_EQ(f.w.lblCity, "There are 2 cities");
  // The airports of the city, by name, each "name (code)".
  EXPECT_EQ(f.w.lstAirport, (Lines{"Airbase Frankfurt (ZZZF)", "Frankfurt Main (EDDF)"}));
  EXPECT_EQ(f.w.lstAirportData, (std::vector<int32_t>{2, 0}));
  EXPECT_EQ(f.w.lstAirportIndex, -1);

  // Not choosing the start airport: "Close".
  Fixture g(0, 0, 0, 0);
  g.w.FormLoad();
  EXPECT_EQ(g.w.cmdCloseCaption, "Close");
}

TEST(OvrLL, CountLabelsSingularAndPlural) {
  EXPECT_EQ(OvrLL::CountLabel(1, "region", "regions"), "There is 1 region");
  EXPECT_EQ(OvrLL::CountLabel(12, "country", "countries"), "There are 12 countries");
  EXPECT_EQ(OvrLL::CountLabel(0, "city", "cities"), "There are 0 cities");

  Fixture f(1, 0, 0, 0);  // North America: one of each
  f.w.FormLoad();
  EXPECT_EQ(f.w.lblCountry, "There is 1 country");
  EXPECT_EQ(f.w.lblState, "There is 1 state");
  EXPECT_EQ(f.w.lblCity, "There is 1 city");
  EXPECT_EQ(f.w.lstAirport, (Lines{"John F Kennedy Intl (KJFK)"}));
}

TEST(OvrLL, SettingsOutsideTheListsChooseNothing) {
  Fixture f(0, 75, -1, 85);  // the settings' defaults
  f.w.FormLoad();
  EXPECT_EQ(f.w.cmbRegionIndex, 0);
  EXPECT_EQ(f.w.cmbCountryIndex, -1);
  EXPECT_EQ(f.w.lblState, "There are 0 states");
  EXPECT_EQ(f.w.lblCity, "There are 0 cities");
  EXPECT_TRUE(f.w.lstAirport.empty());
  // Loading alone leaves the settings as they were.
  EXPECT_EQ(f.state.Config.Country, 75);
  EXPECT_EQ(f.state.Config.City, 85);
}

TEST(OvrLL, EachChoiceFillsTheNextListAndIsKeptInTheSettings) {
  Fixture f(0, -1, -1, -1);
  f.w.FormLoad();
  f.w.CmbCountryClick(1);  // France: no states, its cities at once
  EXPECT_EQ(f.w.cmbState, Lines{});
  EXPECT_EQ(f.w.lblState, "There are 0 states");
  EXPECT_EQ(f.w.cmbCity, (Lines{"Paris", "Lyon"}));
  EXPECT_EQ(f.state.Config.Country, 1);
  EXPECT_EQ(f.state.Config.State, -1);
  f.w.CmbCityClick(0);
  EXPECT_EQ(f.w.lstAirport, (Lines{"Charles de Gaulle (LFPG)", "Orly (LFPO)"}));
  EXPECT_EQ(f.state.Config.City, 0);

  f.w.CmbCountryClick(0);  // Germany: every city until a state is chosen
  EXPECT_EQ(f.w.cmbCity, (Lines{"Frankfurt", "Munich", "Egelsbach"}));
  EXPECT_TRUE(f.w.lstAirport.empty());
  EXPECT_EQ(f.state.Config.City, -1);
  f.w.CmbStateClick(1);
  EXPECT_EQ(f.w.cmbCity, (Lines{"Munich"}));
  EXPECT_EQ(f.state.Config.State, 1);

  f.w.CmbRegionClick(1);
  EXPECT_EQ(f.w.cmbCountry, (Lines{"United States"}));
  EXPECT_EQ(f.w.cmbCountryIndex, -1);
  EXPECT_EQ(f.w.cmbState, Lines{});
  EXPECT_EQ(f.state.Config.Region, 1);
  EXPECT_EQ(f.state.Config.Country, -1);
  EXPECT_EQ(f.state.Config.State, -1);
}

TEST(OvrLL, CodesFirstAndAllAirports) {
  Fixture f(0, 0, 0, 0);
  f.w.FormLoad();
  f.w.LstAirportClick(1);  // Frankfurt Main
  EXPECT_TRUE(f.w.cmdSelectEnabled);
  f.w.ChckICAOClick(true);
  EXPECT_EQ(f.w.lstAirport, (Lines{"EDDF (Frankfurt Main)", "ZZZF (Airbase Frankfurt)"}));
  EXPECT_EQ(f.w.lstAirportIndex, 0);  // the same airport stays chosen
  f.w.ChckICAOClick(false);
  f.w.ChckAPOnlyClick(true);
  EXPECT_EQ(f.w.lstAirport, (Lines{"Airbase Frankfurt (ZZZF)", "Charles de Gaulle (LFPG)", "Frankfurt Main (EDDF)",
                                   "John F Kennedy Intl (KJFK)", "Munich (EDDM)", "Nowhere Field (XXXX)",
                                   "Orly (LFPO)"}));
  EXPECT_EQ(f.w.lstAirportIndex, 2);
  f.w.ChckAPOnlyClick(false);
  EXPECT_EQ(f.w.lstAirport.size(), 2u);
}

TEST(OvrLL, SearchByIcaoMovesTheCascadeOrSaysNothingWasFound) {
  Fixture f(0, 0, 0, 0);
  f.w.FormLoad();
  f.w.txtICAO = "EDXX";
  EXPECT_FALSE(f.w.CmdSearchClick());
  EXPECT_EQ(f.ui.Messages(), Lines{"No airport for this ICAO code found!!"});
  EXPECT_EQ(f.ui.events.back().title, "Orvanta");
  EXPECT_EQ(f.w.lstAirport.size(), 2u);  // nothing changed
  EXPECT_EQ(f.w.cmbCityIndex, 0);

  f.w.txtICAO = " kjfk ";
  EXPECT_TRUE(f.w.CmdSearchClick());
  EXPECT_EQ(f.ui.Messages().size(), 1u);
  EXPECT_EQ(f.w.cmbRegionIndex, 1);
  EXPECT_EQ(f.w.cmbCountry, (Lines{"United States"}));
  EXPECT_EQ(f.w.cmbCity, (Lines{"New York"}));
  EXPECT_EQ(f.w.lblCity, "There is 1 city");
  EXPECT_EQ(f.w.lstAirport, (Lines{"John F Kennedy Intl (KJFK)"}));
  EXPECT_EQ(f.w.lstAirportIndex, 0);
  EXPECT_TRUE(f.w.cmdSelectEnabled);
  EXPECT_EQ(f.state.Config.Region, 1);
  EXPECT_EQ(f.state.Config.Country, 0);
  EXPECT_EQ(f.state.Config.State, 0);
  EXPECT_EQ(f.state.Config.City, 0);

  // A place the hierarchy does not know: the airport is listed alone.
  f.w.txtICAO = "xxxx";
  EXPECT_TRUE(f.w.CmdSearchClick());
  EXPECT_EQ(f.w.lstAirport, (Lines{"Nowhere Field (XXXX)"}));
  EXPECT_EQ(f.w.lstAirportData, (std::vector<int32_t>{6}));
  EXPECT_EQ(f.w.lstAirportIndex, 0);

  f.w.txtICAO = "   ";
  EXPECT_FALSE(f.w.CmdSearchClick());
  EXPECT_EQ(f.ui.Messages().size(), 2u);
}

TEST(OvrLL, SelectStoresDepartureOrDestinationAndEndsTheStartChoice) {
  Fixture f(0, 0, 0, 0);
  f.state.ChoosingStartAirport = true;
  f.w.FormLoad();
  EXPECT_FALSE(f.w.CmdSelectClick());  // nothing selected
  EXPECT_TRUE(f.state.ChoosingStartAirport);

  f.w.LstAirportClick(1);
  std::optional<AirportSelection> chosen = f.w.CmdSelectClick();
  ASSERT_TRUE(chosen);
  EXPECT_EQ(chosen->Airport, 0);
  EXPECT_EQ(chosen->Lat, 50.03f);
  EXPECT_EQ(chosen->Lon, 8.57f);
  EXPECT_EQ(f.departure, 0);
  EXPECT_EQ(f.destination, -1);
  EXPECT_FALSE(f.state.ChoosingStartAirport);
  EXPECT_EQ(f.w.cmdCloseCaption, "Close");

  f.w.OptDestinationClick();
  EXPECT_FALSE(f.w.optDepart);
  f.w.txtICAO = "KJFK";
  f.w.CmdSearchClick();
  ASSERT_TRUE(f.w.CmdSelectClick());
  EXPECT_EQ(f.departure, 0);
  EXPECT_EQ(f.destination, 1);
}

TEST(OvrLL, CloseEndsTheProgramWhileChoosingTheStartAirportElseHides) {
  Fixture f(0, 0, 0, 0);
  f.state.ChoosingStartAirport = true;
  f.w.FormLoad();
  EXPECT_EQ(f.w.CmdCloseClick(), OvrLLClose::EndProgram);

  f.w.LstAirportClick(0);
  f.w.CmdSelectClick();
  EXPECT_EQ(f.w.CmdCloseClick(), OvrLLClose::Hidden);
  EXPECT_FALSE(f.w.Visible);
  f.w.FormLoad();  // opened again from the menu
  EXPECT_EQ(f.w.cmdCloseCaption, "Close");
  EXPECT_TRUE(f.w.Visible);
}

}  // namespace
}  // namespace orv
