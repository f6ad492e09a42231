// Hand-made network files for the online tests and benchmarks: the IVAO and
// VATSIM text files, the VATSIM v3 and IVAO v2 JSON feeds, METAR reports with
// their station file, and the North Atlantic and Pacific track messages.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orv::test {

struct SamplePilot {
  std::string Callsign, Name;
  double Lat = 0, Lon = 0;
  int Alt = 0, Speed = 0, Heading = 0;
  std::string Dep, Dest, Type;
};

struct SampleAtc {
  std::string Callsign, Name;
  double Freq = 0;
  double Lat = 0, Lon = 0;
  std::string Atis;   // IVAO text ATIS, "^\xA7"-separated
};

// "UPDATE = yyyymmddhhmm" stamp of the text files.
inline constexpr const char* kSampleStamp = "202611240336";

// The text files: a general section with the stamp, the clients, the
// servers. IVAO's section marks have no colon, VATSIM's do.
std::string IvaoWhazzupText(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs);
std::string VatsimWhazzupText(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs);

// facility: VATSIM's code (4 tower, 6 centre, ...) by the callsign's suffix.
std::string VatsimV3Json(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs);
std::string VatsimStatusJson(const std::string& dataUrl);
std::string IvaoV2Json(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs);

// n pilots and m controllers spread over the world, deterministic.
std::vector<SamplePilot> ManyPilots(int n);
std::vector<SampleAtc> ManyAtcs(int m);

// A station file of n stations "ICAO,lat,lon" in alphabetical order, and
// reports for them: `perStation` reports a station, in the same order.
std::string WxStationFile(int n);
std::string MetarReports(int n, int perStation);
// The aviation weather services' bulk CSV of the given raw reports.
std::string MetarCsv(const std::vector<std::string>& raw);

// A North Atlantic message with `tracks` tracks (letters A.., then AA..),
// alternate tracks westbound; the coordinates are latitude/longitude words.
std::string NatMessage(int tracks);
// An Oakland and a Fukuoka block with one track each.
std::string PacificPage();

}  // namespace orv::test
