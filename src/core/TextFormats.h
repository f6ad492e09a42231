// Coordinates, headings and a few units as the program shows and writes them.
// Every number goes through a runtime format mask; the texts are 8-bit
// Windows-1252 (the degree sign is "\xB0"). No minus sign is ever printed for
// a coordinate: the hemisphere letter stands for it.
#pragma once

#include <string>
#include <string_view>

namespace orv {

inline constexpr char kDegreeSign = '\xB0';

// "N47°27.01'" with decimal minutes (decSec set, the DECSEC setting) or
// "N47°27'00.72\"" with whole minutes and seconds. Degrees are the integer part
// truncated towards zero; minutes the rest times 60; seconds the fraction of
// the minutes times 60.
std::string LatToText(double lat, bool decSec);
// As LatToText with "E"/"W" and three-digit degrees.
std::string LonToText(double lon, bool decSec);

// The form of simulator plan files: "N47* 27.01', " and "E008* 32.50', ".
std::string LatToPlanText(double lat);
std::string LonToPlanText(double lon);

// Magnetic variation with its side: first brought to -180..180 (one step),
// then "W005", "E003" or " 000".
std::string VarToText(double variation);

// A grid label: "N45", "S30", " 00". A value above 90 first loses 90 and one
// below -90 gains 90.
std::string LatToShortText(double lat);

// "hh:mm" of a number of minutes, each part with the mask "00". The minutes are
// first rounded to a whole number (half to even).
std::string MinutesToHours(double minutes);

// The designator of the other end of a runway: 09L -> 27R, 36 -> 18, 01C -> 19C,
// NE -> SW. A text that is neither a number nor a compass word comes back as given.
std::string RunwayOpposite(std::string_view runway);

// The trimmed text without any leading copies of ch ("00500" -> "500").
std::string StripLeading(char ch, std::string_view text);

// First character upper case; each later one lower case when the character
// before it has a code of 65 or more (a letter), else upper case.
std::string NameCase(std::string_view text);

// Gallons in the unit chosen by the FUEL setting: 0 gal, 1 lbs, 2 kg, 3 lit.
// Any other setting leaves gallons.
double FuelToUnit(double gallons, int fuelSetting);

}  // namespace orv
