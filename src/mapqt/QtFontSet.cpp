#include "mapqt/QtFontSet.h"

#include <QFontDatabase>
#include <algorithm>
#include <cctype>

#include "core/Runtime.h"

namespace orv {

namespace {

struct FaceFiles {
  const char* family;   // the family name the files declare
  const char* regular;
  const char* bold;
};

// In the order of QtFontSet::Face.
constexpr FaceFiles kFaces[] = {
    {"Liberation Sans", "LiberationSans-Regular.ttf", "LiberationSans-Bold.ttf"},
    {"DejaVu Sans", "DejaVuSans.ttf", "DejaVuSans-Bold.ttf"},
    {"Liberation Mono", "LiberationMono-Regular.ttf", "LiberationMono-Bold.ttf"},
    {"Liberation Serif", "LiberationSerif-Regular.ttf", "LiberationSerif-Bold.ttf"},
};

bool SameName(std::string_view a, std::string_view b) { return SameTextNoCase(a, b); }

}  // namespace

std::vector<std::filesystem::path> QtFontSet::DefaultFolders() {
  return {"/usr/share/fonts/truetype/liberation", "/usr/share/fonts/truetype/dejavu",
          "/usr/share/fonts/truetype/liberation2"};
}

QtFontSet::QtFontSet(const std::vector<std::filesystem::path>& folders) {
  for (int face = 0; face < FaceCount; ++face) {
    families_[face] = QString::fromLatin1(kFaces[face].family);
    for (const char* file : {kFaces[face].regular, kFaces[face].bold}) {
      bool loaded = false;
      for (const std::filesystem::path& folder : folders) {
        std::error_code ec;
        std::filesystem::path path = folder / file;
        if (!std::filesystem::exists(path, ec)) continue;
        int id = QFontDatabase::addApplicationFont(QString::fromStdString(path.string()));
        if (id < 0) continue;
        QStringList names = QFontDatabase::applicationFontFamilies(id);
        if (!names.isEmpty()) families_[face] = names.front();
        loaded = true;
        break;
      }
      if (!loaded) missing_.push_back(QString::fromLatin1(file));
    }
  }
}

QString QtFontSet::FamilyFor(std::string_view windowsName) const {
  for (std::string_view name : {"Tahoma", "Small Fonts", "Verdana"})
    if (SameName(windowsName, name)) return families_[Humanist];
  for (std::string_view name : {"Courier New", "Courier"})
    if (SameName(windowsName, name)) return families_[Mono];
  if (SameName(windowsName, "Times New Roman")) return families_[Serif];
  return families_[Sans];
}

}  // namespace orv
