// The download manager's window inside the main window controller: kept in
// its own header because the controller's two source files both need it.
#pragma once

#include "app/MainWindowController.h"
#include "online/Metar.h"

namespace orv {

// The download manager's window: the main window's view, and the online
// files read again when a download has put them in place.
class MainWindowController::DownloadLink : public DownloadHost {
public:
  DownloadLink(MainWindowController& c) : c_(c) {}
  void ShowDownload(bool visible) override { c_.view_.ShowDownload(visible); }
  void SetDownloadLabel(std::string_view text) override { c_.view_.SetDownloadLabel(text); }
  void SetBar(int percent) override { c_.view_.SetBar(percent); }
  void SetTitle(std::string_view text) override { c_.ui_.SetCaption("OVRMap", text); }
  void RestoreTitle() override { c_.ui_.SetCaption("OVRMap", kAppTitle); }
  void FocusMap() override { c_.view_.FocusMap(); }
  void DrawMap() override { c_.view_.DrawMap(); }
  void WeatherDownloaded() override {
    OnlineSession& o = c_.s_.Online;
    if (o.ShowWeather && !LoadMetar(c_.s_.Core.Folder, c_.ui_, o.Metar)) o.ShowWeather = false;
    c_.view_.SetMenuChecked("menuShowWx", o.ShowWeather);
  }
  void OnlineDownloaded(OnlineNetwork network) override { c_.ShowNetwork(network, true, true); }
  void UncheckOtherNetwork(OnlineNetwork active) override {
    const bool ivao = active == OnlineNetwork::Ivao;
    for (std::string_view m : {ivao ? "menuVatsimAirspace" : "menuIvaoAirspace",
                               ivao ? "menuVatsimAircraft" : "menuIvaoAircraft"})
      c_.view_.SetMenuChecked(m, false);
  }
  void OpenInBrowser(const std::string& url) override { c_.view_.OpenUrl(url); }
  void EnableTrackMenu(bool) override {}

private:
  MainWindowController& c_;
};

}  // namespace orv
