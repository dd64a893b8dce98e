#include "hosts/vault/sha256.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include "base/failure.h"

namespace quintara::vault {
namespace {

void RequireDone(int result) {
  if (result != 1) throw Failure(failure::kInternal, "A digest couldn't be computed");
}

}  // namespace

Digest Sha256(std::string_view bytes) {
  Digest digest;
  RequireDone(EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr));
  return digest;
}

Digest PasswordDigest(std::string_view password, std::string_view salt, int rounds) {
  Digest digest;
  RequireDone(PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()),
                                reinterpret_cast<const unsigned char*>(salt.data()), static_cast<int>(salt.size()),
                                rounds, EVP_sha256(), static_cast<int>(digest.size()), digest.data()));
  return digest;
}

void FillWithRandom(std::span<std::uint8_t> bytes) {
  if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1)
    throw Failure(failure::kInternal, "The system gave no random numbers for a password");
}

}  // namespace quintara::vault
