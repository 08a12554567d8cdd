// LogText: client-chosen text made safe for a log line. Control characters
// (line feeds, NUL, escape sequences), DEL, backslash and double quotes are
// written as escapes, so that no value a client sends can start a forged
// line, cut one short, or close a quoted field.
#ifndef ZAR_SERVER_WIRE_LOGTEXT_H
#define ZAR_SERVER_WIRE_LOGTEXT_H

#include <string>

namespace zarwire {

std::string logSafe(const std::string& text);

}  // namespace zarwire

#endif
