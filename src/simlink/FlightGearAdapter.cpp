#include "simlink/FlightGearAdapter.h"

#if ORV_HAVE_CURL
#include <curl/curl.h>
#endif

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>

#include <nlohmann/json.hpp>

#include "simlink/SimImage.h"

namespace orv {

namespace {

constexpr const char* kNodes[] = {
    "/position/latitude-deg", "/position/longitude-deg", "/position/altitude-ft", "/position/ground-elev-ft",
    "/orientation/heading-deg", "/orientation/pitch-deg", "/orientation/roll-deg", "/velocities/groundspeed-kt",
    "/instrumentation/airspeed-indicator/true-speed-kt", "/velocities/airspeed-kt", "/velocities/vertical-speed-fps",
    "/gear/gear/wow", "/sim/freeze/clock", "/sim/time/utc/day-seconds", "/sim/time/local-day-seconds",
    "/consumables/fuel/total-fuel-gal_us", "/environment/wind-speed-kt", "/environment/wind-from-heading-deg",
    "/environment/magnetic-variation-deg", "/environment/temperature-degc", "/environment/dewpoint-degc",
    "/environment/pressure-sea-level-inhg", "/environment/visibility-m",
    "/instrumentation/comm/frequencies/selected-mhz", "/instrumentation/nav/frequencies/selected-mhz",
    "/instrumentation/adf/frequencies/selected-khz", "/autopilot/settings/heading-bug-deg", "/autopilot/locks/heading",
    "/autopilot/locks/altitude", "/autopilot/settings/target-altitude-ft", "/sim/time/steady-clock-sec"};
constexpr std::size_t kNodeCount = sizeof kNodes / sizeof kNodes[0];
constexpr std::size_t kHeadingLock = 27, kAltitudeLock = 28;

constexpr std::uint32_t kHttpTimeoutMs = 500;
constexpr std::size_t kHttpAnswerLimit = 4 << 20;
constexpr auto kTrafficEvery = std::chrono::milliseconds(1000);

bool ParseDouble(std::string_view text, double& out) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r' || text.back() == '\n')) text.remove_suffix(1);
  if (text.empty()) return false;
  if (text.front() == '+') text.remove_prefix(1);
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), out);
  // Beyond anything a flight gives is nonsense, refused before a conversion overflows.
  return ec == std::errc() && end == text.data() + text.size() && std::isfinite(out) && std::fabs(out) <= 1e7;
}

// --- The property server's JSON answers ----------------------------------------

using Json = nlohmann::json;

// The child node of a property node by name ("children" of the server's JSON).
const Json* Child(const Json& node, std::string_view name) {
  const auto children = node.find("children");
  if (children == node.end() || !children->is_array()) return nullptr;
  for (const Json& c : *children) {
    const auto n = c.find("name");
    if (n != c.end() && n->is_string() && n->get_ref<const std::string&>() == name) return &c;
  }
  return nullptr;
}

double NumberAt(const Json& node, std::initializer_list<std::string_view> path, double otherwise = 0) {
  const Json* at = &node;
  for (std::string_view name : path)
    if (!(at = Child(*at, name))) return otherwise;
  const auto v = at->find("value");
  if (v == at->end()) return otherwise;
  if (v->is_boolean()) return v->get<bool>() ? 1 : 0;
  double d = 0;
  if (v->is_number()) {
    d = v->get<double>();
    // Beyond anything a flight gives is nonsense, refused before a conversion overflows.
    return std::isfinite(d) && std::fabs(d) <= 1e7 ? d : otherwise;
  }
  return v->is_string() && ParseDouble(v->get_ref<const std::string&>(), d) ? d : otherwise;
}

std::string JsonQuote(std::string_view s) {
  std::string out = "\"";
  for (char c : s) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

std::string Num(double v) {
  char b[32];
  std::snprintf(b, sizeof b, "%.6f", v);
  return b;
}

}  // namespace

const std::vector<std::string>& FlightGearNodes() {
  static const std::vector<std::string> nodes(std::begin(kNodes), std::end(kNodes));
  return nodes;
}

