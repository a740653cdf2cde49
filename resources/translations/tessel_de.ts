<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>About</name>
    <message>
        <source>About Tessel</source>
        <translation>Über Tessel</translation>
    </message>
    <message>
        <source>Read, search and annotate the macOS unified log, on any machine.

Free software under the MIT licence.</source>
        <translation>Das Unified Log von macOS lesen, durchsuchen und mit Notizen versehen, auf jedem Rechner.

Freie Software unter der MIT-Lizenz.</translation>
    </message>
</context>
<context>
    <name>ArchiveDialog</name>
    <message>
        <source>Archive:</source>
        <translation>Archiv:</translation>
    </message>
    <message>
        <source>Choose a Log Archive</source>
        <translation>Ein Logarchiv wählen</translation>
    </message>
</context>
<context>
    <name>ArchiveItems</name>
    <message>
        <source>Log archive</source>
        <translation>Logarchiv</translation>
    </message>
</context>
<context>
    <name>ArchiveView</name>
    <message>
        <source>Logarchive Tool</source>
        <translation>Logarchive Tool</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>CSV</source>
        <translation>CSV</translation>
    </message>
    <message>
        <source>Create Logarchive</source>
        <translation>Create Logarchive</translation>
    </message>
    <message>
        <source>Create a new logarchive from log folders</source>
        <translation>Create a new logarchive from log folders</translation>
    </message>
    <message>
        <source>Catalogue</source>
        <translation>Catalogue</translation>
    </message>
    <message>
        <source>Catalogue an existing logarchive</source>
        <translation>Catalogue an existing logarchive</translation>
    </message>
    <message>
        <source>Analyse</source>
        <translation>Analyse</translation>
    </message>
    <message>
        <source>Analyse the contents of an existing logarchive</source>
        <translation>Analyse the contents of an existing logarchive</translation>
    </message>
    <message>
        <source>Save Text</source>
        <translation>Save Text</translation>
    </message>
    <message>
        <source>Save the contents of this window to a file</source>
        <translation>Save the contents of this window to a file</translation>
    </message>
    <message>
        <source>Create &amp;Logarchive…</source>
        <translation>Create &amp;Logarchive…</translation>
    </message>
    <message>
        <source>Ca&amp;talogue…</source>
        <translation>Ca&amp;talogue…</translation>
    </message>
    <message>
        <source>&amp;Analyse…</source>
        <translation>&amp;Analyse…</translation>
    </message>
    <message>
        <source>&amp;Save Text…</source>
        <translation>&amp;Save Text…</translation>
    </message>
