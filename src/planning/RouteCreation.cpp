#include "planning/RouteCreation.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <unordered_map>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/Aircraft.h"
#include "planning/NavLookupDb.h"

namespace orv {

namespace {

// The latitude difference alone already puts a point this far away by any
// measure (a degree of arc is 60 NM); the margin covers single-precision
// rounding in the exact routines, which are only asked once this passes.
constexpr double kPrefilterMarginNm = 1.0;

bool Beyond(float lat1, float lat2, double radius) {
  return std::fabs(static_cast<double>(lat1) - lat2) * 60 > radius + kPrefilterMarginNm;
}

// A quick test that a point lies farther than a radius from a centre, by
// any measure the routines give, so that the exact (and costly) distance is
// only worked out for points that may lie inside. Beyond the latitude test,
// the longitude difference alone bounds the great-circle distance from
// below: hav(d) >= cos(lat1) cos(lat2) hav(dLon), and cos(lat2) is at least
// the cosine of the highest latitude the latitude test lets through. The
// margin is the one of the latitude test.
class RadiusBound {
public:
  RadiusBound(float lat, float lon, double radius) : lat_(lat), lon_(lon), radius_(radius) {
    constexpr double kRad = 3.14159265358979323846 / 180;
    const double reach = (radius + kPrefilterMarginNm) / 60;  // degrees of arc
    const double highest = std::fabs(static_cast<double>(lat)) + reach;
    if (!(highest < 90) || !(reach < 180)) return;  // no longitude limit
    const double half = std::sin(reach * kRad / 2);
    const double ratio = half * half / (std::cos(lat * kRad) * std::cos(highest * kRad));
    if (ratio < 1) maxLonDiff_ = 2 * std::asin(std::sqrt(ratio)) / kRad;
  }
  bool Beyond(float lat, float lon) const {
    if (orv::Beyond(lat_, lat, radius_)) return true;
    double diff = std::fabs(static_cast<double>(lon) - lon_);
    if (diff > 360) diff = std::fmod(diff, 360);
    if (diff > 180) diff = 360 - diff;
    return diff > maxLonDiff_;  // false for NaN
  }

private:
  float lat_, lon_;
  double radius_;
  double maxLonDiff_ = 360;
};

// The widest radius a search growing from first by step tries below limit.
constexpr int LastRadius(int first, int step, int limit) { return first + (limit - 1 - first) / step * step; }
static_assert(LastRadius(30, 20, 500) == 490 && LastRadius(35, 25, 500) == 485);

bool IsKind(const WaypointRec& w, std::string_view kind) { return w.Kind.Trimmed() == kind; }

std::span<AirwayLinkRec> NetLinks(NavaidTables& navaids, int node, char net) {
  return net == 'V' ? navaids.LowAirways(node) : navaids.HighAirways(node);
}
std::span<const AirwayLinkRec> NetLinks(const NavaidTables& navaids, int node, char net) {
  return net == 'V' ? navaids.LowAirways(node) : navaids.HighAirways(node);
}

// The altitude of an edge text, which is then left in the edge in its parsed
// form. The form a search leaves behind (digits, blank padded) is read
// without the general parser, so repeated searches cost no text work.
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

}  // namespace

int32_t ParseFlightLevel(std::string_view text) {
  if (text.substr(0, 2) == "FL") return CLng(Val(text.substr(2)) * 100);
  return CLng(Val(text));
}

std::string StripAirwayMarks(std::string_view name) {
  if (name.substr(0, 2) == "<<") name.remove_prefix(2);
  if (name.size() >= 2 && name.substr(name.size() - 2) == ">>") name.remove_suffix(2);
  return std::string(name);
}

std::string NoAirwayRoutingMessage(std::string_view entryIdent) {
  return "No airway routing possible from " + UCase(Trim(entryIdent)) + "!!" + std::string(kLineBreak) +
         "Choose different airway intersection manually!";
}

std::string IllegalLevelMessage(int32_t altitude, std::string_view airway) {
  std::string lb(kLineBreak);
  return lb + "ILLEGAL FLIGHT PLAN FOR CURRENT AIRCRAFT!    " + lb + lb + std::to_string(altitude) +
         " minimal altitude required on airway " + Trim(airway) + "!    ";
}

// ---------------------------------------------------------------- search

RouteSearch::RouteSearch()
    : pred_(kIntersectionSlots, 0),
      dist_(kIntersectionSlots, kUnreached),
      settled_(kIntersectionSlots, 0),
      viaAirway_(kIntersectionSlots),
      viaMinAlt_(kIntersectionSlots, 0),
      viaMaxAlt_(kIntersectionSlots, 0),
      altListed_(kIntersectionSlots, 0),
      heap_(static_cast<std::size_t>(kHeapCapacity) + 1, 0) {
  touched_.reserve(kIntersectionSlots);
  altTouched_.reserve(kIntersectionSlots);
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

int RouteSearch::RouteToArea(NavaidTables& navaids, int start, char net, float lat, float lon, int radius) {
  return Run(navaids, start, net, Goal::Area, -1, lat, lon, radius, kAreaPopLimit, true);
}

int RouteSearch::RouteToTarget(NavaidTables& navaids, int start, int target, char net) {
  return Run(navaids, start, net, Goal::Target, target, 0, 0, 0, kTargetPopLimit, false);
}

void RouteSearch::ResetNodes(bool resetAltitudes) {
  // Every node outside these lists still holds the starting values. When
  // the last search reached much of the graph, plain fills of the arrays
  // are quicker than visiting its nodes in the order they were reached.
  const std::size_t bulk = kIntersectionSlots / 8;
  if (touched_.size() > bulk && (!resetAltitudes || altTouched_.size() > bulk)) {
    std::fill(pred_.begin(), pred_.end(), 0);
    std::fill(dist_.begin(), dist_.end(), kUnreached);
    std::fill(settled_.begin(), settled_.end(), uint8_t{0});
    std::fill(viaAirway_.begin(), viaAirway_.end(), FixedStr<8>());
    touched_.clear();
    if (resetAltitudes) {
      std::fill(viaMinAlt_.begin(), viaMinAlt_.end(), 0);
      std::fill(viaMaxAlt_.begin(), viaMaxAlt_.end(), 0);
      std::fill(altListed_.begin(), altListed_.end(), uint8_t{0});
      altTouched_.clear();
    }
    return;
  }
  for (int32_t n : touched_) {
    const auto i = static_cast<std::size_t>(n);
    pred_[i] = 0;
    dist_[i] = kUnreached;
    settled_[i] = 0;
    viaAirway_[i] = FixedStr<8>();
  }
  touched_.clear();
  if (resetAltitudes) {
    for (int32_t n : altTouched_) {
      const auto i = static_cast<std::size_t>(n);
      viaMinAlt_[i] = 0;
      viaMaxAlt_[i] = 0;
      altListed_[i] = 0;
    }
    altTouched_.clear();
  }
}

int RouteSearch::Run(NavaidTables& navaids, int start, char net, Goal goal, int target, float lat, float lon,
                     int radius, int popLimit, bool resetAltitudes) {
  heapSize_ = 0;
  pops_ = 0;
  overflow_ = false;
  const std::size_t slots = std::min(navaids.Intersections.size(), kIntersectionSlots);
  if (start < 0 || static_cast<std::size_t>(start) >= slots) return -start;

  // The search rewrites the altitude texts of edges it uses for the first
  // time, so the edges are its own to change.
  const bool prepared = PreparedFor(navaids);
  NetGraph& graph = const_cast<NetGraph&>(NetFor(navaids, net, prepared));
  UsePreparedOrder(prepared);
  ResetNodes(resetAltitudes);
  // Positions in the searched graph's order; the node of a position is what
  // the caller sees.
  const int32_t* node = prepared ? graph_.Node.data() : nullptr;
  auto positionOf = [&](int i) { return prepared ? graph_.Position[static_cast<std::size_t>(i)] : i; };
  const int32_t startPos = positionOf(start);
  const int32_t targetPos = target >= 0 && static_cast<std::size_t>(target) < slots ? positionOf(target) : -1;
  const auto s = static_cast<std::size_t>(startPos);
  dist_[s] = 0;
  settled_[s] = 1;
  touched_.push_back(startPos);

  int32_t current = startPos;
  for (;;) {
    Relax(navaids, graph, current, node ? node[current] : current);
    if (overflow_ || heapSize_ == 0) return -start;
    // A node can stand in the heap more than once; a later copy of a settled
    // node is expanded again, which finds nothing new to relax.
    current = graph.NonNegative ? Pop<true>() : Pop<false>();
    settled_[static_cast<std::size_t>(current)] = 1;
    if (++pops_ > popLimit) return -start;
    if (goal == Goal::Target) {
      if (current == targetPos) return target;
    } else {
      const auto c = static_cast<std::size_t>(current);
      const auto i = node ? static_cast<std::size_t>(node[c]) : c;
      const float nodeLat = prepared ? graph_.Lat[c] : navaids.Intersections[i].Lat;
      if (Beyond(nodeLat, lat, radius)) continue;
      const float nodeLon = prepared ? graph_.Lon[c] : navaids.Intersections[i].Lon;
      if (RhumbDistance(nodeLat, nodeLon, lat, lon) <= radius) return static_cast<int>(i);
    }
  }
}

void RouteSearch::Relax(NavaidTables& navaids, NetGraph& graph, int32_t pos, int32_t node) {
  const auto n = static_cast<std::size_t>(pos);
  const std::size_t first = graph.Offsets[n], end = graph.Offsets[n + 1];
  NetGraph::Edge* edges = graph.Edges.data();
  const NetGraph::ViaInfo* vias = graph.Vias.data();
  float* dist = dist_.data();
  const uint8_t* settled = settled_.data();
  const float here = dist[n];
  for (std::size_t e = first; e < end; ++e) {
    NetGraph::Edge& edge = edges[e];
    const int32_t target = edge.Target < 0 ? ~edge.Target : edge.Target;
    const auto t = static_cast<std::size_t>(target);
    // A settled neighbour is skipped; as its length is rarely beaten, that
    // test comes second and is rarely made.
    const float d = edge.Length + here;
    const float before = dist[t];
    if (!(d < before) || settled[t]) continue;
    if (edge.Target < 0) {
      RelaxFirstTime(navaids, graph, edge, e, node, d);
      if (overflow_) return;
      continue;
    }
    pred_[t] = node;
    dist[t] = d;
    const NetGraph::ViaInfo& via = vias[edge.Via];
    viaAirway_[t] = via.Airway;
    viaMinAlt_[t] = via.MinAlt;
    viaMaxAlt_[t] = via.MaxAlt;
    if (before == kUnreached) NoteReached(target);
    if (!Push(edge.Target)) {
      overflow_ = true;
      return;
    }
  }
}

void RouteSearch::RelaxFirstTime(NavaidTables& navaids, NetGraph& graph, NetGraph::Edge& edge, std::size_t e,
                                 int32_t node, float d) {
  const int32_t target = ~edge.Target;
  const auto t = static_cast<std::size_t>(target);
  // The texts of the link record are parsed and written back in their
  // parsed form; from then on the edge's table values are what they give.
  AirwayLinkRec& link = navaids.AirwayLinks[graph.LinkOf[e]];
  if (dist_[t] == kUnreached) NoteReached(target);
  pred_[t] = node;
  dist_[t] = d;
  viaAirway_[t] = link.AirwayName;
  viaMinAlt_[t] = ParseEdgeAltitude(link.Mea1);
  viaMaxAlt_[t] = ParseEdgeAltitude(link.Mea2);
  edge.Target = target;
  if (!Push(target)) overflow_ = true;
}

void RouteSearch::NoteReached(int32_t pos) {
  // A node's first path in this search: its length was the starting one.
  touched_.push_back(pos);
  uint8_t& listed = altListed_[static_cast<std::size_t>(pos)];
  if (!listed) altTouched_.push_back(pos);
  listed = 1;
}

bool RouteSearch::Push(int32_t node) {
  if (heapSize_ >= kHeapCapacity) return false;
  int pos = ++heapSize_;
  heap_[static_cast<std::size_t>(pos)] = node;
  // Sift up while the parent is strictly further; equal keys stay in order.
  while (pos > 1) {
    int parent = pos / 2;
    int32_t& p = heap_[static_cast<std::size_t>(parent)];
    int32_t& c = heap_[static_cast<std::size_t>(pos)];
    if (!(dist_[static_cast<std::size_t>(p)] > dist_[static_cast<std::size_t>(c)])) break;
    std::swap(p, c);
    pos = parent;
  }
  return true;
}

namespace {

// The key of a heap entry: its tentative length, or, when no length can be
// negative, the length's bits read as an integer, which order the same way
// and are compared and picked with fewer steps.
inline float HeapKey(const float* dist, int32_t node, std::false_type) { return dist[node]; }
inline int32_t HeapKey(const float* dist, int32_t node, std::true_type) {
  int32_t bits;
  std::memcpy(&bits, dist + node, sizeof bits);
  return bits;
}

}  // namespace

template <bool kBits>
int32_t RouteSearch::Pop() {
  const std::bool_constant<kBits> bits;
  int32_t* heap = heap_.data();
  const float* dist = dist_.data();
  const int32_t top = heap[1];
  const int size = --heapSize_;
  const int32_t moved = heap[size + 1];
  const auto key = HeapKey(dist, moved, bits);
  // The rule (with both children smaller, the left only when strictly
  // smaller than the right; stop when neither is smaller) comes to: take the
  // left child when it is strictly smaller than the right, else the right,
  // and go down while the node is above the one taken. Keys are never NaN.
  // The pick is done without a branch, as it is as good as random.
  int pos = 1;
  for (;;) {
    const int left = 2 * pos;
    if (left >= size) {
      // At most a left child remains.
      if (left == size && key > HeapKey(dist, heap[left], bits)) {
        heap[pos] = heap[left];
        pos = left;
      }
      break;
    }
    const auto leftKey = HeapKey(dist, heap[left], bits), rightKey = HeapKey(dist, heap[left + 1], bits);
    // The smaller key (equal keys are the same value either way) and the
    // child's slot by arithmetic, which the compiler keeps branch-free.
    const auto childKey = leftKey < rightKey ? leftKey : rightKey;
    if (!(key > childKey)) break;
    const int child = left + static_cast<int>(!(leftKey < rightKey));
    heap[pos] = heap[child];
    pos = child;
  }
  heap[pos] = moved;
  return top;
}

void RouteSearch::PathTo(int end, std::vector<int32_t>& out) const {
  out.clear();
  if (end < 0 || static_cast<std::size_t>(end) >= pred_.size()) return;
  int32_t node = end;
  out.push_back(node);
  // A predecessor chain cannot be longer than the slots; the bound only
  // protects against a chain left inconsistent by an earlier failed search.
  while (pred_[At(node)] != 0 && out.size() < pred_.size()) {
    node = pred_[At(node)];
    out.push_back(node);
  }
}

// ---------------------------------------------------------------- builders

bool RouteBuilder::NetMatches(int index, char net) const {
  FixedStr<1> type = IntersectionNetType(navaids_.Intersections[static_cast<std::size_t>(index)]);
  return type.chars[0] == 'X' || type.chars[0] == net;
}

void RouteBuilder::NoteLevel(int node) {
  if (violation_) return;
  int32_t minAlt = search_.ViaMinAlt(node);
  if (minAlt > static_cast<int64_t>(aircraft_.CruiseLevel) * 100) {
    violation_ = true;
    violationAltitude_ = minAlt;
    violationAirway_ = search_.ViaAirway(node).Str();
  }
}

bool RouteBuilder::InsertNode(int at, int node) {
  WaypointRec rec = IntersectionRow(navaids_, node);
  rec.Airway.Assign(search_.ViaAirway(node).View());
  rec.MinAltitude = search_.ViaMinAlt(node);
  rec.MaxAltitude = search_.ViaMaxAlt(node);
  rec.Origin = kOriginEnroute;
  return editor_.InsertWaypoint(at, rec, false);
}

int RouteBuilder::FindEntryIntersection(int row, char net) {
  FlightPlan& plan = editor_.Plan();
  const auto& ints = navaids_.Intersections;
  const int last = std::min(navaids_.MaxIntersectionIndex, static_cast<int32_t>(ints.size()) - 1);

  // The identity tests look at the selected row, the geometry at `row`; the
  // two are the same whenever the command runs from a selection.
  if (plan.CurrentRow >= 0 && plan.CurrentRow <= plan.LastRow) {
    const WaypointRec& cur = plan.Waypoints[static_cast<std::size_t>(plan.CurrentRow)];
    if (IsKind(cur, "VOR")) {
      std::string_view code = cur.Code.Trimmed();
      for (int i = 0; i <= last; ++i) {
        const IntersectionRec& rec = ints[static_cast<std::size_t>(i)];
        if (rec.Ident.IsEmptySlot() || rec.Ident.Trimmed() != code || !NetMatches(i, net)) continue;
        if (RhumbDistance(cur.Lat, cur.Lon, rec.Lat, rec.Lon) < 1) return i;
      }
    } else if (IsKind(cur, "Int")) {
      char type = cur.NetType.chars[0];
      bool filled = cur.DbIndex >= 0 && cur.DbIndex <= last &&
                    !ints[static_cast<std::size_t>(cur.DbIndex)].Ident.IsEmptySlot();
      if ((type == 'X' || type == net) && filled) return cur.DbIndex;
    }
  }

  const WaypointRec& from = plan.Waypoints[static_cast<std::size_t>(row)];
  const WaypointRec& to = plan.Waypoints[static_cast<std::size_t>(row) + 1];
  const double heading = GcCourse(from.Lat, from.Lon, to.Lat, to.Lon);
  constexpr std::size_t kMaxCandidates = 500;
  constexpr int kFirstRadius = 30, kRadiusStep = 20, kRadiusLimit = 500;
  std::vector<int32_t>& candidates = candidates_;
  candidates.clear();

  // The intersections of the net that the widest radius can reach, in index
  // order; each radius then looks at these only, and a distance or a link
  // test once made holds for every radius.
  std::vector<NearNode>& near = near_;
  near.clear();
  const RadiusBound widest(from.Lat, from.Lon, LastRadius(kFirstRadius, kRadiusStep, kRadiusLimit));
  for (int i = 1; i <= last; ++i) {
    const IntersectionRec& rec = ints[static_cast<std::size_t>(i)];
    if (rec.Ident.IsEmptySlot() || widest.Beyond(rec.Lat, rec.Lon) || !NetMatches(i, net)) continue;
    near.push_back({i, rec.Lat, rec.Lon, 0, NearNode::kUnknown, NearNode::kUnknown});
  }

  for (int r = kFirstRadius;; r += kRadiusStep) {
    if (r >= kRadiusLimit) {
      ui_.MsgBox(kNoEntryFixMessage);
      return -1;
    }
    // An intersection qualifies when one of its airways of the net leaves it
    // within 60 degrees of the leg's direction.
    const RadiusBound bound(from.Lat, from.Lon, r);
    for (NearNode& n : near) {
      if (candidates.size() >= kMaxCandidates) break;
      if (bound.Beyond(n.Lat, n.Lon)) continue;
      if (n.Measured == NearNode::kUnknown) {
        n.Distance = GcDistance(from.Lat, from.Lon, n.Lat, n.Lon);
        n.Measured = NearNode::kYes;
      }
      if (!(n.Distance < r)) continue;
      if (n.Qualifies == NearNode::kUnknown) {
        n.Qualifies = NearNode::kNo;
        for (const AirwayLinkRec& link : NetLinks(navaids_, n.Index, net)) {
          if (link.Target < 0 || link.Target >= static_cast<int32_t>(ints.size())) continue;
          const IntersectionRec& next = ints[static_cast<std::size_t>(link.Target)];
          if (AngleDiff(RhumbCourse(n.Lat, n.Lon, next.Lat, next.Lon), heading) <= 60) {
            n.Qualifies = NearNode::kYes;
            break;
          }
        }
      }
      if (n.Qualifies == NearNode::kYes) candidates.push_back(n.Index);
    }
    if (!candidates.empty()) break;
  }

  // The candidate lying most nearly ahead wins; a tie keeps the earlier one.
  double best = 360;
  int winner = candidates.front();
  for (int32_t c : candidates) {
    const IntersectionRec& rec = ints[static_cast<std::size_t>(c)];
    double angle = AngleDiff(GcCourse(from.Lat, from.Lon, rec.Lat, rec.Lon), heading);
    if (angle < best) {
      best = angle;
      winner = c;
    }
  }
  return winner;
}

int RouteBuilder::FindExitRadius(int row, char net) {
  FlightPlan& plan = editor_.Plan();
  const auto& ints = navaids_.Intersections;
  const int last = std::min(navaids_.MaxIntersectionIndex, static_cast<int32_t>(ints.size()) - 1);
  const WaypointRec& dest = plan.Waypoints[static_cast<std::size_t>(row) + 1];
  constexpr int kFirstRadius = 35, kRadiusStep = 25, kRadiusLimit = 500;
  // The first radius scans the table and usually finds one; meanwhile the
  // intersections the widest radius can reach are noted, in index order, so
  // that the wider radii look at these only and measure each once.
  std::vector<NearNode>& near = near_;
  near.clear();
  const RadiusBound widest(dest.Lat, dest.Lon, LastRadius(kFirstRadius, kRadiusStep, kRadiusLimit));
  {
    const RadiusBound bound(dest.Lat, dest.Lon, kFirstRadius);
    for (int i = 1; i <= last; ++i) {
      const IntersectionRec& rec = ints[static_cast<std::size_t>(i)];
      if (rec.Ident.IsEmptySlot() || widest.Beyond(rec.Lat, rec.Lon) || !NetMatches(i, net)) continue;
      NearNode n{i, rec.Lat, rec.Lon, 0, NearNode::kUnknown, NearNode::kUnknown};
      if (!bound.Beyond(rec.Lat, rec.Lon)) {
        n.Distance = GcDistance(dest.Lat, dest.Lon, rec.Lat, rec.Lon);
        n.Measured = NearNode::kYes;
        if (n.Distance < kFirstRadius && n.Distance > 5) return kFirstRadius;
      }
      near.push_back(n);
    }
  }
  for (int r = kFirstRadius + kRadiusStep;; r += kRadiusStep) {
    if (r >= kRadiusLimit) {
      ui_.MsgBox(kNoExitFixMessage);
      return -1;
    }
    const RadiusBound bound(dest.Lat, dest.Lon, r);
    for (NearNode& n : near) {
      if (bound.Beyond(n.Lat, n.Lon)) continue;
      if (n.Measured == NearNode::kUnknown) {
        n.Distance = GcDistance(dest.Lat, dest.Lon, n.Lat, n.Lon);
        n.Measured = NearNode::kYes;
      }
      if (n.Distance < r && n.Distance > 5) return r;
    }
  }
}

bool RouteBuilder::CreateAirwayPlan(char net, int row) {
  FlightPlan& plan = editor_.Plan();
  if (row < 0 || row >= plan.LastRow) return false;
  violation_ = false;
  ui_.SetWaitCursor(true);
  plan.NetKind = net == 'J' ? 1 : 2;

  const int entry = FindEntryIntersection(row, net);
  if (entry < 0) {
    ui_.SetWaitCursor(false);
    return false;
  }
  const int radius = FindExitRadius(row, net);
  if (radius < 0) {
    ui_.SetWaitCursor(false);
    return false;
  }

  const IntersectionRec& entryRec = navaids_.Intersections[static_cast<std::size_t>(entry)];
  bool entryIsSidEnd = false;
  const WaypointRec& at = plan.Waypoints[static_cast<std::size_t>(row)];
  if (at.DbIndex == entry && IsKind(at, "Int")) {
    // The route starts at this very row: the search inserts it again.
    editor_.DeleteWaypoint(row, false);
    --row;
  } else if (UCase(at.Code.Trimmed()) == entryRec.Ident.Trimmed() &&
             RhumbDistance(at.Lat, at.Lon, entryRec.Lat, entryRec.Lon) < 1) {
    if (at.Origin == kOriginEnroute) {
      editor_.DeleteWaypoint(row, false);
      --row;
    } else if (at.Origin == kOriginSid) {
      entryIsSidEnd = true;  // the SID already ends on the entry
    }
  }

  const WaypointRec& dest = plan.Waypoints[static_cast<std::size_t>(row) + 1];
  const int result = search_.RouteToArea(navaids_, entry, net, dest.Lat, dest.Lon, radius);
  if (result < 0) {
    ui_.SetWaitCursor(false);
    ui_.MsgBox(NoAirwayRoutingMessage(entryRec.Ident.Trimmed()));
    return false;
  }

  // The path runs from the end back to the entry.
  search_.PathTo(result, path_);
  std::size_t count = path_.size();
  if (entryIsSidEnd && count > 0) --count;
  int insertAt = row;
  for (std::size_t k = count; k-- > 0;) {
    if (!InsertNode(insertAt, path_[k])) break;  // the plan is full
    NoteLevel(path_[k]);
    ++insertAt;
  }

  plan.RouteType = 2;
  editor_.RefreshRows(std::max(row, 0));
  editor_.RefreshTotals();
  ui_.SetWaitCursor(false);
  if (violation_) ui_.MsgBox(IllegalLevelMessage(violationAltitude_, violationAirway_));
  return true;
}

bool RouteBuilder::CreateNavaidPlan(int row, const NavaidPlanOptions& options) {
  FlightPlan& plan = editor_.Plan();
  if (!options.Vor && !options.Ndb && !options.Intersection) {
    ui_.MsgBox(kNoNavaidButtonMessage);
    return false;
  }
  if (row < 0 || row >= plan.LastRow) return false;
  plan.NetKind = 3;
  ui_.SetWaitCursor(true);

  const auto& ints = navaids_.Intersections;
  const int last = std::min(navaids_.MaxIntersectionIndex, static_cast<int32_t>(ints.size()) - 1);
  const int firstRow = row;
  const WaypointRec destRow = plan.Waypoints[static_cast<std::size_t>(row) + 1];
  float curLat = plan.Waypoints[static_cast<std::size_t>(row)].Lat;
  float curLon = plan.Waypoints[static_cast<std::size_t>(row)].Lon;
  double heading = GcCourse(curLat, curLon, destRow.Lat, destRow.Lon);
  const double total = GcDistance(curLat, curLon, destRow.Lat, destRow.Lon);
  int32_t prev = CLng(total);
  // The first leg looks only 25 NM out, below the sector length, on purpose.
  int32_t r = 25;
  const int32_t step = options.GreatCircle ? 50 : 15;
  int lastInt = heading > 90 && heading < 270 ? last : 0;

  struct Candidate {
    WaypointRec Rec;
    double Dist;
    double Course;
  };
  constexpr std::size_t kMaxCandidates = 100;
  std::vector<Candidate> table;
  table.reserve(kMaxCandidates);
  // A navaid inside the sector: not at the current point, more than 5 NM and
  // less than r away, within SECWIDTH of the heading.
  auto inSector = [&](float lat, float lon, double& dist, double& course) {
    if (lat == curLat || lon == curLon || Beyond(curLat, lat, r)) return false;
    dist = GcDistance(curLat, curLon, lat, lon);
    if (!(dist > 5 && dist < r)) return false;
    course = GcCourse(curLat, curLon, lat, lon);
    return AngleDiff(course, heading) <= options.SecWidth;
  };
  auto add = [&](WaypointRec rec, double dist, double course) {
    // The table ends at 100 entries; further navaids of the pass are not kept.
    if (table.size() < kMaxCandidates) table.push_back({std::move(rec), dist, course});
  };

  bool ok = true;
  for (;;) {
    double dist = 0, course = 0;
    if (options.Vor) {
      for (std::size_t i = 0; i < navaids_.Vors.size(); ++i) {
        const VorRec& v = navaids_.Vors[i];
        if (inSector(v.Lat, v.Lon, dist, course)) add(VorRow(navaids_, static_cast<int>(i)), dist, course);
      }
    }
    if (options.Ndb) {
      for (std::size_t i = 0; i < navaids_.Ndbs.size(); ++i) {
        const NdbRec& n = navaids_.Ndbs[i];
        if (n.Ident.Trimmed().size() > 2 && inSector(n.Lat, n.Lon, dist, course))
          add(NdbRow(navaids_, static_cast<int>(i)), dist, course);
      }
    }
    if (options.Intersection && last >= 0) {
      // Intersections are stored south to north: the scan starts near the
      // last hit and runs the way the leg goes, and takes the first hit.
      auto tryInt = [&](int i) {
        const IntersectionRec& rec = ints[static_cast<std::size_t>(i)];
        if (rec.Ident.IsEmptySlot() || !inSector(rec.Lat, rec.Lon, dist, course)) return false;
        add(IntersectionRow(navaids_, i), dist, course);
        lastInt = i;
        return true;
      };
      if (heading > 90 && heading < 270) {
        for (int i = std::min(lastInt + 100, last); i >= 0; --i)
          if (tryInt(i)) break;
      } else {
        for (int i = std::max(lastInt - 100, 0); i <= last; ++i)
          if (tryInt(i)) break;
      }
    }

    if (table.empty()) {
      r += step;
    } else {
      std::size_t chosen = 0;
      const double first = table[0].Dist;
      for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i].Dist >= first) chosen = i;
      // Closeness to the heading by the plain difference, without wrap-round.
      std::size_t aligned = 0;
      for (std::size_t j = 0; j < table.size(); ++j)
        if (std::fabs(table[j].Course - heading) <= std::fabs(table[aligned].Course - heading)) aligned = j;
      if (table[aligned].Dist > 30 && table[aligned].Dist < 150) chosen = aligned;
      const WaypointRec& pick = table[chosen].Rec;
      if (pick.Lat == destRow.Lat && pick.Lon == destRow.Lon) break;  // arrived

      WaypointRec rec = pick;
      rec.Origin = kOriginEnroute;
      if (!editor_.InsertWaypoint(row, rec, false)) break;  // the plan is full
      ++row;
      heading = GcCourse(rec.Lat, rec.Lon, destRow.Lat, destRow.Lon);
      curLat = rec.Lat;
      curLon = rec.Lon;
      r = options.SecLen;
    }

    table.clear();
    // The radius is a 16-bit value: with no navaid anywhere it would
    // overflow, which ends the search the same way as a long empty route.
    if ((r > total && total > 2000) || r > 32767) {
      ok = false;
      break;
    }
    int32_t left = CLng(GcDistance(curLat, curLon, destRow.Lat, destRow.Lon));
    if (left > prev) break;
    prev = left;
    if (left < options.SecLen) break;
  }

