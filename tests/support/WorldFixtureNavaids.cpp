// The world fixture's VORs, NDBs and GPS fixes, and the stored procedures
// and weather stations that hang on the airports.
#include <algorithm>
#include <cmath>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "support/WorldFixtureDetail.h"

namespace orv::test::world {

namespace {

// The airports of each area, by slot.
std::array<std::vector<int32_t>, kAreaCount> AirportsByArea(const World& w) {
  std::array<std::vector<int32_t>, kAreaCount> out;
  for (std::size_t slot = 0; slot < w.Airports.size(); ++slot)
    out[static_cast<std::size_t>(w.AirportAreas[slot])].push_back(static_cast<int32_t>(slot));
  return out;
}

// A place in the area: beside one of its airports (share nearAirport), else
// anywhere in its box.
ShapePoint PlaceIn(const World& w, const std::vector<int32_t>& airports, int area, double nearAirport,
                   double minNm, double maxNm, Rng& rng) {
  if (!airports.empty() && rng.Chance(nearAirport)) {
    const AirportRec& a = w.Airports[static_cast<std::size_t>(airports[rng.Below(airports.size())])];
    return Offset(a.Lat, a.Lon, rng.Range(0, 360), rng.Range(minNm, maxNm));
  }
  const AreaSpec& box = Area(area);
  return {static_cast<float>(rng.Range(box.South, box.North)), static_cast<float>(rng.Range(box.West, box.East))};
}

int16_t VorType(bool us, Rng& rng) {
  const double r = rng.Unit();
  if (us) return r < 0.5 ? 2 : r < 0.8 ? 4 : r < 0.9 ? 1 : r < 0.95 ? 3 : 9;
  return r < 0.6 ? 4 : r < 0.8 ? 1 : r < 0.9 ? 9 : r < 0.95 ? 3 : 2;
}

// Sorts records by ident, as the database tool writes them, carrying a
// parallel list along.
template <typename Rec, typename Extra>
void SortByIdent(std::vector<Rec>& records, std::vector<Extra>& extra) {
  std::vector<std::size_t> order(records.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return records[a].Ident.View() < records[b].Ident.View(); });
  std::vector<Rec> sorted;
  std::vector<Extra> sortedExtra;
  sorted.reserve(records.size());
  sortedExtra.reserve(records.size());
  for (std::size_t i : order) {
    sorted.push_back(records[i]);
    sortedExtra.push_back(extra[i]);
  }
  records = std::move(sorted);
  extra = std::move(sortedExtra);
}

}  // namespace

