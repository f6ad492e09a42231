#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

#include "simlink/Bridge.h"
#include "simlink/ImagePartner.h"
#include "simlink/SimData.h"
#include "simlink/SimImage.h"
#include "simlink/SimulatorChoice.h"
#include "support/ScriptedPlatform.h"

namespace orv {
namespace {

void Put32(std::vector<std::uint8_t>& b, std::uint32_t v) {
  for (int i = 0; i < 4; ++i) b.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
}

// A buffer read as a stream, for the frame reader.
struct BufferSource : FrameSource {
  std::vector<std::uint8_t> bytes;
  std::size_t pos = 0;
  NetIo ReadExact(void* data, std::size_t size) override {
    if (bytes.size() - pos < size) {
      const bool none = pos == bytes.size();
      pos = bytes.size();
      return none ? NetIo::Closed : NetIo::Failed;
    }
    std::memcpy(data, bytes.data() + pos, size);
    pos += size;
    return NetIo::Ok;
  }
};

TEST(Bridge, BlockLengthWalksRecordsToTheTerminator) {
  std::vector<std::uint8_t> b;
  Put32(b, 1), Put32(b, 0x3304), Put32(b, 4), Put32(b, 1), Put32(b, 0);  // read of 4
  Put32(b, 2), Put32(b, 0x330A), Put32(b, 2), b.push_back(0), b.push_back(0);  // write of 2
  Put32(b, 0);
  EXPECT_EQ(BlockLength(b.data(), b.size()), 16u + 4 + 12 + 2 + 4);
  EXPECT_EQ(BlockLength(b.data(), b.size() - 1), 0u);  // terminator cut
  std::vector<std::uint8_t> lying;
  Put32(lying, 1), Put32(lying, 0), Put32(lying, 0xFFFFFFF0), Put32(lying, 0), Put32(lying, 0);
  EXPECT_EQ(BlockLength(lying.data(), lying.size()), 0u);
  std::vector<std::uint8_t> unknown;
  Put32(unknown, 7), Put32(unknown, 0);
  EXPECT_EQ(BlockLength(unknown.data(), unknown.size()), 0u);
}

TEST(Bridge, FrameReaderRefusesLongAndShortFrames) {
  std::vector<std::uint8_t> out;
  std::uint32_t count = 0;
  BufferSource good;
  Put32(good.bytes, 3), good.bytes.insert(good.bytes.end(), {7, 8, 9});
  ASSERT_EQ(ReadFrame(good, kIpcBlockSize, out, count), FrameStatus::Ok);
  EXPECT_EQ(out, (std::vector<std::uint8_t>{7, 8, 9}));
  EXPECT_EQ(ReadFrame(good, kIpcBlockSize, out, count), FrameStatus::Closed);

  BufferSource tooLong;
  Put32(tooLong.bytes, kIpcBlockSize + 1);
  EXPECT_EQ(ReadFrame(tooLong, kIpcBlockSize, out, count), FrameStatus::TooLong);
  EXPECT_EQ(count, kIpcBlockSize + 1);

  BufferSource lying;  // a count of 100 with 2 bytes behind it
  Put32(lying.bytes, 100), lying.bytes.insert(lying.bytes.end(), {1, 2});
  EXPECT_EQ(ReadFrame(lying, kIpcBlockSize, out, count), FrameStatus::Failed);
}

TEST(Bridge, ServerOutlivesTheSimulatorAndOpensTheChannelAgain) {
  OffsetImage image;
  PutCom1(image, 121.90f);
  test::ScriptedPlatform partner(image);
  FsuipcChannel channel(partner);
  std::int32_t code = 0;
  ASSERT_TRUE(channel.IpcOpen(0, code));
  std::vector<std::string> log;
  BridgeServer server(channel, [&](const std::string& l) { log.push_back(l); });
  std::vector<std::uint8_t> block;
  Put32(block, 1), Put32(block, fsoff::Com1), Put32(block, 2), Put32(block, 1), block.insert(block.end(), 2, 0);
  Put32(block, 0);

  partner.failSends = 1;
  EXPECT_TRUE(server.Answer(block.data(), static_cast<std::uint32_t>(block.size())).empty());
  EXPECT_FALSE(channel.IsOpen());
  const auto answer = server.Answer(block.data(), static_cast<std::uint32_t>(block.size()));
  ASSERT_EQ(answer.size(), block.size());
  EXPECT_EQ(OffsetImage::LoadLE<std::uint16_t>(answer.data() + 16), 0x2190);
  EXPECT_EQ(log, (std::vector<std::string>{"the simulator does not answer; the channel is closed",
                                           "the channel is open again"}));
}

// A bridge on a loopback port over an in-process partner, serving on a thread.
struct LocalBridge {
  OffsetImage image;
  ImagePartner partner{image};
  FsuipcChannel serverChannel{partner};
  std::vector<std::string> log;
  std::mutex logLock;
  BridgeServer server{serverChannel, [this](const std::string& l) {
                        std::lock_guard<std::mutex> lock(logLock);
                        log.push_back(l);
                      }};
  std::atomic<bool> stop{false};
  std::thread thread;

