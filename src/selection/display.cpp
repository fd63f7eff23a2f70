// What the selection shows and dumps: class icons and record lists.
#include "messages/guard.h"
#include "platform/paths.h"
#include "selection/selection.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr const char* kRule = "----------------------------------------------";  // 46 hyphens

void DumpRecordList(Trace& trace, const PcRecordList& list, const std::string& label,
                    const std::string& title) {
  trace.Write(kRule);
  trace.Write(label + title);
  const int rows = list.RowCount();
  const int columns = list.ColumnCount();
  for (int row = 0; row < rows; ++row) {
    trace.Write("     ------------");
    for (int column = 0; column < columns; ++column) {
      trace.Write(list.ColumnName(column) + ":   " + list.GetValue(column, row).AsText());
    }
  }
  trace.Write(kRule);
}

// Path of a class's icon. Errors: 75 for a name that leads out of the icon directory, 53 for a missing file.
std::string IconFile(const Services& services, const std::string& name) {
  if (!paths::IsPlainFileName(name)) {
    throw RuntimeError(error_number::kPathFileAccess, "\"" + name + "\" is no plain file name");
  }
  const std::string file = paths::Join(services.declarations.startup.IconDirectory, name);
  if (!services.platform.files.FileExists(file)) {
    throw RuntimeError(error_number::kFileNotFound, "File not found: " + file);
  }
  return file;
}

}  // namespace

// A list is as good without a picture: the trace tells of it, the outcome of the run does not.
void GetIcon(Services& services, const PcObject& object, ImageList& images) {
  const std::size_t problems = services.trace.problems.Kept().size();
  GuardedRun(
      services.trace, "Fehler beim Auslesen der Icons in function: (GetIcon/CommonXFunctions)",
      [&] {
        const std::string key = "Class" + std::to_string(object.GetClassId());
        if (images.Contains(key)) return;
        const std::string name = Required(object.Class(), "class of the object")->IconFileName();
        services.trace.Write(
            "hole Icon zu Objekt(GetIcon/CommonXFunctions): " + std::to_string(object.GetObjectId()) + " " +
            std::to_string(object.GetClassId()));
        images.Add(key, IconFile(services, name));
      },
      ProblemKind::kAside);
  services.trace.problems.ForgetBehind(problems);
}

void DumpRecordLists(Trace& trace, const PcRecordListPtr& first, const PcRecordListPtr& second,
                     const std::string& firstTitle, const std::string& secondTitle) {
  IgnoringErrors([&] {
    if (first) DumpRecordList(trace, *first, "First Record List: ", firstTitle);
    if (second) {
      DumpRecordList(trace, *second, "Second Record List: ", secondTitle.empty() ? firstTitle : secondTitle);
    }
  });
}

}  // namespace tessel::CommonXFunctions
