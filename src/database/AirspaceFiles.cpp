#include "database/AirspaceFiles.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "database/ByteReader.h"
#include "database/LargeArrays.h"
#include "database/ShapeFileDetail.h"

namespace orv {
namespace {

using shapefile::Finite;
using shapefile::RecordError;

constexpr std::string_view kAirspaceFile = "airspace.orv";
constexpr std::string_view kMsaFile = "msa.orv";
constexpr std::size_t kMaxAirspaces = kLastAirspaceIndex + 1;

template <typename T>
T Load(const uint8_t* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

// The altitude texts come as "05000" or "00FL195": the trimmed text without
// its leading "0" characters, as StripLeading("0", text) gives it. A view into
// the field, so nothing is allocated; an empty result still points into the
// field, because FixedStr copies from it.
std::string_view StripLeadingZeros(std::string_view field) {
  std::size_t b = field.find_first_not_of(' ');
  if (b == std::string_view::npos) return field.substr(field.size());
  std::size_t e = field.find_last_not_of(' ');
  field = field.substr(b, e - b + 1);
  std::size_t z = field.find_first_not_of('0');
  return field.substr(z == std::string_view::npos ? field.size() : z);
}

}  // namespace

std::optional<std::string> ParseAirspaceFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  // First walk the heads only: every count and index is checked against the
  // buffer and the array before anything is stored, and the walk gives the
  // exact sizes of both arrays, so that each is allocated once.
  std::size_t pos = 0;
  std::size_t record = 0;
  std::size_t stored = 0;
  std::size_t totalPoints = 0;
  while (pos < size) {
    ++record;
    std::size_t rest = size - pos;
    if (rest < kAirspaceHeadSize)
      return RecordError(kAirspaceFile, record, pos,
                         "the record is cut short: " + std::to_string(rest) + " of 132 bytes remain");
    const uint8_t* head = data + pos;
    auto index = Load<int16_t>(head);
    auto count = Load<int16_t>(head + 130);
    if (index < 0 || index > kLastAirspaceIndex)
      return RecordError(kAirspaceFile, record, pos,
                         "index " + std::to_string(index) + " is outside the airspace indexes 0 to 15000");
    if (count < 0)
      return RecordError(kAirspaceFile, record, pos, "point count " + std::to_string(count) + " is negative");
    std::size_t pointBytes = static_cast<std::size_t>(count) * sizeof(ShapePoint);
    if (pointBytes > rest - kAirspaceHeadSize)
      return RecordError(kAirspaceFile, record, pos,
                         "point count " + std::to_string(count) + " runs past the end of the file");
    if (head[9] != 0) {
      if (stored == kMaxAirspaces)
        return RecordError(kAirspaceFile, record, pos,
                           "more than 15001 airspaces; the array holds indexes 0 to 15000");
      ++stored;
      totalPoints += static_cast<std::size_t>(count);
    }
    pos += kAirspaceHeadSize + pointBytes;
  }

  std::vector<AirspaceRec> airspaces;
  std::vector<ShapePoint> points;
  airspaces.reserve(stored);
  SizeRecords(points, totalPoints);

  ByteReader reader(data, size);
  std::size_t nextPoint = 0;
  record = 0;
  while (!reader.AtEnd()) {
    ++record;
    std::size_t start = reader.Pos();
    if (data[start + 9] == 0) {  // an empty record: pass over it and its points
      auto count = static_cast<std::size_t>(Load<int16_t>(data + start + 130));
      reader.Skip(kAirspaceHeadSize + count * sizeof(ShapePoint));
      continue;
    }
    AirspaceRec& a = airspaces.emplace_back();
    a.Index = reader.I16();
    reader.Text(a.Class, 7);
    reader.Text(a.Ident, 4);
    reader.Text(a.Name, 38);
    reader.Text(a.Name2, 38);
    reader.Text(a.Text1, 6);
    reader.Text(a.Text2, 6);
    reader.Text(a.Flag1, 1);
    reader.Text(a.Flag2, 1);
    a.UpperAltitude = StripLeadingZeros(reader.Raw(10));
    a.LowerAltitude = StripLeadingZeros(reader.Raw(9));
    a.Value1 = reader.F32();
    a.Value2 = reader.F32();
    a.PointCount = reader.I16();
    a.First = static_cast<uint32_t>(nextPoint);

    auto count = static_cast<std::size_t>(a.PointCount);
    ShapePoint* dst = points.data() + nextPoint;
    if (count > 0) std::memcpy(dst, data + reader.Pos(), count * sizeof(ShapePoint));
    reader.Skip(count * sizeof(ShapePoint));
    nextPoint += count;
    for (std::size_t i = 0; i < count; ++i) {
      const ShapePoint& p = dst[i];
      if (!Finite(p.Lat, p.Lon))
        return RecordError(kAirspaceFile, record, start,
                           "point " + std::to_string(i + 1) + " is not a finite latitude and longitude");
      if (i == 0) {
        a.North = a.South = p.Lat;
        a.East = a.West = p.Lon;
      } else {
        a.North = std::max(a.North, p.Lat);
        a.South = std::min(a.South, p.Lat);
        a.East = std::max(a.East, p.Lon);
        a.West = std::min(a.West, p.Lon);
      }
    }
  }

