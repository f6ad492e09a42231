// The pilots and controllers of the IVAO and VATSIM networks, read from the
// data files the download leaves in the database folder: the networks' old
// colon-separated text ("whazzup") and the JSON feeds they publish today.
// Every reader fills the same records, so that the map, the hover box and the
// menus never know where the data came from.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"
#include "core/Ui.h"

namespace orv {

struct AirportTables;

enum class OnlineNetwork : uint8_t { None, Ivao, Vatsim };

struct OnlineClientRec {
  std::string Callsign;
  std::string RealName;
  float Latitude = 0;
  float Longitude = 0;
  int32_t Altitude = 0;      // feet
  int32_t GroundSpeed = 0;   // knots
  std::string Departure;
  std::string Destination;
  // Only the JSON feeds carry these; the text files leave them empty.
  int32_t Heading = 0;
  std::string AircraftType;
  bool operator==(const OnlineClientRec&) const = default;
};

// Facility kinds in the order of the station arrays.
enum Facility : int { kFacTwr = 0, kFacGnd, kFacApp, kFacDel, kFacCtr, kFacFss, kFacilityCount };
inline constexpr std::array<std::string_view, kFacilityCount> kFacilitySuffix = {"_TWR", "_GND", "_APP",
                                                                                 "_DEL", "_CTR", "_FSS"};

// The absent latitude: a controller of a JSON feed with no airport and no
// sector to stand on.
inline constexpr float kNoPosition = -500.0f;

struct OnlineStationRec {
  std::string Station;       // callsign part ahead of the facility suffix
  std::string Qualifier;     // "(North)", "(Director)", ...
  std::string Reserved;
  float Latitude = 0;
  float Longitude = 0;
  float Frequency = 0;       // MHz
  std::string LandingRunways;
  std::string TakeoffRunways;
  std::string AtisSummary;
  // Kept for the hover box's lines: the whole callsign and the name.
  std::string Callsign;
  std::string RealName;
  int32_t Sector = -1;       // index of the sector outline it staffs, -1 none
  bool operator==(const OnlineStationRec&) const = default;
};

// One network's parse result: what the map, the hover box and the menu show.
struct OnlineData {
  OnlineNetwork Network = OnlineNetwork::None;
  std::vector<OnlineClientRec> Pilots;
  std::array<std::vector<OnlineStationRec>, kFacilityCount> Stations;
  int32_t PilotLines = 0;    // lines counted for the menu (":PILOT:")
  int32_t AtcLines = 0;      // lines counted for the menu (":ATC:")
  std::string Stamp;         // "24.11.2026-03:36 h"
  std::string OnlineHeader;  // stamp, " / ATC:", count, " - Pilots:", count

  int32_t OnlinePilotCount() const { return static_cast<int32_t>(Pilots.size()) - 1; }
  int32_t StationCount(int facility) const { return static_cast<int32_t>(Stations[facility].size()) - 1; }
};

// A sector outline of orv_Ivao.dat / orv_Vatsim.dat.
struct OnlineSector {
  std::string Name;
  std::vector<std::pair<float, float>> Points;   // latitude, longitude
  float North = -90, South = 90, West = 180, East = -180;
  float CenterLat = 0, CenterLon = 0;
  int16_t Active = 0;        // -1 when a station staffs it
};

inline constexpr int kMaxSectors = 500;

// ------------------------------------------------------------ suffix tables

// The qualifier of the text from the station's "_" on, for one facility.
// "#" drops the station.
std::string IvaoQualifier(std::string_view text, int facility);
std::string VatsimQualifier(std::string_view text);

// ------------------------------------------------------------ readers

// Looks up airports by their trimmed ICAO code, first in array order. Built
// once per parse; the database's airport array is scanned once to build it.
class AirportFinder {
public:
  explicit AirportFinder(const AirportTables* airports);
  // Index into Airports, or -1.
  int32_t Find(std::string_view icao) const;
  const AirportTables* Tables() const { return airports_; }

private:
  const AirportTables* airports_;
  std::vector<std::pair<std::string, int32_t>> sorted_;
};

// The text formats. Fill `out` from scratch; false when no pilot was found,
// which the caller reports. Never read outside the text.
bool ParseIvaoText(std::string_view text, const AirportFinder& airports, OnlineData& out);
bool ParseVatsimText(std::string_view text, const AirportFinder& airports, OnlineData& out);

// The JSON feeds: the VATSIM data feed v3 and the IVAO whazzup v2. False, with
// a reason in `error`, when the document is not one; a feed with no pilot is
// reported as the text readers do.
bool ParseVatsimJson(std::string_view text, const AirportFinder& airports, OnlineData& out, std::string& error);
bool ParseIvaoJson(std::string_view text, const AirportFinder& airports, OnlineData& out, std::string& error);

// The data URL named by a VATSIM status.json ("data" -> "v3"), or nothing.
std::optional<std::string> VatsimJsonDataUrl(std::string_view statusJson);

// True when the text is a JSON document (first non-blank byte "{").
bool LooksLikeJson(std::string_view text);

// Any of the four formats, told apart by their first bytes.
bool ParseOnlineText(OnlineNetwork network, std::string_view text, const AirportFinder& airports,
                     OnlineData& out, std::string& error);

// The sector file: "#" opens a sector, "lat:lon" adds a point, ";" comments.
std::vector<OnlineSector> ParseSectorFile(std::string_view text);

// Marks the sectors staffed by a station (by the station's name against the
// sector's, ignoring case) and gives a station without a position of its own
// the sector's centre. Clears every flag first.
void MatchIvaoSectors(OnlineData& data, std::vector<OnlineSector>& sectors);

// ------------------------------------------------------------ texts

// "&IVAO    " / "&VATSIM", and with " - " and OnlineHeader after a parse.
std::string OnlineMenuCaption(OnlineNetwork network, const OnlineData* data);

// ------------------------------------------------------------ the file steps

// ParseIvao / ParseVatsim: reads database\orv_ivao.txt or orv_vatsim.txt
// into `data` (kept as it was on failure, with the Part's message, the .old
// copied back and the menu caption reset) and matches the sectors.
// Returns the new menu caption in `caption`.
bool ParseOnlineFile(const AppFolder& app, OnlineNetwork network, const AirportTables* airports,
                     std::vector<OnlineSector>& sectors, OnlineData& data, Ui& ui, std::string& caption);
// The same with a finder kept from one download to the next (building it
// sorts the airport codes once).
bool ParseOnlineFile(const AppFolder& app, OnlineNetwork network, const AirportFinder& airports,
                     std::vector<OnlineSector>& sectors, OnlineData& data, Ui& ui, std::string& caption);

// Reads database\orv_Ivao.dat or orv_Vatsim.dat; empty when missing.
std::vector<OnlineSector> LoadSectorFile(const AppFolder& app, OnlineNetwork network);

}  // namespace orv
