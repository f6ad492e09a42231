#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/FixedStr.h"
#include "core/Runtime.h"
#include "map/Navaid.h"
#include "map/RenderCaches.h"
#include "map/RecordingTarget.h"

namespace orv {
namespace {

using Ops = std::vector<std::string>;

// Zoom steps by their labels.
constexpr int16_t kLabel2 = 1, kLabel3 = 2, kLabel5 = 3, kLabel30 = 6, kLabel75 = 8, kLabel900 = 18,
                  kLabel2000 = 19;

const Ops kHexagon = {"Line 5050 2900 5100 3000", "Line 5100 3000 5050 3100", "Line 5050 3100 4950 3100",
                      "Line 4950 3100 4900 3000", "Line 4900 3000 4950 2900", "Line 4950 2900 5050 2900"};
const Ops kSquare = {"Line 4900 2900 5100 2900", "Line 5100 2900 5100 3100", "Line 5100 3100 4900 3100",
                     "Line 4900 3100 4900 2900"};
const Ops kLobes = {"Line 4900 3000 4800 2950", "Line 4800 2950 4860 2840", "Line 4860 2840 4950 2900",
                    "Line 5100 3000 5200 2950", "Line 5200 2950 5140 2840", "Line 5140 2840 5050 2900",
                    "Line 5050 3100 5050 3200", "Line 5050 3200 4950 3200", "Line 4950 3200 4950 3100"};

Ops Join(std::initializer_list<Ops> parts) {
  Ops out;
  for (const Ops& p : parts) out.insert(out.end(), p.begin(), p.end());
  return out;
}

class NavaidTest : public ::testing::Test {
protected:
  NavaidTest() : nav(map, view, grid) {
    view.ZoomIndex = kLabel30;
    grid.DeclutterReset(map);
    nav.sngCenterX = 5000;
    nav.sngCenterY = 3000;
  }
  Ops Drawn() const { return map.Describe(); }

