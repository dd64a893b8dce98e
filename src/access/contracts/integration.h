#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"

namespace quintara {

/// What the integration engine asks of the embedded vault beside the contract.
class IntegrationVault {
 public:
  /// The identity of an object.
  struct Identity {
    std::int16_t classId;
    std::int32_t objectId;

    bool operator==(const Identity&) const = default;
  };

  /// A component as it is held now, and what shall stand in its place.
  struct Replacement {
    Ref<veldora::VdObject> held;
    Ref<veldora::VdObject> by;
  };

  virtual ~IntegrationVault() = default;

  /// The object whose file stands at `path`, as the vault noted it when it copied or took the file;
  /// nothing for a file that it doesn't know.
  virtual std::optional<Identity> NotedObject(const std::string& path) = 0;
  /// Runs `body` as one transaction: a failure in it undoes all that it changed, then comes out.
  virtual void InTransaction(const std::function<void()>& body) = 0;
  /// Lets `parent` hold other components where it held these; number of instances and place in the
  /// order stay. Those that become one and the same stand at the place of the first, with the
  /// instances of all. Fails when `parent` can't be changed or doesn't hold what is to be replaced.
  virtual void ReplaceChildren(const Ref<veldora::VdObject>& parent, const std::vector<Replacement>& replacements) = 0;
  /// Stores the object's working copy, if it has one that has changed, or whose light file has; True
  /// when it did.
  virtual bool StoreWorkingCopy(const Ref<veldora::VdObject>& object) = 0;
  /// Copies the files of an object and of all that it holds to the work directory. A working copy
  /// that is there stays, all else is replaced.
  virtual void CopyStructureToWork(const Ref<veldora::VdObject>& object) = 0;
  /// The files of the work directory that `CopyStructureToWork` would replace by other content.
  virtual std::vector<std::string> FilesToReplace(const Ref<veldora::VdObject>& object) = 0;
  /// A configuration value as the running clients see it: as it stood at the last log-on, or as it
  /// stands where the CAD host was started first.
  virtual std::string ConfigInForce(const std::string& path) = 0;
  /// The user's work directory.
  virtual std::string WorkDirectory() = 0;
};

/// What the integration engine asks of the embedded CAD host beside the contract.
class IntegrationCad {
 public:
  virtual ~IntegrationCad() = default;

  /// Writes a product document under its path.
  virtual void Save(const Ref<zorva::Document>& document, const std::string& path) = 0;
  /// Makes the light file of the part or product file at `path` anew, beside it under its name and
  /// ".lwt". Does nothing where no geometry is built in, and for a file that has none.
  virtual void RenewLight(const std::string& /*path*/) {}
};

}  // namespace quintara
