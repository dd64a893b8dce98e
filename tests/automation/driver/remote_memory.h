#pragma once

#include <cstddef>

#include "automation/driver/desktop.h"

namespace quintara::driver {

/// A piece of the memory of the process that a window belongs to, for messages that take addresses.
class RemoteMemory {
 public:
  RemoteMemory(HWND window, std::size_t size);
  ~RemoteMemory();
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  void* Address() const { return address_; }
  /// Whether addresses there have 32 bits.
  bool IsNarrow() const { return isNarrow_; }
  void Write(std::size_t offset, const void* data, std::size_t size);
  void Read(std::size_t offset, void* data, std::size_t size) const;

 private:
  HANDLE process_ = nullptr;
  void* address_ = nullptr;
  bool isNarrow_ = false;
};

}  // namespace quintara::driver
