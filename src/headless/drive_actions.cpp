#include "headless/drive_actions.h"

#include <limits>
#include <map>
#include <nlohmann/json.hpp>

#include "headless/user_actions.h"
#include "platform/text_encoding.h"

namespace tessel {

namespace {

using Perform = Refusal (*)(const Json& command, UserActions& user);

constexpr char32_t kEnter = 13;
constexpr char32_t kEscape = 27;

const std::map<std::string, char32_t>& NamedKeys() {
  static const std::map<std::string, char32_t> keys{{"space", U' '}, {"enter", kEnter}, {"escape", kEscape},
                                                    {"tab", 9},      {"backspace", 8},  {"delete", 127}};
  return keys;
}

// One character, or a name.
char32_t ReadKey(const Json& command) {
  const std::string text = TextMember(command, "key");
  const auto named = NamedKeys().find(text);
  if (named != NamedKeys().end()) return named->second;
  std::size_t position = 0;
  bool malformed = false;
  const char32_t key = text.empty() ? 0 : NextCodePoint(text, position, malformed);
  if (key == 0 || position != text.size())
    throw CommandError("\"key\" must be one character or a key's name");
  return key;
}

MouseButton ReadMouseButton(const Json& command) {
  const std::string button = TextMember(command, "button", "left");
  if (button == "left") return MouseButton::kLeft;
  if (button == "right") return MouseButton::kRight;
  throw CommandError("\"button\" must be \"left\" or \"right\"");
}

NodeChoice ReadNode(const Json& command) {
  const auto found = command.find("node");
  if (found != command.end() && found->is_string()) return found->get<std::string>();
  if (found == command.end() || !found->is_number_integer()) {
    throw CommandError("\"node\" must be a position, a text or a tag");
  }
  const auto position = found->get<std::int64_t>();
  const bool inRange = position >= 0 && position <= std::numeric_limits<int>::max();
  return inRange ? static_cast<int>(position) : -1;
}

Refusal CheckAs(const Json& command, UserActions& user, CheckWish wish) {
  const std::string control = TextMember(command, "control");
  return command.contains("node") ? user.CheckNode(control, ReadNode(command), wish)
                                  : user.Check(control, wish);
}

Refusal PressKey(const Json& command, UserActions& user) {
  const char32_t key = ReadKey(command);
  if (command.contains("control")) return user.PressKey(TextMember(command, "control"), key);
  if (key == kEnter) return user.PressEnter();
  if (key == kEscape) return user.PressEscape();
  throw CommandError("a window answers \"enter\" and \"escape\"; any other key needs a \"control\"");
}

// What the command leaves out stays as it is.
Refusal Resize(const Json& command, UserActions& user) {
  const Rect now = user.WindowBounds();
  return user.SetBounds({NumberMember(command, "left", now.left), NumberMember(command, "top", now.top),
                         NumberMember(command, "width", now.width),
                         NumberMember(command, "height", now.height)});
}

const std::map<std::string, Perform>& Actions() {
  static const std::map<std::string, Perform> actions{
      {"click",
       [](const Json& command, UserActions& user) { return user.Click(TextMember(command, "control")); }},
      {"check",
       [](const Json& command, UserActions& user) { return CheckAs(command, user, CheckWish::kChecked); }},
      {"uncheck",
       [](const Json& command, UserActions& user) { return CheckAs(command, user, CheckWish::kUnchecked); }},
      {"toggle",
       [](const Json& command, UserActions& user) { return CheckAs(command, user, CheckWish::kToggled); }},
      {"select",
       [](const Json& command, UserActions& user) {
         return user.ClickNode(TextMember(command, "control"), ReadNode(command), ReadMouseButton(command));
       }},
      {"release",
       [](const Json& command, UserActions& user) {
         return user.ReleaseButton(TextMember(command, "control"), ReadMouseButton(command));
       }},
      {"key", PressKey},
      {"type",
       [](const Json& command, UserActions& user) {
         return user.Type(TextMember(command, "control"), TextMember(command, "text"));
       }},
      {"resize", Resize},
      {"close", [](const Json&, UserActions& user) { return user.CloseWindow(); }},
  };
  return actions;
}

}  // namespace

bool IsUserAction(const std::string& verb) {
  return Actions().contains(verb);
}

void PerformUserAction(const Json& command, HeadlessToolkit& toolkit) {
  UserActions user(toolkit, TextMember(command, "window", ""));
  const Refusal refusal = Actions().at(TextMember(command, "do"))(command, user);
  if (!refusal.empty()) throw CommandError(refusal);
}

}  // namespace tessel
