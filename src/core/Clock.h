// Time as the program sees it: injectable, so that timers, logs and file stamps
// are reproducible in tests.
#pragma once

#include <cstdint>

namespace orv {

struct DateTime {
  int year = 2000, month = 1, day = 1;
  int hour = 0, minute = 0, second = 0;
};

class Clock {
public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;        // local time
  virtual DateTime NowUtc() const = 0;
  virtual int64_t TickMs() const = 0;      // monotonic milliseconds
  virtual void Sleep(int milliseconds) = 0;
};

class SystemClock : public Clock {
public:
  DateTime Now() const override;
  DateTime NowUtc() const override;
  int64_t TickMs() const override;
  void Sleep(int milliseconds) override;
};

}  // namespace orv
