#include "automation/driver/remote_memory.h"

#include "automation/driver/steps.h"

namespace quintara::driver {

RemoteMemory::RemoteMemory(HWND window, std::size_t size) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  process_ =
      OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE | PROCESS_QUERY_INFORMATION, FALSE, id);
  if (process_ == nullptr) throw Failed("the process of a window can't be opened");
  BOOL isEmulated = FALSE;
  IsWow64Process(process_, &isEmulated);
  isNarrow_ = sizeof(void*) == 4 || isEmulated != FALSE;
  address_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (address_ != nullptr) return;
  CloseHandle(process_);
  throw Failed("the process of a window gives no memory");
}

RemoteMemory::~RemoteMemory() {
  VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
  CloseHandle(process_);
}

void RemoteMemory::Write(std::size_t offset, const void* data, std::size_t size) {
  if (WriteProcessMemory(process_, static_cast<char*>(address_) + offset, data, size, nullptr) == 0) {
    throw Failed("the memory of another process can't be written");
  }
}

void RemoteMemory::Read(std::size_t offset, void* data, std::size_t size) const {
  if (ReadProcessMemory(process_, static_cast<char*>(address_) + offset, data, size, nullptr) == 0) {
    throw Failed("the memory of another process can't be read");
  }
}

}  // namespace quintara::driver
