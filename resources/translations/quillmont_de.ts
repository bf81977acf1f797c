<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Quillmont</name>
    <message>
        <source>&#13;
&#13;
The error log was kept, and goes with the next report. You can also send the file yourself:&#13;
%1</source>
        <translation>&#13;
&#13;
Das Fehlerprotokoll wurde aufgehoben und geht mit dem nächsten Bericht mit. Sie können die Datei auch selbst senden:&#13;
%1</translation>
    </message>
    <message>
        <source>&#13;
&#13;
Work that was set aside earlier can be chosen when you answer No:</source>
        <translation>&#13;
&#13;
Früher beiseite gelegte Arbeit lässt sich wählen, wenn Sie mit Nein antworten:</translation>
    </message>
    <message>
        <source>&#13;
&#13;
Work that was set aside earlier can be chosen when you answer No:%1</source>
        <translation>&#13;
&#13;
Früher beiseite gelegte Arbeit lässt sich wählen, wenn Sie mit Nein antworten:%1</translation>
    </message>
    <message>
        <source>&#13;
Please choose another working folder.</source>
        <translation>&#13;
Bitte einen anderen Arbeitsordner wählen.</translation>
    </message>
    <message>
        <source> ...</source>
        <translation> ...</translation>
    </message>
    <message>
        <source> A double click puts it back.</source>
        <translation> Ein Doppelklick stellt es zurück.</translation>
    </message>
    <message>
        <source> has damaged time stamps, which were passed over.</source>
        <translation> hat beschädigte Zeitstempel, die übergangen wurden.</translation>
    </message>
    <message>
        <source> has damaged time stamps: its %1 ends at %2.</source>
        <translation> hat beschädigte Zeitstempel: %1 endet bei %2.</translation>
    </message>
    <message>
        <source> step</source>
        <translation> Schritt</translation>
    </message>
    <message>
        <source> steps</source>
        <translation> Schritte</translation>
    </message>
    <message>
        <source> Try an even width and height.</source>
        <translation> Versuchen Sie es mit gerader Breite und Höhe.</translation>
    </message>
    <message>
        <source>"%1" cannot be made: %2. Choose another place.</source>
        <translation>„%1“ kann nicht angelegt werden: %2. Wählen Sie einen anderen Ort.</translation>
    </message>
    <message>
        <source>"%1" cannot be read.</source>
        <translation>„%1“ ist nicht lesbar.</translation>
    </message>
    <message>
        <source>"%1" cannot be renamed.</source>
        <translation>„%1“ kann nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>"%1" cannot be written: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>"%1" cannot be written: %2.</source>
        <translation>„%1“ kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>"%1" could not be brought to the disk: %2. Check the disk, or choose another place.</source>
        <translation>„%1“ konnte nicht auf den Datenträger gebracht werden: %2. Prüfen Sie den Datenträger oder wählen Sie einen anderen Ort.</translation>
    </message>
    <message>
        <source>"%1" exists already.</source>
        <translation>„%1“ ist schon vorhanden.</translation>
    </message>
    <message>
        <source>"%1" has become shorter while it was read. Put the whole file back, and %2 again.</source>
        <translation>„%1“ ist beim Lesen kürzer geworden. Legen Sie die ganze Datei zurück und wiederholen Sie den Vorgang (%2).</translation>
    </message>
    <message>
        <source>"%1" has become shorter. Put the whole file back.</source>
        <translation>„%1“ ist kürzer geworden. Legen Sie die ganze Datei zurück.</translation>
    </message>
    <message>
        <source>"%1" has changed while it was copied.</source>
        <translation>„%1“ hat sich geändert, während es kopiert wurde.</translation>
    </message>
    <message>
        <source>"%1" has no frame size that a movie can have.</source>
        <translation>„%1“ hat keine Bildgröße, die ein Film haben kann.</translation>
    </message>
    <message>
        <source>"%1" is a ring of links. Name the file itself.</source>
        <translation>„%1“ ist ein Ring von Verknüpfungen. Nennen Sie die Datei selbst.</translation>
    </message>
    <message>
        <source>"%1" is missing. Put it back.</source>
        <translation>„%1“ fehlt. Legen Sie die Datei zurück.</translation>
    </message>
    <message>
        <source>"%1" is no file.</source>
        <translation>„%1“ ist keine Datei.</translation>
    </message>
    <message>
        <source>"%1" is not there.</source>
        <translation>„%1“ ist nicht da.</translation>
    </message>
    <message>
        <source>"%1" is not whole: frames or samples are missing.</source>
        <translation>„%1“ ist nicht vollständig: Es fehlen Bilder oder Töne.</translation>
    </message>
    <message>
        <source>"%1" is still being closed by the save that was stopped, and its folder may not be written to. Wait a little.</source>
        <translation>„%1“ wird noch vom abgebrochenen Speichern geschlossen, und in den Ordner darf nicht geschrieben werden. Warten Sie ein wenig.</translation>
    </message>
    <message>
        <source>"%1" is too large for a project.</source>
        <translation>„%1“ ist zu groß für ein Projekt.</translation>
    </message>
    <message>
        <source>"%1" is whole, but its folder could not be brought to the disk: %2. Check the disk.</source>
        <translation>„%1“ ist vollständig, aber der Ordner konnte nicht auf den Datenträger gebracht werden: %2. Prüfen Sie den Datenträger.</translation>
    </message>
    <message>
        <source>"%1" leads to a file that has no name. Name a file.</source>
        <translation>„%1“ führt zu einer Datei ohne Namen. Nennen Sie eine Datei.</translation>
    </message>
    <message>
        <source>"%1" was moved, removed or replaced while it was captured to.</source>
        <translation>„%1“ wurde während der Aufnahme verschoben, entfernt oder ersetzt.</translation>
    </message>
    <message>
        <source>"%1" was moved, removed or replaced while it was saved. Save it again.</source>
        <translation>„%1“ wurde beim Speichern verschoben, entfernt oder ersetzt. Speichern Sie noch einmal.</translation>
    </message>
    <message>
        <source>"%1", %2, %3 to undo</source>
        <translation>„%1“, %2, %3 rückgängig zu machen</translation>
    </message>
    <message>
        <source>"%1", %2, %3 to undo, %4</source>
        <translation>„%1“, %2, %3 rückgängig zu machen, %4</translation>
    </message>
    <message>
        <source>"%1", %2, %3%4 to undo</source>
        <translation>„%1“, %2, %3%4 rückgängig zu machen</translation>
    </message>
    <message>
        <source>%1&#13;
&#13;
The work with them is set aside, so that it can be brought back when they are there.</source>
        <translation>%1&#13;
&#13;
Die Arbeit mit ihnen ist beiseite gelegt und lässt sich zurückholen, wenn sie wieder da sind.</translation>
    </message>
    <message>
        <source>%1 (%2 Video and 1 Audio Stream)</source>
        <translation>%1 (%2 Video- und 1 Audiostream)</translation>
    </message>
    <message>
        <source>%1 - Add Text</source>
        <translation>%1 - Text hinzufügen</translation>
    </message>
    <message>
        <source>%1 - Help</source>
        <translation>%1 - Hilfe</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 ist schon vorhanden.
Möchten Sie die Datei ersetzen?</translation>
    </message>
    <message>
        <source>%1 belongs to somebody else. Choose another name.</source>
        <translation>%1 gehört jemand anderem. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>%1 Bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>%1 cannot encode %2 samples a second: %3.</source>
        <translation>%1 kann keine %2 Abtastwerte je Sekunde kodieren: %3.</translation>
    </message>
    <message>
        <source>%1 cannot encode pictures of %2 x %3: %4.</source>
        <translation>%1 kann keine Bilder von %2 x %3 kodieren: %4.</translation>
    </message>
    <message>
        <source>%1 failed: %2.</source>
        <translation>%1 ist gescheitert: %2.</translation>
    </message>
    <message>
        <source>%1 files are missing from the disk.</source>
        <translation>%1 Dateien fehlen auf dem Datenträger.</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 B/s</translation>
    </message>
    <message>
        <source>%1 Frames Captured, %2 Frames Dropped, %3 Seconds Captured</source>
        <translation>%1 Bilder aufgenommen, %2 Bilder ausgelassen, %3 Sekunden aufgenommen</translation>
    </message>
    <message>
        <source>%1 frames per second</source>
        <translation>%1 Bilder je Sekunde</translation>
    </message>
    <message>
        <source>%1 has damaged time stamps, which were passed over.</source>
        <translation>%1 hat beschädigte Zeitstempel, die übergangen wurden.</translation>
    </message>
    <message>
        <source>%1 has pictures of %2 x %3 points; more than %4 are not taken. Scale it down first.</source>
        <translation>%1 hat Bilder von %2 x %3 Punkten; mehr als %4 werden nicht angenommen. Verkleinern Sie sie zuvor.</translation>
    </message>
    <message>
        <source>%1 holds subtitles, and neither picture nor sound. Name the film that they belong to.</source>
        <translation>%1 enthält Untertitel und weder Bild noch Ton. Nennen Sie den Film, zu dem sie gehören.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 is a folder. Name a file in it.</source>
        <translation>%1 ist ein Ordner. Nennen Sie eine Datei darin.</translation>
    </message>
    <message>
        <source>%1 is a pipe or a device. Name a file.</source>
        <translation>%1 ist eine Pipe oder ein Gerät. Nennen Sie eine Datei.</translation>
    </message>
    <message>
        <source>%1 is a play list: it names other files and holds none. Name those files instead.</source>
        <translation>%1 ist eine Wiedergabeliste: Sie nennt andere Dateien und enthält keine. Nennen Sie stattdessen diese Dateien.</translation>
    </message>
    <message>
        <source>%1 is an animated WebP picture, which cannot be played here. Convert it to GIF or to a film.</source>
        <translation>%1 ist ein bewegtes WebP-Bild, das hier nicht abgespielt werden kann. Wandeln Sie es in GIF oder einen Film um.</translation>
    </message>
    <message>
        <source>%1 is in the media list.</source>
        <translation>%1 steht in der Medienliste.</translation>
    </message>
    <message>
        <source>%1 is larger than a MIDI song can be here (16 MB). Convert it to a sound file.</source>
        <translation>%1 ist größer, als ein MIDI-Stück hier sein kann (16 MB). Wandeln Sie es in eine Tondatei um.</translation>
    </message>
    <message>
        <source>%1 is missing from the disk</source>
        <translation>%1 fehlt auf dem Datenträger</translation>
    </message>
    <message>
        <source>%1 is not there. Create it, or choose another.</source>
        <translation>%1 ist nicht da. Legen Sie es an oder wählen Sie etwas anderes.</translation>
    </message>
    <message>
        <source>%1 is read-only. Change its permissions, or choose another name.</source>
        <translation>%1 ist schreibgeschützt. Ändern Sie die Rechte oder wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>%1 is too long for a name. Choose a shorter one.</source>
        <translation>%1 ist zu lang für einen Namen. Wählen Sie einen kürzeren.</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 Kbps</source>
        <translation>%1 kbit/s</translation>
    </message>
    <message>
        <source>%1 KHz</source>
        <translation>%1 kHz</translation>
    </message>
    <message>
        <source>%1 KHz%2</source>
        <translation>%1 kHz%2</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>noch %1</translation>
    </message>
    <message>
        <source>%1 may not be opened. Choose another.</source>
        <translation>%1 darf nicht geöffnet werden. Wählen Sie etwas anderes.</translation>
    </message>
    <message>
        <source>%1 may not be written to. Choose another.</source>
        <translation>In %1 darf nicht geschrieben werden. Wählen Sie etwas anderes.</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 missing. Unable to open project.</source>
        <translation>%1 fehlt. Das Projekt kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>%1 not found. Do you want to search for this file yourself?</source>
        <translation>%1 wurde nicht gefunden. Möchten Sie die Datei selbst suchen?</translation>
    </message>
    <message>
        <source>%1 of %2 frames copied unchanged</source>
        <translation>%1 von %2 Bildern unverändert kopiert</translation>
    </message>
    <message>
        <source>%1 pages</source>
        <translation>%1 Seiten</translation>
    </message>
    <message>
        <source>%1 pixels</source>
        <translation>%1 Pixel</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 Sekunden</translation>
    </message>
    <message>
        <source>%1 step</source>
        <translation>%1 Schritt</translation>
    </message>
    <message>
        <source>%1 steps</source>
        <translation>%1 Schritte</translation>
    </message>
    <message>
        <source>%1 The movie is kept without its title and the other texts.</source>
        <translation>%1 Der Film bleibt ohne seinen Titel und die übrigen Texte erhalten.</translation>
    </message>
    <message>
        <source>%1 times as fast as it plays</source>
        <translation>%1-fache Abspielgeschwindigkeit</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>%1 track</source>
        <translation>Spur %1</translation>
    </message>
    <message>
        <source>%1 What lies of it on the timeline is black and silent.</source>
        <translation>%1 Was davon auf der Zeitleiste liegt, ist schwarz und stumm.</translation>
    </message>
    <message>
        <source>%1 x %2, %3 frames a second</source>
        <translation>%1 x %2, %3 Bilder je Sekunde</translation>
    </message>
    <message>
        <source>%1% complete</source>
        <translation>%1 % fertig</translation>
    </message>
    <message>
        <source>%1%2. Open it in a text editor, or save it again.</source>
        <translation>%1%2. Öffnen Sie es mit einem Texteditor oder speichern Sie es noch einmal.</translation>
    </message>
    <message>
        <source>%1, %2 frames a second</source>
        <translation>%1, %2 Bilder je Sekunde</translation>
    </message>
    <message>
        <source>%1, %2fps</source>
        <translation>%1, %2 B/s</translation>
    </message>
    <message>
        <source>%1, at byte %2</source>
        <translation>%1, bei Byte %2</translation>
    </message>
    <message>
        <source>%1, at byte %2.</source>
        <translation>%1, bei Byte %2.</translation>
    </message>
    <message>
        <source>%1. The file itself is not damaged. %2, and %3 again.</source>
        <translation>%1. Die Datei selbst ist nicht beschädigt. %2 und wiederholen Sie den Vorgang (%3).</translation>
    </message>
    <message>
        <source>%1/Quillmont Tutorial</source>
        <translation>%1/Quillmont Tutorial</translation>
    </message>
    <message>
        <source>%1: the film stands here</source>
        <translation>%1: Hier steht der Film</translation>
    </message>
    <message>
        <source>%1it is too large for a project.</source>
        <translation>%1Das ist zu groß für ein Projekt.</translation>
    </message>
    <message>
        <source>(undone)</source>
        <translation>(zurückgenommen)</translation>
    </message>
    <message>
        <source>, Mono</source>
        <translation>, mono</translation>
    </message>
    <message>
        <source>, Stereo</source>
        <translation>, stereo</translation>
    </message>
    <message>
        <source>00:00:00 left     1000 times as fast as it plays     about 1000 MB in the end</source>
        <translation>noch 00:00:00     1000-fache Abspielgeschwindigkeit     am Ende etwa 1000 MB</translation>
    </message>
    <message>
        <source>1 page</source>
        <translation>1 Seite</translation>
    </message>
    <message>
        <source>50 Hz</source>
        <translation>50 Hz</translation>
    </message>
    <message>
        <source>60 Hz</source>
        <translation>60 Hz</translation>
    </message>
    <message>
        <source>A capture runs</source>
        <translation>Eine Aufnahme läuft</translation>
    </message>
    <message>
        <source>a journal is read by the machine that wrote it</source>
        <translation>ein Journal wird von der Maschine gelesen, die es schrieb</translation>
    </message>
    <message>
        <source>a journal that cannot be read</source>
        <translation>ein Journal, das nicht lesbar ist</translation>
    </message>
    <message>
        <source>A key frame is not where the file's own list says.</source>
        <translation>Ein Schlüsselbild steht nicht dort, wo die Liste der Datei es sagt.</translation>
    </message>
    <message>
        <source>A locked row cannot be edited.</source>
        <translation>Eine gesperrte Spur kann nicht bearbeitet werden.</translation>
    </message>
    <message>
        <source>A marker. Drag it to move it; click it and press F9 to remove it.</source>
        <translation>Eine Marke. Ziehen verschiebt sie; ein Klick und F9 entfernen sie.</translation>
    </message>
    <message>
        <source>a number in it cannot be read (%1).</source>
        <translation>eine Zahl darin ist nicht lesbar (%1).</translation>
    </message>
    <message>
        <source>A packet is not where the file's own list says.</source>
        <translation>Ein Paket steht nicht dort, wo die Liste der Datei es sagt.</translation>
    </message>
    <message>
        <source>A picture could not be scaled.</source>
        <translation>Ein Bild konnte nicht skaliert werden.</translation>
    </message>
    <message>
        <source>A picture of this kind cannot be scaled.</source>
        <translation>Ein Bild dieser Art kann nicht skaliert werden.</translation>
    </message>
    <message>
        <source>A project cannot lie in a folder with "qpj" in its name.</source>
        <translation>Ein Projekt kann nicht in einem Ordner liegen, dessen Name „qpj“ enthält.</translation>
    </message>
    <message>
        <source>A quarter of a television picture at its own rate of frames.</source>
        <translation>Ein Viertel eines Fernsehbildes mit dessen Bildrate.</translation>
    </message>
    <message>
        <source>A quarter of a television picture, for pages that play clips.</source>
        <translation>Ein Viertel eines Fernsehbildes, für Webseiten mit Filmen.</translation>
    </message>
    <message>
        <source>A small picture and simple sound, for modems and shared networks.</source>
        <translation>Ein kleines Bild und einfacher Ton, für Modems und geteilte Netze.</translation>
    </message>
    <message>
        <source>A small picture and speech, for the slowest connections.</source>
        <translation>Ein kleines Bild und Sprache, für die langsamsten Verbindungen.</translation>
    </message>
    <message>
        <source>A snap is being taken</source>
        <translation>Ein Standbild wird aufgenommen</translation>
    </message>
    <message>
        <source>A temporary support file by that name already exists. Please specify another filename.</source>
        <translation>Eine temporäre Hilfsdatei dieses Namens ist schon vorhanden. Bitte einen anderen Dateinamen angeben.</translation>
    </message>
    <message>
        <source>a track has no more numbers for it</source>
        <translation>eine Spur hat keine Nummern mehr dafür</translation>
    </message>
    <message>
        <source>A video editor for holidays, lectures and school projects.
Free software under the GNU General Public License, version 3 or later, without any warranty.</source>
        <translation>Ein Videoschnittprogramm für Urlaub, Vorträge und Schule.
