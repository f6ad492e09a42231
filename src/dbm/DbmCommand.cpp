#include "dbm/DbmCommand.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <unordered_map>

#include "core/Runtime.h"

#include "database/MagVar.h"
#include "dbm/Cifp.h"
#include "dbm/DatabaseBuilder.h"
#include "dbm/FolderWriter.h"
#include "dbm/MagneticModel.h"
#include "dbm/OpenAir.h"
#include "dbm/Shapefile.h"
#include "dbm/SourceFiles.h"
#include "dbm/XPlaneSources.h"

namespace orv::dbm {

namespace fs = std::filesystem;

namespace {

constexpr const char* kUsage =
    "usage: orvanta-dbm --xplane DIR --out APPDIR [--coast FILE] [--rivers FILE] [--openair FILE]\n"
    "                   [--cifp DIR] [--date YEAR] [--sim fs9|fsx|both] [--wmm FILE]\n";

struct Options {
  fs::path XPlane, Out, Coast, Rivers, OpenAir, Cifp, Wmm;
  double Date = 0;  // decimal year; 0: today
  bool Fs9 = true, Fsx = true;
};

bool ParseArgs(const std::vector<std::string>& args, Options& o, std::ostream& err) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&](std::string& v) {
      if (i + 1 >= args.size()) {
        err << "orvanta-dbm: " << a << " needs a value\n";
        return false;
      }
      v = args[++i];
      return true;
    };
    std::string v;
    if (a == "--xplane" || a == "--out" || a == "--coast" || a == "--rivers" || a == "--openair" || a == "--cifp" ||
        a == "--date" || a == "--sim" || a == "--wmm") {
      if (!value(v)) return false;
      if (a == "--xplane") o.XPlane = v;
      else if (a == "--out") o.Out = v;
      else if (a == "--coast") o.Coast = v;
      else if (a == "--rivers") o.Rivers = v;
      else if (a == "--openair") o.OpenAir = v;
      else if (a == "--cifp") o.Cifp = v;
      else if (a == "--wmm") o.Wmm = v;
      else if (a == "--date") {
        char* end = nullptr;
        o.Date = std::strtod(v.c_str(), &end);
        if (end == v.c_str() || *end != '\0' || o.Date < 1900 || o.Date > 2100) {
          err << "orvanta-dbm: --date wants a decimal year such as 2025.5, not \"" << v << "\"\n";
          return false;
        }
      } else {
        if (v == "fs9") o.Fs9 = true, o.Fsx = false;
        else if (v == "fsx") o.Fs9 = false, o.Fsx = true;
        else if (v == "both") o.Fs9 = o.Fsx = true;
        else {
          err << "orvanta-dbm: --sim is fs9, fsx or both, not \"" << v << "\"\n";
          return false;
        }
      }
    } else {
      err << "orvanta-dbm: unknown argument \"" << a << "\"\n" << kUsage;
      return false;
    }
  }
  if (o.XPlane.empty() || o.Out.empty()) {
    err << kUsage;
    return false;
  }
  return true;
}

double Today() {
  auto now = std::chrono::system_clock::now();
  auto days = std::chrono::floor<std::chrono::days>(now);
  std::chrono::year_month_day ymd{days};
  auto jan1 = std::chrono::sys_days{ymd.year() / std::chrono::January / 1};
  return static_cast<int>(ymd.year()) + (days - jan1).count() / 365.25;
}

void PrintReport(const SourceReport& r, std::ostream& out) {
  out << "  " << r.Records << " records from " << r.Lines << " lines";
  if (r.Malformed) out << ", " << r.Malformed << " malformed lines left out";
  out << "\n";
  for (const std::string& p : r.FirstProblems) out << "    " << p << "\n";
}

