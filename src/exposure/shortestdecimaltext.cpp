#include "shortestdecimaltext.h"

#include <charconv>
#include <cmath>
#include <string>

namespace kestrum {

namespace {

constexpr double kSmallestPlainMagnitude = 1e-4;
constexpr double kLargestPlainMagnitude = 1e16;

struct ShortestDigits {
    std::string digits; // significant digits, no dot, no sign
    int exponent = 0;   // value = 0.d1d2d3... scaled so that d1 sits at 10^exponent
};

ShortestDigits shortestDigits(double magnitude)
{
    // Scientific shortest form is "d[.ddd]e±XX"; take its digits and exponent.
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific);
    const std::string text(buffer, result.ptr);
    const auto e = text.find('e');
    ShortestDigits out;
    for (std::size_t i = 0; i < e; ++i) {
        if (text[i] != '.')
            out.digits.push_back(text[i]);
    }
    out.exponent = std::stoi(text.substr(e + 1));
    return out;
}

std::string exponentForm(const ShortestDigits& d)
{
    std::string out(1, d.digits.front());
    if (d.digits.size() > 1)
        out += '.' + d.digits.substr(1);
    out += d.exponent < 0 ? "e-" : "e+";
    const int magnitude = std::abs(d.exponent);
    if (magnitude < 10)
        out += '0';
    out += std::to_string(magnitude);
    return out;
}

std::string plainForm(const ShortestDigits& d)
{
    const int integerDigits = d.exponent + 1;
    if (integerDigits <= 0)
        return "0." + std::string(static_cast<std::size_t>(-integerDigits), '0') + d.digits;
    const auto count = static_cast<std::size_t>(integerDigits);
    if (d.digits.size() <= count)
        return d.digits + std::string(count - d.digits.size(), '0') + ".0";
    return d.digits.substr(0, count) + '.' + d.digits.substr(count);
}

} // namespace

QString shortestDecimalText(double value)
{
    if (std::isnan(value))
        return std::signbit(value) ? QStringLiteral("-nan") : QStringLiteral("nan");
    if (std::isinf(value))
        return value < 0 ? QStringLiteral("-inf") : QStringLiteral("inf");

    const std::string sign = std::signbit(value) ? "-" : "";
    const double magnitude = std::fabs(value);
    if (magnitude == 0.0)
        return QString::fromStdString(sign + "0.0");

    const ShortestDigits digits = shortestDigits(magnitude);
    const bool exponent =
        magnitude < kSmallestPlainMagnitude || magnitude >= kLargestPlainMagnitude;
    return QString::fromStdString(sign + (exponent ? exponentForm(digits) : plainForm(digits)));
}

} // namespace kestrum
