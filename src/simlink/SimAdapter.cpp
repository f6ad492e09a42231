#include "simlink/SimAdapter.h"

#include <cmath>

#include "simlink/Fsuipc.h"
#include "simlink/SimImage.h"

namespace orv {

namespace {

std::uint32_t Get32(const std::uint8_t* p) { return OffsetImage::LoadLE<std::uint32_t>(p); }

// Value of the hexadecimal digits read as decimal digits (0x1830 -> 1830).
int HexDigitsAsDecimal(std::uint16_t word, int digits) {
  int v = 0;
  for (int i = digits - 1; i >= 0; --i) v = v * 10 + ((word >> (4 * i)) & 0xF);
  return v;
}

int Clamp(double v, int lo, int hi) { return static_cast<int>(std::fmin(std::fmax(std::floor(v), lo), hi)); }

}  // namespace

float DecodeBcdRadio(std::uint16_t word) {
  return static_cast<float>(HexDigitsAsDecimal(word, 4) / 100.0 + 100.0);
}

float DecodeAdfWords(std::uint16_t main, std::uint16_t extended) {
  const int thousands = (extended >> 8) & 0xF;
  const int tenths = extended & 0xF;
  return static_cast<float>(thousands * 1000 + HexDigitsAsDecimal(main, 3) + tenths / 10.0);
}

void PutAircraftState(OffsetImage& image, const AircraftState& s) {
  PutPosition(image, s.Latitude, s.Longitude, s.AltitudeFt, s.TrueHeading, s.Pitch, s.Bank, s.OnGround);
  PutGroundAltitude(image, s.GroundElevationFt);
  PutSpeeds(image, s.GroundSpeedKt, s.TasKt, s.IasKt, s.VerticalSpeedFpm);
  const double utc = std::fmod(std::fmax(s.UtcSeconds, 0.0), 86400.0);
  const double local = std::fmod(std::fmax(s.LocalSeconds, 0.0), 86400.0);
  PutTime(image, Clamp(local / 3600, 0, 23), Clamp(std::fmod(local, 3600) / 60, 0, 59),
          Clamp(std::fmod(utc, 60), 0, 59), Clamp(utc / 3600, 0, 23), Clamp(std::fmod(utc, 3600) / 60, 0, 59));
  // One tank holding all the fuel.
  PutFuelTank(image, 0, s.FuelGallons > 0 ? 1.0 : 0.0, std::fmax(s.FuelGallons, 0.0));
  PutMagVar(image, s.MagVarDeg);
  PutWind(image, s.WindSpeedKt, s.WindDirDeg);
  image.Put<std::uint16_t>(fsoff::SurfaceWindSpeed, static_cast<std::uint16_t>(Clamp(std::round(s.WindSpeedKt), 0, 65535)));
  image.Put<std::int16_t>(fsoff::SurfaceWindDir, static_cast<std::int16_t>(std::lround(std::fmod(s.WindDirDeg, 360.0) / kSurfaceWindDirFactor) & 0xFFFF));
  image.Put<std::uint16_t>(fsoff::Paused, s.Paused ? 1 : 0);
  if (s.Com1Mhz >= 100 && s.Com1Mhz < 200) PutCom1(image, s.Com1Mhz);
  if (s.Nav1Mhz >= 100 && s.Nav1Mhz < 200) image.Put<std::uint16_t>(fsoff::Nav1, RadioBcdWord(s.Nav1Mhz));
  if (s.AdfKhz > 0 && s.AdfKhz < 10000) {
    const AdfWords adf = AdfBcdWords(s.AdfKhz);
    image.Put<std::uint16_t>(fsoff::AdfMain, adf.Main);
    image.Put<std::uint16_t>(fsoff::AdfExtended, adf.Extended);
  }
  image.Put<std::uint32_t>(fsoff::ApMaster, s.ApMaster ? 1 : 0);
  image.Put<std::uint32_t>(fsoff::ApHeadingHold, s.ApHeadingHold ? 1 : 0);
  image.Put<std::int16_t>(fsoff::ApHeading, HeadingBugWord(static_cast<std::int16_t>(Clamp(std::round(s.HeadingBugDeg), 0, 359))));
  image.Put<std::uint32_t>(fsoff::ApAltitudeLock, s.ApAltitudeHold ? 1 : 0);
  image.Put<std::int32_t>(fsoff::ApAltitude, static_cast<std::int32_t>(std::lround(std::fmin(std::fmax(s.ApAltitudeFt, -1e5), 1e5) / kFeetPerMetre * 65536)));
  image.Put<std::int16_t>(fsoff::SurfaceTemperature, static_cast<std::int16_t>(Clamp(s.TemperatureC * 256, -32768, 32767)));
  image.Put<std::int16_t>(fsoff::AmbientTemperature, static_cast<std::int16_t>(Clamp(s.TemperatureC * 256, -32768, 32767)));
  image.Put<std::int16_t>(fsoff::DewPoint, static_cast<std::int16_t>(Clamp(s.DewPointC * 256, -32768, 32767)));
  image.Put<std::uint16_t>(fsoff::Qnh, static_cast<std::uint16_t>(Clamp(std::round(s.QnhHpa * 16), 0, 65535)));
  image.Put<std::int16_t>(fsoff::Visibility, static_cast<std::int16_t>(Clamp(s.VisibilityMiles * 100, 0, 32767)));
}

SimAdapter::SimAdapter() : ImagePartner(adapterImage, &adapterLock) {}

SimAdapter::~SimAdapter() { Stop(); }

bool SimAdapter::Start(std::string& error) {
  if (!Open(error)) return false;
  stop_ = false;
  thread_ = std::thread([this] { Loop(); });
  return true;
}

void SimAdapter::Stop() {
  stop_ = true;
  if (thread_.joinable()) thread_.join();
}

std::int64_t SimAdapter::SilenceMs() const {
  const std::int64_t last = lastPacket_;
  if (last == 0) return 1LL << 40;
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::duration(now - last)).count();
}

