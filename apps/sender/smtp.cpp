#include "sender/smtp.h"

#include <curl/curl.h>

#include <cstring>
#include <exception>
#include <memory>
#include <mutex>

#include "host/error.h"
#include "host/value.h"
#include "sender/log.h"
#include "sender/mail_text.h"
#include "sender/status_texts.h"

namespace tessel::sender {
namespace {

constexpr std::size_t kLongestAnswer = 1000;

long Milliseconds(Seconds time) {
  return static_cast<long>(time.count() * 1000);
}

// What the server says, and how far the mail went.
struct Conversation {
  std::string language;
  MailSource* source = nullptr;
  const std::function<void()>* begin = nullptr;
  bool needsUtf8 = false;
  long long largest = -1;  // the server's limit; -1 when it names none
  bool takesUtf8 = false;
  std::string answer;     // its last answer
  bool begun = false;     // `begin` was called
  bool finished = false;  // all bytes were handed over: from here on it may have the mail
  bool answered = false;  // it said something after that
  std::string refusal;    // why we do not hand it over
  std::exception_ptr error;
};

int CodeOf(const std::string& answer) {
  if (answer.size() < 3 || answer.find_first_not_of("0123456789") < 3) return 0;
  return ParseInt32(answer.substr(0, 3));
}

void TakeAnswer(Conversation& talk, const std::string& line) {
  if (line.starts_with("221")) return;  // the farewell says nothing about the mail
  if (talk.finished) talk.answered = true;
  talk.answer = line.substr(0, kLongestAnswer);
  // What was promised before the encryption does not count after it.
  if (line.starts_with("220")) {
    talk.largest = -1;
    talk.takesUtf8 = false;
  }
  if (line.size() < 5 || !line.starts_with("250")) return;
  const std::string rest = line.substr(4);
  if (rest == "SMTPUTF8") talk.takesUtf8 = true;
  if (!rest.starts_with("SIZE ")) return;
  try {
    const double size = ParseDouble(rest.substr(5));
    talk.largest = size > 0 ? static_cast<long long>(size) : -1;  // 0: no limit
  } catch (const RuntimeError&) {
    // A limit that is no number is none.
  }
}

int OnDebug(CURL*, curl_infotype type, char* data, std::size_t size, void* pointer) {
  if (type == CURLINFO_HEADER_IN) {
    std::string line = OneLine(CleanText({data, size}));
    line.erase(line.find_last_not_of(' ') + 1);
    if (!line.empty()) TakeAnswer(*static_cast<Conversation*>(pointer), line);
  }
  return 0;
}

// Why this server may not be given the mail; empty when it may.
std::string Refusal(const Conversation& talk) {
  const long long size = talk.source->Size();
  if (talk.largest > 0 && size > talk.largest) {
    return TextOf(talk.language, StatusText::kServerSmaller,
                  {std::to_string(size), std::to_string(talk.largest)});
  }
  return talk.needsUtf8 && !talk.takesUtf8 ? TextOf(talk.language, StatusText::kNoUtf8) : std::string();
}

std::size_t OnRead(char* buffer, std::size_t size, std::size_t count, void* pointer) {
  auto& talk = *static_cast<Conversation*>(pointer);
  try {
    if (!talk.begun) {
      talk.refusal = Refusal(talk);
      if (!talk.refusal.empty()) return CURL_READFUNC_ABORT;
      (*talk.begin)();
      talk.begun = true;
    }
    const std::size_t given = talk.source->Read(buffer, size * count);
    if (talk.source->Given() >= talk.source->Size()) talk.finished = true;
    return given;
  } catch (...) {
    talk.error = std::current_exception();
    return CURL_READFUNC_ABORT;
  }
}

class Handle {
 public:
  Handle() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    curl_ = curl_easy_init();
    if (curl_ == nullptr) throw RuntimeError(error_number::kOutOfMemory, "No mail connection could be made");
    errorText_[0] = '\0';
    Set(CURLOPT_ERRORBUFFER, errorText_);
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_NOPROGRESS, 1L);
  }
  ~Handle() {
    curl_slist_free_all(recipients_);
    curl_easy_cleanup(curl_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  template <class Value>
  void Set(CURLoption option, Value value) {
    if (curl_easy_setopt(curl_, option, value) != CURLE_OK)
      throw RuntimeError(error_number::kInvalidCall,
                         "The mail library refuses option " + std::to_string(option));
  }
  void AddRecipient(const std::string& mailbox) {
    recipients_ = curl_slist_append(recipients_, ("<" + mailbox + ">").c_str());
  }
  void UseRecipients() { Set(CURLOPT_MAIL_RCPT, recipients_); }
  CURLcode Perform() { return curl_easy_perform(curl_); }
  [[nodiscard]] std::string ErrorText(CURLcode code) const {
    return errorText_[0] != '\0' ? errorText_ : curl_easy_strerror(code);
  }

 private:
  CURL* curl_ = nullptr;
  curl_slist* recipients_ = nullptr;
  char errorText_[CURL_ERROR_SIZE];
};

void Configure(Handle& handle, const Settings& settings, const MailServer& server,
               const std::string& authFile, Conversation& talk) {
  const bool tls = settings.mailSecurity == MailSecurity::kTls;
  const bool plain = settings.mailSecurity == MailSecurity::kPlain;
  handle.Set(CURLOPT_URL, ((tls ? "smtps://" : "smtp://") + server.Text()).c_str());
  handle.Set(CURLOPT_PROTOCOLS_STR, tls ? "smtps" : "smtp");
  handle.Set(CURLOPT_USE_SSL, static_cast<long>(plain ? CURLUSESSL_NONE : CURLUSESSL_ALL));
  handle.Set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  handle.Set(CURLOPT_PROXY, "");
  if (!settings.mailCaFile.empty()) {
    handle.Set(CURLOPT_CAINFO, settings.mailCaFile.c_str());
    handle.Set(CURLOPT_CAPATH, static_cast<char*>(nullptr));
  }
  // A password never travels in the open.
  if (!authFile.empty() && !plain) {
    handle.Set(CURLOPT_NETRC, static_cast<long>(CURL_NETRC_OPTIONAL));
    handle.Set(CURLOPT_NETRC_FILE, authFile.c_str());
  }
  handle.Set(CURLOPT_CONNECTTIMEOUT_MS, Milliseconds(settings.connectTimeout));
  handle.Set(CURLOPT_SERVER_RESPONSE_TIMEOUT,
             std::max(1L, static_cast<long>(settings.answerTimeout.count())));
  handle.Set(CURLOPT_TIMEOUT_MS, Milliseconds(settings.transferTimeout));
  handle.Set(CURLOPT_VERBOSE, 1L);
  handle.Set(CURLOPT_DEBUGFUNCTION, &OnDebug);
  handle.Set(CURLOPT_DEBUGDATA, &talk);
}

bool IsPassing(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_AGAIN:
    case CURLE_PARTIAL_FILE:
    case CURLE_UPLOAD_FAILED:
    case CURLE_SSL_CONNECT_ERROR:  // hung up while encrypting; a wrong certificate has a code of its own
    case CURLE_WEIRD_SERVER_REPLY:
      return true;
    default:
      return false;
  }
}

// What a failure is, for people.
StatusText KindOf(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
      return StatusText::kMailUnknownHost;
    case CURLE_COULDNT_CONNECT:
      return StatusText::kMailNoConnection;
    case CURLE_OPERATION_TIMEDOUT:
      return StatusText::kMailTimeOut;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
      return StatusText::kMailHungUp;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_USE_SSL_FAILED:
      return StatusText::kMailNoEncryption;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
      return StatusText::kMailCertificate;
    case CURLE_LOGIN_DENIED:
      return StatusText::kMailLogin;
    case CURLE_WEIRD_SERVER_REPLY:
      return StatusText::kMailGarbage;
    default:
      return StatusText::kMailOther;
  }
}

