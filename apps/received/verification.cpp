#include "received/verification.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "exchange/exchange.h"
#include "platform/paths.h"

namespace tessel::received {
namespace {

constexpr const char* kCustomText = "CustomText_";
// The data file's elements behind which only custom texts stand.
constexpr const char* kLastFixedElement = "FolderStrucClassID";

// What the copy adds to an object's element, besides what the recipient's mapping adds.
constexpr const char* kCopiedAttributes[] = {"ACCESS_AUTHORIZATION",
                                             "FIRST_DESCRIPTION",
                                             "SECOND_DESCRIPTION",
                                             "ORIG_FILE_NAME",
                                             "FILE_EXTENSION",
                                             "IS_DRAXA_DOC",
                                             "STRUCTURE_LEVEL",
                                             "LINK_NAME",
                                             "LINK_DIRECTION",
                                             "RENAME_FILE_NAME",
                                             "PELICORE_CLASS_ID",
                                             "PELICORE_OBJ_ID",
                                             "STATUS",
                                             "REVISION"};

std::string Extension(const std::string& fileName) {
  return fileName.substr(fileName.rfind('.') + 1);
}

class Verification {
 public:
  Verification(const FileSource& source, const Exchange& exchange, std::vector<Problem>& problems)
      : source_(source), exchange_(exchange), problems_(problems) {}

  void Run() {
    CheckName();
    CheckData();
    for (const Object& selected : exchange_.selected)
      CheckSelected(selected);
    CheckStructure();
    CheckInstanceNumbers();
    CheckEntries();
  }

 private:
  void Tell(const std::string& file, const std::string& text) { problems_.push_back({file, text}); }
  void TellOf(const Object& object, const std::string& text) {
    Tell(exchange_.structureFile, "object " + object.identifier + ": " + text);
  }

  void CheckName() {
    if (source_.Name().starts_with("@@_")) Tell("", "the export is under way, or was not finished");
  }

  void CheckData() {
    if (exchange_.data.empty()) return;
    if (exchange_.Record().objectId == 0) {
      Tell(exchange_.dataFile, "it names no data exchange object: the sender's database has no record of it");
    }
    int number = 0;
    bool custom = false;
    for (const auto& [name, text] : exchange_.data) {
      if (custom && name != kCustomText + std::to_string(++number)) {
        Tell(exchange_.dataFile, "the element " + name + " has no place here");
      }
      custom = custom || name == kLastFixedElement;
    }
  }

  void CheckSelected(const Object& selected) {
    CheckObject("_STOBJECT_", selected);
    // The schema lets them be left out, as they are where the object was not copied.
    for (const char* name : kCopiedAttributes) {
      if (selected.Copied() && !Has(selected, name)) TellOf(selected, std::string("it has no ") + name);
    }
    if (!selected.Copied() && !selected.below.empty()) {
      TellOf(selected, "it was not copied, but others with it");
    }
    for (const Object& further : selected.below)
      CheckObject("_STOBJECT_", further);
  }

  static bool Has(const Object& object, std::string_view name) {
    return std::ranges::find(object.attributes, name, &NamedTexts::value_type::first) !=
           object.attributes.end();
  }

  void CheckObject(const char* element, const Object& object) {
    CheckInstance(element, object);
    if (!object.Copied()) return;
    const std::string key =
        TextOf(object.attributes, "PELICORE_CLASS_ID") + "_" + TextOf(object.attributes, "PELICORE_OBJ_ID");
    if (key != object.identifier) TellOf(object, "its ids say " + key);
    copied_.insert(object.identifier);
    CheckFile(object);
  }

  // The instances of an element's name and identifier count from 0, though not in the order of the file.
  void CheckInstance(const std::string& element, const Object& object) {
    Instances& instances = instances_[element + " " + object.identifier];
    ++instances.count;
    if (!instances.numbers.insert(object.instance).second) {
      TellOf(object, element + " with instance " + object.instance + " is there twice");
    }
  }

  void CheckInstanceNumbers() {
    for (const auto& [element, instances] : instances_) {
      for (int number = 0; number < instances.count; ++number) {
        if (instances.numbers.contains(std::to_string(number))) continue;
        Tell(exchange_.structureFile, element + " has no instance " + std::to_string(number));
        break;
      }
    }
  }

