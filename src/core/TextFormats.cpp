#include "core/TextFormats.h"

#include <cmath>

#include "core/Runtime.h"

namespace orv {

namespace {

// Degrees by truncation towards zero and the unsigned minutes of the rest.
struct DegMin {
  double degrees;  // unsigned
  double minutes;  // unsigned, 0 .. 60
};

DegMin SplitDegrees(double value) {
  double whole = std::trunc(value);
  return {std::fabs(whole), std::fabs(value - whole) * 60};
}

std::string CoordText(double value, char positive, char negative, std::string_view degreeMask, bool decSec) {
  DegMin dm = SplitDegrees(value);
  std::string text(1, value < 0 ? negative : positive);
  text += Format(dm.degrees, degreeMask);
  text += kDegreeSign;
  if (decSec) {
    text += Format(dm.minutes, "00.00");
    text += '\'';
  } else {
    double wholeMinutes = std::floor(dm.minutes);
    text += Format(wholeMinutes, "00");
    text += '\'';
    text += Format((dm.minutes - wholeMinutes) * 60, "00.00");
    text += '"';
  }
  return text;
}

std::string PlanCoordText(double value, char positive, char negative, std::string_view degreeMask) {
  DegMin dm = SplitDegrees(value);
  std::string text(1, value < 0 ? negative : positive);
  text += Format(dm.degrees, degreeMask);
  text += "* ";
  text += Format(dm.minutes, "00.00");
  text += "', ";
  return text;
}

}  // namespace

std::string LatToText(double lat, bool decSec) { return CoordText(lat, 'N', 'S', "00", decSec); }

std::string LonToText(double lon, bool decSec) { return CoordText(lon, 'E', 'W', "000", decSec); }

std::string LatToPlanText(double lat) { return PlanCoordText(lat, 'N', 'S', "00"); }

std::string LonToPlanText(double lon) { return PlanCoordText(lon, 'E', 'W', "000"); }

std::string VarToText(double variation) {
  double v = variation;
  if (v > 180) v -= 360;
  if (v < -180) v += 360;
  if (v < 0) return "W" + Format(-v, "000");
  if (v > 0) return "E" + Format(v, "000");
  return " " + Format(v, "000");
}

std::string LatToShortText(double lat) {
  double v = lat;
  if (v > 90) v -= 90;
  if (v < -90) v += 90;
  const char* letter = v > 0 ? "N" : (v < 0 ? "S" : " ");
  return letter + Format(std::fabs(v), "00");
}

std::string MinutesToHours(double minutes) {
  // Integer division and remainder on the rounded count, as the hour and
  // minute parts are whole numbers.
  int32_t total = CLng(minutes);
  return Format(total / 60, "00") + ":" + Format(total % 60, "00");
}

std::string RunwayOpposite(std::string_view runway) {
  std::string text = Trim(runway);
  if (text.empty()) return text;

  std::string side;
  switch (text.back()) {
    case 'L': side = "R"; break;
    case 'R': side = "L"; break;
    case 'C': side = "C"; break;
    default: break;
  }
  // With a side letter the designator is the text before it; without one the
  // whole text is.
  std::string designator = side.empty() ? text : Left(text, static_cast<int>(text.size()) - 1);

  if (Val(Left(text, 2)) > 0) {
    double number = Val(designator);
    number = number <= 18 ? number + 18 : number - 18;
    return Trim(Format(number, "00") + side);
  }

  // Water runways and the like are named by compass words.
  static constexpr std::string_view kCompass[][2] = {
      {"N", "S"}, {"NE", "SW"}, {"E", "W"}, {"SE", "NW"}, {"S", "N"}, {"SW", "NE"}, {"W", "E"}, {"NW", "SE"}};
  std::string word = Trim(designator);
  for (const auto& pair : kCompass)
    if (word == pair[0]) return Trim(std::string(pair[1]) + side);
  return text;
}

std::string StripLeading(char ch, std::string_view text) {
  std::string trimmed = Trim(text);
  std::size_t first = trimmed.find_first_not_of(ch);
  return first == std::string::npos ? std::string() : trimmed.substr(first);
}

std::string NameCase(std::string_view text) {
  std::string upper = UCase(text);
  std::string out = LCase(text);
  for (std::size_t i = 0; i < out.size(); ++i)
    if (i == 0 || static_cast<unsigned char>(text[i - 1]) < 65) out[i] = upper[i];
  return out;
}

double FuelToUnit(double gallons, int fuelSetting) {
  switch (fuelSetting) {
    case 1: return gallons * 6.66;   // lbs
    case 2: return gallons * 3.028;  // kg
    case 3: return gallons * 3.785;  // lit
    default: return gallons;         // gal
  }
}

}  // namespace orv
