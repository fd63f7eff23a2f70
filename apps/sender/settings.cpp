#include "sender/settings.h"

#include <charconv>
#include <functional>
#include <set>

#include "embedded/store/database_place.h"
#include "host/ascii.h"
#include "host/error.h"
#include "host/object_key.h"
#include "platform/paths.h"

namespace tessel::sender {
namespace {

// How a value is taken; throws a text that says what is wrong with it.
using Taker = std::function<void(Settings&, const std::string& value, const std::string& folder)>;

struct Row {
  SettingKey key;
  Taker take;
};

std::string WithoutBlanks(std::string_view text) {
  return std::string(Trimmed(text, " \t\r"));
}

template <class Number>
Number ParseNumber(const std::string& text, Number least, Number most) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) throw std::string("is no number");
  if (!(number >= least && number <= most)) throw std::string("is out of range");
  return number;
}

std::string AbsolutePath(const std::string& value, const std::string& folder) {
  const bool relative = !value.empty() && value.front() != '/' && value.front() != '\\' &&
                        !(value.size() > 1 && value[1] == ':');
  return relative ? paths::Join(folder, value) : value;
}

MailSecurity ParseSecurity(const std::string& value) {
  if (value == "starttls") return MailSecurity::kStartTls;
  if (value == "tls") return MailSecurity::kTls;
  if (value == "plain") return MailSecurity::kPlain;
  throw std::string("is none of starttls, tls, plain");
}

Taker Text(std::string Settings::*member) {
  return [member](Settings& settings, const std::string& value, const std::string&) {
    settings.*member = value;
  };
}
Taker Path(std::string Settings::*member) {
  return [member](Settings& settings, const std::string& value, const std::string& folder) {
    settings.*member = AbsolutePath(value, folder);
  };
}
Taker Time(Seconds Settings::*member, double least = 0) {
  return [member, least](Settings& settings, const std::string& value, const std::string&) {
    settings.*member = Seconds(ParseNumber<double>(value, least, 1e7));
  };
}
template <class Number>
Taker Whole(Number Settings::*member, Number least, Number most) {
  return [member, least, most](Settings& settings, const std::string& value, const std::string&) {
    settings.*member = ParseNumber<Number>(value, least, most);
  };
}

template <class Take>
Taker OfDatabase(Take take) {
  return [take](Settings& settings, const std::string& value, const std::string& folder) {
    take(settings.databases.back(), value, folder);
  };
}

void AddExchangePaths(Settings& settings, const std::string& value, const std::string& folder) {
  for (const std::string& part : SplitText(value, ";")) {
    if (!WithoutBlanks(part).empty())
      settings.exchangePaths.push_back(AbsolutePath(WithoutBlanks(part), folder));
  }
}

