#include "dispatch/dispatch.h"

#include <chrono>

#include "config/pelicore_admin_tool.h"
#include "dispatch/data_file.h"
#include "dispatch/exchange_object.h"
#include "dispatch/recipients.h"
#include "dispatch/server_monitor.h"
#include "dispatch/structure_mapping.h"
#include "messages/guard.h"
#include "structure/xml.h"

namespace tessel {
namespace {

using std::chrono::milliseconds;

constexpr const char* kPartnerSettings = "DRAXASettings";
constexpr std::int16_t kLinkExportedObjects = 7;

// The copy of the first recipient's directory from which the later ones start. It goes when the dispatch
// ends, whichever way, so that no copy of the files lies about.
class BackupDirectory {
 public:
  BackupDirectory(Services& services, std::string path)
      : trace_(services.trace), files_(services.platform.files), path_(std::move(path)) {}
  BackupDirectory(const BackupDirectory&) = delete;
  BackupDirectory& operator=(const BackupDirectory&) = delete;
  ~BackupDirectory() {
    if (filled_) GuardedRun(trace_, "Error while deleting the backup directory: " + path_, [&] { Delete(); });
  }

  void FillFrom(const std::string& directory) {
    files_.CreateFolder(path_);
    filled_ = true;
    files_.CopyFolderContents(directory, path_);
  }
  void CopyTo(const std::string& directory) { files_.CopyFolderContents(path_, directory); }
  void MoveTo(const std::string& directory) {
    files_.Move(path_, directory);
    filled_ = false;
  }
  [[nodiscard]] const std::string& Path() const { return path_; }
  void Delete() {
    if (filled_ && files_.FolderExists(path_)) files_.DeleteFolder(path_);
  }

 private:
  Trace& trace_;
  FileSystem& files_;
  std::string path_;
  bool filled_ = false;  // else a directory of that name is not this export's
};

// A later recipient's directory until it stands under its final name: an error takes it away again, so that
// no half-filled one lies about.
class RecipientDirectoryScope {
 public:
  RecipientDirectoryScope(Services& services, std::string path)
      : trace_(services.trace), files_(services.platform.files), path_(std::move(path)) {}
  RecipientDirectoryScope(const RecipientDirectoryScope&) = delete;
  RecipientDirectoryScope& operator=(const RecipientDirectoryScope&) = delete;
  ~RecipientDirectoryScope() {
    if (!made_) return;
    GuardedRun(trace_, "Error while deleting the recipient's directory: " + path_, [&] {
      if (files_.FolderExists(path_)) files_.DeleteFolder(path_);
    });
  }
  // A directory that is there already is another export's, and mixing the two would send one's files to the
  // other's recipient. The last recipient gets the backup itself, which saves a copy and its deletion.
  void Fill(BackupDirectory& backup, bool last) {
    if (last) {
      backup.MoveTo(path_);
      made_ = true;
    } else {
      files_.CreateFolder(path_);
      made_ = true;
      backup.CopyTo(path_);
    }
  }
  void Keep() { made_ = false; }

 private:
  Trace& trace_;
  FileSystem& files_;
  std::string path_;
  bool made_ = false;
};

// A company or contact person and its settings; both may be nothing.
struct Partner {
  PcObjectPtr object;
  PcObjectPtr settings;
};

std::string FinalDirectory(const std::string& directory, const std::string& prefix) {
  std::string path;
  std::size_t begin = 0;
  for (auto found = directory.find("@@"); found != std::string::npos; found = directory.find("@@", begin)) {
    path.append(directory, begin, found - begin).append(prefix);
    begin = found + 2;
  }
  return path.append(directory, begin) + "_New";
}

class Dispatch {
 public:
  Dispatch(DispatchParts& parts, const DispatchRequest& request)
      : parts_(parts),
        request_(request),
        services_(parts.services),
        trace_(services_.trace),
        session_(Required(services_.declarations.startup.session, "stored session")),
        store_(Required(session_->ObjectStore(), "object store")),
        adminTool_(trace_),
        backup_(services_, parts.exchange.directoryPath + "_temp") {
    adminTool_.DefaultBehavior = services_.declarations.startup.DefaultBehavior;
  }

