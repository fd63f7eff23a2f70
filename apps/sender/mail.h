// A mail as bytes: text and package in MIME, streamed. Values become header fields that cannot hold a further
// line, whatever they are.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::sender {

struct Address {
  std::string name;     // display name, may be empty
  std::string mailbox;  // local@domain, the domain in ASCII
};

// The addresses of a text, separated by ";" or ",", each "mailbox" or "name <mailbox>"; a name may hold
// commas. Raises a Reason for one that is none, or when there is none. International domains become ASCII.
[[nodiscard]] std::vector<Address> ParseAddresses(const std::string& text);

struct MailHead {
  Address sender;
  std::vector<Address> recipients;
  std::string subject;
  std::string messageId;  // with its angle brackets
  std::string date;       // as the header has it
  std::string exchange;   // identifier of the exchange, for the reader of a mailbox
  std::string content;    // the text for people
  std::string attachmentName;
};

// Whether a mailbox can only be written in UTF-8, so that the server has to take that (SMTPUTF8).
[[nodiscard]] bool NeedsUtf8(const MailHead& head);

class MailSource {
 public:
  // The attachment's native path. Error 53 when it cannot be opened.
  MailSource(const MailHead& head, const std::string& attachmentPath);
  // Exact size of all bytes.
  [[nodiscard]] long long Size() const { return size_; }
  [[nodiscard]] long long Given() const { return given_; }
  // The next bytes; 0 at the end. Error 75 when the attachment cannot be read, or became another.
  std::size_t Read(char* buffer, std::size_t size);

 private:
  bool Refill();

  struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, CloseFile> file_;
  std::string path_;
  std::string piece_;
  std::size_t position_ = 0;
  std::string tail_;
  long long attachmentLeft_ = 0;
  bool tailGiven_ = false;
  long long size_ = 0;
  long long given_ = 0;
};

// "Tue, 31 Jan 2024 15:45:02 +0000" of seconds since 1970.
[[nodiscard]] std::string MailDate(long long seconds);

// `<...@domain>` from what makes an exchange unique.
[[nodiscard]] std::string MessageIdOf(const std::string& alias, const std::string& stamp,
                                      const std::string& key, int issue, const std::string& mailbox);

// Unstructured header text: as it is, or in encoded words; folded, so that no line is longer than 76
// characters, of which `used` stand before it in the first one.
[[nodiscard]] std::string HeaderText(std::string_view text, std::size_t used);

}  // namespace tessel::sender
