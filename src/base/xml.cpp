#include "base/xml.h"

#include <algorithm>
#include <cstddef>

#include "base/failure.h"
#include "base/xml_faults.h"

namespace quintara {
namespace {

constexpr int kRefused = 100;

// Texts stay undecoded, so that a reference that isn't defined can be told from an escaped "&".
constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_eol | pugi::parse_wconv_attribute | pugi::parse_pi |
                                   pugi::parse_comments | pugi::parse_declaration | pugi::parse_doctype |
                                   pugi::parse_fragment;

std::string At(std::string_view bytes, std::ptrdiff_t offset) {
  const auto before =
      bytes.substr(0, std::min(bytes.size(), static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0))));
  const auto line = std::count(before.begin(), before.end(), '\n') + 1;
  const auto lineStart = before.rfind('\n');
  const auto column = before.size() - (lineStart == before.npos ? 0 : lineStart + 1) + 1;
  return " (line " + std::to_string(line) + ", column " + std::to_string(column) + ")";
}

// The library writes control characters as references, forbidden ones too.
bool HasForbiddenReference(std::string_view text) {
  constexpr std::string_view kStart = "&#";
  for (auto at = text.find(kStart); at != text.npos; at = text.find(kStart, at + 1)) {
    const auto reference = text.substr(at + kStart.size(), 3);
    if (!reference.starts_with("9;") && !reference.starts_with("09;") && reference != "10;" && reference != "13;") {
      return true;
    }
  }
  return false;
}

// Comments and the like may hold what looks like such a reference and is none.
bool HasForbiddenControl(XmlNode document) {
  const auto isForbidden = [](std::string_view text) { return std::ranges::any_of(text, xml::IsForbiddenControl); };
  for (auto node = document.first_child(); node; node = xml::NextInDocumentOrder(node, document)) {
    if (isForbidden(node.value())) return true;
    for (auto attribute : node.attributes()) {
      if (isForbidden(attribute.value())) return true;
    }
  }
  return false;
}

struct TextWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
};

}  // namespace

bool XmlDocument::Parse(std::string_view bytes, XmlBlanks blanks) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  error_ = {};
  document_.reset();
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  if (auto fault = xml::FaultInBytes(bytes)) {
    error_ = {kRefused, *fault};
    return false;
  }
  const auto options = kParseOptions | (blanks == XmlBlanks::kKept ? pugi::parse_ws_pcdata_single : 0U);
  const auto parsed = document_.load_buffer(bytes.data(), bytes.size(), options, pugi::encoding_utf8);
  if (!parsed) {
    error_ = {static_cast<int>(parsed.status), parsed.description() + At(bytes, parsed.offset)};
  } else if (auto fault = xml::FaultInTree(document_, bytes)) {
    error_ = {kRefused, *fault};
  }
  if (error_.code != 0) document_.reset();
  return error_.code == 0;
}

std::string XmlDocument::Text() const {
  TextWriter writer;
  document_.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  auto fault = xml::FaultInBytes(writer.text);
  if (!fault && HasForbiddenReference(writer.text) && HasForbiddenControl(document_)) {
    fault = "a control character is not allowed here";
  }
  if (fault) throw Failure(failure::kInvalidCall, "The XML document can't be written: " + *fault);
  return std::move(writer.text);
}

std::string_view BaseName(std::string_view qualifiedName) noexcept {
  const auto colon = qualifiedName.find(':');
  return colon == qualifiedName.npos ? qualifiedName : qualifiedName.substr(colon + 1);
}

}  // namespace quintara
