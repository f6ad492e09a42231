// The simulator's values: which FSUIPC offsets the program touches, how each
// raw value becomes a number in natural units, and the one set of current
// aircraft values, SimSnapshot.
//
// Each accessor zeroes its result, queues one read, processes it and
// converts, so that one failed read spoils nothing but itself. On a failed
// round trip an accessor hands back its zeroed result (ReadLiveness gives 99).
// The conversion constants are the program's own and are kept as they are
// (3.2809 feet to the metre, 8.4e-8 degrees per unit, 0.00549 beside
// 0.005493164): recorded flights must come out the same.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace orv {

class FsuipcChannel;

// Offsets of the FSUIPC address space the program uses.
namespace fsoff {
inline constexpr std::uint32_t GroundAltitude = 0x0020;  // 4, metres * 256
inline constexpr std::uint32_t TimeBlock = 0x0238;       // 5 bytes
inline constexpr std::uint32_t Paused = 0x0264;          // 2
inline constexpr std::uint32_t MagVar = 0x02A0;          // 2, signed, 360/65536
inline constexpr std::uint32_t SpeedBlock = 0x02B4;      // 5 x 4
inline constexpr std::uint32_t VerticalSpeed = 0x02C8;   // 4, m/s * 256
inline constexpr std::uint32_t AdfMain = 0x034C;         // 2, BCD
inline constexpr std::uint32_t Com1 = 0x034E;            // 2, BCD
inline constexpr std::uint32_t Nav1 = 0x0350;            // 2, BCD
inline constexpr std::uint32_t AdfExtended = 0x0356;     // 2, BCD
inline constexpr std::uint32_t OnGround = 0x0366;        // 2, 0 = in the air
inline constexpr std::uint32_t DewPoint = 0x04C8;        // 2, signed, C * 256
inline constexpr std::uint32_t PrecipitationRate = 0x04CB;  // 1
inline constexpr std::uint32_t PrecipitationType = 0x04CC;  // 1, 1 rain, 2 snow
inline constexpr std::uint32_t SurfaceWindSpeed = 0x04D8;   // 2, knots
inline constexpr std::uint32_t SurfaceWindDir = 0x04DA;     // 2, signed
inline constexpr std::uint32_t PositionBlock = 0x0560;      // 9 x 4
inline constexpr std::uint32_t LatitudeLow = 0x0560;
inline constexpr std::uint32_t LatitudeHigh = 0x0564;
inline constexpr std::uint32_t LongitudeLow = 0x0568;
inline constexpr std::uint32_t LongitudeHigh = 0x056C;
inline constexpr std::uint32_t ApMaster = 0x07BC;         // 4
inline constexpr std::uint32_t ApHeadingHold = 0x07C8;    // 4
inline constexpr std::uint32_t ApHeading = 0x07CC;        // 2, signed
inline constexpr std::uint32_t ApAltitudeLock = 0x07D0;   // 4
inline constexpr std::uint32_t ApAltitude = 0x07D4;       // 4, metres * 65536
inline constexpr std::uint32_t FuelBlock = 0x0B74;        // 7 x (level, capacity)
inline constexpr std::uint32_t AltimeterUnits = 0x0C18;   // 2, 2+ = metres
inline constexpr std::uint32_t Visibility = 0x0E8A;       // 2, miles * 100
inline constexpr std::uint32_t AmbientTemperature = 0x0E8C;  // 2, C * 256
inline constexpr std::uint32_t Wind = 0x0E90;             // 2 speed + 2 direction
inline constexpr std::uint32_t Cloud2Altitude = 0x0E9C;   // 2, metres
inline constexpr std::uint32_t Cloud2Coverage = 0x0E9E;
inline constexpr std::uint32_t Cloud1Altitude = 0x0EA4;
inline constexpr std::uint32_t Cloud1Coverage = 0x0EA6;
inline constexpr std::uint32_t Cloud3Altitude = 0x0EAC;
inline constexpr std::uint32_t Cloud3Coverage = 0x0EAE;
inline constexpr std::uint32_t SurfaceTemperature = 0x0EC0;  // 2, C * 256
inline constexpr std::uint32_t Qnh = 0x0EC6;                 // 2, hPa * 16
inline constexpr std::uint32_t Storm = 0x0F04;               // 2, 10 = thunderstorm
inline constexpr std::uint32_t AtcStrings = 0x3130;          // 72 bytes
inline constexpr std::uint32_t FsuipcVersion = 0x3304;       // 4
inline constexpr std::uint32_t SimWord = 0x3308;             // 4 (2 for liveness)
inline constexpr std::uint32_t LibVersion = 0x330A;          // 2
inline constexpr std::uint32_t Altimeter = 0x3324;           // 4, feet or metres
inline constexpr std::uint32_t InMenu = 0x3365;              // 1
inline constexpr std::uint32_t GroundTrafficExt = 0xD040;
inline constexpr std::uint32_t AirTrafficExt = 0xD840;
inline constexpr std::uint32_t GroundTrafficHead = 0xE000;
inline constexpr std::uint32_t GroundTrafficEntries = 0xE080;
inline constexpr std::uint32_t AirTrafficHead = 0xF000;
inline constexpr std::uint32_t AirTrafficEntries = 0xF080;
}  // namespace fsoff

