// Plugs the readers of the navigation database into the start-up: each file's
// bytes go to its reader, which fills the NavDatabase or refuses the file with
// a message naming the file and the record.
#pragma once

#include "core/Startup.h"
#include "database/NavDatabase.h"

namespace orv {

class DatabaseLoader : public StartupLoader {
public:
  explicit DatabaseLoader(NavDatabase& db) : db_(db) {}

  std::optional<std::string> LoadFile(StartupFile file, const std::filesystem::path& path,
                                      std::span<const uint8_t> bytes) override;
  void LinkIls() override;
  std::vector<ArrayCount> Counts() const override;

  NavDatabase& Database() { return db_; }

private:
  NavDatabase& db_;
};

// The number of records an array holds, not counting empty slots.
std::vector<ArrayCount> CountArrays(const NavDatabase& db);

}  // namespace orv
