// The fonts the charts are drawn with. The program names Windows fonts
// ("Tahoma", "Small Fonts", "Arial", "Courier New"); each is drawn with a free
// font loaded from its file, so that text measures the same on every machine
// instead of depending on what the font configuration would substitute:
//
//   "Tahoma", "Small Fonts", "Verdana"        DejaVu Sans (fonts-dejavu-core)
//   "Arial", "MS Sans Serif" and any other    Liberation Sans (fonts-liberation)
//   "Courier New", "Courier"                  Liberation Mono
//   "Times New Roman"                         Liberation Serif
//
// Needs a QGuiApplication. One set serves every target of the program.
#pragma once

#include <QString>
#include <QStringList>
#include <filesystem>
#include <string_view>
#include <vector>

namespace orv {

class QtFontSet {
public:
  // Debian's folders of the two font packages.
  static std::vector<std::filesystem::path> DefaultFolders();

  // Loads the regular and bold files of each family from the first folder
  // that holds them.
  explicit QtFontSet(const std::vector<std::filesystem::path>& folders = DefaultFolders());

  // The family that draws a Windows font name (case-insensitive).
  QString FamilyFor(std::string_view windowsName) const;

  // Font files that could not be loaded; their family then comes from the
  // font configuration, if at all.
  const QStringList& Missing() const { return missing_; }

private:
  enum Face { Sans = 0, Humanist, Mono, Serif, FaceCount };
  QString families_[FaceCount];
  QStringList missing_;
};

}  // namespace orv
