// The world fixture's intersections and the airway graph between them.
//
// Each area's intersections are chained two-way along a Hilbert curve through
// its box (so that neighbours in the chain are neighbours on the map) into
// airways of 8 to 25 legs; the areas are joined by one two-way gateway leg
// each, across the oceans, in a tree; the island groups are chained on their
// own. That makes the victor net one component over the continents and the
// jet net another, and keeps every island group apart. One-way legs between
// near neighbours, in walks that keep roughly straight on, make up the rest.
#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <unordered_set>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "support/WorldFixtureDetail.h"

namespace orv::test::world {

namespace {

enum class Role : uint8_t { Victor, Jet, Both };
enum Net : int { kVictor = 0, kJet = 1 };

struct Node {
  float Lat = 0, Lon = 0;
  std::string Ident, Name, Country;
  Role Kind = Role::Victor;
  int Area = -1;  // -1 - k for island group k
  int32_t Index = 0;
};

bool InNet(const Node& n, int net) {
  return n.Kind == Role::Both || (net == kVictor ? n.Kind == Role::Victor : n.Kind == Role::Jet);
}

struct Leg {
  int32_t From, To;  // intersection indexes
  bool TwoWay;
  int32_t Airway;    // into the airway list of its net
};

struct Airway {
  std::string Name, Mea1, Mea2;
};

// Hilbert curve position of (x, y) on a 65536 x 65536 grid.
uint64_t HilbertIndex(uint32_t x, uint32_t y) {
  constexpr uint32_t n = 1u << 16;
  uint64_t d = 0;
  for (uint32_t s = n / 2; s > 0; s /= 2) {
    const uint32_t rx = (x & s) > 0 ? 1 : 0;
    const uint32_t ry = (y & s) > 0 ? 1 : 0;
    d += static_cast<uint64_t>(s) * s * ((3 * rx) ^ ry);
    if (ry == 0) {
      if (rx == 1) {
        x = n - 1 - x;
        y = n - 1 - y;
      }
      std::swap(x, y);
    }
  }
  return d;
}

class AirwayBuilder {
public:
  AirwayBuilder(std::vector<Node>& nodes, Rng& rng) : nodes_(nodes), rng_(rng) {}

  // A new airway of the net with its name and altitudes.
  int32_t NewAirway(int net, bool us) {
    Airway a;
    if (net == kVictor) {
      static constexpr const char* kPrefixes[] = {"A", "B", "G", "R", "W"};
      a.Name = us ? "V" + std::to_string(1 + victorNumber_ % 499)
                  : kPrefixes[rng_.Below(std::size(kPrefixes))] + std::to_string(1 + rng_.Below(999));
      ++victorNumber_;
      a.Mea1 = Format(1000 * (2 + rng_.Below(8)) + (rng_.Chance(0.5) ? 500 : 0), "00000");
      a.Mea2 = us ? "FL180" : "FL195";
    } else {
      static constexpr const char* kPrefixes[] = {"UL", "UN", "UM", "UA", "UG", "UT"};
      a.Name = us ? "J" + std::to_string(1 + jetNumber_ % 599)
                  : kPrefixes[rng_.Below(std::size(kPrefixes))] + std::to_string(1 + rng_.Below(999));
      ++jetNumber_;
      static constexpr const char* kLow[] = {"FL180", "FL245", "FL285"};
      static constexpr const char* kHigh[] = {"FL450", "FL460", "FL600"};
      a.Mea1 = kLow[rng_.Below(3)];
      a.Mea2 = kHigh[rng_.Below(3)];
    }
    airways_[net].push_back(std::move(a));
    return static_cast<int32_t>(airways_[net].size() - 1);
  }
  int32_t NamedAirway(int net, std::string name, std::string mea1, std::string mea2) {
    airways_[net].push_back({std::move(name), std::move(mea1), std::move(mea2)});
    return static_cast<int32_t>(airways_[net].size() - 1);
  }

  bool Has(int net, int32_t from, int32_t to) const { return used_[net].count(Key(from, to)) != 0; }
  void Add(int net, int32_t from, int32_t to, bool twoWay, int32_t airway) {
    legs_[net].push_back({from, to, twoWay, airway});
    used_[net].insert(Key(from, to));
    if (twoWay) used_[net].insert(Key(to, from));
  }

