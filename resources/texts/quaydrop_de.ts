<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Quaydrop</name>
    <message>
        <source>Zero KB</source>
        <translation>Null KB</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>Quit Quaydrop</source>
        <translation>Quaydrop beenden</translation>
    </message>
    <message>
        <source>Quaydrop is running</source>
        <translation>Quaydrop läuft</translation>
    </message>
    <message>
        <source>NotEnoughspaceAlrtTitle</source>
        <translation>Nicht genug Speicherplatz</translation>
    </message>
    <message>
        <source>NotEnoughspaceAlrtInfTxt</source>
        <translation>Am Ziel ist nicht genug Platz für diese Objekte frei.</translation>
    </message>
    <message>
        <source>overwriteNotPermited</source>
        <translation>%1 kann nicht auf sich selbst verschoben oder kopiert werden</translation>
    </message>
    <message>
        <source>FilesAlreadyBeingoved</source>
        <translation>Die Objekte liegen bereits in diesem Ordner, oder der Ordner liegt in ihnen.</translation>
    </message>
    <message>
        <source>notPermitted</source>
        <translation>Nicht möglich: %1</translation>
    </message>
    <message>
        <source>FilesAlreadyBeingoved2</source>
        <translation>Diese Objekte werden bereits nach %1 übertragen.</translation>
    </message>
    <message>
        <source>FilesStillbeingCopied</source>
        <translation>Diese Objekte werden noch von einer anderen Übertragung geschrieben. Bitte versuchen Sie es erneut, wenn sie beendet ist.</translation>
    </message>
    <message>
        <source>canNotBeReplaced</source>
        <translation>Ein Ordner kann keinen Ordner ersetzen, der ihn enthält.</translation>
    </message>
    <message>
        <source>FileExistsAlrtTitle</source>
        <translation>Ein Objekt mit diesem Namen ist bereits vorhanden</translation>
    </message>
    <message>
        <source>%@ alreadyExists</source>
        <translation>„%1“ ist am Ziel bereits vorhanden. Ersetzen, überspringen oder beide behalten?</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Überspringen</translation>
    </message>
    <message>
        <source>KeepBoth</source>
        <translation>Beide behalten</translation>
    </message>
    <message>
        <source>Apply4All</source>
        <translation>Für alle übernehmen</translation>
    </message>
    <message>
        <source>copyingFile2</source>
        <translation>%1 wird nach %2 kopiert</translation>
    </message>
    <message>
        <source>movingFile2</source>
        <translation>%1 wird nach %2 verschoben</translation>
    </message>
    <message>
        <source>revealShowFileBtn</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>/path</source>
        <translation>Pfad kopieren</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Zeichen</translation>
    </message>
    <message>
        <source>Convert</source>
        <translation>Umwandeln</translation>
    </message>
    <message>
        <source>Converting</source>
        <translation>Wird umgewandelt…</translation>
    </message>
    <message>
        <source>Copied!</source>
        <translation>Kopiert!</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren statt verschieben</translation>
    </message>
    <message>
        <source>Copy to clipboard</source>
        <translation>In die Zwischenablage</translation>
    </message>
    <message>
        <source>Copying files</source>
        <translation>Dateien werden kopiert</translation>
    </message>
    <message>
        <source>Could not save the file</source>
        <translation>Die Datei konnte nicht gesichert werden</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden…</translation>
    </message>
    <message>
        <source>Data import canceled...</source>
        <translation>Datenimport abgebrochen...</translation>
    </message>
    <message>
        <source>Drop here</source>
        <translation>Hier ablegen</translation>
    </message>
    <message>
        <source>Facebook</source>
        <translation>Facebook</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Into folder</source>
        <translation>In Ordner</translation>
    </message>
    <message>
        <source>Keep proportions</source>
        <translation>Proportionen beibehalten</translation>
    </message>
    <message>
        <source>LaunchAtLogin</source>
        <translation>Quaydrop bei der Anmeldung starten?</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Wird geladen…</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>E-Mail</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Move files to...</source>
        <translation>Dateien verschieben nach…</translation>
    </message>
    <message>
        <source>NO</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Other...</source>
        <translation>Andere…</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>Als PDF</translation>
    </message>
    <message>
        <source>Post</source>
        <translation>Posten</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Rename files</source>
        <translation>Dateien umbenennen</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Resizing</source>
        <translation>Größe wird geändert…</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Save as text</source>
        <translation>Als Text</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Festlegen</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>To images</source>
        <translation>In Bilder</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Wörter</translation>
    </message>
    <message>
        <source>YES</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Zip</source>
        <translation>Zip</translation>
    </message>
    <message>
        <source>loginLaunchInfTXT</source>
        <translation>Quaydrop wohnt im Infobereich und ist bereit, sobald Sie etwas ziehen. Sie können das später in den Einstellungen ändern.</translation>
    </message>
    <message>
        <source>exclListTitle</source>
        <translation>Ausschlussliste</translation>
    </message>
    <message>
        <source>exclListIntro</source>
        <translation>Ziehen aus diesen Programmen öffnet das Ablagefenster nie.</translation>
    </message>
    <message>
        <source>exclAddApp</source>
        <translation>Programm hinzufügen…</translation>
    </message>
    <message>
        <source>exclRemoveBtn</source>
        <translation>Von der Liste entfernen</translation>
    </message>
    <message>
        <source>exclListDeleteAlertTitle</source>
        <translation>Dieses Programm von der Ausschlussliste entfernen?</translation>
    </message>
    <message>
        <source>exclHintBtnTxt</source>
        <translation>Ziehvorgänge, die in einem aufgeführten Programm beginnen, werden übergangen, damit dessen eigenes Ziehen und Ablegen ungestört bleibt.</translation>
    </message>
    <message>
        <source>exclPickerTitle</source>
        <translation>Programme wählen</translation>
    </message>
    <message>
        <source>exclFilterPlaceholder</source>
        <translation>Filtern</translation>
    </message>
    <message>
        <source>exclListMenuItem</source>
        <translation>Ausschlussliste…</translation>
    </message>
    <message>
        <source>quickMoveDropCaption</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>aliasDropCaption</source>
        <translation>Alias</translation>
    </message>
    <message>
        <source>quickMoveDropHint</source>
        <translation>Hier ablegen, um an ein Ziel zu verschieben oder zu kopieren</translation>
    </message>
    <message>
        <source>aliasDropHint</source>
        <translation>Hier ablegen, um neben jedem Objekt ein Alias anzulegen</translation>
    </message>
    <message>
        <source>Alias created</source>
        <translation>Alias angelegt</translation>
    </message>
    <message>
        <source>at ../%1</source>
        <translation>in ../%1</translation>
    </message>
    <message>
        <source>Save To</source>
        <translation>Speichern in</translation>
    </message>
    <message>
        <source>imgSaveDestHelp</source>
        <translation>Steht hier „Speichern in“, landen die Bilder im Ordner ihres Originals</translation>
    </message>
    <message>
        <source>Compression</source>
        <translation>Kompression</translation>
    </message>
    <message>
        <source>Merge into one PDF</source>
        <translation>Zu einem PDF vereinen</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>pdfDpiHint</source>
        <translation>30 bis 1000 dpi. Jede Seite wird ein Bild in einem neuen Ordner.</translation>
    </message>
    <message>
        <source>lockedPdfTitle</source>
        <translation>Dieses PDF ist geschützt</translation>
    </message>
    <message>
        <source>lockedPdfText</source>
        <translation>Geben Sie das Kennwort für %1 ein.</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Entsperren</translation>
    </message>
    <message>
        <source>Save result to...</source>
        <translation>Ergebnis speichern in …</translation>
    </message>
    <message>
        <source>savedTostr /%@</source>
        <translation>Gespeichert in /%1</translation>
    </message>
    <message>
        <source>%1 could not be written</source>
        <translation>%1 konnte(n) nicht geschrieben werden; das Protokoll nennt den Grund</translation>
    </message>
    <message>
        <source>nothingWrittenTitle</source>
        <translation>Es wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>imgResizeCompleteMsg</source>
        <translation>Bilder skaliert</translation>
    </message>
    <message>
        <source>imgConvCompleteMsg</source>
        <translation>Bilder konvertiert</translation>
    </message>
    <message>
        <source>PDFConvCompleteMsg</source>
        <translation>PDF-Seiten als Bilder gespeichert</translation>
    </message>
    <message>
        <source>pdfUnreadableTitle</source>
        <translation>Dieses PDF kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>savedasPDF</source>
        <translation>Als PDF gespeichert</translation>
    </message>
    <message>
        <source>to ../%@/%@</source>
        <translation>nach ../%1/%2</translation>
    </message>
    <message>
        <source>showOptionsMenuItem</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>hotKeyTaken</source>
        <translation>%1 ist von einem anderen Programm belegt; nehmen Sie eine andere Taste auf.</translation>
    </message>
    <message>
        <source>summonTitle</source>
        <translation>Ablagefenster öffnen</translation>
    </message>
    <message>
        <source>onClickCheckBox</source>
        <translation>Sobald ein Ziehen beginnt</translation>
    </message>
    <message>
        <source>onHotkeyCheckBox</source>
        <translation>Mit der Taste</translation>
    </message>
    <message>
        <source>waylandNote</source>
        <translation>In dieser Wayland-Sitzung werden nur Ziehvorgänge aus X11-Fenstern erkannt; die Taste wirkt überall.</translation>
    </message>
    <message>
        <source>waylandNoteBindCommand</source>
        <translation>In dieser Wayland-Sitzung werden nur Ziehvorgänge aus X11-Fenstern erkannt. Für die Taste legen Sie in den Einstellungen Ihrer Arbeitsumgebung ein Tastenkürzel für den Befehl „quaydrop toggle“ an.</translation>
    </message>
    <message>
        <source>launchAtLoginSwitch</source>
        <translation>Beim Anmelden starten</translation>
    </message>
    <message>
        <source>notifySwitch</source>
        <translation>Benachrichtigen, wenn fertig</translation>
    </message>
    <message>
        <source>timeSavedTitle</source>
        <translation>Gesparte Zeit</translation>
    </message>
    <message>
        <source>thisWeek</source>
        <translation>Diese Woche</translation>
    </message>
    <message>
        <source>inTotal</source>
        <translation>Insgesamt</translation>
    </message>
    <message>
        <source>howCalculated</source>
        <translation>Wie wird das berechnet?</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>favDestMenuItem</source>
        <translation>Ziele …</translation>
    </message>
    <message>
        <source>helpIconsMenuItem</source>
        <translation>Was die Knöpfe bedeuten</translation>
    </message>
    <message>
        <source>supportMenuItem</source>
        <translation>Support kontaktieren …</translation>
    </message>
    <message>
        <source>tellFriendMenuItem</source>
        <translation>Einem Freund empfehlen …</translation>
    </message>
    <message>
        <source>hideIconMenuItem</source>
        <translation>Symbol im Infobereich ausblenden …</translation>
    </message>
    <message>
        <source>aboutMenuItem</source>
        <translation>Über Quaydrop</translation>
    </message>
    <message>
        <source>shareOnX</source>
        <translation>Auf X posten</translation>
    </message>
    <message>
        <source>shareOnFacebook</source>
        <translation>Auf Facebook posten</translation>
    </message>
    <message>
        <source>SharingfeatureAlrtTitle</source>
        <translation>Noch nicht ganz</translation>
    </message>
    <message>
        <source>SharingfeatureAlrtInf</source>
        <translation>Gesparte Zeit lässt sich teilen, sobald es 20 Minuten sind.</translation>
    </message>
    <message>
        <source>thisweekSavedTime</source>
        <translation>Quaydrop hat mir diese Woche %1 gespart.</translation>
    </message>
    <message>
        <source>thisweekSavedTimeFB</source>
        <translation>Diese Woche hat mir Quaydrop %1 Ziehen, Umbenennen und Umwandeln erspart.</translation>
    </message>
    <message>
        <source>totalTimeSaved</source>
        <translation>Quaydrop hat mir bisher %1 gespart.</translation>
    </message>
    <message>
        <source>totalTimeSavedFB</source>
        <translation>Bisher hat mir Quaydrop %1 Ziehen, Umbenennen und Umwandeln erspart.</translation>
    </message>
    <message>
        <source>tellFriendSubject</source>
        <translation>Quaydrop: Ziehen und Ablegen, das mehr kann</translation>
    </message>
    <message>
        <source>tellFriendBody</source>
        <translation>Ich nutze Quaydrop: Man zieht etwas, und ein kleines Fenster bietet an, was passt, vom Verschieben bis zum Skalieren von Bildern. Schau mal: %1</translation>
    </message>
    <message>
        <source>IMPORTANT</source>
        <translation>Symbol im Infobereich ausblenden?</translation>
    </message>
    <message>
        <source>makeQDMenuBarIconVisibleAlertText</source>
        <translation>Quaydrop läuft ohne das Symbol weiter. Um es zurückzuholen, starten Sie Quaydrop erneut aus dem Anwendungsmenü oder geben Sie quaydrop in einem Terminal ein.</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>helpIconsTitle</source>
        <translation>Was die Knöpfe der Leisten tun</translation>
    </message>
    <message>
        <source>helpTimeTitle</source>
        <translation>Wie die gesparte Zeit gezählt wird</translation>
    </message>
    <message>
        <source>helpTimeText</source>
        <translation>Jede Aktion zählt beim Druck auf ihren Knopf die Zeit, die sie von Hand dauern würde. Die wichtigsten:</translation>
    </message>
    <message>
        <source>creditMove</source>
        <translation>Verschieben oder Kopieren an ein Ziel</translation>
    </message>
    <message>
        <source>creditResize</source>
        <translation>Bilder skalieren</translation>
    </message>
    <message>
        <source>creditConvert</source>
        <translation>Ein Bild umwandeln</translation>
    </message>
    <message>
        <source>creditPdfPage</source>
        <translation>Eine PDF-Seite als Bild</translation>
    </message>
    <message>
        <source>creditSaveAsPdf</source>
        <translation>Ein Textdokument als PDF</translation>
    </message>
    <message>
        <source>creditCopyPath</source>
        <translation>Einen Pfad kopieren</translation>
    </message>
    <message>
        <source>creditMail</source>
        <translation>Eine Datei mailen</translation>
    </message>
    <message>
        <source>creditAlias</source>
        <translation>Verknüpfungen anlegen</translation>
    </message>
    <message>
        <source>creditSize</source>
        <translation>Eine Größe anzeigen</translation>
    </message>
    <message>
        <source>creditZip</source>
        <translation>Zippen</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>introWindowTitle</source>
        <translation>Willkommen bei Quaydrop</translation>
    </message>
    <message>
        <source>dontShowIntroAgain</source>
        <translation>Nicht mehr anzeigen</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>viewIntroBtn</source>
        <translation>Mehr im Web</translation>
    </message>
    <message>
        <source>slide1Title</source>
        <translation>Ziehen Sie irgendetwas</translation>
    </message>
    <message>
        <source>slide1Text</source>
        <translation>Beginnen Sie, Dateien, Text oder ein Bild aus einem beliebigen Programm zu ziehen. Das kleine Ablagefenster von Quaydrop erscheint neben dem Zeiger.</translation>
    </message>
    <message>
        <source>slide2Title</source>
        <translation>Legen Sie es auf dem Fenster ab</translation>
    </message>
    <message>
        <source>slide2Text</source>
        <translation>Lassen Sie über dem Fenster los, und eine Leiste mit passenden Aktionen öffnet sich.</translation>
    </message>
    <message>
        <source>slide3Title</source>
        <translation>Wählen Sie eine Aktion</translation>
    </message>
    <message>
        <source>slide3Text</source>
        <translation>Verschieben oder kopieren an gemerkte Orte, Bilder skalieren oder umwandeln, PDFs in Seiten zerlegen, zippen und mehr. Jede Aktion zählt zur gesparten Zeit.</translation>
    </message>
    <message>
        <source>slide4Title</source>
        <translation>Zwei Abkürzungen darunter</translation>
    </message>
    <message>
        <source>slide4Text</source>
        <translation>Legen Sie auf „Verschieben“ ab, um sofort ein Ziel zu wählen, oder auf „Alias“ für Verknüpfungen neben den Dateien. Das Symbol im Infobereich führt zu den Optionen, etwa dem Öffnen mit Strg+Alt+F.</translation>
    </message>
    <message>
        <source>sizeUnreadableTitle</source>
        <translation>Die Größe dieses Bildes lässt sich nicht lesen</translation>
    </message>
    <message>
        <source>wrongPdfPassword</source>
        <translation>Mit diesem Kennwort lässt sich das PDF nicht öffnen. Versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>destFolderDoesntExistMsg</source>
        <translation>Dieser Zielordner existiert nicht mehr. Soll er aus der Liste entfernt werden?</translation>
    </message>
    <message>
        <source>destFolderDoesntExistTitle</source>
        <translation>Vielleicht wurde er gelöscht oder umbenannt, oder er liegt auf einem Laufwerk, das nicht eingehängt ist.</translation>
    </message>
    <message>
        <source>removeUserDestAlrtMsg</source>
        <translation>Dieses Ziel aus der Liste entfernen? Der Ordner selbst bleibt erhalten.</translation>
    </message>
    <message>
        <source>chooseUserDest</source>
        <translation>Ordner als Ziel auswählen</translation>
    </message>
    <message>
        <source>- Empty -</source>
        <translation>- Leer -</translation>
    </message>
    <message>
        <source>noSubfoldersMsg</source>
        <translation>Keine Unterordner</translation>
    </message>
    <message>
        <source>addSubfolderToDest</source>
        <translation>Zu den Zielen hinzufügen</translation>
    </message>
    <message>
        <source>destWriteFailedMsg</source>
        <translation>Die Liste der Ziele konnte nicht gespeichert werden; sie bleibt, wie sie war.</translation>
    </message>
    <message>
        <source>destAlreadyThereMsg</source>
        <translation>Dieser Ordner ist schon ein Ziel.</translation>
    </message>
    <message>
        <source>recentDestTip</source>
        <translation>Zuletzt verwendete Ziele</translation>
    </message>
    <message>
        <source>editDestTip</source>
        <translation>Ziele bearbeiten</translation>
    </message>
    <message>
        <source>doneEditingDestTip</source>
        <translation>Bearbeiten beenden</translation>
    </message>
    <message>
        <source>addDestTip</source>
        <translation>Ordner hinzufügen …</translation>
    </message>
    <message>
        <source>manageDestTitle</source>
        <translation>Ziele</translation>
    </message>
    <message>
        <source>manageDestIntro</source>
        <translation>Wohin „Verschieben“ Dateien bringt. Klicken Sie auf einen Namen, um ihn umzubenennen, ziehen Sie eine Zeile an eine andere Stelle, oder öffnen Sie einen Ordner mit seinem Pfeil, um einen seiner Unterordner hinzuzufügen.</translation>
    </message>
    <message>
        <source>addDestBtn</source>
        <translation>Ordner hinzufügen …</translation>
    </message>
    <message>
        <source>Zipping</source>
        <translation>Wird gepackt …</translation>
    </message>
    <message>
        <source>...Initializing...</source>
        <translation>…Wird vorbereitet…</translation>
    </message>
    <message>
        <source>zipping</source>
        <translation>Wird gepackt</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>zipTaskComplete</source>
        <translation>Archiv erstellt</translation>
    </message>
    <message>
        <source>zipFailedTitle</source>
        <translation>Das Archiv konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>quickMoveDropHoverCaption</source>
        <translation>Ziel wählen</translation>
    </message>
    <message>
        <source>aliasDropHoverCaption</source>
        <translation>Verknüpfen</translation>
    </message>
    <message>
        <source>slide4TextNoTray</source>
        <translation>Legen Sie auf „Verschieben“ ab, um sofort ein Ziel zu wählen, oder auf „Alias“ für Verknüpfungen neben den Dateien. Dieser Desktop zeigt kein Symbol im Infobereich: Quaydrop läuft im Hintergrund, und ein erneuter Start (aus dem Anwendungsmenü oder mit quaydrop im Terminal) öffnet seine Optionen.</translation>
    </message>
    <message>
        <source>loginLaunchInfTXTNoTray</source>
        <translation>Quaydrop läuft im Hintergrund und ist bereit, sobald Sie etwas ziehen. Ein erneuter Start öffnet seine Optionen; dort können Sie dies später ändern.</translation>
    </message>
    <message>
        <source>openFileBtn</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>sameAsDraggedName</source>
        <translation>Name des Abgelegten</translation>
    </message>
    <message>
        <source>insideFolderCheckBox</source>
        <translation>Im Ordner</translation>
    </message>
    <message>
        <source>newFolderBtn</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>newTextBtn</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>newRtfBtn</source>
        <translation>RTF</translation>
    </message>
    <message>
        <source>newWordBtn</source>
        <translation>Word</translation>
    </message>
    <message>
        <source>newExcelBtn</source>
        <translation>Excel</translation>
    </message>
    <message>
        <source>newOdtBtn</source>
        <translation>Writer</translation>
    </message>
    <message>
        <source>newOdsBtn</source>
        <translation>Calc</translation>
    </message>
    <message>
        <source>newFolderTip</source>
        <translation>Ein neuer Ordner</translation>
    </message>
    <message>
        <source>newTextTip</source>
        <translation>Eine leere Textdatei (.txt)</translation>
    </message>
    <message>
        <source>newRtfTip</source>
        <translation>Ein leeres RTF-Dokument (.rtf)</translation>
    </message>
    <message>
        <source>newWordTip</source>
        <translation>Ein leeres Word-Dokument (.docx)</translation>
    </message>
    <message>
        <source>newExcelTip</source>
        <translation>Eine leere Excel-Arbeitsmappe (.xlsx)</translation>
    </message>
    <message>
        <source>newOdtTip</source>
        <translation>Ein leeres OpenDocument-Textdokument (.odt)</translation>
    </message>
    <message>
        <source>newOdsTip</source>
        <translation>Eine leere OpenDocument-Tabelle (.ods)</translation>
    </message>
    <message>
        <source>fileCreateNameHintText</source>
        <translation>Der Name des neuen Objekts, ohne Endung. Bleibt das Feld leer, wird ein Standardname verwendet; ist ein Name vergeben, kommt eine Zahl dazu.</translation>
    </message>
    <message>
        <source>%@ created</source>
        <translation>%1 erstellt</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>newItemFailedTitle</source>
        <translation>Das neue Objekt konnte nicht erstellt werden</translation>
    </message>
    <message>
        <source>folderNameLbl</source>
        <translation>Die Objekte in einen neuen Ordner legen mit dem Namen:</translation>
    </message>
    <message>
        <source>filesMoveMsgTitle</source>
        <translation>Dateien in %1 verschoben</translation>
    </message>
    <message>
        <source>%1 stayed where they were</source>
        <translation>%1 blieben, wo sie waren</translation>
    </message>
    <message>
        <source>gatherFailedTitle</source>
        <translation>Nichts konnte in den neuen Ordner gelegt werden</translation>
    </message>
    <message>
        <source>renameNamePlaceholder</source>
        <translation>Neuer Name</translation>
    </message>
    <message>
        <source>renamePrefixPlaceholder</source>
        <translation>Präfix</translation>
    </message>
    <message>
        <source>renameSuffixPlaceholder</source>
        <translation>Suffix</translation>
    </message>
    <message>
        <source>No rename data entered.

 Please make sure at least one of the textfields above is not empty. To go back, just click on the window's background.</source>
        <translation>Keine Angaben zum Umbenennen.

 Bitte mindestens eines der Felder oben ausfüllen. Zurück geht es mit einem Klick auf den Fensterhintergrund.</translation>
    </message>
    <message>
        <source>Renaming files</source>
        <translation>Dateien werden umbenannt</translation>
    </message>
    <message>
        <source>File rename complete!</source>
        <translation>Umbenennen abgeschlossen!</translation>
    </message>
    <message>
        <source>renameFailedTitle</source>
        <translation>Keine Datei konnte umbenannt werden</translation>
    </message>
    <message>
        <source>noTrashTitle</source>
        <translation>Dieses Objekt kann nicht in den Papierkorb</translation>
    </message>
    <message>
        <source>noTrashText</source>
        <translation>%1 liegt auf einem Datenträger ohne Papierkorb. Endgültig löschen? Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>deleteFailedTitle</source>
        <translation>Das Objekt konnte nicht gelöscht werden</translation>
    </message>
    <message>
        <source>Moving to the trash</source>
        <translation>Wird in den Papierkorb gelegt</translation>
    </message>
    <message>
        <source>Deleting</source>
        <translation>Wird gelöscht</translation>
    </message>
    <message>
        <source>trashDoneTitle</source>
        <translation>In den Papierkorb gelegt</translation>
    </message>
    <message>
        <source>trashFailedTitle</source>
        <translation>Nichts konnte in den Papierkorb gelegt werden</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 Objekte</translation>
    </message>
    <message>
        <source>undoBlockedTitle</source>
        <translation>Das lässt sich nicht rückgängig machen</translation>
    </message>
    <message>
        <source>undoDoneTitle</source>
        <translation>Wieder an seinem Platz</translation>
    </message>
    <message>
        <source>editorPaint</source>
        <translation>Malen</translation>
    </message>
    <message>
        <source>editorModeTip</source>
        <translation>Bild zuschneiden oder darauf malen</translation>
    </message>
    <message>
        <source>editorWidthShort</source>
        <translation>B</translation>
    </message>
    <message>
        <source>editorHeightShort</source>
        <translation>H</translation>
    </message>
    <message>
        <source>editorFullSizeTip</source>
        <translation>Rahmen um das ganze Bild</translation>
    </message>
    <message>
        <source>editorAlignCentre</source>
        <translation>Rahmen in die Mitte</translation>
    </message>
    <message>
        <source>editorAlignBottomLeft</source>
        <translation>Rahmen nach unten links</translation>
    </message>
    <message>
        <source>editorAlignBottomRight</source>
        <translation>Rahmen nach unten rechts</translation>
    </message>
    <message>
        <source>editorAlignTopLeft</source>
        <translation>Rahmen nach oben links</translation>
    </message>
    <message>
        <source>editorAlignTopRight</source>
        <translation>Rahmen nach oben rechts</translation>
    </message>
    <message>
        <source>editorRotateLeftTip</source>
        <translation>Nach links drehen (Strg+Links)</translation>
    </message>
    <message>
        <source>editorRotateRightTip</source>
        <translation>Nach rechts drehen (Strg+Rechts)</translation>
    </message>
    <message>
        <source>editorResizeTip</source>
        <translation>Bildgröße ändern (Strg+R)</translation>
    </message>
    <message>
        <source>editorRevertTip</source>
        <translation>Zurück zum Bild, wie es gespeichert ist (Strg+Z)</translation>
    </message>
    <message>
        <source>editorSaveTip</source>
        <translation>Eine Kopie neben dem Bild sichern (Strg+S); die Eingabetaste schneidet auf den Rahmen zu</translation>
    </message>
    <message>
        <source>editorBrush</source>
        <translation>Pinsel</translation>
    </message>
    <message>
        <source>editorEraser</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>editorColour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>editorBrushSize</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>editorUndo</source>
        <translation>Letzten Strich zurücknehmen</translation>
    </message>
    <message>
        <source>editorRedo</source>
        <translation>Strich wiederherstellen</translation>
    </message>
    <message>
        <source>editorCloseAfterSave</source>
        <translation>Nach dem Sichern schließen</translation>
    </message>
    <message>
        <source>editorOriginalSize</source>
        <translation>Original: %1 px</translation>
    </message>
    <message>
        <source>editorOpenFailedTitle</source>
        <translation>Dieses Bild lässt sich nicht bearbeiten</translation>
    </message>
    <message>
        <source>editorSaveFailedTitle</source>
        <translation>Das Bild konnte nicht gesichert werden</translation>
    </message>
    <message>
        <source>editorSaveFailedText</source>
        <translation>%1