void SimAdapter::Loop() {
  while (!stop_) {
    Receive(50);
    std::vector<SimCommand> commands;
    {
      std::lock_guard<std::mutex> lock(commandLock_);
      commands.swap(commands_);
    }
    if (!commands.empty()) Forward(commands);
  }
}

IpcPlatform::Handle SimAdapter::FindWindowOfClass(std::string_view className) {
  if (className != kIpcWindowClass) return 0;
  // The simulator is "there" once it has sent; wait briefly for a first packet.
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kFirstPacketMs);
  while (SilenceMs() > kSilenceMs && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return SilenceMs() > kSilenceMs ? 0 : ImagePartner::FindWindowOfClass(className);
}

bool SimAdapter::SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                                std::uint32_t flags, std::uint32_t timeoutMs, std::uint32_t& result) {
  if (SilenceMs() > kSilenceMs) {
    lastError_ = 0;  // a time-out, as a module that does not answer
    result = 0;
    return false;
  }
  const bool sent = ImagePartner::SendIpcMessage(window, message, wParam, lParam, flags, timeoutMs, result);
  if (sent && result == 1) CollectCommands(block_);
  return sent;
}

// The channel's writes to the values a simulator takes, decoded from the image
// after the block was applied. The position goes when its last word came.
void SimAdapter::CollectCommands(const std::uint8_t* block) {
  std::vector<SimCommand> found;
  std::uint64_t pos = 0;
  const std::uint64_t size = sizeof block_;
  std::lock_guard<std::mutex> imageLock(adapterLock);
  const OffsetImage& im = adapterImage;
  while (pos + 4 <= size) {
    const std::uint32_t type = Get32(block + pos);
    if (type != 1 && type != 2) break;
    const std::uint64_t header = type == 1 ? kIpcReadHeader : kIpcWriteHeader;
    if (pos + header > size) break;
    const std::uint32_t offset = Get32(block + pos + 4);
    const std::uint64_t count = Get32(block + pos + 8);
    if (count > size - pos - header) break;
    pos += header + count;
    if (type != 2) continue;
    switch (offset) {
      case fsoff::ApHeading: {
        double deg = im.Get<std::int16_t>(fsoff::ApHeading) / kHeadingBugFactor;
        if (deg < 0) deg += 360;
        found.push_back({SimCommand::HeadingBug, std::round(deg), 0});
        break;
      }
      case fsoff::ApMaster: found.push_back({SimCommand::ApMaster, im.Get<std::uint32_t>(offset) ? 1.0 : 0.0, 0}); break;
      case fsoff::ApHeadingHold:
        found.push_back({SimCommand::ApHeadingHold, im.Get<std::uint32_t>(offset) ? 1.0 : 0.0, 0});
        break;
      case fsoff::Com1: found.push_back({SimCommand::Com1, DecodeBcdRadio(im.Get<std::uint16_t>(offset)), 0}); break;
      case fsoff::Nav1: found.push_back({SimCommand::Nav1, DecodeBcdRadio(im.Get<std::uint16_t>(offset)), 0}); break;
      case fsoff::AdfExtended:  // the second of the two ADF writes
        found.push_back({SimCommand::Adf,
                         DecodeAdfWords(im.Get<std::uint16_t>(fsoff::AdfMain), im.Get<std::uint16_t>(fsoff::AdfExtended)),
                         0});
        break;
      case fsoff::LongitudeHigh:  // the last of the four position writes
        found.push_back({SimCommand::Position, im.Get<std::int32_t>(fsoff::LatitudeHigh) / kLatitudeUnits,
                         im.Get<std::int32_t>(fsoff::LongitudeHigh) / kLongitudeUnits});
        break;
      default: break;
    }
  }
  if (!found.empty()) {
    std::lock_guard<std::mutex> lock(commandLock_);
    commands_.insert(commands_.end(), found.begin(), found.end());
  }
}

}  // namespace orv
