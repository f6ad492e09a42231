#include "planning/ProcedureShapes.h"

#include <cmath>

#include "core/Runtime.h"
#include "database/ByteReader.h"

namespace orv {

namespace {


constexpr double kRad = kPiExact / 180.0;

// Positions worked out in a flat plane around the fix, in NM east and north.
struct Xy {
  double X = 0;
  double Y = 0;
};

Xy Along(Xy from, double course, double nm) {
  return {from.X + nm * std::sin(course * kRad), from.Y + nm * std::cos(course * kRad)};
}

bool InRange(double v, double lo, double hi) { return std::isfinite(v) && v >= lo && v <= hi; }

}  // namespace

std::optional<std::string> CheckProcShape(const ProcShape& s) {
  const std::string name = Trim(s.Name), fix = Trim(s.Fix);
  if (name.empty() || name.size() > 20) return "Name: must have 1 to 20 characters.";
  if (fix.empty() || fix.size() > 5) return "Fix: must have 1 to 5 characters.";
  if (!InRange(s.Lat, -90, 90) || !InRange(s.Lon, -180, 180)) return "Fix: the position is not on the earth.";
  if (!InRange(s.InboundCourse, 0, 360)) return "Inbound course: must be from 0 to 360.";
  if (!InRange(s.MagVar, -180, 180)) return "MagVar: must be from -180 to 180.";
  if (s.LegInMinutes ? !InRange(s.LegValue, 0.5, 5) : !InRange(s.LegValue, 1, 20))
    return s.LegInMinutes ? "Leg: must be from 0.5 to 5 minutes." : "Leg: must be from 1 to 20 NM.";
  if (s.Speed < 60 || s.Speed > 400) return "Speed: must be from 60 to 400 kt.";
  return std::nullopt;
}

double ProcLegNm(const ProcShape& s) { return s.LegInMinutes ? s.LegValue * s.Speed / 60.0 : s.LegValue; }

// A full rate-one turn takes two minutes: its circumference is speed / 30 NM.
double ProcTurnRadiusNm(const ProcShape& s) { return s.Speed / 30.0 / (2 * kPiExact); }

std::array<LatLon, kProcPoints> ProcShapePoints(const ProcShape& s) {
  const double t = s.InboundCourse + s.MagVar;  // true inbound course
  const double dir = s.RightTurns ? 1 : -1;
  const double r = ProcTurnRadiusNm(s), leg = ProcLegNm(s);
  std::array<Xy, kProcPoints> p{};  // p[0] is the fix at (0, 0)
  // Points on an arc round a centre, 30° a step from a start bearing.
  auto arc = [&](std::size_t first, Xy centre, double startBearing, double turn) {
    for (int k = 1; k <= 6; ++k) p[first + static_cast<std::size_t>(k) - 1] = Along(centre, startBearing + turn * 30 * k, r);
  };
  if (s.Kind == ProcKind::Holding) {
    const double side = t + 90 * dir;
    const Xy c1 = Along(p[0], side, r);
    arc(1, c1, side + 180, dir);
    p[7] = Along(p[6], t + 180, leg);
    const Xy c2 = Along(p[7], side + 180, r);
    arc(8, c2, side, dir);
  } else {
    p[1] = Along(p[0], t + 180, leg / 2);
    p[2] = Along(p[0], t + 180, leg);
    const double out45 = t + 180 + 45 * dir;
    p[3] = Along(p[2], out45, s.Speed / 60.0);
    // The 180° turn goes the other way round: its centre lies on that side.
    const Xy c = Along(p[3], out45 - 90 * dir, r);
    arc(4, c, out45 + 90 * dir, -dir);
    // Back on the 45° course until it meets the inbound course.
    const double back = t + 45 * dir;
    const Xy g = p[9];
    const Xy u{std::sin(back * kRad), std::cos(back * kRad)}, v{std::sin(t * kRad), std::cos(t * kRad)};
    const double cross = u.X * v.Y - u.Y * v.X;
    const double a = -(g.X * v.Y - g.Y * v.X) / cross;
    if (a > 0) {
      p[10] = Along(g, back, a);
    } else {
      const double along = g.X * v.X + g.Y * v.Y;  // already across: straight onto the course
      p[10] = {along * v.X, along * v.Y};
    }
    for (int k = 1; k <= 3; ++k) p[10 + static_cast<std::size_t>(k)] = {p[10].X * (4 - k) / 4, p[10].Y * (4 - k) / 4};
  }
  p[14] = p[0];
  std::array<LatLon, kProcPoints> out{};
  const double cosLat = std::max(0.01, std::cos(s.Lat * kRad));
  for (std::size_t i = 0; i < kProcPoints; ++i)
    out[i] = {static_cast<float>(s.Lat + p[i].Y / 60.0), static_cast<float>(s.Lon + p[i].X / 60.0 / cosLat)};
  return out;
}

std::vector<uint8_t> BuildProcFile(const std::vector<ProcShape>& shapes) {
  ByteWriter w;
  w.I32(static_cast<int32_t>(shapes.size()));
  for (const ProcShape& s : shapes) {
    w.Text(Trim(s.Name), 20);
    w.Text(Trim(s.Fix), 5);
    w.U8(static_cast<uint8_t>(s.Kind));
    w.U8(s.RightTurns ? 'R' : 'L');
    w.U8(s.LegInMinutes ? 'M' : 'N');
    w.F32(s.Lat);
    w.F32(s.Lon);
    w.F32(s.InboundCourse);
    w.F32(s.MagVar);
    w.F32(s.LegValue);
    w.I16(s.Speed);
  }
  return std::move(w.bytes);
}

std::variant<std::vector<ProcShape>, std::string> ParseProcFile(const uint8_t* data, std::size_t size) {
  ByteReader r(data, size);
  if (size < 4) return std::string("proc.orv is too short to hold its count of shapes.");
  const int32_t count = r.I32();
  if (count < 0 || count > kMaxProcShapes)
    return "proc.orv: the count of shapes, " + std::to_string(count) + ", is not from 0 to " +
           std::to_string(kMaxProcShapes) + ".";
  if (size != 4 + static_cast<std::size_t>(count) * kProcRecordSize)
    return "proc.orv: " + std::to_string(count) + " shapes need " +
           std::to_string(4 + static_cast<std::size_t>(count) * kProcRecordSize) + " bytes, the file has " +
           std::to_string(size) + ".";
  std::vector<ProcShape> shapes;
  shapes.reserve(static_cast<std::size_t>(count));
  for (int32_t i = 0; i < count; ++i) {
    ProcShape s;
    s.Name = Trim(r.Raw(20));
    s.Fix = Trim(r.Raw(5));
    const uint8_t kind = r.U8(), turn = r.U8(), unit = r.U8();
    s.Lat = r.F32();
    s.Lon = r.F32();
    s.InboundCourse = r.F32();
    s.MagVar = r.F32();
    s.LegValue = r.F32();
    s.Speed = r.I16();
    const std::string where = "proc.orv: shape " + std::to_string(i + 1) + ": ";
    if (kind != 'H' && kind != 'P') return where + "the kind is neither H nor P.";
    if (turn != 'R' && turn != 'L') return where + "the turn is neither R nor L.";
    if (unit != 'M' && unit != 'N') return where + "the leg unit is neither M nor N.";
    s.Kind = static_cast<ProcKind>(kind);
    s.RightTurns = turn == 'R';
    s.LegInMinutes = unit == 'M';
    if (const std::optional<std::string> why = CheckProcShape(s)) return where + *why;
    shapes.push_back(std::move(s));
  }
  if (!r.Ok()) return std::string("proc.orv ends inside a shape.");
  return shapes;
}

}  // namespace orv
