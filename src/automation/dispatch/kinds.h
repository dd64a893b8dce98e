#pragma once

#include "access/contracts/any_object.h"
#include "access/contracts/file_system.h"
#include "automation/dispatch/operation.h"

namespace quintara::automation {

template <>
struct Kind<AnyObject> : UsualKind {
  static constexpr std::string_view kName = "AnyObject";
  static constexpr bool kSharesIds = false;
  static constexpr bool kIsOpen = true;
  using Base = void;
  using Operations =
      std::tuple<Call<"Name", &AnyObject::Name>, Put<"Name", &AnyObject::SetName>, Call<"Parent", &AnyObject::Parent>,
                 Call<"GetItem", &AnyObject::GetItem>, Call<"Application", &AnyObject::Application>>;
};

template <>
struct Kind<FileSystemObject> : UsualKind {
  static constexpr std::string_view kName = "FileSystemObject";
  static constexpr std::string_view kTelltale = "GetExtensionName";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"FileExists", &FileSystemObject::FileExists>, Call<"DeleteFile", &FileSystemObject::DeleteFile>,
                 Call<"GetExtensionName", &FileSystemObject::GetExtensionName>,
                 Call<"FolderExists", &FileSystemObject::FolderExists>,
                 Call<"CreateFolder", &FileSystemObject::CreateFolder>>;
};

}  // namespace quintara::automation
