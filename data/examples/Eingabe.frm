VERSION 5.00
Begin {C62A69F0-16DC-11CE-9E98-00AA00574A4F} frmEingabe 
   Caption         =   "Kunde auswählen"
   ClientHeight    =   2400
   ClientLeft      =   45
   ClientTop       =   330
   ClientWidth     =   4680
   OleObjectBlob   =   "Eingabe.frx":0000
   StartUpPosition =   1  'Fenstermitte
End
Attribute VB_Name = "frmEingabe"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

Private mblnAbbruch As Boolean

Public Property Get Abbruch() As Boolean
    Abbruch = mblnAbbruch
End Property

Private Sub UserForm_Initialize()
    lstKunden.Clear
    ListeFuellen
    cmdOK.Enabled = (lstKunden.ListCount > 0)
End Sub

Private Sub ListeFuellen()
    Dim i As Integer

    For i = 2 To 20
        If Cells(i, 1).Value <> "" Then lstKunden.AddItem Cells(i, 1).Value
    Next i
End Sub

Private Sub cmdOK_Click()
    mblnAbbruch = False
    Me.Hide
End Sub

Private Sub cmdAbbruch_Click()
    mblnAbbruch = True          ' die Liste bleibt, wie sie war
    Me.Hide
End Sub

Private Sub lstKunden_DblClick(ByVal Cancel As MSForms.ReturnBoolean)
    If lstKunden.ListIndex >= 0 Then cmdOK_Click
End Sub
