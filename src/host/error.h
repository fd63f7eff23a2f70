// Errors that travel below the guards: a number and a description, as automation clients report them.
#pragma once

#include <stdexcept>
#include <string>

namespace tessel {

// The classic run-time error numbers.
namespace error_number {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kOutOfStackSpace = 28;
inline constexpr int kFileNotFound = 53;
inline constexpr int kDeviceIo = 57;
inline constexpr int kFileAlreadyExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidUseOfNull = 94;
inline constexpr int kObjectNotCreatable = 429;
inline constexpr int kAutomation = 440;
}  // namespace error_number

// A failure of a step, with the number and the text that the trace shows.
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(int number, const std::string& description)
      : std::runtime_error(description), number_(number) {}
  [[nodiscard]] int Number() const { return number_; }

 private:
  int number_;
};

// A call that the host refused.
class HostError : public RuntimeError {
 public:
  explicit HostError(const std::string& description, int number = error_number::kAutomation)
      : RuntimeError(number, description) {}
};

// Throws error 91 naming what is missing; used before a host reference that may be nothing is followed.
[[noreturn]] void ThrowObjectNotSet(const std::string& what);

// Returns the pointer, or throws error 91 naming what is missing.
template <class Pointer>
Pointer Required(Pointer pointer, const char* what) {
  if (!pointer) ThrowObjectNotSet(what);
  return pointer;
}

}  // namespace tessel
