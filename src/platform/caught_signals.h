// The signals by which a person or the system asks a program to end: Ctrl-C and TERM.
#pragma once

namespace tessel {

// While one of these lives, the first such signal is noted instead of ending the program, so that a run can
// end in good order; the second one ends it at once. One object at a time.
class CaughtSignals {
 public:
  CaughtSignals();
  ~CaughtSignals();
  CaughtSignals(const CaughtSignals&) = delete;
  CaughtSignals& operator=(const CaughtSignals&) = delete;

  // Number of the signal that came; 0 for none.
  [[nodiscard]] static int Caught();
  // Its name as people know it.
  [[nodiscard]] static const char* Name(int signal);
};

// Exit status of a program that a signal ended.
[[nodiscard]] constexpr int StatusOfSignal(int signal) {
  return 128 + signal;
}

}  // namespace tessel
