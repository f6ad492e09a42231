// Whole-file reads and atomic writes. Readers decode from memory; writers of
// user files go through a temporary file renamed over the old one, so that a
// crash never leaves a half-written file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

using Bytes = std::vector<uint8_t>;

// A file's bytes for reading once, as the start-up reads the database: mapped
// from the system's file cache where the system allows it, so that the bytes
// are neither copied nor given fresh memory (a copy of fifty megabytes of
// database is most of what a start-up would spend); read into memory
// otherwise. The bytes live as long as the view.
class FileView {
public:
  FileView() = default;
  FileView(FileView&& other) noexcept { *this = std::move(other); }
  FileView& operator=(FileView&& other) noexcept;
  FileView(const FileView&) = delete;
  FileView& operator=(const FileView&) = delete;
  ~FileView() { Release(); }

  // The file's bytes, or nothing when it cannot be opened or read.
  static std::optional<FileView> Open(const std::filesystem::path& path);

  std::span<const uint8_t> Span() const { return {data_, size_}; }
  std::size_t Size() const { return size_; }
  bool Empty() const { return size_ == 0; }

private:
  void Release();
  const uint8_t* data_ = nullptr;
  std::size_t size_ = 0;
  void* mapped_ = nullptr;  // the mapping, when there is one
  Bytes copy_;              // the bytes, when the file was read instead
};

// The whole file, or nothing when it cannot be opened.
std::optional<Bytes> ReadWholeFile(const std::filesystem::path& path);
std::optional<std::string> ReadWholeText(const std::filesystem::path& path);

// Writes to "<path>.tmp" and renames it over path. False when any step fails;
// the old file is then left as it was.
bool WriteFileAtomic(const std::filesystem::path& path, std::string_view data);
bool WriteFileAtomic(const std::filesystem::path& path, const Bytes& data);

// Text lines as the runtime's Line Input reads them: split at CR LF, LF or CR;
// a final line without an end is a line; no trailing empty line after a last end.
std::vector<std::string> SplitLines(std::string_view text);

// The user's documents folder: XDG_DOCUMENTS_DIR or ~/Documents on Linux, the
// registry's "Personal" shell folder on Windows. Falls back to the home folder.
std::filesystem::path PersonalFolder();

}  // namespace orv