  // A chain through the nodes (positions into nodes_), split into airways
  // of 8 to 25 legs.
  void Chain(int net, const std::vector<int32_t>& chain, bool us) {
    int32_t airway = -1;
    int left = 0;
    for (std::size_t i = 1; i < chain.size(); ++i) {
      if (left == 0) {
        airway = NewAirway(net, us);
        left = 8 + static_cast<int>(rng_.Below(18));
      }
      Add(net, nodes_[static_cast<std::size_t>(chain[i - 1])].Index, nodes_[static_cast<std::size_t>(chain[i])].Index,
          true, airway);
      --left;
    }
  }

  // The net's nodes of the continents on a grid of whole degrees, for the
  // neighbour walks.
  void IndexNet(int net) {
    cellStart_.assign(kCells + 1, 0);
    netNodes_.clear();
    for (std::size_t i = 0; i < nodes_.size(); ++i)
      if (nodes_[i].Area >= 0 && InNet(nodes_[i], net)) netNodes_.push_back(static_cast<int32_t>(i));
    for (int32_t i : netNodes_) ++cellStart_[static_cast<std::size_t>(Cell(nodes_[static_cast<std::size_t>(i)])) + 1];
    for (int c = 0; c < kCells; ++c) cellStart_[c + 1] += cellStart_[c];
    cellMembers_.resize(netNodes_.size());
    std::vector<int32_t> fill(cellStart_.begin(), cellStart_.end() - 1);
    for (int32_t i : netNodes_)
      cellMembers_[static_cast<std::size_t>(fill[static_cast<std::size_t>(Cell(nodes_[static_cast<std::size_t>(i)]))]++)] = i;
  }

  // One-way legs until the net holds `count` of them.
  void OneWayLegs(int net, int64_t count) {
    IndexNet(net);
    if (netNodes_.size() < 2) return;
    int64_t made = 0;
    int64_t attempts = 0;
    std::vector<int32_t> near;
    while (made < count && attempts++ < 20 * count + 1000) {
      int32_t cur = netNodes_[rng_.Below(netNodes_.size())];
      double direction = rng_.Range(0, 360);
      const int length = 3 + static_cast<int>(rng_.Below(10));
      const int32_t airway = NewAirway(net, Area(nodes_[static_cast<std::size_t>(cur)].Area).UsAirwayNames);
      for (int step = 0; step < length && made < count; ++step) {
        Neighbours(cur, near);
        if (near.empty()) break;
        const Node& from = nodes_[static_cast<std::size_t>(cur)];
        int32_t best = -1;
        double bestScore = -2, bestCourse = 0;
        for (int tries = 0; tries < 4; ++tries) {
          const int32_t c = near[rng_.Below(near.size())];
          const Node& to = nodes_[static_cast<std::size_t>(c)];
          if (Has(net, from.Index, to.Index)) continue;
          const double course = std::atan2((to.Lon - from.Lon) * std::cos(from.Lat * kRad), to.Lat - from.Lat) / kRad;
          const double score = std::cos((course - direction) * kRad);
          if (score > bestScore) {
            bestScore = score;
            best = c;
            bestCourse = course;
          }
        }
        if (best < 0) break;
        Add(net, from.Index, nodes_[static_cast<std::size_t>(best)].Index, false, airway);
        ++made;
        direction = bestCourse;
        cur = best;
      }
    }
    // Whatever the walks could not place (only in the smallest worlds) goes
    // between any two nodes of the net.
    for (int64_t tries = 0; made < count && tries < 100 * count; ++tries) {
      const Node& a = nodes_[static_cast<std::size_t>(netNodes_[rng_.Below(netNodes_.size())])];
      const Node& b = nodes_[static_cast<std::size_t>(netNodes_[rng_.Below(netNodes_.size())])];
      if (a.Index == b.Index || Has(net, a.Index, b.Index)) continue;
      Add(net, a.Index, b.Index, false, NewAirway(net, Area(a.Area).UsAirwayNames));
      ++made;
    }
  }

