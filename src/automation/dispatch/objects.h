#pragma once

#include <memory>

#include "access/contracts/any_object.h"
#include "automation/dispatch/com.h"

namespace quintara::automation {

class Connection;
class ServedKind;

/// How the objects of a contract answer other programs.
template <class Contract>
const ServedKind& KindServed();

/// An object as it goes out: an adapter's own object, or one of ours made ready to be driven from outside, as what it
/// can be told to be or else as `kind`. Nothing goes out as nothing.
ComPtr<IDispatch> OutgoingAs(const Ref<AnyObject>& object, const ServedKind& kind);

template <class Contract>
ComPtr<IDispatch> Outgoing(const Ref<Contract>& object) {
  return OutgoingAs(object, KindServed<Contract>());
}

/// The object of ours that was made ready to be driven from outside; nothing for any other.
Ref<AnyObject> OwnObject(const ComPtr<IDispatch>& object);

/// An object as it comes in: one of ours is that again, any other gets an adapter, which belongs to `connection`.
Ref<AnyObject> Incoming(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection);

}  // namespace quintara::automation
