// Readers of the X-Plane text formats the database manager builds from:
// apt.dat (versions 1000 to 1200), nav.dat / earth_nav.dat (810 and 1100 up),
// fix.dat (600 and 1100 up) and awy.dat (640 with positions, 1100 up with
// idents resolved later). Each reader walks one whole file held in memory and
// appends plain source records; nothing here knows the database layouts.
//
// A line that cannot be read is counted in the report with its line number
// (the first few are kept for the user) and left out; a reader never stops on
// bad input.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv::dbm {

// What a reader met: lines read, records taken, faulty lines.
struct SourceReport {
  std::string File;                       // name used in messages
  int64_t Lines = 0;
  int64_t Records = 0;
  int64_t Malformed = 0;
  std::vector<std::string> FirstProblems; // "<file>: line <n>: <what>", at most kKeptProblems
  std::string Cycle;                      // "data cycle ..." from the header line, when given
  int Version = 0;                        // from the header line
  static constexpr std::size_t kKeptProblems = 5;
  void Problem(int64_t line, std::string_view what);
};

enum class RunwayKind : uint8_t { Land, Water, Helipad, OldRow10 };

struct SrcRunway {
  RunwayKind Kind = RunwayKind::Land;
  std::string End1;          // designator of the first end ("09L", "H1")
  std::string End2;
  double Lat = 0, Lon = 0;   // middle of the runway
  double TrueHeading = 0;    // from the first end towards the second
  double LengthFeet = 0;
  double WidthFeet = 0;
  int Surface = 0;           // X-Plane surface code
};

struct SrcFrequency {
  int Row = 0;               // 50..56 (the 1050..1056 rows are folded onto them)
  int KHz = 0;
  std::string Name;
};

struct SrcParking {
  bool Gate = false;         // row 1300 (else a start position, row 15)
  double Lat = 0, Lon = 0, Heading = 0;
  std::string Type;          // gate, hangar, misc, tie_down (rows 1300)
  std::string Aircraft;      // "heavy|jets|..." (rows 1300)
  std::string Operation;     // from row 1301: none, general_aviation, airline, cargo, military
  std::string Name;
};

struct SrcTaxiSegment {
  double Lat1 = 0, Lon1 = 0, Lat2 = 0, Lon2 = 0;
  double WidthFeet = 0;
  std::string Name;
};

struct SrcPoint {
  double Lat = 0, Lon = 0;
};

struct SrcAirport {
  int Row = 1;               // 1 airport, 16 seaplane base, 17 heliport
  std::string Icao;
  std::string Name;
  int ElevationFeet = 0;
  std::string City, State, Country, RegionCode;  // from the 1302 metadata
  bool HasDatum = false;
  double DatumLat = 0, DatumLon = 0;
  bool HasTower = false;
  double TowerLat = 0, TowerLon = 0;
  std::vector<SrcRunway> Runways;
  std::vector<SrcFrequency> Frequencies;
  std::vector<SrcParking> Parking;
  std::vector<SrcTaxiSegment> Taxiways;
  std::vector<std::vector<SrcPoint>> Pavements;  // outer rings of the pavement areas
  int64_t Line = 0;          // line of the header row
};

// nav.dat row kinds as the file numbers them.
enum NavRow : int { kNdb = 2, kVor = 3, kIls = 4, kLoc = 5, kGlideSlope = 6, kOuterMarker = 7,
                    kMiddleMarker = 8, kInnerMarker = 9, kDme = 12, kDmeStandalone = 13 };

struct SrcNavaid {
  int Row = 0;
  double Lat = 0, Lon = 0;
  int ElevationFeet = 0;
  int Frequency = 0;         // as the file gives it: 10 kHz units for VHF, kHz for NDB
  int RangeNm = 0;
  double Extra = 0;          // variation, bearing or DME bias by row kind
  std::string Ident;
  std::string Airport;       // ILS, GS, markers and ILS DME: the airport's ICAO code
  std::string Region;        // 1100 up: ICAO region
  std::string Runway;        // ILS, GS, markers and ILS DME
  std::string Name;          // the rest of the line
};

struct SrcFix {
  double Lat = 0, Lon = 0;
  std::string Ident;
  std::string Region;        // 1100 up
  bool Terminal = false;     // 1100 up: bound to an airport rather than en route
};

// One end of an airway segment. 640 files give positions; 1100 files give a
// region and a kind (11 fix, 2 NDB, 3 VOR) that are resolved against the
// fixes and navaids.
struct SrcAirwayEnd {
  std::string Ident;
  std::string Region;
  int Kind = 0;
  bool HasPosition = false;
  double Lat = 0, Lon = 0;
};

struct SrcAirway {
  SrcAirwayEnd From, To;
  bool High = false;         // level 2
  char Direction = 'N';      // N both ways, F only From->To, B only To->From
  int Base = 0, Top = 0;     // hundreds of feet
  std::string Name;          // one airway name (a shared "J1-J2" row gives several)
};

struct XPlaneSources {
  std::vector<SrcAirport> Airports;
  std::vector<SrcNavaid> Navaids;
  std::vector<SrcFix> Fixes;
  std::vector<SrcAirway> Airways;
};

// Each reader appends to out and fills report. text is the whole file.
void ReadAptDat(std::string_view text, std::vector<SrcAirport>& out, SourceReport& report);
void ReadNavDat(std::string_view text, std::vector<SrcNavaid>& out, SourceReport& report);
void ReadFixDat(std::string_view text, std::vector<SrcFix>& out, SourceReport& report);
void ReadAwyDat(std::string_view text, std::vector<SrcAirway>& out, SourceReport& report);

// The tokens of one line, held in place (no allocation per line).
class Tokens {
public:
  static constexpr std::size_t kMax = 32;
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  std::string_view operator[](std::size_t i) const { return items_[i]; }
  std::string_view back() const { return items_[count_ - 1]; }
  void push_back(std::string_view t) { items_[count_++] = t; }

private:
  std::array<std::string_view, kMax> items_{};
  std::size_t count_ = 0;
};

// Splits a line at blanks and tabs. At most `max` tokens (up to Tokens::kMax);
// the last one takes the rest of the line when more follow (so names keep
// their blanks).
Tokens SplitTokens(std::string_view line, std::size_t max);

// Strict number readers for source fields: false for anything that is not a
// whole number in the text.
bool ReadDouble(std::string_view text, double& value);
bool ReadInt(std::string_view text, int& value);

}  // namespace orv::dbm
