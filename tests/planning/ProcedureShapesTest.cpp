// Holding and procedure-turn shapes worked out by hand, and proc.orv's
// bytes and refusals.
#include "planning/ProcedureShapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace orv {
namespace {

ProcShape Hold() {
  ProcShape s;
  s.Name = "HOLD";
  s.Fix = "FFM";
  s.Lat = 50, s.Lon = 8, s.InboundCourse = 270, s.LegValue = 1, s.Speed = 180;
  return s;
}

constexpr double kCos50 = 0.6427876097;

TEST(ProcShapes, HoldingAroundTheFix) {
  // 180 kt: a rate-one turn of radius 180 / 30 / 2 pi = 0.955 NM, a one
  // minute leg of 3 NM. Inbound 270 with right turns: the outbound leg lies
  // two radii north, flown east.
  const ProcShape s = Hold();
  EXPECT_NEAR(ProcTurnRadiusNm(s), 0.95493, 1e-4);
  EXPECT_NEAR(ProcLegNm(s), 3.0, 1e-9);
  const auto p = ProcShapePoints(s);
  auto at = [&](std::size_t i, double northNm, double eastNm) {
    EXPECT_NEAR(p[i].Lat, 50 + northNm / 60, 2e-5) << i;
    EXPECT_NEAR(p[i].Lon, 8 + eastNm / 60 / kCos50, 2e-5) << i;
  };
  at(0, 0, 0);
  at(3, 0.95493, -0.95493);  // halfway round the first turn, west of its centre
  at(6, 1.90986, 0);         // abeam the fix
  at(7, 1.90986, 3);         // end of the outbound leg
  at(13, 0, 3);              // back on the inbound course, one leg out
  at(14, 0, 0);
  // Left turns mirror it to the south; the variation turns the course true.
  ProcShape left = s;
  left.RightTurns = false;
  EXPECT_NEAR(ProcShapePoints(left)[6].Lat, 50 - 1.90986 / 60, 2e-5);
  ProcShape east = s;
  east.InboundCourse = 0, east.MagVar = 90, east.LegInMinutes = false, east.LegValue = 6;
  EXPECT_NEAR(ProcShapePoints(east)[13].Lon, 8 - 6 / 60.0 / kCos50, 2e-5);  // true 090 inbound: the leg lies west
}

TEST(ProcShapes, ProcedureTurnComesBackOntoTheInboundCourse) {
  ProcShape s = Hold();
  s.Kind = ProcKind::ProcedureTurn;
  s.InboundCourse = 360, s.LegInMinutes = false, s.LegValue = 5;
  const auto p = ProcShapePoints(s);
  EXPECT_NEAR(p[2].Lat, 50 - 5 / 60.0, 1e-5);  // 5 NM out on 180
  EXPECT_NEAR(p[2].Lon, 8, 1e-6);
  EXPECT_LT(p[3].Lon, 8.0f);  // outbound on 180, the right turn onto 225 goes west
  EXPECT_NEAR(p[10].Lon, 8, 1e-5);  // met the inbound course
  EXPECT_LT(p[10].Lat, 50.0f);
  EXPECT_EQ(p[14].Lat, 50.0f);
  EXPECT_EQ(p[14].Lon, 8.0f);
}

TEST(ProcShapes, FileBytesAndRefusals) {
  ProcShape turn = Hold();
  turn.Name = "PT 25";
  turn.Kind = ProcKind::ProcedureTurn;
  turn.RightTurns = false;
  const std::vector<uint8_t> bytes = BuildProcFile({Hold(), turn});
  ASSERT_EQ(bytes.size(), 4 + 2 * kProcRecordSize);
  EXPECT_EQ(bytes[0], 2);
  EXPECT_EQ(std::string(bytes.begin() + 4 + 50, bytes.begin() + 4 + 50 + 25), "PT 25               FFM  ");
  EXPECT_EQ(bytes[4 + 50 + 25], 'P');
  EXPECT_EQ(bytes[4 + 50 + 26], 'L');
  EXPECT_EQ(bytes[4 + 50 + 27], 'M');
  float course;
  std::memcpy(&course, &bytes[4 + 36], 4);
  EXPECT_EQ(course, 270.0f);
  auto back = ParseProcFile(bytes.data(), bytes.size());
  ASSERT_TRUE(std::holds_alternative<std::vector<ProcShape>>(back)) << std::get<std::string>(back);
  EXPECT_EQ(BuildProcFile(std::get<0>(back)), bytes);

  auto refused = [&](std::vector<uint8_t> b) {
    auto r = ParseProcFile(b.data(), b.size());
    return std::holds_alternative<std::string>(r) ? std::get<std::string>(r) : std::string("accepted");
  };
  EXPECT_EQ(refused({1, 0}), "proc.orv is too short to hold its count of shapes.");
  std::vector<uint8_t> cut(bytes.begin(), bytes.end() - 1);
  EXPECT_EQ(refused(cut), "proc.orv: 2 shapes need 104 bytes, the file has 103.");
  std::vector<uint8_t> many = bytes;
  many[3] = 0x80;  // a negative count
  EXPECT_EQ(refused(many), "proc.orv: the count of shapes, -2147483646, is not from 0 to 500.");
  std::vector<uint8_t> kind = bytes;
  kind[4 + 50 + 25] = 'X';
  EXPECT_EQ(refused(kind), "proc.orv: shape 2: the kind is neither H nor P.");
  std::vector<uint8_t> far = bytes;
  const float bad = 400;
  std::memcpy(&far[4 + 36], &bad, 4);
  EXPECT_EQ(refused(far), "proc.orv: shape 1: Inbound course: must be from 0 to 360.");
  const float nan = std::nanf("");
  std::memcpy(&far[4 + 36], &nan, 4);
  EXPECT_EQ(refused(far), "proc.orv: shape 1: Inbound course: must be from 0 to 360.");
}

}  // namespace
}  // namespace orv
