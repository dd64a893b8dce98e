#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "access/vault_mocks.h"

/// Objects of a vault that stand on paper only: as many, and as deep, as a test likes.
namespace quintara::test {

/// What all copies of one object share.
struct Paper {
  std::int32_t objectId = 0;
  std::int16_t classId = 0;
  std::map<std::string, std::string> values;
  /// What it holds; nothing for a leaf.
  std::function<Ref<veldora::VdObjects>()> children;
  Ref<veldora::VdClass> info;
  /// What was asked of it, "Children(nothing)" and so on, with its object id before it.
  std::shared_ptr<std::vector<std::string>> calls;
};

/// A copy knows how it came to be: "47" is the object itself, "47'" its clone.
class PaperObject : public MockObject {
 public:
  explicit PaperObject(Paper paper, std::string name = {});

  std::int32_t ObjectId() override { return paper_.objectId; }
  std::int16_t ClassId() override { return paper_.classId; }
  Ref<veldora::VdClass> ClassInfo() override { return paper_.info; }
  Ref<veldora::VdRecord> Record() override;
  void Retrieve() override { Note("Retrieve"); }
  void Refresh() override { Note("Refresh"); }
  Ref<veldora::VdObject> Clone() override;
  Ref<veldora::VdObjects> Children(const Ref<veldora::VdQueryDefinition>& definition) override;

 private:
  void Note(const std::string& call);

  Paper paper_;
  std::string name_;
};

/// So many objects, each made when it is asked for.
class PaperList : public MockObjects {
 public:
  PaperList(int count, std::function<Ref<veldora::VdObject>(int)> item) : count_(count), item_(std::move(item)) {}

  int Count() override { return count_; }
  Ref<veldora::VdObject> Item(int index) override;

 private:
  int count_;
  std::function<Ref<veldora::VdObject>(int)> item_;
};

Ref<veldora::VdObjects> ListOf(const std::vector<Paper>& papers);

}  // namespace quintara::test
