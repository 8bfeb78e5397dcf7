End If
 Then Else
ElseifTYPE Then 
Next Then Else
End TypeElse
Else
End Type Then Elseif
 Then 
type Then While

End IfWithEnd Type
x

WithxFor

NextTYPEElseif
Else Then Next
xEnd Type
Public Type
Public TypeTYPEWith
For
Else
With  PRIVATE TYPE 
Public Type
Else

End TypeForEnd With
PRIVATE TYPE 
 Then Else
End WithEnd WithTYPE
PRIVATE TYPE Public TypeElse

PRIVATE TYPE 


Public Type
type
If
TYPEFor
ElseifPRIVATE TYPE  Then 
With
While
typePRIVATE TYPE 

Public Type
xWend
End Type
WendEnd TypeTYPE
WhileEnd If

End If
While

ForWend
If
End Type
TYPEEnd WithEnd If
 Then Public Typex
typetype
ElseifPRIVATE TYPE 
 Then Next

Public Type
Elseif
 Then 


End IfxElseif
If

type
Wend
TYPE
ElseifElseif
Public TypePRIVATE TYPE 
WithElse
Elseif
Wend
For  

  
End If
If  With

  
For
While
x  End With
Next
type
Next
PRIVATE TYPE TYPEIf

PRIVATE TYPE 
Next
TYPEPublic TypeTYPE
Else
Elseif
PRIVATE TYPE 
End With
PRIVATE TYPE 
IfPRIVATE TYPE TYPE


NextPRIVATE TYPE 
End Type
Else
Public Typetype

For
If
Public Type
PRIVATE TYPE 
End If
xEnd IfIf


End IfEnd TypeNext
If
Next
  
End With
x
End If Then 
Public Type
  End Type  
x
  
IfPublic TypeFor
IfEnd IfFor
PRIVATE TYPE 
Elseifx Then 
  
xPRIVATE TYPE Elseif
 Then WhileNext
 Then 

Public TypexIf

End With  
  NextWend
  x
  While
WendxNext
End IfEnd Type

Public TypeEnd With

End Type

With

TYPE
Wend
Public Type
Elseif
PRIVATE TYPE For
For
  type
End Type
TYPE
Else
If
x
Public TypeIf
End With  
With  Else

Elseif

Wend

Wend
End Type
type
x
PRIVATE TYPE End WithElse
 Then 
End Type

If

Else
WhileElseWend

IfEnd With
End TypeWendEnd If

WhileElseifFor
 Then 
Next
With
NextWithPublic Type
ForWendTYPE

 Then 


xNext  
WhilePublic Type

PRIVATE TYPE x
  With
While
Next
type
 Then 
If

End Type
 Then 

  With
WhileWith Then 
ForFor
Public Type

TYPE
x
While

Next
For

type

Wend  
While
IfElseWend

type
 Then typeIf
With
Else
  End Iftype
PRIVATE TYPE 
With
End If Then   
  End If
  IfWhile



TYPE

Public Typex


WhilePRIVATE TYPE Wend

Else  
Else  Else
WendElse
While
While
PRIVATE TYPE type

With Then 
NextElseEnd If
Wend
End If

 Then PRIVATE TYPE 
Elseif
PRIVATE TYPE 
  
Public Type
Public TypeElseif
NextWithElse
IfWith
Else  
Wendtype
Next

ElseEnd If  
TYPE
  
Elseif
While
PRIVATE TYPE type

If
Public Typetype
End If
TYPEtype
Elseif
If
End With
ElseifNext

Wend
Else
typeElse
End Type
 Then 
Elseif

End If
Wend
  End With
TYPE
Iftype
xNextElse

Public TypeEnd If
PRIVATE TYPE 

End IfForPRIVATE TYPE 
End WithWith
Wend
type
With
xtype

For

  
xWhile
End WithPublic Type
End Ifx
While

End With
ElseEnd WithWhile
Wend
NextIfEnd Type
End Type  
type
End With

WendTYPE
  
NextElseWend
type
Public TypeEnd Type
If
 Then 
PRIVATE TYPE PRIVATE TYPE 


  Public Type
WhileElseif
End If
  

Elsex


While
 Then WithEnd If
  
ElseifElseif

  
NexttypeWend
If

WithPublic TypeWend
While
  While
WhileIfEnd Type
 Then 

PRIVATE TYPE 
ElseWend
End Type
While
 Then End With
TYPEtype
If
  

PRIVATE TYPE 
With
While
WhileWend
Elseif
PRIVATE TYPE ForWhile
End Type Then 
End Iftype Then 
If
End IfEnd Type Then 

type
End WithElseif

End With
For
Public Type Then With
TYPEEnd With
ForElseif


Else
End Type

NexttypeTYPE
End Type


NextTYPE
Public TypeNextEnd With
PRIVATE TYPE 

Whiletype

 Then Public Type


Next

End WithTYPEWend
 Then 
End With
With

ElseIfWhile

Public Typetype
End Type
End IfPRIVATE TYPE 
If
End If
WhileEnd WithEnd With
TYPEElse
NexttypeFor
End Type


xx
For
ElseifElse
Else
Elseif
PRIVATE TYPE Public Type
While
End Type
Whilex

With
Wend
Wend
Next
WhileFor
While
With
NextEnd WithElse
WendWhile
  WhileElseif
 Then Elseif

WhilePublic Type
 Then 
While


Next

  
Public Type
WendIfElseif
TYPENext Then 
End With
 Then 
Wend

NextIfEnd With
TYPEFor
WithElseNext

xPRIVATE TYPE 

Elseiftype
End IfxElse
type
End Type
With
 Then With
TYPEEnd TypeEnd Type

Next
typeNext

ForEnd Type


TYPEPublic Type
End If


End IftypeElse
TYPE  For
TYPE
For
ForElseElseif
PRIVATE TYPE Next
End If

End With Then 
typeElseFor
type
NextPRIVATE TYPE For
Next Then type
FortypeTYPE

While
 Then 
 Then End WithElseif
Public Typex
End Type
While
typeTYPE
  Public Type
If

PRIVATE TYPE Public TypeWhile
Public TypeFor
typeElseif

TYPE
TYPEElse
    


Else
  


typeEnd IfIf

ElseifNextEnd If
WithFor
Else
Wend
End With
WendPublic TypeEnd If
  
NextWend
  WhileEnd With
 Then 
For
ForWend
type
Wend

 Then TYPEPublic Type
  ElseifWend
typeTYPEWend
TYPEEnd If
End With

WhileFor
 Then With  
With
End WithIf Then 
End If
End Type
  TYPE

PRIVATE TYPE 
 Then 



TYPEWithElseif
TYPExWhile
WithEnd If
TYPE
PRIVATE TYPE ForEnd If

End If
ElseifElse
Wend
WendIf

TYPEPublic Type  
WhileFor



IftypeFor
For



xNextEnd If
Next  
  End TypeFor
WithElseWith

xIf
End TypePublic Type

ForWhile

While


Wend

