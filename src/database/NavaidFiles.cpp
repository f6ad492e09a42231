#include "database/NavaidFiles.h"

#include <cmath>
#include <string_view>
#include <utility>

#include "core/Runtime.h"
#include "database/ByteReader.h"
#include "database/LargeArrays.h"

namespace orv {

namespace {

// Array sizing divisors of the loaders. Two differ from the record sizes (20
// for the 30-byte airway segments, 47 for the 48-byte fixes); the arrays are
// reserved from them all the same, which only ever over-reserves.
constexpr std::size_t kAirwaySizingDivisor = 20;
constexpr std::size_t kFixSizingDivisor = 47;
constexpr std::size_t kVorSizingDivisor = 56;
constexpr std::size_t kNdbSizingDivisor = 53;

// Offsets of the texts that decide whether a record is empty.
constexpr std::size_t kIntersectionIdentOffset = 6;
constexpr std::size_t kFixIdentOffset = 2;

std::string Fault(std::string_view file, std::size_t recordNo, std::size_t offset, std::string_view what) {
  std::string message(file);
  message += ": record ";
  message += std::to_string(recordNo);
  message += " at byte ";
  message += std::to_string(offset);
  message += ": ";
  message += what;
  return message;
}

std::string CutShort(std::size_t present, std::size_t recordSize) {
  return "the record is cut short after " + std::to_string(present) + " of its " +
         std::to_string(recordSize) + " bytes";
}

std::string IndexRange() { return "outside 0 to " + std::to_string(kMaxIntersectionIndex); }

bool IsIntersectionIndex(int32_t index) { return index >= 0 && index <= kMaxIntersectionIndex; }

// A position must be a finite place on the globe before it is used to look
// up the variation grid or drawn; anything else is a damaged file.
std::optional<std::string> PositionFault(float lat, float lon) {
  if (!std::isfinite(lat)) return "latitude is not a finite number";
  if (!std::isfinite(lon)) return "longitude is not a finite number";
  if (lat < -90.0f || lat > 90.0f) return "latitude " + NumText(lat) + " is outside -90 to 90";
  if (lon < -180.0f || lon > 180.0f) return "longitude " + NumText(lon) + " is outside -180 to 180";
  return std::nullopt;
}

float VariationAt(const MagVarGrid& grid, float lat, float lon) {
  return static_cast<float>(MagVarAt(grid, lat, lon));
}

// A minimum altitude text of an airway segment: trimmed, every leading "0"
// removed ("05000" shows as "5000"), and "n/a" when nothing is left.
FixedStr<5> AltitudeText(std::string_view raw) {
  std::string_view rest = TrimView(raw);
  while (!rest.empty() && rest.front() == '0') rest.remove_prefix(1);
  if (rest.empty()) return FixedStr<5>("n/a");
  return FixedStr<5>(rest);
}

// The number of airway links dijinter.orv holds, walking the main records the
// way the reader does, so that the link list is sized once.
std::size_t CountAirwayLinks(const uint8_t* data, std::size_t size) {
  std::size_t total = 0;
  std::size_t pos = 0;
  while (size - pos >= kIntersectionRecordSize) {
    if (data[pos + kIntersectionIdentOffset] == 0) break;
    std::size_t links = std::size_t{data[pos + 52]} + data[pos + 53];
    pos += kIntersectionRecordSize;
    if (links * kAirwayLinkRecordSize > size - pos) break;
    total += links;
    pos += links * kAirwayLinkRecordSize;
  }
  return total;
}

void WriteLink(ByteWriter& w, const AirwayLinkRec& link) {
  w.I32(link.Target);
  w.Text(link.AirwayName.View(), 8);
  w.F32(link.Distance);
  w.Text(link.Mea1.View(), 5);
  w.Text(link.Mea2.View(), 5);
}

// Walks a file of fixed-size records to its end: a record cut short is a
// fault, a record whose byte at emptyOffset is NUL is an empty slot passed
// over, and every other record is handed to read(in, recordNo, start), which
// reads exactly one record and returns a fault or nothing.
template <typename ReadRecord>
std::optional<std::string> ForEachRecord(std::string_view file, const uint8_t* data, std::size_t size,
                                         std::size_t recordSize, std::size_t emptyOffset, ReadRecord read) {
  ByteReader in(data, size);
  std::size_t recordNo = 0;
  while (!in.AtEnd()) {
    ++recordNo;
    const std::size_t start = in.Pos();
    if (!in.Has(recordSize)) return Fault(file, recordNo, start, CutShort(in.Remaining(), recordSize));
    if (data[start + emptyOffset] == 0) {
      in.Skip(recordSize);
      continue;
    }
    if (auto fault = read(in, recordNo, start)) return fault;
  }
  return std::nullopt;
}

std::optional<std::string> ParseAirwayFile(std::string_view file, const uint8_t* data, std::size_t size,
                                           std::vector<AirwayRec>& out) {
  out.clear();
  out.reserve(size / kAirwaySizingDivisor + 2);
  return ForEachRecord(file, data, size, kAirwaySegmentRecordSize, 0,
                       [&](ByteReader& in, std::size_t recordNo, std::size_t start) -> std::optional<std::string> {
      AirwayRec rec;
      rec.Name = FixedStr<8>(TrimView(in.Raw(8)));
      rec.FromIndex = in.I32();
      rec.ToIndex = in.I32();
      rec.Value = in.F32();
      rec.Mea1 = AltitudeText(in.Raw(5));
      rec.Mea2 = AltitudeText(in.Raw(5));
      if (!IsIntersectionIndex(rec.FromIndex))
        return Fault(file, recordNo, start, "from index " + std::to_string(rec.FromIndex) + " is " + IndexRange());
      if (!IsIntersectionIndex(rec.ToIndex))
        return Fault(file, recordNo, start, "to index " + std::to_string(rec.ToIndex) + " is " + IndexRange());
      out.push_back(rec);
      return std::nullopt;
      });
}

}  // namespace

// ------------------------------------------------------------------ tables

IntersectionRec EmptyIntersectionSlot() {
  IntersectionRec rec;
  rec.Country.chars.fill('\0');
  rec.Ident.chars.fill('\0');
  rec.Name.chars.fill('\0');
  rec.Flag1.chars.fill('\0');
  rec.Flag2.chars.fill('\0');
  return rec;
}

std::span<const AirwayLinkRec> NavaidTables::LowAirways(int32_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= Intersections.size()) return {};
  const IntersectionRec& rec = Intersections[static_cast<std::size_t>(index)];
  if (std::size_t{rec.LinkFirst} + rec.LowCount > AirwayLinks.size()) return {};
  return {AirwayLinks.data() + rec.LinkFirst, rec.LowCount};
}

