#include "embedded/model/model_problems.h"

#include "host/error.h"

namespace tessel::embedded {
namespace {

constexpr std::size_t kMostLines = 100;

}  // namespace

void ModelProblems::Add(const std::string& where, const std::string& text) {
  if (++count_ > kMostLines) return;
  lines_.push_back(source_ + ": " + (where.empty() ? "" : where + ": ") + text);
}

void ModelProblems::ThrowIfFound() const {
  if (count_ == 0) return;
  std::string text;
  for (const std::string& line : lines_)
    text += (text.empty() ? "" : "\n") + line;
  if (count_ > kMostLines) text += "\n... and " + std::to_string(count_ - kMostLines) + " more";
  throw HostError(text);
}

}  // namespace tessel::embedded
