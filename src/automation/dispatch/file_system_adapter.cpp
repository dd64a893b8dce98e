#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class FileSystemObjectAdapter final : public LateBound<FileSystemObject> {
 public:
  using LateBound::LateBound;

  bool FileExists(const std::string& path) override { return Ask<&FileSystemObject::FileExists>(path); }
  void DeleteFile(const std::string& path, bool force) override { Ask<&FileSystemObject::DeleteFile>(path, force); }
  std::string GetExtensionName(const std::string& path) override {
    return Ask<&FileSystemObject::GetExtensionName>(path);
  }
  bool FolderExists(const std::string& path) override { return Ask<&FileSystemObject::FolderExists>(path); }
  void CreateFolder(const std::string& path) override { Ask<&FileSystemObject::CreateFolder>(path); }
};

}  // namespace

template <>
Ref<FileSystemObject> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<FileSystemObjectAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