bool ParseFlightGearLine(std::string_view line, AircraftState& s, double* elapsedSec) {
  std::vector<std::string_view> f;
  while (true) {
    const auto comma = line.find(',');
    f.push_back(line.substr(0, comma));
    if (comma == std::string_view::npos || f.size() > kNodeCount) break;
    line.remove_prefix(comma + 1);
  }
  if (f.size() != kNodeCount) return false;
  double v[kNodeCount] = {};
  for (std::size_t i = 0; i < kNodeCount; ++i)
    if (i != kHeadingLock && i != kAltitudeLock && !ParseDouble(f[i], v[i])) return false;
  AircraftState n = s;
  n.Latitude = v[0], n.Longitude = v[1], n.AltitudeFt = v[2], n.GroundElevationFt = v[3];
  n.TrueHeading = v[4], n.Pitch = v[5], n.Bank = v[6];
  n.GroundSpeedKt = v[7], n.TasKt = v[8], n.IasKt = v[9], n.VerticalSpeedFpm = v[10] * 60;
  n.OnGround = v[11] != 0, n.Paused = v[12] != 0;
  n.UtcSeconds = v[13], n.LocalSeconds = v[14], n.FuelGallons = v[15];
  n.WindSpeedKt = v[16], n.WindDirDeg = v[17], n.MagVarDeg = v[18];
  n.TemperatureC = v[19], n.DewPointC = v[20], n.QnhHpa = v[21] * 33.8639, n.VisibilityMiles = v[22] / 1609.344;
  n.Com1Mhz = static_cast<float>(v[23]), n.Nav1Mhz = static_cast<float>(v[24]), n.AdfKhz = static_cast<float>(v[25]);
  n.HeadingBugDeg = std::fmod(std::fmod(v[26], 360.0) + 360.0, 360.0);
  const std::string_view headingLock = f[kHeadingLock], altitudeLock = f[kAltitudeLock];
  n.ApHeadingHold = headingLock.find("heading-hold") != std::string_view::npos;
  n.ApAltitudeHold = altitudeLock.find("altitude-hold") != std::string_view::npos;
  // FlightGear has no master switch: the autopilot is on while a lock is set.
  n.ApMaster = !headingLock.empty() || !altitudeLock.empty();
  n.ApAltitudeFt = v[29];
  s = n;
  if (elapsedSec) *elapsedSec = v[30];
  return true;
}

bool ParseAiModels(std::string_view text, std::vector<TrafficEntry>& out) {
  out.clear();
  const Json root = Json::parse(text, nullptr, false);
  if (root.is_discarded() || !root.is_object()) return false;
  const auto children = root.find("children");
  if (children == root.end() || !children->is_array()) return true;  // no AI at all
  std::uint32_t id = 0;
  for (const Json& c : *children) {
    ++id;
    const auto name = c.find("name");
    if (name == c.end() || !name->is_string() ||
        (name->get_ref<const std::string&>() != "aircraft" && name->get_ref<const std::string&>() != "multiplayer"))
      continue;
    if (NumberAt(c, {"valid"}, 1) == 0) continue;
    if (!Child(c, "position")) continue;
    TrafficEntry e;
    e.Id = id;
    e.Latitude = static_cast<float>(NumberAt(c, {"position", "latitude-deg"}));
    e.Longitude = static_cast<float>(NumberAt(c, {"position", "longitude-deg"}));
    e.Altitude = static_cast<float>(NumberAt(c, {"position", "altitude-ft"}));
    double hdg = std::fmod(NumberAt(c, {"orientation", "true-heading-deg"}), 360.0);
    if (hdg > 180) hdg -= 360;
    if (hdg < -180) hdg += 360;
    e.Heading = static_cast<std::int16_t>(std::lround(hdg / kTrafficHeadingFactor));
    e.GroundSpeed = static_cast<std::uint16_t>(std::clamp(NumberAt(c, {"velocities", "true-airspeed-kt"}), 0.0, 65535.0));
    const Json* cs = Child(c, "callsign");
    const auto value = cs ? cs->find("value") : c.end();
    if (cs && value != cs->end() && value->is_string()) {
      const std::string& callsign = value->get_ref<const std::string&>();
      std::memcpy(e.AtcId.data(), callsign.data(), std::min<std::size_t>(callsign.size(), e.AtcId.size() - 1));
    }
    out.push_back(e);
    if (out.size() >= kTrafficMaxCount) break;
  }
  return true;
}

#if ORV_HAVE_CURL
namespace {

size_t CollectAnswer(char* data, size_t size, size_t count, void* user) {
  auto* answer = static_cast<std::string*>(user);
  if (answer->size() + size * count > kHttpAnswerLimit) return 0;  // ends the transfer
  answer->append(data, size * count);
  return size * count;
}

}  // namespace

int HttpExchange(std::string_view host, std::uint16_t port, std::string_view method, std::string_view path,
                 std::string_view body, std::uint32_t timeoutMs, std::string& answer) {
  answer.clear();
  CURL* curl = curl_easy_init();
  if (!curl) return 0;
  const std::string url = "http://" + std::string(host) + ":" + std::to_string(port) + std::string(path);
  const std::string payload(body);
  curl_slist* headers = nullptr;
  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(timeoutMs));
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);  // the adapter's helper thread
  curl_easy_setopt(curl, CURLOPT_PROXY, "");     // the simulator is on the local network
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, CollectAnswer);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer);
  if (method == "POST") {
    headers = curl_slist_append(headers, "Content-Type: application/json");
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, payload.c_str());
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE, static_cast<long>(payload.size()));
  }
  long status = 0;
  if (curl_easy_perform(curl) == CURLE_OK) curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
  curl_slist_free_all(headers);
  curl_easy_cleanup(curl);
  if (status == 0) answer.clear();
  return static_cast<int>(status);
}
#else
int HttpExchange(std::string_view, std::uint16_t, std::string_view, std::string_view, std::string_view,
                 std::uint32_t, std::string& answer) {
  answer.clear();
  return 0;  // built without libcurl: FlightGear is followed but not written to
}
#endif

