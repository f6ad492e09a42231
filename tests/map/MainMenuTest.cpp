#include <gtest/gtest.h>

#include <set>
#include <string>

#include "map/MainMenu.h"

namespace orv {
namespace {

TEST(MainMenu, EveryEntryHangsUnderAHeadingListedBeforeIt) {
  std::set<std::string_view> seen;
  for (const MenuEntry& e : MainMenuEntries()) {
    EXPECT_TRUE(seen.insert(e.name).second) << "duplicate control " << e.name;
    if (!e.parent.empty()) {
      const MenuEntry* parent = FindMenuEntry(e.parent);
      ASSERT_NE(parent, nullptr) << e.name;
      EXPECT_EQ(parent->kind, MenuKind::Heading) << e.name;
      EXPECT_TRUE(seen.count(e.parent)) << e.name << " listed before its heading";
    }
  }
  for (std::string_view top : ReducedModeHiddenMenus()) {
    const MenuEntry* e = FindMenuEntry(top);
    ASSERT_NE(e, nullptr) << top;
    EXPECT_TRUE(e->parent.empty()) << top;
  }
}

TEST(MainMenu, CaptionsAndMirroredButtons) {
  EXPECT_EQ(FindMenuEntry("MenuOnTop")->caption, "Alwa&ys on Top");
  EXPECT_EQ(FindMenuEntry("menuShowAll")->caption, "&Show All ");  // the trailing blank is the entry's own
  EXPECT_EQ(FindMenuEntry("menuPacotRoutes")->caption, "&ShowRoutes");
  EXPECT_EQ(FindMenuEntry("MenuCtrz")->button, "btnCtrz");
  EXPECT_EQ(FindMenuEntry("MenuCTA")->button, "btnAir1");
  EXPECT_EQ(FindMenuEntry("menuFIR")->button, "btnAir2");
  EXPECT_EQ(FindMenuEntry("MenuCoastlines")->button, "btnMap");
  EXPECT_EQ(FindMenuEntry("menuAirport")->kind, MenuKind::Toggle);
  EXPECT_EQ(FindMenuEntry("MenuViolation")->kind, MenuKind::Toggle);  // read by the render pass
  EXPECT_EQ(FindMenuEntry("nothing"), nullptr);
}

}  // namespace
}  // namespace orv
