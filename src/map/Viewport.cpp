#include "map/Viewport.h"

#include <algorithm>
#include <cmath>

#include "core/Runtime.h"
#include "map/DrawTarget.h"

namespace orv {

namespace {

// Whole-degree floor of a coordinate for the variation grid; a value that is
// not a number (a broken simulator reading) looks up 0.
int WholeDegree(double value) {
  if (!std::isfinite(value)) return 0;
  return static_cast<int>(std::floor(std::clamp(value, -1000.0, 1000.0)));
}

// Scaling of a zoom step at the current window size. Never below 1, so that a
// window squeezed to nothing cannot make the projection divide by zero.
int32_t ScalingOf(const ViewState& v, int index) {
  int32_t s = CLng(static_cast<double>(v.ZoomFactor) * ZoomTable[static_cast<std::size_t>(index)].Scale);
  return s < 1 ? 1 : s;
}

bool OffSurface(double x, double y, double top, double width, double height) {
  return x <= 0 || y <= top || x > width || y > height;
}

}  // namespace

// ------------------------------------------------------------ projection

float MapLatFromY(const ViewState& v, double y) {
  return CSng(static_cast<double>(v.CntrLat) - (y - v.ScaleHeight / 2) / v.Scaling);
}

float MapLonFromX(const ViewState& v, double x, double lat) {
  double ref = v.RoundWorld ? lat : static_cast<double>(v.CntrLat);
  float lon = CSng(static_cast<double>(v.CntrLon) - (v.ScaleWidth / 2 - x) / (CosLat(ref) * v.Scaling));
  // One step only: near a pole in Round World the value stays far out of
  // range and the bounds simply become wide.
  if (lon > 180.0f) {
    lon -= 360.0f;
  } else if (lon < -180.0f) {
    lon += 360.0f;
  }
  return lon;
}

float ClampCenterLat(const ViewState& v, float lat) {
  float result = lat;
  const double halfSpan = v.ScaleHeight / v.Scaling / 2;
  if (MapLatFromY(v, 0) > 90.0f) result = CSng(90.0 - halfSpan);
  if (MapLatFromY(v, v.ScaleHeight) < -90.0f) result = CSng(halfSpan - 90.0);
  return result;
}

void ComputeBounds(ViewState& v) {
  v.MapNorth = CSng(std::min(static_cast<double>(MapLatFromY(v, 0)) + 0.5, 90.0));
  v.MapSouth = CSng(std::max(static_cast<double>(MapLatFromY(v, v.ScaleHeight)) - 0.5, -90.0));
  v.MapWest = CSng(static_cast<double>(MapLonFromX(v, 0, v.MapNorth)) - 0.5);
  v.MapEast = CSng(static_cast<double>(MapLonFromX(v, v.ScaleWidth, v.MapSouth)) + 0.5);
  v.MapWraps = v.MapWest >= 0.0f && v.MapEast < 0.0f;
  v.LatSpan = CSng(v.ScaleHeight / v.Scaling + 1.0);
  v.LonSpan = CSng(v.ScaleWidth / v.Scaling + 3.0);
}

void SyncSurface(ViewState& v, const DrawTarget& map) {
  v.ScaleWidth = map.ScaleWidth();
  v.ScaleHeight = map.ScaleHeight();
}

void BeginRenderPass(ViewState& v, const DrawTarget& map) {
  SyncSurface(v, map);
  v.CntrLat = ClampCenterLat(v, v.CntrLat);
  ComputeBounds(v);
}

// ------------------------------------------------------------ zoom

int32_t CurrentLabel(const ViewState& v) {
  int i = std::clamp<int>(v.ZoomIndex, 0, static_cast<int>(ZoomTable.size()) - 1);
  return ZoomTable[static_cast<std::size_t>(i)].Nm;
}

std::string RangeText(int32_t nm) { return Format(nm, "####") + "NM"; }

void SetZoom(ViewState& v, int index, bool clearAutozoom, ViewHost& host, Ui& ui) {
  // Near the pole, or with the whole view south of the equator, the two
  // widest steps would show more than the projection can: fall back to 19.
  // The scale itself stays as it was.
  if ((v.MapNorth > 80.0f || v.MapNorth < 0.0f) && index >= 20) {
    v.ZoomIndex = 19;
    ui.MsgBox("Minimum zoom!");
    host.FocusMap();
    host.DrawMap();
    return;
  }
  if (index < 0) {
    ui.MsgBox("Maximum zoom!");
    host.FocusMap();
    return;
  }
  if (index > kLastSelectableZoom) {
    ui.MsgBox("Minimum zoom!");
    host.FocusMap();
    return;
  }
  host.FocusMap();
  v.ZoomIndex = static_cast<int16_t>(index);
  v.Scaling = ScalingOf(v, index);
  host.SetMapStatus(kStatusRange, RangeText(ZoomTable[static_cast<std::size_t>(index)].Nm));
  host.RepositionMeasure();
  if (clearAutozoom) v.Autozoom = false;
  if (v.MapReady) host.DrawMap();
  ui.SetCaption("OVRMap", kAppTitle);
}

int ZoomIndexOfMenu(std::string_view menuName) {
  struct Entry {
    std::string_view name;
    int index;
  };
  static constexpr Entry kMenus[] = {
      {"Menu3NM", 2},    {"Menu10NM", 4},   {"Menu30NM", 6},   {"Menu50NM", 7},    {"Menu100NM", 9},
      {"Menu200NM", 11}, {"Menu400NM", 13}, {"Menu800NM", 17}, {"Menu2000NM", 19},
  };
  for (const Entry& e : kMenus)
    if (e.name == menuName) return e.index;
  return -1;
}

bool ZoomKey(ViewState& v, int keyCode, ViewHost& host, Ui& ui) {
  switch (keyCode) {
    case 34:   // Page Down, also sent by cmdZoom
    case 107:  // numeric plus
    case 187:  // main keyboard plus
      SetZoom(v, v.ZoomIndex - 1, true, host, ui);
      return true;
    case 33:   // Page Up, also sent by cmdUnzoom
    case 109:  // numeric minus
    case 189:  // main keyboard minus
      SetZoom(v, v.ZoomIndex + 1, true, host, ui);
      return true;
    default:
      return false;
  }
}

void WheelZoom(ViewState& v, int delta, ViewHost& host, Ui& ui) {
  if (delta >= 0) {
    if (v.ZoomIndex >= 1) SetZoom(v, v.ZoomIndex - 1, true, host, ui);
  } else if (v.ZoomIndex < 20) {
    SetZoom(v, v.ZoomIndex + 1, true, host, ui);
  }
}

void LoadView(ViewState& v, float lat, float lon, int zoomIndex, ViewHost& host) {
  v.CurrentLat = lat;
  v.CurrentLon = lon;
  v.CntrLat = lat;
  v.CntrLon = lon;
  v.MagVarLat = lat;
  v.MagVarLon = lon;
  v.FirstMagVarLat = WholeDegree(lat);
  v.FirstMagVarLon = WholeDegree(lon);
  // The step comes from the settings file: anything outside the selectable
  // steps is treated as a missing key.
  if (zoomIndex < 0 || zoomIndex > kLastSelectableZoom) zoomIndex = kDefaultZoomIndex;
  v.ZoomIndex = static_cast<int16_t>(zoomIndex);
  v.Scaling = ZoomTable[static_cast<std::size_t>(zoomIndex)].Scale;
  host.SetMapStatus(kStatusRange, RangeText(ZoomTable[static_cast<std::size_t>(zoomIndex)].Nm));
}

void ApplyWindowZoomFactor(ViewState& v, double windowHeight) {
  // A minimised window reports no height; the scale waits for the restore.
  if (!(windowHeight > 0) || !std::isfinite(windowHeight)) return;
  v.ZoomFactor = CSng(windowHeight / 8535.0);
  v.Scaling = ScalingOf(v, v.ZoomIndex);
}

void ResizeView(ViewState& v, double windowHeight, const DrawTarget& map, ViewHost& host, Ui& ui) {
  // A minimised window reports no height; the scale waits for the restore.
  if (!(windowHeight > 0) || !std::isfinite(windowHeight)) return;
  v.ZoomFactor = CSng(windowHeight / 8535.0);
  SyncSurface(v, map);
  SetZoom(v, v.ZoomIndex, true, host, ui);
}

void AutoZoomTick(ViewState& v, bool onGround, ViewHost& host, Ui& ui) {
  if (!v.Autozoom) return;
  int32_t label = CurrentLabel(v);
  if (onGround) {
    if (label != 2) SetZoom(v, 1, false, host, ui);
  } else if (label != 50) {
    SetZoom(v, 7, false, host, ui);
  }
}

// ------------------------------------------------------------ moving the view

void CenterOnCurrent(ViewState& v, ViewHost& host) {
  v.CntrLat = v.CurrentLat;
  v.CntrLon = v.CurrentLon;
  host.DrawMap();
}

void ToggleRoundWorld(ViewState& v, ViewHost& host) {
  v.RoundWorld = !v.RoundWorld;
  host.DrawMap();
  host.FocusMap();
}

void ReleaseBand(ViewState& v, double x1, double y1, double x2, double y2, ViewHost& host,
                 const ViewGeodesy& geo) {
  v.CntrLat = MapLatFromY(v, y1 + (y2 - y1) / 2);
  v.CntrLon = MapLonFromX(v, x1 + (x2 - x1) / 2, v.CntrLat);
  v.CurrentLat = v.CntrLat;
  v.CurrentLon = v.CntrLon;
  if (v.CntrLat < -90.0f || v.CntrLat > 90.0f) return;

  if (std::fabs(y2 - y1) > 200) {
    float top = MapLatFromY(v, y1);
    float bottom = MapLatFromY(v, y2);
    int32_t span = CLng(std::fabs(top - bottom) * 60.0f);
    // The nearest label; a tie keeps the smaller one.
    int best = 0;
    int64_t bestDiff = 20000;
    for (int i = 0; i <= kLastSelectableZoom; ++i) {
      int64_t diff = std::llabs(static_cast<int64_t>(ZoomTable[static_cast<std::size_t>(i)].Nm) - span);
      if (diff < bestDiff) {
        bestDiff = diff;
        best = i;
      }
    }
    v.ZoomIndex = static_cast<int16_t>(best);
    v.Scaling = ScalingOf(v, best);
    host.SetMapStatus(kStatusRange, RangeText(ZoomTable[static_cast<std::size_t>(best)].Nm));
  }

  host.FocusMap();
  host.DrawMap();

  if (std::fabs(v.CurrentLat - v.MagVarLat) >= 1.0f || std::fabs(v.CurrentLon - v.MagVarLon) >= 1.0f) {
    double variation = geo.MagVarAt(WholeDegree(v.CurrentLat), WholeDegree(v.CurrentLon));
    host.SetMapStatus(kStatusMagVar, MagVarText(variation, geo));
    v.MagVarLat = v.CurrentLat;
    v.MagVarLon = v.CurrentLon;
  }
  host.SetMapStatus(kStatusPosition, PositionText(v, v.CntrLat, v.CntrLon, geo));
}

void FollowAircraft(ViewState& v, const FollowInput& in, ViewHost& host, const ViewGeodesy& geo) {
  if (in.Minimised || !v.AircraftOnMap) return;

  const float lookAhead = static_cast<float>(CurrentLabel(v) / 8.0);
  LatLon ahead = geo.Destination(v.CurrentLat, v.CurrentLon, in.TrueTrack, lookAhead);
  const double x1 = MapXFromLon(v, ahead.Lon, ahead.Lat);
  const double y1 = MapYFromLat(v, ahead.Lat);

  if (OffSurface(in.AircraftX, in.AircraftY, in.PanelTop, in.MapWidth, in.MapHeight)) {
    v.CntrLat = v.CurrentLat;
    v.CntrLon = v.CurrentLon;
    host.DrawMap();
  } else if (OffSurface(x1, y1, in.PanelTop, in.MapWidth, in.MapHeight)) {
    // Jump so that the aircraft ends as far behind the centre as it was ahead.
    double d = geo.Distance(v.CurrentLat, v.CurrentLon, v.CntrLat, v.CntrLon);
    LatLon centre = geo.Destination(v.CurrentLat, v.CurrentLon, in.TrueTrack, CSng(d));
    v.CntrLat = centre.Lat;
    v.CntrLon = centre.Lon;
    host.DrawMap();
  }

  double variation = geo.MagVarAt(WholeDegree(v.CurrentLat), WholeDegree(v.CurrentLon));
  host.SetMapStatus(kStatusMagVar, MagVarText(variation, geo));
  host.SetMapStatus(kStatusPosition, PositionText(v, v.CurrentLat, v.CurrentLon, geo));
}

// ------------------------------------------------------------ texts

std::string PositionText(const ViewState& v, float lat, float lon, const ViewGeodesy& geo) {
  if (v.DecimalCoordinates) return Format(lat, "00.0000") + " / " + Format(lon, "000.0000");
  return geo.LatText(lat, v.DecimalSeconds) + " - " + geo.LonText(lon, v.DecimalSeconds);
}

std::string MagVarText(double variation, const ViewGeodesy& geo) { return "MagVar: " + geo.VarText(variation); }

FocusAction FocusMapAction(bool foundByFs98Class, bool connected, bool mouseZoom) {
  if (foundByFs98Class) return FocusAction::FocusSurface;
  if (connected) return mouseZoom ? FocusAction::Nothing : FocusAction::ActivateSimulator;
  return FocusAction::FocusSurface;
}

}  // namespace orv
