// A model file (docs/model-file.md) read and checked: all that a new database is to hold.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "embedded/model/metadata.h"

namespace tessel::embedded {

struct ModelSource {
  std::string text;       // JSON
  std::string name;       // stands in front of problems, for example the file name
  std::string directory;  // absolute; files are relative to it, and it replaces ${MODEL_DIR}
};

// An object or a link.
struct ModelObject {
  ClassDefinitionPtr definition;
  std::string where;          // names the object in problems
  std::vector<Value> values;  // in attribute order, OBJECT_ID and CLASS_ID among them
  std::string file;           // path of the file that goes into the vault, empty without
  std::string vaultName;
};

struct ModelUser {
  std::string login;
  std::string password;
  std::string language;
  bool administrator = false;
  std::vector<std::string> roles;
  std::map<std::string, std::string> settings;
  ObjectKey object;
};

struct Model {
  MetadataPtr metadata;
  std::string metadataText;          // JSON text of the metadata
  std::vector<ModelObject> objects;  // lookup values first, then objects, then links
  std::vector<ModelUser> users;
  std::map<std::string, std::string> configuration;
  ObjectId nextObjectId = 1;
};

// Without a vault, file names need no file behind them. Error: HostError that lists the problems.
[[nodiscard]] Model ReadModel(const ModelSource& source, bool hasVault);

}  // namespace tessel::embedded
