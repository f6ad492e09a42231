#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <map>
#include <thread>

#include "simlink/Fsuipc.h"
#include "simlink/SimData.h"
#include "simlink/XPlaneAdapter.h"

namespace orv {
namespace {

using Clock = std::chrono::steady_clock;

TEST(XPlane, PacketCodecsHaveTheProtocolsLayout) {
  const auto rref = EncodeRrefRequest(20, 7, "sim/flightmodel/position/psi");
  ASSERT_EQ(rref.size(), 413u);
  EXPECT_EQ(std::memcmp(rref.data(), "RREF\0", 5), 0);
  EXPECT_EQ(OffsetImage::LoadLE<std::int32_t>(rref.data() + 5), 20);
  EXPECT_EQ(OffsetImage::LoadLE<std::int32_t>(rref.data() + 9), 7);
  EXPECT_STREQ(reinterpret_cast<const char*>(rref.data() + 13), "sim/flightmodel/position/psi");

  const auto dref = EncodeDref(123.5f, "sim/cockpit/autopilot/heading_mag");
  ASSERT_EQ(dref.size(), 509u);
  EXPECT_EQ(OffsetImage::LoadLE<float>(dref.data() + 5), 123.5f);
  EXPECT_STREQ(reinterpret_cast<const char*>(dref.data() + 9), "sim/cockpit/autopilot/heading_mag");
  EXPECT_EQ(EncodeDref(1, std::string(600, 'x'))[508], 0);  // a long name stays terminated

  std::vector<std::pair<std::int32_t, float>> pairs;
  std::uint8_t answer[21] = {'R', 'R', 'E', 'F', ','};
  OffsetImage::StoreLE<std::int32_t>(answer + 5, 4);
  OffsetImage::StoreLE<float>(answer + 9, 270.0f);
  OffsetImage::StoreLE<std::int32_t>(answer + 13, 99999);
  OffsetImage::StoreLE<float>(answer + 17, 1.0f);
  ASSERT_TRUE(DecodeRrefAnswer(answer, 21, pairs));
  EXPECT_EQ(pairs, (std::vector<std::pair<std::int32_t, float>>{{4, 270.0f}, {99999, 1.0f}}));
  EXPECT_FALSE(DecodeRrefAnswer(answer, 20, pairs));  // cut inside a pair
  EXPECT_TRUE(pairs.empty());
  EXPECT_FALSE(DecodeRrefAnswer(reinterpret_cast<const std::uint8_t*>("DATA*xxxxxxxx"), 13, pairs));
}

// A stand-in for X-Plane on 127.0.0.1: takes subscriptions, answers them with
// its values, and keeps the DREF writes it gets.
struct FakeXPlane {
  NetSocket socket;
  std::map<std::string, std::int32_t> indexOf;
  std::map<std::string, float> value;
  std::vector<std::pair<std::string, float>> writes;
  std::uint16_t clientPort = 0;

