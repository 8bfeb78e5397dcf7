Dim A, a, [a.2], [1], [%<b>&"' ], Ä, ä
Type T
F As Long
f As T
End Type
Property Get P()
L: End Property
Property Let P(l)
10
End Property
Dim [T.F], [P.Get]
