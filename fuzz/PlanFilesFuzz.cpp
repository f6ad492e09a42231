// Arbitrary bytes as a plan file of every kind the program opens (its own
// ".pln", the simulator XML plan, X-Plane FMS, Garmin, GPX) and as a route
// segment. No reader leaves its buffer or keeps more rows than its bound; a
// refused file leaves the plan in memory exactly as it was; an accepted one
// gives a plan within the row limit whose ".pln" text reads back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookup.h"
#include "planning/PlanFile.h"
#include "planning/PlanFormats.h"
#include "planning/RouteSegments.h"
#include "planning/WPTable.h"
#include "planning/XmlLite.h"

namespace {

// Two airports and one navaid, enough for every reader to reach its end.
class TinyNav : public orv::NavLookup {
public:
  int AirportCount() const override { return 2; }
  bool AirportPosition(int a, float& lat, float& lon) const override {
    if (a < 0 || a > 1) return false;
    lat = a == 0 ? 50.0f : 51.0f;
    lon = 8.0f;
    return true;
  }
  std::string AirportIcao(int a) const override { return a == 0 ? "AAAA" : a == 1 ? "BBBB" : ""; }
  std::string AirportName(int a) const override { return AirportIcao(a); }
  double AirportElevation(int) const override { return 100; }
  int RunwayCount(int a) const override { return a == 0 ? 1 : 0; }
  int32_t RunwayLength(int, int) const override { return 10000; }
  orv::RunwayInfo Runway(int, int) const override { return {"Rwy 09", "Rwy 27", 50.0f, 8.0f, 90, 10000}; }
  int ParkingCount(int a) const override { return a == 0 ? 1 : 0; }
  orv::ParkingInfo Parking(int, int) const override { return {"Gate", 1, 50.01f, 8.01f}; }
  void FindByIdent(std::string_view ident, std::vector<orv::WaypointRec>& out) const override {
    if (ident != "X") return;
    orv::WaypointRec w;
    w.Kind.Assign("VOR");
    w.Code.Assign("X");
    w.Lat = 50.5f;
    w.Lon = 8.0f;
    out.push_back(w);
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::ParseXml(text);
  orv::PlanFileData d = orv::ParsePlanFile(text);
  if (d.Rows.size() > static_cast<size_t>(orv::kMaxPlanFileRows)) std::abort();
  orv::SegmentFile seg = orv::ParseSegmentFile(text);
  if (seg.Rows.size() > static_cast<size_t>(orv::kMaxSegmentRows)) std::abort();

  TinyNav nav;
  orv::AircraftRec ac;
  ac.CruiseSpeed = 400;
  ac.ApproachSpeed = 150;
  orv::FlightPlan plan;
  orv::PlanPanel panel;
  orv::PlanEditor editor(plan, panel, ac, nav);
  plan.Waypoints[0].Code.Assign("AAAA");
  plan.Waypoints[1].Code.Assign("BBBB");
  plan.DestinationAirport = 1;
  plan.DepartureAirport = 0;
  editor.SetDirectPlan(1);
  orv::SilentUi ui;
  orv::PlanFileState state;
  if (!orv::OpenAnyPlanText(editor, ui, text, {}, state)) {
    if (plan.LastRow != 1 || plan.Waypoints[1].Code.Str() != "BBBB") std::abort();
    return 0;
  }
  if (plan.LastRow < 1 || plan.LastRow > orv::kMaxPlanRow) std::abort();
  if (plan.LastRow - 1 <= orv::kMaxPlanFileRows) {
    orv::PlanFileData again = orv::ParsePlanFile(orv::FormatPlanFile(plan, nav, {}));
    // A field holding a comma or a quote, or starting like a row line,
    // cannot come back: the format has no quoting.
    auto unsafe = [](std::string_view f) {
      return f.find(',') != std::string_view::npos || f.find('"') != std::string_view::npos || f.substr(0, 3) == "WP=";
    };
    bool commas = false;
    for (int r = 1; r < plan.LastRow; ++r) {
      const orv::WaypointRec& w = plan.Waypoints[static_cast<size_t>(r)];
      if (unsafe(w.Kind.Trimmed()) || unsafe(w.Code.Trimmed()) || unsafe(w.Name.Trimmed()) || unsafe(w.Airway.Trimmed()))
        commas = true;
    }
    if (!commas && again.Error.empty() && static_cast<int>(again.Rows.size()) != plan.LastRow - 1) std::abort();
  }
  return 0;
}
