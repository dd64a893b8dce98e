#include "hosts/integration/structure_refresh.h"

#include <map>
#include <string>
#include <utility>

#include "base/failure.h"

namespace quintara::integration {
namespace {

using veldora::VdObject;
namespace state = veldora::state;

using Key = std::pair<std::int16_t, std::int32_t>;

Key KeyOf(const Ref<VdObject>& object) {
  return {object->ClassId(), object->ObjectId()};
}

std::string Described(const Ref<VdObject>& object) {
  return object->ClassInfo()->ClassName() + " " + std::to_string(object->ObjectId());
}

/// One object of the structure as it shall be.
struct Node {
  struct Edge {
    Ref<VdObject> linked;  ///< the component as it is held now
    std::size_t target;
  };

  Ref<VdObject> object;
  std::vector<Edge> children;
  std::vector<std::size_t> holders;
  std::size_t open = 0;  ///< children that aren't done yet
};

class Refresh {
 public:
  Refresh(const Ref<veldora::VdSession>& session, IntegrationVault& vault)
      : session_(session),
        vault_(vault),
        util_(session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()),
        takesLatest_(Permits(vault, "$User\\LifeCycleSetUp\\LatestAvailableOnCheckOut", "YES")) {}

  Refreshed Run(const Ref<VdObject>& root) {
    Collect(root);
    std::vector<std::size_t> ready;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      if (nodes_[i].open == 0) ready.push_back(i);
    }
    std::size_t done = 0;
    for (; !ready.empty(); ++done) {
      const auto index = ready.back();
      ready.pop_back();
      Treat(index);
      for (const auto holder : nodes_[index].holders) {
        if (--nodes_[holder].open == 0) ready.push_back(holder);
      }
    }
    if (done != nodes_.size()) {
      throw Failure(failure::kInvalidCall,
                    "With its latest revisions the structure of " + Described(root) + " would hold itself");
    }
    return {nodes_.front().object, std::move(taken_)};
  }

 private:
  std::size_t IndexOf(const Ref<VdObject>& linked) {
    const auto object = takesLatest_ ? linked->GetVersion(veldora::version::kLast) : linked;
    const auto [place, isNew] = indices_.try_emplace(KeyOf(object), nodes_.size());
    if (isNew) nodes_.push_back({object, {}, {}, 0});
    return place->second;
  }

  void Collect(const Ref<VdObject>& root) {
    IndexOf(root);
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      const auto children = nodes_[i].object->Children(nullptr);
      for (int c = 0; c < children->Count(); ++c) {
        const auto linked = children->Item(c);
        const auto target = IndexOf(linked);
        nodes_[i].children.push_back({linked, target});
        nodes_[target].holders.push_back(i);
        ++nodes_[i].open;
      }
    }
  }

  void Treat(std::size_t index) {
    std::vector<IntegrationVault::Replacement> outdated;
    for (const auto& edge : nodes_[index].children) {
      const auto& present = nodes_[edge.target].object;
      if (KeyOf(edge.linked) != KeyOf(present)) outdated.push_back({edge.linked, present});
    }
    if (outdated.empty() && index != 0) return;
    auto& object = nodes_[index].object;
    object = MadeChangeable(object);
    taken_.push_back(object);
    if (!outdated.empty()) vault_.ReplaceChildren(object, outdated);
  }

  Ref<VdObject> MadeChangeable(const Ref<VdObject>& object) {
    object->Retrieve();
    switch (object->Record()->ValueAsInteger("STATE")) {
      case state::kCheckedIn:
        RequirePermitted(object, "$User\\LIFE_CYCLE\\SwitchToLatestForceCheckOut", "checked out");
        return util_->CheckOut(object, nullptr, false);
      case state::kReleased:
        RequirePermitted(object, "$User\\LIFE_CYCLE\\SwitchToLatestForceNewRelease", "revised");
        return util_->NewRelease(object, nullptr, false);
      default:
        // New, or checked out: it can be changed by whom it could be checked in.
        if (util_->CanPerform(object, session_->MetaInfo()->OperationByName("CHECKIN"), 0)) return object;
        throw Failure(failure::kPermissionDenied, Described(object) + " can't be changed now");
    }
  }

  void RequirePermitted(const Ref<VdObject>& object, const char* path, const char* what) {
    if (Permits(vault_, path, "TRUE")) return;
    throw Failure(failure::kPermissionDenied,
                  Described(object) + " would have to be " + what + ", which the setting " + path + " doesn't permit");
  }

  Ref<veldora::VdSession> session_;
  IntegrationVault& vault_;
  Ref<veldora::VdSessionUtil> util_;
  bool takesLatest_;
  std::vector<Node> nodes_;
  std::map<Key, std::size_t> indices_;
  std::vector<Ref<VdObject>> taken_;
};

}  // namespace

bool Permits(IntegrationVault& vault, const char* path, const char* value) {
  return vault.ConfigInForce(path) == value;
}

Refreshed RefreshStructure(const Ref<veldora::VdObject>& root, const Ref<veldora::VdSession>& session,
                           IntegrationVault& vault) {
  return Refresh(session, vault).Run(root);
}

}  // namespace quintara::integration