// The conversion constants.
inline constexpr double kFeetPerMetre = 3.2809;
inline constexpr double kLatitudeUnits = 111130.556;    // high word per degree
inline constexpr double kLongitudeUnits = 11930464.71;  // high word per degree
inline constexpr double kAttitudeDegrees = 8.4e-8;      // pitch and bank per unit
inline constexpr double kVerticalSpeedFactor = 196.8504 / 256;
inline constexpr double kWindDirFactor = 0.005493164;
inline constexpr double kSurfaceWindDirFactor = 0.0054931640625;
inline constexpr double kTrafficHeadingFactor = 0.00549;
inline constexpr double kHeadingBugFactor = 182.045;
inline constexpr double kFuelLevelFull = 8388608;

// The aircraft's current values.
struct SimSnapshot {
  float Latitude = 0;
  float Longitude = 0;
  std::int32_t Altitude = 0;
  float TrueHeading = 0;
  float MagHeading = 0;
  std::int16_t Pitch = 0;
  std::int16_t Bank = 0;
  std::int32_t VerticalSpeed = 0;
  std::int32_t Agl = 0;
  std::int32_t Tas = 0;
  std::int32_t Ias = 0;
  std::int32_t GroundSpeed = 0;
  std::int16_t WindSpeed = 0;
  std::int16_t WindDir = 0;
  float Wca = 0;
  float SimMagVar = 0;
  float Com1 = 0;
  std::int32_t ApAltitude = -500;
  std::int32_t TotalFuel = 0;
  std::int16_t Airborne = 0;  // -1 in the air, 0 on the ground
  std::string LocalTimeText;
  std::string UtcTimeText;
  float UtcMinutes = 0;
};

// Normalising an angle: one step only, above 360 minus 360, below 0 plus 360.
float Normalise360(float degrees);

// --- Readers ----------------------------------------------------------------

struct TimeBlock {
  std::string LocalTimeText = "00:00:00";
  std::string UtcTimeText = "00:00:00";
  float UtcMinutes = 0;
};
TimeBlock ReadTimeBlock(FsuipcChannel& ch);

struct PositionBlock {
  float Latitude = 0;
  float Longitude = 0;
  std::int32_t Altitude = 0;
  float TrueHeading = 0;
  float Pitch = 0;  // degrees, before rounding into the snapshot
  float Bank = 0;
  std::int16_t Airborne = -1;  // a failed on-ground read counts as airborne
};
// Reads 0x0C18, 0x0560, 0x3324 and 0x0366, in that order.
PositionBlock ReadPositionBlock(FsuipcChannel& ch);

struct SpeedBlock {
  std::int32_t GroundSpeed = 0;
  std::int32_t Tas = 0;
  std::int32_t Ias = 0;
  float R3 = 0;  // read and converted, not used
  float R4 = 0;
};
SpeedBlock ReadSpeedBlock(FsuipcChannel& ch);

std::int32_t ReadVerticalSpeed(FsuipcChannel& ch);

struct WindValue {
  std::int16_t Speed = 0;
  std::int16_t Dir = 0;
};
WindValue ReadWind(FsuipcChannel& ch);

