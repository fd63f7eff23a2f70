// What the client's window tells of hooks that left something undone.
#include "common/outcome_words.h"
#include "main_window.h"
#include "qt/text.h"
#include "tell.h"

namespace tessel::client {
namespace {

using qt::ToQt;

// Empty for what is done, and for what the hook has told itself.
QString ReasonOf(const DocumentLock& document, qt::Language language) {
  switch (document.result) {
    case LockResult::kDone:
    case LockResult::kAlreadyLocked:
    case LockResult::kLockedByOther:
      return {};
    case LockResult::kNotLockable: {
      const QString text = texts::kCannotLock.In(language);
      return document.reason.empty() ? text : text + QStringLiteral(" (%1)").arg(ToQt(document.reason));
    }
    case LockResult::kNotLocked:
      return texts::kIsNotLocked.In(language);
    case LockResult::kFailed:
      break;
  }
  return texts::kLockFailed.In(language);
}

void AddProblems(const std::vector<Problem>& problems, qt::Language language, QStringList& lines) {
  for (const Problem& problem : problems) {
    if (problem.kind != ProblemKind::kAside) lines.append(ToQt(WordsOf(problem, SpeechOf(language))));
  }
}

}  // namespace

void MainWindow::TellRefused(const std::vector<RefusedDocument>& refused, std::size_t asked) {
  QStringList lines;
  for (const RefusedDocument& one : refused)
    lines.append(NumberOf(one.key) + QLatin1Char(' ') +
                 texts::kRefusals[static_cast<int>(one.why)].In(language_));
  const QString head = texts::kNotCollected.In(language_).arg(refused.size()).arg(asked);
  TellAll(head, lines, language_, this);
}

void MainWindow::TellLocks(const LockOutcome& outcome, const qt::BothTexts& head) {
  QStringList lines;
  for (const DocumentLock& document : outcome.documents) {
    const QString reason = ReasonOf(document, language_);
    if (!reason.isEmpty()) lines.append(NumberOf(document.document) + QLatin1Char(' ') + reason);
  }
  AddProblems(outcome.problems, language_, lines);
  TellAll(head.In(language_), lines, language_, this);
}

void MainWindow::TellContinue(const ContinueOutcome& outcome) {
  QStringList lines;
  switch (outcome.result) {
    case ContinueResult::kContinued:
      return;
    case ContinueResult::kNotStopped:
      lines.append(texts::kNotStopped.In(language_));
      break;
    case ContinueResult::kNoFolder:
      lines.append(texts::kNoExchangeFolder.In(language_).arg(exchanges_->Marked()->directory));
      break;
    case ContinueResult::kNotRenamed:
      lines.append(texts::kNotRenamed.In(language_).arg(NativePath(ToQt(outcome.oldFolder)),
                                                        NativePath(ToQt(outcome.newFolder))));
      break;
    case ContinueResult::kNotUpdated:
      lines.append(texts::kNotUpdated.In(language_));
      break;
    case ContinueResult::kFailed:
      lines.append(texts::kNotReadable.In(language_));
  }
  AddProblems(outcome.problems, language_, lines);
  TellAll(texts::kNotContinued.In(language_), lines, language_, this);
}

}  // namespace tessel::client
