// Conversions of positions, WWNs and addresses, error texts, and the
// record layout seen through the bit-field flags.
#include <gtest/gtest.h>

#include <cstring>

#include <zarapi.h>

TEST(Text, PortPositionRoundTrip)
{
    lpid_t p = API_PORT_NONE;
    ASSERT_EQ(0, api_convertStrLPIDtoPortID("1:2:3", &p));
    EXPECT_EQ(1 * 128 + 2 * 8 + 3, p);
    char buf[16], scratch[16];
    EXPECT_STREQ("1:2:3", loop_txbf(p, buf, scratch));
    EXPECT_STREQ("7:9:4", loop_txbf(7 * 128 + 9 * 8 + 4, buf, buf));
    // Slot 12 and port 5 are representable, so the caller can report them.
    ASSERT_EQ(0, api_convertStrLPIDtoPortID("0:12:5", &p));
    EXPECT_EQ(12 * 8 + 5, p);
}

TEST(Text, BadPortPositionsLeaveTheValue)
{
    for (const char* bad :
         {"", "1:2", "1:2:3:4", "8:0:1", "0:16:1", "0:1:8", "a:b:c", "1::3", "-1:0:1", " 1:2:3"}) {
        lpid_t p = API_PORT_NONE;
        EXPECT_NE(0, api_convertStrLPIDtoPortID(bad, &p)) << bad;
        EXPECT_EQ(API_PORT_NONE, p) << bad;
    }
}

TEST(Text, WwnConversion)
{
    zar_u64 hi = 7, lo = API_WWN_NONE;
    ASSERT_EQ(0, api_wwnStringToInt(nullptr, "20010002ac001234", &hi, &lo));
    EXPECT_EQ(0u, hi);
    EXPECT_EQ(0x20010002AC001234ULL, lo);
    ASSERT_EQ(0, api_wwnStringToInt(nullptr, "60002AC0000000000000000100000002", &hi, &lo));
    EXPECT_EQ(0x60002AC000000000ULL, hi);
    EXPECT_EQ(0x0000000100000002ULL, lo);
    api_status_t st;
    api_initStatus(&st);
    hi = 1;
    lo = 2;
    EXPECT_EQ(API_E_INVALID_ARG, api_wwnStringToInt(&st, "iqn.1994-05.com.example:x", &hi, &lo));
    EXPECT_EQ(API_E_INVALID_ARG, st.code);
    EXPECT_EQ(1u, hi);
    EXPECT_EQ(2u, lo);
    EXPECT_NE(0, api_wwnStringToInt(&st, "", &hi, &lo));
    EXPECT_NE(0, api_wwnStringToInt(&st, "123456789012345678901234567890123", &hi, &lo));
}

TEST(Text, AddressClassification)
{
    char out[46];
    EXPECT_EQ(API_IPV4_OK, validateConvertIP("192.0.2.1", out, sizeof out));
    EXPECT_STREQ("192.0.2.1", out);
    EXPECT_EQ(API_IPV6_OK, validateConvertIP("2001:DB8:0:0::1", out, sizeof out));
    EXPECT_STREQ("2001:db8::1", out);
    // As the host of an object path.
    EXPECT_EQ(API_IPV6_OK, validateConvertIP("[2001:DB8::1]", out, sizeof out));
    EXPECT_STREQ("2001:db8::1", out);
    EXPECT_EQ(API_IPV6_INVALID, validateConvertIP("[2001:db8::1", out, sizeof out));
    EXPECT_EQ(API_IPV4_INVALID, validateConvertIP("300.1.1.1", out, sizeof out));
    EXPECT_EQ(API_IPV6_INVALID, validateConvertIP("2001:::1", out, sizeof out));
    EXPECT_EQ(API_IP_INVALID, validateConvertIP("localhost", out, sizeof out));
    EXPECT_TRUE(api_isAllNumeric("0123"));
    EXPECT_FALSE(api_isAllNumeric(""));
    EXPECT_FALSE(api_isAllNumeric("12a"));
}

TEST(Text, ErrorTextsWithAndWithoutLineBreak)
{
    api_status_t st;
    api_initStatus(&st);
    errinfo_set_str(&st, API_E_SEM_TIMEOUT, "Semaphore Timed-Out");
    char buf[513];
    EXPECT_EQ(32, api_getErrorText(buf, sizeof buf, &st));
    EXPECT_STREQ("Semaphore Timed-Out\n", buf);
    EXPECT_EQ(32, api_getErrorTextNoNL(buf, sizeof buf, &st));
    EXPECT_STREQ("Semaphore Timed-Out", buf);
    // An empty text falls back to the code's standard text; short buffers cut.
    errinfo_set_str(&st, API_E_LUN_INVALID, "");
    api_getErrorTextNoNL(buf, sizeof buf, &st);
    EXPECT_STREQ(api_errorCodeText(API_E_LUN_INVALID), buf);
    api_getErrorText(buf, 5, &st);
    EXPECT_EQ(4u, strlen(buf));
}

TEST(Text, QueryFlagsShareOneByteInOrder)
{
    api_vlunsInfo_t q;
    memset(&q, 0, sizeof q);
    const unsigned char* flags = reinterpret_cast<const unsigned char*>(&q) + 76;
    q.vvnameIsSet = 1;
    EXPECT_EQ(0x01, *flags);
    q.hostnameIsSet = 1;
    q.lunIsSet = 1;
    q.portIsSet = 1;
    q.vluntypeIsSet = 1;
    EXPECT_EQ(0x1F, *flags);
    EXPECT_EQ(0u, q.count);
}
