// The records of the airspace, minimum safe altitude, ground-layout, world
// shape and user object files, and the arrays that hold them once loaded.
//
// Shapes with point lists (airspaces, world polygons and lines, user objects)
// keep all their points in one flat array per file; each record names its
// range in it (First, Count). The map hands a shape to the graphics layer in
// one call, so the points of a shape must be contiguous, and one array per
// file means one allocation instead of one per shape.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "core/FixedStr.h"

namespace orv {

// One stored position: 32-bit float latitude and longitude in degrees, in
// the order and width the files hold them.
struct ShapePoint {
  float Lat = 0;
  float Lon = 0;
  friend bool operator==(const ShapePoint&, const ShapePoint&) = default;
};
static_assert(sizeof(ShapePoint) == 8, "a point is two packed 32-bit floats, as in the files");

// A record of airspace.orv: a control zone or an airspace with its outline.
struct AirspaceRec {
  int16_t Index = 0;
  FixedStr<7> Class;
  FixedStr<4> Ident;
  FixedStr<38> Name;
  FixedStr<38> Name2;
  FixedStr<6> Text1;
  FixedStr<6> Text2;
  FixedStr<1> Flag1;
  FixedStr<1> Flag2;
  FixedStr<10> UpperAltitude;  // leading "0" characters stripped on load
  FixedStr<9> LowerAltitude;   // likewise
  float Value1 = 0;
  float Value2 = 0;
  int16_t PointCount = 0;
  // The outline: AirspacePoints[First .. First + PointCount).
  uint32_t First = 0;
  // The box around the outline, worked out on load for the map's in-view
  // test; all 0 for an airspace without points.
  float North = 0;
  float South = 0;
  float East = 0;
  float West = 0;
};

// A record of msa.orv: one minimum safe altitude cell.
struct MsaRec {
  FixedStr<6> Ident;
  FixedStr<5> Text;
  std::array<uint32_t, 8> Values{};  // eight 32-bit words, kept bit for bit as read
  FixedStr<7> Label;

  // A value word read as the 32-bit float or integer it holds.
  float FloatValue(int i) const {
    float f;
    std::memcpy(&f, &Values[static_cast<std::size_t>(i)], sizeof f);
    return f;
  }
  int32_t IntValue(int i) const { return static_cast<int32_t>(Values[static_cast<std::size_t>(i)]); }
};

// A record of taxi.orv: one taxiway segment.
struct TaxiRec {
  float Lat1 = 0;
  float Lon1 = 0;
  float Lat2 = 0;
  float Lon2 = 0;
  FixedStr<8> Name;  // trimmed on load, so a designator starts at its first character
  int16_t Width = 0;
};

// A record of poly.orv: one point of an airport's ground polygons.
// The fields stand in another order than in the file so that the record
// takes its file's 16 bytes in memory rather than 20: the world's airports
// have a million of them.
struct GroundPolyRec {
  float Lat = 0;
  float Lon = 0;
  float Value = 0;
  int16_t Value2 = 0;
  FixedStr<1> Kind;
  FixedStr<1> Flag;
};
static_assert(sizeof(GroundPolyRec) == 16);

// A record of marker.orv: an ILS marker beacon.
struct MarkerRec {
  FixedStr<2> Kind;  // "IM", "MM" or "OM"
  float Lat = 0;
  float Lon = 0;
  float Heading = 0;
};

// A shape of worldpolygon.bin or worldline.bin.
struct WorldShapeRec {
  int32_t Index = 0;
  uint8_t Kind = 0;
  // As stored: the shape holds PointCount + 1 points.
  int32_t PointCount = 0;
  // The box the database tool stored, from the shape's own points.
  float North = 0;
  float South = 0;
  float East = 0;
  float West = 0;
  // The points: <file>Points[First .. First + Count), Count = PointCount + 1.
  uint32_t First = 0;
  uint32_t Count = 0;
};

// The kinds of a user object, from the head line's "L", "FP" or "UP". Kind 2
// is the one the map fills.
inline constexpr uint8_t kUserObjectLine = 1;
inline constexpr uint8_t kUserObjectFilledPolygon = 2;
inline constexpr uint8_t kUserObjectPolygon = 3;

// An object of userObj.txt: a line or polygon the user drew by hand.
struct UserObjectRec {
  uint8_t Kind = kUserObjectLine;
  int16_t Style = 0;  // the line width
  int16_t Red = 0;
  int16_t Green = 0;
  int16_t Blue = 0;
  // Blue * 65536 + Green * 256 + Red, each part held to 0..255.
  int32_t Color = 0;
  // Every object covers the whole world, so that the map's overlap test
  // always lets it through.
  float North = 90;
  float South = -90;
  float East = 180;
  float West = -180;
  // The number of points taken; they are UserObjectPoints[First .. First + PointCount).
  int32_t PointCount = 0;
  uint32_t First = 0;
};

// The arrays of these files in the loaded database. Each parse function fills
// only its own arrays and leaves the others as they are.
struct AirspaceTables {
  std::vector<AirspaceRec> Airspaces;
  std::vector<ShapePoint> AirspacePoints;
  std::vector<MsaRec> MsaCells;
  std::vector<TaxiRec> TaxiSegments;
  std::vector<GroundPolyRec> GroundPolygons;
  std::vector<MarkerRec> Markers;
  std::vector<WorldShapeRec> WorldPolygons;
  std::vector<ShapePoint> WorldPolygonPoints;
  std::vector<WorldShapeRec> WorldLines;
  std::vector<ShapePoint> WorldLinePoints;
  std::vector<UserObjectRec> UserObjects;
  std::vector<ShapePoint> UserObjectPoints;

  std::span<const ShapePoint> PointsOf(const AirspaceRec& a) const {
    return Range(AirspacePoints, a.First, static_cast<std::size_t>(a.PointCount < 0 ? 0 : a.PointCount));
  }
  std::span<const ShapePoint> PolygonPointsOf(const WorldShapeRec& s) const {
    return Range(WorldPolygonPoints, s.First, s.Count);
  }
  std::span<const ShapePoint> LinePointsOf(const WorldShapeRec& s) const {
    return Range(WorldLinePoints, s.First, s.Count);
  }
  std::span<const ShapePoint> PointsOf(const UserObjectRec& o) const {
    return Range(UserObjectPoints, o.First, static_cast<std::size_t>(o.PointCount < 0 ? 0 : o.PointCount));
  }

private:
  // A record's range, cut to the array so that a record edited by hand can
  // never reach past it.
  static std::span<const ShapePoint> Range(const std::vector<ShapePoint>& points, std::size_t first,
                                           std::size_t count) {
    if (first > points.size()) return {};
    if (count > points.size() - first) count = points.size() - first;
    return std::span<const ShapePoint>(points.data() + first, count);
  }
};

}  // namespace orv
