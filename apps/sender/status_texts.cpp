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
    {StatusText::kDataNul, "The data file is damaged: it holds a NUL character",
     "Die Datendatei ist beschädigt: sie enthält ein NUL-Zeichen"},
    {StatusText::kDataNoXml, "The data file is damaged: it is no XML: {0}",
     "Die Datendatei ist beschädigt: sie ist kein XML ({0})"},
    {StatusText::kDataRoot, "The data file is damaged: its root is \"{0}\"",
     "Die Datendatei ist beschädigt: ihre Wurzel ist \"{0}\""},
    {StatusText::kDataNoElement, "The data file is damaged: it has no element \"{0}\"",
     "Die Datendatei ist beschädigt: ihr fehlt das Element \"{0}\""},
    {StatusText::kDataTwice, "The data file is damaged: it has a second element \"{0}\"",
     "Die Datendatei ist beschädigt: sie hat ein zweites Element \"{0}\""},
    {StatusText::kDataNoNumber, "The data file is damaged: \"{0}\" is no number but \"{1}\"",
     "Die Datendatei ist beschädigt: \"{0}\" ist keine Zahl, sondern \"{1}\""},
    {StatusText::kDataNoClass, "The data file is damaged: \"{0}\" is no class id",
     "Die Datendatei ist beschädigt: \"{0}\" ist keine Klassennummer"},
    {StatusText::kDataFileName, "The data file is damaged: \"{0}\" is no plain file name but \"{1}\"",
     "Die Datendatei ist beschädigt: \"{0}\" ist kein einfacher Dateiname, sondern \"{1}\""},
    {StatusText::kDataNoMode, "The data file is damaged: there is no send mode {0}",
     "Die Datendatei ist beschädigt: es gibt keine Versandart {0}"},
    {StatusText::kDataNoAttribute, "The data file is damaged: class \"{0}\" has no attribute \"{1}\"",
     "Die Datendatei ist beschädigt: die Klasse \"{0}\" hat kein Attribut \"{1}\""},
    {StatusText::kDataForeign, "The data file is damaged: it is not for \"{0}\" to be reported in",
     "Die Datendatei ist beschädigt: \"{0}\" ist nicht für Meldungen da"},
    {StatusText::kDataOtherClass, "The data file is damaged: class \"{0}\" is none of data exchange objects",
     "Die Datendatei ist beschädigt: \"{0}\" ist keine Klasse von Datenaustauschobjekten"},
    {StatusText::kNoObject, "The data file names no data exchange object",
     "Die Datendatei nennt kein Datenaustauschobjekt"},
    {StatusText::kObjectGone, "The data exchange object {0} is gone",
     "Das Datenaustauschobjekt {0} gibt es nicht mehr"},
    {StatusText::kObjectElsewhere, "The data file names the object {0}, which belongs to {1}",
     "Die Datendatei nennt das Objekt {0}, das zu {1} gehört"},
    {StatusText::kObjectBefore, "The data file names the object {0}, and named {1} before",
     "Die Datendatei nennt das Objekt {0} und nannte zuvor {1}"},
    {StatusText::kObjectSent, "The object {0} is sent already", "Das Objekt {0} ist schon versendet"},
    {StatusText::kJournalMissing, "the journal {0} is missing", "das Journal {0} fehlt"},
    {StatusText::kJournalDamaged, "The journal {0} is damaged: {1}", "Das Journal {0} ist beschädigt: {1}"},
    {StatusText::kEndedMeanwhile, "the server monitor ended during the transfer",
     "der Servermonitor endete während der Übertragung"},
    {StatusText::kDocumentShrank,
     "{0} is missing, or shorter than its {1} bytes before; put it back and continue",
     "{0} fehlt oder ist kürzer als die {1} Bytes von zuvor; zurückbringen und fortsetzen"},
    {StatusText::kPackageName, "{0} bears the name of the package", "{0} trägt den Namen des Pakets"},
    {StatusText::kNotPlainName, "\"{0}\" in {1} is no plain file name",
     "\"{0}\" in {1} ist kein einfacher Dateiname"},
    {StatusText::kNotSendable,
     "{0} cannot be sent: it is no regular file, or named like the folder of the server monitor",
     "{0} kann nicht versendet werden: es ist keine gewöhnliche Datei oder heißt wie der Ordner des "
     "Servermonitors"},
    {StatusText::kNoWorkFolder, "{0} is no folder", "{0} ist kein Ordner"},
    {StatusText::kPackageFailed, "Cannot write the package {0}: {1}",
     "Das Paket {0} kann nicht geschrieben werden: {1}"},
    {StatusText::kPackageIncomplete, "Cannot write the package {0}: documents are missing in it",
     "Das Paket {0} kann nicht geschrieben werden: es fehlen Dokumente darin"},
    {StatusText::kPackageChanged,
     "Cannot write the package {0}: \"{1}\" changed while it was packed ({2} bytes before, {3} now)",
     "Das Paket {0} kann nicht geschrieben werden: \"{1}\" änderte sich beim Packen (vorher {2} Bytes, jetzt "
     "{3})"},
    {StatusText::kPackageOther,
     "Cannot write the package {0}: \"{1}\" is missing, or has another size than before",
     "Das Paket {0} kann nicht geschrieben werden: \"{1}\" fehlt oder hat eine andere Größe als zuvor"},
    {StatusText::kPackageEmpty, "Cannot write the package {0}: the directory holds no documents",
     "Das Paket {0} kann nicht geschrieben werden: das Verzeichnis enthält keine Dokumente"},
    {StatusText::kPackageUnreadable, "Cannot read the package {0}",
     "Das Paket {0} kann nicht gelesen werden"},
    {StatusText::kPackageShrank, "The package {0} became shorter while it was sent",
     "Das Paket {0} wurde beim Versenden kürzer"},
    {StatusText::kAddressControls, "\"{0}\" is no mail address: it holds control characters",
     "\"{0}\" ist keine Mailadresse: sie enthält Steuerzeichen"},
    {StatusText::kAddressForm, "\"{0}\" is no mail address: it is no NAME@DOMAIN",
     "\"{0}\" ist keine Mailadresse: sie ist nicht NAME@DOMAIN"},
    {StatusText::kAddressQuotes, "\"{0}\" is no mail address: it holds a character that needs quotes",
     "\"{0}\" ist keine Mailadresse: sie enthält ein Zeichen, das Anführungszeichen braucht"},
    {StatusText::kAddressDomain, "\"{0}\" is no mail address: there can be no such domain",
     "\"{0}\" ist keine Mailadresse: eine solche Domäne kann es nicht geben"},
    {StatusText::kAddressLength, "\"{0}\" is no mail address: it is too long, or an option",
     "\"{0}\" ist keine Mailadresse: sie ist zu lang oder eine Option"},
    {StatusText::kAddressOpen, "\"{0}\" is no mail address: the angle bracket stays open",
     "\"{0}\" ist keine Mailadresse: die spitze Klammer bleibt offen"},
    {StatusText::kNoAddress, "There is no mail address", "Es ist keine Mailadresse angegeben"},
    {StatusText::kSeveralSenders, "\"{0}\" is more than one sender", "\"{0}\" ist mehr als ein Absender"},
    {StatusText::kNoMailServer, "neither the data file nor the settings name a mail server",
     "weder die Datendatei noch die Einstellungen nennen einen Mailserver"},
    {StatusText::kNoServerName, "\"{0}\" names no mail server", "\"{0}\" nennt keinen Mailserver"},
    {StatusText::kMailTooLarge, "the mail has {0} bytes, allowed are {1} (setting MaxSize)",
     "die Mail hat {0} Bytes, erlaubt sind {1} (Einstellung MaxSize)"},
    {StatusText::kServerSmaller, "the mail has {0} bytes, the server takes {1}",
     "die Mail hat {0} Bytes, der Server nimmt {1}"},
    {StatusText::kNoUtf8, "the server takes no addresses beyond ASCII (SMTPUTF8)",
     "der Server nimmt keine Adressen mit Zeichen jenseits von ASCII (SMTPUTF8)"},
    {StatusText::kServerSaid, "{0}; the server said: {1}", "{0}; der Server sagte: {1}"},
    {StatusText::kMailUnknownHost, "the server's name is not known ({0})",
     "der Name des Servers ist nicht bekannt ({0})"},
    {StatusText::kMailNoConnection, "no connection to the server ({0})", "keine Verbindung zum Server ({0})"},
    {StatusText::kMailTimeOut, "no answer in time ({0})", "keine Antwort in der gegebenen Zeit ({0})"},
    {StatusText::kMailHungUp, "the connection broke ({0})", "die Verbindung brach ab ({0})"},
    {StatusText::kMailNoEncryption, "no encrypted connection ({0})", "keine verschlüsselte Verbindung ({0})"},
    {StatusText::kMailCertificate, "the server's certificate is not accepted ({0})",
     "das Zertifikat des Servers wird nicht anerkannt ({0})"},
    {StatusText::kMailLogin, "the server does not accept the login ({0})",
     "der Server nimmt die Anmeldung nicht an ({0})"},
    {StatusText::kMailRefused, "the server refused it ({0})", "der Server wies es ab ({0})"},
    {StatusText::kMailGarbage, "the server's answers are no mail protocol ({0})",
     "die Antworten des Servers sind kein Mailprotokoll ({0})"},
    {StatusText::kMailOther, "the transfer failed ({0})", "die Übertragung misslang ({0})"},
    {StatusText::kDatasetLength, "the dataset name {0} is longer than {1} characters",
     "der Datensatzname {0} ist länger als {1} Zeichen"},
    {StatusText::kNoOutbox, "the settings name no outbox of a transfer station",
     "die Einstellungen nennen keinen Ausgang einer Übertragungsstation"},
    {StatusText::kOutboxGone, "the outbox {0} is not there", "der Ausgang {0} ist nicht da"},
    {StatusText::kNoPartner, "the company has no value in {0}, which names the partner",
     "die Firma hat keinen Wert in {0}, das den Partner nennt"},
    {StatusText::kStrangeAnswer, "the station has acknowledged {0}, which was not handed over; take {1} away",
     "die Station quittierte {0}, das nicht übergeben wurde; {1} wegnehmen"},
    {StatusText::kJobThere, "the outbox holds {0}.job already", "im Ausgang liegt {0}.job schon"},
    {StatusText::kStationRefused, "the transfer station refused {0}: {1}",
     "die Übertragungsstation wies {0} ab: {1}"},
    {StatusText::kStationSilent, "no acknowledgement of {0} after {1} s",
     "keine Quittung für {0} nach {1} s"},
    {StatusText::kNoProgram, "the settings name no program for the own send mode",
     "die Einstellungen nennen kein Programm für die eigene Versandart"},
    {StatusText::kNotStarted, "{0} cannot be started: {1}", "{0} kann nicht gestartet werden: {1}"},
    {StatusText::kProgramSlow, "{0} did not end in time and was killed",
     "{0} endete nicht rechtzeitig und wurde abgebrochen"},
    {StatusText::kProgramKilled, "{0} was ended by signal {1}", "{0} wurde durch Signal {1} beendet"},
    {StatusText::kProgramStatus, "{0} ended with status {1}", "{0} endete mit Status {1}"},
    {StatusText::kProgramSilent, "{0} ended with status 0, but did not say \"{1}\"",
     "{0} endete mit Status 0, sagte aber nicht \"{1}\""},
    {StatusText::kProgramSaid, "{0}; it said: {1}", "{0}; es sagte: {1}"},
    {StatusText::kProgramNul, "an argument of the own send mode holds a NUL character",
     "ein Argument der eigenen Versandart enthält ein NUL-Zeichen"},
    {StatusText::kFileNotFound, "{0}", "nicht gefunden ({0})"},
    {StatusText::kDiskFull, "{0}", "der Datenträger ist voll ({0})"},
    {StatusText::kNoPermission, "{0}", "es fehlt ein Recht ({0})"},
    {StatusText::kFileFailed, "{0}", "Fehler beim Zugriff auf eine Datei ({0})"},
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

std::string ReasonText(const std::string& language, const std::exception& error) {
  if (const auto* reason = dynamic_cast<const Reason*>(&error)) return reason->In(language);
  const auto* numbered = dynamic_cast<const RuntimeError*>(&error);
  switch (numbered == nullptr ? 0 : numbered->Number()) {
    case error_number::kFileNotFound:
    case error_number::kPathNotFound:
      return TextOf(language, StatusText::kFileNotFound, {error.what()});
    case error_number::kDiskFull:
      return TextOf(language, StatusText::kDiskFull, {error.what()});
    case error_number::kPermissionDenied:
      return TextOf(language, StatusText::kNoPermission, {error.what()});
    case error_number::kDeviceIo:
    case error_number::kFileAlreadyExists:
    case error_number::kPathFileAccess:
      return TextOf(language, StatusText::kFileFailed, {error.what()});
    default:
      return error.what();
  }
}

}  // namespace tessel::sender
