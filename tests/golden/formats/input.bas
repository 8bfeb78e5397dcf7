Sub Eins(x As Long)
    Zwei "<a>"
End Sub

Sub Zwei(s)
    MsgBox s ' zeigen
End Sub
