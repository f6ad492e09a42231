#include "support/OnlineSamples.h"

#include <cstdio>

namespace orv::test {

namespace {

std::string Num(double v, int decimals = 5) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*f", decimals, v);
  return buf;
}

std::string ClientLines(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs) {
  std::string out;
  for (const SamplePilot& p : pilots) {
    // callsign:cid:name:PILOT::lat:lon:alt:gs:type:tas:dep:lvl:dest:...
    out += p.Callsign + ":100001:" + p.Name + ":PILOT::" + Num(p.Lat) + ":" + Num(p.Lon) + ":" + std::to_string(p.Alt) +
           ":" + std::to_string(p.Speed) + ":" + p.Type + ":450:" + p.Dep + ":FL350:" + p.Dest +
           ":S1:B:2:1200:0:0:1:I::::::::N0450F350 DCT:::::::20261124033000:IvAp:1.0:2:0:" +
           std::to_string(p.Heading) + ":0\r\n";
  }
  for (const SampleAtc& a : atcs) {
    out += a.Callsign + ":200001:" + a.Name + ":ATC:" + Num(a.Freq, 3) + ":" + Num(a.Lat) + ":" + Num(a.Lon) +
           ":0:0::::::SRV1:B:5:0:0:100::::::::::::::::" + a.Atis + ":20261124033000\r\n";
  }
  return out;
}

std::string WhazzupText(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs, bool colon) {
  std::string c = colon ? ":" : "";
  std::string out = "; network data file\r\n!GENERAL" + c + "\r\nVERSION = 1\r\nRELOAD = 2\r\nUPDATE = " +
                    kSampleStamp + "00\r\nCONNECTED CLIENTS = " + std::to_string(pilots.size() + atcs.size()) +
                    "\r\n!CLIENTS" + c + "\r\n";
  out += ClientLines(pilots, atcs);
  out += "!SERVERS" + c + "\r\nSRV1:1.2.3.4:Europe:Main server:1\r\n";
  return out;
}

std::string JsonText(const std::string& s) {
  std::string out = "\"";
  for (char ch : s) {
    if (ch == '"' || ch == '\\') out += '\\';
    out += ch;
  }
  return out + "\"";
}

int VatsimFacilityCode(const std::string& cs) {
  if (cs.find("_FSS") != std::string::npos) return 1;
  if (cs.find("_DEL") != std::string::npos) return 2;
  if (cs.find("_GND") != std::string::npos) return 3;
  if (cs.find("_TWR") != std::string::npos) return 4;
  if (cs.find("_APP") != std::string::npos) return 5;
  if (cs.find("_CTR") != std::string::npos) return 6;
  return 0;
}

std::string IvaoPosition(const std::string& cs) {
  size_t us = cs.rfind('_');
  return us == std::string::npos ? "" : cs.substr(us + 1);
}

}  // namespace

std::string IvaoWhazzupText(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs) {
  return WhazzupText(pilots, atcs, false);
}

std::string VatsimWhazzupText(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs) {
  return WhazzupText(pilots, atcs, true) + "!PREFILE:\r\n";
}

