#include "base/failure.h"

#include <utility>

namespace quintara {
namespace {

const char* StandardText(int number) {
  switch (number) {
    case failure::kInvalidCall: return "Invalid procedure call or argument";
    case failure::kOverflow: return "Overflow";
    case failure::kOutOfMemory: return "Out of memory";
    case failure::kSubscriptOutOfRange: return "Subscript out of range";
    case failure::kTypeMismatch: return "Type mismatch";
    case failure::kInternal: return "Internal error";
    case failure::kFileNotFound: return "File not found";
    case failure::kDeviceError: return "Device I/O error";
    case failure::kDiskFull: return "Disk full";
    case failure::kPermissionDenied: return "Permission denied";
    case failure::kPathAccess: return "Path/File access error";
    case failure::kPathNotFound: return "Path not found";
    case failure::kObjectNotSet: return "Object variable or With block variable not set";
    case failure::kInvalidFormat: return "Invalid file format";
    case failure::kObjectUnloaded: return "Object was unloaded";
    case failure::kInvalidPropertyValue: return "Invalid property value";
    case failure::kCannotCreateObject: return "ActiveX component can't create object";
    case failure::kNoSuchMember: return "Object doesn't support this property or method";
    case failure::kDuplicateKey: return "This key is already associated with an element of this collection";
    case failure::kServerGone: return "The remote server machine does not exist or is unavailable";
    case failure::kElementNotFound: return "Element not found";
    default: return "Application-defined or object-defined error";
  }
}

}  // namespace

Failure::Failure(int number, std::string description)
    : number_(number), description_(description.empty() ? StandardText(number) : std::move(description)) {}

}  // namespace quintara
