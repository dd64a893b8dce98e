' Lists all that a product of the vault holds.
'
'   cscript //nologo list_structure.vbs PART_NUMBER
Option Explicit

Dim session, product, start, utils, children, i
Set session = GetObject(, "Veldora.VdApplication").Engine.Sessions(0)
Set product = GetObject(, "QuintaraHosts.Control").FindObject(WScript.Arguments(0))

' Most methods of Cls_Utils count on a session. It lasts as long as the object that has started it.
Set start = CreateObject("Quintara.Cls_Init")
If Not start.Init Then WScript.Quit 1

' The list comes back in the argument, breadth first; an object stands in it as often as it is held. The attributes
' are read for all of them in one step.
Set utils = CreateObject("Quintara.Cls_Utils")
If Not utils.GetAllChildren(session, product, children, Nothing, "NM_CN_PART_NUMBER,REVISION,STATE") Then WScript.Quit 1
For i = 0 To children.Count - 1
  With children.Item(i).Record
    WScript.Echo .ValueAsString("NM_CN_PART_NUMBER") & " " & .ValueAsString("REVISION") & ", state " & .ValueAsInteger("STATE")
  End With
Next
WScript.Echo children.Count & " components"
