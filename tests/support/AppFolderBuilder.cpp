#include "support/AppFolderBuilder.h"

#include <fstream>
#include <stdexcept>

#include "database/MagVar.h"

namespace orv::test {

namespace fs = std::filesystem;

namespace {
constexpr std::string_view kSimFiles[] = {"region.orv", "country.orv", "state.orv", "city.orv", "airport.orv",
                                          "taxi.orv",   "poly.orv",    "marker.orv"};
constexpr std::string_view kOtherFiles[] = {
    "\\database\\dijinter.orv", "\\database\\vicways.orv", "\\database\\jetways.orv", "\\database\\fixes.orv",
    "\\database\\vor.orv",      "\\database\\ndb.orv",     "\\database\\airspace.orv", "\\database\\msa.orv",
    "\\database\\sid.orv",      "\\database\\star.orv",    "\\map\\worldpolygon.bin",  "\\map\\worldline.bin",
    "\\database\\WxStation.txt", "\\user\\aircraft.orv"};
}  // namespace

AppFolderBuilder::AppFolderBuilder(fs::path root) : root_(std::move(root)) {
  std::string grid;
  {
    std::vector<uint8_t> bytes = BuildMagVarFile([](int, int) { return 0.0; });
    grid.assign(bytes.begin(), bytes.end());
  }
  files_["\\magvar09.swf"] = grid;
  files_["\\magvar10.swf"] = grid;
  for (std::string_view name : kSimFiles) files_["@" + std::string(name)] = std::string(kPlaceholder);
  for (std::string_view c : kOtherFiles) files_[std::string(c)] = std::string(kPlaceholder);
  files_["\\database\\userwp.udb"] = std::string("ORVUSERDB");
  files_["\\database\\AIRAC.INI"] = std::string(kAiracText);
}

AppFolderBuilder& AppFolderBuilder::SimFolder(std::string folder) {
  sim_ = std::move(folder);
  return *this;
}

AppFolderBuilder& AppFolderBuilder::Ini(std::string text) { return Put("\\orv.ini", std::move(text)); }

std::string AppFolderBuilder::Db(std::string_view name) const { return "\\database\\" + sim_ + "\\" + std::string(name); }

std::string AppFolderBuilder::Key(std::string_view constant) const {
  std::string prefix = "\\database\\" + sim_ + "\\";
  if (constant.substr(0, prefix.size()) == prefix) return "@" + std::string(constant.substr(prefix.size()));
  return std::string(constant);
}

AppFolderBuilder& AppFolderBuilder::Put(std::string_view constant, std::string content) {
  files_[Key(constant)] = std::move(content);
  return *this;
}

AppFolderBuilder& AppFolderBuilder::Drop(std::string_view constant) {
  files_[Key(constant)] = std::nullopt;
  return *this;
}

const fs::path& AppFolderBuilder::Build() const {
  fs::create_directories(root_);
  for (const auto& [key, content] : files_) {
    if (!content) continue;
    std::string constant = key[0] == '@' ? Db(key.substr(1)) : key;
    fs::path path = root_;
    size_t pos = 0;
    while (pos < constant.size()) {
      size_t next = constant.find('\\', pos);
      if (next == std::string::npos) next = constant.size();
      if (next > pos) path /= constant.substr(pos, next - pos);
      pos = next + 1;
    }
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(content->data(), static_cast<std::streamsize>(content->size()));
    if (!out) throw std::runtime_error("cannot write test file " + path.string());
  }
  return root_;
}

}  // namespace orv::test
