// The texts of status and protocol in the language of the sender's session.
#pragma once

#include <string>
#include <vector>

namespace tessel::sender {

enum class StatusText {
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
};

// With "{0}", "{1}", ... replaced. German for "GER", English for every other language.
[[nodiscard]] std::string TextOf(const std::string& language, StatusText text,
                                 const std::vector<std::string>& values = {});

}  // namespace tessel::sender
