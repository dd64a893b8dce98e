#include "durable_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "vault_world.h"

namespace quintara::bench {

namespace fs = std::filesystem;

void Sync(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  Demand(file >= 0 && ::fsync(file) == 0 && ::close(file) == 0, "can't be brought to the disk: " + path);
}

void CopyDurably(const std::string& from, const std::string& to) {
  fs::copy_file(from, to + ".new", fs::copy_options::overwrite_existing);
  Sync(to + ".new");
  fs::rename(to + ".new", to);
  Sync(fs::path(to).parent_path().string());
}

void CopyOnly(const std::string& from, const std::string& to) {
  fs::copy_file(from, to, fs::copy_options::overwrite_existing);
}

}  // namespace quintara::bench