  plan.RouteType = 1;
  editor_.RefreshRows(firstRow);
  editor_.RefreshTotals();
  ui_.SetWaitCursor(false);
  if (!ok) ui_.MsgBox(kInsufficientNavaidsMessage);
  return ok;
}

std::string RouteBuilder::AirwayBetween(int from, int to, char net) const {
  const std::vector<AirwayRec>& table = net == 'J' ? navaids_.JetAirways : navaids_.VictorAirways;
  auto links = NetLinks(static_cast<const NavaidTables&>(navaids_), from, net);
  for (const AirwayRec& a : table) {
    if (a.FromIndex != to && a.ToIndex != to) continue;
    for (const AirwayLinkRec& link : links) {
      std::string name = StripAirwayMarks(link.AirwayName.Trimmed());
      if (name == a.Name.Trimmed()) return name;
    }
  }
  return std::string();
}

bool RouteBuilder::AddAirwayWaypoints(bool jet, bool victor) {
  if (jet == victor) {
    ui_.MsgBox(kOneAirwayTypeMessage);
    return false;
  }
  FlightPlan& plan = editor_.Plan();
  const char net = jet ? 'J' : 'V';
  violation_ = false;
  const int copyLast = plan.LastRow;
  const std::vector<WaypointRec> copy(plan.Waypoints.begin(), plan.Waypoints.begin() + copyLast + 1);
  const int slots = static_cast<int>(navaids_.Intersections.size());

  for (int k = 0; k < copyLast; ++k) {
    const WaypointRec& a = copy[static_cast<std::size_t>(k)];
    const WaypointRec& b = copy[static_cast<std::size_t>(k) + 1];
    if (!IsKind(a, "Int") || !IsKind(b, "Int")) continue;
    if (b.Origin == kOriginSid || a.Origin == kOriginStar) continue;
    if (b.DbIndex < 0 || b.DbIndex >= slots) continue;
    // The airway that joins the two directly, when the table has one. The
    // route below fills the rows' airways itself; this only names the leg.
    lastAirway_ = AirwayBetween(a.DbIndex, b.DbIndex, net);
    if (search_.RouteToTarget(navaids_, a.DbIndex, b.DbIndex, net) < 0) continue;

    search_.PathTo(b.DbIndex, path_);
    // Rows already added ahead of this pair (less those merged away) shift it.
    const int offset = plan.LastRow - copyLast;
    int insertAt = k + offset;
    // Every node but the start; the end node then merges into the second row.
    for (std::size_t n = path_.size() - 1; n-- > 0;) {
      if (!InsertNode(insertAt, path_[n])) break;
      NoteLevel(path_[n]);
      ++insertAt;
    }
    editor_.RefreshRows(k + offset);
    editor_.RefreshTotals();
  }
  plan.RouteType = 1;
  return true;
}

}  // namespace orv
