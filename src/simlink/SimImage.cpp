#include "simlink/SimImage.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace orv {

namespace {

constexpr double kTwo32 = 4294967296.0;
constexpr double kMetresPerFoot = 1 / kFeetPerMetre;

// A 64-bit fixed-point value as FSUIPC holds it: whole units in the high
// word, the fraction of a unit in the low word.
void PutFixed64(OffsetImage& image, std::uint32_t offset, double units) {
  const double whole = std::floor(units);
  const auto high = static_cast<std::int32_t>(std::clamp(whole, -2147483648.0, 2147483647.0));
  const auto low = static_cast<std::uint32_t>(std::clamp((units - whole) * kTwo32, 0.0, kTwo32 - 1));
  image.Put<std::uint32_t>(offset, low);
  image.Put<std::int32_t>(offset + 4, high);
}

std::int32_t Saturate32(double v) {
  return static_cast<std::int32_t>(std::clamp(std::round(v), -2147483648.0, 2147483647.0));
}

std::int16_t Saturate16(double v) { return static_cast<std::int16_t>(std::clamp(std::round(v), -32768.0, 32767.0)); }

// Angles go round the full 32 or 16 bits.
std::int32_t Angle32(double degrees) {
  const double turns = degrees / 360 - std::floor(degrees / 360);
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(turns * kTwo32) & 0xFFFFFFFFu));
}

}  // namespace

void PutPosition(OffsetImage& image, double lat, double lon, double altFeet, double trueHeading, double pitch,
                 double bank, bool onGround) {
  PutFixed64(image, fsoff::PositionBlock, lat * 10001750.0 / 90);
  PutFixed64(image, fsoff::PositionBlock + 8, lon * kTwo32 / 360);
  PutFixed64(image, fsoff::PositionBlock + 16, altFeet * kMetresPerFoot);
  image.Put<std::int32_t>(fsoff::PositionBlock + 24, Saturate32(pitch * kTwo32 / 360));
  image.Put<std::int32_t>(fsoff::PositionBlock + 28, Saturate32(bank * kTwo32 / 360));
  image.Put<std::int32_t>(fsoff::PositionBlock + 32, Angle32(trueHeading));
  image.Put<std::uint16_t>(fsoff::AltimeterUnits, 0);
  image.Put<std::int32_t>(fsoff::Altimeter, Saturate32(altFeet));
  image.Put<std::uint16_t>(fsoff::OnGround, onGround ? 1 : 0);
}

void PutGroundAltitude(OffsetImage& image, double feet) {
  image.Put<std::int32_t>(fsoff::GroundAltitude, Saturate32(feet * kMetresPerFoot * 256));
}

void PutSpeeds(OffsetImage& image, double groundSpeedKt, double tasKt, double iasKt, double verticalSpeedFpm) {
  image.Put<std::int32_t>(fsoff::SpeedBlock, Saturate32(groundSpeedKt * 1852 / 3600 * 65536));
  image.Put<std::int32_t>(fsoff::SpeedBlock + 4, Saturate32(tasKt * 128));
  image.Put<std::int32_t>(fsoff::SpeedBlock + 8, Saturate32(iasKt * 128));
  image.Put<std::int32_t>(fsoff::VerticalSpeed, Saturate32(verticalSpeedFpm / 196.8504 * 256));
}

void PutTime(OffsetImage& image, int localHour, int localMinute, int second, int utcHour, int utcMinute) {
  const std::uint8_t t[5] = {static_cast<std::uint8_t>(localHour), static_cast<std::uint8_t>(localMinute),
                             static_cast<std::uint8_t>(second), static_cast<std::uint8_t>(utcHour),
                             static_cast<std::uint8_t>(utcMinute)};
  image.WriteBytes(fsoff::TimeBlock, t, sizeof t);
}

void PutFuelTank(OffsetImage& image, int tank, double fractionFull, double capacityGallons) {
  if (tank < 0 || tank >= 7) return;
  const auto at = static_cast<std::uint32_t>(fsoff::FuelBlock + 8 * tank);
  image.Put<std::int32_t>(at, Saturate32(fractionFull * kFuelLevelFull));
  image.Put<std::int32_t>(at + 4, Saturate32(capacityGallons));
}

void PutMagVar(OffsetImage& image, double degrees) {
  image.Put<std::int16_t>(fsoff::MagVar, Saturate16(degrees * 65536 / 360));
}

void PutWind(OffsetImage& image, double speedKt, double dirDegrees) {
  image.Put<std::uint16_t>(fsoff::Wind, static_cast<std::uint16_t>(std::clamp(std::round(speedKt), 0.0, 65535.0)));
  image.Put<std::int16_t>(fsoff::Wind + 2, static_cast<std::int16_t>(Angle32(dirDegrees) >> 16));
}

void PutCom1(OffsetImage& image, float mhz) { image.Put<std::uint16_t>(fsoff::Com1, RadioBcdWord(mhz)); }

void PutTrafficTable(OffsetImage& image, bool airborne, std::span<const TrafficEntry> entries,
                     std::span<const TrafficExtEntry> ext) {
  const std::uint32_t head = airborne ? fsoff::AirTrafficHead : fsoff::GroundTrafficHead;
  const std::uint32_t extAt = airborne ? fsoff::AirTrafficExt : fsoff::GroundTrafficExt;
  const std::uint32_t entriesAt = airborne ? fsoff::AirTrafficEntries : fsoff::GroundTrafficEntries;
  const auto count = static_cast<std::uint16_t>(std::min<std::size_t>(entries.size(), kTrafficMaxCount));
  image.Fill(head, 0, 9);
  image.Put<std::uint16_t>(head, kTrafficEntrySize);
  image.Put<std::uint16_t>(head + 4, count);
  std::uint8_t bytes[kTrafficEntrySize];
  for (std::uint16_t i = 0; i < count; ++i) {
    EncodeTrafficEntry(entries[i], bytes);
    image.WriteBytes(entriesAt + i * kTrafficEntrySize, bytes, kTrafficEntrySize);
    TrafficExtEntry x = i < ext.size() ? ext[i] : TrafficExtEntry{};
    EncodeTrafficExt(x, bytes);
    image.WriteBytes(extAt + i * kTrafficExtSize, bytes, kTrafficExtSize);
  }
}

}  // namespace orv
