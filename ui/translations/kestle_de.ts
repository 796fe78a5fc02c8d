<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutView</name>
    <message>
        <source>About Kestle</source>
        <translation>Über Kestle</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later. It comes without any warranty.</source>
        <translation>Freie Software unter der GNU General Public License, Version 3 oder neuer. Ohne jede Gewährleistung.</translation>
    </message>
    <message>
        <source>Made with</source>
        <translation>Erstellt mit</translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>About Kestle</source>
        <translation>Über Kestle</translation>
    </message>
</context>
<context>
    <name>AccessRequest</name>
    <message>
        <source>Grant Access</source>
        <translation>Zugriff erlauben</translation>
    </message>
</context>
<context>
    <name>ByteCountText</name>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1 TB</translation>
    </message>
    <message>
        <source>%1 PB</source>
        <translation>%1 PB</translation>
    </message>
    <message>
        <source>%1 EB</source>
        <translation>%1 EB</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 KB</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
</context>
<context>
    <name>CardPicker</name>
    <message>
        <source>Card</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>⇥ Tab to switch card</source>
        <translation>⇥ Tab wechselt die Karte</translation>
    </message>
</context>
<context>
    <name>CardScreen</name>
    <message>
        <source>Card</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>Kestle needs permission to read and delete files on “%1”. Click Grant Access to allow it.</source>
        <translation>Kestle braucht Ihre Erlaubnis, um Dateien auf „%1“ zu lesen und zu löschen. Klicken Sie dazu auf „Zugriff erlauben“.</translation>
    </message>
    <message>
        <source>Insert an SD card</source>
        <translation>SD-Karte einlegen</translation>
    </message>
    <message>
        <source>Kestle reads RAW, JPEG, HEIF, TIFF, and common video from any camera&apos;s DCIM folder.</source>
        <translation>Kestle liest RAW, JPEG, HEIF, TIFF und gängige Videos aus dem DCIM-Ordner jeder Kamera.</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>Wird eingelesen …</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Grant Access…</source>
        <translation>Zugriff erlauben …</translation>
    </message>
    <message>
        <source>Session found — press ⏎ to resume</source>
        <translation>Sitzung gefunden – weiter mit ⏎</translation>
    </message>
    <message>
        <source>Press ⏎ to start culling</source>
        <translation>⏎ startet die Auswahl</translation>
    </message>
    <message>
        <source>macOS requires a one-time permission to read this card.</source>
        <translation>Das System verlangt eine einmalige Erlaubnis, um diese Karte zu lesen.</translation>
    </message>
    <message>
        <source>No photos or videos found on this card.</source>
        <translation>Auf dieser Karte sind keine Fotos oder Videos.</translation>
    </message>
    <message>
        <source>Kestle is waiting for a volume with a DCIM folder.</source>
        <translation>Kestle wartet auf ein Laufwerk mit einem DCIM-Ordner.</translation>
    </message>
</context>
<context>
    <name>CommandItem</name>
    <message>
        <source>not available</source>
        <translation>nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>ConfirmDelete</name>
    <message>
        <source>Permanently delete %1 from the card?</source>
        <translation>%1 endgültig von der Karte löschen?</translation>
    </message>
</context>
<context>
    <name>ConfirmDeleteContent</name>
    <message numerus="yes">
        <source>%n rejected items (%1). SD cards have no trash — this cannot be undone.</source>
        <translation>
            <numerusform>%n verworfene Aufnahme (%1). SD-Karten haben keinen Papierkorb – das lässt sich nicht rückgängig machen.</numerusform>
            <numerusform>%n verworfene Aufnahmen (%1). SD-Karten haben keinen Papierkorb – das lässt sich nicht rückgängig machen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CullScreen</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>clip</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>rejected</source>
        <translation>verworfen</translation>
    </message>
    <message>
        <source>zoom 100%</source>
        <translation>Zoom 100 %</translation>
    </message>
    <message>
        <source>cannot be shown</source>
        <translation>nicht darstellbar</translation>
    </message>
</context>
<context>
    <name>DeleteProgressView</name>
    <message>
        <source>Deleting %1 of %2</source>
        <translation>%1 von %2 wird gelöscht</translation>
    </message>
</context>
<context>
    <name>DeletionReasons</name>
    <message>
        <source>outside card volume</source>
        <translation>liegt nicht auf der Karte</translation>
    </message>
    <message>
        <source>file not found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
</context>
<context>
    <name>EnlargedReject</name>
    <message>
        <source>rejected, clip</source>
        <translation>verworfen, Clip</translation>
    </message>
    <message>
        <source>rejected, zoom 100%</source>
        <translation>verworfen, Zoom 100 %</translation>
    </message>
    <message>
        <source>rejected</source>
        <translation>verworfen</translation>
    </message>
    <message>
        <source>Space to close · X to rescue · Z to zoom</source>
        <translation>Leertaste schließt · X rettet · Z zoomt</translation>
    </message>
