#include "map/Navaid.h"

#include <cmath>

#include "core/Runtime.h"

namespace orv {

namespace {

// Whole units, half to even.
double Whole(double v) { return static_cast<double>(CLng(v)); }

// Blanks trimmed from both ends without a copy.
std::string_view TrimmedView(std::string_view text) {
  std::size_t b = text.find_first_not_of(' ');
  if (b == std::string_view::npos) return {};
  return text.substr(b, text.find_last_not_of(' ') - b + 1);
}

}  // namespace

clsNavaid::clsNavaid(DrawTarget& map, const ViewState& view, Declutter& declutter)
    : map_(&map), target_(&map), view_(&view), declutter_(&declutter) {}

void clsNavaid::lngColor(Colour c) {
  color_ = c;
  target_->SetForeColor(c);
}

void clsNavaid::intFillStyle(int16_t style) {
  fillStyle_ = style;
  target_->SetFillStyle(style);
}

void clsNavaid::sngFontSize(float size) {
  fontSize_ = size;
  target_->SetFontSize(size);
}

void clsNavaid::RoundedLine(double x1, double y1, double x2, double y2) {
  target_->Line(Whole(x1), Whole(y1), Whole(x2), Whole(y2));
}

// The single point that stands for a symbol on a world view.
void clsNavaid::Dot() {
  target_->SetDrawWidth(2);
  target_->PSet(Whole(sngCenterX), Whole(sngCenterY));
}

// The waypoint triangle. The centre moves 15 units up first, and stays there
// for the caller's label.
void clsNavaid::Triangle() {
  sngCenterY -= 15.0f;
  const double x = sngCenterX, y = sngCenterY, l = sngLength;
  RoundedLine(x, y - l, x - l, y + l);
  RoundedLine(x - l, y + l, x + l, y + l);
  RoundedLine(x + l, y + l, x, y - l);
}

bool clsNavaid::NearCentre(double lat, double lon) const {
  return std::fabs(lat - view_->CntrLat) < 0.5 && std::fabs(lon - view_->CntrLon) < 0.5;
}

int16_t clsNavaid::TaxiwayWidth() const {
  switch (Label()) {
    case 1: return 15;
    case 2: return 12;
    case 3: return 5;
    default: return 3;
  }
}

void clsNavaid::DrawAsIntersection() {
  if (Label() < 901) {
    target_->SetDrawWidth(1);
    Triangle();
  } else {
    Dot();
  }
}

void clsNavaid::DrawAsNatrackWP() {
  target_->SetDrawWidth(1);
  Triangle();
}

void clsNavaid::DrawAsVRP() {
  Triangle();
  map_->SetDrawStyle(kDrawStyleDot);
  map_->SetDrawWidth(1);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), intRadius / 2.0);
  map_->SetDrawStyle(kDrawStyleSolid);
}

void clsNavaid::DrawAsActiveWP() {
  map_->SetDrawStyle(kDrawStyleDot);
  map_->SetDrawWidth(1);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), intRadius / 2.0);
  map_->SetDrawStyle(kDrawStyleSolid);
}

void clsNavaid::DrawAsMarker() {
  target_->SetDrawWidth(2);
  target_->PSet(Whole(sngCenterX), Whole(sngCenterY));
  target_->SetDrawWidth(1);
  target_->SetFillStyle(kFillTransparent);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), intRadius);
}

void clsNavaid::DrawAsAirportCircle() {
  if (Label() > 900) {
    Dot();
    return;
  }
  target_->SetFillStyle(kFillTransparent);
  target_->SetDrawWidth(1);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), 30);
}

void clsNavaid::DrawAsAirport() {
  DrawTarget& t = *target_;
  t.SetDrawWidth(1);
  t.SetFillStyle(kFillTransparent);
  t.Circle(Whole(sngCenterX), Whole(sngCenterY), 30);

  // The name is centred under the circle, then moved by the declutter grid;
  // a short underline marks its first half.
  const int16_t half = CInt(t.TextWidth(strName) / 2);
  const LabelPlace place = declutter_->PlaceLabel(static_cast<float>(Whole(sngCenterX - half)),
                                                  static_cast<float>(Whole(sngCenterY + 50.0)), strName,
                                                  AirportLabelKind);
  t.SetCurrentX(place.X);
  t.SetCurrentY(place.Y);
  if (!strName.empty()) t.Print(strName);
  const double underline = t.CurrentY();
  t.Line(place.X, underline, static_cast<double>(place.X) + half, underline);
}

