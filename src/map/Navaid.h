// clsNavaid: the one object that knows the shape of every symbol on a chart.
//
// A caller fills in the properties one object needs (centre, colour, radius,
// texts, ...) and calls one DrawAs... method; the same instance is reused for
// every object of a pass, so each method reads only the properties it names
// and a caller sets just those. Sizes are in the target's user units.
//
// Some methods change properties of their own or of the surface, and callers
// rely on that: DrawAsIntersection, DrawAsNatrackWP and DrawAsVRP move
// sngCenterY 15 units up (the caller's label then sits above the symbol);
// DrawAsVorSquare sets intRadius to 180; DrawAsVRP and DrawAsActiveWP style
// the main map surface directly, whatever objTarget is; DrawAsRwy leaves
// FillStyle solid, FillColor the runway colour and, with a centre line,
// DrawStyle dashed. Every method leaves the DrawWidth it used.
//
// Points are rounded to whole units, half to even, before drawing, except the
// runway outline, whose corners are floored.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "map/Declutter.h"
#include "map/DrawTarget.h"
#include "map/Viewport.h"

namespace orv {

class clsNavaid {
public:
  // map is the main map surface (the one DrawAsVRP and DrawAsActiveWP style
  // directly) and the first objTarget; view gives the zoom label and the
  // projection of the ground items; declutter places the airport names.
  clsNavaid(DrawTarget& map, const ViewState& view, Declutter& declutter);

  // ------------------------------------------------------------ properties
  DrawTarget& objTarget() const { return *target_; }
  void objTarget(DrawTarget& target) { target_ = &target; }

  float sngCenterX = 0;
  float sngCenterY = 0;

  // Setting the colour also sets ForeColor of the target.
  Colour lngColor() const { return color_; }
  void lngColor(Colour c);
  // Setting it also sets FillStyle of the target.
  int16_t intFillStyle() const { return fillStyle_; }
  void intFillStyle(int16_t style);
  // Setting it also sets FontSize of the target.
  float sngFontSize() const { return fontSize_; }
  void sngFontSize(float size);

  int16_t intRadius = 0;
  float sngFrequency = 0;  // MHz or kHz, as the navaid has it
  float sngMagVar = 0;     // degrees, west negative
  std::string strCode;
  std::string strName;
  std::string strRwyID;
  bool blnILSType = false;  // an ILS; false for a localizer only
  float sngCourse = 0;      // true course or heading
  float sngILSGlideAngle = 0;
  float sngLength = 0;
  int16_t intWidth = 0;

  // Colours of the settings that symbols read: RWY= fills runways, TAXI=
  // draws taxiways and ground polygons.
  Colour RunwayColor = 0x3F3F3F;
  Colour TaxiColor = 0xDFDFDF;
  // The declutter kind of airport names.
  int AirportLabelKind = kLabelNavaid;

  // ------------------------------------------------------------ symbols
  // Ground polygons (records with Kind, Lat, Lon): "L" adds a point to the
  // open polygon; any other letter up to "M" closes it as one filled Polygon
  // in the taxi colour and, when within half a degree of the centre, opens
  // a new one at its point. At most 500 points a polygon. DrawStyle,
  // DrawWidth, FillStyle and FillColor are restored afterwards.
  template <typename Records>
  void DrawAsPolygon(const Records& polygons);
  // The same drawing from a list of the records that open a polygon (every
  // one with a Kind up to "M"), in file order: only the polygons near the
  // centre are walked, rather than the world's million ground points.
  struct PolygonHead {
    float Lat = 0, Lon = 0;
    uint32_t Rec = 0;   // the opening record
    uint32_t Next = 0;  // the next opening record, which closes this polygon; UINT32_MAX for none
  };
  template <typename Records>
  void DrawAsPolygon(const Records& polygons, std::span<const PolygonHead> heads);
  // Taxiway segments (Lat1, Lon1, Lat2, Lon2) within half a degree of the
  // centre, in the taxi colour, wider at the closer zoom steps; at label 3
  // and below a second, narrower pass in the inverted colour marks the
  // centre line. DrawWidth is restored.
  template <typename Records>
  void DrawAsTaxiway(const Records& taxiways);
  // Taxiway names (Name) at the middle of their segments, in "Tahoma" 9.
  template <typename Records>
  void DrawAsTaxiwayDesignator(const Records& taxiways);

