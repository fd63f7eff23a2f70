// One JSON object of a model file, read key by key; what is missing, of the wrong kind or unknown is
// reported.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/model/model_problems.h"

namespace tessel::embedded {

class JsonObject {
 public:
  // Reports a value that is no object and then reads as an empty one. `where` stands in front of the
  // problems. JSON and problems outlive the object.
  JsonObject(const nlohmann::json& json, std::string where, ModelProblems& problems);

  // Reports every key that is not among these.
  void CheckKeys(std::initializer_list<std::string_view> known) const;

  [[nodiscard]] const std::string& Where() const { return where_; }
  void SetWhere(std::string where) { where_ = std::move(where); }
  void Report(const std::string& text) const { problems_.Add(where_, text); }
  [[nodiscard]] ModelProblems& ProblemList() const { return problems_; }

  [[nodiscard]] bool Has(const char* key) const { return Find(key) != nullptr; }
  // Nothing when the key is absent.
  [[nodiscard]] const nlohmann::json* Find(const char* key) const;
  [[nodiscard]] std::string Text(const char* key, const std::string& otherwise = {}) const;
  // Reports an absent or empty text.
  [[nodiscard]] std::string RequiredText(const char* key) const;
  [[nodiscard]] std::int64_t Integer(const char* key, std::int64_t least, std::int64_t greatest,
                                     std::int64_t otherwise) const;
  [[nodiscard]] bool Flag(const char* key) const;
  [[nodiscard]] std::vector<std::string> Texts(const char* key) const;
  // The elements of a list; none when the key is absent.
  [[nodiscard]] std::vector<const nlohmann::json*> Elements(const char* key) const;
  [[nodiscard]] std::vector<std::string> Keys() const;

 private:
  const nlohmann::json& json_;
  std::string where_;
  ModelProblems& problems_;
};

}  // namespace tessel::embedded
