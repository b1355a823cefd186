<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>ActiveEdgesCard</name>
    <message>
        <source>Active edges</source>
        <translation>Aktive Ränder</translation>
    </message>
</context>
<context>
    <name>CoffeeButton</name>
    <message>
        <source>Donate</source>
        <translation>Spenden</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Quillon</source>
        <translation>Quillon</translation>
    </message>
</context>
<context>
    <name>EdgeSelectorView</name>
    <message>
        <source>Top edge</source>
        <translation>Oberer Rand</translation>
    </message>
    <message>
        <source>Bottom edge</source>
        <translation>Unterer Rand</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Linker Rand</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Click a highlighted border to enable that edge.</source>
        <translation>Ein Klick auf einen hervorgehobenen Rand schaltet ihn ein.</translation>
    </message>
</context>
<context>
    <name>EdgeSensitivityRow</name>
    <message>
        <source>Edge sensitivity</source>
        <translation>Breite der Ränder</translation>
    </message>
    <message>
        <source>%1 px</source>
        <translation>%1 px</translation>
    </message>
</context>
<context>
    <name>ExcludedAppChip</name>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
</context>
<context>
    <name>ExcludedAppsEditor</name>
    <message>
        <source>App name (e.g. Slack)</source>
        <translation>Name des Programms (z. B. Slack)</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>%1 excluded</source>
        <translation>%1 ausgenommen</translation>
    </message>
    <message>
        <source>%1 detected</source>
        <translation>%1 gefunden</translation>
    </message>
    <message>
        <source>Add %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
</context>
<context>
    <name>HubModel</name>
    <message>
        <source>Accessibility permission is required for %1 and %2 more.</source>
        <translation>Für %1 und %2 weitere fehlt die Berechtigung für Bedienungshilfen.</translation>
    </message>
    <message>
        <source>Accessibility permission is required for %1.</source>
        <extracomment>%1: names of tools</extracomment>
        <translation>Für %1 fehlt die Berechtigung für Bedienungshilfen.</translation>
    </message>
    <message>
        <source>Accessibility permission is required for input-based tools.</source>
        <translation>Werkzeuge, die auf Eingaben reagieren, brauchen die Berechtigung für Bedienungshilfen.</translation>
    </message>
</context>
<context>
    <name>HubSection</name>
    <message>
        <source>Show more</source>
        <translation>Mehr anzeigen</translation>
    </message>
</context>
<context>
    <name>HubStyledSlider</name>
    <message>
        <source>Slider</source>
        <translation>Schieberegler</translation>
    </message>
</context>
<context>
    <name>InstalledToolCard</name>
    <message>
        <source>Power</source>
        <translation>Ein/Aus</translation>
    </message>
    <message>
        <source>Customize</source>
        <translation>Anpassen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>MarketplaceToolCard</name>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Wird installiert …</translation>
    </message>
</context>
<context>
    <name>PermissionBanner</name>
    <message>
        <source>Open System Settings</source>
        <translation>Systemeinstellungen öffnen</translation>
    </message>