// Reads one X-Plane source found under the data root.
bool ReadOne(const fs::path& root, std::vector<std::string_view> names, const char* what, bool required,
             const std::function<void(std::string_view, SourceReport&)>& reader, SourceReport& report,
             std::ostream& out, std::ostream& err) {
  fs::path path = FindSource(root, names);
  if (path.empty()) {
    std::string list;
    for (std::string_view n : names) list += (list.empty() ? "" : ", ") + std::string(n);
    (required ? err : out) << (required ? "orvanta-dbm: " : "  ") << "no " << what << " file (" << list
                           << ", plain or .gz) under " << root.string() << (required ? "\n" : ": left out\n");
    return !required;
  }
  out << "Reading " << what << " from " << path.string() << "\n";
  std::string error;
  auto text = ReadSourceText(path, error);
  if (!text) {
    err << "orvanta-dbm: " << error << "\n";
    return false;
  }
  report.File = path.filename().string();
  reader(*text, report);
  if (report.Version == 0) {
    err << "orvanta-dbm: " << path.string() << ": not an X-Plane data file (no \"I\"/\"A\" line and version)\n";
    for (const std::string& p : report.FirstProblems) err << "    " << p << "\n";
    return false;
  }
  PrintReport(report, out);
  return true;
}

// The four X-Plane sources: the airports are required, the others are left
// out with a note when the data root has none.
bool ReadXPlaneSources(const fs::path& root, XPlaneSources& src, SourceReport& apt, SourceReport& nav,
                       std::ostream& out, std::ostream& err) {
  SourceReport fix, awy;
  if (!ReadOne(root, {"apt.dat"}, "airport", true,
               [&](std::string_view t, SourceReport& r) { ReadAptDat(t, src.Airports, r); }, apt, out, err))
    return false;
  return ReadOne(root, {"earth_nav.dat", "nav.dat"}, "navaid", false,
                 [&](std::string_view t, SourceReport& r) { ReadNavDat(t, src.Navaids, r); }, nav, out, err) &&
         ReadOne(root, {"earth_fix.dat", "fix.dat"}, "fix", false,
                 [&](std::string_view t, SourceReport& r) { ReadFixDat(t, src.Fixes, r); }, fix, out, err) &&
         ReadOne(root, {"earth_awy.dat", "awy.dat"}, "airway", false,
                 [&](std::string_view t, SourceReport& r) { ReadAwyDat(t, src.Airways, r); }, awy, out, err);
}

// Magnetic variation from the World Magnetic Model for the date asked, as
// the grid of the variation files.
bool LoadVariation(const fs::path& wmmOption, double date, MagneticModel& model, Bytes& grid, std::ostream& out,
                   std::ostream& err) {
  std::string modelError;
  fs::path wmm = wmmOption.empty() ? FindWmmFile() : wmmOption;
  if (wmm.empty() || !model.Load(wmm, modelError)) {
    err << "orvanta-dbm: " << (wmm.empty() ? std::string("no WMM coefficient file found (give it with --wmm)") : modelError)
        << "\n";
    return false;
  }
  out << "Magnetic variation: " << model.Name() << " at " << date << " from " << wmm.string() << "\n";
  if (!model.Covers(date)) out << "  note: the date lies outside the model's five years of validity\n";
  grid = BuildVariationGrid(model, date);
  return true;
}

// The airspaces of an OpenAir file, added behind any derived zones.
bool AddAirspaceFile(const fs::path& path, BuiltDatabase& built, std::ostream& out, std::ostream& err) {
  out << "Reading airspaces from " << path.string() << "\n";
  std::string error;
  auto text = ReadSourceText(path, error);
  if (!text) {
    err << "orvanta-dbm: " << error << "\n";
    return false;
  }
  std::vector<SrcAirspace> spaces;
  SourceReport r;
  r.File = path.filename().string();
  ReadOpenAir(*text, spaces, r);
  PrintReport(r, out);
  std::size_t leftOut = AddOpenAirspaces(spaces, built.Db.Shapes);
  out << "  " << built.Db.Shapes.Airspaces.size() << " airspaces";
  if (leftOut) out << ", " << leftOut << " left out (fewer than 3 points, or beyond the 15001 of the table)";
  out << "\n";
  return true;
}