</context>
<context>
    <name>ContentActions</name>
    <message>
        <source>Get Log</source>
        <translation>Get Log</translation>
    </message>
    <message>
        <source>&amp;Get Log</source>
        <translation>&amp;Get Log</translation>
    </message>
    <message>
        <source>Load log entries</source>
        <translation>Load log entries</translation>
    </message>
    <message>
        <source>Use Logarchive</source>
        <translation>Use Logarchive</translation>
    </message>
    <message>
        <source>Use &amp;Logarchive…</source>
        <translation>Use &amp;Logarchive…</translation>
    </message>
    <message>
        <source>Use Logarchive as log source</source>
        <translation>Use Logarchive as log source</translation>
    </message>
    <message>
        <source>Read JSON</source>
        <translation>Read JSON</translation>
    </message>
    <message>
        <source>&amp;Read JSON…</source>
        <translation>&amp;Read JSON…</translation>
    </message>
    <message>
        <source>Read log from JSON file</source>
        <translation>Read log from JSON file</translation>
    </message>
    <message>
        <source>Add Note</source>
        <translation>Add Note</translation>
    </message>
    <message>
        <source>Add &amp;Note</source>
        <translation>Add &amp;Note</translation>
    </message>
    <message>
        <source>Add note to selected entries.</source>
        <translation>Add note to selected entries.</translation>
    </message>
    <message>
        <source>Gloss</source>
        <translation>Gloss</translation>
    </message>
    <message>
        <source>&amp;Gloss</source>
        <translation>&amp;Gloss</translation>
    </message>
    <message>
        <source>Show gloss editor</source>
        <translation>Show gloss editor</translation>
    </message>
    <message>
        <source>Reduce</source>
        <translation>Reduce</translation>
    </message>
    <message>
        <source>&amp;Reduce</source>
        <translation>&amp;Reduce</translation>
    </message>
    <message>
        <source>Reduce log entries to search results</source>
        <translation>Reduce log entries to search results</translation>
    </message>
    <message>
        <source>Save JSON</source>
        <translation>Save JSON</translation>
    </message>
    <message>
        <source>&amp;Save JSON…</source>
        <translation>&amp;Save JSON…</translation>
    </message>
    <message>
        <source>Save log entries in JSON file</source>
        <translation>Save log entries in JSON file</translation>
    </message>
    <message>
        <source>Save RTF</source>
        <translation>Save RTF</translation>
    </message>
    <message>
        <source>Save R&amp;TF…</source>
        <translation>Save R&amp;TF…</translation>
    </message>
    <message>
        <source>Save log entries as Rich Text</source>
        <translation>Save log entries as Rich Text</translation>
    </message>
    <message>
        <source>Set Predicate</source>
        <translation>Set Predicate</translation>
    </message>
    <message>
        <source>Set &amp;Predicate…</source>
        <translation>Set &amp;Predicate…</translation>
    </message>
    <message>
        <source>Write the special predicate</source>
        <translation>Das besondere Prädikat schreiben</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected entries</source>
        <translation>Ausgewählte Einträge kopieren</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select all shown entries</source>
        <translation>Alle gezeigten Einträge auswählen</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>&amp;Suchen…</translation>
    </message>
    <message>
        <source>Go to the search field</source>
        <translation>Zum Suchfeld gehen</translation>
    </message>
    <message>
        <source>&amp;Full Fields</source>
        <translation>&amp;Full Fields</translation>
    </message>
    <message>
        <source>Show &amp;Signposts</source>
        <translation>Show &amp;Signposts</translation>
    </message>
    <message>
        <source>Larger Text</source>
        <translation>Größerer Text</translation>
    </message>
    <message>
        <source>&amp;Larger Text</source>
        <translation>&amp;Größerer Text</translation>
    </message>
    <message>
        <source>Enlarge the text of the entries</source>
        <translation>Den Text der Einträge vergrößern</translation>
    </message>
    <message>
        <source>Smaller Text</source>
        <translation>Kleinerer Text</translation>
    </message>
    <message>
        <source>S&amp;maller Text</source>
        <translation>&amp;Kleinerer Text</translation>
    </message>
    <message>
        <source>Shrink the text of the entries</source>
        <translation>Den Text der Einträge verkleinern</translation>
    </message>
    <message>
        <source>Normal Text</source>
        <translation>Normaler Text</translation>
    </message>
    <message>
        <source>&amp;Normal Text</source>
        <translation>&amp;Normaler Text</translation>
    </message>
    <message>
        <source>Show the text of the entries in its normal size</source>
        <translation>Den Text der Einträge in gewöhnlicher Größe zeigen</translation>
    </message>
</context>
<context>
    <name>ContentState</name>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Processes</source>
        <translation>Processes</translation>
    </message>
    <message>
        <source>Senders</source>
        <translation>Senders</translation>
    </message>
    <message>
        <source>Subsystems</source>
        <translation>Subsystems</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message>
        <source>%1 entries</source>
        <translation>%1 entries</translation>
    </message>
    <message>
        <source>No results found for &quot;%1&quot; in %2</source>
        <translation>No results found for &quot;%1&quot; in %2</translation>
    </message>
    <message>
        <source>The log archive “%1” cannot be used: there is no such folder.</source>
        <translation>Das Logarchiv „%1“ kann nicht benutzt werden: Diesen Ordner gibt es nicht.</translation>
    </message>
    <message>
        <source>“%1” is not a file of this computer.</source>
        <translation>„%1“ ist keine Datei dieses Rechners.</translation>
    </message>
    <message>
        <source>The folder “%1” is not a log archive: it holds no log files.</source>
        <translation>Der Ordner „%1“ ist kein Logarchiv: Er enthält keine Logdateien.</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Search field</source>
        <translation>Suchfeld</translation>
    </message>
    <message>
        <source>Set search field</source>
        <translation>Set search field</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>Search Field</source>
        <translation>Suchfeld</translation>
    </message>
    <message>
        <source>&amp;Search Field</source>
        <translation>Such&amp;feld</translation>
    </message>
    <message>
        <source>Reading the log</source>
        <translation>Das Log wird gelesen</translation>
    </message>
    <message>
        <source>%1 entries found
