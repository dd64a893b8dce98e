#include "geometry/glb.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers in glTF files start with their lowest byte");

constexpr std::uint32_t kMagic = 0x46546C67;      // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A;  // "JSON"

// File header and the header of the first chunk, which is always the JSON one.
using Head = std::array<std::uint32_t, 5>;

using Json = nlohmann::ordered_json;

// A file in its two parts: what its JSON says, and the chunks behind that.
struct Glb {
  Json content;
  std::string rest;
};

Glb Load(const std::string& path) {
  CheckGlb(path);
  std::ifstream stream(ToPath(path), std::ios::binary);
  Head head{};
  stream.read(reinterpret_cast<char*>(head.data()), sizeof head);
  std::string text(std::min<std::size_t>(head[3], head[2]), '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  auto content = Json::parse(text, nullptr, false);
  if (content.is_discarded()) throw Failure(failure::kInvalidFormat, path + ": is damaged");
  return {std::move(content), {std::istreambuf_iterator<char>(stream), {}}};
}

void Save(const std::string& path, const Glb& glb) {
  auto text = glb.content.dump();
  text.resize((text.size() + 3) / 4 * 4, ' ');
  const auto length = static_cast<std::uint32_t>(text.size());
  const auto total = static_cast<std::uint32_t>(sizeof(Head) + text.size() + glb.rest.size());
  const Head head = {kMagic, 2, total, length, kJsonChunk};
  std::ofstream stream(ToPath(path), std::ios::binary);
  stream.write(reinterpret_cast<const char*>(head.data()), sizeof head) << text << glb.rest;
  stream.close();
  if (!stream) throw Failure(failure::kPathAccess, path + ": could not be written");
}

void Number(Json& nodes, const Json& index, const NumberedNode& numbered) {
  auto& node = nodes.at(index.get<std::size_t>());
  node["extras"]["PartNumber"] = numbered.partNumber;
  const auto children = node.find("children");
  const auto count = children == node.end() ? 0 : std::min(children->size(), numbered.children.size());
  for (std::size_t i = 0; i < count; ++i) Number(nodes, Json(node["children"][i]), numbered.children[i]);
}

}  // namespace

void CheckGlb(const std::string& path) {
  errno = 0;
  std::ifstream stream(ToPath(path), std::ios::binary);
  if (!stream) {
    const auto number = errno == ENOENT ? failure::kFileNotFound : failure::kPermissionDenied;
    throw Failure(number, path + ": could not be opened (" + std::strerror(errno) + ")");
  }
  Head head{};
  stream.read(reinterpret_cast<char*>(head.data()), sizeof head);
  if (!stream || head[0] != kMagic || head[4] != kJsonChunk) {
    throw Failure(failure::kInvalidFormat, path + ": is not a light file");
  }
  std::error_code error;
  if (std::filesystem::file_size(ToPath(path), error) < head[2] || error) {
    throw Failure(failure::kInvalidFormat, path + ": is cut off");
  }
}

bool HasMeshes(const std::string& path) {
  const auto content = Load(path).content;
  return content.contains("meshes") && !content["meshes"].empty();
}

void NumberNodes(const std::string& path, const NumberedNode& root) {
  auto glb = Load(path);
  const Json index = glb.content.at("scenes").at(0).at("nodes").at(0);
  Number(glb.content.at("nodes"), index, root);
  Save(path, glb);
}

void WriteEmptyGlb(const std::string& path, const std::string& partNumber) {
  const Json extras = {{"PartNumber", partNumber}};
  const Json node = {{"name", partNumber}, {"extras", extras}};
  const Json scene = {{"nodes", Json::array({0})}};
  const Json content = {{"asset", {{"version", "2.0"}, {"generator", "Quintara"}, {"extras", extras}}},
                        {"scene", 0},
                        {"scenes", Json::array({scene})},
                        {"nodes", Json::array({node})}};
  Save(path, {content, {}});
}

}  // namespace quintara
