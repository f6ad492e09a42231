// The oceanic organised tracks: the North Atlantic message and the Pacific
// TDM messages of Oakland and Fukuoka, read from the pages the user saves in
// the database folder, and a track taken over as the flight plan.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"
#include "core/Ui.h"
#include "planning/FlightPlan.h"

namespace orv {

struct NavDatabase;
struct ViewState;
class PlanEditor;

struct TrackRec {
  std::string Name;          // "Track A", "PTrack 7"
  float FirstLat = 0;
  float FirstLon = 0;
  std::string EastLevels;
  std::string WestLevels;
  std::string EurRoute;
  std::string NarRoute;
  int32_t ValidFrom = 0;
  int32_t ValidTo = 0;
  int16_t PointCount = 0;
  std::vector<WaypointRec> Points;
};

inline constexpr int kMaxTracks = 50;

struct TrackTable {
  std::vector<TrackRec> Tracks;
  std::string TrackUpdateText;   // 20 characters of the message's date
  bool NoData = false;           // "NO DATA IS ACTIVE"
  // True when a track lies eastbound: its east levels are the ones in use.
  static bool Eastbound(const TrackRec& t);
};

// The named waypoints a track may hold, found by exact trimmed ident.
class TrackFixFinder {
public:
  TrackFixFinder(const NavDatabase* db, bool withFixes);
  // Fills Lat, Lon, Kind, Code and MagVar; false for an unknown name.
  bool Find(std::string_view ident, WaypointRec& wp) const;
  double MagVarAt(double lat, double lon) const;

private:
  const NavDatabase* db_;
  std::vector<std::pair<std::string, int32_t>> names_;   // index >= 0 intersection, < 0 fix (-1 - i)
};

// The parsers on a page's text. False when the reading met a fault (the 51st
// track); the tracks read so far stay in the table.
bool ParseNatTrackText(std::string_view text, const TrackFixFinder& fixes, TrackTable& out);
bool ParsePacificTrackText(std::string_view text, const TrackFixFinder& fixes, TrackTable& out);

// ParseNatTracks / ParsePacificTracks on the folder's saved pages, with the
// .old fallback, the messages and the question to use the previous data.
// False when the menu entry is to be unchecked.
bool ParseNatTracks(const AppFolder& app, const NavDatabase* db, Ui& ui, TrackTable& out);
bool ParsePacificTracks(const AppFolder& app, const NavDatabase* db, Ui& ui, TrackTable& out);

// The track whose waypoint lies within radius units of the click (X and Y
// apart), first in table order; -1 for none.
int FindTrackAt(const TrackTable& table, const ViewState& view, double x, double y, double radius = 100);

// Inserts the track's waypoints behind row `afterRow` through the plan's
// InsertWaypoint. Returns the number inserted.
int InsertTrackIntoPlan(const TrackRec& track, PlanEditor& editor, int afterRow);

// The hover box's line of a track (row 10).
std::string TrackHoverLine(const TrackRec& track);

}  // namespace orv
