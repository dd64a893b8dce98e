' Turns a text into Base64 and back.
Option Explicit

Dim codec, encoded, decoded
Set codec = CreateObject("Quintara.Cls_Base64Class")

' The encoded text carries one zero byte behind the characters, which comes back as a character.
encoded = codec.EncodeString("Quintara")
WScript.Echo encoded
decoded = codec.DecodeToString(encoded)
WScript.Echo Left(decoded, Len(decoded) - 1)

' Bytes of a script are an array of variants; bytes that come back are an array of bytes.
WScript.Echo codec.EncodeByteArray(Array(CByte(1), CByte(2), CByte(255)))
WScript.Echo codec.EncodeByteArray(codec.DecodeToByteArray("AQL/"))
