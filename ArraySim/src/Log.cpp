// The array library's log: log_message, zar_panic, zar_print_no_evt.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string>

#include <sys/time.h>
#include <unistd.h>

#include <zarapi.h>
#include <zarsim_test.h>

#include "Control.h"

namespace {

std::mutex g_logMutex;
FILE* g_logFile = nullptr;
bool g_configured = false;
int g_level = 2;
bool g_levelOverridden = false;

void configureLocked()
{
    if (g_configured)
        return;
    g_configured = true;
    if (!g_levelOverridden) {
        const char* lv = getenv("ZAR_LOG_LEVEL");
        if (lv && *lv)
            g_level = atoi(lv);
    }
    const char* file = getenv("ZAR_LOG_FILE");
    if (file && *file)
        g_logFile = fopen(file, "a");
}

std::string vformat(const char* format, va_list ap)
{
    char small[512];
    va_list copy;
    va_copy(copy, ap);
    int n = vsnprintf(small, sizeof small, format, copy);
    va_end(copy);
    if (n < 0)
        return std::string();
    if ((size_t)n < sizeof small)
        return std::string(small, (size_t)n);
    std::string big((size_t)n + 1, '\0');
    vsnprintf(&big[0], big.size(), format, ap);
    big.resize((size_t)n);
    return big;
}

// One record per line: control characters inside the text (a line feed in a
// user name or a key value that a client chose, say) are written as \xHH, so
// that no caller's data can start a forged line. One final line feed ends it.
std::string oneLine(const std::string& text)
{
    static const char* hex = "0123456789abcdef";
    size_t n = text.size();
    if (n > 0 && text[n - 1] == '\n')
        --n;
    std::string out;
    out.reserve(n + 1);
    for (size_t i = 0; i < n; ++i) {
        unsigned char c = (unsigned char)text[i];
        if (c < 0x20 || c == 0x7f) {
            out += "\\x";
            out += hex[c >> 4];
            out += hex[c & 15];
        } else {
            out += (char)c;
        }
    }
    out += '\n';
    return out;
}

// Writes one whole line, prefixed with time, pid and level, to the log file
// or standard error.
void writeLine(int level, const std::string& text)
{
    if (zarsim::captureLogLine(level, text))
        return;
    struct timeval tv;
    gettimeofday(&tv, nullptr);
    struct tm tmv;
    localtime_r(&tv.tv_sec, &tmv);
    char stamp[64];
    snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%03d [%d] L%d ",
             tmv.tm_year + 1900, tmv.tm_mon + 1, tmv.tm_mday, tmv.tm_hour, tmv.tm_min, tmv.tm_sec,
             (int)(tv.tv_usec / 1000), (int)getpid(), level);
    std::string line = stamp + oneLine(text);
    FILE* out = g_logFile ? g_logFile : stderr;
    fwrite(line.data(), 1, line.size(), out);
    fflush(out);
}

}  // namespace

extern "C" {

void log_message(int level, const char* format, ...)
{
    if (!format)
        return;
    std::lock_guard<std::mutex> lock(g_logMutex);
    configureLocked();
    if (level > g_level)
        return;
    va_list ap;
    va_start(ap, format);
    std::string text = vformat(format, ap);
    va_end(ap);
    writeLine(level, text);
}

void zar_print_no_evt(const char* format, ...)
{
    if (!format)
        return;
    va_list ap;
    va_start(ap, format);
    std::string text = vformat(format, ap);
    va_end(ap);
    std::lock_guard<std::mutex> lock(g_logMutex);
    configureLocked();
    fputs(text.c_str(), stderr);
    fflush(stderr);
    if (g_logFile)
        writeLine(2, text);
}

void zar_panic(const char* format, ...)
{
    std::string text = "panic: ";
    if (format) {
        va_list ap;
        va_start(ap, format);
        text += vformat(format, ap);
        va_end(ap);
    }
    {
        std::lock_guard<std::mutex> lock(g_logMutex);
        configureLocked();
        if (g_logFile)
            writeLine(1, text);
        fputs(text.c_str(), stderr);
        if (text.back() != '\n')
            fputc('\n', stderr);
        fflush(stderr);
    }
    abort();
}

void zarsim_set_log_level(int level)
{
    std::lock_guard<std::mutex> lock(g_logMutex);
    configureLocked();
    g_level = level;
    g_levelOverridden = true;
}

}  // extern "C"
