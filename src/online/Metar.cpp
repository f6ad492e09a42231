#include "online/Metar.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "online/LineScan.h"

namespace orv {

namespace {

bool Has(std::string_view text, std::string_view find) { return text.find(find) != std::string_view::npos; }
bool StartsWith(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }
bool EndsWith(std::string_view text, std::string_view tail) {
  return text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
}

// Calls fn for each trimmed line of text.
template <class Fn>
void ForEachLine(std::string_view text, Fn fn) {
  size_t pos = 0;
  while (pos < text.size()) {
    size_t nl = LineEnd(text, pos);
    std::string_view line = text.substr(pos, nl == std::string_view::npos ? std::string_view::npos : nl - pos);
    pos = nl == std::string_view::npos ? text.size() : nl + 1;
    if (!fn(TrimView(line))) break;
  }
}

// Splits the text at blanks; empty groups (double blanks) are skipped.
std::string_view NextGroup(std::string_view line, size_t& pos) {
  while (pos < line.size() && line[pos] == ' ') ++pos;
  size_t end = line.find(' ', pos);
  if (end == std::string_view::npos) end = line.size();
  std::string_view g = line.substr(pos, end - pos);
  pos = end;
  return g;
}

std::string_view Sub(std::string_view s, size_t from, size_t count = std::string_view::npos) {
  if (from >= s.size()) return {};
  return s.substr(from, count);
}

bool IsWindGroup(std::string_view g) {
  if (g.size() < 5) return false;
  if (!(EndsWith(g, "KT") || EndsWith(g, "MPS") || EndsWith(g, "KMH"))) return false;
  if (StartsWith(g, "VRB")) return true;
  for (int i = 0; i < 5; ++i)
    if (g[static_cast<size_t>(i)] < '0' || g[static_cast<size_t>(i)] > '9') return false;
  return true;
}

void CloudGroup(std::string& text, std::string_view word, std::string_view g) {
  char digits[16];
  auto [end, ec] = std::to_chars(digits, digits + sizeof digits, CLng(Val(Sub(g, 3, 3)) * 100));
  text += word;
  text.append(digits, ec == std::errc() ? end : digits);
  text += "ft ";
}

int16_t SignedTemp(std::string_view part) {
  if (!part.empty() && part[0] == 'M') return CInt(-Val(part.substr(1)));
  return CInt(Val(part));
}

}  // namespace

// ------------------------------------------------------------ stations

void WxStations::Load(std::string_view text) {
  stations_.clear();
  stations_.reserve(text.size() / 20 + 1);
  resume_ = 0;
  ForEachLine(text, [&](std::string_view line) {
    if (line.size() < 6) return true;
    size_t c1 = line.find(',');
    if (c1 == std::string_view::npos) return true;
    size_t c2 = line.find(',', c1 + 1);
    double lat = Val(line.substr(c1 + 1));
    double lon = c2 == std::string_view::npos ? 0.0 : Val(line.substr(c2 + 1));
    if (std::fabs(lat) > 90 || std::fabs(lon) > 180) return true;
    stations_.push_back({UCase(TrimView(line.substr(0, c1))), CSng(lat), CSng(lon)});
    return true;
  });
}

void WxStations::FindStation(std::string_view icao, float& lat, float& lon) {
  lat = -500;
  lon = 0;
  if (icao.empty()) return;
  char want[8] = {};
  size_t n = std::min<size_t>(icao.size(), sizeof want);
  for (size_t i = 0; i < n; ++i) want[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(icao[i])));
  std::string_view key(want, n);
  for (size_t i = resume_; i < stations_.size(); ++i) {
    const std::string& s = stations_[i].Icao;
    if (!s.empty() && static_cast<unsigned char>(s[0]) > static_cast<unsigned char>(key[0])) return;
    if (s == key) {
      resume_ = i;
      lat = stations_[i].Latitude;
      lon = stations_[i].Longitude;
      return;
    }
  }
}

// ------------------------------------------------------------ reports