// The SIDs and STARs of the CIFP files of the built airports, as the bytes
// of sid.orv and star.orv.
bool ReadProcedures(const fs::path& folder, const XPlaneSources& src, const BuiltDatabase& built, Bytes& sidFile,
                    Bytes& starFile, std::ostream& out, std::ostream& err) {
  out << "Reading procedures from " << folder.string() << "\n";
  std::error_code ec;
  if (!fs::is_directory(folder, ec)) {
    err << "orvanta-dbm: the CIFP folder " << folder.string() << " does not exist\n";
    return false;
  }
  std::unordered_map<std::string, fs::path> files;
  for (const auto& e : fs::directory_iterator(folder, ec))
    if (e.is_regular_file(ec) && e.path().extension() == ".dat") files[UCase(e.path().stem().string())] = e.path();
  FixFinder finder(src);
  std::vector<Procedure> sids, stars;
  SourceReport r;
  r.File = "CIFP";
  for (const AirportRec& a : built.Db.Airports.Airports) {
    auto f = files.find(a.Icao.Str());
    if (f == files.end()) continue;
    std::string error;
    auto text = ReadSourceText(f->second, error);
    if (!text) {
      err << "orvanta-dbm: " << error << "\n";
      return false;
    }
    r.File = f->second.filename().string();
    ReadCifpFile(*text, a.Icao.Str(), a.Lat, a.Lon, true, finder, sids, r);
    ReadCifpFile(*text, a.Icao.Str(), a.Lat, a.Lon, false, finder, stars, r);
  }
  out << "  " << sids.size() << " SID and " << stars.size() << " STAR blocks";
  if (r.Malformed) out << ", " << r.Malformed << " rows left out";
  out << "\n";
  for (const std::string& p : r.FirstProblems) out << "    " << p << "\n";
  sidFile = BuildProcedureFile(sids);
  starFile = BuildProcedureFile(stars);
  return true;
}

// The parts of a Natural Earth shapefile, plain or gzipped.
bool ReadShapes(const fs::path& path, const char* what, std::vector<std::vector<ShapePoint>>& parts,
                std::ostream& out, std::ostream& err) {
  out << "Reading " << what << " from " << path.string() << "\n";
  std::string error;
  auto bytes = ReadSourceText(path, error);
  if (!bytes) {
    err << "orvanta-dbm: " << error << "\n";
    return false;
  }
  if (!ReadShapefileParts(reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size(), path.filename().string(),
                          parts, error)) {
    err << "orvanta-dbm: " << error << "\n";
    return false;
  }
  return true;
}

// Coastlines and rivers from Natural Earth shapefiles.
bool AddWorldShapes(const Options& o, BuiltDatabase& built, std::ostream& out, std::ostream& err) {
  if (!o.Coast.empty()) {
    std::vector<std::vector<ShapePoint>> parts;
    if (!ReadShapes(o.Coast, "coastlines", parts, out, err)) return false;
    std::size_t leftOut = AddWorldPolygons(parts, kLandKind, built.Db.Shapes);
    out << "  " << built.Db.Shapes.WorldPolygons.size() << " land polygons";
    if (leftOut) out << ", the " << leftOut << " smallest left out (15201 at most)";
    out << "\n";
  } else {
    out << "  no coastline file (--coast): worldpolygon.bin holds an empty shape\n";
  }
  if (!o.Rivers.empty()) {
    std::vector<std::vector<ShapePoint>> parts;
    if (!ReadShapes(o.Rivers, "rivers and lakes", parts, out, err)) return false;
    AddWorldLines(parts, kRiverKind, built.Db.Shapes);
    out << "  " << built.Db.Shapes.WorldLines.size() << " river lines\n";
  }
  return true;
}

