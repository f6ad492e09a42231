#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <map>
#include <mutex>
#include <regex>
#include <sstream>
#include <thread>

#include "simlink/Fsuipc.h"
#include "simlink/SimData.h"
#include "simlink/FlightGearAdapter.h"
#include "simlink/SimulatorChoice.h"

namespace orv {
namespace {

using Clock = std::chrono::steady_clock;

// The nodes of the shipped protocol file, in its order.
std::vector<std::string> ProtocolFileNodes() {
  std::ifstream in(std::string(ORV_SOURCE_DIR) + "/data/flightgear/orvanta.xml");
  std::stringstream text;
  text << in.rdbuf();
  const std::string s = text.str();
  // FlightGear's XML parser refuses the whole file over a double hyphen in a
  // comment, and then sends nothing at all.
  for (size_t open = s.find("<!--"); open != std::string::npos; open = s.find("<!--", open + 4)) {
    const size_t close = s.find("-->", open + 4);
    EXPECT_NE(close, std::string::npos);
    EXPECT_EQ(s.substr(open + 4, close - open - 4).find("--"), std::string::npos) << "a double hyphen in a comment";
  }
  std::vector<std::string> nodes;
  const std::regex node("<node>([^<]*)</node>");
  for (auto it = std::sregex_iterator(s.begin(), s.end(), node); it != std::sregex_iterator(); ++it)
    nodes.push_back((*it)[1]);
  return nodes;
}

// A line as FlightGear sends it with the protocol file: values by node.
std::string Line(const std::map<std::string, std::string>& values) {
  std::string line;
  for (const std::string& node : ProtocolFileNodes()) {
    if (!line.empty()) line += ',';
    const auto it = values.find(node);
    line += it == values.end() ? "0" : it->second;
  }
  return line + "\n";
}

// FlightGear's property server on loopback: keeps the requests, answers the
// AI models with two aircraft.
struct FakeHttpd {
  NetSocket listener;
  std::mutex lock;
  std::vector<std::string> requests;
  std::atomic<bool> stop{false};
  std::thread thread;
  FakeHttpd() {
    std::string error;
    listener = TcpListen("127.0.0.1", 0, error);
    thread = std::thread([this] {
      while (!stop) {
        NetSocket c = TcpAccept(listener, DeadlineIn(100));
        if (!c.Valid()) continue;
        std::string raw;
        char b[2048];
        const auto deadline = DeadlineIn(1000);
        std::size_t got = 0;
        while (RecvSome(c, b, sizeof b, deadline, got) == NetIo::Ok) {
          raw.append(b, got);
          const auto end = raw.find("\r\n\r\n");
          if (end == std::string::npos) continue;
          const auto cl = raw.find("Content-Length: ");
          const std::size_t length = cl == std::string::npos ? 0 : std::stoul(raw.substr(cl + 16));
          if (raw.size() >= end + 4 + length) break;
        }
        const std::string first = raw.substr(0, raw.find(" HTTP/"));
        const std::string body = raw.substr(raw.find("\r\n\r\n") + 4);
        std::string answer = "{}";
        if (first == "GET /json/ai/models?d=4")
          answer = R"({"path":"/ai/models","name":"models","children":[
            {"name":"count","value":2},
            {"name":"aircraft","index":0,"children":[{"name":"callsign","value":"DLH4AB"},{"name":"valid","value":true},
              {"name":"position","children":[{"name":"latitude-deg","value":50.1},{"name":"longitude-deg","value":8.7},
                {"name":"altitude-ft","value":5000}]},
              {"name":"orientation","children":[{"name":"true-heading-deg","value":270}]},
              {"name":"velocities","children":[{"name":"true-airspeed-kt","value":250}]}]},
            {"name":"multiplayer","index":0,"children":[{"name":"callsign","value":"fgpilot"},
              {"name":"position","children":[{"name":"latitude-deg","value":50.03},{"name":"longitude-deg","value":8.57},
                {"name":"altitude-ft","value":364}]}]}]})";
        else {
          std::lock_guard<std::mutex> l(lock);
          requests.push_back(first + " " + body);
        }
        const std::string reply = "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
                                  std::to_string(answer.size()) + "\r\n\r\n" + answer;
        SendAll(c, reply.data(), reply.size(), DeadlineIn(1000));
      }
    });
  }
  ~FakeHttpd() {
    stop = true;
    thread.join();
  }
};

TEST(FlightGear, ProtocolFileAndLineParserAgree) {
  EXPECT_EQ(ProtocolFileNodes(), FlightGearNodes());
  AircraftState s;
  double elapsed = 0;
  ASSERT_TRUE(ParseFlightGearLine(
      Line({{"/position/latitude-deg", "50.0333"}, {"/velocities/vertical-speed-fps", "10"},
            {"/autopilot/locks/heading", "dg-heading-hold"}, {"/sim/time/steady-clock-sec", "12.5"}}),
      s, &elapsed));
  EXPECT_DOUBLE_EQ(s.Latitude, 50.0333);
  EXPECT_DOUBLE_EQ(s.VerticalSpeedFpm, 600);
  EXPECT_TRUE(s.ApHeadingHold && s.ApMaster && !s.ApAltitudeHold);
  EXPECT_DOUBLE_EQ(elapsed, 12.5);
  // Hostile lines leave the state as it was.
  EXPECT_FALSE(ParseFlightGearLine("1,2,3", s));
  std::string bad = Line({{"/position/altitude-ft", "12x"}});
  EXPECT_FALSE(ParseFlightGearLine(bad, s));
  EXPECT_FALSE(ParseFlightGearLine(Line({}) + ",1", s));
  EXPECT_DOUBLE_EQ(s.Latitude, 50.0333);

  std::vector<TrafficEntry> t;
  EXPECT_FALSE(ParseAiModels("{\"children\":[", t));
  EXPECT_FALSE(ParseAiModels(std::string(100000, '['), t));  // too deep: refused, no crash
}

