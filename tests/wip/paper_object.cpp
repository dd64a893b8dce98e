#include "wip/paper_object.h"

#include <utility>

#include "base/failure.h"

namespace quintara::test {
namespace {

class PaperRecord : public veldora::VdRecord {
 public:
  explicit PaperRecord(const std::map<std::string, std::string>& values) : values_(values) {}

  Variant Value(const std::string& attribute) override {
    const auto found = values_.find(attribute);
    if (found == values_.end()) throw Failure(failure::kInvalidCall, "no attribute " + attribute);
    return found->second;
  }
  std::int32_t ValueAsInteger(const std::string& attribute) override { return Value(attribute).ToInteger32(); }
  std::string ValueAsString(const std::string& attribute) override { return Value(attribute).ToText(); }
  void ValuateFromString(const std::string& attribute, const std::string& text) override { values_[attribute] = text; }
  Ref<veldora::VdColumns> Header() override { return nullptr; }

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace

PaperObject::PaperObject(Paper paper, std::string name) : paper_(std::move(paper)), name_(std::move(name)) {
  if (name_.empty()) name_ = std::to_string(paper_.objectId);
}

Ref<veldora::VdRecord> PaperObject::Record() {
  return MakeRef<PaperRecord>(paper_.values);
}

Ref<veldora::VdObject> PaperObject::Clone() {
  return MakeRef<PaperObject>(paper_, name_ + "'");
}

Ref<veldora::VdObjects> PaperObject::Children(const Ref<veldora::VdQueryDefinition>& definition) {
  Note(definition ? "Children" : "Children(nothing)");
  return paper_.children ? paper_.children() : nullptr;
}

void PaperObject::Note(const std::string& call) {
  if (paper_.calls) paper_.calls->push_back(name_ + "." + call);
}

Ref<veldora::VdObject> PaperList::Item(int index) {
  if (index < 0 || index >= count_) throw Failure(failure::kSubscriptOutOfRange);
  return item_(index);
}

Ref<veldora::VdObjects> ListOf(const std::vector<Paper>& papers) {
  return MakeRef<PaperList>(static_cast<int>(papers.size()), [papers](int index) {
    return MakeRef<PaperObject>(papers[static_cast<std::size_t>(index)]);
  });
}

}  // namespace quintara::test
