#pragma once

#include <exception>
#include <string>

namespace quintara {

/// Numbers of failures: those of the run-time errors that automation scripts know.
namespace failure {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kInternal = 51;
inline constexpr int kFileNotFound = 53;
inline constexpr int kDeviceError = 57;
inline constexpr int kDiskFull = 61;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidFormat = 321;
inline constexpr int kObjectUnloaded = 364;
inline constexpr int kInvalidPropertyValue = 380;
inline constexpr int kCannotCreateObject = 429;
inline constexpr int kNoSuchMember = 438;
inline constexpr int kDuplicateKey = 457;
inline constexpr int kServerGone = 462;
inline constexpr int kRefused = 1004;
inline constexpr int kElementNotFound = 35601;
}  // namespace failure

/// The one thing that is thrown across a contract: a number and a description for the user.
class Failure : public std::exception {
 public:
  /// With an empty `description` the failure gets the standard text of its number.
  explicit Failure(int number, std::string description = {});

  int Number() const noexcept { return number_; }
  const std::string& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string description_;
};

}  // namespace quintara
