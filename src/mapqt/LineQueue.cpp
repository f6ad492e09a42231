#include "mapqt/LineQueue.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace orv {

// A second thread that draws the lower rows of a long queue while the
// caller draws the upper ones.
class LineQueue::Worker {
public:
  Worker() : thread_([this] { Run(); }) {}
  ~Worker() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      quit_ = true;
    }
    wake_.notify_all();
    thread_.join();
  }
  void Start(const PixelCanvas& canvas, const QueuedLine* lines, std::size_t count) {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      canvas_ = canvas;
      lines_ = lines;
      count_ = count;
      job_ = true;
    }
    wake_.notify_all();
  }
  void Wait() {
    std::unique_lock<std::mutex> lock(mutex_);
    wake_.wait(lock, [this] { return !job_; });
  }

private:
  void Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return job_ || quit_; });
      if (quit_) return;
      const PixelCanvas canvas = canvas_;
      const QueuedLine* lines = lines_;
      const std::size_t count = count_;
      lock.unlock();
      DrawQueuedLines(canvas, lines, count);
      lock.lock();
      job_ = false;
      wake_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  PixelCanvas canvas_;
  const QueuedLine* lines_ = nullptr;
  std::size_t count_ = 0;
  bool job_ = false;
  bool quit_ = false;
  std::thread thread_;  // last: started once everything else is set up
};

LineQueue::LineQueue() = default;
LineQueue::~LineQueue() = default;

void LineQueue::Flush(const PixelCanvas& canvas) {
  if (queue_.empty()) return;
  // A thread hand-over costs some microseconds: worth it for the thousands
  // of lines of airways, airspaces and rivers, not for a symbol.
  // Broad lines (taxiways at a close zoom) are mostly pixels of their own
  // columns, which both threads would walk: they stay on one.
  std::size_t broad = 0;
  for (const QueuedLine& l : queue_) broad += l.Width > 2;
  if (queue_.size() < kShareFrom || broad * 4 > queue_.size() || canvas.Height < 64 ||
      std::thread::hardware_concurrency() < 2) {
    DrawQueuedLines(canvas, queue_.data(), queue_.size());
  } else {
    if (!worker_) worker_ = std::make_unique<Worker>();
    PixelCanvas upper = canvas, lower = canvas;
    upper.RowTo = canvas.Height / 2;
    lower.RowFrom = canvas.Height / 2;
    worker_->Start(lower, queue_.data(), queue_.size());
    DrawQueuedLines(upper, queue_.data(), queue_.size());
    worker_->Wait();
  }
  queue_.clear();
}

}  // namespace orv
