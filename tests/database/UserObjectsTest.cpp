#include <gtest/gtest.h>

#include <string>

#include "database/UserObjects.h"

namespace orv {
namespace {

TEST(UserObjects, HeadsPointsCommentsAndEmptyLines) {
  const std::string text =
      "# my own shapes\r\n"
      "FP,2,255,128,0\r\n"
      "47.5,8.25\r\n"
      "# a comment inside an object is skipped, the object goes on\r\n"
      "47.75, 8.5\r\n"
      "-91,8\r\n"          // latitude below -90: not taken
      "10,-180.5\r\n"      // longitude below -180: not taken
      "91,181\r\n"         // only the lower limits are tested: taken
      "1E39,5\r\n"         // beyond a 32-bit float: not taken
      "\r\n"
      "1,1\r\n"            // after the empty line there is no object: not taken
      "L,1,0,0,255\n"
      "-90,-180\n"
      "UP\n"               // a new head ends the line object
      "5.5,6.5\n"
      "7\n";               // no ",": not a point

  AirspaceTables t;
  ParseUserObjectFile(text, t);
  ASSERT_EQ(t.UserObjects.size(), 3u);

  const UserObjectRec& fp = t.UserObjects[0];
  EXPECT_EQ(fp.Kind, kUserObjectFilledPolygon);
  EXPECT_EQ(fp.Style, 2);
  EXPECT_EQ(fp.Red, 255);
  EXPECT_EQ(fp.Green, 128);
  EXPECT_EQ(fp.Blue, 0);
  EXPECT_EQ(fp.Color, 128 * 256 + 255);
  EXPECT_EQ(fp.PointCount, 3);
  auto p = t.PointsOf(fp);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_EQ(p[0], (ShapePoint{47.5f, 8.25f}));
  EXPECT_EQ(p[1], (ShapePoint{47.75f, 8.5f}));
  EXPECT_EQ(p[2], (ShapePoint{91, 181}));
  // Every object carries the whole world as its box.
  EXPECT_EQ(fp.North, 90.0f);
  EXPECT_EQ(fp.South, -90.0f);
  EXPECT_EQ(fp.East, 180.0f);
  EXPECT_EQ(fp.West, -180.0f);

  const UserObjectRec& line = t.UserObjects[1];
  EXPECT_EQ(line.Kind, kUserObjectLine);
  EXPECT_EQ(line.Style, 1);
  EXPECT_EQ(line.Color, 255 * 65536);
  EXPECT_EQ(line.PointCount, 1);
  EXPECT_EQ(line.First, 3u);
  EXPECT_EQ(t.PointsOf(line)[0], (ShapePoint{-90, -180}));

  const UserObjectRec& up = t.UserObjects[2];
  EXPECT_EQ(up.Kind, kUserObjectPolygon);
  EXPECT_EQ(up.Style, 0);  // a head without fields
  EXPECT_EQ(up.Color, 0);
  EXPECT_EQ(up.PointCount, 1);
  EXPECT_EQ(t.UserObjectPoints.size(), 5u);
}

TEST(UserObjects, HeadFieldsAreSixteenBitIntegersAndColoursAreHeldToAByte) {
  AirspaceTables t;
  ParseUserObjectFile("L,2.5,300,-4,70000\n0,0\n", t);
  ASSERT_EQ(t.UserObjects.size(), 1u);
  const UserObjectRec& o = t.UserObjects[0];
  EXPECT_EQ(o.Style, 2);      // half to even
  EXPECT_EQ(o.Red, 300);
  EXPECT_EQ(o.Green, -4);
  EXPECT_EQ(o.Blue, 32767);   // saturated
  EXPECT_EQ(o.Color, 255 * 65536 + 0 * 256 + 255);
}

TEST(UserObjects, EmptyTextAndGarbage) {
  AirspaceTables t;
  t.UserObjects.resize(3);
  ParseUserObjectFile("", t);
  EXPECT_TRUE(t.UserObjects.empty());
  EXPECT_TRUE(t.UserObjectPoints.empty());
  // Text that is no number reads as 0, as the runtime's Val gives it.
  ParseUserObjectFile("FP,x\nabc,def\n\x01\xff,\n", t);
  ASSERT_EQ(t.UserObjects.size(), 1u);
  EXPECT_EQ(t.UserObjects[0].PointCount, 2);
  EXPECT_EQ(t.UserObjectPoints[0], (ShapePoint{0, 0}));
}

TEST(UserObjects, WriterTextAndRoundTrip) {
  AirspaceTables t;
  ParseUserObjectFile("FP,2,255,128,0\n47.5,8.25\n-33.125,151\n\nL,1,0,0,255\n1e-3,-0.5\n", t);
  std::string text = BuildUserObjectFile(t);
  EXPECT_EQ(text,
            "FP,2,255,128,0\r\n47.5,8.25\r\n-33.125,151\r\n\r\n"
            "L,1,0,0,255\r\n0.001,-0.5\r\n\r\n");
  AirspaceTables back;
  ParseUserObjectFile(text, back);
  EXPECT_EQ(back.UserObjectPoints, t.UserObjectPoints);
  ASSERT_EQ(back.UserObjects.size(), 2u);
  EXPECT_EQ(back.UserObjects[1].Color, t.UserObjects[1].Color);
}

}  // namespace
}  // namespace orv
