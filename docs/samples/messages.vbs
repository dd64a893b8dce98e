' Fills the tokens of a text: "REP1", "REP2" and so on are the parameters, "ENT" is a line break.
Option Explicit

Dim utils, text, answer
Set utils = CreateObject("Quintara.Cls_Utils")

' GetMessage works on a copy.
text = "REP1 of REP2 components replaced"
WScript.Echo utils.GetMessage(text, Array(3, 12))
WScript.Echo text

' ShowMessage fills the caller's own text, so that it has no tokens left. 64 is a box with the information sign.
answer = utils.ShowMessage(text, 64, Array(4, 12))
WScript.Echo text
WScript.Echo "answer " & answer
