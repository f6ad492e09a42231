// orvanta-cli download, online, metar and tracks: the network data of the
// folder, fetched and read as the program does.
#include <chrono>
#include <ostream>

#include "app/ProgramState.h"
#include "cli/Cli.h"
#include "cli/CliUi.h"
#include "core/AppState.h"
#include "core/Clock.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "core/Settings.h"
#include "database/NavDatabase.h"
#include "online/Downloads.h"
#include "online/Metar.h"
#include "online/OnlineData.h"
#include "online/Tracks.h"

namespace orv::cli {

namespace {

// The stream Ui, with the questions answered Yes when the user said so.
class AnsweringUi : public StreamUi {
public:
  AnsweringUi(std::ostream& out, std::ostream& err, bool yes) : StreamUi(out, err), yes_(yes) {}
  bool AskYesNo(std::string_view text, std::string_view title) override {
    return yes_ ? true : StreamUi::AskYesNo(text, title);
  }

private:
  bool yes_;
};

// Reports the labels on the output, as the window's label shows them.
class PrintingHost : public NullDownloadHost {
public:
  explicit PrintingHost(std::ostream& out) : out_(out) {}
  void SetDownloadLabel(std::string_view text) override { out_ << text << '\n'; }

private:
  std::ostream& out_;
};

std::string Out(std::string_view latin1) { return Latin1ToUtf8(latin1); }

}  // namespace

int CmdDownload(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  const char* usage = "usage: orvanta-cli download weather|ivao|vatsim [--url URL] [--yes]\n";
  if (args.empty()) {
    err << usage;
    return 2;
  }
  std::string what = args[0], url;
  bool yes = false;
  for (size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--yes") yes = true;
    else if (args[i] == "--url" && i + 1 < args.size()) url = args[++i];
    else {
      err << "download: unknown option '" << args[i] << "'\n" << usage;
      return 2;
    }
  }
  if (what != "weather" && what != "ivao" && what != "vatsim") {
    err << usage;
    return 2;
  }
  AppState app{AppFolder(ctx.appDir)};
  ReadIniFile(app.Folder, app.Config);
  if (!url.empty()) {
    if (what == "weather") app.Config.WxUrl = url;
    else if (what == "ivao") app.Config.IvaoUrlStatus = url;
    else app.Config.VatsimUrlStatus = url;
  }
  std::unique_ptr<HttpClient> http = MakeCurlHttpClient();
  if (!http) {
    err << "download: this build has no HTTP client\n";
    return 1;
  }
  AnsweringUi ui(out, err, yes);
  SystemClock clock;
  QueueUiThread queue;
  PrintingHost host(out);
  DownloadManager mgr(app, *http, queue, ui, clock, host);
  if (what == "weather") mgr.DownloadWeather();
  else mgr.DownloadNetwork(what == "ivao" ? OnlineNetwork::Ivao : OnlineNetwork::Vatsim);
  // The transfers are bounded by their time-outs: nine tries of 15 s and a
  // status file at most.
  auto until = std::chrono::steady_clock::now() + std::chrono::minutes(4);
  while (mgr.Busy() && std::chrono::steady_clock::now() < until) queue.WaitAndPump(100);
  queue.Pump();
  if (mgr.LastOutcome() == DownloadOutcome::Cancelled) {
    err << "download: not confirmed (add --yes)\n";
    return 1;
  }
  if (mgr.LastOutcome() != DownloadOutcome::Done) return 1;
  // Whatever the status file changed is kept, as the program keeps it.
  if (!url.empty() || what != "weather") SaveIni(app.Folder, app.Config);
  std::string file = what == "weather" ? "\\database\\orv_metar.txt"
                     : what == "ivao"  ? "\\database\\orv_ivao.txt"
                                       : "\\database\\orv_vatsim.txt";
  std::error_code ec;
  out << app.Folder.Resolve(file).string() << ": " << std::filesystem::file_size(app.Folder.Resolve(file), ec)
      << " bytes\n";
  return 0;
}

int CmdOnline(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  OnlineNetwork net = OnlineNetwork::Vatsim;
  std::string file;
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--ivao") net = OnlineNetwork::Ivao;
    else if (args[i] == "--vatsim") net = OnlineNetwork::Vatsim;
    else if (args[i] == "--file" && i + 1 < args.size()) file = args[++i];
    else {
      err << "online: unknown option '" << args[i] << "'\nusage: orvanta-cli online [--ivao|--vatsim] [--file F]\n";
      return 2;
    }
  }
  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;
  AppState& state = s.Core;
  NavDatabase& db = s.Db;
  std::string path = file.empty() ? state.Folder.Resolve(net == OnlineNetwork::Ivao ? "\\database\\orv_ivao.txt"
                                                                                     : "\\database\\orv_vatsim.txt")
                                        .string()
                                  : file;
  auto text = ReadWholeText(path);
  OnlineData data;
  std::string error;
  AirportFinder finder(&db.Airports);
  if (!text || !ParseOnlineText(net, *text, finder, data, error)) {
    err << (net == OnlineNetwork::Ivao ? "Error reading in IVAO File! Download the file again!"
                                       : "Error reading in VATSIM File! Download the file again!")
        << '\n';
    return 1;
  }
  std::vector<OnlineSector> sectors = LoadSectorFile(state.Folder, net);
  MatchIvaoSectors(data, sectors);
  out << Out(data.OnlineHeader) << '\n';
  static constexpr const char* kKinds[] = {"TWR", "GND", "APP", "DEL", "CTR", "FSS"};
  out << "pilots " << data.Pilots.size();
  for (int f = 0; f < kFacilityCount; ++f) out << "  " << kKinds[f] << ' ' << data.Stations[f].size();
  out << '\n';
  for (const OnlineClientRec& p : data.Pilots) {
    out << "PILOT\t" << Out(p.Callsign) << '\t' << Format(p.Latitude, "0.0000") << '\t' << Format(p.Longitude, "0.0000")
        << '\t' << p.Altitude << '\t' << p.GroundSpeed << '\t' << Out(p.Departure) << '\t' << Out(p.Destination)
        << '\t' << Out(p.RealName) << '\n';
  }
  for (int f = 0; f < kFacilityCount; ++f) {
    for (const OnlineStationRec& s : data.Stations[f]) {
      out << kKinds[f] << '\t' << Out(s.Station) << '\t' << Out(s.Qualifier) << '\t' << Format(s.Frequency, "000.000")
          << '\t';
      if (s.Latitude == kNoPosition) out << "-\t-";
      else out << Format(s.Latitude, "0.0000") << '\t' << Format(s.Longitude, "0.0000");
      out << '\t' << Out(s.Callsign) << '\t' << Out(s.AtisSummary) << '\n';
    }
  }
  return 0;
}