  void DrawAsIntersection();
  void DrawAsNatrackWP();
  void DrawAsVRP();
  void DrawAsActiveWP();
  void DrawAsMarker();
  void DrawAsAirportCircle();
  void DrawAsAirport();
  void DrawAsRwy();
  void PrintFrequency();
  void DrawAsVOR(std::string_view vor);
  void DrawAsVorSymbol(std::string_view vor);
  void DrawAsVorSquare();
  void DrawAsNDBSymbol();
  void DrawAsNDB();
  void DrawAsShortILS();
  void DrawAsILS();
  void DrawAsStaticAC();

private:
  int32_t Label() const { return CurrentLabel(*view_); }
  // A line between two points rounded half to even.
  void RoundedLine(double x1, double y1, double x2, double y2);
  void Dot();
  void Triangle();
  void VorShape(std::string_view vor);
  // The feather shared by both ILS forms; returns the axis tip.
  DrawPoint Feather();
  bool NearCentre(double lat, double lon) const;
  int16_t TaxiwayWidth() const;

  DrawTarget* map_;
  DrawTarget* target_;
  const ViewState* view_;
  Declutter* declutter_;
  Colour color_ = 0;
  int16_t fillStyle_ = kFillTransparent;
  float fontSize_ = kDefaultFontSize;
  std::array<DrawPoint, 500> polygon_{};
};

// ------------------------------------------------------------ ground items

namespace navaid_detail {

// The first letter of a record's one-character text, whether the reader
// keeps it as a char, a fixed text or a string.
template <typename T>
char FirstLetter(const T& kind) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<char>(kind);
  } else if constexpr (requires { kind.View(); }) {
    std::string_view v = kind.View();
    return v.empty() ? '\0' : v[0];
  } else {
    std::string_view v(kind);
    return v.empty() ? '\0' : v[0];
  }
}
template <std::size_t N>
char FirstLetter(const char (&kind)[N]) {
  return N > 0 ? kind[0] : '\0';
}

// A record's name as trimmed text.
template <typename T>
std::string_view NameText(const T& name) {
  if constexpr (requires { name.Trimmed(); }) {
    return name.Trimmed();
  } else {
    std::string_view v(name);
    std::size_t b = v.find_first_not_of(' ');
    if (b == std::string_view::npos) return {};
    return v.substr(b, v.find_last_not_of(' ') - b + 1);
  }
}

// Pavement is filled solid in one colour; the target's pen and fill come
// back as they were when the drawing ends.
struct SolidFill {
  DrawTarget& t;
  const int16_t style = t.DrawStyle(), width = t.DrawWidth(), fillStyle = t.FillStyle();
  const Colour fill = t.FillColor();
  SolidFill(DrawTarget& target, Colour colour) : t(target) {
    t.SetForeColor(colour);
    t.SetFillColor(colour);
    t.SetDrawWidth(1);
    t.SetDrawStyle(kDrawStyleSolid);
    t.SetFillStyle(kFillSolid);
  }
  ~SolidFill() {
    t.SetDrawStyle(style);
    t.SetDrawWidth(width);
    t.SetFillStyle(fillStyle);
    t.SetFillColor(fill);
  }
};

}  // namespace navaid_detail

template <typename Records>
void clsNavaid::DrawAsPolygon(const Records& polygons) {
  DrawTarget& t = *target_;
  const navaid_detail::SolidFill pen(t, TaxiColor);

  bool open = false;
  std::size_t count = 0;
  for (const auto& rec : polygons) {
    const char kind = navaid_detail::FirstLetter(rec.Kind);
    if (kind == 'L') {
      if (open && count < polygon_.size())
        polygon_[count++] = {static_cast<float>(MapXFromLon(*view_, rec.Lon, rec.Lat)),
                             static_cast<float>(MapYFromLat(*view_, rec.Lat))};
    } else if (kind != '\0' && static_cast<unsigned char>(kind) <= 'M') {
      if (open && count >= 2) t.Polygon(polygon_.data(), count);
      open = false;
      count = 0;
      if (NearCentre(rec.Lat, rec.Lon)) {
        open = true;
        polygon_[count++] = {static_cast<float>(MapXFromLon(*view_, rec.Lon, rec.Lat)),
                             static_cast<float>(MapYFromLat(*view_, rec.Lat))};
      }
    }
  }

}

