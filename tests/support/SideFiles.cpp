#include "support/SideFiles.h"

#include <algorithm>

#include "core/Runtime.h"
#include "database/ByteReader.h"

namespace orv::test {

std::vector<uint8_t> BuildProcedureFile(const std::vector<ProcedureBlock>& blocks) {
  ByteWriter w;
  for (const ProcedureBlock& b : blocks) {
    const std::size_t count = std::min<std::size_t>(b.Points.size(), 255);
    w.Text(b.Airport, 10);
    w.Text(b.Runway, 5);
    w.Text(b.Name, 40);
    w.U8(static_cast<uint8_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
      const ProcedurePoint& p = b.Points[i];
      w.Text(p.Kind, 5);
      w.Text(p.Code, 10);
      w.Text(p.Name, 20);
      w.F32(p.Lat);
      w.F32(p.Lon);
      w.Zeros(14);  // further values of the point
      w.Zeros(4);
    }
  }
  return std::move(w.bytes);
}

std::string BuildWxStationFile(const std::vector<WxStation>& stations) {
  std::string text;
  text.reserve(stations.size() * 24);
  for (const WxStation& s : stations) {
    text += s.Icao;
    text += ',';
    text += Format(s.Lat, "0.0000");
    text += ',';
    text += Format(s.Lon, "0.0000");
    text += "\r\n";
  }
  return text;
}

}  // namespace orv::test
