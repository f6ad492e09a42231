#include "core/Clock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace orv {
namespace {
DateTime FromTm(const std::tm& t) {
  return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
}
}  // namespace

DateTime SystemClock::Now() const {
  std::time_t now = std::time(nullptr);
  std::tm t{};
  localtime_r(&now, &t);
  return FromTm(t);
}

DateTime SystemClock::NowUtc() const {
  std::time_t now = std::time(nullptr);
  std::tm t{};
  gmtime_r(&now, &t);
  return FromTm(t);
}

int64_t SystemClock::TickMs() const {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void SystemClock::Sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace orv
