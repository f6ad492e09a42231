#include "database/UserWaypoints.h"

#include <cstring>
#include <filesystem>
#include <system_error>

#include "database/ByteReader.h"

namespace orv {

namespace fs = std::filesystem;

UserWaypointParse ParseUserWaypoints(const uint8_t* data, std::size_t size, std::vector<UserWaypointRec>& out) {
  UserWaypointParse result;
  const std::size_t headerSize = kUserWaypointHeader.size();
  if (size < headerSize || std::memcmp(data, kUserWaypointHeader.data(), headerSize) != 0) return result;
  result.headerOk = true;

  ByteReader reader(data, size);
  reader.Skip(headerSize);
  out.reserve(out.size() + size / kUserWaypointRecordSize + 1);
  std::size_t number = 0;
  while (!reader.AtEnd()) {
    ++number;
    if (!reader.Has(kUserWaypointRecordSize)) {
      result.truncated = true;
      result.truncatedRecord = number;
      result.truncatedBytes = reader.Remaining();
      break;
    }
    if (reader.Peek() == 0) {
      ++result.emptySlots;
      reader.Skip(kUserWaypointRecordSize);
      continue;
    }
    UserWaypointRec& rec = out.emplace_back();
    reader.Text(rec.Ident, 10);
    reader.Text(rec.Name, 40);
    rec.Lat = reader.F32();
    rec.Lon = reader.F32();
    rec.Value = reader.F32();
  }
  return result;
}

Bytes BuildUserWaypointFile(const std::vector<UserWaypointRec>& waypoints) {
  ByteWriter writer;
  writer.bytes.reserve(kUserWaypointHeader.size() + waypoints.size() * kUserWaypointRecordSize);
  writer.Raw(kUserWaypointHeader);
  for (const UserWaypointRec& rec : waypoints) {
    writer.Raw(rec.Ident.View());
    writer.Raw(rec.Name.View());
    writer.F32(rec.Lat);
    writer.F32(rec.Lon);
    writer.F32(rec.Value);
  }
  return std::move(writer.bytes);
}

UserWaypointResult SaveUserWaypoints(const AppFolder& app, const std::vector<UserWaypointRec>& waypoints) {
  UserWaypointResult result;
  fs::path target = app.Resolve(kUserWaypointFile);
  fs::path temp = app.Resolve(kUserWaypointTempFile);
  std::error_code ec;
  fs::create_directories(target.parent_path(), ec);  // a failure shows in the write below

  // The temporary file is complete before it replaces the old one; the
  // replacement is a single rename, so a crash leaves either file whole.
  if (!WriteFileAtomic(temp, BuildUserWaypointFile(waypoints))) {
    result.ok = false;
    result.message = "Cannot write " + temp.string() + ": the user waypoints were not saved.";
    return result;
  }
  fs::rename(temp, target, ec);
  if (ec) {
    fs::remove(temp, ec);
    result.ok = false;
    result.message = "Cannot replace " + target.string() + ": the user waypoints were not saved.";
  }
  return result;
}

UserWaypointResult LoadUserWaypoints(const AppFolder& app, std::vector<UserWaypointRec>& out) {
  out.clear();
  fs::path path = app.Resolve(kUserWaypointFile);
  std::error_code ec;
  bool exists = fs::exists(path, ec);
  std::optional<Bytes> bytes = exists ? ReadWholeFile(path) : std::optional<Bytes>(Bytes());
  if (!bytes) {
    // Present but unreadable: keep it, it may still hold the user's work.
    UserWaypointResult result;
    result.ok = false;
    result.message = "Cannot read " + path.string() + ": no user waypoints were loaded.";
    return result;
  }

  UserWaypointParse parse = ParseUserWaypoints(*bytes, out);
  if (!parse.headerOk) {
    out.clear();
    UserWaypointResult result = SaveUserWaypoints(app, out);
    result.rewritten = result.ok;
    return result;
  }

  UserWaypointResult result;
  if (parse.truncated) {
    result.truncated = true;
    result.message = path.string() + ": record " + std::to_string(parse.truncatedRecord) + " is cut short (" +
                     std::to_string(parse.truncatedBytes) + " of " + std::to_string(kUserWaypointRecordSize) +
                     " bytes) and was ignored.";
  }
  return result;
}

}  // namespace orv
