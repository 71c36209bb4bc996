// Arbitrary bytes as a number, read strictly and tolerantly: both agree with each other and with strtod on plain
// decimals, and an integer that is in range survives a round trip through text.
#include "core/numbers.h"

#include <cmath>
#include <limits>
#include <string>

#include "core/runtime_error.h"
#include "core/text.h"
#include "fuzz/fuzz_target.h"

namespace {

bool ReadsStrictly(std::string_view text, double& value) {
  try {
    value = core::StrictNumber(text);
    return true;
  } catch (const core::RuntimeError& error) {
    fuzz::Require(error.number == 13);
    return false;
  }
}

// The trimmed text in the form that strtod accepts; empty when it is not a plain decimal.
std::string AsDecimal(std::string_view text) {
  std::string decimal(core::Trim(text));
  if (decimal.find_first_not_of("0123456789+-.eEdD") != std::string::npos) return {};
  for (char& c : decimal)
    if (c == 'd' || c == 'D') c = 'e';
  return decimal;
}

bool IsNear(double value, double reference) {
  if (std::isinf(reference)) return value == reference;
  return std::abs(value - reference) <= std::abs(reference) * 1e-14 + 1e-290;
}

template <class Convert>
void CheckConversion(double value, Convert convert) {
  try {
    const auto whole = convert(value);
    fuzz::Require(std::abs(static_cast<double>(whole) - value) <= 0.5);
    fuzz::Require(core::StrictNumber(std::to_string(whole)) == whole);
    fuzz::Require(core::TolerantNumber(core::GeneralText(whole)) == whole);
  } catch (const core::RuntimeError& error) {
    fuzz::Require(error.number == 6 && std::abs(value) > std::numeric_limits<decltype(convert(value))>::max());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::TextOf(data, size);
  const double tolerant = core::TolerantNumber(text);
  fuzz::Require(!std::isnan(tolerant));
  std::string compact(text);
  std::erase_if(compact, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
  fuzz::Require(core::TolerantNumber(compact) == tolerant);

  double strict = 0;
  const bool reads = ReadsStrictly(text, strict);
  if (reads) fuzz::Require(strict == tolerant);
  if (const std::string decimal = AsDecimal(text); !decimal.empty()) {
    char* end = nullptr;
    const double reference = std::strtod(decimal.c_str(), &end);
    fuzz::Require(reads == (*end == '\0' && end != decimal.c_str()));
    if (reads) fuzz::Require(IsNear(strict, reference));
  }
  CheckConversion(tolerant, core::ToInt16);
  CheckConversion(tolerant, core::ToInt32);
  return 0;
}
