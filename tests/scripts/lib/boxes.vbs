' The message boxes that the script's process showed, in their order, as the driver beside it has noted them.

Dim boxesSeen
boxesSeen = 0

Function LinesOf(path)
  Dim stream
  LinesOf = Array()
  If Not files.FileExists(path) Then Exit Function
  If files.GetFile(path).Size = 0 Then Exit Function
  Set stream = files.OpenTextFile(path, 1)
  LinesOf = Split(stream.ReadAll, vbLf)
  stream.Close
End Function

' The box after those that were looked at: its title in quotes, its style, and its text in quotes.
Function BoxAfter(seen)
  Dim lines
  lines = LinesOf(Given("BOX_LOG"))
  BoxAfter = ""
  If UBound(lines) >= seen Then BoxAfter = lines(seen)
End Function

Function Quoted(text)
  Quoted = Replace(Replace(text, "\", "\\"), """", "\""")
  Quoted = """" & Replace(Replace(Quoted, vbCrLf, "\n"), vbCr, "") & """"
End Function

Sub BoxTitled(what, title, text, style)
  Dim expected, got
  got = BoxAfter(boxesSeen)
  boxesSeen = boxesSeen + 1
  expected = Quoted(title) & " " & style & " " & Quoted(text)
  Told what, got = expected, "[" & got & "] instead of [" & expected & "]"
End Sub

Sub BoxShown(what, text, style)
  BoxTitled what, "Quintara", text, style
End Sub

Sub NoBox(what)
  Dim got
  got = BoxAfter(boxesSeen)
  Told what, got = "", got
  If got <> "" Then boxesSeen = boxesSeen + 1
End Sub

' The button that the next box gets; without it OK, or Yes.
Sub NextAnswer(button)
  Dim answers
  Set answers = files.CreateTextFile(Given("BOX_ANSWERS"), True)
  answers.Write LCase(button)
  answers.Close
End Sub

' A text of the catalogue with its parameters.
Function CatalogueText(key, parameters)
  Dim line, at, i
  For Each line In LinesOf(Given("NLS_FOLDER") & "\EN\Custom\Errors\norvik.solutions.NLS.Errors.QNTR\1.0\NLS.xml")
    at = InStr(line, "Key=""" & key & """>")
    If at > 0 Then
      line = Mid(line, at + Len(key) + 7)
      CatalogueText = Left(line, InStr(line, "</Text>") - 1)
    End If
  Next
  For i = 0 To UBound(parameters)
    CatalogueText = Replace(CatalogueText, "REP" & (i + 1), parameters(i))
  Next
  CatalogueText = Replace(CatalogueText, "ENT", vbCrLf)
End Function

' A box whose text isn't Quintara's own throughout.
Sub NextBoxHolds(what, piece)
  Dim got
  got = BoxAfter(boxesSeen)
  boxesSeen = boxesSeen + 1
  Told what, InStr(got, piece) > 0, "[" & got & "] without [" & piece & "]"
End Sub
