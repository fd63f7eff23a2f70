#include "tessel/usage.h"

#include <algorithm>
#include <numeric>

#include "platform/text_encoding.h"

namespace tessel::cli {
namespace {

// What one slip of the fingers changes, and a second one.
constexpr std::size_t kFarthest = 2;

// Letters to insert, to leave out, to replace or to swap with the next one.
std::size_t Distance(std::string_view one, std::string_view other) {
  std::vector<std::vector<std::size_t>> steps(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
  std::iota(steps[0].begin(), steps[0].end(), 0U);
  for (std::size_t i = 1; i <= one.size(); ++i) {
    steps[i][0] = i;
    for (std::size_t j = 1; j <= other.size(); ++j) {
      const std::size_t replaced = one[i - 1] == other[j - 1] ? 0 : 1;
      steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + replaced});
      const bool swapped = i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
      if (swapped) steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
    }
  }
  return steps[one.size()][other.size()];
}

// "; did you mean ...?", or nothing when no name is near.
std::string Suggestion(const std::string& wrong, const std::vector<std::string>& names) {
  const std::string* nearest = nullptr;
  std::size_t least = kFarthest + 1;
  for (const std::string& name : names) {
    // An option that was begun only.
    const std::size_t steps =
        wrong.size() > kFarthest + 2 && name.starts_with(wrong) ? 1 : Distance(wrong, name);
    if (steps >= least) continue;
    least = steps;
    nearest = &name;
  }
  return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

std::vector<std::string> CommandsOf(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(command->get_name());
  return names;
}

std::vector<std::string> OptionsOf(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames())
      names.push_back("--" + name);
  }
  return names;
}

std::string InQuotes(std::string_view text) {
  std::string quoted = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t from = at;
    bool malformed = false;
    (void)NextCodePoint(text, at, malformed);
    if (!malformed) {
      quoted += text.substr(from, at - from);
      continue;
    }
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(text[from]);
    quoted += {'\\', 'x', kDigits[byte / 16], kDigits[byte % 16]};
  }
  return quoted + "\"";
}

}  // namespace

const char* const kHelpFooter =
    R"(Exit status:
  0 done; 1 refused or failed, nothing was handed over; 2 bad usage; 3 handed
  over, but something is missing; 130 and 143 an export that was ended by
  Ctrl-C or TERM. Standard error says why.

Examples:
  tessel host create company.db examples/company.json
  tessel export company.db --user anna --select 1201:4711 --no-send
  tessel export company.db --user anna --select 1202:4721,1201:4713 --mode mail \
      --recipient 901_301:902_401 --subject Housing --dry-run
  tessel latest company.db --user anna --json 1202:4725
)";

bool IsUtf8(std::string_view text) {
  bool malformed = false;
  for (std::size_t at = 0; at < text.size() && !malformed;)
    (void)NextCodePoint(text, at, malformed);
  return !malformed;
}

std::optional<std::string> FindForeignText(const std::vector<std::string>& arguments) {
  const auto foreign = std::ranges::find_if_not(arguments, &IsUtf8);
  if (foreign == arguments.end()) return std::nullopt;
  return "the argument " + InQuotes(*foreign) + " is not UTF-8";
}

std::optional<std::string> FindUnknownName(const CLI::App& app, const std::vector<std::string>& arguments) {
  const CLI::App* current = &app;
  for (const std::string& argument : arguments) {
    if (argument == "--") break;
    if (argument.starts_with("--")) {
      const std::string name = argument.substr(0, argument.find('='));
      if (current->get_option_no_throw(name) == nullptr)
        return "there is no option \"" + name + "\"" + Suggestion(name, OptionsOf(*current));
      continue;
    }
    const std::vector<std::string> commands = CommandsOf(*current);
    if (commands.empty() || argument.starts_with("-")) continue;
    if (std::ranges::find(commands, argument) == commands.end())
      return "there is no command \"" + argument + "\"" + Suggestion(argument, commands);
    current = current->get_subcommand(argument);
  }
  return std::nullopt;
}

}  // namespace tessel::cli
