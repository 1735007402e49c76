#pragma once
// Decimal rounding on the digits a person sees, shared by Money and the number formats.
#include <cstdint>
#include <string>

namespace tallora {

// A non-negative decimal number as digit strings, with its sign apart.
struct DecimalDigits {
    bool negative = false;
    std::string integer = "0";  // no leading zeros, at least one digit
    std::string fraction;       // exactly the requested number of digits
};

// Rounds a double to `decimals` places, half away from zero, on its shortest decimal
// representation (12.345 is "12.345", so it rounds to 12.35 although the binary value is
// a hair below). Zero never carries a sign.
DecimalDigits roundDouble(double value, int decimals);

// Rounds a count of ten-thousandths to `decimals` places (0 to 4), half away from zero.
DecimalDigits roundTenThousandths(std::int64_t units, int decimals);

// Writes digits with a grouping character every three integer digits and the given
// decimal mark: ("1234", "50") with '.' and ',' gives "1.234,50".
std::string groupDigits(const DecimalDigits& d, char groupMark, char decimalMark);

}  // namespace tallora