bool IsRefusal(const std::string& answer) {
  return CodeOf(answer) >= 400 && CodeOf(answer) < 600;
}

std::string WhatHappened(const Conversation& talk, CURLcode code, const std::string& detail) {
  const bool refused = IsRefusal(talk.answer) && code != CURLE_LOGIN_DENIED;
  const std::string what = TextOf(talk.language, refused ? StatusText::kMailRefused : KindOf(code), {detail});
  return talk.answer.empty() ? what : TextOf(talk.language, StatusText::kServerSaid, {what, talk.answer});
}

std::string TextOfError(const std::exception_ptr& error, const std::string& language) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& exception) {
    return ReasonText(language, exception);
  }
}

Outcome Judge(const Conversation& talk, CURLcode code, const std::string& text) {
  using Kind = Outcome::Kind;
  if (code == CURLE_OK) return {Kind::kSent, {}, talk.answer};
  if (!talk.refusal.empty()) return {Kind::kRefused, talk.refusal, {}};
  const bool refused = IsRefusal(talk.answer);
  // After the last byte only a refusal says that the server does not have the mail.
  if (talk.finished && !(talk.answered && refused)) return {Kind::kUnknown, text, {}};
  if (refused) return {CodeOf(talk.answer) < 500 ? Kind::kLater : Kind::kRefused, text, {}};
  return {IsPassing(code) ? Kind::kLater : Kind::kRefused, text, {}};
}

}  // namespace

