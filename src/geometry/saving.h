#pragma once

#include <functional>
#include <string>

namespace quintara {

/// Lets `write` make a new file, in a folder of its own beside `path`, and puts it at `path` when it
/// is complete. Whatever fails before leaves the old file as it was and nothing behind.
void SaveBeside(const std::string& path, const std::function<void(const std::string& newPath)>& write);

/// A file of no name, which is gone with its last user, whatever becomes of the processes.
class NamelessFile {
 public:
  NamelessFile();
  ~NamelessFile();
  NamelessFile(const NamelessFile&) = delete;
  NamelessFile& operator=(const NamelessFile&) = delete;

  /// A path under which this process and those that it forks can open it.
  std::string Path() const;

 private:
  int file_;
};

}  // namespace quintara