  out.Airspaces = std::move(airspaces);
  out.AirspacePoints = std::move(points);
  return std::nullopt;
}

void AddAirspace(AirspaceTables& tables, AirspaceRec rec, std::span<const ShapePoint> points) {
  rec.First = static_cast<uint32_t>(tables.AirspacePoints.size());
  rec.PointCount = static_cast<int16_t>(std::min<std::size_t>(points.size(), INT16_MAX));
  rec.North = rec.South = rec.East = rec.West = 0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(rec.PointCount); ++i) {
    const ShapePoint& p = points[i];
    if (i == 0) {
      rec.North = rec.South = p.Lat;
      rec.East = rec.West = p.Lon;
    } else {
      rec.North = std::max(rec.North, p.Lat);
      rec.South = std::min(rec.South, p.Lat);
      rec.East = std::max(rec.East, p.Lon);
      rec.West = std::min(rec.West, p.Lon);
    }
    tables.AirspacePoints.push_back(p);
  }
  tables.Airspaces.push_back(rec);
}

std::vector<uint8_t> BuildAirspaceFile(const AirspaceTables& tables) {
  std::size_t total = 0;
  for (const AirspaceRec& a : tables.Airspaces)
    total += kAirspaceHeadSize + tables.PointsOf(a).size() * sizeof(ShapePoint);
  ByteWriter w;
  w.bytes.reserve(total);
  for (const AirspaceRec& a : tables.Airspaces) {
    std::span<const ShapePoint> pts = tables.PointsOf(a);
    w.I16(a.Index);
    w.Raw(a.Class.View());
    w.Raw(a.Ident.View());
    w.Raw(a.Name.View());
    w.Raw(a.Name2.View());
    w.Raw(a.Text1.View());
    w.Raw(a.Text2.View());
    w.Raw(a.Flag1.View());
    w.Raw(a.Flag2.View());
    w.Raw(a.UpperAltitude.View());
    w.Raw(a.LowerAltitude.View());
    w.F32(a.Value1);
    w.F32(a.Value2);
    w.I16(static_cast<int16_t>(pts.size()));
    for (const ShapePoint& p : pts) {
      w.F32(p.Lat);
      w.F32(p.Lon);
    }
  }
  return std::move(w.bytes);
}

std::optional<std::string> ParseMsaFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  if (std::string cut = shapefile::CutShortRecord(kMsaFile, size, kMsaRecordSize); !cut.empty()) return cut;
  std::size_t records = size / kMsaRecordSize;
  std::vector<MsaRec> cells;
  cells.reserve(records);
  ByteReader reader(data, size);
  for (std::size_t i = 0; i < records; ++i) {
    const uint8_t* rec = data + i * kMsaRecordSize;
    if (rec[43] == 0) {  // the Label's first character marks an empty record
      reader.Skip(kMsaRecordSize);
      continue;
    }
    MsaRec& m = cells.emplace_back();
    reader.Text(m.Ident, 6);
    reader.Text(m.Text, 5);
    for (uint32_t& v : m.Values) v = reader.U32();
    reader.Text(m.Label, 7);
  }
  out.MsaCells = std::move(cells);
  return std::nullopt;
}

std::vector<uint8_t> BuildMsaFile(const AirspaceTables& tables) {
  ByteWriter w;
  w.bytes.reserve(tables.MsaCells.size() * kMsaRecordSize);
  for (const MsaRec& m : tables.MsaCells) {
    w.Raw(m.Ident.View());
    w.Raw(m.Text.View());
    for (uint32_t v : m.Values) w.U32(v);
    w.Raw(m.Label.View());
  }
  return std::move(w.bytes);
}

}  // namespace orv
