#include "messages/problems.h"

namespace tessel {
namespace {

bool Same(const Problem& one, const Problem& other) {
  return one.number == other.number && one.step == other.step && one.subject == other.subject &&
         one.cause == other.cause;
}

}  // namespace

std::string ProblemText(const Problem& problem) {
  std::string text = problem.step;
  if (!problem.cause.empty()) text += (text.empty() ? "" : ": ") + problem.cause;
  if (!problem.subject.empty() && text.find(problem.subject) == std::string::npos)
    text += " (" + problem.subject + ")";
  for (char& character : text) {
    if (character == '\r' || character == '\n') character = ' ';
  }
  return text;
}

void Problems::Add(Problem problem) noexcept {
  ++count_;
  try {
    if (problem.subject.empty()) problem.subject = subject;
    if (kept_.size() >= kMost || (!kept_.empty() && Same(kept_.back(), problem))) return;
    kept_.push_back(std::move(problem));
  } catch (...) {
    // No memory for it; the count tells that there was one.
  }
}

void Problems::ForgetBehind(std::size_t kept) {
  if (kept >= kept_.size()) return;
  count_ -= kept_.size() - kept;
  kept_.resize(kept);
}

void Problems::Clear() {
  kept_.clear();
  count_ = 0;
}

}  // namespace tessel
