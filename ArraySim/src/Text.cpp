#include "Text.h"

#include <arpa/inet.h>

#include <cctype>
#include <cstdio>
#include <cstring>

namespace zarsim {

std::string lpidText(lpid_t pos)
{
    char buf[32];
    snprintf(buf, sizeof buf, "%u:%u:%u", (unsigned)(pos >> 7), (unsigned)((pos >> 3) & 15),
             (unsigned)(pos & 7));
    return buf;
}

bool validPortPosition(lpid_t pos)
{
    unsigned node = pos >> 7, slot = (pos >> 3) & 15, port = pos & 7;
    return node <= 7 && slot <= 9 && port >= 1 && port <= 4;
}

std::string hex16(uint64_t v)
{
    char buf[17];
    snprintf(buf, sizeof buf, "%016llX", (unsigned long long)v);
    return buf;
}

bool parseWwn16(const std::string& text, uint64_t* out)
{
    if (text.size() != 16)
        return false;
    uint64_t v = 0;
    for (char c : text) {
        if (!isxdigit((unsigned char)c))
            return false;
        v = (v << 4) |
            (uint64_t)(isdigit((unsigned char)c) ? c - '0'
                                                 : (tolower((unsigned char)c) - 'a' + 10));
    }
    *out = v;
    return true;
}

static uint64_t positionBits(lpid_t pos)
{
    uint64_t node = pos >> 7, slot = (pos >> 3) & 15, port = pos & 7;
    return ((node & 7) << 56) | ((slot & 7) << 52) | ((port & 7) << 48);
}

uint64_t targetPortWwn(lpid_t pos, uint32_t serial)
{
    return (2ULL << 60) | positionBits(pos) | (0x0002ACULL << 24) | (serial & 0xFFFFFFULL);
}

std::string targetPortIscsiName(lpid_t pos, uint32_t serial)
{
    uint64_t v = (2ULL << 60) | positionBits(pos) | (0x0002ACULL << 24) | (serial & 0xFFFFFFULL);
    char buf[17];
    snprintf(buf, sizeof buf, "%016llx", (unsigned long long)v);
    return std::string(API_ISCSI_VENDOR_PREFIX) + buf;
}

std::string volumeWwn(uint32_t serial, uint32_t id)
{
    char buf[33];
    snprintf(buf, sizeof buf, "60002AC0000000000000%04X%08X", serial & 0xFFFF, id);
    return buf;
}

std::string volumeWwnFromParts(uint64_t high, uint64_t low)
{
    return hex16(high) + hex16(low);
}

std::string checkName(const std::string& what, const std::string& name)
{
    if (name.empty())
        return what + " name is empty";
    if (name.size() > 31)
        return what + " name " + name + " is longer than 31 characters";
    for (char c : name) {
        if (!(isalnum((unsigned char)c) || c == '-' || c == '_' || c == '.'))
            return what + " name " + name + " holds an invalid character '" + std::string(1, c) +
                   "'";
    }
    return std::string();
}

std::string lower(std::string s)
{
    for (char& c : s)
        c = (char)tolower((unsigned char)c);
    return s;
}

}  // namespace zarsim

using namespace zarsim;

extern "C" {

int api_convertStrLPIDtoPortID(const char* text, lpid_t* port)
{
    if (!text || !port)
        return API_E_INVALID_ARG;
    unsigned v[3];
    const char* p = text;
    for (int i = 0; i < 3; ++i) {
        if (!isdigit((unsigned char)*p))
            return API_E_INVALID_ARG;
        unsigned n = 0;
        int digits = 0;
        while (isdigit((unsigned char)*p)) {
            n = n * 10 + (unsigned)(*p++ - '0');
            if (++digits > 3)
                return API_E_INVALID_ARG;
        }
        v[i] = n;
        if (i < 2) {
            if (*p != ':')
                return API_E_INVALID_ARG;
            ++p;
        }
    }
    if (*p != '\0')
        return API_E_INVALID_ARG;
    if (v[0] > 7 || v[1] > 15 || v[2] > 7)
        return API_E_INVALID_ARG;
    *port = makeLpid((int)v[0], (int)v[1], (int)v[2]);
    return 0;
}

char* loop_txbf(lpid_t port, char* buffer, char* scratch)
{
    if (!buffer)
        return buffer;
    char* work = scratch ? scratch : buffer;
    snprintf(work, 16, "%u:%u:%u", (unsigned)(port >> 7), (unsigned)((port >> 3) & 15),
             (unsigned)(port & 7));
    if (work != buffer)
        memmove(buffer, work, strlen(work) + 1);
    return buffer;
}

int api_wwnStringToInt(api_status_t* status, const char* text, zar_u64* high, zar_u64* low)
{
    size_t n = text ? strlen(text) : 0;
    bool ok = n >= 1 && n <= 32;
    for (size_t i = 0; ok && i < n; ++i)
        ok = isxdigit((unsigned char)text[i]) != 0;
    if (!ok || !high || !low) {
        std::string msg = std::string("Invalid WWN ") + (text ? text : "(null)");
        if (status)
            errinfo_set_str(status, API_E_INVALID_ARG, msg.c_str());
        return API_E_INVALID_ARG;
    }
    uint64_t hi = 0, lo = 0;
    size_t split = n > 16 ? n - 16 : 0;
    for (size_t i = 0; i < n; ++i) {
        char c = text[i];
        uint64_t d = (uint64_t)(isdigit((unsigned char)c) ? c - '0'
                                                          : (tolower((unsigned char)c) - 'a' + 10));
        if (i < split)
            hi = (hi << 4) | d;
        else
            lo = (lo << 4) | d;
    }
    *high = hi;
    *low = lo;
    return 0;
}

int api_isAllNumeric(const char* text)
{
    if (!text || !*text)
        return 0;
    for (const char* p = text; *p; ++p)
        if (!isdigit((unsigned char)*p))
            return 0;
    return 1;
}

api_ip_addr_e validateConvertIP(const char* text, char* out, int outSize)
{
    if (!text || !out || outSize < 46)
        return API_IP_INVALID;
    out[0] = '\0';
    if (strchr(text, ':')) {
        // As the host of a URL or object path, an IPv6 address is in brackets.
        std::string bare = text;
        if (bare.size() > 2 && bare.front() == '[' && bare.back() == ']')
            bare = bare.substr(1, bare.size() - 2);
        struct in6_addr a6;
        if (inet_pton(AF_INET6, bare.c_str(), &a6) != 1)
            return API_IPV6_INVALID;
        if (!inet_ntop(AF_INET6, &a6, out, (socklen_t)outSize))
            return API_IP_CONVERSION_ERROR;
        return API_IPV6_OK;
    }
    if (strchr(text, '.')) {
        struct in_addr a4;
        if (inet_pton(AF_INET, text, &a4) != 1)
            return API_IPV4_INVALID;
        if (!inet_ntop(AF_INET, &a4, out, (socklen_t)outSize))
            return API_IP_CONVERSION_ERROR;
        return API_IPV4_OK;
    }
    return API_IP_INVALID;
}

}  // extern "C"
