// A world-sized navigation database for load, render and routing benchmarks
// and for tests that need realistic volume: every file of the application
// folder, built with the database's own writers from a seeded generator of its
// own, so that the same options always give the same bytes.
//
// At Scale 1 it holds 40,000 airports (60,000 runways, 100,000 frequencies,
// 150,000 parking positions, 10,000 ILS), 12,000 VORs, 10,000 NDBs, 60,000 GPS
// fixes, 40,000 intersections (indexes 1 to 40000, stored south to north)
// with 150,000 airway links, 100,000 airway segments (60,000 victor, 40,000
// jet), 15,000 airspaces with 2,000,000 points, 4,000 world polygons with
// 1,000,000 coastline points, 2,000 world lines with 200,000 points and 5,000
// MSA cells. Scale multiplies every count; the fixed-range arrays stop at their
// bounds (intersections at 40000, airspaces at 15001, world polygons at 15201),
// and once the intersections stop, the airway links grow more slowly than the
// segments. WorldCounts gives the exact figures for any options; the world
// built holds exactly those. Building Scale 1 in memory takes about 2 s.
//
// Placement is real-world-ish: airports and navaids are dense over Europe and
// the United States and sparse over the other continents. The airway graph:
//  - victor (low) airways join every intersection of the continents in one
//    component, jet (high) airways a quarter of them in another; both are
//    two-way along a backbone through each continent, joined across the oceans
//    by gateway legs, with one-way legs between near neighbours on top;
//  - Hawaii, the Azores and New Zealand each form a small component of their
//    own, reachable from nowhere else;
//  - Flag1 of an intersection is its net: "V" victor only, "J" jet only, "X" both.
// EDDF is a hand-made Frankfurt: four runways with six ILS, eight frequencies,
// sixty parking positions, taxiways, ground polygons, markers, a control zone,
// the FFM VOR and stored SIDs and STARs; it is the only airport with taxiways
// and ground polygons.
//
// Meaning given to the fields the files store unread: a VOR's and an NDB's
// Value is its range in NM; a parking position's Value its heading; an ILS's
// Values are threshold latitude, longitude, course, frequency, glide slope,
// range; an airway segment's Value its length in NM; an MSA cell's Values are
// North, South, East, West (32-bit floats) and the altitude in feet (32-bit
// integer), its Label the altitude in hundreds of feet. World polygons are of
// Kind 2 (land); world lines of Kind 1 (rivers) or 0 (borders). A ground
// polygon starts with an "A" record, goes on with "L" records and the last one
// is closed by an "E" record.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "database/NavDatabase.h"

namespace orv::test {

struct WorldFixtureOptions {
  uint32_t Seed = 1;
  double Scale = 1.0;
};

// Fills every array of db as the start-up would load the world folder (the
// files are built in memory and read by the database's readers, so db equals
// what RunStartup loads from WriteWorldFolder's folder).
void BuildWorldDatabase(NavDatabase& db, const WorldFixtureOptions& options = {});

// Writes a complete application folder the start-up loads: the database files
// under "database\FS09\", "database\" and "map\", both variation grids,
// userwp.udb, userObj.txt, sid.orv, star.orv, WxStation.txt, AIRAC.INI and
// "user\aircraft.orv". No orv.ini: the defaults stand. False when a file could
// not be written.
bool WriteWorldFolder(const std::filesystem::path& root, const WorldFixtureOptions& options = {});

// The record counts the fixture builds for the options.
struct WorldCountsRec {
  int64_t Regions = 0, Countries = 0, States = 0, Cities = 0;
  int64_t Airports = 0, Runways = 0, Frequencies = 0, Parking = 0, Ils = 0;
  int64_t Vors = 0, Ndbs = 0, Fixes = 0;
  int64_t Intersections = 0, AirwayLinks = 0, VictorAirways = 0, JetAirways = 0;
  int64_t Airspaces = 0, AirspacePoints = 0;
  int64_t MsaCells = 0, TaxiSegments = 0, GroundPolygons = 0, Markers = 0;
  int64_t WorldPolygons = 0, WorldPolygonPoints = 0, WorldLines = 0, WorldLinePoints = 0;
  int64_t UserWaypoints = 0, UserObjects = 0;
};
WorldCountsRec WorldCounts(const WorldFixtureOptions& options = {});

// One file of the folder: its constant ("\database\vor.orv") and its bytes.
struct WorldFile {
  std::string Constant;
  std::string Bytes;
};
// Every file WriteWorldFolder writes, in the order the start-up reads them.
std::vector<WorldFile> BuildWorldFiles(const WorldFixtureOptions& options = {});

}  // namespace orv::test
