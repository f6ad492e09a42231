#include "planning/RouteCreation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <unordered_map>

#include "core/Geodesy.h"

#include "planning/Aircraft.h"
#include "planning/FakeNav.h"
#include "planning/NavLookupDb.h"
#include "planning/WPTable.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

using test::Row;

// Builds an intersection table by hand. Positions near the equator keep the
// geometry readable: a degree is 60 NM.
struct GraphBuilder {
  NavaidTables t;
  GraphBuilder() { t.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot()); }

  struct Node {
    int index;
    std::string ident;
    float lat, lon;
    std::vector<AirwayLinkRec> low, high;
  };
  std::vector<Node> nodes;

  std::unordered_map<int, std::size_t> where;  // index -> entry of nodes

  Node& Add(int index, std::string ident, float lat, float lon) {
    where[index] = nodes.size();
    nodes.push_back({index, std::move(ident), lat, lon, {}, {}});
    return nodes.back();
  }
  Node& At(int index) {
    auto it = where.find(index);
    if (it == where.end()) throw std::runtime_error("no node");
    return nodes[it->second];
  }
  static AirwayLinkRec Link(int target, std::string_view airway, float nm, std::string_view mea1 = "",
                            std::string_view mea2 = "") {
    AirwayLinkRec l;
    l.Target = target;
    l.AirwayName.Assign(airway);
    l.Distance = nm;
    l.Mea1.Assign(mea1);
    l.Mea2.Assign(mea2);
    return l;
  }
  // A two-way jet (or victor) airway leg.
  void Jet(int a, int b, std::string_view airway, float nm, std::string_view mea1 = "") {
    At(a).high.push_back(Link(b, airway, nm, mea1, "FL450"));
    At(b).high.push_back(Link(a, airway, nm, mea1, "FL450"));
  }
  void Victor(int a, int b, std::string_view airway, float nm, std::string_view mea1 = "") {
    At(a).low.push_back(Link(b, airway, nm, mea1, "17999"));
    At(b).low.push_back(Link(a, airway, nm, mea1, "17999"));
  }
  NavaidTables& Build() {
    for (const Node& n : nodes) {
      IntersectionRec rec;
      rec.Index = n.index;
      rec.Ident.Assign(n.ident);
      rec.Name.Assign(n.ident + " INT");
      rec.Lat = n.lat;
      rec.Lon = n.lon;
      EXPECT_TRUE(PlaceIntersection(t, rec, n.low, n.high));
    }
    return t;
  }
};

class RouteTest : public ::testing::Test {
protected:
  RouteTest() {
    ac.CruiseSpeed = 240, ac.ApproachSpeed = 120, ac.CruiseLevel = 300;
    ac.ClimbSpeed = 120, ac.ClimbRate = 1000, ac.DescentSpeed = 150, ac.DescentRate = 1000;
    nav.Airports.resize(2);
  }

  // Departure at 0/0, destination on the equator at destLon.
  void DirectPlan(float destLon, float destLat = 0) {
    plan.Waypoints[0] = Row("", "DEPT", 0, 0, kOriginAirport);
    plan.Waypoints[1] = Row("", "DEST", destLat, destLon, kOriginAirport);
    plan.DepartureAirport = 0;
    plan.DestinationAirport = 1;
    editor.SetDirectPlan(1);
  }

  RouteBuilder Builder(NavaidTables& t) { return RouteBuilder(editor, ac, t, search, ui); }

  std::vector<std::string> Codes() const {
    std::vector<std::string> out;
    for (int r = 0; r <= plan.LastRow; ++r) out.push_back(plan.Waypoints[r].Code.Str());
    return out;
  }

  FlightPlan plan;
  PlanPanel panel;
  AircraftRec ac;
  test::FakeNav nav;
  PlanEditor editor{plan, panel, ac, nav};
  RouteSearch search;
  test::ScriptedUi ui;
};

// Two ways from AAA to EEE: over BBB and DDD (180 NM) or over CCC (100 NM).
GraphBuilder DiamondGraph() {
  GraphBuilder g;
  g.Add(1, "AAA", 0, 1);
  g.Add(2, "BBB", 0, 2);
  g.Add(3, "CCC", 1, 2);
  g.Add(4, "DDD", 0, 3);
  g.Add(5, "EEE", 0, 4);
  g.Jet(1, 2, "J1", 60);
  g.Jet(2, 4, "J1", 60);
  g.Jet(4, 5, "J1", 60);
  g.Jet(1, 3, "J2", 50, "FL240");
  g.Jet(3, 5, "J2", 50, "FL240");
  return g;
}

TEST_F(RouteTest, HighAltitudePlanTakesTheShortestAirwayPath) {
  GraphBuilder g = DiamondGraph();
  NavaidTables& t = g.Build();
  DirectPlan(4.5f);
  RouteBuilder b = Builder(t);

  // AAA is the first intersection ahead (60 NM out, found at radius 70); EEE
  // lies 30 NM from the destination, inside the first exit radius of 35.
  EXPECT_EQ(b.FindEntryIntersection(0, 'J'), 1);
  EXPECT_EQ(b.FindExitRadius(0, 'J'), 35);

  ASSERT_TRUE(b.CreateAirwayPlan('J', 0));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "AAA", "CCC", "EEE", "DEST"}));
  const WaypointRec& ccc = plan.Waypoints[2];
  EXPECT_EQ(ccc.Kind.Trimmed(), "Int");
  EXPECT_EQ(ccc.Airway.Trimmed(), "J2");
  EXPECT_EQ(ccc.MinAltitude, 24000);
  EXPECT_EQ(ccc.MaxAltitude, 45000);
  EXPECT_EQ(ccc.DbIndex, 3);
  EXPECT_EQ(ccc.NetType.View(), "J");
  EXPECT_EQ(ccc.Origin, kOriginEnroute);
  EXPECT_EQ(plan.Waypoints[1].Airway.Trimmed(), "");  // the entry is not reached on an airway
  EXPECT_EQ(plan.RouteType, 2);
  EXPECT_EQ(plan.NetKind, 1);
  EXPECT_FLOAT_EQ(search.Dist(5), 100);
  EXPECT_EQ(search.Pred(5), 3);
  // The search leaves the parsed altitudes in the links it relaxed.
  EXPECT_EQ(t.HighAirways(1)[1].Mea1.View(), "24000");
  EXPECT_EQ(t.HighAirways(1)[1].Mea2.View(), "45000");
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_FALSE(ui.waitCursor);
  EXPECT_EQ(panel.Table.Text(3, WPTable::kCode), "CCC");
}

