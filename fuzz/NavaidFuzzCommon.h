// Shared pieces of the navaid file fuzzers: a variation grid with a value in
// every cell, and a check that stops the run when an invariant breaks.
#pragma once

#include <cstdlib>

#include "database/MagVar.h"

namespace orv::fuzz {

inline const MagVarGrid& Grid() {
  static const MagVarGrid grid = [] {
    MagVarGrid g;
    g.Assign(BuildMagVarFile([](int lat, int lon) { return lat * 0.1 + lon * 0.01; }));
    return g;
  }();
  return grid;
}

inline void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace orv::fuzz