TEST(FlightGear, AdapterFeedsTheChannelAndWritesThroughHttp) {
  FakeHttpd httpd;
  FlightGearAdapter adapter("127.0.0.1", 0, LocalPort(httpd.listener));
  std::string error;
  ASSERT_TRUE(adapter.Start(error)) << error;
  NetSocket fg = UdpBind("127.0.0.1", 0, error);
  auto send = [&](const std::string& text) { UdpSendTo(fg, "127.0.0.1", adapter.LocalUdpPort(), text.data(), text.size()); };
  std::map<std::string, std::string> v = {{"/position/latitude-deg", "50.0333"},
                                          {"/position/longitude-deg", "8.5706"},
                                          {"/position/altitude-ft", "364"},
                                          {"/position/ground-elev-ft", "360"},
                                          {"/orientation/heading-deg", "250"},
                                          {"/gear/gear/wow", "1"},
                                          {"/sim/time/utc/day-seconds", "45296"},  // 12:34:56
                                          {"/consumables/fuel/total-fuel-gal_us", "42.5"},
                                          {"/instrumentation/comm/frequencies/selected-mhz", "121.800"}};
  send("garbage\n");
  send(Line(v));

  FsuipcChannel ch(adapter);
  std::int32_t code = 0;
  ch.IpcClearHandles();
  ASSERT_TRUE(ch.IpcOpen(0, code)) << ch.LastIpcMessage();
  SimSnapshot s;
  ReadSnapshot(ch, s);
  EXPECT_NEAR(s.Latitude, 50.0333, 1e-4);
  EXPECT_NEAR(s.Longitude, 8.5706, 1e-4);
  EXPECT_EQ(s.Altitude, 364);
  EXPECT_EQ(s.Agl, 4);
  EXPECT_NEAR(s.TrueHeading, 250, 1e-3);
  EXPECT_EQ(s.Airborne, 0);
  EXPECT_EQ(s.UtcTimeText, "12:34:56");
  EXPECT_EQ(s.TotalFuel, 43);
  EXPECT_FLOAT_EQ(s.Com1, 121.80f);
  EXPECT_EQ(adapter.PacketsRefused(), 1u);

  // Lag: from FlightGear's datagram to the channel's answer.
  v["/position/latitude-deg"] = "50.1";
  const auto sent = Clock::now();
  send(Line(v));
  while (ReadPositionBlock(ch).Latitude < 50.09f && Clock::now() - sent < std::chrono::seconds(2))
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  std::printf("FlightGear datagram to channel answer: %.1f ms\n",
              std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
  EXPECT_LT(Clock::now() - sent, std::chrono::milliseconds(150));

  TrafficTable air, ground;
  const auto until = Clock::now() + std::chrono::seconds(3);
  while ((ReadAirTraffic(ch, air), air.Entries.empty()) && Clock::now() < until) {
    send(Line(v));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  ASSERT_EQ(air.Entries.size(), 1u);
  EXPECT_EQ(TrafficAtcId(air.Entries[0]), "DLH4AB");
  EXPECT_EQ(TrafficHeadingDegrees(air.Entries[0]), -90);
  ASSERT_TRUE(ReadGroundTraffic(ch, ground));
  ASSERT_EQ(ground.Entries.size(), 1u);
  EXPECT_EQ(TrafficAtcId(ground.Entries[0]), "fgpilot");

  ASSERT_TRUE(WriteApHeadingBug(ch, 275));
  ASSERT_TRUE(WriteNav1(ch, 110.50f));
  ASSERT_TRUE(WriteAdf(ch, 1234.5f));
  ASSERT_TRUE(WriteAircraftPosition(ch, 50.5f, 9.0f));
  const auto wait = Clock::now() + std::chrono::seconds(3);
  for (;;) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::lock_guard<std::mutex> l(httpd.lock);
    if (httpd.requests.size() >= 5 || Clock::now() > wait) break;
  }
  std::lock_guard<std::mutex> l(httpd.lock);
  ASSERT_EQ(httpd.requests.size(), 5u);
  EXPECT_EQ(httpd.requests[0], "POST /json/autopilot/settings/heading-bug-deg {\"value\":275.000000}");
  EXPECT_EQ(httpd.requests[1], "POST /json/instrumentation/nav/frequencies/selected-mhz {\"value\":110.500000}");
  EXPECT_EQ(httpd.requests[2], "POST /json/instrumentation/adf/frequencies/selected-khz {\"value\":1234.500000}");
  EXPECT_EQ(httpd.requests[3].substr(0, 42), "POST /json/position/latitude-deg {\"value\":");
  EXPECT_NEAR(std::stod(httpd.requests[3].substr(42)), 50.5, 1e-3);
  EXPECT_NEAR(std::stod(httpd.requests[4].substr(43)), 9.0, 1e-3);
}

TEST(FlightGear, BusyPortIsAClearRefusal) {
  std::string error;
  NetSocket taken = UdpBind("127.0.0.1", 0, error);
  const std::uint16_t port = LocalPort(taken);
  EXPECT_FALSE(OpenSimulator("flightgear:" + std::to_string(port), error));
  EXPECT_EQ(error, "UDP port 127.0.0.1:" + std::to_string(port) + " is already in use");
  EXPECT_FALSE(OpenSimulator("flightgear:5500:http", error));
  EXPECT_EQ(error, "bad port 'http' in 'flightgear:5500:http' (flightgear:UDPPORT:HTTPPORT)");
}

}  // namespace
}  // namespace orv
