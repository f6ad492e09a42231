#include "planning/RouteCreation.h"

#include <algorithm>
#include <cmath>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/Aircraft.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteSearchDetail.h"

namespace orv {

namespace {

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
    constexpr double kRad = kPiExact / 180;
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

// A navaid of the Navaid Plan's sector with its distance and course from
// the current point.
struct SectorCandidate {
  WaypointRec Rec;
  double Dist;
  double Course;
};

// The candidate the Navaid Plan flies to: the last one at least as far as
// the first found, unless the one closest to the heading (by the plain
// difference, without wrap-round) lies between 30 and 150 NM away.
std::size_t ChooseSectorCandidate(const std::vector<SectorCandidate>& table, double heading) {
  std::size_t chosen = 0;
  const double first = table[0].Dist;
  for (std::size_t i = 0; i < table.size(); ++i)
    if (table[i].Dist >= first) chosen = i;
  std::size_t aligned = 0;
  for (std::size_t j = 0; j < table.size(); ++j)
    if (std::fabs(table[j].Course - heading) <= std::fabs(table[aligned].Course - heading)) aligned = j;
  if (table[aligned].Dist > 30 && table[aligned].Dist < 150) chosen = aligned;
  return chosen;
}

}  // namespace

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

  constexpr std::size_t kMaxCandidates = 100;
  std::vector<SectorCandidate> table;
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
      const WaypointRec& pick = table[ChooseSectorCandidate(table, heading)].Rec;
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