float ReadMagVar(FsuipcChannel& ch);
std::int32_t ReadGroundAltitude(FsuipcChannel& ch);  // feet
float ReadCom1(FsuipcChannel& ch);                   // MHz
std::int32_t ReadTotalFuel(FsuipcChannel& ch);       // US gallons
bool ReadApAltitudeLock(FsuipcChannel& ch);
std::int32_t ReadApAltitude(FsuipcChannel& ch);      // feet
// The simulator word's low half, read each tick to see that the partner lives;
// 99 when the round trip failed.
std::int32_t ReadLiveness(FsuipcChannel& ch);
bool ReadPaused(FsuipcChannel& ch);
bool ReadInMenu(FsuipcChannel& ch);

struct AtcStrings {
  std::string FlightNumber = std::string(12, ' ');
  std::string TailNumber = std::string(12, ' ');
  std::string Airline = std::string(24, ' ');
  std::string AircraftType = std::string(24, ' ');
};
AtcStrings ReadAtcStrings(FsuipcChannel& ch);

// The COM1 word of 0x034E and of the traffic tables: its hexadecimal digits
// read as a decimal number, / 100, + 100 (0x2345 is 123.45).
float DecodeCom1Word(std::uint16_t word);

// --- Weather ------------------------------------------------------------------

std::int32_t ReadDewPoint(FsuipcChannel& ch);           // C
std::int32_t ReadPrecipitationRate(FsuipcChannel& ch);
std::int32_t ReadPrecipitationType(FsuipcChannel& ch);  // 1 rain, 2 snow
std::int32_t ReadSurfaceWindSpeed(FsuipcChannel& ch);   // knots
std::int32_t ReadSurfaceWindDir(FsuipcChannel& ch);     // degrees
float ReadVisibility(FsuipcChannel& ch);                // statute miles
std::int32_t ReadAmbientTemperature(FsuipcChannel& ch); // C
// Cloud layer 1, 2 or 3: base in feet and coverage as it stands.
std::int32_t ReadCloudAltitude(FsuipcChannel& ch, int layer);
std::int32_t ReadCloudCoverage(FsuipcChannel& ch, int layer);
std::int32_t ReadSurfaceTemperature(FsuipcChannel& ch); // C
std::int32_t ReadQnh(FsuipcChannel& ch);                // hPa
bool ReadStorm(FsuipcChannel& ch);                      // thunderstorm

struct WeatherValues {
  std::int32_t DewPoint = 0;
  std::int32_t PrecipitationRate = 0;
  std::int32_t PrecipitationType = 0;
  std::int32_t SurfaceWindSpeed = 0;
  std::int32_t SurfaceWindDir = 0;
  float Visibility = 0;
  std::int32_t AmbientTemperature = 0;
  std::array<std::int32_t, 3> CloudAltitude{};  // layers 1, 2, 3
  std::array<std::int32_t, 3> CloudCoverage{};
  std::int32_t SurfaceTemperature = 0;
  std::int32_t Qnh = 0;
  bool Storm = false;
};
WeatherValues ReadWeather(FsuipcChannel& ch);

// --- Traffic --------------------------------------------------------------------

inline constexpr std::uint32_t kTrafficEntrySize = 40;
inline constexpr std::uint32_t kTrafficExtSize = 20;
// Room of each table in the address space: the entries from 0xE080 (0xF080)
// to the next 4 KB boundary, the airborne extended entries from 0xD840 to
// 0xE000 (the ground ones have a little more, the smaller room holds for both).
inline constexpr std::uint32_t kTrafficEntriesRoom = 0x0F80;
inline constexpr std::uint32_t kTrafficExtRoom = 0x07C0;
inline constexpr std::uint32_t kTrafficMaxCount = kTrafficExtRoom / kTrafficExtSize;  // 99

// One slot of a traffic table, as laid out in its 40 bytes.
struct TrafficEntry {
  std::uint32_t Id = 0;  // 0 for a free slot
  float Latitude = 0;
  float Longitude = 0;
  float Altitude = 0;      // feet
  std::int16_t Heading = 0;  // raw; degrees = raw * 0.00549
  std::uint16_t GroundSpeed = 0;
  std::uint16_t Unused = 0;
  std::array<char, 16> AtcId{};
  std::uint16_t Com1 = 0;  // BCD as 0x034E
};

