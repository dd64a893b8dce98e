' Lets the user replace light components of the active work in progress by their latest revisions.
Option Explicit

' The dialog opens in Run. This command hands failures on, so that they have to be caught.
On Error Resume Next
CreateObject("Quintara.Cls_ReplaceByLatestLWT").Run
If Err.Number = 0 Then
  WScript.Echo "The dialog was closed."
Else
  WScript.Echo "failure " & Err.Number & " of " & Err.Source & ": " & Err.Description
End If