  FakeXPlane() {
    std::string error;
    socket = UdpBind("127.0.0.1", 0, error);
  }
  std::uint16_t Port() const { return LocalPort(socket); }
  // Takes what came in for a while.
  void Drain(std::uint32_t ms) {
    const auto end = Clock::now() + std::chrono::milliseconds(ms);
    std::uint8_t b[1024];
    while (Clock::now() < end) {
      std::uint16_t from = 0;
      const long n = UdpRecvFrom(socket, b, sizeof b, 20, nullptr, &from);
      if (n == 413 && std::memcmp(b, "RREF", 4) == 0) {
        clientPort = from;
        indexOf[reinterpret_cast<const char*>(b + 13)] = OffsetImage::LoadLE<std::int32_t>(b + 9);
      } else if (n == 509 && std::memcmp(b, "DREF", 4) == 0) {
        writes.emplace_back(reinterpret_cast<const char*>(b + 9), OffsetImage::LoadLE<float>(b + 5));
      }
    }
  }
  void Send() {
    std::vector<std::uint8_t> p = {'R', 'R', 'E', 'F', ','};
    for (const auto& [name, v] : value) {
      p.resize(p.size() + 8);
      OffsetImage::StoreLE<std::int32_t>(p.data() + p.size() - 8, indexOf.at(name));
      OffsetImage::StoreLE<float>(p.data() + p.size() - 4, v);
    }
    UdpSendTo(socket, "127.0.0.1", clientPort, p.data(), p.size());
  }
  void SendRaw(const std::vector<std::uint8_t>& p) { UdpSendTo(socket, "127.0.0.1", clientPort, p.data(), p.size()); }
};

TEST(XPlane, AdapterFeedsTheChannelAndSendsWritesOn) {
  FakeXPlane xp;
  XPlaneAdapter adapter("127.0.0.1", xp.Port());
  std::string error;
  ASSERT_TRUE(adapter.Start(error)) << error;
  xp.Drain(300);
  ASSERT_EQ(xp.indexOf.size(), XPlaneDatarefs().size());
  const std::string pos = "sim/flightmodel/position/";
  xp.value = {{pos + "latitude", 47.4647f},
              {pos + "longitude", 8.5492f},
              {pos + "elevation", 500.0f},
              {pos + "y_agl", 120.0f},
              {pos + "psi", 140.0f},
              {pos + "groundspeed", 100.0f},
              {"sim/cockpit2/radios/actuators/com1_frequency_hz", 12190.0f},
              {"sim/cockpit2/tcas/indicators/tcas_num_acf", 2.0f},
              {"sim/cockpit2/tcas/targets/position/lat[1]", 47.5f},
              {"sim/cockpit2/tcas/targets/position/lon[1]", 8.6f},
              {"sim/cockpit2/tcas/targets/position/ele[1]", 1000.0f}};
  xp.SendRaw({'R', 'R', 'E', 'F', ',', 1, 2, 3});  // cut: refused
  xp.Send();

  FsuipcChannel ch(adapter);
  std::int32_t code = 0;
  ch.IpcClearHandles();
  ASSERT_TRUE(ch.IpcOpen(0, code)) << ch.LastIpcMessage();
  PositionBlock p = ReadPositionBlock(ch);
  EXPECT_NEAR(p.Latitude, 47.4647, 1e-4);
  EXPECT_NEAR(p.Longitude, 8.5492, 1e-4);
  EXPECT_EQ(p.Altitude, 1640);  // 500 m
  EXPECT_NEAR(p.TrueHeading, 140, 1e-3);
  EXPECT_EQ(ReadGroundAltitude(ch), 1247);  // 380 m
  EXPECT_EQ(ReadSpeedBlock(ch).GroundSpeed, 194);
  EXPECT_FLOAT_EQ(ReadCom1(ch), 121.90f);
  TrafficTable traffic;
  ASSERT_TRUE(ReadAirTraffic(ch, traffic));
  ASSERT_EQ(traffic.Entries.size(), 1u);
  EXPECT_FLOAT_EQ(traffic.Entries[0].Latitude, 47.5f);
  EXPECT_EQ(adapter.PacketsRefused(), 1u);

  // Lag: from X-Plane's packet to the channel's answer.
  xp.value[pos + "latitude"] = 47.5f;
  const auto sent = Clock::now();
  xp.Send();
  while (ReadPositionBlock(ch).Latitude < 47.49f && Clock::now() - sent < std::chrono::seconds(2))
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  std::printf("X-Plane packet to channel answer: %.1f ms\n",
              std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
  EXPECT_LT(Clock::now() - sent, std::chrono::milliseconds(150));

  ASSERT_TRUE(WriteApHeadingBug(ch, 275));
  ASSERT_TRUE(WriteCom1(ch, 118.30f));
  ASSERT_TRUE(WriteApHeadingHold(ch, 1));
  xp.Drain(300);
  using W = std::pair<std::string, float>;
  EXPECT_EQ(xp.writes, (std::vector<W>{{"sim/cockpit/autopilot/heading_mag", 275.0f},
                                       {"sim/cockpit2/radios/actuators/com1_frequency_hz", 11830.0f},
                                       {"sim/cockpit2/autopilot/heading_mode", 1.0f}}));

  // X-Plane goes quiet: after the silence the liveness read fails.
  std::this_thread::sleep_for(std::chrono::milliseconds(SimAdapter::kSilenceMs + 100));
  EXPECT_EQ(ReadLiveness(ch), 99);
}

TEST(XPlane, NoXPlaneIsMsg2) {
  FakeXPlane silent;  // takes subscriptions, never answers
  XPlaneAdapter adapter("127.0.0.1", silent.Port());
  std::string error;
  ASSERT_TRUE(adapter.Start(error));
  FsuipcChannel ch(adapter);
  std::int32_t code = 0;
  EXPECT_FALSE(ch.IpcOpen(0, code));
  EXPECT_EQ(ch.LastIpcMessage(), " Msg #2");
}

}  // namespace
}  // namespace orv
