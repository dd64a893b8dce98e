#include <utility>

#include "access/utils/Cls_Utils.h"
#include "commands/switching_bench.h"
#include "commands/zorva_mocks.h"
#include "support/tiny_files.h"

// What the commands that switch components make of hosts that no embedded one is like.
namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;

Box TryTheParent() {
  return {"ZORVA can not replace the component with a lwt. Try with the parent...", kInformationModal, "Quintara"};
}

// The components of a product whose replacement gives nothing, without a failure.
class SilentProducts : public zorva::Products {
 public:
  explicit SilentProducts(Ref<zorva::Application> zorva) : zorva_(std::move(zorva)) {}
  Ref<zorva::Application> Application() override { return zorva_; }
  int Count() override { return 0; }
  Ref<zorva::Product> Item(int /*index*/) override { return nullptr; }
  void Remove(int /*index*/) override {}
  Ref<zorva::Product> ReplaceWithFile(const Ref<zorva::Product>& component, const std::string& fullPath,
                                      bool allInstances) override {
    asked.emplace_back(component->Name() + " " + fullPath + (allInstances ? " all" : ""));
    return nullptr;
  }
  void AddComponentsFromFiles(const std::vector<std::string>& /*paths*/, const std::string& /*type*/) override {}

  std::vector<std::string> asked;

 private:
  Ref<zorva::Application> zorva_;
};

// A document with what it is made of.
class OddDocument : public zorva::ProductDocument, public std::enable_shared_from_this<OddDocument> {
 public:
  Ref<zorva::Document> AsDocument() override { return Ref<zorva::Document>(shared_from_this()); }
  Ref<zorva::ProductDocument> AsProductDocument() override { return Ref<zorva::ProductDocument>(shared_from_this()); }
  Ref<zorva::Selection> Selection() override { return selection; }
  void Close() override {}
  std::string FullName() override { return fullName; }
  Ref<zorva::Product> Product() override { return root; }

  std::string fullName;
  Ref<zorva::Product> root;
  Ref<zorva::Selection> selection;
};

// A component that is its own reference, of a document with any name.
class OddComponent : public MockProduct, public std::enable_shared_from_this<OddComponent> {
 public:
  Ref<zorva::Product> AsProduct() override { return Ref<zorva::Product>(shared_from_this()); }
  Ref<zorva::Product> Reference() override { return AsProduct(); }
  Ref<AnyObject> Parent() override { return Ref<AnyObject>(document); }
  std::string Name() override { return "ODD.1"; }

  const std::shared_ptr<OddDocument> document = std::make_shared<OddDocument>();
};

class OneSelected : public zorva::Selection {
 public:
  explicit OneSelected(const Ref<AnyObject>& object) : element_(MakeRef<Element>(object)) {}
  int Count() override { return 1; }
  Ref<zorva::SelectedElement> Item(int /*index*/) override { return element_; }
  void Add(const Ref<AnyObject>& /*object*/) override {}
  void Clear() override {}
  void Copy() override {}
  void Paste() override {}

 private:
  class Element : public zorva::SelectedElement {
   public:
    explicit Element(Ref<AnyObject> object) : object_(std::move(object)) {}
    Ref<AnyObject> Value() override { return object_; }

   private:
    Ref<AnyObject> object_;
  };

  Ref<zorva::SelectedElement> element_;
};

// A desktop that can't show a box, before running hosts.
class BadDesktop : public NativePlatform {
 public:
  explicit BadDesktop(Platform& hosts)
      : NativePlatform(std::make_shared<Gate>(),
                       [](const std::string&, int, const std::string&) -> int {
                         throw Failure(failure::kDeviceError, "no screen");
                       }),
        hosts_(hosts) {}
  Ref<AnyObject> Attach(const std::string& programName) override { return hosts_.Attach(programName); }

 private:
  Platform& hosts_;
};

