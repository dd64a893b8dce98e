#pragma once

#include "access/contracts/hix_engine.h"
#include "access/contracts/veldora.h"
#include "automation/dispatch/kinds.h"

namespace quintara::automation {

template <>
struct Kind<veldora::VdDatabase> : UsualKind {
  static constexpr std::string_view kName = "VdDatabase";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"ConnectionString", &veldora::VdDatabase::ConnectionString>,
                 Call<"ConnectionPassword", &veldora::VdDatabase::ConnectionPassword>,
                 Call<"Alias", &veldora::VdDatabase::Alias>, Call<"DatabaseType", &veldora::VdDatabase::DatabaseType>>;
};

template <>
struct Kind<veldora::VdUserInfo> : UsualKind {
  static constexpr std::string_view kName = "VdUserInfo";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Login", &veldora::VdUserInfo::Login>, Call<"Password", &veldora::VdUserInfo::Password>,
                 Call<"UserId", &veldora::VdUserInfo::UserId>>;
};

template <>
struct Kind<veldora::VdConfig> : UsualKind {
  static constexpr std::string_view kName = "VdConfig";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"BaseDirectory", &veldora::VdConfig::BaseDirectory>, Call<"Value", &veldora::VdConfig::Value>,
                 Call<"SetValue", &veldora::VdConfig::SetValue>>;
};

template <>
struct Kind<veldora::VdAuthorizations> : UsualKind {
  static constexpr std::string_view kName = "VdAuthorizations";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"IsAllowed", &veldora::VdAuthorizations::IsAllowed>>;
};

template <>
struct Kind<veldora::VdSession> : UsualKind {
  static constexpr std::string_view kName = "VdSession";
  static constexpr std::string_view kTelltale = "UserLogin";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"OpenDatabaseConnection", &veldora::VdSession::OpenDatabaseConnection>,
                 Call<"UserMetaInfo", &veldora::VdSession::UserMetaInfo>,
                 Call<"UserLogin", &veldora::VdSession::UserLogin>, Call<"UserLogoff", &veldora::VdSession::UserLogoff>,
                 Call<"Database", &veldora::VdSession::Database>, Call<"MetaInfo", &veldora::VdSession::MetaInfo>,
                 Call<"Config", &veldora::VdSession::Config>, Call<"ObjectStore", &veldora::VdSession::ObjectStore>,
                 Call<"Language", &veldora::VdSession::Language>, Call<"GetService", &veldora::VdSession::GetService>,
                 Call<"Authorizations", &veldora::VdSession::Authorizations>,
                 Call<"ApplicationName", &veldora::VdSession::ApplicationName>,
                 Call<"ClientName", &veldora::VdSession::ClientName>>;
};

template <>
struct Kind<veldora::VdEngine> : UsualKind {
  static constexpr std::string_view kName = "VdEngine";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Sessions", &veldora::VdEngine::Sessions>, Call<"Databases", &veldora::VdEngine::Databases>>;
};

template <>
struct Kind<veldora::VdApplication> : UsualKind {
  static constexpr std::string_view kName = "VdApplication";
  static constexpr std::string_view kTelltale = "NewRecList";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Engine", &veldora::VdApplication::Engine>,
                                Call<"NewRecList", &veldora::VdApplication::NewRecList>>;
};

template <>
struct Kind<veldora::VdSessionUtil> : UsualKind {
  static constexpr std::string_view kName = "VdSessionUtil";
  static constexpr std::string_view kTelltale = "CopyVaultFile";
  using Base = AnyObject;
  using Operations = std::tuple<
      Call<"CanPerform", &veldora::VdSessionUtil::CanPerform>, Call<"CheckOut", &veldora::VdSessionUtil::CheckOut>,
      Call<"CheckIn", &veldora::VdSessionUtil::CheckIn>, Call<"Release", &veldora::VdSessionUtil::Release>,
      Call<"NewRelease", &veldora::VdSessionUtil::NewRelease>, Call<"Obsolete", &veldora::VdSessionUtil::Obsolete>,
      Call<"RunOperation", &veldora::VdSessionUtil::RunOperation>,
      Call<"CopyVaultFile", &veldora::VdSessionUtil::CopyVaultFile>,
      Call<"CopyDocumentFile", &veldora::VdSessionUtil::CopyDocumentFile>>;
};

template <>
struct Kind<veldora::VdClientPaths> : UsualKind {
  static constexpr std::string_view kName = "VdClientPaths";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"CurrentKey", &veldora::VdClientPaths::CurrentKey>,
                                Call<"WorkDirectoryOf", &veldora::VdClientPaths::WorkDirectoryOf>>;
};

template <>
struct Kind<veldora::VdServiceContext> : UsualKind {
  static constexpr std::string_view kName = "VdServiceContext";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Paths", &veldora::VdServiceContext::Paths>>;
};

template <>
struct Kind<veldora::VdClientContextService> : UsualKind {
  static constexpr std::string_view kName = "VdClientContextService";
  static constexpr std::string_view kTelltale = "Context";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Context", &veldora::VdClientContextService::Context>>;
};

template <>
struct Kind<veldora::VdDialogInput> : UsualKind {
  static constexpr std::string_view kName = "VdDialogInput";
  using Base = AnyObject;
  using Operations = std::tuple<Put<"Objects", &veldora::VdDialogInput::SetObjects>>;
};

template <>
struct Kind<veldora::VdDialogOutput> : UsualKind {
  static constexpr std::string_view kName = "VdDialogOutput";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Objects", &veldora::VdDialogOutput::Objects>>;
};

template <>
struct Kind<veldora::VdDialogWindow> : UsualKind {
  static constexpr std::string_view kName = "VdDialogWindow";
  using Base = AnyObject;
  using Operations =
      std::tuple<Put<"Title", &veldora::VdDialogWindow::SetTitle>,
                 Put<"WindowOptionA", &veldora::VdDialogWindow::SetWindowOptionA>,
                 Put<"WindowOptionB", &veldora::VdDialogWindow::SetWindowOptionB>,
                 Call<"Show", &veldora::VdDialogWindow::Show>, Call<"Result", &veldora::VdDialogWindow::Result>>;
};

template <>
struct Kind<veldora::VdDialog> : UsualKind {
  static constexpr std::string_view kName = "VdDialog";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Input", &veldora::VdDialog::Input>, Call<"Output", &veldora::VdDialog::Output>,
                                Call<"Window", &veldora::VdDialog::Window>>;
};

template <>
struct Kind<veldora::VdDialogs> : UsualKind {
  static constexpr std::string_view kName = "VdDialogs";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"New", &veldora::VdDialogs::New>>;
};

template <>
struct Kind<veldora::VdCommonGUI> : UsualKind {
  static constexpr std::string_view kName = "VdCommonGUI";
  static constexpr std::string_view kTelltale = "Dialogs";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Dialogs", &veldora::VdCommonGUI::Dialogs>>;
};

template <>
struct Kind<veldora::VdGUIServices> : UsualKind {
  static constexpr std::string_view kName = "VdGUIServices";
  static constexpr std::string_view kTelltale = "New";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"New", &veldora::VdGUIServices::New>>;
};

template <>
struct Kind<veldora::VdConfigProvider> : UsualKind {
  static constexpr std::string_view kName = "VdConfigProvider";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Value", &veldora::VdConfigProvider::Value>>;
};

template <>
struct Kind<veldora::VdClientContext> : UsualKind {
  static constexpr std::string_view kName = "VdClientContext";
  static constexpr std::string_view kTelltale = "Open";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Open", &veldora::VdClientContext::Open>>;
};

template <>
struct Kind<veldora::VdTranslator> : UsualKind {
  static constexpr std::string_view kName = "VdTranslator";
  static constexpr std::string_view kTelltale = "Translate";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"SetLanguage", &veldora::VdTranslator::SetLanguage>,
                                Call<"Translate", &veldora::VdTranslator::Translate>>;
};

template <>
struct Kind<veldora::HIXDocument> : UsualKind {
  static constexpr std::string_view kName = "HIXDocument";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Document", &veldora::HIXDocument::Document>>;
};

template <>
struct Kind<veldora::HIXEngine> : UsualKind {
  static constexpr std::string_view kName = "HIXEngine";
  static constexpr std::string_view kTelltale = "CommitStep1";
  using Base = AnyObject;
  using Operations = std::tuple<
      Call<"IsConnected", &veldora::HIXEngine::IsConnected>, Call<"Connect", &veldora::HIXEngine::Connect>,
      Call<"Disconnect", &veldora::HIXEngine::Disconnect>, Call<"DocumentInfo", &veldora::HIXEngine::DocumentInfo>,
      Call<"DocumentClassId", &veldora::HIXEngine::DocumentClassId>,
      Call<"DocumentObjectId", &veldora::HIXEngine::DocumentObjectId>,
      Call<"DocumentHandle", &veldora::HIXEngine::DocumentHandle>,
      Call<"DocumentHandleOf", &veldora::HIXEngine::DocumentHandleOf>,
      Call<"CheckOutDocument", &veldora::HIXEngine::CheckOutDocument>,
      Call<"CommitStep1", &veldora::HIXEngine::CommitStep1>, Call<"CommitStep2", &veldora::HIXEngine::CommitStep2>>;
};

}  // namespace quintara::automation
