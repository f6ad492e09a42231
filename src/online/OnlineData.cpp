#include "online/OnlineData.h"

#include <algorithm>
#include <filesystem>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "online/LineScan.h"
#include "database/AirportFile.h"
#include "online/OnlineDetail.h"

namespace orv {

namespace {

bool Has(std::string_view text, std::string_view find) { return text.find(find) != std::string_view::npos; }

// Fields of a colon-separated line, without copies. Fields past the end are empty.
struct Fields {
  std::array<std::string_view, 16> f{};
  size_t count = 0;
  size_t restAt = 0;   // offset of field 15's start: the running start position
  explicit Fields(std::string_view line) {
    size_t start = 0;
    while (count < f.size()) {
      size_t colon = line.find(':', start);
      if (colon == std::string_view::npos || count == f.size() - 1) {
        f[count++] = line.substr(start, colon == std::string_view::npos ? std::string_view::npos : colon - start);
        restAt = start;
        break;
      }
      f[count++] = line.substr(start, colon - start);
      start = colon + 1;
      restAt = start;
    }
  }
  std::string_view operator[](size_t i) const { return i < count ? f[i] : std::string_view{}; }
};

// "24.11.2026-03:36 h" from the digits at fixed places of the UPDATE line.
std::string StampText(std::string_view line) {
  return Mid(line, 16, 2) + "." + Mid(line, 14, 2) + "." + Mid(line, 10, 4) + "-" + Mid(line, 18, 2) + ":" +
         Mid(line, 20, 2) + " h";
}

// Runway and information texts out of an IVAO ATIS, from position `from` on.
// The section mark is the 8-bit one of the network's files.
void ReadAtis(std::string_view line, size_t from, OnlineStationRec& rec) {
  std::string_view rest = line.substr(std::min(from, line.size()));
  size_t landing = rest.find("\xA7Landing");
  size_t takeoff = rest.find("Take-off");
  if (landing != std::string_view::npos && takeoff != std::string_view::npos) {
    size_t end = rest.find("^\xA7", takeoff);
    if (end != std::string_view::npos) {
      size_t a = landing + 1;
      if (takeoff >= a + 2) rec.LandingRunways = std::string(rest.substr(a, takeoff - 2 - a));
      rec.TakeoffRunways = std::string(rest.substr(takeoff, end - takeoff));
    }
  }
  rec.AtisSummary = "No Information ";
  size_t confirm = rest.find("Confirm information");
  if (confirm != std::string_view::npos && rest.find("on initial contact", confirm) != std::string_view::npos) {
    std::string_view after = TrimView(rest.substr(confirm + 19));
    size_t blank = after.find(' ');
    rec.AtisSummary = "Information " + std::string(after.substr(0, blank));
    size_t q = rest.find('Q', confirm);
    if (q != std::string_view::npos) {
      size_t e = q + 1;
      while (e < rest.size() && ((rest[e] >= '0' && rest[e] <= '9') || rest[e] == '.')) ++e;
      if (e > q + 1) rec.AtisSummary += " - QNH " + std::string(rest.substr(q + 1, e - q - 1));
    }
  }
}

enum class Grammar { Ivao, Vatsim };

// The station part of a line: one record per facility suffix standing in the
// callsign. Returns the records added.
void AddStations(std::string_view line, Grammar g, const AirportFinder& airports, OnlineData& out,
                 bool fromText) {
  // A suffix counts only at positions 1 to 12 (1-based): only the head of the
  // line is searched.
  const std::string_view head = line.substr(0, 15);
  for (int fac = 0; fac < kFacilityCount; ++fac) {
    size_t at = head.find(kFacilitySuffix[fac]);
    if (at == std::string_view::npos || at > 11) continue;
    std::string_view station = line.substr(0, at);
    std::string qualifier;
    size_t us = station.find('_');
    if (us != std::string_view::npos) {
      std::string_view tail = station.substr(us);
      qualifier = g == Grammar::Ivao ? IvaoQualifier(tail, fac) : VatsimQualifier(tail);
      station = station.substr(0, us);
    }
    if (qualifier == "#") continue;
    OnlineStationRec rec;
    rec.Station = std::string(station);
    rec.Qualifier = std::move(qualifier);
    if (fromText) {
      Fields f(line);
      rec.Callsign = std::string(f[0]);
      rec.RealName = std::string(f[2]);
      rec.Frequency = CSng(Val(f[4]));
      int32_t ap = airports.Find(rec.Station);
      if (ap >= 0) {
        const AirportRec& a = airports.Tables()->Airports[static_cast<size_t>(ap)];
        rec.Latitude = a.Lat;
        rec.Longitude = a.Lon;
      } else {
        rec.Latitude = CSng(Val(f[5]));
        rec.Longitude = CSng(Val(f[6]));
      }
      if (g == Grammar::Ivao) ReadAtis(line, 0, rec);
    }
    out.Stations[fac].push_back(std::move(rec));
  }
}

void AddPilot(const Fields& f, OnlineData& out) {
  OnlineClientRec p;
  p.Callsign = std::string(f[0]);
  p.RealName = std::string(f[2]);
  p.Latitude = CSng(Val(f[5]));
  p.Longitude = CSng(Val(f[6]));
  p.Altitude = CLng(Val(f[7]));
  p.GroundSpeed = CLng(Val(f[8]));
  p.Departure = std::string(f[11]);
  p.Destination = std::string(f[13]);
  out.Pilots.push_back(std::move(p));
}

void FinishHeader(OnlineData& out) {
  out.OnlineHeader = out.Stamp + " / ATC:" + std::to_string(out.AtcLines) + " - Pilots:" + std::to_string(out.PilotLines);
}

bool ParseText(std::string_view text, Grammar g, const AirportFinder& airports, OnlineData& out) {
  out = OnlineData{};
  out.Network = g == Grammar::Ivao ? OnlineNetwork::Ivao : OnlineNetwork::Vatsim;
  out.Pilots.reserve(text.size() / 400 + 1);
  bool inClients = false;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t nl = LineEnd(text, pos);
    std::string_view raw = text.substr(pos, nl == std::string_view::npos ? std::string_view::npos : nl - pos);
    pos = nl == std::string_view::npos ? text.size() : nl + 1;
    std::string_view line = TrimView(raw);
    if (line.empty()) continue;
    if (g == Grammar::Ivao) {
      if (line == "!CLIENTS") { inClients = true; continue; }
      if (line == "!SERVERS") break;
    } else {
      if (line == "!CLIENTS:") { inClients = true; continue; }
      if (line == "!SERVERS:" || line == "!PREFILE:") break;
    }
    if (Has(line, "UPDATE = ")) out.Stamp = StampText(line);
    if (Has(line, ":PILOT:")) ++out.PilotLines;
    if (Has(line, ":ATC:")) ++out.AtcLines;
    if (line[0] == ';') continue;
    AddStations(line, g, airports, out, true);
    if (!inClients) continue;
    if (g == Grammar::Vatsim && line.find('_') == std::string_view::npos && line.find(':') == std::string_view::npos)
      continue;   // the end of the client lines: nothing to read on it
    Fields f(line);
    if (f[0].find('_') != std::string_view::npos) continue;
    if (f[3] == "PILOT") AddPilot(f, out);
  }
  FinishHeader(out);
  return !out.Pilots.empty();
}

}  // namespace