  void Run(DispatchListener& listener) {
    trace_.Write("Hole die KlassenID fuer das Datenaustauschobjekt");
    trace_.Write("KlassenID fuer Datenaustauschobjekt: " +
                 std::to_string(services_.declarations.startup.TransmittalClassID));
    CheckFileNames(services_.Settings());
    const PcRecordList& recipients = *Required(request_.recipients.get(), "recipient list");
    const int count = recipients.RowCount();
    CheckDirectories(recipients);
    for (int row = 0; row < count; ++row) {
      const std::string directory = SendTo(RecipientOfRow(recipients, row), row, row == count - 1);
      listener.DirectoryFinished(directory);
      if (!recorded_) listener.RecordIncomplete(directory);
    }
    listener.ExportFinished();
    backup_.Delete();
    if (services_.Settings().UseServerMonitor) StartMonitor();
  }

 private:
  // Before anything is made: a configured name that would leave the directories ends the dispatch. The prefix
  // becomes the beginning of the final directories' names, and may be empty.
  static void CheckFileNames(const Configuration& settings) {
    static_cast<void>(FileInDirectory("", settings.ExportPrefix + "_"));
    for (const std::string* name : {&settings.StructureFileName, &settings.DataFileName}) {
      static_cast<void>(FileInDirectory("", *name));
    }
  }

  void CheckFree(const std::string& path) const {
    if (services_.platform.files.FolderExists(path) || services_.platform.files.FileExists(path)) {
      throw RuntimeError(error_number::kFileAlreadyExists, "Create folder: " + path + " exists already");
    }
  }

  // Before anything is made, too: a directory of another export that bears a name that this one works in.
  void CheckDirectories(const PcRecordList& recipients) const {
    const int count = recipients.RowCount();
    for (int row = 1; row < count; ++row)
      CheckFree(RecipientOfRow(recipients, row).directory);
    if (count > 1) CheckFree(backup_.Path());
  }

  // The final directory.
  std::string SendTo(const Recipient& recipient, int row, bool last) {
    const Partner company = ReadPartner(recipient.customer);
    const Partner contact = ReadPartner(recipient.contact);
    TracePartner(company, recipient.customer, "CustomerobjClassID: ", "   CustomerObjObjectId: ",
                 "No custmerObjClassID and no CustomerObjObjectID");
    TracePartner(contact, recipient.contact, "ContactPersObjClassID: ", "   ContactPersObjObjectId: ",
                 "No ContactPersObjClassID and no ContactPersObjObjectId");
    // Before the database gets a record of it.
    CheckFree(FinalDirectory(recipient.directory, services_.Settings().ExportPrefix));
    RecipientDirectoryScope unfinished(services_, recipient.directory);
    if (row > 0) unfinished.Fill(backup_, last);
    SaveStructureFile(recipient, contact.settings, company.settings, last);
    CreateExchangeObject(company.object, contact.object);
    WriteDataFile(services_, *session_, request_, static_cast<std::size_t>(row), recipient, objectId_);
    if (WriteNeutralFormats(services_, session_, recipient.directory, contact.settings, company.settings)) {
      firstHasNeutralFormats_ = firstHasNeutralFormats_ || row == 0;
      Pause(milliseconds{200});
    } else if (row > 0 && firstHasNeutralFormats_) {
      // What came with the backup is the first recipient's.
      RemoveNeutralFormats(services_, recipient.directory);
    }
    ApplyAdditionalValues(recipient);
    std::string finalDirectory = Finalise(recipient.directory, row == 0 && !last);
    unfinished.Keep();
    return finalDirectory;
  }

  Partner ReadPartner(const ObjectKey& key) {
    Partner partner{store_->Object(key), nullptr};
    if (!partner.object) return partner;
    partner.object->ReadData();
    partner.settings = adminTool_.adm_GetLinkedAdmObj(session_, kPartnerSettings, partner.object);
    return partner;
  }

