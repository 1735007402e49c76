#include "decimal_text.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace tallora {
namespace {

// Adds one unit in the last place of a digit string; returns true when it overflowed
// into a new leading digit ("99" -> "00" and true).
bool incrementDigits(std::string& digits) {
    for (auto it = digits.rbegin(); it != digits.rend(); ++it) {
        if (*it != '9') {
            ++*it;
            return false;
        }
        *it = '0';
    }
    return true;
}

void stripLeadingZeros(std::string& integer) {
    const auto first = integer.find_first_not_of('0');
    integer = first == std::string::npos ? "0" : integer.substr(first);
}

// Rounds the digit strings (integer, fraction of any length) to `decimals` places.
DecimalDigits roundDigits(bool negative, std::string integer, std::string fraction, int decimals) {
    const auto keep = static_cast<std::size_t>(decimals);
    bool roundUp = fraction.size() > keep && fraction[keep] >= '5';
    fraction.resize(keep, '0');
    if (roundUp) {
        std::string all = integer + fraction;
        if (incrementDigits(all)) all.insert(all.begin(), '1');
        integer = all.substr(0, all.size() - keep);
        fraction = all.substr(all.size() - keep);
    }
    stripLeadingZeros(integer);
    DecimalDigits d{negative, integer, fraction};
    if (d.integer == "0" && d.fraction.find_first_not_of('0') == std::string::npos)
        d.negative = false;
    return d;
}

}  // namespace

DecimalDigits roundDouble(double value, int decimals) {
    if (!std::isfinite(value)) throw std::invalid_argument("not a finite number");
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                      std::chars_format::fixed);
    std::string text(buffer, result.ptr);
    const auto point = text.find('.');
    std::string integer = point == std::string::npos ? text : text.substr(0, point);
    std::string fraction = point == std::string::npos ? "" : text.substr(point + 1);
    return roundDigits(std::signbit(value), integer, fraction, decimals);
}

DecimalDigits roundTenThousandths(std::int64_t units, int decimals) {
    const bool negative = units < 0;
    // Work on the unsigned magnitude so that the lowest int64 does not overflow.
    const std::uint64_t magnitude =
        negative ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    std::string digits = std::to_string(magnitude);
    if (digits.size() < 5) digits.insert(0, 5 - digits.size(), '0');
    return roundDigits(negative, digits.substr(0, digits.size() - 4), digits.substr(digits.size() - 4),
                       decimals);
}

std::string groupDigits(const DecimalDigits& d, char groupMark, char decimalMark) {
    std::string out;
    if (d.negative) out += '-';
    const std::size_t n = d.integer.size();
    for (std::size_t i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) out += groupMark;
        out += d.integer[i];
    }
    if (!d.fraction.empty()) {
        out += decimalMark;
        out += d.fraction;
    }
    return out;
}

}  // namespace tallora