void ParseMetarGroups(std::string_view line, MetarRec& rec) {
  std::string_view text = Sub(line, 5);
  size_t pos = 0;
  std::string_view g = NextGroup(text, pos);
  rec.Day = CInt(Val(Sub(g, 0, 2)));
  rec.Hour = CInt(Val(Sub(g, 2, 2)));
  rec.Minute = CInt(Val(Sub(g, 4, 2)));
  if (Has(Sub(text, pos), "NIL")) return;
  g = NextGroup(text, pos);
  if (g == "AUTO") g = NextGroup(text, pos);
  if (IsWindGroup(g)) {
    rec.WindDir = StartsWith(g, "VRB") ? kWindVariable : CInt(Val(g.substr(0, 3)));
    double speed = Val(Sub(g, 3, 2));
    if (EndsWith(g, "MPS")) speed = speed * 3.6 / 1.8;
    else if (EndsWith(g, "KMH")) speed = speed / 1.8;
    rec.WindSpeed = CInt(speed);
    rec.Gust = g.size() > 5 && g[5] == 'G' ? CInt(Val(Sub(g, 6, 2))) : int16_t{0};
    g = NextGroup(text, pos);
  }
  for (; !g.empty(); g = NextGroup(text, pos)) {
    if (g == "RMK") break;
    if (g == "CAVOK") {
      rec.Visibility = kVisCavok;
    } else if (double v = (g.size() == 4 || Has(g, "NDV")) ? Val(g) : 0.0; v > 1000 && v < 10000) {
      rec.Visibility = v == 9999 ? kVisTenKm : CInt(v / 1000);
    } else if (EndsWith(g, "SM")) {
      rec.Visibility = CInt(std::trunc(Val(g)) + kVisStatuteMiles);
    } else if (StartsWith(g, "CLR") || StartsWith(g, "SKC")) {
      rec.CloudText += "clear ";
    } else if (StartsWith(g, "FEW")) {
      CloudGroup(rec.CloudText, "few at ", g);
    } else if (StartsWith(g, "SCT")) {
      CloudGroup(rec.CloudText, "sct at ", g);
    } else if (StartsWith(g, "BKN")) {
      CloudGroup(rec.CloudText, "brkn at ", g);
    } else if (StartsWith(g, "OVC")) {
      CloudGroup(rec.CloudText, "ovcst at ", g);
    } else if (g[0] == 'Q') {
      rec.Qnh = CInt(Val(g.substr(1)));
    } else if (g[0] == 'A') {
      rec.Qnh = CInt(-Val(g.substr(1)));
    } else if (size_t slash = g.find('/'); slash != std::string_view::npos) {
      rec.Temperature = SignedTemp(g.substr(0, slash));
      rec.DewPoint = SignedTemp(g.substr(slash + 1));
    }
    // The weather codes anywhere in the group, in one pass over its pairs.
    for (size_t i = 0; i + 1 < g.size(); ++i) {
      switch (g[i] << 8 | g[i + 1]) {
        case 'R' << 8 | 'A': rec.Rain = -1; break;
        case 'D' << 8 | 'Z': rec.Drizzle = -1; break;
        case 'S' << 8 | 'N': rec.Snow = -1; break;
        case 'P' << 8 | 'E': rec.IcePellets = -1; break;
        case 'G' << 8 | 'R': rec.Hail = -1; break;
        case 'F' << 8 | 'G': rec.Fog = -1; break;
        case 'H' << 8 | 'Z': rec.Haze = -1; break;
        case 'B' << 8 | 'R': rec.Mist = -1; break;
        case 'F' << 8 | 'U': rec.Smoke = -1; break;
        case 'C' << 8 | 'B': rec.Cumulonimbus = -1; break;
        case 'T' << 8 | 'S': rec.Thunderstorm = -1; break;
        default: break;
      }
    }
  }
}

std::vector<MetarRec> ParseMetarFile(std::string_view reports, WxStations& stations) {
  std::vector<MetarRec> out;
  out.reserve(std::min<size_t>(reports.size() / 40 + 1, 200000));
  stations.ResetResume();
  ForEachLine(reports, [&](std::string_view line) {
    if (line.size() < 4) return true;
    float lat, lon;
    stations.FindStation(line.substr(0, 4), lat, lon);
    if (lat == -500) return true;
    MetarRec& rec = out.emplace_back();
    rec.Icao = std::string(line.substr(0, 4));
    rec.Latitude = lat;
    rec.Longitude = lon;
    ParseMetarGroups(line, rec);
    return true;
  });
  return out;
}

