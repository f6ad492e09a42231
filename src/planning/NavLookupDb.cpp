#include "planning/NavLookupDb.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "core/Runtime.h"

namespace orv {

namespace {

bool InRange(int index, std::size_t size) { return index >= 0 && static_cast<std::size_t>(index) < size; }

std::string Key(std::string_view ident) { return UCase(TrimView(ident)); }

}  // namespace

FixedStr<1> IntersectionNetType(const IntersectionRec& rec) {
  if (rec.LowCount > 0 && rec.HighCount > 0) return FixedStr<1>("X");
  if (rec.LowCount > 0) return FixedStr<1>("V");
  if (rec.HighCount > 0) return FixedStr<1>("J");
  return FixedStr<1>();
}

namespace {

// The row of record `index` of a table: its kind (blank for an airport), its
// code and name, position, and the frequency and variation where the record
// has them; an index outside the table gives an empty row.
template <typename Rec>
WaypointRec RowOf(const std::vector<Rec>& table, int index, std::string_view kind) {
  WaypointRec w;
  if (!InRange(index, table.size())) return w;
  const Rec& r = table[static_cast<std::size_t>(index)];
  if (!kind.empty()) w.Kind.Assign(kind);
  if constexpr (requires { r.Icao; })
    w.Code.Assign(r.Icao.Trimmed());
  else
    w.Code.Assign(r.Ident.Trimmed());
  w.Name.Assign(r.Name.Trimmed());
  if constexpr (requires { r.Frequency; }) w.Frequency = r.Frequency;
  w.Lat = r.Lat;
  w.Lon = r.Lon;
  if constexpr (requires { r.MagVar; }) w.MagVar = r.MagVar;
  w.DbIndex = index;
  return w;
}

}  // namespace

WaypointRec VorRow(const NavaidTables& navaids, int index) { return RowOf(navaids.Vors, index, "VOR"); }

WaypointRec NdbRow(const NavaidTables& navaids, int index) { return RowOf(navaids.Ndbs, index, "NDB"); }

WaypointRec FixRow(const NavaidTables& navaids, int index) { return RowOf(navaids.Fixes, index, "Fix"); }

WaypointRec IntersectionRow(const NavaidTables& navaids, int index) {
  WaypointRec w = RowOf(navaids.Intersections, index, "Int");
  if (InRange(index, navaids.Intersections.size()))
    w.NetType = IntersectionNetType(navaids.Intersections[static_cast<std::size_t>(index)]);
  return w;
}

WaypointRec UserWaypointRow(const std::vector<UserWaypointRec>& waypoints, int index) {
  return RowOf(waypoints, index, "Uwp");
}

WaypointRec AirportRow(const AirportTables& airports, int index) {
  WaypointRec w = RowOf(airports.Airports, index, "");
  if (InRange(index, airports.Airports.size())) w.Origin = kOriginAirport;
  return w;
}

// ---------------------------------------------------------------- the index

NavLookupDb::NavLookupDb(const NavDatabase& db, std::span<const std::string> parkingNames)
    : db_(db), parkingNames_(parkingNames) {
  Rebuild();
}

void NavLookupDb::Rebuild() {
  const NavaidTables& n = db_.Navaids;
  idents_.clear();
  idents_.reserve(n.Vors.size() + n.Ndbs.size() + n.Fixes.size() + n.Intersections.size() +
                  db_.UserWaypoints.size());
  auto add = [&](std::string_view ident, ObjectKind kind, std::size_t index) {
    std::string key = Key(ident);
    if (!key.empty()) idents_.push_back({std::move(key), kind, static_cast<int32_t>(index)});
  };
  for (std::size_t i = 0; i < n.Vors.size(); ++i) add(n.Vors[i].Ident.Trimmed(), ObjectKind::Vor, i);
  for (std::size_t i = 0; i < n.Ndbs.size(); ++i) add(n.Ndbs[i].Ident.Trimmed(), ObjectKind::Ndb, i);
  for (std::size_t i = 0; i < n.Fixes.size(); ++i) add(n.Fixes[i].Ident.Trimmed(), ObjectKind::Fix, i);
  for (std::size_t i = 0; i < n.Intersections.size(); ++i) {
    // Slots no record filled hold NUL texts, which Trimmed() cuts to nothing.
    add(n.Intersections[i].Ident.Trimmed(), ObjectKind::Intersection, i);
  }
  for (std::size_t i = 0; i < db_.UserWaypoints.size(); ++i)
    add(db_.UserWaypoints[i].Ident.Trimmed(), ObjectKind::User, i);
  std::sort(idents_.begin(), idents_.end(), [](const IdentEntry& a, const IdentEntry& b) {
    return std::tie(a.Ident, a.Kind, a.Index) < std::tie(b.Ident, b.Kind, b.Index);
  });
}

void NavLookupDb::FindByIdent(std::string_view ident, std::vector<WaypointRec>& out) const {
  std::string key = Key(ident);
  auto first = std::lower_bound(idents_.begin(), idents_.end(), key,
                                [](const IdentEntry& e, const std::string& k) { return e.Ident < k; });
  for (auto it = first; it != idents_.end() && it->Ident == key; ++it) {
    switch (it->Kind) {
      case ObjectKind::Vor: out.push_back(VorRow(db_.Navaids, it->Index)); break;
      case ObjectKind::Ndb: out.push_back(NdbRow(db_.Navaids, it->Index)); break;
      case ObjectKind::Fix: out.push_back(FixRow(db_.Navaids, it->Index)); break;
      case ObjectKind::Intersection: out.push_back(IntersectionRow(db_.Navaids, it->Index)); break;
      case ObjectKind::User: out.push_back(UserWaypointRow(db_.UserWaypoints, it->Index)); break;
    }
  }
}

int NavLookupDb::FindAirport(std::string_view icao) const { return FindAirportByIcao(db_.Airports, icao); }

int NavLookupDb::FindAirportLast(std::string_view icao) const {
  const std::string_view code = TrimView(icao);
  if (code.empty()) return -1;
  const auto& airports = db_.Airports.Airports;
  for (std::size_t i = airports.size(); i-- > 0;)
    if (SameTextNoCase(airports[i].Icao.Trimmed(), code)) return static_cast<int>(i);
  return -1;
}

// ---------------------------------------------------------------- airports

const AirportRec* NavLookupDb::AirportAt(int airport) const {
  const auto& list = db_.Airports.Airports;
  if (!InRange(airport, list.size())) return nullptr;
  const AirportRec& a = list[static_cast<std::size_t>(airport)];
  return IsAirportSlotUsed(a) ? &a : nullptr;
}

int NavLookupDb::AirportCount() const { return static_cast<int>(db_.Airports.Airports.size()); }

bool NavLookupDb::AirportPosition(int airport, float& lat, float& lon) const {
  const AirportRec* a = AirportAt(airport);
  if (!a) return false;
  lat = a->Lat;
  lon = a->Lon;
  return true;
}

std::string NavLookupDb::AirportIcao(int airport) const {
  const AirportRec* a = AirportAt(airport);
  return a ? a->Icao.Str() : std::string();
}

std::string NavLookupDb::AirportName(int airport) const {
  const AirportRec* a = AirportAt(airport);
  return a ? a->Name.Str() : std::string();
}

double NavLookupDb::AirportElevation(int airport) const {
  const AirportRec* a = AirportAt(airport);
  return a ? a->Elevation : 0;
}

int NavLookupDb::RunwayCount(int airport) const {
  const AirportRec* a = AirportAt(airport);
  return a ? a->RunwayCount() : 0;
}

int32_t NavLookupDb::RunwayLength(int airport, int runway) const {
  const AirportRec* a = AirportAt(airport);
  if (!a || !InRange(runway, a->Runways.size())) return 0;
  return a->Runways[static_cast<std::size_t>(runway)].LengthFeet;
}

RunwayInfo NavLookupDb::Runway(int airport, int runway) const {
  RunwayInfo info;
  const AirportRec* a = AirportAt(airport);
  if (!a || !InRange(runway, a->Runways.size())) return info;
  const RunwayRec& r = a->Runways[static_cast<std::size_t>(runway)];
  info.LowEndText = RunwayListName(r.LowEnd.View());
  info.HighEndText = RunwayListName(r.HighEnd.View());
  info.Lat = r.Lat;
  info.Lon = r.Lon;
  info.TrueHeading = r.TrueHeading;
  info.LengthFeet = r.LengthFeet;
  return info;
}

int NavLookupDb::ParkingCount(int airport) const {
  const AirportRec* a = AirportAt(airport);
  return a ? a->ParkingCount() : 0;
}

ParkingInfo NavLookupDb::Parking(int airport, int parking) const {
  ParkingInfo info;
  const AirportRec* a = AirportAt(airport);
  if (!a || !InRange(parking, a->Parking.size())) return info;
  const ParkingRec& p = a->Parking[static_cast<std::size_t>(parking)];
  if (InRange(p.NameCode, parkingNames_.size())) info.Name = parkingNames_[static_cast<std::size_t>(p.NameCode)];
  info.Number = p.Number;
  info.Lat = p.Lat;
  info.Lon = p.Lon;
  return info;
}

}  // namespace orv