Freie Software unter der GNU General Public License, Version 3 oder neuer, ohne jede Gewähr.</translation>
    </message>
    <message>
        <source>A whole picture of a computer's screen of old, for fast networks.</source>
        <translation>Ein ganzes Bild eines früheren Computerbildschirms, für schnelle Netze.</translation>
    </message>
    <message>
        <source>A whole television picture at its own rate of frames, with square pixels.</source>
        <translation>Ein ganzes Fernsehbild mit dessen Bildrate und quadratischen Pixeln.</translation>
    </message>
    <message>
        <source>about %1 %2 in the end</source>
        <translation>am Ende etwa %1 %2</translation>
    </message>
    <message>
        <source>About Quillmont</source>
        <translation>Über Quillmont</translation>
    </message>
    <message>
        <source>&amp;About Quillmont...</source>
        <translation>Ü&amp;ber Quillmont...</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Actions that make sense now, effects, and the history of what you did.</source>
        <translation>Aktionen, die jetzt sinnvoll sind, Effekte und der Verlauf dessen, was Sie taten.</translation>
    </message>
    <message>
        <source>Add an effect</source>
        <translation>Einen Effekt hinzufügen</translation>
    </message>
    <message>
        <source>Add Effect (To Timeline)</source>
        <translation>Effekt hinzufügen (zur Zeitleiste)</translation>
    </message>
    <message>
        <source>Add &amp;Effect to Timeline</source>
        <translation>Effekt zur Zeitleiste &amp;hinzufügen</translation>
    </message>
    <message>
        <source>Add Effect to Timeline</source>
        <translation>Effekt zur Zeitleiste hinzufügen</translation>
    </message>
    <message>
        <source>Add Last Captured &amp;File to Media List</source>
        <translation>Zuletzt aufgenommene &amp;Datei in die Medienliste</translation>
    </message>
    <message>
        <source>Add &amp;Last Snap to Media List</source>
        <translation>&amp;Letztes Standbild in die Medienliste</translation>
    </message>
    <message>
        <source>&amp;Add Marker</source>
        <translation>Mark&amp;e setzen</translation>
    </message>
    <message>
        <source>Add Marker</source>
        <translation>Marke setzen</translation>
    </message>
    <message>
        <source>Add media file to overlay track</source>
        <translation>Datei als Overlay</translation>
    </message>
    <message>
        <source>Add media file to the timeline</source>
        <translation>Datei auf die Zeitleiste</translation>
    </message>
    <message>
        <source>Add Te&amp;xt</source>
        <translation>Te&amp;xt hinzufügen</translation>
    </message>
    <message>
        <source>Add Text</source>
        <translation>Text hinzufügen</translation>
    </message>
    <message>
        <source>Add Text (To Timeline)</source>
        <translation>Text hinzufügen (zur Zeitleiste)</translation>
    </message>
    <message>
        <source>Add text as overlay</source>
        <translation>Text als Overlay hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add to Overlay</source>
        <translation>Als &amp;Overlay hinzufügen</translation>
    </message>
    <message>
        <source>A&amp;dd to Overlay</source>
        <translation>Als &amp;Overlay hinzufügen</translation>
    </message>
    <message>
        <source>Add to Overlay</source>
        <translation>Als Overlay hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add to Timeline</source>
        <translation>Auf die Zei&amp;tleiste</translation>
    </message>
    <message>
        <source>Add To Timeline</source>
        <translation>Auf die Zeitleiste</translation>
    </message>
    <message>
        <source>Add to &amp;Timeline</source>
        <translation>Auf die &amp;Zeitleiste</translation>
    </message>
    <message>
        <source>Add to Timeline</source>
        <translation>Auf die Zeitleiste</translation>
    </message>
    <message>
        <source>Adds an effect at the slider or over the range.</source>
        <translation>Fügt am Schieber oder über dem Bereich einen Effekt hinzu.</translation>
    </message>
    <message>
        <source>Adds the effect that is selected in the tools panel, at the slider or over the range.</source>
        <translation>Fügt den in den Werkzeugen gewählten Effekt am Schieber oder über dem Bereich hinzu.</translation>
    </message>
    <message>
        <source>Adds the selected effect, at the slider or over the range.</source>
        <translation>Fügt den gewählten Effekt am Schieber oder über dem Bereich hinzu.</translation>
    </message>
    <message>
        <source>Adds words that you write as an overlay.</source>
        <translation>Fügt geschriebene Worte als Overlay hinzu.</translation>
    </message>
    <message>
        <source>Advanced Save Options</source>
        <translation>Erweiterte Speicheroptionen</translation>
    </message>
    <message>
        <source>A&amp;dvanced...</source>
        <translation>&amp;Erweitert...</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>All supported Media Files</source>
        <translation>Alle unterstützten Mediendateien</translation>
    </message>
    <message>
        <source>All that lies on the rows, in order. Click a piece to select it; drag it onto another one to put it in front of that.</source>
        <translation>Alles, was auf den Spuren liegt, der Reihe nach. Ein Klick wählt ein Stück; auf ein anderes gezogen, kommt es davor.</translation>
    </message>
    <message>
        <source>Alt+, Alt+.</source>
        <translation>Alt+, Alt+.</translation>
    </message>
    <message>
        <source>another project was opened</source>
        <translation>ein anderes Projekt wurde geöffnet</translation>
    </message>
    <message>
        <source>Aperture Priority Mode</source>
        <translation>Blende von Hand</translation>
    </message>
    <message>
        <source>Application Access Failure.</source>
        <translation>Kein Zugriff auf das Programm.</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>Appl&amp;y</source>
        <translation>An&amp;wenden</translation>
    </message>
    <message>
        <source>Apply to entire &amp;track</source>
        <translation>Auf die ganze &amp;Spur anwenden</translation>
    </message>
    <message>
        <source>Applying Capture Options will restore Video and Audio Settings (Dimension, Frame Rate etc.)</source>
        <translation>Das Anwenden der Aufnahmeoptionen setzt Video- und Audioeinstellungen zurück (Bildgröße, Bildrate usw.)</translation>
    </message>
    <message>
        <source>Are you sure you want to clear the timeline?</source>
        <translation>Möchten Sie die Zeitleiste wirklich leeren?</translation>
    </message>
    <message>
        <source>Are you sure you want to close the current project?</source>
        <translation>Möchten Sie das Projekt wirklich schließen?</translation>
    </message>
    <message>
        <source>&amp;Arrange All</source>
        <translation>&amp;Alle anordnen</translation>
    </message>
    <message>
        <source>as the clips</source>
        <translation>wie die Clips</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
    <message>
        <source>AS&amp;F (Windows Media)</source>
        <translation>AS&amp;F (Windows Media)</translation>
    </message>
    <message>
        <source>Asf File</source>
        <translation>Asf-Datei</translation>
    </message>
    <message>
        <source>Asf files</source>
        <translation>Asf-Dateien</translation>
    </message>
    <message>
        <source>Atleast one stream (Video or Audio) should be kept selected.</source>
        <translation>Wenigstens ein Stream (Video oder Audio) muss gewählt bleiben.</translation>
    </message>
    <message>
        <source>&amp;Audio</source>
        <translation>&amp;Audio</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Audio %1</source>
        <translation>Audio %1</translation>
    </message>
    <message>
        <source>&amp;Audio Compressor</source>
        <translation>Audi&amp;okompressor</translation>
    </message>
    <message>
        <source>Audio C&amp;ompressor</source>
        <translation>Audi&amp;okompressor</translation>
    </message>
    <message>
        <source>Audio Compressor</source>
        <translation>Audiokompressor</translation>
    </message>
    <message>
        <source>&amp;Audio compressor:</source>
        <translation>&amp;Audiokompressor:</translation>
    </message>
    <message>
        <source>Aud&amp;io Device</source>
        <translation>Aud&amp;iogerät</translation>
    </message>
    <message>
        <source>Audio device could not be initialized.</source>
        <translation>Das Audiogerät konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Audio device not found.</source>
        <translation>Audiogerät nicht gefunden.</translation>
    </message>
    <message>
        <source>Audio Files (*.au; *.midi; *.mp3; *.wav; *.wma)</source>
        <translation>Tondateien (*.au; *.midi; *.mp3; *.wav; *.wma)</translation>
    </message>
    <message>
        <source>Audio for archives (160 Kbps stereo)</source>
        <translation>Ton für Archive (160 kbit/s stereo)</translation>
    </message>
    <message>
        <source>Audio for archives (192 Kbps stereo)</source>
        <translation>Ton für Archive (192 kbit/s stereo)</translation>
    </message>
    <message>
        <source>Audio for CD-quality (96 Kbps stereo)</source>
        <translation>Ton in CD-Qualität (96 kbit/s stereo)</translation>
    </message>
    <message>
        <source>Audio for CD-quality transparency (128 Kbps stereo)</source>
        <translation>Ton in voller CD-Qualität (128 kbit/s stereo)</translation>
    </message>
    <message>
        <source>Audio for FM radio quality (48 Kbps stereo)</source>
        <translation>Ton in UKW-Qualität (48 kbit/s stereo)</translation>
    </message>
    <message>
        <source>Audio for near-CD quality (64 Kbps stereo)</source>
        <translation>Ton nahe der CD-Qualität (64 kbit/s stereo)</translation>
    </message>
    <message>
        <source>Audio for speech and dial-up modems (32 Kbps mono)</source>
        <translation>Ton für Sprache und Modems (32 kbit/s mono)</translation>
    </message>
    <message>
        <source>Audio Formats</source>
        <translation>Audioformate</translation>
    </message>
    <message>
        <source>Audio &amp;Formats...</source>
        <translation>Audio&amp;formate...</translation>
    </message>
    <message>
        <source>Audio frequency:</source>
        <translation>Abtastrate:</translation>
    </message>
    <message>
        <source>Audio Info</source>
        <translation>Audioangaben</translation>
    </message>
    <message>
        <source>Audio Info    </source>
        <translation>Audioangaben    </translation>
    </message>
    <message>
        <source>Audio Profile</source>
        <translation>Audioprofil</translation>
    </message>
    <message>
        <source>Audio Settings</source>
        <translation>Audioeinstellungen</translation>
    </message>
    <message>
        <source>&amp;Audio Settings...</source>
        <translation>&amp;Audioeinstellungen...</translation>
    </message>
    <message>
        <source>Audio Stream</source>
        <translation>Audiostream</translation>
    </message>
    <message>
        <source>&amp;Audio to Video</source>
        <translation>&amp;Audio nach Video</translation>
    </message>
    <message>
        <source>A&amp;uthor:</source>
        <translation>A&amp;utor:</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Auto Exposure</source>
        <translation>Belichtungsautomatik</translation>
    </message>
    <message>
        <source>Auto Exposure, Bias</source>
        <translation>Belichtungskorrektur</translation>
    </message>
    <message>
        <source>Auto Mode</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>&amp;AVI</source>
        <translation>&amp;AVI</translation>
    </message>
    <message>
        <source>AVI File</source>
        <translation>AVI-Datei</translation>
    </message>
    <message>
        <source>Avi File</source>
        <translation>Avi-Datei</translation>
    </message>
    <message>
        <source>Avi files</source>
        <translation>Avi-Dateien</translation>
    </message>
    <message>
        <source>AVI &amp;Options</source>
        <translation>AVI-&amp;Optionen</translation>
    </message>
    <message>
        <source>AVI &amp;Save Options</source>
        <translation>AVI-&amp;Speicheroptionen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Back&amp;ground Color...</source>
        <translation>&amp;Hintergrundfarbe...</translation>
    </message>
    <message>
        <source>Backlight Compensation</source>
        <translation>Gegenlichtausgleich</translation>
    </message>
    <message>
        <source>Bad file name or number</source>
        <translation>Ungültiger Dateiname</translation>
    </message>
    <message>
        <source>Begins a new project, and asks for the size of its movie.</source>
        <translation>Beginnt ein neues Projekt und fragt nach der Größe seines Films.</translation>
    </message>
    <message>
        <source>Begins at %1</source>
        <translation>Beginnt bei %1</translation>
    </message>
    <message>
        <source>Bit Rate</source>
        <translation>Bitrate</translation>
    </message>
    <message>
        <source>Bitmap File</source>
        <translation>Bitmap-Datei</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>&amp;Blue</source>
        <translation>&amp;Blau</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Blue Balance</source>
        <translation>Blauanteil</translation>
    </message>
    <message>
        <source>&amp;Blur</source>
        <translation>&amp;Unschärfe</translation>
    </message>
    <message>
        <source>Blur</source>
        <translation>Unschärfe</translation>
    </message>
    <message>
        <source>&amp;Bold</source>
        <translation>F&amp;ett</translation>
    </message>
    <message>
        <source>&amp;Bottom Left</source>
        <translation>&amp;Unten links</translation>
    </message>
    <message>
        <source>B&amp;ottom Right</source>
        <translation>U&amp;nten rechts</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>&amp;Bring Back</source>
        <translation>Zurück&amp;holen</translation>
    </message>
    <message>
        <source>Bringing back file %1 of %2 (%3)</source>
        <translation>Datei %1 von %2 wird zurückgeholt (%3)</translation>
    </message>
    <message>
        <source>brought back in part</source>
        <translation>teilweise zurückgeholt</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>Building Timeline (this may take some time)...</source>
        <translation>Zeitleiste wird aufgebaut (das kann etwas dauern)...</translation>
    </message>
    <message>
        <source>Camera Settings</source>
        <translation>Kameraeinstellungen</translation>
    </message>
    <message>
        <source>&amp;Camera Settings...</source>
        <translation>&amp;Kameraeinstellungen...</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel was selected.</source>
        <translation>Es wurde Abbrechen gewählt.</translation>
    </message>
    <message>
        <source>Cannot open the project "%1": %2</source>
        <translation>Das Projekt „%1“ kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>Cannot play back the file: the format is not supported.</source>
        <translation>Die Datei kann nicht abgespielt werden: Das Format wird nicht unterstützt.</translation>
    </message>
    <message>
        <source>Cannot read "%1": %2</source>
        <translation>„%1“ ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>Cannot read "%1": %2. The file itself is not damaged. %3, and %4 again.</source>
        <translation>„%1“ ist nicht lesbar: %2. Die Datei selbst ist nicht beschädigt. %3 und wiederholen Sie den Vorgang (%4).</translation>
    </message>
    <message>
        <source>Cannot save "%1": %2 Choose another compressor.</source>
        <translation>„%1“ kann nicht gespeichert werden: %2 Wählen Sie einen anderen Kompressor.</translation>
    </message>
    <message>
        <source>Cannot write "%1": %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Cannot write "%1": %2.</source>
        <translation>„%1“ kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>Cannot write "%1": %2. %3</source>
        <translation>„%1“ kann nicht geschrieben werden: %2. %3</translation>
    </message>
    <message>
        <source>&amp;Capture</source>
        <translation>A&amp;ufnahme</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Capture device not found</source>
        <translation>Aufnahmegerät nicht gefunden</translation>
    </message>
    <message>
        <source>Capture Dimension</source>
        <translation>Aufnahmegröße</translation>
    </message>
    <message>
        <source>&amp;Capture file:</source>
        <translation>&amp;Aufnahmedatei:</translation>
    </message>
    <message>
        <source>Capture settings</source>
        <translation>Aufnahmeeinstellungen</translation>
    </message>
    <message>
        <source>Capture Snap</source>
        <translation>Standbild</translation>
    </message>
    <message>
        <source>Capture the &amp;Screen</source>
        <translation>Den &amp;Bildschirm aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Capture...</source>
        <translation>&amp;Aufnehmen...</translation>
    </message>
    <message>
        <source>Captured Audio %1 Seconds</source>
        <translation>%1 Sekunden Audio aufgenommen</translation>
    </message>
    <message>
        <source>Capturing a movie</source>
        <translation>Ein Film wird aufgenommen</translation>
    </message>
    <message>
        <source>Capturing needs the library libavdevice, which is not installed.</source>
        <translation>Zum Aufnehmen fehlt die Bibliothek libavdevice.</translation>
    </message>
    <message>
        <source>Center &amp;Horizontally</source>
        <translation>&amp;Waagrecht mittig</translation>
    </message>
    <message>
        <source>&amp;Center Left</source>
        <translation>&amp;Mitte links</translation>
    </message>
    <message>
        <source>C&amp;enter Right</source>
        <translation>M&amp;itte rechts</translation>
    </message>
    <message>
        <source>Center &amp;Vertically</source>
        <translation>Senkre&amp;cht mittig</translation>
    </message>
    <message>
        <source>Change the colour of %1 bars</source>
        <translation>Die Farbe der Balken ändern: %1</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Ändern...</translation>
    </message>
    <message>
        <source>Check its disk or its connection</source>
        <translation>Prüfen Sie den Datenträger oder die Verbindung</translation>
    </message>
    <message>
        <source>Choose a folder that exists.</source>
        <translation>Wählen Sie einen vorhandenen Ordner.</translation>
    </message>
    <message>
        <source>Choose a folder that you may write to.</source>
        <translation>Wählen Sie einen Ordner, in den Sie schreiben dürfen.</translation>
    </message>
    <message>
        <source>Choose a shorter name.</source>
        <translation>Wählen Sie einen kürzeren Namen.</translation>
    </message>
    <message>
        <source>Choose the name of a file.</source>
        <translation>Wählen Sie einen Dateinamen.</translation>
    </message>
    <message>
        <source>Chooses how the selected picture fits into the frame.</source>
        <translation>Bestimmt, wie das gewählte Bild in den Rahmen passt.</translation>
    </message>
    <message>
        <source>Chooses which colour of the selected overlay is transparent.</source>
        <translation>Bestimmt, welche Farbe des gewählten Overlays durchsichtig ist.</translation>
    </message>
    <message>
        <source>Chosen color</source>
        <translation>Gewählte Farbe</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Clear Effect</source>
        <translation>Effekte löschen</translation>
    </message>
    <message>
        <source>Clear Effect Track</source>
        <translation>Effektspur leeren</translation>
    </message>
    <message>
        <source>Clear E&amp;ffects</source>
        <translation>Effekte l&amp;öschen</translation>
    </message>
    <message>
        <source>Clear Effects</source>
        <translation>Effekte löschen</translation>
    </message>
    <message>
        <source>Clear O&amp;verlay</source>
        <translation>Ov&amp;erlayspur leeren</translation>
    </message>
    <message>
        <source>Clear Overlay</source>
        <translation>Overlayspur leeren</translation>
    </message>
    <message>
        <source>Clear Overlay Track</source>
        <translation>Overlayspur leeren</translation>
    </message>
    <message>
        <source>Clear Overlays</source>
        <translation>Overlays löschen</translation>
    </message>
    <message>
        <source>Clear &amp;Timeline</source>
        <translation>&amp;Zeitleiste leeren</translation>
    </message>
    <message>
        <source>Clear Timeline</source>
        <translation>Zeitleiste leeren</translation>
    </message>
    <message>
        <source>click here</source>
        <translation>hier klicken</translation>
    </message>
    <message>
        <source>Click here to write the text</source>
        <translation>Hier klicken, um den Text zu schreiben</translation>
    </message>
    <message>
        <source>Click the timeline first to edit it.</source>
        <translation>Klicken Sie zuerst auf die Zeitleiste, um sie zu bearbeiten.</translation>
    </message>
    <message>
        <source>Click to move text using the direction keys</source>
        <translation>Klicken, um den Text mit den Pfeiltasten zu bewegen</translation>
    </message>
    <message>
        <source>Click to type your text</source>
        <translation>Klicken, um Text zu schreiben</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>Sch&amp;ließen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&amp;Close File</source>
        <translation>Datei s&amp;chließen</translation>
    </message>
    <message>
        <source>Close Gap</source>
        <translation>Lücke schließen</translation>
    </message>
    <message>
        <source>Close other programs</source>
        <translation>Schließen Sie andere Programme</translation>
    </message>
    <message>
        <source>Close other programs that capture, and open this window again.</source>
        <translation>Schließen Sie andere Programme, die aufnehmen, und öffnen Sie dieses Fenster noch einmal.</translation>
    </message>
    <message>
        <source>Close other programs that use the devices, and open this window again.</source>
        <translation>Schließen Sie andere Programme, die die Geräte benutzen, und öffnen Sie dieses Fenster noch einmal.</translation>
    </message>
    <message>
        <source>Clos&amp;e Project</source>
        <translation>Projekt schl&amp;ießen</translation>
    </message>
    <message>
        <source>Close the other window first.</source>
        <translation>Schließen Sie zuerst das andere Fenster.</translation>
    </message>
    <message>
        <source>Closes all gaps.</source>
        <translation>Schließt alle Lücken.</translation>
    </message>
    <message>
        <source>Closes Quillmont, and asks first when there are changes.</source>
        <translation>Schließt Quillmont und fragt zuvor, wenn es Änderungen gibt.</translation>
    </message>
    <message>
        <source>Coarse blocks, which grow and shrink again.</source>
        <translation>Grobe Blöcke, die wachsen und wieder kleiner werden.</translation>
    </message>
    <message>
        <source>Color Effects</source>
        <translation>Farbeffekte</translation>
    </message>
    <message>
        <source>Color Settings</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>&amp;Color...</source>
        <translation>&amp;Farbe...</translation>
    </message>
    <message>
        <source>Comes up from black, goes down to black, or dips to black over a cut.</source>
        <translation>Blendet aus Schwarz auf, nach Schwarz ab oder über einem Schnitt durch Schwarz.</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Compressor Failure: Please select another compressor and try again.</source>
        <translation>Der Kompressor ist gescheitert: Bitte einen anderen wählen und noch einmal versuchen.</translation>
    </message>
    <message>
        <source>Connect a camera and open this window again.</source>
        <translation>Schließen Sie eine Kamera an und öffnen Sie dieses Fenster noch einmal.</translation>
    </message>
    <message>
        <source>Content Type</source>
        <translation>Inhaltstyp</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation>In&amp;halt</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Contents or index</source>
        <translation>Inhalt oder Index</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Kontrast</translation>
    </message>
    <message>
        <source>Control volume</source>
        <translation>Lautstärke regeln</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>Ko&amp;pieren</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy selection</source>
        <translation>Auswahl kopieren</translation>
    </message>
    <message>
        <source>&amp;Copy unchanged parts as they are</source>
        <translation>Unveränderte Tei&amp;le kopieren, wie sie sind</translation>
    </message>
    <message>
        <source>&amp;Copy Versions</source>
        <translation>Versionen &amp;kopieren</translation>
    </message>
    <message>
        <source>Cop&amp;yright:</source>
        <translation>Cop&amp;yright:</translation>
    </message>
    <message>
        <source>Create a new project</source>
        <translation>Neues Projekt</translation>
    </message>
    <message>
        <source>Created On</source>
        <translation>Erstellt am</translation>
    </message>
    <message>
        <source>Cr&amp;op</source>
        <translation>&amp;Freistellen</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Freistellen</translation>
    </message>
    <message>
        <source>C&amp;rop (Keep original dimension)</source>
        <translation>&amp;Beschneiden (Originalgröße behalten)</translation>
    </message>
    <message>
        <source>Crop selection</source>
        <translation>Auswahl freistellen</translation>
    </message>
    <message>
        <source>Crop So&amp;urce(s)</source>
        <translation>&amp;Quelle(n) freistellen</translation>
    </message>
    <message>
        <source>Crop source(s)</source>
        <translation>Quelle(n) freistellen</translation>
    </message>
    <message>
        <source>Crop Sources</source>
        <translation>Quellen freistellen</translation>
    </message>
    <message>
        <source>CropSources</source>
        <translation>Quellen freistellen</translation>
    </message>
    <message>
        <source>Ctrl+, Ctrl+.</source>
        <translation>Ctrl+, Ctrl+.</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigene</translation>
    </message>
    <message>
        <source>&amp;Custom Preview Dimension</source>
        <translation>&amp;Eigene Vorschaugröße</translation>
    </message>
    <message>
        <source>Custom Snap Dimension</source>
        <translation>Eigene Standbildgröße</translation>
    </message>
    <message>
        <source>Custom Video Di&amp;mension</source>
        <translation>E&amp;igene Bildgröße</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Cut selection</source>
        <translation>Auswahl ausschneiden</translation>
    </message>
    <message>
        <source>Cuts in two what lies under the slider.</source>
        <translation>Teilt, was unter dem Schieber liegt.</translation>
    </message>
    <message>
        <source>Cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Standard</translation>
    </message>
    <message>
        <source>Defa&amp;ult</source>
        <translation>Stan&amp;dard</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>&amp;Defaults</source>
        <translation>Standardwer&amp;te</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete and Close &amp;Gap</source>
        <translation>Löschen und Lücke schlie&amp;ßen</translation>
    </message>
    <message>
        <source>Delete selection</source>
        <translation>Auswahl löschen</translation>
    </message>
    <message>
        <source>Deletes, and draws up what lies behind.</source>
        <translation>Löscht und zieht das Folgende heran.</translation>
    </message>
    <message>
        <source>Descriptio&amp;n</source>
        <translation>&amp;Beschreibung</translation>
    </message>
    <message>
        <source>D&amp;escription:</source>
        <translation>Be&amp;schreibung:</translation>
    </message>
    <message>
        <source>Description:</source>
        <translation>Beschreibung:</translation>
    </message>
    <message>
        <source>&amp;Detail</source>
        <translation>&amp;Details</translation>
    </message>
    <message>
        <source>Detail</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Dimension</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Dimension:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Disable</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Ausgeschaltet</translation>
    </message>
    <message>
        <source>Displays the current time of the video</source>
        <translation>Zeigt die Zeit des Videos</translation>
    </message>
    <message>
        <source>Displays the total duration of the video</source>
        <translation>Zeigt die Dauer des Videos</translation>
    </message>
    <message>
        <source>Divider above the timeline</source>
        <translation>Trennlinie über der Zeitleiste</translation>
    </message>
    <message>
        <source>Divider between list and tracks</source>
        <translation>Trennlinie zwischen Liste und Spuren</translation>
    </message>
    <message>
        <source>Divider between media list and preview</source>
        <translation>Trennlinie zwischen Medienliste und Vorschau</translation>
    </message>
    <message>
        <source>Division by zero</source>
        <translation>Division durch null</translation>
    </message>
    <message>
        <source>&amp;Do not show this window ahead of a capture</source>
        <translation>Dieses Fenster vor einer Aufnahme &amp;nicht zeigen</translation>
    </message>
    <message>
        <source>Do &amp;not show Tutorial on startup</source>
        <translation>Die Einführung beim Start &amp;nicht zeigen</translation>
    </message>
    <message>
        <source>Do not show Tutorial on startup</source>
        <translation>Die Einführung beim Start nicht zeigen</translation>
    </message>
    <message>
        <source>Do you want save your changes before closing?</source>
        <translation>Möchten Sie Ihre Änderungen vor dem Schließen speichern?</translation>
    </message>
    <message>
        <source>Do you want to save your changes?</source>
        <translation>Möchten Sie Ihre Änderungen speichern?</translation>
    </message>
    <message>
        <source>Don't Send</source>
        <translation>Nicht senden</translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Drag it to give the list or the rows more room.</source>
        <translation>Ziehen gibt der Liste oder den Spuren mehr Platz.</translation>
    </message>
    <message>
        <source>Drag it to give the media list or the preview more room.</source>
        <translation>Ziehen gibt der Medienliste oder der Vorschau mehr Platz.</translation>
    </message>
    <message>
        <source>Drag it to give the timeline or the panels above it more room.</source>
        <translation>Ziehen gibt der Zeitleiste oder den Feldern darüber mehr Platz.</translation>
    </message>
    <message>
        <source>Drag to see another place of the selected file.</source>
        <translation>Ziehen zeigt eine andere Stelle der gewählten Datei.</translation>
    </message>
    <message>
        <source>Drag to trim the end; the speed stays</source>
        <translation>Ziehen trimmt das Ende; die Geschwindigkeit bleibt</translation>
    </message>
    <message>
        <source>Drag to trim the start; the speed stays</source>
        <translation>Ziehen trimmt den Anfang; die Geschwindigkeit bleibt</translation>
    </message>
    <message>
        <source>Drop it on Audio 1, then choose Edit &gt; Move to Audio 2</source>
        <translation>Auf Audio 1 fallen lassen, dann Bearbeiten &gt; Nach Audio 2 verschieben</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>DV takes 720 x 576 at 25 frames a second, and 720 x 480 at 30000/1001.</source>
        <translation>DV nimmt 720 x 576 mit 25 Bildern je Sekunde und 720 x 480 mit 30000/1001.</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Edit Context</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Effect</source>
        <translation>Effekt</translation>
    </message>
    <message>
        <source>Effect Track</source>
        <translation>Effektspur</translation>
    </message>
    <message>
        <source>Effects</source>
        <translation>Effekte</translation>
    </message>
    <message>
        <source>Element %1, byte %2: %3</source>
        <translation>Element %1, Byte %2: %3</translation>
    </message>
    <message>
        <source>&amp;Emboss</source>
        <translation>&amp;Relief</translation>
    </message>
    <message>
        <source>Emboss</source>
        <translation>Relief</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>Leer</translation>
    </message>
    <message>
        <source>Empty the filter</source>
        <translation>Den Filter leeren</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>End of the capture</source>
        <translation>Ende der Aufnahme</translation>
    </message>
    <message>
        <source>End of the selection</source>
        <translation>Ende der Auswahl</translation>
    </message>
    <message>
        <source>E&amp;nd Selection</source>
        <translation>A&amp;uswahlende</translation>
    </message>
    <message>
        <source>Ends at %1</source>
        <translation>Endet bei %1</translation>
    </message>
    <message>
        <source>Ends playing, and goes back to the beginning.</source>
        <translation>Beendet das Abspielen und geht zum Anfang zurück.</translation>
    </message>
    <message>
        <source>Ends the task after the file that is being read.</source>
        <translation>Beendet den Vorgang nach der Datei, die gerade gelesen wird.</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>&amp;Engrave</source>
        <translation>&amp;Gravur</translation>
    </message>
    <message>
        <source>Engrave</source>
        <translation>Gravur</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Error saving project.&#13;
