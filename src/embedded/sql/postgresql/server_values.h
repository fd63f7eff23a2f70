// Values on their way to a PostgreSQL server and back.
#pragma once

#include <string>
#include <vector>

#include "embedded/sql/postgresql/server_link.h"
#include "embedded/sql/query_result.h"

namespace tessel::embedded {

// A statement with "$1", "$2", ... in place of ":name"; a name that comes again has its number again.
struct NumberedText {
  std::string text;
  std::size_t placeholders = 0;
};
[[nodiscard]] NumberedText WithNumbers(const std::string& sql);

// Values as the server reads them.
class Parameters {
 public:
  // Error: DatabaseError kCodeMismatch for a text with a NUL character, which the server cannot keep.
  explicit Parameters(const std::vector<Value>& values);
  [[nodiscard]] const ParameterTexts& Texts() const { return texts_; }

 private:
  std::vector<std::string> kept_;
  ParameterTexts texts_;
};

[[nodiscard]] QueryResult ResultOf(const PGresult& result);

}  // namespace tessel::embedded
