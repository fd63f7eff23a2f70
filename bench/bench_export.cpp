// Whole headless exports of 100, 1,000 and 10,000 single-file documents: time per document and its share by
// stage, beside `cp -a` of the same files in the same run; then the directories of 10 recipients with 1,000
// files beside as many `cp -a`. With --check the exit status is 1 beyond the targets.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "embedded/embedded_host.h"
#include "embedded/model_file.h"
#include "entry/program.h"
#include "entry/start_application.h"
#include "headless/headless_toolkit.h"
#include "headless/user_actions.h"
#include "messages/trace_file.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_platform.h"

namespace {

using namespace tessel;
using Seconds = std::chrono::duration<double>;

constexpr double kGrowthTarget = 1.3;     // per-document time at 10,000 against that at 100
constexpr double kDirectoryTarget = 1.2;  // recipients' directories against cp -a
constexpr std::size_t kFileSize = 8192;

double Now() {
  return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The stages that the trace tells apart.
enum Stage { kHost, kCopy, kStructure, kDispatch, kStageCount };
constexpr const char* kStageNames[] = {"host", "copy", "structure", "dispatch"};

struct Stages {
  double total[kStageCount] = {};
  Stage current = kHost;
  double since = Now();

  void Enter(Stage stage) {
    const double now = Now();
    total[current] += now - since;
    since = now;
    current = stage;
  }
};

// Writes the trace as ever, and takes the time at the lines that part the stages.
class StageTrace : public FileTraceWriter {
 public:
  StageTrace(Stages& stages, TraceFileSettings& settings, FileSystem& files, const TextEncoding& ansi)
      : FileTraceWriter(settings, files, ansi), stages_(stages) {}
  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override {
    if (text.starts_with("Result of CopyFile Window")) stages_.Enter(kStructure);
    if (text.starts_with("globale Variable 'isKestrix'")) stages_.Enter(kHost);
    if (text.starts_with("Hole die KlassenID")) stages_.Enter(kDispatch);
    FileTraceWriter::WriteEntry(text, number, description, directory, name, on);
  }

 private:
  Stages& stages_;
};

// Takes the time of the host's file copies out of the host's share.
class TimedFiles : public posix::PosixFileSystem {
 public:
  TimedFiles(Stages& stages, std::string drives) : PosixFileSystem(std::move(drives)), stages_(stages) {}
  void CopyFile(const std::string& from, const std::string& to, bool overwrite) override {
    const Stage before = stages_.current;
    stages_.Enter(kCopy);
    PosixFileSystem::CopyFile(from, to, overwrite);
    stages_.Enter(before);
  }

 private:
  Stages& stages_;
};

// Copies everything and sends nothing, or to some recipients without mail.
class Walker : public Driver {
 public:
  explicit Walker(int recipients) : recipients_(recipients) {}
  void Act(HeadlessToolkit& toolkit) override {
    UserActions user(toolkit);
    const std::string page = toolkit.TopWindow()->Name();
    Refusal refusal;
    if (page == "Tessel_1")
      refusal = user.Check(recipients_ == 0 ? "Check1(5)" : "Check1(3)", CheckWish::kChecked);
    if (page == "Tessel_2" && !copied_) {
      copied_ = true;
      refusal = user.Check("Check1", CheckWish::kChecked);
    }
    if (page == "Tessel_3") {
      refusal = user.ClickNode("TreeView1", 0);
      for (int contact = 0; contact < recipients_ && refusal.empty(); ++contact) {
        refusal = user.ClickNode("TreeView2", contact);
        if (refusal.empty()) refusal = user.Click("Command4");
      }
    }
    if (refusal.empty()) refusal = user.Click("Command1");
    if (!refusal.empty()) {
      std::fprintf(stderr, "%s: %s\n", page.c_str(), refusal.c_str());
      std::exit(2);
    }
  }
  MessageAnswer Answer(const MessageRequest& request) override {
    std::fprintf(stderr, "%s\n", request.text.c_str());
    return SafeAnswer(request);
  }

 private:
  int recipients_;
  bool copied_ = false;
};

// A database of single-file documents, one company with ten contact persons, and the files.
std::string ModelText(int documents) {
  std::string text = R"json({ "alias": "BENCH", "databaseMechanisms": ["Supplier Exchange", "Admin"],
  "classMechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_TRANSMITTAL", "VRKX_DX_SUPPLIER_COMPANY",
                      "VRKX_DX_SUPPLIER_CONT_PERSON"],
  "sequences": [{ "name": "Exchange", "pattern": "DX-%06d" }],
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS", "attributes": [
      { "name": "LOGIN", "type": "text", "identifying": true }] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_VALUE_1", "type": "text" }, { "name": "VRKX_VALUE_LONG", "type": "longText" }] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "mechanisms": ["VRKX_DX_TRANSMITTAL"],
      "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true, "sequence": "Exchange" },
      { "name": "VRKX_DX_PROCESS_PHASE", "type": "long" }, { "name": "VRKX_DX_STATUS_INFO", "type": "text" },
      { "name": "VRKX_DX_EXCHANGE_TYPE", "type": "integer" },
      { "name": "VRKX_DX_EXCH_PROTOCOL", "type": "longText" },
      { "name": "VRKX_DX_SEND_TO_COMPANY", "type": "text" },
      { "name": "VRKX_DX_SEND_TO_CONT_PERS", "type": "text" }] },
    { "id": 901, "name": "Company", "table": "COMPANY", "mechanisms": ["VRKX_DX_SUPPLIER_COMPANY"],
      "hierarchicalLink": "Company Contact",
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true }] },
    { "id": 902, "name": "Contact Person", "table": "CONTACT_PERSON",
      "mechanisms": ["VRKX_DX_SUPPLIER_CONT_PERSON"], "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true }, { "name": "CN_FIRST_NAME", "type": "text" },
      { "name": "VRKX_DX_INACTIVE", "type": "boolean" }] },
    { "id": 1202, "name": "Part", "table": "PART", "fileBased": true, "hierarchicalLink": "Product Structure",
      "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true }, { "name": "VRK_DESCRIPTION", "type": "text" },
      { "name": "REVISION", "type": "text" }, { "name": "STATE", "type": "integer", "default": 3 },
      { "name": "FILE_NAME", "type": "text" }, { "name": "CAD_REF_FILE_NAME", "type": "text" },
      { "name": "VRKX_DX_FIRST_LOCK_USE", "type": "boolean", "default": false }] } ],
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Product Structure", "table": "PRODUCT_STRUCTURE" },
    { "id": 2002, "name": "Company Contact", "table": "COMPANY_CONTACT" } ],
  "users": [{ "login": "bench", "object": "bench" }],
  "objects": [
    { "class": "USERS", "name": "bench", "values": { "LOGIN": "bench" } },
    { "class": "Admin Setting", "name": "settings", "values": { "VRKX_VALUE_1": "Initialization",
      "VRKX_VALUE_LONG": ["[Path]", "ExchangePath=${MODEL_DIR}/exchange", ""] } },
    { "class": "Company", "name": "company", "values": { "VRK_ID": "Company" } })json";
  std::string links = R"json({ "class": "General Link", "from": "bench", "to": "settings" })json";
  for (int contact = 1; contact <= 10; ++contact) {
    const std::string name = "contact" + std::to_string(contact);
    text += ",\n{ \"class\": \"Contact Person\", \"name\": \"" + name + "\", \"values\": { \"VRK_ID\": \"" +
            name + "\" } }";
    links += ",\n{ \"class\": \"Company Contact\", \"from\": \"company\", \"to\": \"" + name + "\" }";
  }
  for (int part = 1; part <= documents; ++part) {
    const std::string number = std::to_string(part);
    text += ",\n{ \"class\": \"Part\", \"id\": " + number + ", \"file\": \"files/part" + number +
            ".stp\", \"values\": { \"VRK_ID\": \"P-" + number + "\", \"VRK_DESCRIPTION\": \"Part " + number +
            "\", \"REVISION\": \"A\" } }";
  }
  return text + "],\n\"links\": [" + links + "] }\n";
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// A folder with model, files and database, removed at the end.
class Workshop {
 public:
  explicit Workshop(int documents)
      : folder_((std::filesystem::temp_directory_path() / ("tessel-bench-" + std::to_string(documents)))
                    .string()) {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_ + "/files");
    std::filesystem::create_directories(folder_ + "/exchange");
    std::string content(kFileSize, 'x');
    for (int part = 1; part <= documents; ++part) {
      WriteFile(folder_ + "/files/part" + std::to_string(part) + ".stp", content);
    }
    WriteFile(folder_ + "/model.json", ModelText(documents));
    posix::PosixFileSystem files(folder_ + "/drives");
    embedded::CreateDatabase(files, Database(), folder_ + "/model.json");
  }
  ~Workshop() { std::filesystem::remove_all(folder_); }
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;

  [[nodiscard]] std::string Database() const { return folder_ + "/bench.db"; }
  [[nodiscard]] const std::string& Folder() const { return folder_; }

 private:
  std::string folder_;
};