&#13;
A component required by Quillmont to handle Projects (msxml3.dll) is missing. &#13;
&#13;
Please re-install Quillmont.</source>
        <translation>Fehler beim Speichern des Projekts.&#13;
&#13;
Ein Bestandteil, den Quillmont für Projekte braucht (msxml3.dll), fehlt. &#13;
&#13;
Bitte Quillmont neu installieren.</translation>
    </message>
    <message>
        <source>Error saving project.&#13;
&#13;
A component required by Quillmont to handle Projects (msxml3.dll) is missing. &#13;
&#13;
Please reinstall Quillmont.</source>
        <translation>Fehler beim Speichern des Projekts.&#13;
&#13;
Ein Bestandteil, den Quillmont für Projekte braucht (msxml3.dll), fehlt. &#13;
&#13;
Bitte Quillmont neu installieren.</translation>
    </message>
    <message>
        <source>Error Saving Timeline. Please select a different %1 and try again.</source>
        <translation>Fehler beim Speichern der Zeitleiste. Bitte etwas anderes wählen (%1) und noch einmal versuchen.</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>Been&amp;den</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Belichtung</translation>
    </message>
    <message>
        <source>Exposure (Absolute)</source>
        <translation>Belichtungszeit</translation>
    </message>
    <message>
        <source>Exposure Time, Absolute</source>
        <translation>Belichtungszeit</translation>
    </message>
    <message>
        <source>Exposure, Auto</source>
        <translation>Belichtungsautomatik</translation>
    </message>
    <message>
        <source>Exposure, Auto Priority</source>
        <translation>Bildrate nach der Belichtung</translation>
    </message>
    <message>
        <source>Exposure, Dynamic Framerate</source>
        <translation>Bildrate nach der Belichtung</translation>
    </message>
    <message>
        <source>Facts of the selected file</source>
        <translation>Angaben zur gewählten Datei</translation>
    </message>
    <message>
        <source>Facts of the selected file.</source>
        <translation>Angaben zur gewählten Datei.</translation>
    </message>
    <message>
        <source>&amp;Fade</source>
        <translation>&amp;Blende</translation>
    </message>
    <message>
        <source>Fade</source>
        <translation>Blende</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>FFmpeg brings encoders and decoders of other projects along, each under its own licence.</source>
        <translation>FFmpeg bringt Kodierer und Dekodierer anderer Projekte mit, jeden unter seiner eigenen Lizenz.</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>File "%1"</source>
        <translation>Datei „%1“</translation>
    </message>
    <message>
        <source>file %1 of the media list is not open, or has no such stream</source>
        <translation>Datei %1 der Medienliste ist nicht offen oder hat keinen solchen Stream</translation>
    </message>
    <message>
        <source>File already exists. Unable to open project.</source>
        <translation>Die Datei ist schon vorhanden. Das Projekt kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>File information of the currently selected media file</source>
        <translation>Angaben zur gewählten Mediendatei</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>&amp;File name:</source>
        <translation>Datei&amp;name:</translation>
    </message>
    <message>
        <source>File not found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>File not found.</source>
        <translation>Datei nicht gefunden.</translation>
    </message>
    <message>
        <source>File not found. Unable to open project.</source>
        <translation>Datei nicht gefunden. Das Projekt kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>File type</source>
        <translation>Dateityp</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>Nach Namen filtern</translation>
    </message>
    <message>
        <source>Filter of the media files</source>
        <translation>Filter der Mediendateien</translation>
    </message>
    <message>
        <source>First frame of the overlay</source>
        <translation>Erstes Bild des Overlays</translation>
    </message>
    <message>
        <source>Focus (absolute)</source>
        <translation>Entfernung der Schärfe</translation>
    </message>
    <message>
        <source>Focus, Absolute</source>
        <translation>Entfernung der Schärfe</translation>
    </message>
    <message>
        <source>Focus, Auto</source>
        <translation>Autofokus</translation>
    </message>
    <message>
        <source>Focus, Automatic Continuous</source>
        <translation>Autofokus</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>&amp;Follow Edits</source>
        <translation>Bea&amp;rbeitung folgen</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Font color</source>
        <translation>Schriftfarbe</translation>
    </message>
    <message>
        <source>Font &amp;Color...</source>
        <translation>Schri&amp;ftfarbe...</translation>
    </message>
    <message>
        <source>&amp;Font...</source>
        <translation>&amp;Schrift...</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>F&amp;ormat</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vorlauf</translation>
    </message>
    <message>
        <source>Frame Frequency</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Frame Rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>&amp;Frame Rate (FPS)</source>
        <translation>Bild&amp;rate (B/s)</translation>
    </message>
    <message>
        <source>Frame rate:</source>
        <translation>Bildrate:</translation>
    </message>
    <message>
        <source>Frames a second</source>
        <translation>Bilder je Sekunde</translation>
    </message>
    <message>
        <source>Frames a second:</source>
        <translation>Bilder je Sekunde:</translation>
    </message>
    <message>
        <source>Free some space for temporary files</source>
        <translation>Schaffen Sie Platz für temporäre Dateien</translation>
    </message>
    <message>
        <source>Free some space, or choose another disk.</source>
        <translation>Schaffen Sie Platz oder wählen Sie einen anderen Datenträger.</translation>
    </message>
    <message>
        <source>from the next start on</source>
        <translation>ab dem nächsten Start</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Verstärkung</translation>
    </message>
    <message>
        <source>Gain, Auto</source>
        <translation>Verstärkung automatisch</translation>
    </message>
    <message>
        <source>Gain, Automatic</source>
        <translation>Verstärkung automatisch</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>&amp;General</source>
        <translation>A&amp;llgemein</translation>
    </message>
    <message>
        <source>Getting ready...</source>
        <translation>Vorbereitung...</translation>
    </message>
    <message>
        <source>Gives the drag up</source>
        <translation>Bricht das Ziehen ab</translation>
    </message>
    <message>
        <source>Gives the selected bars their own length and speed again.</source>
        <translation>Gibt den gewählten Balken ihre eigene Länge und Geschwindigkeit zurück.</translation>
    </message>
    <message>
        <source>Goes back by a twentieth of the film.</source>
        <translation>Geht um ein Zwanzigstel des Films zurück.</translation>
    </message>
    <message>
        <source>Goes back to the panel</source>
        <translation>Geht in das Feld zurück</translation>
    </message>
    <message>
        <source>Goes in at %1, what follows moves on</source>
        <translation>Kommt bei %1 hinein, das Folgende rückt weiter</translation>
    </message>
    <message>
        <source>Goes on by a twentieth of the film.</source>
        <translation>Geht um ein Zwanzigstel des Films weiter.</translation>
    </message>
    <message>
        <source>Goes to that step, as a click on it does</source>
        <translation>Geht zu diesem Schritt, wie ein Klick</translation>
    </message>
    <message>
        <source>GPL version 2 or later</source>
        <translation>GPL, Version 2 oder neuer</translation>
    </message>
    <message>
        <source>GPL version 3 or later</source>
        <translation>GPL, Version 3 oder neuer</translation>
    </message>
    <message>
        <source>&amp;Green</source>
        <translation>&amp;Grün</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Half a television picture, good for most clips.</source>
        <translation>Ein halbes Fernsehbild, gut für die meisten Filme.</translation>
    </message>
    <message>
        <source>has damaged time stamps: its %1</source>
        <translation>hat beschädigte Zeitstempel: %1</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>&amp;Help Section</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>%1 ausblenden</translation>
    </message>
    <message>
        <source>Hide this panel</source>
        <translation>Dieses Feld ausblenden</translation>
    </message>
    <message>
        <source>Hides this panel. The menu Window brings it back.</source>
        <translation>Blendet dieses Feld aus. Das Menü Fenster holt es zurück.</translation>
    </message>
    <message>
        <source>High Quality</source>
        <translation>Hohe Qualität</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Horizontal Flip</source>
        <translation>Waagerecht spiegeln</translation>
    </message>
    <message>
        <source>How far the task has come.</source>
        <translation>Wie weit der Vorgang ist.</translation>
    </message>
    <message>
        <source>How loud you hear it. It changes nothing in the film.</source>
        <translation>Wie laut Sie es hören. Am Film ändert es nichts.</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>Hue, Automatic</source>
        <translation>Farbton automatisch</translation>
    </message>
    <message>
        <source>If you are in middle of something, the process you were working on may not work completely.</source>
        <translation>Falls Sie mitten in einer Arbeit sind, läuft der Vorgang vielleicht nicht vollständig ab.</translation>
    </message>
    <message>
        <source>IJG and BSD licences</source>
        <translation>IJG- und BSD-Lizenzen</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Image Files (*.bmp; *.gif; *.jpeg; *.tga)</source>
        <translation>Bilddateien (*.bmp; *.gif; *.jpeg; *.tga)</translation>
    </message>
    <message>
        <source>&amp;Index</source>
        <translation>&amp;Index</translation>
    </message>
    <message>
        <source>Index</source>
        <translation>Index</translation>
    </message>
    <message>
        <source>Index out of bounds</source>
        <translation>Index außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Instant preview of the currently selected media file</source>
        <translation>Sofortige Vorschau der gewählten Mediendatei</translation>
    </message>
    <message>
        <source>Insufficient Disk Space.</source>
        <translation>Zu wenig Speicherplatz.</translation>
    </message>
    <message>
        <source>Insufficient disk space.</source>
        <translation>Zu wenig Speicherplatz.</translation>
    </message>
    <message>
        <source>Internal error</source>
        <translation>Interner Fehler</translation>
    </message>
    <message>
        <source>Invalid File Format.</source>
        <translation>Ungültiges Dateiformat.</translation>
    </message>
    <message>
        <source>Invalid file format.</source>
        <translation>Ungültiges Dateiformat.</translation>
    </message>
    <message>
        <source>Invalid file name.</source>
        <translation>Ungültiger Dateiname.</translation>
    </message>
    <message>
        <source>Invalid procedure call or argument</source>
        <translation>Ungültiger Prozeduraufruf oder ungültiges Argument</translation>
    </message>
    <message>
        <source>Invalid Project Name. Please specify a different name.</source>
        <translation>Ungültiger Projektname. Bitte einen anderen Namen angeben.</translation>
    </message>
    <message>
        <source>Iris, Absolute</source>
        <translation>Blende</translation>
    </message>
    <message>
        <source>it begins before the one ahead of it ends</source>
        <translation>es beginnt, bevor das davor endet</translation>
    </message>
    <message>
        <source>it cannot be written there. Choose another folder.</source>
        <translation>dort kann nicht geschrieben werden. Wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>it has more markers than can be counted.</source>
        <translation>es hat mehr Marken, als sich zählen lassen.</translation>
    </message>
    <message>
        <source>it has more tracks than there are.</source>
        <translation>es hat mehr Spuren, als es gibt.</translation>
    </message>
    <message>
        <source>It has no element Timeline in a root element </source>
        <translation>Es hat kein Element Timeline in einem Wurzelelement </translation>
    </message>
    <message>
        <source>It has no element Timeline in a root element %1.</source>
        <translation>Es hat kein Element Timeline in einem Wurzelelement %1.</translation>
    </message>
    <message>
        <source>it has no PreviewDimension, so that it is no whole project.</source>
        <translation>es hat keine PreviewDimension und ist also kein ganzes Projekt.</translation>
    </message>
    <message>
        <source>it is neither AVI nor Windows Media</source>
        <translation>es ist weder AVI noch Windows Media</translation>
    </message>
    <message>
        <source>it is no file.</source>
        <translation>es ist keine Datei.</translation>
    </message>
    <message>
        <source>it is too large for a project.</source>
        <translation>es ist zu groß für ein Projekt.</translation>
    </message>
    <message>
        <source>&amp;Italic</source>
        <translation>&amp;Kursiv</translation>
    </message>
    <message>
        <source>its stop is not behind its start, or its start is below 0</source>
        <translation>sein Ende liegt nicht hinter seinem Anfang, oder sein Anfang liegt unter 0</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Keep %1</source>
        <translation>%1 behalten</translation>
    </message>
    <message>
        <source>Keeps the range or the selected bars for pasting, and changes nothing.</source>
        <translation>Merkt sich den Bereich oder die gewählten Balken zum Einfügen und ändert nichts.</translation>
    </message>
    <message>
        <source>Keeps the range or the selected bars, and removes the rest.</source>
        <translation>Behält den Bereich oder die gewählten Balken und entfernt den Rest.</translation>
    </message>
    <message>
        <source>Keeps width and height at 4 to 3</source>
        <translation>Hält Breite und Höhe bei 4 zu 3</translation>
    </message>
    <message>
        <source>Key Frame Interval</source>
        <translation>Schlüsselbildabstand</translation>
    </message>
    <message>
        <source>&amp;Key Frame Rate</source>
        <translation>S&amp;chlüsselbildrate</translation>
    </message>
    <message>
        <source>Key Frame Rate</source>
        <translation>Schlüsselbildrate</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>&amp;Large Icon</source>
        <translation>&amp;Große Symbole</translation>
    </message>
    <message>
        <source>Large Icons</source>
        <translation>Große Symbole</translation>
    </message>
    <message>
        <source>Larger text</source>
        <translation>Größerer Text</translation>
    </message>
    <message>
        <source>Lays the selected picture or film over the video.</source>
        <translation>Legt das gewählte Bild oder den Film über das Video.</translation>
    </message>
    <message>
        <source>Left Right Shift+Left Shift+Right</source>
        <translation>Left Right Shift+Left Shift+Right</translation>
    </message>
    <message>
        <source>Length of the timeline</source>
        <translation>Länge der Zeitleiste</translation>
    </message>
    <message>
        <source>Let it be read</source>
        <translation>Machen Sie es lesbar</translation>
    </message>
    <message>
        <source>Lets the picture sway as if under water.</source>
        <translation>Lässt das Bild wie unter Wasser schwanken.</translation>
    </message>
    <message>
        <source>Lets the range begin at the slider.</source>
        <translation>Lässt den Bereich am Schieber beginnen.</translation>
    </message>
    <message>
        <source>Lets the range end at the slider.</source>
        <translation>Lässt den Bereich am Schieber enden.</translation>
    </message>
    <message>
        <source>Lets the selected bars begin at the slider. Their speed stays.</source>
        <translation>Lässt die gewählten Balken am Schieber beginnen. Ihre Geschwindigkeit bleibt.</translation>
    </message>
    <message>
        <source>Lets the selected bars end at the slider. Their speed stays.</source>
        <translation>Lässt die gewählten Balken am Schieber enden. Ihre Geschwindigkeit bleibt.</translation>
    </message>
    <message>
        <source>LGPL version 2.1 or later</source>
        <translation>LGPL, Version 2.1 oder neuer</translation>
    </message>
    <message>
        <source>LGPL version 3</source>
        <translation>LGPL, Version 3</translation>
    </message>
    <message>
        <source>LGPL version 3 or later</source>
        <translation>LGPL, Version 3 oder neuer</translation>
    </message>
    <message>
        <source>&amp;Libraries</source>
        <translation>&amp;Bibliotheken</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>L&amp;icence</source>
        <translation>L&amp;izenz</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Link %1</source>
        <translation>%1 verbinden</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>&amp;List</source>
        <translation>&amp;Liste</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Lists all actions possible in the current context</source>
        <translation>Zeigt alle Aktionen, die jetzt möglich sind</translation>
    </message>
    <message>
        <source>Lists all effects that can be added to the timeline</source>
        <translation>Zeigt alle Effekte, die auf die Zeitleiste gelegt werden können</translation>
    </message>
    <message>
        <source>Lists all operations that has been carried out</source>
        <translation>Zeigt alle ausgeführten Schritte</translation>
    </message>
    <message>
        <source>Lists all the media files with their information</source>
        <translation>Zeigt alle Mediendateien mit ihren Angaben</translation>
    </message>
    <message>
        <source>Live picture</source>
        <translation>Livebild</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>Sperren</translation>
    </message>
    <message>
        <source>Lock %1</source>
        <translation>%1 sperren</translation>
    </message>
    <message>
        <source>&amp;Lock Aspect Ratio</source>
        <translation>Seitenverhältnis &amp;festhalten</translation>
    </message>
    <message>
        <source>Look for it by its words in the field above the contents, or begin at: %1</source>
        <translation>Suchen Sie sie im Feld über dem Inhalt nach ihren Worten, oder beginnen Sie bei: %1</translation>
    </message>
    <message>
        <source>Loop</source>
        <translation>Schleife</translation>
    </message>
    <message>
        <source>Loop playback</source>
        <translation>In einer Schleife abspielen</translation>
    </message>
    <message>
        <source>Low Quality</source>
        <translation>Niedrige Qualität</translation>
    </message>
    <message>
        <source>Magenta</source>
        <translation>Magenta</translation>
    </message>
    <message>
        <source>Makes a movie file of the timeline, which other programs can play.</source>
        <translation>Macht aus der Zeitleiste eine Filmdatei, die andere Programme abspielen können.</translation>
    </message>
    <message>
        <source>Makes the picture soft.</source>
        <translation>Macht das Bild weich.</translation>
    </message>
    <message>
        <source>Makes the step again that was taken back last.</source>
        <translation>Macht den zuletzt zurückgenommenen Schritt noch einmal.</translation>
    </message>
    <message>
        <source>Making pictures</source>
        <translation>Bilder entstehen</translation>
    </message>
    <message>
        <source>Manual Mode</source>
        <translation>Von Hand</translation>
    </message>
    <message>
        <source>Marker %1</source>
        <translation>Marke %1</translation>
    </message>
    <message>
        <source>Marker at %1</source>
        <translation>Marke bei %1</translation>
    </message>
    <message>
        <source>Media files</source>
        <translation>Mediendateien</translation>
    </message>
    <message>
        <source>&amp;Media List</source>
        <translation>&amp;Medienliste</translation>
    </message>
    <message>
        <source>Media List</source>
        <translation>Medienliste</translation>
    </message>
    <message>
        <source>Media List - Project: %1</source>
        <translation>Medienliste - Projekt: %1</translation>
    </message>
    <message>
        <source>Media List - Project: Untitled</source>
        <translation>Medienliste - Projekt: Unbenannt</translation>
    </message>
    <message>
        <source>Media List Context</source>
        <translation>Medienliste</translation>
    </message>
    <message>
        <source>Media List Share</source>
        <translation>Anteil der Medienliste</translation>
    </message>
    <message>
        <source>Media List, scale, row</source>
        <translation>Medienliste, Zeitskala, Spur</translation>
    </message>
    <message>
        <source>Media Type</source>
        <translation>Medientyp</translation>
    </message>
    <message>
        <source>Medium Quality (Recommended)</source>
        <translation>Mittlere Qualität (empfohlen)</translation>
    </message>
    <message>
        <source>MIT licence</source>
        <translation>MIT-Lizenz</translation>
    </message>
    <message>
        <source>More in the help</source>
        <translation>Mehr in der Hilfe</translation>
    </message>
    <message>
        <source>&amp;More Properties...</source>
        <translation>&amp;Mehr Eigenschaften...</translation>
    </message>
    <message>
        <source>More Properties...</source>
        <translation>Mehr Eigenschaften...</translation>
    </message>
    <message>
        <source>Motion JPEG failed.</source>
        <translation>Motion JPEG ist gescheitert.</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Move to Audio &amp;1</source>
        <translation>Nach Audio &amp;1 verschieben</translation>
    </message>
    <message>
        <source>Move to Audio &amp;2</source>
        <translation>Nach Audio &amp;2 verschieben</translation>
    </message>
    <message>
        <source>Moves the end of what is selected by a picture: its length and speed change, in Trim Mode it is trimmed</source>
        <translation>Bewegt das Ende des Gewählten um ein Bild: Länge und Tempo ändern sich, im Trimmmodus wird getrimmt</translation>
    </message>
    <message>
        <source>Moves the piece ahead of the one above it</source>
        <translation>Stellt das Stück vor das darüber</translation>
    </message>
    <message>
        <source>Moves the piece behind the one below it</source>
        <translation>Stellt das Stück hinter das darunter</translation>
    </message>
    <message>
        <source>Moves the selected marker a picture back</source>
        <translation>Rückt die gewählte Marke um ein Bild zurück</translation>
    </message>
    <message>
        <source>Moves the selected marker a picture on</source>
        <translation>Rückt die gewählte Marke um ein Bild vor</translation>
    </message>
    <message>
        <source>Moves the selected sound to the row Audio 1.</source>
        <translation>Verschiebt den gewählten Ton in die Spur Audio 1.</translation>
    </message>
    <message>
        <source>Moves the selected sound to the row Audio 2.</source>
        <translation>Verschiebt den gewählten Ton in die Spur Audio 2.</translation>
    </message>
    <message>
        <source>Moves the slider by 5 pixels; with Shift by 1</source>
        <translation>Bewegt den Schieber um 5 Pixel; mit Umschalt um 1</translation>
    </message>
    <message>
        <source>Moves the view along the timeline.</source>
        <translation>Bewegt die Ansicht entlang der Zeitleiste.</translation>
    </message>
    <message>
        <source>Music as a disc has it.</source>
        <translation>Musik wie auf einer CD.</translation>
    </message>
    <message>
        <source>Music as a small radio plays it.</source>
        <translation>Musik wie aus einem kleinen Radio.</translation>
    </message>
    <message>
        <source>Music for portable players.</source>
        <translation>Musik für tragbare Abspieler.</translation>
    </message>
    <message>
        <source>Music that few ears tell from a disc.</source>
        <translation>Musik, die wenige Ohren von einer CD unterscheiden.</translation>
    </message>
    <message>
        <source>Music to keep, at the rate of film sound.</source>
        <translation>Musik zum Aufheben, mit der Abtastrate von Filmton.</translation>
    </message>
    <message>
        <source>Music to keep.</source>
        <translation>Musik zum Aufheben.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;New Feature Request</source>
        <translation>&amp;Neue Funktion wünschen</translation>
    </message>
    <message>
        <source>New Project</source>
        <translation>Neues Projekt</translation>
    </message>
    <message>
        <source>&amp;New Project...</source>
        <translation>&amp;Neues Projekt...</translation>
    </message>
    <message>
        <source>New:</source>
        <translation>Neu:</translation>
    </message>
    <message>
        <source>Newer Media Files (*.mp4; *.mov; *.mkv; *.webm; *.flac; *.png; ...)</source>
        <translation>Neuere Mediendateien (*.mp4; *.mov; *.mkv; *.webm; *.flac; *.png; ...)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>No capture runs</source>
        <translation>Keine Aufnahme läuft</translation>
    </message>
    <message>
        <source>No combination of filters could be found to render the stream of this media file.</source>
        <translation>Für den Stream dieser Mediendatei wurde kein Weg zur Wiedergabe gefunden.</translation>
    </message>
    <message>
        <source>No combination of intermediate filters could be found to make the connection.</source>
        <translation>Es wurde kein Weg gefunden, die Verbindung herzustellen.</translation>
    </message>
    <message>
        <source>No document in "%1": %2</source>
        <translation>Kein Dokument in „%1“: %2</translation>
    </message>
    <message>
        <source>No effect is selected.</source>
        <translation>Kein Effekt ist gewählt.</translation>
    </message>
    <message>
        <source>No files can be made in the folder "%1".%2</source>
        <translation>Im Ordner „%1“ können keine Dateien angelegt werden.%2</translation>
    </message>
    <message>
        <source>No folder can be made in "%1".</source>
        <translation>In „%1“ kann kein Ordner angelegt werden.</translation>
    </message>
    <message>
        <source>No key frame is where the file's own list says.</source>
        <translation>Kein Schlüsselbild steht dort, wo die Liste der Datei es sagt.</translation>
    </message>
    <message>
        <source>No name of a file holds this.</source>
        <translation>Kein Dateiname enthält das.</translation>
    </message>
    <message>
        <source>No page has these words.</source>
        <translation>Keine Seite enthält diese Worte.</translation>
    </message>
    <message>
        <source>No snap is being taken</source>
        <translation>Kein Standbild wird aufgenommen</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Keines</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keines</translation>
    </message>
    <message>
        <source>nonfree and unredistributable</source>
        <translation>unfrei und nicht weiterzugeben</translation>
    </message>
    <message>
        <source>Not enough memory to capture to "%1".</source>
        <translation>Zu wenig Arbeitsspeicher für die Aufnahme nach „%1“.</translation>
    </message>
    <message>
        <source>Not enough memory to save "%1". Close other programs.</source>
        <translation>Zu wenig Arbeitsspeicher, um „%1“ zu speichern. Schließen Sie andere Programme.</translation>
    </message>
    <message>
        <source>not wanted back</source>
        <translation>nicht zurückverlangt</translation>
    </message>
    <message>
        <source>Nothing is deleted: nothing lies there on an unlocked row</source>
        <translation>Nichts gelöscht: Dort liegt nichts auf einer nicht gesperrten Spur</translation>
    </message>
    <message>
        <source>Nothing is trimmed: the slider stands neither in a selected item nor in the gap beside one</source>
        <translation>Nichts getrimmt: Der Schieber steht weder in einem gewählten Stück noch in der Lücke daneben</translation>
    </message>
    <message>
        <source>Nothing more is selected: no other picture or sound of the same file lies at these times</source>
        <translation>Nichts weiter gewählt: Kein anderes Bild oder Ton derselben Datei liegt zu diesen Zeiten</translation>
    </message>
    <message>
        <source>Now:</source>
        <translation>Jetzt:</translation>
    </message>
    <message>
        <source>Nudges what is selected by 5 pixels; with Shift by 1</source>
        <translation>Rückt das Gewählte um 5 Pixel; mit Umschalt um 1</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>One frame back</source>
        <translation>Ein Bild zurück</translation>
    </message>
    <message>
        <source>One frame on</source>
        <translation>Ein Bild weiter</translation>
    </message>
    <message>
        <source>One or more tracks in the timeline are locked. Please unlock these tracks before attempting to clear the timeline.</source>
        <translation>Eine oder mehrere Spuren der Zeitleiste sind gesperrt. Bitte diese Spuren entsperren, bevor die Zeitleiste geleert wird.</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open an existing project...</source>
        <translation>Projekt öffnen...</translation>
    </message>
    <message>
        <source>Open File</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>Open &amp;File...</source>
        <translation>Dat&amp;ei öffnen...</translation>
    </message>
    <message>
        <source>Open media file...</source>
        <translation>Datei öffnen...</translation>
    </message>
    <message>
        <source>Open Project</source>
        <translation>Projekt öffnen</translation>
    </message>
    <message>
        <source>&amp;Open Project...</source>
        <translation>Projekt ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Open video, sound and picture files