void clsNavaid::DrawAsRwy() {
  DrawTarget& t = *target_;
  // Both ends of a runway give the same drawing.
  const int16_t h = sngCourse >= 180.0f ? CInt(sngCourse - 180.0) : CInt(sngCourse);
  const double s = std::sin(h * kDegToRad), c = std::cos(h * kDegToRad);
  const double s2 = std::sin((h + 90) * kDegToRad), c2 = std::cos((h + 90) * kDegToRad);
  const double w = intWidth, l = sngLength;

  // One long side through P, the other moved across by the width.
  const double px = sngCenterX - w / 2 * s2, py = sngCenterY + w / 2 * c2;
  const double hx = l / 2 * s, hy = -l / 2 * c;
  const double ox = w * s2, oy = -w * c2;
  const DrawPoint corners[4] = {
      {static_cast<float>(std::floor(px + hx)), static_cast<float>(std::floor(py + hy))},
      {static_cast<float>(std::floor(px - hx)), static_cast<float>(std::floor(py - hy))},
      {static_cast<float>(std::floor(px - hx + ox)), static_cast<float>(std::floor(py - hy + oy))},
      {static_cast<float>(std::floor(px + hx + ox)), static_cast<float>(std::floor(py + hy + oy))},
  };
  t.SetDrawWidth(1);
  t.SetDrawStyle(kDrawStyleSolid);
  t.SetFillStyle(kFillSolid);
  t.SetFillColor(RunwayColor);
  t.Polygon(corners, 4);

  if (Label() < 5) {
    // A dashed centre line between the middles of the short ends, in the
    // runway's inverse so that it shows on the fill.
    const Colour fore = t.ForeColor();
    t.SetDrawStyle(kDrawStyleDash);
    t.SetForeColor(0xFFFFFF - RunwayColor);
    RoundedLine((static_cast<double>(corners[0].X) + corners[3].X) / 2,
                (static_cast<double>(corners[0].Y) + corners[3].Y) / 2,
                (static_cast<double>(corners[1].X) + corners[2].X) / 2,
                (static_cast<double>(corners[1].Y) + corners[2].Y) / 2);
    t.SetForeColor(fore);
  }
}

void clsNavaid::PrintFrequency() { target_->Print(Format(sngFrequency, "000.00")); }

void clsNavaid::VorShape(std::string_view vor) {
  const double x = sngCenterX, y = sngCenterY;
  const double type = Val(TrimmedView(vor));
  // The hexagon.
  RoundedLine(x + 50, y - 100, x + 100, y);
  RoundedLine(x + 100, y, x + 50, y + 100);
  RoundedLine(x + 50, y + 100, x - 50, y + 100);
  RoundedLine(x - 50, y + 100, x - 100, y);
  RoundedLine(x - 100, y, x - 50, y - 100);
  RoundedLine(x - 50, y - 100, x + 50, y - 100);
  if (type == 4) {
    // VOR-DME: the square around it.
    RoundedLine(x - 100, y - 100, x + 100, y - 100);
    RoundedLine(x + 100, y - 100, x + 100, y + 100);
    RoundedLine(x + 100, y + 100, x - 100, y + 100);
    RoundedLine(x - 100, y + 100, x - 100, y - 100);
  } else if (type != 2) {
    // VORTAC: three lobes on the west, east and south sides.
    RoundedLine(x - 100, y, x - 200, y - 50);
    RoundedLine(x - 200, y - 50, x - 140, y - 160);
    RoundedLine(x - 140, y - 160, x - 50, y - 100);
    RoundedLine(x + 100, y, x + 200, y - 50);
    RoundedLine(x + 200, y - 50, x + 140, y - 160);
    RoundedLine(x + 140, y - 160, x + 50, y - 100);
    RoundedLine(x + 50, y + 100, x + 50, y + 200);
    RoundedLine(x + 50, y + 200, x - 50, y + 200);
    RoundedLine(x - 50, y + 200, x - 50, y + 100);
  }
}

void clsNavaid::DrawAsVOR(std::string_view vor) {
  DrawTarget& t = *target_;
  const double x = sngCenterX, y = sngCenterY, r = intRadius;
  t.SetDrawWidth(1);
  t.Circle(Whole(x), Whole(y), r);
  if (intRadius >= 51) {
    // The compass rose, turned by the variation: ticks every 30 degrees by
    // its whole degrees, the north line by its exact value.
    const double inner = r / 1.5;
    const double turn = std::trunc(sngMagVar);
    for (int bearing = 30; bearing <= 330; bearing += 30) {
      const double a = (bearing - turn) * kDegToRad;
      RoundedLine(x - r * std::sin(a), y - r * std::cos(a), x - inner * std::sin(a), y - inner * std::cos(a));
    }
    const double north = -static_cast<double>(sngMagVar) * kDegToRad;
    RoundedLine(x - r * std::sin(north), y - r * std::cos(north), x, y - 60);
  }
  VorShape(vor);
  t.Circle(Whole(x), Whole(y), r / 36);
}

