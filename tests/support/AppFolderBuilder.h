// Builds a complete minimal application folder for start-up tests: every file
// the start-up opens, with non-empty placeholder bytes where an empty file
// would end the program, a valid empty user waypoint file, a zero variation
// grid and an AIRAC.INI. orv.ini is only written when asked for. Any file can
// be replaced, emptied or left out; readers of real formats put their own
// bytes in with Put.
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

  // Placeholder bytes written for a file that only has to be non-empty.
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
