#include "core/Timers.h"

namespace orv {

std::string_view TimerName(TimerId id) {
  switch (id) {
    case TimerId::MousePos: return "tmrMousePos";
    case TimerId::Gps: return "tmGPS";
    case TimerId::AutoPilot: return "tmAutoPilot";
    case TimerId::Clock: return "Clock";
  }
  return "";
}

void ManualTimers::SetEnabled(TimerId id, bool on) {
  const std::size_t i = Index(id);
  // A window timer switched on starts a fresh interval; switching an
  // enabled one on again changes nothing.
  if (on && !enabled_[i]) due_[i] = now_ + kTimerIntervalMs[i];
  enabled_[i] = on;
}

void ManualTimers::Advance(int64_t ms, const std::function<void(TimerId)>& fire) {
  const int64_t end = now_ + ms;
  for (;;) {
    int next = -1;
    for (int i = 0; i < kTimerCount; ++i) {
      const auto u = static_cast<std::size_t>(i);
      if (enabled_[u] && due_[u] <= end && (next < 0 || due_[u] < due_[static_cast<std::size_t>(next)])) next = i;
    }
    if (next < 0) break;
    const auto u = static_cast<std::size_t>(next);
    now_ = due_[u];
    due_[u] += kTimerIntervalMs[u];
    fire(static_cast<TimerId>(next));
  }
  now_ = end;
}

}  // namespace orv
