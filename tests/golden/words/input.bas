Dim a As Long, b As String
dim a as long
If a<>b And a<b<c Then MsgBox "<b>" & "<i>"
If a >= b Or c <= d Then x = a > b
f(x, y)
f(x,y,z)
,a,b
a,
g(h(1), (2), ((3)))
Foo( x )
Now()
x = Now() + Date()
Call Foo(Bar:=1, Baz:= 2, Qux :=3)
Foo Bar:=":=a:=b"
:=a:=b
MsgBox "Stop if Not done", vbOKOnly + vbInformation
x = Left$(s, 2) & Mid$(s, 3)
x = ""
x = """"
x = "a ""b"" c"
x = (a)
x=a
x = -1 * (-2)
x =  3   +    4
	Tab	Dim	x
    a(1)(2) = b(,)
Debug.Print a; b, "c", Tab(3)
Print #1, "a,b"; "(c)"
x = True: y = False
xlUp = xlDown
Int2 = vb_x
Größe = Straße & "ÄÖÜ äöü ß €"
End If
End
)
(
()
x = a & "class='Code'" & b