class SwitchingInOddHosts : public testing::Test, protected SwitchingBench {
 protected:
  // Puts `odd` in front of the work in progress, whose root and selection it shows unless it has its own.
  void Activate(const std::shared_ptr<OddDocument>& odd) {
    if (!odd->root) odd->root = root;
    if (!odd->selection) odd->selection = Selection();
    const auto zorva = std::make_shared<NiceMock<OddZorva>>(host.Application());
    ON_CALL(*zorva, ActiveDocument).WillByDefault(Return(Ref<AnyObject>(odd)));
    Process().gZorva = Ref<zorva::Application>(zorva);
  }
  // The same with a root whose components are never replaced, and which is to be asked for them so often.
  std::shared_ptr<SilentProducts> ActivateSilent(int times) {
    const auto components = std::make_shared<SilentProducts>(host.Application());
    const auto silent = std::make_shared<NiceMock<MockProduct>>();
    ON_CALL(*silent, Parameters).WillByDefault(Return(root->Parameters()));
    EXPECT_CALL(*silent, Products).Times(times).WillRepeatedly(Return(Ref<zorva::Products>(components)));
    const auto odd = std::make_shared<OddDocument>();
    odd->root = Ref<zorva::Product>(silent);
    Activate(odd);
    return components;
  }
  // What is shown when the only one that is selected stems from a document of this name.
  std::vector<Box> BoxesForFile(const std::string& fullName) {
    const auto component = std::make_shared<NiceMock<OddComponent>>();
    component->document->fullName = fullName;
    const auto odd = std::make_shared<OddDocument>();
    odd->selection = MakeRef<OneSelected>(Ref<AnyObject>(component));
    Activate(odd);
    return BoxesOfSwitchToLwt();
  }

  const Ref<VdObject> bolt = Add("BOLT");
  const Ref<VdObject> nut = Add("NUT");
};

TEST_F(SwitchingInOddHosts, ToLwtTakesNothingForARefusal) {
  for (const auto& part : {bolt, nut}) AddDocumentOf(part);
  SelectAll();
  const auto components = ActivateSilent(1);

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(TryTheParent()));

  EXPECT_THAT(components->asked, ElementsAre("BOLT.1 " + WorkPath("BOLT.lwt")));
}

TEST_F(SwitchingInOddHosts, ToProductDoesNotLookAtWhatTheReplacementGives) {
  for (const auto& part : {bolt, nut}) AddLight(part);
  SelectAll();
  const auto components = ActivateSilent(2);

  EXPECT_THAT(BoxesOfSwitchToProduct(), IsEmpty());

  EXPECT_THAT(components->asked, ElementsAre("BOLT.1 " + WorkPath("BOLT.stp"), "NUT.1 " + WorkPath("NUT.stp")));
}

TEST_F(SwitchingInOddHosts, ToLwtTakesAFileForLightByItsLastThreeCharactersAlone) {
  for (const std::string name : {"LWT", "lwt", "BOLTlwt", "BOLT.vLwT"}) {
    Process().texts.QD_SWITCH_ALREADY_IN_STATE.text = "light REP1 REP2";

    EXPECT_THAT(BoxesForFile(name), ElementsAre(Box{"light ODD.1 LWT", kInformationModal, "Quintara"})) << name;
  }
}

TEST_F(SwitchingInOddHosts, ToLwtAsksTheVaultForAnyOtherFile) {
  for (const std::string name : {"WT", "T", "BOLT.lwt.stp", "lwt.stp", "BOLT.lwt ", "BOLT.lwtx"}) {
    Process().texts.QD_SWITCH_DOES_NOT_EXIST_IN_VELDORA.text = "none REP1";

    EXPECT_THAT(BoxesForFile(name), ElementsAre(Box{"none ODD.1", kCriticalModal, "Quintara"})) << name;
  }
}

TEST_F(SwitchingInOddHosts, ToLwtPassesOverThatItCannotTellOfARefusal) {
  AddDocumentOf(bolt);
  SelectAll();
  gate->FailOperation("Products.ReplaceWithFile");
  const auto before = InstallPlatform(std::make_shared<BadDesktop>(platform.Native()));

  EXPECT_NO_THROW(SwitchToLwt());

  InstallPlatform(before);
  gate->Reset();
  EXPECT_THAT(Components(), ElementsAre(AsDocument("BOLT")));
}

}  // namespace
}  // namespace quintara::test
