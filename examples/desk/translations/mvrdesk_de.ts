<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
    <context>
        <name>DeskWindow</name>
        <message>
            <source>Yellow</source>
            <translation>Gelb</translation>
        </message>
        <message>
            <source>Orange</source>
            <translation>Orange</translation>
        </message>
        <message>
            <source>Red</source>
            <translation>Rot</translation>
        </message>
        <message>
            <source>Green</source>
            <translation>Grün</translation>
        </message>
        <message>
            <source>Blue</source>
            <translation>Blau</translation>
        </message>
        <message>
            <source>Violet</source>
            <translation>Violett</translation>
        </message>
        <message>
            <source>&amp;File</source>
            <translation>&amp;Datei</translation>
        </message>
        <message>
            <source>&amp;New text</source>
            <translation>&amp;Neuer Text</translation>
        </message>
        <message>
            <source>New scr&amp;eenplay</source>
            <translation>Neues Dre&amp;hbuch</translation>
        </message>
        <message>
            <source>&amp;Open…</source>
            <translation>&amp;Öffnen …</translation>
        </message>
        <message>
            <source>&amp;Save</source>
            <translation>&amp;Speichern</translation>
        </message>
        <message>
            <source>Save &amp;as…</source>
            <translation>Speichern &amp;unter …</translation>
        </message>
        <message>
            <source>Export O&amp;DT…</source>
            <translation>Als O&amp;DT ausgeben …</translation>
        </message>
        <message>
            <source>Export &amp;PDF…</source>
            <translation>Als &amp;PDF ausgeben …</translation>
        </message>
        <message>
            <source>Copy as &amp;BBCode</source>
            <translation>Als BBCode &amp;kopieren</translation>
        </message>
        <message>
            <source>&amp;Quit</source>
            <translation>&amp;Beenden</translation>
        </message>
        <message>
            <source>&amp;Edit</source>
            <translation>&amp;Bearbeiten</translation>
        </message>
        <message>
            <source>&amp;Undo</source>
            <translation>&amp;Rückgängig</translation>
        </message>
        <message>
            <source>&amp;Redo</source>
            <translation>&amp;Wiederholen</translation>
        </message>
        <message>
            <source>Cu&amp;t</source>
            <translation>&amp;Ausschneiden</translation>
        </message>
        <message>
            <source>&amp;Copy</source>
            <translation>&amp;Kopieren</translation>
        </message>
        <message>
            <source>&amp;Paste</source>
            <translation>&amp;Einfügen</translation>
        </message>
        <message>
            <source>&amp;Find and replace…</source>
            <translation>&amp;Suchen und ersetzen …</translation>
        </message>
        <message>
            <source>Find &amp;next</source>
            <translation>We&amp;itersuchen</translation>
        </message>
        <message>
            <source>Find pre&amp;vious</source>
            <translation>Rückwär&amp;ts suchen</translation>
        </message>
        <message>
            <source>F&amp;ormat</source>
            <translation>F&amp;ormat</translation>
        </message>
        <message>
            <source>&amp;Bold</source>
            <translation>&amp;Fett</translation>
        </message>
        <message>
            <source>&amp;Italic</source>
            <translation>&amp;Kursiv</translation>
        </message>
        <message>
            <source>&amp;Underline</source>
            <translation>&amp;Unterstrichen</translation>
        </message>
        <message>
            <source>&amp;Notes</source>
            <translation>&amp;Notizen</translation>
        </message>
        <message>
            <source>Add &amp;comment</source>
            <translation>&amp;Kommentar hinzufügen</translation>
        </message>
        <message>
            <source>Add &amp;footnote</source>
            <translation>&amp;Fußnote hinzufügen</translation>
        </message>
        <message>
            <source>Mark as &amp;annotation</source>
            <translation>Als &amp;Anmerkung markieren</translation>
        </message>
        <message>
            <source>Mark as footnote in the te&amp;xt</source>
            <translation>Als Fußnote im Te&amp;xt markieren</translation>
        </message>
        <message>
            <source>&amp;Edit the note</source>
            <translation>Notiz &amp;bearbeiten</translation>
        </message>
        <message>
            <source>&amp;Next note</source>
            <translation>&amp;Nächste Notiz</translation>
        </message>
        <message>
            <source>&amp;Previous note</source>
            <translation>&amp;Vorige Notiz</translation>
        </message>
        <message>
            <source>Move into the &amp;text</source>
            <translation>In den &amp;Text setzen</translation>
        </message>
        <message>
            <source>Move into the &amp;margin</source>
            <translation>An den Ran&amp;d setzen</translation>
        </message>
        <message>
            <source>Tr&amp;im</source>
            <translation>Zus&amp;chneiden</translation>
        </message>
        <message>
            <source>Enc&amp;lose annotations…</source>
            <translation>Anmerkungen ein&amp;schließen …</translation>
        </message>
        <message>
            <source>Footnotes to en&amp;d notes</source>
            <translation>Fußnoten &amp;zu Endnoten</translation>
        </message>
        <message>
            <source>&amp;Your name…</source>
            <translation>&amp;Ihr Name …</translation>
        </message>
        <message>
            <source>&amp;View</source>
            <translation>&amp;Ansicht</translation>
        </message>
        <message>
            <source>&amp;Markup codes</source>
            <translation>&amp;Codes</translation>
        </message>
        <message>
            <source>Open &amp;recent</source>
            <translation>&amp;Zuletzt geöffnet</translation>
        </message>
        <message>
            <source>C&amp;olor</source>
            <translation>Fa&amp;rbe</translation>
        </message>
        <message>
            <source>&amp;Dark</source>
            <translation>&amp;Dunkel</translation>
        </message>
        <message>
            <source>E&amp;lement</source>
            <translation>E&amp;lement</translation>
        </message>
        <message>
            <source>Tools</source>
            <translation>Werkzeuge</translation>
        </message>
        <message>
            <source>Screenplay element</source>
            <translation>Element des Drehbuchs</translation>
        </message>
        <message>
            <source>&amp;Other…</source>
            <translation>&amp;Andere …</translation>
        </message>
        <message>
            <source>Your name</source>
            <translation>Ihr Name</translation>
        </message>
        <message>
            <source>Who writes the notes:</source>
            <translation>Wer die Notizen schreibt:</translation>
        </message>
        <message>
            <source>There is no word for the note.</source>
            <translation>Für die Notiz gibt es kein Wort.</translation>
        </message>
        <message>
            <source>Enclose annotations</source>
            <translation>Anmerkungen einschließen</translation>
        </message>
        <message>
            <source>What stands in front of an annotation, a blank, what behind:</source>
            <translation>Was vor einer Anmerkung steht, ein Leerzeichen, was dahinter:</translation>
        </message>
        <message>
            <source>Untitled</source>
            <translation>Unbenannt</translation>
        </message>
        <message>
            <source>%1 cannot be opened.</source>
            <translation>%1 lässt sich nicht öffnen.</translation>
        </message>
        <message>
            <source>Open</source>
            <translation>Öffnen</translation>
        </message>
        <message>
            <source>%1 cannot be saved.</source>
            <translation>%1 lässt sich nicht speichern.</translation>
        </message>
        <message>
            <source>Save as</source>
            <translation>Speichern unter</translation>
        </message>
        <message>
            <source>Save the changes?</source>
            <translation>Die Änderungen speichern?</translation>
        </message>
        <message>
            <source>%1 was not saved when the program ended. Restore it?</source>
            <translation>%1 war nicht gespeichert, als das Programm endete. Wiederherstellen?</translation>
        </message>
        <message>
            <source>Export</source>
            <translation>Ausgeben</translation>
        </message>
        <message>
            <source>Markup codes</source>
            <translation>Codes</translation>
        </message>
        <message numerus="yes">
            <source>%n words</source>
            <translation>
                <numerusform>%n Wort</numerusform>
                <numerusform>%n Wörter</numerusform>
            </translation>
        </message>
        <message>
            <source>%1 without notes</source>
            <translation>%1 ohne Notizen</translation>
        </message>
        <message>
            <source>%1 selected</source>
            <translation>%1 ausgewählt</translation>
        </message>
        <message numerus="yes">
            <source>%n pages</source>
            <translation>
                <numerusform>%n Seite</numerusform>
                <numerusform>%n Seiten</numerusform>
            </translation>
        </message>
        <message>
            <source>BBCode is on the clipboard, without notes.</source>
            <translation>BBCode liegt in der Zwischenablage, ohne Notizen.</translation>
        </message>
        <message>
            <source>&amp;Resolve, or take up again</source>
            <translation>&amp;Erledigt, oder wieder offen</translation>
        </message>
        <message>
            <source>Remo&amp;ve</source>
            <translation>&amp;Löschen</translation>
        </message>
        <message>
            <source>Saved.</source>
            <translation>Gespeichert.</translation>
        </message>
        <message>
            <source>Notes</source>
            <translation>Notizen</translation>
        </message>
    </context>
    <context>
        <name>Editor</name>
        <message>
            <source>Text</source>
            <translation>Text</translation>
        </message>
    </context>
    <context>
        <name>MVRFindBar</name>
        <message>
            <source>E&amp;xpression</source>
            <translation>A&amp;usdruck</translation>
        </message>
        <message>
            <source>Match &amp;case</source>
            <translation>Groß/&amp;klein</translation>
        </message>
        <message>
            <source>Find</source>
            <translation>Suchen</translation>
        </message>
        <message>
            <source>Text to find</source>
            <translation>Gesuchter Text</translation>
        </message>
        <message>
            <source>Replace by</source>
            <translation>Ersetzen durch</translation>
        </message>
        <message>
            <source>Text to put in its place</source>
            <translation>Text, der an seine Stelle kommt</translation>
        </message>
        <message>
            <source>&amp;Next</source>
            <translation>&amp;Weiter</translation>
        </message>
        <message>
            <source>&amp;Previous</source>
            <translation>&amp;Zurück</translation>
        </message>
        <message>
            <source>&amp;Replace</source>
            <translation>&amp;Ersetzen</translation>
        </message>
        <message>
            <source>Replace &amp;all</source>
            <translation>Alle e&amp;rsetzen</translation>
        </message>
        <message>
            <source>Not found</source>
            <translation>Nicht gefunden</translation>
        </message>
        <message>
            <source>The expression takes too long</source>
            <translation>Der Ausdruck braucht zu lange</translation>
        </message>
        <message numerus="yes">
            <source>%n replaced</source>
            <translation>
                <numerusform>%n ersetzt</numerusform>
                <numerusform>%n ersetzt</numerusform>
            </translation>
        </message>
    </context>
    <context>
        <name>MVRNoteMargin</name>
        <message>
            <source>Notes in the margin</source>
            <translation>Notizen am Rand</translation>
        </message>
    </context>
    <context>
        <name>MVRNotesList</name>
        <message>
            <source>&amp;Kind</source>
            <translation>&amp;Art</translation>
        </message>
        <message>
            <source>&amp;Author</source>
            <translation>Verfa&amp;sser</translation>
        </message>
        <message>
            <source>Co&amp;lor</source>
            <translation>&amp;Farbe</translation>
        </message>
        <message>
            <source>Resol&amp;ved notes</source>
            <translation>Erl&amp;edigte Notizen</translation>
        </message>
        <message>
            <source>List of notes</source>
            <translation>Liste der Notizen</translation>
        </message>
        <message>
            <source>All</source>
            <translation>Alle</translation>
        </message>
    </context>
    <context>
        <name>Manuscript</name>
        <message>
            <source>Texts and screenplays (%1)</source>
            <translation>Texte und Drehbücher (%1)</translation>
        </message>
        <message>
            <source>The kind of the file is not known.</source>
            <translation>Die Art der Datei ist nicht bekannt.</translation>
        </message>
        <message>
            <source>Its tables are nested too deep.</source>
            <translation>Ihre Tabellen sind zu tief verschachtelt.</translation>
        </message>
        <message>
            <source>Its notes stand in the text, between codes.</source>
            <translation>Ihre Notizen stehen im Text, zwischen Codes.</translation>
        </message>
        <message>
            <source>Footnotes stand at its end, other notes in brackets.</source>
            <translation>Fußnoten stehen an ihrem Ende, andere Notizen in Klammern.</translation>
        </message>
    </context>
    <context>
        <name>NoteCard</name>
        <message>
            <source>Footnote</source>
            <translation>Fußnote</translation>
        </message>
        <message>
            <source>Comment</source>
            <translation>Kommentar</translation>
        </message>
        <message>
            <source>Content of the note: %1</source>
            <translation>Inhalt der Notiz: %1</translation>
        </message>
        <message>
            <source>Resolved</source>
            <translation>Erledigt</translation>
        </message>
    </context>
    <context>
        <name>QObject</name>
        <message>
            <source>Inline annotation</source>
            <translation>Anmerkung im Text</translation>
        </message>
        <message>
            <source>Inline footnote</source>
            <translation>Fußnote im Text</translation>
        </message>
        <message>
            <source>Comment</source>
            <translation>Kommentar</translation>
        </message>
        <message>
            <source>Footnote</source>
            <translation>Fußnote</translation>
        </message>
        <message>
            <source>Kind</source>
            <translation>Art</translation>
        </message>
        <message>
            <source>Text</source>
            <translation>Text</translation>
        </message>
        <message>
            <source>Note</source>
            <translation>Notiz</translation>
        </message>
        <message>
            <source>Color</source>
            <translation>Farbe</translation>
        </message>
        <message>
            <source>Author</source>
            <translation>Verfasser</translation>
        </message>
        <message>
            <source>Date</source>
            <translation>Datum</translation>
        </message>
    </context>
    <context>
        <name>ScenesDock</name>
        <message>
            <source>Scenes</source>
            <translation>Szenen</translation>
        </message>
        <message>
            <source>List of scenes</source>
            <translation>Liste der Szenen</translation>
        </message>
    </context>
    <context>
        <name>main</name>
        <message>
            <source>What to open.</source>
            <translation>Was zu öffnen ist.</translation>
        </message>
    </context>
</TS>