Ihre Änderungen sind noch im Editor.</translation>
    </message>
    <message>
        <source>editorSaveElsewhere</source>
        <translation>Anderswo sichern …</translation>
    </message>
    <message>
        <source>editorDiscard</source>
        <translation>Nicht sichern</translation>
    </message>
    <message>
        <source>editorUnsavedTitle</source>
        <translation>Änderungen an %1 sichern?</translation>
    </message>
    <message>
        <source>editorUnsavedOpenText</source>
        <translation>%1 wartet darauf, bearbeitet zu werden. Nicht gesicherte Änderungen gehen verloren.</translation>
    </message>
    <message>
        <source>editorUnsavedCloseText</source>
        <translation>Nicht gesicherte Änderungen gehen verloren, wenn der Editor schließt.</translation>
    </message>
    <message>
        <source>editorResizeFailedTitle</source>
        <translation>Die Bildgröße konnte nicht geändert werden</translation>
    </message>
    <message>
        <source>editorResizeFailedText</source>
        <translation>%1 × %2 Pixel sind keine Größe, die dieses Bild annehmen kann.</translation>
    </message>
    <message>
        <source>imgSaved</source>
        <translation>Bild gesichert</translation>
    </message>
    <message>
        <source>origImgNotFoundTitle</source>
        <translation>Das Originalbild ist nicht mehr da</translation>
    </message>
    <message>
        <source>failedToGetOrigImg</source>
        <translation>Die Datei, aus der das Bild geöffnet wurde, gibt es nicht mehr; es gibt also nichts, wohin zurückgekehrt werden kann. Ihre Änderungen sind noch da und können gesichert werden.</translation>
    </message>
    <message>
        <source>accessDeniedByuserTitle</source>
        <translation>Der Zugriff wurde verweigert</translation>
    </message>
    <message>
        <source>accessDeniedByuserMsg</source>
        <translation>Das Bild konnte dem Dienst nicht übergeben werden, weil der Zugriff verweigert wurde.</translation>
    </message>
    <message>
        <source>editorCrop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>MailAppNOTDefault</source>
        <translation>Ihr Mailprogramm kann keine Anhänge von Quaydrop übernehmen</translation>
    </message>
    <message>
        <source>MailAppNOTDefaultText</source>
        <translation>%1 ist Ihr Standard-Mailprogramm. Quaydrop übergibt Dateien an Thunderbird, Evolution, KMail, Geary, Claws Mail und Sylpheed oder an das Mail-Portal der Arbeitsumgebung. Öffnen Sie %1 und hängen Sie die Dateien dort an, oder wählen Sie eines dieser Programme als Standard-Mailprogramm.</translation>
    </message>
    <message>
        <source>LaunchMailApp</source>
        <translation>%1 öffnen</translation>
    </message>
    <message>
        <source>NoMailApp</source>
        <translation>Kein Mailprogramm eingerichtet</translation>
    </message>
    <message>
        <source>NoMailAppText</source>
        <translation>Kein Programm auf diesem Rechner öffnet Mail-Links (mailto:). Installieren Sie ein Mailprogramm wie Thunderbird oder Evolution, oder wählen Sie in den Einstellungen Ihrer Arbeitsumgebung eines als Standard.</translation>
    </message>
    <message>
        <source>MailNotStarted</source>
        <translation>Das Mailprogramm wurde nicht gestartet</translation>
    </message>
    <message>
        <source>MailTextTooLong</source>
        <translation>Der Text ist zu lang für eine neue Mail</translation>
    </message>
    <message>
        <source>MailTextTooLongText</source>
        <translation>Einem Mailprogramm lassen sich etwa 100.000 Zeichen auf einmal übergeben. Speichern Sie den Text als Datei und hängen Sie diese an.</translation>
    </message>
    <message>
        <source>printDialogTitle</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>printFailedTitle</source>
        <translation>Es wurde nichts gedruckt</translation>
    </message>
    <message>
        <source>shareViaMail</source>
        <translation>Mit %1 senden</translation>
    </message>
    <message>
        <source>shareKdeConnect</source>
        <translation>%1 (KDE Connect)</translation>
    </message>
    <message>
        <source>shareBluetooth</source>
        <translation>Bluetooth …</translation>
    </message>
    <message>
        <source>shareOpenWith</source>
        <translation>Mit %1 öffnen</translation>
    </message>
    <message>
        <source>shareSaveAs</source>
        <translation>Speichern unter …</translation>
    </message>
    <message>
        <source>shareSaveText</source>
        <translation>Als Textdatei speichern …</translation>
    </message>
    <message>
        <source>shareCopyLinks</source>
        <translation>Als Dateiverweise kopieren</translation>
    </message>
    <message>
        <source>sharePostOnX</source>
        <translation>Auf X posten</translation>
    </message>
    <message>
        <source>sharePostOnFacebook</source>
        <translation>Auf Facebook teilen</translation>
    </message>
    <message>
        <source>shareFailedTitle</source>
        <translation>Teilen nicht möglich</translation>
    </message>
    <message>
        <source>noFileSearch</source>
        <translation>Kein Dateimanager auf diesem Rechner kann suchen: Installieren Sie Catfish oder verwenden Sie Dolphin oder Dateien (Nautilus) als Standard-Dateimanager.</translation>
    </message>
    <message>
        <source>Textsaved</source>
        <translation>Text gespeichert</translation>
    </message>
    <message>
        <source>facebookTextCopied</source>
        <translation>Der Text ist in der Zwischenablage</translation>
    </message>
    <message>
        <source>facebookTextCopiedText</source>
        <translation>Facebook nimmt nur Links an. Fügen Sie den Text in Ihren Beitrag ein.</translation>
    </message>
    <message>
        <source>earlierWallpapersLbl</source>
        <translation>Frühere Hintergrundbilder:</translation>
    </message>
    <message>
        <source>setAsWallpaperBtn</source>
        <translation>Festlegen</translation>
    </message>
    <message>
        <source>useOldWPBtn</source>
        <translation>Nutzen</translation>
    </message>
    <message>
        <source>shareOldWPBtn</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>wallpaperNotSetTitle</source>
        <translation>Das Hintergrundbild wurde nicht geändert</translation>
    </message>
    <message>
        <source>noWallpaperServiceMsg</source>
        <translation>Quaydrop erreicht keine Arbeitsfläche, deren Hintergrund es ändern könnte.</translation>
    </message>
    <message>
        <source>heresdesktopPic</source>
        <translation>Hier ist mein Hintergrundbild.</translation>
    </message>
    <message>
        <source>PDFPreviewTitle</source>
        <translation>PDF-Seitenübersicht</translation>
    </message>
    <message>
        <source>rotateLeftBtn</source>
        <translation>Nach links drehen</translation>
    </message>
    <message>
        <source>rotateRightBtn</source>
        <translation>Nach rechts drehen</translation>
    </message>
    <message>
        <source>flipHorizontalBtn</source>
        <translation>Horizontal spiegeln</translation>
    </message>
    <message>
        <source>flipVerticalBtn</source>
        <translation>Vertikal spiegeln</translation>
    </message>
    <message>
        <source>exportPDFBtn</source>
        <translation>PDF exportieren …</translation>
    </message>
    <message>
        <source>exportingPagesLbl</source>
        <translation>Seite %1 von %2 wird exportiert …</translation>
    </message>
    <message>
        <source>pagesLeftOutTitle</source>
        <translation>%1 Seiten wurden ausgelassen</translation>
    </message>
    <message>
        <source>plsSelectImagePDFPreviewHint</source>
        <translation>Wählen Sie zuerst ein oder mehrere Bilder aus.</translation>
    </message>
    <message>
        <source>PDFPreviewHint</source>
        <translation>Ziehen Sie Bilder hinein, um sie hinzuzufügen, und verschieben Sie sie, um die Reihenfolge zu ändern. Die Knöpfe drehen oder spiegeln die ausgewählten Bilder, Entf entfernt sie. Die Dateien selbst bleiben unverändert.</translation>
    </message>
    <message>
        <source>pageBoardBtn</source>
        <translation>Seiten …</translation>
    </message>
</context>
</TS>
