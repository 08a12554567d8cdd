// CoreLog: how the server core reports what happens (module loads,
// provider failures) without depending on a particular logging library.
#ifndef ZAR_SERVER_CORE_CORELOG_H
#define ZAR_SERVER_CORE_CORELOG_H

#include <functional>
#include <string>

namespace zarserver {

// Severity of a log line; smaller is more severe.
enum CoreLogLevel { LOG_ERROR = 1, LOG_WARNING = 2, LOG_INFO = 3, LOG_DEBUG = 4 };

// Receives one line (no trailing newline) with its level. Must be
// thread-safe. An empty function discards everything.
typedef std::function<void(int level, const std::string& line)> CoreLogFunction;

}  // namespace zarserver

#endif