// ------------------------------------------------------------ suffix tables

std::string IvaoQualifier(std::string_view text, int facility) {
  if (Has(text, "_X") || Has(text, "_T")) return "#";
  std::string q;
  if (Has(text, "_N")) q = "(North)";
  if (Has(text, "_E")) q = "(East)";
  if (Has(text, "_S")) q = "(South)";
  if (Has(text, "_W")) q = "(West)";
  if (facility == kFacCtr) {
    if (Has(text, "NW")) q = "(Northwest)";
    if (Has(text, "SE")) q = "(Southeast)";
  }
  if (facility == kFacApp && Has(text, "_D")) q = "(Director)";
  if (facility == kFacCtr) {
    if (Has(text, "_L")) q = "(Lower)";
    if (Has(text, "_U")) q = "(Upper)";
    if (Has(text, "_O")) return "#";
  }
  if (q.empty()) q = "(" + std::string(text.substr(1)) + ")";
  return q;
}

std::string VatsimQualifier(std::string_view text) {
  if (Has(text, "_X") || Has(text, "_T")) return "#";
  if (Has(text, "_N")) return "(North)";
  if (Has(text, "_E")) return "(East)";
  if (Has(text, "_S")) return "(South)";
  if (Has(text, "_W")) return "(West)";
  return "(" + std::string(text.substr(1)) + ")";
}

// ------------------------------------------------------------ airports

