// The window timers as QTimers: the core switches them on and off, each
// timeout is handed to onTick on the interface thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <functional>

#include "core/Timers.h"

namespace orv::ui {

class QtTimers : public QObject, public Timers {
public:
  explicit QtTimers(QObject* parent = nullptr);

  void SetEnabled(TimerId id, bool on) override;
  bool Enabled(TimerId id) const override;

  std::function<void(TimerId)> onTick;

private:
  std::array<QTimer*, kTimerCount> timers_{};
};

}  // namespace orv::ui
