// The sender's own settings: an INI file in UTF-8 beside the program. One table names every key; reading,
// checking, the listing of all keys and the documentation run over it.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/file_system.h"

namespace tessel::sender {

enum class MailSecurity { kStartTls, kTls, kPlain };

// A database that exchanges are recorded in; each has a section "Database" or "Database NAME".
struct DatabaseLogin {
  std::string path;
  std::string user = "sender";
  std::string passwordFile;  // empty: the account has no password
  std::string odettePrefix = "DX";
  std::string language;  // of status and protocol; empty: the account's own
};

using Seconds = std::chrono::duration<double>;
using Texts = std::vector<std::string>;

struct Settings {
  std::vector<DatabaseLogin> databases;

  Texts exchangePaths;
  int workers = 2;
  Seconds scanInterval{60};
  Seconds lease{60};
  int attempts = 6;
  Seconds firstPause{30};
  double pauseFactor = 4;

  std::string mailServer;
  int mailPort = 587;
  MailSecurity mailSecurity = MailSecurity::kStartTls;
  std::string mailCaFile;
  std::string mailAuthFile;
  long long mailMaxSize = 25'000'000;
  Seconds connectTimeout{30};
  Seconds answerTimeout{600};
  Seconds stallTimeout{60};
  Seconds transferTimeout{3600};

  std::string odetteOutbox;
  std::string odetteAcknowledgements;
  std::string odettePartnerAttribute = "VRK_ID";
  Seconds odetteTimeout{86400};

  std::string commandProgram;
  Texts commandArguments;  // "Argument1", "Argument2", ...
  std::string commandSuccessText;
  Seconds commandTimeout{3600};
};

// One row of the table.
struct SettingKey {
  const char* section;
  const char* key;
  const char* defaultText;
  const char* meaning;
};
[[nodiscard]] const std::vector<SettingKey>& SettingKeys();

// "KestrixServMon.ini" in the program's directory; that of the service, in /etc/kestrix, when there is only
// that.
[[nodiscard]] std::string SettingsPath(const FileSystem& files, const std::string& programDirectory);

// Reads the file. Paths in it that begin neither with a separator nor with a drive lie beside it. Error 5
// that lists, line by line, everything that is wrong; 53 when there is no such file.
[[nodiscard]] Settings ReadSettings(const FileSystem& files, const std::string& path);

// The settings of a text; what is wrong goes to `problems`, each with its line.
[[nodiscard]] Settings ParseSettings(std::string_view text, const std::string& folder, Texts& problems);

}  // namespace tessel::sender
