Attribute VB_Name = "Kasse"
Option Explicit

Private Const Grenze As Double = 0.5 ' in Euro

Public Function Betrag(ByVal Menge As Long, _
                       ByVal Preis As Double) As Double
    If Menge > 0 Then Betrag = Menge * Preis
    Prüfen Betrag, Titel:="Müller's <Laden>"
End Function

Private Sub Prüfen(Wert As Double, Titel As String)
    Rem erst prüfen, dann zeigen
    MsgBox Titel & ": " & _
           Format(Wert), vbOKOnly
End Sub
