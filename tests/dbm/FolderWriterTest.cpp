// The folder writer's own files, the shapefile reader and gzip.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <zlib.h>

#include "core/Settings.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "dbm/FolderWriter.h"
#include "dbm/Shapefile.h"
#include "dbm/SourceFiles.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv::dbm {
namespace {

namespace fs = std::filesystem;

void Big(std::vector<uint8_t>& b, uint32_t v) {
  for (int s = 24; s >= 0; s -= 8) b.push_back(static_cast<uint8_t>(v >> s));
}
void Little(std::vector<uint8_t>& b, int32_t v) {
  for (int s = 0; s < 32; s += 8) b.push_back(static_cast<uint8_t>(static_cast<uint32_t>(v) >> s));
}
void Double(std::vector<uint8_t>& b, double d) {
  uint8_t raw[8];
  std::memcpy(raw, &d, 8);
  b.insert(b.end(), raw, raw + 8);
}

// A shapefile of one polygon record with two rings (a square and a triangle).
std::vector<uint8_t> TwoRingShapefile() {
  std::vector<uint8_t> content;
  Little(content, 5);
  for (double v : {0.0, 0.0, 10.0, 10.0}) Double(content, v);
  Little(content, 2);  // parts
  Little(content, 8);  // points
  Little(content, 0);
  Little(content, 5);
  for (auto [x, y] : {std::pair{0.0, 0.0}, {0.0, 10.0}, {10.0, 10.0}, {10.0, 0.0}, {0.0, 0.0}, {1.0, 1.0}, {2.0, 2.0}, {1.0, 1.0}}) {
    Double(content, x);
    Double(content, y);
  }
  std::vector<uint8_t> file;
  Big(file, 9994);
  for (int i = 0; i < 5; ++i) Big(file, 0);
  Big(file, static_cast<uint32_t>((100 + 8 + content.size()) / 2));
  Little(file, 1000);
  Little(file, 5);
  for (int i = 0; i < 8; ++i) Double(file, 0);
  Big(file, 1);
  Big(file, static_cast<uint32_t>(content.size() / 2));
  file.insert(file.end(), content.begin(), content.end());
  return file;
}

TEST(Shapefile, RingsBecomeWorldPolygons) {
  std::vector<uint8_t> shp = TwoRingShapefile();
  std::vector<std::vector<ShapePoint>> parts;
  std::string error;
  ASSERT_TRUE(ReadShapefileParts(shp.data(), shp.size(), "land.shp", parts, error)) << error;
  ASSERT_EQ(parts.size(), 2u);
  ASSERT_EQ(parts[0].size(), 5u);
  EXPECT_EQ(parts[0][1], (ShapePoint{10.0f, 0.0f}));  // y is the latitude
  AirspaceTables shapes;
  EXPECT_EQ(AddWorldPolygons(parts, kLandKind, shapes), 0u);
  ASSERT_EQ(shapes.WorldPolygons.size(), 2u);
  EXPECT_EQ(shapes.WorldPolygons[1].Index, 1);
  EXPECT_EQ(shapes.WorldPolygons[0].PointCount, 4);  // the file keeps one less than the points
  EXPECT_FLOAT_EQ(shapes.WorldPolygons[0].North, 10.0f);

  // Cut short inside the points: the record is named.
  std::vector<uint8_t> cut(shp.begin(), shp.end() - 20);
  parts.clear();
  EXPECT_FALSE(ReadShapefileParts(cut.data(), cut.size(), "land.shp", parts, error));
  EXPECT_EQ(error, "land.shp: record 1 at byte 100: the record runs past the end of the file");
  std::vector<uint8_t> notShp(120, 0);
  EXPECT_FALSE(ReadShapefileParts(notShp.data(), notShp.size(), "x.shp", parts, error));
  EXPECT_EQ(error, "x.shp: not a shapefile (no file code 9994 and version 1000 in the 100-byte header)");
}

TEST(Shapefile, ThePolygonTableKeepsTheLargestWhenFull) {
  std::vector<std::vector<ShapePoint>> parts(15205, std::vector<ShapePoint>(3));
  parts[15204].resize(50);  // the largest comes last
  AirspaceTables shapes;
  EXPECT_EQ(AddWorldPolygons(parts, kLandKind, shapes), 4u);
  ASSERT_EQ(shapes.WorldPolygons.size(), 15201u);
  EXPECT_EQ(shapes.WorldPolygons[0].Count, 50u);
  EXPECT_EQ(shapes.WorldPolygons.back().Index, 15200);
}

TEST(SourceFiles, GzipAndPlainReadAlike) {
  test::TempDir dir;
  std::string text = "I\n1000 Version\n99\n";
  std::string gz(256, '\0');
  z_stream z{};
  ASSERT_EQ(deflateInit2(&z, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
  z.next_in = reinterpret_cast<Bytef*>(text.data());
  z.avail_in = static_cast<uInt>(text.size());
  z.next_out = reinterpret_cast<Bytef*>(gz.data());
  z.avail_out = static_cast<uInt>(gz.size());
  ASSERT_EQ(deflate(&z, Z_FINISH), Z_STREAM_END);
  gz.resize(z.total_out);
  deflateEnd(&z);
  dir.Write("Airports/APT.DAT.GZ", gz);
  dir.Write("nav.dat", text);
  fs::path apt = FindSource(dir.Path(), {"apt.dat"});
  ASSERT_FALSE(apt.empty());
  std::string error;
  auto a = ReadSourceText(apt, error);
  ASSERT_TRUE(a) << error;
  EXPECT_EQ(*a, text);
  EXPECT_EQ(FindSource(dir.Path(), {"earth_nav.dat", "nav.dat"}).filename(), "nav.dat");
  EXPECT_TRUE(FindSource(dir.Path(), {"fix.dat"}).empty());
  // A cut-short archive is refused by name.
  dir.Write("fix.dat.gz", gz.substr(0, gz.size() / 2));
  EXPECT_FALSE(ReadSourceText(dir.Path() / "fix.dat.gz", error));
  EXPECT_EQ(error, (dir.Path() / "fix.dat.gz").string() + ": the gzip data is corrupt or cut short");
}

TEST(FolderWriter, AiracText) {
  EXPECT_EQ(AiracText("2013.10"), "AIRAC cycle 1310\r\nX-Plane data\r\n");
  EXPECT_EQ(AiracText("1802"), "AIRAC cycle 1802\r\nX-Plane data\r\n");
  EXPECT_EQ(AiracText(""), "AIRAC cycle unknown\r\nX-Plane data\r\n");
}

// The contrast ratio of two colours of the files (blue * 65536 + green *
// 256 + red), by relative luminance: 1 for equal colours, 21 for black on white.
double Contrast(int32_t a, int32_t b) {
  auto luminance = [](int32_t c) {
    auto channel = [](int v) {
      const double s = v / 255.0;
      return s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(c & 0xFF) + 0.7152 * channel(c >> 8 & 0xFF) + 0.0722 * channel(c >> 16 & 0xFF);
  };
  const double la = luminance(a), lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

TEST(FolderWriter, ColourThemesLegibleOnTheMapTheLandAndTheAirportGround) {
  const std::string text = DefaultColorThemesText();
  ASSERT_EQ(ColorThemeNames(text), (std::vector<std::string>{"Day", "Night", "High Contrast"}));
  EXPECT_EQ(text.substr(0, 21), "[Day]\r\nMAP=16249062\r\n");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3 * 41);  // a heading and the 40 colour keys each
  for (const std::string& name : ColorThemeNames(text)) {
    Settings s;
    ASSERT_TRUE(ApplyColorTheme(text, name, s));
    const double least = name == "High Contrast" ? 7.0 : 4.5;
    for (int32_t ground : {s.Map, s.Land, s.Taxi})
      for (int32_t ink : {s.Coast, s.Comp, s.Ap, s.Vor, s.Ndb, s.Ils, s.Int, s.Fix, s.Victor, s.Jet})
        EXPECT_GE(Contrast(ink, ground), least) << name << ": " << ink << " on " << ground;
  }
}

TEST(FolderWriter, EmptyProcedureFileAndUserFilesKept) {
  Bytes sid = EmptyProcedureFile();
  ASSERT_EQ(sid.size(), 56u);  // one block head: no airport, no points
  EXPECT_EQ(sid[0], ' ');
  EXPECT_EQ(sid[55], 0);

  test::TempDir dir;
  dir.Write("database/userwp.udb", "ORVUSERDB-the user's own");
  dir.Write("ORVColor.ini", "[Mine]\r\nMAP=1\r\n");
  BuiltDatabase built;
  AirportRec a;
  a.Icao.Assign("EDDF");
  built.Db.Airports.Airports.push_back(a);
  built.Db.Airports.Regions = {"Northern Europe"};
  built.Db.Airports.RegionCount = 1;
  built.WxStations = "EDDF,50.0333,8.5706\r\n";
  FolderOptions o;
  o.Fsx = false;
  o.AiracText = AiracText("2013.10");
  std::vector<WrittenFile> written;
  std::string error;
  Bytes grid = BuildMagVarFile([](int, int) { return 0.0; });
  ASSERT_TRUE(WriteAppFolder(dir.Path(), built, grid, o, written, error)) << error;
  EXPECT_EQ(*ReadWholeText(dir.Path() / "database" / "userwp.udb"), "ORVUSERDB-the user's own");
  EXPECT_EQ(*ReadWholeText(dir.Path() / "user" / "aircraft.orv"), DefaultAircraftText());
  EXPECT_EQ(*ReadWholeText(dir.Path() / "ORVColor.ini"), "[Mine]\r\nMAP=1\r\n");
  EXPECT_FALSE(fs::exists(dir.Path() / "orvcolor.ini"));  // the user's file, whatever its case
  EXPECT_FALSE(fs::exists(dir.Path() / "database" / "FS10"));
  EXPECT_EQ(fs::file_size(dir.Path() / "map" / "worldpolygon.bin"), 25u + 8u);  // the one-point stand-in
  EXPECT_EQ(AiracLabelText(*ReadWholeText(dir.Path() / "database" / "AIRAC.INI")), "AIRAC cycle 1310 - X-Plane data");

  // The folder passes the start-up.
  NavDatabase db;
  DatabaseLoader loader(db);
  test::FakeClock clock;
  test::ScriptedUi ui;
  AppState state(AppFolder(dir.Path()));
  StartupResult r = RunStartup(state, ui, clock, loader);
  EXPECT_FALSE(r.ProgramEnds()) << ReadWholeText(dir.Path() / "ORV_Info.LOG").value_or("no log");

  // A new folder gets the themes.
  test::TempDir fresh;
  written.clear();
  ASSERT_TRUE(WriteAppFolder(fresh.Path(), built, grid, o, written, error)) << error;
  EXPECT_EQ(*ReadWholeText(fresh.Path() / "orvcolor.ini"), DefaultColorThemesText());
}

// A world folder built by hand (scripts/build-world.sh) loads as well; run
// with ORV_WORLD_DIR set to it.
TEST(FolderWriter, WorldFolderLoadsWhenGiven) {
  const char* world = std::getenv("ORV_WORLD_DIR");
  if (!world) GTEST_SKIP() << "ORV_WORLD_DIR not set";
  NavDatabase db;
  DatabaseLoader loader(db);
  test::FakeClock clock;
  test::ScriptedUi ui;
  AppState state{AppFolder(fs::path(world))};
  StartupResult r = RunStartup(state, ui, clock, loader);
  ASSERT_FALSE(r.ProgramEnds()) << (r.Messages.empty() ? std::string() : r.Messages.front());
  for (const ArrayCount& c : loader.Counts()) std::printf("%-20s %lld\n", std::string(c.Name).c_str(), static_cast<long long>(c.Count));
}

}  // namespace
}  // namespace orv::dbm