bool LoadMetar(const AppFolder& app, Ui& ui, std::vector<MetarRec>& out) {
  std::filesystem::path stationPath = app.Resolve("\\database\\WxStation.txt");
  std::filesystem::path txt = app.Resolve("\\database\\orv_metar.txt");
  std::filesystem::path old = app.Resolve("\\database\\orv_metar.old");
  std::error_code ec;
  if (!std::filesystem::exists(stationPath, ec)) {
    ui.MsgBox("No Weather Station File available!");
    return false;
  }
  if (!std::filesystem::exists(txt, ec)) {
    if (std::filesystem::exists(old, ec)) {
      std::filesystem::copy_file(old, txt, std::filesystem::copy_options::overwrite_existing, ec);
    } else {
      ui.MsgBox("No Weather File available! Download a new Weather File!");
      return false;
    }
  }
  ui.SetWaitCursor(true);
  ui.ShowProgress("Reading Weather Station...");
  WxStations stations;
  stations.Load(ReadWholeText(stationPath).value_or(std::string()));
  out = ParseMetarFile(ReadWholeText(txt).value_or(std::string()), stations);
  ui.SetWaitCursor(false);
  return true;
}

// ------------------------------------------------------------ the bulk files

bool LooksLikeMetarCsv(std::string_view text) {
  bool csv = false;
  ForEachLine(text.substr(0, std::min<size_t>(text.size(), 4096)), [&](std::string_view line) {
    if (StartsWith(line, "raw_text,")) {
      csv = true;
      return false;
    }
    return true;
  });
  return csv;
}

std::string MetarCsvToReports(std::string_view text) {
  if (!LooksLikeMetarCsv(text)) return std::string(text);
  std::vector<std::string_view> reports;
  bool body = false;
  ForEachLine(text, [&](std::string_view line) {
    if (!body) {
      body = StartsWith(line, "raw_text,");
      return true;
    }
    std::string_view raw = line.substr(0, line.find(','));
    if (!raw.empty() && raw.front() == '"') raw = raw.substr(1, raw.find('"', 1) == std::string_view::npos
                                                                    ? std::string_view::npos
                                                                    : raw.find('"', 1) - 1);
    raw = TrimView(raw);
    if (StartsWith(raw, "METAR ") || StartsWith(raw, "SPECI ")) raw = TrimView(raw.substr(6));
    if (raw.size() >= 6 && raw[4] == ' ') reports.push_back(raw);
    return true;
  });
  std::stable_sort(reports.begin(), reports.end(),
                   [](std::string_view a, std::string_view b) { return a.substr(0, 4) < b.substr(0, 4); });
  std::string out;
  size_t total = 0;
  for (std::string_view r : reports) total += r.size() + 2;
  out.reserve(total);
  for (std::string_view r : reports) {
    out += r;
    out += "\r\n";
  }
  return out;
}

namespace {
// "50-02N" or "50-02-30N" or "50N": degrees with the hemisphere's sign.
bool DegMinHem(std::string_view t, double& out) {
  t = TrimView(t);
  if (t.empty()) return false;
  char hem = t.back();
  double sign = (hem == 'S' || hem == 'W') ? -1 : (hem == 'N' || hem == 'E') ? 1 : 0;
  if (sign == 0) return false;
  t.remove_suffix(1);
  double deg = Val(t);
  size_t dash = t.find('-');
  double min = 0, sec = 0;
  if (dash != std::string_view::npos) {
    min = Val(t.substr(dash + 1));
    size_t dash2 = t.find('-', dash + 1);
    if (dash2 != std::string_view::npos) sec = Val(t.substr(dash2 + 1));
  }
  out = sign * (deg + min / 60 + sec / 3600);
  return true;
}
}  // namespace

