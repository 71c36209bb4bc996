#include "core/runtime_error.h"

#include <utility>

namespace core {
namespace {

struct Description {
  Err error;
  const char* text;
};

constexpr Description kDescriptions[] = {
    {Err::Overflow, "Overflow"},
    {Err::SubscriptOutOfRange, "Subscript out of range"},
    {Err::TypeMismatch, "Type mismatch"},
    {Err::FileNotFound, "File not found"},
    {Err::DiskFull, "Disk full"},
    {Err::InputPastEnd, "Input past end of file"},
    {Err::DeviceUnavailable, "Device unavailable"},
    {Err::PermissionDenied, "Permission denied"},
    {Err::DiskNotReady, "Disk not ready"},
    {Err::PathFileAccess, "Path/File access error"},
    {Err::PathNotFound, "Path not found"},
    {Err::ClipboardBusy, "Can't open Clipboard"},
    {Err::KeyNotUnique, "Key is not unique in collection"},
};

const char* DescriptionOf(Err error) {
  for (const Description& row : kDescriptions) {
    if (row.error == error) return row.text;
  }
  return "";
}

}  // namespace

RuntimeError::RuntimeError(long errorNumber, std::string text) : number(errorNumber), description(std::move(text)) {}

RuntimeError::RuntimeError(Err error) : RuntimeError(static_cast<long>(error), DescriptionOf(error)) {}

const char* RuntimeError::what() const noexcept { return description.c_str(); }

std::string NumberAndDescription(const RuntimeError& error) {
  return std::to_string(error.number) + ": " + error.description;
}

}  // namespace core
