// Texts of the desktop client.
#pragma once

#include "qt/language.h"

namespace tessel::client::texts {

using qt::BothTexts;

inline constexpr BothTexts kWindowTitle{"%1 - Pelicore", "%1 - Pelicore"};
inline constexpr BothTexts kSearch{"Search documents (Ctrl+F)", "Dokumente suchen (Strg+F)"};
inline constexpr BothTexts kAllClasses{"All classes", "Alle Klassen"};
inline constexpr BothTexts kAllStates{"All states", "Alle Zustände"};

inline constexpr BothTexts kCollect{"&Collect", "&Sammeln"};
inline constexpr BothTexts kExport{"&Export...", "&Exportieren..."};
inline constexpr BothTexts kExportStructure{"Export with &folder structure...",
                                            "Exportieren mit &Ordnerstruktur..."};
inline constexpr BothTexts kLock{"&Lock", "S&perren"};
inline constexpr BothTexts kUnlock{"&Unlock", "&Entsperren"};
inline constexpr BothTexts kContinue{"&Continue", "&Fortsetzen"};
inline constexpr BothTexts kLatest{"Latest e&xchange", "&Letzter Austausch"};
inline constexpr BothTexts kProperties{"&Properties", "E&igenschaften"};
inline constexpr BothTexts kRefresh{"&Refresh", "&Aktualisieren"};
inline constexpr BothTexts kOpen{"&Open database...", "Datenbank &öffnen..."};
inline constexpr BothTexts kOpenTitle{"Open database", "Datenbank öffnen"};
inline constexpr BothTexts kQuit{"&Quit", "&Beenden"};
inline constexpr BothTexts kFileMenu{"&Database", "&Datenbank"};
inline constexpr BothTexts kObjectMenu{"D&ocuments", "D&okumente"};
inline constexpr BothTexts kExchangeMenu{"Data e&xchange", "Daten&austausch"};

inline constexpr BothTexts kCollectTip{"Add the marked documents to the selection for the export",
                                       "Die markierten Dokumente in die Auswahl für den Export aufnehmen"};
inline constexpr BothTexts kExportTip{"Export the selection", "Die Auswahl exportieren"};
inline constexpr BothTexts kExportStructureTip{
    "Export the one selected document into a folder structure",
    "Das eine ausgewählte Dokument in eine Ordnerstruktur exportieren"};
inline constexpr BothTexts kLockTip{"Lock the marked documents for the data exchange",
                                    "Die markierten Dokumente für den Datenaustausch sperren"};
inline constexpr BothTexts kUnlockTip{"Lift the lock of the marked documents",
                                      "Die Sperre der markierten Dokumente aufheben"};
inline constexpr BothTexts kContinueTip{"Continue the marked exchange that was stopped",
                                        "Den markierten angehaltenen Austausch fortsetzen"};
inline constexpr BothTexts kSendAgain{"Send a&gain", "Erneut &versenden"};
inline constexpr BothTexts kSendAgainTip{
    "Send the marked exchange, which is sent or stopped, once more",
    "Den markierten Austausch, versendet oder angehalten, noch einmal versenden"};
inline constexpr BothTexts kSendAgainAsk{"%1 is sent. Shall it be sent to %2 once more?",
                                         "%1 ist versendet. Soll es noch einmal an %2 gehen?"};
inline constexpr BothTexts kNotSentAgain{"The data exchange is not sent again:",
                                         "Der Datenaustausch wird nicht erneut versendet:"};
inline constexpr BothTexts kLatestTip{"Show the newest data exchange of the marked document",
                                      "Den neuesten Datenaustausch des markierten Dokuments zeigen"};

inline constexpr BothTexts kPropertiesTip{"Show the attributes of the marked object",
                                          "Die Attribute des markierten Objekts zeigen"};

inline constexpr BothTexts kCopying{"Copying %1: %2 %", "%1 wird kopiert: %2 %"};

inline constexpr BothTexts kNumber{"Id", "Nummer"};
inline constexpr BothTexts kRevision{"Rev.", "Rev."};
inline constexpr BothTexts kDescription{"Description", "Bezeichnung"};
inline constexpr BothTexts kState{"State", "Zustand"};
inline constexpr BothTexts kLockedBy{"Locked by", "Gesperrt von"};
inline constexpr BothTexts kClass{"Class", "Klasse"};
inline constexpr BothTexts kStatus{"Status", "Status"};
inline constexpr BothTexts kPhase{"Phase", "Phase"};
inline constexpr BothTexts kCompany{"Company", "Firma"};
inline constexpr BothTexts kContact{"Contact person", "Kontaktperson"};
inline constexpr BothTexts kDate{"Date", "Datum"};
inline constexpr BothTexts kSender{"Sender", "Absender"};
inline constexpr BothTexts kDocumentCount{"Documents", "Dokumente"};
inline constexpr BothTexts kDirectory{"Directory", "Verzeichnis"};
inline constexpr BothTexts kUnknown{"unknown", "unbekannt"};
inline constexpr BothTexts kUnknownDirectory{"not here; recorded when it is sent",
                                             "nicht hier; wird beim Versand vermerkt"};

inline constexpr BothTexts kStructure{"Product structure", "Produktstruktur"};
inline constexpr BothTexts kExchanges{"Data exchanges", "Datenaustausche"};
inline constexpr BothTexts kProtocol{"Protocol", "Protokoll"};

inline constexpr BothTexts kStates[]{{"", ""},
                                     {"Checked in", "Eingecheckt"},
                                     {"Checked out", "Ausgecheckt"},
                                     {"Released", "Freigegeben"},
                                     {"Obsolete", "Ungültig"}};
inline constexpr BothTexts kPhases[]{
    {"", ""}, {"New", "Neu"}, {"Continued", "Fortgesetzt"}, {"Stopped", "Angehalten"}, {"Sent", "Versendet"}};

inline constexpr BothTexts kNothingSelected{"Selection for export: none", "Auswahl für den Export: keine"};
inline constexpr BothTexts kSelected{"Selection for export (%1): %2", "Auswahl für den Export (%1): %2"};
inline constexpr BothTexts kDocuments{"%1 of %2 documents", "%1 von %2 Dokumenten"};
inline constexpr BothTexts kDocumentsShort{"%1 / %2", "%1 / %2"};
inline constexpr BothTexts kLoggedIn{"%1 on %2", "%1 an %2"};

inline constexpr BothTexts kChoice{"Which database shall be opened?",
                                   "Welche Datenbank soll geöffnet werden?"};
inline constexpr BothTexts kChoiceLast{"Open the last one: %1", "Die letzte öffnen: %1"};
inline constexpr BothTexts kChoiceOpen{"Open another one...", "Eine andere öffnen..."};
inline constexpr BothTexts kChoiceFirst{"Open a database...", "Eine Datenbank öffnen..."};
inline constexpr BothTexts kChoiceCreate{"Create the sample company...", "Die Beispielfirma anlegen..."};
inline constexpr BothTexts kDatabases{"Databases (*.db);;All files (*)",
                                      "Datenbanken (*.db);;Alle Dateien (*)"};
inline constexpr BothTexts kError{"Pelicore", "Pelicore"};
inline constexpr BothTexts kExportTitle{"Export - Pelicore", "Export - Pelicore"};
inline constexpr BothTexts kExportDone{"The export was handed over.", "Der Export wurde übergeben."};
inline constexpr BothTexts kExportFailed{"The export was not completed.",
                                         "Der Export wurde nicht abgeschlossen."};
inline constexpr BothTexts kExportIncomplete{
    "The export was handed over, but not everything is as it should be.",
    "Der Export wurde übergeben, aber nicht alles ist, wie es sein soll."};
inline constexpr BothTexts kUnrecorded{"not recorded", "nicht vermerkt"};
inline constexpr BothTexts kHalfRecorded{"not recorded completely", "nicht vollständig vermerkt"};
inline constexpr BothTexts kMonitorFailed{
    "The sending program was not started: nothing is sent until it runs.",
    "Das Versandprogramm wurde nicht gestartet: Es wird nichts versendet, bis es läuft."};
inline constexpr BothTexts kHandedOver{"Handed over", "Übergeben"};
inline constexpr BothTexts kProblems{"Problems", "Probleme"};
inline constexpr BothTexts kExchange{"Data exchange", "Datenaustausch"};
inline constexpr BothTexts kOpenFolder{"Open &folder", "&Ordner öffnen"};
inline constexpr BothTexts kOpenFolderTip{"Open the folder of the marked exchange",
                                          "Den Ordner des markierten Austauschs öffnen"};
inline constexpr BothTexts kNoFolder{"The folder is not there (any more): %1",
                                     "Den Ordner gibt es nicht (mehr): %1"};
inline constexpr BothTexts kCannotOpen{"No program opens %1", "Kein Programm öffnet %1"};

inline constexpr BothTexts kNotCollected{"%1 of %2 documents were not added to the selection:",
                                         "%1 von %2 Dokumenten wurden nicht in die Auswahl aufgenommen:"};
// By CollectRefusal.
inline constexpr BothTexts kRefusals[]{
    {"", ""},
    {"is selected already", "ist schon ausgewählt"},
    {"is no document for the data exchange", "ist kein Dokument für den Datenaustausch"},
    {"is of a class without files", "gehört zu einer Klasse ohne Dateien"},
    {"has no file", "hat keine Datei"},
    {"has to be checked in, released or obsolete", "muss eingecheckt, freigegeben oder ungültig sein"}};
inline constexpr BothTexts kMore{"and %1 more", "und %1 weitere"};

inline constexpr BothTexts kNotLocked{"Not locked:", "Nicht gesperrt:"};
inline constexpr BothTexts kNotUnlocked{"Not unlocked:", "Nicht entsperrt:"};
inline constexpr BothTexts kCannotLock{"cannot be locked now", "kann jetzt nicht gesperrt werden"};
inline constexpr BothTexts kIsNotLocked{"is not locked", "ist nicht gesperrt"};
inline constexpr BothTexts kLockFailed{"could not be changed", "konnte nicht geändert werden"};
inline constexpr BothTexts kNotContinued{"The data exchange was not continued:",
                                         "Der Datenaustausch wurde nicht fortgesetzt:"};
inline constexpr BothTexts kNotStopped{"It is not stopped.", "Er ist nicht angehalten."};
inline constexpr BothTexts kNoExchangeFolder{"Its directory names no folder: %1",
                                             "Sein Verzeichnis nennt keinen Ordner: %1"};
inline constexpr BothTexts kNotRenamed{"The folder %1 could not be renamed to %2.",
                                       "Der Ordner %1 konnte nicht in %2 umbenannt werden."};
inline constexpr BothTexts kNotUpdated{"Its state could not be written.",
                                       "Sein Zustand konnte nicht geschrieben werden."};
inline constexpr BothTexts kNotReadable{"It could not be read.", "Er konnte nicht gelesen werden."};

inline constexpr BothTexts kSelection{"Show &selection...", "Auswahl &zeigen..."};
inline constexpr BothTexts kSelectionTip{"Look at the selection for the export and take from it",
                                         "Die Auswahl für den Export ansehen und daraus entfernen"};
inline constexpr BothTexts kSelectionTitle{"Selection for export", "Auswahl für den Export"};
inline constexpr BothTexts kRemove{"&Remove", "&Entfernen"};
inline constexpr BothTexts kEmpty{"&Empty", "&Leeren"};

inline constexpr BothTexts kSettings{"&Settings of the site...", "&Einstellungen der Firma..."};
inline constexpr BothTexts kSettingsTitle{"Settings of the data exchange",
                                          "Einstellungen des Datenaustauschs"};
inline constexpr BothTexts kSettingsObject{"Settings object and its users",
                                           "Einstellungsobjekt und seine Benutzer"};
inline constexpr BothTexts kNoSettings{"No user of the database has a settings object.",
                                       "Kein Benutzer der Datenbank hat ein Einstellungsobjekt."};
inline constexpr BothTexts kKeyName{"Key", "Schlüssel"};
inline constexpr BothTexts kValue{"Value", "Wert"};
inline constexpr BothTexts kDefault{"Default", "Vorgabe"};
inline constexpr BothTexts kMeaning{"Meaning", "Bedeutung"};
inline constexpr BothTexts kTakeDefault{"Take the &default", "&Vorgabe nehmen"};
inline constexpr BothTexts kProgramDirectory{"(the program's directory)", "(Verzeichnis des Programms)"};
inline constexpr BothTexts kNotTaken{"%1 was not taken: %2", "%1 wurde nicht übernommen: %2"};
inline constexpr BothTexts kBareLineFeeds{
    "The text was saved with line ends that nothing is found behind; OK saves it with the right ones.",
    "Der Text wurde mit Zeilenenden gespeichert, hinter denen nichts gefunden wird; OK speichert ihn mit den "
    "richtigen."};

inline constexpr BothTexts kHelpMenu{"&Help", "&Hilfe"};
inline constexpr BothTexts kHelp{"&Keys and documentation", "&Tasten und Dokumentation"};
inline constexpr BothTexts kHelpTitle{"Help - Pelicore", "Hilfe - Pelicore"};
inline constexpr BothTexts kHelpSteps{
    "To export documents: mark them, collect them, export the selection and follow the pages. What was "
    "handed "
    "over is listed below the documents.",
    "So werden Dokumente exportiert: markieren, sammeln, die Auswahl exportieren und den Seiten folgen. Was "
    "übergeben wurde, steht unter den Dokumenten."};
inline constexpr BothTexts kKey{"Key", "Taste"};
inline constexpr BothTexts kAction{"Action", "Aktion"};
inline constexpr BothTexts kOpenDocs{"Open &documentation", "&Dokumentation öffnen"};
inline constexpr BothTexts kAboutMenu{"&About", "Ü&ber"};
inline constexpr BothTexts kAboutTitle{"About - Pelicore", "Über - Pelicore"};
inline constexpr BothTexts kAbout{
    "prjTessel %1\nSupplier data exchange for product data\n\nDatabase: %2\nQt %3",
    "prjTessel %1\nDatenaustausch mit Lieferanten für Produktdaten\n\nDatenbank: %2\nQt %3"};
inline constexpr BothTexts kExampleUsers{
    "Users of the sample company, all without a password: anna (German), ben (English, exchange office), "
    "admin",
    "Benutzer der Beispielfirma, alle ohne Kennwort: anna (Deutsch), ben (Englisch, Austauschbüro), admin"};
inline constexpr BothTexts kLoginRefused{"The user is unknown or the password is wrong.",
                                         "Der Benutzer ist unbekannt oder das Kennwort falsch."};
inline constexpr BothTexts kNoExample{"The sample company is not installed.",
                                      "Die Beispielfirma ist nicht installiert."};

}  // namespace tessel::client::texts