with File &gt; Open File (Ctrl+I),
or drop them here from your file manager.</source>
        <translation>Öffnen Sie Video-, Ton- und Bilddateien
mit Datei &gt; Datei öffnen (Strg+I),
oder ziehen Sie sie aus der Dateiverwaltung hierher.</translation>
    </message>
    <message>
        <source>Opening %1 was cancelled.</source>
        <translation>Das Öffnen von %1 wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Opening file %1 of %2 (%3)</source>
        <translation>Datei %1 von %2 wird geöffnet (%3)</translation>
    </message>
    <message>
        <source>Opening file %1 of %2 (%3) from project "%4"</source>
        <translation>Datei %1 von %2 wird geöffnet (%3), aus dem Projekt „%4“</translation>
    </message>
    <message>
        <source>Opening file...</source>
        <translation>Datei wird geöffnet...</translation>
    </message>
    <message>
        <source>Opening files...</source>
        <translation>Dateien werden geöffnet...</translation>
    </message>
    <message>
        <source>Opens a project that was saved.</source>
        <translation>Öffnet ein gespeichertes Projekt.</translation>
    </message>
    <message>
        <source>Opens the help.</source>
        <translation>Öffnet die Hilfe.</translation>
    </message>
    <message>
        <source>Opens the menu of the right button</source>
        <translation>Öffnet das Menü der rechten Taste</translation>
    </message>
    <message>
        <source>Opens the page on the web that takes reports.</source>
        <translation>Öffnet die Webseite, die Meldungen entgegennimmt.</translation>
    </message>
    <message>
        <source>Opens the page on the web that takes wishes.</source>
        <translation>Öffnet die Webseite, die Wünsche entgegennimmt.</translation>
    </message>
    <message>
        <source>opens the selected file in the desktop's own program</source>
        <translation>öffnet die gewählte Datei im Programm des Desktops</translation>
    </message>
    <message>
        <source>Opens the selected file in the program that your desktop has for it.</source>
        <translation>Öffnet die gewählte Datei im Programm, das Ihr Desktop dafür hat.</translation>
    </message>
    <message>
        <source>Opens video, sound and picture files; each gets a row in the media list.</source>
        <translation>Öffnet Video-, Ton- und Bilddateien; jede bekommt eine Zeile in der Medienliste.</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>&amp;Options...</source>
        <translation>&amp;Optionen...</translation>
    </message>
    <message>
        <source>Optio&amp;ns...</source>
        <translation>&amp;Optionen...</translation>
    </message>
    <message>
        <source>Other...</source>
        <translation>Andere...</translation>
    </message>
    <message>
        <source>Out of memory</source>
        <translation>Zu wenig Arbeitsspeicher</translation>
    </message>
    <message>
        <source>Output Format</source>
        <translation>Ausgabeformat</translation>
    </message>
    <message>
        <source>Overflow</source>
        <translation>Überlauf</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>Overlay</translation>
    </message>
    <message>
        <source>Overlay Key Color</source>
        <translation>Schlüsselfarbe des Overlays</translation>
    </message>
    <message>
        <source>Overlay Track</source>
        <translation>Overlayspur</translation>
    </message>
    <message>
        <source>Overlays</source>
        <translation>Overlays</translation>
    </message>
    <message>
        <source>Overwrite Exisiting File %1?</source>
        <translation>Vorhandene Datei %1 überschreiben?</translation>
    </message>
    <message>
        <source>Pack</source>
        <translation>Zusammenschieben</translation>
    </message>
    <message>
        <source>&amp;Pack Timeline Tracks</source>
        <translation>&amp;Spuren zusammenschieben</translation>
    </message>
    <message>
        <source>Pack Timeline Tracks</source>
        <translation>Spuren zusammenschieben</translation>
    </message>
    <message>
        <source>Pack timeline tracks</source>
        <translation>Spuren zusammenschieben</translation>
    </message>
    <message>
        <source>Page of the help</source>
        <translation>Seite der Hilfe</translation>
    </message>
    <message>
        <source>Pages with these words</source>
        <translation>Seiten mit diesen Worten</translation>
    </message>
    <message>
        <source>Pan (Absolute)</source>
        <translation>Schwenken</translation>
    </message>
    <message>
        <source>Pan, Absolute</source>
        <translation>Schwenken</translation>
    </message>
    <message>
        <source>Part of the timeline in view</source>
        <translation>Sichtbarer Teil der Zeitleiste</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>E&amp;infügen</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Path not found</source>
        <translation>Pfad nicht gefunden</translation>
    </message>
    <message>
        <source>Path not found.</source>
        <translation>Pfad nicht gefunden.</translation>
    </message>
    <message>
        <source>Path/File access error.</source>
        <translation>Kein Zugriff auf Pfad oder Datei.</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Pauses it, or plays it</source>
        <translation>Hält sie an oder spielt sie ab</translation>
    </message>
    <message>
        <source>Pauses, or plays when it pauses already</source>
        <translation>Hält an, oder spielt ab, wenn angehalten ist</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Zugriff verweigert</translation>
    </message>
    <message>
        <source>Picture of the selected file</source>
        <translation>Bild der gewählten Datei</translation>
    </message>
    <message>
        <source>Picture of the timeline</source>
        <translation>Bild der Zeitleiste</translation>
    </message>
    <message>
        <source>Picture of the timeline on the whole screen</source>
        <translation>Bild der Zeitleiste auf dem ganzen Bildschirm</translation>
    </message>
    <message>
        <source>Picture with the text</source>
        <translation>Bild mit dem Text</translation>
    </message>
    <message>
        <source>Pictures and waves on bars are being made. They wait while the film plays.</source>
        <translation>Bilder und Wellen der Balken werden gemacht. Sie warten, während der Film spielt.</translation>
    </message>
    <message>
        <source>Pictures of %1 x %2 are larger than a movie takes.</source>
        <translation>Bilder von %1 x %2 sind größer, als ein Film sie fasst.</translation>
    </message>
    <message>
        <source>&amp;Pictures on Bars</source>
        <translation>&amp;Bilder auf Balken</translation>
    </message>
    <message>
        <source>&amp;Pixelate</source>
        <translation>&amp;Verpixeln</translation>
    </message>
    <message>
        <source>Pixelate</source>
        <translation>Verpixeln</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>&amp;Play Last Captured File</source>
        <translation>Zuletzt aufgenommene Datei abs&amp;pielen</translation>
    </message>
    <message>
        <source>Play Last Captured F&amp;rame</source>
        <translation>Zuletzt aufgenommenes &amp;Bild zeigen</translation>
    </message>
    <message>
        <source>Plays</source>
        <translation>Spielt ab</translation>
    </message>
    <message>
        <source>Plays the film, or the range, from the slider on.</source>
        <translation>Spielt den Film oder den Bereich vom Schieber an ab.</translation>
    </message>
    <message>
        <source>Plays the selected file in the small player</source>
        <translation>Spielt die gewählte Datei im kleinen Abspieler</translation>
    </message>
    <message>
        <source>Plays the selected file, or stops it.</source>
        <translation>Spielt die gewählte Datei ab oder hält sie an.</translation>
    </message>
    <message>
        <source>Plays, or pauses</source>
        <translation>Spielt ab oder hält an</translation>
    </message>
    <message>
        <source>Please select the required file.</source>
        <translation>Bitte die benötigte Datei wählen.</translation>
    </message>
    <message>
        <source>Please specify a valid capture duration.</source>
        <translation>Bitte eine gültige Aufnahmedauer angeben.</translation>
    </message>
    <message>
        <source>Please tell Brindlecove about this problem</source>
        <translation>Bitte teilen Sie Brindlecove dieses Problem mit</translation>
    </message>
    <message>
        <source>Please unlock the audio and / or video track(s) before attempting to add this file to the timeline.</source>
        <translation>Bitte die Audio- bzw. Videospur(en) entsperren, bevor diese Datei auf die Zeitleiste gelegt wird.</translation>
    </message>
    <message>
        <source>Please unlock the Effect Track before adding an effect to it.</source>
        <translation>Bitte die Effektspur entsperren, bevor ein Effekt hinzugefügt wird.</translation>
    </message>
    <message>
        <source>Please unlock the Effect Track before attempting to clear it.</source>
        <translation>Bitte die Effektspur entsperren, bevor sie geleert wird.</translation>
    </message>
    <message>
        <source>Please unlock the Overlays Track before attempting to clear it.</source>
        <translation>Bitte die Overlayspur entsperren, bevor sie geleert wird.</translation>
    </message>
    <message>
        <source>&amp;Position</source>
        <translation>&amp;Position</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Position in the selected file</source>
        <translation>Stelle in der gewählten Datei</translation>
    </message>
    <message>
        <source>Position in the timeline</source>
        <translation>Stelle auf der Zeitleiste</translation>
    </message>
    <message>
        <source>Position of the slider</source>
        <translation>Stelle des Schiebers</translation>
    </message>
    <message>
        <source>Position on the timeline</source>
        <translation>Stelle auf der Zeitleiste</translation>
    </message>
    <message>
        <source>Position Text</source>
        <translation>Text anordnen</translation>
    </message>
    <message>
        <source>Position Text - Bottom Left</source>
        <translation>Text anordnen - unten links</translation>
    </message>
    <message>
        <source>Position Text - Bottom Right</source>
        <translation>Text anordnen - unten rechts</translation>
    </message>
    <message>
        <source>Position Text - Center Left</source>
        <translation>Text anordnen - Mitte links</translation>
    </message>
    <message>
        <source>Position Text - Center Right</source>
        <translation>Text anordnen - Mitte rechts</translation>
    </message>
    <message>
        <source>Position Text - Top Left</source>
        <translation>Text anordnen - oben links</translation>
    </message>
    <message>
        <source>Position Text - Top Right</source>
        <translation>Text anordnen - oben rechts</translation>
    </message>
    <message>
        <source>Power Line Frequency</source>
        <translation>Netzfrequenz</translation>
    </message>
    <message>
        <source>&amp;Predicted Frame Frequency</source>
        <translation>Rate vorh&amp;ergesagter Bilder</translation>
    </message>
    <message>
        <source>Present color</source>
        <translation>Jetzige Farbe</translation>
    </message>
    <message>
        <source>Preserve &amp;Aspect Ratio</source>
        <translation>S&amp;eitenverhältnis behalten</translation>
    </message>
    <message>
        <source>Press it or drag along it to see another place of the film.</source>
        <translation>Ein Klick oder Ziehen zeigt eine andere Stelle des Films.</translation>
    </message>
    <message>
        <source>Press on the picture to pick a color.</source>
        <translation>Ein Klick ins Bild nimmt eine Farbe auf.</translation>
    </message>
    <message>
        <source>&amp;Preview</source>
        <translation>&amp;Vorschau</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>&amp;Preview Dimension</source>
        <translation>&amp;Vorschaugröße</translation>
    </message>
    <message>
        <source>Preview update failed. Rebuilt Preview.</source>
        <translation>Die Vorschau konnte nicht erneuert werden. Sie wurde neu aufgebaut.</translation>
    </message>
    <message>
        <source>Preview &amp;video after saving timeline</source>
        <translation>Den &amp;Film nach dem Speichern ansehen</translation>
    </message>
    <message>
        <source>&amp;Preview when done</source>
        <translation>Am Ende an&amp;sehen</translation>
    </message>
    <message>
        <source>Previe&amp;w...</source>
        <translation>&amp;Vorschau...</translation>
    </message>
    <message>
        <source>Previews the contents of the timeline</source>
        <translation>Zeigt den Inhalt der Zeitleiste</translation>
    </message>
    <message>
        <source>Primary colors:</source>
        <translation>Grundfarben:</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Objektiv verdeckt</translation>
    </message>
    <message>
        <source>P&amp;rofile</source>
        <translation>P&amp;rofil</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Profile Properties</source>
        <translation>Profileigenschaften</translation>
    </message>
    <message>
        <source>Profile, %1</source>
        <translation>Profil, %1</translation>
    </message>
    <message>
        <source>P&amp;rofile:</source>
        <translation>P&amp;rofil:</translation>
    </message>
    <message>
        <source>Profile:</source>
        <translation>Profil:</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Project Settings</source>
        <translation>Projekteinstellungen</translation>
    </message>
    <message>
        <source>&amp;Properties...</source>
        <translation>Eigen&amp;schaften...</translation>
    </message>
    <message>
        <source>Put it back</source>
        <translation>Legen Sie sie zurück</translation>
    </message>
    <message>
        <source>Puts all panels to their places.</source>
        <translation>Stellt alle Felder an ihren Platz.</translation>
    </message>
    <message>
        <source>Puts the files that are selected in the media list behind what lies on the timeline.</source>
        <translation>Legt die in der Medienliste gewählten Dateien hinter das, was auf der Zeitleiste liegt.</translation>
    </message>
    <message>
        <source>Puts what was cut or copied at the slider; what lies behind moves on.</source>
        <translation>Fügt Ausgeschnittenes oder Kopiertes am Schieber ein; was dahinter liegt, rückt weiter.</translation>
    </message>
    <message>
        <source>&amp;Quality</source>
        <translation>&amp;Qualität</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>Quick, and loses nothing, where the movie is like the clip and nothing is done to it</source>
        <translation>Schnell und verlustfrei, wo der Film wie das Stück ist und nichts daran geändert wird</translation>
    </message>
    <message>
        <source>Quillmont ended before this work was saved:&#13;
