#include "WorkerPool.h"

namespace zarwire {

WorkerPool::WorkerPool(size_t threads, size_t maxQueued) : _maxQueued(maxQueued ? maxQueued : 1)
{
    for (size_t i = 0; i < (threads ? threads : 1); i++)
        _threads.emplace_back(&WorkerPool::run, this);
}

WorkerPool::~WorkerPool()
{
    stop();
}

bool WorkerPool::submit(std::function<void()> task)
{
    {
        std::lock_guard<std::mutex> lock(_mu);
        if (_stopping || _queue.size() >= _maxQueued)
            return false;
        _queue.push_back(std::move(task));
    }
    _cv.notify_one();
    return true;
}

void WorkerPool::stop()
{
    {
        std::lock_guard<std::mutex> lock(_mu);
        _stopping = true;
    }
    _cv.notify_all();
    for (auto& t : _threads)
        t.join();
    _threads.clear();
}

void WorkerPool::run()
{
    for (;;) {
        std::function<void()> task;
        {
            std::unique_lock<std::mutex> lock(_mu);
            _cv.wait(lock, [this] { return _stopping || !_queue.empty(); });
            if (_queue.empty())
                return;
            task = std::move(_queue.front());
            _queue.pop_front();
        }
        _busy++;
        task();
        _busy--;
    }
}

}  // namespace zarwire
