' Kommentar am Zeilenanfang
    ' eingerückt, mit "Anführung" und <Klammern>
Rem mit Rem am Anfang
    rem klein geschrieben
Remove x
a = 1 ' hinter Code
a = 1' ohne Leerzeichen davor
b = 2: Rem hinter Code
c = d Removed x
x = "Geht's?" ' nach einem Text
x = "Geht's?"
x = "a" & b ' Peter's
x = "ein "" Rem im Text"
y = "ungerade ' Rem
MsgBox "'" & "'"
' weiter _
  in der nächsten Zeile, _
x = 3 ' auch das ist Kommentar
x = 4 ' hinter Code weiter _
x = 5
x = 6
' endet mit Leerzeichen _  
x = 7
'
Rem
'_
x = 8
