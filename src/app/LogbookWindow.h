// frmLogbook without its widgets: the grid of flights with the total flight
// time, the details and waypoints of the flight clicked, deletion, the CSV
// export and the printed book. A book that could not be read completely is
// shown as far as it was read and is never rewritten.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "app/ProgramState.h"
#include "core/Ui.h"
#include "documents/LogbookPaper.h"
#include "simlink/Logbook.h"

namespace orv {

// The labels of the flight clicked, each starting with its caption.
struct LogbookDetail {
  std::string lblFlightNo, lblTailNo, lblAirline, lblAircraft;
  std::string lblFOBTakeoff, lblFOBLanding, lblFuelUsed, lblAverageFuel;
  std::string lblDistance, lblATE, lblMaxAlt, lblAverageGS;
  std::string lblDeparture, lblDestination;
};

// The labels of one flight; fuel in the unit of the FUEL setting (0 gal,
// 1 lbs, 2 kg, 3 lit); the airports named from the database when it has them.
LogbookDetail LogbookDetailOf(const LogbookEntry& e, const NavDatabase& db, int fuelSetting);

// The printed book's lines from the flights.
LogbookPaper LogbookPaperOf(const std::vector<LogbookEntry>& book);

class LogbookWindow {
public:
  LogbookWindow(ProgramState& s, Ui& ui);

  // Form_Load: reads "\user\Logbook.orv" (or the given book) and fills the
  // grid and the total; a damaged book is shown up to its fault, with a
  // message that says so.
  void Load();
  void Load(const std::filesystem::path& book);

  // grdLogbook's headings and rows, and the total line at the bottom.
  std::vector<std::string> Headings;
  std::vector<std::vector<std::string>> Rows;
  std::string lblTotal;
  // Whether the whole book was read; else why not.
  bool Complete = true;
  std::string Problem;
  const std::vector<LogbookEntry>& Book() const { return book_; }

  // A click on a grid row: the labels and lstLogWP; -1 clears them.
  void RowClick(std::int32_t row);
  std::int32_t SelectedRow = -1;
  LogbookDetail Detail;
  std::vector<std::string> lstLogWP;

  // cmdDelete: the selected flight, after the question; the book is
  // rewritten whole through a temporary file and read again.
  bool cmdDelete();
  // The grid as CSV into a file the user chooses (or the given one).
  bool cmdExport();
  bool ExportCsv(const std::filesystem::path& file);
  // cmdPrintLogBook onto a printer page (or a PDF); returns the pages.
  int Print(DrawTarget& printer) const;

  const std::filesystem::path& BookPath() const { return path_; }

private:
  ProgramState& s_;
  Ui& ui_;
  std::filesystem::path path_;
  std::vector<LogbookEntry> book_;
};

}  // namespace orv