std::string VatsimV3Json(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs) {
  std::string out = "{\n  \"general\": {\"version\": 3, \"reload\": 1, \"update\": \"20261124033612\", "
                    "\"update_timestamp\": \"2026-11-24T03:36:12.3456789Z\", \"connected_clients\": " +
                    std::to_string(pilots.size() + atcs.size()) + ", \"unique_users\": 1},\n  \"pilots\": [\n";
  for (size_t i = 0; i < pilots.size(); ++i) {
    const SamplePilot& p = pilots[i];
    out += "    {\"cid\": " + std::to_string(1000000 + i) + ", \"name\": " + JsonText(p.Name) +
           ", \"callsign\": " + JsonText(p.Callsign) +
           ", \"server\": \"GERMANY\", \"pilot_rating\": 0, \"military_rating\": 0, \"latitude\": " + Num(p.Lat) +
           ", \"longitude\": " + Num(p.Lon) + ", \"altitude\": " + std::to_string(p.Alt) +
           ", \"groundspeed\": " + std::to_string(p.Speed) + ", \"transponder\": \"2200\", \"heading\": " +
           std::to_string(p.Heading) + ", \"qnh_i_hg\": 29.92, \"qnh_mb\": 1013, \"flight_plan\": ";
    if (p.Dep.empty()) {
      out += "null";
    } else {
      out += "{\"flight_rules\": \"I\", \"aircraft\": \"" + p.Type + "/M-SDE2E3FGHIJ1RWXY/LB1\", \"aircraft_faa\": \"" +
             p.Type + "/L\", \"aircraft_short\": " + JsonText(p.Type) + ", \"departure\": " + JsonText(p.Dep) +
             ", \"arrival\": " + JsonText(p.Dest) +
             ", \"alternate\": \"\", \"cruise_tas\": \"450\", \"altitude\": \"35000\", \"deptime\": \"0330\", "
             "\"enroute_time\": \"0815\", \"fuel_time\": \"1000\", \"remarks\": \"PBN/A1B1C1D1 DOF/261124 "
             "REG/DABCD /V/\", \"route\": \"SULUS UZ650 ERNAS Z80 BOMBI T161 ROBIN\", \"revision_id\": 1, "
             "\"assigned_transponder\": \"0000\"}";
    }
    out += ", \"logon_time\": \"2026-11-24T01:00:00.0000000Z\", \"last_updated\": \"2026-11-24T03:36:10.0000000Z\"}";
    out += i + 1 < pilots.size() ? ",\n" : "\n";
  }
  out += "  ],\n  \"controllers\": [\n";
  for (size_t i = 0; i < atcs.size(); ++i) {
    const SampleAtc& a = atcs[i];
    out += "    {\"cid\": " + std::to_string(2000000 + i) + ", \"name\": " + JsonText(a.Name) +
           ", \"callsign\": " + JsonText(a.Callsign) + ", \"frequency\": \"" + Num(a.Freq, 3) +
           "\", \"facility\": " + std::to_string(VatsimFacilityCode(a.Callsign)) +
           ", \"rating\": 5, \"server\": \"GERMANY\", \"visual_range\": 100, \"text_atis\": [\"Welcome\", "
           "\"Please check in\"], \"last_updated\": \"2026-11-24T03:36:00.0000000Z\", \"logon_time\": "
           "\"2026-11-24T01:00:00.0000000Z\"}";
    out += i + 1 < atcs.size() ? ",\n" : "\n";
  }
  out += "  ],\n  \"atis\": [],\n  \"servers\": [],\n  \"prefiles\": [],\n  \"facilities\": [],\n  \"ratings\": []\n}\n";
  return out;
}

std::string VatsimStatusJson(const std::string& dataUrl) {
  return "{\"data\": {\"v3\": [\"" + dataUrl + "\"], \"transceivers\": [\"https://example.invalid/t.json\"]},"
         " \"user\": [\"https://stats.vatsim.net/\"], \"metar\": [\"https://metar.vatsim.net/metar.php\"]}";
}