void clsNavaid::DrawAsVorSymbol(std::string_view vor) {
  VorShape(vor);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), intRadius / 36.0);
}

void clsNavaid::DrawAsVorSquare() {
  if (Label() > 900) {
    Dot();
    return;
  }
  intRadius = 180;
  target_->SetDrawWidth(1);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), intRadius / 6.0);
}

void clsNavaid::DrawAsNDBSymbol() {
  if (Label() > 900) {
    Dot();
    return;
  }
  target_->SetDrawWidth(1);
  target_->Circle(Whole(sngCenterX), Whole(sngCenterY), intRadius / 6.0);
}

void clsNavaid::DrawAsNDB() {
  DrawTarget& t = *target_;
  const double x = Whole(sngCenterX), y = Whole(sngCenterY);
  t.SetDrawWidth(1);
  t.Circle(x, y, intRadius / 2.0);
  t.Circle(x, y, intRadius / 3.0);
  t.Circle(x, y, intRadius / 6.0);
}

DrawPoint clsNavaid::Feather() {
  // The feather points away from the runway, on the reciprocal course.
  int b = CInt(static_cast<double>(sngCourse) + 180.0);
  if (b > 360) b -= 360;
  if (b < 0) b += 360;
  const int16_t tipDistance = CInt(sngLength / 1.1);
  int left = b + 3;
  if (left > 360) left -= 360;
  int right = b - 3;
  if (right < 0) right += 360;

  const double x = sngCenterX, y = sngCenterY, l = sngLength;
  const double tipX = x + tipDistance * std::sin(b * kDegToRad);
  const double tipY = y - tipDistance * std::cos(b * kDegToRad);
  const double leftX = x + l * std::sin(left * kDegToRad), leftY = y - l * std::cos(left * kDegToRad);
  const double rightX = x + l * std::sin(right * kDegToRad), rightY = y - l * std::cos(right * kDegToRad);

  target_->SetDrawWidth(1);
  RoundedLine(x, y, leftX, leftY);
  RoundedLine(leftX, leftY, tipX, tipY);
  RoundedLine(tipX, tipY, rightX, rightY);
  RoundedLine(rightX, rightY, x, y);
  return {static_cast<float>(Whole(tipX)), static_cast<float>(Whole(tipY))};
}

void clsNavaid::DrawAsShortILS() {
  Feather();
  // Printed where the outline ended: at the centre.
  target_->Print(TrimmedView(strCode));
}

void clsNavaid::DrawAsILS() {
  DrawTarget& t = *target_;
  const DrawPoint tip = Feather();
  // A localizer without glide slope is drawn split along its axis.
  if (!blnILSType) RoundedLine(sngCenterX, sngCenterY, tip.X, tip.Y);

  // The annotation starts at the tip; for courses of 180 and more it is set
  // back by its own width.
  const std::string_view code = TrimmedView(strCode);
  const bool setBack = sngCourse >= 180.0f;
  std::string text = blnILSType ? "ILS " : "Loc ";
  text += code;
  t.SetCurrentX(setBack ? tip.X - t.TextWidth(text) : tip.X);
  t.SetCurrentY(tip.Y);
  t.Print(text);

  const std::string_view runway = TrimmedView(strRwyID);
  if (runway.empty()) return;
  const std::string course = Format(sngCourse, "000");
  if (runway == "X") {
    text.assign(code);
  } else {
    text = "Rwy ";
    text += runway;
    text += ' ';
    text += code;
  }
  text += ' ';
  text += course;
  text += '\xB0';
  t.SetCurrentX(setBack ? tip.X - t.TextWidth(text) : tip.X);
  t.Print(text);
}

void clsNavaid::DrawAsStaticAC() {
  const double x = sngCenterX, y = sngCenterY;
  target_->SetDrawWidth(1);
  RoundedLine(x - 100, y - 100, x + 100, y - 100);
  RoundedLine(x + 100, y - 100, x + 100, y + 100);
  RoundedLine(x + 100, y + 100, x - 100, y + 100);
  RoundedLine(x - 100, y + 100, x - 100, y - 100);
}

}  // namespace orv
