' What every script says of its checks. The harness counts on the last line, since a script that fails in Wine ends
' without a word and with success.

' Where an argument that is of no use fails before any method of a class has it.
Const kScriptEngine = "Microsoft VBScript runtime error"

Dim checksMade, checksFailed
checksMade = 0
checksFailed = 0

Sub Told(what, isWell, got)
  checksMade = checksMade + 1
  If isWell Then
    WScript.Echo "ok      " & what
  Else
    checksFailed = checksFailed + 1
    WScript.Echo "FAILED  " & what & ": " & got
  End If
End Sub

' A value with its type, on one line.
Function Shown(value)
  Dim text
  If IsObject(value) Then
    If value Is Nothing Then Shown = "nothing" Else Shown = "an object"
  ElseIf IsArray(value) Then
    Shown = "an array"
  ElseIf IsNull(value) Then
    Shown = "null"
  Else
    text = Replace(Replace(Left(CStr(value), 300), vbCr, "\r"), vbLf, "\n")
    Shown = TypeName(value) & " [" & text & "]"
  End If
End Function

' The same value in the same type.
Sub Same(what, got, expected)
  Dim isWell
  isWell = False
  If Not IsObject(got) And Not IsArray(got) And Not IsNull(got) Then
    If TypeName(got) = TypeName(expected) Then isWell = (got = expected)
  End If
  Told what, isWell, Shown(got) & " instead of " & Shown(expected)
End Sub

Sub IsTrue(what, got)
  Same what, got, True
End Sub

Sub IsFalse(what, got)
  Same what, got, False
End Sub

Sub GivesNothing(what, got)
  Dim isWell
  isWell = False
  If IsObject(got) Then isWell = got Is Nothing
  Told what, isWell, Shown(got) & " instead of nothing"
End Sub

Sub GivesAnObject(what, got)
  Dim isWell
  isWell = False
  If IsObject(got) Then isWell = Not (got Is Nothing)
  Told what, isWell, Shown(got) & " instead of an object"
End Sub

' To be called under "On Error Resume Next", right after the statement that has to fail.
Sub FailsWith(what, number, description, source)
  Dim got, expected
  got = Err.Number & "|" & Err.Description & "|" & Err.Source
  expected = number & "|" & description & "|" & source
  Err.Clear
  Told what, got = expected, got & " instead of " & expected
End Sub

' The same where the text isn't Quintara's own: the description only has to hold a piece of text.
Sub FailsNaming(what, number, piece, source)
  Dim got, isWell
  got = Err.Number & "|" & Err.Description & "|" & Err.Source
  isWell = Err.Number = number And InStr(Err.Description, piece) > 0 And Err.Source = source
  Err.Clear
  Told what, isWell, got & " instead of " & number & "|..." & piece & "...|" & source
End Sub

Sub NoFailure(what)
  Dim got
  got = Err.Number & "|" & Err.Description & "|" & Err.Source
  Told what, Err.Number = 0, got
  Err.Clear
End Sub

' Twelve numbers, or any, to within what the last digit of their text may hide.
Function AreClose(got, expected)
  Dim i
  AreClose = False
  If UBound(got) <> UBound(expected) Then Exit Function
  For i = 0 To UBound(got)
    If Abs(got(i) - expected(i)) > 0.000000001 Then Exit Function
  Next
  AreClose = True
End Function

Function Listed(values)
  Dim value, text
  For Each value In values
    text = text & " " & CStr(value)
  Next
  Listed = text
End Function

Sub SameNumbers(what, got, expected)
  Told what, AreClose(got, expected), Listed(got) & " instead of" & Listed(expected)
End Sub

Sub EndOfScript
  WScript.Echo "end of script: " & checksMade & " checks, " & checksFailed & " failed"
  If checksFailed > 0 Then WScript.Quit 1
End Sub
