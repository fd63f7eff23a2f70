// ModelProblems found in a model, collected so that they are reported together.
#pragma once

#include <string>
#include <vector>

namespace tessel::embedded {

class ModelProblems {
 public:
  // `source` names the file in front of every problem.
  explicit ModelProblems(std::string source) : source_(std::move(source)) {}

  // "company.json: object "gearbox": attribute "STATE": ..." with `where` and `text` as given.
  void Add(const std::string& where, const std::string& text);
  [[nodiscard]] bool Found() const { return count_ > 0; }
  // Throws a HostError that lists them all, one a line (the first hundred); returns when there are none.
  void ThrowIfFound() const;

 private:
  std::string source_;
  std::vector<std::string> lines_;
  std::size_t count_ = 0;
};

}  // namespace tessel::embedded