%2 entries read</source>
        <translation>%1 Einträge gefunden
%2 Einträge gelesen</translation>
    </message>
    <message>
        <source>Looking through the log files</source>
        <translation>Die Protokolldateien werden durchgesehen</translation>
    </message>
</context>
<context>
    <name>ControlRows</name>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Period (seconds)</source>
        <translation>Period (seconds)</translation>
    </message>
    <message>
        <source>Max entries</source>
        <translation>Max entries</translation>
    </message>
    <message>
        <source>Show Signposts</source>
        <translation>Show Signposts</translation>
    </message>
    <message>
        <source>Full Fields</source>
        <translation>Full Fields</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>:</source>
        <translation>:</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>Set predicate</source>
        <translation>Set predicate</translation>
    </message>
    <message>
        <source>Write the special predicate</source>
        <translation>Das besondere Prädikat schreiben</translation>
    </message>
    <message>
        <source>Predicate text</source>
        <translation>Text zum Prädikat</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>‼️ Logarchive</source>
        <translation>‼️ Logarchive</translation>
    </message>
    <message>
        <source>Using a log archive</source>
        <translation>Ein Logarchiv wird benutzt</translation>
    </message>
    <message>
        <source>Predicate to use</source>
        <translation>Prädikat zum Abrufen</translation>
    </message>
    <message>
        <source>Number of entries</source>
        <translation>Anzahl der Einträge</translation>
    </message>
    <message>
        <source>Show Si&amp;gnposts</source>
        <translation>Show Si&amp;gnposts</translation>
    </message>
    <message>
        <source>Full Fie&amp;lds</source>
        <translation>Full Fie&amp;lds</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>&amp;Period (seconds)</source>
        <translation>&amp;Period (seconds)</translation>
    </message>
    <message>
        <source>&amp;Max entries</source>
        <translation>&amp;Max entries</translation>
    </message>
    <message>
        <source>P&amp;redicate</source>
        <translation>P&amp;redicate</translation>
    </message>
    <message>
        <source>&amp;Note: </source>
        <translation>&amp;Note: </translation>
    </message>
</context>
<context>
    <name>DiagnosticsView</name>
    <message>
        <source>Diagnostics Tool</source>
        <translation>Diagnostics Tool</translation>
    </message>
    <message>
        <source>CSV</source>
        <translation>CSV</translation>
    </message>
    <message>
        <source>Get Info</source>
        <translation>Get Info</translation>
    </message>
    <message>
        <source>Get information on a diagnostics folder</source>
        <translation>Get information on a diagnostics folder</translation>
    </message>
    <message>
        <source>Catalogue</source>
        <translation>Catalogue</translation>
    </message>
    <message>
        <source>Catalogue a diagnostics folder</source>
        <translation>Catalogue a diagnostics folder</translation>
    </message>
    <message>
        <source>Analyse</source>
        <translation>Analyse</translation>
    </message>
    <message>
        <source>Analyse the contents of a diagnostics folder</source>
        <translation>Analyse the contents of a diagnostics folder</translation>
    </message>
    <message>
        <source>Save Text</source>
        <translation>Save Text</translation>
    </message>
    <message>
        <source>Save the contents of this window to a file</source>
        <translation>Save the contents of this window to a file</translation>
    </message>
    <message>
        <source>Get &amp;Info…</source>
        <translation>Get &amp;Info…</translation>
    </message>
    <message>
        <source>Ca&amp;talogue…</source>
        <translation>Ca&amp;talogue…</translation>
    </message>
    <message>
        <source>&amp;Analyse…</source>
        <translation>&amp;Analyse…</translation>
    </message>
    <message>
        <source>&amp;Save Text…</source>
        <translation>&amp;Save Text…</translation>
    </message>
