// The navaid and airway files of "\database\": dijinter.orv (intersections and
// the airway links between them), vicways.orv and jetways.orv (airway segments
// for drawing), fixes.orv, vor.orv and ndb.orv. Each file has a reader over
// bytes held in memory and a writer producing the same layout; the writers are
// what the database manager and the test fixtures use.
//
// Files carry no header and no padding. Texts are fixed-width 8-bit fields,
// blank padded; a record whose deciding text starts with NUL is empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/FixedStr.h"
#include "database/MagVar.h"

namespace orv {

// ------------------------------------------------------------------ layouts

inline constexpr std::size_t kIntersectionRecordSize = 56;
inline constexpr std::size_t kAirwayLinkRecordSize = 26;
inline constexpr std::size_t kAirwaySegmentRecordSize = 30;
inline constexpr std::size_t kFixRecordSize = 48;
inline constexpr std::size_t kVorRecordSize = 56;
inline constexpr std::size_t kNdbRecordSize = 53;

// Intersections are placed by their Index, which runs from 0 to this bound;
// airway segments and links point into the same range.
inline constexpr int32_t kMaxIntersectionIndex = 40000;
inline constexpr std::size_t kIntersectionSlots = kMaxIntersectionIndex + 1;

// ------------------------------------------------------------------ records

// One leg of an airway from an intersection to the next one along it. The
// route search sums Distance and writes its parsed altitudes back into the
// Mea texts, so the links stay mutable.
struct AirwayLinkRec {
  int32_t Target = 0;          // index in Intersections of the next intersection
  FixedStr<8> AirwayName;
  float Distance = 0;          // nautical miles
  FixedStr<5> Mea1;
  FixedStr<5> Mea2;
  bool operator==(const AirwayLinkRec&) const = default;
};

// An intersection of dijinter.orv. Its links live in NavaidTables::AirwayLinks:
// LowCount low links from LinkFirst, then HighCount high links right behind
// them, in file order. Ask NavaidTables::LowAirways / HighAirways for them.
struct IntersectionRec {
  int32_t Index = 0;
  FixedStr<2> Country;
  FixedStr<8> Ident;           // 5 characters in the file, widened
  FixedStr<25> Name;
  float Value1 = 0;
  float Lat = 0;
  float Lon = 0;
  float MagVar = 0;            // from the variation grid, never the file's value
  uint8_t LowCount = 0;
  uint8_t HighCount = 0;
  FixedStr<1> Flag1;
  FixedStr<1> Flag2;
  uint32_t LinkFirst = 0;
  bool operator==(const IntersectionRec&) const = default;
};

// A slot of Intersections that no record filled: all texts NUL, as the
// runtime leaves a fixed-length text it never assigned, so IsEmptySlot() of
// Ident tells it apart from a stored intersection.
IntersectionRec EmptyIntersectionSlot();

// One airway segment of vicways.orv or jetways.orv.
struct AirwayRec {
  FixedStr<8> Name;            // trimmed on load
  int32_t FromIndex = 0;       // in Intersections
  int32_t ToIndex = 0;
  float Value = 0;
  FixedStr<5> Mea1;            // leading zeros stripped; blank becomes "n/a"
  FixedStr<5> Mea2;
  bool operator==(const AirwayRec&) const = default;
};

struct FixRec {
  FixedStr<2> Country;
  FixedStr<5> Ident;
  FixedStr<25> Name;
  float Lat = 0;
  float Lon = 0;
  float MagVar = 0;            // from the variation grid
  float Value = 0;
  bool operator==(const FixRec&) const = default;
};

struct VorRec {
  FixedStr<20> Ident;          // 10 characters in the file, widened
  FixedStr<70> Name;           // 20 characters in the file, widened
  float Lat = 0;
  float Lon = 0;
  float Frequency = 0;         // MHz
  float MagVar = 0;            // from the variation grid
  float Value = 0;
  int16_t TypeCode = 0;
  int16_t Value2 = 0;
  int16_t Value3 = 0;
  FixedStr<8> TypeName;        // "VOR", "VORTAC", "TACAN", "VOR-DME", "DME"
  bool operator==(const VorRec&) const = default;
};

struct NdbRec {
  FixedStr<20> Ident;          // widened as in VorRec
  FixedStr<70> Name;
  float Lat = 0;
  float Lon = 0;
  float Frequency = 0;         // kHz
  float MagVar = 0;            // from the variation grid
  float Value = 0;
  FixedStr<3> TypeText;        // a decimal number
  FixedStr<8> TypeName;        // "NDB-DME" for type 7, else "NDB"
  bool operator==(const NdbRec&) const = default;
};

// The arrays these files fill, kept in file order (intersections by Index).
struct NavaidTables {
  // Always kIntersectionSlots entries once dijinter.orv is read; unfilled
  // slots are EmptyIntersectionSlot().
  std::vector<IntersectionRec> Intersections;
  // Every link of every intersection, in file order; see IntersectionRec.
  std::vector<AirwayLinkRec> AirwayLinks;
  // The highest Index read from dijinter.orv, -1 when it held none.
  int32_t MaxIntersectionIndex = -1;

