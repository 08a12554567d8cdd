#include "LogText.h"

namespace zarwire {

std::string logSafe(const std::string& text)
{
    static const char* hex = "0123456789abcdef";
    std::string out;
    out.reserve(text.size());
    for (unsigned char c : text) {
        if (c == '\\' || c == '"') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20 || c == 0x7f) {
            out += "\\x";
            out += hex[c >> 4];
            out += hex[c & 15];
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

}  // namespace zarwire
