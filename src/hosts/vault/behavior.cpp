#include "hosts/vault/behavior.h"

#include <string>

namespace quintara::vault {

BehaviorObject::BehaviorObject(std::shared_ptr<Core> core, std::shared_ptr<BehaviorOptions> options)
    : Served(std::move(core)), options_(std::move(options)) {}

Ref<veldora::VdBehavior> BehaviorObject::Clone() {
  Pass<"Clone">();
  return MakeRef<BehaviorObject>(core_, std::make_shared<BehaviorOptions>(*options_));
}

int BehaviorObject::OptionA() {
  Pass<"OptionA">();
  return options_->a;
}

int BehaviorObject::OptionC() {
  Pass<"OptionC">();
  return options_->c;
}

void BehaviorObject::SetOptionA(int value) {
  Pass<"OptionA=">([&] { return std::to_string(value); });
  options_->a = value;
}

void BehaviorObject::SetOptionB(int value) {
  Pass<"OptionB=">([&] { return std::to_string(value); });
  options_->b = value;
}

void BehaviorObject::SetOptionC(int value) {
  Pass<"OptionC=">([&] { return std::to_string(value); });
  options_->c = value;
}

void BehaviorObject::SetOptionD(bool value) {
  Pass<"OptionD=">([&] { return value ? "True" : "False"; });
  options_->d = value;
}

void BehaviorObject::SetOptionE(int value) {
  Pass<"OptionE=">([&] { return std::to_string(value); });
  options_->e = value;
}

}  // namespace quintara::vault
