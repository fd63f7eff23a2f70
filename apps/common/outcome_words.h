// What became of a run, in words for a person: the same in the command line and in the desktop client.
#pragma once

#include <string>

#include "messages/problems.h"
#include "wizard/copy_failure.h"

namespace tessel {

enum class Speech { kEnglish, kGerman };

// As ProblemText, with the step in words instead of the trace's name for it. A step that has none stays as it
// is. In German a cause that is known by its number is named in German; the cause as it came stands behind
// it.
[[nodiscard]] std::string WordsOf(const Problem& problem, Speech speech);

// One sentence: what could not be done with which document, where and why.
[[nodiscard]] std::string WordsOf(const CopyFailure& failure, Speech speech);

}  // namespace tessel
