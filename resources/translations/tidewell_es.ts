<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>BarLabelView</name>
    <message>
        <source>No Swap</source>
        <translation>Sin swap</translation>
    </message>
</context>
<context>
    <name>HeaderView</name>
    <message>
        <source>Process</source>
        <translation>Proceso</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Uso</translation>
    </message>
</context>
<context>
    <name>LevelWords</name>
    <message>
        <source>Low</source>
        <translation>Bajo</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Advertencia</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Alto</translation>
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
        <translation>Memoria física</translation>
    </message>
    <message>
        <source>Memory Used</source>
        <translation>Memoria usada</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>Memoria de apps</translation>
    </message>
    <message>
        <source>Wired Memory</source>
        <translation>Memoria fija</translation>
    </message>
    <message>
        <source>Compressed</source>
        <translation>Comprimida</translation>
    </message>
    <message>
        <source>Free Memory</source>
        <translation>Memoria libre</translation>
    </message>
    <message>
        <source>Cached Files</source>
        <translation>Archivos en caché</translation>
    </message>
    <message>
        <source>Swap Used</source>
        <translation>Swap usado</translation>
    </message>
    <message>
        <source>Swap Total</source>
        <translation>Swap total</translation>
    </message>
    <message>
        <source>Swap memory usage</source>
        <translation>Uso de memoria swap</translation>
    </message>
    <message>
        <source>High swap usage</source>
        <translation>Uso alto de swap</translation>
    </message>
    <message>
        <source>Very high swap usage</source>
        <translation>Uso muy alto de swap</translation>
    </message>
    <message>
        <source>Your computer uses swap memory (%1).</source>
        <translation>Su equipo usa memoria swap (%1).</translation>
    </message>
    <message>
        <source>Restart your computer if you want to free up swap memory.</source>
        <translation>Reinicie el equipo si quiere liberar memoria swap.</translation>
    </message>
