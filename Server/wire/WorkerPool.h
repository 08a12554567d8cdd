// WorkerPool: a fixed set of threads running queued tasks, with a bound on
// the queue so that a flood of work is refused rather than stored.
#ifndef ZAR_SERVER_WIRE_WORKERPOOL_H
#define ZAR_SERVER_WIRE_WORKERPOOL_H

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace zarwire {

class WorkerPool {
public:
    WorkerPool(size_t threads, size_t maxQueued);
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // Queues a task; false when the queue is full or the pool stopped.
    bool submit(std::function<void()> task);
    // Runs the queued tasks, then joins the threads. Idempotent.
    void stop();
    // Tasks running right now.
    int busy() const { return _busy.load(); }

private:
    void run();
    const size_t _maxQueued;
    std::mutex _mu;
    std::condition_variable _cv;
    std::deque<std::function<void()>> _queue;
    bool _stopping = false;
    std::atomic<int> _busy{0};
    std::vector<std::thread> _threads;
};

}  // namespace zarwire

#endif
