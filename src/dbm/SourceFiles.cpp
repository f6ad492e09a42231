#include "dbm/SourceFiles.h"

#include <zlib.h>

#include <algorithm>
#include <cctype>
#include <map>

#include "core/FileIo.h"

namespace orv::dbm {

namespace fs = std::filesystem;

namespace {
std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}
}  // namespace

fs::path FindSource(const fs::path& root, const std::vector<std::string_view>& names) {
  std::error_code ec;
  if (!fs::is_directory(root, ec)) {
    if (fs::is_regular_file(root, ec)) return root;
    return {};
  }
  // Shallow files win over deep ones, so a flat folder's own file is taken
  // before one in a sub-folder of the same name.
  std::map<std::string, std::pair<int, fs::path>> found;
  for (auto it = fs::recursive_directory_iterator(root, fs::directory_options::skip_permission_denied, ec);
       it != fs::recursive_directory_iterator(); it.increment(ec)) {
    if (ec) break;
    if (it.depth() > 4) {
      it.disable_recursion_pending();
      continue;
    }
    if (!it->is_regular_file(ec)) continue;
    std::string name = Lower(it->path().filename().string());
    auto old = found.find(name);
    if (old == found.end() || old->second.first > it.depth()) found[name] = {it.depth(), it->path()};
  }
  for (std::string_view n : names) {
    for (std::string candidate : {Lower(n), Lower(n) + ".gz"}) {
      auto it = found.find(candidate);
      if (it != found.end()) return it->second.second;
    }
  }
  return {};
}

bool Gunzip(std::string_view data, std::string& out) {
  out.clear();
  z_stream z{};
  if (inflateInit2(&z, 16 + MAX_WBITS) != Z_OK) return false;
  out.resize(std::max<std::size_t>(data.size() * 4, 1 << 16));
  z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  z.avail_in = static_cast<uInt>(data.size());
  std::size_t written = 0;
  for (;;) {
    if (written == out.size()) out.resize(out.size() * 2);
    z.next_out = reinterpret_cast<Bytef*>(out.data() + written);
    z.avail_out = static_cast<uInt>(std::min<std::size_t>(out.size() - written, 1u << 30));
    int rc = inflate(&z, Z_NO_FLUSH);
    written = static_cast<std::size_t>(reinterpret_cast<char*>(z.next_out) - out.data());
    if (rc == Z_STREAM_END) {
      // Another gzip member may follow (concatenated archives).
      if (z.avail_in == 0) break;
      if (inflateReset(&z) != Z_OK) {
        inflateEnd(&z);
        return false;
      }
      continue;
    }
    if (rc != Z_OK && rc != Z_BUF_ERROR) {
      inflateEnd(&z);
      return false;
    }
    if (rc == Z_BUF_ERROR && z.avail_in == 0) {  // the data ends inside a member
      inflateEnd(&z);
      return false;
    }
  }
  inflateEnd(&z);
  out.resize(written);
  return true;
}

std::optional<std::string> ReadSourceText(const fs::path& path, std::string& error) {
  auto bytes = ReadWholeFile(path);
  if (!bytes) {
    error = path.string() + ": the file cannot be read";
    return std::nullopt;
  }
  std::string_view raw(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  if (raw.size() >= 2 && static_cast<uint8_t>(raw[0]) == 0x1F && static_cast<uint8_t>(raw[1]) == 0x8B) {
    std::string text;
    if (!Gunzip(raw, text)) {
      error = path.string() + ": the gzip data is corrupt or cut short";
      return std::nullopt;
    }
    return text;
  }
  return std::string(raw);
}

}  // namespace orv::dbm
