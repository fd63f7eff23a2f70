#include "platform/caught_signals.h"

#include <csignal>

namespace tessel {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM};

// A handler gets nothing but the number, so what it notes has to lie here.
volatile std::sig_atomic_t caught = 0;

void Handle(void (*handler)(int)) {
  for (const int signal : kSignals)
    std::signal(signal, handler);
}

void Note(int signal) {
  caught = signal;
  Handle(SIG_DFL);
}

}  // namespace

CaughtSignals::CaughtSignals() {
  caught = 0;
  Handle(Note);
}

CaughtSignals::~CaughtSignals() {
  Handle(SIG_DFL);
}

int CaughtSignals::Caught() {
  return caught;
}

const char* CaughtSignals::Name(int signal) {
  return signal == SIGINT ? "Ctrl-C" : "TERM";
}

}  // namespace tessel