// README.txt of the folder: where every part of the data came from.
std::string ReadmeText(const Options& o, const std::string& cycle, const std::string& modelName, double date) {
  char dateText[32];
  std::snprintf(dateText, sizeof dateText, "%.2f", date);
  std::string r = "Navigation database built by orvanta-dbm.\r\n\r\n";
  r += "Airports, navaids, fixes and airways: X-Plane data files from " + o.XPlane.string() + " (data cycle " +
       (cycle.empty() ? std::string("unknown") : cycle) + ").\r\n";
  r += "Magnetic variation: " + modelName + " for " + dateText + ".\r\n";
  if (o.OpenAir.empty())
    r += "Control zones: DERIVED, not published airspace: a 5 NM circle around every airport with a tower "
         "frequency. Not for real-world navigation.\r\n";
  else
    r += "Airspaces: OpenAir file " + o.OpenAir.string() + ".\r\n";
  r += o.Coast.empty() ? std::string("Coastlines: none.\r\n") : "Coastlines: " + o.Coast.string() + ".\r\n";
  if (!o.Rivers.empty()) r += "Rivers: " + o.Rivers.string() + ".\r\n";
  r += o.Cifp.empty() ? std::string("Procedures: none (sid.orv and star.orv hold no procedure).\r\n")
                      : "Procedures: CIFP files from " + o.Cifp.string() + ".\r\n";
  return r;
}

void PrintWritten(const fs::path& root, const std::vector<WrittenFile>& written, std::ostream& out) {
  out << "Wrote " << root.string() << ":\n";
  for (const WrittenFile& f : written) {
    char line[160];
    std::snprintf(line, sizeof line, "  %-32s %10lld records %12lld bytes\n", f.Constant.c_str(),
                  static_cast<long long>(f.Records), static_cast<long long>(f.Bytes));
    out << line;
  }
}

}  // namespace

int RunDbm(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  Options o;
  if (!ParseArgs(args, o, err)) return 2;
  auto start = std::chrono::steady_clock::now();
  std::error_code ec;
  if (!fs::exists(o.XPlane, ec)) {
    err << "orvanta-dbm: the source folder " << o.XPlane.string() << " does not exist\n";
    return 1;
  }

  XPlaneSources src;
  SourceReport apt, nav;
  if (!ReadXPlaneSources(o.XPlane, src, apt, nav, out, err)) return 1;

  const double date = o.Date > 0 ? o.Date : Today();
  MagneticModel model;
  Bytes grid;
  if (!LoadVariation(o.Wmm, date, model, grid, out, err)) return 1;
  MagVarGrid variation;
  variation.Assign(grid);

  BuildOptions bo;
  bo.DeriveControlZones = o.OpenAir.empty();
  BuiltDatabase built;
  BuildDatabase(src, variation, bo, built);
  out << "Built the tables: " << built.Db.Airports.Airports.size() << " airports";
  if (bo.DeriveControlZones) out << ", " << built.ControlZones << " control zones derived from tower frequencies";
  out << "\n";
  if (!o.OpenAir.empty() && !AddAirspaceFile(o.OpenAir, built, out, err)) return 1;
  FolderOptions fo;
  if (!o.Cifp.empty() && !ReadProcedures(o.Cifp, src, built, fo.Sid, fo.Star, out, err)) return 1;
  if (built.LeftOut) {
    out << "  " << built.LeftOut << " source records left out:\n";
    for (const std::string& n : built.Notes) out << "    " << n << "\n";
  }
  if (!AddWorldShapes(o, built, out, err)) return 1;

  fo.Fs9 = o.Fs9;
  fo.Fsx = o.Fsx;
  const std::string cycle = !apt.Cycle.empty() ? apt.Cycle : nav.Cycle;
  fo.AiracText = AiracText(cycle);
  fo.Readme = ReadmeText(o, cycle, model.Name(), date);
  std::vector<WrittenFile> written;
  std::string error;
  if (!WriteAppFolder(o.Out, built, grid, fo, written, error)) {
    err << "orvanta-dbm: " << error << "\n";
    return 1;
  }
  PrintWritten(o.Out, written, out);
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  char done[80];
  std::snprintf(done, sizeof done, "Done in %.1f s\n", seconds);
  out << done;
  return 0;
}

}  // namespace orv::dbm
