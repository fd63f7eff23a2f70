// An exchange directory, its name and what lies in it. The end of its name says what became of it: "_New" is
// to be sent, "_Sent" is sent, "_Break" is stopped. What stands before is its base name, which never changes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace tessel::sender {

enum class Place { kQueued, kSent, kStopped };

[[nodiscard]] const char* SuffixOf(Place place);

struct ExchangeDirectory {
  std::string parent;  // the exchange path
  std::string base;    // name without its end
  Place place = Place::kQueued;

  [[nodiscard]] std::string Name() const { return base + SuffixOf(place); }
  [[nodiscard]] std::string Path() const;
  [[nodiscard]] std::string In(const std::string& name) const;
  // The sender's own folder in it: journal, protocol, and the package while it is made.
  [[nodiscard]] std::string WorkFolder() const;
  [[nodiscard]] ExchangeDirectory At(Place other) const { return {parent, base, other}; }
};

// Nothing for a name with another end, or nothing before it.
[[nodiscard]] std::optional<ExchangeDirectory> AsExchangeDirectory(const std::string& parent,
                                                                   const std::string& name);

// Those directly below an exchange path, sorted by name; none when it does not exist.
[[nodiscard]] std::vector<ExchangeDirectory> ListExchanges(const FileSystem& files,
                                                           const std::string& parent);

// A document: its path in the directory with "/" between folders, and its size.
struct Document {
  std::string name;
  long long size = 0;
};

// Every file of the directory and of the folders in it, but the sender's own and `except`; sorted by name.
// Error 75 for a link, for a name that would not stay in a folder, and for a file named like the sender's
// folder.
[[nodiscard]] std::vector<Document> ListDocuments(const FileSystem& files, const ExchangeDirectory& directory,
                                                  const std::vector<std::string>& except);

}  // namespace tessel::sender
