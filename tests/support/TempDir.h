// A temporary folder removed with its contents when the test ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orv::test {

class TempDir {
public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // Writes a file (making its folders) relative to the temporary folder.
  std::filesystem::path Write(std::string_view relative, std::string_view content) const;

private:
  std::filesystem::path path_;
};

}  // namespace orv::test
