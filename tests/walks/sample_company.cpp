#include "walks/sample_company.h"

#include "embedded/store/new_database.h"
#include "host/error.h"

namespace tessel::test {
namespace {

constexpr const char* kExchangePath = "C:\\temp\\Exchange";
constexpr const char* kVaultFile = "CAD_REF_FILE_NAME";

NativePlatformOptions OptionsOf(const TemporaryFolder& folder) {
  NativePlatformOptions options;
  options.drivesDirectory = folder.MakeFolder("drives");
  options.program = ProgramLocation{folder.MakeFolder("program"), "prjTessel"};
  options.pauses = false;
  return options;
}

// The model with settings of its own, and what it refers to beside it.
std::string ModelOf(const std::map<std::string, std::string>& settings, const TemporaryFolder& folder) {
  std::ifstream file(TESSEL_EXAMPLE_MODEL);
  std::string model{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  for (const auto& [key, value] : settings) {
    const auto start = model.find("\"" + key + "=");
    if (start == std::string::npos) throw HostError("the sample company has no setting " + key);
    model.replace(start, model.find('"', start + 1) - start + 1, "\"" + key + "=" + value + "\"");
  }
  folder.Write("model/company.json", model);
  const std::filesystem::path examples = std::filesystem::path(TESSEL_EXAMPLE_MODEL).parent_path();
  for (const char* part : {"files", "icons", "catalogues"})
    std::filesystem::copy(examples / part, folder.Path(std::string("model/") + part),
                          std::filesystem::copy_options::recursive);
  return folder.Path("model/company.json");
}

}  // namespace

SampleCompany::SampleCompany(const std::map<std::string, std::string>& settings)
    : native_(OptionsOf(folder_)), database_(folder_.Path("company.db")) {
  embedded::CreateDatabase(native_.Services().files, database_, ModelOf(settings, folder_));
}

Platform SampleCompany::Services(ProcessLauncher& launcher, Pauser* pauser) {
  const Platform& native = native_.Services();
  return {native.files,       native.encodings, clock_,        pauser != nullptr ? *pauser : native.pauser,
          launcher,           native.profiles,  native.system, native.program,
          native.ansiCodePage};
}

std::vector<ObjectKey> SampleCompany::AddParts(HostedProgram& hosted, int count) {
  constexpr ClassId kPart = 1202;
  const PcSessionPtr& session = hosted.Session();
  const PcBehaviorPtr behavior = session->NewBehavior();
  const PcObjectPtr pattern = Required(session->ObjectStore()->Object({kPart, 4724}), "pattern");
  pattern->ReadData();
  std::vector<ObjectKey> keys;
  for (int number = 1; number <= count; ++number) {
    const PcObjectPtr part = session->ObjectStore()->NewObject(kPart);
    const std::string name = "N-" + std::to_string(100000 + number);
    for (const char* attribute : {"FILE_NAME", "STATE", "VRK_STATE"})
      part->SetValue(attribute, pattern->GetValue(attribute));
    part->SetValue("VRK_ID", name);
    part->SetValue("VRK_DESCRIPTION", "Normteil " + std::to_string(number));
    part->SetValue(kVaultFile, name + ".stp");
    if (part->Add(*behavior) != 0) throw HostError("part " + name + " was refused");
    keys.push_back(part->Key());
  }
  return keys;
}

std::vector<std::string> SampleCompany::Exchanged() {
  const std::string path = native_.Services().files.NativePath(kExchangePath);
  if (!std::filesystem::exists(path)) return {};
  return folder_.Tree(std::filesystem::path(path).lexically_relative(folder_.Path()).string());
}

}  // namespace tessel::test
