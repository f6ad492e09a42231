// Whole-file reads and atomic writes. Readers decode from memory; writers of
// user files go through a temporary file renamed over the old one, so that a
// crash never leaves a half-written file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

using Bytes = std::vector<uint8_t>;

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
