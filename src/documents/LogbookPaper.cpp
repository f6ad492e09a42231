#include "documents/LogbookPaper.h"

#include "core/Runtime.h"
#include "documents/Papers.h"

namespace orv {

namespace {

constexpr double kMargin = 1134;  // 2 cm
constexpr double kTop = 900;
constexpr double kBottom = kPaperHeight - 1000;
constexpr float kBodySize = 10;
constexpr const char* kFont = "Courier New";

// The columns' widths in characters, each followed by two blanks.
constexpr int kNumberWidth = 4;
constexpr int kDateWidth = 10;
constexpr int kAirportWidth = 11;
constexpr int kTimeWidth = 5;

std::string Pad(std::string_view text, int width) {
  std::string t(text.substr(0, static_cast<std::size_t>(width)));
  t.resize(static_cast<std::size_t>(width), ' ');
  return t + "  ";
}

}  // namespace

std::string LogbookPaperColumns() {
  return RTrim(Pad("No.", kNumberWidth) + Pad("Date", kDateWidth) + Pad("Departure", kAirportWidth) +
               Pad("Destination", kAirportWidth) + Pad("ATD", kTimeWidth) + Pad("ATA", kTimeWidth) +
               Pad("Total", kTimeWidth));
}

std::string LogbookPaperRow(int number, const LogbookPaperLine& l) {
  return RTrim(Pad(Format(number, "000#"), kNumberWidth) + Pad(l.Date, kDateWidth) +
               Pad(l.Departure, kAirportWidth) + Pad(l.Destination, kAirportWidth) + Pad(l.Atd, kTimeWidth) +
               Pad(l.Ata, kTimeWidth) + Pad(l.Total, kTimeWidth));
}

int PrintLogbook(DrawTarget& t, const LogbookPaper& paper) {
  t.SetScaleWidth(kPaperWidth);
  t.SetScaleHeight(kPaperHeight);
  t.SetForeColor(0);
  t.SetDrawWidth(1);
  int pages = 0;
  double y = 0;
  auto font = [&](float size, bool bold) {
    t.SetFontName(kFont);
    t.SetFontSize(size);
    t.SetFontBold(bold);
  };
  auto at = [&](double x, double yy, const std::string& text) {
    t.SetCurrentX(x);
    t.SetCurrentY(yy);
    t.Print(text);
  };
  font(kBodySize, false);
  const double lineH = t.TextHeight("X");
  const std::string columns = LogbookPaperColumns();
  const std::string hyphens(columns.size(), '-');
  auto footer = [&] {
    font(8, false);
    const std::string page = "Page " + std::to_string(pages);
    at(kPaperWidth - kMargin - t.TextWidth(page), kPaperHeight - 700, page);
    font(kBodySize, false);
  };
  auto line = [&](const std::string& text) {
    at(kMargin, y, text);
    y += lineH;
  };
  auto newPage = [&](bool first) {
    if (pages > 0) t.NewPage();
    ++pages;
    y = kTop;
    if (first) {
      font(14, true);
      at(kMargin, y, "Orvanta Logbook");
      y += t.TextHeight("X");
      font(kBodySize, false);
      line(paper.VersionLine);
      line(hyphens);
    } else {
      font(kBodySize, false);
      line("Orvanta Logbook");
      line(hyphens);
    }
    font(kBodySize, true);
    line(columns);
    font(kBodySize, false);
    footer();
  };
  newPage(true);
  int number = 0;
  for (const LogbookPaperLine& f : paper.Flights) {
    if (y + lineH > kBottom) newPage(false);
    line(LogbookPaperRow(++number, f));
  }
  if (y + 3 * lineH > kBottom) newPage(false);
  line(hyphens);
  font(kBodySize, true);
  line(paper.TotalLine);
  return pages;
}

}  // namespace orv
