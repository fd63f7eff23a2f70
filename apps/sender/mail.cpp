#include "sender/mail.h"

#include <idn2.h>

#include <algorithm>
#include <cstring>
#include <ctime>

#include "host/ascii.h"
#include "host/object_key.h"
#include "sender/mail_text.h"
#include "sender/status_texts.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

constexpr std::size_t kLongestHeaderLine = 76;  // with the field's name
constexpr std::size_t kLongestTextLine = 900;   // the standards end at 998
constexpr std::size_t kPieceBytes = 57 * 1024;  // whole lines of base64
constexpr std::size_t kLongestMailbox = 254;

[[noreturn]] void RefuseAddress(const std::string& address, StatusText why) {
  throw Reason(why, {CleanText(address)});
}

std::string AsciiDomain(const std::string& domain, const std::string& address) {
  if (IsAscii(domain)) return domain;
  char* ascii = nullptr;
  const auto* text = reinterpret_cast<const std::uint8_t*>(domain.c_str());
  if (idn2_lookup_u8(text, reinterpret_cast<std::uint8_t**>(&ascii), IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL) !=
      IDN2_OK) {
    RefuseAddress(address, StatusText::kAddressDomain);
  }
  std::string result(ascii);
  idn2_free(ascii);
  return result;
}

std::string Mailbox(const std::string& text) {
  if (CleanText(text) != text) RefuseAddress(text, StatusText::kAddressControls);
  const auto at = text.rfind('@');
  if (at == std::string::npos || at == 0 || at + 1 == text.size())
    RefuseAddress(text, StatusText::kAddressForm);
  constexpr const char* kHarmful = " \"(),:;<>@[]\\";
  if (text.find_first_of(kHarmful) < at) RefuseAddress(text, StatusText::kAddressQuotes);
  const std::string domain = AsciiDomain(text.substr(at + 1), text);
  if (domain.find_first_of(kHarmful) != std::string::npos || domain.front() == '.' ||
      domain.find("..") != std::string::npos) {
    RefuseAddress(text, StatusText::kAddressDomain);
  }
  std::string mailbox = text.substr(0, at + 1) + domain;
  if (mailbox.front() == '-' || mailbox.size() > kLongestMailbox)
    RefuseAddress(text, StatusText::kAddressLength);
  return mailbox;
}

Address ParseAddress(const std::string& text) {
  const auto open = text.find('<');
  if (open == std::string::npos) return {{}, Mailbox(text)};
  if (text.back() != '>') RefuseAddress(text, StatusText::kAddressOpen);
  std::string name(Trimmed(std::string_view(text).substr(0, open), " "));
  if (name.size() >= 2 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
  return {CleanText(name), Mailbox(text.substr(open + 1, text.size() - open - 2))};
}

// Separators inside quotes belong to the address, and so does a comma before which no mailbox stands: it is
// part of a name, as in "Vogt, Anna <a@b>".
std::vector<std::string> SplitAddresses(const std::string& text) {
  std::vector<std::string> parts(1);
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    const bool inName = c == ',' && parts.back().find('@') == std::string::npos;
    if (!quoted && !(inName && !Trimmed(parts.back(), " ").empty()) && (c == ';' || c == ',')) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// `used` as for HeaderText; behind the address there may be a comma.
std::string AddressText(const Address& address, std::size_t used) {
  if (address.name.empty()) return address.mailbox;
  const bool plain = IsAscii(address.name) && used + address.name.size() + 2 <= kLongestHeaderLine &&
                     address.name.find_first_of("\"\\") == std::string::npos &&
                     address.name.find("=?") == std::string::npos;
  const std::string name = plain ? "\"" + address.name + "\"" : EncodedWords(address.name, used);
  const auto fold = name.rfind("\r\n");
  const std::size_t line = fold == std::string::npos ? used + name.size() : name.size() - fold - 2;
  const bool fits = line + address.mailbox.size() + 4 <= kLongestHeaderLine;
  return name + (fits ? " <" : "\r\n <") + address.mailbox + ">";
}

std::string AddressList(const std::string& name, const std::vector<Address>& addresses) {
  std::string text;
  for (const Address& address : addresses)
    text += text.empty() ? AddressText(address, name.size() + 2) : ",\r\n " + AddressText(address, 1);
  return name + ": " + text + "\r\n";
}

std::string Field(const std::string& name, const std::string& value) {
  return name + ": " + value + "\r\n";
}

std::string TextField(const std::string& name, const std::string& text) {
  return Field(name, HeaderText(text, name.size() + 2));
}

// Lines that end with CR LF, whatever they ended with.
std::string WithMailLines(const std::string& text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || text[i] == '\n') {
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      lines += "\r\n";
    } else {
      lines += text[i];
    }
  }
  return lines + "\r\n";
}

bool FitsAsItIs(const std::string& lines) {
  std::size_t length = 0;
  for (const char c : lines) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x7F || (byte < 0x20 && c != '\r' && c != '\n' && c != '\t')) return false;
    length = c == '\n' ? 0 : length + 1;
    if (length > kLongestTextLine) return false;
  }
  return true;
}

