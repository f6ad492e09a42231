// orvanta-cli sidstar DEP DEST --runway RWY [--arrival] [--pdf OUT.pdf]: the
// departure (or arrival) route the generator words for a runway end of the
// plan's departure (or destination) airport, on a plan built as the plan
// command builds it; with --pdf also the generator's print page.
#include <ostream>

#include "cli/Cli.h"
#include "cli/CliGui.h"
#include "cli/CliPlan.h"
#include "core/Runtime.h"
#include "documents/SidView.h"
#include "mapqt/PaperPdf.h"
#include "mapqt/QtFontSet.h"
#include "planning/DepartureArrival.h"

namespace orv::cli {

namespace {

constexpr const char* kUsage =
    "usage: orvanta-cli --appdir DIR sidstar DEP DEST --runway RWY [--arrival] [--high|--low|--navaid] "
    "[--aircraft N] [--level FL] [--pdf OUT.pdf]";

int Refuse(std::ostream& err, const std::string& why) {
  err << "sidstar: " << why << "\n" << kUsage << "\n";
  return 2;
}

}  // namespace

int CmdSidstar(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  PlanArgs request;
  std::string runway, pdf;
  bool arrival = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const int taken = TakePlanOption(args, i, request, err, "sidstar");
    if (taken < 0) return 2;
    if (taken > 0) continue;
    if (a == "--arrival") {
      arrival = true;
    } else if (a == "--runway" || a == "--pdf") {
      if (i + 1 >= args.size()) return Refuse(err, a + " needs a value");
      (a == "--runway" ? runway : pdf) = args[++i];
    } else if (a.rfind("--", 0) == 0) {
      return Refuse(err, "unknown option '" + a + "'");
    } else {
      request.Airports.push_back(a);
    }
  }
  if (request.Airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");
  if (runway.empty()) return Refuse(err, "--runway is required");

  auto plan = std::make_unique<ProgramState>(ctx.appDir);
  if (BuildPlan(request, "sidstar", out, err, *plan) != 0) return 1;

  FrmSID frm(plan->Db, plan->Plan, plan->Aircraft.Current);
  if (!frm.Load()) {
    err << "sidstar: You have to file a flight plan first!!\n";
    return 1;
  }
  if (arrival) frm.cmdSIDSTAR();
  // "RWY25C", "Rwy 25C" and "25C" all name the end 25C.
  std::string wanted = UCase(Trim(runway));
  if (Left(wanted, 3) == "RWY") wanted = Trim(Mid(wanted, 4));
  int line = -1;
  std::string known;
  for (std::size_t k = 0; k < frm.lstRwy.size(); ++k) {
    const std::string designator = UCase(Trim(Left(frm.lstRwy[k], InStr(frm.lstRwy[k], "  ") - 1)));
    known += (known.empty() ? "" : " ") + designator;
    if (designator == wanted && line < 0) line = static_cast<int>(k);
  }
  if (line < 0) {
    err << "sidstar: no runway '" << runway << "' at " << (arrival ? request.Airports[1] : request.Airports[0])
        << "; runways: " << (known.empty() ? "none" : known) << "\n";
    return 1;
  }
  frm.lstRwyClick(line);
  out << Latin1ToUtf8(frm.SIDFrame) << '\n' << Latin1ToUtf8(frm.lblMessage) << '\n';

  if (!pdf.empty()) {
    auto app = EnsureGuiApplication();
    QtFontSet fonts;
    std::string why;
    if (WritePdf(pdf, fonts, false, "Orvanta Departure and Arrival Routes",
                 [&](DrawTarget& page) {
                   PrintSidPage(page, frm, plan->Db, plan->Core.Config);
                   return 1;
                 },
                 &why) == 0) {
      err << "sidstar: " << pdf << ": " << why << "\n";
      return 1;
    }
    out << "printed " << pdf << " (1 page)\n";
  }
  return 0;
}

}  // namespace orv::cli
