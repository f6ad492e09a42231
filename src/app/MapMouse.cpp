#include "app/MapMouse.h"

#include <algorithm>
#include <cmath>

#include "app/MainWindowController.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "map/DrawTarget.h"
#include "map/MapLayer.h"

namespace orv {

namespace {

// The most points of one outline drawn around a zone under the pointer.
constexpr std::size_t kMaxOutlinePoints = 5000;

}  // namespace

bool MapMouse::Connected() const { return s_.Sim.Connected(); }

std::string MapMouse::DistanceCourseText(double distance, double trueCourse, float refLat, float refLon) const {
  const double variation = geo_.MagVarAt(static_cast<int>(std::floor(refLat)), static_cast<int>(std::floor(refLon)));
  return Format(distance, "###0.0") + " NM / " + Format(Wrap360(trueCourse - variation), "0") + kDegreeSign;
}

void MapMouse::Move(double x, double y) {
  if (s_.Core.Config.MZoom != 0) view_.FocusSurface();
  MouseX = CLng(x);
  MouseY = CLng(y);
  // The layer toggles pop up at the left edge of the map.
  const bool panel = x < 500 && y < 13500;
  if (panel != s_.Window.ToggleBar) {
    s_.Window.ToggleBar = panel;
    view_.ShowTogglePanel(panel);
  }
  CursorStatus(x, y);
  if (BandActive) {
    DrawBand();  // exclusive or: the same box again takes the old one off
    BandX2 = static_cast<float>(x);
    BandY2 = static_cast<float>(y);
    DrawBand();
    if (s_.View.Autozoom) {
      s_.View.Autozoom = false;  // any drag ends autozoom
      view_.SyncChecks();
    }
  }
  if (measureDrag_) {
    measureEndLat_ = MapLatFromY(s_.View, y);
    measureEndLon_ = MapLonFromX(s_.View, x, measureEndLat_);
    RepositionMeasure();
  }
}

void MapMouse::CursorStatus(double x, double y) {
  const ViewState& v = s_.View;
  const float lat = MapLatFromY(v, y);
  const float lon = MapLonFromX(v, x, lat);
  if (StatusMode == 0) {
    view_.SetMapStatusColour(kStatusCursor, 0);
    view_.SetMapStatus(kStatusCursor, PositionText(v, lat, lon, geo_));
    return;
  }
  const bool connected = Connected();
  const float refLat = connected ? v.CurrentLat : v.CntrLat;
  const float refLon = connected ? v.CurrentLon : v.CntrLon;
  const double distance = GcDistance(lat, lon, refLat, refLon);
  double course = GcCourse(lat, lon, refLat, refLon);
  if (StatusMode == 2) course += 180;
  view_.SetMapStatusColour(kStatusCursor, kStatusBlue);
  view_.SetMapStatus(kStatusCursor, (StatusMode == 1 ? "Inbound:  " : "Outbound:  ") +
                                        DistanceCourseText(distance, course, refLat, refLon));
}

void MapMouse::DrawBand() {
  const Colour colour = s_.Core.Config.Zoom;
  const double x1 = BandX1, y1 = BandY1, x2 = BandX2, y2 = BandY2;
  view_.DrawOnMap([&](DrawTarget& t) {
    t.SetForeColor(colour);
    t.SetDrawMode(kDrawModeXor);
    t.SetDrawStyle(kDrawStyleDot);
    t.SetDrawWidth(1);
    t.SetFillStyle(kFillTransparent);
    t.Line(x1, y1, x2, y2, LineShape::Box);
  });
}

void MapMouse::Press(int button, double x, double y) {
  if (button != 1) {
    view_.DrawOnMap([](DrawTarget& t) {
      t.SetDrawMode(kDrawModeCopy);
      t.SetDrawStyle(kDrawStyleSolid);
    });
    return;
  }
  const ViewState& v = s_.View;
  if (!MeasureOn) {
    BandActive = true;
    BandX1 = BandX2 = static_cast<float>(x);
    BandY1 = BandY2 = static_cast<float>(y);
    DrawBand();
    return;
  }
  const float lat = MapLatFromY(v, y);
  const float lon = MapLonFromX(v, x, lat);
  if (!Connected()) {
    // The line runs from here and follows the cursor until the release.
    MeasureLat = measureEndLat_ = lat;
    MeasureLon = measureEndLon_ = lon;
    view_.SetMeasureLine(true, x, y, x, y);
    view_.SetMeasureLabel(false, x, y, {});
    measureDrag_ = true;
    return;
  }
  // Linked: the measure runs from the aircraft to the click, with the time
  // at the present ground speed.
  MeasureLat = v.CurrentLat;
  MeasureLon = v.CurrentLon;
  const double distance = GcDistance(v.CurrentLat, v.CurrentLon, lat, lon);
  const double course = GcCourse(v.CurrentLat, v.CurrentLon, lat, lon);
  const int32_t speed = s_.Sim.Live->Snap.GroundSpeed;
  MeasureText = speed >= 1 ? MinutesToHours(distance * 60 / speed) : "unknown";
  measureLine_ = DistanceCourseText(distance, course, v.CurrentLat, v.CurrentLon);
  measureX_ = x;
  measureY_ = y;
  measurePrinted_ = true;
  view_.DrawOnMap([&](DrawTarget& t) { DrawMeasurePrint(t); });
}

void MapMouse::DrawMeasurePrint(DrawTarget& t) {
  t.SetDrawMode(kDrawModeCopy);
  t.SetForeColor(s_.Core.Config.Measure);
  t.SetCurrentX(measureX_);
  t.SetCurrentY(measureY_);
  t.Print(measureLine_);
  t.SetCurrentX(measureX_);
  t.SetCurrentY(measureY_ + kMeasureLineStep);
  t.Print(MeasureText);
}

bool MapMouse::Release(int button, double x, double y, double& x1, double& y1, double& x2, double& y2) {
  if (button != 1) return false;
  if (measureDrag_) {
    measureDrag_ = false;
    return false;
  }
  if (!BandActive) return false;
  DrawBand();
  BandActive = false;
  view_.DrawOnMap([](DrawTarget& t) {
    t.SetDrawMode(kDrawModeCopy);
    t.SetDrawStyle(kDrawStyleDot);
  });
  x1 = BandX1;
  y1 = BandY1;
  x2 = x;
  y2 = y;
  return true;
}

void MapMouse::Tick() {
  const Settings& cfg = s_.Core.Config;
  HoverLineHeight = cfg.FontSize != 0 ? 200 : 170;
  if (MouseX != LastX || MouseY != LastY) {
    // Linked, the live tick's restore takes the box off at its next pass.
    if (!Connected() && HoverShown) view_.RestoreMapPicture();
    HoverShown = false;
    LastX = MouseX;
    LastY = MouseY;
    computed_ = false;
    HoverLineCount = 0;
    find_.Zones.clear();
    find_.Sector = -1;
    return;
  }
  if (computed_) return;
  computed_ = true;
  // The band and the measure own the surface while they are dragged.
  if (BandActive || measureDrag_) return;
  HoverWidth = 100;
  HoverWalk(s_, traffic_ ? traffic_() : HoverTraffic{}, MouseX, MouseY, find_, s_.Highlight);
  HoverLineCount = static_cast<int32_t>(find_.Lines.size());
  if (HoverLineCount == 0) return;
  view_.DrawOnMap([&](DrawTarget& t) { DrawBox(t); });
  HoverShown = true;
}

void MapMouse::DrawBox(DrawTarget& t) {
  const Settings& cfg = s_.Core.Config;
  const ViewState& v = s_.View;
  const Projector proj(v);
  t.SetDrawMode(kDrawModeCopy);
  t.SetDrawStyle(kDrawStyleSolid);
  t.SetDrawWidth(1);
  t.SetFillStyle(kFillTransparent);

  // The zones under the pointer, outlined.
  t.SetForeColor(cfg.Hilite);
  for (int32_t zone : find_.Zones) {
    outline_.clear();
    for (const ShapePoint& p : s_.Db.Shapes.PointsOf(s_.Db.Shapes.Airspaces[static_cast<std::size_t>(zone)])) {
      if (outline_.size() == kMaxOutlinePoints) break;
      outline_.push_back({static_cast<float>(proj.X(p.Lon, p.Lat)), static_cast<float>(proj.Y(p.Lat))});
    }
    t.Polyline(outline_);
  }
  const OnlineSession& online = s_.Online;
  const std::vector<OnlineSector>& sectors =
      online.Data.Network == OnlineNetwork::Ivao ? online.IvaoSectors : online.VatsimSectors;
  if (find_.Sector >= 0 && static_cast<std::size_t>(find_.Sector) < sectors.size()) {
    outline_.clear();
    for (const auto& [lat, lon] : sectors[static_cast<std::size_t>(find_.Sector)].Points)
      outline_.push_back({static_cast<float>(proj.X(lon, lat)), static_cast<float>(proj.Y(lat))});
    t.Polygon(outline_);
  }

  // The box: right of and below the pointer, left of it past the middle of
  // the surface, above it past the middle.
  const std::string savedFont = t.FontName();
  const float savedSize = t.FontSize();
  t.SetFontName(kMapLabelFontName);
  t.SetFontSize(LabelFontSize(cfg));
  const std::vector<std::string>& lines = find_.Lines;
  for (int32_t i = 0; i < HoverLineCount; ++i)
    HoverWidth = std::max(HoverWidth, static_cast<int32_t>(std::ceil(t.TextWidth(lines[static_cast<std::size_t>(i)]))));
  const double width = HoverWidth + 2 * kHoverBoxPad;
  const double height = static_cast<double>(HoverLineCount) * HoverLineHeight + 2 * kHoverBoxPad;
  const double left = MouseX > v.ScaleWidth / 2 ? MouseX - kHoverBoxGap - width : MouseX + kHoverBoxGap;
  const double top = MouseY > v.ScaleHeight / 2 ? MouseY - kHoverBoxGap - height : MouseY + kHoverBoxGap;
  t.SetForeColor(cfg.Ap);
  t.SetFillColor(cfg.Map);
  t.SetFillStyle(kFillSolid);
  t.Line(left, top, left + width, top + height, LineShape::Box);
  t.SetFillStyle(kFillTransparent);
  for (int32_t i = 0; i < HoverLineCount; ++i) {
    t.SetCurrentX(left + kHoverBoxPad);
    t.SetCurrentY(top + kHoverBoxPad + static_cast<double>(i) * HoverLineHeight);
    t.Print(lines[static_cast<std::size_t>(i)]);
  }
  t.SetFontName(savedFont);
  t.SetFontSize(savedSize);
}

void MapMouse::RedrawOverlays() {
  if (!HoverShown && !measurePrinted_) return;
  view_.DrawOnMap([&](DrawTarget& t) {
    if (HoverShown) DrawBox(t);
    if (measurePrinted_) DrawMeasurePrint(t);
  });
}

void MapMouse::StatusClick(int field) {
  static constexpr const char* kModes[] = {"Coordinates", "Inbound", "Outbound"};
  if (field == kStatusCursor) {
    StatusMode = static_cast<int16_t>((StatusMode + 1) % 3);
    view_.SetMapStatus(kStatusCursor, kModes[StatusMode]);
  } else if (field == kStatusPosition) {
    ViewState& v = s_.View;
    v.DecimalCoordinates = !v.DecimalCoordinates;
    const bool connected = Connected();
    view_.SetMapStatus(kStatusPosition, PositionText(v, connected ? v.CurrentLat : v.CntrLat,
                                                     connected ? v.CurrentLon : v.CntrLon, geo_));
  }
}

void MapMouse::SetMeasure(bool on) {
  MeasureOn = on;
  if (on) return;
  measureDrag_ = false;
  measurePrinted_ = false;
  view_.SetMeasureLabel(false, 0, 0, {});
  view_.SetMeasureLine(false, 0, 0, 0, 0);
  view_.RestoreMapPicture();
  view_.FocusMap();
}

void MapMouse::Escape() {
  if (BandActive) {
    DrawBand();
    BandActive = false;
    view_.DrawOnMap([](DrawTarget& t) { t.SetDrawMode(kDrawModeCopy); });
  }
  if (MeasureOn) {
    SetMeasure(false);
    view_.SetMeasureButton(false);
  }
}

void MapMouse::RepositionMeasure() {
  if (MeasureOn && !measurePrinted_ && (measureDrag_ || MeasureLat != measureEndLat_ || MeasureLon != measureEndLon_)) {
    const ViewState& v = s_.View;
    const double x1 = MapXFromLon(v, MeasureLon, MeasureLat), y1 = MapYFromLat(v, MeasureLat);
    const double x2 = MapXFromLon(v, measureEndLon_, measureEndLat_), y2 = MapYFromLat(v, measureEndLat_);
    view_.SetMeasureLine(true, x1, y1, x2, y2);
    const double distance = GcDistance(MeasureLat, MeasureLon, measureEndLat_, measureEndLon_);
    const double course = GcCourse(MeasureLat, MeasureLon, measureEndLat_, measureEndLon_);
    view_.SetMeasureLabel(true, x2, y2, DistanceCourseText(distance, course, MeasureLat, MeasureLon));
  }
}

}  // namespace orv
