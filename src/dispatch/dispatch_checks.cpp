#include "dispatch/dispatch_checks.h"

#include <set>

#include "dispatch/data_file.h"
#include "dispatch/recipients.h"
#include "exchange/exchange.h"
#include "structure/xml/xml_encoding.h"

namespace tessel {
namespace {

std::string LowerCase(std::string text) {
  for (char& character : text) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  return text;
}

[[noreturn]] void ThrowTaken(const std::string& description) {
  throw RuntimeError(error_number::kFileAlreadyExists, description);
}

// The prefix becomes the beginning of the final directories' names, and may be empty.
void CheckFileNames(const Configuration& settings) {
  static_cast<void>(FileInDirectory("", settings.ExportPrefix + "_"));
  std::set<std::string> names{LowerCase(kNeutralFormatsFile)};
  for (const std::string* name : {&settings.StructureFileName, &settings.DataFileName}) {
    static_cast<void>(FileInDirectory("", *name));
    if (!names.insert(LowerCase(*name)).second)
      ThrowTaken("Write file: two files of the export are called \"" + *name + "\"");
  }
}

// The receiving system may know no letter case.
void CheckDocuments(const Services& services, const std::string& directory,
                    const std::function<bool()>& hasNeutralFormats) {
  const Configuration& settings = services.Settings();
  const std::string structure = LowerCase(settings.StructureFileName);
  const std::string data = LowerCase(settings.DataFileName);
  const std::string neutral = LowerCase(kNeutralFormatsFile);
  for (const std::string& document : services.platform.files.ListFiles(directory)) {
    const std::string name = LowerCase(document);
    const bool own = name == data || name == structure || (name == neutral && hasNeutralFormats());
    if (own) ThrowTaken("Write file: a copied document is called \"" + document + "\" in " + directory);
  }
}

void CheckDirectories(const Services& services, const PcRecordList& recipients, const std::string& backup) {
  const FileSystem& files = services.platform.files;
  const int count = recipients.RowCount();
  for (int row = 0; row < count; ++row) {
    const std::string directory = RecipientOfRow(recipients, row).directory;
    if (row > 0) CheckFree(files, directory);
    for (const std::string& name : FinalNames(directory, services.Settings().ExportPrefix))
      CheckFree(files, name);
  }
  if (count > 1) CheckFree(files, backup);
}

}  // namespace

std::vector<std::string> FinalNames(const std::string& directory, const std::string& prefix) {
  const std::string handedOver = FinalDirectory(directory, prefix);
  const std::string base = handedOver.substr(0, handedOver.rfind("_New"));
  return {handedOver, base + "_Sent", base + "_Break"};
}

void CheckFree(const FileSystem& files, const std::string& path) {
  if (files.FolderExists(path) || files.FileExists(path))
    ThrowTaken("Create folder: " + path + " exists already");
}

void CheckDispatch(const Services& services, const DispatchRequest& request,
                   const std::string& exchangeDirectory, const std::string& backupDirectory,
                   const std::function<bool()>& hasNeutralFormats) {
  const Configuration& settings = services.Settings();
  CheckFileNames(settings);
  const TextEncodings& encodings = services.platform.encodings;
  CheckXmlEncoding(encodings, *encodings.Open(settings.XMLStructureEncoding), settings.XMLStructureEncoding);
  const PcRecordList& recipients = *Required(request.recipients.get(), "recipient list");
  const bool mails = request.sendMode == SendMode::kMail || request.sendMode == SendMode::kMailStructure;
  if (mails && request.mails.size() < static_cast<std::size_t>(recipients.RowCount())) {
    throw RuntimeError(
        error_number::kSubscriptOutOfRange,
        "Subscript out of range: no mail record for recipient " + std::to_string(request.mails.size() + 1));
  }
  CheckDirectories(services, recipients, backupDirectory);
  CheckDocuments(services, exchangeDirectory, hasNeutralFormats);
}

}  // namespace tessel
