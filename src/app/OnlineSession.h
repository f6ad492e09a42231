// The online part of the program state: the network data shown on the map
// (IVAO or VATSIM), their sectors, the weather reports, the oceanic tracks,
// and the download manager with its HTTP client, made when first needed.
#pragma once

#include <memory>
#include <vector>

#include "online/Downloads.h"
#include "online/HttpClient.h"
#include "online/Metar.h"
#include "online/OnlineData.h"
#include "online/Tracks.h"

namespace orv {

struct OnlineSession {
  OnlineData Data;                      // the network shown (Data.Network)
  std::vector<OnlineSector> IvaoSectors;
  std::vector<OnlineSector> VatsimSectors;
  std::unique_ptr<AirportFinder> Finder;  // controllers placed on their airports
  std::vector<MetarRec> Metar;
  TrackTable NatTracks;
  TrackTable PacificTracks;

  // The map's switches of the online menus.
  bool ShowWeather = false;     // menuShowWx
  bool ShowNat = false;         // menuNatrackRoutes
  bool ShowPacific = false;     // menuPacotRoutes
  bool ShowControllers = false; // menuIvaoAirspace / menuVatsimAirspace
  bool ShowPilots = false;      // menuIvaoAircraft / menuVatsimAircraft
  bool ImmediateWx = false;     // key I: the weather is looked up at once

  // Before the manager, which holds a reference to it.
  std::unique_ptr<HttpClient> Http;
  std::unique_ptr<DownloadManager> Downloads;

  std::vector<OnlineSector>& SectorsOf(OnlineNetwork n) { return n == OnlineNetwork::Ivao ? IvaoSectors : VatsimSectors; }
};

}  // namespace orv