std::span<const AirwayLinkRec> NavaidTables::HighAirways(int32_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= Intersections.size()) return {};
  const IntersectionRec& rec = Intersections[static_cast<std::size_t>(index)];
  std::size_t first = std::size_t{rec.LinkFirst} + rec.LowCount;
  if (first + rec.HighCount > AirwayLinks.size()) return {};
  return {AirwayLinks.data() + first, rec.HighCount};
}

std::span<AirwayLinkRec> NavaidTables::LowAirways(int32_t index) {
  auto links = std::as_const(*this).LowAirways(index);
  return {const_cast<AirwayLinkRec*>(links.data()), links.size()};
}

std::span<AirwayLinkRec> NavaidTables::HighAirways(int32_t index) {
  auto links = std::as_const(*this).HighAirways(index);
  return {const_cast<AirwayLinkRec*>(links.data()), links.size()};
}

bool PlaceIntersection(NavaidTables& tables, const IntersectionRec& rec,
                       std::span<const AirwayLinkRec> lowLinks,
                       std::span<const AirwayLinkRec> highLinks) {
  if (!IsIntersectionIndex(rec.Index) || lowLinks.size() > 255 || highLinks.size() > 255) return false;
  if (tables.Intersections.size() != kIntersectionSlots)
    ReserveRecords(tables.Intersections, kIntersectionSlots);
    tables.Intersections.resize(kIntersectionSlots, EmptyIntersectionSlot());
  IntersectionRec placed = rec;
  placed.LowCount = static_cast<uint8_t>(lowLinks.size());
  placed.HighCount = static_cast<uint8_t>(highLinks.size());
  placed.LinkFirst = static_cast<uint32_t>(tables.AirwayLinks.size());
  tables.AirwayLinks.insert(tables.AirwayLinks.end(), lowLinks.begin(), lowLinks.end());
  tables.AirwayLinks.insert(tables.AirwayLinks.end(), highLinks.begin(), highLinks.end());
  tables.Intersections[static_cast<std::size_t>(rec.Index)] = placed;
  if (rec.Index > tables.MaxIntersectionIndex) tables.MaxIntersectionIndex = rec.Index;
  return true;
}