  void TracePartner(const Partner& partner, const ObjectKey& key, const char* classLabel,
                    const char* objectLabel, const char* missing) {
    trace_.Write(partner.object
                     ? classLabel + std::to_string(key.classId) + objectLabel + std::to_string(key.objectId)
                     : std::string(missing));
  }

  // The document is shared: an attribute that one recipient's mapping adds stays for the later ones.
  void SaveStructureFile(const Recipient& recipient, const PcObjectPtr& contactSettings,
                         const PcObjectPtr& companySettings, bool last) {
    StructureState& structure = parts_.structure;
    const auto document = Required(structure.document, "structure document");
    StructureMapping(services_, session_, *document, contactSettings, companySettings)
        .AdditionalXMLAttributes(structure.contentList);
    XML::SaveXMLFile(*document, services_.platform.files, services_.platform.encodings, trace_,
                     FileInDirectory(recipient.directory, services_.Settings().StructureFileName));
    if (!last) return;
    XML::TerminateXMLDoc(structure.document);
    structure.document.reset();
    structure.root = structure.contentList = structure.hierarchicalStructure = structure.dependencyList =
        structure.currentRootNode = XmlNode();
  }

  void CreateExchangeObject(const PcObjectPtr& company, const PcObjectPtr& contact) {
    trace_.Write("Set the ExData Object Class");
    const auto metaData = Required(session_->MetaData(), "metadata");
    const auto exchangeClass = metaData->ClassById(services_.declarations.startup.TransmittalClassID);
    trace_.Write(exchangeClass ? "set ExObjClass ist not nothing" : "Set ExObjClass ist nothing!");
    classId_ = Required(exchangeClass, "data exchange class")->Id();
    objectId_ = 0;
    idValue_.clear();
    recorded_ = Kestrix_ExObj::CreateExchangeObject(
        services_, session_, classId_, objectId_, services_.errors.ProtocolText, true,
        exchange_attribute::kExchangeType, idValue_, kLinkExportedObjects, company, contact,
        parts_.structure.exportCopiedFiles);
    services_.errors.ProtocolText.clear();
  }

  void ApplyAdditionalValues(const Recipient& recipient) {
    const auto component = Required(parts_.additionalValues(), "additional-values component");
    component->Apply({session_, recipient.customer, recipient.contact, recipient.directory, trace_.Writer()});
    Pause(milliseconds{500});
  }

  // The backup is made only where a later recipient starts from it.
  std::string Finalise(const std::string& directory, bool backUp) {
    if (backUp) {
      backup_.FillFrom(directory);
      Pause(milliseconds{250});
    }
    const std::string finalDirectory = FinalDirectory(directory, services_.Settings().ExportPrefix);
    services_.platform.files.Move(directory, finalDirectory);
    Pause(milliseconds{500});
    return finalDirectory;
  }

  void StartMonitor() {
    if (StartServerMon(services_, services_.platform.program.directory, *session_, objectId_, classId_,
                       idValue_)) {
      return;
    }
    services_.toolkit.ShowMessage(
        {"Error while launching the 'Kestrix Server Monitor'", "", MessageIcon::kExclamation});
  }

  void Pause(milliseconds time) { services_.platform.pauser.Sleep(time); }

  DispatchParts& parts_;
  const DispatchRequest& request_;
  Services& services_;
  Trace& trace_;
  PcSessionPtr session_;
  PcObjectStorePtr store_;
  PelicoreAdminTool adminTool_;
  BackupDirectory backup_;
  // Of the last recipient's data exchange object.
  ClassId classId_ = 0;
  ObjectId objectId_ = 0;
  std::string idValue_;
  bool recorded_ = false;  // the last recipient's exchange
  bool firstHasNeutralFormats_ = false;
};

}  // namespace

bool RunDispatch(DispatchParts& parts, const DispatchRequest& request, DispatchListener& listener) {
  return Guarded(parts.services.trace, "Fehler beim Aufbauen der XML Dateien (Command1_Click/Tessel_4)",
                 false, [&] {
                   Dispatch(parts, request).Run(listener);
                   return true;
                 });
}

}  // namespace tessel
