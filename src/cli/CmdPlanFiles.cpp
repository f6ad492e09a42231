#include "cli/CmdPlanFiles.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/PlanExports.h"
#include "planning/PlanFile.h"
#include "planning/PlanFormats.h"
#include "planning/SaveRoute.h"

namespace fs = std::filesystem;

namespace orv::cli {

const std::vector<std::string> kPlanExportFormats = {"pln",    "sbp",    "ivao", "leveld", "pmdg",
                                                     "xmlpln", "fms",    "fpl",  "gpx"};

std::string TakePlanFileOptions(Args& args, PlanFileOptions& options) {
  Args rest;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a != "--open" && a != "--save" && a != "--export" && a != "--out") {
      rest.push_back(a);
      continue;
    }
    if (i + 1 >= args.size()) return a + " needs a value";
    const std::string& value = args[++i];
    if (a == "--open") options.Open = value;
    else if (a == "--save") options.Save = value;
    else if (a == "--out") options.OutDir = value;
    else {
      std::size_t p = 0;
      while (p <= value.size()) {
        std::size_t c = value.find(',', p);
        if (c == std::string::npos) c = value.size();
        std::string f = LCase(Trim(value.substr(p, c - p)));
        if (!f.empty()) {
          bool known = false;
          for (const std::string& k : kPlanExportFormats) known = known || k == f;
          if (!known) {
            std::string list;
            for (const std::string& k : kPlanExportFormats) list += (list.empty() ? "" : ", ") + k;
            return "unknown export format '" + f + "' (one of " + list + ")";
          }
          options.Formats.push_back(f);
        }
        p = c + 1;
      }
      if (options.Formats.empty()) return "--export needs a format";
    }
  }
  if (!options.Formats.empty() && options.OutDir.empty()) return "--export needs --out DIR";
  if (options.Formats.empty() && !options.OutDir.empty()) return "--out needs --export FORMAT";
  args = std::move(rest);
  return {};
}

bool OpenPlanForCli(Ui& ui, PlanEditor& editor, PlanFileState& state, const std::string& path) {
  return OpenPlanPath(ui, editor, {}, state, path);
}

int WritePlanFileOutputs(const PlanFileOptions& options, const FlightPlan& plan, const NavLookup& nav,
                         const AircraftRec& aircraft, const PlanFileState& state, std::ostream& out,
                         std::ostream& err) {
  PlanWriteOptions pln;
  pln.SidLabel = state.SidLabel;
  pln.StarLabel = state.StarLabel;
  // A plan of two airports is written as a direct route.
  FlightPlan copy = plan;
  if (copy.LastRow == 1) copy.RouteType = 0;
  auto write = [&](const std::string& path, const std::string& text) {
    if (!WriteFileAtomic(path, text)) {
      err << "plan: could not write " << path << "\n";
      return false;
    }
    out << "Saved: " << path << "\n";
    return true;
  };
  if (!options.Save.empty() && !write(options.Save, FormatPlanFile(copy, nav, pln))) return 1;
  if (options.Formats.empty()) return 0;

  std::error_code ec;
  fs::create_directories(options.OutDir, ec);
  int last = copy.LastRow;
  std::string base = copy.Waypoints[0].Code.Str() + copy.Waypoints[static_cast<std::size_t>(last)].Code.Str();
  auto path = [&](std::string_view suffix) { return (fs::path(options.OutDir) / (base + std::string(suffix))).string(); };
  PlanExportInfo info;
  info.SidName = state.SidLabel;
  info.StarName = state.StarLabel;
  // Nobody is there to answer the add-on files' question: they take the
  // whole plan, SID and STAR included.
  for (const std::string& f : options.Formats) {
    bool ok = true;
    if (f == "pln") ok = write(path(".pln"), FormatPlanFile(copy, nav, pln));
    else if (f == "sbp")
      ok = write(path(std::string(kSquawkBoxExt)), FormatSquawkBoxPlan(copy, aircraft.CruiseSpeed)) &&
           write(path(std::string(kSquawkBoxPointsExt)), FormatSquawkBoxPoints(copy, nav));
    else if (f == "ivao") ok = write(path("-ivao" + std::string(kIvaoExt)), FormatIvaoPlan(copy));
    else if (f == "leveld") ok = write(path("-leveld" + std::string(kLevelDExt)), FormatLevelDPlan(copy, nav, true));
    else if (f == "pmdg")
      ok = write(path("-pmdg" + std::string(kPmdgExt)), FormatPmdgPlan(copy, nav, true)) &&
           write(path("-pmdg" + std::string(kPmdg2Ext)), FormatPmdgPlan2(copy, true));
    else if (f == "xmlpln") ok = write(path(std::string(kSimXmlSuffix)), FormatSimXmlPlan(copy, nav, info));
    else if (f == "fms") ok = write(path(".fms"), FormatFmsPlan(copy, nav, info));
    else if (f == "fpl") ok = write(path(".fpl"), FormatGarminFpl(copy, nav, info));
    else if (f == "gpx") ok = write(path(".gpx"), FormatGpxRoute(copy, nav, info));
    if (!ok) return 1;
  }
  return 0;
}

}  // namespace orv::cli
