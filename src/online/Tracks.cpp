#include "online/Tracks.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "online/LineScan.h"
#include "database/NavDatabase.h"
#include "map/Viewport.h"
#include "planning/FlightPlan.h"

namespace orv {

namespace {

bool Has(std::string_view text, std::string_view find) { return text.find(find) != std::string_view::npos; }
bool StartsWith(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t nl = LineEnd(text, pos);
    std::string_view line = text.substr(pos, nl == std::string_view::npos ? std::string_view::npos : nl - pos);
    if (nl != std::string_view::npos && text[nl] == '\r' && nl + 1 < text.size() && text[nl + 1] == '\n') ++nl;
    pos = nl == std::string_view::npos ? text.size() : nl + 1;
    lines.push_back(TrimView(line));
  }
  return lines;
}

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  size_t pos = 0;
  while (pos < line.size()) {
    size_t end = line.find(' ', pos);
    if (end == std::string_view::npos) end = line.size();
    if (end > pos) words.push_back(line.substr(pos, end - pos));
    pos = end + 1;
  }
  return words;
}

void AddPoint(TrackRec& t, WaypointRec wp) {
  wp.Row = static_cast<int16_t>(t.Points.size() + 1);
  wp.Origin = kOriginEnroute;
  t.Points.push_back(wp);
  t.PointCount = static_cast<int16_t>(t.Points.size());
}

// A coordinate waypoint at a position in degrees.
WaypointRec PositionPoint(std::string_view word, double lat, double lon, const TrackFixFinder& fixes) {
  WaypointRec wp;
  wp.Code.Assign(std::string(word));
  wp.Name.Assign(std::string(word));
  wp.Kind.Assign("Uwp");
  wp.Lat = CSng(lat);
  wp.Lon = CSng(lon);
  wp.MagVar = CSng(fixes.MagVarAt(lat, lon));
  return wp;
}

void Finish(TrackRec& t) {
  if (!t.Points.empty()) {
    t.FirstLat = t.Points.front().Lat;
    t.FirstLon = t.Points.front().Lon;
  }
}

// The Pacific position words: "40N160E", "4030N16015W", "N40E160" are
// accepted. Degrees are the leading two (latitude) or three (longitude)
// digits, minutes the two that follow.
bool PacificPosition(std::string_view w, double& lat, double& lon) {
  size_t n = w.find_first_of("NS");
  size_t e = w.find_first_of("EW", n == std::string_view::npos ? 0 : n);
  if (n == std::string_view::npos || e == std::string_view::npos || e != w.size() - 1 || n == 0) return false;
  std::string_view a = w.substr(0, n), b = w.substr(n + 1, e - n - 1);
  auto digits = [](std::string_view s) {
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
  };
  if (!digits(a) || !digits(b)) return false;
  auto split = [](std::string_view s, size_t degDigits) {
    if (s.size() <= degDigits) return Val(s);
    return Val(s.substr(0, s.size() - 2)) + Val(s.substr(s.size() - 2)) / 60.0;
  };
  lat = split(a, 2);
  lon = split(b, 3);
  if (w[n] == 'S') lat = -lat;
  if (w[e] == 'W') lon = -lon;
  return lat <= 90 && lon <= 180;
}

void PacificWord(std::string_view w, TrackRec& t, const TrackFixFinder& fixes) {
  if (w == "FLEX" || w == "ROUTE" || w == ":") return;
  if (!w.empty() && w.back() == '.') w.remove_suffix(1);
  if (w.empty()) return;
  double lat, lon;
  if (PacificPosition(w, lat, lon)) {
    AddPoint(t, PositionPoint(w, lat, lon, fixes));
    return;
  }
  WaypointRec wp;
  if (fixes.Find(w, wp)) AddPoint(t, wp);
}

void PacificDirection(TrackRec& t) {
  bool east = true;
  if (t.Points.size() >= 2) {
    double d = t.Points.back().Lon - t.Points.front().Lon;
    if (d > 180) d -= 360;
    if (d < -180) d += 360;
    east = d > 0;
  }
  t.EastLevels = east ? "East" : "Nil";
  t.WestLevels = east ? "Nil" : "West";
}

bool CopyOld(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code ec;
  return std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
}

