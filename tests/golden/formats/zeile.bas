
End