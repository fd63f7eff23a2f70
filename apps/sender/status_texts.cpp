#include "sender/status_texts.h"

namespace tessel::sender {
namespace {

struct Row {
  StatusText text;
  const char* english;
  const char* german;
};

constexpr Row kRows[] = {
    {StatusText::kBeingSent, "Being sent (attempt {0})", "Wird versendet (Versuch {0})"},
    {StatusText::kSent, "Sent {0} to {1}", "Versendet {0} an {1}"},
    {StatusText::kStopped, "Stopped: {0}", "Angehalten: {0}"},
    {StatusText::kNextAttempt, "Attempt {0} of {1} failed, next at {2}: {3}",
     "Versuch {0} von {1} gescheitert, nächster um {2}: {3}"},
    {StatusText::kGivenUp, "given up after {0} attempts: {1}", "nach {0} Versuchen aufgegeben: {1}"},
    {StatusText::kOutcomeUnknown,
     "it is not known whether it arrived ({0}). Ask the recipient; \"Continue\" sends it once more",
     "es ist nicht bekannt, ob es ankam ({0}). Empfänger fragen; \"Fortsetzen\" sendet es noch einmal"},
    {StatusText::kWaiting, "Handed to the transfer station as {0}, acknowledgement to come",
     "Der Übertragungsstation als {0} übergeben, Quittung steht aus"},
    {StatusText::kSentAgain, "To be sent again", "Wird erneut versendet"},
    {StatusText::kMarkedSent, "Sent (confirmed by a person)", "Versendet (von einer Person bestätigt)"},
    {StatusText::kPacked, "Packed {0} files, {1} bytes, into {2}", "{0} Dateien, {1} Bytes, in {2} gepackt"},
    {StatusText::kByMail, "by mail through {0}", "per Mail über {0}"},
    {StatusText::kByOdette, "by Odette as {0}", "per Odette als {0}"},
    {StatusText::kByCommand, "by {0}", "durch {0}"},
    {StatusText::kWithoutSending, "Done, nothing to send", "Erledigt, ohne Versand"},
};

}  // namespace

std::string TextOf(const std::string& language, StatusText text, const std::vector<std::string>& values) {
  std::string result;
  for (const Row& row : kRows) {
    if (row.text == text) result = language == "GER" ? row.german : row.english;
  }
  // Values are not looked through for placeholders.
  for (std::size_t at = result.find('{'); at != std::string::npos; at = result.find('{', at)) {
    const auto index = static_cast<std::size_t>(result[at + 1] - '0');
    const std::string value = index < values.size() ? values[index] : std::string();
    result.replace(at, 3, value);
    at += value.size();
  }
  return result;
}

}  // namespace tessel::sender