// One slot of an extended table, 20 bytes.
struct TrafficExtEntry {
  std::array<std::uint8_t, 8> Unused{};
  std::array<char, 4> Departure{};
  std::array<char, 4> Destination{};
  std::array<std::uint8_t, 4> Unused2{};
};

struct TrafficTable {
  std::vector<TrafficEntry> Entries;    // indices 0 to count - 1
  std::vector<TrafficExtEntry> Ext;     // same count
  std::uint16_t EntrySize = 0;          // as the head gave it
};

// Read the head, then the extended table, then the entries, each in its own
// round trip. A head whose count or entry size does not fit the table's room
// in the address space (or an entry size below 40) is refused: the table is
// left empty and the reader gives false. A count of 0 gives an empty table
// and true.
bool ReadAirTraffic(FsuipcChannel& ch, TrafficTable& table);
bool ReadGroundTraffic(FsuipcChannel& ch, TrafficTable& table);

// The table decoders, shared with the live tick and with the fuzzers: the head
// (9 bytes) gives entry size and count; an entry or extended entry is taken
// from its bytes.
struct TrafficHead {
  std::uint16_t EntrySize = 0;
  std::uint16_t Count = 0;
};
TrafficHead DecodeTrafficHead(const std::uint8_t* head9);
// True when the head's tables fit their room (count 0 always does).
bool TrafficHeadFits(const TrafficHead& head);
TrafficEntry DecodeTrafficEntry(const std::uint8_t* bytes40);
TrafficExtEntry DecodeTrafficExt(const std::uint8_t* bytes20);
void EncodeTrafficEntry(const TrafficEntry& entry, std::uint8_t* bytes40);
void EncodeTrafficExt(const TrafficExtEntry& ext, std::uint8_t* bytes20);

// The identifier up to the first 0 byte (at most 16 characters).
std::string TrafficAtcId(const TrafficEntry& entry);
// Departure and destination: printable bytes of each, joined by "-"; the "-"
// is left out when the departure is empty.
std::string TrafficRoute(const TrafficExtEntry& ext);
// Heading in whole degrees: raw * 0.00549, rounded.
std::int16_t TrafficHeadingDegrees(const TrafficEntry& entry);

// --- Writers --------------------------------------------------------------------

// The hand-made BCD of COM1 and NAV1: (frequency - 100) * 100 with "0000",
// then each digit times 16^(4 - position).
std::uint16_t RadioBcdWord(float frequency);
// ADF: the main word (digits 2 to 4 of "0000.0") and the extended word (first
// and last digit).
struct AdfWords {
  std::uint16_t Main = 0;
  std::uint16_t Extended = 0;
};
AdfWords AdfBcdWords(float frequency);
// The heading bug's raw word for a heading in whole degrees.
std::int16_t HeadingBugWord(std::int16_t heading);
// The high parts of the position words for a latitude and longitude.
std::int32_t LatitudeHighWord(float latitude);
std::int32_t LongitudeHighWord(float longitude);

bool WriteCom1(FsuipcChannel& ch, float frequency);
bool WriteNav1(FsuipcChannel& ch, float frequency);
bool WriteAdf(FsuipcChannel& ch, float frequency);  // main, then extended
bool WriteApMaster(FsuipcChannel& ch, std::uint32_t value);
bool WriteApHeadingHold(FsuipcChannel& ch, std::uint32_t value);
bool WriteApHeadingBug(FsuipcChannel& ch, std::int16_t heading);
// Four writes, each its own round trip: 0x0560 (0), 0x0564, 0x0568 (0), 0x056C.
bool WriteAircraftPosition(FsuipcChannel& ch, float latitude, float longitude);

// --- The whole set --------------------------------------------------------------

// One tick's reads into the snapshot, in the tick's order: time, position
// (with units, altimeter and on-ground), fuel, speeds, vertical speed, the
// autopilot altitude (-500, refreshed when climbing or descending faster than
// 250 fpm with the altitude hold on), wind, magnetic variation, MagHeading,
// ground altitude and Agl, Com1. Wca is left to the tick. The liveness read
// is not part of it.
void ReadSnapshot(FsuipcChannel& ch, SimSnapshot& snap);

}  // namespace orv
