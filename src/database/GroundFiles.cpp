#include "database/GroundFiles.h"

#include <cmath>
#include <string_view>

#include "database/ByteReader.h"
#include "database/LargeArrays.h"
#include "database/ShapeFileDetail.h"

namespace orv {
namespace {

using shapefile::CutShortRecord;
using shapefile::Finite;
using shapefile::RecordError;

constexpr std::string_view kTaxiFile = "taxi.orv";
constexpr std::string_view kPolyFile = "poly.orv";
constexpr std::string_view kMarkerFile = "marker.orv";

std::string NotFinite(std::string_view file, std::size_t index, std::size_t recordSize, std::string_view what) {
  return RecordError(file, index + 1, index * recordSize, std::string(what) + " is not a finite number");
}

// Blanks at both ends removed, as the runtime's Trim does (NULs are kept).
// An empty result still points into the field, because FixedStr copies from it.
std::string_view TrimBlanks(std::string_view s) {
  std::size_t b = s.find_first_not_of(' ');
  if (b == std::string_view::npos) return s.substr(s.size());
  return s.substr(b, s.find_last_not_of(' ') - b + 1);
}

}  // namespace

std::optional<std::string> ParseTaxiFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  if (std::string cut = CutShortRecord(kTaxiFile, size, kTaxiRecordSize); !cut.empty()) return cut;
  std::size_t records = size / kTaxiRecordSize;
  std::vector<TaxiRec> segments;
  SizeRecords(segments, records);
  ByteReader reader(data, size);
  for (std::size_t i = 0; i < records; ++i) {
    TaxiRec& t = segments[i];
    t.Lat1 = reader.F32();
    t.Lon1 = reader.F32();
    t.Lat2 = reader.F32();
    t.Lon2 = reader.F32();
    t.Name = TrimBlanks(reader.Raw(8));
    t.Width = reader.I16();
    if (!Finite(t.Lat1, t.Lon1) || !Finite(t.Lat2, t.Lon2))
      return NotFinite(kTaxiFile, i, kTaxiRecordSize, "an end position");
  }
  out.TaxiSegments = std::move(segments);
  return std::nullopt;
}

std::vector<uint8_t> BuildTaxiFile(const AirspaceTables& tables) {
  ByteWriter w;
  w.bytes.reserve(tables.TaxiSegments.size() * kTaxiRecordSize);
  for (const TaxiRec& t : tables.TaxiSegments) {
    w.F32(t.Lat1);
    w.F32(t.Lon1);
    w.F32(t.Lat2);
    w.F32(t.Lon2);
    w.Raw(t.Name.View());
    w.I16(t.Width);
  }
  return std::move(w.bytes);
}

std::optional<std::string> ParseGroundPolyFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  if (std::string cut = CutShortRecord(kPolyFile, size, kGroundPolyRecordSize); !cut.empty()) return cut;
  std::size_t records = size / kGroundPolyRecordSize;
  std::vector<GroundPolyRec> polys;
  ReserveRecords(polys, records);
  ByteReader reader(data, size);
  for (std::size_t i = 0; i < records; ++i) {
    if (data[i * kGroundPolyRecordSize] == 0) {  // the Kind marks an empty record
      reader.Skip(kGroundPolyRecordSize);
      continue;
    }
    GroundPolyRec& g = polys.emplace_back();
    reader.Text(g.Kind, 1);
    g.Lat = reader.F32();
    g.Lon = reader.F32();
    g.Value = reader.F32();
    g.Value2 = reader.I16();
    reader.Text(g.Flag, 1);
    if (!Finite(g.Lat, g.Lon)) return NotFinite(kPolyFile, i, kGroundPolyRecordSize, "the position");
  }
  out.GroundPolygons = std::move(polys);
  return std::nullopt;
}

std::vector<uint8_t> BuildGroundPolyFile(const AirspaceTables& tables) {
  ByteWriter w;
  w.bytes.reserve(tables.GroundPolygons.size() * kGroundPolyRecordSize);
  for (const GroundPolyRec& g : tables.GroundPolygons) {
    w.Raw(g.Kind.View());
    w.F32(g.Lat);
    w.F32(g.Lon);
    w.F32(g.Value);
    w.I16(g.Value2);
    w.Raw(g.Flag.View());
  }
  return std::move(w.bytes);
}

std::optional<std::string> ParseMarkerFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  if (std::string cut = CutShortRecord(kMarkerFile, size, kMarkerRecordSize); !cut.empty()) return cut;
  std::size_t records = size / kMarkerRecordSize;
  std::vector<MarkerRec> markers;
  markers.reserve(records);
  ByteReader reader(data, size);
  for (std::size_t i = 0; i < records; ++i) {
    if (data[i * kMarkerRecordSize] == 0) {  // the Kind's first character marks an empty record
      reader.Skip(kMarkerRecordSize);
      continue;
    }
    MarkerRec& m = markers.emplace_back();
    reader.Text(m.Kind, 2);
    m.Lat = reader.F32();
    m.Lon = reader.F32();
    m.Heading = reader.F32();
    if (!Finite(m.Lat, m.Lon)) return NotFinite(kMarkerFile, i, kMarkerRecordSize, "the position");
    // The heading turns the drawn beacon; a NaN there would spoil its shape.
    if (!std::isfinite(m.Heading)) return NotFinite(kMarkerFile, i, kMarkerRecordSize, "the heading");
  }
  out.Markers = std::move(markers);
  return std::nullopt;
}

std::vector<uint8_t> BuildMarkerFile(const AirspaceTables& tables) {
  ByteWriter w;
  w.bytes.reserve(tables.Markers.size() * kMarkerRecordSize);
  for (const MarkerRec& m : tables.Markers) {
    w.Raw(m.Kind.View());
    w.F32(m.Lat);
    w.F32(m.Lon);
    w.F32(m.Heading);
  }
  return std::move(w.bytes);
}

}  // namespace orv
