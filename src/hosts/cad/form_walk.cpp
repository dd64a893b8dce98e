#include "hosts/cad/form_walk.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quintara::cad {
namespace {

struct Step {
  Occurrence* node;
  std::size_t next;
  std::size_t pathLength;
};

}  // namespace

// One text serves as the path of every node, so that a deep tree costs no more than its names.
void ChooseForms(Occurrence& root, const FormChoice& form) {
  std::string path;
  root.SetForm(form(path));
  std::vector<Step> way{{&root, 0, 0}};
  while (!way.empty()) {
    auto& step = way.back();
    path.resize(step.pathLength);
    if (step.next == step.node->TheDefinition().Children().size()) {
      way.pop_back();
      continue;
    }
    auto& child = *step.node->ChildAt(step.next++);
    if (!path.empty()) path += '\\';
    path += child.NameText();
    child.SetForm(form(path));
    way.push_back({&child, 0, path.size()});
  }
}

}  // namespace quintara::cad
