// The shortest-path search over the airway graph: Dijkstra with a binary
// heap over arrays sized once to every intersection slot.
#include "planning/RouteSearch.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "core/Geodesy.h"
#include "planning/RouteSearchDetail.h"

namespace orv {

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

}  // namespace orv
