#include "ui/QtTimers.h"

namespace orv::ui {

QtTimers::QtTimers(QObject* parent) : QObject(parent) {
  for (int i = 0; i < kTimerCount; ++i) {
    auto* t = new QTimer(this);
    const auto id = static_cast<TimerId>(i);
    t->setObjectName(QString::fromLatin1(TimerName(id).data(), static_cast<int>(TimerName(id).size())));
    t->setInterval(kTimerIntervalMs[static_cast<std::size_t>(i)]);
    connect(t, &QTimer::timeout, this, [this, id] {
      if (onTick) onTick(id);
    });
    timers_[static_cast<std::size_t>(i)] = t;
  }
}

void QtTimers::SetEnabled(TimerId id, bool on) {
  QTimer* t = timers_[static_cast<std::size_t>(id)];
  if (on && !t->isActive()) t->start();
  if (!on) t->stop();
}

bool QtTimers::Enabled(TimerId id) const { return timers_[static_cast<std::size_t>(id)]->isActive(); }

}  // namespace orv::ui
