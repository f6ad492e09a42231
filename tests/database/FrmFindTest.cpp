#include <gtest/gtest.h>

#include "database/FrmFind.h"

namespace orv {
namespace {

using Lines = std::vector<std::string>;

AirportRec Airport(std::string_view icao, std::string_view name, float lat, float lon) {
  AirportRec a;
  a.Icao.Assign(icao);
  a.Name.Assign(name);
  a.Lat = lat;
  a.Lon = lon;
  return a;
}

IlsRec Ils(std::string_view ident, std::string_view name) {
  IlsRec i;
  i.Ident.Assign(ident);
  i.Name.Assign(name);
  return i;
}

template <typename Rec>
Rec Point(std::string_view ident, std::string_view name, float lat, float lon) {
  Rec r;
  r.Ident.Assign(ident);
  r.Name.Assign(name);
  r.Lat = lat;
  r.Lon = lon;
  return r;
}

AirwayRec Airway(std::string_view name, int32_t from, int32_t to) {
  AirwayRec w;
  w.Name.Assign(name);
  w.FromIndex = from;
  w.ToIndex = to;
  return w;
}

// A small database with a few objects of every kind; texts carry the blank
// padding of their fixed fields.
NavDatabase SmallDatabase() {
  NavDatabase db;
  auto& airports = db.Airports.Airports;
  airports.resize(5);  // slots 1 and 3 stay unused
  airports[0] = Airport("EDDF", "Frankfurt Main", 50.03f, 8.57f);
  airports[2] = Airport("EDFE", "Frankfurt Egelsbach", 49.96f, 8.64f);
  airports[4] = Airport("KJFK", "John F Kennedy Intl", 40.64f, -73.78f);
  RunwayRec rwy;
  rwy.LowEnd.Assign("25L");
  rwy.Lat = 50.04f;
  rwy.Lon = 8.58f;
  airports[0].Runways = {rwy, rwy};
  airports[0].Ils = {Ils("IFRA", "Frankfurt 25L"), Ils("IFRB", "Frankfurt 25R")};
  airports[0].Ils[1].RunwayIndex = 1;  // tied to the second runway
  airports[4].Ils = {Ils("IJFK", "Kennedy 04R")};

  auto& n = db.Navaids;
  n.Vors = {Point<VorRec>("FFM", "FRANKFURT", 50.05f, 8.64f), Point<VorRec>("JFK", "KENNEDY", 40.63f, -73.77f)};
  n.Ndbs = {Point<NdbRec>("FW", "FRANKFURT WEST", 50.1f, 8.4f)};
  n.Fixes = {Point<FixRec>("DF123", "", 50.2f, 8.1f), Point<FixRec>("ABBAS", "ABBAS", 10, 20)};
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  IntersectionRec x;
  x.Index = 7;
  x.Ident.Assign("RUDUS");
  x.Name.Assign("RUDUS");
  x.Lat = 51;
  x.Lon = 9;
  PlaceIntersection(n, x, {}, {});
  x.Index = 9;
  x.Ident.Assign("KOLAD");
  x.Name.Assign("KOLAD");
  x.Lat = 52;
  x.Lon = 10;
  PlaceIntersection(n, x, {}, {});
  n.VictorAirways = {Airway("V23", 7, 9), Airway("V230", 9, 7)};
  n.JetAirways = {Airway("UL607", 7, 9), Airway("UL607", 9, 40000), Airway("UL608", -1, 9),
                  Airway("UL609", 3, 70000)};
  return db;
}

TEST(FrmFind, ListLinesAreIdentTwoBlanksAndName) {
  NavDatabase db = SmallDatabase();
  EXPECT_EQ(FindObjects(db, FindKind::Airport, "frankfurt").Lines,
            (Lines{"EDDF  Frankfurt Main", "EDFE  Frankfurt Egelsbach"}));
  EXPECT_EQ(FindObjects(db, FindKind::Vor, "ffm").Lines, (Lines{"FFM  FRANKFURT"}));
  EXPECT_EQ(FindObjects(db, FindKind::Ndb, "west").Lines, (Lines{"FW  FRANKFURT WEST"}));
  EXPECT_EQ(FindObjects(db, FindKind::Ils, "25").Lines, (Lines{"IFRA  Frankfurt 25L", "IFRB  Frankfurt 25R"}));
  EXPECT_EQ(FindObjects(db, FindKind::Intersection, "kol").Lines, (Lines{"KOLAD  KOLAD"}));
  // A fix without a name keeps the two blanks.
  EXPECT_EQ(FindObjects(db, FindKind::Fix, "DF1").Lines, (Lines{"DF123  "}));
}

TEST(FrmFind, MatchingTrimsAndUpperCasesBothSidesAndFindsTheTextAnywhere) {
  NavDatabase db = SmallDatabase();
  // In the ident or the name, anywhere, whatever the case, blanks around the
  // search text left out.
  EXPECT_EQ(FindObjects(db, FindKind::Airport, "  eddf ").Lines, (Lines{"EDDF  Frankfurt Main"}));
  EXPECT_EQ(FindObjects(db, FindKind::Airport, "KENNEDY").Lines, (Lines{"KJFK  John F Kennedy Intl"}));
  // "ED" is in both German codes and inside "KENNEDY".
  EXPECT_EQ(FindObjects(db, FindKind::Airport, "ED").Lines.size(), 3u);
  EXPECT_EQ(FindObjects(db, FindKind::Vor, "jf").Lines, (Lines{"JFK  KENNEDY"}));
  // The padding of a field is not part of it: "FRANKFURT " finds nothing in
  // a name that ends after "FRANKFURT".
  EXPECT_EQ(FindObjects(db, FindKind::Vor, "FRANKFURT M").Lines, (Lines{"No VOR found"}));
  // A blank search lists every record of the kind, unused slots left out.
  EXPECT_EQ(FindObjects(db, FindKind::Airport, "   ").Lines.size(), 3u);
  EXPECT_EQ(FindObjects(db, FindKind::Intersection, "").Lines, (Lines{"RUDUS  RUDUS", "KOLAD  KOLAD"}));
}

TEST(FrmFind, EmptyResultTextsForEachKind) {
  NavDatabase db = SmallDatabase();
  const std::pair<FindKind, Lines> cases[] = {
      {FindKind::Airport, {"No Airport found"}},   {FindKind::Vor, {"No VOR found"}},
      {FindKind::Ndb, {"No NDB found"}},           {FindKind::Ils, {"No ILS found"}},
      {FindKind::Intersection, {"No intersection found"}}, {FindKind::Fix, {"No GPS Fix found"}},
      {FindKind::Victor, {}},                       {FindKind::Jet, {"No jet airway found"}},
  };
  for (const auto& [kind, lines] : cases) {
    FindResult r = FindObjects(db, kind, "ZZZZ");
    EXPECT_EQ(r.Lines, lines) << static_cast<int>(kind);
    EXPECT_TRUE(r.Objects.empty());
  }
  // An empty database says the same.
  NavDatabase none;
  EXPECT_EQ(FindObjects(none, FindKind::Intersection, "").Lines, (Lines{"No intersection found"}));
  EXPECT_EQ(FindObjects(none, FindKind::Victor, "").Lines, Lines{});
}

TEST(FrmFind, AirwayLinesCarryTheSegmentEnds) {
  NavDatabase db = SmallDatabase();
  // Matched on the airway's name only: "V23" also finds V230.
  EXPECT_EQ(FindObjects(db, FindKind::Victor, "v23").Lines, (Lines{"V23  RUDUS << KOLAD", "V230  KOLAD << RUDUS"}));
  EXPECT_EQ(FindObjects(db, FindKind::Victor, "RUDUS").Lines, Lines{});
  // Ends outside the array or on an unfilled slot show "?".
  FindResult jet = FindObjects(db, FindKind::Jet, "UL60");
  EXPECT_EQ(jet.Lines, (Lines{"UL607  RUDUS << KOLAD", "UL607  KOLAD << ?", "UL608  ? << KOLAD", "UL609  ? << ?"}));
  ASSERT_EQ(jet.Objects.size(), 4u);
  EXPECT_EQ(jet.Objects[0], (FoundObject{kHiliteJet, 0, -1, 51, 9}));
  EXPECT_EQ(jet.Objects[1], (FoundObject{kHiliteJet, 1, -1, 52, 10}));
  // Without a start the map goes to the end it leads to; without either
  // there is no position.
  EXPECT_EQ(jet.Objects[2], (FoundObject{kHiliteJet, 2, -1, 52, 10}));
  EXPECT_EQ(jet.Objects[3].Lat, kNoLatitude);
  EXPECT_EQ(FindObjects(db, FindKind::Victor, "V230").Objects[0], (FoundObject{kHiliteVictor, 1, -1, 52, 10}));
}

TEST(FrmFind, ObjectsGiveTheHighlightAndThePosition) {
  NavDatabase db = SmallDatabase();
  EXPECT_EQ(FindObjects(db, FindKind::Airport, "KJFK").Objects[0],
            (FoundObject{kHiliteAirport, 4, -1, 40.64f, -73.78f}));
  EXPECT_EQ(FindObjects(db, FindKind::Vor, "JFK").Objects[0], (FoundObject{kHiliteVor, 1, -1, 40.63f, -73.77f}));
  EXPECT_EQ(FindObjects(db, FindKind::Ndb, "FW").Objects[0], (FoundObject{kHiliteNdb, 0, -1, 50.1f, 8.4f}));
  EXPECT_EQ(FindObjects(db, FindKind::Fix, "ABBAS").Objects[0], (FoundObject{kHiliteFix, 1, -1, 10, 20}));
  EXPECT_EQ(FindObjects(db, FindKind::Intersection, "KOLAD").Objects[0],
            (FoundObject{kHiliteIntersection, 9, -1, 52, 10}));
  // An ILS: the airport's index and its own; the runway it is tied to gives
  // the position, else the airport does.
  FindResult ils = FindObjects(db, FindKind::Ils, "I");
  ASSERT_EQ(ils.Lines, (Lines{"IFRA  Frankfurt 25L", "IFRB  Frankfurt 25R", "IJFK  Kennedy 04R"}));
  EXPECT_EQ(ils.Objects[0], (FoundObject{kHiliteIls, 0, 0, 50.03f, 8.57f}));
  EXPECT_EQ(ils.Objects[1], (FoundObject{kHiliteIls, 0, 1, 50.04f, 8.58f}));
  EXPECT_EQ(ils.Objects[2], (FoundObject{kHiliteIls, 4, 0, 40.64f, -73.78f}));
}

TEST(FrmFind, WindowRunsTheChosenSearchAndHandsBackTheClickedObject) {
  NavDatabase db = SmallDatabase();
  FrmFind f(db);
  f.FormLoad();
  EXPECT_TRUE(f.Visible);
  EXPECT_TRUE(f.lstFind.empty());
  f.OptClick(FindKind::Vor);
  f.txtFind = "frankfurt";
  f.CmdFindClick();
  EXPECT_EQ(f.lstFind, (Lines{"FFM  FRANKFURT"}));
  EXPECT_EQ(f.lstFindIndex, -1);
  std::optional<FoundObject> hit = f.LstFindClick(0);
  ASSERT_TRUE(hit);
  EXPECT_EQ(*hit, (FoundObject{kHiliteVor, 0, -1, 50.05f, 8.64f}));
  EXPECT_EQ(f.lstFindIndex, 0);
  EXPECT_FALSE(f.LstFindClick(1));
  EXPECT_FALSE(f.LstFindClick(-1));

  // The empty-result line names no object; a new search clears the choice.
  f.txtFind = "nowhere";
  f.CmdFindClick();
  EXPECT_EQ(f.lstFind, (Lines{"No VOR found"}));
  EXPECT_EQ(f.lstFindIndex, -1);
  EXPECT_FALSE(f.LstFindClick(0));

  f.CmdCancelClick();
  EXPECT_FALSE(f.Visible);
  // Opened again: the list is cleared, text and option are kept.
  f.FormLoad();
  EXPECT_TRUE(f.lstFind.empty());
  EXPECT_EQ(f.txtFind, "nowhere");
  EXPECT_EQ(f.Option, FindKind::Vor);
}

TEST(FrmFind, KindNamesOfTheCommandLine) {
  EXPECT_EQ(FindKindFromName("airport"), FindKind::Airport);
  EXPECT_EQ(FindKindFromName("VOR"), FindKind::Vor);
  EXPECT_EQ(FindKindFromName("Int"), FindKind::Intersection);
  EXPECT_EQ(FindKindFromName("jet"), FindKind::Jet);
  EXPECT_EQ(FindKindFromName("victor"), FindKind::Victor);
  EXPECT_FALSE(FindKindFromName("intersection"));
  EXPECT_FALSE(FindKindFromName(""));
}

}  // namespace
}  // namespace orv
