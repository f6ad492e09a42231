// Builders for the files the start-up only checks for length and whose
// readers live in later layers: the stored departure and arrival procedures
// (sid.orv, star.orv) and the weather station list (WxStation.txt). The test
// folders write them in their documented layouts so that those readers find
// real content.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orv::test {

// One point of a stored procedure: 61 bytes in the file.
struct ProcedurePoint {
  std::string Kind;  // as in a plan row: "Int", "VOR", "NDB", "Fix", ...
  std::string Code;
  std::string Name;
  float Lat = 0;
  float Lon = 0;
};

// A block of sid.orv or star.orv: a 56-byte head and its points.
struct ProcedureBlock {
  std::string Airport;  // ICAO code
  std::string Runway;   // designator; "00" for any runway
  std::string Name;
  std::vector<ProcedurePoint> Points;  // at most 255
};

std::vector<uint8_t> BuildProcedureFile(const std::vector<ProcedureBlock>& blocks);

struct WxStation {
  std::string Icao;
  float Lat = 0;
  float Lon = 0;
};

// "ICAO,lat,lon" lines with CR LF, in the order given (the program expects
// alphabetical order).
std::string BuildWxStationFile(const std::vector<WxStation>& stations);

}  // namespace orv::test
