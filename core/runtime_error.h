// The program's only exception type: a number and a text. Primitives throw it: files, strict conversions, indexed
// tables, keyed lists, the tick count, the socket, the clipboard, the creation of windows.
#pragma once

#include <exception>
#include <string>

namespace core {

// The numbers that the log and message boxes show; each has a text.
enum class Err : long {
  Overflow = 6,  // a number that does not fit
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,  // a field or table index past the end
  TypeMismatch = 13,        // a text that should be a number
  Internal = 51,            // any other exception
  FileNotFound = 53,
  DiskFull = 61,
  InputPastEnd = 62,  // a read at the end of a file
  DeviceUnavailable = 68,
  PermissionDenied = 70,  // locked by another program
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

// The current exception as a RuntimeError: itself, Err::OutOfMemory for std::bad_alloc, else Err::Internal with the
// text of the exception. To be called in a catch block.
RuntimeError CurrentError();

// "53: File not found", as the log and message boxes show it.
std::string NumberAndDescription(const RuntimeError& error);

}  // namespace core