</context>
<context>
    <name>PermissionsView</name>
    <message>
        <source>Permissions of Quillon</source>
        <translation>Berechtigungen von Quillon</translation>
    </message>
    <message>
        <source>Quillon cannot see or send input here</source>
        <translation>Quillon kann hier keine Eingaben sehen oder senden</translation>
    </message>
    <message>
        <source>Quillon has all permissions that it needs</source>
        <translation>Quillon hat alle Berechtigungen, die es braucht</translation>
    </message>
    <message>
        <source>Gestures need it. Until it is granted the tools rest, and all your input goes where it always went. Settings can be changed meanwhile.</source>
        <translation>Gesten brauchen das. Solange es nicht erlaubt ist, ruhen die Werkzeuge, und alle Eingaben gehen dorthin, wohin sie immer gingen. Einstellungen lassen sich trotzdem ändern.</translation>
    </message>
    <message>
        <source>There is nothing to grant. If a tool seems to rest, see that it is switched on and that one of its edges is active.</source>
        <translation>Es fehlt keine Erlaubnis. Scheint ein Werkzeug zu ruhen, muss es eingeschaltet und einer seiner Ränder aktiv sein.</translation>
    </message>
    <message>
        <source>Programs may not send input (XTEST is off)</source>
        <translation>Programme dürfen keine Eingaben senden (XTEST ist aus)</translation>
    </message>
    <message>
        <source>The X server was started without this extension. Take “-extension XTEST” out of the command that starts it, or the line that disables it out of /etc/X11/xorg.conf.d, and log in again. Over ssh, connect with “ssh -Y” instead of “ssh -X”.</source>
        <translation>Der X-Server wurde ohne diese Erweiterung gestartet. Aus dem Befehl, der ihn startet, muss „-extension XTEST“ heraus, oder aus /etc/X11/xorg.conf.d die Zeile, die sie abschaltet; danach neu anmelden. Über ssh hilft „ssh -Y“ statt „ssh -X“.</translation>
    </message>
    <message>
        <source>Programs may not see input (XInput 2.1 is missing)</source>
        <translation>Programme dürfen Eingaben nicht sehen (XInput 2.1 fehlt)</translation>
    </message>
    <message>
        <source>Some servers for remote desktops do not have this extension. Use Quillon on the computer’s own desktop, or with another server. Over ssh, connect with “ssh -Y” instead of “ssh -X”.</source>
        <translation>Manche Server für entfernte Arbeitsflächen haben diese Erweiterung nicht. Quillon läuft auf der Arbeitsfläche des Rechners selbst oder mit einem anderen Server. Über ssh hilft „ssh -Y“ statt „ssh -X“.</translation>
    </message>
    <message>
        <source>This is a Wayland session</source>
        <translation>Dies ist eine Wayland-Sitzung</translation>
    </message>
    <message>
        <source>Wayland shows programs only the input of their own windows, so gestures work over X11 programs only. For all of them, log out and choose a session with “X11” or “Xorg” in its name.</source>
        <translation>Unter Wayland sehen Programme nur die Eingaben ihrer eigenen Fenster; Gesten wirken daher nur über X11-Programmen. Damit sie überall wirken: abmelden und eine Sitzung wählen, in deren Namen „X11“ oder „Xorg“ steht.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>RemovalSheet</name>
    <message>
        <source>Remove %1?</source>
        <translation>%1 entfernen?</translation>
    </message>
    <message>
        <source>This will uninstall the tool.</source>
        <translation>Das Werkzeug wird deinstalliert.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Installed</source>
        <translation>Installiert</translation>
    </message>
    <message>
        <source>No tool is installed.</source>
        <translation>Kein Werkzeug ist installiert.</translation>
    </message>
    <message>
        <source>Marketplace</source>
        <translation>Marktplatz</translation>
    </message>
    <message>
        <source>Every tool is installed.</source>
        <translation>Alle Werkzeuge sind installiert.</translation>
    </message>
</context>
<context>
    <name>Shell</name>
    <message>
        <source>Open Quillon — Right-click for menu</source>
        <translation>Quillon öffnen – Rechtsklick für das Menü</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Beim Anmelden starten</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Could Not Update Launch at Login</source>
        <translation>Der Start beim Anmelden ließ sich nicht ändern</translation>
    </message>
    <message>
        <source>Updates are not configured</source>
        <translation>Updates sind nicht eingerichtet</translation>
    </message>
    <message>
        <source>Could not check for updates</source>
        <translation>Nach Updates konnte nicht gesucht werden</translation>
    </message>
    <message>
        <source>Open Release Page</source>
        <translation>Seite der Version öffnen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Tool1View</name>
    <message>
        <source>Needed to notice scrolling at the screen edges.</source>
        <translation>Nötig, um Scrollen an den Bildschirmrändern zu bemerken.</translation>
    </message>
    <message>
        <source>Scroll sensitivity</source>
        <translation>Scroll-Empfindlichkeit</translation>
    </message>
    <message>
        <source>%1 steps</source>
        <translation>%1 Schritte</translation>
    </message>
    <message>
        <source>Higher values require more scroll before switching windows.</source>
        <translation>Bei höheren Werten braucht es mehr Scrollen, bis das Fenster wechselt.</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Scroll up or right</source>
        <translation>Nach oben oder rechts scrollen</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Scroll down or left</source>
        <translation>Nach unten oder links scrollen</translation>
    </message>
    <message>
        <source>App exclusions</source>
        <translation>Ausgenommene Programme</translation>
    </message>
    <message>
        <source>Edge switching is ignored in these apps.</source>
        <translation>In diesen Programmen wird an den Rändern nicht gewechselt.</translation>
    </message>