&#13;
%1.&#13;
&#13;
Do you want to bring it back? The saved project stays as it is until you save.</source>
        <translation>Quillmont endete, bevor diese Arbeit gespeichert war:&#13;
&#13;
%1.&#13;
&#13;
Möchten Sie sie zurückholen? Das gespeicherte Projekt bleibt, wie es ist, bis Sie speichern.</translation>
    </message>
    <message>
        <source>Quillmont ended before this work was saved:&#13;
&#13;
%1.&#13;
&#13;
Do you want to bring it back? The saved project stays as it is until you save.%2</source>
        <translation>Quillmont endete, bevor diese Arbeit gespeichert war:&#13;
&#13;
%1.&#13;
&#13;
Möchten Sie sie zurückholen? Das gespeicherte Projekt bleibt, wie es ist, bis Sie speichern.%2</translation>
    </message>
    <message>
        <source>Quillmont is already running.</source>
        <translation>Quillmont läuft schon.</translation>
    </message>
    <message>
        <source>Quillmont is currently busy. Please wait until the current operation is completed and then close the application.</source>
        <translation>Quillmont ist gerade beschäftigt. Bitte warten, bis der Vorgang beendet ist, und das Programm dann schließen.</translation>
    </message>
    <message>
        <source>Quillmont Project (*.qpj)</source>
        <translation>Quillmont-Projekt (*.qpj)</translation>
    </message>
    <message>
        <source>Quillmont Project (QPJ)</source>
        <translation>Quillmont-Projekt (QPJ)</translation>
    </message>
    <message>
        <source>Quillmont Project File</source>
        <translation>Quillmont-Projektdatei</translation>
    </message>
    <message>
        <source>Range:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Rat&amp;ing:</source>
        <translation>Bewertu&amp;ng:</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>&amp;Recent Files</source>
        <translation>&amp;Zuletzt geöffnete Dateien</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Zuletzt geöffnete Dateien</translation>
    </message>
    <message>
        <source>Recent Project</source>
        <translation>Zuletzt geöffnetes Projekt</translation>
    </message>
    <message>
        <source>Recent &amp;Projects</source>
        <translation>Zuletzt geöffnete Pro&amp;jekte</translation>
    </message>
    <message>
        <source>Recent Projects</source>
        <translation>Zuletzt geöffnete Projekte</translation>
    </message>
    <message>
        <source>Records from a camera, a microphone or the screen.</source>
        <translation>Nimmt von einer Kamera, einem Mikrofon oder dem Bildschirm auf.</translation>
    </message>
    <message>
        <source>&amp;Red</source>
        <translation>&amp;Rot</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Red Balance</source>
        <translation>Rotanteil</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>Wiederhole&amp;n</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Redo: %1</source>
        <translation>Wiederholen: %1</translation>
    </message>
    <message>
        <source>Remove All &amp;Markers</source>
        <translation>Alle &amp;Marken entfernen</translation>
    </message>
    <message>
        <source>&amp;Remove Marker</source>
        <translation>Marke en&amp;tfernen</translation>
    </message>
    <message>
        <source>Remove Marker</source>
        <translation>Marke entfernen</translation>
    </message>
    <message>
        <source>Removes all markers.</source>
        <translation>Entfernt alle Marken.</translation>
    </message>
    <message>
        <source>Removes the marker that was clicked last.</source>
        <translation>Entfernt die zuletzt angeklickte Marke.</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Repeat A&amp;udio</source>
        <translation>Ton &amp;wiederholen</translation>
    </message>
    <message>
        <source>Repeat Audio</source>
        <translation>Ton wiederholen</translation>
    </message>
    <message>
        <source>Repeat audio</source>
        <translation>Ton wiederholen</translation>
    </message>
    <message>
        <source>Repeats playback (Loop)</source>
        <translation>Wiederholt das Abspielen (Schleife)</translation>
    </message>
    <message>
        <source>Repeats the last piece of the selected sound's row until the video ends.</source>
        <translation>Wiederholt das letzte Stück in der Spur des gewählten Tons, bis das Video endet.</translation>
    </message>
    <message>
        <source>&amp;Report Bugs</source>
        <translation>&amp;Fehler melden</translation>
    </message>
    <message>
        <source>Reposition the end selection slider</source>
        <translation>Den Endschieber der Auswahl versetzen</translation>
    </message>
    <message>
        <source>Reposition the marker slider</source>
        <translation>Die Marke versetzen</translation>
    </message>
    <message>
        <source>Reposition the slider</source>
        <translation>Den Schieber versetzen</translation>
    </message>
    <message>
        <source>Reposition the start selection slider</source>
        <translation>Den Anfangsschieber der Auswahl versetzen</translation>
    </message>
    <message>
        <source>Represents audio sources over time</source>
        <translation>Zeigt die Tonquellen über der Zeit</translation>
    </message>
    <message>
        <source>Represents overlay sources over time</source>
        <translation>Zeigt die Overlays über der Zeit</translation>
    </message>
    <message>
        <source>Represents various effects over time</source>
        <translation>Zeigt die Effekte über der Zeit</translation>
    </message>
    <message>
        <source>Represents video sources over time</source>
        <translation>Zeigt die Videoquellen über der Zeit</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>Länge ändern</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Originallänge</translation>
    </message>
    <message>
        <source>&amp;Restore Size</source>
        <translation>&amp;Originalgröße</translation>
    </message>
    <message>
        <source>Restore Si&amp;ze</source>
        <translation>O&amp;riginallänge</translation>
    </message>
    <message>
        <source>Restore Size</source>
        <translation>Originallänge</translation>
    </message>
    <message>
        <source>Restore to original size</source>
        <translation>Auf die ursprüngliche Länge zurücksetzen</translation>
    </message>
    <message>
        <source>Rewind</source>
        <translation>Rücklauf</translation>
    </message>
    <message>
        <source>Row</source>
        <translation>Spur</translation>
    </message>
    <message>
        <source>Row of the timeline</source>
        <translation>Spur der Zeitleiste</translation>
    </message>
    <message>
        <source>Row, during a drag</source>
        <translation>Spur, beim Ziehen</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Spuren</translation>
    </message>
    <message>
        <source>Runs the action</source>
        <translation>Führt die Aktion aus</translation>
    </message>
    <message>
        <source>Sample Text</source>
        <translation>Beispieltext</translation>
    </message>
    <message>
        <source>Samples a second</source>
        <translation>Abtastwerte je Sekunde</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>Spei&amp;chern</translation>
    </message>
    <message>
        <source>Save Aborted</source>
        <translation>Speichern abgebrochen</translation>
    </message>
    <message>
        <source>Save and A&amp;dd to Overlay</source>
        <translation>Speichern und als Overlay hinzu&amp;fügen</translation>
    </message>
    <message>
        <source>Save and &amp;Close</source>
        <translation>S&amp;peichern und schließen</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Save changes to %1 ?</source>
        <translation>Änderungen an %1 speichern?</translation>
    </message>
    <message>
        <source>Save Complete</source>
        <translation>Speichern beendet</translation>
    </message>
    <message>
        <source>Save current project</source>
        <translation>Projekt speichern</translation>
    </message>
    <message>
        <source>Save Last Captured File &amp;As...</source>
        <translation>Zuletzt aufgenommene Datei speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Save Options</source>
        <translation>Speicheroptionen</translation>
    </message>
    <message>
        <source>Save Optoins</source>
        <translation>Speicheroptionen</translation>
    </message>
    <message>
        <source>&amp;Save Project</source>
        <translation>Projekt &amp;speichern</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>Projekt speichern</translation>
    </message>
    <message>
        <source>Save Project &amp;As...</source>
        <translation>Projekt speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Save snaps in &amp;capture dimension</source>
        <translation>Standbilder in &amp;Aufnahmegröße speichern</translation>
    </message>
    <message>
        <source>Save snaps in &amp;other dimension (specify Snap Dimension)</source>
        <translation>Standbilder in anderer Größe &amp;speichern (Standbildgröße angeben)</translation>
    </message>
    <message>
        <source>Save Timeline</source>
        <translation>Zeitleiste speichern</translation>
    </message>
    <message>
        <source>Save &amp;Timeline...</source>
        <translation>Zei&amp;tleiste speichern...</translation>
    </message>
    <message>
        <source>Save Timeline...</source>
        <translation>Zeitleiste speichern...</translation>
    </message>
    <message>
        <source>Save timeline...</source>
        <translation>Zeitleiste speichern...</translation>
    </message>
    <message>
        <source>&amp;Save to:</source>
        <translation>&amp;Speichern in:</translation>
    </message>
    <message>
        <source>Sa&amp;ve, Add to Overlay and Close</source>
        <translation>Sp&amp;eichern, als Overlay hinzufügen, schließen</translation>
    </message>
    <message>
        <source>Saved %1, and added it to the overlays.</source>
        <translation>%1 gespeichert und als Overlay hinzugefügt.</translation>
    </message>
    <message>
        <source>Saved %1.</source>
        <translation>%1 gespeichert.</translation>
    </message>
    <message>
        <source>Saved: %1 of %2</source>
        <translation>Gespeichert: %1 von %2</translation>
    </message>
    <message>
        <source>Saves the picture at the slider as a file.</source>
        <translation>Speichert das Bild am Schieber als Datei.</translation>
    </message>
    <message>
        <source>Saves the project under another name, and goes on under that.</source>
        <translation>Speichert das Projekt unter einem anderen Namen und fährt darunter fort.</translation>
    </message>
    <message>
        <source>Saves the project: the media list and what lies on the timeline.</source>
        <translation>Speichert das Projekt: die Medienliste und was auf der Zeitleiste liegt.</translation>
    </message>
    <message>
        <source>Saving a movie</source>
        <translation>Ein Film wird gespeichert</translation>
    </message>
    <message>
        <source>Saving Timeline</source>
        <translation>Zeitleiste wird gespeichert</translation>
    </message>
    <message>
        <source>Saving...</source>
        <translation>Wird gespeichert...</translation>
    </message>
    <message>
        <source>Scale and rows of the timeline</source>
        <translation>Zeitskala und Spuren der Zeitleiste</translation>
    </message>
    <message>
        <source>Scale of the timeline</source>
        <translation>Zeitskala der Zeitleiste</translation>
    </message>
    <message>
        <source>Scene Mode</source>
        <translation>Motivprogramm</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Scroll the list of media files sideways</source>
        <translation>Die Medienliste seitwärts rollen</translation>
    </message>
    <message>
        <source>Search (Ctrl+F)</source>
        <translation>Suchen (Strg+F)</translation>
    </message>
    <message>
        <source>Search the help</source>
        <translation>Die Hilfe durchsuchen</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Seconds until the capture stops</source>
        <translation>Sekunden bis zum Ende der Aufnahme</translation>
    </message>
    <message>
        <source>Seek to the desired position of the video</source>
        <translation>Die gewünschte Stelle des Videos suchen</translation>
    </message>
    <message>
        <source>Select "Custom" from the above list to specify Custom Dimension</source>
        <translation>Oben „Eigene“ wählen, um eine eigene Größe anzugeben</translation>
    </message>
    <message>
        <source>Select a Folder</source>
        <translation>Einen Ordner wählen</translation>
    </message>
    <message>
        <source>Select &amp;with Sound</source>
        <translation>&amp;Mit Ton wählen</translation>
    </message>
    <message>
        <source>Selected file: "%1". Total Files in Media List: %2.</source>
        <translation>Gewählte Datei: „%1“. Dateien in der Medienliste: %2.</translation>
    </message>
    <message>
        <source>Selected item</source>
        <translation>Gewähltes Stück</translation>
    </message>
    <message>
        <source>S&amp;election</source>
        <translation>&amp;Auswahl</translation>
    </message>
    <message>
        <source>&amp;Selection Sliders</source>
        <translation>A&amp;uswahlschieber</translation>
    </message>
    <message>
        <source>Selects all that lies on rows that are not locked</source>
        <translation>Wählt alles, was auf nicht gesperrten Spuren liegt</translation>
    </message>
    <message>
        <source>Selects the file above, or below</source>
        <translation>Wählt die Datei darüber oder darunter</translation>
    </message>
    <message>
        <source>Selects with a picture the sound that belongs to it, or with a sound its picture.</source>
        <translation>Wählt zu einem Bild den zugehörigen Ton oder zu einem Ton sein Bild.</translation>
    </message>
    <message>
        <source>Send Error Report</source>
        <translation>Fehlerbericht senden</translation>
    </message>
    <message>
        <source>Set Capture File</source>
        <translation>Aufnahmedatei festlegen</translation>
    </message>
    <message>
        <source>Set capture file</source>
        <translation>Aufnahmedatei festlegen</translation>
    </message>
    <message>
        <source>&amp;Set Capture File...</source>
        <translation>&amp;Aufnahmedatei festlegen...</translation>
    </message>
    <message>
        <source>Set Key Color</source>
        <translation>Schlüsselfarbe wählen</translation>
    </message>
    <message>
        <source>Set Overlay &amp;Key Color</source>
        <translation>Schlüsselfar&amp;be des Overlays</translation>
    </message>
    <message>
        <source>Set Overlay Key Color</source>
        <translation>Schlüsselfarbe des Overlays</translation>
    </message>
    <message>
        <source>Set overlay key color</source>
        <translation>Schlüsselfarbe des Overlays</translation>
    </message>
    <message>
        <source>Set Stretch &amp;Mode</source>
        <translation>Anpassung &amp;wählen</translation>
    </message>
    <message>
        <source>Set Stretch Mode</source>
        <translation>Anpassung wählen</translation>
    </message>
    <message>
        <source>Set stretch mode...</source>
        <translation>Anpassung wählen...</translation>
    </message>
    <message>
        <source>SetKeyColor</source>
        <translation>Schlüsselfarbe wählen</translation>
    </message>
    <message>
        <source>Sets a marker at the slider.</source>
        <translation>Setzt eine Marke am Schieber.</translation>
    </message>
    <message>
        <source>&amp;Setting</source>
        <translation>&amp;Einstellung</translation>
    </message>
    <message>
        <source>Setting, %1</source>
        <translation>Einstellung, %1</translation>
    </message>
    <message>
        <source>&amp;Setting:</source>
        <translation>&amp;Einstellung:</translation>
    </message>
    <message>
        <source>Setting:</source>
        <translation>Einstellung:</translation>
    </message>
    <message>
        <source>Sharpness</source>
        <translation>Schärfe</translation>
    </message>
    <message>
        <source>Short clips that fit into a letter.</source>
        <translation>Kurze Filme, die in eine Nachricht passen.</translation>
    </message>
    <message>
        <source>Show the mouse pointer</source>
        <translation>Mauszeiger zeigen</translation>
    </message>
    <message>
        <source>Show/Hide Selection Sliders</source>
        <translation>Auswahlschieber an/aus</translation>
    </message>
    <message>
        <source>Show/Hide selection sliders</source>
        <translation>Auswahlschieber an/aus</translation>
    </message>
    <message>
        <source>Shows a longer time, in less detail.</source>
        <translation>Zeigt eine längere Zeit, mit weniger Einzelheiten.</translation>
    </message>
    <message>
        <source>Shows a shorter time, in more detail.</source>
        <translation>Zeigt eine kürzere Zeit, mit mehr Einzelheiten.</translation>
    </message>
    <message>
        <source>Shows how a small film is made, in ten steps.</source>
        <translation>Zeigt in zehn Schritten, wie ein kleiner Film entsteht.</translation>
    </message>
    <message>
        <source>Shows on the bars of sounds how loud they are.</source>
        <translation>Zeigt auf den Balken der Töne, wie laut sie sind.</translation>
    </message>
    <message>
        <source>Shows on the bars what is seen in them.</source>
        <translation>Zeigt auf den Balken, was in ihnen zu sehen ist.</translation>
    </message>
    <message>
        <source>Shows only the files whose names hold what you type here. The others stay open.</source>
        <translation>Zeigt nur die Dateien, deren Namen das hier Getippte enthalten. Die übrigen bleiben offen.</translation>
    </message>
    <message>
        <source>Shows or hides the list at the left of the timeline.</source>
        <translation>Zeigt oder verbirgt die Liste links von der Zeitleiste.</translation>
    </message>
    <message>
        <source>Shows or hides the media list.</source>
        <translation>Zeigt oder verbirgt die Medienliste.</translation>
    </message>
    <message>
        <source>Shows or hides the preview.</source>
        <translation>Zeigt oder verbirgt die Vorschau.</translation>
    </message>
    <message>
        <source>shows or hides the range</source>
        <translation>zeigt oder verbirgt den Bereich</translation>
    </message>
    <message>
        <source>Shows or hides the timeline.</source>
        <translation>Zeigt oder verbirgt die Zeitleiste.</translation>
    </message>
    <message>
        <source>Shows or hides the tools panel.</source>
        <translation>Zeigt oder verbirgt die Werkzeuge.</translation>
    </message>
    <message>
        <source>Shows or hides the two sliders that mark a range.</source>
        <translation>Zeigt oder verbirgt die zwei Schieber, die einen Bereich markieren.</translation>
    </message>
    <message>
        <source>Shows the files of the media list as large icons.</source>
        <translation>Zeigt die Dateien der Medienliste als große Symbole.</translation>
    </message>
    <message>
        <source>Shows the files of the media list as small icons.</source>
        <translation>Zeigt die Dateien der Medienliste als kleine Symbole.</translation>
    </message>
    <message>
        <source>Shows the files of the media list by their names.</source>
        <translation>Zeigt die Dateien der Medienliste mit ihren Namen.</translation>
    </message>
    <message>
        <source>Shows the files of the media list with all columns.</source>
        <translation>Zeigt die Dateien der Medienliste mit allen Spalten.</translation>
    </message>
    <message>
        <source>Shows the film from its start to its end.</source>
        <translation>Zeigt den Film von Anfang bis Ende.</translation>
    </message>
    <message>
        <source>Shows the range, or what is selected, as large as it fits.</source>
        <translation>Zeigt den Bereich oder das Gewählte so groß, wie es passt.</translation>
    </message>
    <message>
        <source>Shuffle</source>
        <translation>Umstellen</translation>
    </message>
    <message>
        <source>Shuffle Sources</source>
        <translation>Quellen umstellen</translation>
    </message>
    <message>
        <source>Shutter Priority Mode</source>
        <translation>Zeit von Hand</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Small &amp;Icon</source>
        <translation>&amp;Kleine Symbole</translation>
    </message>
    <message>
        <source>Small Icons</source>
        <translation>Kleine Symbole</translation>
    </message>
    <message>
        <source>Smaller text</source>
        <translation>Kleinerer Text</translation>
    </message>
    <message>
        <source>Snap</source>
        <translation>Standbild</translation>
    </message>
    <message>
        <source>Snap &amp;Dimension</source>
        <translation>Standbild&amp;größe</translation>
    </message>
    <message>
        <source>Snap &amp;Folder</source>
        <translation>Standbild&amp;ordner</translation>
    </message>
    <message>
        <source>S&amp;napping</source>
        <translation>&amp;Einrasten</translation>
    </message>
    <message>
        <source>Snapping</source>
        <translation>Einrasten</translation>
    </message>
    <message>
        <source>Some of the streams in this media file are in an unsupported format.</source>
        <translation>Einige Streams dieser Mediendatei haben ein nicht unterstütztes Format.</translation>
    </message>
    <message>
        <source>Speech, and music heard in the background.</source>
        <translation>Sprache und Hintergrundmusik.</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>&amp;Split Timeline Tracks</source>
        <translation>Spu&amp;ren teilen</translation>
    </message>
    <message>
        <source>Split Timeline Tracks</source>
        <translation>Spuren teilen</translation>
    </message>
    <message>
        <source>Split timeline tracks</source>
        <translation>Spuren teilen</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Anfang</translation>
    </message>
    <message>
        <source>&amp;Start Capture</source>
        <translation>Aufnahme &amp;starten</translation>
    </message>
    <message>
        <source>Start Capture</source>
        <translation>Aufnahme starten</translation>
    </message>
    <message>
        <source>Start capture</source>
        <translation>Aufnahme starten</translation>
    </message>
    <message>
        <source>Start of the selection</source>
        <translation>Anfang der Auswahl</translation>
    </message>
    <message>
        <source>&amp;Start Selection</source>
        <translation>Au&amp;swahlanfang</translation>
    </message>
    <message>
        <source>Stays at the picture that you see. Play goes on from there.</source>
        <translation>Bleibt beim Bild, das Sie sehen. Mit Abspielen geht es dort weiter.</translation>
    </message>
    <message>
        <source>Still</source>
        <translation>Standbild</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop &amp;after</source>
        <translation>Anha&amp;lten nach</translation>
    </message>
    <message>
        <source>Stop by &amp;hand</source>
        <translation>Von &amp;Hand anhalten</translation>
    </message>
    <message>
        <source>S&amp;top Capture</source>
        <translation>Aufna&amp;hme anhalten</translation>
    </message>
    <message>
        <source>Stop capture</source>
        <translation>Aufnahme anhalten</translation>
    </message>
    <message>
        <source>Stream Name</source>
        <translation>Streamname</translation>
    </message>
    <message>
        <source>St&amp;reams</source>
        <translation>St&amp;reams</translation>
    </message>
    <message>
        <source>Streams</source>
        <translation>Streams</translation>
    </message>
    <message>
        <source>Streams:</source>
        <translation>Streams:</translation>
    </message>
    <message>
        <source>&amp;Stretch</source>
        <translation>S&amp;trecken</translation>
    </message>
    <message>
        <source>Stretch Mode</source>
        <translation>Anpassung</translation>
    </message>
    <message>
        <source>Str&amp;etch while Preserving Aspect Ratio</source>
        <translation>Strecken und Seiten&amp;verhältnis behalten</translation>
    </message>
    <message>
        <source>&amp;Strikethrough</source>
        <translation>&amp;Durchgestrichen</translation>
    </message>
    <message>
        <source>Subscript out of range</source>
        <translation>Index außerhalb des gültigen Bereichs</translation>
    </message>
    <message>
        <source>S&amp;ynchronize</source>
        <translation>S&amp;ynchronisieren</translation>
    </message>
    <message>
        <source>&amp;Take Snap</source>
        <translation>Stand&amp;bild aufnehmen</translation>
    </message>
    <message>
        <source>Take Snap</source>
        <translation>Standbild aufnehmen</translation>
    </message>
    <message>
        <source>Take snap</source>
        <translation>Standbild aufnehmen</translation>
    </message>
    <message>
        <source>Takes all effects off.</source>
        <translation>Entfernt alle Effekte.</translation>
    </message>
    <message>
        <source>Takes all overlays off.</source>
        <translation>Entfernt alle Overlays.</translation>
    </message>
    <message>
        <source>Takes everything off all rows.</source>
        <translation>Nimmt alles von allen Spuren.</translation>
    </message>
    <message>
        <source>Takes everything off the timeline and the media list.</source>
        <translation>Nimmt alles von der Zeitleiste und aus der Medienliste.</translation>
    </message>
    <message>
        <source>Takes the last step back.</source>
        <translation>Nimmt den letzten Schritt zurück.</translation>
    </message>
    <message>
        <source>Takes the range or the selected bars off the timeline, and keeps them for pasting.</source>
        <translation>Nimmt den Bereich oder die gewählten Balken von der Zeitleiste und merkt sie zum Einfügen.</translation>
    </message>
    <message>
        <source>Takes the range or the selected bars off the timeline.</source>
        <translation>Nimmt den Bereich oder die gewählten Balken von der Zeitleiste.</translation>
    </message>
    <message>
        <source>Takes the range or the selected bars off the timeline. The gap stays.</source>
        <translation>Nimmt den Bereich oder die gewählten Balken von der Zeitleiste. Die Lücke bleibt.</translation>
    </message>
    <message>
        <source>Takes the selected files off the media list, and what is used of them off the timeline. The files on your disk stay.</source>
        <translation>Nimmt die gewählten Dateien aus der Medienliste und das, was davon benutzt ist, von der Zeitleiste. Die Dateien auf dem Datenträger bleiben.</translation>
    </message>
    <message>
        <source>Ten frames back</source>
        <translation>Zehn Bilder zurück</translation>
    </message>
    <message>
        <source>Ten frames on</source>
        <translation>Zehn Bilder weiter</translation>
    </message>
    <message>
        <source>Test Camera</source>
        <translation>Testkamera</translation>
    </message>
    <message>
        <source>Test Microphone</source>
        <translation>Testmikrofon</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>&amp;Text</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>the attribute %1</source>
        <translation>das Attribut %1</translation>
    </message>
    <message>
        <source>the attribute %1 is missing or is no whole number</source>
        <translation>das Attribut %1 fehlt oder ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>the attribute %1 is out of range</source>
        <translation>das Attribut %1 liegt außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>the attribute Kind is neither Video nor Audio</source>
        <translation>das Attribut Kind ist weder Video noch Audio</translation>
    </message>
    <message>
        <source>the attribute Stream is neither Video nor Audio</source>
        <translation>das Attribut Stream ist weder Video noch Audio</translation>
    </message>
    <message>
        <source>The audio in this media file cannot be rendered.</source>
        <translation>Der Ton dieser Mediendatei kann nicht wiedergegeben werden.</translation>
    </message>
    <message>
        <source>The background will not be seen over the video: its color is too near to the key color</source>
        <translation>Der Hintergrund wird über dem Video nicht zu sehen sein: Seine Farbe ist der Schlüsselfarbe zu nahe</translation>
    </message>
    <message>
        <source>The buffer for the file names is too small.</source>
        <translation>Der Puffer für die Dateinamen ist zu klein.</translation>
    </message>
    <message>
        <source>The camera cannot be used. Close other programs that use it, and tick Capture &gt; Streams &gt; Video.</source>
        <translation>Die Kamera ist nicht verfügbar. Schließen Sie andere Programme, die sie benutzen, und haken Sie Aufnahme &gt; Streams &gt; Video an.</translation>
    </message>
    <message>
        <source>The capture device has been removed.</source>
        <translation>Das Aufnahmegerät wurde entfernt.</translation>
    </message>
    <message>
        <source>The capture device has been removed. The movie holds what was captured up to there.</source>
        <translation>Das Aufnahmegerät wurde entfernt. Der Film enthält, was bis dahin aufgenommen wurde.</translation>
    </message>
    <message>
        <source>The capture duration is too long. Please specify at most 2147483647 seconds.</source>
        <translation>Die Aufnahmedauer ist zu lang. Bitte höchstens 2147483647 Sekunden angeben.</translation>
    </message>
    <message>
        <source>The capture to "%1" ended: %2 Choose another compressor.</source>
        <translation>Die Aufnahme nach „%1“ endete: %2 Wählen Sie einen anderen Kompressor.</translation>
    </message>
    <message>
        <source>The class %1 cannot be created.</source>
        <translation>Die Klasse %1 kann nicht erzeugt werden.</translation>
    </message>
    <message>
        <source>The disk has not taken the whole capture yet. Wait a moment before you use the file.</source>
        <translation>Der Datenträger hat noch nicht die ganze Aufnahme. Warten Sie einen Moment, bevor Sie die Datei benutzen.</translation>
    </message>
    <message>
        <source>The effects. A double click adds one; it can also be dragged onto the row of effects.</source>
        <translation>Die Effekte. Ein Doppelklick fügt einen hinzu; er lässt sich auch auf die Effektspur ziehen.</translation>
    </message>
    <message>
        <source>The encoder holds frames back that it should not.</source>
        <translation>Der Kodierer hält Bilder zurück, die er nicht zurückhalten soll.</translation>
    </message>
    <message>
        <source>The file "%1" is missing from the disk.</source>
        <translation>Die Datei „%1“ fehlt auf dem Datenträger.</translation>
    </message>
    <message>
        <source>The file - "%1" is being used by the timeline. If you delete this file, all references to it in the timeline will be permanently removed. Do you wish to proceed with the deletion?</source>
        <translation>Die Datei „%1“ wird von der Zeitleiste benutzt. Wird sie geschlossen, werden alle Stellen der Zeitleiste, an denen sie liegt, dauerhaft entfernt. Möchten Sie sie schließen?</translation>
    </message>
    <message>
        <source>The file format is invalid.</source>
        <translation>Das Dateiformat ist ungültig.</translation>
    </message>
    <message>
        <source>the file is not there any more.</source>
        <translation>die Datei ist nicht mehr da.</translation>
    </message>
    <message>
        <source>The file's own list shows no beginning of a group.</source>
        <translation>Die Liste der Datei zeigt keinen Gruppenanfang.</translation>
    </message>
    <message>
        <source>The file's own list shows no end of a group.</source>
        <translation>Die Liste der Datei zeigt kein Gruppenende.</translation>
    </message>
    <message>
        <source>The files of the tutorial cannot be written to %1: %2</source>
        <translation>Die Dateien der Einführung können nicht nach %1 geschrieben werden: %2</translation>
    </message>
    <message>
        <source>The files that you have opened. Select some and press F2, or drag them onto the timeline.</source>
        <translation>Die geöffneten Dateien. Wählen Sie welche und drücken Sie F2, oder ziehen Sie sie auf die Zeitleiste.</translation>
    </message>
    <message>
        <source>The files that you opened last.</source>
        <translation>Die zuletzt geöffneten Dateien.</translation>
    </message>
    <message>
        <source>The film and its first picture differ in size. Use the picture's size, and nothing is squeezed.</source>
        <translation>Der Film und sein erstes Bild sind verschieden groß. Mit der Größe des Bildes wird nichts verzerrt.</translation>
    </message>
    <message>
        <source>The film at the place of the slider. A double click gives it the whole screen.</source>
        <translation>Der Film an der Stelle des Schiebers. Ein Doppelklick gibt ihm den ganzen Bildschirm.</translation>
    </message>
    <message>
        <source>The film. Escape goes back to the window.</source>
        <translation>Der Film. Escape führt zum Fenster zurück.</translation>
    </message>
    <message>
        <source>The folder "%1"</source>
        <translation>Der Ordner „%1“</translation>
    </message>
    <message>
        <source>The folder "%1" does not answer.&#13;
