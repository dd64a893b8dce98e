' Shows how failures reach a script. Commands show them to the user, all but Cls_ReplaceByLatestLWT; a service that has
' no handler of its own hands them to its caller. A command fails where another one runs already.
Option Explicit

Dim session, utils
Set session = GetObject(, "Veldora.VdApplication").Engine.Sessions(0)
Set utils = CreateObject("Quintara.Cls_Utils")

Sub TryIt
  Dim isPart
  On Error Resume Next
  isPart = utils.IsCorrectClassID(session, "No Such Class", 1)
  If Err.Number <> 0 Then
    ' The number of a run-time error, the reason, and the class that it came from.
    WScript.Echo "failure " & Err.Number & " of " & Err.Source
    WScript.Echo "reason: " & Err.Description
    Err.Clear
  End If
End Sub
TryIt
WScript.Echo "The script goes on."
