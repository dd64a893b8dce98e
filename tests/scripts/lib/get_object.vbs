
' The script host of Wine has no GetObject; here is one for running objects.
Function GetObject(path, name)
  Set GetObject = CreateObject("QuintaraTest.RunningObjects").Find(name)
End Function
