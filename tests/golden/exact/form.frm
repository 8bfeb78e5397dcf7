VERSION 5.00
Begin VB.Form Kasse 
   Caption         =   "Kasse"
   Begin VB.CommandButton Zahlen 
      Caption         =   "Zahlen"
   End
End
Attribute VB_Name = "Kasse"
Attribute VB_PredeclaredId = True
Option Explicit

Public Sub Neu()
Attribute Neu.VB_Description = "beginnt von vorn"
  Zahlen.Enabled = True
End Sub
