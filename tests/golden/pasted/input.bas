Sub Eins()
	Zwei	"Tab	im Text"
End Sub
Sub Zwei(s)
	Eins
End Sub