</context>
<context>
    <name>ProgressView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
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
        <translation>¿Seguro que quiere salir?</translation>
    </message>
    <message>
        <source>%1 will terminate immediately.</source>
        <translation>%1 terminará de inmediato.</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>SPUStandardUserDriver</name>
    <message>
        <source>Release notes</source>
        <translation>Novedades</translation>
    </message>
    <message>
        <source>The update server cannot be reached. Check the connection to the internet and try again.</source>
        <translation>No se puede acceder al servidor de actualizaciones. Compruebe la conexión a Internet e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>The update server could not prove that it is the right one. Nothing was downloaded from it.</source>
        <translation>El servidor de actualizaciones no ha podido demostrar su identidad. No se ha descargado nada de él.</translation>
    </message>
    <message>
        <source>The update server does not have what was asked for. Try again later.</source>
        <translation>El servidor de actualizaciones no tiene lo que se ha pedido. Inténtelo más tarde.</translation>
    </message>
    <message>
        <source>The update server points to a place that is not safe. Nothing was downloaded from there.</source>
        <translation>El servidor de actualizaciones remite a una dirección que no es segura. No se ha descargado nada de ella.</translation>
    </message>
    <message>
        <source>The update server takes too long to answer. Try again later.</source>
        <translation>El servidor de actualizaciones tarda demasiado en responder. Inténtelo más tarde.</translation>
    </message>
    <message>
        <source>The update server sent a list of versions that cannot be read.</source>
        <translation>El servidor de actualizaciones ha enviado una lista de versiones que no se puede leer.</translation>
    </message>
    <message>
        <source>The downloaded file is not complete, or is not the right one. It was deleted.</source>
        <translation>El archivo descargado está incompleto o no es el correcto. Se ha eliminado.</translation>
    </message>
    <message>
        <source>The downloaded file was not made by the developers of this program, or was changed on its way. It was deleted.</source>
        <translation>El archivo descargado no es de los desarrolladores de este programa o se ha modificado por el camino. Se ha eliminado.</translation>
    </message>
    <message>
        <source>The update could not be saved. There may be no space left on the disk.</source>
        <translation>No se ha podido guardar la actualización. Quizá no quede espacio en el disco.</translation>
    </message>
    <message>
        <source>The program&apos;s file could not be replaced. You may not have the right to change the folder that it is in.</source>
        <translation>No se ha podido reemplazar el archivo del programa. Quizá no tenga permiso para cambiar la carpeta en la que está.</translation>
    </message>
    <message>
        <source>The update was downloaded, but there is no program here to open it with.</source>
        <translation>La actualización se ha descargado, pero aquí no hay ningún programa que la abra.</translation>
    </message>
    <message>
        <source>This program was not set up for updates.</source>
        <translation>Este programa no está configurado para actualizarse.</translation>
    </message>
    <message>
        <source>A part of this program is missing or broke down.</source>
        <translation>Falta una parte de este programa o ha fallado.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1 está al día.</translation>
    </message>
    <message>
        <source>Version %1 is the newest one there is for this computer.</source>
        <translation>La versión %1 es la más reciente para este equipo.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>A new version of %1 is available.</source>
        <translation>Hay una nueva versión de %1.</translation>
    </message>
    <message>
        <source>Version %1 can be installed now. You have version %2.</source>
        <translation>La versión %1 se puede instalar ahora. Tiene la versión&#xa0;%2.</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>Omitir esta versión</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>Recordar más tarde</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Descargando %1 %2…</translation>
    </message>
    <message>
        <source>Installing %1 %2…</source>
        <translation>Instalando %1 %2…</translation>
    </message>
    <message>
        <source>%1 %2 is installed.</source>
        <translation>%1 %2 está instalado.</translation>
    </message>
    <message>
        <source>It will be used from the next start on.</source>
        <translation>Se usará a partir del próximo inicio.</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Más tarde</translation>
    </message>
    <message>
        <source>Restart Now</source>
        <translation>Reiniciar ahora</translation>
    </message>
    <message>
        <source>%1 %2 was downloaded and verified.</source>
        <translation>%1 %2 se ha descargado y verificado.</translation>
    </message>
    <message>
        <source>The update did not succeed.</source>
        <translation>La actualización no se ha completado.</translation>
    </message>
    <message>
        <source>The list of versions was not made by the developers of this program, or was changed on its way. Nothing in it was used.</source>
        <translation>La lista de versiones no procede de los desarrolladores de este programa o se modificó por el camino. No se ha usado nada de ella.</translation>
    </message>
    <message>
        <source>The update server sent an old list of versions. Try again later, and check that the date of this computer is right.</source>
        <translation>El servidor de actualizaciones envió una lista de versiones antigua. Inténtelo más tarde y compruebe que la fecha de este equipo sea correcta.</translation>
    </message>
    <message>
        <source>It was handed to your desktop, to be opened with the program that installs such files. If nothing opens, install it from its folder.</source>
        <translation>El archivo se entregó a su escritorio para abrirlo con el programa que instala este tipo de archivos. Si no se abre nada, instálelo desde su carpeta.</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Abrir carpeta</translation>
    </message>
</context>
<context>
    <name>SampleTimes</name>
    <message>
        <source>last %1 s</source>
        <translation>últimos %1 s</translation>
    </message>
    <message>
        <source>last %1 min</source>
        <translation>últimos %1 min</translation>
    </message>
    <message>
        <source>last %1 d</source>
        <translation>últimos %1 d</translation>
    </message>
    <message>
        <source>last %1 h %2 min</source>
        <translation>últimas %1 h %2 min</translation>
    </message>
</context>
<context>
    <name>Scenes</name>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>%1 Settings</source>
        <translation>Ajustes de %1</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>Memoria de apps</translation>
    </message>
</context>
<context>
    <name>TidewellApp</name>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
</context>
<context>
    <name>UsageText</name>
    <message>
        <source>Processes: %1</source>
        <translation>Procesos: %1</translation>
    </message>
    <message>
        <source>Largest process: %1</source>
        <translation>Proceso mayor: %1</translation>
    </message>
    <message>
        <source>Resident (RSS): %1</source>
        <translation>Residente (RSS): %1</translation>
    </message>
    <message>
        <source>Shared counted once (PSS): %1</source>
        <translation>Lo compartido contado una vez (PSS): %1</translation>
    </message>
    <message>
        <source>In swap: %1</source>
        <translation>En swap: %1</translation>
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
        <translation>Versión %1 (%2)</translation>
    </message>
    <message>
        <source>Built for the Linux desktop</source>
        <translation>Hecho para el escritorio Linux</translation>
    </message>
    <message>
        <source>Visit website</source>
        <translation>Visitar el sitio web</translation>
    </message>