FlightGearAdapter::FlightGearAdapter(std::string host, std::uint16_t udpPort, std::uint16_t httpPort)
    : host_(std::move(host)), udpPort_(udpPort), httpPort_(httpPort) {}

FlightGearAdapter::~FlightGearAdapter() { Stop(); }

bool FlightGearAdapter::Open(std::string& error) {
  // FlightGear sends to us: listen where it was told to send.
  const bool local = host_ == "127.0.0.1" || host_ == "localhost";
  socket_ = UdpBind(local ? "127.0.0.1" : "0.0.0.0", udpPort_, error);
  return socket_.Valid();
}

void FlightGearAdapter::Receive(std::uint32_t waitMs) {
  char buffer[4096];
  AircraftState state;
  bool changed = false;
  for (long n = UdpRecvFrom(socket_, buffer, sizeof buffer - 1, waitMs); n > 0;
       n = UdpRecvFrom(socket_, buffer, sizeof buffer - 1, 0)) {
    // A datagram holds one or more lines; the last whole one counts.
    std::string_view text(buffer, static_cast<std::size_t>(n));
    bool took = false;
    while (!text.empty()) {
      const auto nl = text.find('\n');
      const std::string_view line = text.substr(0, nl);
      double elapsed = 0;
      if (!line.empty() && ParseFlightGearLine(line, state, &elapsed)) {
        took = true;
        lastElapsed_ = elapsed;
      }
      if (nl == std::string_view::npos) break;
      text.remove_prefix(nl + 1);
    }
    if (took) {
      Took();
      changed = true;
    } else {
      Refused();
    }
  }
  if (changed) {
    std::lock_guard<std::mutex> lock(ImageLock());
    PutAircraftState(AdapterImageRef(), state);
  }
  if (std::chrono::steady_clock::now() >= nextTraffic_ && SilenceMs() < kSilenceMs) PollTraffic();
}

void FlightGearAdapter::PollTraffic() {
  nextTraffic_ = std::chrono::steady_clock::now() + kTrafficEvery;
  std::string body;
  if (HttpExchange(host_, httpPort_, "GET", "/json/ai/models?d=4", "", kHttpTimeoutMs, body) != 200) return;
  std::vector<TrafficEntry> traffic;
  if (!ParseAiModels(body, traffic)) return;
  std::vector<TrafficEntry> air, ground;
  for (const TrafficEntry& e : traffic) (e.GroundSpeed < 40 ? ground : air).push_back(e);
  const std::vector<TrafficExtEntry> airExt(air.size()), groundExt(ground.size());
  std::lock_guard<std::mutex> lock(ImageLock());
  PutTrafficTable(AdapterImageRef(), true, air, airExt);
  PutTrafficTable(AdapterImageRef(), false, ground, groundExt);
}

void FlightGearAdapter::SetProperty(const std::string& path, const std::string& jsonValue) {
  std::string ignored;
  HttpExchange(host_, httpPort_, "POST", "/json" + path, "{\"value\":" + jsonValue + "}", kHttpTimeoutMs, ignored);
}

void FlightGearAdapter::Forward(const std::vector<SimCommand>& commands) {
  for (const SimCommand& c : commands) {
    switch (c.kind) {
      case SimCommand::HeadingBug: SetProperty("/autopilot/settings/heading-bug-deg", Num(c.a)); break;
      case SimCommand::ApHeadingHold:
        SetProperty("/autopilot/locks/heading", JsonQuote(c.a ? "dg-heading-hold" : ""));
        break;
      case SimCommand::ApMaster:
        if (!c.a) {
          SetProperty("/autopilot/locks/heading", JsonQuote(""));
          SetProperty("/autopilot/locks/altitude", JsonQuote(""));
        }
        break;
      case SimCommand::Com1: SetProperty("/instrumentation/comm/frequencies/selected-mhz", Num(c.a)); break;
      case SimCommand::Nav1: SetProperty("/instrumentation/nav/frequencies/selected-mhz", Num(c.a)); break;
      case SimCommand::Adf: SetProperty("/instrumentation/adf/frequencies/selected-khz", Num(c.a)); break;
      case SimCommand::Position:
        SetProperty("/position/latitude-deg", Num(c.a));
        SetProperty("/position/longitude-deg", Num(c.b));
        break;
    }
  }
}

}  // namespace orv
