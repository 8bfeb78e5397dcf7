Attribute VB_Name = "B"
Public Sub T()
End Sub
Sub S()
End Sub
