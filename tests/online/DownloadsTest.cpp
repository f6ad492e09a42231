#include "online/Downloads.h"

#include <gtest/gtest.h>

#include "core/FileIo.h"
#include "online/Metar.h"
#include "online/LoopbackServer.h"
#include "support/FakeClock.h"
#include "support/OnlineSamples.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

test::Route R(int status, std::string body, int delayMs = 0, bool gzip = false, std::string location = "") {
  return test::Route{status, std::move(body), delayMs, gzip, std::move(location)};
}

// Records what the window would show.
struct RecordingHost : DownloadHost {
  std::vector<std::string> events;
  int maxBar = 0;
  void ShowDownload(bool v) override { events.push_back(v ? "show" : "hide"); }
  void SetDownloadLabel(std::string_view t) override { events.push_back("label " + std::string(t)); }
  void SetBar(int p) override { maxBar = std::max(maxBar, p); }
  void SetTitle(std::string_view t) override { events.push_back("title " + std::string(t)); }
  void RestoreTitle() override { events.push_back("restore"); }
  void FocusMap() override { events.push_back("focus"); }
  void DrawMap() override { events.push_back("draw"); }
  void WeatherDownloaded() override { events.push_back("weather"); }
  void OnlineDownloaded(OnlineNetwork n) override { events.push_back(n == OnlineNetwork::Ivao ? "ivao" : "vatsim"); }
  void UncheckOtherNetwork(OnlineNetwork) override {}
  void OpenInBrowser(const std::string& url) override { events.push_back("browse " + url); }
  void EnableTrackMenu(bool nat) override { events.push_back(nat ? "enable nat" : "enable pacot"); }
  bool Saw(const std::string& e) const { return std::find(events.begin(), events.end(), e) != events.end(); }
};

class DownloadTest : public ::testing::Test {
protected:
  DownloadTest() : app(AppFolder(dir.Path())) {
    http = MakeCurlHttpClient();
    mgr = std::make_unique<DownloadManager>(app, *http, queue, ui, clock, host);
    mgr->SetTimeoutMs(3000);
    mgr->SetRandom([] { return 0.0; });
    app.Config.WxUrl = server.Url("/metar.csv");
    app.Config.VatsimUrlStatus = server.Url("/status.json");
    app.Config.IvaoUrlStatus = server.Url("/status.txt");
    fs::create_directories(dir.Path() / "database");
  }
  // Pumps the interface queue until the download ends; at most 10 seconds.
  void Wait() {
    for (int i = 0; i < 200 && mgr->Busy(); ++i) queue.WaitAndPump(50);
    queue.Pump();
  }
  std::string File(const std::string& rel) { return ReadWholeText(dir.Path() / rel).value_or("<missing>"); }

  test::TempDir dir;
  test::LoopbackServer server;
  AppState app;
  test::ScriptedUi ui;
  test::FakeClock clock;
  RecordingHost host;
  QueueUiThread queue;
  std::unique_ptr<HttpClient> http;
  std::unique_ptr<DownloadManager> mgr;
};

const std::string kReport = "EDDF 241020Z 27015KT 9999 12/07 Q1013";

TEST_F(DownloadTest, Weather) {
  ui.answers = {Answer::No};
  mgr->DownloadWeather();
  EXPECT_EQ(ui.Texts("ask")[0],
            "   Make sure that you are connected with the Internet!\r\nAre you sure you want to download the current "
            "Weather data?");
  EXPECT_FALSE(mgr->Busy());
  EXPECT_EQ(server.Hits("/metar.csv"), 0);

  // Today's bulk CSV, gzipped, becomes plain reports in station order.
  server.Set("/metar.csv", R(200, test::MetarCsv({"KJFK 241051Z 31012KT 10SM A2992", kReport}), 0, true));
  ui.answers = {Answer::Yes};
  mgr->DownloadWeather();
  EXPECT_TRUE(mgr->Busy());
  Wait();
  EXPECT_TRUE(server.LastAcceptedGzip());
  EXPECT_EQ(File("database/orv_metar.txt"), kReport + "\r\nKJFK 241051Z 31012KT 10SM A2992\r\n");
  EXPECT_TRUE(host.Saw("label Downloading file from Server"));
  EXPECT_TRUE(host.Saw("weather"));
  EXPECT_EQ(host.maxBar, 100);

  // 404 and a server slower than the time-out: the message, and the .old back.
  for (const test::Route& r : {R(404, "nope"), R(200, "late", 1000)}) {
    server.Set("/metar.csv", r);
    mgr->SetTimeoutMs(300);
    ui.answers = {Answer::Yes};
    auto start = std::chrono::steady_clock::now();
    mgr->DownloadWeather();
    Wait();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_EQ(ui.Messages().back(), "Error downloading Weather file!");
    EXPECT_EQ(File("database/orv_metar.old"), File("database/orv_metar.txt"));
    EXPECT_EQ(File("database/orv_metar.txt"), kReport + "\r\nKJFK 241051Z 31012KT 10SM A2992\r\n");
  }

  // A second download is refused while one runs.
  server.Set("/metar.csv", R(200, kReport, 600));
  mgr->SetTimeoutMs(3000);
  ui.answers = {Answer::Yes};
  mgr->DownloadWeather();
  mgr->DownloadNetwork(OnlineNetwork::Vatsim);
  EXPECT_EQ(ui.Messages().back(), "A download is already running.");
  EXPECT_EQ(mgr->LastOutcome(), DownloadOutcome::Refused);
  Wait();
  EXPECT_EQ(File("database/orv_metar.txt"), kReport);   // plain reports are kept as they came
}

