' ä😀{
Function F$(a#, [b ]) As _
  Long ' `` _
 x
End Function