#pragma once

#include <memory>
#include <string>
#include <vector>

#include "access/contracts/veldora_meta.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class AttributeObject final : public Served<"VdAttribute", veldora::VdAttribute> {
 public:
  AttributeObject(std::shared_ptr<Core> core, const ClassInfo& info, const AttributeInfo& attribute);

  std::string Name() override;

  const ClassInfo& OfClass() const { return *class_; }
  const AttributeInfo& Info() const { return *attribute_; }

 private:
  const ClassInfo* class_;
  const AttributeInfo* attribute_;
};

class AttributesObject final : public Served<"VdAttributes", veldora::VdAttributes> {
 public:
  AttributesObject(std::shared_ptr<Core> core, const ClassInfo& info, bool keysOnly);

  int Count() override;
  Ref<veldora::VdAttribute> Item(const Variant& index) override;
  Ref<veldora::VdAttribute> ItemByName(const std::string& name) override;
  Ref<veldora::VdAttribute> Find(const std::string& name) override;

 private:
  Ref<veldora::VdAttribute> Found(const std::string& name) const;

  const ClassInfo* class_;
  std::vector<const AttributeInfo*> attributes_;
};

class ClassObject final : public Served<"VdClass", veldora::VdClass> {
 public:
  ClassObject(std::shared_ptr<Core> core, const ClassInfo& info);

  std::int16_t ClassId() override;
  std::int16_t QueryClassId() override;
  std::string ClassName() override;
  Ref<veldora::VdAttributes> Attributes() override;
  Ref<veldora::VdAttributes> KeyAttributes() override;

 private:
  const ClassInfo* class_;
};

class ClassesObject final : public Served<"VdClasses", veldora::VdClasses> {
 public:
  using Served::Served;

  Ref<veldora::VdClass> Find(const std::string& name) override;
};

class OperationObject final : public Served<"VdOperation", veldora::VdOperation> {
 public:
  OperationObject(std::shared_ptr<Core> core, std::int32_t id);

  std::int32_t OperationId() override;

  std::int32_t Id() const { return id_; }

 private:
  std::int32_t id_;
};

class OperationsObject final : public Served<"VdOperations", veldora::VdOperations> {
 public:
  using Served::Served;

  Ref<veldora::VdOperation> Find(const std::string& name) override;
};

class MetaInfoObject final : public Served<"VdMetaInfo", veldora::VdMetaInfo> {
 public:
  using Served::Served;

  Ref<veldora::VdClass> ClassByName(const std::string& name) override;
  Ref<veldora::VdClass> ClassById(std::int16_t classId) override;
  Ref<veldora::VdClass> ClassByTable(const std::string& table) override;
  Ref<veldora::VdClasses> Classes() override;
  Ref<veldora::VdOperation> OperationByName(const std::string& name) override;
  Ref<veldora::VdOperations> Operations(int kind) override;
};

}  // namespace quintara::vault
