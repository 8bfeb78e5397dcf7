'-----------
' Modul:Kauf
'-----------
Sub Kauf(ByVal a As Long, _
         ByVal b As Long)
    x = 1 + _
        2 + _
        3
    Kauf 1, 2 ' Aufruf
    If a Then
        Exit Sub
    End If
    ' Kommentar _
    y = 2
    y = 3
End Sub
