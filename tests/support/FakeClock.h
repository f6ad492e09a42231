// A Clock for tests: time stands still until the test moves it.
#pragma once

#include "core/Clock.h"

namespace orv::test {

class FakeClock : public Clock {
public:
  DateTime now{2026, 11, 21, 14, 30, 5};
  DateTime nowUtc{2026, 11, 21, 13, 30, 5};
  int64_t tickMs = 1000;

  DateTime Now() const override { return now; }
  DateTime NowUtc() const override { return nowUtc; }
  int64_t TickMs() const override { return tickMs; }
  void Sleep(int milliseconds) override { tickMs += milliseconds; }
};

}  // namespace orv::test