std::string IvaoV2Json(const std::vector<SamplePilot>& pilots, const std::vector<SampleAtc>& atcs) {
  std::string out = "{\"updatedAt\": \"2026-11-24T03:36:12.000Z\", \"servers\": [], \"voiceServers\": [],"
                    " \"clients\": {\"pilots\": [";
  for (size_t i = 0; i < pilots.size(); ++i) {
    const SamplePilot& p = pilots[i];
    out += std::string(i ? "," : "") + "{\"time\": 100, \"id\": " + std::to_string(i) + ", \"userId\": " +
           std::to_string(500000 + i) + ", \"callsign\": " + JsonText(p.Callsign) +
           ", \"serverId\": \"WS\", \"softwareTypeId\": \"altitude/win\", \"softwareVersion\": \"1.0\","
           " \"rating\": 2, \"createdAt\": \"2026-11-24T01:00:00.000Z\", \"lastTrack\": {\"altitude\": " +
           std::to_string(p.Alt) + ", \"altitudeDifference\": 0, \"arrivalDistance\": 100, \"departureDistance\": 10,"
           " \"groundSpeed\": " + std::to_string(p.Speed) + ", \"heading\": " + std::to_string(p.Heading) +
           ", \"latitude\": " + Num(p.Lat) + ", \"longitude\": " + Num(p.Lon) +
           ", \"onGround\": false, \"state\": \"En Route\", \"timestamp\": \"2026-11-24T03:36:00.000Z\","
           " \"transponder\": 2200, \"transponderMode\": \"N\", \"time\": 100}, \"flightPlan\": {\"id\": 1,"
           " \"revision\": 0, \"aircraftId\": " + JsonText(p.Type) + ", \"flightRules\": \"I\", \"flightType\": \"S\","
           " \"departureId\": " + JsonText(p.Dep) + ", \"arrivalId\": " + JsonText(p.Dest) +
           ", \"route\": \"DCT\", \"aircraft\": {\"icaoCode\": " + JsonText(p.Type) + ", \"model\": \"x\"}},"
           " \"pilotSession\": {\"simulatorId\": \"MSFS\"}}";
  }
  out += "], \"atcs\": [";
  for (size_t i = 0; i < atcs.size(); ++i) {
    const SampleAtc& a = atcs[i];
    out += std::string(i ? "," : "") + "{\"time\": 100, \"id\": " + std::to_string(9000 + i) + ", \"userId\": " +
           std::to_string(600000 + i) + ", \"callsign\": " + JsonText(a.Callsign) +
           ", \"serverId\": \"WS\", \"softwareTypeId\": \"aurora/win\", \"softwareVersion\": \"1.0\", \"rating\": 5,"
           " \"createdAt\": \"2026-11-24T01:00:00.000Z\", \"lastTrack\": {\"latitude\": " + Num(a.Lat) +
           ", \"longitude\": " + Num(a.Lon) + ", \"altitude\": 0}, \"atcSession\": {\"frequency\": " +
           Num(a.Freq, 3) + ", \"position\": \"" + IvaoPosition(a.Callsign) +
           "\"}, \"atis\": {\"lines\": [\"" + a.Callsign + "\", \"Landing 25L\", \"Take-off 18\","
           " \"Confirm information C on initial contact\"], \"revision\": \"C\", \"timestamp\": \"x\"}}";
  }
  out += "], \"observers\": [], \"followMe\": []}, \"connections\": {\"total\": 1, \"supervisor\": 0,"
         " \"atc\": " + std::to_string(atcs.size()) + ", \"observer\": 0, \"pilot\": " + std::to_string(pilots.size()) +
         ", \"worldTour\": 0, \"followMe\": 0}}";
  return out;
}

std::vector<SamplePilot> ManyPilots(int n) {
  std::vector<SamplePilot> v;
  v.reserve(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) {
    SamplePilot p;
    p.Callsign = "DLH" + std::to_string(100 + i);
    p.Name = "Pilot Number " + std::to_string(i) + " EDDF";
    p.Lat = -60 + (i * 37 % 1200) / 10.0;
    p.Lon = -180 + (i * 71 % 3600) / 10.0;
    p.Alt = 1000 + i * 13 % 40000;
    p.Speed = 120 + i % 380;
    p.Heading = i * 7 % 360;
    p.Dep = "EDDF";
    p.Dest = "KJFK";
    p.Type = "A320";
    v.push_back(p);
  }
  return v;
}

std::vector<SampleAtc> ManyAtcs(int m) {
  static const char* kSuffix[] = {"_TWR", "_GND", "_APP", "_DEL", "_CTR", "_FSS"};
  std::vector<SampleAtc> v;
  for (int i = 0; i < m; ++i) {
    SampleAtc a;
    char icao[5] = {static_cast<char>('A' + i % 26), static_cast<char>('A' + i / 26 % 26), 'X', 'X', 0};
    a.Callsign = std::string(icao) + kSuffix[i % 6];
    a.Name = "Controller " + std::to_string(i);
    a.Freq = 118.0 + (i % 100) * 0.025;
    a.Lat = -50 + i % 100;
    a.Lon = -170 + i % 340;
    v.push_back(a);
  }
  return v;
}

namespace {
std::string StationIdent(int i) {
  std::string s(4, 'A');
  for (int k = 3; k >= 0; --k) {
    s[static_cast<size_t>(k)] = static_cast<char>('A' + i % 26);
    i /= 26;
  }
  return s;
}
}  // namespace