AirportFinder::AirportFinder(const AirportTables* airports) : airports_(airports) {
  if (!airports) return;
  sorted_.reserve(airports->Airports.size());
  for (size_t i = 0; i < airports->Airports.size(); ++i) {
    std::string code = Trim(airports->Airports[i].Icao.Trimmed());
    if (!code.empty()) sorted_.emplace_back(std::move(code), static_cast<int32_t>(i));
  }
  std::stable_sort(sorted_.begin(), sorted_.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
}

int32_t AirportFinder::Find(std::string_view icao) const {
  auto it = std::lower_bound(sorted_.begin(), sorted_.end(), icao,
                             [](const auto& e, std::string_view k) { return std::string_view(e.first) < k; });
  if (it != sorted_.end() && it->first == icao) return it->second;
  return -1;
}

// ------------------------------------------------------------ readers

bool ParseIvaoText(std::string_view text, const AirportFinder& airports, OnlineData& out) {
  return ParseText(text, Grammar::Ivao, airports, out);
}

bool ParseVatsimText(std::string_view text, const AirportFinder& airports, OnlineData& out) {
  return ParseText(text, Grammar::Vatsim, airports, out);
}

bool LooksLikeJson(std::string_view text) {
  std::string_view t = text;
  if (t.size() >= 3 && t.substr(0, 3) == "\xEF\xBB\xBF") t.remove_prefix(3);
  size_t first = t.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && t[first] == '{';
}

bool ParseOnlineText(OnlineNetwork network, std::string_view text, const AirportFinder& airports,
                     OnlineData& out, std::string& error) {
  if (LooksLikeJson(text)) {
    return network == OnlineNetwork::Ivao ? ParseIvaoJson(text, airports, out, error)
                                          : ParseVatsimJson(text, airports, out, error);
  }
  bool ok = network == OnlineNetwork::Ivao ? ParseIvaoText(text, airports, out) : ParseVatsimText(text, airports, out);
  if (!ok) error = "no pilot in the file";
  return ok;
}

// Adds one station of a JSON feed: the callsign's suffix decides its kind
// and qualifier as in the text files; the facility code of the feed stands in
// for a callsign without a suffix. The position comes from the airport of the
// callsign's first part, else from the feed, else from the sector later.
void AddFeedStation(std::string_view callsign, int facilityFromFeed, bool ivao, float lat, float lon, bool hasPos,
                    float frequency, std::string_view name, const AirportFinder& airports, OnlineData& out,
                    const std::vector<std::string>* atis) {
  std::array<size_t, kFacilityCount> before{};
  for (int f = 0; f < kFacilityCount; ++f) before[f] = out.Stations[f].size();
  AddStations(callsign, ivao ? Grammar::Ivao : Grammar::Vatsim, airports, out, false);
  bool added = false;
  for (int f = 0; f < kFacilityCount; ++f) added |= out.Stations[f].size() != before[f];
  bool dropped = false;
  if (!added && facilityFromFeed >= 0 && facilityFromFeed < kFacilityCount) {
    // No suffix in the callsign: the feed's facility, unless the suffix
    // table drops the name.
    std::string_view station = callsign.substr(0, callsign.find('_'));
    std::string qualifier;
    size_t us = callsign.find('_');
    if (us != std::string_view::npos) {
      size_t us2 = callsign.rfind('_');
      std::string_view tail = callsign.substr(us, us2 == us ? std::string_view::npos : us2 - us);
      if (us2 != us) qualifier = ivao ? IvaoQualifier(tail, facilityFromFeed) : VatsimQualifier(tail);
    }
    if (qualifier == "#") dropped = true;
    if (!dropped) {
      OnlineStationRec rec;
      rec.Station = std::string(station);
      rec.Qualifier = qualifier;
      out.Stations[facilityFromFeed].push_back(std::move(rec));
    }
  }
  for (int f = 0; f < kFacilityCount; ++f) {
    for (size_t i = before[f]; i < out.Stations[f].size(); ++i) {
      OnlineStationRec& rec = out.Stations[f][i];
      rec.Callsign = std::string(callsign);
      rec.RealName = std::string(name);
      rec.Frequency = frequency;
      int32_t ap = airports.Find(rec.Station);
      if (ap >= 0) {
        const AirportRec& a = airports.Tables()->Airports[static_cast<size_t>(ap)];
        rec.Latitude = a.Lat;
        rec.Longitude = a.Lon;
      } else if (hasPos) {
        rec.Latitude = lat;
        rec.Longitude = lon;
      } else {
        rec.Latitude = kNoPosition;
        rec.Longitude = 0;
      }
      if (atis && ivao) {
        std::string joined;
        for (const std::string& l : *atis) joined += "^\xA7" + l;
        ReadAtis(joined + "^\xA7", 0, rec);
      }
    }
  }
}

// ------------------------------------------------------------ sectors

std::vector<OnlineSector> ParseSectorFile(std::string_view text) {
  std::vector<OnlineSector> sectors;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t nl = LineEnd(text, pos);
    std::string_view line = TrimView(text.substr(pos, nl == std::string_view::npos ? std::string_view::npos : nl - pos));
    pos = nl == std::string_view::npos ? text.size() : nl + 1;
    if (line.empty() || line[0] == ';') continue;
    if (line[0] == '#') {
      if (static_cast<int>(sectors.size()) >= kMaxSectors) break;
      sectors.emplace_back();
      sectors.back().Name = Trim(line.substr(1));
      continue;
    }
    if (sectors.empty()) continue;
    size_t colon = line.find(':');
    float lat = CSng(Val(line.substr(0, colon)));
    float lon = colon == std::string_view::npos ? 0.0f : CSng(Val(line.substr(colon + 1)));
    if (!(lat >= -90 && lat <= 90 && lon >= -180 && lon <= 180)) continue;
    OnlineSector& s = sectors.back();
    s.Points.emplace_back(lat, lon);
    s.North = std::max(s.North, lat);
    s.South = std::min(s.South, lat);
    s.West = std::min(s.West, lon);
    s.East = std::max(s.East, lon);
  }
  for (OnlineSector& s : sectors) {
    if (s.Points.empty()) continue;
    s.CenterLat = (s.North + s.South) / 2;
    s.CenterLon = (s.West + s.East) / 2;
  }
  return sectors;
}