int CmdMetar(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  std::string file;
  std::vector<std::string> wanted;
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--file" && i + 1 < args.size()) file = args[++i];
    else wanted.push_back(UCase(args[i]));
  }
  AppFolder app(ctx.appDir);
  std::vector<MetarRec> reports;
  std::ostream quiet(nullptr);
  StreamUi ui(quiet, err);
  if (file.empty()) {
    if (!LoadMetar(app, ui, reports)) return 1;
  } else {
    auto stations = ReadWholeText(app.Resolve("\\database\\WxStation.txt"));
    if (!stations) {
      err << "No Weather Station File available!\n";
      return 1;
    }
    auto text = ReadWholeText(file);
    if (!text) {
      err << "No Weather File available! Download a new Weather File!\n";
      return 1;
    }
    WxStations st;
    st.Load(*stations);
    reports = ParseMetarFile(MetarCsvToReports(*text), st);
  }
  int shown = 0;
  for (const MetarRec& r : reports) {
    if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), r.Icao) == wanted.end()) continue;
    for (const std::string& line : MetarHoverLines(&r, r.Icao)) out << Out(line) << '\n';
    ++shown;
  }
  for (const std::string& w : wanted) {
    bool found = std::any_of(reports.begin(), reports.end(), [&](const MetarRec& r) { return r.Icao == w; });
    if (!found) out << Out(MetarHoverLines(nullptr, w)[0]) << '\n' << Out(MetarHoverLines(nullptr, w)[1]) << '\n';
  }
  return shown > 0 || wanted.empty() ? 0 : 1;
}

int CmdTracks(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  if (args.empty() || (args[0] != "nat" && args[0] != "pacific")) {
    err << "usage: orvanta-cli tracks nat|pacific [--file F]\n";
    return 2;
  }
  bool nat = args[0] == "nat";
  std::string file;
  for (size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--file" && i + 1 < args.size()) file = args[++i];
  }
  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;
  AppState& state = s.Core;
  NavDatabase& db = s.Db;
  std::ostream quiet(nullptr);
  StreamUi ui(quiet, err);
  TrackTable table;
  if (file.empty()) {
    if (!(nat ? ParseNatTracks(state.Folder, &db, ui, table) : ParsePacificTracks(state.Folder, &db, ui, table)))
      return 1;
  } else {
    auto text = ReadWholeText(file);
    TrackFixFinder fixes(&db, !nat);
    if (!text || !(nat ? ParseNatTrackText(*text, fixes, table) : ParsePacificTrackText(*text, fixes, table))) {
      err << (nat ? "Error reading in NATrack File! Download the file again!"
                  : "Error reading in Pacot File! Download the file again!")
          << '\n';
      if (!text) return 1;
    }
  }
  for (const TrackRec& t : table.Tracks) {
    std::string levels = TrackTable::Eastbound(t) ? t.EastLevels : t.WestLevels;
    out << Out(t.Name) << '\t' << Out(levels) << '\t' << Format(t.ValidFrom / 100.0, "0000") << '-'
        << Format(t.ValidTo / 100.0, "0000") << '\t';
    for (size_t i = 0; i < t.Points.size(); ++i) out << (i ? " " : "") << Out(t.Points[i].Code.Trimmed());
    out << '\n';
  }
  return 0;
}

}  // namespace orv::cli
