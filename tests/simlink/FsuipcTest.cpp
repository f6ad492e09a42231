#include <gtest/gtest.h>

#include <cstring>

#include "simlink/Fsuipc.h"
#include "support/ScriptedPlatform.h"

namespace orv {
namespace {

using test::ScriptedPlatform;

struct Link {
  OffsetImage image;
  ScriptedPlatform platform{image};
  FsuipcChannel ch{platform};
  std::int32_t code = -1;

  bool Open(std::int32_t wanted = 0) {
    ch.IpcClearHandles();
    return ch.IpcOpen(wanted, code);
  }
};

std::uint32_t Get32(const std::uint8_t* p) { return OffsetImage::LoadLE<std::uint32_t>(p); }

TEST(FsuipcChannel, HandshakeOpensOnePassAndSendsLibraryVersionZero) {
  Link l;
  ASSERT_TRUE(l.Open());
  EXPECT_EQ(l.code, kIpcOk);
  EXPECT_EQ(l.ch.FsuipcVersion, 0x39990000);
  EXPECT_EQ(l.ch.SimVersion, 8u);  // low half only after a good open
  EXPECT_EQ(l.platform.LibraryVersion(), 0);
  EXPECT_EQ(l.image.Get<std::uint32_t>(0x3308), 0xFADE0008u) << "the module's words stay its own";
  EXPECT_EQ(l.platform.sends, 1);
  EXPECT_EQ(l.platform.sleeps, std::vector<std::uint32_t>{100});
  EXPECT_EQ(l.platform.atomNames, std::vector<std::string>{"FSASMLIB:IPC:A11:1"});
  EXPECT_EQ(IpcBlockName(0x1F), "FSASMLIB:IPC:1F:1");
  EXPECT_EQ(l.ch.LastIpcMessage(), "");

  // Open while open: code 1, the channel stays usable.
  EXPECT_FALSE(l.ch.IpcOpen(0, l.code));
  EXPECT_EQ(l.code, kIpcAlreadyOpen);
  EXPECT_EQ(l.ch.LastIpcMessage(), " Msg #1");
  std::uint16_t word = 0;
  ASSERT_TRUE(l.ch.IpcQueueRead(0x3308, 2, &word, l.code));
  ASSERT_TRUE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(word, 8);

  l.ch.IpcClose();
  l.ch.IpcClose();
  EXPECT_FALSE(l.ch.IsOpen());
  EXPECT_EQ(l.ch.IpcAtom, 0);
  EXPECT_EQ(l.platform.atomsDeleted, 1);
  EXPECT_TRUE(l.Open()) << "the block can be opened again after a close";
}

TEST(FsuipcChannel, EachRefusalOfTheOpenHasItsCodeAndMessage) {
  struct Case {
    void (*script)(Link&);
    std::int32_t code;
    const char* message;
  };
  const Case cases[] = {
      {[](Link& l) { l.platform.primaryWindow = false; }, kIpcNoPartner, " Msg #2"},
      {[](Link& l) { l.platform.noMessage = true; }, kIpcNoMessage, " Msg #3"},
      {[](Link& l) { l.platform.noAtom = true; }, kIpcNoAtom, " Msg #4"},
      {[](Link& l) { l.platform.mappingExists = true; }, kIpcMappingExists, " Msg #5"},
      {[](Link& l) { l.platform.noView = true; }, kIpcNoView, " Msg #6"},
      {[](Link& l) { l.image.Put<std::uint32_t>(0x3308, 0xFADF0008); }, kIpcVersionRefused, " Msg #11"},
      {[](Link& l) { l.image.Put<std::uint32_t>(0x3304, 0x19980004); }, kIpcVersionRefused, " Msg #11"},
      {[](Link& l) { l.image.Put<std::uint32_t>(0x3304, 0x80000000); }, kIpcVersionRefused, " Msg #11"},
      {[](Link& l) {
         l.platform.primaryWindow = false;
         l.platform.fallbackWindow = true;
         l.image.Put<std::uint32_t>(0x3308, 0x12340008);
       },
       kIpcVersionRefusedFallback, " Msg #11"},
      {[](Link& l) { l.platform.failSends = 11; }, kIpcTimedOut, " Msg #10"},
      {[](Link& l) {
         l.platform.failSends = 11;
         l.platform.sendError = 1460;
       },
       kIpcSendFailed, " Msg #10"},
      {[](Link& l) { l.platform.answer = 0; }, kIpcBadAnswer, " Msg #10"},
  };
  for (const Case& c : cases) {
    Link l;
    c.script(l);
    EXPECT_FALSE(l.Open());
    EXPECT_EQ(l.code, c.code) << c.message;
    EXPECT_EQ(l.ch.LastIpcMessage(), c.message);
    EXPECT_FALSE(l.ch.IsOpen());
    EXPECT_EQ(l.ch.IpcAtom, 0);
  }

  Link exact;
  exact.image.Put<std::uint32_t>(0x3304, 0x19980005);
  EXPECT_TRUE(exact.Open());

  Link fallback;
  fallback.platform.primaryWindow = false;
  fallback.platform.fallbackWindow = true;
  EXPECT_TRUE(fallback.Open());
  EXPECT_TRUE(fallback.ch.UsedFallbackWindow);

  Link wanted;
  EXPECT_FALSE(wanted.Open(7));
  EXPECT_EQ(wanted.code, kIpcWrongSimulator);
  EXPECT_EQ(wanted.ch.LastIpcMessage(), " Msg #12");
  EXPECT_TRUE(wanted.Open(8));
}

TEST(FsuipcChannel, SilentSimulatorWordEndsAfterFivePasses) {
  Link l;
  l.image.Put<std::uint32_t>(0x3308, 0);
  EXPECT_FALSE(l.Open());
  EXPECT_EQ(l.code, kIpcVersionRefused);
  EXPECT_EQ(l.platform.sends, 5);
  EXPECT_EQ(l.platform.sleeps, std::vector<std::uint32_t>(5, 100));
}

TEST(FsuipcChannel, QueueBoundsAndEmptyBatches) {
  Link l;
  std::uint8_t buf[4];
  EXPECT_FALSE(l.ch.IpcQueueRead(0x3304, 4, buf, l.code));
  EXPECT_EQ(l.code, kIpcNotOpen);
  EXPECT_FALSE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(l.code, kIpcNotOpen);

  ASSERT_TRUE(l.Open());
  const int sendsAfterOpen = l.platform.sends;
  EXPECT_FALSE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(l.code, kIpcNothingQueued);
  EXPECT_EQ(l.platform.sends, sendsAfterOpen);

  // 4 (terminator) + 16 + size may reach 32512 exactly, not one byte more.
  std::vector<std::uint8_t> big(32500);
  std::memset(l.ch.ViewBase, 0xAB, 16);
  EXPECT_FALSE(l.ch.IpcQueueRead(0, 32493, big.data(), l.code));
  EXPECT_EQ(l.code, kIpcTooLarge);
  EXPECT_EQ(l.ch.WritePos, l.ch.ViewBase);
  EXPECT_EQ(Get32(l.ch.ViewBase), 0xABABABABu) << "nothing written";
  EXPECT_FALSE(l.ch.IpcQueueWrite(0, 32497, big.data(), l.code));
  EXPECT_EQ(l.code, kIpcTooLarge);
  EXPECT_TRUE(l.ch.IpcQueueWrite(0, 32496, big.data(), l.code));
  EXPECT_EQ(l.ch.WritePos - l.ch.ViewBase, 32508);
  EXPECT_TRUE(l.ch.IpcProcess(l.code));
  EXPECT_TRUE(l.ch.IpcQueueRead(0, 32492, big.data(), l.code));
  EXPECT_TRUE(l.ch.IpcProcess(l.code));
}

TEST(FsuipcChannel, BatchWalkFillsDestinationsInOrder) {
  Link l;
  ASSERT_TRUE(l.Open());
  l.image.Put<std::uint32_t>(0x1000, 0x11223344);
  l.image.Put<std::uint16_t>(0x2000, 0xBEEF);
  std::uint32_t a = 0;
  std::uint16_t b = 0;
  const std::uint16_t w = 0x0102;
  std::uint8_t none[1] = {0x77};
  ASSERT_TRUE(l.ch.IpcQueueRead(0x1000, 4, &a, l.code));
  ASSERT_TRUE(l.ch.IpcQueueWrite(0x3000, 2, &w, l.code));
  ASSERT_TRUE(l.ch.IpcQueueRead(0x1000, 0, none, l.code));    // zero size: stepped over by 16
  ASSERT_TRUE(l.ch.IpcQueueRead(0x2000, 2, nullptr, l.code));  // no destination: no copy
  ASSERT_TRUE(l.ch.IpcQueueRead(0x2000, 2, &b, l.code));
  EXPECT_EQ(l.ch.WritePos - l.ch.ViewBase, 16 + 4 + 12 + 2 + 16 + 16 + 2 + 16 + 2);
  ASSERT_TRUE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(a, 0x11223344u);
  EXPECT_EQ(b, 0xBEEF);
  EXPECT_EQ(none[0], 0x77);
  EXPECT_EQ(l.image.Get<std::uint16_t>(0x3000), 0x0102);
  EXPECT_EQ(l.ch.WritePos, l.ch.ViewBase);
  // The block as it went out: header words and the terminator.
  const std::uint8_t* v = l.ch.ViewBase;
  EXPECT_EQ(Get32(v), 1u);
  EXPECT_EQ(Get32(v + 4), 0x1000u);
  EXPECT_EQ(Get32(v + 8), 4u);
  EXPECT_EQ(Get32(v + 20), 2u);
  EXPECT_EQ(Get32(v + 24), 0x3000u);
  EXPECT_EQ(Get32(v + 86), 0u);
}

TEST(FsuipcChannel, PartnerAnswersFromTheEdgesOfTheImage) {
  Link l;
  ASSERT_TRUE(l.Open());
  l.image.Fill(0xFFF0, 0x66, 16);
  std::uint8_t tail[40];
  std::memset(tail, 0xEE, sizeof tail);
  const std::uint8_t ones[8] = {1, 1, 1, 1, 1, 1, 1, 1};
  ASSERT_TRUE(l.ch.IpcQueueWrite(0xFFFC, 8, ones, l.code));  // half beyond the address space
  ASSERT_TRUE(l.ch.IpcQueueWrite(0x3304, 8, ones, l.code));  // the module's own words
  ASSERT_TRUE(l.ch.IpcQueueRead(0xFFF0, 40, tail, l.code));
  ASSERT_TRUE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(tail[0], 0x66);
  EXPECT_EQ(tail[12], 1);
  EXPECT_EQ(tail[15], 1);
  EXPECT_EQ(tail[16], 0) << "beyond 0xFFFF reads as zero";
  EXPECT_EQ(tail[39], 0);
  EXPECT_EQ(l.image.Get<std::uint32_t>(0x3304), 0x39990000u);
  EXPECT_EQ(l.image.Get<std::uint32_t>(0x3308), 0xFADE0008u);
  EXPECT_EQ(l.platform.LibraryVersion(), 0x0101);
}

TEST(FsuipcChannel, TenthRetryCountsAsFailure) {
  Link l;
  ASSERT_TRUE(l.Open());
  std::uint16_t word = 0;
  const int base = l.platform.sends;
  l.platform.sleeps.clear();

  l.platform.failSends = 9;  // the ninth retry succeeds
  ASSERT_TRUE(l.ch.IpcQueueRead(0x3308, 2, &word, l.code));
  EXPECT_TRUE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(l.platform.sends - base, 10);
  EXPECT_EQ(word, 8);

  l.platform.failSends = 10;  // the tenth retry succeeds, and still fails
  word = 0;
  ASSERT_TRUE(l.ch.IpcQueueRead(0x3308, 2, &word, l.code));
  EXPECT_FALSE(l.ch.IpcProcess(l.code));
  EXPECT_EQ(l.code, kIpcTimedOut);
  EXPECT_EQ(l.platform.sends - base, 21);
  EXPECT_EQ(l.platform.sleeps.size(), 19u);
  EXPECT_EQ(word, 0);
  EXPECT_EQ(l.ch.WritePos, l.ch.ViewBase);
  EXPECT_TRUE(l.ch.IsOpen()) << "a failed round trip does not close the channel";
}

TEST(FsuipcChannel, LyingPartnerNeverLeadsTheWalkOutside) {
  Link l;
  ASSERT_TRUE(l.Open());
  l.image.Fill(0x4000, 0x5A, 64);
  struct Guarded {
    std::uint32_t value = 0;
    std::uint32_t guard = 0xCAFEF00D;
  };

  auto run = [&](std::function<void(std::uint8_t*)> tamper, bool expectOk) {
    Guarded g;
    l.platform.tamper = std::move(tamper);
    EXPECT_TRUE(l.ch.IpcQueueRead(0x4000, 4, &g.value, l.code));
    l.code = 42;
    EXPECT_EQ(l.ch.IpcProcess(l.code), expectOk);
    EXPECT_EQ(l.code, expectOk ? kIpcOk : 42) << "a refused walk leaves the code";
    EXPECT_EQ(g.guard, 0xCAFEF00Du);
    EXPECT_EQ(l.ch.WritePos, l.ch.ViewBase);
    return g.value;
  };
  // Unknown type stops the walk; only the first two bytes count as type.
  EXPECT_EQ(run([](std::uint8_t* b) { b[0] = 3; }, false), 0u);
  EXPECT_EQ(run([](std::uint8_t* b) { b[2] = 0x7F; }, true), 0x5A5A5A5Au);
  // Sizes beyond the block, or a size larger than the destination.
  EXPECT_EQ(run([](std::uint8_t* b) { OffsetImage::StoreLE<std::uint32_t>(b + 8, 0xFFFFFFF0); }, false), 0u);
  EXPECT_EQ(run([](std::uint8_t* b) { OffsetImage::StoreLE<std::uint32_t>(b + 8, 32768 - 15); }, false), 0u);
  EXPECT_EQ(run([](std::uint8_t* b) { OffsetImage::StoreLE<std::uint32_t>(b + 8, 40); }, true), 0x5A5A5A5Au);
  // A token nobody queued is not a destination.
  EXPECT_EQ(run([](std::uint8_t* b) { OffsetImage::StoreLE<std::uint32_t>(b + 12, 999); }, true), 0u);
  // No terminator anywhere: the walk runs to the block's end and stops.
  EXPECT_EQ(run([](std::uint8_t* b) {
              for (int pos = 0; pos + 12 <= 32768; pos += 12) {
                OffsetImage::StoreLE<std::uint32_t>(b + pos, 2);
                OffsetImage::StoreLE<std::uint32_t>(b + pos + 8, 0);
              }
              OffsetImage::StoreLE<std::uint32_t>(b + 32760, 2);  // a header cut by the block's end
            },
            false),
            0u);
}

}  // namespace
}  // namespace orv