const std::vector<Row>& Rows() {
  static const std::vector<Row> rows{
      {{"Database", "Path", "", "file of the database, or its address on a server; required"},
       OfDatabase([](DatabaseLogin& login, const std::string& value, const std::string& folder) {
         login.path = embedded::IsOnServer(value) ? value : AbsolutePath(value, folder);
       })},
      {{"Database", "User", "sender", "account of the sender; its settings object says where exchanges lie"},
       OfDatabase(
           [](DatabaseLogin& login, const std::string& value, const std::string&) { login.user = value; })},
      {{"Database", "PasswordFile", "",
        "file with the account's password in its first line, which only its owner may read; empty: none"},
       OfDatabase([](DatabaseLogin& login, const std::string& value, const std::string& folder) {
         login.passwordFile = AbsolutePath(value, folder);
       })},
      {{"Database", "Language", "", "language of status and protocol, GER or ENG; empty: the account's own"},
       OfDatabase([](DatabaseLogin& login, const std::string& value, const std::string&) {
         login.language = value;
       })},
      {{"Database", "DatasetPrefix", "DX",
        "begin of the names of its Odette datasets, capital letters and digits; another one for each "
        "database"},
       OfDatabase([](DatabaseLogin& login, const std::string& value, const std::string&) {
         if (value.size() > 8 ||
             value.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789") != std::string::npos) {
           throw std::string("is not made of one to eight capital letters and digits");
         }
         login.odettePrefix = value;
       })},
      {{"Queue", "ExchangePath", "",
        "directories in which exchange directories lie, separated by \";\", beside those of the databases"},
       AddExchangePaths},
      {{"Queue", "Workers", "2", "exchanges that are sent at a time, 1 to 32"},
       Whole(&Settings::workers, 1, 32)},
      {{"Queue", "ScanInterval", "60", "--watch looks through the exchange paths after so many seconds"},
       Time(&Settings::scanInterval, 0.05)},
      {{"Queue", "Lease", "60",
        "another machine's work counts as abandoned when it gave no sign for so many seconds"},
       Time(&Settings::lease, 0.1)},
      {{"Queue", "Attempts", "6",
        "attempts before an exchange is stopped, when each failed for a passing reason"},
       Whole(&Settings::attempts, 1, 1000)},
      {{"Queue", "FirstPause", "30", "seconds between the first and the second attempt"},
       Time(&Settings::firstPause)},
      {{"Queue", "PauseFactor", "4", "every further pause is so many times the one before, an hour at most"},
       [](Settings& settings, const std::string& value, const std::string&) {
         settings.pauseFactor = ParseNumber<double>(value, 1, 100);
       }},
      {{"Mail", "Server", "", "mail server of exchanges whose data file names none"},
       Text(&Settings::mailServer)},
      {{"Mail", "Port", "587", "port of a server that is named without one (465 with Security=tls)"},
       Whole(&Settings::mailPort, 1, 65535)},
      {{"Mail", "Security", "starttls",
        "starttls: encrypted after STARTTLS, or nothing is sent; tls: encrypted from the beginning; plain: "
        "not encrypted, and then no password is ever sent"},
       [](Settings& settings, const std::string& value, const std::string&) {
         settings.mailSecurity = ParseSecurity(value);
       }},
      {{"Mail", "CAFile", "", "certificates (PEM) that the server's must follow from; empty: the system's"},
       Path(&Settings::mailCaFile)},
      {{"Mail", "AuthFile", "",
        "file with lines \"machine SERVER login USER password PASSWORD\", which only its owner may read; "
        "empty: no authentication"},
       Path(&Settings::mailAuthFile)},
      {{"Mail", "MaxSize", "25000000", "largest mail in bytes, as transferred"},
       Whole(&Settings::mailMaxSize, 1000LL, 1'000'000'000'000LL)},
      {{"Mail", "ConnectTimeout", "30", "seconds until the connection has to stand"},
       Time(&Settings::connectTimeout, 0.1)},
      {{"Mail", "AnswerTimeout", "600",
        "seconds that the server may take for an answer; it may take ten minutes over a whole mail"},
       Time(&Settings::answerTimeout, 0.1)},
      {{"Mail", "StallTimeout", "60", "seconds without a byte moving"}, Time(&Settings::stallTimeout, 1)},
      {{"Mail", "TransferTimeout", "3600", "seconds for the whole of one mail"},
       Time(&Settings::transferTimeout, 1)},
      {{"Odette", "Outbox", "", "directory from which the transfer station takes files"},
       Path(&Settings::odetteOutbox)},
      {{"Odette", "Acknowledgements", "",
        "directory into which it puts acknowledgement files; empty: the outbox"},
       Path(&Settings::odetteAcknowledgements)},
      {{"Odette", "PartnerAttribute", "VRK_ID",
        "attribute of the company that names the partner to the station"},
       Text(&Settings::odettePartnerAttribute)},
      {{"Odette", "Timeout", "86400", "seconds until a missing acknowledgement stops the exchange"},
       Time(&Settings::odetteTimeout)},
      {{"Command", "Program", "", "program of the own send mode; full path"},
       Path(&Settings::commandProgram)},
      {{"Command", "Argument1", "",
        "first argument, Argument2 the second, and so on; {directory}, {zip}, {structure}, {data}, {id} and "
        "{text1}, {text2}, ... are replaced"},
       [](Settings&, const std::string&, const std::string&) {}},
      {{"Command", "SuccessText", "", "text that the output has to hold when the program ends with 0"},
       Text(&Settings::commandSuccessText)},
      {{"Command", "Timeout", "3600", "seconds after which the program is killed"},
       Time(&Settings::commandTimeout, 0.1)},
  };
  return rows;
}

// "Database" for "Database NAME".
std::string KindOfSection(const std::string& section) {
  return section.starts_with("Database ") ? "Database" : section;
}

class Parser {
 public:
  Parser(const std::string& folder, Texts& problems) : folder_(folder), problems_(problems) {}

  void Line(std::string_view raw) {
    ++number_;
    const std::string line = WithoutBlanks(raw);
    if (line.empty() || line.front() == '#' || line.front() == ';') return;
    if (line.front() == '[' && line.back() == ']') {
      Section(line.substr(1, line.size() - 2));
      return;
    }
    const auto equals = line.find('=');
    if (equals == std::string::npos) {
      Problem("\"" + line + "\" is neither a [section] nor KEY=VALUE");
    } else {
      Entry(WithoutBlanks(line.substr(0, equals)), WithoutBlanks(line.substr(equals + 1)));
    }
  }