</context>
<context>
    <name>Tool2View</name>
    <message>
        <source>Needed to notice clicks at the screen edges.</source>
        <translation>Nötig, um Klicks an den Bildschirmrändern zu bemerken.</translation>
    </message>
    <message>
        <source>Sensitivity &amp; triggers</source>
        <translation>Empfindlichkeit und Auslöser</translation>
    </message>
    <message>
        <source>Middle mouse button</source>
        <translation>Mittlere Maustaste</translation>
    </message>
    <message>
        <source>Left mouse button</source>
        <translation>Linke Maustaste</translation>
    </message>
    <message>
        <source>Which buttons count as a middle-click at the edge.</source>
        <translation>Welche Tasten am Rand als Mittelklick gelten.</translation>
    </message>
    <message>
        <source>Play/Pause</source>
        <translation>Wiedergabe/Pause</translation>
    </message>
    <message>
        <source>One click</source>
        <translation>Ein Klick</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Two clicks</source>
        <translation>Zwei Klicks</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Three clicks</source>
        <translation>Drei Klicks</translation>
    </message>
</context>
<context>
    <name>Tool3View</name>
    <message>
        <source>Needed to turn a three-finger press into a click.</source>
        <translation>Nötig, um aus einem Druck mit drei Fingern einen Klick zu machen.</translation>
    </message>
    <message>
        <source>Three-finger press</source>
        <translation>Druck mit drei Fingern</translation>
    </message>
    <message>
        <source>Middle click</source>
        <translation>Mittelklick</translation>
    </message>
    <message>
        <source>Works globally once accessibility is granted. No extra toggles—enable the tool from the hub to turn it on.</source>
        <translation>Wirkt überall, sobald die Berechtigung erteilt ist. Ohne weitere Schalter – das Werkzeug wird in der Übersicht eingeschaltet.</translation>
    </message>
</context>
<context>
    <name>Tool4View</name>
    <message>
        <source>Needed to notice scrolling at the screen edges.</source>
        <translation>Nötig, um Scrollen an den Bildschirmrändern zu bemerken.</translation>
    </message>
    <message>
        <source>Scroll sensitivity</source>
        <translation>Scroll-Empfindlichkeit</translation>
    </message>
    <message>
        <source>%1 steps</source>
        <translation>%1 Schritte</translation>
    </message>
    <message>
        <source>Higher values require more scroll before switching desktops.</source>
        <translation>Bei höheren Werten braucht es mehr Scrollen, bis die Arbeitsfläche wechselt.</translation>
    </message>
    <message>
        <source>Previous desktop</source>
        <translation>Vorige Arbeitsfläche</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Nach oben scrollen</translation>
    </message>
    <message>
        <source>Next desktop</source>
        <translation>Nächste Arbeitsfläche</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Nach unten scrollen</translation>
    </message>