bool ParseSavedPage(const AppFolder& app, const NavDatabase* db, Ui& ui, TrackTable& out, bool nat) {
  std::filesystem::path htm = app.Resolve(nat ? "\\Database\\North Atlantic Tracks.htm"
                                              : "\\Database\\United States NOTAM Office.htm");
  std::filesystem::path old = app.Resolve(nat ? "\\Database\\North Atlantic Tracks.old"
                                              : "\\Database\\United States NOTAM Office.old");
  std::error_code ec;
  if (!std::filesystem::exists(htm, ec)) {
    if (std::filesystem::exists(old, ec)) {
      CopyOld(old, htm);
    } else {
      ui.MsgBox(nat ? "No NATrack File available! Download a new NATrack File!"
                    : "No Pacot File available! Download a new Pacot File!");
      return false;
    }
  }
  TrackFixFinder fixes(db, !nat);
  for (int attempt = 0; attempt < 2; ++attempt) {
    std::string text = ReadWholeText(htm).value_or(std::string());
    TrackTable table;
    bool ok = nat ? ParseNatTrackText(text, fixes, table) : ParsePacificTrackText(text, fixes, table);
    if (ok) {
      out = std::move(table);
      return true;
    }
    std::string msg = nat ? "Error reading in NATrack File! Download the file again!"
                          : "Error reading in Pacot File! Download the file again!";
    if (attempt == 0 && std::filesystem::exists(old, ec)) {
      if (ui.AskYesNo(msg + " Do You want to use previous data?")) {
        CopyOld(old, htm);
        continue;
      }
    } else {
      ui.MsgBox(msg);
    }
    out = std::move(table);   // what was read stays
    return !out.Tracks.empty();
  }
  return false;
}

}  // namespace

bool TrackTable::Eastbound(const TrackRec& t) { return !Has(t.EastLevels, "Nil"); }

// ------------------------------------------------------------ fixes

TrackFixFinder::TrackFixFinder(const NavDatabase* db, bool withFixes) : db_(db) {
  if (!db) return;
  const auto& ints = db->Navaids.Intersections;
  names_.reserve(ints.size() + (withFixes ? db->Navaids.Fixes.size() : 0));
  for (size_t i = 0; i < ints.size(); ++i) {
    std::string_view id = ints[i].Ident.Trimmed();
    if (!id.empty()) names_.emplace_back(Trim(id), static_cast<int32_t>(i));
  }
  if (withFixes) {
    const auto& fx = db->Navaids.Fixes;
    for (size_t i = 0; i < fx.size(); ++i) {
      std::string_view id = fx[i].Ident.Trimmed();
      if (!id.empty()) names_.emplace_back(Trim(id), -1 - static_cast<int32_t>(i));
    }
  }
  std::stable_sort(names_.begin(), names_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
}

bool TrackFixFinder::Find(std::string_view ident, WaypointRec& wp) const {
  auto it = std::lower_bound(names_.begin(), names_.end(), ident,
                             [](const auto& e, std::string_view k) { return std::string_view(e.first) < k; });
  if (it == names_.end() || it->first != ident) return false;
  wp = WaypointRec{};
  wp.Code.Assign(std::string(ident));
  if (it->second >= 0) {
    const IntersectionRec& r = db_->Navaids.Intersections[static_cast<size_t>(it->second)];
    wp.Kind.Assign("Int");
    wp.Name.Assign(r.Name.Str());
    wp.Lat = r.Lat;
    wp.Lon = r.Lon;
    wp.MagVar = r.MagVar;
    wp.DbIndex = it->second;
  } else {
    const FixRec& r = db_->Navaids.Fixes[static_cast<size_t>(-1 - it->second)];
    wp.Kind.Assign("Fix");
    wp.Name.Assign(r.Name.Str());
    wp.Lat = r.Lat;
    wp.Lon = r.Lon;
    wp.MagVar = r.MagVar;
    wp.DbIndex = -1 - it->second;
  }
  return true;
}

double TrackFixFinder::MagVarAt(double lat, double lon) const {
  if (!db_ || !db_->MagVar.IsOpen()) return 0;
  return orv::MagVarAt(db_->MagVar, lat, lon);
}

// ------------------------------------------------------------ North Atlantic

bool ParseNatTrackText(std::string_view text, const TrackFixFinder& fixes, TrackTable& out) {
  out = TrackTable{};
  std::vector<std::string_view> lines = Lines(text);
  bool inPart = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string_view line = lines[i];
    if (Has(line, "NO DATA IS ACTIVE")) {
      out.NoData = true;
      return true;
    }
    if (size_t at = line.find("Last updated at"); at != std::string_view::npos)
      out.TrackUpdateText = Mid(line, static_cast<int>(at) + 1 + 16, 20);
    if (StartsWith(line, "PART ONE") || StartsWith(line, "PART TWO")) {
      inPart = true;
      continue;
    }
    if (!inPart) continue;
    if (StartsWith(line, "END") || StartsWith(line, "REMARKS")) break;
    if (line.size() < 2 || line[1] != ' ') continue;
    if (static_cast<int>(out.Tracks.size()) >= kMaxTracks) return false;   // the table's bound
    TrackRec& t = out.Tracks.emplace_back();
    std::vector<std::string_view> words = Words(line);
    t.Name = "Track " + std::string(words.empty() ? std::string_view{} : words[0]);
    for (size_t w = 1; w < words.size(); ++w) {
      std::string_view word = words[w];
      if (size_t slash = word.find('/'); slash != std::string_view::npos) {
        double lat = Val(word.substr(0, slash)), lon = Val(word.substr(slash + 1)) * -1.0;
        if (std::fabs(lat) > 90 || std::fabs(lon) > 180) continue;
        AddPoint(t, PositionPoint(word, lat, lon, fixes));
      } else {
        WaypointRec wp;
        if (fixes.Find(word, wp)) AddPoint(t, wp);
      }
    }
    int left = 4;
    while (left > 0 && i + 1 < lines.size()) {
      std::string_view next = lines[i + 1];
      if (next.empty()) {
        ++i;
        continue;
      }
      std::string head4 = UCase(next.substr(0, 4)), head3 = UCase(next.substr(0, 3));
      std::string* field = head4 == "EAST" ? &t.EastLevels
                           : head4 == "WEST" ? &t.WestLevels
                           : head3 == "EUR"  ? &t.EurRoute
                           : head3 == "NAR"  ? &t.NarRoute
                                             : nullptr;
      if (!field) break;
      *field = ProperCase(next);
      ++i;
      --left;
    }
    std::string_view upd = out.TrackUpdateText;
    t.ValidFrom = CLng(Val(Mid(upd, 11)) * 100);
    t.ValidTo = CLng(Val(Right(upd, 3)) * 100);
    Finish(t);
  }
  return true;
}

