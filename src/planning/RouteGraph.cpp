// The prepared graph of the airway search: the intersections placed along a
// space-filling curve and the links of each net in the compact form the
// search reads, with the airway altitude texts parsed once.
#include "planning/RouteSearch.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <unordered_map>

#include "core/Runtime.h"
#include "planning/RouteSearchDetail.h"

namespace orv {

int32_t ParseFlightLevel(std::string_view text) {
  if (text.substr(0, 2) == "FL") return CLng(Val(text.substr(2)) * 100);
  return CLng(Val(text));
}

int32_t ParseEdgeAltitude(FixedStr<5>& text) {
  const auto& c = text.chars;
  std::size_t n = 0;
  int32_t value = 0;
  while (n < c.size() && c[n] >= '0' && c[n] <= '9') value = value * 10 + (c[n++] - '0');
  bool canonical = n > 0 && (c[0] != '0' || n == 1);
  for (std::size_t k = n; canonical && k < c.size(); ++k) canonical = c[k] == ' ';
  if (canonical) return value;

  value = ParseFlightLevel(text.View());
  char buffer[16];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  text.Assign(std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
  return value;
}

void RouteSearch::Prepare(const NavaidTables& navaids) {
  // The fields of the last search go back to the plain order before the
  // order they are kept in is replaced.
  UsePreparedOrder(false);
  graph_.Tables = &navaids;
  BuildOrder(navaids, graph_);
  BuildNet(navaids, 'V', &graph_, graph_.Low);
  BuildNet(navaids, 'J', &graph_, graph_.High);
  graph_.HaveLow = graph_.HaveHigh = true;
}

namespace {

// The distance of a point along a Hilbert curve through a 65536 x 65536
// grid: points close on the curve are close on the grid.
uint64_t HilbertKey(uint32_t x, uint32_t y) {
  uint64_t key = 0;
  for (uint32_t s = 1u << 15; s > 0; s >>= 1) {
    const uint32_t rx = (x & s) ? 1 : 0;
    const uint32_t ry = (y & s) ? 1 : 0;
    key += uint64_t{s} * s * ((3 * rx) ^ ry);
    if (ry == 0) {
      if (rx == 1) {
        x = 0xFFFF - x;
        y = 0xFFFF - y;
      }
      std::swap(x, y);
    }
  }
  return key;
}

uint32_t GridCell(float value, float low, float span) {
  const double f = (static_cast<double>(value) - low) / span;
  if (!(f > 0)) return 0;  // also NaN
  return f >= 1 ? 0xFFFF : static_cast<uint32_t>(f * 0xFFFF);
}

}  // namespace

void RouteSearch::BuildOrder(const NavaidTables& navaids, Graph& out) {
  const std::size_t slots = std::min(navaids.Intersections.size(), kIntersectionSlots);
  out.Slots = slots;
  // Filled slots along the curve over longitude and latitude, empty ones
  // behind them; equal keys keep the index order.
  std::vector<std::pair<uint64_t, int32_t>> keyed(slots);
  for (std::size_t i = 0; i < slots; ++i) {
    const IntersectionRec& rec = navaids.Intersections[i];
    const uint64_t key = rec.Ident.IsEmptySlot()
                             ? ~uint64_t{0}
                             : HilbertKey(GridCell(rec.Lon, -180, 360), GridCell(rec.Lat, -90, 180));
    keyed[i] = {key, static_cast<int32_t>(i)};
  }
  std::sort(keyed.begin(), keyed.end());
  out.Node.resize(kIntersectionSlots);
  out.Position.resize(kIntersectionSlots);
  for (std::size_t p = 0; p < kIntersectionSlots; ++p) {
    const int32_t node = p < slots ? keyed[p].second : static_cast<int32_t>(p);
    out.Node[p] = node;
    out.Position[static_cast<std::size_t>(node)] = static_cast<int32_t>(p);
  }
  out.Lat.resize(slots);
  out.Lon.resize(slots);
  for (std::size_t p = 0; p < slots; ++p) {
    const IntersectionRec& rec = navaids.Intersections[static_cast<std::size_t>(out.Node[p])];
    out.Lat[p] = rec.Lat;
    out.Lon[p] = rec.Lon;
  }
}

void RouteSearch::BuildNet(const NavaidTables& navaids, char net, const Graph* order, NetGraph& out) {
  const std::size_t slots = std::min(navaids.Intersections.size(), kIntersectionSlots);
  const std::size_t linkCount = navaids.AirwayLinks.size();
  out.Offsets.assign(slots + 1, 0);
  out.Edges.clear();
  out.LinkOf.clear();
  out.Vias.clear();

  // Distinct airway name and altitude pairs, keyed by their bytes.
  struct Key {
    uint64_t Name;
    uint64_t Alts;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& k) const {
      return static_cast<std::size_t>((k.Name * 0x9E3779B97F4A7C15ull) ^ (k.Alts + (k.Name >> 29)));
    }
  };
  std::unordered_map<Key, uint32_t, KeyHash> vias;

  for (std::size_t p = 0; p < slots; ++p) {
    out.Offsets[p] = static_cast<uint32_t>(out.Edges.size());
    const auto i = order ? static_cast<std::size_t>(order->Node[p]) : p;
    const IntersectionRec& rec = navaids.Intersections[i];
    const std::size_t first = std::size_t{rec.LinkFirst} + (net == 'V' ? 0u : rec.LowCount);
    const std::size_t count = net == 'V' ? rec.LowCount : rec.HighCount;
    if (first + count > linkCount) continue;
    for (std::size_t k = first; k < first + count; ++k) {
      const AirwayLinkRec& link = navaids.AirwayLinks[k];
      const auto t = static_cast<std::size_t>(link.Target);
      if (t >= slots) continue;
      const int32_t target = order ? order->Position[t] : link.Target;
      // The values the texts give once the search has written them back;
      // an edge whose texts that write would change is marked to have it done.
      FixedStr<5> min = link.Mea1, max = link.Mea2;
      ParseEdgeAltitude(min);
      ParseEdgeAltitude(max);
      const bool rewrite = min != link.Mea1 || max != link.Mea2;
      const int32_t minAlt = ParseEdgeAltitude(min);
      const int32_t maxAlt = ParseEdgeAltitude(max);
      Key key{};
      std::memcpy(&key.Name, link.AirwayName.chars.data(), sizeof key.Name);
      key.Alts = uint64_t{static_cast<uint32_t>(minAlt)} << 32 | static_cast<uint32_t>(maxAlt);
      auto [it, added] = vias.try_emplace(key, static_cast<uint32_t>(out.Vias.size()));
      if (added) out.Vias.push_back({link.AirwayName, minAlt, maxAlt});
      out.Edges.push_back({rewrite ? ~target : target, link.Distance, it->second});
      out.LinkOf.push_back(static_cast<uint32_t>(k));
    }
  }
  out.Offsets[slots] = static_cast<uint32_t>(out.Edges.size());
  out.NonNegative = std::none_of(out.Edges.begin(), out.Edges.end(),
                                 [](const NetGraph::Edge& e) { return e.Length < 0; });
}

bool RouteSearch::PreparedFor(const NavaidTables& navaids) const {
  return graph_.Tables == &navaids &&
         graph_.Slots == std::min(navaids.Intersections.size(), kIntersectionSlots);
}

const RouteSearch::NetGraph& RouteSearch::NetFor(const NavaidTables& navaids, char net, bool prepared) {
  if (prepared) {
    bool& have = net == 'V' ? graph_.HaveLow : graph_.HaveHigh;
    NetGraph& g = net == 'V' ? graph_.Low : graph_.High;
    if (!have) BuildNet(navaids, net, &graph_, g);
    have = true;
    return g;
  }
  BuildNet(navaids, net, nullptr, scratch_);
  return scratch_;
}

void RouteSearch::UsePreparedOrder(bool prepared) {
  if (prepared == inPreparedOrder_) return;
  // Every slot moves from its position in one order to the other; a search
  // over other tables in between is rare, so plain copies do.
  const std::vector<int32_t>& node = graph_.Node;
  const std::vector<int32_t>& position = graph_.Position;
  auto move = [&](auto& values) {
    auto copy = values;
    for (std::size_t p = 0; p < kIntersectionSlots; ++p) {
      const auto to = prepared ? static_cast<std::size_t>(position[p]) : static_cast<std::size_t>(node[p]);
      values[to] = copy[p];
    }
  };
  move(pred_);
  move(dist_);
  move(settled_);
  move(viaAirway_);
  move(viaMinAlt_);
  move(viaMaxAlt_);
  move(altListed_);
  for (auto* list : {&touched_, &altTouched_}) {
    for (int32_t& p : *list)
      p = prepared ? position[static_cast<std::size_t>(p)] : node[static_cast<std::size_t>(p)];
  }
  inPreparedOrder_ = prepared;
}

}  // namespace orv
