// The airway search of the Low and High Altitude Plans: the shortest path
// over the victor or jet links of the intersection graph (dijinter.orv).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"
#include "database/NavaidFiles.h"

namespace orv {

// An altitude text of an airway: "FL" and a number is that many hundreds of
// feet, anything else the number itself (0 when there is none), rounded to a
// whole foot.
int32_t ParseFlightLevel(std::string_view text);
// The shortest-path search over the intersection graph. Its arrays are sized
// once to every intersection slot, so a search allocates nothing; keep one
// object and reuse it. The per-node results of the last search stay readable.
class RouteSearch {
public:
  // The tentative length a node starts with: no path known.
  static constexpr float kUnreached = 2147483648.0f;
  // Heap capacity; a search that would need more fails as having no route.
  static constexpr int kHeapCapacity = 23000;
  static constexpr int kAreaPopLimit = 100000;
  static constexpr int kTargetPopLimit = 50000;

  RouteSearch();

  // Keeps a compact copy of the links of `navaids` (both nets, built on first
  // use) for every later search over the same tables, instead of building it
  // for each search. Call it again whenever those tables' intersections or
  // links change; searches over other tables build their own copy each time.
  void Prepare(const NavaidTables& navaids);

  // From start toward the area within radius NM (by rhumb line) of lat/lon,
  // over the victor links for net 'V' and the jet links for any other net.
  // Returns the first node reached inside the area, or -start. Edges of the
  // net get their altitude texts rewritten in parsed form, as the search has
  // always left them.
  int RouteToArea(NavaidTables& navaids, int start, char net, float lat, float lon, int radius);
  // From start to target. Returns target, or -start. The via altitudes of
  // nodes this search does not reach keep the values an earlier search left.
  int RouteToTarget(NavaidTables& navaids, int start, int target, char net);

  // The path ending at `end`, from the end back to the node whose
  // predecessor is 0 (the start, unless the start is intersection 0).
  void PathTo(int end, std::vector<int32_t>& out) const;

  // Search fields of node i after the last search.
  int32_t Pred(int i) const { return pred_[At(i)]; }
  float Dist(int i) const { return dist_[At(i)]; }
  bool Settled(int i) const { return settled_[At(i)] != 0; }
  const FixedStr<8>& ViaAirway(int i) const { return viaAirway_[At(i)]; }
  int32_t ViaMinAlt(int i) const { return viaMinAlt_[At(i)]; }
  int32_t ViaMaxAlt(int i) const { return viaMaxAlt_[At(i)]; }
  // Nodes taken off the heap by the last search.
  int Pops() const { return pops_; }
  // True when the last search failed because its heap was full.
  bool HeapOverflowed() const { return overflow_; }

private:
  enum class Goal { Area, Target };

  // The links of one net in the form the search reads them: for the node at
  // position p, the edges offsets[p] to offsets[p + 1], in link order,
  // holding the neighbour's position and the length side by side. Links the
  // search would skip anyway (a neighbour outside the slots, a node whose
  // links run past the list) are left out. The airway and its parsed
  // altitudes come from a small table of the distinct ones. An edge whose
  // altitude texts the search has still to rewrite carries its neighbour
  // bit-inverted (negative) until it has.
  struct NetGraph {
    struct Edge {
      int32_t Target;
      float Length;
      uint32_t Via;  // index in Vias
    };
    struct ViaInfo {
      FixedStr<8> Airway;
      int32_t MinAlt;
      int32_t MaxAlt;
    };
    std::vector<uint32_t> Offsets;
    std::vector<Edge> Edges;
    std::vector<uint32_t> LinkOf;  // the edge's record in AirwayLinks
    std::vector<ViaInfo> Vias;
    // No edge has a negative length. Then no tentative length is below +0
    // (-0 only arises from -0 + -0, and the start's is +0), as a NaN or
    // infinite sum never beats the starting length.
    bool NonNegative = true;
  };
  // The prepared copy of one set of tables. Its nodes are placed along a
  // space-filling curve, so that the nodes a search has under way at one
  // time lie close together in memory; Node[p] is the intersection placed
  // at position p and Position[i] the position of intersection i. Both
  // cover all slots, the ones past the tables' intersections in place.
  struct Graph {
    const NavaidTables* Tables = nullptr;  // the prepared tables, null when none
    std::size_t Slots = 0;                 // their intersection count when prepared
    NetGraph Low, High;
    bool HaveLow = false, HaveHigh = false;
    std::vector<int32_t> Node, Position;
    std::vector<float> Lat, Lon;  // by position
  };
  static void BuildNet(const NavaidTables& navaids, char net, const Graph* order, NetGraph& out);
  static void BuildOrder(const NavaidTables& navaids, Graph& out);
  bool PreparedFor(const NavaidTables& navaids) const;
  const NetGraph& NetFor(const NavaidTables& navaids, char net, bool prepared);
  // Moves the search fields between the plain order of the intersections
  // and the prepared graph's order.
  void UsePreparedOrder(bool prepared);
  std::size_t At(int i) const {
    return inPreparedOrder_ ? static_cast<std::size_t>(graph_.Position[static_cast<std::size_t>(i)])
                            : static_cast<std::size_t>(i);
  }

  int Run(NavaidTables& navaids, int start, char net, Goal goal, int target, float lat, float lon, int radius,
          int popLimit, bool resetAltitudes);
  void Relax(NavaidTables& navaids, NetGraph& graph, int32_t pos, int32_t node);
  void RelaxFirstTime(NavaidTables& navaids, NetGraph& graph, NetGraph::Edge& edge, std::size_t e, int32_t node,
                      float d);
  void NoteReached(int32_t pos);
  void ResetNodes(bool resetAltitudes);
  bool Push(int32_t node);
  template <bool kBits>
  int32_t Pop();

  // The search fields, by position in the order of the graph searched last
  // (the prepared one when inPreparedOrder_, else the plain one). Pred
  // holds intersection indices.
  std::vector<int32_t> pred_;
  std::vector<float> dist_;
  std::vector<uint8_t> settled_;
  std::vector<FixedStr<8>> viaAirway_;
  std::vector<int32_t> viaMinAlt_;
  std::vector<int32_t> viaMaxAlt_;
  // The nodes the last search gave a path (those whose length is no longer
  // the starting one, and the start), and the nodes any search since the
  // last reset of the altitudes gave a via altitude; only they need
  // resetting before the next search.
  std::vector<int32_t> touched_;
  std::vector<int32_t> altTouched_;
  std::vector<uint8_t> altListed_;  // 1 for a node in altTouched_
  std::vector<int32_t> heap_;  // 1-based; heap_[0] unused
  Graph graph_;
  NetGraph scratch_;  // the per-search copy for unprepared tables
  bool inPreparedOrder_ = false;
  int heapSize_ = 0;
  int pops_ = 0;
  bool overflow_ = false;
};

}  // namespace orv