  const std::vector<Leg>& Legs(int net) const { return legs_[net]; }
  const std::vector<Airway>& Airways(int net) const { return airways_[net]; }

private:
  static constexpr int kCells = 180 * 360;
  static constexpr double kRad = 3.14159265358979323846 / 180.0;
  static uint64_t Key(int32_t a, int32_t b) { return (static_cast<uint64_t>(a) << 32) | static_cast<uint32_t>(b); }
  static int Cell(const Node& n) {
    const int row = std::clamp(static_cast<int>(std::floor(n.Lat)) + 90, 0, 179);
    const int col = std::clamp(static_cast<int>(std::floor(n.Lon)) + 180, 0, 359);
    return row * 360 + col;
  }
  // Nodes of the net in the cells around cur, widening until a few are found.
  void Neighbours(int32_t cur, std::vector<int32_t>& out) const {
    const Node& n = nodes_[static_cast<std::size_t>(cur)];
    const int row = Cell(n) / 360, col = Cell(n) % 360;
    for (int r = 1; r <= 8; ++r) {
      out.clear();
      for (int y = std::max(0, row - r); y <= std::min(179, row + r); ++y)
        for (int x = std::max(0, col - r); x <= std::min(359, col + r); ++x)
          for (int32_t k = cellStart_[static_cast<std::size_t>(y * 360 + x)];
               k < cellStart_[static_cast<std::size_t>(y * 360 + x + 1)]; ++k)
            if (cellMembers_[static_cast<std::size_t>(k)] != cur) out.push_back(cellMembers_[static_cast<std::size_t>(k)]);
      if (out.size() >= 6) return;
    }
  }

