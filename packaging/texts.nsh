; The texts of the setup program that NSIS does not provide, in the program's four languages.

!macro Text id english french german spanish
  LangString ${id} ${LANG_ENGLISH} "${english}"
  LangString ${id} ${LANG_FRENCH} "${french}"
  LangString ${id} ${LANG_GERMAN} "${german}"
  LangString ${id} ${LANG_SPANISH} "${spanish}"
!macroend

!insertmacro Text ProgramText "Quillon (required)" "Quillon (requis)" "Quillon (erforderlich)" "Quillon (necesario)"

!insertmacro Text LogonText "Start when I log on" "Lancer à l'ouverture de session" "Beim Anmelden starten" "Ejecutar al iniciar sesión"

!insertmacro Text StartText "Start Quillon" "Lancer Quillon" "Quillon starten" "Ejecutar Quillon"

!insertmacro Text AllowInFirewallText "Allow Quillon in the firewall" "Autoriser Quillon dans le pare-feu" \
  "Quillon in der Firewall zulassen" "Permitir Quillon en el cortafuegos"

!insertmacro Text FirewallText "The firewall was not changed. Others may not be able to reach you.$\r$\n$\r$\n\
Ask your administrator for an inbound rule: allow UDP, local port 1414, from the local subnet, for this program:$\r$\n${PROGRAM}" \
  "Le pare-feu n'a pas été modifié. Les autres ne pourront peut-être pas vous joindre.$\r$\n$\r$\n\
Demandez à votre administrateur une règle de trafic entrant : autoriser UDP, port local 1414, depuis le sous-réseau local, pour ce \
programme :$\r$\n${PROGRAM}" \
  "Die Firewall wurde nicht geändert. Andere erreichen Sie vielleicht nicht.$\r$\n$\r$\n\
Bitten Sie Ihren Administrator um eine eingehende Regel: UDP zulassen, lokaler Port 1414, aus dem lokalen Subnetz, für dieses \
Programm:$\r$\n${PROGRAM}" \
  "El cortafuegos no se ha modificado. Puede que los demás no le alcancen.$\r$\n$\r$\n\
Pida a su administrador una regla de entrada: permitir UDP, puerto local 1414, desde la subred local, para este \
programa:$\r$\n${PROGRAM}"

!insertmacro Text FolderRefusedText "You may not write to this folder:$\r$\n$INSTDIR$\r$\n$\r$\n\
Quillon keeps its settings and its log beside the program. Choose a folder in your own profile." \
  "Vous ne pouvez pas écrire dans ce dossier :$\r$\n$INSTDIR$\r$\n$\r$\n\
Quillon garde ses paramètres et son journal à côté du programme. Choisissez un dossier de votre propre profil." \
  "In diesen Ordner dürfen Sie nicht schreiben:$\r$\n$INSTDIR$\r$\n$\r$\n\
Quillon legt seine Einstellungen und sein Protokoll neben dem Programm ab. Wählen Sie einen Ordner in Ihrem eigenen Profil." \
  "No puede escribir en esta carpeta:$\r$\n$INSTDIR$\r$\n$\r$\n\
Quillon guarda sus ajustes y su registro junto al programa. Elija una carpeta de su propio perfil."

!insertmacro Text StillRunningText "Quillon is still running. Close it and try again." \
  "Quillon est encore en cours d'exécution. Fermez-le, puis réessayez." \
  "Quillon läuft noch. Beenden Sie es, und versuchen Sie es dann noch einmal." \
  "Quillon todavía se está ejecutando. Ciérrelo e inténtelo de nuevo."

!insertmacro Text DataText "My settings, log and sounds" "Mes paramètres, mon journal et mes sons" \
  "Meine Einstellungen, mein Protokoll und meine Klänge" "Mis ajustes, mi registro y mis sonidos"

!insertmacro Text FirewallRuleText "The firewall rule" "La règle du pare-feu" "Die Regel der Firewall" "La regla del cortafuegos"
