#include "core/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "core/runtime_error.h"
#include "core/text.h"

namespace core {
namespace {

// Further digits only adjust the exponent: 19 digits are more than the precision of a double, and a packet may hold
// 65,000.
constexpr std::uint64_t kNineteenDigits = 1'000'000'000'000'000'000;

// Skipped by TolerantNumber, even between digits.
constexpr std::string_view kSkipped = " \t\n";

class NumberScanner {
 public:
  NumberScanner(std::string_view text, std::string_view skipped) : rest_(text), skipped_(skipped) {}

  double Read() {
    const double sign = TakeSign();
    return sign * (Take("&") ? ReadPrefixed() : ReadDecimal());
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
    const bool found = anyOf.find(Peek()) != std::string_view::npos;
    if (found) Next();
    return found;
  }

  double TakeSign() {
    if (Take("-")) return -1;
    Take("+");
    return 1;
  }

  std::optional<int> TakeDigit(int base) {
    const std::string next(1, Peek());
    int digit{};
    if (std::from_chars(next.data(), next.data() + next.size(), digit, base).ec != std::errc()) return std::nullopt;
    Next();
    wellFormed_ = true;
    return digit;
  }

  // The digits that follow; 0 when there are none.
  double ReadWhole(int base) {
    double value = 0;
    while (const auto digit = TakeDigit(base)) value = value * base + *digit;
    return value;
  }

  double ReadPrefixed() {
    if (Take("Hh")) return ReadWhole(16);
    return Take("Oo") ? ReadWhole(8) : 0;
  }

  double ReadDecimal() {
    double scale = ReadDigits(false);
    if (Take(".")) scale += ReadDigits(true);
    if (wellFormed_ && Take("eEdD")) scale += ReadExponent();
    if (mantissa_ == 0) return 0;
    // Dividing by a power of ten up to 10^22 is exact where multiplying by its inverse is not: ".5" must be one half.
    const double mantissa = static_cast<double>(mantissa_);
    return std::signbit(scale) ? mantissa / std::pow(10.0, -scale) : mantissa * std::pow(10.0, scale);
  }

  // Adds digits to the mantissa; returns the change of the decimal exponent.
  int ReadDigits(bool fraction) {
    int moved = 0;
    while (const auto digit = TakeDigit(10)) {
      const bool counts = mantissa_ < kNineteenDigits;
      if (counts) mantissa_ = mantissa_ * 10 + static_cast<unsigned>(*digit);
      if (counts == fraction) moved += fraction ? -1 : 1;
    }
    return moved;
  }

  double ReadExponent() {
    const double sign = TakeSign();
    wellFormed_ = false;  // an exponent without digits
    return sign * ReadWhole(10);
  }

  std::string_view rest_, skipped_;
  std::uint64_t mantissa_ = 0;
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