  std::vector<Node>& nodes_;
  Rng& rng_;
  std::vector<Leg> legs_[2];
  std::vector<Airway> airways_[2];
  std::unordered_set<uint64_t> used_[2];
  int64_t victorNumber_ = 0, jetNumber_ = 0;
  std::vector<int32_t> netNodes_, cellStart_, cellMembers_;
};

// The gateways of the tree of areas: from an area, from a point, to an area,
// to a point.
struct Gateway {
  int FromArea;
  float FromLat, FromLon;
  int ToArea;
  float ToLat, ToLon;
};
constexpr Gateway kGateways[kAreaCount - 1] = {
    {0, 47.0f, -95.0f, 1, 49.0f, -97.0f},   // United States - Canada
    {0, 30.0f, -100.0f, 2, 27.0f, -101.0f},  // United States - Mexico
    {1, 48.0f, -54.0f, 3, 52.0f, -9.0f},    // Gander - Shannon, across the North Atlantic
    {3, 37.0f, -5.0f, 5, 34.0f, -6.0f},     // Europe - Africa
    {3, 45.0f, 28.0f, 6, 40.0f, 62.0f},     // Europe - Asia
    {2, 17.0f, -90.0f, 4, 8.0f, -75.0f},    // Mexico - South America
    {6, 10.0f, 105.0f, 7, -13.0f, 130.0f},  // Asia - Oceania
};

}  // namespace

void BuildAirwayNet(World& w) {
  Rng rng(w.Options.Seed, kStreamIntersections);
  const Plan& plan = w.Counts;

  // The nodes: per area some at VORs (a VOR on an airway is one of its
  // intersections), the others anywhere in the box; roles shuffled.
  std::vector<Node> nodes;
  nodes.reserve(static_cast<std::size_t>(plan.Totals.Intersections));
  std::array<std::vector<std::size_t>, kAreaCount> vorsOfArea;
  for (std::size_t i = 0; i < w.Navaids.Vors.size(); ++i) vorsOfArea[static_cast<std::size_t>(w.VorAreas[i])].push_back(i);
  for (int a = 0; a < kAreaCount; ++a) {
    const AreaSpec& area = Area(a);
    const int64_t count = plan.Nodes[a];
    std::vector<Role> roles(static_cast<std::size_t>(count), Role::Victor);
    for (int64_t k = 0; k < plan.JetNodes[a]; ++k)
      roles[static_cast<std::size_t>(k)] = k < plan.JetOnly[a] ? Role::Jet : Role::Both;
    for (std::size_t i = roles.size(); i > 1; --i) std::swap(roles[i - 1], roles[rng.Below(i)]);
    const std::size_t atVors = std::min<std::size_t>(vorsOfArea[a].size() / 2, static_cast<std::size_t>(count / 5));
    for (int64_t k = 0; k < count; ++k) {
      Node n;
      n.Area = a;
      n.Kind = roles[static_cast<std::size_t>(k)];
      n.Country = area.Countries[rng.Below(static_cast<uint64_t>(area.CountryCount))].Prefix;
      if (static_cast<std::size_t>(k) < atVors) {
        const VorRec& v = w.Navaids.Vors[vorsOfArea[a][static_cast<std::size_t>(k) * 2]];
        n.Lat = v.Lat;
        n.Lon = v.Lon;
        n.Ident = std::string(v.Ident.Trimmed());
        n.Name = std::string(v.Name.Trimmed());
      } else {
        n.Lat = static_cast<float>(rng.Range(area.South, area.North));
        n.Lon = static_cast<float>(rng.Range(area.West, area.East));
        n.Ident = NewIdent5(rng, w.UsedIdents);
        n.Name = n.Ident;
      }
      nodes.push_back(std::move(n));
    }
  }
  for (int g = 0; g < kIslandCount; ++g) {
    const IslandSpec& island = Island(g);
    for (int64_t k = 0; k < plan.IslandNodes; ++k) {
      Node n;
      n.Area = -1 - g;
      n.Kind = Role::Both;
      n.Country = island.Prefix;
      n.Lat = static_cast<float>(rng.Range(island.South, island.North));
      n.Lon = static_cast<float>(rng.Range(island.West, island.East));
      n.Ident = NewIdent5(rng, w.UsedIdents);
      n.Name = n.Ident;
      nodes.push_back(std::move(n));
    }
  }
  // Stored south to north (the route search's sliding window counts on it);
  // index 0 stays empty.
  std::stable_sort(nodes.begin(), nodes.end(), [](const Node& a, const Node& b) { return a.Lat < b.Lat; });
  for (std::size_t i = 0; i < nodes.size(); ++i) nodes[i].Index = static_cast<int32_t>(i + 1);

  Rng wrng(w.Options.Seed, kStreamAirways);
  AirwayBuilder builder(nodes, wrng);
  for (int net : {kVictor, kJet}) {
    // Each area's backbone along the Hilbert curve through its box.
    std::array<std::vector<int32_t>, kAreaCount> members;
    std::array<std::vector<int32_t>, kIslandCount> islandMembers;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (!InNet(nodes[i], net)) continue;
      if (nodes[i].Area >= 0) members[static_cast<std::size_t>(nodes[i].Area)].push_back(static_cast<int32_t>(i));
      else islandMembers[static_cast<std::size_t>(-1 - nodes[i].Area)].push_back(static_cast<int32_t>(i));
    }
    auto hilbertOrder = [&](std::vector<int32_t>& list, float south, float north, float west, float east) {
      std::vector<std::pair<uint64_t, int32_t>> keyed;
      keyed.reserve(list.size());
      for (int32_t i : list) {
        const Node& n = nodes[static_cast<std::size_t>(i)];
        const double x = std::clamp((n.Lon - west) / (east - west), 0.0f, 1.0f) * 65535.0;
        const double y = std::clamp((n.Lat - south) / (north - south), 0.0f, 1.0f) * 65535.0;
        keyed.emplace_back(HilbertIndex(static_cast<uint32_t>(x), static_cast<uint32_t>(y)), i);
      }
      std::stable_sort(keyed.begin(), keyed.end(),
                       [](const auto& a, const auto& b) { return a.first < b.first; });
      for (std::size_t k = 0; k < keyed.size(); ++k) list[k] = keyed[k].second;
    };
    for (int a = 0; a < kAreaCount; ++a) {
      const AreaSpec& area = Area(a);
      hilbertOrder(members[static_cast<std::size_t>(a)], area.South, area.North, area.West, area.East);
      builder.Chain(net, members[static_cast<std::size_t>(a)], area.UsAirwayNames);
    }
    for (int g = 0; g < kIslandCount; ++g) {
      const IslandSpec& island = Island(g);
      hilbertOrder(islandMembers[static_cast<std::size_t>(g)], island.South, island.North, island.West, island.East);
      builder.Chain(net, islandMembers[static_cast<std::size_t>(g)], false);
    }
    // The gateway legs between the areas' backbones.
    auto nearestTo = [&](int area, float lat, float lon) {
      int32_t best = -1;
      double bestDistance = 0;
      for (int32_t i : members[static_cast<std::size_t>(area)]) {
        const Node& n = nodes[static_cast<std::size_t>(i)];
        const double d = (n.Lat - lat) * (n.Lat - lat) + (n.Lon - lon) * (n.Lon - lon);
        if (best < 0 || d < bestDistance) {
          best = i;
          bestDistance = d;
        }
      }
      return best < 0 ? -1 : nodes[static_cast<std::size_t>(best)].Index;
    };
    for (std::size_t g = 0; g < std::size(kGateways); ++g) {
      const Gateway& gw = kGateways[g];
      const int32_t airway = net == kVictor ? builder.NamedAirway(net, "OC" + std::to_string(g + 1), "06000", "FL195")
                                            : builder.NamedAirway(net, "NAT" + std::string(1, static_cast<char>('A' + g)),
                                                                  "FL290", "FL410");
      const int32_t from = nearestTo(gw.FromArea, gw.FromLat, gw.FromLon);
      const int32_t to = nearestTo(gw.ToArea, gw.ToLat, gw.ToLon);
      if (from > 0 && to > 0) builder.Add(net, from, to, true, airway);
    }
    builder.OneWayLegs(net, net == kVictor ? plan.VictorOneWay : plan.JetOneWay);
  }

