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
inline constexpr BothTexts kLatestTip{"Show the newest data exchange of the marked document",
                                      "Den neuesten Datenaustausch des markierten Dokuments zeigen"};

inline constexpr BothTexts kPropertiesTip{"Show the attributes of the marked object",
                                          "Die Attribute des markierten Objekts zeigen"};

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
inline constexpr BothTexts kDirectory{"Directory", "Verzeichnis"};

inline constexpr BothTexts kStructure{"Product structure", "Produktstruktur"};
inline constexpr BothTexts kExchanges{"Data exchanges", "Datenaustausche"};
inline constexpr BothTexts kProtocol{"Protocol", "Protokoll"};

inline constexpr BothTexts kStates[]{{"", ""},
                                     {"Checked in", "Eingecheckt"},
                                     {"Checked out", "Ausgecheckt"},
                                     {"Released", "Freigegeben"},
                                     {"Obsolete", "Ungültig"}};
inline constexpr BothTexts kPhases[]{
    {"", ""}, {"New", "Neu"}, {"Continued", "Fortgesetzt"}, {"Stopped", "Angehalten"}};

inline constexpr BothTexts kNothingSelected{"Selection for export: none", "Auswahl für den Export: keine"};
inline constexpr BothTexts kSelected{"Selection for export (%1): %2", "Auswahl für den Export (%1): %2"};
inline constexpr BothTexts kDocuments{"%1 of %2 documents", "%1 von %2 Dokumenten"};
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
inline constexpr BothTexts kExportFailed{"The export was not completed.",
                                         "Der Export wurde nicht abgeschlossen."};
inline constexpr BothTexts kNotRecorded{"Not recorded completely in the database:",
                                        "In der Datenbank nicht vollständig vermerkt:"};
inline constexpr BothTexts kAlreadyFinal{"Already final:", "Bereits fertig:"};
inline constexpr BothTexts kLoginRefused{"The user is unknown or the password is wrong.",
                                         "Der Benutzer ist unbekannt oder das Kennwort falsch."};
inline constexpr BothTexts kNoExample{"The sample company is not installed.",
                                      "Die Beispielfirma ist nicht installiert."};

}  // namespace tessel::client::texts
