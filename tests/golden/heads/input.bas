Private Declare Function GetTickCount Lib "kernel32" () As Long
Declare Sub Warten Lib "kernel32" Alias "Sleep" (ByVal dw As Long)
Private Sub Start()
    Exit Sub
End Sub
Public Function Summe(ByVal a As Long, _
                      ByVal b As Long, _
                      Optional c As Long) As Long
    Summe = a + b + c
End Function ' fertig
  Friend Function Freund() As Long ' <Kommentar> am Kopf
  End Function
Static Sub Zähler(x)
End Sub
Public Property Get Name() As String
    Exit Property
End Property
Property Let Name(ByVal s As String)
End Property
Property Set Ziel(o As Object): End Property
Private Sub SubMain()
end sub
private sub klein()
End sub
Sub OhneKlammer
End Sub
Sub Fortgesetzt _
    (x As Long)
End Sub
Public Sub Öffnen _
    ( _
    )
End Sub
    If a(1) Then Exit Function
Text = "die Sub ist aus"
Text = " Sub "
On Error GoTo EndSub
' siehe Sub Beispiel(
