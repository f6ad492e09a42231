#include "map/MainMenu.h"

#include <array>

namespace orv {

namespace {

using K = MenuKind;

constexpr MenuEntry kEntries[] = {
    {"MenuMap", "", "&Map", K::Heading, ""},
    {"MenuOnTop", "MenuMap", "Alwa&ys on Top", K::Toggle, ""},
    {"MenuAoM", "MenuMap", "Aircraft on &Map", K::Toggle, ""},
    {"MenuFindObject", "MenuMap", "Find &Object", K::Command, ""},
    {"menuPrintMap", "MenuMap", "P&rint Map", K::Command, ""},
    {"menuAirport", "MenuMap", "&Airports", K::Toggle, "btnAP"},
    {"MenuNavaid", "MenuMap", "&Navaids", K::Heading, ""},
    {"MenuVOR", "MenuNavaid", "&VOR", K::Toggle, "btnVor"},
    {"MenuNDB", "MenuNavaid", "&NDB", K::Toggle, "btnNdb"},
    {"MenuILS", "MenuNavaid", "&ILS", K::Toggle, "btnIls"},
    {"MenuIntersection", "MenuNavaid", "Int&ersection", K::Toggle, "btnInter"},
    {"MenuGPSFix", "MenuNavaid", "&GPS Fix", K::Toggle, "btnFix"},
    {"MenuUserWP", "MenuNavaid", "&User Waypoints", K::Toggle, "btnUser"},
    {"MenuAirways", "MenuMap", "Air&ways", K::Heading, ""},
    {"MenuJet", "MenuAirways", "&Jet (High Alt)", K::Toggle, "btnJet"},
    {"MenuVictor", "MenuAirways", "&Victor (Low Alt)", K::Toggle, "btnVictor"},
    {"MenuAirspaces", "MenuMap", "A&irspaces", K::Heading, ""},
    {"MenuADA", "MenuAirspaces", "&Advisory Area", K::Toggle, ""},
    {"MenuADIZ", "MenuAirspaces", "Air &Defense Identification Zone", K::Toggle, ""},
    {"menuARTCC", "MenuAirspaces", "Air &Route Traffic Control Center", K::Toggle, ""},
    {"MenuACC", "MenuAirspaces", "Area &Control Center", K::Toggle, ""},
    {"MenuBZ", "MenuAirspaces", "&Buffer Zone", K::Toggle, ""},
    {"MenuCTA", "MenuAirspaces", "C&ontrol Area", K::Toggle, "btnAir1"},
    {"MenuCtrz", "MenuAirspaces", "Control &Zones", K::Toggle, "btnCtrz"},
    {"menuFIR", "MenuAirspaces", "&Flight Information Region", K::Toggle, "btnAir2"},
    {"MenuOCA", "MenuAirspaces", "Oc&ean Control Area", K::Toggle, ""},
    {"menuRA", "MenuAirspaces", "&Radar Area", K::Toggle, ""},
    {"menuTCA", "MenuAirspaces", "&Terminal Control Area", K::Toggle, ""},
    {"menuUIR", "MenuAirspaces", "&Upper Flight Information Region", K::Toggle, ""},
    {"MenuMSA", "MenuMap", "Minimum Sa&fe Altitude", K::Toggle, "btnMsa"},
    {"MenuCoastlines", "MenuMap", "Coastline&s", K::Toggle, "btnMap"},
    {"MenuCompass", "MenuMap", "&Compass", K::Toggle, ""},
    {"MenuLatLong", "MenuMap", "La&tLong", K::Toggle, ""},
    {"MenuDisplayProc", "MenuMap", "Proce&dure", K::Toggle, ""},
    {"menuRoundWorld", "MenuMap", "Round &World", K::Toggle, ""},

    {"MenuFlightplan", "", "&Flight Plan", K::Heading, ""},
    {"MenuNewFP", "MenuFlightplan", "&New", K::Command, ""},
    {"MenuDeleteEnrouteWPs", "MenuFlightplan", "&Delete Enroute Waypoints", K::Command, ""},
    {"MenuShowPlan", "MenuFlightplan", "&Show Plan", K::Toggle, ""},
    {"MenuShowRoute", "MenuFlightplan", "Show &Route", K::Toggle, ""},
    {"MenuCreateNavaid", "MenuFlightplan", "&Navaid Plan", K::Command, ""},
    {"MenuCreateLoAlt", "MenuFlightplan", "&Low Altitude Plan", K::Command, ""},
    {"MenuCreateHiAlt", "MenuFlightplan", "&High Altitude Plan", K::Command, ""},
    {"MenuAddWPs", "MenuFlightplan", "A&dd Airway Waypoints", K::Command, ""},
    {"MenuOpenFP", "MenuFlightplan", "&Open", K::Command, ""},
    {"MenuSaveFPAs", "MenuFlightplan", "S&ave as", K::Command, ""},
    {"MenuSaveFP", "MenuFlightplan", "Sa&ve", K::Command, ""},
    {"menuOpenSegment", "MenuFlightplan", "Open &Route Segment", K::Command, ""},
    {"menuSaveSegment", "MenuFlightplan", "Save Route Se&gment", K::Command, ""},
    {"MenuPrintPlan", "MenuFlightplan", "&Print Plan", K::Command, ""},
    {"menuShowCoords", "MenuFlightplan", "Show &Coordinates", K::Toggle, ""},
    {"menuExtTable", "MenuFlightplan", "E&xtended Table", K::Toggle, ""},

    {"MenuSidStar", "", "&SID/STAR", K::Heading, ""},
    {"MenuOpenSid", "MenuSidStar", "&Open SID", K::Command, ""},
    {"MenuOpenStar", "MenuSidStar", "O&pen STAR", K::Command, ""},
    {"menuDeleteSid", "MenuSidStar", "&Delete SID", K::Command, ""},
    {"menuDeleteStar", "MenuSidStar", "Delete ST&AR", K::Command, ""},

    {"MenuWindow", "", "&Window", K::Heading, ""},
    {"MenuAircraft", "MenuWindow", "Air&craft", K::Command, ""},
    {"MenuFuel", "MenuWindow", "&Fuel", K::Command, ""},
    {"MenuProc", "MenuWindow", "Pr&ocedure", K::Command, ""},
    {"MenuEditUser", "MenuWindow", "&User Waypoint", K::Command, ""},
    {"MenuSelectAP", "MenuWindow", "&Go to Airport", K::Command, ""},
    {"MenuSelParking", "MenuWindow", "&Select Parking", K::Command, ""},
    {"MenuAPPrev", "MenuWindow", "&Airport Preview", K::Command, ""},
    {"MenuPref", "MenuWindow", "O&ptions", K::Command, ""},

    {"MenuGPS", "", "&GPS", K::Heading, ""},
    {"MenuLocal", "MenuGPS", "&Connect to FS", K::Toggle, ""},
    {"MenuGPSWindow", "MenuGPS", "&GPS Window", K::Toggle, ""},
    {"MenuAi", "MenuGPS", "AI &Traffic", K::Toggle, "btnAI"},
    // Which simulator Connect to FS links to (SIMSOURCE=).
    {"MenuSimSource", "MenuGPS", "&Simulator...", K::Command, ""},
    {"menuAIInfo", "MenuGPS", "AI &Info Airborne", K::Heading, ""},
    {"menuAIATCID", "menuAIInfo", "&ATC ID", K::Toggle, ""},
    {"menuAISpeedAlt", "menuAIInfo", "&Speed/Altitude", K::Toggle, ""},
    {"menuAIAirports", "menuAIInfo", "Air&ports", K::Toggle, ""},
    {"menuAIInfoGround", "MenuGPS", "AI I&nfo Ground", K::Heading, ""},
    {"menuATCIDGround", "menuAIInfoGround", "&ATC ID", K::Toggle, ""},
    {"menuAIDestination", "menuAIInfoGround", "&Destination", K::Toggle, ""},
    {"menuTCASSound", "MenuGPS", "TCAS &Sound", K::Toggle, ""},

    {"MenuZoom", "", "&Zoom", K::Heading, ""},
    {"menuAutozoom", "MenuZoom", "&Autozoom", K::Toggle, ""},
    {"Menu3NM", "MenuZoom", "&3 NM", K::Command, ""},
    {"Menu10NM", "MenuZoom", "1&0 NM", K::Command, ""},
    {"Menu30NM", "MenuZoom", "3&0 NM", K::Command, ""},
    {"Menu50NM", "MenuZoom", "&50 NM", K::Command, ""},
    {"Menu100NM", "MenuZoom", "&100 NM", K::Command, ""},
    {"Menu200NM", "MenuZoom", "&200 NM", K::Command, ""},
    {"Menu400NM", "MenuZoom", "&400 NM", K::Command, ""},
    {"Menu800NM", "MenuZoom", "&800 NM", K::Command, ""},
    {"Menu2000NM", "MenuZoom", "2000 &NM", K::Command, ""},

    {"menuLogbook", "", "&Logbook", K::Heading, ""},
    {"menuAutolog", "menuLogbook", "&AutoLog", K::Toggle, ""},
    {"menuShowLogbook", "menuLogbook", "&Show Logbook", K::Command, ""},

    {"MenuTrace", "", "&Blackbox", K::Heading, ""},
    {"MenuTraceActive", "MenuTrace", "Show &Track", K::Toggle, ""},
    {"menuShowAlt", "MenuTrace", "Show &Altitude", K::Toggle, ""},
    {"MenuReplay", "MenuTrace", "&Flight Analysis", K::Toggle, ""},
    {"MenuTraceReset", "MenuTrace", "&Reset / Save", K::Command, ""},

    {"menuVFR", "", "&VFR", K::Heading, ""},
    {"menuCheckControlzone", "menuVFR", "&Check Control Zone", K::Toggle, ""},
    {"MenuViolation", "menuVFR", "Control Zone &Violation", K::Toggle, ""},

    {"menuTracks", "", "&Tracks", K::Heading, ""},
    {"menuNatrack", "menuTracks", "&Natrack", K::Heading, ""},
    {"menuNatrackRoutes", "menuNatrack", "&Show Routes", K::Toggle, ""},
    {"menuDownloadNATrack", "menuNatrack", "&Download NATrack", K::Command, ""},
    {"MenuPacot", "menuTracks", "&Pacot", K::Heading, ""},
    {"menuPacotRoutes", "MenuPacot", "&ShowRoutes", K::Toggle, ""},
    {"menuDownloadPacot", "MenuPacot", "&Download Pacot", K::Command, ""},

    {"menuWx", "", "&Weather", K::Heading, ""},
    {"menuShowWx", "menuWx", "&Show Weather", K::Toggle, ""},
    {"menuShowWa", "menuWx", "Show &Wind Arrow", K::Toggle, ""},
    {"MenuShowSym", "menuWx", "Show S&ymbol", K::Toggle, ""},
    {"menuDownloadWx", "menuWx", "&Download Weather", K::Command, ""},

    {"menuOnline", "", "&Online", K::Heading, ""},
    {"menuIvao", "menuOnline", "&IVAO", K::Heading, ""},
    {"menuIvaoAirspace", "menuIvao", "&Show Active Controllers", K::Toggle, ""},
    {"menuIvaoAircraft", "menuIvao", "Show Static &Aircraft", K::Toggle, ""},
    {"menuDownloadIVAO", "menuIvao", "&Download current IVAO data", K::Command, ""},
    {"menuVatsim", "menuOnline", "&VATSIM", K::Heading, ""},
    {"menuVatsimAirspace", "menuVatsim", "&Show Active Controllers", K::Toggle, ""},
    {"menuVatsimAircraft", "menuVatsim", "Show Static &Aircraft", K::Toggle, ""},
    {"menuDownloadVatSim", "menuVatsim", "&Download current VATSIM data", K::Command, ""},
    {"menuDisplaySettings", "menuOnline", "&Display Settings", K::Heading, ""},
    {"menuShowAll", "menuDisplaySettings", "&Show All ", K::Toggle, ""},
    {"menuShowApproach", "menuDisplaySettings", "Show &Approach", K::Toggle, ""},
    {"menuShowTower", "menuDisplaySettings", "Show &Tower", K::Toggle, ""},
    {"menuShowGround", "menuDisplaySettings", "Show &Ground", K::Toggle, ""},
    {"menuShowDelivery", "menuDisplaySettings", "Show &Delivery", K::Toggle, ""},
    {"menuShowFSS", "menuDisplaySettings", "Show &FSS", K::Toggle, ""},
    {"menuShowAltSpeed", "menuDisplaySettings", "Show Altitude/&Speed", K::Toggle, ""},
    {"menuShowDepDest", "menuDisplaySettings", "Show De&parture/Destination", K::Toggle, ""},

    {"MenuExit", "", "&Exit", K::Command, ""},
    {"MenuHelp", "", "&Help", K::Command, ""},
    {"MenuAbout", "", "&About", K::Command, ""},
};

constexpr std::array<std::string_view, 14> kReducedHidden = {
    "MenuMap", "MenuFlightplan", "MenuSidStar", "MenuWindow", "MenuGPS", "MenuZoom", "MenuTrace",
    "MenuExit", "menuLogbook", "menuVFR", "MenuAbout", "menuOnline", "menuTracks", "menuWx"};

// The bottom bar, left to right: each button runs its menu twin.
constexpr BarButtonEntry kBarButtons[] = {
    {"cmdTracing", "Flight Analysis", "MenuReplay"},  {"cmdLogBook", "Logbook", "menuShowLogbook"},
    {"cmdSelectAP", "Airport", "MenuSelectAP"},       {"cmdAircraft", "Aircraft", "MenuAircraft"},
    {"cmdAPPreview", "Preview", "MenuAPPrev"},        {"cmdProcedure", "Procedure", "MenuProc"},
    {"cmdSIDSTAR", "SID/STAR", "MenuOpenSid"},        {"cmdAirportList", "Find", "MenuFindObject"},
    {"cmdShowFP", "Plan", "MenuShowPlan"},            {"cmdCreateFP", "Navaid", "MenuCreateNavaid"},
    {"cmdLoAlt", "Low Alt", "MenuCreateLoAlt"},       {"cmdHiAlt", "High Alt", "MenuCreateHiAlt"},
    {"cmdFuel", "Fuel", "MenuFuel"},                  {"cmdLayout", "Layout", ""},
    {"cmdParking", "Parking", "MenuSelParking"},      {"cmdApproach", "Approach", "MenuOpenStar"},
};

}  // namespace

std::span<const BarButtonEntry> BottomBarButtons() { return kBarButtons; }

std::span<const MenuEntry> MainMenuEntries() { return kEntries; }

const MenuEntry* FindMenuEntry(std::string_view name) {
  for (const MenuEntry& e : kEntries)
    if (e.name == name) return &e;
  return nullptr;
}

std::span<const std::string_view> ReducedModeHiddenMenus() { return kReducedHidden; }

}  // namespace orv
