#include <gtest/gtest.h>

#include <cstring>

#include "simlink/Fsuipc.h"
#include "simlink/SimData.h"
#include "simlink/SimImage.h"
#include "simlink/SimSource.h"
#include "support/ScriptedPlatform.h"

namespace orv {
namespace {

struct Sim {
  OffsetImage image;
  test::ScriptedPlatform platform{image};
  FsuipcChannel ch{platform};
  Sim() {
    std::int32_t code = 0;
    ch.IpcClearHandles();
    EXPECT_TRUE(ch.IpcOpen(0, code));
  }
};

TEST(SimData, ReadersConvertWithTheProgramsConstants) {
  Sim s;
  OffsetImage& im = s.image;
  im.Put<std::uint16_t>(fsoff::Com1, 0x1800);
  EXPECT_FLOAT_EQ(ReadCom1(s.ch), 118.00f);
  im.Put<std::uint16_t>(fsoff::Com1, 0x2345);
  EXPECT_FLOAT_EQ(ReadCom1(s.ch), 123.45f);

  im.Put<std::uint16_t>(fsoff::AltimeterUnits, 1);
  im.Put<std::int32_t>(fsoff::Altimeter, 1000);
  EXPECT_EQ(ReadPositionBlock(s.ch).Altitude, 1000);
  im.Put<std::uint16_t>(fsoff::AltimeterUnits, 2);
  EXPECT_EQ(ReadPositionBlock(s.ch).Altitude, 3281);

  im.Put<std::uint16_t>(fsoff::Wind, 12);
  im.Put<std::int16_t>(fsoff::Wind + 2, -16384);  // -90 degrees
  const WindValue w = ReadWind(s.ch);
  EXPECT_EQ(w.Speed, 12);
  EXPECT_EQ(w.Dir, 270);
  im.Put<std::int16_t>(fsoff::SurfaceWindDir, -16384);
  EXPECT_EQ(ReadSurfaceWindDir(s.ch), 270);
  im.Put<std::int16_t>(fsoff::SurfaceTemperature, -5 * 256 - 77);  // -5.3 C
  EXPECT_EQ(ReadSurfaceTemperature(s.ch), -4);
  im.Put<std::int16_t>(fsoff::Cloud2Altitude, 1000);
  EXPECT_EQ(ReadCloudAltitude(s.ch, 2), 3280);

  const std::uint8_t clock[5] = {14, 5, 9, 13, 5};
  im.WriteBytes(fsoff::TimeBlock, clock, 5);
  const TimeBlock t = ReadTimeBlock(s.ch);
  EXPECT_EQ(t.LocalTimeText, "14:05:09");
  EXPECT_EQ(t.UtcTimeText, "13:05:09");
  EXPECT_FLOAT_EQ(t.UtcMinutes, 785.15f);

  PutFuelTank(im, 0, 0.5, 100);
  PutFuelTank(im, 3, 1.0, 26);
  EXPECT_EQ(ReadTotalFuel(s.ch), 76);

  im.Put<std::int32_t>(fsoff::SpeedBlock, 100 * 65536);       // 100 m/s
  im.Put<std::int32_t>(fsoff::SpeedBlock + 4, 250 * 128);
  im.Put<std::int32_t>(fsoff::SpeedBlock + 8, 200 * 128 + 64);  // 200.5: half to even
  const SpeedBlock sp = ReadSpeedBlock(s.ch);
  EXPECT_EQ(sp.GroundSpeed, 194);
  EXPECT_EQ(sp.Tas, 250);
  EXPECT_EQ(sp.Ias, 200);
  im.Put<std::int32_t>(fsoff::VerticalSpeed, 5 * 256);
  EXPECT_EQ(ReadVerticalSpeed(s.ch), 984);
  im.Put<std::int32_t>(fsoff::GroundAltitude, 100 * 256);
  EXPECT_EQ(ReadGroundAltitude(s.ch), 328);

  // A closed channel hands back zeroes, and 99 for the liveness read.
  s.ch.IpcClose();
  EXPECT_EQ(ReadLiveness(s.ch), 99);
  EXPECT_EQ(ReadCom1(s.ch), 0.0f);
  EXPECT_EQ(ReadTimeBlock(s.ch).LocalTimeText, "00:00:00");
  EXPECT_EQ(ReadPositionBlock(s.ch).Airborne, -1) << "a failed on-ground read counts as airborne";
}

TEST(SimData, WritersBuildTheirWordsDigitByDigit) {
  Sim s;
  EXPECT_TRUE(WriteCom1(s.ch, 123.45f));
  EXPECT_EQ(s.image.Get<std::uint16_t>(fsoff::Com1), 0x2345);
  EXPECT_TRUE(WriteNav1(s.ch, 110.50f));
  EXPECT_EQ(s.image.Get<std::uint16_t>(fsoff::Nav1), 0x1050);
  EXPECT_TRUE(WriteAdf(s.ch, 1234.5f));
  EXPECT_EQ(s.image.Get<std::uint16_t>(fsoff::AdfMain), 0x0234);
  EXPECT_EQ(s.image.Get<std::uint16_t>(fsoff::AdfExtended), 0x0105);
  EXPECT_EQ(AdfBcdWords(345.0f).Main, 0x0345);
  EXPECT_EQ(AdfBcdWords(345.0f).Extended, 0x0000);
  EXPECT_EQ(RadioBcdWord(118.0f), 0x1800);

  EXPECT_EQ(HeadingBugWord(0), 0);
  EXPECT_EQ(HeadingBugWord(359), -182);
  EXPECT_EQ(HeadingBugWord(90), 16384);
  EXPECT_EQ(HeadingBugWord(270), -16384);
  EXPECT_TRUE(WriteApHeadingBug(s.ch, 359));
  EXPECT_EQ(s.image.Get<std::int16_t>(fsoff::ApHeading), -182);
  EXPECT_TRUE(WriteApMaster(s.ch, 1));
  EXPECT_TRUE(WriteApHeadingHold(s.ch, 1));
  EXPECT_EQ(s.image.Get<std::uint32_t>(fsoff::ApMaster), 1u);
  EXPECT_EQ(s.image.Get<std::uint32_t>(fsoff::ApHeadingHold), 1u);

  // The position writer goes through the image and reads back.
  s.image.Fill(fsoff::PositionBlock, 0xFF, 16);
  const int sends = s.platform.sends;
  EXPECT_TRUE(WriteAircraftPosition(s.ch, 47.25f, -122.5f));
  EXPECT_EQ(s.platform.sends - sends, 4);
  EXPECT_EQ(s.image.Get<std::uint32_t>(fsoff::LatitudeLow), 0u);
  EXPECT_EQ(s.image.Get<std::int32_t>(fsoff::LatitudeHigh), 5250919);
  EXPECT_EQ(s.image.Get<std::uint32_t>(fsoff::LongitudeLow), 0u);
  EXPECT_EQ(s.image.Get<std::int32_t>(fsoff::LongitudeHigh), LongitudeHighWord(-122.5f));
  const PositionBlock p = ReadPositionBlock(s.ch);
  EXPECT_NEAR(p.Latitude, 47.25, 1e-5);
  EXPECT_NEAR(p.Longitude, -122.5, 1e-5);
}

TEST(SimData, TrafficTablesCheckEveryCount) {
  Sim s;
  TrafficEntry a;
  a.Id = 7;
  a.Latitude = 50.1f;
  a.Altitude = 12000;
  a.Heading = 16384;
  a.GroundSpeed = 280;
  std::memcpy(a.AtcId.data(), "DLH123", 6);
  a.Com1 = 0x2280;
  TrafficExtEntry ax;
  std::memcpy(ax.Departure.data(), "EDDF", 4);
  std::memcpy(ax.Destination.data(), "KJFK", 4);
  TrafficEntry b;
  b.Id = 9;
  TrafficExtEntry bx;
  std::memcpy(bx.Destination.data(), "EG\x01L", 4);
  const TrafficEntry entries[] = {a, b};
  const TrafficExtEntry ext[] = {ax, bx};
  PutTrafficTable(s.image, true, entries, ext);

  TrafficTable table;
  ASSERT_TRUE(ReadAirTraffic(s.ch, table));
  ASSERT_EQ(table.Entries.size(), 2u);
  EXPECT_EQ(table.Entries[0].Id, 7u);
  EXPECT_EQ(TrafficAtcId(table.Entries[0]), "DLH123");
  EXPECT_EQ(TrafficHeadingDegrees(table.Entries[0]), 90);
  EXPECT_FLOAT_EQ(DecodeCom1Word(table.Entries[0].Com1), 122.8f);
  EXPECT_EQ(TrafficRoute(table.Ext[0]), "EDDF-KJFK");
  EXPECT_EQ(TrafficRoute(table.Ext[1]), "EGL");
  EXPECT_EQ(TrafficAtcId(table.Entries[1]), "");

  ASSERT_TRUE(ReadGroundTraffic(s.ch, table));
  EXPECT_TRUE(table.Entries.empty());

  // A lying head: counts or entry sizes that leave the table's room.
  struct Head {
    std::uint16_t size, count;
    bool ok;
  };
  for (const Head h : {Head{40, 99, true}, Head{40, 100, false}, Head{41, 97, false}, Head{39, 1, false},
                       Head{0xFFFF, 0xFFFF, false}}) {
    s.image.Put<std::uint16_t>(fsoff::AirTrafficHead, h.size);
    s.image.Put<std::uint16_t>(fsoff::AirTrafficHead + 4, h.count);
    EXPECT_EQ(ReadAirTraffic(s.ch, table), h.ok) << h.size << " x " << h.count;
    EXPECT_EQ(table.Entries.size(), h.ok ? h.count : 0u);
  }
}

TEST(SimData, SnapshotOfTheParkedAircraft) {
  Sim s;
  ParkImage(s.image, 50.0333, 8.5706, 364, 250);
  SimSnapshot snap;
  ReadSnapshot(s.ch, snap);
  EXPECT_NEAR(snap.Latitude, 50.0333, 1e-4);
  EXPECT_NEAR(snap.Longitude, 8.5706, 1e-4);
  EXPECT_EQ(snap.Altitude, 364);
  EXPECT_EQ(snap.Agl, 0);
  EXPECT_EQ(snap.Airborne, 0);
  EXPECT_NEAR(snap.TrueHeading, 250, 1e-3);
  EXPECT_NEAR(snap.MagHeading, 250, 1e-3);
  EXPECT_EQ(snap.TotalFuel, 60);
  EXPECT_FLOAT_EQ(snap.Com1, 122.8f);
  EXPECT_EQ(snap.LocalTimeText, "12:00:00");
  EXPECT_EQ(snap.ApAltitude, -500);
  EXPECT_EQ(snap.GroundSpeed, 0);

  // The autopilot's target is read only when climbing faster than 250 fpm
  // with the altitude hold on.
  s.image.Put<std::int32_t>(fsoff::ApAltitudeLock, 1);
  s.image.Put<std::int32_t>(fsoff::ApAltitude, 3000 * 65536);
  PutSpeeds(s.image, 0, 0, 0, 240);
  ReadSnapshot(s.ch, snap);
  EXPECT_EQ(snap.ApAltitude, -500);
  PutSpeeds(s.image, 0, 0, 0, 300);
  ReadSnapshot(s.ch, snap);
  EXPECT_EQ(snap.VerticalSpeed, 300);
  EXPECT_EQ(snap.ApAltitude, 9843);

  const WeatherValues wx = ReadWeather(s.ch);
  EXPECT_EQ(wx.SurfaceTemperature, 15);
  EXPECT_EQ(wx.DewPoint, 10);
  EXPECT_EQ(wx.Qnh, 1013);
  EXPECT_FLOAT_EQ(wx.Visibility, 20.0f);
}

}  // namespace
}  // namespace orv
