#include "core/FileIo.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>

namespace orv {

namespace fs = std::filesystem;

std::optional<Bytes> ReadWholeFile(const fs::path& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return std::nullopt;
  Bytes data;
  if (std::fseek(f, 0, SEEK_END) == 0) {
    long size = std::ftell(f);
    if (size > 0) data.reserve(static_cast<size_t>(size));
    std::fseek(f, 0, SEEK_SET);
  }
  uint8_t buffer[1 << 16];
  size_t got;
  while ((got = std::fread(buffer, 1, sizeof buffer, f)) > 0) data.insert(data.end(), buffer, buffer + got);
  bool failed = std::ferror(f) != 0;
  std::fclose(f);
  if (failed) return std::nullopt;
  return data;
}

std::optional<std::string> ReadWholeText(const fs::path& path) {
  auto bytes = ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  return std::string(bytes->begin(), bytes->end());
}

bool WriteFileAtomic(const fs::path& path, std::string_view data) {
  fs::path tmp = path;
  tmp += ".tmp";
  {
    std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(data.data(), static_cast<std::streamsize>(data.size()));
    out.flush();
    if (!out) {
      out.close();
      std::error_code ec;
      fs::remove(tmp, ec);
      return false;
    }
  }
  std::error_code ec;
  fs::rename(tmp, path, ec);
  if (ec) {
    fs::remove(tmp, ec);
    return false;
  }
  return true;
}

bool WriteFileAtomic(const fs::path& path, const Bytes& data) {
  return WriteFileAtomic(path, std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  size_t start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || text[i] == '\n') {
      lines.emplace_back(text.substr(start, i - start));
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      start = i + 1;
    }
  }
  if (start < text.size()) lines.emplace_back(text.substr(start));
  return lines;
}

fs::path PersonalFolder() {
  const char* home = std::getenv("HOME");
  fs::path homePath = home && *home ? fs::path(home) : fs::current_path();
  // XDG user-dirs: the documents folder may be renamed or localised.
  if (const char* xdg = std::getenv("XDG_DOCUMENTS_DIR"); xdg && *xdg) return xdg;
  if (auto text = ReadWholeText(homePath / ".config" / "user-dirs.dirs")) {
    for (const std::string& line : SplitLines(*text)) {
      const std::string key = "XDG_DOCUMENTS_DIR=";
      if (line.rfind(key, 0) != 0) continue;
      std::string value = line.substr(key.size());
      if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
      if (value.rfind("$HOME", 0) == 0) return homePath / fs::path(value.substr(value.size() > 5 ? 6 : 5));
      if (!value.empty()) return value;
    }
  }
  std::error_code ec;
  if (fs::is_directory(homePath / "Documents", ec)) return homePath / "Documents";
  return homePath;
}

}  // namespace orv
