// OutputQueue: the bytes of one response on their way from the worker that
// produces them to the event thread that writes them to the socket. At most
// a fixed number of bytes wait: a producer that gets ahead of the client
// blocks until the client has read enough (this is how a slow reader paces
// a streamed answer) or the connection is closed. Memory the producer holds
// already (a finished answer) is handed over without waiting, so that a
// worker never waits on a client for an answer that is complete.
#ifndef ZAR_SERVER_WIRE_OUTPUTQUEUE_H
#define ZAR_SERVER_WIRE_OUTPUTQUEUE_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>

#include "Stream.h"

namespace zarwire {

class OutputQueue {
public:
    using Clock = std::chrono::steady_clock;

    // limit: bytes that may wait; wake: called (from the producer's thread,
    // at most once until the next drain) when there is something to write.
    OutputQueue(size_t limit, std::function<void()> wake);

    // Producer side. write copies data, waiting while the queue is full;
    // give takes bytes without waiting. Both return false once the
    // connection is closed (the bytes are dropped).
    bool write(const char* data, size_t n);
    bool give(std::string&& bytes);
    // The response is over; keepAlive: the connection serves another;
    // complete false: it was cut short, and the connection is reset once
    // what was queued has been written.
    void finish(bool keepAlive, bool complete = true);

    // Event-thread side. Writes what it can to the stream; returns the
    // outcome of the last write (Done when everything pending went out).
    IoResult drain(Stream& stream);
    // Drops pending bytes and fails the producer's next (or current) write.
    void close();

    size_t pending() const;
    bool finished() const;
    bool keepAlive() const;
    bool complete() const;
    // Bytes written so far and the time the last write made progress (or
    // the time bytes began to wait, when none could be written yet).
    size_t sent() const;
    Clock::time_point lastProgress() const;
    Clock::time_point started() const { return _started; }

private:
    size_t pendingLocked() const { return _pending; }
    void wakeLocked(std::unique_lock<std::mutex>& lock);

    const size_t _limit;
    const std::function<void()> _wake;
    mutable std::mutex _mu;
    std::condition_variable _room;
    std::deque<std::string> _segments;
    size_t _offset = 0;  // into the first segment
    size_t _pending = 0;
    size_t _sent = 0;
    bool _closed = false;
    bool _finished = false;
    bool _keepAlive = false;
    bool _complete = true;
    bool _woken = false;
    Clock::time_point _started = Clock::now();
    Clock::time_point _progress = Clock::now();
};

}  // namespace zarwire

#endif
