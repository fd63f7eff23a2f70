// What went wrong in a run, as the guards trapped it: kept beside the trace for those who report on the run.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tessel {

enum class ProblemKind {
  kTrapped,  // a procedure ended early with its failure value
  kIgnored,  // the rules pass over it without a word; a value may be missing in what was made
  kAside,    // touches what is shown or cleared away, never what is handed over
};

struct Problem {
  std::string step;     // what was being done
  std::string subject;  // the object or path that it was done to; may be empty
  int number = 0;
  std::string cause;  // empty when the step itself says all
  ProblemKind kind = ProblemKind::kTrapped;
};

// "step: cause (subject)", on one line; the subject is left out where the cause names it.
[[nodiscard]] std::string ProblemText(const Problem& problem);

// Keeps the first problems of a run and counts the others, so that a run over many objects stays small.
class Problems {
 public:
  static constexpr std::size_t kMost = 200;

  // A repetition of the newest problem is only counted. Never raises: without memory the problem is only
  // counted.
  void Add(Problem problem) noexcept;
  [[nodiscard]] const std::vector<Problem>& Kept() const { return kept_; }
  // All that were added since Clear, repetitions and those beyond kMost included.
  [[nodiscard]] std::size_t Count() const { return count_; }
  void Clear();
  // Takes back all but the first so many of the kept ones: they were put right.
  void ForgetBehind(std::size_t kept);

  // What a problem that is added now is about. See ProblemSubject.
  std::string subject;

 private:
  std::vector<Problem> kept_;
  std::size_t count_ = 0;
};

// Names what the problems of a stretch of work are about, until its end. Scopes nest.
class ProblemSubject {
 public:
  ProblemSubject(Problems& problems, std::string subject)
      : problems_(problems), outer_(std::move(problems.subject)) {
    problems_.subject = std::move(subject);
  }
  ~ProblemSubject() { problems_.subject = std::move(outer_); }
  ProblemSubject(const ProblemSubject&) = delete;
  ProblemSubject& operator=(const ProblemSubject&) = delete;
  void Change(std::string subject) { problems_.subject = std::move(subject); }

 private:
  Problems& problems_;
  std::string outer_;
};

}  // namespace tessel