void BuildNavaids(World& w) {
  Rng rng(w.Options.Seed, kStreamNavaids);
  const Plan& plan = w.Counts;
  const auto airportsByArea = AirportsByArea(w);

  // VORs: Frankfurt's own, then each area's, half of them beside an airport.
  std::vector<VorRec> vors;
  std::vector<int> vorAreas;
  std::unordered_set<std::string> vorIdents = {"FFM"};
  int64_t vorNumber = 0;
  {
    VorRec ffm;
    ffm.Ident.Assign("FFM");
    ffm.Name.Assign("FRANKFURT");
    ffm.Lat = 50.0535f;
    ffm.Lon = 8.6371f;
    ffm.Frequency = 114.2f;
    ffm.Value = 130;
    ffm.TypeCode = 4;
    vors.push_back(ffm);
    vorAreas.push_back(kEuropeArea);
  }
  for (int a = 0; a < kAreaCount; ++a)
    for (int64_t k = 0; k < plan.VorsInArea[a]; ++k) {
      VorRec v;
      std::string ident;
      do ident = CodeFromNumber(vorNumber++);
      while (!vorIdents.insert(ident).second);
      v.Ident.Assign(ident);
      v.Name.Assign(UpperText(PlaceName(rng)).substr(0, 20));
      const ShapePoint p = PlaceIn(w, airportsByArea[a], a, 0.5, 1.0, 4.0, rng);
      v.Lat = p.Lat;
      v.Lon = p.Lon;
      v.Frequency = static_cast<float>(108.0 + 0.05 * rng.Below(200));
      v.TypeCode = VorType(Area(a).UsAirwayNames, rng);
      v.Value = static_cast<float>(40 + rng.Below(91));
      vors.push_back(v);
      vorAreas.push_back(a);
    }
  for (VorRec& v : vors) {
    v.MagVar = VariationAt(w, v.Lat, v.Lon);
    v.TypeName = VorTypeName(v.TypeCode);
  }
  SortByIdent(vors, vorAreas);
  w.Navaids.Vors = std::move(vors);
  w.VorAreas = std::move(vorAreas);

  // NDBs: most of them on an airport's approach.
  std::vector<NdbRec> ndbs;
  std::vector<int> ndbAreas;
  int64_t ndbNumber = 5000;  // a different run of codes from the VORs'
  for (int a = 0; a < kAreaCount; ++a)
    for (int64_t k = 0; k < plan.NdbsInArea[a]; ++k) {
      NdbRec n;
      n.Ident.Assign(CodeFromNumber(ndbNumber++));
      n.Name.Assign(UpperText(PlaceName(rng)).substr(0, 20));
      const ShapePoint p = PlaceIn(w, airportsByArea[a], a, 0.6, 2.0, 6.0, rng);
      n.Lat = p.Lat;
      n.Lon = p.Lon;
      n.Frequency = static_cast<float>(190 + rng.Below(346));
      n.Value = static_cast<float>(15 + rng.Below(61));
      n.TypeText.Assign(rng.Chance(0.1) ? "7" : "5");
      n.MagVar = VariationAt(w, n.Lat, n.Lon);
      n.TypeName = NdbTypeName(n.TypeText);
      ndbs.push_back(n);
      ndbAreas.push_back(a);
    }
  SortByIdent(ndbs, ndbAreas);
  w.Navaids.Ndbs = std::move(ndbs);

  // GPS fixes: approach fixes near airports and en-route points.
  Rng frng(w.Options.Seed, kStreamFixes);
  std::vector<FixRec> fixes;
  std::vector<int> fixAreas;
  for (int a = 0; a < kAreaCount; ++a) {
    const AreaSpec& area = Area(a);
    for (int64_t k = 0; k < plan.FixesInArea[a]; ++k) {
      FixRec f;
      f.Country.Assign(area.Countries[frng.Below(static_cast<uint64_t>(area.CountryCount))].Prefix);
      f.Ident.Assign(NewIdent5(frng, w.UsedIdents));
      f.Name = FixedStr<25>(f.Ident.View());
      const ShapePoint p = PlaceIn(w, airportsByArea[a], a, 0.4, 5.0, 20.0, frng);
      f.Lat = p.Lat;
      f.Lon = p.Lon;
      f.MagVar = VariationAt(w, f.Lat, f.Lon);
      fixes.push_back(f);
      fixAreas.push_back(a);
    }
  }
  SortByIdent(fixes, fixAreas);
  w.Navaids.Fixes = std::move(fixes);
}

