#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>

#include "received/inspection.h"
#include "received/verification.h"

namespace tessel::received {
namespace {

// A name that came from elsewhere must not steer the terminal.
std::string Printable(const std::string& text) {
  std::string printable;
  for (const char c : text) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    printable += control ? ' ' : c;
  }
  return printable;
}

class TextReport {
 public:
  TextReport(const FileSource& source, const Exchange& exchange, std::ostream& out)
      : source_(source), exchange_(exchange), out_(out) {}

  void Write(const std::vector<Problem>& problems) {
    WriteHead();
    out_ << "\nContents\n";
    WriteBelow(exchange_.selected, "", [this](const Object& object) { return ContentLine(object); });
    if (exchange_.structured) {
      out_ << "\nHierarchy\n";
      WriteBelow(exchange_.hierarchy, "", [](const Object& object) { return Title(object); });
      out_ << "\nDependencies\n";
      for (const Dependency& dependency : exchange_.dependencies) {
        out_ << "  " << Title(dependency.first) << " -> " << Title(dependency.second) << "  ("
             << Printable(dependency.linkName) << ", " << Printable(dependency.direction) << ")\n";
      }
    }
    if (!problems.empty()) out_ << "\nProblems\n";
    for (const Problem& problem : problems)
      out_ << "  " << (problem.file.empty() ? "" : Printable(problem.file) + ": ") << Printable(problem.text)
           << "\n";
  }

 private:
  void WriteHead() {
    out_ << "Exchange " << Printable(source_.Name()) << "\n";
    Line("created", TimeText(exchange_.created) + " by " + exchange_.createdBy);
    Line("database", TextOf(exchange_.data, "DBAlias"));
    Line("record", ObjectKeyText(exchange_.Record(), '_'));
    Line("send mode", SendModeText(exchange_));
    Line("mail", TextOf(exchange_.data, "MailRecipient"));
    Line("subject", TextOf(exchange_.data, "MailSubject"));
    Line("documents", std::to_string(DocumentCount(exchange_)));
    for (const auto& [kind, format] : exchange_.formats) {
      if (!format.empty()) Line(kind, format);
    }
  }

  void Line(const std::string& name, const std::string& text) {
    if (!text.empty()) out_ << "  " << name << ": " << Printable(text) << "\n";
  }

  static std::string Title(const Object& object) {
    return Printable((object.value.empty() ? "" : object.value + "  ") + object.identifier);
  }

  std::string ContentLine(const Object& object) const {
    if (!object.Copied()) return Title(object) + "  not copied";
    const std::string revision = TextOf(object.attributes, "REVISION");
    return Title(object) + "  " + Printable(object.FileName()) + "  (" +
           FileState(source_, object.FileName()) +
           (revision.empty() ? "" : ", revision " + Printable(revision)) +
           (TextOf(object.attributes, "ACCESS_AUTHORIZATION") == "Read/Write" ? ", to be changed" : "") + ")";
  }

  // As deep as the file is nested, which has a limit.
  template <class LineOf>
  void WriteBelow(const std::vector<Object>& objects, const std::string& indent, const LineOf& line) {
    for (std::size_t i = 0; i < objects.size(); ++i) {
      const bool last = i + 1 == objects.size();
      out_ << "  " << indent << (last ? "`- " : "|- ") << line(objects[i]) << "\n";
      WriteBelow(objects[i].below, indent + (last ? "   " : "|  "), line);
    }
  }

  const FileSource& source_;
  const Exchange& exchange_;
  std::ostream& out_;
};

}  // namespace

std::string SizeText(std::uint64_t bytes) {
  if (bytes < 1000) return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
  constexpr std::array<const char*, 4> kUnits = {"kB", "MB", "GB", "TB"};
  double size = static_cast<double>(bytes) / 1000;
  std::size_t unit = 0;
  for (; size >= 999.95 && unit + 1 < kUnits.size(); ++unit)
    size /= 1000;
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %s", size, kUnits[unit]);
  return text;
}

std::string FileState(const FileSource& source, const std::string& name) {
  const auto& entries = source.Entries();
  const auto found = std::ranges::lower_bound(entries, name, {}, &Entry::name);
  if (found == entries.end() || found->name != name) return name.empty() ? "no file name" : "missing";
  return found->kind == Entry::Kind::kFile ? SizeText(found->size) : "no plain file";
}

std::string TimeText(const std::string& fileTime) {
  const std::string& t = fileTime;
  if (t.size() != 15 || t[8] != '_') return t;
  return t.substr(0, 4) + "-" + t.substr(4, 2) + "-" + t.substr(6, 2) + " " + t.substr(9, 2) + ":" +
         t.substr(11, 2) + ":" + t.substr(13, 2);
}

std::string SendModeText(const Exchange& exchange) {
  constexpr std::array<const char*, 5> kModes = {"mail", "mail with structure file", "Odette",
                                                 "own send mode", "no sending"};
  const std::string mode = TextOf(exchange.data, "UserSelected_Send_Mode");
  if (mode.size() != 1 || mode[0] < '1' || mode[0] > '5') return mode;
  return kModes[static_cast<std::size_t>(mode[0] - '1')];
}

void WriteText(const FileSource& source, const Exchange& exchange, const std::vector<Problem>& problems,
               std::ostream& out) {
  TextReport(source, exchange, out).Write(problems);
}

}  // namespace tessel::received
