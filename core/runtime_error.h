// The one kind of failure that travels through the program: a number and a text. Only the few primitives that can
// fail throw it (files, strict conversions, indexed tables, keyed lists, the tick clock, the socket, the clipboard).
#pragma once

#include <exception>
#include <string>

namespace core {

// The numbers that the log and the message boxes show, with the text that belongs to each.
enum class Err : long {
  Overflow = 6,  // a number that does not fit
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,  // a field or table index past the end
  TypeMismatch = 13,        // a text that should be a number
  Internal = 51,            // an exception that is none of these
  FileNotFound = 53,
  DiskFull = 61,
  InputPastEnd = 62,  // a field read at the end of a file
  DeviceUnavailable = 68,
  PermissionDenied = 70,  // held by another program
  DiskNotReady = 71,
  PathFileAccess = 75,  // read-only, a folder, access denied
  PathNotFound = 76,
  ClipboardBusy = 521,
  KeyNotUnique = 35602,  // adding a row whose key exists
};

struct RuntimeError : std::exception {
  long number;
  std::string description;

  RuntimeError(long errorNumber, std::string text);
  explicit RuntimeError(Err error);
  const char* what() const noexcept override;
};

// The exception that is being handled, as a failure of the program: what it is already, want of memory, or
// Err::Internal with the exception's own words. For catch blocks.
RuntimeError CaughtError();

// "53: File not found", as the log and the boxes write it.
std::string NumberAndDescription(const RuntimeError& error);

}  // namespace core
