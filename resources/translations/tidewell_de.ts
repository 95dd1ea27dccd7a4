<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BarLabelView</name>
    <message>
        <source>No Swap</source>
        <translation>Kein Swap</translation>
    </message>
</context>
<context>
    <name>HeaderView</name>
    <message>
        <source>Process</source>
        <translation>Prozess</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Belegt</translation>
    </message>
</context>
<context>
    <name>LevelWords</name>
    <message>
        <source>Low</source>
        <translation>Niedrig</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>MemoryWatcher</name>
    <message>
        <source>Physical Memory</source>
        <translation>Physischer Speicher</translation>
    </message>
    <message>
        <source>Memory Used</source>
        <translation>Verwendeter Speicher</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>App-Speicher</translation>
    </message>
    <message>
        <source>Wired Memory</source>
        <translation>Reservierter Speicher</translation>
    </message>
    <message>
        <source>Compressed</source>
        <translation>Komprimiert</translation>
    </message>
    <message>
        <source>Free Memory</source>
        <translation>Freier Speicher</translation>
    </message>
    <message>
        <source>Cached Files</source>
        <translation>Dateien im Cache</translation>
    </message>
    <message>
        <source>Swap Used</source>
        <translation>Swap verwendet</translation>
    </message>
    <message>
        <source>Swap Total</source>
        <translation>Swap gesamt</translation>
    </message>
    <message>
        <source>Swap memory usage</source>
        <translation>Swap in Verwendung</translation>
    </message>
    <message>
        <source>High swap usage</source>
        <translation>Hohe Swap-Nutzung</translation>
    </message>
    <message>
        <source>Very high swap usage</source>
        <translation>Sehr hohe Swap-Nutzung</translation>
    </message>
    <message>
        <source>Your computer uses swap memory (%1).</source>
        <translation>Ihr Computer verwendet Swap-Speicher (%1).</translation>
    </message>
    <message>
        <source>Restart your computer if you want to free up swap memory.</source>
        <translation>Starten Sie den Computer neu, wenn Sie Swap-Speicher freigeben möchten.</translation>
    </message>