std::string TextPart(const std::string& content) {
  const std::string lines = WithMailLines(content);
  if (FitsAsItIs(lines))
    return "Content-Type: text/plain; charset=us-ascii\r\nContent-Transfer-Encoding: 7bit\r\n\r\n" + lines;
  return "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: base64\r\n\r\n" +
         Base64Lines(lines);
}

// Characters of the Message-ID, which no line of base64 and no plain text begins with behind "--".
std::string Boundary(const MailHead& head) {
  std::string boundary = "=_kestrix_";
  for (const char c : head.messageId) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0 && boundary.size() < 60) boundary += c;
  }
  while (head.content.find("--" + boundary) != std::string::npos)
    boundary += '_';
  return boundary;
}

std::string Begin(const MailHead& head, const std::string& boundary) {
  std::string text = Field("Date", head.date) + AddressList("From", {head.sender}) +
                     AddressList("To", head.recipients) + TextField("Subject", head.subject) +
                     Field("Message-ID", head.messageId) + TextField("X-Kestrix-Exchange", head.exchange) +
                     Field("MIME-Version", "1.0") +
                     Field("Content-Type", "multipart/mixed;\r\n boundary=\"" + boundary + "\"") + "\r\n";
  text += "--" + boundary + "\r\n" + TextPart(head.content) + "--" + boundary + "\r\n";
  return text + "Content-Type: application/zip" + Parameter("name", head.attachmentName) +
         "\r\nContent-Transfer-Encoding: base64\r\nContent-Disposition: attachment" +
         Parameter("filename", head.attachmentName) + "\r\n\r\n";
}

}  // namespace

std::vector<Address> ParseAddresses(const std::string& text) {
  std::vector<Address> addresses;
  for (const std::string& part : SplitAddresses(text)) {
    const std::string address(Trimmed(part, " "));
    if (!address.empty()) addresses.push_back(ParseAddress(address));
  }
  if (addresses.empty()) throw Reason(StatusText::kNoAddress);
  return addresses;
}

bool NeedsUtf8(const MailHead& head) {
  return !IsAscii(head.sender.mailbox) ||
         std::any_of(head.recipients.begin(), head.recipients.end(),
                     [](const Address& address) { return !IsAscii(address.mailbox); });
}

std::string HeaderText(std::string_view text, std::size_t used) {
  const std::string clean = CleanText(text);
  const bool plain = IsAscii(clean) && used + clean.size() <= kLongestHeaderLine &&
                     clean.find("=?") == std::string::npos && Trimmed(clean, " ") == clean;
  return plain ? clean : EncodedWords(clean, used);
}

MailSource::MailSource(const MailHead& head, const std::string& attachmentPath)
    : file_(std::fopen(attachmentPath.c_str(), "rb")), path_(attachmentPath) {
  attachmentLeft_ = RegularFileSize(attachmentPath);
  if (!file_ || attachmentLeft_ < 0)
    throw Reason(StatusText::kPackageUnreadable, {attachmentPath}, error_number::kFileNotFound);
  const std::string boundary = Boundary(head);
  piece_ = Begin(head, boundary);
  tail_ = "--" + boundary + "--\r\n";
  size_ = static_cast<long long>(piece_.size() + tail_.size()) + Base64LinesSize(attachmentLeft_);
}

std::size_t MailSource::Read(char* buffer, std::size_t size) {
  if (position_ == piece_.size() && !Refill()) return 0;
  const std::size_t count = std::min(size, piece_.size() - position_);
  std::memcpy(buffer, piece_.data() + position_, count);
  position_ += count;
  given_ += static_cast<long long>(count);
  return count;
}

bool MailSource::Refill() {
  position_ = 0;
  if (attachmentLeft_ == 0) {
    piece_ = tailGiven_ ? std::string() : tail_;
    tailGiven_ = true;
    return !piece_.empty();
  }
  std::string bytes(static_cast<std::size_t>(std::min<long long>(attachmentLeft_, kPieceBytes)), '\0');
  if (std::fread(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size())
    throw Reason(StatusText::kPackageShrank, {path_}, error_number::kPathFileAccess);
  attachmentLeft_ -= static_cast<long long>(bytes.size());
  piece_ = Base64Lines(bytes);
  return true;
}

std::string MailDate(long long seconds) {
  constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const auto time = static_cast<std::time_t>(seconds);
  std::tm utc{};
  static_cast<void>(::gmtime_r(&time, &utc));
  char text[64];
  std::snprintf(text, sizeof text, "%s, %d %s %04d %02d:%02d:%02d +0000", kDays[utc.tm_wday], utc.tm_mday,
                kMonths[utc.tm_mon], utc.tm_year + 1900, utc.tm_hour, utc.tm_min, utc.tm_sec);
  return text;
}

std::string MessageIdOf(const std::string& alias, const std::string& stamp, const std::string& key, int issue,
                        const std::string& mailbox) {
  std::string text;
  for (const char c : stamp + "." + key + "." + std::to_string(issue) + "." + alias) {
    const bool plain =
        (std::isalnum(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 0x80);
    if (plain) {
      text += c;
    } else if (!text.empty() && text.back() != '.') {
      text += '.';
    }
  }
  while (!text.empty() && text.back() == '.')
    text.pop_back();
  return "<kestrix." + text + mailbox.substr(mailbox.rfind('@')) + ">";
}

}  // namespace tessel::sender
