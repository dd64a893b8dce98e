#include "base/packed_texts.h"

#include <nlohmann/json.hpp>

#include "base/failure.h"

namespace quintara {

std::string PackTexts(const std::vector<std::string>& texts) {
  std::string bytes;
  nlohmann::json::to_cbor(nlohmann::json(texts), bytes);
  return bytes;
}

std::vector<std::string> UnpackTexts(std::string_view bytes) try {
  return nlohmann::json::from_cbor(bytes);
} catch (const nlohmann::json::exception&) {
  throw Failure(failure::kInvalidFormat, "Packed texts are damaged");
}

}  // namespace quintara
