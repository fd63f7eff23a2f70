// What the command line offers, parsed: one struct a command.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tessel::cli {

// Exit statuses.
inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;  // refused or failed; standard error says why
inline constexpr int kBadUsage = 2;
inline constexpr int kIncomplete = 3;  // handed over, but something is missing; standard error says what
// Beside these, 128 and the number of the signal that ended an export.

struct Login {
  std::string database;
  std::string user;
  std::string password;
  bool passwordFromInput = false;  // it is the first line of standard input
  std::string language;            // empty: the user's or the database's own
};

struct HostCreate {
  std::string database;
  std::string model;
};

struct HostShow {
  std::string database;
};

struct Recover {
  std::string database;
  bool dryRun = false;
  bool strays = false;
};

struct Drive {
  Login login;
};

struct Export {
  Login login;
  std::vector<std::string> objects;     // CLASS:OBJECT
  std::string mode;                     // name of the send mode
  std::vector<std::string> recipients;  // CUSTOMER:CONTACT
  std::string subject;
  std::optional<std::string> content;
  std::vector<std::string> fields;  // N=TEXT
  std::string folderStructure;      // empty: an ordinary export
  bool dryRun = false;
};

// A hook that works on named objects.
struct NamedHookCall {
  Login login;
  std::vector<std::string> objects;
};

}  // namespace tessel::cli
