<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>BarLabelView</name>
    <message>
        <source>No Swap</source>
        <translation>Pas de swap</translation>
    </message>
</context>
<context>
    <name>HeaderView</name>
    <message>
        <source>Process</source>
        <translation>Processus</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Utilisé</translation>
    </message>
</context>
<context>
    <name>LevelWords</name>
    <message>
        <source>Low</source>
        <translation>Faible</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Attention</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Élevé</translation>
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
        <translation>Mémoire physique</translation>
    </message>
    <message>
        <source>Memory Used</source>
        <translation>Mémoire utilisée</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>Mémoire des apps</translation>
    </message>
    <message>
        <source>Wired Memory</source>
        <translation>Mémoire résidente</translation>
    </message>
    <message>
        <source>Compressed</source>
        <translation>Compressée</translation>
    </message>
    <message>
        <source>Free Memory</source>
        <translation>Mémoire libre</translation>
    </message>
    <message>
        <source>Cached Files</source>
        <translation>Fichiers en cache</translation>
    </message>
    <message>
        <source>Swap Used</source>
        <translation>Swap utilisé</translation>
    </message>
    <message>
        <source>Swap Total</source>
        <translation>Swap total</translation>
    </message>
    <message>
        <source>Swap memory usage</source>
        <translation>Utilisation du swap</translation>
    </message>
    <message>
        <source>High swap usage</source>
        <translation>Utilisation élevée du swap</translation>
    </message>
    <message>
        <source>Very high swap usage</source>
        <translation>Utilisation très élevée du swap</translation>
    </message>
    <message>
        <source>Your computer uses swap memory (%1).</source>
        <translation>Votre ordinateur utilise de la mémoire swap (%1).</translation>
    </message>
    <message>
        <source>Restart your computer if you want to free up swap memory.</source>
        <translation>Redémarrez votre ordinateur si vous voulez libérer de la mémoire swap.</translation>
    </message>
