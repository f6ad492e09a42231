// The main window's menu as data: every entry with its control name, caption
// and kind, in display order. The Qt shell builds its menu bar from this table
// and hands each click back by control name, so that what an entry does lives
// in the core.
#pragma once

#include <span>
#include <string_view>

namespace orv {

enum class MenuKind {
  Heading,  // a menu or submenu that opens others
  Command,  // does something once
  Toggle,   // its Checked state flips
};

struct MenuEntry {
  std::string_view name;     // control name, e.g. "MenuVOR"
  std::string_view parent;   // control name of the heading it sits in; empty on the menu bar
  std::string_view caption;  // with "&" before the access key
  MenuKind kind;
  std::string_view button;   // the toolbar button it mirrors, if any ("btnVor")
};

// All entries, parents before their children, each heading's children in order.
std::span<const MenuEntry> MainMenuEntries();

// The entry of a control name, or nullptr.
const MenuEntry* FindMenuEntry(std::string_view name);

// A button of the bottom bar pnlButton and the menu entry whose command it runs.
struct BarButtonEntry {
  std::string_view name;     // "cmdTracing"
  std::string_view caption;
  std::string_view menu;     // "MenuReplay"; empty for cmdLayout, whose Runway Window has no menu entry
};
std::span<const BarButtonEntry> BottomBarButtons();

// The top-level menus that reduced mode hides.
std::span<const std::string_view> ReducedModeHiddenMenus();

}  // namespace orv
