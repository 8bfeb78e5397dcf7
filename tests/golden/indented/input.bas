Sub Test()
        If a > 1 Then
  For i = 1 To 3
        With o
     .x = 1
 While y
            y = False
    Wend
  End With
Next i
Else
If b Then c = 1
x = 2
If b Then ' Kommentar
End If
ElseIf d Then
x = 3
Elseif e Then
x = 4
End If
End If
End If
Formatieren x
NextItem y
WithoutEnd z
x = 5
Public Type TA
Feld As Long
End Type
Private Type TB
Feld As Long
End Type
Type TC
Feld As Long
End Type
Select Case x
Case 1
Do
x = 6
Loop
End Select
	Tab davor
End Sub
