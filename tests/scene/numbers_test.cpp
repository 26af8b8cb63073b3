#include "scene/numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

using korvane::ParseInteger;
using korvane::ParseReal;

static constexpr float greatest = std::numeric_limits<float>::max();

static std::string Real(float value)
{
    char text[korvane::numbersize];
    return std::string(text, korvane::WriteReal(text, value));
}

static std::string Color(float value)
{
    char text[korvane::numbersize];
    return std::string(text, korvane::WriteColor(text, value));
}

// What formatted output gives in the "C" locale, in which the tests run, with a comma.
static std::string Formatted(const char* format, double value)
{
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    std::string result = text;
    std::replace(result.begin(), result.end(), '.', ',');
    return result;
}

static void ExpectAsFormatted(float value)
{
    ASSERT_EQ(Real(value), Formatted("%.20lg", double(value)));
    ASSERT_EQ(Color(value), Formatted("%f", double(value)));
}

TEST(WriteReal, WritesTwentyDigitsWithoutTrailingZeros)
{
    EXPECT_EQ(Real(0.5F), "0,5");
    EXPECT_EQ(Real(-2.0F), "-2");
    EXPECT_EQ(Real(100.0F), "100");
    EXPECT_EQ(Real(0.0F), "0");
    EXPECT_EQ(Real(-0.0F), "-0");
    // 13421773 / 2^27 = 0.100000001490116119384765625
    EXPECT_EQ(Real(0.1F), "0,10000000149011611938");
}

TEST(WriteReal, WritesAnExponentBelowOneTenThousandth)
{
    EXPECT_EQ(Real(0x1p-13F), "0,0001220703125");
    EXPECT_EQ(Real(0x1p-14F), "6,103515625e-05");
    EXPECT_EQ(Real(0x1p-100F),
              "7,8886090522101180541e-31"); // 2^-100 = 7.88860905221011805411728...
}

TEST(WriteReal, WritesAnExponentFromTenToTheTwentyOn)
{
    EXPECT_EQ(Real(0x1p66F), "73786976294838206464");
    EXPECT_EQ(Real(0x1p67F), "1,4757395258967641293e+20"); // 147573952589676412928
}

TEST(WriteReal, RoundsATieToTheEvenDigit)
{
    // 1.00000095367431640625 and 1.00000286102294921875 have 21 digits, of which the last is 5.
    EXPECT_EQ(Real(1.0F + 0x1p-20F), "1,0000009536743164062");
    EXPECT_EQ(Real(1.0F + 3 * 0x1p-20F), "1,0000028610229492188");
}

TEST(WriteReal, IsFormattedOutputForEveryPowerOfTwoAndItsNeighbours)
{
    for (int exponent = -149; exponent < 128; exponent++) {
        const float power = std::ldexp(1.0F, exponent);
        for (const float value :
             {power, std::nextafter(power, 0.0F), std::nextafter(power, greatest)}) {
            ExpectAsFormatted(value);
            ExpectAsFormatted(-value);
        }
    }
}

TEST(WriteReal, IsFormattedOutputForEveryPowerOfTenAndItsNeighbours)
{
    for (int exponent = -45; exponent < 39; exponent++) {
        const float power = float(std::pow(10.0, exponent));
        for (const float value :
             {power, std::nextafter(power, 0.0F), std::nextafter(power, greatest)}) {
            ExpectAsFormatted(value);
        }
    }
}

TEST(WriteReal, IsFormattedOutputForWhatIsNoNumber)
{
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float value : {infinity, -infinity, std::numeric_limits<float>::quiet_NaN()}) {
        ExpectAsFormatted(value);
    }
}

TEST(WriteReal, IsFormattedOutputForFloatsOfEveryKind)
{
    std::mt19937 random(1);
    for (int i = 0; i < 300000; i++) {
        ExpectAsFormatted(std::bit_cast<float>(std::uint32_t(random()))); // any bits
    }
    std::uniform_real_distribution<float> coordinate(-10, 10);
    std::uniform_int_distribution<int> thousandth(-5000, 5000);
    for (int i = 0; i < 300000; i++) {
        ExpectAsFormatted(coordinate(random));
        ExpectAsFormatted(float(thousandth(random)) / 1000);
    }
}

