// Arbitrary bytes as the settings texts: orv.ini, a colour theme file, the
// AIRAC label and the server list. Whatever is read must write back to a text
// that reads to the same settings.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/Settings.h"
#include "core/Startup.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::Settings s;
  orv::ReadIni(text, s);
  std::string written = orv::WriteIni(s);
  orv::Settings again;
  orv::ReadIni(written, again);
  if (orv::WriteIni(again) != written) std::abort();

  for (const std::string& name : orv::ColorThemeNames(text)) orv::ApplyColorTheme(text, name, s);
  orv::ReadUrlList(text);
  orv::AiracLabelText(text);
  orv::ReadDbManagerIni(text, size % 2 == 0);
  return 0;
}
