Wenn x Dann Drucke "Hallo"
Dim Wenn As Long
WENN Rot Drucke$ Leer Int2 a=b Kommentar
Rot(Wenn, Grün)
