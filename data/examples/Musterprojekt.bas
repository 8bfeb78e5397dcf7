Attribute VB_Name = "modRechnung"
Option Explicit
Option Compare Text
'=====================================================================
' Modul:     modRechnung
' Aufgabe:   liest offene Posten aus der Tabelle, berechnet Rechnungen
'            und schreibt Mahnungen für säumige Kunden
'=====================================================================

Public Const MWST_SATZ As Double = 0.19         ' Regelsatz
Public Const MWST_ERM As Double = 0.07          ' ermäßigter Satz
Private Const MAX_POSTEN As Integer = 250
Private Const BLATT_NAME As String = "Offene Posten"
Private Const HINWEIS As String = "Bitte ""sofort"" überweisen, sonst gibt's eine Mahnung!"

Private Type TPosten
    Nummer As Long
    Kunde As String * 40
    Netto As Currency
    Faellig As Date
    Bezahlt As Boolean
End Type

Private Declare Function GetTickCount Lib "kernel32" () As Long
Declare Sub Sleep Lib "kernel32" (ByVal dwMilliseconds As Long)

Private mPosten(1 To MAX_POSTEN) As TPosten
Private mintAnzahl As Integer
Private mstrWaehrung As String
Private mobjZiel As Object

' --- Eigenschaften -----------------------------------------------------

Public Property Get Waehrung() As String
    If Len(mstrWaehrung) = 0 Then mstrWaehrung = "EUR"
    Waehrung = mstrWaehrung
End Property

Public Property Let Waehrung(ByVal strNeu As String)
    mstrWaehrung = UCase$(Trim$(strNeu))
End Property

Public Property Set Ziel(ByVal objNeu As Object)
    Set mobjZiel = objNeu
End Property

' --- Einlesen ----------------------------------------------------------

Public Sub PostenEinlesen()
    Dim wksTabelle As Object
    Dim lngZeile As Long
    Dim lngStart As Long

    lngStart = GetTickCount()
    Set wksTabelle = ThisWorkbook.Worksheets(BLATT_NAME)
    mintAnzahl = 0
    lngZeile = 2                                ' Zeile 1 trägt die Überschriften

    Do While Not IsEmpty(wksTabelle.Cells(lngZeile, 1).Value)
        If mintAnzahl >= MAX_POSTEN Then
            MsgBox "Mehr als " & MAX_POSTEN & " Posten - der Rest bleibt liegen.", vbExclamation
            Exit Do
        End If
        mintAnzahl = mintAnzahl + 1
        With mPosten(mintAnzahl)
            .Nummer = CLng(wksTabelle.Cells(lngZeile, 1).Value)
            .Kunde = wksTabelle.Cells(lngZeile, 2).Value
            .Netto = wksTabelle.Cells(lngZeile, 3).Value
            .Faellig = wksTabelle.Cells(lngZeile, 4).Value
            .Bezahlt = (wksTabelle.Cells(lngZeile, 5).Value <> "")
        End With
        lngZeile = lngZeile + 1
    Loop

    ProtokollSchreiben mintAnzahl & " Posten in " & (GetTickCount() - lngStart) & " ms gelesen"
End Sub

' --- Rechnen -----------------------------------------------------------

' Der Betrag mit Steuer. Für Bücher und Lebensmittel gilt der ermäßigte _
  Satz; wer keinen angibt, zahlt den vollen.
Public Function BruttoBetrag(ByVal curNetto As Currency, Optional ByVal dblSatz As Double = MWST_SATZ) As Currency
    BruttoBetrag = Round(curNetto * (1 + dblSatz), 2)
End Function

Private Function RabattSatz(ByVal strKunde As String, _
                            ByVal curSumme As Currency, _
                            Optional ByVal blnStamm As Boolean = False) As Double
    Select Case curSumme
        Case Is < 500
            RabattSatz = 0
        Case 500 To 4999.99
            RabattSatz = 0.02
        Case Else
            RabattSatz = 0.05
    End Select
    If blnStamm And Left$(strKunde, 1) <> "*" Then RabattSatz = RabattSatz + 0.01
End Function

Public Function OffeneSumme(ByVal strKunde As String) As Currency
    Dim i As Integer
    Dim curSumme As Currency

    For i = 1 To mintAnzahl
        With mPosten(i)
            If Trim$(.Kunde) = strKunde And Not .Bezahlt Then curSumme = curSumme + BruttoBetrag(.Netto)
        End With
    Next i
    If curSumme > 0 Then
        curSumme = curSumme * (1 - RabattSatz(strKunde, curSumme, blnStamm:=True))
    End If
    OffeneSumme = curSumme