</context>
<context>
    <name>EntryPane</name>
    <message>
        <source>Log entries</source>
        <translation>Logeinträge</translation>
    </message>
    <message>
        <source>No entries found</source>
        <translation>No entries found</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n gefunden</numerusform>
            <numerusform>%n gefunden</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Failures</name>
    <message>
        <source>Entry %1 is nested too deeply.</source>
        <translation>Eintrag %1 ist zu tief verschachtelt.</translation>
    </message>
    <message>
        <source>In entry %1 the member “%2” is missing.</source>
        <translation>In Eintrag %1 fehlt das Element „%2“.</translation>
    </message>
    <message>
        <source>In entry %1 the member “%2” is too long.</source>
        <translation>In Eintrag %1 ist das Element „%2“ zu lang.</translation>
    </message>
    <message>
        <source>It does not hold a list of entries.</source>
        <translation>Sie enthält keine Liste von Einträgen.</translation>
    </message>
    <message>
        <source>Entry %1 is not an object.</source>
        <translation>Eintrag %1 ist kein Objekt.</translation>
    </message>
    <message>
        <source>In entry %1 the member “%2” is not a UUID.</source>
        <translation>In Eintrag %1 ist das Element „%2“ keine UUID.</translation>
    </message>
    <message>
        <source>In entry %1 the member “%2” is not a whole number of 64 bits.</source>
        <translation>In Eintrag %1 ist das Element „%2“ keine ganze Zahl von 64 Bit.</translation>
    </message>
    <message>
        <source>In entry %1 the member “%2” is not a string.</source>
        <translation>In Eintrag %1 ist das Element „%2“ kein String.</translation>
    </message>
    <message>
        <source>It is not JSON: %1 at byte %2.</source>
        <translation>Sie ist kein JSON: %1 bei Byte %2.</translation>
    </message>
    <message>
        <source>The entry list “%1” could not be read. %2</source>
        <translation>Die Eintragsliste „%1“ konnte nicht gelesen werden. %2</translation>
    </message>
    <message>
        <source>It is not a file.</source>
        <translation>Sie ist keine Datei.</translation>
    </message>
    <message>
        <source>The item “%1” could not be examined: %2.</source>
        <translation>Das Objekt „%1“ konnte nicht untersucht werden: %2.</translation>
    </message>
    <message>
        <source>The folder “%1” could not be listed: %2.</source>
        <translation>Der Ordner „%1“ konnte nicht aufgelistet werden: %2.</translation>
    </message>
    <message>
        <source>The file “%1” could not be read: It is not text in UTF-8.</source>
        <translation>Die Datei „%1“ konnte nicht gelesen werden: Sie ist kein Text in UTF-8.</translation>
    </message>
    <message>
        <source>The folder “%1” could not be created: %2.</source>
        <translation>Der Ordner „%1“ konnte nicht angelegt werden: %2.</translation>
    </message>
    <message>
        <source>The file “%1” could not be read: %2.</source>
        <translation>Die Datei „%1“ konnte nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>The file “%1” could not be written: %2.</source>
        <translation>Die Datei „%1“ konnte nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>The item “%1” could not be copied to “%2”: %3.</source>
        <translation>Das Objekt „%1“ konnte nicht nach „%2“ kopiert werden: %3.</translation>
    </message>
    <message>
        <source>An item of that name exists already</source>
        <translation>Ein Objekt dieses Namens gibt es schon</translation>
    </message>
    <message>
        <source>A folder cannot be copied into itself</source>
        <translation>Ein Ordner kann nicht in sich selbst kopiert werden</translation>
    </message>
    <message>
        <source>The folder “%1” could not be finished: %2.</source>
        <translation>Der Ordner „%1“ konnte nicht fertiggestellt werden: %2.</translation>
    </message>
    <message>
        <source>A device or pipe is not replaced by a file</source>
        <translation>Ein Gerät oder eine Pipe wird nicht durch eine Datei ersetzt</translation>
    </message>
    <message>
        <source>No file can be created in the folder “%1”: %2</source>
        <translation>Im Ordner „%1“ kann keine Datei angelegt werden: %2</translation>
    </message>
    <message>
        <source>It is nested too deeply</source>
        <translation>Zu tief verschachtelt</translation>
    </message>
    <message numerus="yes">
        <source>%n more items could not be copied.</source>
        <translation>
            <numerusform>%n weiteres Objekt konnte nicht kopiert werden.</numerusform>
            <numerusform>%n weitere Objekte konnten nicht kopiert werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>The folder “%1” for the demonstration store cannot be made: %2.</source>
        <translation>Der Ordner „%1“ für den Demonstrationsspeicher kann nicht angelegt werden: %2.</translation>
    </message>
    <message>
        <source>Another program is using it</source>
        <translation>Ein anderes Programm benutzt sie</translation>
    </message>
    <message>
        <source>It cannot be read, or is damaged</source>
        <translation>Sie kann nicht gelesen werden oder ist beschädigt</translation>
    </message>
