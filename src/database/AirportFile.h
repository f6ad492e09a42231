// The airport database of the chosen simulator's folder: the region, country,
// state and city name files that feed the airport selection, and airport.orv
// with every airport's runways, frequencies, parking positions and ILS.
//
// Readers decode a whole file held in memory and either fill the tables or
// hand back one message of the form
//   "<file name>: record <n> at byte <offset>: <what is wrong>"
// naming the record (counted from 1) and the byte where it starts. Problems
// with the count word at the head of a file are reported as record 0 at byte 0.
// On an error the tables are left exactly as they were.
//
// Writers produce the same layouts byte for byte; the database manager and the
// test fixtures build their files with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"

namespace orv {

class MagVarGrid;

// ------------------------------------------------------------------ records

// Which end of a runway an ILS serves.
enum class RunwayEnd : int8_t { None = 0, Low = 1, High = 2 };

// Runway record, 48 bytes in the file. Designators are kept as the file holds
// them; RunwayDesignator() gives the shown form.
struct RunwayRec {
  FixedStr<5> LowEnd;      // designator such as "09L"
  FixedStr<5> HighEnd;     // the opposite designator
  float Lat = 0;
  float Lon = 0;
  float TrueHeading = 0;   // degrees, low end
  float Value = 0;         // stored as read
  int16_t LengthFeet = 0;
  int16_t WidthFeet = 0;
  uint8_t Surface = 0;     // index into SurfaceKinds (0..256, so any byte is in range)
  FixedStr<5> LowIls;      // ident of the ILS on the low end
  FixedStr<5> HighIls;     // ident of the ILS on the high end
  FixedStr<1> Flag;
  // Filled by LinkIlsToRunways: index into the airport's Ils list, -1 for none.
  int32_t LowIlsIndex = -1;
  int32_t HighIlsIndex = -1;
};

// Frequency record, 58 bytes in the file.
struct FrequencyRec {
  FixedStr<5> Ident;
  FixedStr<30> Name;       // the file's 40 characters, cut to 30
  float Word1 = 0;         // stored as read
  float Word2 = 0;         // stored as read
  float Frequency = 0;     // MHz
  uint8_t Kind = 1;        // 1..12, index into FrequencyKinds
};

// Parking record, 29 bytes in the file.
struct ParkingRec {
  FixedStr<50> Ident;      // the file's 5 characters, widened to 50
  float Lat = 0;
  float Lon = 0;
  int32_t Number = 0;      // shown after the name
  int32_t Kind = 1;        // 1..13, index into ParkingKinds
  int32_t NameCode = 0;    // 0..37, index into ParkingNames
  int32_t Value = 0;       // stored as read
};

// ILS record, 107 bytes in the file.
struct IlsRec {
  int16_t LoadFlag = -1;   // the 16-bit flag every ILS carries, -1 from the loader
  int32_t Airport = 0;     // airport index as the file gives it (not checked: the reader never uses it)
  FixedStr<5> Ident;
  FixedStr<40> Name;
  FixedStr<5> Runway;
  float Values[8] = {};    // the database manager's eight values, stored as read
  FixedStr<5> Ident2;
  FixedStr<1> Flag;
  // Filled by LinkIlsToRunways: the runway (index into the airport's Runways,
  // -1 for none) and the end this ILS serves.
  int32_t RunwayIndex = -1;
  RunwayEnd End = RunwayEnd::None;
};

// The database manager's values of an ILS by their meaning; the file keeps
// them as plain stored values.
inline float IlsFrequency(const IlsRec& ils) { return ils.Values[0]; }  // MHz
// The localizer's true course as stored; 0 or out of range when the
// database manager had none.
inline float IlsCourse(const IlsRec& ils) { return ils.Values[1]; }
// The glide slope angle in degrees; 0 for a localizer without glide slope.
inline float IlsGlideSlope(const IlsRec& ils) { return ils.Values[2]; }
// The course the feather is drawn on: the stored one when it is a course
// (above 0, at most 360), else the heading of the runway end it serves.
inline float IlsCourseOr(const IlsRec& ils, float runwayCourse) {
  const float course = IlsCourse(ils);
  return course > 0 && course <= 360 ? course : runwayCourse;
}

struct AirportRec {
  FixedStr<10> Icao;       // trimmed, widened from 5
  FixedStr<150> Name;      // trimmed, widened from 40
  std::string City;        // trimmed
  std::string State;       // trimmed
  std::string Country;     // trimmed
  float Lat = 0;
  float Lon = 0;
  int32_t Elevation = 0;   // the header's elevation word (feet), stored as read
  int32_t Word2 = 0;       // the header's second stored word, stored as read
  float MagVar = 0;        // from the variation grid at the floors of Lat and Lon, never from the file
  std::vector<RunwayRec> Runways;
  std::vector<FrequencyRec> Frequencies;
  std::vector<IlsRec> Ils;
  std::vector<ParkingRec> Parking;

