#include "exchange/exchange.h"

#include "host/column_shape.h"
#include "host/names.h"
#include "messages/guard.h"
#include "platform/paths.h"
#include "selection/selection.h"

namespace tessel::CommonXFunctions {
namespace {

// Adds "ROOT_OBJ" where it is missing and sets it to 0 in every row.
void ResetRootMarks(PcRecordList& list) {
  if (!list.HasColumn(attribute::kRootObject))
    AddColumn(list, attribute::kRootObject, column_shape::kInteger);
  const int column = list.FindColumn(attribute::kRootObject);
  const int rows = list.RowCount();
  for (int row = 0; row < rows; ++row)
    list.SetValue(column, row, Value(std::int16_t{0}));
}

// Column of the destination for each column of the source, made where it is missing.
std::vector<int> MatchColumns(const PcRecordList& source, PcRecordList& destination) {
  std::vector<int> columns;
  const int count = source.ColumnCount();
  for (int column = 0; column < count; ++column) {
    const std::string name = source.ColumnName(column);
    if (!destination.HasColumn(name)) {
      destination.AddColumn(name, source.ColumnLength(column), source.ColumnTypeCode(column));
    }
    columns.push_back(destination.FindColumn(name));
  }
  return columns;
}

using JournalPtr = std::unique_ptr<ExportJournal>;

// The journal, where one is wanted, stands before the directory.
void CreateDirectory(Services& services, const std::string& basePath, const std::string& name,
                     const std::string& fullPath, JournalPtr* journal) {
  if (!paths::IsPlainFileName(name)) {
    throw RuntimeError(error_number::kPathFileAccess,
                       "Create folder: \"" + name + "\" is no plain name below " + basePath);
  }
  if (!paths::IsFullPath(basePath)) {
    throw RuntimeError(error_number::kPathFileAccess,
                       "Create folder: the exchange path \"" + basePath + "\" does not begin at a drive");
  }
  FileSystem& files = services.platform.files;
  files.CreateFolders(basePath);
  if (journal == nullptr) {
    files.CreateFolder(fullPath);
    return;
  }
  if (files.FolderExists(fullPath))
    throw RuntimeError(error_number::kFileAlreadyExists, "Create folder: " + fullPath + " exists already");
  *journal = ExportJournal::Begin(files, fullPath);
  try {
    (*journal)->Making(fullPath);
    files.CreateFolder(fullPath);
  } catch (...) {
    IgnoringErrors([&] { (*journal)->Close(); });
    journal->reset();
    throw;
  }
}

bool CreateGuarded(Services& services, const std::string& basePath, const std::string& name,
                   std::string& fullPath, JournalPtr* journal) {
  fullPath = paths::Join(basePath, name);
  return Guarded(services.trace,
                 "Fehler beim Erzeugen des temp. Austauschverzeichnisses "
                 "(CreateNewExDir/CommonXFunctions",
                 false, [&] {
                   CreateDirectory(services, basePath, name, fullPath, journal);
                   return true;
                 });
}

}  // namespace

bool CreateExDirName(Services& services, std::string& name) {
  return Guarded(services.trace,
                 "Fehler beim Erzeugen des Namens fuer das temp. Austauschverzeichnis "
                 "(CreateExDirName/CommonXFunctions)",
                 false, [&] {
                   const auto user = Required(services.Session().CurrentUser(), "current user");
                   name = "@@_" + user->LoginName() + "_" + FileTimeText(services.platform.clock.Now());
                   return true;
                 });
}

bool CreateNewExDir(Services& services, const std::string& basePath, const std::string& name,
                    std::string& fullPath) {
  return CreateGuarded(services, basePath, name, fullPath, nullptr);
}

bool MakeExchangeDirectory(Services& services, ExchangeState& state) {
  if (!state.directoryName.empty()) return true;
  std::string name;
  std::string path;
  if (!CreateExDirName(services, name)) return false;
  services.trace.Write("Name des temp. Austauschverzeichnisses(Command1_Click/Tessel_2): " + name);
  JournalPtr journal;
  if (!CreateGuarded(services, services.Settings().ExchangeDirectory, name, path, &journal)) return false;
  services.trace.Write("Austauschverzeichnisses erstellt(Command1_Click/Tessel_2): " + path);
  state.directoryName = name;
  state.directoryPath = path;
  state.journal = std::move(journal);
  return true;
}

void ForgetExchangeDirectory(ExchangeState& state) {
  state.directoryName.clear();
  state.directoryPath.clear();
  state.journal.reset();
}

ExportJournal& JournalOf(Services& services, ExchangeState& state) {
  if (!state.journal) {
    state.journal = ExportJournal::Begin(services.platform.files, state.directoryPath);
    state.journal->Making(state.directoryPath);
  }
  return *state.journal;
}

int AllCopiedFiles(Services& services, ExchangeState& state, const PcRecordListPtr& first,
                   const PcRecordListPtr& second) {
  const auto keep = [&] {
    if (first) {
      PcRecordListPtr files;
      CopyRecList(services.runtime, *first, files, false);
      state.copied.SetFiles(std::move(files));
    } else {
      services.trace.Write("FirstRec of Hook 'LFCStage2' is empty");
    }
    if (second) {
      PcRecordListPtr links;
      CopyRecList(services.runtime, *second, links, false);
      state.copied.SetLinks(std::move(links));
    } else {
      services.trace.Write("SecondRec of Hook 'LFCStage2' is empty");
    }
    ResetRootMarks(CopiedFilesToMark(services.runtime, state.copied));
    DumpRecordLists(services.trace, first, second, "List of all copied Files",
                    "List of links to all copied files");
    return 0;
  };
  return Guarded(services.trace,
                 "Fehler beim Uebernehmen der kopierten Dateien (AllCopiedFiles/CommonXFunctions)", 1, keep);
}

PcRecordList& CopiedFilesToMark(HostRuntime& runtime, CopiedRows& copied) {
  static_cast<void>(Required(copied.Files().get(), "copied-files list"));
  if (copied.IsExported()) {
    PcRecordListPtr files;
    CopyRecList(runtime, *copied.Files(), files, false);
    copied.SetFiles(std::move(files));
  }
  return *copied.Files();
}

int CopyRecList(HostRuntime& runtime, const PcRecordList& source, PcRecordListPtr& destination, bool append) {
  if (!append) destination = NewRecList(runtime);
  PcRecordList& target = *Required(destination.get(), "destination record list");
  const std::vector<int> columns = MatchColumns(source, target);
  const int offset = append ? target.RowCount() : 0;
  const int rows = source.RowCount();
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
      target.SetValue(columns[static_cast<std::size_t>(column)], row + offset, source.GetValue(column, row));
    }
  }
  return 0;
}

PcRecordListPtr NewRecList(HostRuntime& runtime) {
  const auto application = runtime.RunningApplication();
  return application ? application->NewRecordList() : runtime.CreateRecordList();
}

}  // namespace tessel::CommonXFunctions
