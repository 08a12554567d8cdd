#include "OutputQueue.h"

#include <algorithm>

namespace zarwire {

namespace {
// A segment small writes are gathered into; larger pieces stay whole.
const size_t kGather = 16 * 1024;
// Bytes handed to one write call.
const size_t kSlice = 256 * 1024;
}  // namespace

OutputQueue::OutputQueue(size_t limit, std::function<void()> wake)
    : _limit(limit ? limit : 1), _wake(std::move(wake))
{
}

void OutputQueue::wakeLocked(std::unique_lock<std::mutex>& lock)
{
    if (_woken || _pending == 0 || !_wake)
        return;
    _woken = true;
    lock.unlock();
    _wake();
    lock.lock();
}

bool OutputQueue::write(const char* data, size_t n)
{
    std::unique_lock<std::mutex> lock(_mu);
    while (n && !_closed) {
        _room.wait(lock, [this] { return _closed || _pending < _limit; });
        if (_closed)
            break;
        size_t take = std::min(n, _limit - _pending);
        if (_segments.empty() || _segments.back().size() + take > kGather) {
            _segments.emplace_back();
            _segments.back().reserve(std::min<size_t>(std::max(take, kGather), _limit));
        }
        if (_pending == 0)
            _progress = Clock::now();
        _segments.back().append(data, take);
        _pending += take;
        data += take;
        n -= take;
        wakeLocked(lock);
    }
    return !_closed;
}

bool OutputQueue::give(std::string&& bytes)
{
    std::unique_lock<std::mutex> lock(_mu);
    if (_closed)
        return false;
    if (bytes.empty())
        return true;
    if (_pending == 0)
        _progress = Clock::now();
    _pending += bytes.size();
    _segments.push_back(std::move(bytes));
    wakeLocked(lock);
    return true;
}

void OutputQueue::finish(bool keepAlive, bool complete)
{
    std::unique_lock<std::mutex> lock(_mu);
    _finished = true;
    _keepAlive = keepAlive && complete;
    _complete = complete;
    // Wake the event thread even with nothing left to write, so that it
    // notices the end of the response.
    if (_wake) {
        _woken = true;
        lock.unlock();
        _wake();
    }
}

IoResult OutputQueue::drain(Stream& stream)
{
    std::unique_lock<std::mutex> lock(_mu);
    _woken = false;
    IoResult last;
    size_t before = _pending;
    while (!_segments.empty()) {
        std::string& s = _segments.front();
        size_t n = std::min(s.size() - _offset, kSlice);
        last = stream.write(s.data() + _offset, n);
        if (last.kind != IoResult::Done)
            break;
        _offset += last.n;
        _pending -= last.n;
        _sent += last.n;
        _progress = Clock::now();
        if (_offset == s.size()) {
            _segments.pop_front();
            _offset = 0;
        }
    }
    if (_pending < before)
        _room.notify_all();
    return last;
}

void OutputQueue::close()
{
    std::lock_guard<std::mutex> lock(_mu);
    _closed = true;
    _segments.clear();
    _pending = 0;
    _room.notify_all();
}

size_t OutputQueue::pending() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _pending;
}

bool OutputQueue::finished() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _finished;
}

bool OutputQueue::keepAlive() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _keepAlive;
}

bool OutputQueue::complete() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _complete;
}

size_t OutputQueue::sent() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _sent;
}

OutputQueue::Clock::time_point OutputQueue::lastProgress() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _progress;
}

}  // namespace zarwire
