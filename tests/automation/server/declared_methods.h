#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quintara::test {

/// A public class with its methods as scripts see them. All arguments go by reference: In is never written, InOut is
/// read and written back, Out is a result whose value on entry isn't used.
struct DeclaredClass {
  std::string name;
  std::vector<std::string> methods;
};

inline const std::vector<DeclaredClass> kDeclaredClasses = {
    {"Cls_Application",
     {
         "Run(In FirstRec As Object)",
     }},
    {"Cls_GetMatrix",
     {
         "Run(In Operation As String, In ZORVAProduct As Object, Optional In CalledFromGlobalRefresh As Boolean)",
     }},
    {"Cls_RetrieveMatrix",
     {
         "Run()",
         "Positionner(In CurrentWorkSheet As Object, In ligne_fils As Integer, In colonne_fils As Integer)",
         "recherche_Ligne_produit_Pere(In CurrentWorkSheet As Object, InOut ligne_fils As Integer, In colonne_fils As "
         "Integer) As Integer",
         "Operation_Matrice(In MatriceFils As Variant(), In MatricePere As Variant())",
     }},
    {"Cls_AllInstances",
     {
         "Run()",
         "getLineColumn(In CurrentWorkSheet As Object, In PartNumber As String, In InstanceName As String, InOut "
         "startLine As Integer) As Boolean",
         "Positionner(In CurrentWorkSheet As Object, In ligne_fils As Integer, In colonne_fils As Integer)",
         "recherche_Ligne_produit_Pere(In CurrentWorkSheet As Object, InOut ligne_fils As Integer, In colonne_fils As "
         "Integer) As Integer",
         "Operation_Matrice(In MatriceFils As Variant(), In MatricePere As Variant())",
     }},
    {"Cls_SwitchToLWT",
     {
         "Run()",
     }},
    {"Cls_SwitchToProduct",
     {
         "Run()",
     }},
    {"Cls_ReplaceByLatestLWT",
     {
         "Run()",
     }},
    {"Cls_InsertLWT",
     {
         "Run(In VaultObject As Object, In Mode As String)",
     }},
    {"Cls_InsertFromVD",
     {
         "Run(In VeldoraObject As Object)",
     }},
    {"Cls_GlobalRefreshVD",
     {
         "Run(In FirstRec As Object)",
     }},
    {"Cls_Init",
     {
         "Init() As Boolean",
         "InitAdminSettings(In VdSession As Object) As Boolean",
         "InitiateNLSVariable() As Integer",
         "NLSFilesExist() As Boolean",
         "InitXML(In Session As Object) As Boolean",
         "CloseXML() As Boolean",
         "InitLang() As Boolean",
         "InitTrans() As Boolean",
     }},
    {"Cls_AdminSettings",
     {
         "InitSettings(In VdSession As Object) As Boolean",
         "SetSettingValues(In VdSession As Object, In SectionName As String, In Subject As String, In Admin As "
         "Boolean, In UserId As Long, In Values As Object) As Boolean",
         "GetSettingValues(In VdSession As Object, In SectionName As String, In Subject As String, In Admin As "
         "Boolean, Optional In UserId As Long) As Object",
         "GetSettingSection(In VdSession As Object, In SectionName As String, In Admin As Boolean, Optional In UserId "
         "As Long) As Object",
     }},
    {"Cls_XML",
     {
         "Init(In Session As Object)",
         "InitTranslator()",
         "InitLanguage()",
         "GetConfigParam(In Uri As String, In Key As String) As String",
         "GetConfigParamNLS(In NameSpace As String, In AppendixID As String, In Key As String) As String",
         "IsNLSValid(In NameSpace As String, In Appendix As String) As Boolean",
     }},
    {"Cls_Base64Class",
     {
         "EncodeString(In Text As String) As String",
         "EncodeByteArray(In Data As Byte()) As String",
         "DecodeToString(In EncodedText As String) As String",
         "DecodeToByteArray(In EncodedText As String) As Byte()",
     }},
    {"Cls_Matrice",
     {
         "CreateXMLFile(In RootProduct As Object, In XMLFullPath As String) As Boolean",
         "MergeXMLMatrix(In RootProduct As Object, In XMLFullPath As String) As Boolean",
         "ProcessXMLFile(In RootProduct As Object, In XMLFullPath As String) As Boolean",
         "PositionAllInstances(In RootProduct As Object, In XMLFullPath As String, In AllInstancesChecked As Boolean, "
         "In MySelection As Object) As Boolean",
     }},
    {"Cls_HashTable",
     {
         "RenameDoublesWithHashTable(In Array_PN_IN_Couple As PN_IN_Couple(), In ArrayIndex As Long, In AppExcel As "
         "Object) As Boolean",
     }},
    {"Cls_Utils",
     {
         "IsInDesignMode(In ZVAProduct As Object) As Boolean",
         "GetThePartNumber(In ZVAProduct As Object) As String",
         "IsCorrectClassID(In Session As Object, In Settings As String, In ClassID As Integer) As Boolean",
         "IsTheRoot(In Session As Object, In ZORVAProduct As Object, In Behavior As Object) As Boolean",
         "IndiceClasse(In Session As Object, In NomClasse As String) As Integer",
         "IndiceFileType(In Session As Object, In NomType As String) As Integer",
         "RetrieveVDObject_FromLWT(In Session As Object, In ZVAProduct As Object) As Object",
         "RetrieveVDObject(In CurrentSession As Object, In ZORVAObject As Object, Optional In DisplayError As Boolean) "
         "As Object",
         "GetIdSequence(In Session As Object, In ClassName As String, In AttributID As String) As String",
         "WriteStringProperty(In ZORVAObject As Object, In PropertyName As String, In PropertyValue As String) As "
         "Boolean",
         "ReadStringProperty(In ZORVAObject As Object, In PropertyName As String, Optional In ReturnType As String) As "
         "String",
         "TestWIP(In ZORVAObject As Object) As Boolean",
         "CheckClassName(In VdSession As Object, In ClassName As String) As Boolean",
         "IsAWIP() As Boolean",
         "GetDocumentMatrixFromObject(In Session As Object, In ZORVAProduct As Object, In Behavior As Object, In "
         "TypeOfMatrix As MatrixType) As Object",
         "GetDocumentFromID(In Session As Object, In ClassID As Integer, In ObjectID As Long) As Object",
         "CopyMatrixFromDocument(In Session As Object, In DocExcel As Object, In TypeOfMatrix As MatrixType) As "
         "Integer",
         "GetLinkedDocs(In Session As Object, In ZVAProduct As Object, In TypeOfMatrix As MatrixType) As Object",
         "ChooseMatrix(In Session As Object, In DocExcel As Object) As Object",
         "IsMatrixAlreadyExist(In oZORVARoot As Object, In oVDRoot As Object, Out bMatrixExists As Boolean, Out "
         "bMatrixToUpdate As Boolean, Out oMatrix As Object, In TypeOfMatrix As MatrixType, Optional In ForceYes As "
         "Boolean) As Boolean",
         "IsMatrixAlreadyExistAsInformation(In oZORVARoot As Object, In oVDRoot As Object, In TypeOfMatrix As "
         "MatrixType) As Boolean",
         "LifeCycleOperation(In VdSession As Object, In VdObject As Object, In OperationName As String, Optional In "
         "InvokeScripts As Boolean) As Boolean",
         "CheckInObject(In oVdSession As Object, In Object As Object)",
         "ReleaseObject(In oVdSession As Object, In Object As Object)",
         "PopulateObjectMasks(In oVdSession As Object, In objVdObject As Object)",
         "LastVersion(In Object As Object) As Object",
         "AcceptGlobalRefresh(In WorkObjects As Object) As Boolean",
         "GetAllChildren(In VdSession As Object, In VdObject As Object, Out VdAllChildren As Object, Optional In "
         "VdBehavior As Object, Optional In AttributeNames As String) As Boolean",
         "GetTheRootName(In DocumentObject As Object) As String",
         "RetrieveAllObjectsLinked(In Session As Object, In VDObject As Object, In LinkedObjectsClassName As String, "
         "In LinkClassName As String, Out ObjectsLinked As Object) As Boolean",
         "RemoveLogicalLink(In Session As Object, In VDObject1 As Object, In VDObject2 As Object, In LinkName As "
         "String) As Boolean",
         "CopyVeldoraObjectToWork(In oVdObject As Object) As String",
         "CopyVeldoraObjectLWTToWork(In oVdObject As Object, In fs As Object) As String",
         "CopyVeldoraObjectToWorkAndGetLWT(In CurrentSession As Object, In oVdObject As Object, In fs As Object) As "
         "String",
         "CopyVeldoraObjectLWTToWork_Temp(In oVdObject As Object, In sTemp As String, In fs As Object) As String",
         "BuildFullName(In ZORVAObject As Object, In ZORVARoot As Object) As String",
         "StripFileExtension(In FileName As String) As String",
         "GetFileExtension(In FileName As String) As String",
         "ExecuteZorvaScript(In ModuleName As String, In ProcedureName As String) As Boolean",
         "HasActiveDocument(In CurrentZorvaApplication As Object) As Boolean",
         "ShowMessage(InOut Message As String, In MessageType As Long, In Parameter As Variant()) As Variant",
         "GetMessage(In Message As String, In Parameter As Variant()) As String",
         "GetError(In FunctionName As String, In error As Object)",
     }},
};

}  // namespace quintara::test
