// The queue of direct lines of a QPainterTarget: lines drawn straight into
// the picture's pixels wait here until anything else is drawn or the picture
// is read. A long queue is drawn by two threads, each writing its half of the
// rows (the pixels chosen do not depend on the half).
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "mapqt/ThinLine.h"

namespace orv {

class LineQueue {
public:
  // Queues of this many lines or more are shared between two threads.
  static constexpr std::size_t kShareFrom = 4000;

  LineQueue();
  ~LineQueue();
  LineQueue(const LineQueue&) = delete;
  LineQueue& operator=(const LineQueue&) = delete;

  void Push(const QueuedLine& line) { queue_.push_back(line); }
  bool Empty() const { return queue_.empty(); }
  // Draws every queued line onto canvas and empties the queue.
  void Flush(const PixelCanvas& canvas);

private:
  class Worker;
  std::vector<QueuedLine> queue_;
  std::unique_ptr<Worker> worker_;  // started for the first long queue
};

}  // namespace orv
