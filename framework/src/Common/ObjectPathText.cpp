// Integer key text and host name rules of object paths.

#include "ObjectPathText.h"

#include <unistd.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

int _hexValue(Uint16 c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// The magnitude at p[0..n): decimal or hexadecimal, no sign.
bool _magnitude(const Char16* p, Uint32 n, Uint64& value)
{
    if (n == 0)
        return false;
    value = 0;
    if (n >= 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
        if (n == 2)
            return false;
        for (Uint32 i = 2; i < n; i++) {
            int d = _hexValue(p[i]);
            if (d < 0 || value > (~Uint64(0) >> 4))
                return false;
            value = (value << 4) | Uint64(d);
        }
        return true;
    }
    if (p[0] == '0')
        return n == 1;
    for (Uint32 i = 0; i < n; i++) {
        if (p[i] < '0' || p[i] > '9')
            return false;
        Uint64 d = Uint64(p[i] - '0');
        if (value > (~Uint64(0) - d) / 10)
            return false;
        value = value * 10 + d;
    }
    return true;
}

bool _isAlnum(Uint16 c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool _validIPv4(const Char16* p, Uint32 n)
{
    Uint32 parts = 0;
    Uint32 i = 0;
    while (true) {
        Uint32 start = i, v = 0;
        while (i < n && p[i] != '.') {
            v = v * 10 + Uint32(p[i] - '0');
            if (i - start >= 3)
                return false;
            i++;
        }
        if (i == start || v > 255)
            return false;
        parts++;
        if (i == n)
            break;
        i++;
    }
    return parts == 4;
}

bool _validHostName(const Char16* p, Uint32 n)
{
    Uint32 i = 0;
    while (true) {
        Uint32 start = i;
        while (i < n && p[i] != '.') {
            Uint16 c = p[i];
            if (!(_isAlnum(c) || c == '-' || c == '_'))
                return false;
            if (i == start && c == '-')
                return false;
            i++;
        }
        if (i == start)
            return false;
        if (i == n)
            return true;
        i++;
    }
}

}  // namespace

bool KeyTextToUint64(const String& s, Uint64& value)
{
    return _magnitude(s.getChar16Data(), s.size(), value);
}

bool KeyTextToSint64(const String& s, Sint64& value)
{
    const Char16* p = s.getChar16Data();
    Uint32 n = s.size();
    bool negative = n > 0 && p[0] == '-';
    Uint64 m;
    if (!_magnitude(p + (negative ? 1 : 0), n - (negative ? 1 : 0), m))
        return false;
    if (negative) {
        if (m > Uint64(1) << 63)
            return false;
        value = Sint64(0 - m);
    } else {
        if (m > Uint64(0x7FFFFFFFFFFFFFFFULL))
            return false;
        value = Sint64(m);
    }
    return true;
}

bool KeyTextIsNumber(const String& s)
{
    Uint64 u;
    Sint64 v;
    return KeyTextToUint64(s, u) || KeyTextToSint64(s, v);
}

bool HostIsValid(const String& host)
{
    const Char16* p = host.getChar16Data();
    Uint32 n = host.size();
    if (n == 0)
        return false;
    Uint32 colon = host.reverseFind(':');
    if (colon != PEG_NOT_FOUND) {
        Uint32 digits = n - colon - 1;
        if (digits == 0 || digits > 5)
            return false;
        Uint32 port = 0;
        for (Uint32 i = colon + 1; i < n; i++) {
            if (p[i] < '0' || p[i] > '9')
                return false;
            port = port * 10 + Uint32(p[i] - '0');
        }
        if (port > 65535)
            return false;
        n = colon;
        if (n == 0)
            return false;
    }
    bool numeric = true;
    for (Uint32 i = 0; i < n; i++) {
        if (!((p[i] >= '0' && p[i] <= '9') || p[i] == '.')) {
            numeric = false;
            break;
        }
    }
    if (numeric)
        return _validIPv4(p, n);
    return _validHostName(p, n);
}

PEGASUS_NAMESPACE_END