</context>
<context>
    <name>GenTab</name>
    <message>
        <source>Replace the predicate library with the default one</source>
        <translation>Die Sammlung der Prädikate durch die mitgelieferte ersetzen</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>&amp;Text</translation>
    </message>
    <message>
        <source>&amp;Period (seconds)</source>
        <translation>&amp;Period (seconds)</translation>
    </message>
    <message>
        <source>&amp;Max entries</source>
        <translation>&amp;Max entries</translation>
    </message>
    <message>
        <source>&amp;Full Fields</source>
        <translation>&amp;Full Fields</translation>
    </message>
    <message>
        <source>&amp;Show Signposts</source>
        <translation>&amp;Show Signposts</translation>
    </message>
    <message>
        <source>&amp;Reset Predicates</source>
        <translation>&amp;Reset Predicates</translation>
    </message>
    <message>
        <source>&amp;Light Mode</source>
        <translation>&amp;Light Mode</translation>
    </message>
</context>
<context>
    <name>HelpCommands</name>
    <message>
        <source>Tessel &amp;Help</source>
        <translation>Tessel &amp;Help</translation>
    </message>
</context>
<context>
    <name>HelpView</name>
    <message>
        <source>&amp;Previous Page</source>
        <translation>&amp;Vorige Seite</translation>
    </message>
    <message>
        <source>&amp;Next Page</source>
        <translation>&amp;Nächste Seite</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>LogPredicates</name>
    <message>
        <source>Character %1: %2</source>
        <translation>Zeichen %1: %2</translation>
    </message>
    <message>
        <source>Line %1, character %2: %3</source>
        <translation>Zeile %1, Zeichen %2: %3</translation>
    </message>
</context>
<context>
    <name>Logger</name>
    <message>
        <source>Open Logarchive</source>
        <translation>Open Logarchive</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>An error occurred in your last action:</source>
        <translation>An error occurred in your last action:</translation>
    </message>
    <message>
        <source>Please wait until the log has been read.</source>
        <translation>Bitte warten, bis das Log gelesen ist.</translation>
    </message>
    <message>
        <source>“%1” is not a log archive.</source>
        <translation>„%1“ ist kein Logarchiv.</translation>
    </message>
    <message>
        <source>It holds the log archive “%1”. Do you want to use that one?</source>
        <translation>Darin liegt das Logarchiv „%1“. Möchten Sie dieses verwenden?</translation>
    </message>
    <message>
        <source>Use It</source>
        <translation>Verwenden</translation>
    </message>
</context>
<context>
    <name>Menus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;About Tessel</source>
        <translation>Über &amp;Tessel</translation>
    </message>
    <message>
        <source>About Q&amp;t</source>
        <translation>Über &amp;Qt</translation>
    </message>
    <message>
        <source>&amp;Settings…</source>
        <translation>&amp;Einstellungen…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;New Window</source>
        <translation>&amp;Neues Fenster</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>F&amp;ull Screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Tessel</source>
        <translation>&amp;Tessel</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
</context>
<context>
    <name>MessageRow</name>
    <message>
        <source>log message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <source>boundary</source>
        <translation>Grenze</translation>
    </message>
    <message>
        <source>signpost</source>
        <translation>Signpost</translation>
    </message>
    <message>
        <source>other entry</source>
        <translation>anderer Eintrag</translation>
    </message>
    <message>
        <source>note: </source>
        <translation>Notiz: </translation>
    </message>
</context>
<context>
    <name>MiniPredView</name>
    <message>
        <source>Special predicate</source>
        <translation>Besonderes Prädikat</translation>
    </message>
</context>
<context>
    <name>PredTab</name>
    <message>
        <source>New name</source>
        <translation>New name</translation>
    </message>
    <message>
        <source>Predicate</source>
        <translation>Predicate</translation>
    </message>
    <message>
        <source>Add this predicate to the library under its name</source>
        <translation>Dieses Prädikat unter seinem Namen in die Sammlung aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Append</source>
        <translation>&amp;Append</translation>
    </message>
    <message>
        <source>&amp;New name</source>
        <translation>&amp;New name</translation>
    </message>