</context>
<context>
    <name>FailureList</name>
    <message>
        <source>Hide the files</source>
        <translation>Dateien ausblenden</translation>
    </message>
    <message>
        <source>Show the files</source>
        <translation>Dateien anzeigen</translation>
    </message>
    <message>
        <source>Files that could not be deleted</source>
        <translation>Dateien, die nicht gelöscht werden konnten</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>FilmstripThumb</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>clip</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>rejected</source>
        <translation>verworfen</translation>
    </message>
    <message>
        <source>current</source>
        <translation>aktuell</translation>
    </message>
</context>
<context>
    <name>FilmstripView</name>
    <message>
        <source>Filmstrip</source>
        <translation>Filmstreifen</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message numerus="yes">
        <source>%n rejected</source>
        <translation>
            <numerusform>%n verworfen</numerusform>
            <numerusform>%n verworfen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FolderQuestionContent</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>LibrariesModel</name>
    <message>
        <source>windows, drawing, D-Bus and network</source>
        <translation>Fenster, Darstellung, D-Bus und Netzwerk</translation>
    </message>
    <message>
        <source>capture settings of some formats</source>
        <translation>Aufnahmedaten mancher Formate</translation>
    </message>
    <message>
        <source>RAW pictures</source>
        <translation>RAW-Bilder</translation>
    </message>
    <message>
        <source>JPEG pictures</source>
        <translation>JPEG-Bilder</translation>
    </message>
    <message>
        <source>TIFF pictures</source>
        <translation>TIFF-Bilder</translation>
    </message>
    <message>
        <source>colour profiles</source>
        <translation>Farbprofile</translation>
    </message>
    <message>
        <source>HEIF pictures and frames of clips</source>
        <translation>HEIF-Bilder und Einzelbilder aus Clips</translation>
    </message>
    <message>
        <source>clips that play</source>
        <translation>Wiedergabe von Clips</translation>
    </message>
    <message>
        <source>work in the background</source>
        <translation>Arbeit im Hintergrund</translation>
    </message>
    <message>
        <source>sessions that are resumed</source>
        <translation>Fortsetzen von Sitzungen</translation>
    </message>
    <message>
        <source>signatures of newer versions</source>
        <translation>Signaturen neuerer Versionen</translation>
    </message>
</context>
<context>
    <name>LibraryList</name>
    <message>
        <source>Libraries and their licences</source>
        <translation>Bibliotheken und ihre Lizenzen</translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>Kestle</source>
        <translation>Kestle</translation>
    </message>
    <message>
        <source>About Kestle</source>
        <translation>Über Kestle</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Strg+,</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Strg+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <translation>Strg+Z</translation>
    </message>
    <message>
        <source>Undo Decision</source>
        <translation>Entscheidung zurücknehmen</translation>
    </message>
    <message>
        <source>Cull</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Reject (X)</source>
        <translation>Verwerfen (X)</translation>
    </message>
    <message>
        <source>Zoom 100% (Z)</source>
        <translation>Zoom 100 % (Z)</translation>
    </message>
    <message>
        <source>Toggle Info (I)</source>
        <translation>Info ein/aus (I)</translation>
    </message>
    <message>
        <source>Finish Culling → Review</source>
        <translation>Auswahl beenden → Prüfen</translation>
    </message>
    <message>
        <source>Back to Card Screen</source>
        <translation>Zurück zur Karte</translation>
    </message>
</context>
<context>
    <name>MetadataTexts</name>
    <message>
        <source>Weak</source>
        <translation>schwach</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>stark</translation>
    </message>
    <message>
        <source>Small</source>
        <translation>klein</translation>
    </message>
    <message>
        <source>Large</source>
        <translation>groß</translation>
    </message>
    <message>
        <source>WB %1</source>
        <translation>WB %1</translation>
    </message>
    <message>
        <source>H%1</source>
        <translation>L%1</translation>
    </message>
    <message>
        <source>S%1</source>
        <translation>S%1</translation>
    </message>
    <message>
        <source>Grain %1</source>
        <translation>Körnung %1</translation>
    </message>
    <message>
        <source>CC %1</source>
        <translation>CC %1</translation>
    </message>
    <message>
        <source>CCB %1</source>
        <translation>CCB %1</translation>
    </message>
</context>
<context>
    <name>Numbers</name>
    <message numerus="yes">
        <source>%n files</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n items</source>
        <comment>photographs and clips</comment>
        <translation>
            <numerusform>%n Aufnahme</numerusform>
            <numerusform>%n Aufnahmen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProcessNav</name>
    <message>
        <source>Card</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>Cull</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Review</source>
        <translation>Prüfen</translation>
    </message>
