// Shared between the text and the JSON readers of the network data.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "online/OnlineData.h"

namespace orv {

// One controller of a JSON feed into the station arrays; see OnlineFeeds.cpp.
void AddFeedStation(std::string_view callsign, int facilityFromFeed, bool ivao, float lat, float lon, bool hasPos,
                    float frequency, std::string_view name, const AirportFinder& airports, OnlineData& out,
                    const std::vector<std::string>* atis);

}  // namespace orv
