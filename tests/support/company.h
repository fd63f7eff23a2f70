// The company that most tests happen in.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/hosted_machine.h"

namespace tessel::test {

// Lines of an INI text by section.
using SettingLines = std::map<std::string, std::vector<std::string>>;

struct CompanyOptions {
  // "Initialization" of all users; nothing: there is no such object. They win over the company's own, which
  // name the exchange directory "exchange" and the catalogue folder "catalogue" of the machine's folder.
  std::optional<SettingLines> settings = {};
  // "DRAXASettings" of Acme and of Smith; without lines there are none.
  SettingLines companySettings = {};
  SettingLines contactSettings = {};
  // Off: the database has no class mechanism for folder structures.
  bool folderStructures = true;
  std::string lockDescription = "VRK_DESCRIPTION";  // the description attribute of lock records
  // More of them: JSON objects, each after a comma.
  std::string objects = {};
  std::string links = {};
};

// The company's model (docs/model-file.md), and beside it in the folder all that it needs: the documents'
// files and icons in "model", the catalogue and an empty exchange directory.
//
// Documents: 1201:1 (assembly "A-1", Gearbox, over 1202:2), 1202:2 ("P-2", Shaft), 1202:3 ("P-3", Bolt),
// 1202:4 ("P-4", no description), 1202:5 ("P-5", Sketch, no file), 1205:8 (a drawing, identified by CN_ID).
// No exchange documents: 1203:4 (a note, identified by nothing), 1204:5 (no file class). Companies: 901:11
// Acme, Hull; 901:12 Bolt; 901:13 Closed (inactive). Contact persons: 902:21 Smith, Jo, of Acme, and below
// him 902:22 Jones, Al, who leads back to him; 902:23 Old (inactive) of Acme; 902:24 Brown of Bolt, without
// mail address. Folder structures of 1201:1: 910:41 Standard, 910:42 Flat. 900 is the data exchange class.
// Users 10:31 anna, 10:32 bert, 10:33 rolf (role "Unlock"), 10:34 ruth (role "unlock"), 10:35 admin.
[[nodiscard]] std::string CompanyModel(const TemporaryFolder& folder, const CompanyOptions& options = {});

class Company : public HostedMachine {
 public:
  // The dialogs outlive the company.
  explicit Company(embedded::HostDialogs& dialogs, const CompanyOptions& options = {});

  static constexpr ObjectKey kGearbox{1201, 1};
  static constexpr ObjectKey kShaft{1202, 2};
  static constexpr ObjectKey kBolt{1202, 3};
  static constexpr ObjectKey kNameless{1202, 4};

  // A list with "OBJECT_ID", "CLASS_ID" and, when states are given, "STATE".
  [[nodiscard]] PcRecordListPtr ObjectList(const std::vector<ObjectKey>& keys,
                                           const std::vector<Value>& states = {});
};

}  // namespace tessel::test