</context>
<context>
    <name>Tool5View</name>
    <message>
        <source>Needed to notice scrolling at the screen edges.</source>
        <translation>Nötig, um Scrollen an den Bildschirmrändern zu bemerken.</translation>
    </message>
    <message>
        <source>Volume up</source>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Nach oben scrollen</translation>
    </message>
    <message>
        <source>Volume down</source>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Nach unten scrollen</translation>
    </message>
    <message>
        <source>Step size</source>
        <translation>Schrittweite</translation>
    </message>
    <message>
        <source>%1 per scroll</source>
        <translation>%1 je Scrollschritt</translation>
    </message>
    <message>
        <source>Scales each edge-scroll adjustment: 1 is smallest, 10 is strongest. Uses system volume when possible; otherwise volume keys.</source>
        <translation>Bestimmt, wie viel ein Scrollschritt am Rand ändert: 1 am wenigsten, 10 am meisten. Ändert die Systemlautstärke, wo das geht, sonst über die Lautstärketasten.</translation>
    </message>
</context>
<context>
    <name>Tool6View</name>
    <message>
        <source>Needed to turn scrolling round.</source>
        <translation>Nötig, um die Scrollrichtung umzukehren.</translation>
    </message>
    <message>
        <source>Scroll direction</source>
        <translation>Scrollrichtung</translation>
    </message>
    <message>
        <source>Reverse trackpad</source>
        <translation>Trackpad umkehren</translation>
    </message>
    <message>
        <source>Inverts natural scrolling for trackpad gestures only.</source>
        <translation>Kehrt natürliches Scrollen nur für Trackpad-Gesten um.</translation>
    </message>
    <message>
        <source>Reverse mouse wheel</source>
        <translation>Mausrad umkehren</translation>
    </message>
    <message>
        <source>Inverts scroll direction for external mice.</source>
        <translation>Kehrt die Scrollrichtung externer Mäuse um.</translation>
    </message>
</context>
<context>
    <name>ToolPlaceholder</name>
    <message>
        <source>%1 is installed</source>
        <translation>%1 ist installiert</translation>
    </message>
    <message>
        <source>Install required</source>
        <translation>Erst installieren</translation>
    </message>
    <message>
        <source>Restart the app to load this tool.</source>
        <translation>Das Programm neu starten, um dieses Werkzeug zu laden.</translation>
    </message>
</context>
<context>
    <name>ToolScreenBackTitleRow</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Return to hub</source>
        <translation>Zurück zur Übersicht</translation>
    </message>
</context>
<context>
    <name>ToolSettingsPermissionBanner</name>
    <message>
        <source>Permission required</source>
        <translation>Berechtigung fehlt</translation>
    </message>
</context>
<context>
    <name>Tools</name>
    <message>
        <source>Scroll near edges to cycle windows</source>
        <translation>Am Rand scrollen, um Fenster zu wechseln</translation>
    </message>
    <message>
        <source>Edge click gestures for media keys</source>
        <translation>Klicks am Rand als Medientasten</translation>
    </message>
    <message>
        <source>Scroll near edges to switch desktops</source>
        <translation>Am Rand scrollen, um die Arbeitsfläche zu wechseln</translation>
    </message>
    <message>
        <source>Edge scroll controls system volume</source>
        <translation>Scrollen am Rand regelt die Lautstärke</translation>
    </message>
    <message>
        <source>3-finger press maps to middle click</source>
        <translation>Druck mit 3 Fingern wird Mittelklick</translation>
    </message>
    <message>
        <source>Flip scroll direction for trackpad and mouse independently</source>
        <translation>Scrollrichtung für Trackpad und Maus getrennt umkehren</translation>
    </message>
    <message>
        <source>Scroll near screen edges to cycle windows</source>
        <translation>An den Bildschirmrändern scrollen, um Fenster zu wechseln</translation>
    </message>
    <message>
        <source>Edge scrolling controls volume</source>
        <translation>Scrollen am Rand ändert die Lautstärke</translation>
    </message>
    <message>
        <source>Play/pause and track changes from edge clicks</source>
        <translation>Wiedergabe und Titelwechsel durch Klicks am Rand</translation>
    </message>
</context>
</TS>
