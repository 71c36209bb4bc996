#include "core/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "core/runtime_error.h"
#include "core/text.h"

namespace core {
namespace {

// More than the precision of a double. A packet may hold 65,000 digits, so the rest only adjusts the exponent.
constexpr int kSignificantDigits = 19;

// Far beyond the range of a double, without overflowing an int.
constexpr int kMaxExponent = 100000;

// Skipped by TolerantNumber, even between digits.
constexpr std::string_view kSkipped = " \t\n";

int DigitOf(char c, int base) {
  int digit = base;
  if (c >= '0' && c <= '9') digit = c - '0';
  if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
  if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
  return digit < base ? digit : -1;
}

class NumberScanner {
 public:
  NumberScanner(std::string_view text, std::string_view skipped) : rest_(text), skipped_(skipped) {}

  double Read() {
    const bool negative = Peek() == '-';
    if (negative || Peek() == '+') Next();
    const double value = Peek() == '&' ? ReadPrefixed() : ReadDecimal();
    return negative ? -value : value;
  }

  // True when the whole text was one well-formed number.
  bool Complete() { return wellFormed_ && Peek() == '\0' && rest_.empty(); }

 private:
  // The next character that is not skipped; 0 at the end.
  char Peek() {
    while (!rest_.empty() && skipped_.find(rest_.front()) != std::string_view::npos) rest_.remove_prefix(1);
    return rest_.empty() ? '\0' : rest_.front();
  }
  void Next() { rest_.remove_prefix(1); }

  bool Take(std::string_view anyOf) {
    const bool found = Peek() != '\0' && anyOf.find(Peek()) != std::string_view::npos;
    if (found) Next();
    return found;
  }

  double ReadPrefixed() {
    Next();
    const int base = Take("Hh") ? 16 : Take("Oo") ? 8 : 0;
    double value = 0;
    for (int digit; base != 0 && (digit = DigitOf(Peek(), base)) >= 0; Next()) {
      value = value * base + digit;
      wellFormed_ = true;
    }
    return value;
  }

  double ReadDecimal() {
    int scale = ReadDigits(false);
    if (Take(".")) scale += ReadDigits(true);
    if (wellFormed_ && Take("eEdD")) scale += ReadExponent();
    if (mantissa_ == 0) return 0;
    // Dividing by a power of ten up to 10^22 is exact where multiplying by its inverse is not: ".5" must be one half.
    const double mantissa = static_cast<double>(mantissa_);
    return scale < 0 ? mantissa / std::pow(10.0, -scale) : mantissa * std::pow(10.0, scale);
  }

  // Adds digits to the mantissa; returns the change of the decimal exponent.
  int ReadDigits(bool fraction) {
    int moved = 0;
    for (int digit; (digit = DigitOf(Peek(), 10)) >= 0; Next()) {
      wellFormed_ = true;
      const bool counts = significant_ < kSignificantDigits;
      if (counts) mantissa_ = mantissa_ * 10 + static_cast<unsigned>(digit);
      if (counts && mantissa_ != 0) ++significant_;
      if (counts == fraction) moved += fraction ? -1 : 1;
    }
    return moved;
  }

  int ReadExponent() {
    const bool negative = Peek() == '-';
    if (negative || Peek() == '+') Next();
    int exponent = 0;
    wellFormed_ = false;  // an exponent without digits
    for (int digit; (digit = DigitOf(Peek(), 10)) >= 0; Next()) {
      exponent = std::min(exponent * 10 + digit, kMaxExponent);
      wellFormed_ = true;
    }
    return negative ? -exponent : exponent;
  }

  std::string_view rest_, skipped_;
  std::uint64_t mantissa_ = 0;
  int significant_ = 0;
  bool wellFormed_ = false;
};

template <typename Integer>
Integer Rounded(double value) {
  const double whole = std::nearbyint(value);  // half to even is the default rounding mode
  const bool fits = whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max();
  if (!fits) throw RuntimeError(Err::Overflow);
  return static_cast<Integer>(whole);
}

}  // namespace

double TolerantNumber(std::string_view text) { return NumberScanner(text, kSkipped).Read(); }

double StrictNumber(std::string_view text) {
  NumberScanner scanner(Trim(text), {});
  const double value = scanner.Read();
  if (!scanner.Complete()) throw RuntimeError(Err::TypeMismatch);
  return value;
}

std::int16_t ToInt16(double value) { return Rounded<std::int16_t>(value); }

std::int32_t ToInt32(double value) { return Rounded<std::int32_t>(value); }

std::string GeneralText(std::int32_t value) { return value < 0 ? std::to_string(value) : " " + std::to_string(value); }

}  // namespace core
