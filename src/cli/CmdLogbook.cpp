// "logbook [--csv]" and "replay FILE.rcd [--gpx OUT]".
#include <chrono>
#include <filesystem>
#include <ostream>

#include "cli/Cli.h"
#include "core/AppFolder.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "simlink/Logbook.h"
#include "simlink/Recording.h"

namespace orv::cli {

int CmdLogbook(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  bool csv = false;
  for (const auto& a : args) {
    if (a == "--csv") {
      csv = true;
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
