//%/////////////////////////////////////////////////////////////////////////////
// CIMDateTime: a DMTF date-time, either a timestamp
// "yyyymmddhhmmss.mmmmmmsUUU" (s is '+' or '-', UUU the UTC offset in
// minutes) or an interval "ddddddddhhmmss.mmmmmm:000". Digits may be replaced
// by '*' wildcards, which are kept. Value semantics.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMDateTime_h
#define Pegasus_CIMDateTime_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>

PEGASUS_NAMESPACE_BEGIN

struct CIMDateTimeRep;

class PEGASUS_COMMON_LINKAGE CIMDateTime {
public:
    // Marks a field as a wildcard in the field-wise constructors.
    static const Uint32 WILDCARD;

    // The zero interval "00000000000000.000000:000".
    CIMDateTime();

    CIMDateTime(const CIMDateTime& x);

    // Parses str (implicit); throws InvalidDateTimeFormatException.
    CIMDateTime(const String& str);

    // A timestamp of usec microseconds after 0000-01-01 00:00 UTC (offset
    // +000), or an interval of usec microseconds. Throws
    // DateTimeOutOfRangeException beyond year 9999 / 99999999 days.
    CIMDateTime(Uint64 usec, Boolean isInterval);

    // A timestamp; a field equal to WILDCARD becomes '*'s, and only the first
    // numSignificantMicrosecondDigits microsecond digits are kept (the rest
    // are '*'). Throws DateTimeOutOfRangeException for fields out of range.
    CIMDateTime(Uint32 year, Uint32 month, Uint32 day, Uint32 hours, Uint32 minutes, Uint32 seconds,
                Uint32 microseconds, Uint32 numSignificantMicrosecondDigits, Sint32 utcOffset);

    // An interval, with the same wildcard rules.
    CIMDateTime(Uint32 days, Uint32 hours, Uint32 minutes, Uint32 seconds, Uint32 microseconds,
                Uint32 numSignificantMicrosecondDigits);

    ~CIMDateTime();

    CIMDateTime& operator=(const CIMDateTime& x);

    // The 25-character DMTF text.
    String toString() const;

    // Parses str; throws InvalidDateTimeFormatException and leaves the value
    // unchanged on error.
    void set(const String& str);

    // Field-wise setters with the rules of the matching constructors.
    void setTimeStamp(Uint32 year, Uint32 month, Uint32 day, Uint32 hours, Uint32 minutes,
                      Uint32 seconds, Uint32 microseconds, Uint32 numSignificantMicrosecondDigits,
                      Sint32 utcOffset);

    void setInterval(Uint32 days, Uint32 hours, Uint32 minutes, Uint32 seconds, Uint32 microseconds,
                     Uint32 numSignificantMicrosecondDigits);

    // Back to the zero interval.
    void clear();

    // The current local time with the local UTC offset.
    static CIMDateTime getCurrentDateTime();

    // finishTime minus startTime in microseconds (both timestamps or both
    // intervals, else TypeMismatchException).
    static Sint64 getDifference(CIMDateTime startTime, CIMDateTime finishTime);

    Boolean isInterval() const;
    Boolean isInterval();
    Boolean isTimeStamp() const;

    // Same kind and the same instant (timestamps are compared in UTC).
    Boolean equal(const CIMDateTime& x) const;

    // An interval's length, or a timestamp's UTC time as microseconds since
    // 0000-01-01 00:00 UTC.
    Uint64 toMicroSeconds() const;

    // timestamp + interval and interval + interval; other combinations throw
    // TypeMismatchException, a result out of range DateTimeOutOfRangeException.
    CIMDateTime operator+(const CIMDateTime& x) const;
    CIMDateTime& operator+=(const CIMDateTime& x);

    // timestamp - timestamp gives an interval; timestamp - interval a
    // timestamp; interval - interval an interval; a negative result throws
    // DateTimeOutOfRangeException, interval - timestamp TypeMismatchException.
    CIMDateTime operator-(const CIMDateTime& x) const;
    CIMDateTime& operator-=(const CIMDateTime& x);

    // Interval arithmetic; a timestamp operand throws TypeMismatchException.
    CIMDateTime operator*(Uint64 x) const;
    CIMDateTime& operator*=(Uint64 x);
    CIMDateTime operator/(Uint64 num) const;
    CIMDateTime& operator/=(Uint64 num);
    Uint64 operator/(const CIMDateTime& cdt) const;

    // Orderings between values of the same kind (else TypeMismatchException).
    Boolean operator<(const CIMDateTime& x) const;
    Boolean operator<=(const CIMDateTime& x) const;
    Boolean operator>(const CIMDateTime& x) const;
    Boolean operator>=(const CIMDateTime& x) const;
    Boolean operator!=(const CIMDateTime& x) const;

private:
    CIMDateTimeRep* _rep;
};

// x.equal(y)
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMDateTime& x, const CIMDateTime& y);

PEGASUS_NAMESPACE_END

#endif