TEST_F(RouteTest, LowAltitudePlanUsesTheVictorLinksOnly) {
  GraphBuilder g = DiamondGraph();  // jet links only, plus a victor line AAA-BBB-DDD-EEE
  g.Victor(1, 2, "V1", 60);
  g.Victor(2, 4, "V1", 60);
  g.Victor(4, 5, "V1", 60);
  NavaidTables& t = g.Build();
  DirectPlan(4.5f);
  ASSERT_TRUE(Builder(t).CreateAirwayPlan('V', 0));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "AAA", "BBB", "DDD", "EEE", "DEST"}));
  EXPECT_EQ(plan.Waypoints[4].Airway.Trimmed(), "V1");
  EXPECT_EQ(plan.Waypoints[4].MaxAltitude, 17999);
  EXPECT_EQ(plan.NetKind, 2);
}

TEST_F(RouteTest, TiesKeepThePredecessorSettledFirst) {
  // Both ways are 100 NM; the way over the node whose link is listed first is kept,
  // as a later equal path is not strictly shorter.
  for (int firstVia : {2, 3}) {
    GraphBuilder g;
    g.Add(1, "AAA", 0, 1);
    g.Add(2, "BBB", 0, 2);
    g.Add(3, "CCC", 1, 2);
    g.Add(5, "EEE", 0, 4);
    int other = firstVia == 2 ? 3 : 2;
    g.Jet(1, firstVia, "J9", 50);
    g.Jet(1, other, "J8", 50);
    g.Jet(firstVia, 5, "J9", 50);
    g.Jet(other, 5, "J8", 50);
    NavaidTables& t = g.Build();
    EXPECT_EQ(search.RouteToTarget(t, 1, 5, 'J'), 5);
    EXPECT_EQ(search.Pred(5), firstVia);
  }
}

TEST_F(RouteTest, HeapPopsTheLastEntryAheadOfEqualSiblings) {
  // S reaches A, B, C and D at 10 NM each, pushed in that order. Popping A moves
  // D to the top, and D is not above its equal children, so D comes next and
  // is the one that reaches T first. The same holds when a negative length
  // elsewhere in the net has the search compare its keys another way.
  for (bool negative : {false, true}) {
    SCOPED_TRACE(negative);
    GraphBuilder g;
    g.Add(1, "S", 0, 0);
    g.Add(2, "A", 0, 1);
    g.Add(3, "B", 0, 2);
    g.Add(4, "C", 0, 3);
    g.Add(5, "D", 0, 4);
    g.Add(6, "T", 0, 5);
    g.Add(7, "X", 5, 5);
    g.Add(8, "Y", 5, 6);
    for (int n = 2; n <= 5; ++n) g.At(1).high.push_back(GraphBuilder::Link(n, "J1", 10));
    for (int n = 3; n <= 5; ++n) g.At(n).high.push_back(GraphBuilder::Link(6, "J2", 5));
    g.Jet(7, 8, "J3", negative ? -1.0f : 1.0f);
    NavaidTables& t = g.Build();
    RouteSearch prepared;
    prepared.Prepare(t);
    for (RouteSearch* s : {&search, &prepared}) {
      EXPECT_EQ(s->RouteToTarget(t, 1, 6, 'J'), 6);
      EXPECT_EQ(s->Pred(6), 5);
      EXPECT_EQ(s->Pops(), 5);  // A, D, then C ahead of B; T is the fifth
    }

    // S reaches A at 5 NM, B and C at 10, D at 20. Popping A moves D to the
    // top, above two equal children: it changes place with the right one,
    // so C comes before B and reaches T first.
    GraphBuilder h;
    h.Add(1, "S", 0, 0);
    h.Add(2, "A", 0, 1);
    h.Add(3, "B", 0, 2);
    h.Add(4, "C", 0, 3);
    h.Add(5, "D", 0, 4);
    h.Add(6, "T", 0, 5);
    h.Add(7, "X", 5, 5);
    h.Add(8, "Y", 5, 6);
    for (int n = 2; n <= 5; ++n) h.At(1).high.push_back(GraphBuilder::Link(n, "J1", n == 2 ? 5 : n == 5 ? 20 : 10));
    for (int n = 3; n <= 4; ++n) h.At(n).high.push_back(GraphBuilder::Link(6, "J2", 5));
    h.Jet(7, 8, "J3", negative ? -1.0f : 1.0f);
    NavaidTables& u = h.Build();
    prepared.Prepare(u);
    for (RouteSearch* s : {&search, &prepared}) {
      EXPECT_EQ(s->RouteToTarget(u, 1, 6, 'J'), 6);
      EXPECT_EQ(s->Pred(6), 4);
      EXPECT_EQ(s->Pops(), 4);  // A, C, B, T
    }
  }
}

TEST_F(RouteTest, ANegativeLengthNeverReopensASettledNode) {
  // A is settled at 10 NM before B (20 NM) offers it a path of 5 NM, which
  // is not taken: A keeps S as its predecessor, and T beyond A is reached
  // over A at 11 NM.
  GraphBuilder g;
  g.Add(1, "S", 0, 0);
  g.Add(2, "A", 0, 1);
  g.Add(3, "B", 0, 2);
  g.Add(4, "T", 0, 3);
  g.At(1).high.push_back(GraphBuilder::Link(2, "J1", 10));
  g.At(1).high.push_back(GraphBuilder::Link(3, "J1", 20));
  g.At(3).high.push_back(GraphBuilder::Link(2, "J2", -15));
  g.At(2).high.push_back(GraphBuilder::Link(4, "J3", 1));
  NavaidTables& t = g.Build();
  RouteSearch prepared;
  prepared.Prepare(t);
  for (RouteSearch* s : {&search, &prepared}) {
    EXPECT_EQ(s->RouteToArea(t, 1, 'J', 5, 5, 10), -1);  // an area nothing reaches: every node is popped
    EXPECT_EQ(s->Pred(2), 1);
    EXPECT_FLOAT_EQ(s->Dist(2), 10);
    EXPECT_EQ(s->Pred(4), 2);
    EXPECT_FLOAT_EQ(s->Dist(4), 11);
    EXPECT_EQ(s->Pops(), 3);
  }
}