TEST_F(DownloadTest, VatsimFeedThroughItsStatusFile) {
  std::string feed = test::VatsimV3Json(test::ManyPilots(20), test::ManyAtcs(5));
  ASSERT_GT(feed.size(), 4097u);
  server.Set("/status.json", R(200, test::VatsimStatusJson(server.Url("/v3.json"))));
  server.Set("/v3.json", R(200, feed, 0, true));
  ui.answers = {Answer::Yes};
  mgr->DownloadNetwork(OnlineNetwork::Vatsim);
  Wait();
  EXPECT_EQ(mgr->LastOutcome(), DownloadOutcome::Done);
  EXPECT_EQ(File("URLVATSIM.INI"), server.Url("/v3.json") + "\r\n");
  EXPECT_EQ(File("database/orv_vatsim.txt"), feed);
  EXPECT_EQ(mgr->VatsimActive, -1);
  EXPECT_EQ(mgr->IvaoActive, 0);
  EXPECT_TRUE(host.Saw("title downloading online data..."));
  EXPECT_TRUE(host.Saw("label Downloading file from Server: 1"));
  EXPECT_TRUE(host.Saw("vatsim"));

  // The status file is from today: no new status, only the data again. The
  // timed download then runs silently after DLINTERVAL minutes.
  app.Config.AutoDownload = true;
  app.Config.DlInterval = 1;
  server.Set("/v3.json", R(200, "short error page"));
  for (int i = 0; i < 59; ++i) mgr->ClockTick(true, false);
  EXPECT_FALSE(mgr->Busy());
  EXPECT_TRUE(host.Saw("title Orvanta - DLC: 1 / 60"));
  mgr->ClockTick(true, false);
  EXPECT_TRUE(mgr->Busy());
  Wait();
  EXPECT_EQ(server.Hits("/status.json"), 1);
  EXPECT_EQ(server.Hits("/v3.json"), 10);   // one good, then nine short answers
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(File("database/orv_vatsim.txt"), feed);   // the .old came back
}