FixedStr<8> VorTypeName(int16_t typeCode) {
  switch (typeCode) {
    case 2: return FixedStr<8>("VORTAC");
    case 3: return FixedStr<8>("TACAN");
    case 4: return FixedStr<8>("VOR-DME");
    case 9: return FixedStr<8>("DME");
    default: return FixedStr<8>("VOR");  // 1 and every unknown code
  }
}

FixedStr<8> NdbTypeName(const FixedStr<3>& typeText) {
  // Three characters can only hold a number equal to 7 if one of them is a 7;
  // the test spares the number parse for the other NDBs.
  bool isDme = typeText.View().find('7') != std::string_view::npos && Val(typeText.View()) == 7.0;
  return FixedStr<8>(isDme ? "NDB-DME" : "NDB");
}

// ------------------------------------------------------------------ dijinter.orv

std::optional<std::string> ParseDijinterFile(const uint8_t* data, std::size_t size,
                                             const MagVarGrid& grid, NavaidTables& out) {
  constexpr std::string_view kFile = "dijinter.orv";
  out.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  out.AirwayLinks.clear();
  out.AirwayLinks.reserve(CountAirwayLinks(data, size));
  out.MaxIntersectionIndex = -1;

  ByteReader in(data, size);
  std::size_t recordNo = 0;
  while (!in.AtEnd()) {
    ++recordNo;
    const std::size_t start = in.Pos();
    if (!in.Has(kIntersectionRecordSize))
      return Fault(kFile, recordNo, start, CutShort(in.Remaining(), kIntersectionRecordSize));
    // The database manager ends the intersections with an empty record.
    if (data[start + kIntersectionIdentOffset] == 0) break;

    IntersectionRec rec;
    rec.Index = in.I32();
    in.Text(rec.Country, 2);
    in.Text(rec.Ident, 5);
    in.Text(rec.Name, 25);
    rec.Value1 = in.F32();
    rec.Lat = in.F32();
    rec.Lon = in.F32();
    in.F32();  // the tool's own variation; the grid's value replaces it
    rec.LowCount = in.U8();
    rec.HighCount = in.U8();
    in.Text(rec.Flag1, 1);
    in.Text(rec.Flag2, 1);

    if (!IsIntersectionIndex(rec.Index))
      return Fault(kFile, recordNo, start, "index " + std::to_string(rec.Index) + " is " + IndexRange());
    if (auto fault = PositionFault(rec.Lat, rec.Lon)) return Fault(kFile, recordNo, start, *fault);
    const std::size_t linkCount = std::size_t{rec.LowCount} + rec.HighCount;
    if (!in.Has(linkCount * kAirwayLinkRecordSize))
      return Fault(kFile, recordNo, start,
                   std::to_string(rec.LowCount) + " low and " + std::to_string(rec.HighCount) +
                       " high airway links run past the end of the file");
    rec.MagVar = VariationAt(grid, rec.Lat, rec.Lon);

    rec.LinkFirst = static_cast<uint32_t>(out.AirwayLinks.size());
    for (std::size_t k = 0; k < linkCount; ++k) {
      AirwayLinkRec& link = out.AirwayLinks.emplace_back();
      link.Target = in.I32();
      in.Text(link.AirwayName, 8);
      link.Distance = in.F32();
      in.Text(link.Mea1, 5);
      in.Text(link.Mea2, 5);
      if (!IsIntersectionIndex(link.Target)) {
        bool low = k < rec.LowCount;
        std::size_t number = low ? k + 1 : k + 1 - rec.LowCount;
        return Fault(kFile, recordNo, start,
                     std::string(low ? "low" : "high") + " airway link " + std::to_string(number) +
                         " points to index " + std::to_string(link.Target) + ", " + IndexRange());
      }
    }

    // Records land in the slot their Index names, whatever the file order.
    out.Intersections[static_cast<std::size_t>(rec.Index)] = rec;
    if (rec.Index > out.MaxIntersectionIndex) out.MaxIntersectionIndex = rec.Index;
  }
  return std::nullopt;
}

