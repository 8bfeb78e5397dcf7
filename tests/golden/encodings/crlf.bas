Sub Prüfen()
    x = "Größe €"
    Prüfen
End Sub
