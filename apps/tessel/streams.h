// The streams of one run of the command line, and what it was asked to write on them.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace tessel::cli {

struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  // Standard error is a terminal: a progress bar may be drawn on it.
  bool errIsTerminal = false;
  // Asks a person for a password, unseen; nothing when nobody is there to answer.
  std::function<std::optional<std::string>(const std::string& question)> askUnseen{};

  // What the command line asked for.
  bool json = false;   // results as one line of JSON on standard output
  bool quiet = false;  // no progress, no notes; only results and what failed
};

}  // namespace tessel::cli