Please choose another working folder.</source>
        <translation>Der Ordner „%1“ antwortet nicht.&#13;
Bitte einen anderen Arbeitsordner wählen.</translation>
    </message>
    <message>
        <source>The folder "%1" was moved meanwhile. The file is whole: "%2".</source>
        <translation>Der Ordner „%1“ wurde inzwischen verschoben. Die Datei ist vollständig: „%2“.</translation>
    </message>
    <message>
        <source>The folder cannot be made.</source>
        <translation>Der Ordner kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>The folder of "%1" does not answer. Choose another one.</source>
        <translation>Der Ordner von „%1“ antwortet nicht. Wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>The folder of "%1" is not there.</source>
        <translation>Der Ordner von „%1“ ist nicht da.</translation>
    </message>
    <message>
        <source>the frame size is below 1</source>
        <translation>die Bildgröße liegt unter 1</translation>
    </message>
    <message>
        <source>The help of this version has no page "%1".</source>
        <translation>Die Hilfe dieser Version hat keine Seite „%1“.</translation>
    </message>
    <message>
        <source>The length of the film.</source>
        <translation>Die Länge des Films.</translation>
    </message>
    <message>
        <source>The letters will not be seen over the video: their color is too near to the key color</source>
        <translation>Die Buchstaben werden über dem Video nicht zu sehen sein: Ihre Farbe ist der Schlüsselfarbe zu nahe</translation>
    </message>
    <message>
        <source>The media list: the files that you have opened, with a small player.</source>
        <translation>Die Medienliste: die geöffneten Dateien, mit einem kleinen Abspieler.</translation>
    </message>
    <message>
        <source>The media type of this file is not recognized.</source>
        <translation>Der Medientyp dieser Datei wird nicht erkannt.</translation>
    </message>
    <message>
        <source>The movie is %1, %2 is %3.</source>
        <translation>Der Film ist %1, %2 ist %3.</translation>
    </message>
    <message>
        <source>The old file "%1" cannot be renamed, so that nothing is written over it: %2. Choose another name.</source>
        <translation>Die alte Datei „%1“ kann nicht umbenannt werden, darum wird sie nicht überschrieben: %2. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>The old file of that name is in the trash: %1.</source>
        <translation>Die alte Datei dieses Namens liegt im Papierkorb: %1.</translation>
    </message>
    <message>
        <source>The old file of that name is kept as %1.</source>
        <translation>Die alte Datei dieses Namens bleibt als %1 erhalten.</translation>
    </message>
    <message>
        <source>The packets do not follow the file's own list.</source>
        <translation>Die Pakete folgen nicht der Liste der Datei.</translation>
    </message>
    <message>
        <source>The picture is switched off.</source>
        <translation>Das Bild ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>The picture takes the whole screen, or goes back</source>
        <translation>Das Bild füllt den Bildschirm oder geht zurück</translation>
    </message>
    <message>
        <source>The preview is switched off.</source>
        <translation>Die Vorschau ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>The preview: plays what lies on the timeline.</source>
        <translation>Die Vorschau: spielt, was auf der Zeitleiste liegt.</translation>
    </message>
    <message>
        <source>The project has no MediaList.</source>
        <translation>Das Projekt hat keine MediaList.</translation>
    </message>
    <message>
        <source>the project's file is newer than this work</source>
        <translation>die Projektdatei ist neuer als diese Arbeit</translation>
    </message>
    <message>
        <source>the project's file is no longer there</source>
        <translation>die Projektdatei ist nicht mehr da</translation>
    </message>
    <message>
        <source>the project's file was changed since this work began</source>
        <translation>die Projektdatei wurde seit Beginn dieser Arbeit geändert</translation>
    </message>
    <message>
        <source>The projects that you used last. Choosing one drops the present project without asking.</source>
        <translation>Die zuletzt benutzten Projekte. Eines zu wählen verwirft das jetzige Projekt ohne Rückfrage.</translation>
    </message>
    <message>
        <source>the range begins at the slider</source>
        <translation>der Bereich beginnt am Schieber</translation>
    </message>
    <message>
        <source>the range ends at the slider</source>
        <translation>der Bereich endet am Schieber</translation>
    </message>
    <message>
        <source>The report could not be opened in a browser. It is the page %1.%2</source>
        <translation>Der Bericht konnte nicht in einem Browser geöffnet werden. Er ist die Seite %1.%2</translation>
    </message>
    <message>
        <source>The report could not be written to %1. Please see whether the disk is full.%2</source>
        <translation>Der Bericht konnte nicht nach %1 geschrieben werden. Bitte prüfen, ob der Datenträger voll ist.%2</translation>
    </message>
    <message>
        <source>The row %1. Click a bar to select it, drag it to move it, drag its upper right corner to change its length and speed. With Alt, drag either end to trim it.</source>
        <translation>Die Spur %1. Ein Klick wählt einen Balken, Ziehen verschiebt ihn, Ziehen an der oberen rechten Ecke ändert Länge und Geschwindigkeit. Mit Alt trimmt Ziehen an einem der Enden.</translation>
    </message>
    <message>
        <source>The selected file as it is, not as the timeline shows it.</source>
        <translation>Die gewählte Datei, wie sie ist, nicht wie die Zeitleiste sie zeigt.</translation>
    </message>
    <message>
        <source>The selected file is missing.</source>
        <translation>Die gewählte Datei fehlt.</translation>
    </message>
    <message>
        <source>The slider goes to the end of the film</source>
        <translation>Der Schieber geht zum Ende des Films</translation>
    </message>
    <message>
        <source>The slider goes to the next cut or marker</source>
        <translation>Der Schieber geht zum nächsten Schnitt oder zur nächsten Marke</translation>
    </message>
    <message>
        <source>The slider goes to the next marker, which is selected then</source>
        <translation>Der Schieber geht zur nächsten Marke, die dann gewählt ist</translation>
    </message>
    <message>
        <source>The slider goes to the previous cut or marker</source>
        <translation>Der Schieber geht zum vorigen Schnitt oder zur vorigen Marke</translation>
    </message>
    <message>
        <source>The slider goes to the previous marker, which is selected then</source>
        <translation>Der Schieber geht zur vorigen Marke, die dann gewählt ist</translation>
    </message>
    <message>
        <source>The slider goes to the start</source>
        <translation>Der Schieber geht zum Anfang</translation>
    </message>
    <message>
        <source>The slider: the place that the preview shows, and at which you paste and split. Drag it.</source>
        <translation>Der Schieber: die Stelle, die die Vorschau zeigt und an der Sie einfügen und teilen. Ziehen bewegt ihn.</translation>
    </message>
    <message>
        <source>The sound could not be brought to the movie's rate.</source>
        <translation>Der Ton konnte nicht auf die Abtastrate des Films gebracht werden.</translation>
    </message>
    <message>
        <source>The sound device cannot be opened.</source>
        <translation>Das Tongerät kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The source could not be put back.</source>
        <translation>Die Quelle konnte nicht zurückgestellt werden.</translation>
    </message>
    <message>
        <source>The source filter for this media file could not be loaded.</source>
        <translation>Der Leser für diese Mediendatei konnte nicht geladen werden.</translation>
    </message>
    <message>
        <source>The specified file is being used by Quillmont. Please specify a different capture file name.</source>
        <translation>Die angegebene Datei wird von Quillmont benutzt. Bitte einen anderen Namen für die Aufnahmedatei angeben.</translation>
    </message>
    <message>
        <source>The steps that you made. Click one to take it and all later ones back, or an undone one to make it again.</source>
        <translation>Ihre Schritte. Ein Klick nimmt einen und alle späteren zurück oder macht einen zurückgenommenen wieder.</translation>
    </message>
    <message>
        <source>The time at which the slider stands.</source>
        <translation>Die Zeit, bei der der Schieber steht.</translation>
    </message>
    <message>
        <source>The time of the picture.</source>
        <translation>Die Zeit des Bildes.</translation>
    </message>
    <message>
        <source>The time. A click puts the slider there; the arrow keys move it on.</source>
        <translation>Die Zeit. Ein Klick setzt den Schieber dorthin; die Pfeiltasten bewegen ihn weiter.</translation>
    </message>
    <message>
        <source>The timeline could not be written.</source>
        <translation>Die Zeitleiste konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The timeline engine has no such interface.</source>
        <translation>Die Zeitleiste hat keine solche Schnittstelle.</translation>
    </message>
    <message>
        <source>The timeline engine has not been created.</source>
        <translation>Die Zeitleiste wurde nicht erzeugt.</translation>
    </message>
    <message>
        <source>The timeline engine reports failure 0x%1.</source>
        <translation>Die Zeitleiste meldet den Fehler 0x%1.</translation>
    </message>
    <message>
        <source>The timeline: your film from left to right. Each bar is a piece of a file.</source>
        <translation>Die Zeitleiste: Ihr Film von links nach rechts. Jeder Balken ist ein Stück einer Datei.</translation>
    </message>
    <message>
        <source>The title and the other texts cannot be written to "%1": %2. The movie itself is whole.</source>
        <translation>Titel und übrige Texte können nicht in „%1“ geschrieben werden: %2. Der Film selbst ist vollständig.</translation>
    </message>
    <message>
        <source>The tools: actions that make sense now, effects, and the history of what you did.</source>
        <translation>Die Werkzeuge: Aktionen, die jetzt sinnvoll sind, Effekte und der Verlauf dessen, was Sie taten.</translation>
    </message>
    <message>
        <source>The video in this media file cannot be rendered.</source>
        <translation>Das Video dieser Mediendatei kann nicht wiedergegeben werden.</translation>
    </message>
    <message>
        <source>The video will not be seen: with these colors now, close the window and open it again</source>
        <translation>Das Video wird nicht zu sehen sein: Mit diesen Farben das Fenster schließen und neu öffnen</translation>
    </message>
    <message>
        <source>The width and the height must be numbers from %1 to %2.</source>
        <translation>Breite und Höhe müssen Zahlen von %1 bis %2 sein.</translation>
    </message>
    <message>
        <source>The window: the media list, the preview, the tools and the timeline, and all commands in the menus.</source>
        <translation>Das Fenster: Medienliste, Vorschau, Werkzeuge und Zeitleiste und alle Befehle in den Menüs.</translation>
    </message>
    <message>
        <source>There are too many snaps present in the folder to which the snaps are being saved.</source>
        <translation>Im Ordner der Standbilder liegen zu viele Standbilder.</translation>
    </message>
    <message>
        <source>There is no camera. Connect one and open this window again, or capture the screen.</source>
        <translation>Es gibt keine Kamera. Schließen Sie eine an und öffnen Sie dieses Fenster noch einmal, oder nehmen Sie den Bildschirm auf.</translation>
    </message>
    <message>
        <source>There is no folder "%1".%2</source>
        <translation>Es gibt keinen Ordner „%1“.%2</translation>
    </message>
    <message>
        <source>There is no picture to take a snap of.</source>
        <translation>Es gibt kein Bild für ein Standbild.</translation>
    </message>
    <message>
        <source>There is no picture. Connect the camera, close other programs that use it, and open this window again.</source>
        <translation>Es gibt kein Bild. Schließen Sie die Kamera an, schließen Sie andere Programme, die sie benutzen, und öffnen Sie dieses Fenster noch einmal.</translation>
    </message>
    <message>
        <source>There is no program that opens %1.</source>
        <translation>Es gibt kein Programm, das %1 öffnet.</translation>
    </message>
    <message>
        <source>There is no room for another item.</source>
        <translation>Es ist kein Platz für ein weiteres Stück.</translation>
    </message>
    <message>
        <source>There is no room for the key of the overlay.</source>
        <translation>Es ist kein Platz für den Schlüssel des Overlays.</translation>
    </message>
    <message>
        <source>There is no sound device.</source>
        <translation>Es gibt kein Tongerät.</translation>
    </message>
    <message>
        <source>there is no such folder.</source>
        <translation>es gibt keinen solchen Ordner.</translation>
    </message>
    <message>
        <source>There is no such page</source>
        <translation>Diese Seite gibt es nicht</translation>
    </message>
    <message>
        <source>There is nothing to save: no track takes part.</source>
        <translation>Es gibt nichts zu speichern: Keine Spur nimmt teil.</translation>
    </message>
    <message>
        <source>There is nothing to send: no error log was found, and none can be written. Please make room on the disk and try again the next time that this window appears.</source>
        <translation>Es gibt nichts zu senden: Es wurde kein Fehlerprotokoll gefunden, und keines kann geschrieben werden. Bitte Platz auf dem Datenträger schaffen und es beim nächsten Erscheinen dieses Fensters noch einmal versuchen.</translation>
    </message>
    <message>
        <source>These files were not found, and what they were used for is left out:&#13;