std::vector<uint8_t> BuildDijinterFile(const NavaidTables& tables) {
  ByteWriter w;
  std::size_t filled = 0;
  for (const IntersectionRec& rec : tables.Intersections)
    if (!rec.Ident.IsEmptySlot()) ++filled;
  w.bytes.reserve(filled * kIntersectionRecordSize + tables.AirwayLinks.size() * kAirwayLinkRecordSize);

  for (std::size_t i = 0; i < tables.Intersections.size(); ++i) {
    const IntersectionRec& rec = tables.Intersections[i];
    if (rec.Ident.IsEmptySlot()) continue;
    auto low = tables.LowAirways(static_cast<int32_t>(i));
    auto high = tables.HighAirways(static_cast<int32_t>(i));
    w.I32(static_cast<int32_t>(i));
    w.Text(rec.Country.View(), 2);
    w.Text(rec.Ident.View(), 5);
    w.Text(rec.Name.View(), 25);
    w.F32(rec.Value1);
    w.F32(rec.Lat);
    w.F32(rec.Lon);
    w.F32(rec.MagVar);
    w.U8(static_cast<uint8_t>(low.size()));
    w.U8(static_cast<uint8_t>(high.size()));
    w.Text(rec.Flag1.View(), 1);
    w.Text(rec.Flag2.View(), 1);
    for (const AirwayLinkRec& link : low) WriteLink(w, link);
    for (const AirwayLinkRec& link : high) WriteLink(w, link);
  }
  return std::move(w.bytes);
}

// ------------------------------------------------------------------ vicways.orv, jetways.orv

std::optional<std::string> ParseVicwaysFile(const uint8_t* data, std::size_t size, NavaidTables& out) {
  return ParseAirwayFile("vicways.orv", data, size, out.VictorAirways);
}

std::optional<std::string> ParseJetwaysFile(const uint8_t* data, std::size_t size, NavaidTables& out) {
  return ParseAirwayFile("jetways.orv", data, size, out.JetAirways);
}

std::vector<uint8_t> BuildAirwayFile(const std::vector<AirwayRec>& airways) {
  ByteWriter w;
  w.bytes.reserve(airways.size() * kAirwaySegmentRecordSize);
  auto mea = [](const FixedStr<5>& text) { return text.Trimmed() == "n/a" ? std::string_view() : text.View(); };
  for (const AirwayRec& rec : airways) {
    w.Text(rec.Name.View(), 8);
    w.I32(rec.FromIndex);
    w.I32(rec.ToIndex);
    w.F32(rec.Value);
    w.Text(mea(rec.Mea1), 5);
    w.Text(mea(rec.Mea2), 5);
  }
  return std::move(w.bytes);
}

// ------------------------------------------------------------------ fixes.orv

std::optional<std::string> ParseFixesFile(const uint8_t* data, std::size_t size,
                                          const MagVarGrid& grid, NavaidTables& out) {
  constexpr std::string_view kFile = "fixes.orv";
  out.Fixes.clear();
  ReserveRecords(out.Fixes, size / kFixSizingDivisor + 2);
  return ForEachRecord(kFile, data, size, kFixRecordSize, kFixIdentOffset,
                       [&](ByteReader& in, std::size_t recordNo, std::size_t start) -> std::optional<std::string> {
      FixRec rec;
      in.Text(rec.Country, 2);
      in.Text(rec.Ident, 5);
      in.Text(rec.Name, 25);
      rec.Lat = in.F32();
      rec.Lon = in.F32();
      in.F32();  // stored variation, replaced from the grid
      rec.Value = in.F32();
      if (auto fault = PositionFault(rec.Lat, rec.Lon)) return Fault(kFile, recordNo, start, *fault);
      rec.MagVar = VariationAt(grid, rec.Lat, rec.Lon);
      out.Fixes.push_back(rec);
      return std::nullopt;
      });
}

