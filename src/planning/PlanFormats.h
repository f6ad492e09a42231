// The plan formats pilots use today beside the program's own file: the XML
// flight plan of FS X, Prepar3D and MSFS ("SimBase.Document", ".pln"), the
// X-Plane 11/12 FMS plan (".fms", version 1100), the Garmin flight plan
// (".fpl", FlightPlan v1) and a GPX route. The writers take the plan in
// memory; the readers give an ImportedPlan that InstallImportedPlan puts into
// memory. Which reader runs is decided by the file's content.
#pragma once

#include <string>
#include <string_view>

#include "planning/FlightPlan.h"
#include "planning/PlanFile.h"

namespace orv {

class NavLookup;
class Ui;

// Texts the writers need beside the plan.
struct PlanExportInfo {
  bool Ifr = true;
  std::string SidName;   // names of the plan's procedures, empty when none
  std::string StarName;
  std::string Cycle;     // the AIRAC cycle ("2401"), for the FMS header
};

std::string FormatSimXmlPlan(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo& info);
std::string FormatFmsPlan(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo& info);
std::string FormatGarminFpl(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo& info);
std::string FormatGpxRoute(const FlightPlan& plan, const NavLookup& nav, const PlanExportInfo& info);

enum class PlanFormat { Unknown, Orv, SimXml, Fms, GarminFpl, Gpx };

// The format of a file's text, by its content alone.
PlanFormat DetectPlanFormat(std::string_view text);

ImportedPlan ParseSimXmlPlan(std::string_view text);
ImportedPlan ParseFmsPlan(std::string_view text);
ImportedPlan ParseGarminFpl(std::string_view text);
ImportedPlan ParseGpxRoute(std::string_view text);

// Reads a plan file of any supported format into the plan of editor. A
// refusal shows its message and leaves everything as it was; text that is no
// plan of any kind gets the program's own "not a valid plan" message.
bool OpenAnyPlanText(PlanEditor& editor, Ui& ui, std::string_view text, const ProcedureProbe& probe,
                     PlanFileState& state);

// Coordinates in the XML plan's form: N50° 2' 0.00",E8° 34' 12.00",+000364.00
// (UTF-8 degree sign). Reading accepts the Latin-1 sign too.
std::string SimXmlPosition(double lat, double lon, double altitudeFeet);
bool ParseSimXmlPosition(std::string_view text, double& lat, double& lon);

}  // namespace orv
