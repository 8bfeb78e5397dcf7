' Farben
Public Sub Zeigen(ByVal a As Long)
    Zeigen a:=vbYes
    MsgBox "Größe", vbOKOnly
End Sub
