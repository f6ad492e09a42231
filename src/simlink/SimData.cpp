#include "simlink/SimData.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/Runtime.h"
#include "simlink/Fsuipc.h"
#include "simlink/OffsetImage.h"

namespace orv {

namespace {

// One round trip for one read: the destination is zeroed first, so that a
// failed read hands on zeroes.
bool ReadRaw(FsuipcChannel& ch, std::uint32_t offset, std::uint32_t size, void* dst) {
  std::memset(dst, 0, size);
  std::int32_t code = 0;
  if (!ch.IpcQueueRead(offset, size, dst, code)) return false;
  return ch.IpcProcess(code);
}

template <class T>
T ReadValue(FsuipcChannel& ch, std::uint32_t offset, bool* ok = nullptr) {
  std::uint8_t raw[sizeof(T)];
  const bool good = ReadRaw(ch, offset, sizeof(T), raw);
  if (ok) *ok = good;
  return good ? OffsetImage::LoadLE<T>(raw) : T{};
}

bool WriteRaw(FsuipcChannel& ch, std::uint32_t offset, std::uint32_t size, const void* src) {
  std::int32_t code = 0;
  if (!ch.IpcQueueWrite(offset, size, src, code)) return false;
  return ch.IpcProcess(code);
}

template <class T>
bool WriteValue(FsuipcChannel& ch, std::uint32_t offset, T value) {
  std::uint8_t raw[sizeof(T)];
  OffsetImage::StoreLE<T>(raw, value);
  return WriteRaw(ch, offset, sizeof(T), raw);
}

std::string TwoDigits(int value) { return Format(value, "00"); }

// Celsius from a word of degrees times 256: + 0.5 and truncated.
std::int32_t CelsiusFrom256(std::int16_t raw) {
  return static_cast<std::int32_t>(std::trunc(raw / 256.0 + 0.5));
}

// The value of the digit at a 1-based position of a text (0 for anything
// that is not a number), as the radio writers take their digits.
int DigitAt(const std::string& text, int position) {
  return static_cast<int>(Val(Mid(text, position, 1)));
}

}  // namespace

float Normalise360(float degrees) {
  if (degrees > 360) return degrees - 360;
  if (degrees < 0) return degrees + 360;
  return degrees;
}

TimeBlock ReadTimeBlock(FsuipcChannel& ch) {
  std::uint8_t raw[5];
  ReadRaw(ch, fsoff::TimeBlock, sizeof raw, raw);
  TimeBlock t;
  t.LocalTimeText = TwoDigits(raw[0]) + ":" + TwoDigits(raw[1]) + ":" + TwoDigits(raw[2]);
  t.UtcTimeText = TwoDigits(raw[3]) + ":" + TwoDigits(raw[4]) + ":" + TwoDigits(raw[2]);
  t.UtcMinutes = CSng(raw[3] * 60.0 + raw[4] + raw[2] / 60.0);
  return t;
}

PositionBlock ReadPositionBlock(FsuipcChannel& ch) {
  PositionBlock p;
  const std::uint16_t units = ReadValue<std::uint16_t>(ch, fsoff::AltimeterUnits);

  std::uint8_t raw[36];
  ReadRaw(ch, fsoff::PositionBlock, sizeof raw, raw);
  auto word = [&](int i) { return OffsetImage::LoadLE<std::int32_t>(raw + 4 * i); };
  p.Latitude = CSng(word(1) / kLatitudeUnits);
  p.Longitude = CSng(word(3) / kLongitudeUnits);
  p.Altitude = CLng(word(5) * kFeetPerMetre);
  p.Pitch = CSng(word(6) * kAttitudeDegrees);
  p.Bank = CSng(word(7) * kAttitudeDegrees);
  p.TrueHeading = Normalise360(CSng(word(8) / kLongitudeUnits));

  // The altimeter replaces the block's altitude whenever it can be read.
  bool altimeterOk = false;
  const std::int32_t altimeter = ReadValue<std::int32_t>(ch, fsoff::Altimeter, &altimeterOk);
  if (altimeterOk) p.Altitude = units >= 2 ? CLng(altimeter * kFeetPerMetre) : altimeter;

  const std::uint16_t onGround = ReadValue<std::uint16_t>(ch, fsoff::OnGround);
  p.Airborne = onGround == 0 ? -1 : 0;
  return p;
}

SpeedBlock ReadSpeedBlock(FsuipcChannel& ch) {
  std::uint8_t raw[20];
  ReadRaw(ch, fsoff::SpeedBlock, sizeof raw, raw);
  auto word = [&](int i) { return OffsetImage::LoadLE<std::int32_t>(raw + 4 * i); };
  SpeedBlock s;
  float gs = CSng(word(0) / 65536.0);
  gs = CSng(gs * 3.6);
  gs = CSng(gs / 1.852);
  s.GroundSpeed = CLng(gs);
  s.Tas = CLng(word(1) / 128.0);
  s.Ias = CLng(word(2) / 128.0);
  s.R3 = CSng(word(3));
  s.R4 = CSng(word(4) * 196.8504 / 256);
  return s;
}

std::int32_t ReadVerticalSpeed(FsuipcChannel& ch) {
  return CLng(ReadValue<std::int32_t>(ch, fsoff::VerticalSpeed) * kVerticalSpeedFactor);
}

WindValue ReadWind(FsuipcChannel& ch) {
  std::uint8_t raw[4];
  WindValue w;
  if (!ReadRaw(ch, fsoff::Wind, sizeof raw, raw)) return w;
  w.Speed = static_cast<std::int16_t>(OffsetImage::LoadLE<std::uint16_t>(raw));
  const float dir = Normalise360(CSng(OffsetImage::LoadLE<std::int16_t>(raw + 2) * kWindDirFactor));
  w.Dir = CInt(dir);
  return w;
}

float ReadMagVar(FsuipcChannel& ch) {
  return CSng(ReadValue<std::int16_t>(ch, fsoff::MagVar) * (360.0 / 65536));
}

std::int32_t ReadGroundAltitude(FsuipcChannel& ch) {
  return CLng(ReadValue<std::int32_t>(ch, fsoff::GroundAltitude) / 256.0 * kFeetPerMetre);
}

float DecodeCom1Word(std::uint16_t word) {
  char hex[8];
  std::snprintf(hex, sizeof hex, "%X", static_cast<unsigned>(word));
  return CSng(Val(hex) / 100 + 100);
}

float ReadCom1(FsuipcChannel& ch) {
  bool ok = false;
  const std::uint16_t word = ReadValue<std::uint16_t>(ch, fsoff::Com1, &ok);
  return ok ? DecodeCom1Word(word) : 0.0f;
}

std::int32_t ReadTotalFuel(FsuipcChannel& ch) {
  std::uint8_t raw[56];
  ReadRaw(ch, fsoff::FuelBlock, sizeof raw, raw);
  float total = 0;
  for (int tank = 0; tank < 7; ++tank) {
    const std::int32_t level = OffsetImage::LoadLE<std::int32_t>(raw + 8 * tank);
    const std::int32_t capacity = OffsetImage::LoadLE<std::int32_t>(raw + 8 * tank + 4);
    const float content = CSng(level / kFuelLevelFull * capacity);
    total = CSng(total + content);
  }
  return CLng(total);
}

bool ReadApAltitudeLock(FsuipcChannel& ch) { return ReadValue<std::int32_t>(ch, fsoff::ApAltitudeLock) > 0; }

std::int32_t ReadApAltitude(FsuipcChannel& ch) {
  return CLng(ReadValue<std::int32_t>(ch, fsoff::ApAltitude) / 65536.0 * kFeetPerMetre);
}

std::int32_t ReadLiveness(FsuipcChannel& ch) {
  bool ok = false;
  const std::uint16_t word = ReadValue<std::uint16_t>(ch, fsoff::SimWord, &ok);
  return ok ? word : 99;
}

bool ReadPaused(FsuipcChannel& ch) { return ReadValue<std::uint16_t>(ch, fsoff::Paused) != 0; }

bool ReadInMenu(FsuipcChannel& ch) { return ReadValue<std::uint8_t>(ch, fsoff::InMenu) >= 1; }

AtcStrings ReadAtcStrings(FsuipcChannel& ch) {
  char raw[72];
  ReadRaw(ch, fsoff::AtcStrings, sizeof raw, raw);
  auto field = [&](int start, int width) {
    std::string_view v(raw + start, static_cast<std::size_t>(width));
    v = v.substr(0, v.find('\0'));
    return FixedText(v, static_cast<std::size_t>(width));
  };
  AtcStrings s;
  s.FlightNumber = field(0, 12);
  s.TailNumber = field(12, 12);
  s.Airline = field(24, 24);
  s.AircraftType = field(48, 24);
  return s;
}

// --- Weather ------------------------------------------------------------------

std::int32_t ReadDewPoint(FsuipcChannel& ch) { return CelsiusFrom256(ReadValue<std::int16_t>(ch, fsoff::DewPoint)); }

std::int32_t ReadPrecipitationRate(FsuipcChannel& ch) { return ReadValue<std::uint8_t>(ch, fsoff::PrecipitationRate); }

std::int32_t ReadPrecipitationType(FsuipcChannel& ch) { return ReadValue<std::uint8_t>(ch, fsoff::PrecipitationType); }

std::int32_t ReadSurfaceWindSpeed(FsuipcChannel& ch) { return ReadValue<std::uint16_t>(ch, fsoff::SurfaceWindSpeed); }

std::int32_t ReadSurfaceWindDir(FsuipcChannel& ch) {
  double dir = ReadValue<std::int16_t>(ch, fsoff::SurfaceWindDir) * kSurfaceWindDirFactor;
  if (dir < 0) dir += 360;
  return static_cast<std::int32_t>(std::trunc(dir));
}

float ReadVisibility(FsuipcChannel& ch) { return CSng(ReadValue<std::int16_t>(ch, fsoff::Visibility) / 100.0); }

std::int32_t ReadAmbientTemperature(FsuipcChannel& ch) {
  return CelsiusFrom256(ReadValue<std::int16_t>(ch, fsoff::AmbientTemperature));
}

namespace {
constexpr std::uint32_t kCloudAltitude[3] = {fsoff::Cloud1Altitude, fsoff::Cloud2Altitude, fsoff::Cloud3Altitude};
constexpr std::uint32_t kCloudCoverage[3] = {fsoff::Cloud1Coverage, fsoff::Cloud2Coverage, fsoff::Cloud3Coverage};
}  // namespace

std::int32_t ReadCloudAltitude(FsuipcChannel& ch, int layer) {
  if (layer < 1 || layer > 3) return 0;
  return static_cast<std::int32_t>(std::trunc(ReadValue<std::int16_t>(ch, kCloudAltitude[layer - 1]) * kFeetPerMetre));
}

std::int32_t ReadCloudCoverage(FsuipcChannel& ch, int layer) {
  if (layer < 1 || layer > 3) return 0;
  return ReadValue<std::uint16_t>(ch, kCloudCoverage[layer - 1]);
}

std::int32_t ReadSurfaceTemperature(FsuipcChannel& ch) {
  return CelsiusFrom256(ReadValue<std::int16_t>(ch, fsoff::SurfaceTemperature));
}

std::int32_t ReadQnh(FsuipcChannel& ch) { return CLng(ReadValue<std::uint16_t>(ch, fsoff::Qnh) / 16.0); }

bool ReadStorm(FsuipcChannel& ch) { return ReadValue<std::uint16_t>(ch, fsoff::Storm) == 10; }

WeatherValues ReadWeather(FsuipcChannel& ch) {
  WeatherValues w;
  w.DewPoint = ReadDewPoint(ch);
  w.PrecipitationRate = ReadPrecipitationRate(ch);
  w.PrecipitationType = ReadPrecipitationType(ch);
  w.SurfaceWindSpeed = ReadSurfaceWindSpeed(ch);
  w.SurfaceWindDir = ReadSurfaceWindDir(ch);
  w.Visibility = ReadVisibility(ch);
  w.AmbientTemperature = ReadAmbientTemperature(ch);
  for (int layer = 1; layer <= 3; ++layer) {
    w.CloudAltitude[layer - 1] = ReadCloudAltitude(ch, layer);
    w.CloudCoverage[layer - 1] = ReadCloudCoverage(ch, layer);
  }
  w.SurfaceTemperature = ReadSurfaceTemperature(ch);
  w.Qnh = ReadQnh(ch);
  w.Storm = ReadStorm(ch);
  return w;
}

// --- Traffic --------------------------------------------------------------------

TrafficHead DecodeTrafficHead(const std::uint8_t* head9) {
  return {OffsetImage::LoadLE<std::uint16_t>(head9), OffsetImage::LoadLE<std::uint16_t>(head9 + 4)};
}

bool TrafficHeadFits(const TrafficHead& head) {
  if (head.Count == 0) return true;
  if (head.EntrySize < kTrafficEntrySize) return false;
  return std::uint64_t{head.Count} * kTrafficExtSize <= kTrafficExtRoom &&
         std::uint64_t{head.Count} * head.EntrySize <= kTrafficEntriesRoom;
}

TrafficEntry DecodeTrafficEntry(const std::uint8_t* b) {
  TrafficEntry e;
  e.Id = OffsetImage::LoadLE<std::uint32_t>(b);
  e.Latitude = OffsetImage::LoadLE<float>(b + 4);
  e.Longitude = OffsetImage::LoadLE<float>(b + 8);
  e.Altitude = OffsetImage::LoadLE<float>(b + 12);
  e.Heading = OffsetImage::LoadLE<std::int16_t>(b + 16);
  e.GroundSpeed = OffsetImage::LoadLE<std::uint16_t>(b + 18);
  e.Unused = OffsetImage::LoadLE<std::uint16_t>(b + 20);
  std::memcpy(e.AtcId.data(), b + 22, 16);
  e.Com1 = OffsetImage::LoadLE<std::uint16_t>(b + 38);
  return e;
}

TrafficExtEntry DecodeTrafficExt(const std::uint8_t* b) {
  TrafficExtEntry x;
  std::memcpy(x.Unused.data(), b, 8);
  std::memcpy(x.Departure.data(), b + 8, 4);
  std::memcpy(x.Destination.data(), b + 12, 4);
  std::memcpy(x.Unused2.data(), b + 16, 4);
  return x;
}

void EncodeTrafficEntry(const TrafficEntry& e, std::uint8_t* b) {
  OffsetImage::StoreLE(b, e.Id);
  OffsetImage::StoreLE(b + 4, e.Latitude);
  OffsetImage::StoreLE(b + 8, e.Longitude);
  OffsetImage::StoreLE(b + 12, e.Altitude);
  OffsetImage::StoreLE(b + 16, e.Heading);
  OffsetImage::StoreLE(b + 18, e.GroundSpeed);
  OffsetImage::StoreLE(b + 20, e.Unused);
  std::memcpy(b + 22, e.AtcId.data(), 16);
  OffsetImage::StoreLE(b + 38, e.Com1);
}

void EncodeTrafficExt(const TrafficExtEntry& x, std::uint8_t* b) {
  std::memcpy(b, x.Unused.data(), 8);
  std::memcpy(b + 8, x.Departure.data(), 4);
  std::memcpy(b + 12, x.Destination.data(), 4);
  std::memcpy(b + 16, x.Unused2.data(), 4);
}

std::string TrafficAtcId(const TrafficEntry& entry) {
  std::string_view v(entry.AtcId.data(), entry.AtcId.size());
  return std::string(v.substr(0, v.find('\0')));
}

std::string TrafficRoute(const TrafficExtEntry& ext) {
  auto printable = [](const std::array<char, 4>& field) {
    std::string s;
    for (char c : field) {
      const auto u = static_cast<unsigned char>(c);
      if (u >= 32 && u != 127) s += c;
    }
    return s;
  };
  std::string dep = printable(ext.Departure);
  std::string dest = printable(ext.Destination);
  return dep.empty() ? dest : dep + "-" + dest;
}

std::int16_t TrafficHeadingDegrees(const TrafficEntry& entry) { return CInt(entry.Heading * kTrafficHeadingFactor); }

namespace {

bool ReadTrafficTable(FsuipcChannel& ch, std::uint32_t headOffset, std::uint32_t extOffset,
                      std::uint32_t entriesOffset, TrafficTable& table) {
  table.Entries.clear();
  table.Ext.clear();
  table.EntrySize = 0;
  std::uint8_t head[9];
  if (!ReadRaw(ch, headOffset, sizeof head, head)) return false;
  const TrafficHead h = DecodeTrafficHead(head);
  if (h.Count == 0) return true;
  if (!TrafficHeadFits(h)) return false;

  // Both tables fit their rooms, so fixed buffers hold them: no allocation
  // on the tick beyond the table's own vectors.
  std::uint8_t ext[kTrafficExtRoom];
  std::uint8_t entries[kTrafficEntriesRoom];
  const std::uint32_t extBytes = std::uint32_t{h.Count} * kTrafficExtSize;
  const std::uint32_t entryBytes = std::uint32_t{h.Count} * h.EntrySize;
  if (!ReadRaw(ch, extOffset, extBytes, ext)) return false;
  if (!ReadRaw(ch, entriesOffset, entryBytes, entries)) return false;

  table.EntrySize = h.EntrySize;
  table.Entries.resize(h.Count);
  table.Ext.resize(h.Count);
  for (std::uint32_t i = 0; i < h.Count; ++i) {
    table.Ext[i] = DecodeTrafficExt(ext + i * kTrafficExtSize);
    table.Entries[i] = DecodeTrafficEntry(entries + i * h.EntrySize);
  }
  return true;
}

}  // namespace

bool ReadAirTraffic(FsuipcChannel& ch, TrafficTable& table) {
  return ReadTrafficTable(ch, fsoff::AirTrafficHead, fsoff::AirTrafficExt, fsoff::AirTrafficEntries, table);
}

bool ReadGroundTraffic(FsuipcChannel& ch, TrafficTable& table) {
  return ReadTrafficTable(ch, fsoff::GroundTrafficHead, fsoff::GroundTrafficExt, fsoff::GroundTrafficEntries, table);
}

// --- Writers --------------------------------------------------------------------

std::uint16_t RadioBcdWord(float frequency) {
  const std::string text = Format(CSng(CSng(frequency - 100) * 100), "0000");
  std::int32_t word = 0;
  for (int position = 1; position <= 4; ++position) word += DigitAt(text, position) << (4 * (4 - position));
  return static_cast<std::uint16_t>(word);
}

AdfWords AdfBcdWords(float frequency) {
  const std::string text = Format(frequency, "0000.0");
  const std::string main = Format(Val(Mid(text, 2, 3)), "000");
  const std::string extended = Format(Val(Left(text, 1)), "00") + Format(Val(Right(text, 1)), "00");
  AdfWords w;
  std::int32_t m = 0;
  for (int position = 1; position <= 3; ++position) m += DigitAt(main, position) << (4 * (3 - position));
  std::int32_t x = 0;
  for (int position = 1; position <= 4; ++position) x += DigitAt(extended, position) << (4 * (4 - position));
  w.Main = static_cast<std::uint16_t>(m);
  w.Extended = static_cast<std::uint16_t>(x);
  return w;
}

std::int16_t HeadingBugWord(std::int16_t heading) {
  int d = heading;
  if (d >= 180) d -= 360;
  return CInt(d * kHeadingBugFactor);
}

std::int32_t LatitudeHighWord(float latitude) {
  return CLng(latitude / (90 / 4.2957189152768e16) / 4294967296.0);
}

std::int32_t LongitudeHighWord(float longitude) {
  return CLng(longitude / (360 / 18446744073709551616.0) / 4294967296.0);
}

bool WriteCom1(FsuipcChannel& ch, float frequency) { return WriteValue(ch, fsoff::Com1, RadioBcdWord(frequency)); }

bool WriteNav1(FsuipcChannel& ch, float frequency) { return WriteValue(ch, fsoff::Nav1, RadioBcdWord(frequency)); }

bool WriteAdf(FsuipcChannel& ch, float frequency) {
  const AdfWords w = AdfBcdWords(frequency);
  const bool main = WriteValue(ch, fsoff::AdfMain, w.Main);
  const bool extended = WriteValue(ch, fsoff::AdfExtended, w.Extended);
  return main && extended;
}

bool WriteApMaster(FsuipcChannel& ch, std::uint32_t value) { return WriteValue(ch, fsoff::ApMaster, value); }

bool WriteApHeadingHold(FsuipcChannel& ch, std::uint32_t value) {
  return WriteValue(ch, fsoff::ApHeadingHold, value);
}

bool WriteApHeadingBug(FsuipcChannel& ch, std::int16_t heading) {
  return WriteValue(ch, fsoff::ApHeading, HeadingBugWord(heading));
}

bool WriteAircraftPosition(FsuipcChannel& ch, float latitude, float longitude) {
  bool ok = WriteValue<std::int32_t>(ch, fsoff::LatitudeLow, 0);
  ok = WriteValue(ch, fsoff::LatitudeHigh, LatitudeHighWord(latitude)) && ok;
  ok = WriteValue<std::int32_t>(ch, fsoff::LongitudeLow, 0) && ok;
  ok = WriteValue(ch, fsoff::LongitudeHigh, LongitudeHighWord(longitude)) && ok;
  return ok;
}

// --- The whole set --------------------------------------------------------------

void ReadSnapshot(FsuipcChannel& ch, SimSnapshot& snap) {
  TimeBlock t = ReadTimeBlock(ch);
  snap.LocalTimeText = std::move(t.LocalTimeText);
  snap.UtcTimeText = std::move(t.UtcTimeText);
  snap.UtcMinutes = t.UtcMinutes;

  const PositionBlock p = ReadPositionBlock(ch);
  snap.Latitude = p.Latitude;
  snap.Longitude = p.Longitude;
  snap.Altitude = p.Altitude;
  snap.TrueHeading = p.TrueHeading;
  snap.Pitch = CInt(p.Pitch);
  snap.Bank = CInt(p.Bank);
  snap.Airborne = p.Airborne;

  snap.TotalFuel = ReadTotalFuel(ch);

  const SpeedBlock s = ReadSpeedBlock(ch);
  snap.GroundSpeed = s.GroundSpeed;
  snap.Tas = s.Tas;
  snap.Ias = s.Ias;

  snap.VerticalSpeed = ReadVerticalSpeed(ch);

  // The autopilot's target matters only while climbing or descending.
  snap.ApAltitude = -500;
  if (std::abs(std::int64_t{snap.VerticalSpeed}) > 250 && ReadApAltitudeLock(ch)) snap.ApAltitude = ReadApAltitude(ch);

  const WindValue w = ReadWind(ch);
  snap.WindSpeed = w.Speed;
  snap.WindDir = w.Dir;

  snap.SimMagVar = ReadMagVar(ch);
  snap.MagHeading = Normalise360(snap.TrueHeading - snap.SimMagVar);

  snap.Agl = snap.Altitude - ReadGroundAltitude(ch);
  snap.Com1 = ReadCom1(ch);
}

}  // namespace orv
