Attribute VB_Name = "Umbruch"
Option Explicit

'----------------------------------------------------------------
' Kunden suchen und ausgeben: die Zeilen sind länger als die gewählte Breite
'----------------------------------------------------------------
Private Declare Function GetTickCount Lib "kernel32" Alias "GetTickCount" () As Long

#If VBA7 And Win64 Then ' bedingte Übersetzung bleibt, wie sie ist, auch wenn sie lang ist
Private mlngZahl As LongLong
#End If

Public Function KundeSuchen(ByVal Nummer As Long, ByVal Name As String, Optional ByVal Ort As String = "Köln am Rhein") As Boolean
    Dim strSQL As String, rs As Object ' die Abfrage und ihr Ergebnis, Satz für Satz
    strSQL = "SELECT * FROM Kunden WHERE Name = '" & Name & "' AND Ort = """ & Ort & """" & " ORDER BY Nummer"
    With rs
        .Open strSQL, CurrentProject.Connection, 1, 3 ' nur lesen
        If .EOF Then Debug.Print "Keine Kunden"; .RecordCount: Rem es gibt nichts zu tun
        Summe = Summe + !Betrag * (1 + !Steuer / 100) - .Fields("Rabatt").Value + _
                Zuschlag(#12/31/2001 11:59:59 PM#, [Mein Blatt]) ' bis zum Jahresende
    End With
Fehler: MsgBox "Fehler " & Err.Number & ": " & Err.Description, vbCritical, "Kunden suchen"
    ' Hier wird nichts mehr getan, außer zu sagen, _
      dass nichts mehr getan wird, weil alles schon getan ist.
    Rem Auch diese Art der Bemerkung wird auf mehrere Zeilen verteilt, wenn sie lang ist.
100 KundeSuchen = (Err.Number = 0) ' Zeilennummern bleiben bei ihrer Anweisung
    x = 1 ' kurz
End Function
