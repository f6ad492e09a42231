// Finding and reading the source files of the database manager: a data root
// is searched by file name (FlightGear's Airports/apt.dat.gz, an X-Plane
// installation's earth_nav.dat, or a flat folder), and a file is read whole,
// gunzipped when it is gzip data.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::dbm {

// The first file under root (searched recursively, names compared without
// case) whose name is one of names, in the order names gives them; a plain
// name also matches its ".gz" form. Empty when none exists.
std::filesystem::path FindSource(const std::filesystem::path& root, const std::vector<std::string_view>& names);

// The whole text of a file, inflated when it starts with the gzip magic.
// On failure nullopt and a message naming the file.
std::optional<std::string> ReadSourceText(const std::filesystem::path& path, std::string& error);

// Inflates gzip data (one or more members). False on corrupt data.
bool Gunzip(std::string_view data, std::string& out);

}  // namespace orv::dbm
