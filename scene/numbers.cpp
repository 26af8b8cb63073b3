#include "scene/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace korvane
{

__extension__ typedef unsigned __int128 Wide; // holds 24 bits of a float times any power of 5 used

// Negative powers of ten, to a few double steps. Beyond them the smallest floats, which have fewer
// digits, would come into reach.
static constexpr int mostdecimals = 37;
static constexpr auto decimalfractions = [] {
    std::array<double, mostdecimals + 1> fractions{};
    double power = 1;
    for (double& fraction : fractions) {
        fraction = 1 / power;
        power *= 10;
    }
    return fractions;
}();

// True when the nearest float is the same for all doubles within some thousand steps of the value.
static bool IsFarFromTie(double value)
{
    constexpr std::uint64_t below = (std::uint64_t(1) << 29) - 1; // the bits that a float has not
    constexpr std::uint64_t tie = std::uint64_t(1) << 28;
    constexpr std::uint64_t margin = 4096;
    const std::uint64_t rest = std::bit_cast<std::uint64_t>(value) & below;
    return rest < tie - margin || rest > tie + margin;
}

static bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The digits of a number without its comma.
struct Digits {
    std::uint64_t mantissa;
    std::ptrdiff_t decimals; // how many of the digits stand after the comma
};

// Reads "d,dddddd", as every colour between 0 and 9 is written: most numbers of a scene are
// colours.
static bool ReadColorDigits(std::string_view text, Digits& digits)
{
    if (text.size() != 8 || text[1] != ',') {
        return false;
    }
    bool valid = true;
    digits = {0, 6};
    for (const std::size_t place : {0, 2, 3, 4, 5, 6, 7}) {
        valid = valid & IsDigit(text[place]);
        digits.mantissa = digits.mantissa * 10 + std::uint64_t(text[place] - '0');
    }
    return valid;
}

// Reads digits with at most a comma among them; those that the mantissa cannot hold do not count.
static bool ReadDigits(std::string_view text, Digits& digits)
{
    constexpr std::uint64_t full = 1'000'000'000'000'000'000U; // one more digit still fits
    const char* next = text.data();
    const char* end = next + text.size();
    digits = {0, 0};
    for (; next != end && IsDigit(*next) && digits.mantissa < full; next++) {
        digits.mantissa = digits.mantissa * 10 + std::uint64_t(*next - '0');
    }
    if (next != end && *next == ',') {
        const char* first = ++next;
        for (; next != end && IsDigit(*next) && digits.mantissa < full; next++) {
            digits.mantissa = digits.mantissa * 10 + std::uint64_t(*next - '0');
        }
        digits.decimals = next - first;
        next = std::find_if_not(next, end, IsDigit);
    }
    return next == end;
}

// Reads digits with at most a sign and a comma, as nearly all numbers are, with an error of a few
// double steps. False when the text is another one or that is not good enough for a float.
static bool ParsePlain(std::string_view text, float& value)
{
    const bool negative = text.starts_with('-');
    Digits digits;
    if (!ReadColorDigits(text, digits) && !ReadDigits(text.substr(negative ? 1 : 0), digits)) {
        return false;
    }
    if (digits.decimals > mostdecimals || (digits.mantissa == 0 && negative)) {
        return false;
    }
    const double fraction = decimalfractions[std::size_t(digits.decimals)];
    const double magnitude = double(digits.mantissa) * fraction;
    value = float(negative ? -magnitude : magnitude);
    return IsFarFromTie(magnitude);
}

// Reads every text, exactly.
static float ParseByLibrary(std::string_view text)
{
    std::string point(text);
    const std::size_t comma = point.find(',');
    if (comma != point.npos) {
        point[comma] = '.';
    }
    double value = 0;
    if (std::from_chars(point.data(), point.data() + point.size(), value).ec != std::errc()) {
        return 0;
    }
    const float stored = float(value);
    return std::isfinite(stored) ? stored : 0;
}

float ParseReal(std::string_view text)
{
    float value = 0;
    return ParsePlain(text, value) ? value : ParseByLibrary(text);
}

int ParseInteger(std::string_view text)
{
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return text.front() == '-' ? std::numeric_limits<int>::min()
                                   : std::numeric_limits<int>::max();
    }
    return value;
}

char* WriteInteger(char* out, int value)
{
    return std::to_chars(out, out + numbersize, value).ptr;
}

// A float taken apart: mantissa times 2 to the power of exponent, exactly.
struct Parts {
    bool negative;
    std::uint32_t mantissa; // below 2^24; 0 only for a zero
    int exponent;           // -149..104
};

// The value is finite.
static Parts TakeApart(float value)
{
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t fraction = bits & 0x7fffff;
    const int biased = int(bits >> 23 & 0xff);
    if (biased == 0) { // a denormal or zero
        return {bits >> 31 != 0, fraction, -149};
    }
    return {bits >> 31 != 0, fraction | 0x800000, biased - 150};
}

// value / 2^bits, rounded to the nearest integer, of two equally near ones to the even one, as
// formatted output does. The quotient must fit.
static Wide ShiftRounded(Wide value, int bits)
{
    if (bits <= 0) {
        return value << -bits;
    }
    if (bits > 127) { // the values shifted here stay below 2^127: less than a half
        return 0;
    }
    const Wide half = Wide(1) << (bits - 1);
    const Wide rest = value & ((half << 1) - 1);
    const Wide quotient = value >> bits;
    const bool up = rest > half || (rest == half && (quotient & 1) != 0);
    return quotient + (up ? 1 : 0);
}

