// "logbook [--csv] [--pdf OUT.pdf]" and "replay FILE.rcd [--gpx OUT]".
#include <chrono>
#include <filesystem>
#include <ostream>

#include "app/LogbookWindow.h"
#include "cli/Cli.h"
#include "cli/CliGui.h"
#include "core/AppFolder.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "mapqt/PaperPdf.h"
#include "mapqt/QtFontSet.h"
#include "simlink/Logbook.h"
#include "simlink/Recording.h"

namespace orv::cli {

int CmdLogbook(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  bool csv = false;
  std::string pdf;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--csv") {
      csv = true;
    } else if (a == "--pdf" && i + 1 < args.size()) {
      pdf = args[++i];
    } else {
      err << "logbook: unknown option " << a << "\n";
      return 2;
    }
  }
  const auto path = AppFolder(ctx.appDir).Resolve(kLogbookFile);
  const LogbookRead book = LoadLogbook(path);
  if (!book.ok) {
    err << book.error << "\n";
    return 1;
  }
  if (!pdf.empty()) {
    // The printed book of frmLogbook, into a PDF file.
    auto app = EnsureGuiApplication();
    QtFontSet fonts;
    const LogbookPaper paper = LogbookPaperOf(book.entries);
    std::string why;
    const int pages = WritePdf(pdf, fonts, false, "Orvanta Logbook",
                               [&](DrawTarget& t) { return PrintLogbook(t, paper); }, &why);
    if (pages == 0) {
      err << "logbook: " << pdf << ": " << why << "\n";
      return 1;
    }
    out << "printed " << pdf << " (" << pages << (pages == 1 ? " page" : " pages") << ")\n";
    return 0;
  }
  if (csv) {
    out << LogbookToCsv(book.entries);
    return 0;
  }
  auto line = [&](const std::vector<std::string>& cells) {
    std::string t;
    for (const auto& c : cells) t += (t.empty() ? "" : "  ") + c;
    out << Latin1ToUtf8(t) << "\n";
  };
  line(LogbookHeadings());
  for (const auto& row : LogbookGridRows(book.entries)) line(row);
  out << LogbookTotalLine(book.entries) << "\n";
  return 0;
}

int CmdReplay(const Context&, const Args& args, std::ostream& out, std::ostream& err) {
  std::string file, gpx;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--gpx" && i + 1 < args.size()) {
      gpx = args[++i];
    } else if (file.empty() && args[i].rfind("--", 0) != 0) {
      file = args[i];
    } else {
      err << "replay: unexpected argument " << args[i] << "\n";
      return 2;
    }
  }
  if (file.empty()) {
    err << "replay: which recording?\n";
    return 2;
  }
  const auto bytes = ReadWholeText(file);
  if (!bytes) {
    err << "replay: cannot open " << file << "\n";
    return 1;
  }
  const RecordingRead r = ReadRecording(*bytes);
  if (!r.ok) {
    err << r.error << "\n";
    return 1;
  }
  out << "Description: " << Latin1ToUtf8(r.rec.RecDescription) << "\n";
  out << "Samples: " << r.rec.Samples.size() << (r.rec.OldFormat ? " (old format)" : "") << "\n";
  for (std::size_t i = 0; i < r.rec.Samples.size(); ++i)
    out << Latin1ToUtf8(ReplayLine(ReplayLabelsOf(r.rec.Samples[i], r.rec.TraceTimes[i], true))) << "\n";
  if (!gpx.empty()) {
    std::error_code ec;
    const auto stamp = std::filesystem::last_write_time(file, ec);
    DateTime date;
    if (!ec) {
      const auto sys = std::chrono::time_point_cast<std::chrono::system_clock::duration>(
          stamp - std::filesystem::file_time_type::clock::now() + std::chrono::system_clock::now());
      const auto ymd = std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(sys));
      date.year = static_cast<int>(ymd.year());
      date.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
      date.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
    }
    if (!WriteFileAtomic(gpx, RecordingToGpx(r.rec, date))) {
      err << "replay: cannot write " << gpx << "\n";
      return 1;
    }
  }
  return 0;
}

}  // namespace orv::cli
