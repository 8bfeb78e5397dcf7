Attribute VB_Name = "alle"
'-----------
' Modul:Eins
'-----------
Sub Eins()
    Zwei 1
End Sub
'-----------
' Modul:Zwei
'-----------
Sub Zwei(x)
    x = "'-------"
End Sub
'-------------
' kein Modulkopf
'-------
' Modul:
'-------
x = 1 '-------
modul: x = 2