</context>
<context>
    <name>ProgressView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
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
        <translation>Voulez-vous vraiment quitter ?</translation>
    </message>
    <message>
        <source>%1 will terminate immediately.</source>
        <translation>%1 se fermera immédiatement.</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>SPUStandardUserDriver</name>
    <message>
        <source>Release notes</source>
        <translation>Nouveautés</translation>
    </message>
    <message>
        <source>The update server cannot be reached. Check the connection to the internet and try again.</source>
        <translation>Le serveur de mises à jour est injoignable. Vérifiez la connexion à Internet et réessayez.</translation>
    </message>
    <message>
        <source>The update server could not prove that it is the right one. Nothing was downloaded from it.</source>
        <translation>Le serveur de mises à jour n’a pas pu prouver son identité. Rien n’en a été téléchargé.</translation>
    </message>
    <message>
        <source>The update server does not have what was asked for. Try again later.</source>
        <translation>Le serveur de mises à jour n’a pas ce qui a été demandé. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>The update server points to a place that is not safe. Nothing was downloaded from there.</source>
        <translation>Le serveur de mises à jour renvoie vers une adresse qui n’est pas sûre. Rien n’en a été téléchargé.</translation>
    </message>
    <message>
        <source>The update server takes too long to answer. Try again later.</source>
        <translation>Le serveur de mises à jour met trop de temps à répondre. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>The update server sent a list of versions that cannot be read.</source>
        <translation>Le serveur de mises à jour a envoyé une liste de versions illisible.</translation>
    </message>
    <message>
        <source>The downloaded file is not complete, or is not the right one. It was deleted.</source>
        <translation>Le fichier téléchargé est incomplet ou n’est pas le bon. Il a été supprimé.</translation>
    </message>
    <message>
        <source>The downloaded file was not made by the developers of this program, or was changed on its way. It was deleted.</source>
        <translation>Le fichier téléchargé ne vient pas des développeurs de ce programme ou a été modifié en chemin. Il a été supprimé.</translation>
    </message>
    <message>
        <source>The update could not be saved. There may be no space left on the disk.</source>
        <translation>La mise à jour n’a pas pu être enregistrée. Le disque est peut-être plein.</translation>
    </message>
    <message>
        <source>The program&apos;s file could not be replaced. You may not have the right to change the folder that it is in.</source>
        <translation>Le fichier du programme n’a pas pu être remplacé. Vous n’avez peut-être pas le droit de modifier son dossier.</translation>
    </message>
    <message>
        <source>The update was downloaded, but there is no program here to open it with.</source>
        <translation>La mise à jour a été téléchargée, mais aucun programme ne peut l’ouvrir ici.</translation>
    </message>
    <message>
        <source>This program was not set up for updates.</source>
        <translation>Ce programme n’est pas configuré pour les mises à jour.</translation>
    </message>
    <message>
        <source>A part of this program is missing or broke down.</source>
        <translation>Une partie de ce programme manque ou est en panne.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1 est à jour.</translation>
    </message>
    <message>
        <source>Version %1 is the newest one there is for this computer.</source>
        <translation>La version %1 est la plus récente pour cet ordinateur.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>A new version of %1 is available.</source>
        <translation>Une nouvelle version de %1 est disponible.</translation>
    </message>
    <message>
        <source>Version %1 can be installed now. You have version %2.</source>
        <translation>La version %1 peut être installée maintenant. Vous avez la version&#xa0;%2.</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>Ignorer cette version</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>Me le rappeler plus tard</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Téléchargement de %1 %2…</translation>
    </message>
    <message>
        <source>Installing %1 %2…</source>
        <translation>Installation de %1 %2…</translation>
    </message>
    <message>
        <source>%1 %2 is installed.</source>
        <translation>%1 %2 est installé.</translation>
    </message>
    <message>
        <source>It will be used from the next start on.</source>
        <translation>Elle sera utilisée au prochain démarrage.</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>Restart Now</source>
        <translation>Redémarrer maintenant</translation>
    </message>
    <message>
        <source>%1 %2 was downloaded and verified.</source>
        <translation>%1 %2 a été téléchargé et vérifié.</translation>
    </message>
    <message>
        <source>The update did not succeed.</source>
        <translation>La mise à jour a échoué.</translation>
    </message>
    <message>
        <source>The list of versions was not made by the developers of this program, or was changed on its way. Nothing in it was used.</source>
        <translation>La liste des versions ne provient pas des développeurs de ce programme ou a été modifiée en chemin. Rien de son contenu n’a été utilisé.</translation>
    </message>
    <message>
        <source>The update server sent an old list of versions. Try again later, and check that the date of this computer is right.</source>
        <translation>Le serveur de mises à jour a envoyé une ancienne liste de versions. Réessayez plus tard et vérifiez que la date de cet ordinateur est correcte.</translation>
    </message>
    <message>
        <source>It was handed to your desktop, to be opened with the program that installs such files. If nothing opens, install it from its folder.</source>
        <translation>Le fichier a été remis à votre bureau pour être ouvert avec le programme qui installe ce type de fichiers. Si rien ne s’ouvre, installez-le depuis son dossier.</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ouvrir le dossier</translation>
    </message>
</context>
<context>
    <name>SampleTimes</name>
    <message>
        <source>last %1 s</source>
        <translation>%1 dernières s</translation>
    </message>
    <message>
        <source>last %1 min</source>
        <translation>%1 dernières min</translation>
    </message>
    <message>
        <source>last %1 d</source>
        <translation>%1 derniers jours</translation>
    </message>
    <message>
        <source>last %1 h %2 min</source>
        <translation>dernières %1 h %2 min</translation>
    </message>
</context>
<context>
    <name>Scenes</name>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>%1 Settings</source>
        <translation>Réglages de %1</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>Mémoire des apps</translation>
    </message>
</context>
<context>
    <name>TidewellApp</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
</context>
<context>
    <name>UsageText</name>
    <message>
        <source>Processes: %1</source>
        <translation>Processus : %1</translation>
    </message>
    <message>
        <source>Largest process: %1</source>
        <translation>Plus gros processus : %1</translation>
    </message>
    <message>
        <source>Resident (RSS): %1</source>
        <translation>Résidente (RSS) : %1</translation>
    </message>
    <message>
        <source>Shared counted once (PSS): %1</source>
        <translation>Partagée comptée une fois (PSS) : %1</translation>
    </message>
    <message>
        <source>In swap: %1</source>
        <translation>Dans le swap : %1</translation>
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
        <translation>Conçu pour le bureau Linux</translation>
    </message>
    <message>
        <source>Visit website</source>
        <translation>Visiter le site web</translation>
    </message>
