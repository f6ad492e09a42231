// The small hand-made world (SmallWorld.h) written as a complete application
// folder with the database writers, so that commands can load it through the
// program's start-up.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/Startup.h"
#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/GroundFiles.h"
#include "database/NavaidFiles.h"
#include "database/WorldShapes.h"
#include "support/AppFolderBuilder.h"
#include "support/SmallWorld.h"

namespace orv::test {

inline std::string AsText(const std::vector<uint8_t>& bytes) { return std::string(bytes.begin(), bytes.end()); }

inline void WriteSmallWorldFolder(const std::filesystem::path& root) {
  NavDatabase db;
  BuildSmallWorld(db);
  AppFolderBuilder b(root);
  auto put = [&](StartupFile file, std::string content) {
    for (const StartupFileInfo& info : StartupFiles()) {
      if (info.File != file) continue;
      b.Put(info.InSimFolder ? b.Db(info.Name) : std::string(info.Name), std::move(content));
      return;
    }
  };
  put(StartupFile::Region, AsText(BuildRegionFile({"Europe"})));
  put(StartupFile::Country, AsText(BuildCountryFile({{"Germany", "Europe"}})));
  put(StartupFile::State, AsText(BuildStateFile({{"Hesse", "Germany"}})));
  put(StartupFile::City, AsText(BuildCityFile({{"Frankfurt", "Hesse", "Germany"}})));
  put(StartupFile::Airport, AsText(BuildAirportFile(db.Airports.Airports)));
  put(StartupFile::Taxi, AsText(BuildTaxiFile(db.Shapes)));
  put(StartupFile::Poly, AsText(BuildGroundPolyFile(db.Shapes)));
  put(StartupFile::Marker, AsText(BuildMarkerFile(db.Shapes)));
  put(StartupFile::Intersections, AsText(BuildDijinterFile(db.Navaids)));
  put(StartupFile::VictorAirways, AsText(BuildAirwayFile(db.Navaids.VictorAirways)));
  put(StartupFile::JetAirways, AsText(BuildAirwayFile(db.Navaids.JetAirways)));
  put(StartupFile::Fixes, AsText(BuildFixesFile(db.Navaids.Fixes)));
  put(StartupFile::Vors, AsText(BuildVorFile(db.Navaids.Vors)));
  put(StartupFile::Ndbs, AsText(BuildNdbFile(db.Navaids.Ndbs)));
  put(StartupFile::Airspaces, AsText(BuildAirspaceFile(db.Shapes)));
  put(StartupFile::Msa, AsText(BuildMsaFile(db.Shapes)));
  put(StartupFile::WorldPolygons, AsText(BuildWorldPolygonFile(db.Shapes)));
  put(StartupFile::WorldLines, AsText(BuildWorldLineFile(db.Shapes)));
  b.Build();
}

}  // namespace orv::test
