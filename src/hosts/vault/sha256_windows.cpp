#include <windows.h>
// Behind what it needs.
#include <bcrypt.h>

#include "base/failure.h"
#include "hosts/vault/sha256.h"

namespace quintara::vault {
namespace {

void RequireDone(NTSTATUS status, const char* otherwise) {
  if (status < 0) throw Failure(failure::kInternal, otherwise);
}

constexpr auto kNoDigest = "A digest couldn't be computed";

class Sha256Provider {
 public:
  explicit Sha256Provider(ULONG flags) {
    RequireDone(BCryptOpenAlgorithmProvider(&handle_, BCRYPT_SHA256_ALGORITHM, nullptr, flags), kNoDigest);
  }
  ~Sha256Provider() { BCryptCloseAlgorithmProvider(handle_, 0); }
  Sha256Provider(const Sha256Provider&) = delete;
  Sha256Provider& operator=(const Sha256Provider&) = delete;

  BCRYPT_ALG_HANDLE Handle() const { return handle_; }

 private:
  BCRYPT_ALG_HANDLE handle_ = nullptr;
};

// The system only reads them.
UCHAR* Bytes(std::string_view text) {
  return reinterpret_cast<UCHAR*>(const_cast<char*>(text.data()));
}

}  // namespace

Digest Sha256(std::string_view bytes) {
  static const Sha256Provider provider(0);
  Digest digest;
  RequireDone(BCryptHash(provider.Handle(), nullptr, 0, Bytes(bytes), static_cast<ULONG>(bytes.size()), digest.data(),
                         static_cast<ULONG>(digest.size())),
              kNoDigest);
  return digest;
}

Digest PasswordDigest(std::string_view password, std::string_view salt, int rounds) {
  static const Sha256Provider provider(BCRYPT_ALG_HANDLE_HMAC_FLAG);
  Digest digest;
  RequireDone(BCryptDeriveKeyPBKDF2(provider.Handle(), Bytes(password), static_cast<ULONG>(password.size()),
                                    Bytes(salt), static_cast<ULONG>(salt.size()), static_cast<ULONGLONG>(rounds),
                                    digest.data(), static_cast<ULONG>(digest.size()), 0),
              kNoDigest);
  return digest;
}

void FillWithRandom(std::span<std::uint8_t> bytes) {
  RequireDone(BCryptGenRandom(nullptr, bytes.data(), static_cast<ULONG>(bytes.size()), BCRYPT_USE_SYSTEM_PREFERRED_RNG),
              "The system gave no random numbers for a password");
}

}  // namespace quintara::vault