std::string WxStationFile(int n) {
  std::string out;
  for (int i = 0; i < n; ++i)
    out += StationIdent(i) + "," + Num(-60 + (i * 37 % 1200) / 10.0, 4) + "," + Num(-180 + (i * 71 % 3600) / 10.0, 4) + "\r\n";
  return out;
}

std::string MetarReports(int n, int perStation) {
  static const char* kBodies[] = {
      "27015G25KT 9999 FEW030 SCT045 12/07 Q1013 NOSIG",
      "VRB03KT 4000 BR BKN008 OVC020 05/04 Q1008 BECMG 6000",
      "12005MPS CAVOK M05/M07 Q1030",
      "AUTO 31012KT 10SM -RA BKN025 OVC060 08/06 A2992 RMK AO2 SLP132",
      "00000KT 0800 FG VV002 02/02 Q1021",
      "24018G32KT 3000 +TSRA SCT020CB BKN040 18/16 Q1002",
  };
  std::string out;
  for (int i = 0; i < n; ++i)
    for (int k = 0; k < perStation; ++k)
      out += StationIdent(i) + " 24" + std::to_string(10 + k) + "20Z " + kBodies[(i + k) % 6] + "\r\n";
  return out;
}

std::string MetarCsv(const std::vector<std::string>& raw) {
  std::string out = "No errors\nNo warnings\n5 ms\ndata source=metars\n" + std::to_string(raw.size()) +
                    " results\nraw_text,station_id,observation_time,latitude,longitude,temp_c\n";
  for (const std::string& r : raw) out += r + "," + r.substr(0, 4) + ",2026-11-24T03:20:00Z,50.0,8.5,12\n";
  return out;
}

std::string NatMessage(int tracks) {
  std::string out =
      "<html><head><title>North Atlantic Tracks</title></head><body><pre>\r\n"
      "Last updated at 2026/11/24 1130 1900Z\r\n"
      "(NAT-1/2 TRACKS FLS 310/390 INCLUSIVE\r\n"
      "NOV 24/1130Z TO NOV 24/1900Z\r\n"
      "PART ONE OF TWO PARTS-\r\n";
  for (int i = 0; i < tracks; ++i) {
    // Track names are one character: letters, then lower case, then digits.
    std::string name(1, static_cast<char>(i < 26 ? 'A' + i : i < 52 ? 'a' + i - 26 : '0' + (i - 52) % 10));
    int lat = 45 + i % 15;
    if (i == 26) out += "PART TWO OF TWO PARTS-\r\n";
    out += name + " PIKIL " + std::to_string(lat) + "/20 " + std::to_string(lat) +
           "/30 " + std::to_string(lat + 1) + "/40 " + std::to_string(lat + 1) + "/50 NOWAY\r\n";
    if (i % 2 == 0)
      out += "EAST LVLS NIL\r\n\r\nWEST LVLS 310 320 330 340\r\nEUR RTS WEST NIL\r\nNAR NIL-\r\n";
    else
      out += "EAST LVLS 350 360 370\r\nWEST LVLS NIL\r\nEUR RTS EAST PIKIL\r\nNAR NIL-\r\n";
  }
  out += "REMARKS:\r\n1. TMI IS 328\r\nEND OF PART TWO OF TWO PARTS)\r\n</pre></body></html>\r\n";
  return out;
}

std::string PacificPage() {
  return "<html><body>\r\n"
         "Data is current as of 24 Nov 2026 0300 UTC\r\n"
         "<pre>\r\n"
         "241200 KZOA OAKLAND ARTCC\r\n"
         "(TDM TRK A 261124120001\r\n"
         "2611241900 2611250800\r\n"
         "PIKIL 40N160W 4230N15000W 45N140W MARGO\r\n"
         "RTS/KSFO MARGO\r\n"
         "RMK/0)\r\n"
         "KZOA ONLY TEXT\r\n"
         "241300 RJJJ FUKUOKA ACC\r\n"
         "TRACK 7.\r\n"
         "FLEX ROUTE : KALNA 40N150E 42N160E\r\n"
         "44N170E 45N180E.\r\n"
         "RCTP TAIPEI\r\n"
         "</pre></body></html>\r\n";
}

}  // namespace orv::test