  void CheckFile(const Object& object) {
    const std::string name = object.FileName();
    if (TextOf(object.attributes, "FILE_EXTENSION") != Extension(name)) {
      TellOf(object, "the file extension does not fit \"" + name + "\"");
    }
    if (name.empty()) return;  // the file bears a name that the structure file does not tell
    if (!paths::IsPlainFileName(name)) return TellOf(object, "\"" + name + "\" is no file name");
    const auto [known, isNew] = documents_.emplace(name, object.identifier);
    if (!isNew && known->second != object.identifier) {
      TellOf(object, "its file " + name + " is that of " + known->second + ", too");
    }
    if (isNew && !source_.Has(name)) Tell(name, "is missing (object " + object.identifier + ")");
  }

  void CheckStructure() {
    if (!exchange_.structured) return;
    CheckRoots();
    for (const Object& root : exchange_.hierarchy)
      CheckHierarchy(root, true);
    for (const Dependency& dependency : exchange_.dependencies) {
      CheckEnd(dependency.first);
      CheckEnd(dependency.second);
    }
  }

  void CheckRoots() {
    const auto& roots = exchange_.hierarchy;
    bool same = roots.size() == exchange_.selected.size();
    for (std::size_t i = 0; same && i < roots.size(); ++i)
      same = roots[i].identifier == exchange_.selected[i].identifier;
    if (!same) Tell(exchange_.structureFile, "the hierarchy does not begin with the selected objects");
  }

  void CheckHierarchy(const Object& object, bool isRoot) {
    CheckInstance("_H_STOBJECT_", object);
    if (!isRoot) CheckListed(object, "hierarchy");
    for (const Object& below : object.below)
      CheckHierarchy(below, false);
  }

  void CheckEnd(const Object& object) {
    CheckInstance("_D_STOBJECT_", object);
    CheckListed(object, "dependencies");
  }

  void CheckListed(const Object& object, const std::string& part) {
    if (!copied_.contains(object.identifier)) {
      TellOf(object, "it stands in the " + part + ", but not in the content list");
    }
  }

  void CheckEntries() {
    std::string last;
    for (const Entry& entry : source_.Entries()) {
      if (entry.kind == Entry::Kind::kOther) {
        Tell(entry.name, "is no plain file");
      } else if (entry.kind == Entry::Kind::kFolder) {
        if (IsOfSender(entry.name)) continue;
        Tell(entry.name, "is a folder; an exchange has none");
      } else if (entry.name == last) {
        Tell(entry.name, "is there twice");
      } else if (!Expected(entry.name)) {
        Tell(entry.name, "is listed nowhere");
      } else if (source_.HasCheckSums()) {
        CheckReadable(entry.name);
      }
      last = entry.name;
    }
  }

  void CheckReadable(const std::string& name) {
    try {
      source_.Read(name, [](std::string_view) { return true; });
    } catch (const ReadError& error) {
      Tell(name, error.what());
    }
  }

  // What the sender has made beside the files: its journal, and the folder of the package.
  [[nodiscard]] bool IsOfSender(const std::string& folder) const {
    const bool wasSent = source_.Name().ends_with("_Sent") || source_.Name().ends_with("_Break");
    return wasSent && (folder == "KestrixServMon" || folder == TextOf(exchange_.data, "SubExDir"));
  }

  [[nodiscard]] bool Expected(const std::string& name) const {
    return name == exchange_.structureFile || name == exchange_.dataFile || name == kNeutralFormatsFile ||
           documents_.contains(name);
  }

  const FileSource& source_;
  const Exchange& exchange_;
  std::vector<Problem>& problems_;
  struct Instances {
    int count = 0;
    std::unordered_set<std::string> numbers;
  };
  std::map<std::string, Instances> instances_;              // by element name and identifier
  std::unordered_map<std::string, std::string> documents_;  // identifier by file name
  std::unordered_set<std::string> copied_;
};

}  // namespace

void Verify(const FileSource& source, const Exchange& exchange, std::vector<Problem>& problems) {
  Verification(source, exchange, problems).Run();
}

std::size_t DocumentCount(const Exchange& exchange) {
  std::unordered_set<std::string> copied;
  for (const Object& selected : exchange.selected) {
    if (selected.Copied()) copied.insert(selected.identifier);
    for (const Object& further : selected.below)
      copied.insert(further.identifier);
  }
  return copied.size();
}

}  // namespace tessel::received
