#include "automation/server/public_classes.h"
#include "automation/server/public_object.h"
#include "commands/Cls_GlobalRefreshVD.h"
#include "commands/Cls_InsertFromVD.h"
#include "commands/Cls_InsertLWT.h"
#include "commands/Cls_ReplaceByLatestLWT.h"
#include "commands/Cls_SwitchToLWT.h"
#include "commands/Cls_SwitchToProduct.h"
#include "matrix/Cls_GetMatrix.h"
#include "positioning/Cls_AllInstances.h"
#include "positioning/Cls_RetrieveMatrix.h"
#include "wip/Cls_Application.h"

namespace quintara::automation {
namespace {

/// The commands that take nothing.
template <Literal ClassName, class Interface, class Logic>
class PlainCommand final : public PublicObject<ClassName, Interface, Logic> {
 public:
  HRESULT STDMETHODCALLTYPE Run() override { return this->template Command<&Logic::Run>(); }
};

/// Those that take an object of the vault or records of it.
template <Literal ClassName, class Interface, class Logic>
class VaultCommand final : public PublicObject<ClassName, Interface, Logic> {
 public:
  HRESULT STDMETHODCALLTYPE Run(IDispatch** given) override { return this->template Command<&Logic::Run>(given); }
};

using Application = VaultCommand<"Cls_Application", ::_Cls_Application, Cls_Application>;
using GlobalRefreshVD = VaultCommand<"Cls_GlobalRefreshVD", ::_Cls_GlobalRefreshVD, Cls_GlobalRefreshVD>;
using InsertFromVD = VaultCommand<"Cls_InsertFromVD", ::_Cls_InsertFromVD, Cls_InsertFromVD>;
using ReplaceByLatestLWT = PlainCommand<"Cls_ReplaceByLatestLWT", ::_Cls_ReplaceByLatestLWT, Cls_ReplaceByLatestLWT>;
using SwitchToLWT = PlainCommand<"Cls_SwitchToLWT", ::_Cls_SwitchToLWT, Cls_SwitchToLWT>;
using SwitchToProduct = PlainCommand<"Cls_SwitchToProduct", ::_Cls_SwitchToProduct, Cls_SwitchToProduct>;

class GetMatrix final : public PublicObject<"Cls_GetMatrix", ::_Cls_GetMatrix, Cls_GetMatrix> {
 public:
  HRESULT STDMETHODCALLTYPE Run(BSTR* Operation, IDispatch** ZORVAProduct,
                                VARIANT_BOOL* CalledFromGlobalRefresh) override {
    return Command<&Cls_GetMatrix::Run>(Operation, ZORVAProduct, CalledFromGlobalRefresh);
  }
};

class InsertLWT final : public PublicObject<"Cls_InsertLWT", ::_Cls_InsertLWT, Cls_InsertLWT> {
 public:
  HRESULT STDMETHODCALLTYPE Run(IDispatch** VaultObject, BSTR* Mode) override {
    return Command<&Cls_InsertLWT::Run>(VaultObject, Mode);
  }
};

/// What both positioning commands offer.
template <Literal ClassName, class Interface, class Logic>
class PositioningCommand : public PublicObject<ClassName, Interface, Logic> {
 public:
  HRESULT STDMETHODCALLTYPE Run() override { return this->template Command<&Logic::Run>(); }
  HRESULT STDMETHODCALLTYPE Positionner(IDispatch** CurrentWorkSheet, short* ligne_fils, short* colonne_fils) override {
    return this->template Do<&Logic::Positionner>(CurrentWorkSheet, ligne_fils, colonne_fils);
  }
  HRESULT STDMETHODCALLTYPE recherche_Ligne_produit_Pere(IDispatch** CurrentWorkSheet, short* ligne_fils,
                                                         short* colonne_fils, short* Result) override {
    return this->template Answer<&Logic::recherche_Ligne_produit_Pere>(Result, CurrentWorkSheet, ligne_fils,
                                                                       colonne_fils);
  }
  HRESULT STDMETHODCALLTYPE Operation_Matrice(SAFEARRAY** MatriceFils, SAFEARRAY** MatricePere) override {
    return this->template Do<&Logic::Operation_Matrice>(MatriceFils, MatricePere);
  }
};

class RetrieveMatrix final
    : public PositioningCommand<"Cls_RetrieveMatrix", ::_Cls_RetrieveMatrix, Cls_RetrieveMatrix> {};

class AllInstances final : public PositioningCommand<"Cls_AllInstances", ::_Cls_AllInstances, Cls_AllInstances> {
 public:
  HRESULT STDMETHODCALLTYPE getLineColumn(IDispatch** CurrentWorkSheet, BSTR* PartNumber, BSTR* InstanceName,
                                          short* startLine, VARIANT_BOOL* Result) override {
    return Answer<&Cls_AllInstances::getLineColumn>(Result, CurrentWorkSheet, PartNumber, InstanceName, startLine);
  }
};

}  // namespace

void AddCommandClasses(std::vector<PublicClass>& all) {
  all.push_back(ClassOf<Application, ::Cls_Application, ::_Cls_Application>(L"Cls_Application"));
  all.push_back(ClassOf<GetMatrix, ::Cls_GetMatrix, ::_Cls_GetMatrix>(L"Cls_GetMatrix"));
  all.push_back(ClassOf<RetrieveMatrix, ::Cls_RetrieveMatrix, ::_Cls_RetrieveMatrix>(L"Cls_RetrieveMatrix"));
  all.push_back(ClassOf<AllInstances, ::Cls_AllInstances, ::_Cls_AllInstances>(L"Cls_AllInstances"));
  all.push_back(ClassOf<SwitchToLWT, ::Cls_SwitchToLWT, ::_Cls_SwitchToLWT>(L"Cls_SwitchToLWT"));
  all.push_back(ClassOf<SwitchToProduct, ::Cls_SwitchToProduct, ::_Cls_SwitchToProduct>(L"Cls_SwitchToProduct"));
  all.push_back(
      ClassOf<ReplaceByLatestLWT, ::Cls_ReplaceByLatestLWT, ::_Cls_ReplaceByLatestLWT>(L"Cls_ReplaceByLatestLWT"));
  all.push_back(ClassOf<InsertLWT, ::Cls_InsertLWT, ::_Cls_InsertLWT>(L"Cls_InsertLWT"));
  all.push_back(ClassOf<InsertFromVD, ::Cls_InsertFromVD, ::_Cls_InsertFromVD>(L"Cls_InsertFromVD"));
  all.push_back(ClassOf<GlobalRefreshVD, ::Cls_GlobalRefreshVD, ::_Cls_GlobalRefreshVD>(L"Cls_GlobalRefreshVD"));
}

}  // namespace quintara::automation