</context>
<context>
    <name>tidewell::AppMemoryView</name>
    <message>
        <source>Processes</source>
        <translation>Procesos</translation>
    </message>
    <message>
        <source>Processes Real Mem [%1]</source>
        <translation>Memoria real de los procesos [%1]</translation>
    </message>
    <message>
        <source>A sandbox hides the other programs from this one. Installed without a sandbox, it shows their memory here.</source>
        <translation>Un entorno aislado oculta los demás programas a este. Instalado fuera de él, muestra aquí su memoria.</translation>
    </message>
</context>
<context>
    <name>tidewell::BarChart</name>
    <message>
        <source>No samples yet</source>
        <translation>Aún no hay muestras</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <translation>%1 a las %2</translation>
    </message>
</context>
<context>
    <name>tidewell::ContentView</name>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Memory Pressure</source>
        <translation>Presión de memoria</translation>
    </message>
</context>
<context>
    <name>tidewell::GaugesRow</name>
    <message>
        <source>Pressure</source>
        <translation>Presión</translation>
    </message>
    <message>
        <source>Memory Usage</source>
        <translation>Uso de memoria</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelPrompts</name>
    <message>
        <source>Press to set Allow Notifications</source>
        <translation>Pulse para permitir notificaciones</translation>
    </message>
    <message>
        <source>Update available!</source>
        <translation>¡Actualización disponible!</translation>
    </message>
    <message>
        <source>This desktop has no notification settings that %1 can open.</source>
        <translation>Este escritorio no tiene ajustes de notificaciones que %1 pueda abrir.</translation>
    </message>
    <message>
        <source>Allow its notifications where your desktop keeps them.</source>
        <translation>Permita sus notificaciones donde su escritorio las administre.</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelToolbar</name>
    <message>
        <source>About %1</source>
        <translation>Acerca de %1</translation>
    </message>
    <message>
        <source>Go to Settings - %1</source>
        <translation>Ir a los ajustes - %1</translation>
    </message>
    <message>
        <source>Quit %1 - %2</source>
        <translation>Salir de %1 - %2</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
</context>
<context>
    <name>tidewell::PollingSettings</name>
    <message>
        <source>Poll more often</source>
        <translation>Medir más a menudo</translation>
    </message>
    <message>
        <source>Poll less often</source>
        <translation>Medir menos a menudo</translation>
    </message>
    <message>
        <source>Polling interval in seconds</source>
        <translation>Intervalo de medición en segundos</translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 secs</source>
        <translation>
            <numerusform>Intervalo de medición: %1 segundo</numerusform>
            <numerusform>Intervalo de medición: %1 segundos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 sec</source>
        <translation>
            <numerusform>Intervalo de medición: %1 segundo</numerusform>
            <numerusform>Intervalo de medición: %1 segundos</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChart</name>
    <message>
        <source>Swap Usage</source>
        <translation>Uso de swap</translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChartFixed</name>
    <message>
        <source>Memory Pressure</source>
        <translation>Presión de memoria</translation>
    </message>
</context>
<context>
    <name>tidewell::SettingsView</name>
    <message>
        <source>Start %1 at login</source>
        <translation>Abrir %1 al iniciar sesión</translation>
    </message>
    <message>
        <source>Confirm quit on exit</source>
        <translation>Confirmar antes de salir</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Actualizaciones</translation>
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
        <translation>No se usa memoria swap.</translation>
    </message>
    <message>
        <source>Swap Usage</source>
        <translation>Uso de swap</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
</context>
<context>
    <name>tidewell::UpdateSettings</name>
    <message>
        <source>Hourly</source>
        <translation>Cada hora</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Cada día</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Cada semana</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Cada mes</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>Buscar actualizaciones automáticamente</translation>
    </message>
    <message>
        <source>Automatically download updates</source>
        <translation>Descargar actualizaciones automáticamente</translation>
    </message>
    <message>
        <source>Update check interval</source>
        <translation>Frecuencia de búsqueda</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>Buscar actualizaciones ahora</translation>
    </message>
</context>
</TS>