void MatchIvaoSectors(OnlineData& data, std::vector<OnlineSector>& sectors) {
  for (OnlineSector& s : sectors) s.Active = 0;
  if (sectors.empty()) return;
  std::vector<std::pair<std::string, int32_t>> byName;
  byName.reserve(sectors.size());
  for (size_t i = 0; i < sectors.size(); ++i) byName.emplace_back(UCase(sectors[i].Name), static_cast<int32_t>(i));
  std::stable_sort(byName.begin(), byName.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& list : data.Stations) {
    for (OnlineStationRec& st : list) {
      std::string key = UCase(st.Station);
      auto it = std::lower_bound(byName.begin(), byName.end(), key,
                                 [](const auto& e, const std::string& k) { return e.first < k; });
      if (it == byName.end() || it->first != key) continue;
      OnlineSector& s = sectors[static_cast<size_t>(it->second)];
      if (s.Points.empty()) continue;
      s.Active = -1;
      st.Sector = it->second;
      if (st.Latitude == kNoPosition) {
        st.Latitude = s.CenterLat;
        st.Longitude = s.CenterLon;
      }
    }
  }
}

// ------------------------------------------------------------ texts

std::string OnlineMenuCaption(OnlineNetwork network, const OnlineData* data) {
  std::string base = network == OnlineNetwork::Ivao ? "&IVAO    " : "&VATSIM";
  if (!data) return base;
  return base + " - " + data->OnlineHeader;
}

// ------------------------------------------------------------ the file steps

std::vector<OnlineSector> LoadSectorFile(const AppFolder& app, OnlineNetwork network) {
  auto text = ReadWholeText(app.Resolve(network == OnlineNetwork::Ivao ? "\\database\\orv_Ivao.dat"
                                                                        : "\\database\\orv_Vatsim.dat"));
  if (!text) return {};
  return ParseSectorFile(*text);
}

bool ParseOnlineFile(const AppFolder& app, OnlineNetwork network, const AirportTables* airports,
                     std::vector<OnlineSector>& sectors, OnlineData& data, Ui& ui, std::string& caption) {
  return ParseOnlineFile(app, network, AirportFinder(airports), sectors, data, ui, caption);
}

bool ParseOnlineFile(const AppFolder& app, OnlineNetwork network, const AirportFinder& finder,
                     std::vector<OnlineSector>& sectors, OnlineData& data, Ui& ui, std::string& caption) {
  const bool ivao = network == OnlineNetwork::Ivao;
  std::filesystem::path txt = app.Resolve(ivao ? "\\database\\orv_ivao.txt" : "\\database\\orv_vatsim.txt");
  std::filesystem::path old = app.Resolve(ivao ? "\\database\\orv_ivao.old" : "\\database\\orv_vatsim.old");
  ui.SetWaitCursor(true);
  OnlineData fresh;
  std::string error;
  bool ok = false;
  if (auto text = ReadWholeText(txt)) {
    ok = ParseOnlineText(network, *text, finder, fresh, error);
  }
  ui.SetWaitCursor(false);
  if (!ok) {
    ui.MsgBox(ivao ? "Error reading in IVAO File! Download the file again!"
                   : "Error reading in VATSIM File! Download the file again!",
              MsgStyle::Exclamation);
    caption = OnlineMenuCaption(network, nullptr);
    std::error_code ec;
    if (std::filesystem::exists(old, ec)) std::filesystem::copy_file(old, txt, std::filesystem::copy_options::overwrite_existing, ec);
    return false;
  }
  MatchIvaoSectors(fresh, sectors);
  data = std::move(fresh);
  caption = OnlineMenuCaption(network, &data);
  return true;
}

}  // namespace orv
