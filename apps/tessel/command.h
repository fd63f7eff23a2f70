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

struct Login {
  std::string database;
  std::string user;
  std::string password;
  std::string language;  // empty: the user's or the database's own
};

struct HostCreate {
  std::string database;
  std::string model;
};

struct HostShow {
  std::string database;
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

// One of the hooks that work on named objects.
struct NamedHookCall {
  Login login;
  std::string hook;
  std::vector<std::string> objects;
};

}  // namespace tessel::cli
