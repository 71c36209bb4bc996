#include "core/runtime_error.h"

#include <new>
#include <utility>

namespace core {
namespace {

// A switch, not a table, so that the compiler warns about a missing enumerator.
const char* DescriptionOf(Err error) {
  switch (error) {
    case Err::Overflow:
      return "Overflow";
    case Err::OutOfMemory:
      return "Out of memory";
    case Err::SubscriptOutOfRange:
      return "Subscript out of range";
    case Err::TypeMismatch:
      return "Type mismatch";
    case Err::Internal:
      return "Internal error";
    case Err::FileNotFound:
      return "File not found";
    case Err::DiskFull:
      return "Disk full";
    case Err::InputPastEnd:
      return "Input past end of file";
    case Err::DeviceUnavailable:
      return "Device unavailable";
    case Err::PermissionDenied:
      return "Permission denied";
    case Err::DiskNotReady:
      return "Disk not ready";
    case Err::PathFileAccess:
      return "Path/File access error";
    case Err::PathNotFound:
      return "Path not found";
    case Err::ClipboardBusy:
      return "Can't open Clipboard";
    case Err::KeyNotUnique:
      return "Key is not unique in collection";
  }
  return "";
}

}  // namespace

RuntimeError::RuntimeError(long errorNumber, std::string text) : number(errorNumber), description(std::move(text)) {}

RuntimeError::RuntimeError(Err error) : RuntimeError(static_cast<long>(error), DescriptionOf(error)) {}

const char* RuntimeError::what() const noexcept { return description.c_str(); }

RuntimeError CurrentError() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return RuntimeError(Err::OutOfMemory);
  } catch (const std::exception& error) {
    return {static_cast<long>(Err::Internal), std::string(DescriptionOf(Err::Internal)) + " (" + error.what() + ")"};
  } catch (...) {
    return RuntimeError(Err::Internal);
  }
}

std::string NumberAndDescription(const RuntimeError& error) {
  return std::to_string(error.number) + ": " + error.description;
}

}  // namespace core
