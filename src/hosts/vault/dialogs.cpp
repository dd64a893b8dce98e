#include "hosts/vault/dialogs.h"

#include <string>
#include <utility>
#include <vector>

#include "base/arrays.h"
#include "base/failure.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_list.h"

namespace quintara::vault {
namespace {

constexpr int kPickDialog = 1;
constexpr int kViewDialog = 8;
constexpr int kConfirmed = 1;
constexpr int kDismissed = 2;

/// What the objects of one dialog share.
struct DialogState {
  VaultDialog dialog;
  std::vector<Ref<veldora::VdObject>> picked;
  int result = 0;
};

class DialogInputObject final : public Served<"VdDialogInput", veldora::VdDialogInput> {
 public:
  DialogInputObject(std::shared_ptr<Core> core, std::shared_ptr<DialogState> state)
      : Served(std::move(core)), state_(std::move(state)) {}

  void SetObjects(const Ref<AnyObject>& objects) override {
    Pass<"Objects=">();
    if (!objects) throw Failure(failure::kObjectNotSet);
    if (const auto* list = dynamic_cast<const ObjectListObject*>(objects.Shared().get())) {
      state_->dialog.objects = list->Objects();
    } else if (const auto* results = dynamic_cast<const AliasResultsObject*>(objects.Shared().get())) {
      state_->dialog.objects = results->Sought();
    } else {
      throw Failure(failure::kTypeMismatch, "Type mismatch: a dialog takes a list of this vault's objects");
    }
  }

 private:
  std::shared_ptr<DialogState> state_;
};

class DialogOutputObject final : public Served<"VdDialogOutput", veldora::VdDialogOutput> {
 public:
  DialogOutputObject(std::shared_ptr<Core> core, std::shared_ptr<DialogState> state)
      : Served(std::move(core)), state_(std::move(state)) {}

  Ref<veldora::VdObjects> Objects() override {
    Pass<"Objects">();
    return MakeRef<ObjectListObject>(core_, state_->picked, std::string());
  }

 private:
  std::shared_ptr<DialogState> state_;
};

class DialogWindowObject final : public Served<"VdDialogWindow", veldora::VdDialogWindow> {
 public:
  DialogWindowObject(std::shared_ptr<Core> core, std::shared_ptr<DialogState> state)
      : Served(std::move(core)), state_(std::move(state)) {}

  void SetTitle(const std::string& title) override {
    Pass<"Title=">([&] { return title; });
    state_->dialog.title = title;
  }
  // The two switches concern the look of windows, which are drawn elsewhere.
  void SetWindowOptionA(int value) override {
    Pass<"WindowOptionA=">([&] { return std::to_string(value); });
  }
  void SetWindowOptionB(int value) override {
    Pass<"WindowOptionB=">([&] { return std::to_string(value); });
  }
  void Show() override {
    Pass<"Show">();
    const auto& answer = core_->Options().answerDialog;
    const auto picked = answer ? answer(state_->dialog) : std::nullopt;
    state_->picked.clear();
    state_->result = picked ? kConfirmed : kDismissed;
    if (picked && !state_->dialog.objects.empty()) state_->picked.push_back(ElementAt(state_->dialog.objects, *picked));
  }
  int Result() override {
    Pass<"Result">();
    return state_->result;
  }

 private:
  std::shared_ptr<DialogState> state_;
};

class DialogObject final : public Served<"VdDialog", veldora::VdDialog> {
 public:
  DialogObject(std::shared_ptr<Core> core, int kind) : Served(std::move(core)) { state_->dialog.kind = kind; }

  Ref<veldora::VdDialogInput> Input() override {
    Pass<"Input">();
    return MakeRef<DialogInputObject>(core_, state_);
  }
  Ref<veldora::VdDialogOutput> Output() override {
    Pass<"Output">();
    return MakeRef<DialogOutputObject>(core_, state_);
  }
  Ref<veldora::VdDialogWindow> Window() override {
    Pass<"Window">();
    return MakeRef<DialogWindowObject>(core_, state_);
  }

 private:
  std::shared_ptr<DialogState> state_ = std::make_shared<DialogState>();
};

Ref<veldora::VdDialog> NewDialog(const std::shared_ptr<Core>& core, int kind, int known) {
  if (kind != known) throw Failure(failure::kInvalidCall, "There is no dialog of the kind " + std::to_string(kind));
  return MakeRef<DialogObject>(core, kind);
}

class DialogsObject final : public Served<"VdDialogs", veldora::VdDialogs> {
 public:
  using Served::Served;

  Ref<veldora::VdDialog> New(int kind) override {
    Pass<"New">([&] { return std::to_string(kind); });
    return NewDialog(core_, kind, kPickDialog);
  }
};

}  // namespace

Ref<veldora::VdDialogs> CommonGuiObject::Dialogs() {
  Pass<"Dialogs">();
  return MakeRef<DialogsObject>(core_);
}

Ref<veldora::VdCommonGUI> CommonGuiObject::AsVdCommonGUI() {
  return Ref<veldora::VdCommonGUI>(shared_from_this());
}

Ref<veldora::VdDialog> GuiServicesObject::New(int kind) {
  Pass<"New">([&] { return std::to_string(kind); });
  return NewDialog(core_, kind, kViewDialog);
}

Ref<veldora::VdGUIServices> GuiServicesObject::AsVdGUIServices() {
  return Ref<veldora::VdGUIServices>(shared_from_this());
}

}  // namespace quintara::vault
