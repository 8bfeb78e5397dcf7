Attribute VB_Name = "N"

' about A
' more
Sub A( _
)
  x
End Sub: Sub B()
End Sub
' about C

Sub C(): End Sub
#If 0 Then
Sub D()
#Else
Sub D(x)
#End If
End Sub