struct Result {
  double seconds = 0;
  Stages stages;
};

Result RunExport(const Workshop& workshop, int documents, int recipients) {
  Result result;
  PosixPlatformOptions options;
  options.pauses = false;
  options.drivesDirectory = workshop.Folder() + "/drives";
  PosixPlatform system(options);
  TimedFiles files(result.stages, workshop.Folder() + "/drives");
  const Platform& services = system.Services();
  Platform platform{files,           services.encodings, services.clock,
                    services.pauser, services.processes, services.profiles,
                    services.system, services.program,   services.ansiCodePage};
  Walker walker(recipients);
  HeadlessToolkit toolkit(walker);
  embedded::HostOptions hostOptions;
  hostOptions.files = &files;
  hostOptions.dialogs = &walker;
  embedded::EmbeddedHost host(workshop.Database(), hostOptions);
  TraceFileSettings traceSettings;
  const auto ansi = services.encodings.Open(services.ansiCodePage);
  Program program(
      platform, toolkit, host,
      [&] { return std::make_shared<StageTrace>(result.stages, traceSettings, files, *ansi); },
      MakeTracingAdditionalValues);
  StartApplication entry(program);
  host.SetLfcStage2([&](const PcSessionPtr& session, const std::string& operation,
                        const PcRecordListPtr& first, const PcRecordListPtr& second, PcRecordListPtr third) {
    entry.LFCStage2(session, operation, first, second, third);
  });
  const PcSessionPtr session = host.OpenSession("bench");
  const PcRecordListPtr objects = host.CreateRecordList();
  objects->AddColumn("CLASS_ID", 2, 2);
  objects->AddColumn("OBJECT_ID", 4, 3);
  objects->AddColumn("STATE", 2, 2);
  for (int row = 0; row < documents; ++row) {
    objects->SetValue(0, row, Value(std::int16_t{1202}));
    objects->SetValue(1, row, Value(row + 1));
    objects->SetValue(2, row, Value(std::int16_t{3}));
  }
  PcRecordListPtr none;
  const double start = Now();
  result.stages.since = start;
  entry.CollectSelObjs(session, "", objects, nullptr, none);
  const int status = entry.StartExport(session, "", nullptr, nullptr, none);
  result.stages.Enter(kHost);
  result.seconds = Now() - start;
  if (status != 0 || program.wizard.state.finishedDirectories.empty()) {
    std::fprintf(stderr, "the export failed\n");
    std::exit(2);
  }
  return result;
}