  std::vector<AirwayRec> VictorAirways;
  std::vector<AirwayRec> JetAirways;
  std::vector<FixRec> Fixes;
  std::vector<VorRec> Vors;
  std::vector<NdbRec> Ndbs;

  // The low (victor) and high (jet) links of intersection `index`; empty for
  // an index outside the array.
  std::span<AirwayLinkRec> LowAirways(int32_t index);
  std::span<const AirwayLinkRec> LowAirways(int32_t index) const;
  std::span<AirwayLinkRec> HighAirways(int32_t index);
  std::span<const AirwayLinkRec> HighAirways(int32_t index) const;
};

// Puts rec into its slot rec.Index (0..kMaxIntersectionIndex) with the given
// links appended to AirwayLinks, setting LowCount, HighCount and LinkFirst and
// raising MaxIntersectionIndex. The way the database manager and fixtures
// build the table for BuildDijinterFile. False, with nothing changed, for an
// index out of range or more than 255 links of one kind.
bool PlaceIntersection(NavaidTables& tables, const IntersectionRec& rec,
                       std::span<const AirwayLinkRec> lowLinks,
                       std::span<const AirwayLinkRec> highLinks);

// The type name a VOR's TypeCode stands for ("VOR" for any unknown code).
FixedStr<8> VorTypeName(int16_t typeCode);
// The type name of an NDB from its TypeText: "NDB-DME" when its value is 7.
FixedStr<8> NdbTypeName(const FixedStr<3>& typeText);

// ------------------------------------------------------------------ readers
// Each returns nothing on success and otherwise the message
// "<file>: record <n> at byte <offset>: <fault>" with n counted from 1 and the
// offset of the record's first byte. On failure `out` holds what was read
// before the fault.

// dijinter.orv into Intersections, AirwayLinks and MaxIntersectionIndex. The
// loop ends at the end of the data or at the first record whose Ident starts
// with NUL; the bytes after that record are not looked at.
std::optional<std::string> ParseDijinterFile(const uint8_t* data, std::size_t size,
                                             const MagVarGrid& grid, NavaidTables& out);

// vicways.orv into VictorAirways, jetways.orv into JetAirways. Empty records
// are skipped here and in the three navaid files below.
std::optional<std::string> ParseVicwaysFile(const uint8_t* data, std::size_t size, NavaidTables& out);
std::optional<std::string> ParseJetwaysFile(const uint8_t* data, std::size_t size, NavaidTables& out);

std::optional<std::string> ParseFixesFile(const uint8_t* data, std::size_t size,
                                          const MagVarGrid& grid, NavaidTables& out);
std::optional<std::string> ParseVorFile(const uint8_t* data, std::size_t size,
                                        const MagVarGrid& grid, NavaidTables& out);
std::optional<std::string> ParseNdbFile(const uint8_t* data, std::size_t size,
                                        const MagVarGrid& grid, NavaidTables& out);

// ------------------------------------------------------------------ writers

// Every filled slot of Intersections in index order, each followed by its
// links; the slot's position is written as its Index.
std::vector<uint8_t> BuildDijinterFile(const NavaidTables& tables);
// vicways.orv or jetways.orv. A Mea of "n/a" is written blank, as the reader
// turns blanks into "n/a".
std::vector<uint8_t> BuildAirwayFile(const std::vector<AirwayRec>& airways);
std::vector<uint8_t> BuildFixesFile(const std::vector<FixRec>& fixes);
// Widened texts are cut back to their file widths.
std::vector<uint8_t> BuildVorFile(const std::vector<VorRec>& vors);
std::vector<uint8_t> BuildNdbFile(const std::vector<NdbRec>& ndbs);

}  // namespace orv
