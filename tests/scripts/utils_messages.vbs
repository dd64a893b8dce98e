Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Const kOwn = "Quintara.Cls_Utils"

Dim utils, text
Set utils = Quintara("Cls_Utils")
StartSession

' ShowMessage -----------------------------------------------------------------------------------------------------

Dim answer
text = "REP1 and REP2 and REP1ENTend"
answer = utils.ShowMessage(text, 64, Array("one", 2))
BoxShown "ShowMessage fills the tokens", "one and 2 and one" & vbCrLf & "end", 64
Same "ShowMessage fills them in the caller's own text", text, "one and 2 and one" & vbCrLf & "end"
Same "ShowMessage gives the answer", answer, CLng(1)

answer = utils.ShowMessage(text, 4160, Array("other", "other"))
BoxShown "ShowMessage finds no tokens the second time", "one and 2 and one" & vbCrLf & "end", 4160

NextAnswer "Yes"
text = "Really?"
answer = utils.ShowMessage(text, 4132, Array())
BoxShown "ShowMessage asks", "Really?", 4132
Same "ShowMessage gives Yes", answer, CLng(6)
NextAnswer "No"
answer = utils.ShowMessage(text, 4132, Array())
BoxShown "ShowMessage asks again", "Really?", 4132
Same "ShowMessage gives No", answer, CLng(7)

text = ""
answer = utils.ShowMessage(text, 64, Array("one"))
BoxShown "ShowMessage of an empty text says so, in style 16", CatalogueText("COMMON.UTILS.MESSAGE_IS_EMPTY", Array()), 16
IsTrue "ShowMessage gives nothing then", IsEmpty(answer)

' A parameter may hold a token itself, which is filled further on.
text = "REP1"
answer = utils.ShowMessage(text, 0, Array("<REP2>", "inner"))
BoxShown "ShowMessage fills tokens in parameters", "<inner>", 0
Same "ShowMessage leaves the text so", text, "<inner>"

utils.ShowMessage "REP1 as a literal", 16, Array("A text")
BoxShown "ShowMessage takes a text that isn't a variable", "A text as a literal", 16

' An array that was declared without bounds has no parameters in it.
Dim none(), four(1)
text = "plain"
utils.ShowMessage text, 64, none
BoxShown "ShowMessage takes an array without bounds", "plain", 64

Sub ShowMessageFails
  On Error Resume Next
  text = "REP1"
  answer = utils.ShowMessage(text, 64, Array(utils))
  FailsNaming "ShowMessage fails for a parameter that is no text", 13, "", kOwn
  answer = utils.ShowMessage(text, 64, "no array")
  FailsWith "ShowMessage fails for parameters that are no array", 13, "Type mismatch", kScriptEngine
End Sub
ShowMessageFails
NoBox "ShowMessage shows nothing when it fails"

' GetMessage ------------------------------------------------------------------------------------------------------

text = "REP1 of REP2ENTREP1"
Same "GetMessage fills the tokens", utils.GetMessage(text, Array("3", 4)), "3 of 4" & vbCrLf & "3"
Same "GetMessage leaves the caller's text alone", text, "REP1 of REP2ENTREP1"
Same "GetMessage fills them again", utils.GetMessage(text, Array("5", "6")), "5 of 6" & vbCrLf & "5"
Same "GetMessage of an empty text is empty", utils.GetMessage("", Array("x")), ""
NoBox "GetMessage shows nothing"

Sub GetMessageFails
  Dim result
  On Error Resume Next
  result = utils.GetMessage(text, Array(Nothing))
  FailsNaming "GetMessage fails for a parameter that is no text", 13, "", kOwn
End Sub
GetMessageFails

' GetError --------------------------------------------------------------------------------------------------------

Sub ShowTheError
  On Error Resume Next
  Err.Raise 1234, "the script", "what went wrong"
  utils.GetError "The.Function", Err
  NoBox "GetError is silent unless it is asked to speak"
  Same "GetError leaves the script's error alone", Err.Number, CLng(1234)
End Sub
ShowTheError

' StripFileExtension, GetFileExtension ----------------------------------------------------------------------------

Same "StripFileExtension cuts at the last point", utils.StripFileExtension("a.b.stp"), "a.b"
Same "StripFileExtension cuts in a folder's name too", utils.StripFileExtension("C:\x.y\plain"), "C:\x"
Same "StripFileExtension without a point", utils.StripFileExtension("plain"), "plain"
Same "StripFileExtension with a point at the end", utils.StripFileExtension("plain."), "plain"
Same "GetFileExtension gives what follows the last point", utils.GetFileExtension("a.b.stp"), "stp"
Same "GetFileExtension without a point", utils.GetFileExtension("plain"), ""
Same "GetFileExtension with a point at the end", utils.GetFileExtension("plain."), ""
Dim number
number = 7
Same "StripFileExtension takes a number", utils.StripFileExtension(number), "7"
Same "StripFileExtension leaves it a number", number, 7

Sub ExtensionsFail
  Dim result
  On Error Resume Next
  result = utils.StripFileExtension(Nothing)
  FailsWith "StripFileExtension fails for what is no text", 13, "Type mismatch", kScriptEngine
  result = utils.GetFileExtension(Array("a"))
  FailsWith "GetFileExtension fails for what is no text", 13, "Type mismatch", kScriptEngine
End Sub
ExtensionsFail

EndOfScript
