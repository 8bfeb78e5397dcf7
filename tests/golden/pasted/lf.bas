Sub Eins()
	Eins

End Sub