%1</source>
        <translation>Diese Dateien wurden nicht gefunden; wofür sie benutzt wurden, ist weggelassen:&#13;
%1</translation>
    </message>
    <message>
        <source>This device has no settings of this kind.</source>
        <translation>Dieses Gerät hat keine solchen Einstellungen.</translation>
    </message>
    <message>
        <source>This error report includes information regarding the condition of Quillmont when the problem occured and the Operating System Version.&#13;
We do not collect your files, name, address and/or e-mail address or any other form of personally identifiable information. The error report does not contain any Customer Specific Information whatsoever. The data we collect will only be used to fix the problem. If more information is available we will let you know. This error report will be considered confidential and will not be used for any marketing purposes by Brindlecove.</source>
        <translation>Dieser Fehlerbericht enthält Angaben zum Zustand von Quillmont, als das Problem auftrat, und zur Version des Betriebssystems.&#13;
Wir sammeln weder Ihre Dateien noch Namen, Anschrift, E-Mail-Adresse oder andere persönliche Angaben. Der Bericht enthält keinerlei Kundendaten. Die Daten dienen nur dazu, das Problem zu beheben. Wenn es Neues gibt, lassen wir es Sie wissen. Dieser Fehlerbericht wird vertraulich behandelt und von Brindlecove nicht für Werbung verwendet.</translation>
    </message>
    <message>
        <source>This file cannot be played.</source>
        <translation>Diese Datei kann nicht abgespielt werden.</translation>
    </message>
    <message>
        <source>This is a folder. Open or drop the files that are in it.</source>
        <translation>Das ist ein Ordner. Öffnen oder ziehen Sie die Dateien darin.</translation>
    </message>
    <message>
        <source>This machine has no encoder for %1.</source>
        <translation>Diese Maschine hat keinen Kodierer für %1.</translation>
    </message>
    <message>
        <source>This picture cannot be shown.</source>
        <translation>Dieses Bild kann nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>Tilt (Absolute)</source>
        <translation>Neigen</translation>
    </message>
    <message>
        <source>Tilt, Absolute</source>
        <translation>Neigen</translation>
    </message>
    <message>
        <source>Time scale</source>
        <translation>Zeitskala</translation>
    </message>
    <message>
        <source>&amp;Timeline</source>
        <translation>&amp;Zeitleiste</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>Zeitleiste</translation>
    </message>
    <message>
        <source>Timeline Height</source>
        <translation>Höhe der Zeitleiste</translation>
    </message>
    <message>
        <source>Timeline &amp;List</source>
        <translation>&amp;Zeitleistenliste</translation>
    </message>
    <message>
        <source>Timeline list</source>
        <translation>Zeitleistenliste</translation>
    </message>
    <message>
        <source>Timeline, Preview</source>
        <translation>Zeitleiste, Vorschau</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <translation>&amp;Titel:</translation>
    </message>
    <message>
        <source>To see what data this report contains,</source>
        <translation>Welche Daten der Bericht enthält:</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>T&amp;ools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Tools, actions</source>
        <translation>Werkzeuge, Aktionen</translation>
    </message>
    <message>
        <source>Tools, history</source>
        <translation>Werkzeuge, Verlauf</translation>
    </message>
    <message>
        <source>Top &amp;Left</source>
        <translation>&amp;Oben links</translation>
    </message>
    <message>
        <source>Top &amp;Right</source>
        <translation>O&amp;ben rechts</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Spur</translation>
    </message>
    <message>
        <source>Track is locked</source>
        <translation>Die Spur ist gesperrt</translation>
    </message>
    <message>
        <source>&amp;Tracks to save</source>
        <translation>S&amp;puren, die gespeichert werden</translation>
    </message>
    <message>
        <source>Tracks to save</source>
        <translation>Spuren, die gespeichert werden</translation>
    </message>
    <message>
        <source>T&amp;ransparent Background</source>
        <translation>Du&amp;rchsichtiger Hintergrund</translation>
    </message>
    <message>
        <source>Trim</source>
        <translation>Trimmen</translation>
    </message>
    <message>
        <source>Trim End to S&amp;lider</source>
        <translation>En&amp;de bis zum Schieber trimmen</translation>
    </message>
    <message>
        <source>Trim Mo&amp;de</source>
        <translation>Tr&amp;immmodus</translation>
    </message>
    <message>
        <source>Trim Mode</source>
        <translation>Trimmmodus</translation>
    </message>
    <message>
        <source>Trim mode is off</source>
        <translation>Der Trimmmodus ist aus</translation>
    </message>
    <message>
        <source>Trim mode: drag either end of a bar to trim it</source>
        <translation>Trimmmodus: ein Ende eines Balkens ziehen, um ihn zu trimmen</translation>
    </message>
    <message>
        <source>Tr&amp;im Start to Slider</source>
        <translation>Anfan&amp;g bis zum Schieber trimmen</translation>
    </message>
    <message>
        <source>Trims the end of what is selected by a picture</source>
        <translation>Trimmt das Ende des Gewählten um ein Bild</translation>
    </message>
    <message>
        <source>Trims the pieces that the range touches to what lies in it.</source>
        <translation>Trimmt die Stücke, die der Bereich berührt, auf das, was darin liegt.</translation>
    </message>
    <message>
        <source>Trims the start of what is selected by a picture</source>
        <translation>Trimmt den Anfang des Gewählten um ein Bild</translation>
    </message>
    <message>
        <source>Try another place.</source>
        <translation>Versuchen Sie es an einem anderen Ort.</translation>
    </message>
    <message>
        <source>Turns the next click into a question: what is this?</source>
        <translation>Macht aus dem nächsten Klick eine Frage: Was ist das?</translation>
    </message>
    <message>
        <source>Turns the picture into a grey relief that is pressed in.</source>
        <translation>Macht aus dem Bild ein graues, eingedrücktes Relief.</translation>
    </message>
    <message>
        <source>Turns the picture into a grey relief that stands out.</source>
        <translation>Macht aus dem Bild ein graues, erhabenes Relief.</translation>
    </message>
    <message>
        <source>&amp;Tutorial</source>
        <translation>&amp;Einführung</translation>
    </message>
    <message>
        <source>Tutorial</source>
        <translation>Einführung</translation>
    </message>
    <message>
        <source>Type mismatch</source>
        <translation>Typen unverträglich</translation>
    </message>
    <message>
        <source>Unable to add effect to the timeline as the video track is empty.</source>
        <translation>Der Effekt kann nicht hinzugefügt werden, da die Videospur leer ist.</translation>
    </message>
    <message>
        <source>Unable to add effect to timeline. The timeline may be empty.</source>
        <translation>Der Effekt kann nicht hinzugefügt werden. Die Zeitleiste ist vielleicht leer.</translation>
    </message>
    <message>
        <source>Unable to add effect.&#13;
