// The comma- and line-separated tokens of the program's plan and segment files
// and their "WP=" row lines, shared by both readers and writers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "planning/FlightPlan.h"

namespace orv {

// Splits text at commas and line ends. Each token loses its surrounding blanks
// and tabs; a token that starts with a double quote runs to the closing quote
// (commas inside it stay) and loses the quotes. Empty lines give no token.
std::vector<std::string_view> SplitPlanTokens(std::string_view text);

// True when the whole token is a decimal number: sign, digits, one point.
bool IsPlainNumber(std::string_view token);

// One "WP=" row line: N, Kind, Code, Name, Lat "##0.0000", Lon "##0.0000",
// Frequency "##0.00", Course "##0.0000", MagVar "##0.000", Origin, DbIndex,
// then the airway and its limits "00000" when the row has them.
std::string FormatWpLine(int n, const WaypointRec& w);
void AppendWpLine(std::string& out, int n, const WaypointRec& w);

// Reads the row whose "WP=" token is tokens[i] and advances i behind it: ten
// fields, then the airway and the two limits while the next token does not
// start "WP=". Returns the message for a row that cannot be read (a field
// missing or not a number where a number belongs, as a name holding a comma
// leaves it), empty on success.
std::string ReadWpFields(const std::vector<std::string_view>& tokens, std::size_t& i, WaypointRec& w);

}  // namespace orv