TEST(WriteReal, IsReadBackAsTheSameFloat)
{
    std::mt19937 random(2);
    for (int i = 0; i < 300000; i++) {
        const auto bits = std::uint32_t(random());
        const float value = std::bit_cast<float>(bits);
        const float expected = std::isfinite(value) ? value : 0.0F;
        ASSERT_EQ(ParseReal(Real(value)), expected) << Real(value);
    }
    EXPECT_TRUE(std::signbit(ParseReal("-0")));
}

TEST(WriteColor, WritesSixDecimals)
{
    EXPECT_EQ(Color(0.8F), "0,800000");
    EXPECT_EQ(Color(1.0F), "1,000000");
    EXPECT_EQ(Color(-0.25F), "-0,250000");
    EXPECT_EQ(Color(-0.0F), "-0,000000");
    EXPECT_EQ(Color(0x1p-149F), "0,000000");
    EXPECT_EQ(Color(123456.0F), "123456,000000");
}

TEST(WriteColor, RoundsATieToTheEvenDigit)
{
    EXPECT_EQ(Color(0x1p-7F), "0,007812");     // 0.0078125
    EXPECT_EQ(Color(3 * 0x1p-7F), "0,023438"); // 0.0234375
}

TEST(WriteInteger, WritesPlainDecimals)
{
    char text[korvane::numbersize];
    EXPECT_EQ(std::string(text, korvane::WriteInteger(text, -2147483647 - 1)), "-2147483648");
    EXPECT_EQ(std::string(text, korvane::WriteInteger(text, 0)), "0");
}

TEST(ParseReal, TakesTheFirstCommaAsThePoint)
{
    EXPECT_EQ(ParseReal("0,5"), 0.5F);
    EXPECT_EQ(ParseReal("-1,25"), -1.25F);
    EXPECT_EQ(ParseReal(",5"), 0.5F);
    EXPECT_EQ(ParseReal("-,5"), -0.5F);
    EXPECT_EQ(ParseReal("7,"), 7.0F);
    EXPECT_EQ(ParseReal("1,5,3"), 1.5F);
}

TEST(ParseReal, TakesAnExponentOfAnyLength)
{
    EXPECT_EQ(ParseReal("1,25e-005"), 1.25e-5F);
    EXPECT_EQ(ParseReal("1e5"), 100000.0F);
    EXPECT_EQ(ParseReal("2E3"), 2000.0F);
    EXPECT_EQ(ParseReal("1e"), 1.0F);
    EXPECT_EQ(ParseReal("1e-"), 1.0F);
}

TEST(ParseReal, TakesTheNumberAtTheFrontOfWildText)
{
    EXPECT_EQ(ParseReal("12abc"), 12.0F);
    EXPECT_EQ(ParseReal("5-3"), 5.0F);
    EXPECT_EQ(ParseReal("3/4"), 3.0F);
    EXPECT_EQ(ParseReal("0,25x000"), 0.25F); // as long as a colour
    EXPECT_EQ(ParseReal("-,250000"), -0.25F);
    EXPECT_EQ(ParseReal("9,999999"), 9.999999F);
    for (const char* text : {"abc", "", "-", "--5", ",", "/5", "e5", "-e"}) {
        EXPECT_EQ(ParseReal(text), 0.0F) << text;
    }
}

TEST(ParseReal, TakesNothingThatIsNotFinite)
{
    for (const char* text : {"inf", "-INF", "infinity", "nan", "NAN", "0x10", "1e999", "-1e999",
                             "1e39", "1e99999999999999999999", "3,5e38"}) {
        EXPECT_EQ(ParseReal(text), 0.0F) << text;
    }
    EXPECT_EQ(ParseReal("3,4028235e38"), greatest);
    EXPECT_EQ(ParseReal("-1e-999"), 0.0F);
    EXPECT_EQ(ParseReal("1e-45"), 0x1p-149F);
}

