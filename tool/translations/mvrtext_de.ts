<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Tool</name>
    <message>
        <source>Default: %1</source>
        <translation>Vorgabe: %1</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>Aufruf:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Argumente:</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Optionen:</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>Zeigt diese Hilfe.</translation>
    </message>
    <message>
        <source>Examples:</source>
        <translation>Beispiele:</translation>
    </message>
    <message>
        <source>Converts and examines the documents of writers: screenplays, manuscripts and their notes.</source>
        <translation>Wandelt und untersucht, was Autoren schreiben: Drehbücher, Manuskripte und ihre Notizen.</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>Befehle:</translation>
    </message>
    <message>
        <source>Show this help; after a command, the help of the command.</source>
        <translation>Zeigt diese Hilfe, hinter einem Befehl die des Befehls.</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>Zeigt die Version.</translation>
    </message>
    <message>
        <source>Print a script that completes commands in bash, zsh or fish.</source>
        <translation>Gibt ein Skript aus, das in bash, zsh oder fish Befehle vervollständigt.</translation>
    </message>
    <message>
        <source>Reads fdx (Final Draft), rtf, html, txt, md; writes these and bbcode, odt, pdf, png. The exit code is 0, or 1 for a failure, or 2 for wrong arguments.</source>
        <translation>Liest fdx (Final Draft), rtf, html, txt, md; schreibt diese und bbcode, odt, pdf, png. Der Rückgabewert ist 0, nach einem Fehlschlag 1, bei falschen Argumenten 2.</translation>
    </message>
    <message>
        <source>--%1 %2 is missing</source>
        <translation>--%1 %2 fehlt</translation>
    </message>
    <message>
        <source>a file name is missing</source>
        <translation>ein Dateiname fehlt</translation>
    </message>
    <message>
        <source>too many file names</source>
        <translation>zu viele Dateinamen</translation>
    </message>
    <message>
        <source>there is no option %1</source>
        <translation>es gibt keine Option %1</translation>
    </message>
    <message>
        <source>%1 takes no value</source>
        <translation>%1 nimmt keinen Wert</translation>
    </message>
    <message>
        <source>%1 needs a value</source>
        <translation>%1 braucht einen Wert</translation>
    </message>
    <message>
        <source>--%1 does not take &quot;%2&quot;</source>
        <translation>--%1 nimmt &quot;%2&quot; nicht an</translation>
    </message>
    <message>
        <source>%1 does not take what %2 says</source>
        <translation>%1 nimmt nicht an, was in %2 steht</translation>
    </message>
    <message>
        <source>--%1 is called %2 now</source>
        <translation>--%1 heißt jetzt %2</translation>
    </message>
    <message>
        <source>--%1 takes a number from %2 to %3</source>
        <translation>--%1 nimmt eine Zahl von %2 bis %3</translation>
    </message>
    <message>
        <source>see mvrtext %1 --help</source>
        <translation>Hilfe: mvrtext %1 --help</translation>
    </message>
    <message>
        <source>title page left out</source>
        <translation>Titelseite weggelassen</translation>
    </message>
    <message>
        <source>Put documents one behind the other.</source>
        <translation>Hängt Dokumente aneinander.</translation>
    </message>
    <message>
        <source>Puts documents one behind the other, each beginning a paragraph. Title, fonts and the settings of screenplay elements are those of the first one.</source>
        <translation>Hängt Dokumente aneinander; jedes beginnt einen Absatz. Titel, Schriften und die Einstellungen der Drehbuch-Elemente sind die des ersten.</translation>
    </message>
    <message>
        <source>Files to read after it.</source>
        <translation>Dateien, die danach gelesen werden.</translation>
    </message>
    <message>
        <source>Begin each document behind the first on a new page.</source>
        <translation>Beginnt jedes Dokument nach dem ersten auf einer neuen Seite.</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>file</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>%1 converted</source>
        <translation>%1 gewandelt</translation>
    </message>
    <message>
        <source>, %1 failed</source>
        <translation>, %1 fehlgeschlagen</translation>
    </message>
    <message>
        <source>%1 and %2 would both become %3</source>
        <translation>%1 und %2 würden beide zu %3</translation>
    </message>
    <message>
        <source>%1 would be written over an input</source>
        <translation>%1 würde eine Eingabe überschreiben</translation>
    </message>
    <message>
        <source>is the input itself; nothing was written</source>
        <translation>ist die Eingabe selbst; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>the folder %1 cannot be made</source>
        <translation>der Ordner %1 lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>the folder cannot be looked into</source>
        <translation>in den Ordner kann nicht gesehen werden</translation>
    </message>
    <message>
        <source>--into goes with --to FORMAT</source>
        <translation>--into gehört zu --to FORMAT</translation>
    </message>
    <message>
        <source>--into takes no standard input</source>
        <translation>--into nimmt keine Standardeingabe</translation>
    </message>
    <message>
        <source>nothing was written; --keep-tree keeps files of one name apart that come from different folders</source>
        <translation>nichts wurde geschrieben; --keep-tree hält gleichnamige Dateien aus verschiedenen Ordnern auseinander</translation>
    </message>
    <message>
        <source>--keep-tree and --jobs go with --into</source>
        <translation>--keep-tree und --jobs gehören zu --into</translation>
    </message>
    <message>
        <source>too many file names; --into FOLDER takes them</source>
        <translation>zu viele Dateinamen; --into ORDNER nimmt sie auf</translation>
    </message>
    <message>
        <source>Convert documents; the suffixes tell the formats.</source>
        <translation>Wandelt Dokumente; die Endungen sagen die Formate.</translation>
    </message>
    <message>
        <source>Converts a document, or many into a folder, several at a time; a folder among them stands for all documents below it. The suffixes of the files tell the formats.</source>
        <translation>Wandelt ein Dokument oder viele in einen Ordner, mehrere zugleich; ein Ordner unter ihnen steht für alle Dokumente darin. Die Endungen der Dateien sagen die Formate.</translation>
    </message>
    <message>
        <source>The file to read; - is the standard input.</source>
        <translation>Die zu lesende Datei; - ist die Standardeingabe.</translation>
    </message>
    <message>
        <source>Page to draw as png.</source>
        <translation>Die Seite, die als png gezeichnet wird.</translation>
    </message>
    <message>
        <source>Dots per inch of a png, 20 to 600.</source>
        <translation>Punkte je Zoll eines png, 20 bis 600.</translation>
    </message>
    <message>
        <source>total</source>
        <translation>gesamt</translation>
    </message>
    <message>
        <source>FILE WORDS CHARACTERS</source>
        <translation>DATEI WÖRTER ZEICHEN</translation>
    </message>
    <message>
        <source>Count the words and characters of documents.</source>
        <translation>Zählt Wörter und Zeichen von Dokumenten.</translation>
    </message>
    <message>
        <source>Counts the words and characters of documents. Blanks and paragraph ends are characters.</source>
        <translation>Zählt Wörter und Zeichen von Dokumenten. Leerzeichen und Absatzenden sind Zeichen.</translation>
    </message>
    <message>
        <source>The files to read; - is the standard input.</source>
        <translation>Die zu lesenden Dateien; - ist die Standardeingabe.</translation>
    </message>
    <message>
        <source>Count the content of comments too.</source>
        <translation>Zählt auch den Inhalt von Kommentaren.</translation>
    </message>
    <message>
        <source>Count the content of footnotes too.</source>
        <translation>Zählt auch den Inhalt von Fußnoten.</translation>
    </message>
    <message>
        <source>Print an object instead of a table.</source>
        <translation>Gibt statt einer Tabelle ein Objekt aus.</translation>
    </message>
    <message>
        <source>say where the notes of the book go: --notes-out FILE</source>
        <translation>sagen Sie, wohin die Fußnoten des Buches kommen: --notes-out DATEI</translation>
    </message>
    <message>
        <source>is the input or output itself; nothing was written</source>
        <translation>ist selbst Eingabe oder Ausgabe; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>Take footnotes out of the text and list them by number.</source>
        <translation>Nimmt Fußnoten aus dem Text und zählt sie nach Nummern auf.</translation>
    </message>
    <message>
        <source>Takes the footnotes out of a document, leaves numbers in their places and lists the notes behind the text or in a file of their own. Footnotes are those of RTF files and those that are written as codes (see mvrtext markup).</source>
        <translation>Nimmt die Fußnoten aus einem Dokument, lässt Nummern an ihrer Stelle und führt sie hinter dem Text oder in einer eigenen Datei auf. Fußnoten sind die von RTF-Dateien und die als Codes geschriebenen (siehe mvrtext markup).</translation>
    </message>
    <message>
        <source>Numbers alone (plain), &quot;[^fn1]&quot; for MultiMarkdown (mmd), or links into a file footnotes.xhtml (ebook).</source>
        <translation>Nur Nummern (plain), &quot;[^fn1]&quot; für MultiMarkdown (mmd) oder Verweise in eine Datei footnotes.xhtml (ebook).</translation>
    </message>
    <message>
        <source>Number of the first note.</source>
        <translation>Nummer der ersten Fußnote.</translation>
    </message>
    <message>
        <source>The file to write the notes to, instead of behind the text; for ebook footnotes.xhtml beside OUT without this option.</source>
        <translation>Die Datei für die Fußnoten, statt hinter dem Text; bei ebook ohne diese Option footnotes.xhtml neben OUT.</translation>
    </message>
    <message>
        <source>TITLE</source>
        <translation>TITEL</translation>
    </message>
    <message>
        <source>paragraphs</source>
        <translation>Absätze</translation>
    </message>
    <message>
        <source>words</source>
        <translation>Wörter</translation>
    </message>
    <message>
        <source>characters</source>
        <translation>Zeichen</translation>
    </message>
    <message>
        <source>pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>element %1</source>
        <translation>Element %1</translation>
    </message>
    <message>
        <source>title page paragraphs</source>
        <translation>Absätze der Titelseite</translation>
    </message>
    <message>
        <source>scaling</source>
        <translation>Skalierung</translation>
    </message>
    <message>
        <source>invisible characters</source>
        <translation>unsichtbare Zeichen</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>gezeigt</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>Counting</source>
        <translation>Zählen</translation>
    </message>
    <message>
        <source>Count what is in a document.</source>
        <translation>Zählt, was in einem Dokument steht.</translation>
    </message>
    <message>
        <source>Counts the paragraphs, words, characters, pages and notes of a document and, in a screenplay, the paragraphs of each element.</source>
        <translation>Zählt Absätze, Wörter, Zeichen, Seiten und Notizen eines Dokuments und in einem Drehbuch die Absätze jedes Elements.</translation>
    </message>
    <message>
        <source>ITEM PLACE TEXT</source>
        <translation>EINTRAG ORT TEXT</translation>
    </message>
    <message>
        <source>say what to change: --remove items or --remove all</source>
        <translation>sagen Sie, was sich ändern soll: --remove items oder --remove all</translation>
    </message>
    <message>
        <source>List or remove links to other items of the application.</source>
        <translation>Listet oder entfernt Verweise auf andere Einträge der Anwendung.</translation>
    </message>
    <message>
        <source>Lists the links of a document to other items of the application, whose target is a number: the item, place (paragraph from 1, characters from 0) and text. Or takes links away and leaves their text.</source>
        <translation>Listet die Verweise eines Dokuments auf andere Einträge der Anwendung, deren Ziel eine Zahl ist: Eintrag, Ort (Absatz ab 1, Zeichen ab 0) und Text. Oder nimmt Verweise weg und lässt ihren Text stehen.</translation>
    </message>
    <message>
        <source>Print an array of objects instead of a table.</source>
        <translation>Gibt statt einer Tabelle ein Array von Objekten aus.</translation>
    </message>
    <message>
        <source>Make links ordinary text: those to items, or all, web links too.</source>
        <translation>Macht Verweise zu gewöhnlichem Text: die auf Einträge (items) oder alle, auch die ins Netz (all).</translation>
    </message>
    <message>
        <source>%1 left out whose content cannot be read</source>
        <translation>%1 mit unlesbarem Inhalt weggelassen</translation>
    </message>
    <message>
        <source>note</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>say either --write or --read</source>
        <translation>sagen Sie entweder --write oder --read</translation>
    </message>
    <message>
        <source>Write notes as codes into the text, or read such codes.</source>
        <translation>Schreibt Notizen als Codes in den Text oder liest solche Codes.</translation>
    </message>
    <message>
        <source>Writes the notes of a document as codes into its text, where any program keeps them, or reads such codes: notes become notes of OUT where its format has any, else text in brackets, and the pictures that codes name are loaded.</source>
        <translation>Schreibt die Notizen eines Dokuments als Codes in seinen Text, wo jedes Programm sie behält, oder liest solche Codes: Notizen werden zu Notizen von OUT, wo dessen Format welche hat, sonst zu Text in Klammern, und die Bilder, die Codes nennen, werden geladen.</translation>
    </message>
    <message>
        <source>Write codes.</source>
        <translation>Schreibt Codes.</translation>
    </message>
    <message>
        <source>Read codes.</source>
        <translation>Liest Codes.</translation>
    </message>
    <message>
        <source>Make all notes notes of this kind, or put them into the text (inline) or beside it (inspector).</source>
        <translation>Macht alle Notizen zu Notizen dieser Art oder setzt sie in den Text (inline) oder daneben (inspector).</translation>
    </message>
    <message>
        <source>Remove the notes of a kind.</source>
        <translation>Entfernt die Notizen einer Art.</translation>
    </message>
    <message>
        <source>Take white space from the ends of the notes, and repeated empty paragraphs from inside.</source>
        <translation>Nimmt Leerraum von den Enden der Notizen und wiederholte leere Absätze aus ihrem Innern.</translation>
    </message>
    <message>
        <source>Put two strings around the inline annotations: &quot;[ ]&quot;.</source>
        <translation>Setzt zwei Zeichenfolgen um die Anmerkungen im Text: &quot;[ ]&quot;.</translation>
    </message>
    <message>
        <source>With --enclose: make the annotations ordinary text.</source>
        <translation>Mit --enclose: macht die Anmerkungen zu gewöhnlichem Text.</translation>
    </message>
    <message>
        <source>--as-text goes with --enclose</source>
        <translation>--as-text gehört zu --enclose</translation>
    </message>
    <message>
        <source>--enclose takes two strings with a blank between</source>
        <translation>--enclose nimmt zwei Zeichenfolgen mit einem Leerzeichen dazwischen</translation>
    </message>
    <message>
        <source>%1 removed</source>
        <translation>%1 entfernt</translation>
    </message>
    <message>
        <source>%1 removed from beside the text</source>
        <translation>%1 neben dem Text entfernt</translation>
    </message>
    <message>
        <source>%1 trimmed</source>
        <translation>%1 gestutzt</translation>
    </message>
    <message>
        <source>%1 enclosed</source>
        <translation>%1 eingeklammert</translation>
    </message>
    <message>
        <source>KIND PLACE TEXT COLOUR CONTENT</source>
        <translation>ART ORT TEXT FARBE INHALT</translation>
    </message>
    <message>
        <source>no note would change</source>
        <translation>keine Notiz würde sich ändern</translation>
    </message>
    <message>
        <source>say what to change: --make, --remove, ...</source>
        <translation>sagen Sie, was sich ändern soll: --make, --remove, ...</translation>
    </message>
    <message>
        <source>List, move, trim or remove the notes of a document.</source>
        <translation>Listet, verschiebt, stutzt oder entfernt die Notizen eines Dokuments.</translation>
    </message>
    <message>
        <source>Lists the notes of a document: their kind, place (paragraph from 1, characters from 0), the text that they are attached to, colour and content. Or changes them, in this order: remove, make, trim, enclose.</source>
        <translation>Listet die Notizen eines Dokuments: Art, Ort (Absatz ab 1, Zeichen ab 0), den Text, an dem sie hängen, Farbe und Inhalt. Oder ändert sie, in dieser Reihenfolge: remove, make, trim, enclose.</translation>
    </message>
    <message>
        <source>Only say how many notes would change.</source>
        <translation>Sagt nur, wie viele Notizen sich ändern würden.</translation>
    </message>
    <message>
        <source>say what to replace: --find TEXT --with TEXT</source>
        <translation>sagen Sie, was zu ersetzen ist: --find TEXT --with TEXT</translation>
    </message>
    <message>
        <source>Replacing</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>--find takes too many steps; nothing was written</source>
        <translation>--find braucht zu viele Schritte; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>%1 replaced</source>
        <translation>%1 ersetzt</translation>
    </message>
    <message>
        <source>place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>places</source>
        <translation>Stellen</translation>
    </message>
    <message>
        <source>Replace text in a document.</source>
        <translation>Ersetzt Text in einem Dokument.</translation>
    </message>
    <message>
        <source>Replaces text in a document. What is found lies within a paragraph and gives its format to what takes its place.</source>
        <translation>Ersetzt Text in einem Dokument. Was gefunden wird, liegt in einem Absatz und gibt sein Format an das weiter, was an seine Stelle tritt.</translation>
    </message>
    <message>
        <source>The text to replace.</source>
        <translation>Der zu ersetzende Text.</translation>
    </message>
    <message>
        <source>What takes its place; may be empty.</source>
        <translation>Was an seine Stelle tritt; darf leer sein.</translation>
    </message>
    <message>
        <source>TEXT to find is a regular expression.</source>
        <translation>Der gesuchte TEXT ist ein regulärer Ausdruck.</translation>
    </message>
    <message>
        <source>Tell capitals from small letters.</source>
        <translation>Unterscheidet große und kleine Buchstaben.</translation>
    </message>
    <message>
        <source>Format of what is read, where its suffix does not tell.</source>
        <translation>Format dessen, was gelesen wird, wo die Endung es nicht sagt.</translation>
    </message>
    <message>
        <source>Format of what is written, where its suffix does not tell.</source>
        <translation>Format dessen, was geschrieben wird, wo die Endung es nicht sagt.</translation>
    </message>
    <message>
        <source>Author of a document that names none (rtf).</source>
        <translation>Autor eines Dokuments, das keinen nennt (rtf).</translation>
    </message>
    <message>
        <source>Which elements the paragraphs of other documents become in fdx: &quot;outline&quot;, or pairs such as &quot;h1=Act,text=Dialogue&quot; (of scenes, headings, h1 to h6, text). Without this option headings like those of scenes become Scene Heading, others General, the rest Action.</source>
        <translation>Zu welchen Elementen die Absätze anderer Dokumente in fdx werden: &quot;outline&quot; oder Paare wie &quot;h1=Act,text=Dialogue&quot; (aus scenes, headings, h1 bis h6, text). Ohne diese Option werden Überschriften, die wie die von Szenen lauten, zu Scene Heading, andere zu General, alles Übrige zu Action.</translation>
    </message>
    <message>
        <source>--elements: &quot;%1&quot; is neither &quot;outline&quot; nor a pair such as &quot;h1=Act&quot; (of scenes, headings, h1 to h6, text)</source>
        <translation>--elements: &quot;%1&quot; ist weder &quot;outline&quot; noch ein Paar wie &quot;h1=Act&quot; (aus scenes, headings, h1 bis h6, text)</translation>
    </message>
    <message>
        <source>cannot be written as BBCode: %1</source>
        <translation>lässt sich nicht als BBCode schreiben: %1</translation>
    </message>
    <message>
        <source>alternate</source>
        <translation>andere Fassung</translation>
    </message>
    <message>
        <source>alternates</source>
        <translation>andere Fassungen</translation>
    </message>
    <message>
        <source>paragraph of omitted scenes</source>
        <translation>Absatz ausgelassener Szenen</translation>
    </message>
    <message>
        <source>paragraphs of omitted scenes</source>
        <translation>Absätze ausgelassener Szenen</translation>
    </message>
    <message>
        <source>character of hidden text</source>
        <translation>Zeichen verborgenen Textes</translation>
    </message>
    <message>
        <source>picture that cannot be shown</source>
        <translation>Bild, das nicht gezeigt werden kann</translation>
    </message>
    <message>
        <source>pictures that cannot be shown</source>
        <translation>Bilder, die nicht gezeigt werden können</translation>
    </message>
    <message>
        <source>characters of hidden text</source>
        <translation>Zeichen verborgenen Textes</translation>
    </message>
    <message>
        <source>character of deleted text</source>
        <translation>Zeichen gelöschten Textes</translation>
    </message>
    <message>
        <source>characters of deleted text</source>
        <translation>Zeichen gelöschten Textes</translation>
    </message>
    <message>
        <source>scene summary</source>
        <translation>Zusammenfassung einer Szene</translation>
    </message>
    <message>
        <source>scene summaries</source>
        <translation>Zusammenfassungen von Szenen</translation>
    </message>
    <message>
        <source>cannot be written as a Final Draft file</source>
        <translation>lässt sich nicht als Final-Draft-Datei schreiben</translation>
    </message>
    <message>
        <source>cannot be written as ODT</source>
        <translation>lässt sich nicht als ODT schreiben</translation>
    </message>
    <message>
        <source>cannot be written as PDF</source>
        <translation>lässt sich nicht als PDF schreiben</translation>
    </message>
    <message>
        <source>has %1, no page %2</source>
        <translation>hat %1, keine Seite %2</translation>
    </message>
    <message>
        <source>page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>[picture]</source>
        <translation>[Bild]</translation>
    </message>
    <message>
        <source>is too long for pages</source>
        <translation>ist zu lang für Seiten</translation>
    </message>
    <message>
        <source>the picture is too large</source>
        <translation>das Bild ist zu groß</translation>
    </message>
    <message>
        <source>not an RTF file</source>
        <translation>keine RTF-Datei</translation>
    </message>
    <message>
        <source>not a text file</source>
        <translation>keine Textdatei</translation>
    </message>
    <message>
        <source>a paragraph has too many marks of emphasis or &quot;&lt;?&quot;</source>
        <translation>ein Absatz hat zu viele Hervorhebungszeichen oder &quot;&lt;?&quot;</translation>
    </message>
    <message>
        <source>it has too many lists</source>
        <translation>sie hat zu viele Listen</translation>
    </message>
    <message>
        <source>its elements are nested too deep</source>
        <translation>ihre Elemente sind zu tief verschachtelt</translation>
    </message>
    <message>
        <source>unknown format &quot;%1&quot;</source>
        <translation>unbekanntes Format &quot;%1&quot;</translation>
    </message>
    <message>
        <source>a stream has no suffix: name its format</source>
        <translation>ein Datenstrom hat keine Endung: nennen Sie sein Format</translation>
    </message>
    <message>
        <source>cannot tell the format of &quot;%1&quot; by its suffix</source>
        <translation>die Endung von &quot;%1&quot; sagt kein Format</translation>
    </message>
    <message>
        <source>%1 is not read</source>
        <translation>%1 wird nicht gelesen</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>Lesen: %1</translation>
    </message>
    <message>
        <source>its tables are nested too deep</source>
        <translation>ihre Tabellen sind zu tief verschachtelt</translation>
    </message>
    <message>
        <source>not read: %1</source>
        <translation>nicht gelesen: %1</translation>
    </message>
    <message>
        <source>--completion takes bash, zsh or fish</source>
        <translation>--completion nimmt bash, zsh oder fish</translation>
    </message>
    <message>
        <source>a command is missing</source>
        <translation>ein Befehl fehlt</translation>
    </message>
    <message>
        <source>no command &quot;%1&quot;</source>
        <translation>kein Befehl &quot;%1&quot;</translation>
    </message>
    <message>
        <source>see mvrtext --help</source>
        <translation>Hilfe: mvrtext --help</translation>
    </message>
    <message>
        <source>comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>footnote</source>
        <translation>Fußnote</translation>
    </message>
    <message>
        <source>inline annotation</source>
        <translation>Anmerkung im Text</translation>
    </message>
    <message>
        <source>inline annotations</source>
        <translation>Anmerkungen im Text</translation>
    </message>
    <message>
        <source>inline footnote</source>
        <translation>Fußnote im Text</translation>
    </message>
    <message>
        <source>inline footnotes</source>
        <translation>Fußnoten im Text</translation>
    </message>
    <message>
        <source>is larger than 1 GiB</source>
        <translation>ist größer als 1 GiB</translation>
    </message>
    <message>
        <source>The file to write; - is the standard output.</source>
        <translation>Die zu schreibende Datei; - ist die Standardausgabe.</translation>
    </message>
    <message>
        <source>say where to write: -o OUT</source>
        <translation>sagen Sie, wohin geschrieben wird: -o OUT</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>%1 left out</source>
        <translation>%1 weggelassen</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>Schreiben: %1</translation>
    </message>
    <message>
        <source>is no screenplay: it has no scenes</source>
        <translation>ist kein Drehbuch: es hat keine Szenen</translation>
    </message>
    <message>
        <source>Tell what stands on which page of a screenplay.</source>
        <translation>Sagt, was auf welcher Seite eines Drehbuchs steht.</translation>
    </message>
    <message>
        <source>Tells what stands on which page of a screenplay: the scenes, their first and last lines, and their lengths in eighths of a page.</source>
        <translation>Sagt, was auf welcher Seite eines Drehbuchs steht: die Szenen, ihre ersten und letzten Zeilen und ihre Längen in Achteln einer Seite.</translation>
    </message>
    <message>
        <source>The screenplay; - is the standard input.</source>
        <translation>Das Drehbuch; - ist die Standardeingabe.</translation>
    </message>
    <message>
        <source>Paper of pdf, png, odt and html. Without this option it is the document&apos;s own, or letter.</source>
        <translation>Papier von pdf, png, odt und html. Ohne diese Option das des Dokuments oder letter.</translation>
    </message>
    <message>
        <source>pictures, of which a paragraph has too many</source>
        <translation>Bilder, von denen ein Absatz zu viele hat</translation>
    </message>
    <message>
        <source>places that links lead to, of which there are too many</source>
        <translation>Stellen, zu denen Links führen, von denen es zu viele gibt</translation>
    </message>
    <message>
        <source>style rules, of which there are too many</source>
        <translation>Stilregeln, von denen es zu viele gibt</translation>
    </message>
    <message>
        <source>has no scenes %1-%2</source>
        <translation>hat keine Szenen %1-%2</translation>
    </message>
    <message>
        <source>has no pages %1-%2</source>
        <translation>hat keine Seiten %1-%2</translation>
    </message>
    <message>
        <source>comments</source>
        <translation>Kommentare</translation>
    </message>
    <message>
        <source>footnotes</source>
        <translation>Fußnoten</translation>
    </message>
    <message>
        <source>Only these scenes of a screenplay, where they stand.</source>
        <translation>Nur diese Szenen eines Drehbuchs, wo sie stehen.</translation>
    </message>
    <message>
        <source>Only the pages of a pdf that bear these numbers.</source>
        <translation>Nur die Seiten eines pdf mit diesen Nummern.</translation>
    </message>
    <message>
        <source>Mark revised lines of a screenplay in the margin.</source>
        <translation>Kennzeichnet überarbeitete Zeilen eines Drehbuchs am Rand.</translation>
    </message>
    <message>
        <source>Write a text across the pages of a pdf or png.</source>
        <translation>Schreibt einen Text quer über die Seiten eines pdf oder png.</translation>
    </message>
    <message>
        <source>--scenes takes a range such as 4-9</source>
        <translation>--scenes nimmt einen Bereich wie 4-9</translation>
    </message>
    <message>
        <source>--pages takes a range such as 3-7</source>
        <translation>--pages nimmt einen Bereich wie 3-7</translation>
    </message>
    <message>
        <source>Write the converted files there, under the names of the files that are read. Goes on after a failure.</source>
        <translation>Schreibt die gewandelten Dateien dorthin, unter den Namen der gelesenen. Macht nach einem Fehlschlag weiter.</translation>
    </message>
    <message>
        <source>With --into: keep the folders below the one that all files share.</source>
        <translation>Mit --into: behält die Ordner unter dem, den alle Dateien gemeinsam haben.</translation>
    </message>
    <message>
        <source>With --into: how many files to convert at a time. Default: as many as there are processors.</source>
        <translation>Mit --into: wie viele Dateien zugleich gewandelt werden. Vorgabe: so viele, wie es Prozessoren gibt.</translation>
    </message>
    <message>
        <source>say either --media or --media-from</source>
        <translation>sagen Sie entweder --media oder --media-from</translation>
    </message>
    <message>
        <source>Open pictures in this folder and below, instead of in that of IN.</source>
        <translation>Öffnet Bilder in diesem Ordner und darunter statt in dem von IN.</translation>
    </message>
    <message>
        <source>Open the pictures that codes name wherever they are.</source>
        <translation>Öffnet die Bilder, die Codes nennen, wo immer sie liegen.</translation>
    </message>
    <message>
        <source>Put notes into the text (inline), attach them to words (inspector), the comments of pages into the margin (margin) or leave them out (drop). Without this option they stay as they are in fdx, rtf and md, and stand at the foot and beside the text in pdf and png; other formats carry none.</source>
        <translation>Setzt Notizen in den Text (inline), hängt sie an Wörter (inspector), die Kommentare von Seiten an den Rand (margin) oder lässt sie weg (drop). Ohne diese Option bleiben sie in fdx, rtf und md, wie sie sind, und stehen in pdf und png am Fuß und neben dem Text; andere Formate haben keine.</translation>
    </message>
    <message>
        <source>Number the pages of a pdf or png that is no screenplay.</source>
        <translation>Nummeriert die Seiten eines pdf oder png, das kein Drehbuch ist.</translation>
    </message>
    <message>
        <source>note without a place</source>
        <translation>Notiz ohne Ort</translation>
    </message>
    <message>
        <source>notes without a place</source>
        <translation>Notizen ohne Ort</translation>
    </message>
    <message>
        <source>scene title</source>
        <translation>Szenentitel</translation>
    </message>
    <message>
        <source>scene titles</source>
        <translation>Szenentitel</translation>
    </message>
    <message>
        <source>header or footer</source>
        <translation>Kopf- oder Fußzeile</translation>
    </message>
    <message>
        <source>headers and footers</source>
        <translation>Kopf- und Fußzeilen</translation>
    </message>
    <message>
        <source>card of the beat board</source>
        <translation>Karte der Beat-Tafel</translation>
    </message>
    <message>
        <source>cards of the beat board</source>
        <translation>Karten der Beat-Tafel</translation>
    </message>
    <message>
        <source>beat of a character&apos;s arc</source>
        <translation>Schritt im Bogen einer Figur</translation>
    </message>
    <message>
        <source>beats of characters&apos; arcs</source>
        <translation>Schritte in den Bögen von Figuren</translation>
    </message>
    <message>
        <source>mark of hidden text, which is shown</source>
        <translation>Auszeichnung verborgenen Textes, der gezeigt wird</translation>
    </message>
    <message>
        <source>marks of hidden text, which is shown</source>
        <translation>Auszeichnungen verborgenen Textes, der gezeigt wird</translation>
    </message>
    <message>
        <source>Courier Prime is not installed: the pages are set in %1, and break elsewhere</source>
        <translation>Courier Prime ist nicht installiert: die Seiten sind in %1 gesetzt und brechen an anderen Stellen um</translation>
    </message>
    <message>
        <source>metadata other than title and author</source>
        <translation>andere Angaben als Titel und Autor</translation>
    </message>
    <message>
        <source>repeated note</source>
        <translation>wiederholte Notiz</translation>
    </message>
    <message>
        <source>repeated notes</source>
        <translation>wiederholte Notizen</translation>
    </message>
    <message>
        <source>Open the pictures that md and html name, where they are in this folder or below.</source>
        <translation>Öffnet die Bilder, die md und html nennen, wenn sie in diesem Ordner oder darunter liegen.</translation>
    </message>
    <message>
        <source>Make quotes, dashes and dots of md typographic.</source>
        <translation>Macht Anführungszeichen, Striche und Punkte von md typografisch.</translation>
    </message>
    <message>
        <source>Write the pictures of html and md as files into this folder, instead of into the page.</source>
        <translation>Schreibt die Bilder von html und md als Dateien in diesen Ordner statt in die Seite.</translation>
    </message>
    <message>
        <source>%1 left out; --extract-media FOLDER writes them as files</source>
        <translation>%1 ausgelassen; --extract-media ORDNER schreibt sie als Dateien</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1 von %2 Dateien</translation>
    </message>
    <message>
        <source>%1 not opened, outside of the folder for pictures; see --media-from and --media</source>
        <translation>%1 nicht geöffnet, außerhalb des Ordners für Bilder; siehe --media-from und --media</translation>
    </message>
    <message>
        <source>%1 not opened: of another machine</source>
        <translation>%1 nicht geöffnet: auf einem anderen Rechner</translation>
    </message>
    <message>
        <source>%1 not opened: not there, or no pictures</source>
        <translation>%1 nicht geöffnet: nicht da oder keine Bilder</translation>
    </message>
    <message>
        <source>no Content in the Final Draft file</source>
        <translation>in der Final-Draft-Datei fehlt Content</translation>
    </message>
    <message>
        <source>its tables have too many empty cells</source>
        <translation>ihre Tabellen haben zu viele leere Zellen</translation>
    </message>
    <message>
        <source>one of its lists has too many items</source>
        <translation>eine ihrer Listen hat zu viele Einträge</translation>
    </message>
    <message>
        <source>%1 left out that %2 cannot carry; rtf, html, odt and pdf keep them</source>
        <translation>%1 weggelassen, da %2 keine aufnimmt; rtf, html, odt und pdf behalten sie</translation>
    </message>
    <message>
        <source>Drawing pages</source>
        <translation>Seiten zeichnen</translation>
    </message>
    <message>
        <source>; --to fdx keeps all of that</source>
        <translation>; --to fdx behält all das</translation>
    </message>
    <message>
        <source>%1 not opened: not in that folder, or no pictures</source>
        <translation>%1 nicht geöffnet: nicht in diesem Ordner oder keine Bilder</translation>
    </message>
    <message>
        <source>%1 not opened; convert --media-from FOLDER opens those that are in it</source>
        <translation>%1 nicht geöffnet; convert --media-from ORDNER öffnet, was darin liegt</translation>
    </message>
    <message>
        <source>Laying out pages</source>
        <translation>Seiten umbrechen</translation>
    </message>
    <message>
        <source>--notes inline keeps them in the text, rtf and md beside it</source>
        <translation>--notes inline behält sie im Text, rtf und md neben ihm</translation>
    </message>
    <message>
        <source>, mvrtext endnotes lists footnotes behind it</source>
        <translation>, mvrtext endnotes führt Fußnoten dahinter auf</translation>
    </message>
    <message>
        <source>%1 left out that %2 cannot carry; %3</source>
        <translation>%1 weggelassen, da %2 keine aufnimmt; %3</translation>
    </message>
</context>
</TS>
