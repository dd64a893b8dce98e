#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "hosts/cad/file_kind.h"

namespace quintara::cad {
namespace {

using Json = nlohmann::json;

std::uint32_t NumberAt(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = sizeof number; i-- > 0;) number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

// Everything but the asset is dropped while it is read: a mesh can have much of it.
bool BelongsToAsset(int depth, Json::parse_event_t event, Json& value) {
  return depth != 1 || event != Json::parse_event_t::key || value == "asset";
}

const Json* Member(const Json* value, const char* name) {
  if (value == nullptr || !value->is_object()) return nullptr;
  const auto member = value->find(name);
  return member == value->end() ? nullptr : &*member;
}

}  // namespace

std::string LightPartNumber(const std::string& bytes, const std::string& path) {
  constexpr std::size_t kHeader = 20;
  constexpr std::uint32_t kVersion = 2;
  if (bytes.size() < kHeader || !bytes.starts_with("glTF")) ThrowUnreadable(path, "it is no binary glTF file");
  if (NumberAt(bytes, 4) != kVersion) ThrowUnreadable(path, "it is not of version 2 of binary glTF");
  if (NumberAt(bytes, 8) != bytes.size()) ThrowUnreadable(path, "its length isn't the one that it names");
  const std::size_t length = NumberAt(bytes, 12);
  if (bytes.compare(16, 4, "JSON") != 0 || length > bytes.size() - kHeader)
    ThrowUnreadable(path, "its first chunk is damaged");
  const auto* const begin = bytes.data() + kHeader;
  const auto json = Json::parse(begin, begin + length, BelongsToAsset, false);
  if (json.is_discarded()) ThrowUnreadable(path, "its JSON is damaged");
  const auto* const partNumber = Member(Member(Member(&json, "asset"), "extras"), "PartNumber");
  if (partNumber == nullptr || !partNumber->is_string())
    ThrowUnreadable(path, "it names no part number in asset.extras");
  auto text = partNumber->get<std::string>();
  if (text.empty()) ThrowUnreadable(path, "its part number is empty");
  return text;
}

}  // namespace quintara::cad