</context>
<context>
    <name>ProcessStep</name>
    <message>
        <source>current step</source>
        <translation>aktueller Schritt</translation>
    </message>
    <message>
        <source>not available</source>
        <translation>nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>PushButton</name>
    <message>
        <source>not available</source>
        <translation>nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>ReadOnlyNote</name>
    <message>
        <source>This card is write-protected. Kestle cannot delete from it.</source>
        <translation>Diese Karte ist schreibgeschützt. Kestle kann nichts von ihr löschen.</translation>
    </message>
</context>
<context>
    <name>RejectedBadge</name>
    <message>
        <source>Rejected</source>
        <translation>Verworfen</translation>
    </message>
</context>
<context>
    <name>ReviewCell</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>clip</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>selected</source>
        <translation>ausgewählt</translation>
    </message>
    <message>
        <source>cannot be shown</source>
        <translation>nicht darstellbar</translation>
    </message>
</context>
<context>
    <name>ReviewScreen</name>
    <message>
        <source>Rejects — last look</source>
        <translation>Ausschuss – letzter Blick</translation>
    </message>
    <message>
        <source>Nothing rejected. Esc to keep culling.</source>
        <translation>Nichts verworfen. Esc führt zurück zur Auswahl.</translation>
    </message>
    <message>
        <source>Rejects</source>
        <translation>Ausschuss</translation>
    </message>
    <message>
        <source>Esc back · Space enlarge · X rescue · ⏎ delete</source>
        <translation>Esc zurück · Leertaste größer · X retten · ⏎ löschen</translation>
    </message>
    <message>
        <source>Delete %1 — %2, %3</source>
        <translation>%1 löschen – %2, %3</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>X auto-advances to the next frame</source>
        <translation>X geht zur nächsten Aufnahme weiter</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Working</source>
        <translation>Bitte warten</translation>
    </message>
</context>
<context>
    <name>SpokenState</name>
    <message>
        <source>Card</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>Insert an SD card</source>
        <translation>SD-Karte einlegen</translation>
    </message>
    <message>
        <source>%1 can be read only with your permission. Press Return to grant it</source>
        <translation>%1 kann nur mit Ihrer Erlaubnis gelesen werden. Die Eingabetaste erteilt sie</translation>
    </message>
    <message>
        <source>Scanning %1</source>
        <translation>%1 wird eingelesen</translation>
    </message>
    <message>
        <source>No photos or videos found on %1</source>
        <translation>Auf %1 sind keine Fotos oder Videos</translation>
    </message>
    <message>
        <source>%1, session found. Press Return to resume</source>
        <translation>%1, Sitzung gefunden. Die Eingabetaste setzt sie fort</translation>
    </message>
    <message>
        <source>%1. Press Return to start culling</source>
        <translation>%1. Die Eingabetaste startet die Auswahl</translation>
    </message>
    <message>
        <source>Culling</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Rejects — last look</source>
        <translation>Ausschuss – letzter Blick</translation>
    </message>
    <message numerus="yes">
        <source>Deleting %n files</source>
        <translation>
            <numerusform>%n Datei wird gelöscht</numerusform>
            <numerusform>%n Dateien werden gelöscht</numerusform>
        </translation>
    </message>
    <message>
        <source>Deleted %1, kept %2</source>
        <translation>%1 gelöscht, %2 behalten</translation>
    </message>
    <message numerus="yes">
        <source>%n files</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n items</source>
        <comment>photographs and clips</comment>
        <translation>
            <numerusform>%n Aufnahme</numerusform>
            <numerusform>%n Aufnahmen</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing rejected</source>
        <translation>Nichts verworfen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>clip</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>rejected</source>
        <translation>verworfen</translation>
    </message>
    <message numerus="yes">
        <source>%n could not be deleted</source>
        <comment>files</comment>
        <translation>
            <numerusform>%n Datei konnte nicht gelöscht werden</numerusform>
            <numerusform>%n Dateien konnten nicht gelöscht werden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n rejected</source>
        <translation>
            <numerusform>%n verworfen</numerusform>
            <numerusform>%n verworfen</numerusform>
        </translation>
    </message>
    <message>
        <source>Rejected</source>
        <translation>Verworfen</translation>
    </message>
    <message>
        <source>No longer rejected</source>
        <translation>Nicht mehr verworfen</translation>
    </message>
    <message>
        <source>Enlarged</source>
        <translation>Vergrößert</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Zoom 100%</source>
        <translation>Zoom 100 %</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>Ganzes Bild</translation>
    </message>
