Sub Lang(ByVal a As Long, _
         ByVal b As Long, _
         ByVal c As Long)
    MsgBox "eins" & _
           "zwei" & _
           "drei"
    x = 1
    x = a_
    x = 2
    Lang 1, _
        2, _
        3
    x = "Text _"
    x = 3 ' Kommentar _
    geht weiter
    x = 4
End Sub
Sub Kurz( _
        )
    x = 5 _
End Sub
x = 6
_
x = 7
x = 8 _