template <typename Records>
void clsNavaid::DrawAsPolygon(const Records& polygons, std::span<const PolygonHead> heads) {
  DrawTarget& t = *target_;
  const navaid_detail::SolidFill pen(t, TaxiColor);

  // A polygon is drawn when the record that follows it closes it: one
  // without a next opening record stays open and is never drawn.
  for (const PolygonHead& head : heads) {
    if (head.Next == UINT32_MAX || head.Next > polygons.size()) continue;
    if (!NearCentre(head.Lat, head.Lon)) continue;
    std::size_t count = 0;
    polygon_[count++] = {static_cast<float>(MapXFromLon(*view_, head.Lon, head.Lat)),
                         static_cast<float>(MapYFromLat(*view_, head.Lat))};
    for (std::size_t i = head.Rec + 1; i < head.Next; ++i) {
      const auto& rec = polygons[i];
      if (navaid_detail::FirstLetter(rec.Kind) == 'L' && count < polygon_.size())
        polygon_[count++] = {static_cast<float>(MapXFromLon(*view_, rec.Lon, rec.Lat)),
                             static_cast<float>(MapYFromLat(*view_, rec.Lat))};
    }
    if (count >= 2) t.Polygon(polygon_.data(), count);
  }

}

template <typename Records>
void clsNavaid::DrawAsTaxiway(const Records& taxiways) {
  DrawTarget& t = *target_;
  t.SetForeColor(TaxiColor);
  const int16_t savedWidth = t.DrawWidth();
  t.SetDrawWidth(TaxiwayWidth());
  auto walk = [&] {
    for (const auto& rec : taxiways) {
      if (!NearCentre(rec.Lat1, rec.Lon1) || !NearCentre(rec.Lat2, rec.Lon2)) continue;
      t.Line(MapXFromLon(*view_, rec.Lon1, rec.Lat1), MapYFromLat(*view_, rec.Lat1),
             MapXFromLon(*view_, rec.Lon2, rec.Lat2), MapYFromLat(*view_, rec.Lat2));
    }
  };
  walk();
  if (Label() <= 3) {
    t.SetForeColor(0xFFFFFF - TaxiColor);
    t.SetDrawWidth(2);
    walk();
  }
  t.SetDrawWidth(savedWidth);
}

template <typename Records>
void clsNavaid::DrawAsTaxiwayDesignator(const Records& taxiways) {
  DrawTarget& t = *target_;
  const int16_t savedWidth = t.DrawWidth();
  const float savedSize = t.FontSize();
  const std::string savedFont = t.FontName();
  t.SetFontName("Tahoma");
  t.SetFontSize(9);
  t.SetDrawWidth(TaxiwayWidth());
  for (const auto& rec : taxiways) {
    if (!NearCentre(rec.Lat1, rec.Lon1) || !NearCentre(rec.Lat2, rec.Lon2)) continue;
    std::string_view name = navaid_detail::NameText(rec.Name);
    if (name.empty()) continue;
    const double x1 = MapXFromLon(*view_, rec.Lon1, rec.Lat1);
    const double y1 = MapYFromLat(*view_, rec.Lat1);
    const double x2 = MapXFromLon(*view_, rec.Lon2, rec.Lat2);
    const double y2 = MapYFromLat(*view_, rec.Lat2);
    t.SetCurrentX((x1 + x2) / 2);
    t.SetCurrentY((y1 + y2) / 2);
    t.Print(name);
  }
  t.SetDrawWidth(savedWidth);
  t.SetFontSize(savedSize);
  t.SetFontName(savedFont);
}

}  // namespace orv
