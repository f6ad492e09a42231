#include "core/FileIo.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace orv {

namespace fs = std::filesystem;

std::optional<Bytes> ReadWholeFile(const fs::path& path) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return std::nullopt;
  Bytes data;
  long size = -1;
  if (std::fseek(f, 0, SEEK_END) == 0) {
    size = std::ftell(f);
    std::fseek(f, 0, SEEK_SET);
  }
  // Read straight into the array when the length is known, rather than
  // through a buffer on the stack: one copy of the bytes instead of two.
  std::size_t got = 0;
  if (size > 0) {
    data.resize(static_cast<std::size_t>(size));
    got = std::fread(data.data(), 1, data.size(), f);
    data.resize(got);
  }
  // A file that grew since, or whose length the system did not tell.
  uint8_t buffer[1 << 16];
  std::size_t more;
  while ((more = std::fread(buffer, 1, sizeof buffer, f)) > 0) data.insert(data.end(), buffer, buffer + more);
  bool failed = std::ferror(f) != 0;
  std::fclose(f);
  if (failed) return std::nullopt;
  return data;
}

FileView& FileView::operator=(FileView&& other) noexcept {
  if (this != &other) {
    Release();
    copy_ = std::move(other.copy_);
    mapped_ = std::exchange(other.mapped_, nullptr);
    size_ = std::exchange(other.size_, 0);
    data_ = mapped_ ? static_cast<const uint8_t*>(mapped_) : copy_.data();
    other.data_ = nullptr;
  }
  return *this;
}

void FileView::Release() {
#if !defined(_WIN32)
  if (mapped_) munmap(mapped_, size_);
#endif
  mapped_ = nullptr;
  copy_.clear();
  data_ = nullptr;
  size_ = 0;
}

std::optional<FileView> FileView::Open(const fs::path& path) {
  FileView view;
#if !defined(_WIN32)
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  struct stat st {};
  if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size > 0) {
    // Populated at once: the pages are in the file cache and the readers
    // walk every byte, so one call maps them all instead of a fault apiece.
    void* p = ::mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
    if (p != MAP_FAILED) {
      ::close(fd);
      view.mapped_ = p;
      view.size_ = static_cast<std::size_t>(st.st_size);
      view.data_ = static_cast<const uint8_t*>(p);
      return view;
    }
  }
  ::close(fd);
#endif
  std::optional<Bytes> bytes = ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  view.copy_ = std::move(*bytes);
  view.size_ = view.copy_.size();
  view.data_ = view.copy_.data();
  return view;
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