  // The links of each intersection, low ones then high ones, in the order the
  // legs were laid; then the intersections by index.
  const std::size_t slots = nodes.size() + 1;
  std::vector<std::vector<AirwayLinkRec>> links[2];
  for (int net : {kVictor, kJet}) {
    links[net].resize(slots);
    std::vector<AirwayRec> segments;
    segments.reserve(builder.Legs(net).size());
    for (const Leg& leg : builder.Legs(net)) {
      const Node& a = nodes[static_cast<std::size_t>(leg.From - 1)];
      const Node& b = nodes[static_cast<std::size_t>(leg.To - 1)];
      const Airway& airway = builder.Airways(net)[static_cast<std::size_t>(leg.Airway)];
      const float distance = static_cast<float>(GcDistance(a.Lat, a.Lon, b.Lat, b.Lon));
      AirwayLinkRec link;
      link.AirwayName.Assign(airway.Name);
      link.Distance = distance;
      link.Mea1.Assign(airway.Mea1);
      link.Mea2.Assign(airway.Mea2);
      link.Target = leg.To;
      links[net][static_cast<std::size_t>(leg.From)].push_back(link);
      if (leg.TwoWay) {
        link.Target = leg.From;
        links[net][static_cast<std::size_t>(leg.To)].push_back(link);
      }
      AirwayRec seg;
      seg.Name.Assign(airway.Name);
      seg.FromIndex = leg.From;
      seg.ToIndex = leg.To;
      seg.Value = distance;
      seg.Mea1.Assign(airway.Mea1);
      seg.Mea2.Assign(airway.Mea2);
      segments.push_back(seg);
    }
    // The segment files are in airway name order, each airway's legs in turn.
    std::stable_sort(segments.begin(), segments.end(),
                     [](const AirwayRec& x, const AirwayRec& y) { return x.Name.View() < y.Name.View(); });
    (net == kVictor ? w.Navaids.VictorAirways : w.Navaids.JetAirways) = std::move(segments);
  }
  w.Navaids.Intersections.clear();
  w.Navaids.AirwayLinks.clear();
  w.Navaids.AirwayLinks.reserve(static_cast<std::size_t>(plan.Totals.AirwayLinks));
  for (const Node& n : nodes) {
    IntersectionRec rec;
    rec.Index = n.Index;
    rec.Country.Assign(n.Country);
    rec.Ident.Assign(n.Ident);
    rec.Name.Assign(n.Name);
    rec.Lat = n.Lat;
    rec.Lon = n.Lon;
    rec.MagVar = VariationAt(w, n.Lat, n.Lon);
    rec.Flag1.Assign(n.Kind == Role::Both ? "X" : n.Kind == Role::Jet ? "J" : "V");
    if (!PlaceIntersection(w.Navaids, rec, links[kVictor][static_cast<std::size_t>(n.Index)],
                           links[kJet][static_cast<std::size_t>(n.Index)]))
      throw std::runtime_error("world fixture: intersection " + n.Ident + " has more than 255 links of a kind");
  }
}

}  // namespace orv::test::world