</context>
<context>
    <name>ProgressView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>QuitConfirmation</name>
    <message>
        <source>Are you sure you want to quit?</source>
        <translation>Möchten Sie wirklich beenden?</translation>
    </message>
    <message>
        <source>%1 will terminate immediately.</source>
        <translation>%1 wird sofort beendet.</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>SPUStandardUserDriver</name>
    <message>
        <source>Release notes</source>
        <translation>Neuerungen</translation>
    </message>
    <message>
        <source>The update server cannot be reached. Check the connection to the internet and try again.</source>
        <translation>Der Update-Server ist nicht erreichbar. Prüfen Sie die Internetverbindung und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>The update server could not prove that it is the right one. Nothing was downloaded from it.</source>
        <translation>Der Update-Server konnte nicht nachweisen, dass er der richtige ist. Es wurde nichts von ihm geladen.</translation>
    </message>
    <message>
        <source>The update server does not have what was asked for. Try again later.</source>
        <translation>Der Update-Server hat das Gesuchte nicht. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The update server points to a place that is not safe. Nothing was downloaded from there.</source>
        <translation>Der Update-Server verweist auf eine unsichere Adresse. Es wurde nichts von dort geladen.</translation>
    </message>
    <message>
        <source>The update server takes too long to answer. Try again later.</source>
        <translation>Der Update-Server antwortet zu spät. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The update server sent a list of versions that cannot be read.</source>
        <translation>Der Update-Server hat eine Versionsliste geschickt, die nicht lesbar ist.</translation>
    </message>
    <message>
        <source>The downloaded file is not complete, or is not the right one. It was deleted.</source>
        <translation>Die geladene Datei ist unvollständig oder falsch. Sie wurde gelöscht.</translation>
    </message>
    <message>
        <source>The downloaded file was not made by the developers of this program, or was changed on its way. It was deleted.</source>
        <translation>Die geladene Datei stammt nicht von den Entwicklern dieses Programms oder wurde unterwegs verändert. Sie wurde gelöscht.</translation>
    </message>
    <message>
        <source>The update could not be saved. There may be no space left on the disk.</source>
        <translation>Das Update konnte nicht gespeichert werden. Vielleicht ist kein Platz mehr auf der Festplatte.</translation>
    </message>
    <message>
        <source>The program&apos;s file could not be replaced. You may not have the right to change the folder that it is in.</source>
        <translation>Die Programmdatei konnte nicht ersetzt werden. Vielleicht dürfen Sie den Ordner nicht ändern, in dem sie liegt.</translation>
    </message>
    <message>
        <source>The update was downloaded, but there is no program here to open it with.</source>
        <translation>Das Update wurde geladen, aber es gibt hier kein Programm dafür.</translation>
    </message>
    <message>
        <source>This program was not set up for updates.</source>
        <translation>Dieses Programm ist nicht für Updates eingerichtet.</translation>
    </message>
    <message>
        <source>A part of this program is missing or broke down.</source>
        <translation>Ein Teil dieses Programms fehlt oder ist ausgefallen.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Nach Updates wird gesucht …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1 ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>Version %1 is the newest one there is for this computer.</source>
        <translation>Version %1 ist die neueste für diesen Computer.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>A new version of %1 is available.</source>
        <translation>Eine neue Version von %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>Version %1 can be installed now. You have version %2.</source>
        <translation>Version&#xa0;%1 kann installiert werden. Sie haben Version&#xa0;%2.</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>Version überspringen</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>Später erinnern</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>%1 %2 wird geladen …</translation>
    </message>
    <message>
        <source>Installing %1 %2…</source>
        <translation>%1 %2 wird installiert …</translation>
    </message>
    <message>
        <source>%1 %2 is installed.</source>
        <translation>%1 %2 ist installiert.</translation>
    </message>
    <message>
        <source>It will be used from the next start on.</source>
        <translation>Die neue Version läuft ab dem nächsten Start.</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Restart Now</source>
        <translation>Jetzt neu starten</translation>
    </message>
    <message>
        <source>%1 %2 was downloaded and verified.</source>
        <translation>%1 %2 wurde geladen und geprüft.</translation>
    </message>
    <message>
        <source>The update did not succeed.</source>
        <translation>Das Update ist nicht gelungen.</translation>
    </message>
    <message>
        <source>The list of versions was not made by the developers of this program, or was changed on its way. Nothing in it was used.</source>
        <translation>Die Liste der Versionen stammt nicht von den Entwicklern dieses Programms oder wurde unterwegs verändert. Nichts davon wurde verwendet.</translation>
    </message>
    <message>
        <source>The update server sent an old list of versions. Try again later, and check that the date of this computer is right.</source>
        <translation>Der Update-Server hat eine alte Liste der Versionen gesendet. Versuchen Sie es später noch einmal und prüfen Sie, ob das Datum dieses Computers stimmt.</translation>
    </message>
    <message>
        <source>It was handed to your desktop, to be opened with the program that installs such files. If nothing opens, install it from its folder.</source>
        <translation>Die Datei wurde Ihrer Arbeitsumgebung übergeben, um mit dem Programm geöffnet zu werden, das solche Dateien installiert. Falls sich nichts öffnet, installieren Sie sie aus ihrem Ordner.</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
</context>
<context>
    <name>SampleTimes</name>
    <message>
        <source>last %1 s</source>
        <translation>letzte %1 s</translation>
    </message>
    <message>
        <source>last %1 min</source>
        <translation>letzte %1 Min.</translation>
    </message>
    <message>
        <source>last %1 d</source>
        <translation>letzte %1 Tage</translation>
    </message>
    <message>
        <source>last %1 h %2 min</source>
        <translation>letzte %1 Std. %2 Min.</translation>
    </message>
</context>
<context>
    <name>Scenes</name>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>%1 Settings</source>
        <translation>%1 – Einstellungen</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>App-Speicher</translation>
    </message>
</context>
<context>
    <name>TidewellApp</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>UsageText</name>
    <message>
        <source>Processes: %1</source>
        <translation>Prozesse: %1</translation>
    </message>
    <message>
        <source>Largest process: %1</source>
        <translation>Größter Prozess: %1</translation>
    </message>
    <message>
        <source>Resident (RSS): %1</source>
        <translation>Resident (RSS): %1</translation>
    </message>
    <message>
        <source>Shared counted once (PSS): %1</source>
        <translation>Geteiltes einmal gezählt (PSS): %1</translation>
    </message>
    <message>
        <source>In swap: %1</source>
        <translation>Im Swap: %1</translation>
    </message>
    <message>
        <source>Swap %1</source>
        <translation>Swap %1</translation>
    </message>