MailServer ParseServer(const std::string& text, int defaultPort) {
  MailServer server{text, defaultPort};
  const auto colon = text.rfind(':');
  const auto bracket = text.rfind(']');
  const bool hasPort = colon != std::string::npos &&
                       (bracket == std::string::npos ? text.find(':') == colon : bracket + 1 == colon);
  if (hasPort) {
    server.host = text.substr(0, colon);
    const std::string digits = text.substr(colon + 1);
    const bool numeric =
        !digits.empty() && digits.size() < 6 && digits.find_first_not_of("0123456789") == std::string::npos;
    server.port = numeric ? ParseInt32(digits) : 0;
  }
  constexpr const char* kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.-_[]:";
  if (server.host.empty() || server.host.find_first_not_of(kPlain) != std::string::npos || server.port < 1 ||
      server.port > 65535 || (server.host.front() != '[' && server.host.find(':') != std::string::npos)) {
    throw Reason(StatusText::kNoServerName, {CleanText(text)});
  }
  return server;
}

Outcome TransferMail(const Settings& settings, const MailServer& server, const MailHead& head,
                     MailSource& source, const std::string& language, const std::function<void()>& begin) {
  Conversation talk;
  talk.language = language;
  talk.source = &source;
  talk.begin = &begin;
  talk.needsUtf8 = NeedsUtf8(head);
  Handle handle;
  Configure(handle, settings, server, settings.mailAuthFile, talk);
  handle.Set(CURLOPT_MAIL_FROM, ("<" + head.sender.mailbox + ">").c_str());
  for (const Address& address : head.recipients)
    handle.AddRecipient(address.mailbox);
  handle.UseRecipients();
  handle.Set(CURLOPT_UPLOAD, 1L);
  handle.Set(CURLOPT_READFUNCTION, &OnRead);
  handle.Set(CURLOPT_READDATA, &talk);
  handle.Set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(source.Size()));
  // It runs while the server considers the whole mail, too, when nothing moves.
  handle.Set(CURLOPT_LOW_SPEED_LIMIT, 1L);
  handle.Set(
      CURLOPT_LOW_SPEED_TIME,
      std::max(1L, static_cast<long>(std::max(settings.stallTimeout, settings.answerTimeout).count())));
  const CURLcode code = handle.Perform();
  if (talk.error && !talk.begun) std::rethrow_exception(talk.error);
  if (talk.error) return {Outcome::Kind::kRefused, TextOfError(talk.error, language), {}};
  std::string what = server.Text() + ": " + WhatHappened(talk, code, handle.ErrorText(code));
  if (talk.largest > 0 && source.Size() > talk.largest) what += " (" + Refusal(talk) + ")";
  return Judge(talk, code, what);
}

std::string TryServer(const Settings& settings, const MailServer& server, const std::string& authFile) {
  Conversation talk;
  Handle handle;
  Configure(handle, settings, server, authFile, talk);
  handle.Set(CURLOPT_NOBODY, 1L);
  handle.Set(CURLOPT_CUSTOMREQUEST, "NOOP");
  const CURLcode code = handle.Perform();
  if (code == CURLE_OK) return {};
  return WhatHappened(talk, code, handle.ErrorText(code));
}

}  // namespace tessel::sender
