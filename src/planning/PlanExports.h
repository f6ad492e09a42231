// The plan written for other programs: the online plans of SquawkBox and IVAO
// and the route files of the Level-D and PMDG aircraft. Each Format... gives
// the file's text; each Export... decides the folder, asks its question and
// writes the file(s) through a temporary file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "planning/FlightPlan.h"

namespace orv {

class NavLookup;
class Ui;

// The route text of the online plans, rows 1 to LastRow - 1: airways with
// their exit points, direct points, tracks as "NAT"/"PAC" plus their letter
// or number, SID and STAR as their exit and entry points. The IVAO form puts
// "DCT" ahead of direct points.
std::string RouteText(const FlightPlan& plan, bool ivao);

std::string FormatSquawkBoxPlan(const FlightPlan& plan, int32_t cruiseSpeed);
// The second SquawkBox file: one line per row with its position.
std::string FormatSquawkBoxPoints(const FlightPlan& plan, const NavLookup& nav);
std::string FormatIvaoPlan(const FlightPlan& plan);
// withProcedures: SID and STAR rows go along (the answer to the question).
std::string FormatLevelDPlan(const FlightPlan& plan, const NavLookup& nav, bool withProcedures);
std::string FormatPmdgPlan(const FlightPlan& plan, const NavLookup& nav, bool withProcedures);
std::string FormatPmdgPlan2(const FlightPlan& plan, bool withProcedures);

// Where the exports go.
struct ExportFolders {
  std::string AppPath;        // the program folder, native
  std::string SquawkBoxPath;  // SQUAWKBOXPATH; empty: "\FSplan\SquawkBox" under AppPath
  std::string IvaoPath;       // IVAOPATH; empty: "\FSplan\IVAO" under AppPath
  std::string FsPath;         // the simulator's folder; empty when unknown
};

// The file extensions, and which check box of chckFormat in SaveRoute picks
// which export (chckFormat(1) is the plain navaid form of the ".pln" lines).
inline constexpr std::string_view kSquawkBoxExt = ".sbp";
inline constexpr std::string_view kSquawkBoxPointsExt = ".sfp";
inline constexpr std::string_view kIvaoExt = ".fpl";
inline constexpr std::string_view kLevelDExt = ".rte";
inline constexpr std::string_view kPmdgExt = ".rte";
inline constexpr std::string_view kPmdg2Ext = ".rt2";

inline constexpr std::string_view kIncludeProcedures = "Saving Flightplan include SID's and Star's?";

// Each writes its files named baseName plus the extension and returns the
// paths written; an empty list when nothing could be written (the message was
// shown). Missing folders are made.
std::vector<std::string> ExportSquawkBox(Ui& ui, const FlightPlan& plan, const NavLookup& nav, int32_t cruiseSpeed,
                                         const ExportFolders& folders, std::string_view baseName);
std::vector<std::string> ExportIvao(Ui& ui, const FlightPlan& plan, const ExportFolders& folders,
                                    std::string_view baseName);
std::vector<std::string> ExportLevelD(Ui& ui, const FlightPlan& plan, const NavLookup& nav,
                                      const ExportFolders& folders, std::string_view baseName);
std::vector<std::string> ExportPmdg(Ui& ui, const FlightPlan& plan, const NavLookup& nav, const ExportFolders& folders,
                                    std::string_view baseName);

// The folders the Level-D and PMDG files go to below the simulator, or the
// program's "\FSPlan\" folder when the simulator's folder is unknown.
std::string LevelDFolder(const ExportFolders& folders);
std::string PmdgFolder(const ExportFolders& folders);

}  // namespace orv
