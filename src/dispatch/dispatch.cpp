#include "dispatch/dispatch.h"

#include <chrono>
#include <random>

#include "config/pelicore_admin_tool.h"
#include "dispatch/data_file.h"
#include "dispatch/dispatch_checks.h"
#include "dispatch/exchange_object.h"
#include "dispatch/recipient_directories.h"
#include "dispatch/recipients.h"
#include "dispatch/server_monitor.h"
#include "dispatch/structure_mapping.h"
#include "host/names.h"
#include "messages/guard.h"
#include "platform/paths.h"
#include "structure/xml/xml.h"

namespace tessel {
namespace {

using std::chrono::milliseconds;

constexpr const char* kPartnerSettings = "DRAXASettings";
constexpr std::int16_t kLinkExportedObjects = 7;

// A company or contact person and its settings; both may be nothing.
// The data exchange object of one recipient.
struct ExchangeRecord {
  ObjectKey key;
  std::string idValue;
  bool whole = false;  // the database has it with all its values and links
};

struct SentExchange {
  std::string directory;  // the final one
  ExchangeRecord record;
};

struct Partner {
  PcObjectPtr object;
  PcObjectPtr settings;
};

// A record that stands while its directory has not got its final name yet: behind the commit of its unit of
// work, and on a host without units from its insertion on. An error in between takes the record away again;
// where even that fails, the directory stays for the next recovery, which gives it its name.
class RecordScope {
 public:
  RecordScope(Trace& trace, PcSession& session, ExportJournal& journal, UnfinishedDirectory& directory)
      : trace_(trace), session_(session), journal_(journal), directory_(directory) {}
  RecordScope(const RecordScope&) = delete;
  RecordScope& operator=(const RecordScope&) = delete;
  ~RecordScope() {
    if (key_.objectId == 0 || TakeBack()) return;
    directory_.Keep();
  }
  void Watch(const ObjectKey& key, const std::string& mark) {
    key_ = key;
    mark_ = mark;
  }
  void Keep() { key_ = {}; }

 private:
  bool TakeBack() {
    return Guarded(trace_, "Error while deleting the record of an export that failed", false, [this] {
      // A unit that surely writes, so that nothing of the one that failed is found when the database is
      // opened anew.
      const std::string mark = mark_.empty() ? std::string() : mark_ + "#back";
      PcUnitOfWorkPtr unit = session_.BeginUnitOfWork(mark);
      const PcObjectPtr record = Required(session_.ObjectStore(), "object store")->Object(key_);
      const auto behavior = Required(session_.NewBehavior(), "behaviour");
      if (record && record->Delete(*behavior) != 0) throw HostError("The database keeps the record");
      if (!mark_.empty()) session_.ForgetMark(mark_);
      if (unit) unit->Commit();
      unit.reset();
      if (!mark.empty()) IgnoringErrors([&] { session_.ForgetMark(mark); });
      journal_.Making(directory_.Path());
      return true;
    });
  }

