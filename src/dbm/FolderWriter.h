// Writes a complete application folder from a built database: the
// simulator folders asked for, every file of "\database\" and "\map\", the
// variation grids, the weather station list, AIRAC.INI and the user files the
// start-up needs. Every file is written whole through a temporary file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/FileIo.h"
#include "dbm/DatabaseBuilder.h"

namespace orv::dbm {

struct FolderOptions {
  bool Fs9 = true;             // "\database\FS09\"
  bool Fsx = true;             // "\database\FS10\"
  std::string AiracText;       // the whole text of AIRAC.INI
  Bytes Sid;                   // sid.orv; empty: the file of no procedures
  Bytes Star;                  // star.orv; likewise
  std::string Readme;          // "\README.txt": where the data came from
};

struct WrittenFile {
  std::string Constant;        // "\database\vor.orv"
  int64_t Records = 0;
  int64_t Bytes = 0;
};

// The sid.orv / star.orv of no procedures: one block head for no airport with
// no points, so that the file is not empty and matches no airport.
Bytes EmptyProcedureFile();

// AIRAC.INI for the data cycle of the sources: "AIRAC cycle 1310" for the
// X-Plane header's "2013.10" (or "1310" as newer headers write it), then
// "X-Plane data"; "AIRAC cycle unknown" without a cycle.
std::string AiracText(std::string_view cycle);

// A small list of aircraft for "\user\aircraft.orv".
std::string DefaultAircraftText();

// "\orvcolor.ini" of a new folder: the themes Day, Night and High Contrast,
// each with every colour key of orv.ini, for the Options window to offer.
std::string DefaultColorThemesText();

// Writes everything under root. The user's own files (the user waypoints,
// the aircraft list, the colour themes) are only created when missing. False with a message
// naming the file when one cannot be written.
bool WriteAppFolder(const std::filesystem::path& root, const BuiltDatabase& built, const Bytes& magVarGrid,
                    const FolderOptions& options, std::vector<WrittenFile>& written, std::string& error);

}  // namespace orv::dbm
