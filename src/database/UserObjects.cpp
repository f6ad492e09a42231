#include "database/UserObjects.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/FileIo.h"
#include "core/Runtime.h"

namespace orv {
namespace {

// The shortest text that reads back to the same 32-bit float. The runtime's
// 7-digit form (NumText) would move a point such as 12125125 to 12125120.
std::string FloatText(float v) {
  char buf[32];
  auto res = std::to_chars(buf, buf + sizeof buf, v);
  return std::string(buf, res.ptr);
}

int32_t ColorPart(int16_t v) { return std::clamp<int32_t>(v, 0, 255); }

// The text after the first "," split at each further ",", as the head's
// style, red, green and blue; missing fields are 0.
void ReadHead(std::string_view line, UserObjectRec& obj) {
  int16_t fields[4] = {0, 0, 0, 0};
  std::size_t comma = line.find(',');
  if (comma != std::string_view::npos) {
    std::string_view rest = line.substr(comma + 1);
    for (int16_t& f : fields) {
      std::size_t next = rest.find(',');
      f = CInt(Val(rest.substr(0, next)));
      if (next == std::string_view::npos) break;
      rest = rest.substr(next + 1);
    }
  }
  obj.Style = fields[0];
  obj.Red = fields[1];
  obj.Green = fields[2];
  obj.Blue = fields[3];
  obj.Color = ColorPart(obj.Blue) * 65536 + ColorPart(obj.Green) * 256 + ColorPart(obj.Red);
}

uint8_t HeadKind(std::string_view line) {
  if (line.starts_with("FP")) return kUserObjectFilledPolygon;
  if (line.starts_with("UP")) return kUserObjectPolygon;
  if (line.starts_with("L")) return kUserObjectLine;
  return 0;
}

}  // namespace

void ParseUserObjectFile(std::string_view text, AirspaceTables& out) {
  std::vector<UserObjectRec> objects;
  std::vector<ShapePoint> points;
  bool open = false;  // an object is open between its head line and an empty line
  for (const std::string& raw : SplitLines(text)) {
    std::string line = Trim(raw);
    if (line.empty()) {
      open = false;
      continue;
    }
    if (line[0] == '#') continue;
    if (uint8_t kind = HeadKind(line); kind != 0) {
      UserObjectRec& obj = objects.emplace_back();
      obj.Kind = kind;
      obj.First = static_cast<uint32_t>(points.size());
      ReadHead(line, obj);
      open = true;
      continue;
    }
    // A point: latitude, then longitude after the first ",". Points outside
    // an object, and lines without a ",", are not taken.
    std::size_t comma = line.find(',');
    if (!open || comma == std::string::npos) continue;
    float lat = CSng(Val(std::string_view(line).substr(0, comma)));
    float lon = CSng(Val(std::string_view(line).substr(comma + 1)));
    // Only the lower limits are tested, so a latitude of 91 is still taken. A
    // number too large for a 32-bit float (1E39) is not a position either.
    if (lat >= -90 && lon >= -180 && std::isfinite(lat) && std::isfinite(lon)) {
      points.push_back({lat, lon});
      ++objects.back().PointCount;
    }
  }
  out.UserObjects = std::move(objects);
  out.UserObjectPoints = std::move(points);
}

std::string BuildUserObjectFile(const AirspaceTables& tables) {
  std::string text;
  for (const UserObjectRec& obj : tables.UserObjects) {
    text += obj.Kind == kUserObjectFilledPolygon ? "FP" : obj.Kind == kUserObjectPolygon ? "UP" : "L";
    for (int16_t v : {obj.Style, obj.Red, obj.Green, obj.Blue}) {
      text += ',';
      text += NumText(static_cast<double>(v));
    }
    text += "\r\n";
    for (const ShapePoint& p : tables.PointsOf(obj)) {
      text += FloatText(p.Lat);
      text += ',';
      text += FloatText(p.Lon);
      text += "\r\n";
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace orv
