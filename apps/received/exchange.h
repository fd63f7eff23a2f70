// What a received exchange says of itself, read from its structure and data file.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/object_key.h"
#include "received/file_source.h"

namespace tessel::received {

using NamedTexts = std::vector<std::pair<std::string, std::string>>;

// The text under a name; empty when there is none.
[[nodiscard]] std::string TextOf(const NamedTexts& texts, std::string_view name);

// An object of the content list, the hierarchy or the dependencies.
struct Object {
  std::string identifier;  // CLASS_OBJECT
  std::string instance;
  std::string value;      // what people read
  NamedTexts attributes;  // of the content list, those behind identifier and instance
  std::vector<Object> below;

  // A selected object that was not copied has no attributes and no file.
  [[nodiscard]] bool Copied() const { return !attributes.empty(); }
  [[nodiscard]] std::string FileName() const { return TextOf(attributes, "ORIG_FILE_NAME"); }
};

struct Dependency {
  Object first;
  Object second;
  std::string linkName;
  std::string direction;
};

struct Problem {
  std::string file;  // name in the exchange; empty: the exchange itself
  std::string text;
};

struct Exchange {
  std::string structureFile;  // names; empty when there is no such file
  std::string dataFile;
  bool neutralFormats = false;
  std::string created;  // yyyymmdd_hhmmss
  std::string createdBy;
  std::vector<Object> selected;
  bool structured = false;  // whether the file holds hierarchy and dependencies
  std::vector<Object> hierarchy;
  std::vector<Dependency> dependencies;
  NamedTexts data;     // elements of the data file, in order
  NamedTexts formats;  // of the neutral-formats file

  // The data exchange object in the sender's database; object id 0 when the data file names none.
  [[nodiscard]] ObjectKey Record() const;
};

// Reads as much as can be read; what is missing, not well-formed or not valid by its schema comes into
// `problems`.
[[nodiscard]] Exchange ReadExchange(const FileSource& source, std::vector<Problem>& problems);

}  // namespace tessel::received
