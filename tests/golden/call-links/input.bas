Sub Lesen(x)
End Sub
Function Wert(x) As Long
    Wert = 1
    Wert = Wert(x) + 1
    Wert=2
End Function
Function Preis()
    Call Lesen(1)
    Lesen
    Lesen 1
    x = Wert(2)
    x = Wert
    x = Wert + Wert(1) * Preis()
    If Wert(3) > 0 Then Lesen 4
    x = lesen(1)
    x = "Lesen"
    x = "Text" & Wert(1) & "Lesen"
    x = "Lesen" & Wert(1)
    Lesen ' hinter dem Aufruf
    Lesen 5 ' mit Lesen im Kommentar
    x = Wert ' ohne Klammer
    x = 1 ' Lesen nur im Kommentar
    ' Lesen im Kommentar
    x = (Wert)
    x = y(Wert(1), Wert)
    Preis = Wert(1)
    AuslesenAlles 1
    objZiel.Lesen
    Lesen: Preis
    Debug.Print "a"; Wert("b"); "c"
    Lesen x:=Wert(y:=1)
    LesenMehr
    x = 1 + _
        Wert(2) + _
        Preis
End Function
Sub Lesen(x)
End Sub
Sub LesenMehr()
End Sub