</context>
<context>
    <name>tidewell::AboutView</name>
    <message>
        <source>Version %1 (%2)</source>
        <translation>Version %1 (%2)</translation>
    </message>
    <message>
        <source>Built for the Linux desktop</source>
        <translation>Für den Linux-Desktop gebaut</translation>
    </message>
    <message>
        <source>Visit website</source>
        <translation>Website besuchen</translation>
    </message>
</context>
<context>
    <name>tidewell::AppMemoryView</name>
    <message>
        <source>Processes</source>
        <translation>Prozesse</translation>
    </message>
    <message>
        <source>Processes Real Mem [%1]</source>
        <translation>Speicher der Prozesse [%1]</translation>
    </message>
    <message>
        <source>A sandbox hides the other programs from this one. Installed without a sandbox, it shows their memory here.</source>
        <translation>Eine Sandbox verbirgt die anderen Programme vor diesem. Ohne Sandbox installiert, zeigt es hier, wie viel Speicher sie belegen.</translation>
    </message>
</context>
<context>
    <name>tidewell::BarChart</name>
    <message>
        <source>No samples yet</source>
        <translation>Noch keine Messwerte</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <translation>%1 um %2</translation>
    </message>
</context>
<context>
    <name>tidewell::ContentView</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Memory Pressure</source>
        <translation>Speicherdruck</translation>
    </message>
</context>
<context>
    <name>tidewell::GaugesRow</name>
    <message>
        <source>Pressure</source>
        <translation>Druck</translation>
    </message>
    <message>
        <source>Memory Usage</source>
        <translation>Speichernutzung</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelPrompts</name>
    <message>
        <source>Press to set Allow Notifications</source>
        <translation>Klicken, um Mitteilungen zu erlauben</translation>
    </message>
    <message>
        <source>Update available!</source>
        <translation>Update verfügbar!</translation>
    </message>
    <message>
        <source>This desktop has no notification settings that %1 can open.</source>
        <translation>Diese Arbeitsumgebung hat keine Mitteilungseinstellungen, die %1 öffnen kann.</translation>
    </message>
    <message>
        <source>Allow its notifications where your desktop keeps them.</source>
        <translation>Erlauben Sie die Mitteilungen dort, wo Ihre Arbeitsumgebung sie verwaltet.</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelToolbar</name>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Go to Settings - %1</source>
        <translation>Zu den Einstellungen - %1</translation>
    </message>
    <message>
        <source>Quit %1 - %2</source>
        <translation>%1 beenden - %2</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>tidewell::PollingSettings</name>
    <message>
        <source>Poll more often</source>
        <translation>Öfter messen</translation>
    </message>
    <message>
        <source>Poll less often</source>
        <translation>Seltener messen</translation>
    </message>
    <message>
        <source>Polling interval in seconds</source>
        <translation>Messabstand in Sekunden</translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 secs</source>
        <translation>
            <numerusform>Messabstand: %1 Sekunde</numerusform>
            <numerusform>Messabstand: %1 Sekunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 sec</source>
        <translation>
            <numerusform>Messabstand: %1 Sekunde</numerusform>
            <numerusform>Messabstand: %1 Sekunden</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChart</name>
    <message>
        <source>Swap Usage</source>
        <translation>Swap-Verlauf</translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChartFixed</name>
    <message>
        <source>Memory Pressure</source>
        <translation>Speicherdruck</translation>
    </message>
</context>
<context>
    <name>tidewell::SettingsView</name>
    <message>
        <source>Start %1 at login</source>
        <translation>%1 bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Confirm quit on exit</source>
        <translation>Vor dem Beenden nachfragen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Updates</translation>
    </message>
</context>
<context>
    <name>tidewell::SwapSection</name>
    <message>
        <source>Swap</source>
        <translation>Swap</translation>
    </message>
    <message>
        <source>No swap memory used.</source>
        <translation>Kein Swap in Verwendung.</translation>
    </message>
    <message>
        <source>Swap Usage</source>
        <translation>Swap-Nutzung</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>tidewell::UpdateSettings</name>
    <message>
        <source>Hourly</source>
        <translation>Stündlich</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Täglich</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Wöchentlich</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Monatlich</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>Automatisch nach Updates suchen</translation>
    </message>
    <message>
        <source>Automatically download updates</source>
        <translation>Updates automatisch laden</translation>
    </message>
    <message>
        <source>Update check interval</source>
        <translation>Nach Updates suchen</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>Jetzt nach Updates suchen</translation>
    </message>
</context>
</TS>
