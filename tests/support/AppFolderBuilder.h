// Builds a complete minimal application folder for start-up tests: every file
// the start-up opens, written by the database's own writers, so that the real
// readers load it. Its default content:
//
//   region/country/state/city  "Europe" / "Germany" / "Hessen" / "Frankfurt" and
//                              "North America" / "United States" / "New York" / "New York"
//   airport.orv   slot 0 EDDF (runways 07C/25C with ILS "IFC" on 25C, and 18/36;
//                 3 frequencies, 2 parking positions), slot 1 KJFK (runway
//                 04L/22R with ILS "IHIQ" on 04L; 1 frequency)
//   dijinter.orv  intersections 1 "TOBAK" and 2 "UNOKO", joined both ways by
//                 the low airway V1 and the high airway J1
//   vicways.orv   V1 from 1 to 2;  jetways.orv  J1 from 1 to 2
//   fixes.orv     "FF25C";  vor.orv  "FFM";  ndb.orv  "CHA"
//   airspace.orv  the control zone "EDDF" (5 points)
//   worldpolygon.bin one polygon (5 points); worldline.bin one line (4 points)
//   magvar09.swf, magvar10.swf  a grid of variation 0 everywhere
//   taxi.orv, poly.orv, marker.orv, msa.orv   empty (the start-up skips them)
//   userwp.udb    the header only;  sid.orv, star.orv  one EDDF procedure each
//   WxStation.txt EDDF and KJFK;  \user\aircraft.orv  one aircraft
//   AIRAC.INI     kAiracText
// orv.ini and userObj.txt are only written when asked for. Any file can be
// replaced, emptied or left out.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orv::test {

class AppFolderBuilder {
public:
  explicit AppFolderBuilder(std::filesystem::path root);

  // The database folder of the simulator's files: "FS09" (the default) or "FS10".
  AppFolderBuilder& SimFolder(std::string folder);
  // The text of orv.ini.
  AppFolderBuilder& Ini(std::string text);
  // Files are named by their constants, "\database\vor.orv"; the simulator's
  // own files by "\database\FS09\airport.orv" (or use Db("airport.orv")).
  AppFolderBuilder& Put(std::string_view constant, std::string content);
  AppFolderBuilder& Empty(std::string_view constant) { return Put(constant, std::string()); }
  AppFolderBuilder& Drop(std::string_view constant);
  // The constant of a file in the current simulator folder.
  std::string Db(std::string_view name) const;

  // Writes the folder; returns its root.
  const std::filesystem::path& Build() const;

  // Bytes for a file that only has to be non-empty, for loaders that do not
  // look inside (no database reader accepts them).
  static constexpr std::string_view kPlaceholder = "ORVANTA TEST PLACEHOLDER";
  static constexpr std::string_view kAiracText = "AIRAC Cycle 0701, valid 18JAN-14FEB\r\n";

private:
  std::filesystem::path root_;
  std::string sim_ = "FS09";
  // Constant -> content; nullopt means left out. Files in the simulator folder
  // are kept under "@" + name so that SimFolder may still move them.
  std::map<std::string, std::optional<std::string>> files_;
  std::string Key(std::string_view constant) const;
};

}  // namespace orv::test
