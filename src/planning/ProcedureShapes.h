// Holding and procedure-turn shapes around a fix, as the procedure editor
// (EdProc) draws them and the autopilot flies them, and their file
// "\user\proc.orv" of named shapes (the ProcSave and ProcLoad windows).
//
// proc.orv, little-endian, no padding: a 32-bit Count (0..kMaxProcShapes),
// then Count records of kProcRecordSize bytes:
//   0 Name, text 20 | 20 Fix ident, text 5 | 25 Kind "H" or "P" |
//   26 Turn "R" or "L" | 27 Leg unit "M" (minutes) or "N" (NM) |
//   28 Lat f32 | 32 Lon f32 | 36 inbound course (magnetic) f32 |
//   40 MagVar at the fix f32 | 44 leg value f32 | 48 speed (kt) i16.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/Geodesy.h"

namespace orv {

inline constexpr std::size_t kProcRecordSize = 50;
inline constexpr int32_t kMaxProcShapes = 500;
inline constexpr std::size_t kProcPoints = 15;  // as the autopilot holds them

enum class ProcKind : char { Holding = 'H', ProcedureTurn = 'P' };

struct ProcShape {
  std::string Name;            // 1..20 characters
  std::string Fix;             // the fix's ident, 1..5 characters
  ProcKind Kind = ProcKind::Holding;
  bool RightTurns = true;      // holding: the turns; procedure turn: the turn onto the 45° leg, flown outbound
  bool LegInMinutes = true;    // the leg as a time at Speed, else in NM
  float Lat = 0;
  float Lon = 0;
  float InboundCourse = 0;     // magnetic, 0..360
  float MagVar = 0;            // at the fix, east positive: true = magnetic + MagVar
  float LegValue = 1;          // minutes 0.5..5 or NM 1..20
  int16_t Speed = 180;         // kt, 60..400: the turn radius and a timed leg
};

// The first thing wrong with a shape, as the editor shows it
// ("Inbound course: must be from 0 to 360."); none when it can be drawn.
std::optional<std::string> CheckProcShape(const ProcShape& shape);

// The leg length in NM and the radius of a rate-one turn (3° a second) at
// the shape's speed.
double ProcLegNm(const ProcShape& shape);
double ProcTurnRadiusNm(const ProcShape& shape);

// The 15 points in flying order. Point 0 and point 14 are the fix; the
// autopilot flies points 1 to 14 round and round.
//   Holding: 1..6 the turn after the fix in 30° steps (6 abeam the fix,
//   two radii aside), 7 the end of the outbound leg, 8..13 the turn back
//   (13 on the inbound course one leg before the fix).
//   Procedure turn: 1 halfway out, 2 the end of the outbound leg, 3 the end
//   of the 45° leg (one minute), 4..9 the 180° turn the other way, 10 where
//   the 45° course back meets the inbound course, 11..13 along it to the fix.
std::array<LatLon, kProcPoints> ProcShapePoints(const ProcShape& shape);

// proc.orv.
std::vector<uint8_t> BuildProcFile(const std::vector<ProcShape>& shapes);
// The shapes, or what is wrong with the file: every count, field and range
// is checked, and a file that is not exactly Count records long is refused.
std::variant<std::vector<ProcShape>, std::string> ParseProcFile(const uint8_t* data, std::size_t size);

}  // namespace orv

namespace orv {

// The display procedure: the shape the map draws while "Procedure" of the
// Map menu is checked and the autopilot flies during a hold at its fix.
struct DisplayProcedure {
  bool Set = false;
  ProcShape Shape;
  std::array<LatLon, kProcPoints> Points{};
};

}  // namespace orv