  Trace& trace_;
  PcSession& session_;
  ExportJournal& journal_;
  UnfinishedDirectory& directory_;
  ObjectKey key_;
  std::string mark_;
};

// A name for a unit of work that no other one ever has.
std::string NewMark(const std::string& directory) {
  std::random_device random;
  return paths::FileName(directory) + "#" + std::to_string(random()) + std::to_string(random());
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
        adminTool_(trace_) {
    adminTool_.DefaultBehavior = services_.declarations.startup.DefaultBehavior;
  }

  void Run(ExportOutcome& outcome, ProblemSubject& subject) {
    trace_.Write("Hole die KlassenID fuer das Datenaustauschobjekt");
    trace_.Write("KlassenID fuer Datenaustauschobjekt: " +
                 std::to_string(services_.declarations.startup.TransmittalClassID));
    const std::string backupPath = parts_.exchange.directoryPath + "_temp";
    CheckDispatch(services_, request_, parts_.exchange.directoryPath, backupPath,
                  [this] { return AnyNeutralFormats(); });
    ExportJournal& journal = CommonXFunctions::JournalOf(services_, parts_.exchange);
    BackupDirectory backup(services_, journal, backupPath);
    const PcRecordList& recipients = *request_.recipients;
    const int count = recipients.RowCount();
    ExchangeRecord last;
    for (int row = 0; row < count; ++row) {
      const Recipient recipient = RecipientOfRow(recipients, row);
      subject.Change(recipient.directory);
      SentExchange sent = SendTo(recipient, row, row == count - 1, backup, journal);
      outcome.directories.push_back({std::move(sent.directory), sent.record.whole});
      last = std::move(sent.record);
    }
    outcome.dispatch = DispatchEnd::kFinished;
    EndJournal(backup);
    if (services_.Settings().UseServerMonitor) StartMonitor(last, outcome);
  }

 private:
  // Nothing temporary stands any more. What cannot be cleared away now, the next start-up clears away.
  void EndJournal(BackupDirectory& backup) {
    const auto end = [&] {
      backup.Delete();
      parts_.exchange.journal->Close();
      if (!mark_.empty()) session_->ForgetMark(mark_);
    };
    GuardedRun(trace_, "Error while clearing away what the dispatch needed", end, ProblemKind::kAside);
  }

  // Whether a recipient gets a neutral-formats file.
  bool AnyNeutralFormats() {
    for (int row = 0; row < request_.recipients->RowCount(); ++row) {
      const Recipient recipient = RecipientOfRow(*request_.recipients, row);
      if (HasNeutralFormats(services_, session_, ReadPartner(recipient.contact).settings,
                            ReadPartner(recipient.customer).settings)) {
        return true;
      }
    }
    return false;
  }

  SentExchange SendTo(const Recipient& recipient, int row, bool last, BackupDirectory& backup,
                      ExportJournal& journal) {
    const Partner company = ReadPartner(recipient.customer);
    const Partner contact = ReadPartner(recipient.contact);
    TracePartner(company, recipient.customer, "CustomerobjClassID: ", "   CustomerObjObjectId: ",
                 "No custmerObjClassID and no CustomerObjObjectID");
    TracePartner(contact, recipient.contact, "ContactPersObjClassID: ", "   ContactPersObjObjectId: ",
                 "No ContactPersObjClassID and no ContactPersObjObjectId");
    UnfinishedDirectory unfinished(services_, journal, recipient.directory);
    if (row > 0) unfinished.Fill(backup, last);
    SaveStructureFile(recipient, contact.settings, company.settings, last);
    // The bulk of the data, before the database is held.
    services_.platform.files.MakeDurable(recipient.directory);

    RecordScope scope(trace_, *session_, journal, unfinished);
    const std::string mark = NewMark(recipient.directory);
    PcUnitOfWorkPtr unit = session_->BeginUnitOfWork(mark);
    if (unit && !mark_.empty()) session_->ForgetMark(mark_);
    mark_ = unit ? mark : std::string();
    ExchangeRecord record = CreateExchangeObject(company.object, contact.object);
    if (!unit && record.key.objectId != 0) {
      journal.Recorded(recipient.directory, record.key);
      scope.Watch(record.key, "");
    }
    WriteDataFile(services_, *session_, request_, static_cast<std::size_t>(row), recipient,
                  record.key.objectId);
    AddNeutralFormats(recipient, row, contact.settings, company.settings);
    ApplyAdditionalValues(recipient);
    if (row == 0 && !last) {
      backup.FillFrom(recipient.directory);
      Pause(milliseconds{250});
    }
    std::string finalDirectory = Finalise(recipient.directory, journal, unit.get(), record.key, scope);
    scope.Keep();
    unfinished.Keep();
    return {std::move(finalDirectory), std::move(record)};
  }

  void AddNeutralFormats(const Recipient& recipient, int row, const PcObjectPtr& contactSettings,
                         const PcObjectPtr& companySettings) {
    if (WriteNeutralFormats(services_, session_, recipient.directory, contactSettings, companySettings)) {
      firstHasNeutralFormats_ = firstHasNeutralFormats_ || row == 0;
      Pause(milliseconds{200});
    } else if (row > 0 && firstHasNeutralFormats_) {
      // What came with the backup is the first recipient's.
      RemoveNeutralFormats(services_, recipient.directory);
    }
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
    {
      const PcReadingPtr reading = session_->BeginReading();
      StructureMapping(services_, session_, *document, contactSettings, companySettings)
          .AdditionalXMLAttributes(structure.contentList);
    }
    XML::SaveXMLFile(*document, services_.platform.files, services_.platform.encodings, trace_,
                     FileInDirectory(recipient.directory, services_.Settings().StructureFileName));
    if (!last) return;
    XML::TerminateXMLDoc(structure.document);
    structure = {};
  }

  ExchangeRecord CreateExchangeObject(const PcObjectPtr& company, const PcObjectPtr& contact) {
    trace_.Write("Set the ExData Object Class");
    const auto metaData = Required(session_->MetaData(), "metadata");
    const auto exchangeClass = metaData->ClassById(services_.declarations.startup.TransmittalClassID);
    trace_.Write(exchangeClass ? "set ExObjClass ist not nothing" : "Set ExObjClass ist nothing!");
    ExchangeRecord record;
    record.key.classId = Required(exchangeClass, "data exchange class")->Id();
    record.whole = Kestrix_ExObj::CreateExchangeObject(
        services_, session_, record.key.classId, record.key.objectId, services_.errors.ProtocolText, true,
        attribute::kExchangeType, record.idValue, kLinkExportedObjects, company, contact,
        parts_.exchange.copied.Exported());
    services_.errors.ProtocolText.clear();
    return record;
  }

  void ApplyAdditionalValues(const Recipient& recipient) {
    const auto component = Required(parts_.additionalValues(), "additional-values component");
    component->Apply({session_, recipient.customer, recipient.contact, recipient.directory, trace_.Writer()});
    Pause(milliseconds{500});
  }

  // The directory is whole and on the disk before the record stands, and the record before the final name.
  // What is cut off in between is written down, and the next start-up brings it to one end or the other.
  std::string Finalise(const std::string& directory, ExportJournal& journal, PcUnitOfWork* unit,
                       const ObjectKey& record, RecordScope& scope) {
    const std::string& prefix = services_.Settings().ExportPrefix;
    std::string finalDirectory = FinalDirectory(directory, prefix);
    FileSystem& files = services_.platform.files;
    CheckFree(files, finalDirectory);
    journal.Ready(directory, prefix, mark_);
    files.MakeDurable(directory);
    if (unit != nullptr) {
      // A commit that fails on its way to the disk may stand all the same when the database is opened anew.
      scope.Watch(record, mark_);
      unit->Commit();
    }
    files.Move(directory, finalDirectory);
    GuardedRun(trace_, "Error while bringing the final name to the disk: " + finalDirectory,
               [&] { files.SyncFolder(paths::Parent(finalDirectory)); });
    Pause(milliseconds{500});
    return finalDirectory;
  }

  void StartMonitor(const ExchangeRecord& record, ExportOutcome& outcome) {
    const bool started = StartServerMon(services_, services_.platform.program.directory, *session_,
                                        record.key.objectId, record.key.classId, record.idValue);
    outcome.monitor = started ? MonitorStart::kStarted : MonitorStart::kFailed;
    if (started) return;
    services_.toolkit.ShowMessage(
        {"Error while launching the 'Kestrix Server Monitor'", "", MessageIcon::kExclamation});
  }

  // Blocks the user interface on purpose: between two steps the file system, often a share, and the programs
  // that look at the directory are given time to follow. Each step has a length of its own.
  void Pause(milliseconds time) { services_.platform.pauser.Sleep(time); }

  DispatchParts& parts_;
  const DispatchRequest& request_;
  Services& services_;
  Trace& trace_;
  PcSessionPtr session_;
  PcObjectStorePtr store_;
  PelicoreAdminTool adminTool_;
  std::string mark_;  // of the last recipient's unit of work; empty on a host without
  bool firstHasNeutralFormats_ = false;
};

}  // namespace

void RunDispatch(DispatchParts& parts, const DispatchRequest& request, ExportOutcome& outcome) {
  Trace& trace = parts.services.trace;
  outcome.dispatch = DispatchEnd::kFailed;
  ProblemSubject subject(trace.problems, parts.exchange.directoryPath);
  GuardedRun(trace, "Fehler beim Aufbauen der XML Dateien (Command1_Click/Tessel_4)",
             [&] { Dispatch(parts, request).Run(outcome, subject); });
}

}  // namespace tessel
