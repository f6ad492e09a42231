// METAR weather: the station positions of WxStation.txt, the reports of
// orv_metar.txt decoded group by group, and the conversion of the bulk CSV
// the aviation weather services publish into that plain report file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"
#include "core/Ui.h"

namespace orv {

struct WxStationRec {
  std::string Icao;
  float Latitude = 0;
  float Longitude = 0;
};

inline constexpr int16_t kWindVariable = -1;
inline constexpr int16_t kWindNone = -2;
inline constexpr int16_t kVisTenKm = -1;
inline constexpr int16_t kVisCavok = -2;
inline constexpr int16_t kVisStatuteMiles = 10000;

struct MetarRec {
  std::string Icao;
  float Latitude = 0;
  float Longitude = 0;
  int16_t Day = 0, Hour = 0, Minute = 0;
  int16_t WindSpeed = 0;
  int16_t WindDir = kWindNone;
  int16_t Gust = 0;
  int16_t Visibility = 0;
  std::string CloudText;
  int16_t Temperature = 0;
  int16_t DewPoint = 0;
  int16_t Qnh = 0;
  int16_t Rain = 0, Drizzle = 0, Snow = 0, IcePellets = 0, Hail = 0, Fog = 0, Mist = 0, Haze = 0, Smoke = 0,
          Thunderstorm = 0, Cumulonimbus = 0;
  bool operator==(const MetarRec&) const = default;
};

// The station list with the resume index of the ordered search.
class WxStations {
public:
  // LoadStations on the file's text: lines of "ICAO,lat,lon"; the resume
  // index goes back to 0.
  void Load(std::string_view text);
  // Latitude -500 for an unknown station. The search starts at the resume
  // index and stops at the first station whose first letter is past the
  // wanted one; a report out of the list's order is therefore not found.
  void FindStation(std::string_view icao, float& lat, float& lon);
  void ResetResume() { resume_ = 0; }
  const std::vector<WxStationRec>& Stations() const { return stations_; }

private:
  std::vector<WxStationRec> stations_;
  size_t resume_ = 0;
};

// Decodes one report from character 6 on (after "ICAO ") into rec.
void ParseMetarGroups(std::string_view line, MetarRec& rec);

// LoadMetar on two texts: each report line whose station is found gets a
// record.
std::vector<MetarRec> ParseMetarFile(std::string_view reports, WxStations& stations);

// LoadMetar on the folder: the messages and the .old fallback of a missing
// report file. False, with the array untouched, when a file is missing; the
// caller unchecks menuShowWx then.
bool LoadMetar(const AppFolder& app, Ui& ui, std::vector<MetarRec>& out);

// The aviation weather services' bulk CSV (raw report in the first column)
// as plain report lines sorted by station; any other text is returned as it
// came. A "METAR " or "SPECI " in front of a report is dropped.
std::string MetarCsvToReports(std::string_view text);
bool LooksLikeMetarCsv(std::string_view text);

// The public station list (ICAO, then latitude and longitude as degrees,
// minutes and a hemisphere letter, "50-02N", "008-34E") as WxStation.txt lines,
// sorted by identifier.
std::string StationListToWxStations(std::string_view text);

// The hover box's lines of a weather station (row 11); nullptr gives
// "No weatherdata available". Texts are 8-bit.
std::vector<std::string> MetarHoverLines(const MetarRec* rec, std::string_view station);

}  // namespace orv