TEST_F(RouteTest, SearchFailuresReturnMinusTheStart) {
  GraphBuilder g = DiamondGraph();
  g.Add(7, "ISL", 10, 10);
  g.Add(8, "ISM", 10, 11);
  g.Jet(7, 8, "J7", 60);
  NavaidTables& t = g.Build();
  EXPECT_EQ(search.RouteToTarget(t, 1, 7, 'J'), -1);
  EXPECT_EQ(search.RouteToArea(t, 7, 'J', 0, 4, 35), -7);
  EXPECT_EQ(search.RouteToArea(t, 1, 'V', 0, 4, 35), -1);  // no victor links at all
  EXPECT_EQ(search.RouteToArea(t, 40001, 'J', 0, 4, 35), -40001);
  // The area is measured by rhumb line from the popped node: EEE is 30 NM out.
  EXPECT_EQ(search.RouteToArea(t, 1, 'J', 0, 4.5f, 30), 5);
  EXPECT_EQ(search.RouteToArea(t, 1, 'J', 0, 4.5f, 29), -1);
}

TEST_F(RouteTest, PreparedSearchGivesTheSameResultsAndRewritesTextsOnce) {
  // A ring of six with a chord, odd altitude texts and a link pointing
  // outside the slots; the prepared copy must answer as the plain search.
  auto build = [](GraphBuilder& g) {
    for (int n = 1; n <= 6; ++n) g.Add(n, "N" + std::to_string(n), 0, static_cast<float>(n));
    for (int n = 1; n <= 6; ++n) g.Jet(n, n % 6 + 1, "J" + std::to_string(n), 40.0f + n, n % 2 ? "FL2" : "-500");
    g.Jet(2, 5, "J77", 60, "1E+05");
    g.At(3).high.push_back(GraphBuilder::Link(40001, "JX", 1));
    return &g.Build();
  };
  GraphBuilder plainGraph, preparedGraph;
  NavaidTables& plain = *build(plainGraph);
  NavaidTables& prepared = *build(preparedGraph);
  RouteSearch other;
  other.Prepare(prepared);
  for (int round = 0; round < 3; ++round) {
    for (int start = 1; start <= 6; ++start) {
      for (int target = 1; target <= 6; ++target) {
        SCOPED_TRACE(testing::Message() << round << ": " << start << " to " << target);
        ASSERT_EQ(other.RouteToTarget(prepared, start, target, 'J'), search.RouteToTarget(plain, start, target, 'J'));
        EXPECT_EQ(other.Pops(), search.Pops());
        for (int n = 0; n <= 7; ++n) {
          EXPECT_EQ(other.Pred(n), search.Pred(n));
          EXPECT_EQ(other.Dist(n), search.Dist(n));
          EXPECT_EQ(other.Settled(n), search.Settled(n));
          EXPECT_EQ(other.ViaAirway(n), search.ViaAirway(n));
          EXPECT_EQ(other.ViaMinAlt(n), search.ViaMinAlt(n));
          EXPECT_EQ(other.ViaMaxAlt(n), search.ViaMaxAlt(n));
        }
        EXPECT_EQ(prepared.AirwayLinks, plain.AirwayLinks);
      }
      ASSERT_EQ(other.RouteToArea(prepared, start, 'J', 0, 6.2f, 20), search.RouteToArea(plain, start, 'J', 0, 6.2f, 20));
      for (int n = 0; n <= 7; ++n) EXPECT_EQ(other.ViaMinAlt(n), search.ViaMinAlt(n));
    }
  }
  // The first use wrote the texts back; the 6-digit value lost its last digit.
  EXPECT_EQ(prepared.HighAirways(1)[0].Mea1.View(), "200  ");
  EXPECT_EQ(prepared.HighAirways(2)[1].Mea1.View(), "-500 ");
  EXPECT_EQ(prepared.HighAirways(2)[2].Mea1.View(), "10000");
  EXPECT_EQ(other.RouteToTarget(prepared, 2, 5, 'J'), 5);
  EXPECT_EQ(other.ViaMinAlt(5), 10000);
}

// A small generator of its own, so that the random graphs are the same with
// every standard library.
struct Lcg {
  uint64_t state;
  uint32_t Next() {
    state = state * 6364136223846793005ull + 1442695040888963407ull;
    return static_cast<uint32_t>(state >> 33);  // 31 bits
  }
  int Below(std::size_t n) { return static_cast<int>(Next() % static_cast<uint32_t>(n)); }
  float Between(float low, float high) { return low + (high - low) * static_cast<float>(Next() / 2147483648.0); }
};

// count intersections in random slots (slot 0 among them) strewn over a
// square of +-span degrees, linked on both nets to others of the list by
// whole-NM lengths, so that equal path lengths are common. Some links go one
// way only, one leaves the slots, and the altitude texts vary in the ways the
// search has to rewrite.
GraphBuilder RandomAirways(uint32_t seed, int count, float lat, float lon, float span, int slotRange = 40000) {
  Lcg rng{seed};
  GraphBuilder g;
  std::vector<int> slots{0};
  while (static_cast<int>(slots.size()) < count) {
    int slot = 1 + rng.Below(static_cast<std::size_t>(slotRange));
    if (std::find(slots.begin(), slots.end(), slot) == slots.end()) slots.push_back(slot);
  }
  for (int k = 0; k < count; ++k) {
    float nodeLon = lon + rng.Between(-span, span);
    if (nodeLon >= 180) nodeLon -= 360;
    if (nodeLon < -180) nodeLon += 360;
    g.Add(slots[static_cast<std::size_t>(k)], "N" + std::to_string(k), lat + rng.Between(-span, span), nodeLon);
  }
  static const char* const kMea[] = {"FL50", "05000", "-500", "1E+05", "", "3000", "FL180"};
  auto other = [&](int k) { return slots[static_cast<std::size_t>((k + 1 + rng.Below(12)) % count)]; };
  for (int k = 0; k < count; ++k) {
    const int a = slots[static_cast<std::size_t>(k)];
    for (int n = rng.Below(3); n >= 0; --n)
      g.Victor(a, other(k), "V" + std::to_string(rng.Below(9)), static_cast<float>(1 + rng.Below(20)),
               kMea[rng.Below(7)]);
    for (int n = rng.Below(3); n >= 0; --n)
      g.Jet(a, other(k), "J" + std::to_string(rng.Below(9)), static_cast<float>(1 + rng.Below(20)),
            kMea[rng.Below(7)]);
    if (rng.Below(5) == 0)
      g.At(a).high.push_back(GraphBuilder::Link(other(k), "J99", static_cast<float>(1 + rng.Below(20)), "FL2"));
  }
  g.At(slots[1]).low.push_back(GraphBuilder::Link(40001, "VX", 1));
  return g;
}

