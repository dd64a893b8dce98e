#include "automation/server/public_classes.h"
#include "automation/server/public_object.h"
#include "matrix/Cls_HashTable.h"
#include "matrix/Cls_Matrice.h"
#include "services/Cls_AdminSettings.h"
#include "services/Cls_Base64Class.h"
#include "services/Cls_Init.h"
#include "services/Cls_XML.h"

namespace quintara::automation {
namespace {

class Initialiser final : public PublicObject<"Cls_Init", ::_Cls_Init, Cls_Init> {
 public:
  HRESULT STDMETHODCALLTYPE Init(VARIANT_BOOL* Result) override { return Answer<&Cls_Init::Init>(Result); }
  HRESULT STDMETHODCALLTYPE InitAdminSettings(IDispatch** VdSession, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Init::InitAdminSettings>(Result, VdSession);
  }
  HRESULT STDMETHODCALLTYPE InitiateNLSVariable(short* Result) override {
    return Answer<&Cls_Init::InitiateNLSVariable>(Result);
  }
  HRESULT STDMETHODCALLTYPE NLSFilesExist(VARIANT_BOOL* Result) override {
    return Answer<&Cls_Init::NLSFilesExist>(Result);
  }
  HRESULT STDMETHODCALLTYPE InitXML(IDispatch** Session, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Init::InitXML>(Result, Session);
  }
  HRESULT STDMETHODCALLTYPE CloseXML(VARIANT_BOOL* Result) override { return Answer<&Cls_Init::CloseXML>(Result); }
  HRESULT STDMETHODCALLTYPE InitLang(VARIANT_BOOL* Result) override { return Answer<&Cls_Init::InitLang>(Result); }
  HRESULT STDMETHODCALLTYPE InitTrans(VARIANT_BOOL* Result) override { return Answer<&Cls_Init::InitTrans>(Result); }
};

// The id that stands for all users.
constexpr LONG kEveryone = -1;

class AdminSettings final : public PublicObject<"Cls_AdminSettings", ::_Cls_AdminSettings, Cls_AdminSettings> {
 public:
  HRESULT STDMETHODCALLTYPE InitSettings(IDispatch** VdSession, VARIANT_BOOL* Result) override {
    return Answer<&Cls_AdminSettings::InitSettings>(Result, VdSession);
  }
  HRESULT STDMETHODCALLTYPE SetSettingValues(IDispatch** VdSession, BSTR* SectionName, BSTR* Subject,
                                             VARIANT_BOOL* Admin, LONG* UserId, IDispatch** Values,
                                             VARIANT_BOOL* Result) override {
    return Answer<&Cls_AdminSettings::SetSettingValues>(Result, VdSession, SectionName, Subject, Admin, UserId, Values);
  }
  HRESULT STDMETHODCALLTYPE GetSettingValues(IDispatch** VdSession, BSTR* SectionName, BSTR* Subject,
                                             VARIANT_BOOL* Admin, LONG* UserId, IDispatch** Result) override {
    return Answer<&Cls_AdminSettings::GetSettingValues>(Result, VdSession, SectionName, Subject, Admin,
                                                        UserId ? UserId : &kEveryone);
  }
  HRESULT STDMETHODCALLTYPE GetSettingSection(IDispatch** VdSession, BSTR* SectionName, VARIANT_BOOL* Admin,
                                              LONG* UserId, IDispatch** Result) override {
    return Answer<&Cls_AdminSettings::GetSettingSection>(Result, VdSession, SectionName, Admin,
                                                         UserId ? UserId : &kEveryone);
  }
};

class Xml final : public PublicObject<"Cls_XML", ::_Cls_XML, Cls_XML> {
 public:
  HRESULT STDMETHODCALLTYPE Init(IDispatch** Session) override { return Do<&Cls_XML::Init>(Session); }
  HRESULT STDMETHODCALLTYPE InitTranslator() override { return Do<&Cls_XML::InitTranslator>(); }
  HRESULT STDMETHODCALLTYPE InitLanguage() override { return Do<&Cls_XML::InitLanguage>(); }
  HRESULT STDMETHODCALLTYPE GetConfigParam(BSTR* Uri, BSTR* Key, BSTR* Result) override {
    return Answer<&Cls_XML::GetConfigParam>(Result, Uri, Key);
  }
  HRESULT STDMETHODCALLTYPE GetConfigParamNLS(BSTR* NameSpace, BSTR* AppendixID, BSTR* Key, BSTR* Result) override {
    return Answer<&Cls_XML::GetConfigParamNLS>(Result, NameSpace, AppendixID, Key);
  }
  HRESULT STDMETHODCALLTYPE IsNLSValid(BSTR* NameSpace, BSTR* Appendix, VARIANT_BOOL* Result) override {
    return Answer<&Cls_XML::IsNLSValid>(Result, NameSpace, Appendix);
  }
};

class Base64Class final : public PublicObject<"Cls_Base64Class", ::_Cls_Base64Class, Cls_Base64Class> {
 public:
  HRESULT STDMETHODCALLTYPE EncodeString(BSTR* Text, BSTR* Result) override {
    return Answer<&Cls_Base64Class::EncodeString>(Result, Text);
  }
  HRESULT STDMETHODCALLTYPE EncodeByteArray(SAFEARRAY** Data, BSTR* Result) override {
    return Answer<&Cls_Base64Class::EncodeByteArray>(Result, Data);
  }
  HRESULT STDMETHODCALLTYPE DecodeToString(BSTR* EncodedText, BSTR* Result) override {
    return Answer<&Cls_Base64Class::DecodeToString>(Result, EncodedText);
  }
  HRESULT STDMETHODCALLTYPE DecodeToByteArray(BSTR* EncodedText, SAFEARRAY** Result) override {
    return Answer<&Cls_Base64Class::DecodeToByteArray>(Result, EncodedText);
  }
};

class Matrice final : public PublicObject<"Cls_Matrice", ::_Cls_Matrice, Cls_Matrice> {
 public:
  HRESULT STDMETHODCALLTYPE CreateXMLFile(IDispatch** RootProduct, BSTR* XMLFullPath, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Matrice::CreateXMLFile>(Result, RootProduct, XMLFullPath);
  }
  HRESULT STDMETHODCALLTYPE MergeXMLMatrix(IDispatch** RootProduct, BSTR* XMLFullPath, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Matrice::MergeXMLMatrix>(Result, RootProduct, XMLFullPath);
  }
  HRESULT STDMETHODCALLTYPE ProcessXMLFile(IDispatch** RootProduct, BSTR* XMLFullPath, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Matrice::ProcessXMLFile>(Result, RootProduct, XMLFullPath);
  }
  HRESULT STDMETHODCALLTYPE PositionAllInstances(IDispatch** RootProduct, BSTR* XMLFullPath,
                                                 VARIANT_BOOL* AllInstancesChecked, IDispatch** MySelection,
                                                 VARIANT_BOOL* Result) override {
    return Answer<&Cls_Matrice::PositionAllInstances>(Result, RootProduct, XMLFullPath, AllInstancesChecked,
                                                      MySelection);
  }
};

class HashTable final : public PublicObject<"Cls_HashTable", ::_Cls_HashTable, Cls_HashTable> {
 public:
  HRESULT STDMETHODCALLTYPE RenameDoublesWithHashTable(SAFEARRAY** Array_PN_IN_Couple, LONG* ArrayIndex,
                                                       IDispatch** AppExcel, VARIANT_BOOL* Result) override {
    return Answer<&Cls_HashTable::RenameDoublesWithHashTable>(Result, Array_PN_IN_Couple, ArrayIndex, AppExcel);
  }
};

}  // namespace

void AddServiceClasses(std::vector<PublicClass>& all) {
  all.push_back(ClassOf<Initialiser, ::Cls_Init, ::_Cls_Init>(L"Cls_Init"));
  all.push_back(ClassOf<AdminSettings, ::Cls_AdminSettings, ::_Cls_AdminSettings>(L"Cls_AdminSettings"));
  all.push_back(ClassOf<Xml, ::Cls_XML, ::_Cls_XML>(L"Cls_XML"));
  all.push_back(ClassOf<Base64Class, ::Cls_Base64Class, ::_Cls_Base64Class>(L"Cls_Base64Class"));
  all.push_back(ClassOf<Matrice, ::Cls_Matrice, ::_Cls_Matrice>(L"Cls_Matrice"));
  all.push_back(ClassOf<HashTable, ::Cls_HashTable, ::_Cls_HashTable>(L"Cls_HashTable"));
}

}  // namespace quintara::automation