  int32_t RunwayCount() const { return static_cast<int32_t>(Runways.size()); }
  int32_t FrequencyCount() const { return static_cast<int32_t>(Frequencies.size()); }
  int32_t IlsCount() const { return static_cast<int32_t>(Ils.size()); }
  int32_t ParkingCount() const { return static_cast<int32_t>(Parking.size()); }
};

// An Airports slot that no record filled keeps a blank Icao (and all other
// fields at their defaults); this is the test for a filled slot.
inline bool IsAirportSlotUsed(const AirportRec& airport) { return !airport.Icao.Trimmed().empty(); }

struct CountryEntry {
  std::string Name;
  std::string Region;
};

struct StateEntry {
  std::string Name;
  std::string Country;
};

struct CityEntry {
  std::string Name;
  std::string State;
  std::string Country;
};

// The arrays of the airport database. Each hierarchy array is sized once to
// the file's Count plus its slack (Regions 0..Count, the others 0..Count+2);
// entries fill it from index 0 in file order, records whose first character
// is NUL taking no slot, and the ...Count members say how many were filled.
// A slot past them holds empty strings.
//
// Airports is sized 0..Count+50; records go to the slot their Index names.
// A slot no record filled is a default AirportRec (blank Icao, see
// IsAirportSlotUsed).
struct AirportTables {
  std::vector<std::string> Regions;
  std::vector<CountryEntry> Countries;
  std::vector<StateEntry> States;
  std::vector<CityEntry> Cities;
  int32_t RegionCount = 0;
  int32_t CountryCount = 0;
  int32_t StateCount = 0;
  int32_t CityCount = 0;

  std::vector<AirportRec> Airports;
  int32_t AirportFileCount = 0;   // Count as airport.orv states it
  int32_t DeletedSlots = 0;       // headers taken as deleted slots while loading
};

// The slot of the airport whose ICAO code is icao (blanks around it and the
// case of its letters do not count), the first one in slot order when two
// carry the code; -1 when none does or icao is blank.
int32_t FindAirportByIcao(const AirportTables& tables, std::string_view icao);

// ------------------------------------------------------------------ file layouts

inline constexpr std::size_t kRegionRecordSize = 30;
inline constexpr std::size_t kCountryRecordSize = 70;
inline constexpr std::size_t kStateRecordSize = 80;
inline constexpr std::size_t kCityRecordSize = 120;
inline constexpr std::size_t kAirportHeaderSize = 224;
inline constexpr std::size_t kRunwayRecordSize = 48;
inline constexpr std::size_t kFrequencyRecordSize = 58;
inline constexpr std::size_t kParkingRecordSize = 29;
inline constexpr std::size_t kIlsRecordSize = 107;
// Airports holds this many slots above the file's Count.
inline constexpr int32_t kAirportSlack = 50;

// ------------------------------------------------------------------ readers

std::optional<std::string> ParseRegionFile(const uint8_t* data, std::size_t size, AirportTables& out);
std::optional<std::string> ParseCountryFile(const uint8_t* data, std::size_t size, AirportTables& out);
std::optional<std::string> ParseStateFile(const uint8_t* data, std::size_t size, AirportTables& out);
std::optional<std::string> ParseCityFile(const uint8_t* data, std::size_t size, AirportTables& out);

// airport.orv. Each airport's MagVar comes from the grid at the floors of its
// Lat and Lon. The ILS links are not made here: LinkIlsToRunways runs once
// all files are loaded.
std::optional<std::string> ParseAirportFile(const uint8_t* data, std::size_t size, const MagVarGrid& grid,
                                            AirportTables& out);

// ------------------------------------------------------------------ writers

// Count is the number of entries; every entry becomes one record.
std::vector<uint8_t> BuildRegionFile(const std::vector<std::string>& regions);
std::vector<uint8_t> BuildCountryFile(const std::vector<CountryEntry>& countries);
std::vector<uint8_t> BuildStateFile(const std::vector<StateEntry>& states);
std::vector<uint8_t> BuildCityFile(const std::vector<CityEntry>& cities);

// Writes slots 0 up to the last used one (IsAirportSlotUsed), each with its
// position as Index; Count is that number of slots. An unused slot below the
// last used one is written as a header with Index -1 and nothing else (zero
// bytes, no lists), which the reader passes over.
// Lists go in the file's order: runways, frequencies, parking, then ILS.
std::vector<uint8_t> BuildAirportFile(const std::vector<AirportRec>& airports);

// ------------------------------------------------------------------ runways

// The shown form of a designator: when the first two characters read as a
// number from 37 to 44 they become the compass point ("37" "N", "38" "NE",
// ... "44" "NW") with the rest kept behind; otherwise (36 or less, or 45
// and above, which have no compass point) the text stays. A NUL ends the text.
// Blanks at both ends are removed.
std::string RunwayDesignator(std::string_view designator);

// The runway list's name of a designator: "Heli  " + the shown designator
// for a helipad (the designator contains "00H"), else "Rwy " + it.
std::string RunwayListName(std::string_view designator);

// Shown headings. The low end subtracts the airport's variation; the high end
// is the true heading plus 180 without any variation. The asymmetry is the
// program's own behaviour and is kept; neither value is wrapped into 0..360.
// Both are single-precision sums, as the stored fields are.
float LowEndHeading(const RunwayRec& runway, float airportMagVar);
float HighEndHeading(const RunwayRec& runway);

// Ties each ILS of every airport to the runway end whose LowIls or HighIls
// (upper-cased and trimmed) equals the ILS's trimmed ident. ILS are walked in
// order and, for each, every runway's low then high end; the last match wins
// on both sides. An ILS with a blank ident is tied to nothing. Earlier links
// of the airport are cleared first, so the pass may run again; the tables
// form passes over airports without ILS, whose runways keep the loader's -1.
void LinkIlsToRunways(AirportRec& airport);
void LinkIlsToRunways(AirportTables& tables);

// The ILS tied to a runway end by LinkIlsToRunways, or nullptr.
const IlsRec* IlsForRunwayEnd(const AirportRec& airport, int32_t runway, RunwayEnd end);

}  // namespace orv
