#include <ostream>

#include "received/inspection.h"
#include "received/verification.h"

namespace tessel::received {
namespace {

// Light and dark as the reader's browser has it; readable on a telephone and on paper.
constexpr const char* kStyle = R"css(
:root { color-scheme: light dark; --line: #8884; --dim: #777; --bad: #b3261e; }
body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem auto; max-width: 72rem; padding: 0 1rem; }
h1 { font-size: 1.5rem; margin: 0 0 .2rem; overflow-wrap: anywhere; }
h2 { font-size: 1.1rem; margin: 2rem 0 .5rem; }
dl { display: grid; grid-template-columns: max-content 1fr; gap: .15rem 1rem; margin: 1rem 0; }
dt { color: var(--dim); } dd { margin: 0; overflow-wrap: anywhere; }
.wide { overflow-x: auto; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; padding: .3rem .6rem; border-bottom: 1px solid var(--line); vertical-align: top; }
th { color: var(--dim); font-weight: 600; }
td.further { padding-left: 2rem; }
td.number { text-align: right; white-space: nowrap; }
.dim { color: var(--dim); } .bad { color: var(--bad); }
ul { list-style: none; margin: 0; padding-left: 1.3rem; border-left: 1px solid var(--line); }
ul.top { border: 0; padding-left: 0; }
li { padding: .1rem 0; } summary { cursor: pointer; }
@media print { body { margin: 0; max-width: none; } }
)css";

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (c == '"') {
      escaped += "&quot;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string Label(const Object& object) {
  return Escaped(object.value) + " <span class=\"dim\">" + Escaped(object.identifier) + "</span>";
}

class HtmlReport {
 public:
  HtmlReport(const FileSource& source, const Exchange& exchange, std::ostream& out)
      : source_(source), exchange_(exchange), out_(out) {}

  void Write(const std::vector<Problem>& problems) {
    const std::string name = Escaped(source_.Name());
    out_ << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         << "<title>" << name << "</title>\n<style>" << kStyle << "</style>\n</head>\n<body>\n<h1>" << name
         << "</h1>\n";
    WriteHead();
    WriteProblems(problems);
    WriteContents();
    if (exchange_.structured) {
      out_ << "<h2>Hierarchy</h2>\n";
      WriteTree(exchange_.hierarchy, true);
      WriteDependencies();
    }
    out_ << "</body>\n</html>\n";
  }

 private:
  void WriteHead() {
    out_ << "<dl>\n";
    Pair("Created", TimeText(exchange_.created) + " by " + exchange_.createdBy);
    Pair("Database", TextOf(exchange_.data, "DBAlias"));
    Pair("Send mode", SendModeText(exchange_));
    Pair("Recipient", TextOf(exchange_.data, "MailRecipient"));
    Pair("Subject", TextOf(exchange_.data, "MailSubject"));
    Pair("Documents", std::to_string(DocumentCount(exchange_)));
    for (const auto& [kind, format] : exchange_.formats)
      Pair(kind, format);
    out_ << "</dl>\n";
  }

  void Pair(const std::string& name, const std::string& text) {
    if (!text.empty()) out_ << "<dt>" << Escaped(name) << "</dt><dd>" << Escaped(text) << "</dd>\n";
  }

  void WriteProblems(const std::vector<Problem>& problems) {
    if (problems.empty()) return;
    out_ << "<h2 class=\"bad\">Problems</h2>\n<ul class=\"top\">\n";
    for (const Problem& problem : problems) {
      out_ << "<li>" << (problem.file.empty() ? "" : "<b>" + Escaped(problem.file) + "</b>: ")
           << Escaped(problem.text) << "</li>\n";
    }
    out_ << "</ul>\n";
  }

  void WriteContents() {
    out_ << "<h2>Contents</h2>\n<div class=\"wide\"><table>\n<tr><th>Document</th><th>Description</th>"
         << "<th>Revision</th><th>File</th><th>Size</th><th>Access</th></tr>\n";
    for (const Object& selected : exchange_.selected) {
      WriteRow(selected, false);
      for (const Object& further : selected.below)
        WriteRow(further, true);
    }
    out_ << "</table></div>\n";
  }

  void WriteRow(const Object& object, bool further) {
    const auto cell = [&](const char* attribute) { return Escaped(TextOf(object.attributes, attribute)); };
    out_ << "<tr><td" << (further ? " class=\"further\"" : "") << ">" << Label(object) << "</td><td>"
         << cell("SECOND_DESCRIPTION") << "</td><td>" << cell("REVISION") << "</td><td>" << FileCell(object)
         << "</td><td class=\"number\">" << (object.Copied() ? StateCell(object) : "") << "</td><td>"
         << cell("ACCESS_AUTHORIZATION") << "</td></tr>\n";
  }

  static std::string FileCell(const Object& object) {
    return object.Copied() ? Escaped(object.FileName()) : "<span class=\"dim\">not copied</span>";
  }

  std::string StateCell(const Object& object) const {
    const std::string state = Escaped(FileState(source_, object.FileName()));
    return source_.Has(object.FileName()) ? state : "<span class=\"bad\">" + state + "</span>";
  }

  // As deep as the file is nested, which has a limit.
  void WriteTree(const std::vector<Object>& objects, bool top) {
    out_ << (top ? "<ul class=\"top\">\n" : "<ul>\n");
    for (const Object& object : objects) {
      if (object.below.empty()) {
        out_ << "<li>" << Label(object) << "</li>\n";
        continue;
      }
      out_ << "<li><details open><summary>" << Label(object) << "</summary>\n";
      WriteTree(object.below, false);
      out_ << "</details></li>\n";
    }
    out_ << "</ul>\n";
  }

  void WriteDependencies() {
    out_ << "<h2>Dependencies</h2>\n<div class=\"wide\"><table>\n<tr><th>From</th><th>To</th><th>Link</th>"
         << "<th>Direction</th></tr>\n";
    for (const Dependency& dependency : exchange_.dependencies) {
      out_ << "<tr><td>" << Label(dependency.first) << "</td><td>" << Label(dependency.second) << "</td><td>"
           << Escaped(dependency.linkName) << "</td><td>" << Escaped(dependency.direction) << "</td></tr>\n";
    }
    out_ << "</table></div>\n";
  }

  const FileSource& source_;
  const Exchange& exchange_;
  std::ostream& out_;
};

}  // namespace

void WriteHtml(const FileSource& source, const Exchange& exchange, const std::vector<Problem>& problems,
               std::ostream& out) {
  HtmlReport(source, exchange, out).Write(problems);
}

}  // namespace tessel::received