&#13;
The duration of the effect track cannot be more than the duration of the video track. You may have to shift one or more effects or clear the effect track to make room for a new effect.</source>
        <translation>Der Effekt kann nicht hinzugefügt werden.&#13;
&#13;
Die Effektspur kann nicht länger als die Videospur sein. Verschieben Sie einen oder mehrere Effekte oder leeren Sie die Effektspur, um Platz für einen neuen Effekt zu schaffen.</translation>
    </message>
    <message>
        <source>Unable to add to overlay as the video track is empty.</source>
        <translation>Das Overlay ist nicht möglich, da die Videospur leer ist.</translation>
    </message>
    <message>
        <source>Unable to add to the timeline because no file is selected. Please select a file from the media list.</source>
        <translation>Es kann nichts auf die Zeitleiste gelegt werden, da keine Datei gewählt ist. Bitte eine Datei in der Medienliste wählen.</translation>
    </message>
    <message>
        <source>Unable to add to timeline. The media list is empty.</source>
        <translation>Es kann nichts auf die Zeitleiste gelegt werden. Die Medienliste ist leer.</translation>
    </message>
    <message>
        <source>Unable to add to timeline. Unexpected error.</source>
        <translation>Es kann nichts auf die Zeitleiste gelegt werden. Unerwarteter Fehler.</translation>
    </message>
    <message>
        <source>Unable to close file.</source>
        <translation>Die Datei kann nicht geschlossen werden.</translation>
    </message>
    <message>
        <source>Unable to copy "%1" to "%2": %3</source>
        <translation>„%1“ kann nicht nach „%2“ kopiert werden: %3</translation>
    </message>
    <message>
        <source>Unable to delete "%1": %2. Please specify a different capture file name.</source>
        <translation>„%1“ kann nicht gelöscht werden: %2. Bitte einen anderen Namen für die Aufnahmedatei angeben.</translation>
    </message>
    <message>
        <source>Unable to initialize capture device. It may be busy or not installed.</source>
        <translation>Das Aufnahmegerät kann nicht gestartet werden. Es ist vielleicht belegt oder nicht eingerichtet.</translation>
    </message>
    <message>
        <source>Unable to initialize capture device. The capture device may be busy or not installed.</source>
        <translation>Das Aufnahmegerät kann nicht gestartet werden. Es ist vielleicht belegt oder nicht eingerichtet.</translation>
    </message>
    <message>
        <source>Unable to initialize timeline.</source>
        <translation>Die Zeitleiste kann nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Unable to initialize. Please install DirectX 8.0 or higher.&#13;
If this does not solve your problem then you may have to re-install Quillmont.</source>
        <translation>Das Programm kann nicht gestartet werden. Bitte DirectX 8.0 oder neuer installieren.&#13;
Wenn das nicht hilft, muss Quillmont vielleicht neu installiert werden.</translation>
    </message>
    <message>
        <source>Unable to initialize. Quillmont requires DirectX 8.0 or higher to run.&#13;
You may be able to use Quillmont but it may not respond as desired.&#13;
&#13;
Do you wish to continue anyway?</source>
        <translation>Das Programm kann nicht gestartet werden. Quillmont braucht DirectX 8.0 oder neuer.&#13;
Quillmont lässt sich vielleicht benutzen, arbeitet aber womöglich nicht wie gewünscht.&#13;
&#13;
Möchten Sie trotzdem fortfahren?</translation>
    </message>
    <message>
        <source>Unable to open %1.</source>
        <translation>%1 kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Unable to open file - "%1".&#13;
%2</source>
        <translation>Die Datei kann nicht geöffnet werden: „%1“.&#13;
%2</translation>
    </message>
    <message>
        <source>Unable to open file.</source>
        <translation>Die Datei kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Unable to open Project, the Project file may be corrupt.</source>
        <translation>Das Projekt kann nicht geöffnet werden, die Projektdatei ist vielleicht beschädigt.</translation>
    </message>
    <message>
        <source>Unable to open project.</source>
        <translation>Das Projekt kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Unable to open project.&#13;
&#13;
%1</source>
        <translation>Das Projekt kann nicht geöffnet werden.&#13;
&#13;
%1</translation>
    </message>
    <message>
        <source>Unable to open project. One or more files in the project were not found.</source>
        <translation>Das Projekt kann nicht geöffnet werden. Eine oder mehrere seiner Dateien wurden nicht gefunden.</translation>
    </message>
    <message>
        <source>Unable to open Project. Project path and/or filename is too long.</source>
        <translation>Das Projekt kann nicht geöffnet werden. Pfad oder Dateiname ist zu lang.</translation>
    </message>
    <message>
        <source>Unable to open project. Unexpected error.</source>
        <translation>Das Projekt kann nicht geöffnet werden. Unerwarteter Fehler.</translation>
    </message>
    <message>
        <source>Unable to save "%1". Please choose another folder or name.</source>
        <translation>„%1“ kann nicht gespeichert werden. Bitte einen anderen Ordner oder Namen wählen.</translation>
    </message>
    <message>
        <source>Unable to save project. The project file is Read Only.</source>
        <translation>Das Projekt kann nicht gespeichert werden. Die Projektdatei ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Unable to save to file "%1" as it is being used by Quillmont. Please specify another filename.</source>
        <translation>In die Datei „%1“ kann nicht gespeichert werden, da Quillmont sie benutzt. Bitte einen anderen Dateinamen angeben.</translation>
    </message>
    <message>
        <source>Unable to take snap.</source>
        <translation>Das Standbild kann nicht aufgenommen werden.</translation>
    </message>
    <message>
        <source>Unable to take snap. Too many snaps present.</source>
        <translation>Das Standbild kann nicht aufgenommen werden. Es gibt zu viele Standbilder.</translation>
    </message>
    <message>
        <source>Uncompressed</source>
        <translation>Unkomprimiert</translation>
    </message>
    <message>
        <source>&amp;Underline</source>
        <translation>&amp;Unterstrichen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>R&amp;ückgängig</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Undo: %1</source>
        <translation>Rückgängig: %1</translation>
    </message>
    <message>
        <source>Unexpected error saving project.</source>
        <translation>Unerwarteter Fehler beim Speichern des Projekts.</translation>
    </message>
    <message>
        <source>Unexpected error.</source>
        <translation>Unerwarteter Fehler.</translation>
    </message>
    <message>
        <source>Unlink %1</source>
        <translation>%1 lösen</translation>
    </message>
    <message>
        <source>Unlock %1</source>
        <translation>%1 entsperren</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>%1 nehmen</translation>
    </message>
    <message>
        <source>Use the 'Shift' key to nudge source(s) with the direction keys</source>
        <translation>Mit der Umschalttaste rücken die Pfeiltasten die Quelle(n) fein</translation>
    </message>
    <message>
        <source>Use the 'Shift' key with the direction keys to nudge text</source>
        <translation>Mit der Umschalttaste rücken die Pfeiltasten den Text fein</translation>
    </message>
    <message>
        <source>Ut Video</source>
        <translation>Ut Video</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Vertical Flip</source>
        <translation>Senkrecht spiegeln</translation>
    </message>
    <message>
        <source>&amp;Video</source>
        <translation>&amp;Video</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>&amp;Video Compressor</source>
        <translation>&amp;Videokompressor</translation>
    </message>
    <message>
        <source>Video &amp;Compressor</source>
        <translation>&amp;Videokompressor</translation>
    </message>
    <message>
        <source>Video Compressor</source>
        <translation>Videokompressor</translation>
    </message>
    <message>
        <source>&amp;Video compressor:</source>
        <translation>&amp;Videokompressor:</translation>
    </message>
    <message>
        <source>Vi&amp;deo Device</source>
        <translation>Video&amp;gerät</translation>
    </message>
    <message>
        <source>Video device could not be initialized.</source>
        <translation>Das Videogerät konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Video Device Not Found.</source>
        <translation>Videogerät nicht gefunden.</translation>
    </message>
    <message>
        <source>Video &amp;Dimension</source>
        <translation>Bild&amp;größe</translation>
    </message>
    <message>
        <source>Video Dimension</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Video &amp;dimension:</source>
        <translation>Bild&amp;größe:</translation>
    </message>
    <message>
        <source>Video dimension:</source>
        <translation>Bildgröße:</translation>
    </message>
    <message>
        <source>Video Files (*.aiff; *.asf; *.avi; *.mpeg; *.wmv)</source>
        <translation>Videodateien (*.aiff; *.asf; *.avi; *.mpeg; *.wmv)</translation>
    </message>
    <message>
        <source>Video for broadband NTSC (384 Kbps)</source>
        <translation>Video für Breitband, NTSC (384 kbit/s)</translation>
    </message>
    <message>
        <source>Video for broadband NTSC (700 Kbps)</source>
        <translation>Video für Breitband, NTSC (700 kbit/s)</translation>
    </message>
    <message>
        <source>Video for broadband PAL (384 Kbps)</source>
        <translation>Video für Breitband, PAL (384 kbit/s)</translation>
    </message>
    <message>
        <source>Video for broadband PAL (700 Kbps)</source>
        <translation>Video für Breitband, PAL (700 kbit/s)</translation>
    </message>
    <message>
        <source>Video for dial-up modems or LAN (28.8 to 100 Kbps)</source>
        <translation>Video für Modems oder LAN (28,8 bis 100 kbit/s)</translation>
    </message>
    <message>
        <source>Video for dial-up modems or single channel ISDN (28.8 to 56 Kbps)</source>
        <translation>Video für Modems oder ISDN, ein Kanal (28,8 bis 56 kbit/s)</translation>
    </message>
    <message>
        <source>Video for DVD quality NTSC (2 Mbps)</source>
        <translation>Video in DVD-Qualität, NTSC (2 Mbit/s)</translation>
    </message>
    <message>
        <source>Video for DVD quality PAL (2 Mbps)</source>
        <translation>Video in DVD-Qualität, PAL (2 Mbit/s)</translation>
    </message>
    <message>
        <source>Video for e-mail and dual-channel ISDN (128 Kbps)</source>
        <translation>Video für E-Mail und ISDN, zwei Kanäle (128 kbit/s)</translation>
    </message>
    <message>
        <source>Video for local area networks (1 Mbps)</source>
        <translation>Video für lokale Netze (1 Mbit/s)</translation>
    </message>
    <message>
        <source>Video for web servers (256 Kbps)</source>
        <translation>Video für Webserver (256 kbit/s)</translation>
    </message>
    <message>
        <source>Video Info</source>
        <translation>Videoangaben</translation>
    </message>
    <message>
        <source>Video Profile</source>
        <translation>Videoprofil</translation>
    </message>
    <message>
        <source>Video Settings</source>
        <translation>Videoeinstellungen</translation>
    </message>
    <message>
        <source>Video Settings not available with this Video device driver. Please select another device and try again.</source>
        <translation>Der Treiber dieses Videogeräts bietet keine Videoeinstellungen. Bitte ein anderes Gerät wählen und noch einmal versuchen.</translation>
    </message>
    <message>
        <source>&amp;Video Settings...</source>
        <translation>&amp;Videoeinstellungen...</translation>
    </message>
    <message>
        <source>Video Stream</source>
        <translation>Videostream</translation>
    </message>
    <message>
        <source>Video streams</source>
        <translation>Videostreams</translation>
    </message>
    <message>
        <source>&amp;Video to Audio</source>
        <translation>&amp;Video nach Audio</translation>
    </message>
    <message>
        <source>Video Track</source>
        <translation>Videospur</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>View Options</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Volume %1</source>
        <translation>Lautstärke %1</translation>
    </message>
    <message>
        <source>&amp;Wave</source>
        <translation>&amp;Welle</translation>
    </message>
    <message>
        <source>Wave</source>
        <translation>Welle</translation>
    </message>
    <message>
        <source>&amp;Waves on Bars</source>
        <translation>&amp;Wellen auf Balken</translation>
    </message>
    <message>
        <source>We have created error report that you can send to help us improve Quillmont. We will treat this as confidential and anonymous.</source>
        <translation>Wir haben einen Fehlerbericht erstellt, den Sie senden können, um Quillmont zu verbessern. Wir behandeln ihn vertraulich und anonym.</translation>
    </message>
    <message>
        <source>Welcome</source>
        <translation>Willkommen</translation>
    </message>
    <message>
        <source>What can be done now in the panel that you work in. Click an action to run it.</source>
        <translation>Was jetzt im Feld, in dem Sie arbeiten, möglich ist. Ein Klick führt eine Aktion aus.</translation>
    </message>
    <message>
        <source>What lies on the timeline
plays here.</source>
        <translation>Was auf der Zeitleiste liegt,
wird hier abgespielt.</translation>
    </message>
    <message>
        <source>What Quillmont begins with: folder, colours, and how movies are saved.</source>
        <translation>Womit Quillmont beginnt: Ordner, Farben und wie Filme gespeichert werden.</translation>
    </message>
    <message>
        <source>What the part under the pointer is for, or how far a task has come.</source>
        <translation>Wozu der Teil unter dem Zeiger dient oder wie weit ein Vorgang ist.</translation>
    </message>
    <message>
        <source>What's &amp;This?</source>
        <translation>&amp;Direkthilfe</translation>
    </message>
    <message>
        <source>When the selected item begins and ends.</source>
        <translation>Wann das gewählte Stück beginnt und endet.</translation>
    </message>
    <message>
        <source>Where the range begins on which cut, copy, delete and crop work. Drag it.</source>
        <translation>Wo der Bereich beginnt, auf den Ausschneiden, Kopieren, Löschen und Freistellen wirken. Ziehen bewegt ihn.</translation>
    </message>
    <message>
        <source>Where the range ends on which cut, copy, delete and crop work. Drag it.</source>
        <translation>Wo der Bereich endet, auf den Ausschneiden, Kopieren, Löschen und Freistellen wirken. Ziehen bewegt ihn.</translation>
    </message>
    <message>
        <source>Whether the view goes to what an edit has brought.</source>
        <translation>Ob die Ansicht zu dem geht, was eine Bearbeitung gebracht hat.</translation>
    </message>
    <message>
        <source>Whether this row is seen or heard when the film is played.</source>
        <translation>Ob diese Spur beim Abspielen zu sehen oder zu hören ist.</translation>
    </message>
    <message>
        <source>Whether this row takes part in what is done with the range.</source>
        <translation>Ob diese Spur an dem teilnimmt, was mit dem Bereich geschieht.</translation>
    </message>
    <message>
        <source>Whether what you drag is drawn to cuts and markers near by.</source>
        <translation>Ob Gezogenes an nahe Schnitte und Marken einrastet.</translation>
    </message>
    <message>
        <source>Which version this is, and what it is built on.</source>
        <translation>Welche Version das ist und worauf sie gebaut ist.</translation>
    </message>
    <message>
        <source>While it is down, playing begins again when the end is reached.</source>
        <translation>Solange es gedrückt ist, beginnt das Abspielen am Ende von vorn.</translation>
    </message>
    <message>
        <source>While it is on, a drag at either end of a bar trims it.</source>
        <translation>Solange es an ist, trimmt Ziehen an einem Ende eines Balkens.</translation>
    </message>
    <message>
        <source>while it is on, both ends of a bar trim</source>
        <translation>solange er an ist, trimmen beide Enden eines Balkens</translation>
    </message>
    <message>
        <source>While this is on, both ends of a bar trim it. Tools &gt; Trim Mode, or T, ends it.</source>
        <translation>Solange dies an ist, trimmen beide Enden eines Balkens ihn. Werkzeuge &gt; Trimmmodus oder T beendet es.</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>White Balance Blue Component</source>
        <translation>Weißabgleich, Blauanteil</translation>
    </message>
    <message>
        <source>White Balance Component, Auto</source>
        <translation>Weißabgleich automatisch</translation>
    </message>
    <message>
        <source>White Balance Red Component</source>
        <translation>Weißabgleich, Rotanteil</translation>
    </message>
    <message>
        <source>White Balance Temperature</source>
        <translation>Farbtemperatur des Weißabgleichs</translation>
    </message>
    <message>
        <source>White Balance Temperature, Auto</source>
        <translation>Weißabgleich automatisch</translation>
    </message>
    <message>
        <source>White Balance, Auto</source>
        <translation>Weißabgleich automatisch</translation>
    </message>
    <message>
        <source>White Balance, Automatic</source>
        <translation>Weißabgleich automatisch</translation>
    </message>
    <message>
        <source>Wh&amp;ole Film</source>
        <translation>Ganzer &amp;Film</translation>
    </message>
    <message>
        <source>Whole screen</source>
        <translation>Ganzer Bildschirm</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Windows Media</source>
        <translation>&amp;Windows Media</translation>
    </message>
    <message>
        <source>Windows Media Audio 2</source>
        <translation>Windows Media Audio 2</translation>
    </message>
    <message>
        <source>&amp;Windows Media Format Save Options</source>
        <translation>&amp;Windows-Media-Speicheroptionen</translation>
    </message>
    <message>
        <source>&amp;Windows Media Options</source>
        <translation>&amp;Windows-Media-Optionen</translation>
    </message>
    <message>
        <source>Windows Media Video 8</source>
        <translation>Windows Media Video 8</translation>
    </message>
    <message>
        <source>WMA File</source>
        <translation>WMA-Datei</translation>
    </message>
    <message>
        <source>WMV File</source>
        <translation>WMV-Datei</translation>
    </message>
    <message>
        <source>Work that was set &amp;aside, the newest first:</source>
        <translation>&amp;Beiseite gelegte Arbeit, die neueste zuerst:</translation>
    </message>
    <message>
        <source>&amp;Working Folder</source>
        <translation>Arbeits&amp;ordner</translation>
    </message>
    <message>
        <source>Working &amp;Folder</source>
        <translation>Arbeits&amp;ordner</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>You have selected too many files to open. Please select fewer files.</source>
        <translation>Es sind zu viele Dateien gewählt. Bitte weniger Dateien wählen.</translation>
    </message>
    <message>
        <source>You must enable both the streams (Video and Audio) to capture in ASF.</source>
        <translation>Für eine Aufnahme in ASF müssen beide Streams (Video und Audio) eingeschaltet sein.</translation>
    </message>
    <message>
        <source>Your work is not being secured against a crash: nothing can be written to %1</source>
        <translation>Ihre Arbeit wird nicht gegen einen Absturz gesichert: In %1 kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>zlib licence</source>
        <translation>zlib-Lizenz</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Ve&amp;rgrößern</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;In Timeline Scale</source>
        <translation>Zeitskala ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoo&amp;m Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom &amp;Out Timeline Scale</source>
        <translation>Zeits&amp;kala verkleinern</translation>
    </message>
    <message>
        <source>Zoom, Absolute</source>
        <translation>Zoom</translation>
    </message>
</context>
</TS>
