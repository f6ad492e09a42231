// The application folder: the root of every relative path. The program's path
// constants keep their Windows spelling ("\database\vor.orv"); Resolve turns
// them into native paths and, because the files' names mix cases, falls back to
// a case-insensitive match inside each folder when the exact name is missing.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orv {

class AppFolder {
public:
  AppFolder() = default;
  explicit AppFolder(std::filesystem::path root);

  const std::filesystem::path& Root() const { return root_; }
  // The folder as text with no trailing separator, as AppPath is used in texts.
  std::string AppPath() const;
  // A constant such as "\database\FS09\airport.orv" (or a relative path with
  // "/") as a native path under the root. Existing entries are matched
  // case-insensitively; missing ones keep the constant's spelling.
  std::filesystem::path Resolve(std::string_view constant) const;

private:
  std::filesystem::path root_;
};

// Looks up name inside folder, exact case first, then ignoring case.
std::filesystem::path FindCaseInsensitive(const std::filesystem::path& folder, std::string_view name);

}  // namespace orv
