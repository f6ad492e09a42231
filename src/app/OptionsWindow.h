// OVRPrefnew, the options window, without its widgets: a working copy of the
// settings that the window's boxes edit, the colour themes of orvcolor.ini,
// the checks of every typed value and the OK that takes the copy into the
// program and writes orv.ini whole. Cancel simply drops the form: nothing
// reaches the program before OK.
//
// Each option names its orv.ini key; values go through the settings' own
// reader and writer, so that the window converts a value exactly as the file
// does and no key is handled twice.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppFolder.h"
#include "core/Settings.h"
#include "core/Ui.h"
#include "map/DrawTarget.h"

namespace orv {

enum class OptionKind : uint8_t {
  Number,  // a text box holding a whole number in Min..Max
  Flag,    // a check box
  Choice,  // option buttons: Choices[value]
  Text,    // a text box; Min 1 asks for a web address (http:// or https://)
  Colour,  // a colour box
};

struct OptionDef {
  std::string_view Key;      // the orv.ini key
  std::string_view Caption;  // the window's label
  OptionKind Kind;
  int32_t Min = 0;
  int32_t Max = 0;
  std::span<const std::string_view> Choices{};
  std::string_view Page;     // the tab it stands on
};

std::span<const OptionDef> OptionDefs();
const OptionDef* FindOption(std::string_view key);

// The value of a key as orv.ini writes it ("50", "1", "#text"), and a value
// set as orv.ini reads it.
std::string IniValue(const Settings& s, std::string_view key);
void SetIniValue(Settings& s, std::string_view key, std::string_view value);

class OptionsForm {
public:
  // Takes a copy of the live settings; colorText is orvcolor.ini's text
  // (none when the file is missing: no themes).
  void Load(const Settings& live, std::optional<std::string> colorText);

  // The box of a Number or Text option as typed; Flag and Choice as their
  // numbers ("1", "2").
  std::string Value(std::string_view key) const;
  void SetValue(std::string_view key, std::string_view typed);
  Colour ColourOf(std::string_view key) const;
  void SetColour(std::string_view key, Colour c);

  const std::vector<std::string>& Themes() const { return themes_; }
  // Reads all colour keys of the theme into the copy; false for an unknown name.
  bool ApplyTheme(std::string_view name);

  // The first value that cannot be taken, as the message the window shows:
  // "Sector Length: must be a whole number from 5 to 200."; none when all
  // are good.
  std::optional<std::string> Check() const;
  // The settings the map preview draws with: the copy with its colours.
  const Settings& Preview() const { return work_; }

  // OK: with every value good, live becomes the copy and orv.ini is written
  // whole (atomically); a refused value or a failed write is shown and
  // false returned, the live settings then unchanged by a refusal.
  bool Ok(Settings& live, const AppFolder& app, Ui& ui) const;

private:
  Settings work_;
  std::vector<std::pair<std::string, std::string>> typed_;  // Number and Text boxes
  std::vector<std::string> themes_;
  std::optional<std::string> colorText_;
};

}  // namespace orv
