// The configuration values of the admin settings, and the table that reading, tracing, documentation and
// tests run over.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace tessel {

// Written into a recipient's directory beside the structure file and the data file.
inline constexpr const char* kNeutralFormatsFile = "NeutralFormats.xml";

// Values under the names that the modules use. A fresh one holds nothing; ReadConfiguration fills it.
struct Configuration {
  std::string DisplayAttribute1;
  std::string DisplayAttribute2;
  std::string DisplayAttribCustom1;
  std::string DisplayAttribCustom2;
  std::string DisplayAttribContact1;
  std::string DisplayAttribContact2;
  std::string DisplayAttribFolderStruc;
  std::string ExchangeDirectory;  // below which exchange directories are made
  std::string TracePath;
  std::string ExportPrefix;
  std::string LanguageFilePath;  // folder of the catalogue files
  std::string SubExDir;
  std::string UserEmailAttrName;
  std::string StructureFileName;
  std::string DataFileName;
  std::string LockedInfo;
  std::string UnLockRole;
  bool UseURL2RefExDir = false;
  std::string SMTPServer;
  bool b_UsePartnerList = false;
  bool b_UseCustomForm = false;
  bool b_UseRootObjRel = false;
  bool b_UseCustomObjRel = false;
  bool b_UseContactPersObjRel = false;
  std::int16_t i_ShowMail = 0;
  std::int16_t i_ShowMailStruc = 0;
  std::int16_t i_ShowOdette = 0;
  std::int16_t i_ShowCustomSend = 0;
  std::int16_t i_ShowNoSend = 0;
  bool GenStrucFile = false;
  bool b_AllowMultiRecipientSelection = false;
  bool b_LinkAllToMainTransObj = false;
  bool UseServerMonitor = false;
  std::string XMLStructureEncoding;
  bool b_PresetCopyAllBox = false;
  bool b_EnKeepSel = false;
};

// One row of the table. The member says by its type how the text is converted.
struct ConfigurationKey {
  const char* section;
  const char* key;
  const char* defaultText;  // null: the program's own directory
  std::variant<std::string Configuration::*, bool Configuration::*, std::int16_t Configuration::*> member;
  const char* label;    // of the trace line, with its ": "
  const char* meaning;  // one sentence for the documentation
};

// In the order in which the values are read.
[[nodiscard]] const std::vector<ConfigurationKey>& ConfigurationKeys();

}  // namespace tessel
