#pragma once

#include "access/utils/Cls_Utils.h"

namespace quintara {

/// The way to the private operations of `Cls_Utils`.
class UtilsInternals {
 public:
  static Ref<veldora::VdObjects> CollectRootMatrices(Cls_Utils& utils, const Ref<veldora::VdSession>& session,
                                                     const Ref<veldora::VdObject>& object, std::int16_t productClass,
                                                     const Ref<veldora::VdBehavior>& behavior,
                                                     const Ref<veldora::VdObjects>& documents, MatrixType type) {
    return utils.CollectRootMatrices(session, object, productClass, behavior, documents, type);
  }
  static bool AddObjectToObjects(Cls_Utils& utils, const Ref<veldora::VdSession>& session,
                                 const Ref<veldora::VdObject>& object, Ref<veldora::VdObjects>& objects) {
    return utils.AddObjectToObjects(session, object, objects);
  }
  static bool CompareObjects(Cls_Utils& utils, const Ref<veldora::VdObject>& one, const Ref<veldora::VdObject>& other,
                             bool& same) {
    return utils.CompareObjects(one, other, same);
  }
};

}  // namespace quintara