</context>
<context>
    <name>PredicateEditor</name>
    <message>
        <source>This predicate is valid.</source>
        <translation>Dieses Prädikat ist gültig.</translation>
    </message>
</context>
<context>
    <name>QtPanels</name>
    <message>
        <source>Tessel lists (*.tessel)</source>
        <translation>Tessel-Listen (*.tessel)</translation>
    </message>
    <message>
        <source>Rich text (*.rtf)</source>
        <translation>Rich Text (*.rtf)</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>Log archives (*.logarchive)</source>
        <translation>Logarchive (*.logarchive)</translation>
    </message>
</context>
<context>
    <name>RecentMenu</name>
    <message>
        <source>&amp;Open Recent</source>
        <translation>&amp;Zuletzt benutzt</translation>
    </message>
    <message>
        <source>Clear &amp;Menu</source>
        <translation>Menü &amp;leeren</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to write into it?</source>
        <translation>%1 gibt es schon.
Soll hineingeschrieben werden?</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search text</source>
        <translation>Suchtext</translation>
    </message>
    <message>
        <source>search text</source>
        <translation>search text</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Predicate</source>
        <translation>Predicate</translation>
    </message>
</context>
<context>
    <name>SourceReport</name>
    <message numerus="yes">
        <source>%n folder(s) could not be read.</source>
        <translation>
            <numerusform>%n Ordner konnte nicht gelesen werden.</numerusform>
            <numerusform>%n Ordner konnten nicht gelesen werden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of %1 file(s) could not be read.</source>
        <translation>
            <numerusform>%n von %1 Dateien konnte nicht gelesen werden.</numerusform>
            <numerusform>%n von %1 Dateien konnten nicht gelesen werden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) are damaged in part.</source>
        <translation>
            <numerusform>%n Datei ist zum Teil beschädigt.</numerusform>
            <numerusform>%n Dateien sind zum Teil beschädigt.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) are in an unknown compression in part.</source>
        <translation>
            <numerusform>%n Datei ist zum Teil auf unbekannte Weise komprimiert.</numerusform>
            <numerusform>%n Dateien sind zum Teil auf unbekannte Weise komprimiert.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The format strings of %n image(s) are missing.</source>
        <translation>
            <numerusform>Die Formattexte von %n Programmdatei fehlen.</numerusform>
            <numerusform>Die Formattexte von %n Programmdateien fehlen.</numerusform>
        </translation>
    </message>
    <message>
        <source>A regular expression took too long for some entries.</source>
        <translation>Ein regulärer Ausdruck dauerte bei manchen Einträgen zu lange.</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Source Report</source>
        <translation>Bericht zur Quelle</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>What could not be read</source>
        <translation>Was nicht gelesen werden konnte</translation>
    </message>
</context>
<context>
    <name>StoreProblems</name>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>„%1“ konnte nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>it is not a folder</source>
        <translation>es ist kein Ordner</translation>
    </message>
    <message>
        <source>it holds no log files</source>
        <translation>keine Protokolldateien darin</translation>
    </message>
    <message>
        <source>it was cancelled</source>
        <translation>es wurde abgebrochen</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
    <message>
        <source>it does not begin as log files do</source>
        <translation>der Anfang ist nicht der einer Protokolldatei</translation>
    </message>
    <message>
        <source>it is damaged, and parts of it were left out</source>
        <translation>beschädigt, Teile davon wurden ausgelassen</translation>
    </message>
    <message>
        <source>parts of it are in an unknown compression</source>
        <translation>Teile davon sind auf unbekannte Weise komprimiert</translation>
    </message>
    <message>
        <source>it became shorter while it was read</source>
        <translation>beim Lesen kürzer geworden</translation>
    </message>
    <message>
        <source>it is damaged, and times may be wrong</source>
        <translation>beschädigt, Zeiten können falsch sein</translation>
    </message>
    <message>
        <source>the file with its format strings is missing</source>
        <translation>die Datei mit den Formattexten fehlt</translation>
    </message>
    <message>
        <source>its format strings cannot be used</source>
        <translation>die Formattexte sind nicht zu gebrauchen</translation>
    </message>
