// Automatic routes between two plan rows: the Navaid Plan (a greedy walk
// through a sector that moves toward the destination), the Low and High
// Altitude Plans (a shortest path over the victor or jet airway graph of
// dijinter.orv) and Add Airway Waypoints (airway legs between intersections
// already in the plan). Rows go in through the plan model, so leg values,
// duplicate merging and totals stay the plan's business.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"
#include "database/NavaidFiles.h"
#include "planning/FlightPlan.h"

namespace orv {

class Ui;
struct AircraftRec;

// An altitude text of an airway: "FL" and a number is that many hundreds of
// feet, anything else the number itself (0 when there is none), rounded to a
// whole foot.
int32_t ParseFlightLevel(std::string_view text);
// An airway name without the direction marks: a leading "<<" and a trailing
// ">>" go.
std::string StripAirwayMarks(std::string_view name);

// The messages of the route builders.
inline constexpr std::string_view kLineBreak = "\r\n";
std::string NoAirwayRoutingMessage(std::string_view entryIdent);
std::string IllegalLevelMessage(int32_t altitude, std::string_view airway);
inline constexpr std::string_view kNoEntryFixMessage = "No fix found within 300nm of insertion waypoint!";
inline constexpr std::string_view kNoExitFixMessage = "No fix found within 500nm of destination waypoint!";
inline constexpr std::string_view kNoNavaidButtonMessage =
    "You need to have at least one of these buttons selected:\r\n          VOR, NDB, Intersection";
inline constexpr std::string_view kInsufficientNavaidsMessage = "Insufficient number of navaids to create flightplan!";
inline constexpr std::string_view kOneAirwayTypeMessage =
    "Please select ONLY the airway type which you \r\n want to insert between existing waypoints!";

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

// The buttons and settings the Navaid Plan reads.
struct NavaidPlanOptions {
  bool Vor = true;        // the VOR button
  bool Ndb = true;        // the NDB button
  bool Intersection = true;
  int SecLen = 50;        // SECLEN: the sector's length in NM
  int SecWidth = 30;      // SECWIDTH: its half-width in degrees
  bool GreatCircle = false;  // GC: the radius grows by 50 NM instead of 15
};

// The route commands over the plan, the navaid tables and the search state.
class RouteBuilder {
public:
  // aircraft: the selected aircraft, whose cruise level the airway minimum
  // altitudes are checked against.
  RouteBuilder(PlanEditor& editor, const AircraftRec& aircraft, NavaidTables& navaids, RouteSearch& search, Ui& ui)
      : editor_(editor), aircraft_(aircraft), navaids_(navaids), search_(search), ui_(ui) {}

  // Low ('V') or High ('J') Altitude Plan between row and row + 1. False when
  // no route was built; the rows are then as before, apart from a row that
  // was the entry intersection itself.
  bool CreateAirwayPlan(char net, int row);
  // Navaid Plan between row and row + 1. False when it stopped with a message.
  bool CreateNavaidPlan(int row, const NavaidPlanOptions& options);
  // Airway legs between every neighbouring pair of intersections in the plan,
  // on the jet or the victor net, whichever one is chosen.
  bool AddAirwayWaypoints(bool jet, bool victor);

  // The intersection to join the net at for the leg from row to row + 1, or
  // -1 with a message. The identity tests look at the plan's CurrentRow.
  int FindEntryIntersection(int row, char net);
  // The radius in NM around row + 1 that holds an intersection of the net
  // more than 5 NM away, or -1 with a message.
  int FindExitRadius(int row, char net);

  // The airway of the net's table (JetAirways for 'J', VictorAirways else)
  // that a link of intersection `from` names and that starts or ends at
  // `to`; empty when none.
  std::string AirwayBetween(int from, int to, char net) const;

  // The airway name AddAirwayWaypoints found in the table for the last pair
  // it expanded.
  const std::string& LastAirway() const { return lastAirway_; }

  // The minimum altitude violation noted by the last command, if any.
  bool LevelViolation() const { return violation_; }
  int32_t ViolationAltitude() const { return violationAltitude_; }
  const std::string& ViolationAirway() const { return violationAirway_; }

private:
  bool NetMatches(int index, char net) const;
  // Inserts node at `at` with the search's via fields; false when the plan is full.
  bool InsertNode(int at, int node);
  void NoteLevel(int node);

  // An intersection near the point the entry or exit search looks around,
  // with the tests made on it so far.
  struct NearNode {
    enum : int8_t { kUnknown, kYes, kNo };
    int32_t Index;
    float Lat, Lon;
    double Distance;  // great-circle NM, once Measured
    int8_t Measured;
    int8_t Qualifies;  // has an airway of the net ahead
  };

  PlanEditor& editor_;
  const AircraftRec& aircraft_;
  NavaidTables& navaids_;
  RouteSearch& search_;
  Ui& ui_;
  std::vector<int32_t> path_;
  std::vector<int32_t> candidates_;
  std::vector<NearNode> near_;
  std::string lastAirway_;
  bool violation_ = false;
  int32_t violationAltitude_ = 0;
  std::string violationAirway_;
};

}  // namespace orv
