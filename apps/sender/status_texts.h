// The texts of status and protocol in the language of the sender's session, reasons among them.
#pragma once

#include <string>
#include <vector>

#include "host/error.h"

namespace tessel::sender {

enum class StatusText {
  // What becomes of an exchange.
  kBeingSent,       // {0} number of the attempt
  kSent,            // {0} how, {1} to whom
  kStopped,         // {0} reason
  kNextAttempt,     // {0} number of the failed attempt, {1} of all, {2} time of the next, {3} reason
  kGivenUp,         // {0} number of attempts, {1} reason
  kOutcomeUnknown,  // {0} what happened
  kWaiting,         // {0} name of the dataset
  kSentAgain,       // put into the queue again by a person
  kMarkedSent,      // a person said that it had arrived
  kPacked,          // {0} number of files, {1} bytes, {2} name of the package
  kByMail,          // {0} server
  kByOdette,        // {0} dataset
  kByCommand,       // {0} program
  kWithoutSending,
  // Why a data file cannot be used: {0} name of an element, {1} its text.
  kDataNul,
  kDataNoXml,  // {0} what the reader says
  kDataRoot,   // {0} name of the root
  kDataNoElement,
  kDataTwice,
  kDataNoNumber,
  kDataNoClass,
  kDataFileName,
  kDataNoMode,       // {0} number
  kDataNoAttribute,  // {0} class, {1} attribute
  kDataForeign,      // {0} attribute
  kDataOtherClass,   // {0} class
  // Whose exchange it is: {0} key of the object.
  kNoObject,
  kObjectGone,
  kObjectElsewhere,  // {1} its path
  kObjectBefore,     // {1} the key that was named before
  kObjectSent,
  kJournalMissing,  // {0} path
  kJournalDamaged,  // {0} path, {1} why
  kEndedMeanwhile,
  // What lies in the directory: {0} path.
  kDocumentShrank,  // {1} bytes before
  kPackageName,
  kNotPlainName,  // {0} name, {1} folder
  kNotSendable,
  kNoWorkFolder,
  // The package: {0} its path.
  kPackageFailed,  // {1} why
  kPackageIncomplete,
  kPackageChanged,  // {1} document, {2} bytes before, {3} now
  kPackageOther,    // {1} document
  kPackageEmpty,
  kPackageUnreadable,
  kPackageShrank,
  // Mail: {0} the address.
  kAddressControls,
  kAddressForm,
  kAddressQuotes,
  kAddressDomain,
  kAddressLength,
  kAddressOpen,
  kNoAddress,
  kSeveralSenders,
  kNoMailServer,
  kNoServerName,   // {0} text
  kMailTooLarge,   // {0} bytes of the mail, {1} of the setting
  kServerSmaller,  // {0} bytes of the mail, {1} of the server
  kNoUtf8,
  kServerSaid,  // {0} what happened, {1} the server's answer
  kMailUnknownHost,
  kMailNoConnection,
  kMailTimeOut,
  kMailHungUp,
  kMailNoEncryption,
  kMailCertificate,
  kMailLogin,
  kMailRefused,
  kMailGarbage,
  kMailOther,
  // Odette: {0} name of the dataset or path.
  kDatasetLength,  // {1} most characters
  kNoOutbox,
  kOutboxGone,
  kNoPartner,      // {0} attribute
  kStrangeAnswer,  // {1} path
  kJobThere,
  kStationRefused,  // {1} its answer
  kStationSilent,   // {1} seconds
  // The own send mode: {0} the program.
  kNoProgram,
  kNotStarted,  // {1} why
  kProgramSlow,
  kProgramKilled,  // {1} signal
  kProgramStatus,  // {1} status
  kProgramSilent,  // {1} the text that it did not say
  kProgramSaid,    // {0} what happened, {1} its output
  kProgramNul,
  // Failures of files, by their numbers: {0} description.
  kFileNotFound,
  kDiskFull,
  kNoPermission,
  kFileFailed,
};

// With "{0}", "{1}", ... replaced. German for "GER", English for every other language.
[[nodiscard]] std::string TextOf(const std::string& language, StatusText text,
                                 const std::vector<std::string>& values = {});

// An error whose description people get in their language; what() has it in English.
class Reason : public RuntimeError {
 public:
  explicit Reason(StatusText text, std::vector<std::string> values = {},
                  int number = error_number::kInvalidCall)
      : RuntimeError(number, TextOf({}, text, values)), text_(text), values_(std::move(values)) {}
  [[nodiscard]] std::string In(const std::string& language) const { return TextOf(language, text_, values_); }

 private:
  StatusText text_;
  std::vector<std::string> values_;
};

// The description of any error: that of a Reason in the language; others, those of files above all, keep
// theirs, behind what they are in the language.
[[nodiscard]] std::string ReasonText(const std::string& language, const std::exception& error);

}  // namespace tessel::sender
