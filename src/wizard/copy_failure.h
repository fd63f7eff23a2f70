// What a person is told about a press of the process button that the rules end without a word.
#pragma once

#include <string>

namespace tessel {

enum class CopyTrouble {
  kNothingToCopy,  // no document is listed or selected
  kCopiedAlready,  // the selected document
  kNoDirectory,    // the exchange directory could not be made
  kNotCopied,
  kNotDescribed,  // copied, but the structure document does not take it
  kNotProcessed,  // anything else
};

struct CopyFailure {
  CopyTrouble trouble = CopyTrouble::kNotProcessed;
  std::string document;  // as the page shows it; empty where it is about none
  std::string path;      // the directory as this machine has it; empty where it is about none
  int number = 0;        // of the error behind it, as in Problem
  std::string cause;     // empty when none is known
};

}  // namespace tessel
