#include "online/Downloads.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <random>

#include "core/FileIo.h"
#include "core/Runtime.h"
#include "online/LineScan.h"
#include "core/Settings.h"
#include "online/Metar.h"

namespace fs = std::filesystem;

namespace orv {

namespace {

constexpr int64_t kMinOnlineFile = 4097;   // shorter answers are the servers' error pages

bool Exists(const fs::path& p) {
  std::error_code ec;
  return fs::exists(p, ec);
}

int64_t FileLength(const fs::path& p) {
  std::error_code ec;
  auto n = fs::file_size(p, ec);
  return ec ? 0 : static_cast<int64_t>(n);
}

void Remove(const fs::path& p) {
  std::error_code ec;
  fs::remove(p, ec);
}

// Lines until the end mark (an empty line, or "; END" for VATSIM), trimmed.
template <class Fn>
void StatusLines(std::string_view text, bool vatsim, Fn fn) {
  size_t pos = 0;
  while (pos < text.size()) {
    size_t nl = LineEnd(text, pos);
    std::string_view raw = text.substr(pos, nl == std::string_view::npos ? std::string_view::npos : nl - pos);
    if (nl != std::string_view::npos && text[nl] == '\r' && nl + 1 < text.size() && text[nl + 1] == '\n') ++nl;
    pos = nl == std::string_view::npos ? text.size() : nl + 1;
    std::string_view line = TrimView(raw);
    if (vatsim ? line == "; END" : line.empty()) return;
    if (!fn(line)) return;
  }
}

bool ReadStatus(std::string_view text, bool vatsim, std::string_view statusUrl, std::string& listText,
                std::string& movedTo) {
  listText.clear();
  movedTo.clear();
  if (LooksLikeJson(text)) {
    if (vatsim) {
      if (auto url = VatsimJsonDataUrl(text)) {
        listText = *url + "\r\n";
        return true;
      }
    }
    // The status address already answers with the data feed itself.
    if (text.find("\"pilots\"") != std::string_view::npos) {
      listText = std::string(statusUrl) + "\r\n";
      return true;
    }
    return false;
  }
  bool moved = false;
  StatusLines(text, vatsim, [&](std::string_view line) {
    if (line.substr(0, 8) == "moveto0=") {
      movedTo = std::string(line.substr(8));
      moved = true;
      return false;
    }
    return true;
  });
  if (moved) return false;
  StatusLines(text, vatsim, [&](std::string_view line) {
    if (line.substr(0, 5) == "url0=") listText += std::string(line.substr(5)) + "\r\n";
    return true;
  });
  return true;
}

std::vector<std::string> ReadList(std::string_view text, std::string_view fallback) {
  std::vector<std::string> urls;
  for (const std::string& line : SplitLines(text)) {
    std::string t = Trim(line);
    if (!t.empty()) urls.push_back(std::move(t));
  }
  if (urls.empty()) urls.emplace_back(fallback);
  return urls;
}

// The date of a file's last change, local time, as the runtime's date text
// of the day; and today's.
std::string FileDay(const fs::path& p) {
  std::error_code ec;
  auto t = fs::last_write_time(p, ec);
  if (ec) return {};
  auto sys = std::chrono::time_point_cast<std::chrono::system_clock::duration>(
      t - fs::file_time_type::clock::now() + std::chrono::system_clock::now());
  std::time_t tt = std::chrono::system_clock::to_time_t(sys);
  std::tm tm{};
  localtime_r(&tt, &tm);
  return Format(tm.tm_mday, "00") + "." + Format(tm.tm_mon + 1, "00") + "." + Format(tm.tm_year + 1900, "0000");
}

std::string Today(const Clock& clock) {
  DateTime d = clock.Now();
  return Format(d.day, "00") + "." + Format(d.month, "00") + "." + Format(d.year, "0000");
}

}  // namespace

bool ReadIvaoStatus(std::string_view text, std::string_view statusUrl, std::string& listText, std::string& movedTo) {
  return ReadStatus(text, false, statusUrl, listText, movedTo);
}

bool ReadVatsimStatus(std::string_view text, std::string_view statusUrl, std::string& listText,
                      std::string& movedTo) {
  return ReadStatus(text, true, statusUrl, listText, movedTo);
}

bool CopyBackup(const fs::path& src, const fs::path& dst) {
  if (!Exists(src) || FileLength(src) < 1) return false;
  std::error_code ec;
  return fs::copy_file(src, dst, fs::copy_options::overwrite_existing, ec);
}

bool RepairIvaoLineEnds(const AppFolder& app) {
  fs::path ori = app.Resolve("\\database\\orv_ivao.ori");
  fs::path txt = app.Resolve("\\database\\orv_ivao.txt");
  auto bytes = ReadWholeFile(ori);
  if (!bytes) return false;
  std::string out;
  out.reserve(bytes->size() + bytes->size() / 40);
  for (uint8_t b : *bytes) {
    if (b == 10) out += '\r';
    out += static_cast<char>(b);
  }
  Remove(txt);
  bool ok = WriteFileAtomic(txt, out);
  Remove(ori);
  return ok;
}

int BarPercent(int64_t index, int64_t upper) {
  if (upper <= 0) return 100;
  double q = static_cast<double>(upper) / static_cast<double>(index + 1);
  if (q <= 0) return 100;
  int p = static_cast<int>(100.0 / q);
  return p < 0 ? 0 : p > 100 ? 100 : p;
}

// ------------------------------------------------------------ the manager

DownloadManager::DownloadManager(AppState& app, HttpClient& http, UiThread& uiThread, Ui& ui, const Clock& clock,
                                 DownloadHost& host)
    : app_(app), http_(http), uiThread_(uiThread), ui_(ui), clock_(clock), host_(host) {
  std::mt19937 gen(static_cast<uint32_t>(clock.TickMs()));
  random_ = [gen]() mutable { return std::uniform_real_distribution<double>(0.0, 1.0)(gen); };
}

DownloadManager::~DownloadManager() {
  if (worker_.joinable()) worker_.join();
}

bool DownloadManager::Start() {
  if (busy_) {
    outcome_ = DownloadOutcome::Refused;
    return false;
  }
  if (worker_.joinable()) worker_.join();
  busy_ = true;
  outcome_ = DownloadOutcome::Running;
  lastMessage_.clear();
  return true;
}

void DownloadManager::RunWorker(std::function<void()> job) {
  if (worker_.joinable()) worker_.join();
  worker_ = std::thread(std::move(job));
}

void DownloadManager::Finish(DownloadOutcome outcome, std::string message) {
  busy_ = false;
  outcome_ = outcome;
  if (!message.empty()) lastMessage_ = std::move(message);
}

void DownloadManager::Message(const std::string& text) {
  lastMessage_ = text;
  ui_.MsgBox(text, MsgStyle::Exclamation);
}

bool DownloadManager::ConfirmDownload(std::string_view what) {
  std::string q = "   Make sure that you are connected with the Internet!\r\nAre you sure you want to download the current ";
  q += what;
  q += "?";
  return ui_.AskYesNo(q, kAppTitle);
}

HttpResult DownloadManager::Fetch(const std::string& url, const std::function<void(int)>& percent) {
  auto last = std::make_shared<int>(-1);
  return http_.Get(url, timeoutMs_, [&, last](int64_t done, int64_t total) {
    int p = total > 0 ? BarPercent(done - 1, total) : 0;
    if (p != *last) {
      *last = p;
      percent(p);
    }
  });
}

// ------------------------------------------------------------ weather

void DownloadManager::DownloadWeather() {
  if (busy_) {
    Message("A download is already running.");
    outcome_ = DownloadOutcome::Refused;
    return;
  }
  if (!ConfirmDownload("Weather data")) {
    outcome_ = DownloadOutcome::Cancelled;
    host_.FocusMap();
    return;
  }
  Start();
  host_.SetDownloadLabel("Downloading file from Server");
  host_.ShowDownload(true);
  host_.SetBar(0);
  fs::path txt = app_.Folder.Resolve("\\database\\orv_metar.txt");
  fs::path old = app_.Folder.Resolve("\\Database\\orv_metar.old");
  if (Exists(txt)) CopyBackup(txt, old);
  std::string url = app_.Config.WxUrl;
  RunWorker([this, url, txt, old] {
    HttpResult r = Fetch(url, [this](int p) { uiThread_.Post([this, p] { host_.SetBar(p); }); });
    // The bulk CSV of today's services becomes plain reports in station order.
    bool ok = r.Ok && !r.Body.empty();
    if (ok) {
      std::string text = MetarCsvToReports(r.Body);
      ok = WriteFileAtomic(txt, text) && FileLength(txt) >= 1;
    }
    uiThread_.Post([this, ok, txt, old] {
      host_.ShowDownload(false);
      if (!ok) {
        Message("Error downloading Weather file!");
        CopyBackup(old, txt);
        host_.FocusMap();
        Finish(DownloadOutcome::Failed, {});
        return;
      }
      Finish(DownloadOutcome::Done, {});
      host_.WeatherDownloaded();
      host_.DrawMap();
    });
  });
}

// ------------------------------------------------------------ IVAO and VATSIM

void DownloadManager::DownloadNetwork(OnlineNetwork net) {
  if (busy_) {
    Message("A download is already running.");
    outcome_ = DownloadOutcome::Refused;
    return;
  }
  if (!ConfirmDownload(net == OnlineNetwork::Ivao ? "IVAO data" : "VATSIM data")) {
    outcome_ = DownloadOutcome::Cancelled;
    return;
  }
  Start();
  RefreshStatusThen(net);
}

void DownloadManager::RefreshStatusThen(OnlineNetwork net) {
  const bool ivao = net == OnlineNetwork::Ivao;
  fs::path status = app_.Folder.Resolve(ivao ? "\\Ivao_Status.txt" : "\\VatSim_Status.txt");
  fs::path old = app_.Folder.Resolve(ivao ? "\\ivao_Status.old" : "\\VatSim_Status.old");
  if (Exists(status) && FileDay(status) == Today(clock_)) {
    ContinueNetwork(net);
    return;
  }
  if (Exists(status)) CopyBackup(status, old);
  std::string url = ivao ? app_.Config.IvaoUrlStatus : app_.Config.VatsimUrlStatus;
  RunWorker([this, net, ivao, url, status, old] {
    HttpResult r = http_.Get(url, timeoutMs_, {});
    bool ok = r.Ok && !r.Body.empty() && WriteFileAtomic(status, r.Body);
    std::string body = std::move(r.Body);
    uiThread_.Post([this, net, ivao, ok, url, body = std::move(body), status, old] {
      if (!ok) {
        CopyBackup(old, status);
        ContinueNetwork(net);
        return;
      }
      std::string list, moved;
      bool read = ivao ? ReadIvaoStatus(body, url, list, moved) : ReadVatsimStatus(body, url, list, moved);
      if (!read) {
        if (!moved.empty()) (ivao ? app_.Config.IvaoUrlStatus : app_.Config.VatsimUrlStatus) = moved;
        Message("Error downloading file, try again!");
        Finish(DownloadOutcome::Failed, {});
        return;
      }
      WriteFileAtomic(app_.Folder.Resolve(ivao ? "\\URLIVAO.INI" : "\\URLVATSIM.INI"), list);
      ContinueNetwork(net);
    });
  });
}

void DownloadManager::ContinueNetwork(OnlineNetwork net) {
  const bool ivao = net == OnlineNetwork::Ivao;
  fs::path listPath = app_.Folder.Resolve(ivao ? "\\URLIVAO.INI" : "\\URLVATSIM.INI");
  if (!Exists(listPath)) {
    // The defaults always go to URLVATSIM.INI: a first-time IVAO user gets
    // an empty IVAO list, which the fallback below fills.
    std::string text;
    if (ivao) {
      for (const std::string& u : DefaultIvaoUrls()) text += u + "\r\n";
    } else {
      text = std::string(kDefaultVatsimDataUrl) + "\r\n";
    }
    WriteFileAtomic(app_.Folder.Resolve("\\URLVATSIM.INI"), text);
  }
  std::string listText = ReadWholeText(listPath).value_or(std::string());
  if (ivao) {
    IvaoUrls = ReadList(listText, DefaultIvaoUrls().front());
    IvaoActive = -1;
    VatsimActive = 0;
  } else {
    VatsimUrls = ReadList(listText, kDefaultVatsimDataUrl);
    VatsimActive = -1;
    IvaoActive = 0;
  }
  host_.UncheckOtherNetwork(net);
  busy_ = false;   // DownloadOnlineData takes the flag itself
  DownloadOnlineData(true);
  AutoSeconds = 0;
}

void DownloadManager::DownloadOnlineData(bool interactive) {
  if (!IvaoActive && !VatsimActive) return;
  if (busy_) {
    if (interactive) Message("A download is already running.");
    outcome_ = DownloadOutcome::Refused;
    return;
  }
  Start();
  const bool ivao = IvaoActive != 0;
  host_.SetTitle("downloading online data...");
  host_.SetDownloadLabel("Downloading file from Server");
  host_.ShowDownload(true);
  host_.SetBar(0);
  AutoSeconds = 0;
  fs::path txt = app_.Folder.Resolve(ivao ? "\\database\\orv_ivao.txt" : "\\database\\orv_vatsim.txt");
  fs::path old = app_.Folder.Resolve(ivao ? "\\database\\orv_ivao.old" : "\\database\\orv_vatsim.old");
  fs::path ori = app_.Folder.Resolve("\\database\\orv_ivao.ori");
  fs::path target = ivao ? ori : txt;
  if (Exists(txt)) CopyBackup(txt, old);
  std::vector<std::string> urls = ivao ? IvaoUrls : VatsimUrls;
  if (urls.empty()) urls.emplace_back(ivao ? DefaultIvaoUrls().front() : std::string(kDefaultVatsimDataUrl));
  std::vector<double> picks;
  for (int i = 0; i < 9; ++i) picks.push_back(random_());
  RunWorker([this, ivao, urls, picks, target, txt, old, ori, interactive] {
    bool good = false;
    for (int attempt = 0; attempt <= 8 && !good; ++attempt) {
      size_t index = 1;
      if (urls.size() >= 2) {
        index = static_cast<size_t>(static_cast<double>(urls.size()) * picks[static_cast<size_t>(attempt)] + 1);
        if (index < 1) index = 1;
        if (index > urls.size()) index = urls.size();
      }
      uiThread_.Post([this, index] { host_.SetDownloadLabel("Downloading file from Server: " + std::to_string(index)); });
      HttpResult r = Fetch(urls[index - 1], [this](int p) { uiThread_.Post([this, p] { host_.SetBar(p); }); });
      if (!r.Ok || r.Body.empty()) continue;
      if (!WriteFileAtomic(target, r.Body)) continue;
      good = FileLength(target) >= kMinOnlineFile;
    }
    uiThread_.Post([this, ivao, good, txt, old, ori, interactive] {
      host_.ShowDownload(false);
      host_.RestoreTitle();
      if (!good) {
        if (interactive) Message("Error downloading file!");
        else lastMessage_ = "Error downloading file!";
        CopyBackup(old, txt);
        if (ivao) Remove(ori);
        host_.FocusMap();
        Finish(DownloadOutcome::Failed, {});
        return;
      }
      if (ivao) RepairIvaoLineEnds(app_.Folder);
      Finish(DownloadOutcome::Done, {});
      host_.OnlineDownloaded(ivao ? OnlineNetwork::Ivao : OnlineNetwork::Vatsim);
      host_.DrawMap();
    });
  });
}

void DownloadManager::ClockTick(bool showCounter, bool refreshGate) {
  if (!IvaoActive && !VatsimActive) {
    AutoSeconds = 0;
    return;
  }
  const int interval = app_.Config.DlInterval * 60;
  if (app_.Config.AutoDownload) ++AutoSeconds;
  if (showCounter)
    host_.SetTitle(std::string(kAppTitle) + " - DLC: " + std::to_string(interval - AutoSeconds) + " / " +
                   std::to_string(interval));
  if (refreshGate && (AutoSeconds == app_.Config.DlInterval * 20 || AutoSeconds == app_.Config.DlInterval * 40))
    host_.DrawMap();
  if (interval > 0 && AutoSeconds >= interval) {
    AutoSeconds = 0;
    RetryCount = 0;
    if (!busy_) DownloadOnlineData(false);
  }
}

// ------------------------------------------------------------ track pages

void DownloadManager::OpenTrackPage(bool nat) {
  std::string q = "Make sure that you are connected with the Internet!\r\n  Are you sure you want to call the ";
  q += nat ? "NATrack" : "Pacot";
  q += " page?";
  if (!ui_.AskYesNo(q, kAppTitle)) {
    outcome_ = DownloadOutcome::Cancelled;
    host_.FocusMap();
    return;
  }
  fs::path htm = app_.Folder.Resolve(nat ? "\\Database\\North Atlantic Tracks.htm"
                                         : "\\Database\\United States NOTAM Office.htm");
  fs::path old = app_.Folder.Resolve(nat ? "\\Database\\North Atlantic Tracks.old"
                                         : "\\Database\\United States NOTAM Office.old");
  if (Exists(htm)) {
    std::error_code ec;
    fs::rename(htm, old, ec);
  }
  host_.OpenInBrowser(nat ? app_.Config.NaTrackUrl : app_.Config.PacotUrl);
  host_.EnableTrackMenu(nat);
  host_.DrawMap();
  outcome_ = DownloadOutcome::Done;
}

}  // namespace orv
