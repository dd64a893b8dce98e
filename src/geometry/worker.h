#pragma once

#include <functional>
#include <string>

#include "access/contracts/geometry.h"

namespace quintara {

/// What a worker process is for, in the words of its failures: "<file>: could not be read (the
/// reader ended with signal 11)".
struct WorkerTask {
  std::string file;
  std::string trouble;  ///< such as "could not be read"
  std::string worker;   ///< such as "reader"
  unsigned seconds;     ///< of processor time; damaged data may keep a reader busy for ever
};

/// Runs `body` in a process of its own and gives the bytes that it gives. A failure of `body` is a
/// failure of this call, and so is a crash. The process dies with this one; it prints nothing, and
/// what it changes in memory is lost.
std::string RunInWorker(const WorkerTask& task, const std::function<std::string(const Progress&)>& body,
                        const Progress& progress);

}  // namespace quintara