std::string StationListToWxStations(std::string_view text) {
  // The columns are separated by blanks: the position is the first latitude
  // word ("50-02N", "5002N", or "50" followed by "02N") and the longitude
  // after it; the ICAO is the nearest four-character word ahead of it.
  std::vector<std::pair<std::string, std::string>> rows;
  ForEachLine(text, [&](std::string_view line) {
    std::vector<std::string_view> words;
    size_t pos = 0;
    while (pos < line.size()) {
      size_t end = line.find_first_of(" \t", pos);
      if (end == std::string_view::npos) end = line.size();
      if (end > pos) words.push_back(line.substr(pos, end - pos));
      pos = end + 1;
    }
    auto digits = [](std::string_view w) {
      return !w.empty() && std::all_of(w.begin(), w.end(), [](char c) { return (c >= '0' && c <= '9') || c == '-'; });
    };
    // A coordinate starting at word i with a hemisphere of `hems`; sets used.
    auto coord = [&](size_t i, std::string_view hems, double& out, size_t& used) {
      std::string_view w = words[i];
      if (w.size() >= 2 && hems.find(w.back()) != std::string_view::npos && digits(w.substr(0, w.size() - 1))) {
        std::string_view body = w.substr(0, w.size() - 1);
        if (body.find('-') == std::string_view::npos && body.size() >= 4)
          out = Val(body.substr(0, body.size() - 2)) + Val(body.substr(body.size() - 2)) / 60;
        else
          DegMinHem(w, out), out = std::fabs(out);
        used = 1;
      } else if (i + 1 < words.size() && digits(w) && w.size() <= 3 && w.find('-') == std::string_view::npos) {
        std::string_view m = words[i + 1];
        if (m.size() < 2 || m.size() > 3 || hems.find(m.back()) == std::string_view::npos ||
            !digits(m.substr(0, m.size() - 1)) || m.find('-') != std::string_view::npos)
          return false;
        out = Val(w) + Val(m.substr(0, m.size() - 1)) / 60;
        used = 2;
      } else {
        return false;
      }
      char h = words[i + used - 1].back();
      if (h == 'S' || h == 'W') out = -out;
      return true;
    };
    for (size_t i = 0; i < words.size(); ++i) {
      double lat = 0, lon = 0;
      size_t used = 0, used2 = 0;
      if (!coord(i, "NS", lat, used)) continue;
      if (i + used >= words.size() || !coord(i + used, "EW", lon, used2)) continue;
      std::string icao;
      for (size_t k = i; k-- > 0;) {
        std::string_view w = words[k];
        if (w.size() == 4 && std::all_of(w.begin(), w.end(), [](char c) {
              return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
            }) && w[0] >= 'A') {
          icao = std::string(w);
          break;
        }
      }
      if (!icao.empty() && std::fabs(lat) <= 90 && std::fabs(lon) <= 180)
        rows.emplace_back(icao, icao + "," + Format(lat, "0.0000") + "," + Format(lon, "0.0000"));
      break;
    }
    return true;
  });
  std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::string out;
  for (auto& r : rows) out += r.second + "\r\n";
  return out;
}

// ------------------------------------------------------------ hover

std::vector<std::string> MetarHoverLines(const MetarRec* rec, std::string_view station) {
  std::vector<std::string> lines;
  if (!rec) {
    lines.push_back("Wx: " + std::string(station));
    lines.push_back("No weatherdata available");
    return lines;
  }
  std::string wind = "Wx: " + std::string(station) + " - Wind: ";
  if (rec->WindDir == kWindNone) {
    wind += "N/A";
  } else {
    wind += rec->WindDir == kWindVariable ? std::string("variable/ ") : Format(rec->WindDir, "000") + "\xB0/ ";
    wind += std::to_string(rec->WindSpeed) + "/gusts: " + std::to_string(rec->Gust);
  }
  lines.push_back(wind);
  std::string vis = "Visibility: ";
  if (rec->Visibility == kVisTenKm) vis += ">10km";
  else if (rec->Visibility >= kVisStatuteMiles) vis += std::to_string(rec->Visibility - kVisStatuteMiles) + "nm";
  else if (rec->Visibility > 0) vis += std::to_string(rec->Visibility) + "km";
  else vis += "N/A";
  lines.push_back(vis);
  std::string wx;
  if (rec->Rain) wx += "rain ";
  if (rec->Drizzle) wx += "drizzle ";
  if (rec->Snow) wx += "snow ";
  if (rec->IcePellets) wx += "ice pellets ";
  if (rec->Hail) wx += "hail ";
  if (rec->Fog) wx += "fog ";
  if (rec->Haze) wx += "haze ";
  if (rec->Mist) wx += "mist ";
  if (rec->Smoke) wx += "fume ";
  if (rec->Cumulonimbus) wx += "cumulonimbus ";
  if (rec->Thunderstorm) wx += "thunderstorm ";
  if (rec->Visibility == kVisCavok) wx += "CAVOK";
  if (!rec->CloudText.empty()) wx += rec->CloudText;
  if (!wx.empty()) lines.push_back(RTrim(wx));
  lines.push_back("Temp: " + std::to_string(rec->Temperature) + "  Dewpoint: " + std::to_string(rec->DewPoint));
  if (rec->Qnh < 0) lines.push_back("QNH: " + Format(-rec->Qnh / 100.0, "00.00") + " inHg");
  else lines.push_back("QNH: " + std::to_string(rec->Qnh) + " hPa");
  return lines;
}

}  // namespace orv