static constexpr auto digitpairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; i++) {
        pairs[2 * i] = char('0' + i / 10);
        pairs[2 * i + 1] = char('0' + i % 10);
    }
    return pairs;
}();

// Writes `count` digits, an even number, with leading zeros.
static void WriteDigits(char* out, std::uint64_t value, int count)
{
    for (int i = count - 2; i >= 0; i -= 2) {
        std::memcpy(out + i, &digitpairs[std::size_t(value % 100 * 2)], 2);
        value /= 100;
    }
}

// Any value by the library, whose digits are the same but come slower.
static char* WriteByLibrary(char* out, float value, std::chars_format format, int precision)
{
    char* end = std::to_chars(out, out + numbersize, double(value), format, precision).ptr;
    std::replace(out, end, '.', ',');
    return end;
}

static constexpr int realdigits = 20; // significant digits of a coordinate

// 5^45 takes 105 bits; with the 24 of a mantissa the product would no longer fit, so 44 is the
// last.
static constexpr int lastpower = 44;
static constexpr auto powersoffive = [] {
    std::array<Wide, lastpower + 1> powers{};
    powers[0] = 1;
    for (std::size_t i = 1; i < powers.size(); i++) {
        powers[i] = powers[i - 1] * 5;
    }
    return powers;
}();
static constexpr Wide tentothe19 = Wide(10'000'000'000'000'000'000U);

// A decimal number of twenty digits: 0,d... or d,d... times a power of ten.
struct Decimal {
    Wide digits;  // 10^19 <= digits < 10^20
    int exponent; // of the first digit
};

// The value rounded to twenty significant digits; the magnitude must be in 1e-25..1e20, where the
// scaled mantissa is an exact integer of at most 128 bits.
static Decimal RoundToDecimal(const Parts& parts)
{
    // floor(log10) of the leading bit: at most one too small, since the mantissa may reach the next
    // power of ten. 1233 / 4096 is a little less than log10(2).
    const int leading = parts.exponent + int(std::bit_width(parts.mantissa)) - 1;
    int exponent = leading * 1233 >> 12;
    for (;;) {
        const int power = realdigits - 1 - exponent;
        const Wide scaled = parts.mantissa * powersoffive[std::size_t(power)];
        const Wide digits = ShiftRounded(scaled, -(parts.exponent + power));
        if (digits < 10 * tentothe19) {
            return {digits, exponent};
        }
        exponent++;
    }
}

// The twenty digits as characters.
static void WriteDecimalDigits(char* out, Wide digits)
{
    constexpr std::uint64_t tentothe16 = 10'000'000'000'000'000U;
    WriteDigits(out, std::uint64_t(digits / tentothe16), 4);
    WriteDigits(out + 4, std::uint64_t(digits % tentothe16), 16);
}

static char* CopyDigits(char* out, const char* digits, int count)
{
    std::memcpy(out, digits, std::size_t(count));
    return out + count;
}

static char* WriteExponent(char* out, int exponent) // at least two digits; here always negative
{
    *out++ = 'e';
    *out++ = '-';
    WriteDigits(out, std::uint64_t(-exponent), 2);
    return out + 2;
}

// Lays out `count` digits, of which the last is no zero, unless it is the only one.
static char* LayOut(char* out, const char* digits, int count, int exponent)
{
    constexpr int smallestfixed = -4; // below it the exponent is written
    if (exponent < smallestfixed) {
        *out++ = digits[0];
        if (count > 1) {
            *out++ = ',';
            out = CopyDigits(out, digits + 1, count - 1);
        }
        return WriteExponent(out, exponent);
    }
    if (exponent < 0) {
        out = CopyDigits(out, "0,000", 1 - exponent);
        return CopyDigits(out, digits, count);
    }
    const int whole = exponent + 1; // zeros that were stripped before the comma are still in digits
    out = CopyDigits(out, digits, whole);
    if (count > whole) {
        *out++ = ',';
        out = CopyDigits(out, digits + whole, count - whole);
    }
    return out;
}

char* WriteReal(char* out, float value)
{
    constexpr float toolarge = 1e20F;
    constexpr float toosmall = 0x1p-83F; // below it powers of five beyond 5^44 are wanted
    const float magnitude = std::fabs(value);
    if (!(magnitude >= toosmall && magnitude < toolarge)) { // a zero, a NaN
        return WriteByLibrary(out, value, std::chars_format::general, realdigits);
    }
    const Parts parts = TakeApart(value);
    const Decimal decimal = RoundToDecimal(parts);
    std::array<char, realdigits> digits;
    WriteDecimalDigits(digits.data(), decimal.digits);
    int count = realdigits;
    while (count > 1 && digits[std::size_t(count - 1)] == '0') {
        count--;
    }
    if (parts.negative) {
        *out++ = '-';
    }
    return LayOut(out, digits.data(), count, decimal.exponent);
}

char* WriteColor(char* out, float value)
{
    constexpr float toolarge = 10000; // so that ten digits hold the value in millionths
    if (!(std::fabs(value) < toolarge)) {
        return WriteByLibrary(out, value, std::chars_format::fixed, 6);
    }
    const Parts parts = TakeApart(value);
    const Wide scaled = Wide(parts.mantissa) * 1'000'000;
    const auto millionths = std::uint64_t(ShiftRounded(scaled, -parts.exponent));
    if (parts.negative) {
        *out++ = '-';
    }
    out = WriteInteger(out, int(millionths / 1'000'000));
    *out++ = ',';
    WriteDigits(out, millionths % 1'000'000, 6);
    return out + 6;
}

} // namespace korvane
