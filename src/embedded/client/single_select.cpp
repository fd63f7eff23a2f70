#include "embedded/client/single_select.h"

#include <algorithm>
#include <string>

#include "embedded/model/sql_names.h"
#include "host/ascii.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

[[noreturn]] void Refuse(const char* reason) {
  throw HostError(std::string("Query refused: ") + reason);
}

// Position after the text or name that begins with the quote at `position`; a doubled quote stands for
// itself.
std::size_t SkipQuoted(std::string_view sql, std::size_t position) {
  const char quote = sql[position];
  for (std::size_t i = position + 1; i < sql.size(); ++i) {
    if (sql[i] != quote) continue;
    if (i + 1 < sql.size() && sql[i + 1] == quote) {
      ++i;
      continue;
    }
    return i + 1;
  }
  Refuse("a quotation mark is not closed");
}

void CheckWord(std::string_view word, bool first) {
  if (first && UpperCase(word) != "SELECT") Refuse("only a single select statement is allowed");
  if (UpperCase(word) != "MESSAGE_STORE" && IsReservedTable(word))
    Refuse("the host's own tables cannot be read");
}

// Reads the parts of a statement from left to right.
class Scanner {
 public:
  explicit Scanner(std::string_view sql) : rest_(sql) {}

  [[nodiscard]] bool AtEnd() {
    SkipBlanks();
    return rest_.empty();
  }
  bool Take(char c) {
    SkipBlanks();
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool TakeWord(std::string_view upper) {
    const std::string_view before = rest_;
    if (UpperCase(Identifier()) == upper) return true;
    rest_ = before;
    return false;
  }
  // Empty when there is none.
  std::string_view Identifier() {
    SkipBlanks();
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), IsWordCharacter);
    return Cut(static_cast<std::size_t>(end - rest_.begin()));
  }
  // A text in single quotes without any inside it; nothing when there is none.
  std::optional<std::string_view> Text() {
    if (!Take('\'')) return std::nullopt;
    const std::size_t end = rest_.find('\'');
    if (end == std::string_view::npos || rest_.substr(end, 2) == "''") return std::nullopt;
    const std::string_view text = Cut(end);
    rest_.remove_prefix(1);
    return text;
  }

 private:
  void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }
  std::string_view Cut(std::size_t length) {
    const std::string_view cut = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return cut;
  }
  std::string_view rest_;
};

}  // namespace

std::optional<BoundSelect> BoundForm(std::string_view sql) {
  Scanner scanner(sql);
  BoundSelect bound;
  if (!scanner.TakeWord("SELECT") || !scanner.Take('*') || !scanner.TakeWord("FROM")) return std::nullopt;
  bound.table = scanner.Identifier();
  if (!IsIdentifier(bound.table) || !scanner.TakeWord("WHERE")) return std::nullopt;
  bound.sql = "SELECT * FROM " + bound.table + " WHERE ";
  for (;;) {
    const std::string_view name = scanner.Identifier();
    if (!IsIdentifier(name) || !scanner.Take('=')) return std::nullopt;
    const auto text = scanner.Text();
    if (!text) return std::nullopt;
    bound.sql += std::string(name) + " = :v" + std::to_string(bound.values.size());
    bound.values.emplace_back(std::string(*text));
    if (scanner.AtEnd()) return bound;
    if (!scanner.TakeWord("AND")) return std::nullopt;
    bound.sql += " AND ";
  }
}

void CheckSingleSelect(std::string_view sql) {
  bool first = true;
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    if (IsLetter(c)) {
      const auto end =
          std::find_if_not(sql.begin() + static_cast<std::ptrdiff_t>(i), sql.end(), IsWordCharacter);
      const auto length = static_cast<std::size_t>(end - sql.begin()) - i;
      CheckWord(sql.substr(i, length), first);
      first = false;
      i += length;
      continue;
    }
    if (c == '\'' || c == '"') {
      const std::size_t end = SkipQuoted(sql, i);
      if (c == '"') CheckWord(sql.substr(i + 1, end - i - 2), false);
      if (first) Refuse("only a single select statement is allowed");
      i = end;
      continue;
    }
    const bool comment = sql.substr(i, 2) == "--" || sql.substr(i, 2) == "/*";
    if (comment || std::string_view(";:?@$`[\\").find(c) != std::string_view::npos || c == '\0') {
      Refuse("it contains a character that a single select statement does not need");
    }
    ++i;
  }
  if (first) Refuse("only a single select statement is allowed");
}

}  // namespace tessel::embedded