double TimeCopy(const std::string& from, const std::string& to) {
  const std::string command = "cp -a '" + from + "' '" + to + "'";
  const double start = Now();
  if (std::system(command.c_str()) != 0) std::exit(2);
  return Now() - start;
}

// Microseconds per document of a whole export.
double BenchExport(int documents) {
  const Workshop workshop(documents);
  const double copy = TimeCopy(workshop.Folder() + "/files", workshop.Folder() + "/copied");
  const Result result = RunExport(workshop, documents, 0);
  const double perDocument = 1e6 * result.seconds / documents;
  std::printf("%8d %12.1f", documents, perDocument);
  for (int stage = 0; stage < kStageCount; ++stage) {
    std::printf(" %8.1f%%", 100 * result.stages.total[stage] / result.seconds);
  }
  std::printf(" %12.1f\n", 1e6 * copy / documents);
  return perDocument;
}

double Median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
  return times[times.size() / 2];
}

double TimeOwnCopy(FileSystem& files, const std::string& from, const std::string& to) {
  const double start = Now();
  files.CreateFolder(to);
  files.CopyFolderContents(from, to);
  return Now() - start;
}

// Ten recipients' directories against ten times cp -a of the same files, in turns and each first by turns,
// since the disk makes whoever comes second wait for the first. The median copy counts.
double BenchDirectories() {
  constexpr int kFiles = 1000;
  constexpr int kRecipients = 10;
  const Workshop workshop(kFiles);
  posix::PosixFileSystem files(workshop.Folder() + "/drives");
  const std::string from = workshop.Folder() + "/files";
  std::vector<double> own;
  std::vector<double> theirs;
  for (int recipient = 0; recipient < kRecipients; ++recipient) {
    const std::string ownPath = workshop.Folder() + "/own" + std::to_string(recipient);
    const std::string theirPath = workshop.Folder() + "/cp" + std::to_string(recipient);
    if (recipient % 2 == 0) own.push_back(TimeOwnCopy(files, from, ownPath));
    theirs.push_back(TimeCopy(from, theirPath));
    if (recipient % 2 != 0) own.push_back(TimeOwnCopy(files, from, ownPath));
  }
  std::printf("%d recipients with %d files: own %.1f ms, cp -a %.1f ms a directory\n", kRecipients, kFiles,
              1e3 * Median(own), 1e3 * Median(theirs));
  const Result export10 = RunExport(workshop, kFiles, kRecipients);
  std::printf("whole export to %d recipients: %.2f s, dispatch %.2f s\n", kRecipients, export10.seconds,
              export10.stages.total[kDispatch]);
  return Median(own) / Median(theirs);
}

}  // namespace

int main(int count, char** arguments) {
  const bool check = count > 1 && std::string(arguments[1]) == "--check";
  std::printf("documents  us/document     host     copy structure dispatch  cp -a us/file\n");
  BenchExport(100);  // warms up
  const double small = BenchExport(100);
  BenchExport(1000);
  const double large = BenchExport(10000);
  std::printf("per document at 10,000 against 100: %.2f (target %.1f)\n", large / small, kGrowthTarget);
  const double directories = BenchDirectories();
  std::printf("recipients' directories against cp -a: %.2f (target %.1f)\n", directories, kDirectoryTarget);
  return check && (large / small > kGrowthTarget || directories > kDirectoryTarget) ? 1 : 0;
}
