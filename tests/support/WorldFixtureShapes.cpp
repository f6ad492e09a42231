// The world fixture's airspaces, MSA cells, coastlines, rivers and user
// objects.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/Runtime.h"
#include "database/AirspaceFiles.h"
#include "database/WorldShapes.h"
#include "support/WorldFixtureDetail.h"

namespace orv::test::world {

namespace {

constexpr double kRad = 3.14159265358979323846 / 180.0;

enum class Centre : uint8_t { Airport, LargeAirport, BusyAirport, Area, Ocean };

struct AirspaceClass {
  const char* Class;
  double Share;        // of all airspaces
  double PointWeight;  // outline points, relative
  double MinNm, MaxNm; // radius
  Centre At;
  const char* NameSuffix;
};

constexpr AirspaceClass kClasses[] = {
    {"CTRZ", 0.55, 1, 5, 8, Centre::Airport, " CTR"},
    {"TCA", 0.08, 3, 20, 35, Centre::LargeAirport, " TMA"},
    {"CTA", 0.12, 2, 15, 40, Centre::BusyAirport, " CTA"},
    {"RA", 0.10, 1, 3, 15, Centre::Area, " RESTRICTED"},
    {"ADA", 0.03, 1, 20, 50, Centre::Area, " ADVISORY"},
    {"ADIZ", 0.01, 4, 100, 200, Centre::Area, " ADIZ"},
    {"ARTCC", 0.02, 10, 150, 300, Centre::Area, " CENTER"},
    {"ACC", 0.02, 10, 150, 300, Centre::Area, " CONTROL"},
    {"BZ", 0.01, 1, 5, 20, Centre::Area, " BUFFER ZONE"},
    {"FIR", 0.03, 12, 300, 600, Centre::Area, " FIR"},
    {"OCA", 0.01, 15, 500, 900, Centre::Ocean, " OCEANIC"},
    {"UIR", 0.02, 15, 400, 700, Centre::Area, " UIR"},
};

struct Box {
  float South, North, West, East;
};
constexpr Box kOceans[] = {
    {30, 60, -50, -15}, {0, 50, -170, -130}, {-30, 0, 60, 100}, {-40, 0, -30, 0}};

// A closed outline of n points (the last repeats the first) round a centre,
// wavy so that no two look alike.
void Ring(ShapePoint centre, double radiusNm, std::size_t n, Rng& rng, std::vector<ShapePoint>& out) {
  out.clear();
  double a[3], phase[3];
  for (int j = 0; j < 3; ++j) {
    a[j] = rng.Range(0, 0.15 / (j + 1));
    phase[j] = rng.Range(0, 360);
  }
  for (std::size_t k = 0; k + 1 < n; ++k) {
    const double theta = 360.0 * static_cast<double>(k) / static_cast<double>(n - 1);
    double r = 1.0;
    for (int j = 0; j < 3; ++j) r += a[j] * std::sin(((j + 1) * theta + phase[j]) * kRad);
    out.push_back(Offset(centre.Lat, centre.Lon, theta, radiusNm * r));
  }
  out.push_back(out.front());
}

// A landmass or island: n points round a centre with radii in degrees of
// latitude and longitude, with a ragged coast.
void Blob(ShapePoint centre, double radiusLat, double radiusLon, std::size_t n, Rng& rng, std::vector<ShapePoint>& out) {
  out.clear();
  double a[4], phase[4];
  for (int j = 0; j < 4; ++j) {
    a[j] = rng.Range(0, 0.2 / (j + 1));
    phase[j] = rng.Range(0, 360);
  }
  // The small bays and capes: a wandering offset whose step is about the
  // spacing of the points, as in a surveyed coastline, where neighbouring
  // points lie close together rather than jumping back and forth.
  const double spacing = 6.3 / static_cast<double>(std::max<std::size_t>(n, 2));
  double wander = 0;
  for (std::size_t k = 0; k + 1 < n; ++k) {
    const double theta = 360.0 * static_cast<double>(k) / static_cast<double>(n - 1);
    wander = 0.995 * wander + rng.Range(-spacing, spacing);
    double r = 1.0 + wander;
    for (int j = 0; j < 4; ++j) r += a[j] * std::sin(((j + 1) * theta + phase[j]) * kRad);
    const double lat = std::clamp(centre.Lat + radiusLat * r * std::cos(theta * kRad), -89.0, 89.0);
    const double lon = std::clamp(centre.Lon + radiusLon * r * std::sin(theta * kRad), -180.0, 180.0);
    out.push_back({static_cast<float>(lat), static_cast<float>(lon)});
  }
  out.push_back(out.front());
}

int PickArea(Rng& rng) {
  double r = rng.Unit();
  for (int a = 0; a < kAreaCount; ++a) {
    r -= Area(a).NavShare;
    if (r < 0) return a;
  }
  return kAreaCount - 1;
}

ShapePoint AnywhereIn(const Box& b, Rng& rng) {
  return {static_cast<float>(rng.Range(b.South, b.North)), static_cast<float>(rng.Range(b.West, b.East))};
}

uint32_t FloatBits(float f) {
  uint32_t bits;
  std::memcpy(&bits, &f, sizeof bits);
  return bits;
}

void BuildAirspaces(World& w) {
  Rng rng(w.Options.Seed, kStreamAirspaces);
  const WorldCountsRec& t = w.Counts.Totals;

  // Airports by importance: EDDF, the large, the medium, then the small ones.
  std::vector<int32_t> byImportance, large, busy;
  byImportance.push_back(w.EddfSlot);
  for (Size s : {Size::Large, Size::Medium, Size::Small})
    for (std::size_t slot = 0; slot < w.Airports.size(); ++slot)
      if (w.AirportSizes[slot] == s && static_cast<int32_t>(slot) != w.EddfSlot) byImportance.push_back(static_cast<int32_t>(slot));
  for (int32_t slot : byImportance) {
    if (w.AirportSizes[static_cast<std::size_t>(slot)] == Size::Large) large.push_back(slot);
    if (w.AirportSizes[static_cast<std::size_t>(slot)] != Size::Small) busy.push_back(slot);
  }

  std::vector<double> shares;
  for (const AirspaceClass& c : kClasses) shares.push_back(c.Share);
  const std::vector<int64_t> perClass = Distribute(t.Airspaces, shares, 0);
  std::vector<int> classOf;
  for (std::size_t c = 0; c < perClass.size(); ++c) classOf.insert(classOf.end(), static_cast<std::size_t>(perClass[c]), static_cast<int>(c));
  std::vector<double> weights;
  for (int c : classOf) weights.push_back(kClasses[c].PointWeight);
  const std::vector<int64_t> points = Distribute(t.AirspacePoints, weights, 5);

  std::array<std::size_t, std::size(kClasses)> used{};
  std::vector<ShapePoint> outline;
  w.Shapes.AirspacePoints.reserve(static_cast<std::size_t>(t.AirspacePoints));
  for (std::size_t i = 0; i < classOf.size(); ++i) {
    const AirspaceClass& c = kClasses[classOf[i]];
    const std::size_t nth = used[static_cast<std::size_t>(classOf[i])]++;
    ShapePoint centre;
    const AirportRec* airport = nullptr;
    switch (c.At) {
      case Centre::Airport: airport = &w.Airports[static_cast<std::size_t>(byImportance[nth % byImportance.size()])]; break;
      case Centre::LargeAirport: airport = &w.Airports[static_cast<std::size_t>(large[nth % large.size()])]; break;
      case Centre::BusyAirport:
        airport = &w.Airports[static_cast<std::size_t>(busy[(nth + busy.size() / 3) % busy.size()])];
        break;
      case Centre::Area: {
        const AreaSpec& area = Area(PickArea(rng));
        centre = AnywhereIn({area.South, area.North, area.West, area.East}, rng);
        break;
      }
      case Centre::Ocean: centre = AnywhereIn(kOceans[rng.Below(std::size(kOceans))], rng); break;
    }
    if (airport) centre = {airport->Lat, airport->Lon};

    AirspaceRec a;
    a.Index = static_cast<int16_t>(i);
    a.Class.Assign(c.Class);
    const std::string place = airport ? UpperText(airport->City) : UpperText(PlaceName(rng));
    a.Ident.Assign(airport && c.At == Centre::Airport ? std::string(airport->Icao.Trimmed())
                                                        : c.Class[0] + CodeFromNumber(static_cast<int64_t>(i)));
    a.Name.Assign(place + c.NameSuffix);
    a.Name2.Assign(place + (c.At == Centre::Airport ? " TOWER" : " RADAR"));
    a.Text1.Assign(Format(118.0 + 0.025 * rng.Below(760), "000.00"));
    if (rng.Chance(0.5)) a.Text2.Assign(Format(118.0 + 0.025 * rng.Below(760), "000.00"));
    switch (c.At) {
      case Centre::Airport:
        a.UpperAltitude.Assign(Format(1000 * (2 + rng.Below(4)), "00000"));
        a.LowerAltitude.Assign("SFC");
        break;
      case Centre::Ocean:
        a.UpperAltitude.Assign("UNL");
        a.LowerAltitude.Assign("FL055");
        break;
      default:
        if (std::string_view(c.Class) == "UIR") {
          a.UpperAltitude.Assign("FL660");
          a.LowerAltitude.Assign("FL245");
        } else {
          a.UpperAltitude.Assign(rng.Chance(0.5) ? "FL245" : Format(1000 * (4 + rng.Below(14)), "00000"));
          a.LowerAltitude.Assign(rng.Chance(0.5) ? "SFC" : Format(500 * (2 + rng.Below(10)), "00000"));
        }
    }
    const std::size_t n = static_cast<std::size_t>(std::min<int64_t>(points[i], INT16_MAX));
    Ring(centre, rng.Range(c.MinNm, c.MaxNm), n, rng, outline);
    AddAirspace(w.Shapes, a, outline);
  }
}

void BuildMsa(World& w) {
  Rng rng(w.Options.Seed, kStreamMsa);
  std::unordered_set<int> cells;
  for (int64_t k = 0; k < w.Counts.Totals.MsaCells; ++k) {
    int lat = 0, lon = 0;
    for (int attempt = 0; attempt < 20; ++attempt) {
      const AreaSpec& area = Area(PickArea(rng));
      lat = static_cast<int>(std::floor(rng.Range(area.South, area.North)));
      lon = static_cast<int>(std::floor(rng.Range(area.West, area.East)));
      if (cells.insert((lat + 90) * 360 + lon + 180).second) break;
    }
    MsaRec m;
    std::string ident = Format(static_cast<double>(k + 1), "00000");
    ident.insert(0, 1, 'M');
    m.Ident.Assign(ident);
    m.Text.Assign("MSA");
    const int altitude = 100 * static_cast<int>(15 + rng.Below(126));  // 1500 .. 14000 ft
    m.Values[0] = FloatBits(static_cast<float>(lat + 1));  // North
    m.Values[1] = FloatBits(static_cast<float>(lat));      // South
    m.Values[2] = FloatBits(static_cast<float>(lon + 1));  // East
    m.Values[3] = FloatBits(static_cast<float>(lon));      // West
    m.Values[4] = static_cast<uint32_t>(altitude);
    m.Label.Assign(Format(altitude / 100, "000"));
    w.Shapes.MsaCells.push_back(m);
  }
}

void BuildCoast(World& w) {
  Rng rng(w.Options.Seed, kStreamCoast);
  const WorldCountsRec& t = w.Counts.Totals;
  struct Continent {
    float Lat, Lon, RadiusLat, RadiusLon;
  };
  constexpr Continent kContinents[] = {{48, -100, 22, 36}, {-15, -60, 26, 17}, {50, 12, 13, 24},  {4, 20, 32, 24},
                                       {48, 95, 22, 48},   {-25, 134, 12, 18}, {72, -42, 10, 16}};
  constexpr std::size_t kContinentCount = std::size(kContinents);

  // Most of the coastline points go to the seven landmasses, the rest to the
  // islands.
  std::vector<double> weights;
  for (int64_t k = 0; k < t.WorldPolygons; ++k)
    weights.push_back(static_cast<std::size_t>(k) < kContinentCount ? 2600.0 : static_cast<double>(1 + rng.Below(5)));
  const std::vector<int64_t> points = Distribute(t.WorldPolygonPoints, weights, 4);
  std::vector<ShapePoint> shape;
  w.Shapes.WorldPolygonPoints.reserve(static_cast<std::size_t>(t.WorldPolygonPoints));
  for (std::size_t k = 0; k < points.size(); ++k) {
    const std::size_t n = static_cast<std::size_t>(points[k]);
    if (k < kContinentCount) {
      const Continent& c = kContinents[k];
      Blob({c.Lat, c.Lon}, c.RadiusLat, c.RadiusLon, n, rng, shape);
    } else {
      const ShapePoint centre{static_cast<float>(rng.Range(-55, 70)), static_cast<float>(rng.Range(-178, 178))};
      const double radius = 0.05 + 0.02 * std::sqrt(static_cast<double>(n)) * rng.Range(0.5, 1.5);
      Blob(centre, radius, radius / std::max(0.2, std::cos(centre.Lat * kRad)), n, rng, shape);
    }
    AddWorldShape(w.Shapes.WorldPolygons, w.Shapes.WorldPolygonPoints, static_cast<int32_t>(k), 2, shape);
  }

  // Rivers and borders: wandering lines over the continents' areas.
  weights.clear();
  for (int64_t k = 0; k < t.WorldLines; ++k) weights.push_back(static_cast<double>(1 + rng.Below(10)));
  const std::vector<int64_t> linePoints = Distribute(t.WorldLinePoints, weights, 2);
  w.Shapes.WorldLinePoints.reserve(static_cast<std::size_t>(t.WorldLinePoints));
  for (std::size_t k = 0; k < linePoints.size(); ++k) {
    const AreaSpec& area = Area(PickArea(rng));
    ShapePoint p = AnywhereIn({area.South, area.North, area.West, area.East}, rng);
    double direction = rng.Range(0, 360);
    const double step = rng.Range(0.05, 0.2);
    shape.clear();
    for (int64_t i = 0; i < linePoints[k]; ++i) {
      shape.push_back(p);
      direction += rng.Range(-20, 20);
      p = Offset(p.Lat, p.Lon, direction, step * 60.0);
    }
    const uint8_t kind = rng.Chance(0.7) ? 1 : 0;  // rivers, else borders
    AddWorldShape(w.Shapes.WorldLines, w.Shapes.WorldLinePoints, static_cast<int32_t>(k), kind, shape);
  }
}

void BuildUserObjects(World& w) {
  auto add = [&](uint8_t kind, int16_t style, int16_t red, int16_t green, int16_t blue,
                 std::initializer_list<ShapePoint> pts) {
    UserObjectRec o;
    o.Kind = kind;
    o.Style = style;
    o.Red = red;
    o.Green = green;
    o.Blue = blue;
    o.Color = blue * 65536 + green * 256 + red;
    o.First = static_cast<uint32_t>(w.Shapes.UserObjectPoints.size());
    o.PointCount = static_cast<int32_t>(pts.size());
    w.Shapes.UserObjectPoints.insert(w.Shapes.UserObjectPoints.end(), pts);
    w.Shapes.UserObjects.push_back(o);
  };
  add(kUserObjectLine, 2, 255, 0, 0, {{50.05f, 8.30f}, {50.20f, 8.60f}, {50.10f, 8.90f}});
  add(kUserObjectFilledPolygon, 1, 0, 128, 255, {{49.80f, 8.40f}, {49.90f, 8.70f}, {49.70f, 8.80f}, {49.60f, 8.50f}});
}

}  // namespace

void BuildShapes(World& w) {
  BuildAirspaces(w);
  BuildMsa(w);
  BuildCoast(w);
  BuildUserObjects(w);
}

}  // namespace orv::test::world