TEST_F(DownloadTest, IvaoStatusListRepairAndRefusals) {
  // A moved status file: the new address is kept, the list is not written.
  server.Set("/status.txt", R(200, "; status\r\nmoveto0=" + server.Url("/status2.txt") + "\r\nurl0=x\r\n"));
  ui.answers = {Answer::Yes};
  mgr->DownloadNetwork(OnlineNetwork::Ivao);
  Wait();
  EXPECT_EQ(ui.Messages().back(), "Error downloading file, try again!");
  EXPECT_EQ(app.Config.IvaoUrlStatus, server.Url("/status2.txt"));
  EXPECT_FALSE(fs::exists(dir.Path() / "URLIVAO.INI"));

  // The moved status names two servers; the pick with random 0.5 is the second.
  fs::remove(dir.Path() / "Ivao_Status.txt");
  server.Set("/status2.txt", R(200, "url0=" + server.Url("/a.txt") + "\r\nurl0=" + server.Url("/b.txt") + "\r\n\r\nurl0=never\r\n"));
  std::string text = test::IvaoWhazzupText(test::ManyPilots(40), {});
  std::string lf = text;
  for (size_t p; (p = lf.find("\r\n")) != std::string::npos;) lf.erase(p, 1);
  server.Set("/b.txt", R(200, lf));
  mgr->SetRandom([] { return 0.5; });
  ui.answers = {Answer::Yes};
  mgr->DownloadNetwork(OnlineNetwork::Ivao);
  Wait();
  EXPECT_EQ(File("URLIVAO.INI"), server.Url("/a.txt") + "\r\n" + server.Url("/b.txt") + "\r\n");
  EXPECT_EQ(server.Hits("/b.txt"), 1);
  EXPECT_EQ(File("database/orv_ivao.txt"), text);   // LF became CR LF
  EXPECT_FALSE(fs::exists(dir.Path() / "database/orv_ivao.ori"));
  EXPECT_TRUE(host.Saw("ivao"));

  // A data file of 4096 bytes is refused: nine tries, then the .old is back.
  server.Set("/a.txt", R(200, std::string(4096, 'x')));
  server.Set("/b.txt", R(200, std::string(4096, 'x')));
  ui.answers = {Answer::Yes};
  mgr->DownloadNetwork(OnlineNetwork::Ivao);
  Wait();
  EXPECT_EQ(server.Hits("/b.txt"), 10);
  EXPECT_EQ(ui.Messages().back(), "Error downloading file!");
  EXPECT_EQ(File("database/orv_ivao.txt"), text);
  EXPECT_FALSE(fs::exists(dir.Path() / "database/orv_ivao.ori"));

  // A CR LF file gets a doubled CR.
  WriteFileAtomic(dir.Path() / "database/orv_ivao.ori", std::string("a\r\nb\n"));
  EXPECT_TRUE(RepairIvaoLineEnds(app.Folder));
  EXPECT_EQ(File("database/orv_ivao.txt"), "a\r\r\nb\r\n");
  EXPECT_FALSE(RepairIvaoLineEnds(app.Folder));

  // Status texts on their own.
  std::string list, moved;
  EXPECT_TRUE(ReadVatsimStatus("url0=a\r\n\r\nurl0=b\r\n; END\r\nurl0=c\r\n", "", list, moved));
  EXPECT_EQ(list, "a\r\nb\r\n");   // VATSIM's list ends at "; END", not at an empty line
  EXPECT_TRUE(ReadIvaoStatus(test::IvaoV2Json(test::ManyPilots(1), {}), "https://x/whazzup", list, moved));
  EXPECT_EQ(list, "https://x/whazzup\r\n");
  EXPECT_EQ(BarPercent(99, 1000), 10);
}

TEST_F(DownloadTest, IvaoJsonFeedIsItsOwnStatus) {
  std::string feed = test::IvaoV2Json(test::ManyPilots(30), test::ManyAtcs(3));
  app.Config.IvaoUrlStatus = server.Url("/v2/tracker/whazzup");
  server.Set("/v2/tracker/whazzup", R(200, feed, 0, true));
  ui.answers = {Answer::Yes};
  mgr->DownloadNetwork(OnlineNetwork::Ivao);
  Wait();
  EXPECT_EQ(mgr->LastOutcome(), DownloadOutcome::Done);
  EXPECT_EQ(File("URLIVAO.INI"), server.Url("/v2/tracker/whazzup") + "\r\n");
  EXPECT_EQ(server.Hits("/v2/tracker/whazzup"), 2);   // once as status, once as data
  OnlineData data;
  std::vector<OnlineSector> sectors;
  std::string caption;
  ASSERT_TRUE(ParseOnlineFile(app.Folder, OnlineNetwork::Ivao, nullptr, sectors, data, ui, caption));
  EXPECT_EQ(data.Pilots.size(), 30u);
  EXPECT_EQ(caption, "&IVAO     - 24.11.2026-03:36 h / ATC:3 - Pilots:30");
}

TEST_F(DownloadTest, HttpClientLimitsAndTrackPages) {
  server.Set("/big", R(200, std::string(200000, 'y')));
  HttpResult r = http->Get(server.Url("/big"), 3000, {}, 100000);
  EXPECT_FALSE(r.Ok);
  EXPECT_EQ(r.Error, "the answer is too large");
  EXPECT_TRUE(r.Body.empty());
  server.Set("/moved", R(302, "", 0, false, server.Url("/big")));
  r = http->Get(server.Url("/moved"), 3000, {});
  EXPECT_TRUE(r.Ok);
  EXPECT_EQ(r.Body.size(), 200000u);

  app.Config.NaTrackUrl = "https://tracks.example/nat";
  dir.Write("Database/North Atlantic Tracks.htm", "page");
  ui.answers = {Answer::Yes};
  mgr->OpenTrackPage(true);
  EXPECT_EQ(ui.Texts("ask").back(),
            "Make sure that you are connected with the Internet!\r\n  Are you sure you want to call the NATrack page?");
  EXPECT_EQ(File("Database/North Atlantic Tracks.old"), "page");
  EXPECT_FALSE(fs::exists(dir.Path() / "Database/North Atlantic Tracks.htm"));
  EXPECT_TRUE(host.Saw("browse https://tracks.example/nat"));
  EXPECT_TRUE(host.Saw("enable nat"));
}

}  // namespace
}  // namespace orv
