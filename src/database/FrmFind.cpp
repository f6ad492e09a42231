#include "database/FrmFind.h"

#include <array>

#include "core/Runtime.h"

namespace orv {

namespace {

constexpr std::array<std::string_view, kFindKindCount> kEmptyTexts = {
    "No Airport found", "No VOR found", "No NDB found", "No ILS found", "No intersection found",
    "No GPS Fix found", "",  // a victor search that finds nothing leaves the list empty
    "No jet airway found",
};

constexpr std::array<std::string_view, kFindKindCount> kKindNames = {"airport", "vor", "ndb",    "ils",
                                                                     "int",     "fix", "victor", "jet"};

char UpperLetter(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

// Whether upperFind occurs in text once text is upper-cased the way UCase
// does it. The scan compares in place so that a search over a world-sized
// array copies nothing but the lines it lists.
bool ContainsUpperCased(std::string_view text, std::string_view upperFind) {
  if (upperFind.empty()) return true;
  if (upperFind.size() > text.size()) return false;
  const std::size_t last = text.size() - upperFind.size();
  for (std::size_t i = 0; i <= last; ++i) {
    std::size_t j = 0;
    while (j < upperFind.size() && UpperLetter(text[i + j]) == upperFind[j]) ++j;
    if (j == upperFind.size()) return true;
  }
  return false;
}

// The search state of one scan: the prepared text and the result being filled.
class Scan {
public:
  Scan(std::string_view text, FindResult& out) : find_(UCase(TrimView(text))), out_(out) {}

  bool Matches(std::string_view ident, std::string_view name) const {
    return ContainsUpperCased(TrimView(ident), find_) || ContainsUpperCased(TrimView(name), find_);
  }
  bool Matches(std::string_view name) const { return ContainsUpperCased(TrimView(name), find_); }

  void Add(std::string_view ident, std::string_view name, const FoundObject& object) {
    std::string line;
    line.reserve(ident.size() + 2 + name.size());
    line.append(ident).append("  ").append(name);
    out_.Lines.push_back(std::move(line));
    out_.Objects.push_back(object);
  }
  void AddLine(std::string line, const FoundObject& object) {
    out_.Lines.push_back(std::move(line));
    out_.Objects.push_back(object);
  }

private:
  std::string find_;
  FindResult& out_;
};

FoundObject At(HiliteKind kind, int32_t index, float lat, float lon, int32_t subIndex = -1) {
  FoundObject o;
  o.Kind = kind;
  o.Index = index;
  o.SubIndex = subIndex;
  o.Lat = lat;
  o.Lon = lon;
  return o;
}

void FindAirports(const AirportTables& tables, Scan& scan) {
  const auto& airports = tables.Airports;
  for (std::size_t i = 0; i < airports.size(); ++i) {
    const AirportRec& a = airports[i];
    if (!IsAirportSlotUsed(a)) continue;
    if (scan.Matches(a.Icao.Trimmed(), a.Name.Trimmed()))
      scan.Add(a.Icao.Trimmed(), a.Name.Trimmed(), At(kHiliteAirport, static_cast<int32_t>(i), a.Lat, a.Lon));
  }
}

void FindIls(const AirportTables& tables, Scan& scan) {
  const auto& airports = tables.Airports;
  for (std::size_t i = 0; i < airports.size(); ++i) {
    const AirportRec& a = airports[i];
    for (std::size_t k = 0; k < a.Ils.size(); ++k) {
      const IlsRec& ils = a.Ils[k];
      if (!scan.Matches(ils.Ident.Trimmed(), ils.Name.Trimmed())) continue;
      // The runway the link pass tied the ILS to shows where it is; without
      // one the airport's own position stands in.
      float lat = a.Lat, lon = a.Lon;
      if (ils.RunwayIndex >= 0 && ils.RunwayIndex < a.RunwayCount()) {
        lat = a.Runways[static_cast<std::size_t>(ils.RunwayIndex)].Lat;
        lon = a.Runways[static_cast<std::size_t>(ils.RunwayIndex)].Lon;
      }
      scan.Add(ils.Ident.Trimmed(), ils.Name.Trimmed(),
               At(kHiliteIls, static_cast<int32_t>(i), lat, lon, static_cast<int32_t>(k)));
    }
  }
}

template <typename Rec>
void FindPoints(const std::vector<Rec>& records, HiliteKind kind, Scan& scan) {
  for (std::size_t i = 0; i < records.size(); ++i) {
    const Rec& r = records[i];
    if (scan.Matches(r.Ident.Trimmed(), r.Name.Trimmed()))
      scan.Add(r.Ident.Trimmed(), r.Name.Trimmed(), At(kind, static_cast<int32_t>(i), r.Lat, r.Lon));
  }
}

void FindIntersections(const NavaidTables& tables, Scan& scan) {
  const auto& list = tables.Intersections;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const IntersectionRec& r = list[i];
    if (r.Ident.IsEmptySlot()) continue;  // a slot no record filled
    if (scan.Matches(r.Ident.Trimmed(), r.Name.Trimmed()))
      scan.Add(r.Ident.Trimmed(), r.Name.Trimmed(), At(kHiliteIntersection, static_cast<int32_t>(i), r.Lat, r.Lon));
  }
}

void FindAirways(const NavaidTables& tables, const std::vector<AirwayRec>& airways, HiliteKind kind, Scan& scan) {
  const auto& points = tables.Intersections;
  // An end index comes from the file unchecked; one outside the array (or on
  // a slot no record filled) has no ident and no position.
  auto end = [&](int32_t index) -> const IntersectionRec* {
    if (index < 0 || static_cast<std::size_t>(index) >= points.size()) return nullptr;
    const IntersectionRec& r = points[static_cast<std::size_t>(index)];
    return r.Ident.IsEmptySlot() ? nullptr : &r;
  };
  for (std::size_t i = 0; i < airways.size(); ++i) {
    const AirwayRec& w = airways[i];
    if (!scan.Matches(w.Name.Trimmed())) continue;
    const IntersectionRec* from = end(w.FromIndex);
    const IntersectionRec* to = end(w.ToIndex);
    std::string line(w.Name.Trimmed());
    line += "  ";
    line += from ? from->Ident.Trimmed() : std::string_view("?");
    line += " << ";
    line += to ? to->Ident.Trimmed() : std::string_view("?");
    const IntersectionRec* at = from ? from : to;
    const int32_t index = static_cast<int32_t>(i);
    scan.AddLine(std::move(line), at ? At(kind, index, at->Lat, at->Lon) : At(kind, index, kNoLatitude, 0));
  }
}

}  // namespace

std::string_view EmptyFindText(FindKind kind) { return kEmptyTexts[static_cast<std::size_t>(kind)]; }

std::optional<FindKind> FindKindFromName(std::string_view name) {
  std::string lower = LCase(name);
  for (std::size_t i = 0; i < kKindNames.size(); ++i)
    if (lower == kKindNames[i]) return static_cast<FindKind>(i);
  return std::nullopt;
}

FindResult FindObjects(const NavDatabase& db, FindKind kind, std::string_view text) {
  FindResult result;
  Scan scan(text, result);
  switch (kind) {
    case FindKind::Airport: FindAirports(db.Airports, scan); break;
    case FindKind::Vor: FindPoints(db.Navaids.Vors, kHiliteVor, scan); break;
    case FindKind::Ndb: FindPoints(db.Navaids.Ndbs, kHiliteNdb, scan); break;
    case FindKind::Ils: FindIls(db.Airports, scan); break;
    case FindKind::Intersection: FindIntersections(db.Navaids, scan); break;
    case FindKind::Fix: FindPoints(db.Navaids.Fixes, kHiliteFix, scan); break;
    case FindKind::Victor: FindAirways(db.Navaids, db.Navaids.VictorAirways, kHiliteVictor, scan); break;
    case FindKind::Jet: FindAirways(db.Navaids, db.Navaids.JetAirways, kHiliteJet, scan); break;
  }
  if (result.Lines.empty() && !EmptyFindText(kind).empty()) result.Lines.emplace_back(EmptyFindText(kind));
  return result;
}

void FrmFind::FormLoad() {
  Visible = true;
  lstFind.clear();
  objects_.clear();
  lstFindIndex = -1;
}

void FrmFind::CmdFindClick() {
  FindResult result = FindObjects(db_, Option, txtFind);
  lstFind = std::move(result.Lines);
  objects_ = std::move(result.Objects);
  lstFindIndex = -1;
}

std::optional<FoundObject> FrmFind::LstFindClick(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= lstFind.size()) return std::nullopt;
  lstFindIndex = index;
  if (static_cast<std::size_t>(index) >= objects_.size()) return std::nullopt;
  return objects_[static_cast<std::size_t>(index)];
}

}  // namespace orv