</context>
<context>
    <name>SummaryView</name>
    <message>
        <source>Deleted %1, kept %2.</source>
        <translation>%1 gelöscht, %2 behalten.</translation>
    </message>
    <message numerus="yes">
        <source>%n could not be deleted.</source>
        <comment>files</comment>
        <translation>
            <numerusform>%n Datei konnte nicht gelöscht werden.</numerusform>
            <numerusform>%n Dateien konnten nicht gelöscht werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>Card ready to import in Photos or Lightroom.</source>
        <translation>Die Karte kann jetzt in Fotos oder Lightroom importiert werden.</translation>
    </message>
    <message>
        <source>Re-run the cull on this card to retry the remainder.</source>
        <translation>Wiederholen Sie die Auswahl auf dieser Karte, um auch den Rest zu löschen.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>TitleStrip</name>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Minimise</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Maximise</source>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>UpdateButtons</name>
    <message>
        <source>Open Software Centre</source>
        <translation>Softwareverwaltung öffnen</translation>
    </message>
    <message>
        <source>Open Page</source>
        <translation>Seite öffnen</translation>
    </message>
    <message>
        <source>Save to Downloads</source>
        <translation>In Downloads sichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>UpdateController</name>
    <message>
        <source>Your system keeps Kestle up to date</source>
        <translation>Ihr System hält Kestle aktuell</translation>
    </message>
    <message>
        <source>Kestle came with your system&apos;s software, and the software centre brings newer versions.</source>
        <translation>Kestle gehört zur Software Ihres Systems, und die Softwareverwaltung bringt neuere Versionen.</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>Suche nach einer neueren Version …</translation>
    </message>
    <message>
        <source>Kestle could not look for a newer version</source>
        <translation>Kestle konnte nicht nach einer neueren Version suchen</translation>
    </message>
    <message>
        <source>Kestle is up to date</source>
        <translation>Kestle ist aktuell</translation>
    </message>
    <message>
        <source>You have the newest version, %1.</source>
        <translation>Sie haben die neueste Version, %1.</translation>
    </message>
    <message>
        <source>There is a newer version, %1</source>
        <translation>Es gibt eine neuere Version, %1</translation>
    </message>
    <message>
        <source>You have %1. The newer version was signed by Kestle&apos;s makers.</source>
        <translation>Sie haben %1. Die neuere Version ist von den Entwicklern von Kestle signiert.</translation>
    </message>
    <message>
        <source>The server could not be reached, or did not answer.</source>
        <translation>Der Server war nicht erreichbar oder hat nicht geantwortet.</translation>
    </message>
    <message>
        <source>What the server answered could not be read.</source>
        <translation>Die Antwort des Servers war nicht lesbar.</translation>
    </message>
    <message>
        <source>What the server answered was not signed by Kestle&apos;s makers. It was thrown away.</source>
        <translation>Die Antwort des Servers war nicht von den Entwicklern von Kestle signiert. Sie wurde verworfen.</translation>
    </message>
    <message>
        <source>There was no room to keep the newer version until it is checked.</source>
        <translation>Es war kein Platz, um die neuere Version bis zur Prüfung aufzubewahren.</translation>
    </message>
    <message>
        <source>It could not be saved to %1.</source>
        <translation>In %1 konnte nicht gesichert werden.</translation>
    </message>
    <message>
        <source>Saved as %1 in %2.</source>
        <translation>Als %1 in %2 gesichert.</translation>
    </message>
    <message>
        <source>No browser could be opened. The page is %1</source>
        <translation>Es ließ sich kein Browser öffnen. Die Seite ist %1</translation>
    </message>
    <message>
        <source>No software centre could be opened. Your package manager brings newer versions.</source>
        <translation>Es ließ sich keine Softwareverwaltung öffnen. Ihre Paketverwaltung bringt neuere Versionen.</translation>
    </message>
    <message>
        <source>You have %1. The download was signed by Kestle&apos;s makers; of which version it is, only the server says.</source>
        <translation>Sie haben %1. Der Download ist von den Entwicklern von Kestle signiert; welche Version er enthält, sagt nur der Server.</translation>
    </message>
    <message>
        <source>Checking a newer version…</source>
        <translation>Eine neuere Version wird geprüft …</translation>
    </message>
    <message>
        <source>%1% of its download is here.</source>
        <translation>%1 % des Downloads sind da.</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Softwareaktualisierung</translation>
    </message>
</context>
<context>
    <name>VideoPlayerView</name>
    <message>
        <source>Clip</source>
        <translation>Clip</translation>
    </message>
</context>
<context>
    <name>VideoTimeline</name>
    <message>
        <source>Position in the clip</source>
        <translation>Position im Clip</translation>
    </message>
</context>
</TS>