  RecordingTarget map;
  ViewState view;
  Declutter grid;
  clsNavaid nav;
};

TEST_F(NavaidTest, PropertiesThatReachTheSurface) {
  nav.lngColor(0x0080FF);
  nav.intFillStyle(kFillSolid);
  nav.sngFontSize(5);
  EXPECT_EQ(map.ForeColor(), 0x0080FF);
  EXPECT_EQ(map.FillStyle(), kFillSolid);
  EXPECT_FLOAT_EQ(map.FontSize(), 5.0f);
  EXPECT_EQ(nav.lngColor(), 0x0080FF);

  RecordingTarget printer(100, 100, "Printer");
  nav.objTarget(printer);
  nav.lngColor(0x00BF00);
  EXPECT_EQ(printer.ForeColor(), 0x00BF00);
  EXPECT_EQ(map.ForeColor(), 0x0080FF);
  EXPECT_EQ(&nav.objTarget(), &printer);
}

TEST_F(NavaidTest, VorWithoutRoseBelowRadius51) {
  nav.intRadius = 50;
  map.SetDrawWidth(3);
  nav.DrawAsVOR("3");
  EXPECT_EQ(Drawn(), Join({{"Circle 5000 3000 50"}, kHexagon, kLobes, {"Circle 5000 3000 1.38888888888889"}}));
  EXPECT_EQ(map.Ops()[0].DrawWidth, 1);
}

TEST_F(NavaidTest, VorRoseTurnsTicksByWholeDegreesAndNorthByTheFraction) {
  nav.intRadius = 51;
  nav.sngMagVar = -12.7f;
  nav.DrawAsVOR("2");
  // Ticks at 30..330 turned by 12 degrees, ending at R / 1.5; the north line
  // turned by 12.7 and ending 60 above the centre.
  const Ops rose = {"Line 4966 2962 4977 2975", "Line 4951 2984 4968 2989", "Line 4950 3011 4967 3007",
                    "Line 4962 3034 4975 3023", "Line 4984 3049 4989 3032", "Line 5011 3050 5007 3033",
                    "Line 5034 3038 5023 3025", "Line 5049 3016 5032 3011", "Line 5050 2989 5033 2993",
                    "Line 5038 2966 5025 2977", "Line 5016 2951 5011 2968", "Line 4989 2950 5000 2940"};
  EXPECT_EQ(Drawn(), Join({{"Circle 5000 3000 51"}, rose, kHexagon, {"Circle 5000 3000 1.41666666666667"}}));
}

TEST_F(NavaidTest, VorRoseWithALargeRadius) {
  nav.intRadius = 300;
  nav.DrawAsVOR("4");
  const Ops ops = Drawn();
  ASSERT_EQ(ops.size(), 1u + 12 + 6 + 4 + 1);
  EXPECT_EQ(ops[1], "Line 4850 2740 4900 2827");  // bearing 30, on the west side
  EXPECT_EQ(ops[3], "Line 4700 3000 4800 3000");  // bearing 90
  EXPECT_EQ(ops[6], "Line 5000 3300 5000 3200");  // bearing 180
  EXPECT_EQ(ops[12], "Line 5000 2700 5000 2940");  // north
}

TEST_F(NavaidTest, VorTypeComesFromTheTrimmedNumber) {
  nav.intRadius = 36;
  nav.DrawAsVOR("4");
  const Ops four = Drawn();
  EXPECT_EQ(four, Join({{"Circle 5000 3000 36"}, kHexagon, kSquare, {"Circle 5000 3000 1"}}));
  map.ClearOps();
  nav.DrawAsVOR(" 4 ");
  EXPECT_EQ(Drawn(), four);

  map.ClearOps();
  nav.DrawAsVorSymbol("1");
  EXPECT_EQ(Drawn(), Join({kHexagon, kLobes, {"Circle 5000 3000 1"}}));
  map.ClearOps();
  nav.DrawAsVorSymbol("");
  EXPECT_EQ(Drawn(), Join({kHexagon, kLobes, {"Circle 5000 3000 1"}}));
}

TEST_F(NavaidTest, VorSquareAndNdbSymbolsBecomeDotsAbove900) {
  nav.intRadius = 120;
  view.ZoomIndex = kLabel2000;
  nav.DrawAsVorSquare();
  nav.DrawAsNDBSymbol();
  nav.DrawAsAirportCircle();
  EXPECT_EQ(Drawn(), (Ops{"PSet 5000 3000", "PSet 5000 3000", "PSet 5000 3000"}));
  EXPECT_EQ(map.Ops()[0].DrawWidth, 2);
  EXPECT_EQ(nav.intRadius, 120);  // the dot leaves the radius alone

  map.ClearOps();
  view.ZoomIndex = kLabel900;
  nav.DrawAsNDBSymbol();
  nav.DrawAsVorSquare();
  EXPECT_EQ(nav.intRadius, 180);
  nav.DrawAsAirportCircle();
  EXPECT_EQ(Drawn(), (Ops{"Circle 5000 3000 20", "Circle 5000 3000 30", "Circle 5000 3000 30"}));
  for (const DrawOp& op : map.Ops()) EXPECT_EQ(op.DrawWidth, 1);
  EXPECT_EQ(map.Ops()[2].FillStyle, kFillTransparent);
}

TEST_F(NavaidTest, NdbMarkerStaticAircraftAndFrequency) {
  nav.intRadius = 120;
  map.SetFillStyle(kFillSolid);
  nav.DrawAsNDB();
  nav.DrawAsMarker();
  nav.DrawAsStaticAC();
  EXPECT_EQ(Drawn(), (Ops{"Circle 5000 3000 60", "Circle 5000 3000 40", "Circle 5000 3000 20", "PSet 5000 3000",
                          "Circle 5000 3000 120", "Line 4900 2900 5100 2900", "Line 5100 2900 5100 3100",
                          "Line 5100 3100 4900 3100", "Line 4900 3100 4900 2900"}));
  EXPECT_EQ(map.Ops()[3].DrawWidth, 2);
  EXPECT_EQ(map.Ops()[4].DrawWidth, 1);
  EXPECT_EQ(map.Ops()[4].FillStyle, kFillTransparent);

  map.ClearOps();
  map.SetCurrentX(100);
  map.SetCurrentY(200);
  nav.sngFrequency = 113.9f;
  nav.PrintFrequency();
  nav.sngFrequency = 7.5f;
  map.SetCurrentX(100);
  nav.PrintFrequency();
  EXPECT_EQ(Drawn(), (Ops{"Text 100 200 113.90", "Text 100 365 007.50"}));
}

TEST_F(NavaidTest, IntersectionTriangleSitsFifteenHigherBelow901) {
  nav.sngCenterX = 1000;
  nav.sngCenterY = 1000;
  nav.sngLength = 60;
  view.ZoomIndex = kLabel900;
  nav.DrawAsIntersection();
  EXPECT_EQ(Drawn(), (Ops{"Line 1000 925 940 1045", "Line 940 1045 1060 1045", "Line 1060 1045 1000 925"}));
  EXPECT_FLOAT_EQ(nav.sngCenterY, 985.0f);

  map.ClearOps();
  nav.sngCenterY = 1000;
  view.ZoomIndex = kLabel2000;
  nav.DrawAsIntersection();
  EXPECT_EQ(Drawn(), (Ops{"PSet 1000 1000"}));
  EXPECT_FLOAT_EQ(nav.sngCenterY, 1000.0f);
  EXPECT_EQ(map.DrawWidth(), 2);

  // The track waypoint is a triangle at every zoom.
  map.ClearOps();
  nav.DrawAsNatrackWP();
  EXPECT_EQ(Drawn(), (Ops{"Line 1000 925 940 1045", "Line 940 1045 1060 1045", "Line 1060 1045 1000 925"}));
  EXPECT_EQ(map.DrawWidth(), 1);
}

TEST_F(NavaidTest, VrpAndActiveWaypointStyleTheMapWhateverTheTarget) {
  RecordingTarget other(1000, 1000, "SIDMap");
  other.SetDrawWidth(4);
  nav.objTarget(other);
  nav.sngLength = 50;
  nav.intRadius = 101;
  map.SetDrawWidth(3);
  nav.DrawAsVRP();
  EXPECT_EQ(other.Describe(), (Ops{"Line 5000 2935 4950 3035", "Line 4950 3035 5050 3035",
                                   "Line 5050 3035 5000 2935", "Circle 5000 2985 50.5"}));
  EXPECT_EQ(other.Ops()[3].DrawStyle, kDrawStyleSolid);  // the style went to the map
  EXPECT_EQ(other.Ops()[3].DrawWidth, 4);
  EXPECT_EQ(map.DrawWidth(), 1);
  EXPECT_EQ(map.DrawStyle(), kDrawStyleSolid);

  // Drawn on the map itself, the circle is dotted.
  nav.objTarget(map);
  nav.sngCenterY = 3000;
  nav.DrawAsActiveWP();
  ASSERT_EQ(Drawn(), (Ops{"Circle 5000 3000 50.5"}));
  EXPECT_EQ(map.Ops()[0].DrawStyle, kDrawStyleDot);
  EXPECT_EQ(map.Ops()[0].DrawWidth, 1);
  EXPECT_EQ(map.DrawStyle(), kDrawStyleSolid);
}

TEST_F(NavaidTest, AirportNameCentredUnderlinedAndDecluttered) {
  nav.strName = "EDDF Frankfurt";  // 1155 wide: half 577.5 rounds to 578
  nav.DrawAsAirport();
  EXPECT_EQ(Drawn(), (Ops{"Circle 5000 3000 30", "Text 4422 3050 EDDF Frankfurt", "Line 4422 3215 5000 3215"}));
  EXPECT_EQ(map.Ops()[0].FillStyle, kFillTransparent);

  // A second airport at the same place: its name goes one cell row down.
  map.ClearOps();
  nav.DrawAsAirport();
  EXPECT_EQ(Drawn(), (Ops{"Circle 5000 3000 30", "Text 4422 3315 EDDF Frankfurt", "Line 4422 3480 5000 3480"}));

  // No name: nothing printed, the underline still drawn (with no length).
  map.ClearOps();
  nav.strName.clear();
  nav.sngCenterY = 1000;
  nav.DrawAsAirport();
  EXPECT_EQ(Drawn(), (Ops{"Circle 5000 1000 30", "Line 5000 1050 5000 1050"}));
}

TEST_F(NavaidTest, RunwayBothEndsGiveTheSameOutline) {
  nav.sngCenterY = 3500;
  nav.sngLength = 1000;
  nav.intWidth = 50;
  nav.RunwayColor = 0x3F3F3F;
  nav.lngColor(0xDFDFDF);
  nav.sngCourse = 90;
  nav.DrawAsRwy();
  // Corners floored: sin and cos of 90 with the program's pi are a hair off.
  EXPECT_EQ(Drawn(), (Ops{"Polygon 5499 3474 4499 3475 4500 3525 5500 3524"}));
  const DrawOp& p = map.Ops()[0];
  EXPECT_EQ(p.Color, 0xDFDFDF);
  EXPECT_EQ(p.FillColor, 0x3F3F3F);
  EXPECT_EQ(p.FillStyle, kFillSolid);
  EXPECT_EQ(p.DrawStyle, kDrawStyleSolid);
  EXPECT_EQ(p.DrawWidth, 1);
  const Ops ninety = Drawn();
  map.ClearOps();
  nav.sngCourse = 270;
  nav.DrawAsRwy();
  EXPECT_EQ(Drawn(), ninety);

  map.ClearOps();
  nav.sngCourse = 45;
  nav.DrawAsRwy();
  const Ops diagonal = Drawn();
  EXPECT_EQ(diagonal, (Ops{"Polygon 5335 3128 4628 3835 4664 3871 5371 3164"}));
  map.ClearOps();
  nav.sngCourse = 225.4f;  // 45.4 rounds to 45
  nav.DrawAsRwy();
  EXPECT_EQ(Drawn(), diagonal);

  map.ClearOps();
  nav.sngCourse = 0;
  nav.DrawAsRwy();
  EXPECT_EQ(Drawn(), (Ops{"Polygon 4975 3000 4975 4000 5025 3999 5025 2999"}));
}

TEST_F(NavaidTest, RunwayCentreLineBelowLabel5) {
  nav.sngCenterY = 3500;
  nav.sngLength = 1000;
  nav.intWidth = 50;
  nav.sngCourse = 90;
  nav.RunwayColor = 0x3F3F3F;
  nav.lngColor(0xDFDFDF);
  view.ZoomIndex = kLabel5;
  nav.DrawAsRwy();
  EXPECT_EQ(map.Ops().size(), 1u);

  map.ClearOps();
  view.ZoomIndex = kLabel3;
  nav.DrawAsRwy();
  ASSERT_EQ(Drawn(), (Ops{"Polygon 5499 3474 4499 3475 4500 3525 5500 3524", "Line 5500 3499 4500 3500"}));
  const DrawOp& centre = map.Ops()[1];
  EXPECT_EQ(centre.Color, 0xC0C0C0);
  EXPECT_EQ(centre.DrawStyle, kDrawStyleDash);
  EXPECT_EQ(map.ForeColor(), 0xDFDFDF);  // restored
  EXPECT_EQ(map.DrawStyle(), kDrawStyleDash);  // left dashed
  EXPECT_EQ(map.FillStyle(), kFillSolid);
}

TEST_F(NavaidTest, IlsFeatherAndLocalizerAnnotation) {
  nav.sngCenterY = 3500;
  nav.sngCourse = 90;
  nav.sngLength = 1100;  // tip at 1100 / 1.1 = 1000
  nav.strCode = " IFRA ";
  nav.strRwyID = "09";
  nav.blnILSType = false;
  nav.DrawAsILS();
  EXPECT_EQ(Drawn(), (Ops{"Line 5000 3500 3902 3442", "Line 3902 3442 4000 3500", "Line 4000 3500 3902 3558",
                          "Line 3902 3558 5000 3500", "Line 5000 3500 4000 3500", "Text 4000 3500 Loc IFRA",
                          "Text 4000 3665 Rwy 09 IFRA 090\xB0"}));
}

TEST_F(NavaidTest, IlsTextSetBackFromCourse180) {
  nav.sngCenterY = 3500;
  nav.sngCourse = 270;
  nav.sngLength = 1100;
  nav.strCode = "IFRA";
  nav.strRwyID = "X";
  nav.blnILSType = true;
  nav.DrawAsILS();
  // "ILS IFRA" is 660 wide, "IFRA 270°" 742.5.
  EXPECT_EQ(Drawn(), (Ops{"Line 5000 3500 6098 3558", "Line 6098 3558 6000 3500", "Line 6000 3500 6098 3442",
                          "Line 6098 3442 5000 3500", "Text 5340 3500 ILS IFRA", "Text 5257.5 3665 IFRA 270\xB0"}));

  map.ClearOps();
  nav.strRwyID = "";
  nav.DrawAsILS();
  EXPECT_EQ(Drawn().size(), 5u);
}

TEST_F(NavaidTest, ShortIlsPrintsItsCodeWhereTheOutlineEnds) {
  nav.sngCenterY = 3500;
  nav.sngCourse = 178.6f;  // reciprocal 358.6 rounds to 359; the corners wrap past 360
  nav.sngLength = 1000;    // tip at 909
  nav.strCode = "IXYZ ";
  nav.DrawAsShortILS();
  EXPECT_EQ(Drawn(), (Ops{"Line 5000 3500 5035 2501", "Line 5035 2501 4984 2591", "Line 4984 2591 4930 2502",
                          "Line 4930 2502 5000 3500", "Text 5000 3500 IXYZ"}));
}

// Ground layout records as the readers keep them.
struct PolyRec {
  char Kind;
  float Lat;
  float Lon;
};
struct FixedPolyRec {
  FixedStr<1> Kind;
  float Lat;
  float Lon;
};
struct TaxiRec {
  float Lat1, Lon1, Lat2, Lon2;
  std::string Name;
};

class GroundTest : public NavaidTest {
protected:
  GroundTest() {
    view.CntrLat = 50;
    view.CntrLon = 8;
    view.Scaling = 100000;
    nav.TaxiColor = 0xDFDFDF;
  }
  std::string At(float lat, float lon) const {
    return NumText(static_cast<float>(MapXFromLon(view, lon, lat))) + " " +
           NumText(static_cast<float>(MapYFromLat(view, lat)));
  }
};

TEST_F(GroundTest, PolygonsOpenNearTheCentreAndCloseOnTheNextStart) {
  map.SetDrawStyle(kDrawStyleDot);
  map.SetDrawWidth(3);
  map.SetFillStyle(kFillTransparent);
  map.SetFillColor(0x111111);
  const std::vector<PolyRec> recs = {
      {'A', 50.01f, 8.01f}, {'L', 50.02f, 8.01f}, {'L', 50.02f, 8.02f}, {'L', 50.01f, 8.02f},
      {'A', 51.0f, 8.0f},   // far: closes the first, opens nothing
      {'L', 50.0f, 8.0f},   // no polygon open
      {'M', 49.9f, 7.9f},   {'L', 49.9f, 7.95f}, {'Z', 50.0f, 8.0f},  // letters after "M" are ignored
      {'L', 49.95f, 7.95f}, {'B', 50.0f, 8.0f},  // closes the second, opens a third
      {'L', 50.0f, 8.01f},  // the last polygon waits for a closing record
  };
  nav.DrawAsPolygon(recs);
  EXPECT_EQ(Drawn(), (Ops{"Polygon " + At(50.01f, 8.01f) + " " + At(50.02f, 8.01f) + " " + At(50.02f, 8.02f) +
                              " " + At(50.01f, 8.02f),
                          "Polygon " + At(49.9f, 7.9f) + " " + At(49.9f, 7.95f) + " " + At(49.95f, 7.95f)}));
  const DrawOp& op = map.Ops()[0];
  EXPECT_EQ(op.Color, 0xDFDFDF);
  EXPECT_EQ(op.FillColor, 0xDFDFDF);
  EXPECT_EQ(op.FillStyle, kFillSolid);
  EXPECT_EQ(op.DrawStyle, kDrawStyleSolid);
  EXPECT_EQ(op.DrawWidth, 1);
  EXPECT_EQ(map.DrawStyle(), kDrawStyleDot);
  EXPECT_EQ(map.DrawWidth(), 3);
  EXPECT_EQ(map.FillStyle(), kFillTransparent);
  EXPECT_EQ(map.FillColor(), 0x111111);
}

TEST_F(GroundTest, PolygonsStopAt500PointsAndReadFixedTexts) {
  std::vector<FixedPolyRec> recs;
  recs.push_back({FixedStr<1>("C"), 50, 8});
  for (int i = 0; i < 600; ++i) recs.push_back({FixedStr<1>("L"), 50.001f, 8.001f});
  recs.push_back({FixedStr<1>("C"), 60, 8});
  nav.DrawAsPolygon(recs);
  ASSERT_EQ(map.Ops().size(), 1u);
  EXPECT_EQ(map.Ops()[0].PointCount, 500u);
}

// The pass walks only the polygons that open near the centre; it must draw
// what the walk over every record draws, NUL and late letters included.
TEST_F(GroundTest, PolygonsFromTheirOpeningRecordsDrawAsTheFullWalk) {
  std::vector<GroundPolyRec> recs;
  for (const auto& [kind, lat, lon] : std::vector<PolyRec>{
           {'A', 50.01f, 8.01f}, {'L', 50.02f, 8.01f}, {'\0', 50.3f, 8.3f}, {'L', 50.01f, 8.02f}, {'A', 51.0f, 8.0f},
           {'L', 50.0f, 8.0f}, {'M', 49.9f, 7.9f}, {'Z', 50.0f, 8.0f}, {'L', 49.95f, 7.95f}, {'F', 50.0f, 8.0f},
           {'L', 50.0f, 8.01f}, {'F', 50.1f, 8.1f}, {'E', 50.1f, 8.1f}, {'F', 50.2f, 8.2f}, {'L', 50.2f, 8.3f}}) {
    GroundPolyRec& g = recs.emplace_back();
    g.Kind.chars[0] = kind;
    g.Lat = lat;
    g.Lon = lon;
  }
  nav.DrawAsPolygon(recs);
  const Ops full = Drawn();
  ASSERT_EQ(full.size(), 3u);
  map.ClearOps();
  RenderCaches caches;
  nav.DrawAsPolygon(recs, caches.GroundHeads(recs));
  EXPECT_EQ(Drawn(), full);
}

TEST_F(GroundTest, TaxiwaysWidenAtCloseZoomWithACentreLine) {
  const std::vector<TaxiRec> recs = {
      {50.01f, 8.01f, 50.02f, 8.02f, "A"},
      {50.01f, 8.01f, 50.6f, 8.02f, "B"},  // one end too far from the centre
  };
  const std::string segment = "Line " + At(50.01f, 8.01f) + " " + At(50.02f, 8.02f);
  map.SetDrawWidth(4);
  nav.DrawAsTaxiway(recs);
  EXPECT_EQ(Drawn(), (Ops{segment}));
  EXPECT_EQ(map.Ops()[0].DrawWidth, 3);
  EXPECT_EQ(map.Ops()[0].Color, 0xDFDFDF);
  EXPECT_EQ(map.DrawWidth(), 4);

  for (auto [index, width] : {std::pair{kLabel2, 12}, {kLabel3, 5}}) {
    map.ClearOps();
    view.ZoomIndex = index;
    nav.DrawAsTaxiway(recs);
    ASSERT_EQ(Drawn(), (Ops{segment, segment}));
    EXPECT_EQ(map.Ops()[0].DrawWidth, width);
    EXPECT_EQ(map.Ops()[1].DrawWidth, 2);
    EXPECT_EQ(map.Ops()[1].Color, 0x202020);
    EXPECT_EQ(map.DrawWidth(), 4);
  }
  view.ZoomIndex = 0;  // label 1
  map.ClearOps();
  nav.DrawAsTaxiway(recs);
  EXPECT_EQ(map.Ops()[0].DrawWidth, 15);
}

TEST_F(GroundTest, DesignatorsInTahomaAtTheMiddle) {
  const std::vector<TaxiRec> recs = {
      {50.0f, 8.0f, 50.0f, 8.01f, "A1 "},
      {50.0f, 8.0f, 50.0f, 8.01f, ""},
      {50.0f, 8.0f, 50.7f, 8.01f, "FAR"},
  };
  view.ZoomIndex = kLabel2;
  map.SetDrawWidth(1);
  nav.DrawAsTaxiwayDesignator(recs);
  const double x = (MapXFromLon(view, 8.0f, 50.0f) + MapXFromLon(view, 8.01f, 50.0f)) / 2;
  ASSERT_EQ(Drawn(), (Ops{"Text " + NumText(x) + " 3500 A1"}));
  EXPECT_EQ(map.Ops()[0].FontName, "Tahoma");
  EXPECT_FLOAT_EQ(map.Ops()[0].FontSize, 9.0f);
  EXPECT_EQ(map.FontName(), "MS Sans Serif");
  EXPECT_FLOAT_EQ(map.FontSize(), 8.25f);
  EXPECT_EQ(map.DrawWidth(), 1);
}

}  // namespace
}  // namespace orv
