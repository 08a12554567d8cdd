// Tests of CIMDateTime: parsing, text form, instants, arithmetic.

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

#include <cstdlib>
#include <ctime>

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;
using zartest::str;

namespace {

const Uint64 SEC = 1000000;

TEST(CIMDateTimeTest, DefaultsAndEpoch)
{
    EXPECT_EQ("00000000000000.000000:000", str(CIMDateTime().toString()));
    EXPECT_TRUE(CIMDateTime().isInterval());
    EXPECT_EQ("00000101000000.000000+000", str(CIMDateTime(Uint64(0), false).toString()));
    EXPECT_EQ("00000001000001.000002:000",
              str(CIMDateTime(Uint64(86400) * SEC + SEC + 2, true).toString()));
}

TEST(CIMDateTimeTest, ParsesAndKeepsText)
{
    for (const char* t :
         {"20260102030405.123456-300", "20261122023739.398673+330", "20240229235959.999999+000",
          "00000000000000.000000:000", "99999999235959.999999:000", "2026**********.******+000",
          "20260102030405.12****+000", "000000010000**.******:000"})
        EXPECT_EQ(std::string(t), str(CIMDateTime(String(t)).toString())) << t;

    for (const char* t :
         {"2020", "", "20260102030405.123456+30", "20261302030405.000000+000",
          "20260100030405.000000+000", "20230229000000.000000+000", "20260102240000.000000+000",
          "20260102036000.000000+000", "20260102030460.000000+000", "20260102030405,000000+000",
          "20260102030405.000000*000", "20260102030405.000000:00a", "00000000000000.000000:001",
          "00000000240000.000000:000", "20260102030405.1*3456+000", "2026010203040x.000000+000",
          "202601020304 5.000000+000", "2026*102030405.000000+000", "20260102030405.000000+0*0"})
        EXPECT_THROW(CIMDateTime d{String(t)}, InvalidDateTimeFormatException) << t;

    EXPECT_EQ(
        "invalid datetime format",
        str(MessageOf<InvalidDateTimeFormatException>([] { CIMDateTime d(String("2020")); })));
    CIMDateTime d("20200101000000.000000+000");
    EXPECT_THROW(d.set("junk"), InvalidDateTimeFormatException);
    EXPECT_EQ("20200101000000.000000+000", str(d.toString()));
}

TEST(CIMDateTimeTest, EqualityComparesTheInstant)
{
    EXPECT_TRUE(CIMDateTime("20200101120000.000000+060") ==
                CIMDateTime("20200101110000.000000+000"));
    EXPECT_TRUE(CIMDateTime("20200101000000.000000-300") ==
                CIMDateTime("20200101050000.000000+000"));
    EXPECT_FALSE(CIMDateTime("20200101120000.000000+000") ==
                 CIMDateTime("20200101120000.000001+000"));
    EXPECT_FALSE(CIMDateTime("00000000000000.000000:000") ==
                 CIMDateTime(Uint64(0), false));  // kinds differ
    EXPECT_TRUE(CIMDateTime("20200101120000.000000+000") !=
                CIMDateTime("20200101120000.000000+001"));
    // Wildcards match any digit they cover.
    EXPECT_TRUE(CIMDateTime("2020**********.******+000") ==
                CIMDateTime("20201231235959.999999+000"));
    EXPECT_FALSE(CIMDateTime("2021**********.******+000") ==
                 CIMDateTime("20201231235959.999999+000"));
}

TEST(CIMDateTimeTest, MicrosecondsAndDifference)
{
    CIMDateTime a("20200101000000.000000+000");
    CIMDateTime b("20200102000001.000005+000");
    EXPECT_EQ(Sint64(86401 * SEC + 5), CIMDateTime::getDifference(a, b));
    EXPECT_EQ(-Sint64(86401 * SEC + 5), CIMDateTime::getDifference(b, a));
    EXPECT_EQ(Uint64(90061) * SEC + 7, CIMDateTime("00000001010101.000007:000").toMicroSeconds());
    EXPECT_THROW(CIMDateTime::getDifference(a, CIMDateTime()), TypeMismatchException);
    // A timestamp's microseconds are UTC and survive a round trip.
    CIMDateTime local("20200615123456.654321-240");
    CIMDateTime utc(local.toMicroSeconds(), false);
    EXPECT_EQ("20200615163456.654321+000", str(utc.toString()));
    EXPECT_TRUE(utc == local);
}

TEST(CIMDateTimeTest, Arithmetic)
{
    CIMDateTime ts("20201231230000.000000+060");
    CIMDateTime hour("00000000010000.000000:000");
    CIMDateTime later = ts + hour;
    EXPECT_EQ("20210101000000.000000+060", str(later.toString()));  // offset kept
    EXPECT_EQ("00000000010000.000000:000", str((later - ts).toString()));
    EXPECT_EQ(str(ts.toString()), str((later - hour).toString()));
    EXPECT_EQ("00000000020000.000000:000", str((hour + hour).toString()));
    EXPECT_EQ("00000000030000.000000:000", str((hour * 3).toString()));
    EXPECT_EQ("00000000002000.000000:000", str((hour / 3).toString()));
    EXPECT_EQ(3u, (hour * 3) / hour);
    CIMDateTime acc = hour;
    acc += hour;
    acc -= CIMDateTime("00000000000001.000000:000");
    acc *= 2;
    acc /= 2;
    EXPECT_EQ("00000000015959.000000:000", str(acc.toString()));

    EXPECT_THROW(ts + ts, TypeMismatchException);
    EXPECT_THROW(hour - ts, TypeMismatchException);
    EXPECT_THROW(ts * 2, TypeMismatchException);
    EXPECT_THROW(ts / Uint64(2), TypeMismatchException);
    EXPECT_THROW(hour - (hour * 2), DateTimeOutOfRangeException);
    EXPECT_THROW(ts - later, DateTimeOutOfRangeException);
    EXPECT_THROW(hour / Uint64(0), Exception);
    EXPECT_THROW(CIMDateTime("99991231230000.000000+000") + hour + hour,
                 DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime("99999999230000.000000:000") + hour, DateTimeOutOfRangeException);
}

TEST(CIMDateTimeTest, Ordering)
{
    CIMDateTime a("20200101000000.000000+000");
    CIMDateTime b("20200101000000.000000-060");  // one hour later in UTC
    EXPECT_TRUE(a < b);
    EXPECT_TRUE(a <= b);
    EXPECT_TRUE(b > a);
    EXPECT_TRUE(b >= a);
    EXPECT_FALSE(a > b);
    EXPECT_THROW((void)(a < CIMDateTime()), TypeMismatchException);
}

TEST(CIMDateTimeTest, FieldConstructors)
{
    CIMDateTime ts(2026, 1, 2, 3, 4, 5, 123456, 6, -300);
    EXPECT_EQ("20260102030405.123456-300", str(ts.toString()));
    EXPECT_TRUE(ts.isTimeStamp());
    CIMDateTime partial(2026, 1, 2, 3, 4, 5, 123456, 2, 0);
    EXPECT_EQ("20260102030405.12****+000", str(partial.toString()));
    CIMDateTime wild(2026, CIMDateTime::WILDCARD, CIMDateTime::WILDCARD, CIMDateTime::WILDCARD,
                     CIMDateTime::WILDCARD, CIMDateTime::WILDCARD, 0, 0, 0);
    EXPECT_EQ("2026**********.******+000", str(wild.toString()));
    CIMDateTime iv(1, 2, 3, 4, 5, 6);
    EXPECT_EQ("00000001020304.000005:000", str(iv.toString()));
    EXPECT_THROW(CIMDateTime(2026, 13, 1, 0, 0, 0, 0, 6, 0), DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime(2026, 2, 30, 0, 0, 0, 0, 6, 0), DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime(0, 24, 0, 0, 0, 6), DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime(2026, 1, 1, 0, 0, 0, 0, 7, 0), DateTimeOutOfRangeException);
    CIMDateTime s;
    s.setInterval(0, 0, 0, 1, 0, 6);
    EXPECT_EQ(SEC, s.toMicroSeconds());
    s.clear();
    EXPECT_EQ("00000000000000.000000:000", str(s.toString()));
}

TEST(CIMDateTimeTest, CurrentTimeUsesTheLocalOffset)
{
    const char* saved = getenv("TZ");
    std::string savedTz = saved ? saved : "";
    setenv("TZ", "IST-5:30", 1);
    tzset();
    String now = CIMDateTime::getCurrentDateTime().toString();
    if (saved)
        setenv("TZ", savedTz.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
    ASSERT_EQ(25u, now.size());
    EXPECT_EQ("+330", str(now.subString(21)));
    CIMDateTime parsed(now);
    EXPECT_TRUE(parsed.isTimeStamp());
    // Within a day of the system clock (no timing assertion beyond that).
    Sint64 unixUsec = Sint64(time(0)) * Sint64(SEC);
    Sint64 epoch = Sint64(CIMDateTime("19700101000000.000000+000").toMicroSeconds());
    Sint64 diff = Sint64(parsed.toMicroSeconds()) - epoch - unixUsec;
    EXPECT_LT(diff < 0 ? -diff : diff, Sint64(86400) * Sint64(SEC));
}

TEST(CIMDateTimeTest, CopiesAreIndependent)
{
    CIMDateTime a("20200101000000.000000+000");
    CIMDateTime b(a);
    b.set("20210101000000.000000+000");
    CIMDateTime c;
    c = a;
    c.clear();
    EXPECT_EQ("20200101000000.000000+000", str(a.toString()));
    EXPECT_EQ("20210101000000.000000+000", str(b.toString()));
}

}  // namespace