void BuildProcedures(World& w) {
  // Intersections on a coarse grid, so that the ones near an airport are
  // found without a walk over all of them.
  constexpr int kCells = 180 * 360;
  auto cellOf = [](float lat, float lon) {
    const int row = std::clamp(static_cast<int>(std::floor(lat)) + 90, 0, 179);
    const int col = std::clamp(static_cast<int>(std::floor(lon)) + 180, 0, 359);
    return row * 360 + col;
  };
  const std::vector<IntersectionRec>& nodes = w.Navaids.Intersections;
  std::vector<int32_t> start(kCells + 1, 0), members;
  for (const IntersectionRec& n : nodes)
    if (!n.Ident.IsEmptySlot()) ++start[static_cast<std::size_t>(cellOf(n.Lat, n.Lon)) + 1];
  for (int c = 0; c < kCells; ++c) start[c + 1] += start[c];
  members.resize(static_cast<std::size_t>(start[kCells]));
  {
    std::vector<int32_t> fill(start.begin(), start.end() - 1);
    for (std::size_t i = 0; i < nodes.size(); ++i)
      if (!nodes[i].Ident.IsEmptySlot())
        members[static_cast<std::size_t>(fill[static_cast<std::size_t>(cellOf(nodes[i].Lat, nodes[i].Lon))]++)] =
            static_cast<int32_t>(i);
  }
  auto nearest = [&](const AirportRec& a, std::size_t count) {
    const int row = std::clamp(static_cast<int>(std::floor(a.Lat)) + 90, 0, 179);
    const int col = std::clamp(static_cast<int>(std::floor(a.Lon)) + 180, 0, 359);
    std::vector<std::pair<double, int32_t>> found;
    for (int r = 1; r <= 4 && found.size() < count; ++r) {
      found.clear();
      for (int y = std::max(0, row - r); y <= std::min(179, row + r); ++y)
        for (int x = std::max(0, col - r); x <= std::min(359, col + r); ++x)
          for (int32_t k = start[static_cast<std::size_t>(y * 360 + x)];
               k < start[static_cast<std::size_t>(y * 360 + x + 1)]; ++k) {
            const IntersectionRec& n = nodes[static_cast<std::size_t>(members[static_cast<std::size_t>(k)])];
            found.emplace_back(GcDistance(a.Lat, a.Lon, n.Lat, n.Lon), members[static_cast<std::size_t>(k)]);
          }
    }
    std::sort(found.begin(), found.end());
    if (found.size() > count) found.resize(count);
    return found;
  };
  auto point = [&](int32_t index) {
    const IntersectionRec& n = nodes[static_cast<std::size_t>(index)];
    return ProcedurePoint{"Int", std::string(n.Ident.Trimmed()), std::string(n.Name.Trimmed()), n.Lat, n.Lon};
  };

  // Two departures and two arrivals at every large airport, over the
  // intersections nearest to it; blocks of an airport stand together, in the
  // airports' order.
  for (std::size_t slot = 0; slot < w.Airports.size(); ++slot) {
    const AirportRec& a = w.Airports[slot];
    if (w.AirportSizes[slot] == Size::Large || w.AirportSizes[slot] == Size::Medium)
      w.Stations.push_back({std::string(a.Icao.Trimmed()), a.Lat, a.Lon});
    if (w.AirportSizes[slot] != Size::Large) continue;
    const auto near = nearest(a, 6);
    if (near.size() < 2) continue;
    const std::string code(a.Icao.Trimmed());
    for (int k = 0; k < 2; ++k) {
      ProcedureBlock sid{code, std::string(a.Runways.front().HighEnd.Trimmed()), "", {}};
      ProcedureBlock star{code, "00", "", {}};
      for (std::size_t i = static_cast<std::size_t>(k); i < near.size(); i += 2) sid.Points.push_back(point(near[i].second));
      star.Points.assign(sid.Points.rbegin(), sid.Points.rend());
      sid.Name = sid.Points.back().Code + "1" + static_cast<char>('E' + k);
      star.Name = star.Points.front().Code + "1" + static_cast<char>('A' + k);
      w.Sids.push_back(std::move(sid));
      w.Stars.push_back(std::move(star));
    }
  }
  if (w.Sids.empty()) {  // the files must not be empty
    const AirportRec& a = w.Airports[static_cast<std::size_t>(w.EddfSlot)];
    ProcedurePoint p{"Fix", "EDDF1", "EDDF1", a.Lat, a.Lon};
    w.Sids.push_back({"EDDF", "25C", "EDDF1E", {p}});
    w.Stars.push_back({"EDDF", "00", "EDDF1A", {p}});
  }

  // Extras: aircraft and the user's own waypoints.
  auto aircraft = [](int16_t id, const char* name, int32_t maxFuel, int32_t ceiling, int32_t maxWeight,
                     int32_t empty, int32_t load, int32_t climbRate, int32_t climbSpeed, int32_t descentRate,
                     int32_t descentSpeed, int32_t cruise, int32_t level, int32_t approach, int32_t range) {
    AircraftRec r;
    r.Id = id;
    r.AircraftName = name;
    r.MaxFuel = maxFuel;
    r.Ceiling = ceiling;
    r.MaxWeight = maxWeight;
    r.EmptyWeight = empty;
    r.LoadWeight = load;
    r.ClimbRate = climbRate;
    r.ClimbSpeed = climbSpeed;
    r.DescentRate = descentRate;
    r.DescentSpeed = descentSpeed;
    r.CruiseSpeed = cruise;
    r.CruiseLevel = level;
    r.ApproachSpeed = approach;
    r.MinRunway = MinRunwayForApproachSpeed(approach);
    r.MaxRange = range;
    return r;
  };
  w.Aircraft = {aircraft(0, "Cessna 172", 150, 140, 1111, 767, 250, 700, 75, 500, 110, 120, 65, 65, 640),
                aircraft(1, "Beech King Air 350", 1630, 350, 6804, 4110, 900, 2500, 160, 1500, 200, 300, 240, 110, 1800),
                aircraft(2, "Airbus A320", 18700, 390, 78000, 42600, 16000, 2200, 290, 2000, 290, 450, 350, 140, 3300),
                aircraft(3, "Boeing 747-400", 173000, 450, 396900, 178800, 60000, 1800, 320, 2200, 300, 490, 370, 155,
                         7200)};
  struct Own {
    const char* Ident;
    const char* Name;
    float Lat, Lon;
  };
  constexpr Own kOwn[] = {{"HOME", "Home field", 50.1109f, 8.6821f},
                          {"LAKE1", "Lake turning point", 49.4521f, 11.0767f},
                          {"MAST", "Radio mast", 48.1374f, 11.5755f},
                          {"BRIDGE", "Rhine bridge", 50.9375f, 6.9603f},
                          {"CAPE", "Cape reporting point", 41.0000f, -70.0000f}};
  for (const Own& o : kOwn) {
    UserWaypointRec u;
    u.Ident.Assign(o.Ident);
    u.Name.Assign(o.Name);
    u.Lat = o.Lat;
    u.Lon = o.Lon;
    w.UserWaypoints.push_back(u);
  }
}

}  // namespace orv::test::world
