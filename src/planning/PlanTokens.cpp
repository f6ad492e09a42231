#include "planning/PlanTokens.h"

#include "core/Runtime.h"

namespace orv {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view TrimBlanks(std::string_view t) {
  std::size_t b = 0, e = t.size();
  while (b < e && IsBlank(t[b])) ++b;
  while (e > b && IsBlank(t[e - 1])) --e;
  return t.substr(b, e - b);
}

bool IsWholeNumber(std::string_view t) { return IsPlainNumber(t) && t.find('.') == std::string_view::npos; }

bool StartsWp(std::string_view t) { return t.substr(0, 3) == "WP="; }

}  // namespace

std::vector<std::string_view> SplitPlanTokens(std::string_view text) {
  std::vector<std::string_view> out;
  out.reserve(text.size() / 8 + 4);
  std::size_t p = 0, n = text.size();
  while (p < n) {
    std::size_t eol = p;
    while (eol < n && text[eol] != '\r' && text[eol] != '\n') ++eol;
    // The fields of one line; an empty line has none, and the empty field
    // behind a comma that ends the line is no token either.
    std::size_t q = p;
    bool any = TrimBlanks(text.substr(p, eol - p)).size() > 0;
    while (any && q <= eol) {
      while (q < eol && IsBlank(text[q])) ++q;
      if (q < eol && text[q] == '"') {
        std::size_t close = text.find('"', q + 1);
        if (close == std::string_view::npos || close > eol) close = eol;
        out.push_back(text.substr(q + 1, close - q - 1));
        q = close < eol ? close + 1 : eol;
        while (q < eol && text[q] != ',') ++q;
      } else {
        std::size_t e = q;
        while (e < eol && text[e] != ',') ++e;
        if (e < eol || e > q) out.push_back(TrimBlanks(text.substr(q, e - q)));
        q = e;
      }
      if (q >= eol) break;
      ++q;  // the comma
      if (q == eol) break;
    }
    p = eol;
    if (p < n && text[p] == '\r') ++p;
    if (p < n && text[p] == '\n') ++p;
    if (p == eol) ++p;
  }
  return out;
}

bool IsPlainNumber(std::string_view t) {
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '-' || t[i] == '+')) ++i;
  bool digit = false, point = false;
  for (; i < t.size(); ++i) {
    char c = t[i];
    if (c >= '0' && c <= '9') digit = true;
    else if (c == '.' && !point) point = true;
    else return false;
  }
  return digit;
}

std::string ReadWpFields(const std::vector<std::string_view>& tokens, std::size_t& i, WaypointRec& w) {
  std::string_view head = tokens[i];
  std::string_view number = head.substr(3);
  std::string label = "Waypoint " + std::string(number);
  if (!IsWholeNumber(number) || Val(number) < 1)
    return "A waypoint line of this file has no valid number (" + std::string(head.substr(0, 20)) + ")!";
  if (i + 10 >= tokens.size()) return label + " of this file is incomplete!";
  const std::string_view* f = &tokens[i + 1];
  // A name holding a comma pushes the position into the name's place: the
  // numbers no longer are numbers.
  for (int k = 3; k <= 9; ++k)
    if (!IsPlainNumber(f[k]))
      return label + " of this file cannot be read: a number is expected after its name (is there a comma in "
                     "the name?)";
  double lat = Val(f[3]), lon = Val(f[4]);
  double origin = Val(f[8]);
  if (lat < -90 || lat > 90 || lon < -180 || lon > 180 || !IsWholeNumber(f[8]) || origin < 0 || origin > 4 ||
      !IsWholeNumber(f[9]))
    return label + " of this file cannot be read: its position or kind is out of range!";
  w = WaypointRec();
  w.Kind.Assign(f[0]);
  w.Code.Assign(UCase(f[1]));
  w.Name.Assign(f[2]);
  w.Lat = CSng(lat);
  w.Lon = CSng(lon);
  w.Frequency = CSng(Val(f[5]));
  w.Course = CSng(Val(f[6]));
  w.MagVar = CSng(Val(f[7]));
  w.Origin = CByte(origin);
  w.DbIndex = CLng(Val(f[9]));
  i += 11;
  if (i < tokens.size() && !StartsWp(tokens[i])) {
    w.Airway.Assign(tokens[i++]);
    if (i < tokens.size() && !StartsWp(tokens[i])) w.MinAltitude = CLng(Val(tokens[i++]));
    if (i < tokens.size() && !StartsWp(tokens[i])) w.MaxAltitude = CLng(Val(tokens[i++]));
  }
  return {};
}

}  // namespace orv
