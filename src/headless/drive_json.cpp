#include "headless/drive_json.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace tessel {

namespace {

constexpr std::array kKindNames{"label",     "frame",        "button",  "check-box", "text-box",
                                "tree-list", "progress-bar", "picture", "line"};
constexpr std::array kIconNames{"none", "information", "exclamation", "critical"};

// Whole numbers without a fraction: 6990 rather than 6990.0.
Json NumberJson(double value) {
  if (std::abs(value) <= std::numeric_limits<std::int32_t>::max() && std::trunc(value) == value) {
    return static_cast<std::int32_t>(value);
  }
  return value;
}

Json BoundsJson(const Rect& bounds) {
  return {{"left", NumberJson(bounds.left)},
          {"top", NumberJson(bounds.top)},
          {"width", NumberJson(bounds.width)},
          {"height", NumberJson(bounds.height)}};
}

Value ReadValue(const Json& cell, const std::string& column) {
  if (cell.is_null()) return {};
  if (cell.is_boolean()) return cell.get<bool>();
  if (cell.is_string()) return cell.get<std::string>();
  if (!cell.is_number()) throw CommandError("cell " + column + " must be a number, text, Boolean or null");
  const double number = cell.get<double>();
  const bool fitsLong = number >= std::numeric_limits<std::int32_t>::min() &&
                        number <= std::numeric_limits<std::int32_t>::max();
  if (cell.is_number_integer() && fitsLong) return cell.get<std::int32_t>();
  return number;
}

Json NodeJson(const TreeList& list, const TreeList::Node& node) {
  Json report{{"text", node.text}, {"tag", node.tag}};
  if (!node.imageKey.empty()) report["image"] = node.imageKey;
  if (list.HasCheckBoxes()) report["checked"] = node.checked;
  return report;
}

void AddContent(Json& report, const TreeList& list) {
  Json nodes = Json::array();
  for (int node = 0; node < list.NodeCount(); ++node)
    nodes.push_back(NodeJson(list, list.NodeAt(node)));
  report["nodes"] = std::move(nodes);
  report["selected"] = list.Selected() < 0 ? Json() : Json(list.Selected());
}

// What the kinds of control show besides their caption.
void AddContent(Json& report, const Control& control) {
  if (const auto* box = dynamic_cast<const CheckBox*>(&control)) {
    report["checked"] = box->Checked();
  } else if (const auto* text = dynamic_cast<const TextBox*>(&control)) {
    report["text"] = text->Text();
    report["multi-line"] = text->MultiLine();
  } else if (const auto* bar = dynamic_cast<const ProgressBar*>(&control)) {
    report["value"] = bar->Value();
    report["maximum"] = bar->Maximum();
  } else if (const auto* picture = dynamic_cast<const Picture*>(&control)) {
    report["file"] = picture->File();
  } else if (const auto* list = dynamic_cast<const TreeList*>(&control)) {
    AddContent(report, *list);
  }
}

Json ControlJson(const Control& control) {
  Json report{{"control", control.Id()},
              {"kind", kKindNames.at(static_cast<std::size_t>(control.Kind()))},
              {"caption", control.Caption()},
              {"visible", control.ShownOnWindow()},
              {"enabled", control.Enabled()}};
  if (control.Parent() != nullptr) report["frame"] = control.Parent()->Id();
  report["bounds"] = BoundsJson(control.Bounds());
  AddContent(report, control);
  return report;
}

Json ObjectsJson(const std::vector<embedded::DialogObject>& objects) {
  Json report = Json::array();
  for (const auto& object : objects) {
    report.push_back({{"object", ObjectKeyText(object.key, ':')}, {"description", object.description}});
  }
  return report;
}

// One choice of a named few. Error: CommandError listing them.
template <class Result, std::size_t kCount>
Result ReadChoice(const Json& command, const std::array<std::pair<const char*, Result>, kCount>& choices) {
  const std::string answer = TextMember(command, "answer");
  std::string offered;
  for (const auto& [name, result] : choices) {
    if (answer == name) return result;
    offered += (offered.empty() ? "\"" : ", \"") + std::string(name) + "\"";
  }
  throw CommandError("\"answer\" must be one of " + offered);
}

constexpr std::array kOkOrCancel{std::pair("ok", true), std::pair("cancel", false),
                                 std::pair("close", false)};

}  // namespace

Json ValueJson(const Value& value) {
  if (value.IsNull()) return nullptr;
  if (value.IsText() || value.IsDate()) return value.AsText();
  if (value.IsBoolean()) return value.AsBoolean();
  if (value.IsDouble()) return value.AsDouble();
  return value.AsInt32();
}

