// Golden pictures of the render pass: small renders of the hand-made world
// through the QPainter target, compared pixel by pixel with the pictures kept
// under tests/golden/. Fonts come from fixed files (QtFontSet), so text
// measures the same on every machine; a small tolerance absorbs differences
// of anti-aliasing between library versions.
//
// To regenerate the pictures after a deliberate change of the drawing, run
//   ORV_UPDATE_GOLDEN=1 build/debug/tests/mapqt_tests --gtest_filter='GoldenRender*'
// and look at every changed picture before committing it.
#include <gtest/gtest.h>

#include <QImage>
#include <cstdlib>
#include <filesystem>

#include "map/RenderPass.h"
#include "mapqt/MapPicture.h"
#include "mapqt/QPainterTarget.h"
#include "support/SmallWorld.h"

namespace orv {
namespace {

std::filesystem::path GoldenFolder() {
  namespace fs = std::filesystem;
  const fs::path beside = fs::path(__FILE__).parent_path().parent_path() / "golden";
  if (beside.is_absolute()) return beside;
  // A compiler cache may keep __FILE__ relative to the build folder, which
  // is not where ctest runs the suite: look for tests/golden above the
  // test program instead.
  std::error_code ec;
  for (fs::path dir = fs::read_symlink("/proc/self/exe", ec).parent_path(); !dir.empty() && dir != dir.root_path();
       dir = dir.parent_path())
    if (fs::exists(dir / "tests" / "golden" / "airport_3nm.png", ec)) return dir / "tests" / "golden";
  return beside;
}

struct GoldenCase {
  const char* Name;
  float Lat, Lon;
  int32_t Range;
  bool RoundWorld;
  void (*Setup)(MapLayers&, Settings&, FlightPlan&);
};

// The share of pixels allowed to differ by more than kChannelTolerance in
// some channel.
constexpr int kChannelTolerance = 48;
constexpr double kAllowedShare = 0.003;

QImage Render(const GoldenCase& gc, const QtFontSet& fonts) {
  NavDatabase db;
  test::BuildSmallWorld(db);
  MapLayers layers;
  Settings colours;
  FlightPlan plan;
  gc.Setup(layers, colours, plan);
  ViewState view;
  view.CntrLat = gc.Lat;
  view.CntrLon = gc.Lon;
  view.RoundWorld = gc.RoundWorld;
  QPainterTarget target(fonts, 400, 300);
  PrepareMapPicture(target, view, static_cast<int16_t>(ZoomIndexOfLabel(gc.Range)));
  MapRenderer renderer;
  MapScene scene{view, colours, layers, db, plan};
  renderer.DrawMap(scene, target);
  return target.Image().convertToFormat(QImage::Format_RGB32);
}

const GoldenCase kCases[] = {
    {"approach_30nm", 50.0f, 8.0f, 30, false,
     [](MapLayers& l, Settings&, FlightPlan& plan) {
       l.btnVictor = l.btnJet = l.btnFix = true;
       l.ShowFreq = l.ShowName = true;
       test::BuildSmallPlan(plan);
     }},
    {"airport_3nm", 50.0f, 8.0f, 3, false, [](MapLayers&, Settings&, FlightPlan&) {}},
    {"area_300nm", 50.0f, 8.0f, 300, false,
     [](MapLayers& l, Settings& s, FlightPlan&) {
       l.btnMsa = true;
       s.Fill = 1;
     }},
    {"round_world_2000nm", 50.0f, 8.0f, 2000, true, [](MapLayers&, Settings& s, FlightPlan&) { s.Fill = 1; }},
};

class GoldenRender : public ::testing::TestWithParam<GoldenCase> {};

TEST_P(GoldenRender, MatchesTheKeptPicture) {
  static QtFontSet fonts;
  const GoldenCase& gc = GetParam();
  const QImage image = Render(gc, fonts);
  const std::filesystem::path file = GoldenFolder() / (std::string(gc.Name) + ".png");
  if (std::getenv("ORV_UPDATE_GOLDEN")) {
    std::filesystem::create_directories(GoldenFolder());
    ASSERT_TRUE(image.save(QString::fromStdString(file.string()), "PNG"));
    GTEST_SKIP() << "wrote " << file;
  }
  QImage golden(QString::fromStdString(file.string()));
  ASSERT_FALSE(golden.isNull()) << "missing " << file << " (set ORV_UPDATE_GOLDEN=1 to write it)";
  golden = golden.convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(golden.size(), image.size());
  long differing = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb a = image.pixel(x, y), b = golden.pixel(x, y);
      const int d = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                              std::abs(qBlue(a) - qBlue(b))});
      if (d > kChannelTolerance) ++differing;
    }
  }
  const long allowed = static_cast<long>(kAllowedShare * image.width() * image.height());
  EXPECT_LE(differing, allowed) << gc.Name << ": " << differing << " pixels differ";
  if (differing > allowed) {
    const auto actual = std::filesystem::temp_directory_path() / (std::string(gc.Name) + ".actual.png");
    image.save(QString::fromStdString(actual.string()), "PNG");
    ADD_FAILURE() << "the new picture is at " << actual;
  }
}

INSTANTIATE_TEST_SUITE_P(Pictures, GoldenRender, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<GoldenCase>& info) { return std::string(info.param.Name); });

}  // namespace
}  // namespace orv
