#include "common/outcome_words.h"

#include <algorithm>
#include <cstddef>

#include "host/error.h"

namespace tessel {
namespace {

struct BothWords {
  const char* english;
  const char* german;
  [[nodiscard]] const char* In(Speech speech) const { return speech == Speech::kGerman ? german : english; }
};

// The step whose text in the trace contains the mark: mostly the name of its procedure.
struct StepWords {
  const char* mark;
  BothWords words;
};

constexpr BothWords kExporting{"Exporting", "Exportieren"};
constexpr BothWords kMakingDirectory{"Making the exchange directory", "Anlegen des Austauschverzeichnisses"};
constexpr BothWords kDescribing{"Describing the documents", "Beschreiben der Dokumente"};
constexpr BothWords kReadingSettings{"Reading the settings", "Lesen der Einstellungen"};
constexpr BothWords kRecording{"Recording the data exchange", "Vermerken des Datenaustauschs"};
constexpr BothWords kStartingMonitor{"Starting the server monitor", "Starten des Versandprogramms"};
constexpr BothWords kContinuing{"Continuing the data exchange", "Fortsetzen des Datenaustauschs"};

constexpr StepWords kSteps[] = {
    {"(CreateExDirName/", kMakingDirectory},
    {"(CreateNewExDir/", kMakingDirectory},
    {"(copyFile2ExDir/", {"Copying the documents", "Kopieren der Dokumente"}},
    {"(AllCopiedFiles/", {"Taking over the copied files", "Übernehmen der kopierten Dateien"}},
    {"(CreateStructure/", kDescribing},
    {"(BuildContentList/", kDescribing},
    {"(BuildHierarchicalStructure/", kDescribing},
    {"(BuildDependencyList/", kDescribing},
    {"(Command1_Click/Tessel_2)", {"Processing the documents", "Bearbeiten der Dokumente"}},
    {"(Command1_Click/Tessel_4)", {"Handing the export over", "Übergeben des Exports"}},
    {"(AdditionalXMLAttributes/", {"Adding the mapped attributes", "Ergänzen der zugeordneten Attribute"}},
    {"(CreateExchangeObject / Kestrix_ExObj)", kRecording},
    {"inserting new data exchange object", kRecording},
    {"Updating the data exchange object", kRecording},
    {"(PutSelection2PcGlobalData/", {"Collecting the documents", "Aufnehmen der Dokumente in die Auswahl"}},
    {"(RetrieveObjFromGlobalData/", {"Reading the selection", "Lesen der Auswahl"}},
    {"(RetrieveObj2SelListItem/", {"Reading a document", "Lesen eines Dokuments"}},
    {"(ListCustomer/", {"Listing the companies", "Auflisten der Firmen"}},
    {"(ListContactPerson/", {"Listing the contact persons", "Auflisten der Kontaktpersonen"}},
    {"(ListLinkedFolderStruct/", {"Listing the folder structures", "Auflisten der Ordnerstrukturen"}},
    {"(Sender/Tessel_5)", {"Reading the sender's address", "Lesen der Adresse des Absenders"}},
    {"(Recipient/Tessel_5)", {"Reading the recipient's address", "Lesen der Adresse des Empfängers"}},
    {"(LockObject/", {"Locking", "Sperren"}},
    {"(UnlockObject/", {"Unlocking", "Entsperren"}},
    {"Adding the lock record", {"Adding the lock record", "Anlegen des Sperreintrags"}},
    {"Deleting the lock record", {"Deleting the lock record", "Löschen des Sperreintrags"}},
    {"Removing the lock record", {"Removing the lock record", "Löschen des Sperreintrags"}},
    {"Restoring the lock record", {"Restoring the lock record", "Wiederherstellen des Sperreintrags"}},
    {"Locking the document", {"Locking the document", "Sperren des Dokuments"}},
    {"Unlocking the document", {"Unlocking the document", "Entsperren des Dokuments"}},
    {"(HasUnlockRight/", {"Checking the right to unlock", "Prüfen des Rechts zum Entsperren"}},
    {"(ContinueBatchMode/", kContinuing},
    {"Writing the status of the exchange", {"Writing the status of the exchange", "Schreiben des Status"}},
    {"(GetLatestDataExObj/", {"Looking for the newest exchange", "Suchen des neuesten Austauschs"}},
    {"Could not initiate Variables", kReadingSettings},
    {"(Init/", {"Starting the data exchange", "Starten des Datenaustauschs"}},
    {"(StartServerMon/", kStartingMonitor},
    {"Starting the server monitor", kStartingMonitor},
    {"Writing the custom texts", {"Writing the custom texts", "Schreiben der eigenen Felder"}},
    {"(StartExport/StartApplication)", kExporting},
};

struct NumberWords {
  int number;
  const char* german;
};

// Numbers that mean the same whoever raises them.
constexpr NumberWords kReasons[] = {
    {error_number::kFileNotFound, "Datei nicht gefunden"},
    {error_number::kDeviceIo, "Ein-/Ausgabefehler"},
    {error_number::kFileAlreadyExists, "Der Name ist schon vergeben"},
    {error_number::kDiskFull, "Kein Platz mehr auf dem Datenträger"},
    {error_number::kPermissionDenied, "Zugriff verweigert"},
    {error_number::kPathFileAccess, "Kein Zugriff auf Pfad oder Datei"},
    {error_number::kPathNotFound, "Pfad nicht gefunden"},
};

// By CopyTrouble. %1 is the document, %2 the path.
constexpr BothWords kTroubles[] = {
    {"There is no document to copy", "Es gibt kein Dokument zu kopieren"},
    {"The selected document has been copied already. Select one without a check mark",
     "Das ausgewählte Dokument ist schon kopiert. Wählen Sie eines ohne Haken"},
    {"The exchange directory could not be made below %2",
     "Das Austauschverzeichnis konnte nicht angelegt werden in %2"},
    {"\"%1\" could not be copied to %2", "\"%1\" konnte nicht kopiert werden nach %2"},
    {"The structure of \"%1\" could not be described",
     "Die Struktur von \"%1\" konnte nicht beschrieben werden"},
    {"The documents could not be processed", "Die Dokumente konnten nicht bearbeitet werden"},
};

std::string StepIn(const std::string& step, Speech speech) {
  const auto* const found = std::ranges::find_if(
      kSteps, [&](const StepWords& one) { return step.find(one.mark) != std::string::npos; });
  return found == std::end(kSteps) ? step : found->words.In(speech);
}

std::string CauseIn(int number, const std::string& cause, Speech speech) {
  if (speech == Speech::kEnglish || cause.empty()) return cause;
  const auto* const known =
      std::ranges::find_if(kReasons, [&](const NumberWords& one) { return one.number == number; });
  return known == std::end(kReasons) ? cause : std::string(known->german) + " (" + cause + ")";
}

void Fill(std::string& text, std::string_view place, const std::string& value) {
  const std::size_t found = text.find(place);
  if (found != std::string::npos) text.replace(found, place.size(), value);
}

}  // namespace

std::string WordsOf(const Problem& problem, Speech speech) {
  Problem worded = problem;
  worded.step = StepIn(problem.step, speech);
  worded.cause = CauseIn(problem.number, problem.cause, speech);
  return ProblemText(worded);
}

std::string WordsOf(const CopyFailure& failure, Speech speech) {
  std::string text = kTroubles[static_cast<std::size_t>(failure.trouble)].In(speech);
  // The path first: a document's name may hold anything.
  Fill(text, "%2", failure.path);
  Fill(text, "%1", failure.document);
  const std::string cause = CauseIn(failure.number, failure.cause, speech);
  return cause.empty() ? text + "." : text + ": " + cause;
}

}  // namespace tessel