</context>
<context>
    <name>TesselApp</name>
    <message>
        <source>An error occurred:</source>
        <translation>An error occurred:</translation>
    </message>
    <message>
        <source>Help Window</source>
        <translation>Help Window</translation>
    </message>
    <message>
        <source>Diagnostics Tool</source>
        <translation>Diagnostics Tool</translation>
    </message>
    <message>
        <source>Logarchive Tool</source>
        <translation>Logarchive Tool</translation>
    </message>
    <message>
        <source>Predicate Editor</source>
        <translation>Predicate Editor</translation>
    </message>
    <message>
        <source>Gloss</source>
        <translation>Gloss</translation>
    </message>
</context>
<context>
    <name>TextView</name>
    <message>
        <source>Gloss</source>
        <translation>Gloss</translation>
    </message>
</context>
<context>
    <name>ToolBarCustomisation</name>
    <message>
        <source>&amp;Customise Toolbar…</source>
        <translation>Symbolleiste an&amp;passen…</translation>
    </message>
    <message>
        <source>&amp;Icons and Text</source>
        <translation>&amp;Symbole und Text</translation>
    </message>
    <message>
        <source>I&amp;cons Only</source>
        <translation>&amp;Nur Symbole</translation>
    </message>
    <message>
        <source>&amp;Text Only</source>
        <translation>Nur &amp;Text</translation>
    </message>
    <message>
        <source>&amp;Toolbar</source>
        <translation>Symbol&amp;leiste</translation>
    </message>
</context>
<context>
    <name>ToolBarDialog</name>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Customise Toolbar</source>
        <translation>Symbolleiste anpassen</translation>
    </message>
    <message>
        <source>Toolbar items</source>
        <translation>Einträge der Symbolleiste</translation>
    </message>
    <message>
        <source>Icons and Text</source>
        <translation>Symbole und Text</translation>
    </message>
    <message>
        <source>Icons Only</source>
        <translation>Nur Symbole</translation>
    </message>
    <message>
        <source>Text Only</source>
        <translation>Nur Text</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Show:</source>
        <translation>&amp;Anzeigen:</translation>
    </message>
</context>
<context>
    <name>ToolView</name>
    <message>
        <source>Toolbar</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>Creating the log archive</source>
        <translation>Das Logarchiv wird erstellt</translation>
    </message>
    <message>
        <source>%1 items copied
%2</source>
        <translation>%1 Objekte kopiert
%2</translation>
    </message>
</context>
<context>
    <name>UserDefaults</name>
    <message>
        <source>The settings file “%1” is damaged. It stays as it is: repair or remove it to have settings kept again. Until then, changes of settings last until Tessel quits.</source>
        <translation>Die Einstellungsdatei „%1“ ist beschädigt. Sie bleibt, wie sie ist: Reparieren oder entfernen Sie sie, damit Einstellungen wieder behalten werden. Bis dahin gelten Änderungen, bis Tessel beendet wird.</translation>
    </message>
    <message>
        <source>The settings file “%1” cannot be read. All settings begin as in a new installation, and changes last until Tessel quits.</source>
        <translation>Die Einstellungsdatei „%1“ kann nicht gelesen werden. Alle Einstellungen beginnen wie neu installiert, und Änderungen gelten, bis Tessel beendet wird.</translation>
    </message>
    <message>
        <source>The settings cannot be saved; changes last until Tessel quits. %1</source>
        <translation>Die Einstellungen können nicht gesichert werden; Änderungen gelten, bis Tessel beendet wird. %1</translation>
    </message>
</context>
<context>
    <name>deDysfunction</name>
    <message>
        <source>Tessel can&apos;t get logs unless you&apos;re an admin user.
Please switch to an admin account and try again.</source>
        <translation>Tessel can&apos;t get logs unless you&apos;re an admin user.
Please switch to an admin account and try again.</translation>
    </message>
    <message>
        <source>Tessel can&apos;t find any log files on your Mac.</source>
        <translation>Tessel can&apos;t find any log files on your Mac.</translation>
    </message>
    <message>
        <source>Tessel can&apos;t find log timesync files on your Mac.</source>
        <translation>Tessel can&apos;t find log timesync files on your Mac.</translation>
    </message>
    <message>
        <source>Tessel may not be able to find any log entries on your Mac.</source>
        <translation>Tessel may not be able to find any log entries on your Mac.</translation>
    </message>
</context>
</TS>
