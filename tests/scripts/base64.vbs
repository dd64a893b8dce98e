Option Explicit
'#include "lib/checks.vbs"

Const kOwn = "Quintara.Cls_Base64Class"

Dim codec
Set codec = CreateObject("Quintara.Cls_Base64Class")

' EncodeString ----------------------------------------------------------------------------------------------------

Dim text
text = "A"
Same "EncodeString adds a zero byte to the text", codec.EncodeString(text), "QQA="
Same "EncodeString leaves its argument alone", text, "A"
Same "EncodeString of the empty text is that zero byte", codec.EncodeString(""), "AA=="
Same "EncodeString takes 57 bytes on a line", Len(codec.EncodeString(String(56, "x"))), CLng(76)
Same "EncodeString breaks the line after that", Mid(codec.EncodeString(String(57, "x")), 77), vbCrLf & "AA=="

Sub EncodeStringOfAnObject
  Dim result
  On Error Resume Next
  result = codec.EncodeString(codec)
  FailsNaming "EncodeString of what is no text fails", 13, "Type mismatch", kScriptEngine
End Sub
EncodeStringOfAnObject

' EncodeByteArray -------------------------------------------------------------------------------------------------

Same "EncodeByteArray takes bytes in an array of variants", _
  codec.EncodeByteArray(Array(CByte(65), CByte(66), CByte(67))), "QUJD"
Same "EncodeByteArray pads two bytes", codec.EncodeByteArray(Array(CByte(255), CByte(0))), "/wA="
Dim data
data = Array(CByte(1))
Same "EncodeByteArray takes a variable", codec.EncodeByteArray(data), "AQ=="
Same "EncodeByteArray leaves its argument alone", UBound(data) & "," & data(0), "0,1"

Sub EncodeByteArrayWithoutBounds
  Dim empties(), result
  On Error Resume Next
  result = codec.EncodeByteArray(empties)
  FailsNaming "EncodeByteArray of an array without bounds fails", 9, "Subscript out of range", kOwn
  result = codec.EncodeByteArray("no array")
  FailsNaming "EncodeByteArray of what is no array fails", 13, "Type mismatch", kScriptEngine
End Sub
EncodeByteArrayWithoutBounds

' DecodeToString --------------------------------------------------------------------------------------------------

Same "DecodeToString gives the zero byte back as a character", codec.DecodeToString("QQA="), "A" & Chr(0)
Same "DecodeToString passes over padding in the middle", codec.DecodeToString("QU=JD"), "ABC"
Same "DecodeToString passes over line breaks", codec.DecodeToString("QU" & vbCrLf & "JD"), "ABC"
Same "DecodeToString takes a stranger for the value 0", Asc(codec.DecodeToString("-w==")), Asc(Chr(3))

Sub DecodeToStringOfNothing
  Dim result
  On Error Resume Next
  result = codec.DecodeToString("==")
  FailsNaming "DecodeToString of a text that leaves no bytes fails", 9, "Subscript out of range", kOwn
End Sub
DecodeToStringOfNothing

' DecodeToByteArray -----------------------------------------------------------------------------------------------

Dim bytes
bytes = codec.DecodeToByteArray("QUJDRA==")
Same "DecodeToByteArray gives an array of bytes", CLng(VarType(bytes)), CLng(8192 + 17)
Same "EncodeByteArray takes these bytes back", codec.EncodeByteArray(bytes), "QUJDRA=="
bytes = codec.DecodeToByteArray("QUJDR")
Same "DecodeToByteArray drops a character that is left alone", codec.EncodeByteArray(bytes), "QUJD"

Sub DecodeToByteArrayOfNothing
  Dim result
  On Error Resume Next
  result = codec.DecodeToByteArray("")
  FailsNaming "DecodeToByteArray of a text that leaves no bytes fails", 9, "Subscript out of range", kOwn
End Sub
DecodeToByteArrayOfNothing

EndOfScript