TEST_F(RouteTest, PreparedSearchAgreesWithThePlainOneOnRandomGraphs) {
  // The prepared tables keep their nodes in another order. One object that
  // searches them, and now and then other tables unprepared, and is prepared
  // again midway, must answer exactly as one that only ever searches plain
  // copies of the same tables: results, pops, every node's fields (the via
  // altitudes a target search leaves alone included) and the rewritten texts.
  // The large graph has searches reach enough nodes to be reset by whole
  // fills.
  struct Case {
    uint32_t seed;
    int count;
    int calls;
  };
  for (Case c : {Case{1, 300, 60}, Case{2, 300, 60}, Case{3, 300, 60}, Case{4, 7000, 12}}) {
    const uint32_t seed = c.seed;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    GraphBuilder main1 = RandomAirways(seed, c.count, 40, 10, 8), main2 = main1;
    GraphBuilder other1 = RandomAirways(seed + 100, 60, -20, 178, 4), other2 = other1;
    NavaidTables* tables1[2] = {&main1.Build(), &other1.Build()};
    NavaidTables* tables2[2] = {&main2.Build(), &other2.Build()};
    const std::vector<GraphBuilder::Node>* nodes[2] = {&main1.nodes, &other1.nodes};
    RouteSearch prepared, plain;
    prepared.Prepare(*tables1[0]);
    Lcg rng{seed * 7919};
    std::vector<int32_t> path1, path2;
    int found = 0, maxPops = 0;
    for (int call = 0; call < c.calls; ++call) {
      SCOPED_TRACE(testing::Message() << "call " << call);
      if (call == c.calls / 2) prepared.Prepare(*tables1[0]);
      const int which = rng.Below(4) == 0 ? 1 : 0;
      const auto& ns = *nodes[which];
      const char net = rng.Below(2) ? 'V' : 'J';
      const int start = ns[static_cast<std::size_t>(rng.Below(ns.size()))].index;
      int r1, r2;
      if (rng.Below(2)) {
        const int target = ns[static_cast<std::size_t>(rng.Below(ns.size()))].index;
        r1 = prepared.RouteToTarget(*tables1[which], start, target, net);
        r2 = plain.RouteToTarget(*tables2[which], start, target, net);
      } else {
        const auto& near = ns[static_cast<std::size_t>(rng.Below(ns.size()))];
        const float lat = near.lat + rng.Between(-0.5f, 0.5f), lon = near.lon + rng.Between(-0.5f, 0.5f);
        const int radius = 5 + rng.Below(40);
        r1 = prepared.RouteToArea(*tables1[which], start, net, lat, lon, radius);
        r2 = plain.RouteToArea(*tables2[which], start, net, lat, lon, radius);
        // An area search starts from scratch: a new object gives the same
        // (apart from the altitudes of edges used for the first time, whose
        // texts are now rewritten), and nodes not reached have none.
        RouteSearch fresh;
        ASSERT_EQ(fresh.RouteToArea(*tables2[which], start, net, lat, lon, radius), r1);
        for (const auto* list : nodes) {
          for (const auto& n : *list) {
            ASSERT_EQ(prepared.Pred(n.index), fresh.Pred(n.index)) << n.index;
            ASSERT_EQ(prepared.Dist(n.index), fresh.Dist(n.index)) << n.index;
            ASSERT_EQ(prepared.Settled(n.index), fresh.Settled(n.index)) << n.index;
            ASSERT_EQ(prepared.ViaAirway(n.index), fresh.ViaAirway(n.index)) << n.index;
            if (fresh.Dist(n.index) == RouteSearch::kUnreached) {
              ASSERT_EQ(prepared.ViaMinAlt(n.index), 0) << n.index;
              ASSERT_EQ(prepared.ViaMaxAlt(n.index), 0) << n.index;
            }
          }
        }
      }
      ASSERT_EQ(r1, r2);
      found += r1 >= 0;
      if (plain.Pops() > maxPops) maxPops = plain.Pops();
      EXPECT_EQ(prepared.Pops(), plain.Pops());
      for (const auto* list : nodes) {
        for (const auto& n : *list) {
          ASSERT_EQ(prepared.Pred(n.index), plain.Pred(n.index)) << n.index;
          ASSERT_EQ(prepared.Dist(n.index), plain.Dist(n.index)) << n.index;
          ASSERT_EQ(prepared.Settled(n.index), plain.Settled(n.index)) << n.index;
          ASSERT_EQ(prepared.ViaAirway(n.index), plain.ViaAirway(n.index)) << n.index;
          ASSERT_EQ(prepared.ViaMinAlt(n.index), plain.ViaMinAlt(n.index)) << n.index;
          ASSERT_EQ(prepared.ViaMaxAlt(n.index), plain.ViaMaxAlt(n.index)) << n.index;
        }
      }
      if (r1 >= 0) {
        prepared.PathTo(r1, path1);
        plain.PathTo(r2, path2);
        EXPECT_EQ(path1, path2);
      }
      EXPECT_EQ(tables1[0]->AirwayLinks, tables2[0]->AirwayLinks);
      EXPECT_EQ(tables1[1]->AirwayLinks, tables2[1]->AirwayLinks);
    }
    EXPECT_GT(found, c.calls / 4);  // the searches do reach their goals
    if (c.count > 1000) {
      EXPECT_GT(maxPops, c.count);  // a search reached most of it
    }
  }
}

