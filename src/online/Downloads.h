// The download manager: weather, the IVAO and VATSIM data with their status
// files and server lists, the timed download of the Clock tick and the
// oceanic track pages. Every transfer runs on a worker thread so that the
// window keeps painting; its result comes back through the UiThread, and all
// files, questions and messages are handled on the interface thread. One
// download at a time.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Ui.h"
#include "online/HttpClient.h"
#include "online/OnlineData.h"

namespace orv {

// What the main window shows and does for a download.
class DownloadHost {
public:
  virtual ~DownloadHost() = default;
  // lblDownLoad and ShowBar shown or hidden together.
  virtual void ShowDownload(bool visible) = 0;
  virtual void SetDownloadLabel(std::string_view text) = 0;
  virtual void SetBar(int percent) = 0;
  // The main window's title; RestoreTitle puts back its usual caption.
  virtual void SetTitle(std::string_view text) = 0;
  virtual void RestoreTitle() = 0;
  virtual void FocusMap() = 0;
  virtual void DrawMap() = 0;
  // A new orv_metar.txt is in place: load the weather (LoadMetar).
  virtual void WeatherDownloaded() = 0;
  // A new orv_ivao.txt / orv_vatsim.txt is in place: ParseOnlineFile and the
  // menu counts.
  virtual void OnlineDownloaded(OnlineNetwork network) = 0;
  // menuVatsimAirspace or the IVAO counterpart unchecked.
  virtual void UncheckOtherNetwork(OnlineNetwork active) = 0;
  virtual void OpenInBrowser(const std::string& url) = 0;
  // menuNatrackRoutes or MenuPacot enabled.
  virtual void EnableTrackMenu(bool nat) = 0;
};

// A DownloadHost that does nothing, for the command line.
class NullDownloadHost : public DownloadHost {
public:
  void ShowDownload(bool) override {}
  void SetDownloadLabel(std::string_view) override {}
  void SetBar(int) override {}
  void SetTitle(std::string_view) override {}
  void RestoreTitle() override {}
  void FocusMap() override {}
  void DrawMap() override {}
  void WeatherDownloaded() override {}
  void OnlineDownloaded(OnlineNetwork) override {}
  void UncheckOtherNetwork(OnlineNetwork) override {}
  void OpenInBrowser(const std::string&) override {}
  void EnableTrackMenu(bool) override {}
};

// The VATSIM data feed written into a missing URLVATSIM.INI and used when the
// list is empty.
inline constexpr std::string_view kDefaultVatsimDataUrl = "https://data.vatsim.net/v3/vatsim-data.json";

// The status texts: the server list written to listPath, or false (a moved
// status file sets movedTo). The text status files of both networks, the
// VATSIM status.json, and a status answer that is itself a JSON data feed
// (the list then names the status URL).
bool ReadIvaoStatus(std::string_view text, std::string_view statusUrl, std::string& listText, std::string& movedTo);
bool ReadVatsimStatus(std::string_view text, std::string_view statusUrl, std::string& listText, std::string& movedTo);

// Copies src over dst; false (silently) when src is missing or empty.
bool CopyBackup(const std::filesystem::path& src, const std::filesystem::path& dst);

// The IVAO line-end repair: the .ori copied to orv_ivao.txt with a 13 ahead
// of every 10; the old .txt goes first, the .ori after. Nothing without .ori.
bool RepairIvaoLineEnds(const AppFolder& app);

// The bar value after `index` of `upper` bytes: 100 / (upper / (index + 1)).
int BarPercent(int64_t index, int64_t upper);

enum class DownloadOutcome { None, Running, Done, Failed, Cancelled, Refused };

class DownloadManager {
public:
  DownloadManager(AppState& app, HttpClient& http, UiThread& uiThread, Ui& ui, const Clock& clock, DownloadHost& host);
  ~DownloadManager();
  DownloadManager(const DownloadManager&) = delete;
  DownloadManager& operator=(const DownloadManager&) = delete;

  // The request time-out, 15 seconds; tests shorten it.
  void SetTimeoutMs(int ms) { timeoutMs_ = ms; }
  // The random pick of a server, a value in [0, 1); tests fix it.
  void SetRandom(std::function<double()> random) { random_ = std::move(random); }

  // The menu commands. Each refuses while another download runs.
  void DownloadWeather();                  // menuDownloadWx
  void DownloadNetwork(OnlineNetwork net); // menuDownloadIVAO, menuDownloadVatSim
  void OpenTrackPage(bool nat);            // menuDownloadNATrack, menuDownloadPacot
  // DownloadOnlineData with interactive false or true.
  void DownloadOnlineData(bool interactive);

  // The Clock tick, once a second. showCounter: the counter display setting
  // is "1"; refreshGate: one of the two display entries is checked and
  // TrackingActive is set.
  void ClockTick(bool showCounter, bool refreshGate);

  bool Busy() const { return busy_; }
  DownloadOutcome LastOutcome() const { return outcome_; }
  const std::string& LastMessage() const { return lastMessage_; }

  int16_t IvaoActive = 0;
  int16_t VatsimActive = 0;
  std::vector<std::string> IvaoUrls;
  std::vector<std::string> VatsimUrls;
  int16_t AutoSeconds = 0;
  int16_t RetryCount = 0;

private:
  bool Start();
  void RunWorker(std::function<void()> job);
  void Finish(DownloadOutcome outcome, std::string message);
  void Message(const std::string& text);
  bool ConfirmDownload(std::string_view what);
  // Steps 2 to 6 of the network sequence, after the question.
  void RefreshStatusThen(OnlineNetwork net);
  void ContinueNetwork(OnlineNetwork net);
  HttpResult Fetch(const std::string& url, const std::function<void(int)>& percent);

  AppState& app_;
  HttpClient& http_;
  UiThread& uiThread_;
  Ui& ui_;
  const Clock& clock_;
  DownloadHost& host_;
  int timeoutMs_ = 15000;
  std::function<double()> random_;
  bool busy_ = false;
  DownloadOutcome outcome_ = DownloadOutcome::None;
  std::string lastMessage_;
  std::thread worker_;
};

}  // namespace orv
