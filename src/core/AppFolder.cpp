#include "core/AppFolder.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "core/Runtime.h"

namespace orv {

namespace fs = std::filesystem;

AppFolder::AppFolder(fs::path root) : root_(std::move(root)) {}

std::string AppFolder::AppPath() const {
  std::string text = root_.string();
  while (text.size() > 1 && (text.back() == '/' || text.back() == '\\')) text.pop_back();
  return text;
}

fs::path FindCaseInsensitive(const fs::path& folder, std::string_view name) {
  fs::path exact = folder / fs::path(std::string(name));
  std::error_code ec;
  if (fs::exists(exact, ec)) return exact;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string entry = it->path().filename().string();
    if (SameTextNoCase(entry, name)) return it->path();
  }
  return exact;
}

fs::path AppFolder::Resolve(std::string_view constant) const {
  fs::path result = root_;
  size_t pos = 0;
  while (pos <= constant.size()) {
    size_t next = constant.find_first_of("\\/", pos);
    if (next == std::string_view::npos) next = constant.size();
    std::string_view part = constant.substr(pos, next - pos);
    if (!part.empty() && part != ".") result = FindCaseInsensitive(result, part);
    pos = next + 1;
  }
  return result;
}

}  // namespace orv