End Function

Private Function TageOffen(ByVal datFaellig As Date) As Long
    If datFaellig < Date Then TageOffen = DateDiff("d", datFaellig, Date)
End Function

Private Function MahnStufe(ByVal lngTage As Long) As Integer
    Rem Stufe 1 nach zwei Wochen, Stufe 2 nach einem Monat,
    Rem Stufe 3 nach zwei Monaten
    If lngTage > 60 Then
        MahnStufe = 3
    ElseIf lngTage > 30 Then
        MahnStufe = 2
    ElseIf lngTage > 14 Then
        MahnStufe = 1
    Else
        MahnStufe = 0
    End If
End Function

' --- Ausgeben ----------------------------------------------------------

Public Sub RechnungDrucken(ByVal strKunde As String, Optional ByVal intKopien As Integer = 1)
    Dim i As Integer

    If mintAnzahl = 0 Then Call PostenEinlesen
    If OffeneSumme(strKunde) = 0 Then           ' nichts offen, nichts zu drucken
        MsgBox "Für """ & strKunde & """ ist nichts offen.", vbInformation, "Rechnung"
        Exit Sub
    End If

    For i = 1 To intKopien
        mobjZiel.Range("A1").Value = "Rechnung für " & strKunde & " (Kopie " & i & ")"
        mobjZiel.Range("A3").Value = BetragText(OffeneSumme(strKunde))
        mobjZiel.PrintOut Copies:=1, Collate:=True
        Sleep 200                               ' der Drucker braucht eine Pause _
                                                  zwischen zwei Kopien
    Next i
    ProtokollSchreiben strText:="Rechnung gedruckt: " & strKunde, blnZeit:=True
End Sub

Public Sub AlleMahnungen()
    Dim i As Integer, intStufe As Integer
    Dim strBrief As String

    On Error GoTo Fehler
    PostenEinlesen
    For i = 1 To mintAnzahl
        intStufe = MahnStufe(TageOffen(mPosten(i).Faellig))
        If intStufe > 0 And Not mPosten(i).Bezahlt Then
            strBrief = "Sehr geehrte Damen und Herren," & vbCrLf & vbCrLf & _
                       "zur Rechnung Nr. " & mPosten(i).Nummer & " fehlt uns noch der Betrag von " & _
                       BetragText(BruttoBetrag(mPosten(i).Netto)) & "." & vbCrLf & _
                       HINWEIS
            BriefSpeichern strBrief, "Mahnung_" & intStufe & "_" & mPosten(i).Nummer & ".txt"
        End If
    Next i
    Exit Sub

Fehler:
    MsgBox "Fehler " & Err.Number & ": " & Err.Description, vbCritical
    ProtokollSchreiben "Abbruch in AlleMahnungen"
End Sub

Private Function BetragText(ByVal curBetrag As Currency) As String
    BetragText = Format$(curBetrag, "#,##0.00") & " " & Waehrung
End Function

Private Sub BriefSpeichern(ByVal strInhalt As String, ByVal strDatei As String)
    Dim intKanal As Integer

    intKanal = FreeFile
    Open ThisWorkbook.Path & "\" & strDatei For Output As #intKanal
    Print #intKanal, strInhalt
    Close #intKanal: Rem auch bei leerem Inhalt
End Sub

' Schreibt eine Zeile in das Direktfenster.
Private Sub ProtokollSchreiben(strText As String, Optional ByVal blnZeit As Boolean)
    If blnZeit Then Debug.Print Format$(Now, "hh:nn:ss") & " ";
    Debug.Print strText: DoEvents
End Sub

' Bereitet die Tabelle vor und gibt zurück, ob alles da ist.
Public Function TabelleGeprüft() As Boolean
    Dim wksTabelle As Object

    On Error Resume Next
    Set wksTabelle = ThisWorkbook.Worksheets(BLATT_NAME)
    TabelleGeprüft = Not (wksTabelle Is Nothing)
    #If Win32 Then
        Debug.Print "32 Bit, " & IIf(TabelleGeprüft, "bereit", "nicht bereit")
    #End If
End Function

Public Sub Demo()
    Waehrung = "eur"
    Set Ziel = ThisWorkbook.Worksheets("Ausgabe")
    If Not TabelleGeprüft Then
        MsgBox "Die Tabelle """ & BLATT_NAME & """ fehlt.", vbCritical
        Exit Sub
    End If
    RechnungDrucken strKunde:="Müller & Söhne <GmbH>", intKopien:=2
    AlleMahnungen
    Debug.Print "Übrig: " & OffeneSumme("Bäckerei Groß"); " - erledigt"
End Sub
