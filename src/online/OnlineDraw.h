// The online, weather and track layers on a DrawTarget for a given view, and
// the hover box's lines of those layers. The render pass calls the Draw
// functions at its places; the hover tick calls the Hover functions with the
// pointer's position in surface units.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "map/DrawTarget.h"
#include "online/Metar.h"
#include "online/OnlineData.h"
#include "online/Tracks.h"

namespace orv {

struct ViewState;
struct Settings;

// The colours of the online layers (orv.ini's IVAO keys; the pilots take
// STATICACCOLOR) and the label options.
struct OnlineDrawStyle {
  Colour Fir = RgbColour(128, 128, 255);
  Colour Fss = RgbColour(0, 128, 128);
  Colour Twr = RgbColour(255, 0, 0);
  Colour Gnd = RgbColour(0, 160, 0);
  Colour App = RgbColour(0, 0, 255);
  Colour Pilot = RgbColour(255, 128, 0);
  bool ShowAltSpeed = true;    // ONLSHOWALTSPEED
  bool ShowDepDest = true;     // ONLSHOWDEPDEST
  std::string OwnCallsign;     // ONLUSRCALLSIGN: drawn in the highlight colour
  Colour Hilite = RgbColour(255, 0, 255);
};
OnlineDrawStyle OnlineStyleFromSettings(const Settings& s);

// The staffed sector outlines (at most 500), in the FIR colour.
void DrawOnlineSectors(DrawTarget& t, const ViewState& v, const std::vector<OnlineSector>& sectors,
                       const OnlineDrawStyle& style);
// The controllers: a ring per station in its facility's colour, the label
// (station, qualifier, frequency) below label 300.
void DrawOnlineStations(DrawTarget& t, const ViewState& v, const OnlineData& data, const OnlineDrawStyle& style,
                        int32_t label);
// The pilots: a small aircraft turned to its heading, callsign and, by the
// options, altitude and speed and the route (below label 200), callsigns
// below label 300.
void DrawOnlinePilots(DrawTarget& t, const ViewState& v, const OnlineData& data, const OnlineDrawStyle& style,
                      int32_t label);

// Which of the pictures sun, snow, mist, rain, thunder, fog and cloud
// stands for a report.
enum class WxSymbol : uint8_t { Sun, Snow, Mist, Rain, Thunder, Fog, Cloud };
WxSymbol WeatherSymbolOf(const MetarRec& rec);
// The weather symbols, at a label of at most 400.
inline constexpr int32_t kMaxWeatherLabel = 400;
void DrawWeatherSymbols(DrawTarget& t, const ViewState& v, const std::vector<MetarRec>& reports, int32_t label);

// The tracks: the route through its waypoints, the name and levels at the
// first point. Tracks whose validity has not begun or has ended (hhmm of
// the current UTC time against ValidFrom / 100 and ValidTo / 100) are drawn
// dotted.
void DrawTracks(DrawTarget& t, const ViewState& v, const TrackTable& tracks, Colour colour, int32_t label,
                int32_t utcHhmm);

// ------------------------------------------------------------ hover

// Rows 2 and 3: the controllers under the pointer (radius 100), by facility
// in the box's order; a centre or FSS with a sector is tested at the
// sector's centre. hitSector is the sector to outline, -1 for none.
std::vector<std::string> StationHoverLines(const OnlineData& data, const ViewState& v, double x, double y,
                                           int32_t& hitSector, const std::vector<OnlineSector>* sectors = nullptr);
// Row 15: the pilots under the pointer (150 across, 250 up and down).
std::vector<std::string> PilotHoverLines(const OnlineData& data, const ViewState& v, double x, double y,
                                         const OnlineDrawStyle& style);
// Row 10: the tracks with a waypoint under the pointer.
std::vector<std::string> TrackHoverLines(const TrackTable& tracks, const ViewState& v, double x, double y);
// Row 11: the weather stations under the pointer.
std::vector<std::string> WeatherHoverLines(const std::vector<MetarRec>& reports, const ViewState& v, double x,
                                           double y);

}  // namespace orv
