// CIMDateTime: DMTF timestamps and intervals.
//
// The value is kept as its 25-character text plus the instant it denotes in
// microseconds (for a timestamp: UTC time since 0000-01-01 00:00, proleptic
// Gregorian calendar). Wildcard digits count as 0 (month and day as 1) in
// that instant.

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>

#include <sys/time.h>
#include <cstdio>
#include <cstring>
#include <ctime>

PEGASUS_NAMESPACE_BEGIN

struct CIMDateTimeRep {
    char text[26];
    bool interval;
    bool wildcards;
    Sint64 usec;    // interval length, or UTC microseconds since year 0
    Sint32 offset;  // minutes east of UTC (timestamps)
};

namespace {

const Sint64 USEC_PER_SEC = 1000000;
const Sint64 USEC_PER_DAY = 86400 * USEC_PER_SEC;
const Uint64 MAX_INTERVAL_DAYS = 99999999;

// Days from 0000-01-01 to y-m-d in the proleptic Gregorian calendar.
Sint64 _daysFromCivil(Sint64 y, unsigned m, unsigned d)
{
    y -= m <= 2;
    const Sint64 era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = unsigned(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    // era * 146097 + doe counts from 0000-03-01; shift to 0000-01-01 (60 days
    // earlier, year 0 being a leap year).
    return era * 146097 + Sint64(doe) + 60;
}

void _civilFromDays(Sint64 z, Sint64& y, unsigned& m, unsigned& d)
{
    z -= 60;
    const Sint64 era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = unsigned(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    y = Sint64(yoe) + era * 400;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = doy - (153 * mp + 2) / 5 + 1;
    m = mp < 10 ? mp + 3 : mp - 9;
    y += m <= 2;
}

bool _leap(Sint64 y)
{
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

unsigned _daysInMonth(Sint64 y, unsigned m)
{
    static const unsigned days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return (m == 2 && _leap(y)) ? 29 : days[m - 1];
}

bool _digit(char c)
{
    return c >= '0' && c <= '9';
}

// Reads text[pos, pos+len): all digits (value returned, wild false) or all
// '*' (wild true). Anything else fails.
bool _field(const char* t, int pos, int len, Uint32& value, bool& wild)
{
    value = 0;
    if (t[pos] == '*') {
        for (int i = pos; i < pos + len; i++)
            if (t[i] != '*')
                return false;
        wild = true;
        return true;
    }
    for (int i = pos; i < pos + len; i++) {
        if (!_digit(t[i]))
            return false;
        value = value * 10 + Uint32(t[i] - '0');
    }
    wild = false;
    return true;
}

// Parses and validates text into rep; false if the text is not a date-time.
bool _parse(const String& str, CIMDateTimeRep& rep)
{
    if (str.size() != 25)
        return false;
    char t[26];
    for (Uint32 i = 0; i < 25; i++) {
        Uint16 c = str[i];
        if (c > 0x7F)
            return false;
        t[i] = char(c);
    }
    t[25] = 0;
    if (t[14] != '.')
        return false;
    char sign = t[21];
    bool interval = sign == ':';
    if (!interval && sign != '+' && sign != '-')
        return false;

    // Microseconds: digits, then only '*'.
    Uint32 usec = 0;
    bool seenWild = false;
    bool anyWild = false;
    for (int i = 15; i < 21; i++) {
        if (t[i] == '*')
            seenWild = true;
        else if (!_digit(t[i]) || seenWild)
            return false;
        else
            usec = usec * 10 + Uint32(t[i] - '0');
        if (t[i] == '*')
            usec *= 10;
    }
    anyWild = seenWild;

    Uint32 off;
    bool offWild;
    if (!_field(t, 22, 3, off, offWild) || offWild)
        return false;

    Uint32 hh, mi, ss;
    bool wh, wmi, wss;
    if (!_field(t, 8, 2, hh, wh) || !_field(t, 10, 2, mi, wmi) || !_field(t, 12, 2, ss, wss))
        return false;
    if (hh > 23 || mi > 59 || ss > 59)
        return false;
    anyWild = anyWild || wh || wmi || wss;
    Sint64 timeOfDay = (Sint64(hh) * 3600 + mi * 60 + ss) * USEC_PER_SEC + usec;

    if (interval) {
        if (off != 0)
            return false;
        Uint32 days;
        bool wd;
        if (!_field(t, 0, 8, days, wd))
            return false;
        anyWild = anyWild || wd;
        rep.usec = Sint64(days) * USEC_PER_DAY + timeOfDay;
        rep.offset = 0;
    } else {
        Uint32 y, mo, d;
        bool wy, wmo, wd;
        if (!_field(t, 0, 4, y, wy) || !_field(t, 4, 2, mo, wmo) || !_field(t, 6, 2, d, wd))
            return false;
        if (!wmo && (mo < 1 || mo > 12))
            return false;
        if (!wd && (d < 1 || d > 31))
            return false;
        if (!wy && !wmo && !wd && d > _daysInMonth(y, mo))
            return false;
        anyWild = anyWild || wy || wmo || wd;
        if (wmo)
            mo = 1;
        if (wd)
            d = 1;
        Sint32 offset = Sint32(off) * (sign == '-' ? -1 : 1);
        rep.usec = _daysFromCivil(y, mo, d) * USEC_PER_DAY + timeOfDay -
                   Sint64(offset) * 60 * USEC_PER_SEC;
        rep.offset = offset;
    }
    std::memcpy(rep.text, t, 26);
    rep.interval = interval;
    rep.wildcards = anyWild;
    return true;
}

// A rep for an interval of usec microseconds.
void _makeInterval(Uint64 usec, CIMDateTimeRep& rep)
{
    Uint64 days = usec / Uint64(USEC_PER_DAY);
    if (days > MAX_INTERVAL_DAYS)
        throw DateTimeOutOfRangeException("interval exceeds 99999999 days");
    Uint64 rest = usec % Uint64(USEC_PER_DAY);
    Uint64 secs = rest / USEC_PER_SEC;
    char buf[64];
    std::snprintf(buf, sizeof(buf), "%08llu%02llu%02llu%02llu.%06llu:000", days, secs / 3600,
                  (secs / 60) % 60, secs % 60, rest % USEC_PER_SEC);
    std::memcpy(rep.text, buf, 25);
    rep.text[25] = 0;
    rep.interval = true;
    rep.wildcards = false;
    rep.usec = Sint64(usec);
    rep.offset = 0;
}

// A rep for the UTC instant utc written with offset minutes.
void _makeTimeStamp(Sint64 utc, Sint32 offset, CIMDateTimeRep& rep)
{
    Sint64 local = utc + Sint64(offset) * 60 * USEC_PER_SEC;
    if (local < 0)
        throw DateTimeOutOfRangeException("before year 0000");
    Sint64 days = local / USEC_PER_DAY;
    Sint64 rest = local % USEC_PER_DAY;
    Sint64 y;
    unsigned m, d;
    _civilFromDays(days, y, m, d);
    if (y > 9999)
        throw DateTimeOutOfRangeException("beyond year 9999");
    Sint64 secs = rest / USEC_PER_SEC;
    Sint32 a = offset < 0 ? -offset : offset;
    char buf[64];
    std::snprintf(buf, sizeof(buf), "%04lld%02u%02u%02lld%02lld%02lld.%06lld%c%03d", y, m, d,
                  secs / 3600, (secs / 60) % 60, secs % 60, rest % USEC_PER_SEC,
                  offset < 0 ? '-' : '+', int(a));
    std::memcpy(rep.text, buf, 25);
    rep.text[25] = 0;
    rep.interval = false;
    rep.wildcards = false;
    rep.usec = utc;
    rep.offset = offset;
}

// Writes value in width digits at t, or '*'s for WILDCARD.
void _put(char* t, Uint32 value, int width)
{
    if (value == CIMDateTime::WILDCARD) {
        std::memset(t, '*', size_t(width));
        return;
    }
    for (int i = width - 1; i >= 0; i--) {
        t[i] = char('0' + value % 10);
        value /= 10;
    }
}

void _putMicroseconds(char* t, Uint32 usec, Uint32 significant)
{
    if (significant > 6)
        throw DateTimeOutOfRangeException("more than 6 significant microsecond digits");
    _put(t, usec, 6);
    for (Uint32 i = significant; i < 6; i++)
        t[i] = '*';
}

void _requireSameKind(const CIMDateTimeRep& a, const CIMDateTimeRep& b)
{
    if (a.interval != b.interval)
        throw TypeMismatchException();
}

}  // namespace

const Uint32 CIMDateTime::WILDCARD = Uint32(-1);

CIMDateTime::CIMDateTime() : _rep(new CIMDateTimeRep)
{
    _makeInterval(0, *_rep);
}

CIMDateTime::CIMDateTime(const CIMDateTime& x) : _rep(new CIMDateTimeRep(*x._rep)) {}

CIMDateTime::CIMDateTime(const String& str) : _rep(new CIMDateTimeRep)
{
    if (!_parse(str, *_rep)) {
        delete _rep;
        throw InvalidDateTimeFormatException();
    }
}

CIMDateTime::CIMDateTime(Uint64 usec, Boolean isInterval) : _rep(new CIMDateTimeRep)
{
    try {
        if (isInterval)
            _makeInterval(usec, *_rep);
        else if (usec > Uint64(_daysFromCivil(10000, 1, 1)) * Uint64(USEC_PER_DAY))
            throw DateTimeOutOfRangeException("beyond year 9999");
        else
            _makeTimeStamp(Sint64(usec), 0, *_rep);
    } catch (...) {
        delete _rep;
        throw;
    }
}

CIMDateTime::CIMDateTime(Uint32 year, Uint32 month, Uint32 day, Uint32 hours, Uint32 minutes,
                         Uint32 seconds, Uint32 microseconds,
                         Uint32 numSignificantMicrosecondDigits, Sint32 utcOffset)
    : _rep(new CIMDateTimeRep)
{
    _makeInterval(0, *_rep);
    try {
        setTimeStamp(year, month, day, hours, minutes, seconds, microseconds,
                     numSignificantMicrosecondDigits, utcOffset);
    } catch (...) {
        delete _rep;
        throw;
    }
}

CIMDateTime::CIMDateTime(Uint32 days, Uint32 hours, Uint32 minutes, Uint32 seconds,
                         Uint32 microseconds, Uint32 numSignificantMicrosecondDigits)
    : _rep(new CIMDateTimeRep)
{
    _makeInterval(0, *_rep);
    try {
        setInterval(days, hours, minutes, seconds, microseconds, numSignificantMicrosecondDigits);
    } catch (...) {
        delete _rep;
        throw;
    }
}

CIMDateTime::~CIMDateTime()
{
    delete _rep;
}

CIMDateTime& CIMDateTime::operator=(const CIMDateTime& x)
{
    *_rep = *x._rep;
    return *this;
}

String CIMDateTime::toString() const
{
    return String(_rep->text);
}

void CIMDateTime::set(const String& str)
{
    CIMDateTimeRep r;
    if (!_parse(str, r))
        throw InvalidDateTimeFormatException();
    *_rep = r;
}

void CIMDateTime::setTimeStamp(Uint32 year, Uint32 month, Uint32 day, Uint32 hours, Uint32 minutes,
                               Uint32 seconds, Uint32 microseconds,
                               Uint32 numSignificantMicrosecondDigits, Sint32 utcOffset)
{
    auto bad = [](Uint32 v, Uint32 lo, Uint32 hi) { return v != WILDCARD && (v < lo || v > hi); };
    if (bad(year, 0, 9999) || bad(month, 1, 12) || bad(day, 1, 31) || bad(hours, 0, 23) ||
        bad(minutes, 0, 59) || bad(seconds, 0, 59) || microseconds > 999999 || utcOffset < -999 ||
        utcOffset > 999) {
        throw DateTimeOutOfRangeException("timestamp field out of range");
    }
    char t[26];
    _put(t, year, 4);
    _put(t + 4, month, 2);
    _put(t + 6, day, 2);
    _put(t + 8, hours, 2);
    _put(t + 10, minutes, 2);
    _put(t + 12, seconds, 2);
    t[14] = '.';
    _putMicroseconds(t + 15, microseconds, numSignificantMicrosecondDigits);
    t[21] = utcOffset < 0 ? '-' : '+';
    _put(t + 22, Uint32(utcOffset < 0 ? -utcOffset : utcOffset), 3);
    t[25] = 0;
    CIMDateTimeRep r;
    if (!_parse(String(t), r))
        throw DateTimeOutOfRangeException(t);
    *_rep = r;
}

void CIMDateTime::setInterval(Uint32 days, Uint32 hours, Uint32 minutes, Uint32 seconds,
                              Uint32 microseconds, Uint32 numSignificantMicrosecondDigits)
{
    auto bad = [](Uint32 v, Uint32 hi) { return v != WILDCARD && v > hi; };
    if (bad(days, MAX_INTERVAL_DAYS) || bad(hours, 23) || bad(minutes, 59) || bad(seconds, 59) ||
        microseconds > 999999) {
        throw DateTimeOutOfRangeException("interval field out of range");
    }
    char t[26];
    _put(t, days, 8);
    _put(t + 8, hours, 2);
    _put(t + 10, minutes, 2);
    _put(t + 12, seconds, 2);
    t[14] = '.';
    _putMicroseconds(t + 15, microseconds, numSignificantMicrosecondDigits);
    std::memcpy(t + 21, ":000", 5);
    CIMDateTimeRep r;
    if (!_parse(String(t), r))
        throw DateTimeOutOfRangeException(t);
    *_rep = r;
}

void CIMDateTime::clear()
{
    _makeInterval(0, *_rep);
}

CIMDateTime CIMDateTime::getCurrentDateTime()
{
    struct timeval tv;
    gettimeofday(&tv, 0);
    time_t secs = tv.tv_sec;
    struct tm local;
    localtime_r(&secs, &local);
    Sint32 offset = Sint32(local.tm_gmtoff / 60);
    Sint64 utc =
        (_daysFromCivil(1970, 1, 1) * 86400 + Sint64(tv.tv_sec)) * USEC_PER_SEC + tv.tv_usec;
    CIMDateTime result;
    _makeTimeStamp(utc, offset, *result._rep);
    return result;
}

Sint64 CIMDateTime::getDifference(CIMDateTime startTime, CIMDateTime finishTime)
{
    _requireSameKind(*startTime._rep, *finishTime._rep);
    return finishTime._rep->usec - startTime._rep->usec;
}

Boolean CIMDateTime::isInterval() const
{
    return _rep->interval;
}

Boolean CIMDateTime::isInterval()
{
    return _rep->interval;
}

Boolean CIMDateTime::isTimeStamp() const
{
    return !_rep->interval;
}

Boolean CIMDateTime::equal(const CIMDateTime& x) const
{
    if (_rep->interval != x._rep->interval)
        return false;
    if (!_rep->wildcards && !x._rep->wildcards)
        return _rep->usec == x._rep->usec;
    // With wildcards, compare the fields that both give, as written.
    if (_rep->offset != x._rep->offset)
        return false;
    for (int i = 0; i < 21; i++) {
        char a = _rep->text[i], b = x._rep->text[i];
        if (a != '*' && b != '*' && a != b)
            return false;
    }
    return true;
}

Uint64 CIMDateTime::toMicroSeconds() const
{
    return _rep->usec < 0 ? 0 : Uint64(_rep->usec);
}

CIMDateTime CIMDateTime::operator+(const CIMDateTime& x) const
{
    if (!x._rep->interval)
        throw TypeMismatchException();
    CIMDateTime r;
    if (_rep->interval)
        _makeInterval(Uint64(_rep->usec) + Uint64(x._rep->usec), *r._rep);
    else
        _makeTimeStamp(_rep->usec + x._rep->usec, _rep->offset, *r._rep);
    return r;
}

CIMDateTime& CIMDateTime::operator+=(const CIMDateTime& x)
{
    *this = *this + x;
    return *this;
}

CIMDateTime CIMDateTime::operator-(const CIMDateTime& x) const
{
    if (_rep->interval && !x._rep->interval)
        throw TypeMismatchException();
    Sint64 d = _rep->usec - x._rep->usec;
    CIMDateTime r;
    if (_rep->interval || !x._rep->interval) {
        // interval - interval, or timestamp - timestamp: an interval.
        if (d < 0)
            throw DateTimeOutOfRangeException("negative interval");
        _makeInterval(Uint64(d), *r._rep);
    } else {
        _makeTimeStamp(d, _rep->offset, *r._rep);
    }
    return r;
}

CIMDateTime& CIMDateTime::operator-=(const CIMDateTime& x)
{
    *this = *this - x;
    return *this;
}

CIMDateTime CIMDateTime::operator*(Uint64 x) const
{
    if (!_rep->interval)
        throw TypeMismatchException();
    Uint64 u = Uint64(_rep->usec);
    if (x != 0 && u > Uint64(MAX_INTERVAL_DAYS + 1) * Uint64(USEC_PER_DAY) / x)
        throw DateTimeOutOfRangeException("interval exceeds 99999999 days");
    CIMDateTime r;
    _makeInterval(u * x, *r._rep);
    return r;
}

CIMDateTime& CIMDateTime::operator*=(Uint64 x)
{
    *this = *this * x;
    return *this;
}

CIMDateTime CIMDateTime::operator/(Uint64 num) const
{
    if (!_rep->interval)
        throw TypeMismatchException();
    if (num == 0)
        throw Exception("Can not divide by zero.");
    CIMDateTime r;
    _makeInterval(Uint64(_rep->usec) / num, *r._rep);
    return r;
}

CIMDateTime& CIMDateTime::operator/=(Uint64 num)
{
    *this = *this / num;
    return *this;
}

Uint64 CIMDateTime::operator/(const CIMDateTime& cdt) const
{
    if (!_rep->interval || !cdt._rep->interval)
        throw TypeMismatchException();
    if (cdt._rep->usec == 0)
        throw Exception("Can not divide by zero.");
    return Uint64(_rep->usec) / Uint64(cdt._rep->usec);
}

Boolean CIMDateTime::operator<(const CIMDateTime& x) const
{
    _requireSameKind(*_rep, *x._rep);
    return _rep->usec < x._rep->usec;
}

Boolean CIMDateTime::operator<=(const CIMDateTime& x) const
{
    _requireSameKind(*_rep, *x._rep);
    return _rep->usec <= x._rep->usec;
}

Boolean CIMDateTime::operator>(const CIMDateTime& x) const
{
    _requireSameKind(*_rep, *x._rep);
    return _rep->usec > x._rep->usec;
}

Boolean CIMDateTime::operator>=(const CIMDateTime& x) const
{
    _requireSameKind(*_rep, *x._rep);
    return _rep->usec >= x._rep->usec;
}

Boolean CIMDateTime::operator!=(const CIMDateTime& x) const
{
    return !equal(x);
}

Boolean operator==(const CIMDateTime& x, const CIMDateTime& y)
{
    return x.equal(y);
}

PEGASUS_NAMESPACE_END
