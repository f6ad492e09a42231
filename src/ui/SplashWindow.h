// OVRIntro, the splash shown while the start-up loads the database.
#pragma once

#include <QWidget>

class QLabel;

namespace orv::ui {

class SplashWindow : public QWidget {
  Q_OBJECT
public:
  explicit SplashWindow(QWidget* parent = nullptr);

  // The picture; an empty or unreadable file leaves the frame with the name.
  void SetPicture(const QString& path);
  void ClearPicture();
  void SetVersion(const QString& text);
  // The AIRAC label, shown only when there is a text; rgb as 0xRRGGBB.
  void SetAirac(const QString& text, bool visible, unsigned rgb);

  QLabel* ProgressLabel() const { return lblProgress_; }
  QLabel* VersionLabel() const { return lblVersion_; }
  QLabel* AiracLabel() const { return airac_; }

private:
  QLabel* introPic_;
  QLabel* lblVersion_;
  QLabel* airac_;
  QLabel* lblProgress_;
};

}  // namespace orv::ui
