Attribute VB_Name = "A"
Sub S()
B.T: B.S
End Sub