std::vector<uint8_t> BuildFixesFile(const std::vector<FixRec>& fixes) {
  ByteWriter w;
  w.bytes.reserve(fixes.size() * kFixRecordSize);
  for (const FixRec& rec : fixes) {
    w.Text(rec.Country.View(), 2);
    w.Text(rec.Ident.View(), 5);
    w.Text(rec.Name.View(), 25);
    w.F32(rec.Lat);
    w.F32(rec.Lon);
    w.F32(rec.MagVar);
    w.F32(rec.Value);
  }
  return std::move(w.bytes);
}

// ------------------------------------------------------------------ vor.orv

std::optional<std::string> ParseVorFile(const uint8_t* data, std::size_t size,
                                        const MagVarGrid& grid, NavaidTables& out) {
  constexpr std::string_view kFile = "vor.orv";
  out.Vors.clear();
  out.Vors.reserve(size / kVorSizingDivisor + 2);
  return ForEachRecord(kFile, data, size, kVorRecordSize, 0,
                       [&](ByteReader& in, std::size_t recordNo, std::size_t start) -> std::optional<std::string> {
      VorRec rec;
      in.Text(rec.Ident, 10);
      in.Text(rec.Name, 20);
      rec.Lat = in.F32();
      rec.Lon = in.F32();
      rec.Frequency = in.F32();
      in.F32();  // stored variation, replaced from the grid
      rec.Value = in.F32();
      rec.TypeCode = in.I16();
      rec.Value2 = in.I16();
      rec.Value3 = in.I16();
      if (auto fault = PositionFault(rec.Lat, rec.Lon)) return Fault(kFile, recordNo, start, *fault);
      rec.MagVar = VariationAt(grid, rec.Lat, rec.Lon);
      rec.TypeName = VorTypeName(rec.TypeCode);
      out.Vors.push_back(rec);
      return std::nullopt;
      });
}

std::vector<uint8_t> BuildVorFile(const std::vector<VorRec>& vors) {
  ByteWriter w;
  w.bytes.reserve(vors.size() * kVorRecordSize);
  for (const VorRec& rec : vors) {
    w.Text(rec.Ident.View(), 10);
    w.Text(rec.Name.View(), 20);
    w.F32(rec.Lat);
    w.F32(rec.Lon);
    w.F32(rec.Frequency);
    w.F32(rec.MagVar);
    w.F32(rec.Value);
    w.I16(rec.TypeCode);
    w.I16(rec.Value2);
    w.I16(rec.Value3);
  }
  return std::move(w.bytes);
}

// ------------------------------------------------------------------ ndb.orv

std::optional<std::string> ParseNdbFile(const uint8_t* data, std::size_t size,
                                        const MagVarGrid& grid, NavaidTables& out) {
  constexpr std::string_view kFile = "ndb.orv";
  out.Ndbs.clear();
  out.Ndbs.reserve(size / kNdbSizingDivisor + 2);
  return ForEachRecord(kFile, data, size, kNdbRecordSize, 0,
                       [&](ByteReader& in, std::size_t recordNo, std::size_t start) -> std::optional<std::string> {
      NdbRec rec;
      in.Text(rec.Ident, 10);
      in.Text(rec.Name, 20);
      rec.Lat = in.F32();
      rec.Lon = in.F32();
      rec.Frequency = in.F32();
      in.F32();  // stored variation, replaced from the grid
      rec.Value = in.F32();
      in.Text(rec.TypeText, 3);
      if (auto fault = PositionFault(rec.Lat, rec.Lon)) return Fault(kFile, recordNo, start, *fault);
      rec.MagVar = VariationAt(grid, rec.Lat, rec.Lon);
      rec.TypeName = NdbTypeName(rec.TypeText);
      out.Ndbs.push_back(rec);
      return std::nullopt;
      });
}

std::vector<uint8_t> BuildNdbFile(const std::vector<NdbRec>& ndbs) {
  ByteWriter w;
  w.bytes.reserve(ndbs.size() * kNdbRecordSize);
  for (const NdbRec& rec : ndbs) {
    w.Text(rec.Ident.View(), 10);
    w.Text(rec.Name.View(), 20);
    w.F32(rec.Lat);
    w.F32(rec.Lon);
    w.F32(rec.Frequency);
    w.F32(rec.MagVar);
    w.F32(rec.Value);
    w.Text(rec.TypeText.View(), 3);
  }
  return std::move(w.bytes);
}

}  // namespace orv
