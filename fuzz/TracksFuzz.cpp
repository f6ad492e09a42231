// Arbitrary bytes as a North Atlantic or Pacific track page: never more than
// fifty tracks, never a read outside the page.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "database/NavDatabase.h"
#include "online/Tracks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::NavDatabase db;
  db.Navaids.Intersections.resize(1);
  db.Navaids.Intersections[0].Ident.Assign("PIKIL");
  orv::TrackFixFinder fixes(&db, true);
  orv::TrackTable t;
  orv::ParseNatTrackText(text, fixes, t);
  if (t.Tracks.size() > static_cast<size_t>(orv::kMaxTracks)) std::abort();
  orv::ParsePacificTrackText(text, fixes, t);
  if (t.Tracks.size() > static_cast<size_t>(orv::kMaxTracks)) std::abort();
  for (const orv::TrackRec& tr : t.Tracks)
    if (tr.PointCount != static_cast<int>(tr.Points.size())) std::abort();
  return 0;
}
