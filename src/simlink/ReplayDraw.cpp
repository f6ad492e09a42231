#include "simlink/ReplayDraw.h"

#include <algorithm>
#include <cmath>

#include "core/Runtime.h"

namespace orv {

namespace {

constexpr Colour kBackground = RgbColour(248, 248, 240);
constexpr Colour kGrid = RgbColour(200, 200, 200);
constexpr Colour kText = RgbColour(60, 60, 60);
constexpr Colour kGround = RgbColour(160, 130, 90);
constexpr Colour kFlown = RgbColour(0, 70, 200);
constexpr Colour kMark = RgbColour(220, 0, 0);

// At most this many points of the flown line: more than the picture has
// pixels across, few enough to draw at each step of a long recording.
constexpr std::size_t kMaxProfilePoints = 2000;

int SecondsOf(std::string_view t) {
  if (t.size() < 8 || t[2] != ':' || t[5] != ':') return -1;
  for (std::size_t i : {0u, 1u, 3u, 4u, 6u, 7u})
    if (t[i] < '0' || t[i] > '9') return -1;
  const int h = (t[0] - '0') * 10 + (t[1] - '0'), m = (t[3] - '0') * 10 + (t[4] - '0'),
            s = (t[6] - '0') * 10 + (t[7] - '0');
  if (h > 23 || m > 59 || s > 59) return -1;
  return h * 3600 + m * 60 + s;
}

// The grid's step: the first of 1000, 2000, 5000 and 10000 feet that gives
// no more than six lines.
std::int32_t GridStep(std::int32_t top) {
  for (std::int32_t step : {1000, 2000, 5000})
    if (top / step <= 6) return step;
  return 10000;
}

DrawPoint P(double x, double y) { return {static_cast<float>(x), static_cast<float>(y)}; }

}  // namespace

std::vector<double> SampleSeconds(const Recording& rec) {
  std::vector<double> out;
  if (rec.TraceTimes.size() != rec.Samples.size() || rec.Samples.empty()) return out;
  out.reserve(rec.Samples.size());
  double day = 0;
  int first = -1, last = -1;
  for (const std::string& t : rec.TraceTimes) {
    const int s = SecondsOf(t);
    if (s < 0) return {};
    if (first < 0) first = s;
    if (last >= 0 && s < last) day += 86400;
    last = s;
    out.push_back(day + s - first);
  }
  if (out.back() <= 0) return {};
  return out;
}

void DrawReplayProfile(DrawTarget& t, const Recording& rec, std::int32_t index, const ProfileStyle& style) {
  const std::int32_t top = std::clamp(style.MaxAltitude, kMinProfileAltitude, kMaxProfileAltitude);
  t.SetBackColor(kBackground);
  t.Cls();
  t.SetFontName("Arial");
  t.SetFontSize(7);
  t.SetFontBold(false);
  t.SetDrawWidth(1);
  t.SetDrawStyle(kDrawStyleSolid);
  t.SetFillStyle(kFillTransparent);
  const double w = t.ScaleWidth(), h = t.ScaleHeight();
  const double lineH = t.TextHeight("0");
  const double left = t.TextWidth("50000 ") + lineH / 2, right = w - lineH / 2;
  const double upper = lineH / 2 + lineH, lower = h - lineH * 1.5;
  if (right <= left || lower <= upper) return;
  auto yOf = [&](double feet) { return lower - std::clamp(feet, 0.0, static_cast<double>(top)) / top * (lower - upper); };

  // The grid with its altitudes.
  const std::int32_t step = GridStep(top);
  t.SetForeColor(kText);
  for (std::int32_t a = 0; a <= top; a += step) {
    t.Line(left, yOf(a), right, yOf(a), LineShape::Line, kGrid);
    const std::string label = std::to_string(a);
    t.SetCurrentX(left - t.TextWidth(label + " "));
    t.SetCurrentY(yOf(a) - lineH / 2);
    t.Print(label);
  }
  t.Line(left, upper, left, lower, LineShape::Line, kText);
  if (rec.Samples.empty()) return;

  const std::size_t n = rec.Samples.size();
  const std::vector<double> seconds = SampleSeconds(rec);
  const double span = seconds.empty() ? static_cast<double>(n > 1 ? n - 1 : 1) : seconds.back();
  auto xOf = [&](std::size_t i) {
    const double at = seconds.empty() ? static_cast<double>(i) : seconds[i];
    return left + at / span * (right - left);
  };
  auto shown = [&](const TraceSample& s) { return static_cast<double>(style.AboveGround ? s.Agl : s.Altitude); };

  // Every k-th sample and the last one.
  const std::size_t k = (n + kMaxProfilePoints - 1) / kMaxProfilePoints;
  std::vector<std::size_t> picked;
  for (std::size_t i = 0; i < n; i += k) picked.push_back(i);
  if (picked.back() != n - 1) picked.push_back(n - 1);

  std::vector<DrawPoint> pts;
  if (!style.AboveGround) {
    // The ground: the altitude less the height above it, filled down to the axis.
    pts.reserve(picked.size() + 2);
    pts.push_back(P(xOf(0), lower));
    for (std::size_t i : picked)
      pts.push_back(P(xOf(i), yOf(static_cast<double>(rec.Samples[i].Altitude) - rec.Samples[i].Agl)));
    pts.push_back(P(xOf(n - 1), lower));
    t.SetForeColor(kGround);
    t.SetFillColor(kGround);
    t.SetFillStyle(kFillSolid);
    t.Polygon(pts);
    t.SetFillStyle(kFillTransparent);
  }
  pts.clear();
  for (std::size_t i : picked) pts.push_back(P(xOf(i), yOf(shown(rec.Samples[i]))));
  t.SetForeColor(kFlown);
  t.SetDrawWidth(2);
  t.Polyline(pts);
  t.SetDrawWidth(1);

  // The first and last times under the axis.
  t.SetForeColor(kText);
  if (!seconds.empty()) {
    t.SetCurrentX(left);
    t.SetCurrentY(lower + lineH / 4);
    t.Print(rec.TraceTimes.front());
    t.SetCurrentX(right - t.TextWidth(rec.TraceTimes.back()));
    t.SetCurrentY(lower + lineH / 4);
    t.Print(rec.TraceTimes.back());
  }

  // The sample the stepping view shows.
  const std::size_t at = static_cast<std::size_t>(std::clamp<std::int32_t>(index, 0, static_cast<std::int32_t>(n - 1)));
  const double x = xOf(at), y = yOf(shown(rec.Samples[at]));
  t.Line(x, upper, x, lower, LineShape::Line, kMark);
  t.SetFillColor(kMark);
  t.SetFillStyle(kFillSolid);
  t.Circle(x, y, lineH / 4, kMark);
  t.SetFillStyle(kFillTransparent);
  std::string caption = rec.TraceTimes[at].empty() ? "" : rec.TraceTimes[at] + "  ";
  caption += std::to_string(static_cast<std::int64_t>(shown(rec.Samples[at]))) + (style.AboveGround ? " ft AGL" : " ft");
  const double cw = t.TextWidth(caption);
  t.SetForeColor(kMark);
  t.SetCurrentX(std::clamp(x - cw / 2, left, std::max(left, right - cw)));
  t.SetCurrentY(lineH / 4);
  t.Print(caption);
}

}  // namespace orv
