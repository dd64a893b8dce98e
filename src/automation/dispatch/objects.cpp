#include "automation/dispatch/objects.h"

#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/served_kind.h"

namespace quintara::automation {
namespace {

// An object of which nothing is known but what is asked.
class AnyAdapter final : public LateBound<AnyObject> {
 public:
  using LateBound::LateBound;
};

}  // namespace

template <>
Ref<AnyObject> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<AnyAdapter>(std::move(object), connection);
}

ComPtr<IDispatch> OutgoingAs(const Ref<AnyObject>& object, const ServedKind& kind) {
  if (!object) return nullptr;
  if (const auto* const adapter = dynamic_cast<const Adapter*>(&*object)) return adapter->Behind().Object();
  return Serve(object, kind);
}

Ref<AnyObject> Incoming(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return Adapt<AnyObject>(std::move(object), connection);
}

}  // namespace quintara::automation