</context>
<context>
    <name>tidewell::AppMemoryView</name>
    <message>
        <source>Processes</source>
        <translation>Processus</translation>
    </message>
    <message>
        <source>Processes Real Mem [%1]</source>
        <translation>Mémoire réelle des processus [%1]</translation>
    </message>
    <message>
        <source>A sandbox hides the other programs from this one. Installed without a sandbox, it shows their memory here.</source>
        <translation>Un bac à sable cache les autres programmes à celui-ci. Installé sans bac à sable, il affiche ici leur mémoire.</translation>
    </message>
</context>
<context>
    <name>tidewell::BarChart</name>
    <message>
        <source>No samples yet</source>
        <translation>Pas encore de mesures</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <translation>%1 à %2</translation>
    </message>
</context>
<context>
    <name>tidewell::ContentView</name>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Memory Pressure</source>
        <translation>Pression mémoire</translation>
    </message>
</context>
<context>
    <name>tidewell::GaugesRow</name>
    <message>
        <source>Pressure</source>
        <translation>Pression</translation>
    </message>
    <message>
        <source>Memory Usage</source>
        <translation>Mémoire utilisée</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelPrompts</name>
    <message>
        <source>Press to set Allow Notifications</source>
        <translation>Cliquer pour autoriser les notifications</translation>
    </message>
    <message>
        <source>Update available!</source>
        <translation>Mise à jour disponible !</translation>
    </message>
    <message>
        <source>This desktop has no notification settings that %1 can open.</source>
        <translation>Cet environnement n’a pas de réglages de notifications que %1 puisse ouvrir.</translation>
    </message>
    <message>
        <source>Allow its notifications where your desktop keeps them.</source>
        <translation>Autorisez ses notifications là où votre environnement les gère.</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelToolbar</name>
    <message>
        <source>About %1</source>
        <translation>À propos de %1</translation>
    </message>
    <message>
        <source>Go to Settings - %1</source>
        <translation>Ouvrir les réglages - %1</translation>
    </message>
    <message>
        <source>Quit %1 - %2</source>
        <translation>Quitter %1 - %2</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
</context>
<context>
    <name>tidewell::PollingSettings</name>
    <message>
        <source>Poll more often</source>
        <translation>Mesurer plus souvent</translation>
    </message>
    <message>
        <source>Poll less often</source>
        <translation>Mesurer moins souvent</translation>
    </message>
    <message>
        <source>Polling interval in seconds</source>
        <translation>Intervalle de mesure en secondes</translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 secs</source>
        <translation>
            <numerusform>Intervalle de mesure : %1 seconde</numerusform>
            <numerusform>Intervalle de mesure : %1 secondes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 sec</source>
        <translation>
            <numerusform>Intervalle de mesure : %1 seconde</numerusform>
            <numerusform>Intervalle de mesure : %1 secondes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChart</name>
    <message>
        <source>Swap Usage</source>
        <translation>Utilisation du swap</translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChartFixed</name>
    <message>
        <source>Memory Pressure</source>
        <translation>Pression mémoire</translation>
    </message>
</context>
<context>
    <name>tidewell::SettingsView</name>
    <message>
        <source>Start %1 at login</source>
        <translation>Lancer %1 à l’ouverture de session</translation>
    </message>
    <message>
        <source>Confirm quit on exit</source>
        <translation>Demander confirmation avant de quitter</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Mises à jour</translation>
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
        <translation>Aucun swap utilisé.</translation>
    </message>
    <message>
        <source>Swap Usage</source>
        <translation>Utilisation du swap</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
</context>
<context>
    <name>tidewell::UpdateSettings</name>
    <message>
        <source>Hourly</source>
        <translation>Toutes les heures</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Tous les jours</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Toutes les semaines</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Tous les mois</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>Rechercher les mises à jour automatiquement</translation>
    </message>
    <message>
        <source>Automatically download updates</source>
        <translation>Télécharger les mises à jour automatiquement</translation>
    </message>
    <message>
        <source>Update check interval</source>
        <translation>Fréquence de recherche</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>Rechercher des mises à jour maintenant</translation>
    </message>
</context>
</TS>