  Settings Finish() {
    if (settings_.databases.empty()) Problem("there is no section [Database]");
    for (const DatabaseLogin& login : settings_.databases) {
      if (login.path.empty()) Problem("a [Database] has no Path");
    }
    if (!settings_.odetteOutbox.empty()) ComparePrefixes();
    if (settings_.odetteAcknowledgements.empty()) settings_.odetteAcknowledgements = settings_.odetteOutbox;
    if (settings_.mailSecurity == MailSecurity::kTls && !seen_.contains("Mail/Port"))
      settings_.mailPort = 465;
    return std::move(settings_);
  }

 private:
  // A prefix that is another one and digits could make the same name out of another class id.
  void ComparePrefixes() {
    for (const DatabaseLogin& one : settings_.databases) {
      for (const DatabaseLogin& other : settings_.databases) {
        const bool begins = &one != &other && other.odettePrefix.starts_with(one.odettePrefix);
        if (begins && (&one < &other || one.odettePrefix != other.odettePrefix) &&
            other.odettePrefix.find_first_not_of("0123456789", one.odettePrefix.size()) == std::string::npos)
          Problem("the databases " + one.path + " and " + other.path +
                  " could make the same Odette dataset names; give them different DatasetPrefixes");
      }
    }
  }

  void Problem(const std::string& text) {
    problems_.push_back("line " + std::to_string(number_) + ": " + text);
  }

  void Section(const std::string& name) {
    section_ = name;
    bool known = false;
    for (const Row& row : Rows())
      known = known || KindOfSection(name) == row.key.section;
    if (!known) Problem("there is no section [" + name + "]");
    if (!seen_.insert("[" + name).second) Problem("a second section [" + name + "]");
    if (KindOfSection(name) == "Database") settings_.databases.emplace_back();
  }

  void Entry(const std::string& key, const std::string& value) {
    if (!seen_.insert(section_ + "/" + key).second) {
      Problem("a second \"" + key + "\" in [" + section_ + "]");
      return;
    }
    if (section_ == "Command" && key.starts_with("Argument")) {
      Argument(key, value);
      return;
    }
    for (const Row& row : Rows()) {
      if (KindOfSection(section_) != row.key.section || key != row.key.key) continue;
      try {
        if (!value.empty() || *row.key.defaultText == '\0') row.take(settings_, value, folder_);
      } catch (const std::string& wrong) {
        Problem(key + "=" + value + ": the value " + wrong);
      }
      return;
    }
    Problem("there is no key \"" + key + "\" in [" + section_ + "]");
  }

  void Argument(const std::string& key, const std::string& value) {
    if (key != "Argument" + std::to_string(settings_.commandArguments.size() + 1)) {
      Problem("\"" + key + "\" is out of order: arguments are numbered from 1 without a gap");
    }
    settings_.commandArguments.push_back(value);
  }

  std::string folder_;
  Texts& problems_;
  Settings settings_;
  std::string section_;
  std::set<std::string> seen_;
  int number_ = 0;
};

}  // namespace

const std::vector<SettingKey>& SettingKeys() {
  static const std::vector<SettingKey> keys = [] {
    std::vector<SettingKey> all;
    for (const Row& row : Rows())
      all.push_back(row.key);
    return all;
  }();
  return keys;
}

std::string SettingsPath(const FileSystem& files, const std::string& programDirectory) {
  const std::string beside = paths::Join(programDirectory, "KestrixServMon.ini");
  const std::string ofService = "/etc/kestrix/KestrixServMon.ini";
  return !files.FileExists(beside) && files.FileExists(ofService) ? ofService : beside;
}

Settings ParseSettings(std::string_view text, const std::string& folder, Texts& problems) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  Parser parser(folder, problems);
  for (const std::string& line : SplitText(text, "\n"))
    parser.Line(line);
  return parser.Finish();
}

Settings ReadSettings(const FileSystem& files, const std::string& path) {
  Texts problems;
  Settings settings = ParseSettings(files.ReadBytes(path), paths::Parent(path), problems);
  if (problems.empty()) return settings;
  std::string text = "The settings " + path + " are wrong:";
  for (const std::string& problem : problems)
    text += "\n  " + problem;
  throw RuntimeError(error_number::kInvalidCall, text);
}

}  // namespace tessel::sender
