// The mapping of source records to database records.
#include <gtest/gtest.h>

#include <cstdio>

#include "dbm/DatabaseBuilder.h"
#include "dbm/IcaoPrefixes.h"

namespace orv::dbm {
namespace {

MagVarGrid FlatGrid(double degrees) {
  MagVarGrid g;
  g.Assign(BuildMagVarFile([degrees](int, int) { return degrees; }));
  return g;
}

TEST(Mapping, SingleFieldTables) {
  EXPECT_EQ(SurfaceCode(1), 4);     // asphalt
  EXPECT_EQ(SurfaceCode(2), 0);     // concrete
  EXPECT_EQ(SurfaceCode(3), 1);     // grass
  EXPECT_EQ(SurfaceCode(5), 14);    // gravel
  EXPECT_EQ(SurfaceCode(13), 2);    // water
  EXPECT_EQ(SurfaceCode(15), 254);  // transparent: "Unknown"
  EXPECT_EQ(SurfaceCode(22), 4);    // the 1200 asphalt shades
  EXPECT_EQ(SurfaceCode(55), 0);    // the 1200 concrete shades

  EXPECT_EQ(FrequencyKind(50, "ATIS"), 1);
  EXPECT_EQ(FrequencyKind(50, "Asos"), 12);
  EXPECT_EQ(FrequencyKind(51, "CTAF"), 4);
  EXPECT_EQ(FrequencyKind(51, "UNICOM"), 3);
  EXPECT_EQ(FrequencyKind(52, "DEL"), 7);
  EXPECT_EQ(FrequencyKind(53, "GND"), 5);
  EXPECT_EQ(FrequencyKind(54, "TWR"), 6);
  EXPECT_EQ(FrequencyKind(55, "LANGEN RADAR"), 8);
  EXPECT_EQ(FrequencyKind(55, "NEW YORK CENTER"), 10);
  EXPECT_EQ(FrequencyKind(56, "DEP"), 9);

  EXPECT_EQ(VorTypeCode(kVor, "FRANKFURT VOR", false), 1);
  EXPECT_EQ(VorTypeCode(kVor, "FRANKFURT VOR", true), 4);
  EXPECT_EQ(VorTypeCode(kVor, "KENNEDY VOR-DME", false), 4);
  EXPECT_EQ(VorTypeCode(kVor, "SEATTLE VORTAC", true), 2);
  EXPECT_EQ(VorTypeCode(kDmeStandalone, "AALBORG TACAN", true), 3);
  EXPECT_EQ(VorTypeCode(kDmeStandalone, "AASIAAT DME", true), 9);

  EXPECT_EQ(StoredDesignator("07c", false), "07C");
  EXPECT_EQ(StoredDesignator("N", false), "37");
  EXPECT_EQ(StoredDesignator("NW", false), "44");
  EXPECT_EQ(StoredDesignator("H1", true), "00H1");
}

TEST(Mapping, ParkingKindsNamesAndNumbers) {
  SrcParking gate{true, 0, 0, 0, "gate", "heavy|jets", "airline", "A12"};
  ParkingCodes c = ParkingFor(gate);
  EXPECT_EQ(c.Kind, 10);       // "Gate Heavy"
  EXPECT_EQ(c.NameCode, 12);   // "Gate A"
  EXPECT_EQ(c.Number, 12);
  EXPECT_EQ(c.Ident, "A12");

  SrcParking cargo{true, 0, 0, 0, "gate", "heavy", "cargo", "Stand 405"};
  c = ParkingFor(cargo);
  EXPECT_EQ(c.Kind, 5);        // "Ramp Cargo"
  EXPECT_EQ(c.NameCode, 10);   // "Gate"
  EXPECT_EQ(c.Number, 405);

  SrcParking tie{true, 0, 0, 0, "tie_down", "props", "general_aviation", "GA Ramp 7"};
  c = ParkingFor(tie);
  EXPECT_EQ(c.Kind, 2);        // "Ramp GA Small"
  EXPECT_EQ(c.NameCode, 1);    // "Parking"
  EXPECT_EQ(c.Number, 7);
  EXPECT_EQ(c.Ident, "7");

  SrcParking start{false, 0, 0, 0, "", "", "", "Gate B 23"};
  c = ParkingFor(start);
  EXPECT_EQ(c.Kind, 9);        // a start position at a gate: "Gate Medium"
  EXPECT_EQ(c.NameCode, 13);   // "Gate B"
  EXPECT_EQ(c.Number, 23);

  SrcParking dock{false, 0, 0, 0, "", "", "", "Seaplane Dock"};
  c = ParkingFor(dock);
  EXPECT_EQ(c.NameCode, 11);
  EXPECT_EQ(c.Number, 0);
}

TEST(Mapping, PlacesFromThePrefixTable) {
  EXPECT_EQ(PlaceOfIdent("EDDF", 50, 8).Country, "Germany");
  EXPECT_EQ(PlaceOfIdent("EDDF", 50, 8).Region, "Northern Europe");
  EXPECT_EQ(PlaceOfIdent("LFPG", 49, 2).Country, "France");
  EXPECT_EQ(PlaceOfIdent("KJFK", 40, -73).Country, "United States");
  EXPECT_EQ(PlaceOfIdent("CYYZ", 43, -79).Country, "Canada");
  EXPECT_EQ(PlaceOfIdent("UKBB", 50, 30).Country, "Ukraine");
  EXPECT_EQ(PlaceOfIdent("UUEE", 55, 37).Country, "Russia");
  // An FAA local ident is placed by its position.
  EXPECT_EQ(PlaceOfIdent("N07", 40.9, -74.5).Country, "United States");
  EXPECT_EQ(PlaceOfIdent("XX1", 10, 10).Country, "");
}

XPlaneSources SmallWorld() {
  XPlaneSources s;
  SrcAirport a;
  a.Icao = "EDDF";
  a.Name = "Frankfurt am Main";
  a.ElevationFeet = 364;
  SrcRunway r;
  r.End1 = "07C";
  r.End2 = "25C";
  r.Lat = 50.04;
  r.Lon = 8.56;
  r.TrueHeading = 69.36;
  r.LengthFeet = 13123;
  r.WidthFeet = 197;
  r.Surface = 2;
  a.Runways.push_back(r);
  SrcRunway old;
  old.Kind = RunwayKind::OldRow10;
  old.End1 = "18";
  old.Lat = 50.0;
  old.Lon = 8.5;
  old.LengthFeet = 40000;  // beyond the 16-bit field
  a.Runways.push_back(old);
  a.Frequencies.push_back({54, 119900, "TOWER"});
  a.Parking.push_back({true, 50.05, 8.57, 250.5, "gate", "jets", "", "A12"});
  a.Pavements.push_back({{50, 8}, {50.1, 8}, {50.1, 8.1}});
  s.Airports.push_back(a);
  SrcAirport b;
  b.Icao = "EDDB";
  b.Name = "Berlin";
  b.HasTower = true;
  b.TowerLat = 52.36;
  b.TowerLon = 13.5;
  s.Airports.push_back(b);
  SrcAirport lost;
  lost.Icao = "EXXX";
  lost.Line = 77;
  s.Airports.push_back(lost);  // no position: left out

  s.Navaids.push_back({kVor, 50.05, 8.64, 0, 11420, 130, 1.0, "FFM", "", "", "", "FRANKFURT VOR"});
  s.Navaids.push_back({kDme, 50.05, 8.64, 0, 11420, 130, 0.0, "FFM", "", "", "", "FRANKFURT VOR-DME"});
  s.Navaids.push_back({kNdb, 50.2, 8.3, 0, 344, 25, 0.0, "CHA", "", "", "", "CHARLIE NDB"});
  s.Navaids.push_back({kIls, 50.03, 8.53, 0, 11070, 18, 69.8, "IFEL", "EDDF", "", "25C", "ILS-cat-III"});
  s.Navaids.push_back({kGlideSlope, 50.03, 8.52, 0, 11070, 10, 300249.8, "IFEL", "EDDF", "", "25C", "GS"});
  s.Navaids.push_back({kOuterMarker, 49.98, 8.39, 0, 0, 0, 69.8, "----", "EDDF", "", "25C", "OM"});
  s.Fixes.push_back({50.1, 8.2, "ABMAL", "ED", false});
  s.Fixes.push_back({51.0, 9.0, "LONER", "ED", false});
  s.Fixes.push_back({50.0, 8.5, "DF123", "ED", true});  // terminal: no intersection slot
  SrcAirway w;
  w.From = {"ABMAL", "", 0, true, 50.1, 8.2};
  w.To = {"FFM", "", 0, true, 50.05, 8.64};
  w.Base = 50;
  w.Top = 245;
  w.Name = "Y180";
  s.Airways.push_back(w);
  w.High = true;
  w.Name = "UN850";
  w.Direction = 'F';
  s.Airways.push_back(w);
  return s;
}

TEST(Mapping, SmallWorldBecomesTheTables) {
  XPlaneSources src = SmallWorld();
  BuiltDatabase out;
  BuildDatabase(src, FlatGrid(2.5), {}, out);
  const auto& airports = out.Db.Airports.Airports;
  ASSERT_EQ(airports.size(), 2u);
  EXPECT_EQ(airports[0].Icao.Trimmed(), "EDDB");  // sorted by ICAO code
  EXPECT_FLOAT_EQ(airports[0].Lat, 52.36f);       // placed at its tower
  const AirportRec& f = airports[1];
  EXPECT_EQ(f.Country, "Germany");
  EXPECT_NEAR(f.MagVar, 2.5, 0.003);  // the grid keeps 1/182.04 degree
  EXPECT_EQ(f.Elevation, 364);
  // Placed at the middle of its runways.
  EXPECT_NEAR(f.Lat, 50.02, 1e-5);
  ASSERT_EQ(f.RunwayCount(), 2);
  EXPECT_EQ(f.Runways[0].LowEnd.Trimmed(), "07C");
  EXPECT_EQ(f.Runways[0].HighEnd.Trimmed(), "25C");
  EXPECT_EQ(f.Runways[0].HighIls.Trimmed(), "IFEL");
  EXPECT_EQ(f.Runways[0].LowIls.Trimmed(), "");
  EXPECT_EQ(f.Runways[0].Surface, 0);
  EXPECT_EQ(f.Runways[1].HighEnd.Trimmed(), "36");  // the opposite of an old row's one end
  EXPECT_EQ(f.Runways[1].LengthFeet, 32767);
  ASSERT_EQ(f.IlsCount(), 1);
  EXPECT_FLOAT_EQ(f.Ils[0].Values[0], 110.7f);
  EXPECT_FLOAT_EQ(f.Ils[0].Values[1], 69.8f);
  EXPECT_FLOAT_EQ(f.Ils[0].Values[2], 3.0f);
  EXPECT_EQ(f.Ils[0].Runway.Trimmed(), "25C");
  ASSERT_EQ(f.FrequencyCount(), 1);
  EXPECT_EQ(f.Frequencies[0].Kind, 6);
  EXPECT_FLOAT_EQ(f.Frequencies[0].Frequency, 119.9f);
  ASSERT_EQ(f.ParkingCount(), 1);
  EXPECT_EQ(f.Parking[0].Kind, 9);
  EXPECT_EQ(f.Parking[0].Value, 251);  // heading, whole degrees
  EXPECT_EQ(out.LeftOut, 1);
  ASSERT_EQ(out.Notes.size(), 1u);
  EXPECT_EQ(out.Notes[0], "airport EXXX at line 77: no runway, datum, tower or parking gives its position");

  // Hierarchy: one region and one country, no states or cities without metadata.
  ASSERT_EQ(out.Db.Airports.Regions.size(), 1u);
  EXPECT_EQ(out.Db.Airports.Regions[0], "Northern Europe");
  ASSERT_EQ(out.Db.Airports.Countries.size(), 1u);
  EXPECT_EQ(out.Db.Airports.Countries[0].Name, "Germany");
  EXPECT_TRUE(out.Db.Airports.States.empty());

  EXPECT_EQ(out.WxStations, "EDDB,52.3600,13.5000\r\nEDDF,50.0200,8.5300\r\n");

  // A control zone around the airport with a tower frequency only.
  ASSERT_EQ(out.Db.Shapes.Airspaces.size(), 1u);
  const AirspaceRec& z = out.Db.Shapes.Airspaces[0];
  EXPECT_EQ(z.Class.Trimmed(), "CTR");
  EXPECT_EQ(z.Ident.Trimmed(), "EDDF");
  EXPECT_EQ(z.PointCount, 36);
  EXPECT_EQ(z.UpperAltitude.Trimmed(), "2900");
  EXPECT_NEAR(z.North - z.South, 10.0 / 60.0, 1e-4);

  // Ground layout and markers.
  ASSERT_EQ(out.Db.Shapes.GroundPolygons.size(), 4u);
  EXPECT_EQ(out.Db.Shapes.GroundPolygons[0].Kind.Str(), "F");
  EXPECT_EQ(out.Db.Shapes.GroundPolygons[1].Kind.Str(), "L");
  EXPECT_EQ(out.Db.Shapes.GroundPolygons[3].Kind.Str(), "E");
  ASSERT_EQ(out.Db.Shapes.Markers.size(), 1u);
  EXPECT_EQ(out.Db.Shapes.Markers[0].Kind.Str(), "OM");

  // Navaids: the DME folds into its VOR.
  const NavaidTables& nav = out.Db.Navaids;
  ASSERT_EQ(nav.Vors.size(), 1u);
  EXPECT_EQ(nav.Vors[0].TypeCode, 4);
  EXPECT_EQ(nav.Vors[0].TypeName.Trimmed(), "VOR-DME");
  EXPECT_EQ(nav.Vors[0].Name.Trimmed(), "FRANKFURT");
  EXPECT_FLOAT_EQ(nav.Vors[0].Frequency, 114.2f);
  // The rose's radius, not the 130 NM range: at label 150 in the smallest
  // window (4980 twips, zoom factor 0.5835) the pass's radius is
  // CInt(2 / 60 * 2800 * 0.5835) = 54, above the 51 that draws a rose; at
  // label 1 on a 1000-pixel picture it is 2 / 60 * 420000 * 15 / 7 = 30000.
  EXPECT_FLOAT_EQ(nav.Vors[0].Value, 2.0f);
  ASSERT_EQ(nav.Ndbs.size(), 1u);
  EXPECT_EQ(nav.Ndbs[0].TypeText.Trimmed(), "5");
  EXPECT_FLOAT_EQ(nav.Ndbs[0].Frequency, 344.0f);
  EXPECT_EQ(nav.Fixes.size(), 3u);

  // Intersections south to north: FFM (50.05), ABMAL (50.1), then the
  // en-route fix LONER (51.0) off the airways; the terminal fix gets no slot.
  EXPECT_EQ(nav.MaxIntersectionIndex, 2);
  EXPECT_EQ(nav.Intersections[0].Ident.Trimmed(), "FFM");
  EXPECT_EQ(nav.Intersections[0].Name.Trimmed(), "FRANKFURT");
  EXPECT_EQ(nav.Intersections[1].Ident.Trimmed(), "ABMAL");
  EXPECT_EQ(nav.Intersections[2].Ident.Trimmed(), "LONER");
  EXPECT_TRUE(nav.Intersections[3].Ident.IsEmptySlot());
  // Y180 both ways low; UN850 only forward (ABMAL to FFM), high.
  ASSERT_EQ(nav.LowAirways(0).size(), 1u);
  ASSERT_EQ(nav.LowAirways(1).size(), 1u);
  ASSERT_EQ(nav.HighAirways(1).size(), 1u);
  EXPECT_TRUE(nav.HighAirways(0).empty());
  const AirwayLinkRec& l = nav.LowAirways(1)[0];
  EXPECT_EQ(l.Target, 0);
  EXPECT_EQ(l.AirwayName.Trimmed(), "Y180");
  EXPECT_NEAR(l.Distance, DistanceNm(50.1, 8.2, 50.05, 8.64), 1e-3);
  EXPECT_NEAR(l.Distance, 17.2, 0.05);  // 3 NM north, 16.9 NM east
  EXPECT_EQ(l.Mea1.Trimmed(), "5000");
  EXPECT_EQ(l.Mea2.Trimmed(), "24500");
  ASSERT_EQ(nav.VictorAirways.size(), 1u);
  ASSERT_EQ(nav.JetAirways.size(), 1u);
  EXPECT_EQ(nav.JetAirways[0].Name.Trimmed(), "UN850");
  EXPECT_EQ(nav.JetAirways[0].FromIndex, 1);
  EXPECT_EQ(nav.JetAirways[0].ToIndex, 0);
}

TEST(Mapping, AirwayPointsKeepTheirSlotsWhenTheTableIsFull) {
  // 40001 fixes off the airways, all south of an airway whose two ends come
  // last by ident: the airway still gets its slots, the two fixes last by ident
  // are the ones left out, and the table stays south to north.
  XPlaneSources s;
  s.Fixes.reserve(kIntersectionSlots + 2);
  for (std::size_t i = 0; i < kIntersectionSlots; ++i) {
    char ident[8];
    std::snprintf(ident, sizeof ident, "F%04zx", i);
    s.Fixes.push_back({-80.0 + static_cast<double>(i) * 0.004, 10.0, ident, "ZZ", false});
  }
  SrcAirway w;
  w.From = {"ZZZZY", "", 0, true, 89.0, 1.0};
  w.To = {"ZZZZZ", "", 0, true, 88.0, 2.0};
  w.Name = "Z1";
  s.Airways.push_back(w);
  BuiltDatabase out;
  BuildDatabase(s, FlatGrid(0), {}, out);
  const NavaidTables& nav = out.Db.Navaids;
  ASSERT_EQ(nav.MaxIntersectionIndex, 40000);
  EXPECT_EQ(out.LeftOut, 0);
  EXPECT_EQ(nav.Intersections[0].Ident.Trimmed(), "F0000");
  EXPECT_EQ(nav.Intersections[39998].Ident.Trimmed(), "F9c3e");  // F9c3f and F9c40, last by ident, have none
  EXPECT_EQ(nav.Intersections[39999].Ident.Trimmed(), "ZZZZZ");
  EXPECT_EQ(nav.Intersections[40000].Ident.Trimmed(), "ZZZZY");
  for (std::size_t i = 1; i < kIntersectionSlots; ++i)
    ASSERT_LT(nav.Intersections[i - 1].Lat, nav.Intersections[i].Lat) << i;
  ASSERT_EQ(nav.VictorAirways.size(), 1u);
  EXPECT_EQ(nav.VictorAirways[0].FromIndex, 40000);
  EXPECT_EQ(nav.VictorAirways[0].ToIndex, 39999);
}

TEST(Mapping, AirwaysOfThe1100LayoutResolveTheirEnds) {
  XPlaneSources s;
  s.Fixes.push_back({50.1, 8.2, "ABMAL", "ED", false});
  s.Navaids.push_back({kVor, 50.05, 8.64, 0, 11420, 130, 1.0, "FFM", "", "ED", "", "FRANKFURT VOR"});
  SrcAirway w;
  w.From = {"ABMAL", "ED", 11, false, 0, 0};
  w.To = {"FFM", "ED", 3, false, 0, 0};
  w.Name = "T161";
  s.Airways.push_back(w);
  w.To = {"NOWHR", "ED", 11, false, 0, 0};
  s.Airways.push_back(w);
  BuiltDatabase out;
  BuildDatabase(s, FlatGrid(0), {}, out);
  ASSERT_EQ(out.Db.Navaids.VictorAirways.size(), 1u);
  EXPECT_EQ(out.Db.Navaids.Intersections[1].Country.Str(), "ED");
  EXPECT_EQ(out.LeftOut, 1);
  EXPECT_EQ(out.Notes[0], "airway T161 ABMAL-NOWHR: an end is neither a fix nor a navaid of the sources");
}

TEST(Mapping, NamesAreKeptInTheEightBitCodePage) {
  XPlaneSources s;
  SrcAirport utf8;
  utf8.Icao = "LSZH";
  utf8.Name = "Z\xC3\xBCrich";  // UTF-8, as newer files hold it
  utf8.City = "Z\xC3\xBCrich";
  utf8.HasTower = true;
  SrcAirport latin = utf8;
  latin.Icao = "LSZB";
  latin.Name = "Bern-Belp \xFC";  // already 8-bit, as older files hold it
  s.Airports = {utf8, latin};
  BuiltDatabase out;
  BuildDatabase(s, FlatGrid(0), {}, out);
  ASSERT_EQ(out.Db.Airports.Airports.size(), 2u);
  EXPECT_EQ(out.Db.Airports.Airports[0].Name.Str(), "Bern-Belp \xFC");
  EXPECT_EQ(out.Db.Airports.Airports[1].Name.Str(), "Z\xFCrich");
  EXPECT_EQ(out.Db.Airports.Airports[1].City, "Z\xFCrich");
  EXPECT_EQ(out.Db.Airports.Airports[1].Country, "Switzerland");
  ASSERT_EQ(out.Db.Airports.Cities.size(), 1u);
  EXPECT_EQ(out.Db.Airports.Cities[0].Name, "Z\xFCrich");
}

TEST(Mapping, CircleOfFiveMiles) {
  auto pts = CirclePoints(50.0, 8.0, 5.0);
  ASSERT_EQ(pts.size(), 36u);
  for (const ShapePoint& p : pts) EXPECT_NEAR(DistanceNm(50.0, 8.0, p.Lat, p.Lon), 5.0, 0.02);
}

}  // namespace
}  // namespace orv::dbm