// ------------------------------------------------------------ Pacific

bool ParsePacificTrackText(std::string_view text, const TrackFixFinder& fixes, TrackTable& out) {
  out = TrackTable{};
  enum class Block { None, Oakland, Fukuoka } block = Block::None;
  TrackRec* open = nullptr;
  for (std::string_view line : Lines(text)) {
    if (Has(line, "Data") && Has(line, "current")) out.TrackUpdateText = Left(line, 20);
    if (Has(line, "KZOA") && Has(line, "OAKLAND")) {
      block = Block::Oakland;
      open = nullptr;
      continue;
    }
    if (Has(line, "RJJJ") && Has(line, "FUKUOKA")) {
      block = Block::Fukuoka;
      open = nullptr;
      continue;
    }
    if (block == Block::None) continue;
    size_t tdm = line.find("TDM TRK");
    size_t trk = line.find("TRACK ");
    if ((block == Block::Oakland && tdm != std::string_view::npos) ||
        (block == Block::Fukuoka && trk != std::string_view::npos)) {
      if (open) PacificDirection(*open), Finish(*open);
      if (static_cast<int>(out.Tracks.size()) >= kMaxTracks) return false;
      std::vector<std::string_view> words =
          Words(line.substr(block == Block::Oakland ? tdm + 7 : trk + 6));
      open = &out.Tracks.emplace_back();
      std::string_view name = words.empty() ? std::string_view{} : words[0];
      if (!name.empty() && name.back() == '.') name.remove_suffix(1);
      open->Name = "PTrack " + std::string(name);
      if (block == Block::Fukuoka) {
        // The route may follow on the same line.
        for (size_t w = 1; w < words.size(); ++w) PacificWord(words[w], *open, fixes);
        if (!line.empty() && line.back() == '.' && words.size() > 1) open = nullptr;
      }
      continue;
    }
    if (!open) continue;
    if (block == Block::Oakland && StartsWith(line, "RTS")) {
      PacificDirection(*open);
      Finish(*open);
      open = nullptr;
      continue;
    }
    if (block == Block::Fukuoka && (StartsWith(line, "RCTP") || StartsWith(line, "JAPAN"))) {
      PacificDirection(*open);
      Finish(*open);
      open = nullptr;
      continue;
    }
    for (std::string_view w : Words(line)) PacificWord(w, *open, fixes);
    if (block == Block::Fukuoka && !line.empty() && line.back() == '.') {
      PacificDirection(*open);
      Finish(*open);
      open = nullptr;
    }
  }
  if (open) PacificDirection(*open), Finish(*open);
  return true;
}

// ------------------------------------------------------------ files

bool ParseNatTracks(const AppFolder& app, const NavDatabase* db, Ui& ui, TrackTable& out) {
  return ParseSavedPage(app, db, ui, out, true);
}

bool ParsePacificTracks(const AppFolder& app, const NavDatabase* db, Ui& ui, TrackTable& out) {
  return ParseSavedPage(app, db, ui, out, false);
}

// ------------------------------------------------------------ map and plan

int FindTrackAt(const TrackTable& table, const ViewState& view, double x, double y, double radius) {
  for (size_t i = 0; i < table.Tracks.size(); ++i) {
    for (const WaypointRec& wp : table.Tracks[i].Points) {
      double px = MapXFromLon(view, wp.Lon, wp.Lat), py = MapYFromLat(view, wp.Lat);
      if (std::fabs(px - x) < radius && std::fabs(py - y) < radius) return static_cast<int>(i);
    }
  }
  return -1;
}

int InsertTrackIntoPlan(const TrackRec& track, PlanEditor& editor, int afterRow) {
  int inserted = 0;
  for (const WaypointRec& wp : track.Points) {
    bool last = &wp == &track.Points.back();
    if (!editor.InsertWaypoint(afterRow + inserted, wp, last)) break;
    ++inserted;
  }
  return inserted;
}

std::string TrackHoverLine(const TrackRec& track) {
  std::string levels = TrackTable::Eastbound(track) ? track.EastLevels : track.WestLevels;
  return track.Name + " - " + levels;
}

}  // namespace orv
