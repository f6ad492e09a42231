// The options window's form: a refused value names its box and range and
// changes nothing, a theme recolours the preview only, OK takes the copy and
// writes orv.ini whole.
#include "app/OptionsWindow.h"

#include <gtest/gtest.h>

#include "core/FileIo.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

TEST(OptionsForm, RefusesOutOfRangeValuesAndWritesTheFileOnOk) {
  test::TempDir dir;
  AppFolder app(dir.Path().string());
  test::ScriptedUi ui;
  Settings live;
  OptionsForm form;
  form.Load(live, std::string("[Night]\r\nMAP=0\r\nRWY=255\r\n[Day]\r\nMAP=16777215\r\n"));
  EXPECT_EQ(form.Themes(), (std::vector<std::string>{"Night", "Day"}));
  EXPECT_EQ(form.Value("SECLEN"), "50");
  EXPECT_EQ(form.Value("GC"), "1");

  const std::pair<const char*, const char*> refused[] = {
      {"SECLEN", "Sector Length: must be a whole number from 5 to 200."},
      {"TRACEALT", "Maximum display value: must be a whole number from 1000 to 50000."},
      {"WXURL", "Weather address: must be a web address beginning with http:// or https://."},
      {"SIMSOURCE", "Simulator: must be one of "},
  };
  for (auto [key, message] : refused) {
    OptionsForm f;
    f.Load(live, std::nullopt);
    f.SetValue(key, std::string_view(key) == "SECLEN" ? "12abc" : std::string_view(key) == "TRACEALT" ? "60000" : "nonsense");
    EXPECT_FALSE(f.Ok(live, app, ui)) << key;
    EXPECT_EQ(ui.Messages().back().rfind(message, 0), 0u) << ui.Messages().back();
  }
  EXPECT_FALSE(std::filesystem::exists(dir.Path() / "orv.ini"));

  // A theme and the typed values stay in the form until OK.
  ASSERT_TRUE(form.ApplyTheme("Night"));
  EXPECT_FALSE(form.ApplyTheme("Dusk"));
  form.SetValue("SECLEN", " 75 ");
  form.SetValue("MZOOM", "1");
  form.SetValue("FUEL", "9");  // no such unit: the boxes keep the old one
  EXPECT_EQ(form.Preview().Map, 0);
  EXPECT_EQ(form.Preview().Rwy, 255);
  EXPECT_EQ(live.Map, 0x400000);
  EXPECT_EQ(live.SecLen, 50);

  ASSERT_TRUE(form.Ok(live, app, ui));
  EXPECT_EQ(live.SecLen, 75);
  EXPECT_EQ(live.MZoom, 1);
  EXPECT_EQ(live.Fuel, 2);
  EXPECT_EQ(live.Map, 0);
  const std::optional<std::string> text = ReadWholeText(dir.Path() / "orv.ini");
  ASSERT_TRUE(text);
  EXPECT_EQ(*text, WriteIni(live));
  EXPECT_NE(text->find("\r\nSECLEN=75\r\n"), std::string::npos);
}

}  // namespace
}  // namespace orv
