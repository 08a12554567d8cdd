// UTF-8 <-> UTF-16 conversion.

#include "Utf8.h"

#include <Pegasus/Common/Exception.h>

#include <cstdio>

PEGASUS_NAMESPACE_BEGIN

namespace {

// Number of bytes that follow a lead byte in the classic encoding table
// (0xF8..0xFF claim 4 or 5, which are never legal); used to report the
// offending sequence.
int _trailing(unsigned char c)
{
    if (c < 0xC0)
        return 0;
    if (c < 0xE0)
        return 1;
    if (c < 0xF0)
        return 2;
    if (c < 0xF8)
        return 3;
    if (c < 0xFC)
        return 4;
    return 5;
}

// True if the len bytes at p form one well-formed UTF-8 sequence (no overlong
// forms, no surrogates, nothing above U+10FFFF).
bool _legal(const unsigned char* p, int len)
{
    unsigned char a;
    const unsigned char* q = p + len;
    switch (len) {
        default:
            return false;
        case 4:
            if ((a = *--q) < 0x80 || a > 0xBF)
                return false;
            // fall through
        case 3:
            if ((a = *--q) < 0x80 || a > 0xBF)
                return false;
            // fall through
        case 2:
            if ((a = *--q) > 0xBF)
                return false;
            switch (*p) {
                case 0xE0:
                    if (a < 0xA0)
                        return false;
                    break;
                case 0xED:
                    if (a > 0x9F)
                        return false;
                    break;
                case 0xF0:
                    if (a < 0x90)
                        return false;
                    break;
                case 0xF4:
                    if (a > 0x8F)
                        return false;
                    break;
                default:
                    if (a < 0x80)
                        return false;
            }
            // fall through
        case 1:
            if (*p >= 0x80 && *p < 0xC2)
                return false;
    }
    if (*p > 0xF4)
        return false;
    return true;
}

[[noreturn]] void _throwBad(const unsigned char* s, Uint32 n, Uint32 i)
{
    char buf[96];
    std::snprintf(buf, sizeof(buf),
                  "The byte sequence starting at index %u is not valid UTF-8 encoding: ", i);
    String msg(buf);
    Uint32 len = Uint32(_trailing(s[i])) + 1;
    for (Uint32 k = i; k < n && k < i + len; k++) {
        std::snprintf(buf, sizeof(buf), " 0x%02X", unsigned(s[k]));
        msg.append(buf);
    }
    throw Exception(msg);
}

}  // namespace

Uint32 Utf8Decode(const char* str, Uint32 n, Uint16* out)
{
    const unsigned char* s = reinterpret_cast<const unsigned char*>(str);
    Uint32 o = 0;
    Uint32 i = 0;
    while (i < n) {
        unsigned char c = s[i];
        if (c < 0x80) {
            out[o++] = c;
            i++;
            continue;
        }
        int len = _trailing(c) + 1;
        if (len > 4 || i + Uint32(len) > n || !_legal(s + i, len))
            _throwBad(s, n, i);
        Uint32 cp;
        if (len == 2)
            cp = ((c & 0x1Fu) << 6) | (s[i + 1] & 0x3Fu);
        else if (len == 3)
            cp = ((c & 0x0Fu) << 12) | ((s[i + 1] & 0x3Fu) << 6) | (s[i + 2] & 0x3Fu);
        else
            cp = ((c & 0x07u) << 18) | ((s[i + 1] & 0x3Fu) << 12) | ((s[i + 2] & 0x3Fu) << 6) |
                 (s[i + 3] & 0x3Fu);
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out[o++] = Uint16(0xD800 + (cp >> 10));
            out[o++] = Uint16(0xDC00 + (cp & 0x3FF));
        } else {
            out[o++] = Uint16(cp);
        }
        i += Uint32(len);
    }
    return o;
}

char* Utf8Encode(const Uint16* p, Uint32 n)
{
    char* out = new char[size_t(n) * 3 + 1];
    size_t o = 0;
    for (Uint32 i = 0; i < n; i++) {
        Uint32 c = p[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < n && p[i + 1] >= 0xDC00 && p[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (p[i + 1] - 0xDC00);
            i++;
        }
        if (c < 0x80) {
            out[o++] = char(c);
        } else if (c < 0x800) {
            out[o++] = char(0xC0 | (c >> 6));
            out[o++] = char(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out[o++] = char(0xE0 | (c >> 12));
            out[o++] = char(0x80 | ((c >> 6) & 0x3F));
            out[o++] = char(0x80 | (c & 0x3F));
        } else {
            out[o++] = char(0xF0 | (c >> 18));
            out[o++] = char(0x80 | ((c >> 12) & 0x3F));
            out[o++] = char(0x80 | ((c >> 6) & 0x3F));
            out[o++] = char(0x80 | (c & 0x3F));
        }
    }
    out[o] = 0;
    return out;
}

PEGASUS_NAMESPACE_END