std::optional<PlainRecords> RecordsMember(const Json& command, const char* name) {
  const auto found = command.find(name);
  if (found == command.end() || found->is_null()) return std::nullopt;
  const auto isRow = [](const Json& row) { return row.is_object(); };
  if (!found->is_array() || !std::all_of(found->begin(), found->end(), isRow)) {
    throw CommandError("\"" + std::string(name) + "\" must be an array of objects or null");
  }
  PlainRecords records;
  for (const Json& row : *found) {
    PlainRow& plain = records.emplace_back();
    for (const auto& [column, cell] : row.items())
      plain.emplace_back(column, ReadValue(cell, column));
  }
  return records;
}

Json WindowJson(const Window& window) {
  Json controls = Json::array();
  for (const auto& control : window.Controls())
    controls.push_back(ControlJson(*control));
  return {{"event", "window"},
          {"window", window.Name()},
          {"title", window.Title()},
          {"visible", window.Visible()},
          {"bounds", BoundsJson(window.Bounds())},
          {"controls", std::move(controls)}};
}

Json BoxJson(const MessageRequest& request) {
  const bool asks = request.buttons == MessageButtons::kYesNo;
  return {{"event", "box"},
          {"title", request.title.empty() ? kDefaultMessageTitle : request.title},
          {"text", request.text},
          {"icon", kIconNames.at(static_cast<std::size_t>(request.icon))},
          {"buttons", asks ? Json{"yes", "no"} : Json::array({"ok"})}};
}

MessageAnswer ReadBoxAnswer(const Json& command, MessageButtons buttons) {
  if (buttons == MessageButtons::kOk) {
    return ReadChoice(command, std::array{std::pair("ok", MessageAnswer::kOk)});
  }
  return ReadChoice(command,
                    std::array{std::pair("yes", MessageAnswer::kYes), std::pair("no", MessageAnswer::kNo)});
}

Json MenuJson(const Window& window, const PopupMenu& menu) {
  Json items = Json::array();
  for (const auto& item : menu.items)
    items.push_back({{"item", item.name}, {"caption", item.caption}});
  return {{"event", "menu"}, {"window", window.Name()}, {"menu", menu.name}, {"items", std::move(items)}};
}

int ReadMenuChoice(const Json& command, const PopupMenu& menu) {
  if (command.contains("item") && command["item"].is_null()) return -1;
  const std::string choice = TextMember(command, "item");
  for (std::size_t position = 0; position < menu.items.size(); ++position) {
    const MenuItem& item = menu.items[position];
    if (item.name == choice || item.caption == choice) return static_cast<int>(position);
  }
  throw CommandError("menu " + menu.name + " has no item " + choice);
}

Json LifeCycleJson(const embedded::LifeCycleRequest& request) {
  return {{"event", "dialog"},
          {"dialog", "life-cycle"},
          {"operation", request.operation},
          {"directory", request.directory},
          {"objects", ObjectsJson(request.objects)},
          {"affected", ObjectsJson(request.affected)}};
}

int ReadLifeCycleAnswer(const Json& command) {
  return ReadChoice(command, std::array{std::pair("ok", 1), std::pair("cancel", 2), std::pair("close", 7)});
}

Json ObjectDialogJson(const embedded::ObjectDialogRequest& request) {
  Json objects = Json::array();
  for (const auto& key : request.objects)
    objects.push_back(ObjectKeyText(key, ':'));
  Json attributes = Json::object();
  for (const auto& [name, text] : request.attributes)
    attributes[name] = text;
  return {{"event", "dialog"},
          {"dialog", "object"},
          {"mode", request.displayMode},
          {"title", request.title},
          {"page", request.page},
          {"modal", request.modal},
          {"objects", std::move(objects)},
          {"attributes", std::move(attributes)}};
}

int ReadObjectAnswer(const Json& command) {
  return ReadChoice(command, kOkOrCancel) ? 1 : 2;
}

Json SelectionJson(const embedded::SelectionDialogRequest& request) {
  return {{"event", "dialog"},
          {"dialog", "selection"},
          {"title", request.title},
          {"multiple", request.multiple},
          {"candidates", ObjectsJson(request.candidates)}};
}

std::vector<std::size_t> ReadPositions(const Json& command, const embedded::SelectionDialogRequest& request) {
  if (!ReadChoice(command, kOkOrCancel)) return {};
  const auto found = command.find("positions");
  if (found == command.end() || !found->is_array()) throw CommandError("\"positions\" must be an array");
  std::vector<std::size_t> positions;
  for (const Json& position : *found) {
    if (!position.is_number_unsigned() || position.get<std::size_t>() >= request.candidates.size()) {
      throw CommandError("no candidate has the position " +
                         position.dump(-1, ' ', false, Json::error_handler_t::replace));
    }
    if (std::ranges::find(positions, position.get<std::size_t>()) == positions.end()) {
      positions.push_back(position.get<std::size_t>());
    }
  }
  if (!request.multiple && positions.size() > 1) throw CommandError("only one candidate can be picked");
  return positions;
}

embedded::LoginAnswer ReadLoginAnswer(const Json& command) {
  if (!ReadChoice(command, kOkOrCancel)) return {};
  return {true, TextMember(command, "login"), TextMember(command, "password", "")};
}

}  // namespace tessel
