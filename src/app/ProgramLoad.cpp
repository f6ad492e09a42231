#include "app/ProgramLoad.h"

#include "database/DatabaseLoader.h"

namespace orv {

namespace {

// The database readers, and the aircraft list, which the start-up reads
// before the first database file.
class ProgramLoader : public DatabaseLoader {
public:
  ProgramLoader(ProgramState& s) : DatabaseLoader(s.Db), s_(s) {}

  std::optional<std::string> LoadFile(StartupFile file, const std::filesystem::path& path,
                                      std::span<const uint8_t> bytes) override {
    if (file != StartupFile::Aircraft) return DatabaseLoader::LoadFile(file, path, bytes);
    AircraftFile list = ParseAircraftFile(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()),
                                          path.string());
    aircraftError_ = std::move(list.Error);
    s_.Aircraft.List = std::move(list.Aircraft);
    const int index = FindStartAircraft(s_.Aircraft.List, s_.AircraftNumber);
    if (index >= 0) s_.Aircraft.Current = s_.Aircraft.List[static_cast<std::size_t>(index)];
    return std::nullopt;
  }

  // A damaged aircraft file is not fatal: what was read stays and the
  // problem is shown once the database is in.
  const std::string& AircraftError() const { return aircraftError_; }

private:
  ProgramState& s_;
  std::string aircraftError_;
};

}  // namespace

StartupResult LoadProgram(ProgramState& s, Ui& ui, const Clock& clock) {
  ProgramLoader loader(s);
  StartupResult result = RunStartup(s.Core, ui, clock, loader);
  if (result.ProgramEnds()) return result;
  if (!loader.AircraftError().empty()) ui.MsgBox(loader.AircraftError());
  s.Panel.Table.SetFuelUnitOf(s.Core);
  // The network sector outlines of database\orv_Ivao.dat and orv_Vatsim.dat.
  s.Online.IvaoSectors = LoadSectorFile(s.Core.Folder, OnlineNetwork::Ivao);
  s.Online.VatsimSectors = LoadSectorFile(s.Core.Folder, OnlineNetwork::Vatsim);
  return result;
}

}  // namespace orv
