#include "Control.h"

#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <zarsim_test.h>

namespace zarsim {

namespace {

struct Fault {
    int remaining = 0;
    int code = 0;
    std::string text;
};

std::mutex g_mutex;
std::map<std::string, Fault> g_faults;
std::map<std::string, int> g_delays;
int g_semTimeouts = 0;
bool g_capture = false;
std::vector<std::string> g_captured;
int g_iterations = 0;
constexpr int kDefaultIterations = 210000;

}  // namespace

bool takeFault(const char* operation, int* code, std::string* text)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    auto it = g_faults.find(operation);
    if (it == g_faults.end() || it->second.remaining <= 0)
        return false;
    --it->second.remaining;
    *code = it->second.code;
    *text = it->second.text;
    return true;
}

bool takeSemTimeout()
{
    std::lock_guard<std::mutex> lock(g_mutex);
    if (g_semTimeouts <= 0)
        return false;
    --g_semTimeouts;
    return true;
}

void applyDelay(const char* operation)
{
    int ms = 0;
    {
        std::lock_guard<std::mutex> lock(g_mutex);
        auto it = g_delays.find(operation);
        if (it != g_delays.end())
            ms = it->second;
    }
    if (ms > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

bool captureLogLine(int, const std::string& line)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    if (!g_capture)
        return false;
    g_captured.push_back(line);
    return true;
}

int hashIterations()
{
    std::lock_guard<std::mutex> lock(g_mutex);
    return g_iterations > 0 ? g_iterations : kDefaultIterations;
}

}  // namespace zarsim

using namespace zarsim;

extern "C" {

void zarsim_fail_next(const char* operation, int n, int code, const char* text)
{
    if (!operation)
        return;
    std::lock_guard<std::mutex> lock(g_mutex);
    Fault& f = g_faults[operation];
    f.remaining = n;
    f.code = code;
    f.text = text ? text : "";
}

void zarsim_sem_timeout_next(int n)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    g_semTimeouts = n;
}

void zarsim_delay(const char* operation, int ms)
{
    if (!operation)
        return;
    std::lock_guard<std::mutex> lock(g_mutex);
    if (ms <= 0)
        g_delays.erase(operation);
    else
        g_delays[operation] = ms;
}

void zarsim_clear_faults(void)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    g_faults.clear();
    g_delays.clear();
    g_semTimeouts = 0;
}

void zarsim_set_hash_iterations(int iterations)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    g_iterations = iterations;
}

void zarsim_capture_log(int on)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    g_capture = on != 0;
}

size_t zarsim_captured_count(void)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    return g_captured.size();
}

int zarsim_captured_line(size_t i, char* buffer, size_t size)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    if (i >= g_captured.size() || !buffer || size == 0)
        return -1;
    const std::string& s = g_captured[i];
    size_t n = s.size() < size - 1 ? s.size() : size - 1;
    s.copy(buffer, n);
    buffer[n] = '\0';
    return 0;
}

void zarsim_clear_captured(void)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    g_captured.clear();
}

}  // extern "C"
