#include "simlink/XPlaneAdapter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "simlink/SimImage.h"

namespace orv {

namespace {

// Indices of the subscribed values; the TCAS targets follow kTrafficBase.
enum Ref : int {
  kLat, kLon, kElevM, kAglM, kPsi, kTheta, kPhi, kGsMs, kTasMs, kIasKt, kVsFpm, kOnGround, kPaused,
  kZuluSec, kLocalSec, kFuelKg, kWindKt, kWindDir, kMagVar, kTempC, kDewC, kBaroInHg, kVisM,
  kCom1, kNav1, kAdf, kHdgBug, kApState, kHdgMode, kAltHold, kApAltFt, kTcasCount, kTrafficBase
};

constexpr const char* kBaseRefs[kTrafficBase] = {
    "sim/flightmodel/position/latitude",
    "sim/flightmodel/position/longitude",
    "sim/flightmodel/position/elevation",
    "sim/flightmodel/position/y_agl",
    "sim/flightmodel/position/psi",
    "sim/flightmodel/position/theta",
    "sim/flightmodel/position/phi",
    "sim/flightmodel/position/groundspeed",
    "sim/flightmodel/position/true_airspeed",
    "sim/flightmodel/position/indicated_airspeed",
    "sim/flightmodel/position/vh_ind_fpm",
    "sim/flightmodel/failures/onground_any",
    "sim/time/paused",
    "sim/time/zulu_time_sec",
    "sim/time/local_time_sec",
    "sim/flightmodel/weight/m_fuel_total",
    "sim/weather/wind_speed_kt[0]",
    "sim/weather/wind_direction_degt[0]",
    "sim/flightmodel/position/magnetic_variation",
    "sim/weather/temperature_ambient_c",
    "sim/weather/dewpoi_sealevel_c",
    "sim/weather/barometer_sealevel_inhg",
    "sim/weather/visibility_reported_m",
    "sim/cockpit2/radios/actuators/com1_frequency_hz",
    "sim/cockpit2/radios/actuators/nav1_frequency_hz",
    "sim/cockpit2/radios/actuators/adf1_frequency_hz",
    "sim/cockpit/autopilot/heading_mag",
    "sim/cockpit2/autopilot/servos_on",
    "sim/cockpit2/autopilot/heading_mode",
    "sim/cockpit2/autopilot/altitude_hold_status",
    "sim/cockpit2/autopilot/altitude_dial_ft",
    "sim/cockpit2/tcas/indicators/tcas_num_acf",
};
constexpr const char* kTrafficRefs[] = {"lat", "lon", "ele", "psi", "V_msc"};
constexpr int kPerTarget = 5;

constexpr double kFeetPerMetreExact = 1 / 0.3048;
constexpr double kKnotsPerMs = 3600 / 1852.0;
// Kilograms of fuel to US gallons of avgas (6 lb a gallon).
constexpr double kGallonsPerKg = 2.20462 / 6.0;

void PutName(std::vector<std::uint8_t>& out, std::string_view name, std::size_t field) {
  const std::size_t n = std::min(name.size(), field - 1);  // always NUL-terminated
  std::memcpy(out.data() + out.size() - field, name.data(), n);
}

// A subscribed value; 0 for one not there and for nonsense (not finite, or
// beyond anything a flight gives), so that no conversion overflows.
float Value(const std::vector<float>& v, int i) {
  if (i < 0 || static_cast<std::size_t>(i) >= v.size()) return 0.0f;
  return std::isfinite(v[i]) && std::fabs(v[i]) <= 1e7f ? v[i] : 0.0f;
}

}  // namespace

std::vector<std::uint8_t> EncodeRrefRequest(std::int32_t frequency, std::int32_t index, std::string_view dataref) {
  std::vector<std::uint8_t> out(kRrefRequestSize, 0);
  std::memcpy(out.data(), "RREF", 4);
  OffsetImage::StoreLE<std::int32_t>(out.data() + 5, frequency);
  OffsetImage::StoreLE<std::int32_t>(out.data() + 9, index);
  PutName(out, dataref, 400);
  return out;
}

std::vector<std::uint8_t> EncodeDref(float value, std::string_view dataref) {
  std::vector<std::uint8_t> out(kDrefSize, 0);
  std::memcpy(out.data(), "DREF", 4);
  OffsetImage::StoreLE<float>(out.data() + 5, value);
  PutName(out, dataref, 500);
  return out;
}

bool DecodeRrefAnswer(const std::uint8_t* data, std::size_t size, std::vector<std::pair<std::int32_t, float>>& out) {
  out.clear();
  if (size < 5 || std::memcmp(data, "RREF", 4) != 0 || (size - 5) % 8 != 0) return false;
  for (std::size_t at = 5; at + 8 <= size; at += 8)
    out.emplace_back(OffsetImage::LoadLE<std::int32_t>(data + at), OffsetImage::LoadLE<float>(data + at + 4));
  return true;
}

const std::vector<std::string>& XPlaneDatarefs() {
  static const std::vector<std::string> refs = [] {
    std::vector<std::string> r(std::begin(kBaseRefs), std::end(kBaseRefs));
    for (int t = 1; t <= kXPlaneTrafficTargets; ++t)
      for (const char* field : kTrafficRefs)
        r.push_back(std::string("sim/cockpit2/tcas/targets/position/") + field + "[" + std::to_string(t) + "]");
    return r;
  }();
  return refs;
}

AircraftState XPlaneState(const std::vector<float>& v) {
  AircraftState s;
  s.Latitude = Value(v, kLat);
  s.Longitude = Value(v, kLon);
  s.AltitudeFt = Value(v, kElevM) * kFeetPerMetre;
  s.GroundElevationFt = (Value(v, kElevM) - Value(v, kAglM)) * kFeetPerMetre;
  s.TrueHeading = Value(v, kPsi);
  s.Pitch = Value(v, kTheta);
  s.Bank = Value(v, kPhi);
  s.GroundSpeedKt = Value(v, kGsMs) * kKnotsPerMs;
  s.TasKt = Value(v, kTasMs) * kKnotsPerMs;
  s.IasKt = Value(v, kIasKt);
  s.VerticalSpeedFpm = Value(v, kVsFpm);
  s.OnGround = Value(v, kOnGround) != 0;
  s.Paused = Value(v, kPaused) != 0;
  s.UtcSeconds = Value(v, kZuluSec);
  s.LocalSeconds = Value(v, kLocalSec);
  s.FuelGallons = Value(v, kFuelKg) * kGallonsPerKg;
  s.WindSpeedKt = Value(v, kWindKt);
  s.WindDirDeg = Value(v, kWindDir);
  s.MagVarDeg = -Value(v, kMagVar);  // X-Plane counts west variation positive
  s.TemperatureC = Value(v, kTempC);
  s.DewPointC = Value(v, kDewC);
  s.QnhHpa = Value(v, kBaroInHg) * 33.8639;
  s.VisibilityMiles = Value(v, kVisM) / 1609.344;
  s.Com1Mhz = Value(v, kCom1) / 100;  // 10 kHz units: 12190 is 121.90
  s.Nav1Mhz = Value(v, kNav1) / 100;
  s.AdfKhz = Value(v, kAdf);
  s.HeadingBugDeg = Value(v, kHdgBug);
  s.ApMaster = Value(v, kApState) != 0;
  s.ApHeadingHold = Value(v, kHdgMode) == 1;
  s.ApAltitudeHold = Value(v, kAltHold) == 2;
  s.ApAltitudeFt = Value(v, kApAltFt);
  (void)kFeetPerMetreExact;
  return s;
}

std::vector<TrafficEntry> XPlaneTraffic(const std::vector<float>& v) {
  std::vector<TrafficEntry> out;
  // tcas_num_acf counts the user's aircraft too.
  const int count = static_cast<int>(std::clamp(Value(v, kTcasCount) - 1.0f, 0.0f, float(kXPlaneTrafficTargets)));
  for (int t = 1; t <= count; ++t) {
    const int base = kTrafficBase + (t - 1) * kPerTarget;
    const float lat = Value(v, base), lon = Value(v, base + 1);
    if (lat == 0 && lon == 0) continue;
    TrafficEntry e;
    e.Id = static_cast<std::uint32_t>(t);
    e.Latitude = lat;
    e.Longitude = lon;
    e.Altitude = static_cast<float>(Value(v, base + 2) * kFeetPerMetre);
    double hdg = std::fmod(Value(v, base + 3), 360.0);
    if (hdg > 180) hdg -= 360;
    if (hdg < -180) hdg += 360;
    e.Heading = static_cast<std::int16_t>(std::lround(hdg / kTrafficHeadingFactor));
    e.GroundSpeed = static_cast<std::uint16_t>(std::clamp(std::lround(Value(v, base + 4) * kKnotsPerMs), 0L, 65535L));
    const std::string id = "XP" + std::to_string(t);
    std::memcpy(e.AtcId.data(), id.data(), id.size());
    out.push_back(e);
  }
  return out;
}

XPlaneAdapter::XPlaneAdapter(std::string host, std::uint16_t port, std::uint32_t frequencyHz)
    : host_(std::move(host)), port_(port), frequency_(frequencyHz), values_(XPlaneDatarefs().size(), 0.0f) {}

XPlaneAdapter::~XPlaneAdapter() {
  Stop();
  if (socket_.Valid()) Subscribe(0);  // X-Plane stops sending
}

bool XPlaneAdapter::Open(std::string& error) {
  const bool local = host_ == "127.0.0.1" || host_ == "localhost";
  socket_ = UdpBind(local ? "127.0.0.1" : "0.0.0.0", 0, error);
  if (!socket_.Valid()) return false;
  Subscribe(static_cast<std::int32_t>(frequency_));
  return true;
}

void XPlaneAdapter::Subscribe(std::int32_t frequency) {
  const auto& refs = XPlaneDatarefs();
  for (std::size_t i = 0; i < refs.size(); ++i) {
    const auto packet = EncodeRrefRequest(frequency, static_cast<std::int32_t>(i), refs[i]);
    UdpSendTo(socket_, host_, port_, packet.data(), packet.size());
  }
  lastSubscribe_ = std::chrono::steady_clock::now();
}

void XPlaneAdapter::Receive(std::uint32_t waitMs) {
  // X-Plane forgets subscriptions when it restarts: ask again while silent.
  if (SilenceMs() > 2000 && std::chrono::steady_clock::now() - lastSubscribe_ > std::chrono::seconds(2))
    Subscribe(static_cast<std::int32_t>(frequency_));
  std::uint8_t buffer[2048];
  bool changed = false;
  for (long n = UdpRecvFrom(socket_, buffer, sizeof buffer, waitMs); n > 0;
       n = UdpRecvFrom(socket_, buffer, sizeof buffer, 0)) {
    if (!DecodeRrefAnswer(buffer, static_cast<std::size_t>(n), pairs_)) {
      Refused();
      continue;
    }
    for (const auto& [index, value] : pairs_)
      if (index >= 0 && static_cast<std::size_t>(index) < values_.size()) values_[index] = value;
    Took();
    changed = true;
  }
  if (!changed) return;
  const AircraftState state = XPlaneState(values_);
  const std::vector<TrafficEntry> traffic = XPlaneTraffic(values_);
  const std::vector<TrafficExtEntry> ext(traffic.size());
  std::lock_guard<std::mutex> lock(ImageLock());
  PutAircraftState(AdapterImageRef(), state);
  PutTrafficTable(AdapterImageRef(), true, traffic, ext);
}

void XPlaneAdapter::Forward(const std::vector<SimCommand>& commands) {
  auto dref = [this](float value, std::string_view ref) {
    const auto packet = EncodeDref(value, ref);
    UdpSendTo(socket_, host_, port_, packet.data(), packet.size());
  };
  for (const SimCommand& c : commands) {
    switch (c.kind) {
      case SimCommand::HeadingBug: dref(static_cast<float>(c.a), kBaseRefs[kHdgBug]); break;
      case SimCommand::ApMaster: dref(c.a ? 2.0f : 0.0f, "sim/cockpit/autopilot/autopilot_mode"); break;
      case SimCommand::ApHeadingHold: dref(c.a ? 1.0f : 0.0f, kBaseRefs[kHdgMode]); break;
      case SimCommand::Com1: dref(static_cast<float>(std::round(c.a * 100)), kBaseRefs[kCom1]); break;
      case SimCommand::Nav1: dref(static_cast<float>(std::round(c.a * 100)), kBaseRefs[kNav1]); break;
      case SimCommand::Adf: dref(static_cast<float>(std::round(c.a)), kBaseRefs[kAdf]); break;
      case SimCommand::Position: break;  // X-Plane's position datarefs are read-only
    }
  }
}

}  // namespace orv
