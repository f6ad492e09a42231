#include "dbm/Cifp.h"

#include <cstring>
#include <map>

#include "core/Runtime.h"
#include "database/ByteReader.h"
#include "dbm/DatabaseBuilder.h"

namespace orv::dbm {

FixFinder::FixFinder(const XPlaneSources& src) {
  for (const SrcFix& f : src.Fixes)
    byIdent_.emplace(f.Ident, ProcPoint{"Fix", f.Ident, f.Ident, static_cast<float>(f.Lat), static_cast<float>(f.Lon)});
  for (const SrcNavaid& n : src.Navaids) {
    if (n.Row != kVor && n.Row != kNdb) continue;
    byIdent_.emplace(n.Ident, ProcPoint{n.Row == kVor ? "VOR" : "NDB", n.Ident, n.Name, static_cast<float>(n.Lat),
                                        static_cast<float>(n.Lon)});
  }
}

bool FixFinder::Find(std::string_view ident, double lat, double lon, ProcPoint& out) const {
  auto [b, e] = byIdent_.equal_range(std::string(ident));
  double best = 300.0;
  bool found = false;
  for (auto it = b; it != e; ++it) {
    double d = DistanceNm(lat, lon, it->second.Lat, it->second.Lon);
    if (d < best) {
      best = d;
      out = it->second;
      found = true;
    }
  }
  return found;
}

void ReadCifpFile(std::string_view text, std::string_view airport, double airportLat, double airportLon, bool sid,
                  const FixFinder& fixes, std::vector<Procedure>& out, SourceReport& report) {
  report.Version = 1;
  std::string_view tag = sid ? "SID:" : "STAR:";
  std::map<std::pair<std::string, std::string>, std::size_t> blockOf;
  std::size_t first = out.size();
  int64_t lineNo = 0;
  std::size_t pos = 0;
  while (pos < text.size()) {
    std::size_t end = text.find('\n', pos);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(pos, end - pos);
    pos = end + 1;
    ++lineNo;
    ++report.Lines;
    if (line.substr(0, tag.size()) != tag) continue;
    // Comma-separated fields: 1 route type, 2 procedure, 3 transition, 4 fix ident.
    std::vector<std::string> f;
    std::size_t start = tag.size();
    while (f.size() < 6) {
      std::size_t comma = line.find(',', start);
      f.push_back(Trim(line.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start)));
      if (comma == std::string_view::npos) break;
      start = comma + 1;
    }
    if (f.size() < 5 || f[2].empty()) {
      report.Problem(lineNo, "procedure row without its name and fix fields");
      continue;
    }
    const std::string& proc = f[2];
    const std::string& trans = f[3];
    auto key = std::make_pair(proc, trans);
    auto it = blockOf.find(key);
    if (it == blockOf.end()) {
      Procedure p;
      p.Airport = std::string(airport);
      bool runway = trans.size() > 2 && trans.compare(0, 2, "RW") == 0;
      p.Runway = runway ? trans.substr(2) : "00";
      p.Name = runway || trans.empty() || trans == "ALL" ? proc : proc + "." + trans;
      out.push_back(std::move(p));
      it = blockOf.emplace(key, out.size() - 1).first;
      ++report.Records;
    }
    const std::string& fix = f[4];
    if (fix.empty() || fix.compare(0, 2, "RW") == 0) continue;  // legs without a fix, runway thresholds
    Procedure& p = out[it->second];
    ProcPoint pt;
    if (!fixes.Find(fix, airportLat, airportLon, pt)) {
      report.Problem(lineNo, "fix " + fix + " of " + proc + " is not among the fixes and navaids");
      continue;
    }
    if (!p.Points.empty() && p.Points.back().Code == pt.Code) continue;
    if (p.Points.size() < 255) p.Points.push_back(pt);
  }
  // Procedures that kept no point are of no use to the plan.
  std::vector<Procedure> kept;
  for (std::size_t i = first; i < out.size(); ++i)
    if (!out[i].Points.empty()) kept.push_back(std::move(out[i]));
  out.resize(first);
  for (Procedure& p : kept) out.push_back(std::move(p));
}

Bytes BuildProcedureFile(const std::vector<Procedure>& procedures) {
  ByteWriter w;
  for (const Procedure& p : procedures) {
    w.Text(p.Airport, 10);
    w.Text(p.Runway, 5);
    w.Text(p.Name, 40);
    w.U8(static_cast<uint8_t>(std::min<std::size_t>(p.Points.size(), 255)));
    std::size_t n = 0;
    for (const ProcPoint& pt : p.Points) {
      if (n++ == 255) break;
      w.Text(pt.Kind, 5);
      w.Text(pt.Code, 10);
      w.Text(pt.Name, 20);
      w.F32(pt.Lat);
      w.F32(pt.Lon);
      w.Zeros(18);
    }
  }
  return std::move(w.bytes);
}

}  // namespace orv::dbm
