// Arbitrary bytes as proc.orv: refused with a message, or read into shapes
// that pass the editor's checks, give finite points and are written back
// to the same length and read again alike. The corpus starts from files
// the project's writer makes.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "planning/ProcedureShapes.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  // The first argument that is not a flag is the corpus folder: an empty one
  // gets two files of the writer, a holding and a procedure turn.
  for (int i = 1; i < *argc; ++i) {
    const std::string arg = (*argv)[i];
    if (arg.empty() || arg[0] == '-') continue;
    std::error_code ec;
    if (!std::filesystem::is_directory(arg, ec) || !std::filesystem::is_empty(arg, ec)) break;
    orv::ProcShape hold;
    hold.Name = "EDDF 07 HOLD";
    hold.Fix = "FFM";
    hold.Lat = 50.05f, hold.Lon = 8.64f, hold.InboundCourse = 250, hold.MagVar = 2.5f;
    orv::ProcShape turn = hold;
    turn.Name = "PT 25";
    turn.Kind = orv::ProcKind::ProcedureTurn;
    turn.RightTurns = false;
    turn.LegInMinutes = false;
    turn.LegValue = 6;
    auto put = [&](const char* name, const std::vector<uint8_t>& bytes) {
      std::ofstream(std::filesystem::path(arg) / name, std::ios::binary)
          .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    };
    put("one.orv", orv::BuildProcFile({hold}));
    put("two.orv", orv::BuildProcFile({hold, turn}));
    break;
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  auto read = orv::ParseProcFile(data, size);
  const auto* shapes = std::get_if<std::vector<orv::ProcShape>>(&read);
  if (!shapes) return 0;
  for (const orv::ProcShape& s : *shapes) {
    if (orv::CheckProcShape(s)) std::abort();
    for (const orv::LatLon& p : orv::ProcShapePoints(s))
      if (!std::isfinite(p.Lat) || !std::isfinite(p.Lon)) std::abort();
  }
  const std::vector<uint8_t> again = orv::BuildProcFile(*shapes);
  if (again.size() != size) std::abort();
  auto back = orv::ParseProcFile(again.data(), again.size());
  if (!std::holds_alternative<std::vector<orv::ProcShape>>(back) || orv::BuildProcFile(std::get<0>(back)) != again)
    std::abort();
  return 0;
}
