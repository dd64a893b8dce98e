Option Explicit
'#environment DEBUG=TRUE
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

' What GetError shows where the environment asks it to speak.
Dim utils
Set utils = Quintara("Cls_Utils")

Sub ShowTheError
  On Error Resume Next
  Err.Raise 1234, "the script", "what went wrong"
  utils.GetError "The.Function", Err
  BoxShown "GetError shows the script's own error", "Following Error has occured in ''The.Function''" & vbCr & _
    "Number      : 1234" & vbCr & "Description : what went wrong", 16
  Same "GetError leaves it alone", Err.Number, CLng(1234)
End Sub

ShowTheError

Sub WithoutAnError
  On Error Resume Next
  utils.GetError "The.Function", Nothing
  FailsWith "GetError fails without an error", 91, "Object variable or With block variable not set", "Quintara.Cls_Utils"
End Sub
WithoutAnError
NoBox "GetError shows nothing when it fails"

EndOfScript
