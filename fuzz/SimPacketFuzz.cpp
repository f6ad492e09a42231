// The simulator adapters' decoders on hostile bytes: X-Plane's RREF answers,
// FlightGear's generic-protocol lines and the property server's JSON.
#include <cstdint>
#include <string_view>
#include <vector>

#include "simlink/FlightGearAdapter.h"
#include "simlink/XPlaneAdapter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::pair<std::int32_t, float>> pairs;
  if (orv::DecodeRrefAnswer(data, size, pairs) && pairs.size() != (size - 5) / 8) __builtin_trap();
  std::vector<float> values(orv::XPlaneDatarefs().size(), 0.0f);
  for (const auto& [index, value] : pairs)
    if (index >= 0 && static_cast<std::size_t>(index) < values.size()) values[index] = value;
  orv::OffsetImage image;
  orv::PutAircraftState(image, orv::XPlaneState(values));
  if (orv::XPlaneTraffic(values).size() > orv::kTrafficMaxCount) __builtin_trap();

  const std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::AircraftState state;
  if (orv::ParseFlightGearLine(text, state)) orv::PutAircraftState(image, state);
  std::vector<orv::TrafficEntry> traffic;
  orv::ParseAiModels(text, traffic);
  if (traffic.size() > orv::kTrafficMaxCount) __builtin_trap();
  return 0;
}
