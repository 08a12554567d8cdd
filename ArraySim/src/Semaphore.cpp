// The process-wide semaphore that serialises calls into the library.
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>

#include <zarapi.h>

#include "Control.h"

namespace {

std::mutex g_mutex;
std::condition_variable g_cv;
bool g_held = false;

std::chrono::milliseconds timeout()
{
    const char* env = getenv("ZAR_SEM_TIMEOUT_MS");
    long ms = env && *env ? atol(env) : 30000;
    if (ms < 0)
        ms = 0;
    return std::chrono::milliseconds(ms);
}

}  // namespace

extern "C" {

int cim_sem_wait(void)
{
    if (zarsim::takeSemTimeout()) {
        log_message(2, "cim_sem_wait: timed out\n");
        return API_E_SEM_TIMEOUT;
    }
    std::unique_lock<std::mutex> lock(g_mutex);
    if (!g_cv.wait_for(lock, timeout(), [] { return !g_held; })) {
        log_message(2, "cim_sem_wait: timed out\n");
        return API_E_SEM_TIMEOUT;
    }
    g_held = true;
    return 0;
}

void cim_sem_post(void)
{
    {
        std::lock_guard<std::mutex> lock(g_mutex);
        if (!g_held) {
            log_message(2, "cim_sem_post: semaphore was not held\n");
            return;
        }
        g_held = false;
    }
    g_cv.notify_one();
}

}  // extern "C"