// The entry and exit searches as the algorithm states them, measuring every
// intersection; the searches proper skip the ones they can tell are too far.
int PlainEntry(const NavaidTables& t, const WaypointRec& from, const WaypointRec& to, char net) {
  const double heading = GcCourse(from.Lat, from.Lon, to.Lat, to.Lon);
  const int last = std::min(t.MaxIntersectionIndex, static_cast<int32_t>(t.Intersections.size()) - 1);
  for (int r = 30; r < 500; r += 20) {
    std::vector<int> candidates;
    for (int i = 1; i <= last && candidates.size() < 500; ++i) {
      const IntersectionRec& rec = t.Intersections[static_cast<std::size_t>(i)];
      const char type = IntersectionNetType(rec).chars[0];
      if (rec.Ident.IsEmptySlot() || (type != 'X' && type != net)) continue;
      if (!(GcDistance(from.Lat, from.Lon, rec.Lat, rec.Lon) < r)) continue;
      for (const AirwayLinkRec& link : net == 'V' ? t.LowAirways(i) : t.HighAirways(i)) {
        if (link.Target < 0 || link.Target >= static_cast<int32_t>(t.Intersections.size())) continue;
        const IntersectionRec& next = t.Intersections[static_cast<std::size_t>(link.Target)];
        if (AngleDiff(RhumbCourse(rec.Lat, rec.Lon, next.Lat, next.Lon), heading) <= 60) {
          candidates.push_back(i);
          break;
        }
      }
    }
    if (candidates.empty()) continue;
    double best = 360;
    int winner = candidates.front();
    for (int c : candidates) {
      const IntersectionRec& rec = t.Intersections[static_cast<std::size_t>(c)];
      const double angle = AngleDiff(GcCourse(from.Lat, from.Lon, rec.Lat, rec.Lon), heading);
      if (angle < best) {
        best = angle;
        winner = c;
      }
    }
    return winner;
  }
  return -1;
}

int PlainExitRadius(const NavaidTables& t, const WaypointRec& dest, char net) {
  const int last = std::min(t.MaxIntersectionIndex, static_cast<int32_t>(t.Intersections.size()) - 1);
  for (int r = 35; r < 500; r += 25) {
    for (int i = 1; i <= last; ++i) {
      const IntersectionRec& rec = t.Intersections[static_cast<std::size_t>(i)];
      const char type = IntersectionNetType(rec).chars[0];
      if (rec.Ident.IsEmptySlot() || (type != 'X' && type != net)) continue;
      const double d = GcDistance(dest.Lat, dest.Lon, rec.Lat, rec.Lon);
      if (d < r && d > 5) return r;
    }
  }
  return -1;
}

TEST_F(RouteTest, EntryAndExitAgreeWithAPlainScanEverywhere) {
  // Intersections strewn around the equator, high latitudes, both sides of
  // the date line and a pole, sparse enough that the radii have to grow;
  // legs start and end at random points around them.
  struct Area {
    float lat, lon, span;
  };
  const Area areas[] = {{0, 0, 6}, {62, 20, 8}, {82, -60, 5}, {-10, 179.5f, 5}, {45, -179.8f, 7}, {-85, 30, 4}};
  uint32_t seed = 11;
  int entries = 0, wide = 0;
  for (const Area& area : areas) {
    SCOPED_TRACE(testing::Message() << "area " << area.lat << "/" << area.lon);
    GraphBuilder g = RandomAirways(seed++, 120, area.lat, area.lon, area.span, 1000);
    NavaidTables& t = g.Build();
    RouteBuilder b = Builder(t);
    Lcg rng{seed * 31};
    for (int leg = 0; leg < 25; ++leg) {
      auto point = [&](std::string_view code) {
        float lon = area.lon + rng.Between(-2 * area.span, 2 * area.span);
        if (lon >= 180) lon -= 360;
        if (lon < -180) lon += 360;
        return Row("", code, std::clamp(area.lat + rng.Between(-2 * area.span, 2 * area.span), -89.9f, 89.9f), lon,
                   kOriginAirport);
      };
      plan.Waypoints[0] = point("DEPT");
      plan.Waypoints[1] = point("DEST");
      plan.LastRow = 1;
      plan.CurrentRow = -1;
      for (char net : {'V', 'J'}) {
        SCOPED_TRACE(testing::Message() << "leg " << leg << " " << net);
        const int entry = b.FindEntryIntersection(0, net);
        EXPECT_EQ(entry, PlainEntry(t, plan.Waypoints[0], plan.Waypoints[1], net));
        const int radius = b.FindExitRadius(0, net);
        EXPECT_EQ(radius, PlainExitRadius(t, plan.Waypoints[1], net));
        entries += entry >= 0;
        wide += radius > 100;
      }
    }
  }
  // Most legs find both, many only after widening.
  EXPECT_GT(entries, 200);
  EXPECT_GT(wide, 50);

  // A lone pair of intersections far out at high latitudes, where a degree
  // of longitude is short and shortest toward the pole: the skipping must
  // not lose them at the radius that first holds them.
  for (float lat : {60.0f, 76.0f, 84.0f, -71.0f}) {
    for (float distance : {95.0f, 228.0f, 352.0f, 477.0f}) {
      for (float course : {35.0f, 80.0f, 280.0f, 325.0f}) {
        SCOPED_TRACE(testing::Message() << lat << " " << distance << " " << course);
        // Positions as the database holds them: on the globe.
        auto onGlobe = [](LatLon p) {
          return LatLon{std::clamp(p.Lat, -89.9f, 89.9f), p.Lon >= 180 ? p.Lon - 360 : p.Lon < -180 ? p.Lon + 360 : p.Lon};
        };
        const LatLon a = onGlobe(OffsetLatLon(lat, 0, course, distance));
        const LatLon b = onGlobe(OffsetLatLon(a.Lat, a.Lon, course, 20));
        const LatLon far = onGlobe(OffsetLatLon(lat, 0, course, 900));
        GraphBuilder g;
        g.Add(1, "AAA", a.Lat, a.Lon);
        g.Add(2, "BBB", b.Lat, b.Lon);
        g.Jet(1, 2, "J1", 20);
        NavaidTables& t = g.Build();
        plan.Waypoints[0] = Row("", "DEPT", lat, 0, kOriginAirport);
        plan.Waypoints[1] = Row("", "DEST", far.Lat, far.Lon, kOriginAirport);
        const int entry = Builder(t).FindEntryIntersection(0, 'J');
        EXPECT_EQ(entry, PlainEntry(t, plan.Waypoints[0], plan.Waypoints[1], 'J'));
        plan.Waypoints[1] = plan.Waypoints[0];
        const int radius = Builder(t).FindExitRadius(0, 'J');
        EXPECT_EQ(radius, PlainExitRadius(t, plan.Waypoints[1], 'J'));
      }
    }
  }
}

