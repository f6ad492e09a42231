// The main window's four timers as a seam beside Clock: the program runs them
// as window timers, tests and the command line's simulated flights tick them
// by hand. The core only switches them on and off; the shell (or a
// ManualTimers) calls the owner's tick when one fires.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

namespace orv {

enum class TimerId : uint8_t {
  MousePos,   // tmrMousePos: the hover information
  Gps,        // tmGPS: the simulator tick
  AutoPilot,  // tmAutoPilot: the autopilot coupling
  Clock,      // Clock: link status and the download counter
};
inline constexpr int kTimerCount = 4;

// The intervals the window gives its timers, in milliseconds.
inline constexpr std::array<int, kTimerCount> kTimerIntervalMs = {250, 500, 500, 1000};

// The control name of a timer ("tmrMousePos", "tmGPS", "tmAutoPilot", "Clock").
std::string_view TimerName(TimerId id);

class Timers {
public:
  virtual ~Timers() = default;
  virtual void SetEnabled(TimerId id, bool on) = 0;
  virtual bool Enabled(TimerId id) const = 0;
};

// Timers that fire only when time is advanced by hand. Advance walks the
// given span of time in timer order: each enabled timer fires once per whole
// interval since it was enabled, earlier deadlines first and, on a tie, in
// the order of TimerId. A tick may switch timers on or off.
class ManualTimers : public Timers {
public:
  void SetEnabled(TimerId id, bool on) override;
  bool Enabled(TimerId id) const override { return enabled_[Index(id)]; }

  // Moves time on by ms milliseconds, calling fire for every tick due.
  void Advance(int64_t ms, const std::function<void(TimerId)>& fire);
  int64_t Now() const { return now_; }

private:
  static std::size_t Index(TimerId id) { return static_cast<std::size_t>(id); }
  std::array<bool, kTimerCount> enabled_{};
  std::array<int64_t, kTimerCount> due_{};
  int64_t now_ = 0;
};

}  // namespace orv
