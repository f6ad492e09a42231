// The printed logbook (cmdPrintLogBook of frmLogbook): a heading with the
// version line, a line of hyphens, the column line, one line a flight with
// its running number, and the total flight time last, in "Courier New" on
// A4 pages laid out on a DrawTarget (the printer, a PDF file, a test's
// recording target).
#pragma once

#include <string>
#include <vector>

#include "map/DrawTarget.h"

namespace orv {

// One flight's columns, as the logbook window shows them.
struct LogbookPaperLine {
  std::string Date, Departure, Destination, Atd, Ata, Total;
};

struct LogbookPaper {
  std::string VersionLine;
  std::vector<LogbookPaperLine> Flights;
  std::string TotalLine;  // "Total Flight Time: 12 hours 5 min"
};

// The column line and a flight's line, in fixed columns of the monospaced
// font: the running number has the mask "000#".
std::string LogbookPaperColumns();
std::string LogbookPaperRow(int number, const LogbookPaperLine& line);

// Prints the book; returns the number of pages. A page that is full goes on
// to the next one, which starts again with the column line.
int PrintLogbook(DrawTarget& printer, const LogbookPaper& paper);

}  // namespace orv
