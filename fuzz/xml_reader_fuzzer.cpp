// What the document class accepts, it writes such that it reads the same again: elements and attributes to
// the byte, texts as they are after one writing. (White space that only a reference brought into a text is
// then white space like any other: line ends are made one, and a text of nothing else goes.)
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "base/xml.h"

namespace {

void Require(bool holds, const char* what, const std::string& text) {
  if (holds) return;
  std::cerr << what << ":\n" << text << '\n';
  std::abort();
}

struct ElementsAndAttributes : pugi::xml_tree_walker {
  std::string list;

  bool for_each(pugi::xml_node& node) override {
    if (node.type() != pugi::node_element) return true;
    list.append(static_cast<std::size_t>(depth()), ' ').append(node.name()).append("\n");
    for (auto attribute : node.attributes()) list.append(attribute.name()).append("=").append(attribute.value());
    return true;
  }
};

std::string ListOf(const quintara::XmlDocument& document) {
  ElementsAndAttributes walker;
  document.Node().traverse(walker);
  return walker.list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quintara::XmlDocument document;
  if (!document.Parse(std::string_view(reinterpret_cast<const char*>(data), size))) {
    Require(document.ParseError().code != 0 && !document.Node().first_child(), "a refused document left something", {});
    return 0;
  }

  const std::string text = document.Text();
  quintara::XmlDocument again;
  Require(again.Parse(text), "what was written is refused", text);
  Require(ListOf(again) == ListOf(document), "elements or attributes read otherwise", text);
  const std::string settled = again.Text();
  Require(again.Parse(settled) && again.Text() == settled, "texts do not settle", settled);
  return 0;
}