TEST(ParseReal, TakesNumbersOfThousandsOfDigits)
{
    EXPECT_EQ(ParseReal("0," + std::string(1000, '0') + "5e1001"), 5.0F);
    EXPECT_EQ(ParseReal(std::string(2000, '9')), 0.0F); // far above every float
    EXPECT_EQ(ParseReal("1," + std::string(2000, '9')), 2.0F);
}

// atof rounds to a double, and only that is rounded to a float.
TEST(ParseReal, RoundsTwice)
{
    EXPECT_EQ(ParseReal("16777217"), 16777216.0F); // 2^24 + 1, a tie: the even one
    EXPECT_EQ(ParseReal("16777219"), 16777220.0F);
    EXPECT_EQ(ParseReal("16777217,0000001"), 16777218.0F);
    EXPECT_EQ(ParseReal("16777217,00000000000000000001"), 16777216.0F); // the double is the tie
}

TEST(ParseReal, AgreesWithStrtodNearTheMiddleOfTwoFloats)
{
    std::mt19937_64 random(5);
    std::uniform_real_distribution<float> any(-3, 3);
    std::uniform_int_distribution<int> digits(1, 24);
    std::uniform_int_distribution<int> steps(-3, 3);
    for (int i = 0; i < 200000; i++) {
        const float value = std::ldexp(any(random), i % 60 - 30);
        double middle = (double(value) + double(std::nextafter(value, greatest))) / 2;
        for (int k = steps(random); k != 0; k += k < 0 ? 1 : -1) {
            middle = std::nextafter(middle, k < 0 ? -1e30 : 1e30);
        }
        char text[80];
        std::snprintf(text, sizeof text, "%.*f", digits(random), middle);
        const float expected = float(std::strtod(text, nullptr));
        std::string token = text;
        std::replace(token.begin(), token.end(), '.', ',');
        ASSERT_EQ(ParseReal(token), expected) << token;
    }
}

// What is left of hexadecimal, infinite and other texts that only strtod takes is tested above.
TEST(ParseReal, AgreesWithStrtodOnTokensOfNumberCharacters)
{
    std::mt19937 random(3);
    const std::string characters = "0123456789012345678900,-eE/z";
    std::uniform_int_distribution<std::size_t> place(0, characters.size() - 1);
    std::uniform_int_distribution<int> length(1, 25);
    for (int i = 0; i < 300000; i++) {
        std::string token;
        for (int k = length(random); k > 0; k--) {
            token += characters[place(random)];
        }
        std::string point = token;
        if (point.find(',') != std::string::npos) {
            point[point.find(',')] = '.';
        }
        const float expected = float(std::strtod(point.c_str(), nullptr));
        ASSERT_EQ(ParseReal(token), std::isfinite(expected) ? expected : 0.0F) << token;
    }
}

TEST(ParseInteger, TakesTheIntegerAtTheFront)
{
    EXPECT_EQ(ParseInteger("17"), 17);
    EXPECT_EQ(ParseInteger("-17"), -17);
    EXPECT_EQ(ParseInteger("007"), 7);
    EXPECT_EQ(ParseInteger("12abc"), 12);
    EXPECT_EQ(ParseInteger("1,9"), 1);
    for (const char* text : {"abc", "", "-", "--5", "/5"}) {
        EXPECT_EQ(ParseInteger(text), 0) << text;
    }
}

TEST(ParseInteger, GivesTheNearestIntOutOfRange)
{
    EXPECT_EQ(ParseInteger("2147483647"), 2147483647);
    EXPECT_EQ(ParseInteger("2147483648"), 2147483647);
    EXPECT_EQ(ParseInteger("-2147483649"), -2147483647 - 1);
    EXPECT_EQ(ParseInteger("99999999999999999999999"), 2147483647);
    EXPECT_EQ(ParseInteger("-99999999999999999999999"), -2147483647 - 1);
}
