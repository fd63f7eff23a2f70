// What the drive protocol writes about windows, boxes and dialogs, and how it reads records and values.
#pragma once

#include <optional>

#include "embedded/dialogs/host_dialogs.h"
#include "headless/drive_lines.h"
#include "headless/driven_hooks.h"
#include "toolkit/toolkit.h"
#include "toolkit/window.h"

namespace tessel {

[[nodiscard]] Json ValueJson(const Value& value);
// Member "first" and the like: an array of objects, Null or missing for nothing. Error: CommandError.
[[nodiscard]] std::optional<PlainRecords> RecordsMember(const Json& command, const char* name);

// A window with all its controls.
[[nodiscard]] Json WindowJson(const Window& window);

[[nodiscard]] Json BoxJson(const MessageRequest& request);
// The answer that a command gives to a box. Error: CommandError for one that the box does not offer.
[[nodiscard]] MessageAnswer ReadBoxAnswer(const Json& command, MessageButtons buttons);

[[nodiscard]] Json MenuJson(const Window& window, const PopupMenu& menu);
// Position of the item that a command names; -1 when it closes the menu. Error: CommandError.
[[nodiscard]] int ReadMenuChoice(const Json& command, const PopupMenu& menu);

[[nodiscard]] Json LifeCycleJson(const embedded::LifeCycleRequest& request);
[[nodiscard]] int ReadLifeCycleAnswer(const Json& command);

[[nodiscard]] Json ObjectDialogJson(const embedded::ObjectDialogRequest& request);
[[nodiscard]] int ReadObjectAnswer(const Json& command);

[[nodiscard]] Json SelectionJson(const embedded::SelectionDialogRequest& request);
[[nodiscard]] std::vector<std::size_t> ReadPositions(const Json& command,
                                                     const embedded::SelectionDialogRequest& request);

[[nodiscard]] embedded::LoginAnswer ReadLoginAnswer(const Json& command);

}  // namespace tessel
