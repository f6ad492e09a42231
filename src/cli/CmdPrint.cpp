// orvanta-cli print DEP DEST [--high|--low|--navaid] [--parts gfi,wplist,ctrz]
// --pdf OUT.pdf: the papers of a plan built as the plan command builds it,
// into a PDF file, as "Print Plan" prints them.
#include <ostream>

#include "cli/Cli.h"
#include "cli/CliGui.h"
#include "cli/CliPlan.h"
#include "core/Runtime.h"
#include "documents/Papers.h"
#include "mapqt/PaperPdf.h"
#include "mapqt/QtFontSet.h"

namespace orv::cli {

namespace {

constexpr const char* kUsage =
    "usage: orvanta-cli --appdir DIR print DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL] "
    "[--parts gfi,wplist,ctrz] --pdf OUT.pdf";

int Refuse(std::ostream& err, const std::string& why) {
  err << "print: " << why << "\n" << kUsage << "\n";
  return 2;
}

// The dialog's three choices from a comma-separated list.
bool ParseParts(std::string_view list, PrintFP& choice, std::ostream& err) {
  choice.chckGFI = choice.chckWPList = choice.chckCtrz = false;
  while (!list.empty()) {
    const std::size_t comma = list.find(',');
    const std::string part = LCase(Trim(list.substr(0, comma)));
    list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
    if (part.empty()) continue;
    if (part == "gfi") choice.chckGFI = true;
    else if (part == "wplist") choice.chckWPList = true;
    else if (part == "ctrz") choice.chckCtrz = true;
    else {
      err << "print: unknown part '" << part << "'; the parts are gfi, wplist and ctrz\n";
      return false;
    }
  }
  return choice.chckGFI || choice.chckWPList || choice.chckCtrz;
}

}  // namespace

int PrintPlanToPdf(const ProgramState& plan, const PrintFP& choice, const std::string& path, std::ostream& out,
                   std::ostream& err) {
  auto app = EnsureGuiApplication();
  QtFontSet fonts;
  PaperSources sources;
  sources.Plan = &plan.Plan;
  sources.Db = &plan.Db;
  sources.Aircraft = &plan.Aircraft.Current;
  sources.State = &plan.Core;
  std::string why;
  const int pages = WritePapersPdf(path, fonts, choice, sources, &why);
  if (pages == 0) {
    err << "print: " << path << ": " << why << "\n";
    return 1;
  }
  out << "printed " << path << " (" << pages << (pages == 1 ? " page" : " pages") << ")\n";
  return 0;
}

int CmdPrint(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  PlanArgs request;
  PrintFP choice;
  std::string pdf;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const int taken = TakePlanOption(args, i, request, err, "print");
    if (taken < 0) return 2;
    if (taken > 0) continue;
    if (a == "--parts" || a == "--pdf") {
      if (i + 1 >= args.size()) return Refuse(err, a + " needs a value");
      const std::string value = args[++i];
      if (a == "--pdf") pdf = value;
      else if (!ParseParts(value, choice, err)) return Refuse(err, "--parts names nothing to print");
    } else if (a.rfind("--", 0) == 0) {
      return Refuse(err, "unknown option '" + a + "'");
    } else {
      request.Airports.push_back(a);
    }
  }
  if (request.Airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");
  if (pdf.empty()) return Refuse(err, "--pdf is required");

  auto plan = std::make_unique<ProgramState>(ctx.appDir);
  if (BuildPlan(request, "print", out, err, *plan) != 0) return 1;
  return PrintPlanToPdf(*plan, choice, pdf, out, err);
}

}  // namespace orv::cli
