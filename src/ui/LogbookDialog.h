// frmLogbook over the headless LogbookWindow: the grid of flights with the
// total below it, the labels and waypoints of the flight clicked, and the
// buttons to delete a flight, export the book as CSV, print it (Qt's print
// dialog) and write it as a PDF file.
#pragma once

#include <QDialog>
#include <map>
#include <string>

#include "app/LogbookWindow.h"
#include "mapqt/QtFontSet.h"

class QLabel;
class QListWidget;
class QTableView;

namespace orv::ui {

class LogbookGridModel;

class LogbookDialog : public QDialog {
  Q_OBJECT
public:
  LogbookDialog(ProgramState& s, Ui& ui, const QtFontSet& fonts, QWidget* parent = nullptr);
  ~LogbookDialog() override;

  // Form_Load: the book is read again and the window shows.
  void Open();
  LogbookWindow& Form() { return form_; }
  QTableView* Grid() const { return grid_; }
  QLabel* Label(const std::string& name) const;
  QListWidget* Waypoints() const { return lstLogWP_; }

  // Writes the printed book to a PDF file; false with the reason shown.
  bool WritePdfTo(const std::string& path);

private:
  void Refresh();
  void ShowDetail();

  Ui& ui_;
  const QtFontSet& fonts_;
  LogbookWindow form_;
  LogbookGridModel* model_;
  QTableView* grid_;
  QListWidget* lstLogWP_;
  QLabel* total_;
  std::map<std::string, QLabel*> labels_;
};

}  // namespace orv::ui