TEST_F(RouteTest, DisconnectedEntryLeavesThePlanWithTheMessage) {
  // The only intersection ahead of the departure belongs to an island.
  GraphBuilder g;
  g.Add(1, "ISL", 0, 1);
  g.Add(2, "ISM", 0, 2);
  g.Add(5, "EEE", 0, 4);
  g.Add(6, "FFF", 0, 5);
  g.Jet(1, 2, "J7", 60);
  g.Jet(5, 6, "J1", 60);
  NavaidTables& t = g.Build();
  DirectPlan(4.5f);
  EXPECT_FALSE(Builder(t).CreateAirwayPlan('J', 0));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "DEST"}));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"No airway routing possible from ISL!!\r\n"
                                                     "Choose different airway intersection manually!"}));
  EXPECT_FALSE(ui.waitCursor);
}

TEST_F(RouteTest, AirwayBelowTheAircraftsLevelIsReportedAfterTheRouteIsBuilt) {
  GraphBuilder g = DiamondGraph();
  NavaidTables& t = g.Build();
  ac.CruiseLevel = 200;  // J2 needs FL240
  DirectPlan(4.5f);
  RouteBuilder b = Builder(t);
  ASSERT_TRUE(b.CreateAirwayPlan('J', 0));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "AAA", "CCC", "EEE", "DEST"}));
  EXPECT_TRUE(b.LevelViolation());
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"\r\nILLEGAL FLIGHT PLAN FOR CURRENT AIRCRAFT!    \r\n\r\n"
                                                     "24000 minimal altitude required on airway J2!    "}));
  // At the airway's own level there is nothing to say.
  ui.events.clear();
  ac.CruiseLevel = 240;
  DirectPlan(4.5f);
  ASSERT_TRUE(b.CreateAirwayPlan('J', 0));
  EXPECT_TRUE(ui.Messages().empty());
}

TEST_F(RouteTest, EntryIntersectionAlreadyInThePlanReplacesItsRow) {
  GraphBuilder g = DiamondGraph();
  NavaidTables& t = g.Build();
  DirectPlan(4.5f);
  WaypointRec aaa = IntersectionRow(t, 1);
  aaa.Origin = kOriginEnroute;
  editor.InsertWaypoint(0, aaa, true);
  plan.CurrentRow = 1;
  ASSERT_TRUE(Builder(t).CreateAirwayPlan('J', 1));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "AAA", "CCC", "EEE", "DEST"}));

  // The same identifier on a SID row stays, and the route starts behind it.
  DirectPlan(4.5f);
  aaa.Kind.Assign("Fix");
  aaa.Origin = kOriginSid;
  plan.CurrentRow = -1;
  editor.InsertWaypoint(0, aaa, true);
  ASSERT_TRUE(Builder(t).CreateAirwayPlan('J', 1));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "AAA", "CCC", "EEE", "DEST"}));
  EXPECT_EQ(plan.Waypoints[1].Origin, kOriginSid);
}

TEST_F(RouteTest, EntryZeroWithoutLinksInsertsThatOneNode) {
  // Failing from intersection 0 gives -0, which reads as success: the chain
  // holds the start alone and that one row goes in (in place of itself).
  GraphBuilder g = DiamondGraph();
  g.Add(0, "ZER", 0, 1.5f);
  NavaidTables& t = g.Build();
  DirectPlan(4.5f);
  WaypointRec zero = IntersectionRow(t, 0);
  zero.NetType.Assign("J");
  zero.Origin = kOriginEnroute;
  editor.InsertWaypoint(0, zero, true);
  plan.CurrentRow = 1;
  ASSERT_TRUE(Builder(t).CreateAirwayPlan('J', 1));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "ZER", "DEST"}));
  EXPECT_TRUE(ui.Messages().empty());
}

TEST_F(RouteTest, EntryAndExitSearchLimits) {
  GraphBuilder g;
  g.Add(1, "FAR", 20, 0);  // 1200 NM north of everything
  g.Add(2, "FAS", 21, 0);
  g.Jet(1, 2, "J1", 60);
  NavaidTables& t = g.Build();
  DirectPlan(4.5f);
  RouteBuilder b = Builder(t);
  EXPECT_EQ(b.FindEntryIntersection(0, 'J'), -1);
  EXPECT_EQ(b.FindExitRadius(0, 'J'), -1);
  EXPECT_FALSE(b.CreateAirwayPlan('J', 0));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"No fix found within 300nm of insertion waypoint!",
                                                     "No fix found within 500nm of destination waypoint!",
                                                     "No fix found within 300nm of insertion waypoint!"}));

  // The last exit radius tried is 485. (A fix closer than 5 NM cannot be
  // told apart: the great-circle distance never gives less than 15.4 NM.)
  GraphBuilder h;
  h.Add(1, "EDGE", 8, 4.5f);  // 480 NM north of the destination
  h.Add(2, "EDGF", 9, 4.5f);
  h.Jet(1, 2, "J1", 60);
  NavaidTables& u = h.Build();
  RouteBuilder c = Builder(u);
  EXPECT_EQ(c.FindExitRadius(0, 'J'), 485);
  // Only the victor net is asked for: neither is on it.
  ui.events.clear();
  EXPECT_EQ(c.FindExitRadius(0, 'V'), -1);
  EXPECT_EQ(ui.Messages().size(), 1u);
}

