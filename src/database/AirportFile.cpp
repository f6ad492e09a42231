// airport.orv: Count, then for each airport a 224-byte header followed by its
// runways, frequencies, parking positions and ILS records. Also the runway
// texts and headings the airport windows show, and the pass that ties each
// ILS to its runway end.
#include "database/AirportFile.h"

#include <cmath>
#include <string>

#include "core/Runtime.h"
#include "database/ByteReader.h"
#include "database/LargeArrays.h"
#include "database/MagVar.h"

namespace orv {

namespace {

constexpr const char* kAirportFileName = "airport.orv";

std::string Problem(std::size_t record, std::size_t offset, const std::string& what) {
  return std::string(kAirportFileName) + ": record " + std::to_string(record) + " at byte " +
         std::to_string(offset) + ": " + what;
}

// The name of a list item in a message, such as "runway 2 " (counted from 1);
// no kind for the airport itself.
std::string Item(const char* kind, std::size_t i) {
  if (kind == nullptr) return {};
  return std::string(kind) + " " + std::to_string(i + 1) + " ";
}

// A position is stored only when both values are finite degrees on the globe;
// anything else is a damaged record (and would make the variation lookup
// meaningless). The message is built only on failure: this runs for every
// runway and parking position.
std::optional<std::string> CheckPosition(const char* kind, std::size_t i, float lat, float lon) {
  const bool latOk = lat >= -90.0f && lat <= 90.0f;  // false for NaN as well
  const bool lonOk = lon >= -180.0f && lon <= 180.0f;
  if (latOk && lonOk) return std::nullopt;
  if (!std::isfinite(lat)) return Item(kind, i) + "latitude is not a finite number";
  if (!std::isfinite(lon)) return Item(kind, i) + "longitude is not a finite number";
  if (!latOk) return Item(kind, i) + "latitude " + NumText(lat) + " is outside -90..90";
  return Item(kind, i) + "longitude " + NumText(lon) + " is outside -180..180";
}

struct ListCounts {
  int32_t runways, frequencies, ils, parking;
};

// Checks the four counts of a header in file order (runways, frequencies,
// parking, ILS) against the bytes after the header; gives the bytes they take.
std::optional<std::string> CheckListCounts(const ListCounts& c, std::size_t bytesLeft, std::size_t& listBytes) {
  struct List {
    const char* name;
    int32_t count;
    std::size_t size;
  };
  const List lists[4] = {{"runway", c.runways, kRunwayRecordSize},
                         {"frequency", c.frequencies, kFrequencyRecordSize},
                         {"parking", c.parking, kParkingRecordSize},
                         {"ILS", c.ils, kIlsRecordSize}};
  listBytes = 0;
  for (const List& list : lists) {
    if (list.count < 0) return std::string(list.name) + " count " + std::to_string(list.count) + " is negative";
    const uint64_t need = static_cast<uint64_t>(list.count) * list.size;
    if (need > bytesLeft - listBytes)
      return std::string(list.name) + " count " + std::to_string(list.count) + " runs past the end of the file";
    listBytes += static_cast<std::size_t>(need);
  }
  return std::nullopt;
}

void ReadRunway(ByteReader& r, RunwayRec& rw) {
  r.Skip(5);
  r.Text(rw.LowEnd, 5);
  r.Text(rw.HighEnd, 5);
  rw.Lat = r.F32();
  rw.Lon = r.F32();
  rw.TrueHeading = r.F32();
  rw.Value = r.F32();
  rw.LengthFeet = r.I16();
  rw.WidthFeet = r.I16();
  rw.Surface = r.U8();
  r.Skip(1);
  r.Text(rw.LowIls, 5);
  r.Text(rw.HighIls, 5);
  r.Text(rw.Flag, 1);
  rw.LowIlsIndex = -1;
  rw.HighIlsIndex = -1;
}

void ReadFrequency(ByteReader& r, FrequencyRec& f) {
  r.Text(f.Ident, 5);
  r.Text(f.Name, 40);
  f.Word1 = r.F32();
  f.Word2 = r.F32();
  f.Frequency = r.F32();
  f.Kind = r.U8();
}

void ReadParking(ByteReader& r, ParkingRec& p) {
  r.Text(p.Ident, 5);
  p.Lat = r.F32();
  p.Lon = r.F32();
  p.Number = r.I32();
  p.Kind = r.I32();
  p.NameCode = r.I32();
  p.Value = r.I32();
}

void ReadIls(ByteReader& r, IlsRec& ils) {
  ils.LoadFlag = -1;
  ils.Airport = r.I32();
  r.Text(ils.Ident, 5);
  r.Text(ils.Name, 40);
  r.Text(ils.Runway, 5);
  for (float& v : ils.Values) v = r.F32();
  r.Skip(15);
  r.Text(ils.Ident2, 5);
  r.Text(ils.Flag, 1);
  ils.RunwayIndex = -1;
  ils.End = RunwayEnd::None;
}

// Reads the lists of one airport into it, checking what later code indexes
// with. The counts have been checked against the bytes left.
std::optional<std::string> ReadLists(ByteReader& r, const ListCounts& c, AirportRec& a) {
  a.Runways.clear();
  a.Runways.resize(static_cast<std::size_t>(c.runways));
  for (std::size_t i = 0; i < a.Runways.size(); ++i) {
    RunwayRec& rw = a.Runways[i];
    ReadRunway(r, rw);
    if (auto bad = CheckPosition("runway", i, rw.Lat, rw.Lon)) return bad;
  }
  a.Frequencies.clear();
  a.Frequencies.resize(static_cast<std::size_t>(c.frequencies));
  for (std::size_t i = 0; i < a.Frequencies.size(); ++i) {
    FrequencyRec& f = a.Frequencies[i];
    ReadFrequency(r, f);
    if (f.Kind < 1 || f.Kind > 12)
      return Item("frequency", i) + "kind " + std::to_string(f.Kind) + " is outside 1..12";
  }
  // Parking positions come before the ILS records, although the header
  // holds the ILS count first.
  a.Parking.clear();
  a.Parking.resize(static_cast<std::size_t>(c.parking));
  for (std::size_t i = 0; i < a.Parking.size(); ++i) {
    ParkingRec& p = a.Parking[i];
    ReadParking(r, p);
    if (auto bad = CheckPosition("parking", i, p.Lat, p.Lon)) return bad;
    if (p.Kind < 1 || p.Kind > 13) return Item("parking", i) + "kind " + std::to_string(p.Kind) + " is outside 1..13";
    if (p.NameCode < 0 || p.NameCode > 37)
      return Item("parking", i) + "name code " + std::to_string(p.NameCode) + " is outside 0..37";
  }
  a.Ils.clear();
  a.Ils.resize(static_cast<std::size_t>(c.ils));
  for (IlsRec& ils : a.Ils) ReadIls(r, ils);
  return std::nullopt;
}

}  // namespace

std::optional<std::string> ParseAirportFile(const uint8_t* data, std::size_t size, const MagVarGrid& grid,
                                            AirportTables& out) {
  ByteReader r(data, size);
  if (!r.Has(4)) return Problem(0, 0, "the file is too short to hold its count");
  const int32_t count = r.I32();
  if (count < 0) return Problem(0, 0, "count " + std::to_string(count) + " is negative");
  // Every airport takes at least its header, so a larger Count cannot be true
  // (and would size the array from a hostile number).
  if (static_cast<std::size_t>(count) > (size - 4) / kAirportHeaderSize)
    return Problem(0, 0, "count " + std::to_string(count) + " runs past the end of the file");

  const int64_t lastSlot = static_cast<int64_t>(count) + kAirportSlack;
  std::vector<AirportRec> airports;
  SizeRecords(airports, static_cast<std::size_t>(lastSlot) + 1);
  int32_t deleted = 0;
  int64_t lastStored = -1;
  std::size_t record = 0;

  FixedStr<5> icao;
  FixedStr<40> text;
  while (!r.AtEnd()) {
    ++record;
    const std::size_t at = r.Pos();
    if (!r.Has(kAirportHeaderSize))
      return Problem(record, at,
                     "the header is cut short (" + std::to_string(r.Remaining()) + " of " +
                         std::to_string(kAirportHeaderSize) + " bytes)");
    int32_t index = r.I32();
    const uint8_t* texts = data + r.Pos();  // Icao, Name, City, State, Country
    r.Skip(5 + 4 * 40);
    const float lat = r.F32();
    const float lon = r.F32();
    r.Skip(8);  // two words the program does not use
    const int32_t elevation = r.I32();
    const int32_t word2 = r.I32();
    r.Skip(15);  // region text, not used
    ListCounts counts;
    counts.runways = r.I32();
    counts.frequencies = r.I32();
    counts.ils = r.I32();
    counts.parking = r.I32();

    std::size_t listBytes = 0;
    if (auto bad = CheckListCounts(counts, r.Remaining(), listBytes)) return Problem(record, at, *bad);

    // A blank header written after real airports is a deleted slot; it must
    // not overwrite the airport in slot 0.
    if (index == 0 && lat == 0.0f && lon == 0.0f && index < lastStored) {
      index = -1;
      ++deleted;
    }
    if (index < 0) {
      r.Skip(listBytes);
      continue;
    }
    if (index > lastSlot)
      return Problem(record, at,
                     "index " + std::to_string(index) + " is beyond the last slot " + std::to_string(lastSlot));
    if (auto bad = CheckPosition(nullptr, 0, lat, lon)) return Problem(record, at, *bad);

    AirportRec& a = airports[static_cast<std::size_t>(index)];
    const char* t = reinterpret_cast<const char*>(texts);
    icao.AssignRaw(t, 5);
    a.Icao.Assign(icao.Trimmed());
    text.AssignRaw(t + 5, 40);
    a.Name.Assign(text.Trimmed());
    text.AssignRaw(t + 45, 40);
    a.City.assign(text.Trimmed());
    text.AssignRaw(t + 85, 40);
    a.State.assign(text.Trimmed());
    text.AssignRaw(t + 125, 40);
    a.Country.assign(text.Trimmed());
    a.Lat = lat;
    a.Lon = lon;
    a.Elevation = elevation;
    a.Word2 = word2;
    a.MagVar = CSng(MagVarAt(grid, lat, lon));
    if (auto bad = ReadLists(r, counts, a)) return Problem(record, at, *bad);
    if (!r.Ok()) return Problem(record, at, "the lists run past the end of the file");  // a guard: the counts were checked above
    lastStored = index;
  }

  out.Airports = std::move(airports);
  out.AirportFileCount = count;
  out.DeletedSlots = deleted;
  return std::nullopt;
}

// ------------------------------------------------------------------ writer

namespace {

void WriteRunway(ByteWriter& w, const RunwayRec& rw) {
  w.Text("", 5);
  w.Raw(rw.LowEnd.View());
  w.Raw(rw.HighEnd.View());
  w.F32(rw.Lat);
  w.F32(rw.Lon);
  w.F32(rw.TrueHeading);
  w.F32(rw.Value);
  w.I16(rw.LengthFeet);
  w.I16(rw.WidthFeet);
  w.U8(rw.Surface);
  w.U8(0);
  w.Raw(rw.LowIls.View());
  w.Raw(rw.HighIls.View());
  w.Raw(rw.Flag.View());
}

void WriteFrequency(ByteWriter& w, const FrequencyRec& f) {
  w.Raw(f.Ident.View());
  w.Text(f.Name.View(), 40);
  w.F32(f.Word1);
  w.F32(f.Word2);
  w.F32(f.Frequency);
  w.U8(f.Kind);
}

void WriteParking(ByteWriter& w, const ParkingRec& p) {
  w.Text(p.Ident.View(), 5);
  w.F32(p.Lat);
  w.F32(p.Lon);
  w.I32(p.Number);
  w.I32(p.Kind);
  w.I32(p.NameCode);
  w.I32(p.Value);
}

void WriteIls(ByteWriter& w, const IlsRec& ils) {
  w.I32(ils.Airport);
  w.Raw(ils.Ident.View());
  w.Raw(ils.Name.View());
  w.Raw(ils.Runway.View());
  for (float v : ils.Values) w.F32(v);
  w.Text("", 15);
  w.Raw(ils.Ident2.View());
  w.Raw(ils.Flag.View());
}

}  // namespace

std::vector<uint8_t> BuildAirportFile(const std::vector<AirportRec>& airports) {
  std::size_t slots = 0;
  std::size_t bytes = 4;
  for (std::size_t i = 0; i < airports.size(); ++i) {
    const AirportRec& a = airports[i];
    bytes += kAirportHeaderSize;
    if (!IsAirportSlotUsed(a)) continue;
    slots = i + 1;
    bytes += a.Runways.size() * kRunwayRecordSize + a.Frequencies.size() * kFrequencyRecordSize +
             a.Parking.size() * kParkingRecordSize + a.Ils.size() * kIlsRecordSize;
  }
  ByteWriter w;
  w.bytes.reserve(bytes);
  w.I32(static_cast<int32_t>(slots));
  for (std::size_t i = 0; i < slots; ++i) {
    const AirportRec& a = airports[i];
    if (!IsAirportSlotUsed(a)) {
      w.I32(-1);
      w.Zeros(kAirportHeaderSize - 4);
      continue;
    }
    w.I32(static_cast<int32_t>(i));
    w.Text(a.Icao.Trimmed(), 5);
    w.Text(a.Name.Trimmed(), 40);
    w.Text(a.City, 40);
    w.Text(a.State, 40);
    w.Text(a.Country, 40);
    w.F32(a.Lat);
    w.F32(a.Lon);
    w.Zeros(8);
    w.I32(a.Elevation);
    w.I32(a.Word2);
    w.Text("", 15);
    w.I32(a.RunwayCount());
    w.I32(a.FrequencyCount());
    w.I32(a.IlsCount());
    w.I32(a.ParkingCount());
    for (const RunwayRec& rw : a.Runways) WriteRunway(w, rw);
    for (const FrequencyRec& f : a.Frequencies) WriteFrequency(w, f);
    for (const ParkingRec& p : a.Parking) WriteParking(w, p);
    for (const IlsRec& ils : a.Ils) WriteIls(w, ils);
  }
  return std::move(w.bytes);
}

// ------------------------------------------------------------------ runways

std::string RunwayDesignator(std::string_view designator) {
  static constexpr const char* kCompass[8] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
  designator = designator.substr(0, designator.find('\0'));  // a NUL ends a field's text
  // Two characters read as a number above 36 can only be the whole numbers 37..99.
  const double number = Val(Left(designator, 2));
  if (number >= 37 && number <= 44)
    return Trim(std::string(kCompass[static_cast<int>(number) - 37]) + Mid(designator, 3));
  return Trim(designator);
}

std::string RunwayListName(std::string_view designator) {
  std::string shown = RunwayDesignator(designator);
  if (InStr(shown, "00H") > 0) return "Heli  " + shown;
  return "Rwy " + shown;
}

float LowEndHeading(const RunwayRec& runway, float airportMagVar) { return runway.TrueHeading - airportMagVar; }

float HighEndHeading(const RunwayRec& runway) { return runway.TrueHeading + 180.0f; }

// ------------------------------------------------------------------ ILS links

void LinkIlsToRunways(AirportRec& airport) {
  for (RunwayRec& rw : airport.Runways) {
    rw.LowIlsIndex = -1;
    rw.HighIlsIndex = -1;
  }
  for (std::size_t i = 0; i < airport.Ils.size(); ++i) {
    IlsRec& ils = airport.Ils[i];
    ils.RunwayIndex = -1;
    ils.End = RunwayEnd::None;
    const std::string_view ident = ils.Ident.Trimmed();
    if (ident.empty()) continue;
    for (std::size_t j = 0; j < airport.Runways.size(); ++j) {
      RunwayRec& rw = airport.Runways[j];
      if (UCase(rw.LowIls.Trimmed()) == ident) {
        ils.RunwayIndex = static_cast<int32_t>(j);
        ils.End = RunwayEnd::Low;
        rw.LowIlsIndex = static_cast<int32_t>(i);
      }
      if (UCase(rw.HighIls.Trimmed()) == ident) {
        ils.RunwayIndex = static_cast<int32_t>(j);
        ils.End = RunwayEnd::High;
        rw.HighIlsIndex = static_cast<int32_t>(i);
      }
    }
  }
}

void LinkIlsToRunways(AirportTables& tables) {
  // Runways of an airport without ILS keep the -1 the loader gave them;
  // passing them over saves a visit to every runway list of the world.
  for (AirportRec& airport : tables.Airports)
    if (!airport.Ils.empty()) LinkIlsToRunways(airport);
}

int32_t FindAirportByIcao(const AirportTables& tables, std::string_view icao) {
  const std::string_view code = TrimView(icao);
  if (code.empty()) return -1;
  const auto& airports = tables.Airports;
  for (std::size_t i = 0; i < airports.size(); ++i)
    if (SameTextNoCase(airports[i].Icao.Trimmed(), code)) return static_cast<int32_t>(i);
  return -1;
}

const IlsRec* IlsForRunwayEnd(const AirportRec& airport, int32_t runway, RunwayEnd end) {
  if (runway < 0 || static_cast<std::size_t>(runway) >= airport.Runways.size()) return nullptr;
  const RunwayRec& rw = airport.Runways[static_cast<std::size_t>(runway)];
  const int32_t ils = end == RunwayEnd::Low ? rw.LowIlsIndex : end == RunwayEnd::High ? rw.HighIlsIndex : -1;
  if (ils < 0 || static_cast<std::size_t>(ils) >= airport.Ils.size()) return nullptr;
  return &airport.Ils[static_cast<std::size_t>(ils)];
}

}  // namespace orv
