// The online menus of the main window: the downloads, the IVAO and VATSIM
// layers, the weather and the oceanic tracks.
#include <array>

#include "app/DownloadLink.h"

namespace orv {

namespace {

constexpr std::array<std::string_view, 13> kOnlineMenus = {
    "menuDownloadWx",   "menuDownloadIVAO",  "menuDownloadVatSim", "menuDownloadNATrack", "menuDownloadPacot",
    "menuShowWx",       "menuNatrackRoutes", "menuPacotRoutes",    "menuIvaoAirspace",    "menuIvaoAircraft",
    "menuVatsimAirspace", "menuVatsimAircraft", "menuShowAltSpeed",
};

}  // namespace

bool MainWindowController::IsOnlineMenu(std::string_view name) {
  for (std::string_view m : kOnlineMenus)
    if (m == name) return true;
  return name == "menuShowDepDest";
}

DownloadManager* MainWindowController::Downloads() {
  OnlineSession& o = s_.Online;
  if (!o.Downloads) {
    UiThread* thread = view_.InterfaceThread();
    if (!thread) return nullptr;
    if (!o.Http) o.Http = MakeCurlHttpClient();
    o.Downloads = std::make_unique<DownloadManager>(s_.Core, *o.Http, *thread, ui_, clock_, *downloadLink_);
  }
  return o.Downloads.get();
}

bool MainWindowController::ShowNetwork(OnlineNetwork net, bool controllers, bool on) {
  OnlineSession& o = s_.Online;
  if (on && o.Data.Network != net) {
    if (!o.Finder) o.Finder = std::make_unique<AirportFinder>(&s_.Db.Airports);
    std::string caption;
    if (!ParseOnlineFile(s_.Core.Folder, net, *o.Finder, o.SectorsOf(net), o.Data, ui_, caption)) on = false;
    if (on) view_.SetMenuCaption(net == OnlineNetwork::Ivao ? "menuIvao" : "menuVatsim", caption);
  }
  if (on && o.Data.Network == net) {
    // One network at a time on the map: the other one's entries go off.
    downloadLink_->UncheckOtherNetwork(net);
  }
  (controllers ? o.ShowControllers : o.ShowPilots) = on;
  const bool ivao = net == OnlineNetwork::Ivao;
  view_.SetMenuChecked(controllers ? (ivao ? "menuIvaoAirspace" : "menuVatsimAirspace")
                                   : (ivao ? "menuIvaoAircraft" : "menuVatsimAircraft"),
                       on);
  view_.DrawMap();
  return on;
}

bool MainWindowController::OnlineMenu(std::string_view name) {
  if (!IsOnlineMenu(name)) return false;
  OnlineSession& o = s_.Online;
  const AppFolder& folder = s_.Core.Folder;
  if (name.rfind("menuDownload", 0) == 0) {
    DownloadManager* d = Downloads();
    if (!d) {
      ui_.Beep();
      return true;
    }
    if (name == "menuDownloadWx") d->DownloadWeather();
    else if (name == "menuDownloadIVAO") d->DownloadNetwork(OnlineNetwork::Ivao);
    else if (name == "menuDownloadVatSim") d->DownloadNetwork(OnlineNetwork::Vatsim);
    else d->OpenTrackPage(name == "menuDownloadNATrack");
    return true;
  }
  if (name == "menuShowWx") {
    o.ShowWeather = !o.ShowWeather && LoadMetar(folder, ui_, o.Metar);
    view_.SetMenuChecked(name, o.ShowWeather);
  } else if (name == "menuNatrackRoutes") {
    o.ShowNat = !o.ShowNat && ParseNatTracks(folder, &s_.Db, ui_, o.NatTracks);
    view_.SetMenuChecked(name, o.ShowNat);
  } else if (name == "menuPacotRoutes") {
    o.ShowPacific = !o.ShowPacific && ParsePacificTracks(folder, &s_.Db, ui_, o.PacificTracks);
    view_.SetMenuChecked(name, o.ShowPacific);
  } else if (name == "menuShowAltSpeed") {
    s_.Core.Config.OnlShowAltSpeed = !s_.Core.Config.OnlShowAltSpeed;
    view_.SetMenuChecked(name, s_.Core.Config.OnlShowAltSpeed);
  } else if (name == "menuShowDepDest") {
    s_.Core.Config.OnlShowDepDest = !s_.Core.Config.OnlShowDepDest;
    view_.SetMenuChecked(name, s_.Core.Config.OnlShowDepDest);
  } else {
    const OnlineNetwork net = name.find("Ivao") != std::string_view::npos ? OnlineNetwork::Ivao : OnlineNetwork::Vatsim;
    const bool controllers = name.find("Airspace") != std::string_view::npos;
    const bool shown = controllers ? o.ShowControllers : o.ShowPilots;
    ShowNetwork(net, controllers, !(shown && o.Data.Network == net));
    return true;
  }
  view_.DrawMap();
  return true;
}

}  // namespace orv