TEST_F(RouteTest, EntryIsTheCandidateMostNearlyAhead) {
  // Both lie within the first radius and have an airway eastward; NNN is 20 NM
  // north of the track, EEA only 10 NM south of it and so more nearly ahead.
  // WWW behind the departure has no airway leaving toward the east.
  GraphBuilder g;
  g.Add(1, "NNN", 20.0f / 60, 20.0f / 60);
  g.Add(2, "EEA", -10.0f / 60, 25.0f / 60);
  g.Add(3, "WWW", 0, -20.0f / 60);
  g.Add(4, "ZZZ", 0, 2);
  g.Jet(1, 4, "J1", 100);
  g.Jet(2, 4, "J2", 100);
  g.Jet(3, 1, "J3", 40);  // from WWW the link to NNN heads north-east
  NavaidTables& t = g.Build();
  DirectPlan(3);
  EXPECT_EQ(Builder(t).FindEntryIntersection(0, 'J'), 2);

  // A VOR selected in the plan with an intersection of its name on it.
  WaypointRec vor = Row("VOR", "NNN", 20.0f / 60, 20.0f / 60);
  editor.InsertWaypoint(0, vor, true);
  plan.CurrentRow = 1;
  EXPECT_EQ(Builder(t).FindEntryIntersection(1, 'J'), 1);
}

TEST_F(RouteTest, AddAirwayWaypointsExpandsIntersectionPairs) {
  GraphBuilder g = DiamondGraph();
  NavaidTables& t = g.Build();
  t.JetAirways.push_back({FixedStr<8>("J2"), 3, 5, 0, FixedStr<5>("n/a"), FixedStr<5>("n/a")});
  DirectPlan(4.5f);
  WaypointRec aaa = IntersectionRow(t, 1), eee = IntersectionRow(t, 5);
  aaa.Origin = eee.Origin = kOriginEnroute;
  editor.InsertWaypoint(0, aaa, false);
  editor.InsertWaypoint(1, eee, true);
  RouteBuilder b = Builder(t);

  EXPECT_FALSE(b.AddAirwayWaypoints(true, true));
  EXPECT_FALSE(b.AddAirwayWaypoints(false, false));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>(2, "Please select ONLY the airway type which you \r\n"
                                                        " want to insert between existing waypoints!")));

  ASSERT_TRUE(b.AddAirwayWaypoints(true, false));
  // The end node merges into the EEE row, which takes its airway.
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "AAA", "CCC", "EEE", "DEST"}));
  EXPECT_EQ(plan.Waypoints[3].Airway.Trimmed(), "J2");
  EXPECT_EQ(plan.Waypoints[3].MinAltitude, 24000);
  EXPECT_EQ(plan.RouteType, 1);
  EXPECT_EQ(b.AirwayBetween(3, 5, 'J'), "J2");
  // AAA has a J2 link, and the J2 segment ends at EEE.
  EXPECT_EQ(b.AirwayBetween(1, 5, 'J'), "J2");
  EXPECT_EQ(b.AirwayBetween(2, 5, 'J'), "");
}

TEST(RouteText, ParseFlightLevel) {
  EXPECT_EQ(ParseFlightLevel("FL180"), 18000);
  EXPECT_EQ(ParseFlightLevel("FL095"), 9500);
  EXPECT_EQ(ParseFlightLevel("FL 45.5"), 4550);
  EXPECT_EQ(ParseFlightLevel("5000"), 5000);
  EXPECT_EQ(ParseFlightLevel(" 3500 "), 3500);
  EXPECT_EQ(ParseFlightLevel("12.5"), 12);  // half to even
  EXPECT_EQ(ParseFlightLevel("13.5"), 14);
  EXPECT_EQ(ParseFlightLevel("fl180"), 0);  // only an upper-case prefix is a level
  EXPECT_EQ(ParseFlightLevel("n/a"), 0);
  EXPECT_EQ(ParseFlightLevel("FL"), 0);
  EXPECT_EQ(ParseFlightLevel(""), 0);
}

TEST(RouteText, StripAirwayMarks) {
  EXPECT_EQ(StripAirwayMarks("<<J45>>"), "J45");
  EXPECT_EQ(StripAirwayMarks("<<J45"), "J45");
  EXPECT_EQ(StripAirwayMarks("J45>>"), "J45");
  EXPECT_EQ(StripAirwayMarks("J45"), "J45");
  EXPECT_EQ(StripAirwayMarks("<J45>"), "<J45>");
  EXPECT_EQ(StripAirwayMarks("<<<J45>>>"), "<J45>");
  EXPECT_EQ(StripAirwayMarks("<<>>"), "");
  EXPECT_EQ(StripAirwayMarks(">>"), "");
}

