#include "base/glb.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/failure.h"

namespace quintara {
namespace {

// Keeps the order of members, so that a file is changed where it has to be and nowhere else.
using Json = nlohmann::ordered_json;

constexpr std::string_view kMagic = "glTF";
constexpr std::string_view kJsonChunk = "JSON";
constexpr std::uint32_t kVersion = 2;

[[noreturn]] void ThrowInvalid(const std::string& why) {
  throw Failure(failure::kInvalidFormat, why);
}

std::uint32_t NumberAt(std::string_view bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = sizeof number; i-- > 0;) number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

std::string Number(std::size_t number) {
  std::string bytes;
  for (unsigned i = 0; i < sizeof(std::uint32_t); ++i) bytes += static_cast<char>(number >> (8U * i) & 0xFFU);
  return bytes;
}

// A file in its two parts: what its JSON says, and the chunks behind that.
struct Glb {
  Json content;
  std::string_view rest;
};

Glb Split(std::string_view bytes, const Json::parser_callback_t& keeps = nullptr) {
  CheckGlb(bytes, bytes.size());
  const auto text = bytes.substr(kGlbHead, NumberAt(bytes, 12));
  auto content = Json::parse(text, keeps, false);
  if (content.is_discarded()) ThrowInvalid("its JSON is damaged");
  return {std::move(content), bytes.substr(kGlbHead + text.size())};
}

std::string Join(const Glb& glb) try {
  auto text = glb.content.dump();
  text.resize((text.size() + 3) / 4 * 4, ' ');
  std::string bytes(kMagic);
  bytes += Number(kVersion) + Number(kGlbHead + text.size() + glb.rest.size());
  bytes += Number(text.size()).append(kJsonChunk) + text;
  return bytes.append(glb.rest);
} catch (const Json::type_error&) {
  ThrowInvalid("one of its texts is not UTF-8");
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

void NumberBelow(Json& nodes, const Json& index, const NumberedNode& numbered) {
  auto& node = nodes.at(index.get<std::size_t>());
  node["extras"]["PartNumber"] = numbered.partNumber;
  const auto children = node.find("children");
  const auto count = children == node.end() ? 0 : std::min(children->size(), numbered.children.size());
  for (std::size_t i = 0; i < count; ++i) NumberBelow(nodes, Json(node["children"][i]), numbered.children[i]);
}

}  // namespace

void CheckGlb(std::string_view head, std::uintmax_t size) {
  if (head.size() < kGlbHead || !head.starts_with(kMagic)) ThrowInvalid("it is no binary glTF file");
  if (NumberAt(head, 4) != kVersion) ThrowInvalid("it is not of version 2 of binary glTF");
  if (NumberAt(head, 8) != size) ThrowInvalid("its length isn't the one that it names");
  if (head.substr(16, 4) != kJsonChunk || NumberAt(head, 12) > size - kGlbHead) {
    ThrowInvalid("its first chunk is damaged");
  }
}

std::string PartNumberInGlb(std::string_view bytes) {
  const auto content = Split(bytes, BelongsToAsset).content;
  const auto* const partNumber = Member(Member(Member(&content, "asset"), "extras"), "PartNumber");
  if (partNumber == nullptr || !partNumber->is_string()) ThrowInvalid("it names no part number in asset.extras");
  auto text = partNumber->get<std::string>();
  if (text.empty()) ThrowInvalid("its part number is empty");
  return text;
}

bool HasMeshes(std::string_view bytes) {
  const auto content = Split(bytes).content;
  const auto* const meshes = Member(&content, "meshes");
  return meshes != nullptr && !meshes->empty();
}

std::string GlbWithPartNumbers(std::string_view bytes, const NumberedNode& root) {
  auto glb = Split(bytes);
  try {
    const Json index = glb.content.at("scenes").at(0).at("nodes").at(0);
    NumberBelow(glb.content.at("nodes"), index, root);
  } catch (const Json::exception&) {
    ThrowInvalid("its tree of nodes is damaged");
  }
  return Join(glb);
}

std::string GlbWithoutMeshes(const std::string& partNumber) {
  const Json extras = {{"PartNumber", partNumber}};
  const Json node = {{"name", partNumber}, {"extras", extras}};
  const Json scene = {{"nodes", Json::array({0})}};
  const Json content = {{"asset", {{"version", "2.0"}, {"generator", "Quintara"}, {"extras", extras}}},
                        {"scene", 0},
                        {"scenes", Json::array({scene})},
                        {"nodes", Json::array({node})}};
  return Join({content, {}});
}

}  // namespace quintara
