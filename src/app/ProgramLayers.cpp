#include "app/ProgramLayers.h"

#include "online/OnlineDraw.h"
#include "map/ZoneWatch.h"
#include "simlink/LiveDraw.h"
#include "simlink/Tcas.h"

#include <array>

namespace orv {

Colour LiveAircraftColour(const ProgramState& s) {
  const Settings& c = s.Core.Config;
  if (!s.Layers.MenuViolation || !s.Layers.btnCtrz || !s.Sim.Connected()) return c.MovAc;
  std::vector<int32_t> zones;
  ZonesHolding(s.Db.Shapes, s.Sim.Live->Snap.Latitude, s.Sim.Live->Snap.Longitude, zones);
  return zones.empty() ? c.MovAc : c.AcInCtrz;
}

ProgramLayers::ProgramLayers(ProgramState& s, const Clock& clock) : s_(s), clock_(clock) {
  for (Layer* l : {&firs_, &tracks_, &weather_, &online_, &traffic_, &aircraft_, &procedure_})
    s_.Registry.Add(l->Place, *l);
}

ProgramLayers::~ProgramLayers() {
  for (Layer* l : {&firs_, &tracks_, &weather_, &online_, &traffic_, &aircraft_, &procedure_}) s_.Registry.Remove(*l);
}

void ProgramLayers::Layer::Draw(const LayerContext& context, DrawTarget& target) {
  Owner.DrawAt(Place, context, target);
}

void ProgramLayers::DrawAt(MapLayerPlace place, const LayerContext& c, DrawTarget& t) {
  const OnlineSession& o = s_.Online;
  switch (place) {
    case MapLayerPlace::OnlineFirs:
      if (o.ShowControllers && o.Data.Network != OnlineNetwork::None)
        DrawOnlineSectors(t, c.View, o.Data.Network == OnlineNetwork::Ivao ? o.IvaoSectors : o.VatsimSectors,
                          OnlineStyleFromSettings(c.Colours));
      break;
    case MapLayerPlace::Tracks: {
      // Validity is judged against the simulator's UTC when linked, else the
      // computer's.
      const DateTime utc = clock_.NowUtc();
      const int32_t hhmm = s_.Sim.Connected() ? static_cast<int32_t>(s_.Sim.Live->Snap.UtcMinutes / 60) * 100 +
                                                    static_cast<int32_t>(s_.Sim.Live->Snap.UtcMinutes) % 60
                                              : utc.hour * 100 + utc.minute;
      if (o.ShowNat) DrawTracks(t, c.View, o.NatTracks, c.Colours.Jet, c.Label, hhmm);
      if (o.ShowPacific) DrawTracks(t, c.View, o.PacificTracks, c.Colours.Jet, c.Label, hhmm);
      break;
    }
    case MapLayerPlace::Weather:
      if (o.ShowWeather) DrawWeatherSymbols(t, c.View, o.Metar, c.Label);
      break;
    case MapLayerPlace::Online: {
      if (o.Data.Network == OnlineNetwork::None) break;
      const OnlineDrawStyle style = OnlineStyleFromSettings(c.Colours);
      if (o.ShowControllers) DrawOnlineStations(t, c.View, o.Data, style, c.Label);
      if (o.ShowPilots) DrawOnlinePilots(t, c.View, o.Data, style, c.Label);
      break;
    }
    case MapLayerPlace::Aircraft:
      if (s_.Sim.Connected() && s_.Sim.Live->State().TrackingActive) {
        LiveOverlay overlay = LiveOverlayOf(*s_.Sim.Live);
        overlay.AircraftColour = LiveAircraftColour(s_);
        overlay.RouteColour = c.Colours.Route;
        overlay.WindColour = c.Colours.Wind;
        DrawLiveOverlay(t, c.View, s_.Plan, overlay);
      } else if (s_.Trace.ReplayActive && !s_.Trace.Trace().Samples.empty()) {
        // Flight Analysis: the aircraft at the sample shown.
        const SimSnapshot& r = s_.Trace.ReplaySnap;
        DrawLiveAircraft(t, c.View, r.Latitude, r.Longitude, r.TrueHeading, c.Colours.MovAc);
      }
      break;
    case MapLayerPlace::Holdings:
      // The display procedure: the editor's shape in the highlight colour,
      // its name beside the fix.
      if (s_.Window.MenuDisplayProc && s_.Procedure.Set) {
        std::array<DrawPoint, kProcPoints> points{};
        for (std::size_t i = 0; i < kProcPoints; ++i)
          points[i] = {static_cast<float>(c.Proj.X(s_.Procedure.Points[i].Lon, s_.Procedure.Points[i].Lat)),
                       static_cast<float>(c.Proj.Y(s_.Procedure.Points[i].Lat))};
        const int16_t width = t.DrawWidth();
        t.SetForeColor(c.Colours.Hilite);
        t.SetDrawWidth(2);
        t.Polyline(points.data(), points.size());
        t.SetDrawWidth(width);
        t.SetCurrentX(points[0].X + 60);
        t.SetCurrentY(points[0].Y + 60);
        t.Print(s_.Procedure.Shape.Name);
      }
      break;
    case MapLayerPlace::Traffic:
      if (s_.Sim.Connected() && s_.Window.btnAI)
        DrawTraffic(t, c.View, s_.Sim.Live->Traffic.Symbols(), c.FontName, c.FontSize);
      break;
    default: break;
  }
}

}  // namespace orv