TEST(RouteText, NetTypeFollowsTheLinks) {
  IntersectionRec r;
  EXPECT_EQ(IntersectionNetType(r).View(), " ");
  r.LowCount = 1;
  EXPECT_EQ(IntersectionNetType(r).View(), "V");
  r.HighCount = 2;
  EXPECT_EQ(IntersectionNetType(r).View(), "X");
  r.LowCount = 0;
  EXPECT_EQ(IntersectionNetType(r).View(), "J");
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

VorRec Vor(std::string_view ident, float lat, float lon) {
  VorRec v;
  v.Ident.Assign(ident);
  v.Name.Assign(std::string(ident) + " VOR");
  v.Lat = lat;
  v.Lon = lon;
  v.Frequency = 113.5f;
  return v;
}

NdbRec Ndb(std::string_view ident, float lat, float lon) {
  NdbRec n;
  n.Ident.Assign(ident);
  n.Lat = lat;
  n.Lon = lon;
  return n;
}

TEST_F(RouteTest, NavaidPlanWalksTheSectorTowardTheDestination) {
  GraphBuilder g;
  g.Add(1, "FOX", 0.01f, 2.5f);
  NavaidTables& t = g.Build();
  t.Vors = {Vor("ALF", 0.1f, 0.3f), Vor("BRA", 0.11f, 1.0f), Vor("CHA", 0.333f, 1.017f), Vor("DEL", 0.1f, 1.8f)};
  // A two-letter NDB is never taken, even right on the track.
  t.Ndbs = {Ndb("EC", 0, 2.3f), Ndb("EC", 0.05f, 1.4f)};
  DirectPlan(3);
  NavaidPlanOptions o;
  ASSERT_TRUE(Builder(t).CreateNavaidPlan(0, o));
  // First leg: only ALF lies within 25 NM. From ALF, CHA is the farther of the
  // two in the sector, but BRA is better aligned and between 30 and 150 NM.
  // From DEL the intersection FOX is 30 NM short of the destination: done.
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "ALF", "BRA", "DEL", "FOX", "DEST"}));
  EXPECT_EQ(plan.Waypoints[1].Kind.Trimmed(), "VOR");
  EXPECT_FLOAT_EQ(plan.Waypoints[1].Frequency, 113.5f);
  EXPECT_EQ(plan.Waypoints[4].Kind.Trimmed(), "Int");
  EXPECT_EQ(plan.RouteType, 1);
  EXPECT_EQ(plan.NetKind, 3);
  EXPECT_TRUE(ui.Messages().empty());

  // Without the VOR button the first radius grows by 15 NM until it reaches
  // FOX, 150 NM out; from there the destination is within the sector length.
  DirectPlan(3);
  o.Vor = false;
  ASSERT_TRUE(Builder(t).CreateNavaidPlan(0, o));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "FOX", "DEST"}));

  // A navaid on the latitude (or longitude) of the current point is never a
  // candidate: both coordinates must differ.
  t.Intersections[1].Lat = 0;
  DirectPlan(3);
  EXPECT_FALSE(Builder(t).CreateNavaidPlan(0, o));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "DEST"}));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"Insufficient number of navaids to create flightplan!"}));
}

TEST_F(RouteTest, NavaidPlanRefusals) {
  GraphBuilder g;
  NavaidTables& t = g.Build();
  DirectPlan(40);  // 2400 NM of empty world
  NavaidPlanOptions o;
  o.Vor = o.Ndb = o.Intersection = false;
  EXPECT_FALSE(Builder(t).CreateNavaidPlan(0, o));
  o.Vor = true;
  EXPECT_FALSE(Builder(t).CreateNavaidPlan(0, o));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"You need to have at least one of these buttons selected:\r\n"
                                                     "          VOR, NDB, Intersection",
                                                     "Insufficient number of navaids to create flightplan!"}));
  EXPECT_EQ(Codes(), (std::vector<std::string>{"DEPT", "DEST"}));
}

TEST(NavLookupDb, FindsObjectsByIdentInKindOrderAndAirportsByIcao) {
  NavDatabase db;
  db.Navaids.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  IntersectionRec rec;
  rec.Index = 7;
  rec.Ident.Assign("TOP");
  rec.Lat = 50;
  rec.Lon = 8;
  AirwayLinkRec link;
  link.Target = 7;
  ASSERT_TRUE(PlaceIntersection(db.Navaids, rec, {}, std::span(&link, 1)));
  db.Navaids.Vors = {Vor("TOP", 1, 2), Vor("FFM", 50, 8.6f)};
  db.Navaids.Ndbs = {Ndb("TOP", 3, 4)};
  FixRec fix;
  fix.Ident.Assign("top");
  db.Navaids.Fixes = {fix};
  UserWaypointRec user;
  user.Ident.Assign("TOP");
  db.UserWaypoints = {user};
  AirportRec eddf;
  eddf.Icao.Assign("EDDF");
  eddf.Name.Assign("Frankfurt Main");
  eddf.Elevation = 364;
  RunwayRec rwy;
  rwy.LowEnd.Assign("07L");
  rwy.HighEnd.Assign("25R");
  rwy.LengthFeet = 13123;
  eddf.Runways = {rwy};
  ParkingRec park;
  park.NameCode = 1;
  park.Number = 12;
  eddf.Parking = {park};
  db.Airports.Airports.resize(3);
  db.Airports.Airports[2] = eddf;

  std::vector<std::string> names(38);
  names[1] = "Gate A";
  NavLookupDb nav(db, names);
  std::vector<WaypointRec> found;
  nav.FindByIdent("TOP", found);
  ASSERT_EQ(found.size(), 5u);
  EXPECT_EQ(found[0].Kind.Trimmed(), "VOR");
  EXPECT_EQ(found[1].Kind.Trimmed(), "NDB");
  EXPECT_EQ(found[2].Kind.Trimmed(), "Fix");  // identifiers compare in upper case
  EXPECT_EQ(found[3].Kind.Trimmed(), "Int");
  EXPECT_EQ(found[3].DbIndex, 7);
  EXPECT_EQ(found[3].NetType.View(), "J");
  EXPECT_EQ(found[4].Kind.Trimmed(), "Uwp");
  found.clear();
  nav.FindByIdent("NONE", found);
  EXPECT_TRUE(found.empty());

  EXPECT_EQ(nav.FindAirport("eddf "), 2);
  EXPECT_EQ(nav.FindAirport("EDDM"), -1);
  EXPECT_EQ(nav.AirportIcao(2), "EDDF");
  EXPECT_EQ(nav.AirportIcao(1), "");  // an empty slot
  EXPECT_EQ(nav.AirportElevation(2), 364);
  EXPECT_EQ(nav.AirportElevation(99), 0);
  EXPECT_EQ(nav.Runway(2, 0).LowEndText, "Rwy 07L");
  EXPECT_EQ(nav.Runway(2, 0).HighEndText, "Rwy 25R");
  EXPECT_EQ(nav.RunwayLength(2, 0), 13123);
  EXPECT_EQ(nav.RunwayLength(2, 5), 0);
  EXPECT_EQ(nav.Parking(2, 0).Name, "Gate A");
  EXPECT_EQ(nav.Parking(2, 0).Number, 12);
  EXPECT_EQ(AirportRow(db.Airports, 2).Code.Trimmed(), "EDDF");
}

}  // namespace
}  // namespace orv