  LocalBridge() {
    PutPosition(image, 51.4775, -0.4614, 83, 270, 0, 0, true);
    PutCom1(image, 121.90f);
    std::int32_t code = 0;
    serverChannel.IpcClearHandles();
    EXPECT_TRUE(serverChannel.IpcOpen(0, code));
    std::string error;
    EXPECT_TRUE(server.Listen("127.0.0.1", 0, error)) << error;
    thread = std::thread([this] { server.Serve(DeadlineIn(30000), [this] { return stop.load(); }); });
  }
  ~LocalBridge() {
    stop = true;
    thread.join();
  }
  std::string Source() const { return "bridge:127.0.0.1:" + std::to_string(server.Port()); }
};

TEST(Bridge, ChannelOverTheBridgeReadsAndWritesThePartnersImage) {
  LocalBridge bridge;
  std::string error;
  auto platform = OpenSimulator(bridge.Source(), error);
  ASSERT_TRUE(platform) << error;
  FsuipcChannel ch(*platform);
  std::int32_t code = -1;
  ch.IpcClearHandles();
  ASSERT_TRUE(ch.IpcOpen(0, code)) << ch.LastIpcMessage();
  EXPECT_EQ(ch.FsuipcVersion, static_cast<std::int32_t>(kPartnerFsuipcVersion));
  EXPECT_EQ(ch.SimVersion, 8u);

  const auto start = std::chrono::steady_clock::now();
  PositionBlock p = ReadPositionBlock(ch);
  const auto perRead = (std::chrono::steady_clock::now() - start) / 4;  // four round trips
  EXPECT_NEAR(p.Latitude, 51.4775, 1e-4);
  EXPECT_NEAR(p.Longitude, -0.4614, 1e-4);
  EXPECT_EQ(p.Altitude, 83);
  EXPECT_FLOAT_EQ(ReadCom1(ch), 121.90f);
  std::printf("bridge round trip on loopback: %.3f ms\n",
              std::chrono::duration<double, std::milli>(perRead).count());

  ASSERT_TRUE(WriteCom1(ch, 118.30f));
  EXPECT_EQ(bridge.image.Get<std::uint16_t>(fsoff::Com1), 0x1830);
  ch.IpcClose();
}

TEST(Bridge, RefusedConnectionIsMsg2AndTheServerOutlivesABadClient) {
  std::string error;
  auto nobody = OpenSimulator("bridge:127.0.0.1:1", error);
  ASSERT_TRUE(nobody);
  FsuipcChannel refused(*nobody);
  std::int32_t code = 0;
  EXPECT_FALSE(refused.IpcOpen(0, code));
  EXPECT_EQ(code, kIpcNoPartner);
  EXPECT_EQ(refused.LastIpcMessage(), " Msg #2");

  EXPECT_FALSE(OpenSimulator("bridge:127.0.0.1:99999", error));
  EXPECT_EQ(error, "bad port '99999' in 'bridge:127.0.0.1:99999' (bridge:HOST:PORT)");

  LocalBridge bridge;
  {  // a frame longer than the block: the client is dropped
    int e = 0;
    NetSocket s = TcpConnect("127.0.0.1", bridge.server.Port(), DeadlineIn(2000), e);
    ASSERT_TRUE(s.Valid());
    std::vector<std::uint8_t> frame;
    Put32(frame, 0x10000);
    ASSERT_EQ(SendAll(s, frame.data(), frame.size(), DeadlineIn(2000)), NetIo::Ok);
    std::uint8_t byte;
    EXPECT_EQ(RecvAll(s, &byte, 1, DeadlineIn(3000)), NetIo::Closed);
  }
  {  // a malformed block is answered with a count of 0, and the client stays
    int e = 0;
    NetSocket s = TcpConnect("127.0.0.1", bridge.server.Port(), DeadlineIn(2000), e);
    std::vector<std::uint8_t> frame;
    Put32(frame, 8), Put32(frame, 9), Put32(frame, 0);
    ASSERT_EQ(SendAll(s, frame.data(), frame.size(), DeadlineIn(2000)), NetIo::Ok);
    std::uint8_t answer[4] = {1, 1, 1, 1};
    ASSERT_EQ(RecvAll(s, answer, 4, DeadlineIn(3000)), NetIo::Ok);
    EXPECT_EQ(OffsetImage::LoadLE<std::uint32_t>(answer), 0u);
  }
  auto platform = OpenSimulator(bridge.Source(), error);
  FsuipcChannel ch(*platform);
  EXPECT_TRUE(ch.IpcOpen(0, code));
  std::lock_guard<std::mutex> lock(bridge.logLock);
  EXPECT_NE(std::find(bridge.log.begin(), bridge.log.end(),
                      "client refused: a frame of 65536 bytes is longer than the block of 32768"),
            bridge.log.end());
}

// A bridge that answers every frame with the given bytes (or never).
struct FakeBridge {
  NetSocket listener;
  std::vector<std::uint8_t> reply;
  bool silent = false;
  std::thread thread;
  explicit FakeBridge(std::vector<std::uint8_t> r, bool quiet = false) : reply(std::move(r)), silent(quiet) {
    std::string error;
    listener = TcpListen("127.0.0.1", 0, error);
    thread = std::thread([this] {
      NetSocket c = TcpAccept(listener, DeadlineIn(3000));
      std::vector<std::uint8_t> in;
      std::uint32_t count = 0;
      SocketFrameSource src(c, DeadlineIn(3000));
      if (ReadFrame(src, kIpcBlockSize, in, count) != FrameStatus::Ok) return;
      if (silent) {
        std::uint8_t b;
        RecvAll(c, &b, 1, DeadlineIn(1500));
        return;
      }
      SendAll(c, reply.data(), reply.size(), DeadlineIn(1000));
      std::uint8_t b;
      RecvAll(c, &b, 1, DeadlineIn(500));
    });
  }
  ~FakeBridge() { thread.join(); }
};

// Sends one queued read through a client to a fake bridge with a short
// time-out; gives the send's outcome and the client's LastError.
std::pair<bool, std::uint32_t> OneSend(FakeBridge& fake, std::uint32_t timeoutMs = 2000) {
  BridgeClient client("127.0.0.1", LocalPort(fake.listener));
  const auto window = client.FindWindowOfClass("UIPCMAIN");
  std::uint8_t* view = client.MapBlockView(client.CreateBlockMapping("x", kIpcBlockSize));
  std::memset(view, 0, 24);
  OffsetImage::StoreLE<std::uint32_t>(view, 1);
  OffsetImage::StoreLE<std::uint32_t>(view + 8, 4);
  std::uint32_t result = 0;
  const bool ok = client.SendIpcMessage(window, client.RegisterMessage(kIpcMessageName), 0, 0, 1, timeoutMs, result);
  return {ok, client.LastError()};
}

TEST(Bridge, ClientTellsTimeOutsFailedSendsAndLyingCounts) {
  {
    FakeBridge silent({}, true);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(OneSend(silent, 300), std::make_pair(false, 0u));  // LastError 0: code 11
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1200));
  }
  {
    std::vector<std::uint8_t> zero;
    Put32(zero, 0);
    FakeBridge failed(zero);
    EXPECT_EQ(OneSend(failed), std::make_pair(false, BridgeClient::kRemoteSendFailed));
  }
  {
    std::vector<std::uint8_t> huge;
    Put32(huge, 0x7FFFFFFF);
    FakeBridge lying(huge);
    EXPECT_EQ(OneSend(lying), std::make_pair(false, BridgeClient::kBadFrame));
  }
  {
    std::vector<std::uint8_t> shortAnswer;  // a count of 24 with 3 bytes
    Put32(shortAnswer, 24), shortAnswer.insert(shortAnswer.end(), {1, 0, 0});
    FakeBridge cut(shortAnswer);
    EXPECT_FALSE(OneSend(cut).first);
  }
}

}  // namespace
}  // namespace orv
