// region.orv, country.orv, state.orv and city.orv: a 32-bit Count, then fixed
// text records to the end of the file. The names are the cascade of the airport
// selection window, each entry carrying its parents by name.
#include <string>

#include "database/AirportFile.h"
#include "database/ByteReader.h"

namespace orv {

namespace {

std::string Problem(const char* file, std::size_t record, std::size_t offset, const std::string& what) {
  return std::string(file) + ": record " + std::to_string(record) + " at byte " + std::to_string(offset) + ": " +
         what;
}

// A text field of the record: cut at a NUL, blanks at both ends removed.
template <std::size_t Width>
std::string FieldAt(const uint8_t* record, std::size_t offset) {
  FixedStr<Width> field;
  field.AssignRaw(reinterpret_cast<const char*>(record + offset), Width);
  return field.Str();
}

// The shared loop of the four files. The array is sized once to Count + slack
// + 1 slots; stored records fill it from 0, a record starting with NUL takes no
// slot. fill(entry, recordBytes) decodes one record.
template <typename Entry, typename Fill>
std::optional<std::string> ParseNameFile(const char* file, const uint8_t* data, std::size_t size,
                                         std::size_t recordSize, int32_t slack, std::vector<Entry>& array,
                                         int32_t& stored, Fill fill) {
  ByteReader reader(data, size);
  if (!reader.Has(4)) return Problem(file, 0, 0, "the file is too short to hold its count");
  const int32_t count = reader.I32();
  if (count < 0) return Problem(file, 0, 0, "count " + std::to_string(count) + " is negative");
  const std::size_t recordsInFile = (size - 4) / recordSize;
  if (static_cast<std::size_t>(count) > recordsInFile)
    return Problem(file, 0, 0, "count " + std::to_string(count) + " runs past the end of the file");

  std::vector<Entry> entries(static_cast<std::size_t>(count) + static_cast<std::size_t>(slack) + 1);
  std::size_t filled = 0;
  std::size_t record = 0;
  while (!reader.AtEnd()) {
    ++record;
    const std::size_t at = reader.Pos();
    if (!reader.Has(recordSize))
      return Problem(file, record, at,
                     "the record is cut short (" + std::to_string(reader.Remaining()) + " of " +
                         std::to_string(recordSize) + " bytes)");
    reader.Skip(recordSize);
    const uint8_t* bytes = data + at;
    if (bytes[0] == 0) continue;  // an empty slot
    if (filled >= entries.size())
      return Problem(file, record, at, "more records than the count " + std::to_string(count) + " allows");
    fill(entries[filled], bytes);
    ++filled;
  }
  array = std::move(entries);
  stored = static_cast<int32_t>(filled);
  return std::nullopt;
}

}  // namespace

std::optional<std::string> ParseRegionFile(const uint8_t* data, std::size_t size, AirportTables& out) {
  return ParseNameFile("region.orv", data, size, kRegionRecordSize, 0, out.Regions, out.RegionCount,
                       [](std::string& entry, const uint8_t* bytes) { entry = FieldAt<30>(bytes, 0); });
}

std::optional<std::string> ParseCountryFile(const uint8_t* data, std::size_t size, AirportTables& out) {
  return ParseNameFile("country.orv", data, size, kCountryRecordSize, 2, out.Countries, out.CountryCount,
                       [](CountryEntry& entry, const uint8_t* bytes) {
                         entry.Name = FieldAt<40>(bytes, 0);
                         entry.Region = FieldAt<30>(bytes, 40);
                       });
}

std::optional<std::string> ParseStateFile(const uint8_t* data, std::size_t size, AirportTables& out) {
  return ParseNameFile("state.orv", data, size, kStateRecordSize, 2, out.States, out.StateCount,
                       [](StateEntry& entry, const uint8_t* bytes) {
                         entry.Name = FieldAt<40>(bytes, 0);
                         entry.Country = FieldAt<40>(bytes, 40);
                       });
}

std::optional<std::string> ParseCityFile(const uint8_t* data, std::size_t size, AirportTables& out) {
  return ParseNameFile("city.orv", data, size, kCityRecordSize, 2, out.Cities, out.CityCount,
                       [](CityEntry& entry, const uint8_t* bytes) {
                         entry.Name = FieldAt<40>(bytes, 0);
                         entry.State = FieldAt<40>(bytes, 40);
                         entry.Country = FieldAt<40>(bytes, 80);
                       });
}

namespace {

template <typename Entry, typename Write>
std::vector<uint8_t> BuildNameFile(const std::vector<Entry>& entries, std::size_t recordSize, Write write) {
  ByteWriter writer;
  writer.bytes.reserve(4 + entries.size() * recordSize);
  writer.I32(static_cast<int32_t>(entries.size()));
  for (const Entry& entry : entries) write(writer, entry);
  return std::move(writer.bytes);
}

}  // namespace

std::vector<uint8_t> BuildRegionFile(const std::vector<std::string>& regions) {
  return BuildNameFile(regions, kRegionRecordSize,
                       [](ByteWriter& w, const std::string& region) { w.Text(region, 30); });
}

std::vector<uint8_t> BuildCountryFile(const std::vector<CountryEntry>& countries) {
  return BuildNameFile(countries, kCountryRecordSize, [](ByteWriter& w, const CountryEntry& entry) {
    w.Text(entry.Name, 40);
    w.Text(entry.Region, 30);
  });
}

std::vector<uint8_t> BuildStateFile(const std::vector<StateEntry>& states) {
  return BuildNameFile(states, kStateRecordSize, [](ByteWriter& w, const StateEntry& entry) {
    w.Text(entry.Name, 40);
    w.Text(entry.Country, 40);
  });
}

std::vector<uint8_t> BuildCityFile(const std::vector<CityEntry>& cities) {
  return BuildNameFile(cities, kCityRecordSize, [](ByteWriter& w, const CityEntry& entry) {
    w.Text(entry.Name, 40);
    w.Text(entry.State, 40);
    w.Text(entry.Country, 40);
  });
}

}  // namespace orv
